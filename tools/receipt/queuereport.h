#pragma once

#include <printerslib/drivers/printqueue.h>

#include <QJsonObject>
#include <QString>

/// How the jobs of a queue are told of.
namespace tool {

/// "job 17 (number 4711)"
QString jobName(const printerslib::drivers::PrintQueueEntry &entry);
/// The same with what has become of it, and with what can be done if it is held.
QString jobText(const printerslib::drivers::PrintQueueEntry &entry);
/// The table of jobs; nothing if there are none.
void printJobs(const QVector<printerslib::drivers::PrintQueueEntry> &entries);
/// The same as a JSON array.
void printJobsJson(const QVector<printerslib::drivers::PrintQueueEntry> &entries);
/// The exit status where these jobs are left: that of the worst.
int statusOfJobs(const QVector<printerslib::drivers::PrintQueueEntry> &left);

}  // namespace tool
