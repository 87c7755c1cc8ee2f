#include "encoder/textsetter_p.h"

#include <algorithm>

#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

constexpr int greatestSpacing = 7;
constexpr int dotsPerSpacing = 4;
constexpr int fontBytes = 0x80;  // numbers of fonts in the catalogue are of 8 bits with sign

struct FormatName
{
    ECharFormat format;
    const char *name;
};

constexpr FormatName formatNames[] = {
    {CharBold, "bold"},
    {CharItalic, "italic"},
    {CharMarkZ, "inverse"},
    {CharUnderline, "underlined"},
    {CharDoubleWidth, "of double width"},
    {CharDoubleHeight, "of double height"},
};

}  // namespace

TextSetter::TextSetter(LayoutSheet &sheet, const TextPrinterDocument &document,
                       const PrintOptions &options)
    : m_sheet(sheet),
      m_filler(sheet.target(), options.allowedRawCodes, options.spacesInFront),
      m_characters(sheet, document, options),
      m_isSpaced(sheet.target().record().lineSpacing())
{
    m_leastHeight = sheet.target().font(0).cell.height();
    for (int font = 0; font < fontBytes; ++font)
        m_leastHeight = std::min(m_leastHeight, sheet.target().font(quint8(font)).cell.height());
    m_leastHeight = std::max(1, m_leastHeight);
}

void TextSetter::add(const DocumentBlock &block)
{
    const QStringList text = block.text();
    const QList<QByteArray> format = block.format();
    const QList<QByteArray> font = block.font();
    const QList<int> spacing = block.lineSpacing();
    const ETextAlignment alignment = block.alignment();
    for (int i = 0; i < text.size() && !m_sheet.isFull(); ++i) {
        const LineFiller::Line line(text.at(i), format.at(i), font.at(i), alignment);
        addLine(line, i + 1, spacing.at(i));
    }
}

void TextSetter::addLine(const LineFiller::Line &line, int number, int spacing)
{
    PrintLayout &layout = m_sheet.layout();
    m_sheet.notes().setPlace(m_sheet.block(), number);
    m_ends.clear();
    PrintLayout::Row row;
    row.kind = PrintLayout::Row::Text;
    row.line = number;
    row.feed = m_isSpaced ? qBound(0, spacing, greatestSpacing) * dotsPerSpacing : 0;
    row.first = static_cast<int>(layout.cells.size());
    m_filler.fill(line, m_sheet.room() / m_leastHeight + 1, layout.cells, m_ends);
    if (m_filler.unprintedFormats() != 0)
        noteFormats(m_filler.unprintedFormats());
    for (const LineFiller::RowEnd &end : m_ends) {
        row.count = end.end - row.first;
        row.height = end.height;
        if (m_characters.concern(end.isOdd))
            m_characters.set(row);
        m_sheet.addRow(row);
        row.first = end.end;
        row.isWrapped = true;
        row.isRaster = false;
    }
}

void TextSetter::noteFormats(int formats)
{
    for (const FormatName &row : formatNames) {
        if ((formats & row.format) != 0)
            m_sheet.notes().add(
                QStringLiteral("the model prints no text that is %1").arg(QLatin1String(row.name)));
    }
}

}  // namespace printerslib::drivers
