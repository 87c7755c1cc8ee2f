#include "queueclient.h"

#include <printerslib/drivers/printqueue.h>
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <csignal>

#include "client.h"

using namespace printerslib::drivers;

namespace chaos {

namespace {

/// With its locks beside it.
class Queue : public PrintQueue
{
public:
    explicit Queue(const QString &folder)
        : PrintQueue(QDir(folder).filePath(QStringLiteral("queue"))), m_locks(folder)
    {}

protected:
    std::unique_ptr<PrintJob> makeJob(const EncodedDocument &document,
                                      const PrinterProfile &profile, const PrinterAddress &address,
                                      const PrintJobOptions &options) override
    {
        return std::make_unique<Job>(document, profile, address, m_locks, options);
    }

private:
    const QString m_locks;
};

}  // namespace

int runAdder(const QStringList &arguments)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const ClientPlan plan = ClientPlan::fromArguments(arguments.mid(3));
    PrintQueueRequest request;
    const QString model = arguments.value(1);
    request.profile = PrinterProfile::forModel(model).value();
    request.address = PrinterAddress::parse(arguments.value(0)).value();
    request.document = encodedReceipt(plan.receipt, model);
    request.options = plan.options;
    request.documentNumber = QString::number(plan.receipt.job);
    if (plan.killedAfter >= 0)
        beKilledAfter(plan.killedAfter);
    Queue queue(arguments.value(2));
    PrintJobResult result;
    if (queue.add(request) == 0)
        result.text = queue.fault();
    else
        result.outcome = PrintJobResult::Outcome::Sent;  // to the queue
    report(result);
    return 0;
}

int runPrinter(const QStringList &arguments)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const qint64 killedAfter = arguments.value(1).toLongLong();
    if (killedAfter >= 0)
        beKilledAfter(killedAfter);
    Queue queue(arguments.value(0));
    QObject::connect(&queue, &PrintQueue::idle, &queue, [] { QCoreApplication::exit(0); });
    return queue.start() ? QCoreApplication::exec() : 1;
}

int runDecider(const QStringList &arguments)
{
    Queue queue(arguments.value(0));
    bool isDone = true;
    const QVector<PrintQueueEntry> entries = queue.entries();
    for (const PrintQueueEntry &entry : entries) {
        if (entry.isHeld())
            isDone = (entry.id % 2 == 0 ? queue.repeat(entry.id) : queue.drop(entry.id)) && isDone;
    }
    return isDone ? 0 : 1;
}

QVector<QueueReport> queueReports(const QString &folder)
{
    Queue queue(folder);
    QVector<QueueReport> reports;
    const QVector<PrintQueueEntry> entries = queue.entries() + queue.journal();
    for (const PrintQueueEntry &entry : entries)
        reports.append({entry.documentNumber.toInt(), entry.id, int(entry.state),
                        int(entry.result.outcome), entry.repeats});
    std::sort(reports.begin(), reports.end(),
              [](const QueueReport &one, const QueueReport &other) { return one.id < other.id; });
    return reports;
}

}  // namespace chaos
