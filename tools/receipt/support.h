#pragma once

#include <QByteArray>
#include <QCommandLineParser>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class QTextCodec;

/// What all commands share: exit statuses, messages, reading of files and of standard input.
namespace tool {

enum ExitStatus : int {
    Success = 0,
    BadInput = 1,    ///< a file, a document or an expression is wrong
    WrongUsage = 2,  ///< the command line is wrong
};

/// Writes a line of a report to standard output, in UTF-8. Controls in it are shown, so that
/// nobody's text makes lines of its own or steers a terminal; see terminaltext.h.
void print(const QString &line);
/// The same for a line of several fields, with tabulators between them.
void printRow(const QStringList &fields);
/// Writes lines of a receipt, or of another thing that a command makes, to standard output, byte
/// for byte; with controls shown if that is a terminal.
void printContent(const QStringList &lines);
/// Writes what the program itself says, in one line or several: nothing in it is anybody else's.
void printOwn(const QString &text);
/// Writes "receipt: " and the message to standard error, with controls shown, and lines below it.
void complain(const QString &message, const QStringList &below = {});

/// Whether standard output has taken all of it by now; complains if not. A command calls it whose
/// exit status is true of what it did, and not of what it could tell.
bool flushOutput();
/// The exit status of a command that is done: its own, unless standard output took not all of it.
int finished(int status);

/// Writes lines to a file, whole or not at all; an empty name is standard output, as printContent()
/// has it. Complains and gives false on failure.
bool writeLines(const QString &fileName, const QStringList &lines);

/// A value as JSON writes it, in one line.
QString jsonText(const QJsonValue &value);
/// The lines of a JSON text.
QStringList linesOf(const QByteArray &json);

/// The whole number that an option has. Complains and gives nothing outside the range.
std::optional<int> numberOf(const QCommandLineParser &parser, const QCommandLineOption &option,
                            int minimum, int maximum);

/// The encoding that an option names. Complains and gives null if there is none of that name.
const QTextCodec *encodingOf(const QCommandLineParser &parser, const QCommandLineOption &option);

/// Parses a command's own arguments. `-h`/`--help` prints the help; both that and a wrong option
/// end the command with the status given here. Nothing: go on with the parsed values.
/// @param usage     the command's name, for example "fill"
/// @param arguments those behind the command's name
/// @param minimum, maximum number of positional arguments; maximum -1: any number
std::optional<int> parse(QCommandLineParser &parser, const QString &usage,
                         const QStringList &arguments, int minimum, int maximum);

/// The bytes of a file, "-" being standard input. Complains and gives nothing on failure.
std::optional<QByteArray> readInput(const QString &fileName);

/// The same in pieces, as they come: bytes, how many there have been, and how many there will be,
/// or 0 where nobody knows. Complains and gives false on failure.
bool readInPieces(
    const QString &fileName,
    const std::function<void(const QByteArray &piece, qint64 done, qint64 all)> &take);

/// The text of a UTF-8 file, "-" being standard input. Complains, naming the first line that isn't
/// UTF-8, and gives nothing on failure.
std::optional<QString> readText(const QString &fileName);

/// The same for an encoding that --codec names.
std::optional<QString> readText(const QString &fileName, const QTextCodec &codec);

/// The JSON of a file's text. Complains, naming the place, and gives nothing if it is none, or if a
/// name stands twice in one object.
std::optional<QJsonDocument> jsonOf(const QString &fileName, const QByteArray &text);

/// The same of a file, "-" being standard input.
std::optional<QJsonDocument> readJson(const QString &fileName);

/// The option that every command understands: library log lines go to standard error.
QCommandLineOption verboseOption();
/// Switches the library's log lines off unless verbose.
void setVerbose(bool verbose);

}  // namespace tool
