#include "printerslib/drivers/printqueue.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileSystemWatcher>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <algorithm>
#include <vector>

#include "job/queuestore_p.h"
#include "printerslib/drivers/leadingline.h"
#include "printerslib/drivers/printjob.h"

namespace printerslib::drivers {

namespace {

using Outcome = PrintJobResult::Outcome;
using Reason = PrintJobResult::Reason;
using State = PrintQueueEntry::State;

constexpr int writeAgainMilliseconds = 500;
constexpr int lookAgainMilliseconds = 1000;
constexpr int beginAgainMilliseconds = 1000;

/// The mark of copies as the formatter has it, without the tag that centres it there.
QString copyLine()
{
    const QString tag = QStringLiteral("<C>");
    const QString line = QCoreApplication::translate("PrinterDocumentFormatter", "<C>CHECK_COPY");
    return line.startsWith(tag) ? line.mid(tag.size()) : line;
}

/// What a result makes of a job that was begun.
State stateAfter(const PrintJobResult &result)
{
    switch (result.outcome) {
        case Outcome::NotBegun:
            return State::Waiting;
        case Outcome::PartlySent:
            return State::Partial;
        case Outcome::Sent:
            // It is all that the model can tell or that was asked for, or it is a doubt.
            return result.reason == Reason::None ? State::Done : State::Unknown;
        case Outcome::Processed:
        case Outcome::Printed:
            break;
    }
    return State::Done;
}

}  // namespace

struct PrintQueue::Parts
{
    explicit Parts(const QString &folder) : store(folder) {}

    /// Hands on what a call gives, and keeps its fault.
    template <typename Result>
    Result told(Result result)
    {
        fault = store.fault();
        return result;
    }

    /// The same of a call that may have made something to be done.
    template <typename Result>
    Result changed(Result result)
    {
        look.start(0);
        return told(result);
    }

    QueueStore store;
    QString fault;
    QFileSystemWatcher watcher;
    QTimer look;       ///< for the next job
    QTimer lookAgain;  ///< where the system can't watch the folder
    QTimer write;      ///< of an end that couldn't be written down
    QTimer begin;      ///< of what couldn't be written down as begun
    std::unique_ptr<PrintJob> job;
    std::vector<std::unique_ptr<PrintJob>> retracting;
    std::optional<QueuedJob> current;
    QSet<QString> blocked;  ///< printers that couldn't print
    QSet<QString> refused;  ///< printers whose jobs couldn't be begun, for a moment
    QString refusal;        ///< why the current job couldn't be begun
    bool isBegun = false;   ///< the current job is, durably
    bool isEndDue = false;  ///< of the current job, which is over
    bool isRunning = false;
    bool isStopping = false;
    bool isIdleTold = false;
    bool isTriedAgain = false;  ///< what was refused, since the last job that was begun
};

PrintQueue::PrintQueue(const QString &folder, QObject *parent)
    : QObject(parent), m_parts(std::make_unique<Parts>(folder))
{
    setRetention(usualDays, usualCount);
    for (QTimer *timer : {&m_parts->look, &m_parts->write, &m_parts->begin})
        timer->setSingleShot(true);
    connect(&m_parts->look, &QTimer::timeout, this, &PrintQueue::lookForNext);
    connect(&m_parts->lookAgain, &QTimer::timeout, this, &PrintQueue::lookForNext);
    connect(&m_parts->write, &QTimer::timeout, this, &PrintQueue::writeEnd);
    connect(&m_parts->begin, &QTimer::timeout, this, [this] {
        m_parts->refused.clear();
        m_parts->isTriedAgain = true;
        lookForNext();
    });
    connect(&m_parts->watcher, &QFileSystemWatcher::directoryChanged, this,
            [this] { m_parts->look.start(0); });
}

PrintQueue::~PrintQueue() = default;

QString PrintQueue::defaultFolder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    // As the rules of such folders have it, one that isn't absolute doesn't count.
    const QString root =
        QDir::isAbsolutePath(state) ? state : QDir::homePath() + QStringLiteral("/.local/state");
    return root + QStringLiteral("/printerslib/queue");
}

QString PrintQueue::folder() const
{
    return m_parts->store.path();
}

QString PrintQueue::fault() const
{
    return m_parts->fault;
}

void PrintQueue::setRetention(int days, int count)
{
    m_parts->store.setRetention(days, count);
}

// ---- The folder

qint64 PrintQueue::add(const PrintQueueRequest &request)
{
    const EncodedDocument &document = request.document;
    QString &fault = m_parts->fault;
    fault.clear();
    if (!document.error.isEmpty())
        fault = document.error;
    else if (document.bytes.isEmpty())
        fault = QStringLiteral("the document is empty");
    else if (document.bytes.size() > mostBytes)
        fault = QStringLiteral("the document has %1 bytes; %2 are the most")
                    .arg(document.bytes.size())
                    .arg(mostBytes);
    else if (request.address.isNull())
        fault = QStringLiteral("no printer is named");
    return fault.isEmpty() ? m_parts->changed(m_parts->store.add(QueuedJob::of(request))) : 0;
}

QVector<PrintQueueEntry> PrintQueue::entries()
{
    return m_parts->told(m_parts->store.entries());
}

QVector<PrintQueueEntry> PrintQueue::journal(int most)
{
    return m_parts->told(m_parts->store.journal(most));
}

std::optional<PrintQueueEntry> PrintQueue::entry(qint64 id)
{
    return m_parts->told(m_parts->store.entry(id));
}

std::optional<EncodedDocument> PrintQueue::document(qint64 id)
{
    return m_parts->told(m_parts->store.document(id));
}

QStringList PrintQueue::damagedFiles()
{
    return m_parts->told(m_parts->store.damagedFiles());
}

bool PrintQueue::repeat(qint64 id)
{
    return m_parts->changed(m_parts->store.repeat(id, repeatMark()));
}

bool PrintQueue::drop(qint64 id)
{
    return m_parts->changed(m_parts->store.drop(id));
}

qint64 PrintQueue::reprint(const QString &documentNumber)
{
    return m_parts->changed(m_parts->store.reprint(documentNumber, copyLine()));
}

qint64 PrintQueue::reprintLast()
{
    return m_parts->changed(m_parts->store.reprint(std::nullopt, copyLine()));
}

// ---- Printing

bool PrintQueue::start()
{
    Parts &parts = *m_parts;
    parts.fault.clear();
    parts.blocked.clear();
    parts.refused.clear();
    parts.begin.stop();
    parts.isTriedAgain = false;
    parts.isIdleTold = false;
    parts.isStopping = false;
    if (!parts.isRunning) {
        const auto aside = parts.told(parts.store.beginPrinting());
        if (!aside)
            return false;
        parts.isRunning = true;
        // A user may watch so many folders, and no more.
        if (!parts.watcher.addPath(folder()))
            parts.lookAgain.start(lookAgainMilliseconds);
        for (const QString &text : *aside)
            QMetaObject::invokeMethod(
                this, [this, text] { Q_EMIT note(0, text); }, Qt::QueuedConnection);
    }
    parts.look.start(0);
    return true;
}

void PrintQueue::stop()
{
    Parts &parts = *m_parts;
    if (!parts.isRunning)
        return;
    parts.isStopping = true;
    if (parts.job)
        parts.job->cancel();
    parts.look.start(0);
}

bool PrintQueue::isRunning() const
{
    return m_parts->isRunning;
}

std::unique_ptr<PrintJob> PrintQueue::makeJob(const EncodedDocument &document,
                                              const PrinterProfile &profile,
                                              const PrinterAddress &address,
                                              const PrintJobOptions &options)
{
    return std::make_unique<PrintJob>(document, profile, address, options);
}

void PrintQueue::lookForNext()
{
    Parts &parts = *m_parts;
    if (!parts.isRunning)
        return;
    if (parts.current) {
        // Somebody has given up what waits for its printer.
        if (parts.job && !parts.isBegun && parts.store.isDropped(parts.current->entry.id))
            parts.job->cancel();
        return;
    }
    if (parts.isStopping) {
        endRun();
        return;
    }
    parts.current = parts.store.next([&parts](const PrintQueueEntry &entry) {
        const QString printer = entry.address.lockKey();
        return !parts.blocked.contains(printer) && !parts.refused.contains(printer);
    });
    if (parts.current)
        startJob();
    else
        tellIdle();
}

void PrintQueue::endRun()
{
    Parts &parts = *m_parts;
    // Who takes tickets back isn't waited for any more.
    parts.retracting.clear();
    parts.isRunning = false;
    parts.isStopping = false;
    parts.watcher.removePath(folder());
    parts.lookAgain.stop();
    parts.begin.stop();
    parts.store.endPrinting();
    Q_EMIT stopped();
}

void PrintQueue::tellIdle()
{
    Parts &parts = *m_parts;
    // A program that was just busy with the folder is no reason to go.
    const bool isToBeTried = parts.begin.isActive() && !parts.isTriedAgain;
    if (parts.isIdleTold || isToBeTried || !parts.retracting.empty())
        return;
    parts.isIdleTold = true;
    Q_EMIT idle();
}

void PrintQueue::startJob()
{
    Parts &parts = *m_parts;
    const QueuedJob &current = *parts.current;
    const qint64 id = current.entry.id;
    parts.isBegun = false;
    parts.isIdleTold = false;
    PrintJobOptions options = current.request.options;
    options.beforeSending = [this] { return writeBegin(); };
    parts.job = makeJob(current.printed(), current.request.profile, current.entry.address, options);
    const PrintJob *const job = parts.job.get();
    connect(job, &PrintJob::waiting, this, [this, id](int ahead) { Q_EMIT waiting(id, ahead); });
    connect(job, &PrintJob::progress, this,
            [this, id](qint64 sent, qint64 total) { Q_EMIT progress(id, sent, total); });
    connect(job, &PrintJob::statusChanged, this,
            [this, id](const PrinterStatus &status) { Q_EMIT statusChanged(id, status); });
    connectNote(*job, id);
    connect(job, &PrintJob::finished, this, &PrintQueue::jobIsOver);
    parts.job->start();
    Q_EMIT started(PrintQueueEntry(current.entry));
}

void PrintQueue::connectNote(const PrintJob &job, qint64 id)
{
    connect(&job, &PrintJob::note, this,
            [this, id](const QString &text) { Q_EMIT note(id, text); });
}

bool PrintQueue::writeBegin()
{
    Parts &parts = *m_parts;
    parts.isBegun = parts.store.begin(*parts.current);
    // Slots that look into the folder have another one by the time that the job ends.
    parts.refusal = parts.store.fault();
    if (parts.isBegun)
        parts.isTriedAgain = false;
    return parts.isBegun;
}

void PrintQueue::jobIsOver(const PrintJobResult &result)
{
    Parts &parts = *m_parts;
    PrintQueueEntry &entry = parts.current->entry;
    entry.result = result;
    if (result.reason == Reason::Refused)
        entry.result.text = parts.refusal;
    entry.state = stateAfter(result);
    if (entry.state != State::Waiting) {
        entry.ended = QDateTime::currentDateTimeUtc();
    } else {
        entry.begun = {};
        if (!parts.isBegun && parts.store.isDropped(entry.id))
            entry.state = State::Dropped;
        else if (result.reason == Reason::Refused)
            beginLater(entry);
        else if (result.reason != Reason::Cancelled)
            parts.blocked.insert(entry.address.lockKey());
    }
    keepForRetraction();
    parts.isEndDue = parts.isBegun;
    writeEnd();
}

/// The folder may be free, or have room, in a moment. What goes to other printers is tried before
/// that.
void PrintQueue::beginLater(const PrintQueueEntry &entry)
{
    m_parts->refused.insert(entry.address.lockKey());
    m_parts->begin.start(beginAgainMilliseconds);
}

/// The job that is over goes, unless its ticket is held out.
void PrintQueue::keepForRetraction()
{
    Parts &parts = *m_parts;
    PrintJob *const job = parts.job.get();
    job->disconnect(this);
    if (!job->isRetracting()) {
        parts.job.release()->deleteLater();
        return;
    }
    connectNote(*job, parts.current->entry.id);
    parts.retracting.push_back(std::move(parts.job));
    connect(job, &PrintJob::retracted, this, [this, job] {
        auto &jobs = m_parts->retracting;
        const auto over = std::find_if(jobs.begin(), jobs.end(),
                                       [job](const auto &kept) { return kept.get() == job; });
        over->release()->deleteLater();
        jobs.erase(over);
        m_parts->look.start(0);
    });
}

void PrintQueue::writeEnd()
{
    Parts &parts = *m_parts;
    if (!parts.current)
        return;
    const qint64 id = parts.current->entry.id;
    if (parts.isEndDue && !parts.store.end(*parts.current)) {
        const QString text =
            QStringLiteral("what became of it can't be written down: ") + parts.store.fault();
        if (parts.isStopping) {
            parts.current.reset();
            parts.look.start(0);
        } else {
            parts.write.start(writeAgainMilliseconds);
        }
        Q_EMIT note(id, text);
        return;
    }
    const PrintQueueEntry entry = parts.current->entry;
    parts.isEndDue = false;
    parts.current.reset();
    parts.look.start(0);
    Q_EMIT ended(entry);
}

}  // namespace printerslib::drivers
