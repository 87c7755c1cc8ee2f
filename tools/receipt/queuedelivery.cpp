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

QCommandLineOption numberOption()
{
    return {QStringLiteral("number"),
            QStringLiteral("The document's number, by which \"receipt queue reprint\" finds it."),
            QStringLiteral("NUMBER")};
}

}  // namespace

QList<QCommandLineOption> queueOptions()
{
    return {queueOption(), numberOption()};
}

bool setQueue(const QCommandLineParser &parser, std::optional<QueueDelivery> &queue)
{
    if (parser.isSet(queueOption())) {
        queue = QueueDelivery{parser.value(queueOption()), parser.value(numberOption())};
        if (queue->folder.isEmpty())
            complain(QStringLiteral("--queue names no folder"));
        return !queue->folder.isEmpty();
    }
    if (parser.isSet(numberOption()))
        complain(QStringLiteral("--number needs --queue"));
    return !parser.isSet(numberOption());
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
    print(QStringLiteral("job %1").arg(id));
    return Success;
}

}  // namespace tool
