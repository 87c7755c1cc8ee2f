#include "jobrunner.h"

#include "queueplace.h"
#include "support.h"

namespace tool {

using printerslib::drivers::PrinterStatus;
using printerslib::drivers::PrintJob;
using printerslib::drivers::PrintJobResult;

JobRunner::JobRunner(const JobOrder &order, const Interrupt &interrupt)
    : m_order(order),
      m_interrupt(interrupt),
      m_job(order.document, order.profile, order.address, order.options),
      m_progress(QStringLiteral("printing"))
{
    QObject::connect(&m_job, &PrintJob::waiting, &m_loop, [this](int ahead) {
        m_progress.clear();
        tellPlaceInQueue(m_order.address, ahead);
    });
    QObject::connect(&m_job, &PrintJob::progress, &m_loop,
                     [this](qint64 sent, qint64 total) { m_progress.show(sent, total); });
    QObject::connect(&m_job, &PrintJob::note, &m_loop, [this](const QString &text) { tell(text); });
    QObject::connect(&m_job, &PrintJob::statusChanged, &m_loop,
                     [this](const PrinterStatus &status) { tellStatus(status); });
    QObject::connect(&m_job, &PrintJob::finished, &m_loop, &QEventLoop::quit);
    QObject::connect(&m_job, &PrintJob::retracted, &m_loop, [this](bool isDone) {
        if (!isDone && !m_interrupt.hasCome())
            tell(QStringLiteral("the ticket wasn't taken back"));
        m_loop.quit();
    });
    if (m_interrupt.notifier() != nullptr)
        QObject::connect(m_interrupt.notifier(), &QSocketNotifier::activated, &m_loop,
                         [this] { cancel(); });
}

/// The second interrupt isn't waited for.
void JobRunner::cancel()
{
    m_interrupt.notifier()->setEnabled(false);
    m_job.cancel();
    if (!m_job.isFinished())
        tell(QStringLiteral("stops; Ctrl+C again ends the program at once"));
}

PrintJobResult JobRunner::run()
{
    m_job.start();
    m_loop.exec();
    m_progress.clear();
    return m_job.result();
}

void JobRunner::awaitRetraction()
{
    if (!m_job.isRetracting())
        return;
    tell(QStringLiteral("the ticket is held out, and taken back in %1 s; Ctrl+C leaves it")
             .arg(m_order.document.retractAfterSeconds));
    m_loop.exec();
}

void JobRunner::tell(const QString &text)
{
    m_progress.clear();
    complain(QStringLiteral("%1: %2").arg(m_order.address.toString(), text));
}

/// Of a printer that isn't waited for the result tells.
void JobRunner::tellStatus(const PrinterStatus &status)
{
    if (m_order.options.waitMilliseconds == 0 || m_job.isFinished())
        return;
    const QString text = status.canPrint() ? QString() : status.text();
    if (text == m_waitingFor)
        return;
    tell(text.isEmpty() ? QStringLiteral("goes on")
                        : QStringLiteral("waiting for the printer: ") + text);
    m_waitingFor = text;
}

}  // namespace tool
