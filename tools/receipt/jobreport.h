#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonObject>
#include <QList>
#include <QString>

#include "jobrunner.h"

/// What commands share that print on a printer: their options, and how they tell what became of it.
namespace tool {

/// Exit statuses beside those of all commands.
enum JobStatus : int {
    NotConfirmed = 3,   ///< all was sent, and a confirmation was expected and didn't come
    NotPrinted = 4,     ///< nothing of it went out
    PartlyPrinted = 5,  ///< some of it did
};

/// The options --wait-for-paper, --one-way and --json.
QList<QCommandLineOption> jobOptions();
/// Whether one of them is given.
bool choosesJob(const QCommandLineParser &parser);
/// What the first two say.
printerslib::drivers::PrintJobOptions jobOptionsOf(const QCommandLineParser &parser);

/// What an outcome is called: "printed in part".
QString outcomeWords(printerslib::drivers::PrintJobResult::Outcome outcome);
/// What is wrong with a job's outcome, with printer and reason; empty if nothing is.
QString faultOf(const JobOrder &order, const printerslib::drivers::PrintJobResult &result);
/// Tells what became of a job, and gives the exit status.
/// @param what was printed, such as "CUSTOM_VKP_80, paper 80 mm: 371 bytes"
/// @param asJson whether standard output gets resultJson() in place of a line
int reportJob(const JobOrder &order, const printerslib::drivers::PrintJobResult &result,
              const QString &what, bool asJson);
/// What became of a job, as JSON.
QJsonObject resultJson(const JobOrder &order, const printerslib::drivers::PrintJobResult &result);

}  // namespace tool
