#pragma once

#include <printerslib/drivers/printjob.h>

#include <QString>
#include <QStringList>

#include "receipts.h"

namespace chaos {

/// What a process is to print, and when it ends before it has.
struct ClientPlan
{
    Receipt receipt;
    printerslib::drivers::PrintJobOptions options;
    qint64 killedAtByte = -1;     ///< that the line has taken; -1: not by bytes
    qint64 killedAfter = -1;      ///< microseconds since the start, or behind that byte; -1: never
    qint64 cancelledAtByte = -1;  ///< likewise
    qint64 cancelledAfter = -1;   ///< milliseconds since the start, or behind that byte

    QStringList toArguments() const;
    static ClientPlan fromArguments(const QStringList &arguments);
    QString toString() const { return toArguments().join(QLatin1Char(' ')); }
};

/// What such a process wrote at its end.
struct ClientReport
{
    bool isThere = false;  ///< false: it was killed before
    int outcome = 0;       ///< PrintJobResult::Outcome
    int reason = 0;
    QString text;

    static ClientReport fromOutput(const QByteArray &output);
};

/// A job whose lock lies in a folder of its own.
class Job : public printerslib::drivers::PrintJob
{
public:
    Job(const printerslib::drivers::EncodedDocument &document,
        const printerslib::drivers::PrinterProfile &profile,
        const printerslib::drivers::PrinterAddress &address, const QString &folder,
        const printerslib::drivers::PrintJobOptions &options);
};

/// Has the system kill this process, wherever it is then.
void beKilledAfter(qint64 microseconds);
/// Writes a ClientReport.
void report(const printerslib::drivers::PrintJobResult &result);

/// A process that prints one receipt, and writes what it knows of it in the end.
/// @param arguments address, model, folder of the locks, and the plan's
int runClient(const QStringList &arguments);

}  // namespace chaos
