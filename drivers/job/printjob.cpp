#include "printerslib/drivers/printjob.h"

#include "job/jobrun_p.h"

namespace printerslib::drivers {

namespace {

/// The job looks after a line that is stuck by itself, as it may know why.
TransportOptions lineOptions(TransportOptions options)
{
    options.writeMilliseconds = 0;
    options.reopens = false;
    return options;
}

}  // namespace

PrintJob::PrintJob(const EncodedDocument &document, const PrinterProfile &profile,
                   const PrinterAddress &address, const PrintJobOptions &options, QObject *parent)
    : PrintJob(document, profile, Transport::make(address, lineOptions(options.transport)),
               std::make_unique<DeviceLock>(address), options, 1000, parent)
{}

PrintJob::PrintJob(const EncodedDocument &document, const PrinterProfile &profile,
                   std::unique_ptr<Transport> transport, std::unique_ptr<DeviceLock> lock,
                   const PrintJobOptions &options, int second, QObject *parent)
    : QObject(parent),
      m_run(std::make_unique<JobRun>(
          JobRun::Parts{document, profile, options, std::move(transport), std::move(lock), second}))
{
    listen();
}

PrintJob::~PrintJob() = default;

void PrintJob::listen()
{
    const JobRun *const run = m_run.get();
    connect(run, &JobRun::waiting, this, &PrintJob::waiting);
    connect(run, &JobRun::progress, this, &PrintJob::progress);
    connect(run, &JobRun::statusChanged, this, &PrintJob::statusChanged);
    connect(run, &JobRun::note, this, &PrintJob::note);
    connect(run, &JobRun::finished, this, &PrintJob::finished);
    connect(run, &JobRun::retracted, this, &PrintJob::retracted);
}

void PrintJob::start()
{
    m_run->start();
}

void PrintJob::cancel()
{
    m_run->cancel();
}

bool PrintJob::isFinished() const
{
    return m_run->isFinished();
}

PrintJobResult PrintJob::result() const
{
    return m_run->result();
}

bool PrintJob::isRetracting() const
{
    return m_run->isRetracting();
}

}  // namespace printerslib::drivers
