#include "encoder/rasterrow_p.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <vector>

#include "encoder/glyphs_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

constexpr int underlineRows = 2;
constexpr int italicSlant = 5;  // so many rows per dot aside

/// While a row is drawn each dot is a byte, 0 or 1: eight of them are copied at once.
using Dots = std::array<unsigned char, 8>;

constexpr std::array<Dots, 256> makeDotsOfBytes()
{
    std::array<Dots, 256> table = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (unsigned x = 0; x < 8; ++x)
            table[byte][x] = byte >> (7 - x) & 1U;
    }
    return table;
}

constexpr std::array<Dots, 256> dotsOfBytes = makeDotsOfBytes();

/// Cells side by side with their feet on one line.
class CellPainter
{
public:
    CellPainter(const PrintLayout &layout, const PrintLayout::Row &row);

    Paper::Picture picture() const;

private:
    using Cell = PrintLayout::Cell;

    /// How a cell is enlarged.
    struct Look
    {
        QSize base;  ///< before that
        int xTimes = 1;
        int yTimes = 1;
        QSize size() const { return {base.width() * xTimes, base.height() * yTimes}; }
    };

    Look lookOf(const Cell &cell) const;
    void paint(const Cell &cell, const Look &look);
    void paintDrawing(const Cell &cell, const Look &look);
    glyphs::Drawing drawingOf(const Cell &cell, QSize base);
    void readRow(const glyphs::Drawing &drawing, int y, int width);
    void slant(int aside, int width);
    void embolden(int width);
    void writeRow(unsigned char *to, const Look &look) const;
    unsigned char *dotsAt(int x, int y) { return m_dots.data() + ptrdiff_t(y) * m_stride + x; }
    const unsigned char *dotsAt(int x, int y) const
    {
        return m_dots.data() + ptrdiff_t(y) * m_stride + x;
    }

    const PrintLayout &m_layout;
    int m_width = 0;
    int m_height = 0;
    int m_stride = 0;
    int m_left = 0;                     ///< of the cell that comes next
    std::vector<unsigned char> m_dots;  ///< of all cells, beyond the line, too
    std::vector<unsigned char> m_row;   ///< of a drawing before it is enlarged
    Paper::Picture m_other;             ///< drawing of a cell that nobody foresaw
};

CellPainter::CellPainter(const PrintLayout &layout, const PrintLayout::Row &row)
    : m_layout(layout), m_height(std::max(row.height, 0))
{
    const int total = int(layout.cells.size());
    const int first = qBound(0, row.first, total);
    const int line = layout.target.lineDots();
    int end = first;
    int base = 0;
    for (; end < first + qBound(0, row.count, total - first) && m_stride < line; ++end) {
        const Look look = lookOf(layout.cells[size_t(end)]);
        m_stride += look.size().width();
        base = std::max(base, look.base.width());
    }
    m_width = std::min(m_stride, line);
    // Whole bytes are read and written, beyond the last dot.
    m_stride += 8;
    m_row.resize(size_t(base) + 8);
    m_dots.resize(size_t(m_stride) * size_t(m_height) + 8);
    for (int i = first; i < end; ++i) {
        const Cell &cell = layout.cells[size_t(i)];
        const Look look = lookOf(cell);
        paint(cell, look);
        m_left += look.size().width();
    }
}

CellPainter::Look CellPainter::lookOf(const Cell &cell) const
{
    const PrintFont &font = m_layout.target.font(cell.font);
    const int widthScale = std::max<int>(font.widthScale, 1);
    const int heightScale = std::max<int>(font.heightScale, 1);
    const QSize cellSize = font.cell.expandedTo({0, 0});
    return {{cellSize.width() / widthScale, cellSize.height() / heightScale},
            widthScale * ((cell.format & CharDoubleWidth) != 0 ? 2 : 1),
            heightScale * ((cell.format & CharDoubleHeight) != 0 ? 2 : 1)};
}

void CellPainter::paint(const Cell &cell, const Look &look)
{
    const QSize size = look.size();
    const bool isBlank = cell.character == u' ' && cell.drawing < 0;
    if (!isBlank && !size.isEmpty())
        paintDrawing(cell, look);
    const int top = std::max(m_height - size.height(), 0);
    if ((cell.format & CharMarkZ) != 0) {
        for (int y = top; y < m_height; ++y) {
            unsigned char *const dots = dotsAt(m_left, y);
            std::transform(dots, dots + size.width(), dots,
                           [](unsigned char dot) { return dot ^ 1U; });
        }
    } else if ((cell.format & CharUnderline) != 0) {
        for (int y = std::max(m_height - underlineRows, top); y < m_height; ++y)
            std::fill_n(dotsAt(m_left, y), size.width(), 1);
    }
}

void CellPainter::paintDrawing(const Cell &cell, const Look &look)
{
    const glyphs::Drawing drawing = drawingOf(cell, look.base);
    const int width = look.base.width();
    const int top = m_height - look.size().height();
    for (int y = 0; y < std::min(look.base.height(), drawing.size.height()); ++y) {
        readRow(drawing, y, width);
        if ((cell.format & CharItalic) != 0)
            slant((look.base.height() / 2 - y) / italicSlant, width);
        if ((cell.format & CharBold) != 0)
            embolden(width);
        for (int row = top + y * look.yTimes; row < top + (y + 1) * look.yTimes; ++row) {
            if (row >= 0)
                writeRow(dotsAt(m_left, row), look);
        }
    }
}

glyphs::Drawing CellPainter::drawingOf(const Cell &cell, QSize base)
{
    if (cell.drawing < 0 || cell.drawing >= m_layout.drawings.size()) {
        const glyphs::Drawing drawing = glyphs::drawingOf(cell.character, base);
        if (drawing.rows != nullptr)
            return drawing;
        m_other = glyphs::of(cell.character, base);
    } else {
        m_other = m_layout.drawings.at(cell.drawing);
    }
    const int bytes = (m_other.size.width() + 7) / 8;
    const int rows = bytes > 0 ? std::min(m_other.size.height(), m_other.rows.size() / bytes) : 0;
    return {reinterpret_cast<const unsigned char *>(m_other.rows.constData()),
            {m_other.size.width(), rows}};
}

void CellPainter::readRow(const glyphs::Drawing &drawing, int y, int width)
{
    const int bytes = (drawing.size.width() + 7) / 8;
    const unsigned char *from = drawing.rows + ptrdiff_t(y) * bytes;
    const int shown = std::min(drawing.size.width(), width);
    for (int x = 0; x < shown; x += 8)
        std::memcpy(m_row.data() + x, dotsOfBytes[*from++].data(), 8);
    std::fill(m_row.begin() + shown, m_row.begin() + std::max(shown, width), 0);
}

void CellPainter::writeRow(unsigned char *to, const Look &look) const
{
    const int width = look.base.width();
    if (look.xTimes == 1) {
        std::copy_n(m_row.begin(), width, to);
        return;
    }
    for (int x = 0; x < width; ++x, to += look.xTimes)
        std::fill_n(to, look.xTimes, m_row[size_t(x)]);
}

/// Moves dots to the right, or to the left if `aside` is negative. Those that would leave the cell
/// stay at its edge, where the strokes of narrow cells stand.
void CellPainter::slant(int aside, int width)
{
    const int distance = std::min(std::abs(aside), width - 1);
    if (distance == 0)
        return;
    const auto begin = m_row.begin();
    const auto end = begin + width;
    const auto keep = [](unsigned char a, unsigned char b) -> unsigned char { return a | b; };
    if (aside > 0) {
        const auto edge =
            std::accumulate(end - distance - 1, end, static_cast<unsigned char>(0), keep);
        std::copy_backward(begin, end - distance, end);
        std::fill_n(begin, distance, 0);
        *(end - 1) = edge;
    } else {
        const auto edge =
            std::accumulate(begin, begin + distance + 1, static_cast<unsigned char>(0), keep);
        std::copy(begin + distance, end, begin);
        std::fill_n(end - distance, distance, 0);
        *begin = edge;
    }
}

/// Each dot burns its right neighbour, too, if that is in the cell.
void CellPainter::embolden(int width)
{
    for (int x = width - 1; x > 0; --x)
        m_row[size_t(x)] |= m_row[size_t(x) - 1];
}

Paper::Picture CellPainter::picture() const
{
    Paper::Picture picture;
    picture.size = {m_width, m_height};
    const int bytes = (m_width + 7) / 8;
    picture.rows.resize(bytes * m_height);
    auto *to = reinterpret_cast<unsigned char *>(picture.rows.data());
    for (int y = 0; y < m_height; ++y) {
        const unsigned char *from = dotsAt(0, y);
        for (int i = 0; i < bytes; ++i, from += 8)
            *to++ = static_cast<unsigned char>(from[0] << 7 | from[1] << 6 | from[2] << 5 |
                                               from[3] << 4 | from[4] << 3 | from[5] << 2 |
                                               from[6] << 1 | from[7]);
        // Cells may go beyond the line.
        if (m_width % 8 != 0)
            to[-1] &= static_cast<unsigned char>(0xFF00U >> (m_width % 8));
    }
    return picture;
}

}  // namespace

Paper::Picture rasterOfCells(const PrintLayout &layout, const PrintLayout::Row &row)
{
    return CellPainter(layout, row).picture();
}

Paper::Picture PrintLayout::rasterOf(const Row &row) const
{
    return rasterOfCells(*this, row);
}

}  // namespace printerslib::drivers
