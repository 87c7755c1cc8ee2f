#pragma once

#include <QCommandLineOption>
#include <QStringList>
#include <functional>

namespace tool {

/// The option --watch.
QCommandLineOption watchOption();

/// Runs a function at once, and again whenever one of the files changes, until Ctrl+C or a
/// termination signal; says on standard error what it watches. Editors that save by writing a new
/// file and renaming it are no different from those that write in place: a file that is gone for a
/// moment is waited for. Several changes at a time are one.
/// @param run gives the exit status of a command
/// @return the status of the last run; WrongUsage, with a complaint and without a run, if one of
///         the files is standard input, which can't be read twice
int runAndWatch(const QStringList &fileNames, const std::function<int()> &run);

}  // namespace tool
