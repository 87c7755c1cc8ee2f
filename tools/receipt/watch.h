#pragma once

#include <QCommandLineOption>
#include <QStringList>
#include <functional>

namespace tool {

/// The option --watch.
QCommandLineOption watchOption();

/// What a run of a command gave.
struct WatchedRun
{
    int status;  ///< of the command
    /// Files beside the named ones that it reads if they are there. One that ends in "*" stands for
    /// the first file, by name, whose name begins so.
    QStringList companions;
};

/// Whether a file is a companion of this name, or would be if it were there.
bool isCompanion(const QString &fileName, const QString &companion);

/// Runs a function at once, and again whenever one of the files or of what goes with them changes,
/// until Ctrl+C or a termination signal; says on standard error what it watches. Editors that save
/// by writing a new file and renaming it are no different from those that write in place: a file
/// that is gone for a moment is waited for. Several changes at a time are one.
/// @return the status of the last run; WrongUsage, with a complaint and without a run, if one of
///         the files is standard input, which can't be read twice
int runAndWatch(const QStringList &fileNames, const std::function<WatchedRun()> &run);

}  // namespace tool
