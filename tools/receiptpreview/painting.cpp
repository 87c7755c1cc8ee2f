#include "painting.h"

namespace receiptpreview {

namespace {

constexpr int underlineDots = 2;
constexpr int fineUnderlineDots = 1;
constexpr int dashDots = 12;
constexpr int gapDots = 8;
constexpr int frameDots = 2;
// The mark of a line that goes on, in the left margin.
constexpr int markWidth = 6;
constexpr int markGap = 4;
constexpr int leastMarkWidth = 2;
static_assert(leastMarkWidth + markGap <= Paper::leastMargin, "the mark would cover letters");
constexpr int bitsOfRows = 8;

class RowPainter
{
public:
    RowPainter(const Layout &layout, int top, int bottom, Canvas &canvas)
        : m_layout(layout), m_top(top), m_bottom(bottom), m_canvas(canvas)
    {}

    /// Cells that are white on black: what else stands there burns into their white, too.
    void paintInverse(const Row &row)
    {
        for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i) {
            const Cell &cell = m_layout.cells().at(static_cast<std::size_t>(i));
            if (!cell.has(Cell::Inverse))
                continue;
            m_canvas.fill(m_layout.cellRect(row, cell), Ink::Print);
            paintCharacter(row, cell);
        }
    }

    void paint(const Row &row)
    {
        if (row.continues)
            paintMark(row);
        if (row.framed)
            paintFrame(row);
        if (row.kind == Row::Cut)
            paintCut(row);
        if (row.kind == Row::Gap)
            m_canvas.fill({0, row.top, m_layout.paper().width(), row.height}, Ink::Table);
        for (int i = row.firstRaster; i < row.firstRaster + row.rasterCount; ++i)
            paintRaster(row, m_layout.rasters().at(static_cast<std::size_t>(i)));
        for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i) {
            const Cell &cell = m_layout.cells().at(static_cast<std::size_t>(i));
            if (!cell.has(Cell::Inverse))
                paintCell(row, cell);
            if (cell.has(Cell::Unprinted))
                paintCrossedBox(m_layout.cellRect(row, cell).adjusted(1, 1, -1, -1));
        }
    }

private:
    void paintMark(const Row &row)
    {
        const int margin = m_layout.paper().leftMargin();
        const int width = qBound(leastMarkWidth, margin - markGap, markWidth);
        const int left = margin - markGap - width;
        m_canvas.fill({left, row.top, width, row.height}, Ink::Note);
    }

    /// In place of a character that the model can't print.
    void paintCrossedBox(const QRect &box)
    {
        m_canvas.fill({box.left(), box.top(), box.width(), 1}, Ink::Note);
        m_canvas.fill({box.left(), box.bottom(), box.width(), 1}, Ink::Note);
        for (int y = 0; y < box.height(); ++y) {
            const int x = y * box.width() / box.height();
            for (const int dot : {0, x, box.width() - 1 - x, box.width() - 1})
                m_canvas.fill({box.left() + dot, box.top() + y, 1, 1}, Ink::Note);
        }
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
        paintCharacter(row, cell);
        if (!cell.has(Cell::Underline) && !cell.has(Cell::FineUnderline))
            return;
        const QRect rect = m_layout.cellRect(row, cell);
        const int dots = cell.has(Cell::FineUnderline) ? fineUnderlineDots : underlineDots;
        const int top = cell.has(Cell::UpsideDown) ? rect.top() : rect.bottom() + 1 - dots;
        m_canvas.fill({rect.left(), top, rect.width(), dots}, Ink::Print);
    }

    void paintCharacter(const Row &row, const Cell &cell)
    {
        const QRect rect = m_layout.cellRect(row, cell);
        if (cell.drawing >= 0)
            paintDrawing(cell, rect);
        const bool isDots = cell.drawing >= 0 || cell.has(Cell::Hidden);
        if (isDots && cell.code != u' ') {
            m_canvas.meaning(rect, cell.code);
        } else if (!isDots && cell.code != u' ') {
            m_canvas.glyph(rect, cell.code, cell.effects);
        }
    }

    /// A drawing in the place of a character, from its cell's upper left corner. Printers make it
    /// bold as any other: each dot with its right neighbour.
    void paintDrawing(const Cell &cell, const QRect &rect)
    {
        const Raster &drawing = m_layout.drawings().at(static_cast<std::size_t>(cell.drawing));
        const QTransform turn = turnOf(cell.effects, rect.size());
        const QSize dots = drawing.dotsPerPixel;
        const int boldDots = cell.has(Cell::Bold) ? dots.width() : 0;
        const QRect inside(QPoint(0, 0), rect.size());
        forEachRun(drawing.image, drawing.image.width(), 0, drawing.image.height() - 1,
                   [&](const QRect &run) {
                       const QRect upright(run.left() * dots.width(), run.top() * dots.height(),
                                           run.width() * dots.width() + boldDots, dots.height());
                       const QRect shown = turn.mapRect(upright).intersected(inside);
                       if (!shown.isEmpty())
                           m_canvas.fill(shown.translated(rect.topLeft()), inkOf(cell.effects));
                   });
    }

    void paintRaster(const Row &row, const Raster &raster)
    {
        const Paper &paper = m_layout.paper();
        const MonochromeImage &image = raster.image;
        const QPoint origin(raster.left, row.top + raster.top);
        const QSize dots = raster.dotsPerPixel;
        const int room = paper.leftMargin() + paper.printableWidth() - raster.left;
        const int columns = qMin(image.width(), room / dots.width());
        const int firstRow = qMax(0, (m_top - origin.y()) / dots.height());
        const int lastRow = qMin(image.height() - 1, (m_bottom - origin.y()) / dots.height());
        forEachRun(image, columns, firstRow, lastRow, [&](const QRect &run) {
            m_canvas.fill(
                {origin.x() + run.left() * dots.width(), origin.y() + run.top() * dots.height(),
                 run.width() * dots.width(), dots.height()},
                Ink::Print);
        });
    }

    /// Calls with the runs of set pixels of some rows, each one pixel high.
    template <typename Function>
    static void forEachRun(const MonochromeImage &image, int columns, int firstRow, int lastRow,
                           const Function &call)
    {
        for (int y = firstRow; y <= lastRow; ++y) {
            for (int x = 0; x < columns; ++x) {
                const int start = x;
                while (x < columns && image.pixel(x, y, bitsOfRows))
                    ++x;
                if (x > start)
                    call(QRect(start, y, x - start, 1));
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
    const auto first = layout.firstRowBelow(top);
    const auto end = layout.rows().end();
    if (layout.hasInverse()) {
        for (auto row = first; row != end && row->top < bottom; ++row)
            painter.paintInverse(*row);
    }
    for (auto row = first; row != end && row->top < bottom; ++row) {
        if (row->bottom() > top)
            painter.paint(*row);
    }
}

}  // namespace receiptpreview
