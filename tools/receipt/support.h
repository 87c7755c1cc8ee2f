#pragma once

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <optional>

/// What all commands share: exit statuses, messages, reading of files and of standard input.
namespace tool {

enum ExitStatus : int {
    Success = 0,
    BadInput = 1,    ///< a file, a document or an expression is wrong
    WrongUsage = 2,  ///< the command line is wrong
};

/// Writes a line to standard output, in UTF-8.
void print(const QString &line);
/// Writes "receipt: " and the message to standard error.
void complain(const QString &message);

/// Parses a command's own arguments. `-h`/`--help` prints the help; both that and a wrong option
/// end the command with the status given here. Nothing: go on with the parsed values.
/// @param usage     the command's name, for example "fill"
/// @param arguments those behind the command's name
/// @param minimum, maximum number of positional arguments; maximum -1: any number
std::optional<int> parse(QCommandLineParser &parser, const QString &usage,
                         const QStringList &arguments, int minimum, int maximum);

/// The bytes of a file, "-" being standard input. Complains and gives nothing on failure.
std::optional<QByteArray> readInput(const QString &fileName);

/// The text of a UTF-8 file, "-" being standard input. Complains, naming the first line that isn't
/// UTF-8, and gives nothing on failure.
std::optional<QString> readText(const QString &fileName);

/// Line and column, both from 1, of a byte offset in a UTF-8 text, for messages.
QString placeOf(const QString &fileName, const QByteArray &text, int offset);

/// The option that every command understands: library log lines go to standard error.
QCommandLineOption verboseOption();
/// Switches the library's log lines off unless verbose.
void setVerbose(bool verbose);

}  // namespace tool
