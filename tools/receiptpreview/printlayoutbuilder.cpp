#include "printlayoutbuilder.h"

#include <algorithm>

namespace receiptpreview {

namespace {

using Print = printerslib::drivers::Paper;

struct EffectRow
{
    Print::Effect printed;
    Cell::Effect shown;
};

// There is no second colour here: it is black.
constexpr EffectRow effectRows[] = {
    {Print::Bold, Cell::Bold},
    {Print::Italic, Cell::Italic},
    {Print::Underline, Cell::FineUnderline},
    {Print::ThickUnderline, Cell::Underline},
    {Print::Inverse, Cell::Inverse},
    {Print::UpsideDown, Cell::UpsideDown},
    {Print::Turned, Cell::Turned},
};

quint16 effectsOf(quint16 printed)
{
    quint16 effects = 0;
    for (const EffectRow &row : effectRows)
        effects |= (printed & row.printed) != 0 ? row.shown : 0;
    return effects;
}

constexpr quint16 inkOfBlanks = Cell::FineUnderline | Cell::Underline | Cell::Inverse;

bool isBlank(const Cell &cell)
{
    return cell.code == u' ' && cell.drawing < 0 && (cell.effects & inkOfBlanks) == 0;
}

bool isAbove(const Row &one, const Row &other)
{
    return one.top < other.top;
}

}  // namespace

void PrintLayoutBuilder::build(const QVector<Print> &pieces)
{
    for (const Print &piece : pieces) {
        if (m_layout.m_height > 0)
            m_layout.addRow(Row::Gap, Layout::gapHeight);
        addPiece(piece);
        if (m_layout.m_tooLong)
            return;
    }
    int reach = 0;
    for (Row &row : m_layout.m_rows) {
        reach = qMax(reach, row.bottom());
        row.reach = reach;
    }
}

void PrintLayoutBuilder::addPiece(const Print &piece)
{
    m_layout.feed(Layout::endMargin);
    m_top = m_layout.m_height;
    m_left = qMax(0, (m_layout.m_paper.width() - piece.width) / 2);
    m_bottom = m_top;
    m_drawings.startAnew();
    const auto firstRow = static_cast<std::ptrdiff_t>(m_layout.m_rows.size());
    for (const Print::Line &line : piece.lines)
        addLine(piece, line);
    std::stable_sort(m_layout.m_rows.begin() + firstRow, m_layout.m_rows.end(), isAbove);
    m_layout.feed(qMax(piece.length, m_bottom - m_top));
    m_layout.feed(Layout::endMargin);
    if (piece.isCut)
        m_layout.addRow(Row::Cut, Layout::cutHeight);
}

void PrintLayoutBuilder::addLine(const Print &piece, const Print::Line &line)
{
    m_row = Row();
    m_row.kind = Row::Print;
    m_row.top = Layout::longestPaper;
    m_row.firstCell = static_cast<int>(m_layout.m_cells.size());
    m_row.firstRaster = static_cast<int>(m_layout.m_rasters.size());
    m_rowBottom = 0;
    for (int i = line.firstCell; i < line.firstCell + line.cellCount; ++i)
        addCell(piece, piece.cells.at(i));
    for (int i = line.firstPicture; i < line.firstPicture + line.pictureCount; ++i) {
        const Print::Picture &picture = piece.pictures.at(i);
        addRaster(picture.place, picture.size, picture.dotsPerPixel, picture.rows);
    }
    for (int i = line.firstCode; i < line.firstCode + line.codeCount; ++i) {
        const Print::Code &code = piece.codes.at(i);
        addRaster(code.place, code.modules, code.module, code.rows);
    }
    endRow(line.isWrapped);
}

void PrintLayoutBuilder::addCell(const Print &piece, const Print::Cell &printed)
{
    Cell cell;
    cell.left = m_left + printed.left;
    cell.width = printed.width;
    cell.height = printed.height;
    cell.code = printed.character < u' ' ? u' ' : printed.character;
    cell.effects = effectsOf(printed.effects);
    if (printed.drawing >= 0 && printed.drawing < piece.pictures.size())
        cell.drawing = m_drawings.numberOf(printed.drawing, piece.pictures.at(printed.drawing),
                                           {printed.widthScale, printed.heightScale});
    if (isBlank(cell) || printed.width == 0 || printed.height == 0)
        return;
    const int top = m_top + qMax(0, printed.top);
    cell.rise = top + cell.height;
    include(top, cell.rise);
    m_layout.m_hasInverse = m_layout.m_hasInverse || cell.has(Cell::Inverse);
    m_layout.m_cells.push_back(cell);
}

void PrintLayoutBuilder::addRaster(const QRect &place, const QSize &size, const QSize &dotsPerPixel,
                                   const QByteArray &rows)
{
    if (size.isEmpty() || dotsPerPixel.isEmpty())
        return;
    Raster raster;
    raster.image = MonochromeImage(size.width(), size.height(), rows);
    raster.left = m_left + place.left();
    raster.top = m_top + qMax(0, place.top());
    raster.dotsPerPixel = dotsPerPixel;
    include(raster.top, raster.top + size.height() * dotsPerPixel.height());
    m_layout.m_rasters.push_back(raster);
}

void PrintLayoutBuilder::include(int top, int bottom)
{
    m_row.top = qMin(m_row.top, top);
    m_rowBottom = qMax(m_rowBottom, bottom);
}

void PrintLayoutBuilder::endRow(bool continues)
{
    m_row.cellCount = static_cast<int>(m_layout.m_cells.size()) - m_row.firstCell;
    m_row.rasterCount = static_cast<int>(m_layout.m_rasters.size()) - m_row.firstRaster;
    if (m_row.cellCount + m_row.rasterCount == 0)
        return;
    m_row.height = m_rowBottom - m_row.top;
    m_row.continues = continues;
    const auto cells = m_layout.m_cells.begin() + m_row.firstCell;
    for (auto cell = cells; cell != m_layout.m_cells.end(); ++cell)
        cell->rise = m_rowBottom - cell->rise;
    const auto rasters = m_layout.m_rasters.begin() + m_row.firstRaster;
    for (auto raster = rasters; raster != m_layout.m_rasters.end(); ++raster)
        raster->top -= m_row.top;
    m_bottom = qMax(m_bottom, m_rowBottom);
    m_layout.m_rows.push_back(m_row);
}

}  // namespace receiptpreview
