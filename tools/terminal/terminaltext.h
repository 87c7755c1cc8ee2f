#pragma once

#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <memory>
#include <streambuf>

/// Texts of others on a terminal or in a log: what such a place would obey is shown instead. These
/// are the control characters (U+0000 to U+001F, U+007F to U+009F), the marks that change the
/// direction of text (U+061C, U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069) and the
/// separators of lines and paragraphs (U+2028, U+2029). They are shown as JSON writes them: "\n",
/// "\r", "\t", and "\u001b" for all others. A backslash stays one.
namespace terminaltext {

/// The text with all of these shown.
QString shown(const QString &text);

/// Writes a line in UTF-8, as it is.
void writeRaw(std::FILE *stream, const QString &line);

/// Writes a line of a message or a report in UTF-8, wherever it goes: it stays one line.
void writeLine(std::FILE *stream, const QString &line);

/// Writes a line of what a program makes in UTF-8: as it is, but shown if that goes to a terminal.
void writeContent(std::FILE *stream, const QString &line);

/// While it lives, what others write to std::cout is shown line by line if that goes to a terminal.
class CoutAsContent
{
public:
    CoutAsContent();
    ~CoutAsContent();
    CoutAsContent(const CoutAsContent &) = delete;
    CoutAsContent &operator=(const CoutAsContent &) = delete;

private:
    class Lines;
    const std::unique_ptr<Lines> m_lines;
    std::streambuf *const m_before;
};

/// A message handler of Qt: a log line on standard error, wherever that leads, where Qt may prefer
/// the journal to a file or a pipe. What the message pattern adds goes out as it is.
void writeLogLine(QtMsgType type, const QMessageLogContext &context, const QString &message);

}  // namespace terminaltext
