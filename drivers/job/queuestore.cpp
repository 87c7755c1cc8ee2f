#include "job/queuestore_p.h"

#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr int callMilliseconds = 5000;
// Of what happens in an event loop while a printer prints.
constexpr int stepMilliseconds = 500;
// More would be no receipt, and the reader of files takes no more.
constexpr int mostHeadText = 4096;

QDateTime nowInUtc()
{
    return QDateTime::currentDateTimeUtc();
}

}  // namespace

void QueueStore::setRetention(int days, int count)
{
    m_days = std::max(0, days);
    m_count = std::max(0, count);
}

bool QueueStore::fail(const QString &fault)
{
    m_fault = fault;
    return false;
}

std::unique_ptr<Turns> QueueStore::lock(int milliseconds)
{
    m_fault.clear();
    auto turns = m_folder.make() && m_folder.canList() ? m_folder.lock(milliseconds) : nullptr;
    if (!turns)
        failOfFolder();
    return turns;
}

QString QueueStore::jobText(qint64 id) const
{
    return QStringLiteral("job %1 of %2").arg(id).arg(path());
}

// ---- Adding

qint64 QueueStore::add(QueuedJob job)
{
    for (const QString &text :
         {job.entry.title, job.entry.documentNumber, job.entry.address.toString()}) {
        if (text.size() <= mostHeadText)
            continue;
        fail(QStringLiteral("a title, document number or address of more than %1 characters")
                 .arg(mostHeadText));
        return 0;
    }
    const auto turns = lock(callMilliseconds);
    if (!turns)
        return 0;
    job.entry.id = m_folder.freeId();
    job.entry.added = nowInUtc();
    if (job.entry.id > 0 && m_folder.write(Place::Queue, job))
        return job.entry.id;
    failOfFolder();
    return 0;
}

// ---- Looking

/// Nobody prints any more what was begun by a program that has gone.
bool QueueStore::settle()
{
    const auto right = m_right ? nullptr : m_folder.printingRight();
    if (!m_right && !right)
        return true;
    const QVector<qint64> ids = m_folder.ids(Place::Queue);
    for (const qint64 id : ids) {
        const auto head = m_folder.readHead(Place::Queue, id);
        if (!head || head->entry.state != State::Printing || id == m_begun)
            continue;
        auto job = m_folder.read(Place::Queue, id);
        if (!job)
            continue;
        job->entry.state = State::Unknown;
        job->entry.result.text = QStringLiteral("the program that printed it ended meanwhile");
        if (!m_folder.write(Place::Queue, *job))
            return failOfFolder();
    }
    return true;
}

QVector<PrintQueueEntry> QueueStore::entries()
{
    m_fault.clear();
    QVector<PrintQueueEntry> found;
    if (!m_folder.canList()) {
        failOfFolder();
        return found;
    }
    bool isUnsettled = false;
    const auto look = [&] {
        found.clear();
        const QVector<qint64> ids = m_folder.ids(Place::Queue);
        for (const qint64 id : ids) {
            if (const auto job = m_folder.readHead(Place::Queue, id)) {
                found.append(job->entry);
                isUnsettled |= job->entry.state == State::Printing && id != m_begun;
            }
        }
    };
    look();
    if (!isUnsettled)
        return found;
    // Where that can't be written, it stays what it looks like.
    if (const auto turns = lock(stepMilliseconds)) {
        if (settle())
            look();
    }
    m_fault.clear();
    return found;
}

QVector<PrintQueueEntry> QueueStore::journal(int most)
{
    m_fault.clear();
    QVector<PrintQueueEntry> found;
    if (!m_folder.canList())
        failOfFolder();
    const QVector<qint64> ids = m_folder.ids(Place::Journal);
    for (auto id = ids.crbegin(); id != ids.crend() && found.size() != most; ++id) {
        if (const auto job = m_folder.readHead(Place::Journal, *id))
            found.append(job->entry);
        else if (m_fault.isEmpty() && m_folder.exists(Place::Journal, *id))
            failOfFolder();
    }
    return found;
}

std::optional<PrintQueueEntry> QueueStore::entry(qint64 id)
{
    m_fault.clear();
    for (const Place place : {Place::Journal, Place::Queue}) {
        if (!m_folder.exists(place, id))
            continue;
        if (const auto job = m_folder.readHead(place, id))
            return job->entry;
        failOfFolder();
        return std::nullopt;
    }
    fail(QStringLiteral("there is no %1").arg(jobText(id)));
    return std::nullopt;
}

std::optional<EncodedDocument> QueueStore::document(qint64 id)
{
    if (!entry(id))
        return std::nullopt;
    const bool isOver = m_folder.exists(Place::Journal, id);
    const auto job = m_folder.read(isOver ? Place::Journal : Place::Queue, id);
    if (job)
        return job->request.document;
    failOfFolder();
    return std::nullopt;
}

QStringList QueueStore::damagedFiles()
{
    m_fault.clear();
    QStringList names = m_folder.damagedNames();
    const QVector<qint64> ids = m_folder.ids(Place::Queue);
    for (const qint64 id : ids) {
        if (!m_folder.read(Place::Queue, id) && m_folder.exists(Place::Queue, id))
            names.append(QueueFolder::nameOf(id));
    }
    return names;
}

// ---- Deciding

/// A job that isn't under way and isn't over. Under lock().
std::optional<QueuedJob> QueueStore::decidable(qint64 id)
{
    if (!settle())
        return std::nullopt;
    if (m_folder.exists(Place::Journal, id)) {
        fail(QStringLiteral("%1 is over").arg(jobText(id)));
        return std::nullopt;
    }
    if (!m_folder.exists(Place::Queue, id)) {
        fail(QStringLiteral("there is no %1").arg(jobText(id)));
        return std::nullopt;
    }
    auto job = m_folder.read(Place::Queue, id);
    if (!job) {
        failOfFolder();
        return std::nullopt;
    }
    if (job->entry.state == State::Printing) {
        fail(QStringLiteral("%1 is being printed").arg(jobText(id)));
        return std::nullopt;
    }
    return job;
}

bool QueueStore::repeat(qint64 id, const QString &line)
{
    const auto turns = lock(callMilliseconds);
    auto job = turns ? decidable(id) : std::nullopt;
    if (!job)
        return false;
    if (!job->entry.isHeld())
        return fail(QStringLiteral("%1 isn't held: it waits").arg(jobText(id)));
    if (job->entry.repeats == 0)
        job->linesInFront.prepend(line);
    job->entry.repeats++;
    job->entry.state = State::Waiting;
    return m_folder.write(Place::Queue, *job) || failOfFolder();
}

bool QueueStore::drop(qint64 id)
{
    const auto turns = lock(callMilliseconds);
    auto job = turns ? decidable(id) : std::nullopt;
    if (!job)
        return false;
    job->entry.state = State::Dropped;
    job->entry.ended = nowInUtc();
    return m_folder.moveToJournal(*job) || failOfFolder();
}

/// The newest in the journal that may be copied, of all that printed something or with a number. 0,
/// with a fault, if there is none, or if a newer one that can't be read may be it.
qint64 QueueStore::lastReceipt(const std::optional<QString> &documentNumber)
{
    QString unreadable;
    const QVector<qint64> ids = m_folder.ids(Place::Journal);
    for (auto id = ids.crbegin(); id != ids.crend(); ++id) {
        const auto head = m_folder.readHead(Place::Journal, *id);
        if (!head && unreadable.isEmpty())
            unreadable = m_folder.fault();
        // Nothing behind it is the last one for certain.
        if (!head && !documentNumber)
            break;
        if (!head || head->entry.state != State::Done || head->entry.isCopy)
            continue;
        if (documentNumber ? head->entry.documentNumber == *documentNumber : !head->isDrawerAlone)
            return *id;
    }
    fail(unreadable.isEmpty()
             ? QStringLiteral("the journal of %1 has no such receipt").arg(path())
             : QStringLiteral("%1, and may be the receipt that is asked for").arg(unreadable));
    return 0;
}

std::optional<QueuedJob> QueueStore::original(const std::optional<QString> &documentNumber)
{
    const auto turns = lock(callMilliseconds);
    const qint64 found = turns ? lastReceipt(documentNumber) : 0;
    if (found == 0)
        return std::nullopt;
    auto job = m_folder.read(Place::Journal, found);
    if (!job)
        failOfFolder();
    return job;
}

/// Not under lock(), which nobody is to wait for while a long receipt is looked through.
qint64 QueueStore::reprint(const std::optional<QString> &documentNumber, const QString &line)
{
    const auto receipt = original(documentNumber);
    if (!receipt)
        return 0;
    QueuedJob copy = QueuedJob::of(receipt->request);
    copy.entry.isCopy = true;
    copy.entry.copyOf = receipt->entry.id;
    copy.linesInFront = QStringList{line};
    copy.isDrawerShut = true;
    // It would wait for ever, and all others of its printer behind it.
    const EncodedDocument printed = copy.printed();
    const bool isNothing = copy.isDrawerAlone || printed.bytes.isEmpty();
    if (printed.error.isEmpty() && !isNothing)
        return add(copy);
    fail(QStringLiteral("%1 can't be copied: %2")
             .arg(jobText(receipt->entry.id),
                  printed.error.isEmpty()
                      ? QStringLiteral("it opened a drawer, and printed nothing")
                      : printed.error));
    return 0;
}

// ---- Printing

std::optional<QStringList> QueueStore::beginPrinting()
{
    const auto turns = lock(callMilliseconds);
    if (!turns)
        return std::nullopt;
    m_right = m_folder.printingRight();
    m_begun = 0;
    if (!m_right) {
        failOfFolder();
        return std::nullopt;
    }
    m_folder.tidy();
    QStringList aside = putAsideWhatIsDamaged();
    if (!settle()) {
        m_right.reset();
        return std::nullopt;
    }
    return aside;
}

void QueueStore::endPrinting()
{
    m_right.reset();
    m_begun = 0;
}

QStringList QueueStore::putAsideWhatIsDamaged()
{
    QStringList texts;
    const QVector<qint64> ids = m_folder.ids(Place::Queue);
    for (const qint64 id : ids) {
        if (m_folder.read(Place::Queue, id))
            continue;
        const QString fault = m_folder.fault();
        if (!m_folder.isDamage())
            texts.append(fault);
        else if (m_folder.putAside(id))
            texts.append(QStringLiteral("%1; it lies in the folder \"damaged\" now").arg(fault));
        else
            texts.append(
                QStringLiteral("%1; it can't be put aside: %2").arg(fault, m_folder.fault()));
    }
    return texts;
}

std::optional<QueuedJob> QueueStore::next(
    const std::function<bool(const PrintQueueEntry &)> &isWanted)
{
    const QVector<qint64> ids = m_folder.ids(Place::Queue);
    for (const qint64 id : ids) {
        const auto head = m_folder.readHead(Place::Queue, id);
        if (!head || head->entry.state != State::Waiting || !isWanted(head->entry))
            continue;
        if (auto job = m_folder.read(Place::Queue, id))
            return job;
    }
    return std::nullopt;
}

bool QueueStore::isDropped(qint64 id) const
{
    return m_folder.exists(Place::Journal, id) || !m_folder.exists(Place::Queue, id);
}

bool QueueStore::begin(QueuedJob &job)
{
    const auto turns = lock(stepMilliseconds);
    if (!turns)
        return false;
    if (isDropped(job.entry.id))
        return fail(QStringLiteral("%1 was dropped").arg(jobText(job.entry.id)));
    QueuedJob begun = job;
    begun.entry.state = State::Printing;
    begun.entry.begun = nowInUtc();
    begun.entry.ended = {};
    if (!m_folder.write(Place::Queue, begun))
        return failOfFolder();
    job = begun;
    m_begun = job.entry.id;
    return true;
}

bool QueueStore::end(const QueuedJob &job)
{
    const auto turns = lock(stepMilliseconds);
    if (!turns)
        return false;
    const bool isOver = job.entry.state == State::Done;
    if (!(isOver ? m_folder.moveToJournal(job) : m_folder.write(Place::Queue, job)))
        return failOfFolder();
    m_begun = 0;
    if (isOver)
        prune();
    return true;
}

/// How many of these are too many, or too old.
int QueueStore::countOfOld(const QVector<qint64> &ids)
{
    int count = m_count > 0 ? std::max(0, ids.size() - m_count) : 0;
    const QDateTime now = nowInUtc();
    const QDateTime oldest = now.addDays(-m_days);
    for (int i = count; m_days > 0 && i + 1 < ids.size(); ++i) {
        const auto head = m_folder.readHead(Place::Journal, ids.at(i));
        // A time ahead is of a clock that was wrong: it is as old as those behind it.
        if (!head || head->entry.ended > now)
            continue;
        if (head->entry.ended >= oldest)
            break;
        count = i + 1;
    }
    return count;
}

/// The last one stays, whatever its age, and keeps its number from being given again; so does what
/// is reprinted as the last receipt.
void QueueStore::prune()
{
    const QVector<qint64> ids = m_folder.ids(Place::Journal);
    QVector<qint64> old = ids.mid(0, countOfOld(ids));
    if (old.isEmpty())
        return;
    old.removeOne(lastReceipt(std::nullopt));
    m_folder.removeAll(Place::Journal, old);
}

}  // namespace printerslib::drivers
