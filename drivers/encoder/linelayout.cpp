#include "printerslib/drivers/linelayout.h"

#include <limits>

#include "encoder/linefiller_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

using Cells = std::vector<PrintLayout::Cell>;

QChar characterOf(const PrintLayout::Cell &cell)
{
    return (cell.format & CharRawCode) != 0 ? QChar(ushort(cell.byte)) : QChar(cell.character);
}

LaidLine laidLine(const PrintLayout::Cell *cells, int size)
{
    LaidLine line;
    line.text.resize(size);
    line.format.resize(size);
    line.font.resize(size);
    for (int i = 0; i < size; ++i) {
        const PrintLayout::Cell &cell = cells[i];
        line.text[i] = characterOf(cell);
        line.format[i] = static_cast<char>(cell.format);
        line.font[i] = static_cast<char>(cell.font);
    }
    return line;
}

}  // namespace

LineLayout::LineLayout(const PrintTarget &target, const QByteArray &allowedRawCodes)
    : m_target(target), m_allowedRawCodes(allowedRawCodes)
{}

QVector<LaidLine> LineLayout::rowsOf(const QString &text, const QByteArray &format,
                                     const QByteArray &font, ETextAlignment alignment) const
{
    LineFiller filler(m_target, m_allowedRawCodes);
    Cells cells;
    std::vector<LineFiller::RowEnd> ends;
    filler.fill({text, format, font, alignment}, std::numeric_limits<int>::max(), cells, ends);
    QVector<LaidLine> rows;
    rows.reserve(static_cast<int>(ends.size()));
    int first = 0;
    for (const LineFiller::RowEnd &row : ends) {
        rows.append(laidLine(cells.data() + first, row.end - first));
        rows.last().isWrapped = rows.size() > 1;
        first = row.end;
    }
    return rows;
}

QVector<LaidLine> LineLayout::rowsOf(const DocumentBlock &block) const
{
    QVector<LaidLine> rows;
    if (!block.isText())
        return rows;
    const QStringList text = block.text();
    const QList<QByteArray> format = block.format();
    const QList<QByteArray> font = block.font();
    for (int i = 0; i < text.size(); ++i)
        rows += rowsOf(text.at(i), format.at(i), font.at(i), block.alignment());
    return rows;
}

}  // namespace printerslib::drivers
