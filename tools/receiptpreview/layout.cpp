#include "layout.h"

#include <algorithm>

#include "layoutbuilder.h"
#include "printlayoutbuilder.h"

namespace receiptpreview {

QTransform turnOf(quint16 effects, const QSizeF &cell)
{
    QTransform transform;
    if ((effects & Cell::Turned) != 0)
        transform *= QTransform(0, 1, -1, 0, cell.width(), 0);
    if ((effects & Cell::UpsideDown) != 0)
        transform *= QTransform(-1, 0, 0, -1, cell.width(), cell.height());
    return transform;
}

Layout::Layout(const printerslib::drivers::PrintLayout &print, QFlags<EPrinterTicketAction> before,
               QFlags<EPrinterTicketAction> after)
    : m_paper(print.target)
{
    LayoutBuilder(*this, print).build(before, after);
}

Layout::Layout(const QVector<printerslib::drivers::Paper> &pieces, const Paper &paper)
    : m_paper(paper)
{
    int line = 0;
    for (const printerslib::drivers::Paper &piece : pieces)
        line = qMax(line, piece.width);
    if (line > 0)
        m_paper = paper.withLine(line, pieces.constFirst().dotsPerInch);
    PrintLayoutBuilder(*this).build(pieces);
}

Row &Layout::addRow(Row::Kind kind, int height)
{
    Row row;
    row.kind = kind;
    row.top = m_height;
    row.height = height;
    row.reach = row.bottom();
    m_rows.push_back(row);
    feed(height);
    return m_rows.back();
}

void Layout::feed(int dots)
{
    m_tooLong = m_tooLong || dots > longestPaper - m_height;
    m_height += m_tooLong ? 0 : dots;
}

std::vector<Row>::const_iterator Layout::firstRowBelow(int top) const
{
    return std::lower_bound(m_rows.begin(), m_rows.end(), top,
                            [](const Row &row, int dot) { return row.reach <= dot; });
}

}  // namespace receiptpreview
