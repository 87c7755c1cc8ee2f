#include "judge.h"

#include <printerslib/drivers/printerprofile.h>
#include <printerslib/drivers/printjobresult.h>
#include <printerslib/drivers/printqueueentry.h>

#include <QMap>
#include <algorithm>
#include <iterator>

using namespace printerslib::drivers;

namespace chaos {

namespace {

using Outcome = PrintJobResult::Outcome;

constexpr const char *outcomeNames[] = {"not begun", "partly sent", "sent", "processed", "printed"};

/// Items of one job that follow each other on one piece of paper.
struct Segment
{
    int job = 0;
    int piece = 0;
    QStringList items;
    bool isRepeat = false;  ///< says that it is one
};

/// A picture and what else has no number belongs to the line before it.
QVector<Segment> segmentsOf(const QVector<Paper> &papers)
{
    QVector<Segment> segments;
    for (int piece = 0; piece < papers.size(); ++piece) {
        bool isOpen = false;
        bool isMarked = false;
        const QStringList items = itemsOf(papers.at(piece));
        for (const QString &item : items) {
            const int job = jobOf(item);
            const bool isOther = job != 0 && isOpen && job != segments.constLast().job;
            if (!isOpen || isOther || isFirstLine(item))
                segments.append({job, piece, {}, isMarked && isOpen});
            isMarked = item.contains(QLatin1String("REPEAT"));
            isOpen = true;
            segments.last().items.append(item);
        }
    }
    return segments;
}

/// Whether all but the last item are the first ones, and the last the beginning of the next.
bool isBeginning(const QStringList &items, const QStringList &whole)
{
    if (items.isEmpty() || items.size() > whole.size())
        return items.isEmpty();
    const int last = items.size() - 1;
    const bool isPicture = items.constLast().startsWith(QLatin1Char('['));
    return std::equal(items.begin(), items.begin() + last, whole.begin()) &&
           (whole.at(last).startsWith(items.constLast()) ||
            (isPicture && whole.at(last).startsWith(QLatin1Char('['))));
}

/// Whether each of its lines stands there once at most, in their order; whatever is between them.
bool isInOrder(const QStringList &items, const QStringList &whole)
{
    int at = 0;
    for (const QString &item : items) {
        if (jobOf(item) == 0)
            continue;
        const int found = whole.indexOf(item, at);
        if (found < 0 && whole.contains(item))
            return false;
        at = found < 0 ? at : found + 1;
    }
    return true;
}

class Judge
{
public:
    Judge(const EpisodePlan &plan, const QVector<JobEnd> &ends, const QVector<Paper> &papers)
        : m_plan(plan),
          m_profile(PrinterProfile::forModel(plan.model).value()),
          m_ends(ends),
          m_segments(segmentsOf(papers))
    {
        for (const Segment &segment : qAsConst(m_segments))
            m_ofJob[segment.job].append(segment);
    }

    QStringList untruths()
    {
        for (int i = 0; i < m_ends.size(); ++i) {
            const JobEnd &end = m_ends.at(i);
            m_job = end.toString();
            m_whole = itemsOf(end.plan.receipt, m_profile);
            m_mine = m_ofJob.value(end.plan.receipt.job);
            if (end.hasHung)
                say("didn't end");
            if (!m_plan.hasSpoilt)
                judge(end);
            const int fromEnd = m_ends.size() - i;
            if (fromEnd <= m_plan.soundJobs)
                judgeSound(end, fromEnd == 1);
        }
        if (!m_plan.hasSpoilt)
            judgeMixing();
        return m_untruths;
    }

    QStringList untruthsOfQueue(const QVector<QueueReport> &queue)
    {
        for (const JobEnd &end : m_ends) {
            const int job = end.plan.receipt.job;
            m_whole = itemsOf(end.plan.receipt, m_profile);
            m_mine = m_ofJob.value(job);
            m_job = QStringLiteral("job %1").arg(job);
            QVector<QueueReport> reports;
            std::copy_if(queue.begin(), queue.end(), std::back_inserter(reports),
                         [job](const QueueReport &report) { return report.job == job; });
            const bool isPromised = end.report.isThere && end.report.outcome == int(Outcome::Sent);
            if (isPromised && reports.isEmpty())
                say("it was added, and is lost");
            if (reports.size() > 1)
                say("it is in the queue more than once");
            if (end.hasHung)
                say("its adding didn't end");
            judgeQueued(reports.value(0));
        }
        judgeOrder(queue);
        judgeMixing();
        return m_untruths;
    }

private:
    void judgeQueued(const QueueReport &report)
    {
        using State = PrintQueueEntry::State;
        const auto state = State(report.state);
        const auto isMarked = [](const Segment &segment) { return segment.isRepeat; };
        const auto marked = int(std::count_if(m_mine.begin(), m_mine.end(), isMarked));
        const int whole =
            int(std::count_if(m_mine.begin(), m_mine.end(),
                              [this](const Segment &one) { return one.items == m_whole; }));
        if (report.id == 0 && !m_mine.isEmpty())
            say("it isn't in the queue, and on paper");
        if (report.id != 0 && state != State::Done && state != State::Dropped)
            say("the queue doesn't come to its end with it");
        if (!hasRemains() && m_mine.size() - marked > 1)
            say("it is on paper more than once, and nothing says so");
        if (marked > report.repeats)
            say("more of it say that they are repeats than were asked for");
        if (state == State::Done && report.outcome >= int(Outcome::Processed) && whole == 0)
            say("it was confirmed, and isn't on paper");
        if (state == State::Done && report.repeats == 0 && whole > 1)
            say("it is on paper more than once, and wasn't repeated");
        for (const Segment &segment : qAsConst(m_mine)) {
            if (!hasRemains() && !isBeginning(segment.items, m_whole))
                say("what is on paper isn't its beginning");
        }
    }

    /// What nobody has repeated comes in the order of adding.
    void judgeOrder(const QVector<QueueReport> &queue)
    {
        qint64 last = 0;
        for (const Segment &segment : m_segments) {
            const auto found = std::find_if(
                queue.begin(), queue.end(),
                [&segment](const QueueReport &report) { return report.job == segment.job; });
            if (found == queue.end() || segment.isRepeat)
                continue;
            m_job = QStringLiteral("job %1").arg(segment.job);
            if (found->id < last)
                say("it came behind one that was added later");
            last = found->id;
        }
    }

    void say(const char *text) { m_untruths.append(m_job + QStringLiteral(": ") + text); }

    /// What a line without power, that isn't told of it, still brings when it is back.
    bool hasRemains() const { return m_plan.hasPower && !m_plan.isNetwork; }

    /// On a line that isn't lost with the power, printers without macros can't tell.
    bool mayMissPower(const JobEnd &end) const
    {
        return hasRemains() && end.isTroubled && m_profile.dialect() == Dialect::EscPos &&
               !m_profile.keepsMacro();
    }

    void judge(const JobEnd &end)
    {
        judgePaper();
        if (!end.report.isThere)
            return;
        const auto outcome = Outcome(end.report.outcome);
        // A network that is left throws away what the printer hasn't fetched when that says
        // something.
        const bool isLossless = !m_plan.isNetwork && (!end.isTroubled || !m_plan.hasPower);
        if (outcome == Outcome::NotBegun && !m_mine.isEmpty())
            say("something of it is on paper");
        if (outcome >= Outcome::Processed && !isWhole() && !mayMissPower(end))
            say("it isn't on paper as a whole, and once");
        if (outcome == Outcome::Sent && isLossless && !isWhole())
            say("all was taken, and isn't on paper");
    }

    void judgePaper()
    {
        if (hasRemains()) {
            QStringList items;
            for (const Segment &segment : qAsConst(m_mine))
                items += segment.items;
            if (!isInOrder(items, m_whole))
                say("lines are out of order, or there twice");
            return;
        }
        if (m_mine.size() > 1)
            say("it is on paper more than once, or in pieces");
        for (const Segment &segment : qAsConst(m_mine)) {
            if (!isBeginning(segment.items, m_whole))
                say("what is on paper isn't its beginning");
        }
    }

    bool isWhole() const { return m_mine.size() == 1 && m_mine.constFirst().items == m_whole; }

    void judgeSound(const JobEnd &end, bool isLast)
    {
        const Confirmation confirmation = m_profile.confirmation();
        const Outcome best = confirmation == Confirmation::None        ? Outcome::Sent
                             : confirmation == Confirmation::Processed ? Outcome::Processed
                                                                       : Outcome::Printed;
        if (end.report.outcome < int(isLast ? best : Outcome::Sent))
            say("nothing was wrong any more, and it wasn't confirmed");
        if (!isWhole())
            say("nothing was wrong any more, and it isn't whole");
    }

    void judgeMixing()
    {
        const Receipt receipt = m_ends.constFirst().plan.receipt;
        const bool isCut = encodedReceipt(receipt, m_plan.model).pieces > 0;
        for (int i = 0; i < m_segments.size(); ++i) {
            const Segment &segment = m_segments.at(i);
            m_job = QStringLiteral("piece %1").arg(segment.piece + 1);
            const bool isMark = segment.items.join(QString()).contains(QLatin1String("REPEAT"));
            if (segment.job == 0 && !isMark && !hasRemains())
                say("something is on paper that is no job's");
            const Segment before = i > 0 ? m_segments.at(i - 1) : Segment();
            if (isCut && before.job != 0 && segment.job != 0 && before.piece == segment.piece)
                say("two jobs are on one piece of paper");
        }
    }

    const EpisodePlan &m_plan;
    const PrinterProfile m_profile;
    const QVector<JobEnd> &m_ends;
    const QVector<Segment> m_segments;
    QMap<int, QVector<Segment>> m_ofJob;
    QStringList m_untruths;
    // Of the job at hand.
    QString m_job;
    QStringList m_whole;
    QVector<Segment> m_mine;
};

}  // namespace

QString JobEnd::toString() const
{
    return QStringLiteral("job %1, %2")
        .arg(plan.receipt.job)
        .arg(report.isThere ? QStringLiteral("%1 (%2)").arg(
                                  QLatin1String(outcomeNames[report.outcome]), report.text)
                            : QStringLiteral("killed"));
}

QStringList untruthsOf(const EpisodePlan &plan, const QVector<JobEnd> &ends,
                       const QVector<QueueReport> &queue, const QVector<Paper> &papers)
{
    Judge judge(plan, ends, papers);
    return plan.isQueue() ? judge.untruthsOfQueue(queue) : judge.untruths();
}

}  // namespace chaos
