#include "queuedelivery.h"

#include <printerslib/drivers/printqueue.h>

#include "support.h"

namespace tool {

using printerslib::drivers::PrintQueue;
using printerslib::drivers::PrintQueueRequest;

namespace {

QCommandLineOption queueOption()
{
    return {QStringLiteral("queue"),
            QStringLiteral("Keep the receipt in this folder, through crashes and power cuts, until "
                           "\"receipt queue run\" prints it."),
            QStringLiteral("DIR")};
}

QCommandLineOption laterOption()
{
    return {QStringLiteral("later"),
            QStringLiteral(
                "Keep it likewise in the folder that \"receipt queue\" uses without --folder.")};
}

QCommandLineOption numberOption()
{
    return {QStringLiteral("number"),
            QStringLiteral("The document's number, by which \"receipt queue reprint\" finds it."),
            QStringLiteral("NUMBER")};
}

}  // namespace

QList<QCommandLineOption> queueOptions()
{
    return {queueOption(), laterOption(), numberOption()};
}

bool setQueue(const QCommandLineParser &parser, std::optional<QueueDelivery> &queue)
{
    const bool isLater = parser.isSet(laterOption());
    const bool isFolder = parser.isSet(queueOption());
    const QString folder = isFolder ? parser.value(queueOption()) : PrintQueue::defaultFolder();
    QString fault;
    if (isLater && isFolder)
        fault = QStringLiteral("--queue and --later exclude each other");
    else if (folder.isEmpty())
        fault = QStringLiteral("--queue names no folder");
    else if (!isLater && !isFolder && parser.isSet(numberOption()))
        fault = QStringLiteral("--number needs --queue or --later");
    else if (isLater || isFolder)
        queue = QueueDelivery{folder, parser.value(numberOption())};
    if (!fault.isEmpty())
        complain(fault);
    return fault.isEmpty();
}

void tellKept(qint64 id)
{
    print(QStringLiteral("job %1").arg(id));
    flushOutput();
}

int deliver(const QueueDelivery &queue, const PrintQueueRequest &request)
{
    PrintQueue folder(queue.folder);
    PrintQueueRequest kept = request;
    kept.documentNumber = queue.documentNumber;
    const auto id = folder.add(kept);
    if (id == 0) {
        complain(folder.fault());
        return BadInput;
    }
    tellKept(id);
    return Success;
}

}  // namespace tool
