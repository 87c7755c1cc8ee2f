#pragma once

#include <printerslib/drivers/printqueuerequest.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <optional>

/// A receipt that is kept to be printed later.
namespace tool {

/// Where it is kept.
struct QueueDelivery
{
    QString folder;
    QString documentNumber;  ///< mostly empty
};

/// The options --queue, --later and --number.
QList<QCommandLineOption> queueOptions();
/// What they say; nothing if there is neither of the first two. Complains, and gives false, if both
/// are there, or the last alone.
bool setQueue(const QCommandLineParser &parser, std::optional<QueueDelivery> &queue);

/// Tells a kept job's number on standard output. That this can't be told doesn't make it a failure,
/// or a program that tries again would keep the receipt twice.
void tellKept(qint64 id);
/// Keeps it, and tells its number on standard output. Gives the exit status.
int deliver(const QueueDelivery &queue, const printerslib::drivers::PrintQueueRequest &request);

}  // namespace tool
