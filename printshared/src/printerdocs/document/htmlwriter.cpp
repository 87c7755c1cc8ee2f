#include "printerdocs/document/htmlwriter_p.h"

#include <QDir>
#include <QUrl>
#include <algorithm>
#include <array>
#include <charconv>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/echarformat.h"

namespace documents {

namespace {

constexpr QStringView lineBreak(u"<br>");
// Room for the tags of a line with one run, and the most that is reserved in advance.
constexpr qint64 tagsPerLine = 100;
constexpr qint64 maximumReserve = qint64(1) << 26;
// A run of more characters isn't gathered first: lines of megabytes would be held twice.
constexpr int longRun = 4096;

// Every character is looked at: compilers make few steps of a loop without a way out.
bool holdsSymbolCode(QStringView text)
{
    unsigned short found = 0;
    for (const QChar c : text)
        found |= static_cast<unsigned short>(isSymbolCode(c));
    return found != 0;
}

// Behind the last character that shares the start's tags.
int endOfRun(QStringView text, const CharacterBytes &font, const CharacterBytes &format, int start)
{
    if (font.isOneFrom(start) && format.isOneFrom(start) && !holdsSymbolCode(text.mid(start)))
        return static_cast<int>(text.size());
    const char startFont = font.at(start);
    const char startFormat = format.at(start);
    int end = start + 1;
    while (end < text.size() && font.at(end) == startFont && format.at(end) == startFormat &&
           !isSymbol(text.at(end), startFormat))
        ++end;
    return end;
}

QStringView cellStart(ETextAlignment alignment)
{
    switch (alignment) {
        case AlignCenter:
            return QStringView(u"<tr><td colspan=\"2\" align = \"center\"> ");
        case AlignRight:
            return QStringView(u"<tr><td colspan=\"2\" align = \"right\"> ");
        case AlignLeft:
        case AlignJustify:
            break;
    }
    return QStringView(u"<tr><td colspan=\"2\" align = \"left\"> ");
}

QStringView divisionStart(ETextAlignment alignment)
{
    switch (alignment) {
        case AlignRight:
            return QStringView(u"<div align=\"right\">");
        case AlignCenter:
            return QStringView(u"<div align=\"center\">");
        case AlignLeft:
        case AlignJustify:
            break;
    }
    return QStringView(u"<div align=\"left\">");
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
            m_row.add(u"\n");
        if (!useTable)
            m_row.add(u"<pre>\n");
        if (QStringView(text.at(line)).trimmed().isEmpty())
            m_row.add(lineBreak);
        else
            addLine(block, line, rightAlign, useTable, lineWidth);
        if (!useTable)
            m_row.add(u"\n</pre>");
        finishRow();
    }
}

void HtmlWriter::appendLine(const DocumentBlock &block, int line, bool rightAlign, bool useTable,
                            int lineWidth)
{
    addLine(block, line, rightAlign, useTable, lineWidth);
    finishRow();
}

void HtmlWriter::appendRow(QStringView line, const CharacterBytes &font,
                           const CharacterBytes &format, ETextAlignment alignment, bool rightAlign)
{
    m_row.add(u"\n");
    if (line.trimmed().isEmpty())
        m_row.add(lineBreak);
    else
        addRow(line, font, format, alignment, rightAlign);
    finishRow();
}

void HtmlWriter::appendCell(QStringView text, const CharacterBytes &font,
                            const CharacterBytes &format, QStringView attributes, QStringView width)
{
    m_row.add(u"<td ");
    m_row.add(attributes);
    if (!width.isEmpty()) {
        m_row.add(u" width=\"");
        m_row.add(width);
        m_row.add(u"\"");
    }
    m_row.add(u"> ");
    addCharacters(text, font, format);
    m_row.add(u" </td>");
    finishRow();
}

void HtmlWriter::appendCharacters(QStringView text, const CharacterBytes &font,
                                  const CharacterBytes &format)
{
    addCharacters(text, font, format);
    finishRow();
}

void HtmlWriter::finishRow()
{
    if (!m_row.isEmpty())
        m_html.append(m_row.text().data(), static_cast<int>(m_row.text().size()));
    m_row.clear();
}

void HtmlWriter::addLine(const DocumentBlock &block, int line, bool rightAlign, bool useTable,
                         int lineWidth)
{
    const QStringList lines = block.text();
    if (line < 0 || line >= lines.size())
        return;
    const QString &text = lines.at(line);
    const QByteArray font = block.font().value(line);
    const QByteArray format = block.format().value(line);
    if (useTable)
        addRow(text, CharacterBytes(font), CharacterBytes(format), block.alignment(), rightAlign);
    else
        addDivision(text, font, format, block.alignment(), lineWidth);
}

void HtmlWriter::addRow(QStringView line, const CharacterBytes &font, const CharacterBytes &format,
                        ETextAlignment alignment, bool rightAlign)
{
    if (line.isEmpty()) {
        m_row.add(u"<tr><td></td></tr>");
        return;
    }
    const auto tabPlace = std::find(line.begin(), line.end(), tab) - line.begin();
    if (alignment == AlignJustify && tabPlace < line.size())
        return addTwoCells(line, static_cast<int>(tabPlace), font, format, rightAlign);
    m_row.add(cellStart(alignment));
    addCharacters(line, font, format);
    m_row.add(u" </td></tr>");
}

// What stands between the first and the last tab is dropped. Intended: the second cell's bytes are
// taken behind the first tab, also where the cell's text stands behind a later one; see
// tst_document_html, middlePartsAreDroppedButTheirBytesAreUsed.
void HtmlWriter::addTwoCells(QStringView line, int tabPlace, const CharacterBytes &font,
                             const CharacterBytes &format, bool rightAlign)
{
    const QStringView first = line.left(tabPlace);
    const QStringView last(std::find(std::make_reverse_iterator(line.end()),
                                     std::make_reverse_iterator(line.begin()), tab)
                               .base(),
                           line.end());
    const auto firstSize = static_cast<int>(first.size());
    const auto lastSize = static_cast<int>(last.size());
    m_row.add(u"<tr><td align = \"left\"");
    addWidth(firstSize, firstSize + lastSize);
    m_row.add(u"> ");
    addCharacters(first, font, format);
    if (rightAlign)
        m_row.add(u" </td><td align = \"right\"");
    else
        m_row.add(u" </td><td align = \"left\"");
    addWidth(lastSize, firstSize + lastSize);
    m_row.add(u"> ");
    addCharacters(last, font.from(firstSize + 1), format.from(firstSize + 1));
    m_row.add(u" </td></tr>");
}

/// The share of a cell in the width of its row; nothing of no width.
void HtmlWriter::addWidth(int part, int whole)
{
    if (whole <= 0)
        return;
    std::array<char, 8> digits{};
    const char *const end =
        std::to_chars(digits.begin(), digits.end(), qint64(part) * 100 / whole).ptr;
    m_row.add(u" width=\"");
    std::for_each(digits.cbegin(), end, [this](char digit) { m_row.add(QLatin1Char(digit)); });
    m_row.add(u"%\"");
}

void HtmlWriter::addDivision(const QString &line, const QByteArray &font, const QByteArray &format,
                             ETextAlignment alignment, int lineWidth)
{
    if (line.isEmpty()) {
        m_row.add(u"<p></p>");
        return;
    }
    m_row.add(divisionStart(alignment));
    const WidenedTab tabPlace = widenedTab(line, lineWidth);
    if (tabPlace.spaces > 1) {
        const QString wide =
            QString(line).replace(tabPlace.first, 1, QString(tabPlace.spaces, QLatin1Char(' ')));
        const QByteArray wideFont = widened(font, tabPlace);
        const QByteArray wideFormat = widened(format, tabPlace);
        addCharacters(wide, CharacterBytes(wideFont), CharacterBytes(wideFormat));
    } else {
        addCharacters(line, CharacterBytes(font), CharacterBytes(format));
    }
    m_row.add(u"</div>");
}

void HtmlWriter::addCharacters(QStringView text, const CharacterBytes &font,
                               const CharacterBytes &format)
{
    int position = 0;
    while (position < text.size()) {
        const char runFormat = format.at(position);
        if (isSymbol(text.at(position), runFormat)) {
            addSymbol();
            ++position;
            continue;
        }
        const int end = endOfRun(text, font, format, position);
        addRun(text.mid(position, end - position), font.at(position), runFormat);
        position = end;
    }
}

void HtmlWriter::addRun(QStringView run, char font, char format)
{
    if (m_tags.start.isEmpty() || m_tags.font != font || m_tags.format != format)
        lookAt(font, format);
    m_row.add(m_tags.start.text());
    if (run.size() > longRun) {
        finishRow();
        m_html.append(run.data(), static_cast<int>(run.size()));
    } else {
        m_row.add(run);
    }
    m_row.add(m_tags.end.text());
}

// Intended: the italic pair closes before the text, so italic shows nothing; clients compare
// pages with this order. See tst_document_html, tagsOfARunStandInTheirOrder.
void HtmlWriter::lookAt(char font, char format)
{
    const bool isBold = hasFormat(format, CharBold);
    const bool isItalic = hasFormat(format, CharItalic);
    const bool isUnderlined = hasFormat(format, CharUnderline);
    const auto onlyIf = [](bool wanted, QStringView tag) { return wanted ? tag : QStringView(); };
    m_tags.font = font;
    m_tags.format = format;
    m_tags.start.clear();
    m_tags.start.add(u"<font size = ");
    m_tags.start.add(QString::number(DocumentBlock().prepareFont(format, font)));
    m_tags.start.add(u">");
    m_tags.start.add(onlyIf(isBold, u"<b>"));
    m_tags.start.add(onlyIf(isItalic, u"<i>"));
    m_tags.start.add(onlyIf(isUnderlined, u"<u>"));
    m_tags.start.add(onlyIf(isItalic, u"</i>"));
    m_tags.end.clear();
    m_tags.end.add(onlyIf(isUnderlined, u"</u>"));
    m_tags.end.add(onlyIf(isBold, u"</b>"));
    m_tags.end.add(u"</font>");
}

void HtmlWriter::addSymbol()
{
    if (m_symbolTag.isEmpty()) {
        const QUrl picture = QUrl::fromLocalFile(QDir::tempPath() + QLatin1String("/tempimg"));
        m_symbolTag = QLatin1String("<img src=\"") + picture.toString() +
                      QLatin1String("\" width=\"10\" height=\"10\">");
    }
    m_row.add(m_symbolTag);
}

}  // namespace documents
