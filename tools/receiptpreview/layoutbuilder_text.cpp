#include <QTextCodec>

#include "layoutbuilder.h"

#include <algorithm>
#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/echarformat.h"

namespace receiptpreview {

namespace {

constexpr ushort firstPrinting = 0x20;
constexpr ushort lastOfAscii = 0x7F;
constexpr ushort lastOfByte = 0xFF;
constexpr int greatestSpacing = 7;
constexpr int mostNamedCharacters = 20;

unsigned char byteAt(const QByteArray &bytes, int index)
{
    return static_cast<unsigned char>(documents::CharacterBytes(bytes).at(index));
}

/// A model's ability to show a format bit, and the effect on the cell.
struct Ability
{
    ECharFormat format;
    bool (PrinterInfo::*has)() const;
    Cell::Effect effect;
};

constexpr Ability abilities[] = {
    {CharBold, &PrinterInfo::bold, Cell::Bold},
    {CharItalic, &PrinterInfo::italic, Cell::Italic},
    {CharUnderline, &PrinterInfo::underline, Cell::Underline},
    {CharDoubleWidth, &PrinterInfo::doubleWidth, Cell::DoubleWidth},
    {CharDoubleHeight, &PrinterInfo::doubleHeight, Cell::DoubleHeight},
};

}  // namespace

void LayoutBuilder::addText(const DocumentBlock &block)
{
    const QStringList text = block.text();
    const QList<QByteArray> format = block.format();
    const QList<QByteArray> font = block.font();
    const QList<int> spacing = block.lineSpacing();
    for (int i = 0; i < text.size() && !m_layout.m_tooLong; ++i)
        addLine({text.at(i), format.at(i), font.at(i), block.alignment(), spacing.at(i)});
}

void LayoutBuilder::addLine(const TextLine &line)
{
    const bool spaced = m_layout.m_paper.model().lineSpacing();
    m_spacing = spaced ? qBound(0, line.spacing, greatestSpacing) : 0;
    m_emptyHeight = fontOf(line, 0).height();
    m_next = m_indent;

    const int unit = fontOf(line, 0).width();
    const int room = freeCells(line, unit);
    if (room > 0 && line.alignment == AlignRight)
        m_next += room * unit;
    else if (room > 0 && line.alignment == AlignCenter)
        m_next += room / 2 * unit;
    const int tabRoom = line.alignment == AlignJustify ? room : 0;
    for (int i = 0; i < line.text.size() && !m_layout.m_tooLong; ++i) {
        if (line.text.at(i) == QLatin1Char('\t'))
            addTab(cellOf(line, i), unit, tabRoom);
        else if (documents::isSymbol(line.text.at(i), static_cast<char>(byteAt(line.format, i))))
            addSymbol(line, i);
        else
            addCharacter(line, i);
    }
    endRow();
    m_isContinuation = false;
}

int LayoutBuilder::freeCells(const TextLine &line, int unit) const
{
    const int width = m_layout.m_paper.printableWidth() - 2 * m_indent;
    int used = 0;
    for (int i = 0; i < line.text.size() && used <= width; ++i) {
        const unsigned char format = byteAt(line.format, i);
        const bool isDouble = (effectsOf(format) & Cell::DoubleWidth) != 0;
        used += fontOf(line, i).width() * (isDouble ? 2 : 1);
    }
    return used <= width ? (width - used) / unit : 0;
}

/// A tab of a justified line takes its own place and all the free ones; a further tab makes the
/// line too long, as it does in the library's text form.
void LayoutBuilder::addTab(Cell cell, int unit, int freeCells)
{
    addCell(cell);
    cell.width = static_cast<quint16>(unit);
    cell.effects &= static_cast<quint16>(~Cell::DoubleWidth);
    for (int i = 0; i < freeCells; ++i)
        addCell(cell);
}

void LayoutBuilder::addSymbol(const TextLine &line, int index)
{
    const FontInfo &font = fontOf(line, index);
    const int code = line.text.at(index).unicode();
    Cell cell = cellOf(line, index);
    if (font.customSymbols()) {
        cell.effects |= Cell::Symbol;
        cell.code = static_cast<char16_t>(code);
    }
    const auto key = std::make_tuple(code, int(font.width()), int(font.height()));
    if (m_layout.m_symbols.count(key) == 0) {
        warnOfBlankSymbol(code, font);
        m_layout.m_symbols[key] = m_symbols.getImage(code, font.width(), font.height());
    }
    addCell(cell);
}

void LayoutBuilder::warnOfBlankSymbol(int code, const FontInfo &font)
{
    const QList<MonochromeImage> drawings = m_symbols.values(static_cast<signed char>(code));
    const auto fits = [&font](const MonochromeImage &drawing) {
        return drawing.isValid() && drawing.width() <= font.width() &&
               drawing.height() <= font.height();
    };
    if (!font.customSymbols())
        warn(QStringLiteral("the symbol %1 is blank: font %2 of the model takes no drawings")
                 .arg(code)
                 .arg(font.idAsString()));
    else if (drawings.isEmpty())
        warn(QStringLiteral("the symbol %1 is blank: it has no drawing").arg(code));
    else if (std::none_of(drawings.cbegin(), drawings.cend(), fits))
        warn(QStringLiteral("the symbol %1 is blank: it has no drawing that fits %2 x %3 dots")
                 .arg(code)
                 .arg(font.width())
                 .arg(font.height()));
}

void LayoutBuilder::addCharacter(const TextLine &line, int index)
{
    // A raw code is a byte to the printer, and a frame isn't printed.
    const bool isRaw = (byteAt(line.format, index) & CharRawCode) != 0;
    const bool isSecondHalf = index > 0 && line.text.at(index).isLowSurrogate() &&
                              line.text.at(index - 1).isHighSurrogate();
    if (line.text.at(index).unicode() > lastOfAscii && !isRaw && !isSecondHalf && !m_isFramed)
        noteCharacter(line.text.mid(index, line.text.at(index).isHighSurrogate() ? 2 : 1));
    addCell(cellOf(line, index));
}

void LayoutBuilder::noteCharacter(const QString &character)
{
    if (m_codePage == nullptr || m_noted.contains(character))
        return;
    m_noted.insert(character);
    if (!m_codePage->canEncode(character))
        m_unprintable.append(QStringLiteral("\"%1\"").arg(character));
}

void LayoutBuilder::warnOfUnprintable()
{
    if (m_unprintable.isEmpty())
        return;
    const int more = m_unprintable.size() - mostNamedCharacters;
    QString names =
        QStringList(m_unprintable.mid(0, mostNamedCharacters)).join(QLatin1String(", "));
    if (more > 0)
        names += QStringLiteral(" and %1 more").arg(more);
    m_layout.m_warnings.append(QStringLiteral("not in the printer's character set, %1: %2")
                                   .arg(QString::fromLatin1(m_codePage->name()), names));
}

void LayoutBuilder::addCell(Cell cell)
{
    const bool isFirst = static_cast<int>(m_layout.m_cells.size()) == m_rowStart;
    if (!isFirst && m_next + cell.width > m_layout.m_paper.printableWidth() - m_indent) {
        endRow();
        m_isContinuation = true;
        m_next = m_indent;
    }
    cell.left = m_layout.m_paper.leftMargin() + m_next;
    m_next += cell.width;
    m_layout.m_cells.push_back(cell);
}

void LayoutBuilder::endRow()
{
    const int end = static_cast<int>(m_layout.m_cells.size());
    int height = end == m_rowStart ? m_emptyHeight : 0;
    for (int i = m_rowStart; i < end; ++i)
        height = qMax<int>(height, m_layout.m_cells.at(static_cast<std::size_t>(i)).height);
    Row &row = addRow(Row::Text, height);
    row.firstCell = m_rowStart;
    row.cellCount = end - m_rowStart;
    row.continues = m_isContinuation;
    m_rowStart = end;
    m_layout.feed(m_spacing * Layout::dotsPerLineSpacing);
}

Cell LayoutBuilder::cellOf(const TextLine &line, int index) const
{
    const FontInfo &font = fontOf(line, index);
    const unsigned char format = byteAt(line.format, index);
    const QChar character = line.text.at(index);
    Cell cell;
    cell.effects = effectsOf(format);
    cell.width = static_cast<quint16>(font.width() * (cell.has(Cell::DoubleWidth) ? 2 : 1));
    cell.height = static_cast<quint16>(font.height() * (cell.has(Cell::DoubleHeight) ? 2 : 1));
    cell.code = printedCode(character, format);
    return cell;
}

const FontInfo &LayoutBuilder::fontOf(const TextLine &line, int index) const
{
    return m_layout.m_paper.font(byteAt(line.font, index));
}

/// What the cell shows: a blank for a control character. A raw code is a byte to the printer, so
/// the upper half shows the code page.
char16_t LayoutBuilder::printedCode(QChar character, unsigned char format) const
{
    const ushort code = character.unicode();
    if (code < firstPrinting)
        return u' ';
    if ((format & CharRawCode) == 0 || code <= lastOfAscii || code > lastOfByte)
        return code;
    const char byte = static_cast<char>(code);
    const QString shown = m_codePage == nullptr ? QString() : m_codePage->toUnicode(&byte, 1);
    return shown.isEmpty() ? code : shown.at(0).unicode();
}

quint16 LayoutBuilder::effectsOf(unsigned char format) const
{
    quint16 effects = 0;
    for (const Ability &ability : abilities) {
        if ((format & ability.format) != 0 && (m_layout.m_paper.model().*ability.has)())
            effects |= ability.effect;
    }
    return effects;
}

}  // namespace receiptpreview
