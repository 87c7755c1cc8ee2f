#include "painting.h"

namespace receiptpreview {

namespace {

constexpr int underlineDots = 2;
constexpr int dashDots = 12;
constexpr int gapDots = 8;
constexpr int frameDots = 2;
// The mark of a line that goes on, in the left margin.
constexpr int markWidth = 6;
constexpr int markGap = 4;
constexpr int leastMarkWidth = 2;

class RowPainter
{
public:
    RowPainter(const Layout &layout, int top, int bottom, Canvas &canvas)
        : m_layout(layout), m_top(top), m_bottom(bottom), m_canvas(canvas)
    {}

    void paint(const Row &row)
    {
        if (row.continues)
            paintMark(row);
        if (row.framed)
            paintFrame(row);
        if (row.kind == Row::Cut)
            paintCut(row);
        if (row.kind == Row::Image)
            paintRaster(row);
        for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i)
            paintCell(row, m_layout.cells().at(static_cast<std::size_t>(i)));
    }

private:
    void paintMark(const Row &row)
    {
        const int margin = m_layout.paper().leftMargin();
        const int width = qBound(leastMarkWidth, margin - markGap, markWidth);
        const int left = qMax(0, margin - markGap - width);
        m_canvas.fill({left, row.top, width, row.height}, Ink::Note);
    }

    void paintFrame(const Row &row)
    {
        const int left = m_layout.paper().leftMargin();
        const int width = m_layout.paper().printableWidth();
        m_canvas.fill({left, row.top, frameDots, row.height}, Ink::Note);
        m_canvas.fill({left + width - frameDots, row.top, frameDots, row.height}, Ink::Note);
        const QRect edge(left, row.top, width, frameDots);
        if (row.kind == Row::FrameTop)
            m_canvas.fill(edge, Ink::Note);
        if (row.kind == Row::FrameBottom)
            m_canvas.fill(edge.translated(0, row.height - frameDots), Ink::Note);
    }

    void paintCut(const Row &row)
    {
        const int width = m_layout.paper().width();
        for (int left = 0; left < width; left += dashDots + gapDots)
            m_canvas.fill({left, row.top, qMin(dashDots, width - left), row.height}, Ink::Guide);
    }

    void paintCell(const Row &row, const Cell &cell)
    {
        const QRect rect = m_layout.cellRect(row, cell);
        if (cell.has(Cell::Symbol)) {
            const QSize font = cell.fontCell();
            const QSize dots(cell.width / font.width(), cell.height / font.height());
            paintPixels(m_layout.symbol(cell), 8, rect.topLeft(), dots, rect.width());
        } else if (cell.code != u' ') {
            m_canvas.glyph(rect, cell.code, cell.effects);
        }
        if (cell.has(Cell::Underline)) {
            const int dots = underlineDots * (cell.has(Cell::DoubleHeight) ? 2 : 1);
            m_canvas.fill({rect.left(), rect.bottom() + 1 - dots, rect.width(), dots}, Ink::Print);
        }
    }

    void paintRaster(const Row &row)
    {
        const Raster &raster = m_layout.rasters().at(static_cast<std::size_t>(row.raster));
        const Paper &paper = m_layout.paper();
        paintPixels(raster.image, raster.alignmentBits, {raster.left, row.top}, raster.dotsPerPixel,
                    paper.leftMargin() + paper.printableWidth() - raster.left);
    }

    /// Paints runs of set pixels, of the rows between the two heights.
    void paintPixels(const MonochromeImage &image, int alignmentBits, const QPoint &origin,
                     const QSize &dots, int widthInDots)
    {
        const int columns = qMin(image.width(), widthInDots / dots.width());
        const int firstRow = qMax(0, (m_top - origin.y()) / dots.height());
        const int lastRow = qMin(image.height() - 1, (m_bottom - origin.y()) / dots.height());
        for (int y = firstRow; y <= lastRow; ++y) {
            for (int x = 0; x < columns; ++x) {
                const int start = x;
                while (x < columns && image.pixel(x, y, alignmentBits))
                    ++x;
                if (x > start)
                    m_canvas.fill(
                        {origin.x() + start * dots.width(), origin.y() + y * dots.height(),
                         (x - start) * dots.width(), dots.height()},
                        Ink::Print);
            }
        }
    }

    const Layout &m_layout;
    const int m_top;
    const int m_bottom;
    Canvas &m_canvas;
};

}  // namespace

void paint(const Layout &layout, int top, int bottom, Canvas &canvas)
{
    RowPainter painter(layout, top, bottom, canvas);
    for (auto row = layout.firstRowBelow(top); row != layout.rows().end() && row->top < bottom;
         ++row)
        painter.paint(*row);
}

}  // namespace receiptpreview
