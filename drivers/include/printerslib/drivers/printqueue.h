#pragma once

#include <QObject>
#include <QStringList>
#include <QVector>
#include <memory>
#include <optional>

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerstatus.h"
#include "printerslib/drivers/printqueueentry.h"
#include "printerslib/drivers/printqueuerequest.h"

namespace printerslib::drivers {

class PrintJob;

/// Jobs in a folder, where a crash or a power cut leaves them, and the journal of those that are
/// printed.
///
/// Each step of a job is on the disk before the next one: that it is begun, before its first byte
/// goes out. So nothing is lost, and nothing is printed a second time unless somebody asks for it;
/// what was cut off in its middle is held until then. Held jobs don't hold up those behind them.
///
/// Programs of one user may add to a folder, list it and decide what becomes of held jobs, several
/// at a time; one of them prints, between start() and stop(). It prints in the order of adding, one
/// job at a time. If a printer can't print, its jobs stay in their order, and those of other
/// printers go on; a job that waits for its printer holds up all, so printers that are waited for
/// have a folder each.
///
/// The calls work on the disk, and wait for programs that do so at the same time, for 5 s at most.
/// What fails gives false, 0 or nothing, changes nothing, and fault() tells why. The thread that
/// the object lives in alone may use it. All signals come out of the event loop; a slot may do
/// anything, also delete the queue: a job that is under way is Unknown then.
class PRINTERSLIB_DRIVERS_EXPORT PrintQueue : public QObject
{
    Q_OBJECT

public:
    static constexpr int usualDays = 30;          ///< that the journal goes back
    static constexpr int usualCount = 10'000;     ///< jobs that are in it
    static constexpr int everything = -1;         ///< of journal()
    static constexpr qint64 mostBytes = 1 << 26;  ///< of a document

    /// Touches nothing yet; the first call that needs the folder makes it.
    explicit PrintQueue(const QString &folder = defaultFolder(), QObject *parent = nullptr);
    /// Lets a job that is under way go.
    ~PrintQueue() override;

    /// $XDG_STATE_HOME/printerslib/queue, or ~/.local/state/printerslib/queue.
    static QString defaultFolder();
    QString folder() const;  ///< as given, absolute
    QString fault() const;   ///< why the last call failed, in English; empty if it didn't

    /// How long the journal keeps printed jobs with their bytes, from now on. The last receipt
    /// stays in any case.
    /// @param days, count at least 1; 0 is no limit
    void setRetention(int days, int count);

    /// Keeps a job; it is durable when this returns.
    /// @return its id; 0 if it isn't kept
    qint64 add(const PrintQueueRequest &request);

    /// All that wait, are under way or are held, in the order of adding. Damaged files are left
    /// out; fault() says that the folder can't be read.
    QVector<PrintQueueEntry> entries();
    /// What is done or was dropped, the newest first. Files that can't be read are left out, and
    /// fault() names the first of them.
    QVector<PrintQueueEntry> journal(int most = everything);
    /// One of both; nothing if there is none.
    std::optional<PrintQueueEntry> entry(qint64 id);
    /// What is kept of its document: bytes, marks, notes, pieces and retraction, as added.
    std::optional<EncodedDocument> document(qint64 id);
    /// Files of the queue that can't be read: those that were put aside, in the folder "damaged",
    /// and those in front, of which start() puts there what is no newer version's or another
    /// user's. Paths relative to the folder.
    QStringList damagedFiles();

    /// Lets a held job wait again, in its old place. It is printed with a line in front that says
    /// that it is a repeat, in the language of the library's words.
    bool repeat(qint64 id);
    /// Gives up a job that waits or is held: it goes into the journal as Dropped.
    bool drop(qint64 id);
    /// Adds a copy of the last job in the journal that is done, no copy, and has this document
    /// number. It is printed with the mark of a copy in front, and opens no drawer.
    /// @return the id of the copy; 0 if there is none
    qint64 reprint(const QString &documentNumber);
    /// The same of the last job of all that didn't just open a drawer. 0 also if a newer file of
    /// the journal can't be read.
    qint64 reprintLast();

    /// Prints what waits, and what is added by whatever program, until stop(). Called again, it
    /// tries anew what couldn't be printed, and takes back a stop() that hasn't come to stopped().
    /// @return false if another program prints what is in the folder, or it can't be used
    bool start();
    /// Cancels the job that is under way, and ends in stopped(). What isn't begun stays; tickets
    /// that are held out aren't taken back any more.
    void stop();
    bool isRunning() const;  ///< between start() and stopped()

Q_SIGNALS:
    /// A job is tried now; nothing has gone out yet.
    void started(const printerslib::drivers::PrintQueueEntry &entry);
    /// So many jobs of other programs are in front on its printer.
    void waiting(qint64 id, int ahead);
    /// As PrintJob::progress().
    void progress(qint64 id, qint64 sent, qint64 total);
    /// As PrintJob::statusChanged().
    void statusChanged(qint64 id, const printerslib::drivers::PrinterStatus &status);
    /// As PrintJob::note(); with id 0 something of the folder.
    void note(qint64 id, const QString &text);
    /// A job is at its end, which is written down. Waiting: it stays, as its printer can't print,
    /// as its begin couldn't be written down (Refused), or as stop() cancelled it. In the first
    /// case all that goes to this printer waits for the next start(); in the second one it is tried
    /// again each second, and each time ends so while the folder can't be written.
    void ended(const printerslib::drivers::PrintQueueEntry &entry);
    /// There is nothing to be tried any more; told once until there is. Also between two tries of
    /// what was Refused, but for the first two.
    void idle();
    /// Behind stop(): nothing is under way any more, and another program may print.
    void stopped();

protected:
    /// What prints a document; for tests.
    virtual std::unique_ptr<PrintJob> makeJob(const EncodedDocument &document,
                                              const PrinterProfile &profile,
                                              const PrinterAddress &address,
                                              const PrintJobOptions &options);

private:
    struct Parts;

    void lookForNext();
    void startJob();
    void connectNote(const PrintJob &job, qint64 id);
    bool writeBegin();
    void jobIsOver(const PrintJobResult &result);
    void beginLater(const PrintQueueEntry &entry);
    void keepForRetraction();
    void writeEnd();
    void tellIdle();
    void endRun();

    std::unique_ptr<Parts> m_parts;
};

}  // namespace printerslib::drivers
