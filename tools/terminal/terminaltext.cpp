#include "terminaltext.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace {

struct Range
{
    ushort first;
    ushort last;
};

constexpr Range obeyed[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C},
    {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069},
};

struct ShortForm
{
    char16_t character;
    const char *form;
};

constexpr ShortForm shortForms[] = {{u'\n', "\\n"}, {u'\r', "\\r"}, {u'\t', "\\t"}};

bool isObeyed(QChar character)
{
    const ushort code = character.unicode();
    return std::any_of(std::begin(obeyed), std::end(obeyed), [code](const Range &range) {
        return range.first <= code && code <= range.last;
    });
}

bool isTerminal(std::FILE *stream)
{
    return ::isatty(::fileno(stream)) != 0;
}

QString formOf(QChar character)
{
    for (const ShortForm &row : shortForms) {
        if (character == QChar(row.character))
            return QLatin1String(row.form);
    }
    constexpr int digits = 4;
    constexpr int hexadecimal = 16;
    return QStringLiteral("\\u%1").arg(character.unicode(), digits, hexadecimal, QLatin1Char('0'));
}

}  // namespace

namespace terminaltext {

QString shown(const QString &text)
{
    if (std::none_of(text.cbegin(), text.cend(), isObeyed))
        return text;
    QString result;
    for (const QChar character : text) {
        if (isObeyed(character))
            result += formOf(character);
        else
            result += character;
    }
    return result;
}

void writeRaw(std::FILE *stream, const QString &line)
{
    // In one piece, so that lines of several threads don't mix.
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

void writeLine(std::FILE *stream, const QString &line)
{
    writeRaw(stream, shown(line));
}

void writeContent(std::FILE *stream, const QString &line)
{
    writeRaw(stream, isTerminal(stream) ? shown(line) : line);
}

/// Collects the bytes of a line, and writes it at its end.
class CoutAsContent::Lines : public std::streambuf
{
public:
    ~Lines() override
    {
        if (!m_line.empty())
            writeLineSoFar();
    }

protected:
    int_type overflow(int_type byte) override
    {
        const char character = traits_type::to_char_type(byte);
        if (byte != traits_type::eof())
            xsputn(&character, 1);
        return traits_type::not_eof(byte);
    }
    std::streamsize xsputn(const char *bytes, std::streamsize count) override
    {
        const char *const end = bytes + count;
        for (const char *lineEnd = std::find(bytes, end, '\n'); lineEnd != end;
             lineEnd = std::find(bytes, end, '\n')) {
            m_line.append(bytes, lineEnd);
            writeLineSoFar();
            bytes = lineEnd + 1;
        }
        m_line.append(bytes, end);
        return count;
    }

private:
    void writeLineSoFar()
    {
        writeLine(stdout, QString::fromStdString(m_line));
        m_line.clear();
    }

    std::string m_line;
};

CoutAsContent::CoutAsContent()
    : m_lines(isTerminal(stdout) ? std::make_unique<Lines>() : nullptr),
      m_before(m_lines ? std::cout.rdbuf(m_lines.get()) : std::cout.rdbuf())
{}

CoutAsContent::~CoutAsContent()
{
    std::cout.rdbuf(m_before);
}

void writeLogLine(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    writeRaw(stderr, qFormatLogMessage(type, context, shown(message)));
}

}  // namespace terminaltext
