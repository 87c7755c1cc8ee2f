#include "layoutbuilder.h"

#include <algorithm>

#include "printerdocs/echarformat.h"

namespace receiptpreview {

namespace {

using printerslib::drivers::CutCommand;
using printerslib::drivers::PrintFont;

constexpr int frameEdge = 8;
constexpr int mostOfPayload = 1000;

struct FormatEffect
{
    ECharFormat format;
    Cell::Effect effect;
};

constexpr FormatEffect formatEffects[] = {
    {CharBold, Cell::Bold},
    {CharItalic, Cell::Italic},
    {CharUnderline, Cell::Underline},
    {CharMarkZ, Cell::Inverse},
};

quint16 effectsOf(quint8 format)
{
    quint16 effects = 0;
    for (const FormatEffect &row : formatEffects)
        effects |= (format & row.format) != 0 ? row.effect : 0;
    return effects;
}

/// How often a font's own dots are repeated in a cell.
QSize scaleOf(const PrintFont &font, const QSize &cell)
{
    return {font.widthScale * cell.width() / font.cell.width(),
            font.heightScale * cell.height() / font.cell.height()};
}

}  // namespace

LayoutBuilder::LayoutBuilder(Layout &layout, const Print &print)
    : m_layout(layout),
      m_print(print),
      m_drawings(layout.m_drawings),
      m_margin(layout.m_paper.leftMargin())
{}

void LayoutBuilder::build(QFlags<EPrinterTicketAction> before, QFlags<EPrinterTicketAction> after)
{
    if (before.testFlag(TicketActionEveryDocument))
        addCut();
    m_layout.feed(Layout::endMargin);
    for (const Print::Row &row : m_print.rows) {
        addRow(row);
        if (m_layout.m_tooLong)
            return;
    }
    if (m_print.target.wantsCut(after))
        addCut();
    m_layout.feed(Layout::endMargin);
}

void LayoutBuilder::addRow(const Print::Row &row)
{
    switch (row.kind) {
        case Print::Row::Text:
            addText(row);
            break;
        case Print::Row::Picture: {
            const auto &picture = m_print.pictures.at(row.first);
            addImage(row.left, picture.dotsPerPixel, picture.size, picture.rows);
            break;
        }
        case Print::Row::Code: {
            const auto &code = m_print.codes.at(row.first);
            addImage(row.left, code.module, code.modules, code.rows);
            break;
        }
        case Print::Row::Fault:
            addFault(m_print.faults.at(row.first));
            break;
        case Print::Row::Feed:
            m_layout.feed(row.height);
            break;
    }
    m_layout.feed(row.feed);
}

/// What goes to the printer as dots is drawn so, and its characters are there for the search.
/// Dots side by side are one raster.
void LayoutBuilder::addText(const Print::Row &row)
{
    Row &added = m_layout.addRow(Row::Text, row.height);
    added.continues = row.isWrapped;
    added.firstCell = static_cast<int>(m_layout.m_cells.size());
    added.cellCount = row.count;
    int left = 0;
    Print::Row dots = row;
    dots.count = 0;
    for (int i = row.first; i < row.first + row.count; ++i) {
        const Print::Cell &printed = m_print.cells.at(static_cast<std::size_t>(i));
        Cell cell = cellOf(printed);
        if (row.isRaster || printed.isDots) {
            cell.effects = Cell::Hidden;
            dots.first = dots.count == 0 ? i : dots.first;
            dots.left = dots.count == 0 ? left : dots.left;
            ++dots.count;
        } else {
            setDrawing(cell, printed);
            addDots(added, dots);
        }
        if (std::binary_search(m_print.unprintedCells.begin(), m_print.unprintedCells.end(), i))
            cell.effects |= Cell::Unprinted;
        cell.left = m_margin + left;
        left += cell.width;
        m_layout.m_hasInverse = m_layout.m_hasInverse || cell.has(Cell::Inverse);
        m_layout.m_cells.push_back(cell);
    }
    addDots(added, dots);
}

/// Cells that are drawn as dots, none of which is left then.
void LayoutBuilder::addDots(Row &row, Print::Row &dots)
{
    if (dots.count == 0)
        return;
    const auto picture = m_print.rasterOf(dots);
    addRaster(row, dots.left, picture.dotsPerPixel, picture.size, picture.rows);
    dots.count = 0;
}

Cell LayoutBuilder::cellOf(const Print::Cell &printed) const
{
    const QSize size = m_print.sizeOf(printed);
    Cell cell;
    cell.width = static_cast<quint16>(size.width());
    cell.height = static_cast<quint16>(size.height());
    cell.code = printed.character;
    cell.effects = effectsOf(printed.format);
    return cell;
}

void LayoutBuilder::setDrawing(Cell &cell, const Print::Cell &printed)
{
    if (printed.drawing < 0)
        return;
    const QSize scale = scaleOf(m_print.target.font(printed.font), {cell.width, cell.height});
    cell.drawing =
        m_drawings.numberOf(printed.drawing, m_print.drawings.at(printed.drawing), scale);
}

void LayoutBuilder::addImage(int left, const QSize &dotsPerPixel, const QSize &size,
                             const QByteArray &rows)
{
    const qint64 height = qint64(size.height()) * dotsPerPixel.height();
    Row &row =
        m_layout.addRow(Row::Image, static_cast<int>(qMin<qint64>(height, Layout::longestPaper)));
    addRaster(row, left, dotsPerPixel, size, rows);
}

void LayoutBuilder::addRaster(Row &row, int left, const QSize &dotsPerPixel, const QSize &size,
                              const QByteArray &rows)
{
    if (row.rasterCount == 0)
        row.firstRaster = static_cast<int>(m_layout.m_rasters.size());
    ++row.rasterCount;
    Raster raster;
    raster.image = MonochromeImage(size.width(), size.height(), rows);
    raster.left = m_margin + left;
    raster.dotsPerPixel = dotsPerPixel;
    m_layout.m_rasters.push_back(raster);
}

/// A box that says in plain text what couldn't be printed.
void LayoutBuilder::addFault(const Print::Fault &fault)
{
    const auto first = m_layout.m_rows.size();
    m_layout.addRow(Row::FrameTop, frameEdge);
    addFaultText(QStringLiteral("%1: %2").arg(fault.what, fault.cause));
    if (!fault.payload.isEmpty())
        addFaultText(QString::fromUtf8(fault.payload.left(mostOfPayload)));
    m_layout.addRow(Row::FrameBottom, frameEdge);
    for (auto row = first; row < m_layout.m_rows.size(); ++row)
        m_layout.m_rows[row].framed = true;
}

void LayoutBuilder::addFaultText(const QString &text)
{
    const QSize size = m_print.target.font(0).cell;
    const int room = m_layout.m_paper.printableWidth() - 2 * frameEdge;
    const int perRow = std::max(1, room / size.width());
    for (int start = 0; start < text.size(); start += perRow) {
        Row &row = m_layout.addRow(Row::Text, size.height());
        row.firstCell = static_cast<int>(m_layout.m_cells.size());
        row.cellCount = std::min(perRow, text.size() - start);
        row.continues = start > 0;
        for (int i = 0; i < row.cellCount; ++i) {
            Cell cell;
            cell.left = m_margin + frameEdge + i * size.width();
            cell.width = static_cast<quint16>(size.width());
            cell.height = static_cast<quint16>(size.height());
            const QChar shown = text.at(start + i);
            cell.code = shown < QLatin1Char(' ') ? u' ' : shown.unicode();
            m_layout.m_cells.push_back(cell);
        }
    }
}

void LayoutBuilder::addCut()
{
    if (m_print.target.profile().cutCommand() == CutCommand::None)
        return;
    m_layout.feed(Layout::endMargin);
    m_layout.addRow(Row::Cut, Layout::cutHeight);
}

}  // namespace receiptpreview
