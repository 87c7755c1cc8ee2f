#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace chaos {

/// What a queue knows of one receipt in the end.
struct QueueReport
{
    int job = 0;
    qint64 id = 0;
    int state = 0;    ///< PrintQueueEntry::State
    int outcome = 0;  ///< PrintJobResult::Outcome
    int repeats = 0;
};

/// A process that adds a receipt to a queue, and writes that it has.
/// @param arguments address, model, folder, and the plan's
int runAdder(const QStringList &arguments);
/// A process that prints what waits in a queue, until nothing is to be tried any more.
/// @param arguments folder, and microseconds after which it is killed
int runPrinter(const QStringList &arguments);
/// A process that repeats one half of what is held, and drops the other.
/// @param arguments folder
int runDecider(const QStringList &arguments);

/// All that a queue has, in the order of adding.
QVector<QueueReport> queueReports(const QString &folder);

}  // namespace chaos
