#pragma once

#include <printerslib/drivers/printeraddress.h>
#include <printerslib/drivers/printjob.h>

#include <QEventLoop>
#include <QString>

#include "interrupt.h"
#include "printnotes.h"
#include "progressline.h"

namespace tool {

/// What goes to which printer, and how.
struct JobOrder
{
    printerslib::drivers::EncodedDocument document;
    printerslib::drivers::PrinterProfile profile;
    printerslib::drivers::PrinterAddress address;
    printerslib::drivers::PrintJobOptions options;
    bool isOnPaper = true;  ///< or a command that leaves nothing there
    Places places{};        ///< for messages
    QStringList notes{};    ///< what isn't printed as asked, as it is told
};

/// Prints one document. Tells on standard error what happens meanwhile: whose turn it is, what is
/// waited for, how far it is. An interrupt cancels the job.
class JobRunner
{
public:
    /// @param interrupt outlives this
    JobRunner(const JobOrder &order, const Interrupt &interrupt);

    printerslib::drivers::PrintJobResult run();
    /// Waits until a ticket that is held out is taken back; an interrupt leaves it.
    void awaitRetraction();

private:
    void tell(const QString &text);
    void tellStatus(const printerslib::drivers::PrinterStatus &status);
    void cancel();

    const JobOrder m_order;
    const Interrupt &m_interrupt;
    printerslib::drivers::PrintJob m_job;
    ProgressLine m_progress;
    QEventLoop m_loop;     ///< ends with the connections that tell
    QString m_waitingFor;  ///< what was told of it; empty: nothing is waited for
};

}  // namespace tool
