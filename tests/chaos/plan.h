#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include "client.h"
#include "printerfault.h"

namespace chaos {

/// Something that befalls the printer, and what ends it.
struct Trouble
{
    qint64 atByte = -1;  ///< of all that it is sent; -1: by time
    int atMillisecond = 0;
    PrinterFault fault;
    PrinterFault repair;
    int repairedAfter = -1;  ///< milliseconds; -1: it ends by itself
};

/// One printer, the jobs of some programs on it, and what befalls them.
struct EpisodePlan
{
    quint64 seed = 0;
    QString model;
    bool isNetwork = false;
    bool isSoftwareFlow = false;
    int baudRate = 115200;
    int bufferBytes = 0;
    int bytesPerSecond = 0;
    int millimetresPerSecond = 0;
    int window = 0;          ///< bytes that the network holds for the printer; 0: the system's
    int programs = 1;        ///< at once
    bool hasPower = false;   ///< it is switched off and on
    bool hasSpoilt = false;  ///< bytes are swallowed or changed
    QVector<ClientPlan> jobs;
    QVector<int> delays;  ///< of the jobs, in milliseconds
    QVector<Trouble> troubles;
    /// The last jobs of `jobs`, which run one by one when all troubles are over.
    int soundJobs = 0;
    /// Of a queue, to which the jobs are added: when the programs that print are killed, in
    /// microseconds; -1: never.
    QVector<qint64> printerKills;

    bool isQueue() const { return !printerKills.isEmpty(); }

    QStringList toLines() const;
};

/// @param firstJob number of the first one
EpisodePlan planOf(quint64 seed, int firstJob);
/// Of the episode with this number in a run.
quint64 episodeSeed(quint64 runSeed, int number);

}  // namespace chaos
