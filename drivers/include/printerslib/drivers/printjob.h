#pragma once

#include <QObject>
#include <memory>

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printjoboptions.h"
#include "printerslib/drivers/printjobresult.h"

namespace printerslib::drivers {

class DeviceLock;
class JobRun;
class Transport;

/// A document on its way to a printer, and what is known of it in the end.
///
/// It waits for its turn, repairs what a job before it has left, asks the printer how it is, sends,
/// and asks for the strongest confirmation that the model has. Each doubt ends in the weaker
/// result.
///
/// No operation waits: all is told by signals, out of the event loop of the thread that the object
/// lives in, which alone may use it. None comes from within a call. A slot of any of them may do
/// anything, also delete the job: then nothing more is sent, and the next job on this printer
/// repairs what is left.
class PRINTERSLIB_DRIVERS_EXPORT PrintJob : public QObject
{
    Q_OBJECT

public:
    /// @param document of DocumentEncoder for the same model; or bytes with their marks
    /// @param profile  what the model understands, answers and confirms
    /// @param address  where it is
    PrintJob(const EncodedDocument &document, const PrinterProfile &profile,
             const PrinterAddress &address, const PrintJobOptions &options = {},
             QObject *parent = nullptr);
    /// Lets the line and the turn go, at once.
    ~PrintJob() override;

    /// Begins; ends in finished(). Does nothing the second time.
    void start();
    /// Stops at the end of the command under way, resets the printer, cuts, and ends in finished().
    /// If all has gone out, no confirmation is waited for any more. Behind finished(): a ticket
    /// isn't taken back any more, as somebody has taken it.
    void cancel();

    bool isFinished() const;        ///< whether result() is the last word; finished() may follow
    PrintJobResult result() const;  ///< until then NotBegun or PartlySent, as far as the job is
    /// Whether a ticket that is held out is still to be taken back: the job has to live until
    /// retracted(), or nobody takes it back.
    bool isRetracting() const;

Q_SIGNALS:
    /// How many other jobs are in front.
    void waiting(int ahead);
    /// How many bytes of the document the line has taken. Of several that come at once the last.
    void progress(qint64 sent, qint64 total);
    /// The printer has told something new of itself.
    void statusChanged(const printerslib::drivers::PrinterStatus &status);
    /// Something that a user should know, which doesn't change the result; in English.
    void note(const QString &text);
    /// The job is at its end; told once.
    void finished(const printerslib::drivers::PrintJobResult &result);
    /// Behind finished(), of a ticket that was held out: whether the command went out that takes it
    /// back. It doesn't if another job has printed since, or the printer can't be reached.
    void retracted(bool isDone);

protected:
    /// With a line and a lock of one's own, for tests.
    /// @param second milliseconds that count as one until a ticket is taken back
    PrintJob(const EncodedDocument &document, const PrinterProfile &profile,
             std::unique_ptr<Transport> transport, std::unique_ptr<DeviceLock> lock,
             const PrintJobOptions &options, int second, QObject *parent = nullptr);

private:
    void listen();

    std::unique_ptr<JobRun> m_run;
};

}  // namespace printerslib::drivers
