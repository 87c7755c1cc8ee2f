// What the judge of the runs finds, in papers that were forged: else a run could never fail.
#include <printerslib/drivers/printqueueentry.h>
#include <printerslib/drivers/streaminterpreter.h>

#include <QtTest>

#include "judge.h"

using namespace chaos;
using namespace printerslib::drivers;
using Outcome = PrintJobResult::Outcome;
using State = PrintQueueEntry::State;

namespace {

const QString plain = QStringLiteral("GENERAL_EPSON_PROTOCOL");
const QString macroKeeper = QStringLiteral("CITIZEN_CTS_2000");

constexpr int first = 100;
constexpr int second = 101;

Receipt receipt(int job)
{
    return {job, 6, 1, 16};
}

/// Where a line's text begins.
int placeOf(const QByteArray &bytes, int job, int line)
{
    return bytes.indexOf(QString("J%1 L%2")
                             .arg(job, 5, 10, QLatin1Char('0'))
                             .arg(line, 3, 10, QLatin1Char('0'))
                             .toLatin1());
}

/// Two jobs on a printer, and what is found of them.
struct Evidence
{
    EpisodePlan plan;
    QVector<JobEnd> ends;
    QVector<QueueReport> queue;
    QByteArray bytes;  ///< that the printer is sent in all

    explicit Evidence(const QString &model = plain)
    {
        plan.model = model;
        for (const int job : {first, second}) {
            JobEnd end;
            end.plan.receipt = receipt(job);
            end.report = {true, int(Outcome::Processed), 0, {}};
            ends.append(end);
            bytes += of(job);
        }
    }
    /// Of a queue, in which both are done.
    static Evidence ofQueue()
    {
        Evidence evidence;
        evidence.plan.printerKills = {-1};
        for (JobEnd &end : evidence.ends) {
            end.report.outcome = int(Outcome::Sent);
            evidence.queue.append({end.plan.receipt.job, evidence.queue.size() + 1,
                                   int(State::Done), int(Outcome::Processed), 0});
        }
        return evidence;
    }
    QByteArray of(int job) const { return encodedReceipt(receipt(job), plan.model).bytes; }
    /// The first job's lines from one to another, without reset and cut.
    QByteArray lines(int from, int to) const
    {
        const QByteArray all = of(first);
        const int begin = placeOf(all, first, from);
        return all.mid(begin, placeOf(all, first, to) - begin);
    }
    QByteArray head() const { return of(first).left(placeOf(of(first), first, 1)); }
    QByteArray uncut() const { return of(first).left(of(first).lastIndexOf("\x1BJ")); }
    /// With the feed to the knife.
    QByteArray cut() const { return of(first).mid(uncut().size()); }
    /// The first job's beginning, as of a job that was cut off.
    QByteArray beginning() const { return head() + lines(1, 3) + cut(); }
    QByteArray withoutOne() const { return head() + lines(1, 2) + lines(3, 6) + cut(); }
    QByteArray withOneTwice() const { return head() + lines(1, 3) + lines(2, 6) + cut(); }
    QByteArray marked(int job) const { return "\x1B@** REPEAT **\n" + of(job).mid(2); }

    /// "job: what is untrue", each once.
    QStringList untruths() const
    {
        const auto profile = PrinterProfile::forModel(plan.model).value();
        QStringList texts =
            untruthsOf(plan, ends, queue, StreamInterpreter::papersOf(bytes, profile));
        for (QString &text : texts)
            text = text.section(' ', 0, 1).remove(',').remove(':') + ": " + text.section(": ", -1);
        texts.removeDuplicates();
        texts.sort();
        return texts;
    }
    void tell(int index, Outcome outcome) { ends[index].report.outcome = int(outcome); }
    void kill(int index) { ends[index].report = {}; }
    /// The whole time, on a line that keeps what it holds while the power is off.
    void switchOff()
    {
        plan.hasPower = true;
        for (JobEnd &end : ends)
            end.isTroubled = true;
    }
};

using Forge = void (*)(Evidence &);

struct Row
{
    const char *name;
    Forge forge;
    QStringList untruths;  ///< sorted
};

const QString isInPieces = QStringLiteral("it is on paper more than once, or in pieces");
const QString isNotWhole = QStringLiteral("it isn't on paper as a whole, and once");
const QString isNoBeginning = QStringLiteral("what is on paper isn't its beginning");
const QString isMixed = QStringLiteral("two jobs are on one piece of paper");
const QString isNobodys = QStringLiteral("something is on paper that is no job's");

QStringList ofFirst(const QStringList &texts)
{
    QStringList all;
    for (const QString &text : texts)
        all.append(QString("job %1: ").arg(first) + text);
    return all;
}

QString ofPiece(int piece, const QString &text)
{
    return QString("piece %1: ").arg(piece) + text;
}

const Row ofJobs[] = {
    {"nothing", [](Evidence &) {}, {}},
    {"twice", [](Evidence &one) { one.bytes.prepend(one.of(first)); },
     ofFirst({isInPieces, isNotWhole})},
    {"killed, and twice",
     [](Evidence &one) {
         one.kill(0);
         one.bytes.prepend(one.of(first));
     },
     ofFirst({isInPieces})},
    {"a line twice", [](Evidence &one) { one.bytes = one.withOneTwice() + one.of(second); },
     ofFirst({isNotWhole, isNoBeginning})},
    {"a line lost", [](Evidence &one) { one.bytes = one.withoutOne() + one.of(second); },
     ofFirst({isNotWhole, isNoBeginning})},
    {"killed, a line lost",
     [](Evidence &one) {
         one.kill(0);
         one.bytes = one.withoutOne() + one.of(second);
     },
     ofFirst({isNoBeginning})},
    {"killed, a beginning",
     [](Evidence &one) {
         one.kill(0);
         one.bytes = one.beginning() + one.of(second);
     },
     {}},
    {"confirmed, a beginning", [](Evidence &one) { one.bytes = one.beginning() + one.of(second); },
     ofFirst({isNotWhole})},
    {"printed, not there",
     [](Evidence &one) {
         one.tell(0, Outcome::Printed);
         one.bytes = one.of(second);
     },
     ofFirst({isNotWhole})},
    {"not begun, there",
     [](Evidence &one) {
         one.tell(0, Outcome::NotBegun);
         one.bytes = one.beginning() + one.of(second);
     },
     ofFirst({"something of it is on paper"})},
    {"partly sent, whole", [](Evidence &one) { one.tell(0, Outcome::PartlySent); }, {}},
    {"sent, not there",
     [](Evidence &one) {
         one.tell(0, Outcome::Sent);
         one.bytes = one.of(second);
     },
     ofFirst({"all was taken, and isn't on paper"})},
    {"sent to a network, not there",
     [](Evidence &one) {
         one.plan.isNetwork = true;
         one.tell(0, Outcome::Sent);
         one.bytes = one.of(second);
     },
     {}},
    {"two jobs on a piece",
     [](Evidence &one) { one.bytes = one.uncut() + one.of(second); },
     {ofPiece(1, isMixed)}},
    {"hung",
     [](Evidence &one) {
         one.ends[0].hasHung = true;
         one.kill(0);
     },
     ofFirst({"didn't end"})},
    {"strange text",
     [](Evidence &one) { one.bytes.prepend("\x1B@0000\n" + one.cut()); },
     {ofPiece(1, isNobodys)}},
    {"spoilt bytes, all the same",
     [](Evidence &one) {
         one.plan.hasSpoilt = true;
         one.bytes = one.withOneTwice() + one.uncut() + one.of(second);
     },
     {}},
    {"spoilt bytes, hung",
     [](Evidence &one) {
         one.plan.hasSpoilt = true;
         one.ends[0].hasHung = true;
     },
     ofFirst({"didn't end"})},
    {"sound, not confirmed",
     [](Evidence &one) {
         one.plan.soundJobs = 2;
         one.tell(1, Outcome::Sent);
     },
     {"job 101: nothing was wrong any more, and it wasn't confirmed"}},
    {"sound, not begun",
     [](Evidence &one) {
         one.plan.soundJobs = 2;
         one.tell(0, Outcome::NotBegun);
         one.bytes = one.of(second);
     },
     ofFirst({"nothing was wrong any more, and it isn't whole",
              "nothing was wrong any more, and it wasn't confirmed"})},
    {"sound behind spoilt bytes, a beginning",
     [](Evidence &one) {
         one.plan.hasSpoilt = true;
         one.plan.soundJobs = 2;
         one.bytes = one.beginning() + one.of(second);
     },
     ofFirst({"nothing was wrong any more, and it isn't whole"})},
    {"power off, the rest of a line apart",
     [](Evidence &one) {
         one.switchOff();
         one.bytes = one.beginning() + one.lines(4, 6) + one.cut() + one.of(second);
     },
     {}},
    {"power off, a line twice",
     [](Evidence &one) {
         one.switchOff();
         one.bytes = one.beginning() + one.lines(2, 6) + one.cut() + one.of(second);
     },
     ofFirst({"lines are out of order, or there twice"})},
    {"power off beside it, a beginning",
     [](Evidence &one) {
         one.plan.hasPower = true;
         one.bytes = one.beginning() + one.of(second);
     },
     ofFirst({isNotWhole})},
};

const QString isTwiceUnsaid = QStringLiteral("it is on paper more than once, and nothing says so");
const QString isUnrepeated = QStringLiteral("it is on paper more than once, and wasn't repeated");

const Row ofQueues[] = {
    {"nothing", [](Evidence &) {}, {}},
    {"killed, and twice",
     [](Evidence &one) {
         one.plan.printerKills = {5000, -1};
         one.bytes.prepend(one.of(first));
     },
     ofFirst({isTwiceUnsaid, isUnrepeated})},
    {"a beginning, and repeated without a mark",
     [](Evidence &one) {
         one.queue[0].repeats = 1;
         one.bytes.prepend(one.beginning());
     },
     ofFirst({isTwiceUnsaid})},
    {"repeated with a mark",
     [](Evidence &one) {
         one.queue[0].repeats = 1;
         one.bytes = one.beginning() + one.of(second) + one.marked(first);
     },
     {}},
    {"marked unasked",
     [](Evidence &one) { one.bytes = one.of(first) + one.marked(first) + one.of(second); },
     ofFirst({isUnrepeated, "more of it say that they are repeats than were asked for"})},
    {"added and lost",
     [](Evidence &one) {
         one.queue.removeFirst();
         one.bytes = one.of(second);
     },
     ofFirst({"it was added, and is lost"})},
    {"adding was killed, nothing there",
     [](Evidence &one) {
         one.kill(0);
         one.queue.removeFirst();
         one.bytes = one.of(second);
     },
     {}},
    {"adding was killed, on paper alone",
     [](Evidence &one) {
         one.kill(0);
         one.queue.removeFirst();
     },
     ofFirst({"it isn't in the queue, and on paper"})},
    {"twice in the queue", [](Evidence &one) { one.queue.append(one.queue.constFirst()); },
     ofFirst({"it is in the queue more than once"})},
    {"adding hung", [](Evidence &one) { one.ends[0].hasHung = true; },
     ofFirst({"its adding didn't end"})},
    {"left over", [](Evidence &one) { one.queue[0].state = int(State::Unknown); },
     ofFirst({"the queue doesn't come to its end with it"})},
    {"dropped, a beginning",
     [](Evidence &one) {
         one.queue[0].state = int(State::Dropped);
         one.bytes = one.beginning() + one.of(second);
     },
     {}},
    {"confirmed, not there", [](Evidence &one) { one.bytes = one.of(second); },
     ofFirst({"it was confirmed, and isn't on paper"})},
    {"a line lost", [](Evidence &one) { one.bytes = one.withoutOne() + one.of(second); },
     ofFirst({"it was confirmed, and isn't on paper", isNoBeginning})},
    {"in another order", [](Evidence &one) { one.bytes = one.of(second) + one.of(first); },
     ofFirst({"it came behind one that was added later"})},
    {"two jobs on a piece",
     [](Evidence &one) { one.bytes = one.uncut() + one.of(second); },
     {ofPiece(1, isMixed)}},
    {"strange text",
     [](Evidence &one) { one.bytes.prepend("\x1B@0000\n" + one.cut()); },
     {ofPiece(1, isNobodys)}},
};

template <std::size_t Count>
void addRows(const Row (&rows)[Count])
{
    QTest::addColumn<Forge>("forge");
    QTest::addColumn<QStringList>("untruths");
    for (const Row &row : rows)
        QTest::newRow(row.name) << row.forge << row.untruths;
}

}  // namespace

Q_DECLARE_METATYPE(Forge)

class TestJudge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsUntrueOfJobsIsFound_data() { addRows(ofJobs); }
    void whatIsUntrueOfJobsIsFound()
    {
        QFETCH(Forge, forge);
        QFETCH(QStringList, untruths);
        Evidence evidence;
        forge(evidence);
        QCOMPARE(evidence.untruths().join('\n'), untruths.join('\n'));
    }

    void whatIsUntrueOfQueuesIsFound_data() { addRows(ofQueues); }
    void whatIsUntrueOfQueuesIsFound()
    {
        QFETCH(Forge, forge);
        QFETCH(QStringList, untruths);
        Evidence evidence = Evidence::ofQueue();
        forge(evidence);
        QCOMPARE(evidence.untruths().join('\n'), untruths.join('\n'));
    }

    // Only a printer that keeps a macro can tell that it was off.
    void powerOffIsMissedByPrintersWithoutMacros()
    {
        for (const QString &model : {plain, macroKeeper}) {
            Evidence evidence(model);
            evidence.switchOff();
            evidence.bytes = evidence.beginning() + evidence.of(second);
            QCOMPARE(evidence.untruths(), model == plain ? QStringList() : ofFirst({isNotWhole}));
        }
    }
};

QTEST_GUILESS_MAIN(TestJudge)
#include "tst_judge.moc"
