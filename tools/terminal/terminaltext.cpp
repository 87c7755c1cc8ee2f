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
    writeRaw(stream, ::isatty(::fileno(stream)) != 0 ? shown(line) : line);
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
        if (byte == traits_type::to_int_type('\n'))
            writeLineSoFar();
        else if (byte != traits_type::eof())
            m_line += traits_type::to_char_type(byte);
        return traits_type::not_eof(byte);
    }

private:
    void writeLineSoFar()
    {
        writeContent(stdout, QString::fromStdString(m_line));
        m_line.clear();
    }

    std::string m_line;
};

CoutAsContent::CoutAsContent()
    : m_lines(std::make_unique<Lines>()), m_before(std::cout.rdbuf(m_lines.get()))
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
