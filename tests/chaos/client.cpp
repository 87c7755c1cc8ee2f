#include "client.h"

#include <printerslib/drivers/devicelock.h>
#include <printerslib/drivers/printjob.h>
#include <printerslib/drivers/transport.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <csignal>
#include <ctime>

#include "transport/lockfolder_p.h"

using namespace printerslib::drivers;

namespace chaos {

namespace {

/// The numbers of a plan, in the order in which they are handed over.
template <typename Plan, typename Visitor>
void visitNumbers(Plan &plan, Visitor visit)
{
    visit(plan.killedAtByte);
    visit(plan.killedAfter);
    visit(plan.cancelledAtByte);
    visit(plan.cancelledAfter);
    visit(plan.options.asks);
    visit(plan.options.confirms);
    visit(plan.options.statusMilliseconds);
    visit(plan.options.confirmMilliseconds);
    visit(plan.options.waitMilliseconds);
    visit(plan.options.pollMilliseconds);
    visit(plan.options.cancelMilliseconds);
    visit(plan.options.stepBytes);
    visit(plan.options.transport.connectMilliseconds);
    visit(plan.options.transport.writeMilliseconds);
}

class Lock : public DeviceLock
{
public:
    Lock(const PrinterAddress &printer, const QString &folder)
        : DeviceLock(printer, LockRoots{folder, {}, folder}, nullptr)
    {}
};

/// The job looks after a line that is stuck by itself, as it may know why.
TransportOptions lineOptions(TransportOptions options)
{
    options.writeMilliseconds = 0;
    return options;
}

void plague(Job &job, const ClientPlan &plan)
{
    if (plan.killedAfter >= 0 && plan.killedAtByte < 0)
        beKilledAfter(plan.killedAfter);
    if (plan.cancelledAfter >= 0 && plan.cancelledAtByte < 0)
        QTimer::singleShot(int(plan.cancelledAfter), &job, &PrintJob::cancel);
    QObject::connect(&job, &PrintJob::progress, &job, [&job, plan](qint64 sent, qint64) {
        if (plan.killedAtByte >= 0 && sent >= plan.killedAtByte)
            beKilledAfter(plan.killedAfter);
        if (plan.cancelledAtByte >= 0 && sent >= plan.cancelledAtByte)
            QTimer::singleShot(int(plan.cancelledAfter), &job, &PrintJob::cancel);
    });
}

}  // namespace

void beKilledAfter(qint64 microseconds)
{
    constexpr qint64 perSecond = 1'000'000;
    constexpr qint64 nanoseconds = 1000;
    struct sigevent event = {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer = {};
    struct itimerspec time = {};
    const qint64 least = qMax<qint64>(1, microseconds);
    time.it_value.tv_sec = least / perSecond;
    time.it_value.tv_nsec = least % perSecond * nanoseconds;
    ::timer_create(CLOCK_MONOTONIC, &event, &timer);
    ::timer_settime(timer, 0, &time, nullptr);
}

Job::Job(const EncodedDocument &document, const PrinterProfile &profile,
         const PrinterAddress &address, const QString &folder, const PrintJobOptions &options)
    : PrintJob(document, profile, Transport::make(address, lineOptions(options.transport)),
               std::make_unique<Lock>(address, folder), options, 1000)
{}

/// At once, so that it counts as soon as it is told.
void report(const PrintJobResult &result)
{
    const QByteArray line =
        QJsonDocument(QJsonObject{{QStringLiteral("outcome"), int(result.outcome)},
                                  {QStringLiteral("reason"), int(result.reason)},
                                  {QStringLiteral("text"), result.text}})
            .toJson(QJsonDocument::Compact) +
        '\n';
    if (::write(STDOUT_FILENO, line.constData(), size_t(line.size())) != line.size())
        QCoreApplication::exit(1);
}

QStringList ClientPlan::toArguments() const
{
    QStringList arguments{receipt.toString()};
    visitNumbers(*this, [&arguments](auto number) { arguments << QString::number(number); });
    return arguments;
}

ClientPlan ClientPlan::fromArguments(const QStringList &arguments)
{
    ClientPlan plan;
    plan.receipt = Receipt::fromString(arguments.value(0));
    int at = 0;
    visitNumbers(plan, [&](auto &number) {
        number = std::decay_t<decltype(number)>(arguments.value(++at).toLongLong());
    });
    return plan;
}

ClientReport ClientReport::fromOutput(const QByteArray &output)
{
    ClientReport report;
    const QJsonObject object = QJsonDocument::fromJson(output.trimmed()).object();
    report.isThere = object.contains(QStringLiteral("outcome"));
    report.outcome = object.value(QStringLiteral("outcome")).toInt();
    report.reason = object.value(QStringLiteral("reason")).toInt();
    report.text = object.value(QStringLiteral("text")).toString();
    return report;
}

int runClient(const QStringList &arguments)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const auto address = PrinterAddress::parse(arguments.value(0));
    const QString model = arguments.value(1);
    const auto profile = PrinterProfile::forModel(model);
    const ClientPlan plan = ClientPlan::fromArguments(arguments.mid(3));
    if (!address || !profile)
        return 2;
    Job job(encodedReceipt(plan.receipt, model), *profile, *address, arguments.value(2),
            plan.options);
    plague(job, plan);
    QObject::connect(&job, &PrintJob::finished, &job, [](const PrintJobResult &result) {
        report(result);
        QCoreApplication::exit(0);
    });
    job.start();
    return QCoreApplication::exec();
}

}  // namespace chaos
