#include "printerdocs/document/htmlwriter_p.h"

#include <QDir>
#include <QUrl>
#include <array>
#include <charconv>

#include "latin1text_p.h"
#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/echarformat.h"

namespace documents {

namespace {

using printshared::latin1Text;

constexpr QLatin1String lineBreak = latin1Text("<br>");
// Room for the tags of a line with one run, and the most that is reserved in advance.
constexpr qint64 tagsPerLine = 100;
constexpr qint64 maximumReserve = qint64(1) << 26;

// Behind the last character that shares the start's tags.
int endOfRun(QStringView text, const CharacterBytes &font, const CharacterBytes &format, int start)
{
    const char startFont = font.at(start);
    const char startFormat = format.at(start);
    int end = start + 1;
    while (end < text.size() && font.at(end) == startFont && format.at(end) == startFormat &&
           !isSymbol(text.at(end), startFormat))
        ++end;
    return end;
}

/// The share of a cell in the width of its row.
class Percentage
{
public:
    Percentage(int part, int whole)
    {
        if (whole <= 0)
            return;
        char *const end =
            std::to_chars(m_text.begin(), m_text.end(), qint64(part) * 100 / whole).ptr;
        *end = '%';
        m_size = static_cast<int>(end + 1 - m_text.begin());
    }
    QLatin1String text() const { return QLatin1String(m_text.data(), m_size); }

private:
    std::array<char, 8> m_text{};
    int m_size = 0;
};

QLatin1String cellAttributes(ETextAlignment alignment)
{
    switch (alignment) {
        case AlignCenter:
            return QLatin1String("colspan=\"2\" align = \"center\"");
        case AlignRight:
            return QLatin1String("colspan=\"2\" align = \"right\"");
        case AlignLeft:
        case AlignJustify:
            break;
    }
    return QLatin1String("colspan=\"2\" align = \"left\"");
}

QLatin1String divisionStart(ETextAlignment alignment)
{
    switch (alignment) {
        case AlignRight:
            return QLatin1String("<div align=\"right\">");
        case AlignCenter:
            return QLatin1String("<div align=\"center\">");
        case AlignLeft:
        case AlignJustify:
            break;
    }
    return QLatin1String("<div align=\"left\">");
}

// What the tab of a line with two parts becomes, to fill the width: first and second are the
// lengths of the parts, spaces what lies between them.
struct WidenedTab
{
    int first;
    int second;
    int spaces;
};

// Spaces above 1 only if the line has exactly one tab and room for it.
WidenedTab widenedTab(const QString &line, int lineWidth)
{
    const int first = line.indexOf(tab);
    if (first < 0 || line.indexOf(tab, first + 1) >= 0 || lineWidth > longestPaddedLine)
        return {0, 0, 0};
    const int second = line.size() - first - 1;
    return {first, second, first + second < lineWidth ? lineWidth - first - second : 0};
}

QByteArray widened(QByteArray bytes, const WidenedTab &tabPlace)
{
    const int added = tabPlace.spaces - 1;
    if (tabPlace.first == 0)
        return bytes.prepend(added, '\0');
    if (tabPlace.second == 0)
        return bytes.append(added, '\0');
    return CharacterBytes::extended(bytes, tabPlace.first).insert(tabPlace.first, added, '\0');
}

}  // namespace

qint64 HtmlWriter::roomFor(const DocumentBlock &block)
{
    return block.isText() ? block.symbolsCount() + block.text().size() * tagsPerLine : 0;
}

void HtmlWriter::reserve(qint64 characters)
{
    m_html.reserve(static_cast<int>(qMin(m_html.size() + characters, maximumReserve)));
}

void HtmlWriter::appendBlock(const DocumentBlock &block, bool rightAlign, bool useTable,
                             int lineWidth)
{
    if (!block.isText())
        return;
    const QStringList text = block.text();
    for (int line = 0; line < text.size(); ++line) {
        if (line > 0)
            m_html += QLatin1Char('\n');
        if (!useTable)
            m_html += QLatin1String("<pre>\n");
        if (QStringView(text.at(line)).trimmed().isEmpty())
            m_html += lineBreak;
        else
            appendLine(block, line, rightAlign, useTable, lineWidth);
        if (!useTable)
            m_html += QLatin1String("\n</pre>");
    }
}

void HtmlWriter::appendLine(const DocumentBlock &block, int line, bool rightAlign, bool useTable,
                            int lineWidth)
{
    const QStringList lines = block.text();
    if (line < 0 || line >= lines.size())
        return;
    const QString &text = lines.at(line);
    const QByteArray font = block.font().value(line);
    const QByteArray format = block.format().value(line);
    if (useTable)
        appendFilledRow(text, font, format, block.alignment(), rightAlign);
    else
        appendDivision(text, font, format, block.alignment(), lineWidth);
}

void HtmlWriter::appendRow(QStringView line, const QByteArray &font, const QByteArray &format,
                           ETextAlignment alignment, bool rightAlign)
{
    if (line.trimmed().isEmpty())
        m_html += lineBreak;
    else
        appendFilledRow(line, font, format, alignment, rightAlign);
}

void HtmlWriter::appendFilledRow(QStringView line, const QByteArray &font, const QByteArray &format,
                                 ETextAlignment alignment, bool rightAlign)
{
    if (line.isEmpty()) {
        m_html += QLatin1String("<tr><td></td></tr>");
        return;
    }
    m_html += QLatin1String("<tr>");
    if (alignment == AlignJustify && line.contains(tab))
        appendTwoCells(line, CharacterBytes(font), CharacterBytes(format), rightAlign);
    else
        appendCell(line, CharacterBytes(font), CharacterBytes(format), cellAttributes(alignment),
                   QLatin1String());
    m_html += QLatin1String("</tr>");
}

// What stands between the first and the last tab is dropped. Intended: the second cell's bytes are
// taken behind the first tab, also where the cell's text stands behind a later one; see
// tst_document_html, middlePartsAreDroppedButTheirBytesAreUsed.
void HtmlWriter::appendTwoCells(QStringView line, const CharacterBytes &font,
                                const CharacterBytes &format, bool rightAlign)
{
    const auto first = static_cast<int>(line.indexOf(tab));
    const auto lastStart = static_cast<int>(line.lastIndexOf(tab)) + 1;
    const int last = static_cast<int>(line.size()) - lastStart;
    const QLatin1String left("align = \"left\"");
    appendCell(line.left(first), font, format, left, Percentage(first, first + last).text());
    appendCell(line.mid(lastStart), font.from(first + 1), format.from(first + 1),
               rightAlign ? QLatin1String("align = \"right\"") : left,
               Percentage(last, first + last).text());
}

void HtmlWriter::appendDivision(const QString &line, const QByteArray &font,
                                const QByteArray &format, ETextAlignment alignment, int lineWidth)
{
    if (line.isEmpty()) {
        m_html += QLatin1String("<p></p>");
        return;
    }
    m_html += divisionStart(alignment);
    const WidenedTab tabPlace = widenedTab(line, lineWidth);
    if (tabPlace.spaces > 1) {
        const QString wide =
            QString(line).replace(tabPlace.first, 1, QString(tabPlace.spaces, QLatin1Char(' ')));
        const QByteArray wideFont = widened(font, tabPlace);
        const QByteArray wideFormat = widened(format, tabPlace);
        appendCharacters(wide, CharacterBytes(wideFont), CharacterBytes(wideFormat));
    } else {
        appendCharacters(line, CharacterBytes(font), CharacterBytes(format));
    }
    m_html += QLatin1String("</div>");
}

void HtmlWriter::appendCharacters(QStringView text, const CharacterBytes &font,
                                  const CharacterBytes &format)
{
    int position = 0;
    while (position < text.size()) {
        const char runFormat = format.at(position);
        if (isSymbol(text.at(position), runFormat)) {
            appendSymbol();
            ++position;
            continue;
        }
        const int end = endOfRun(text, font, format, position);
        appendStart(runFormat, font.at(position));
        m_html.append(text.data() + position, end - position);
        appendEnd(runFormat);
        position = end;
    }
}

// Intended: the italic pair closes before the text, so italic shows nothing; clients compare
// pages with this order. See tst_document_html, tagsOfARunStandInTheirOrder.
void HtmlWriter::appendStart(char format, char font)
{
    char size[8];
    const auto end =
        std::to_chars(std::begin(size), std::end(size), DocumentBlock().prepareFont(format, font));
    m_html += QLatin1String("<font size = ");
    m_html += QLatin1String(size, static_cast<int>(end.ptr - size));
    m_html += QLatin1Char('>');
    if (hasFormat(format, CharBold))
        m_html += QLatin1String("<b>");
    if (hasFormat(format, CharItalic))
        m_html += QLatin1String("<i>");
    if (hasFormat(format, CharUnderline))
        m_html += QLatin1String("<u>");
    if (hasFormat(format, CharItalic))
        m_html += QLatin1String("</i>");
}

void HtmlWriter::appendEnd(char format)
{
    if (hasFormat(format, CharUnderline))
        m_html += QLatin1String("</u>");
    if (hasFormat(format, CharBold))
        m_html += QLatin1String("</b>");
    m_html += QLatin1String("</font>");
}

void HtmlWriter::appendSymbol()
{
    if (m_symbolTag.isEmpty()) {
        const QUrl picture = QUrl::fromLocalFile(QDir::tempPath() + QLatin1String("/tempimg"));
        m_symbolTag = QLatin1String("<img src=\"") + picture.toString() +
                      QLatin1String("\" width=\"10\" height=\"10\">");
    }
    m_html += m_symbolTag;
}

}  // namespace documents
