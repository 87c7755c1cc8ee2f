#pragma once

#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <map>
#include <tuple>
#include <vector>

#include "paper.h"
#include "printerdocs/monochromeimage.h"
#include "printerdocs/textprinterdocument.h"

namespace receiptpreview {

/// One printed character. Its cell stands on the bottom of its row.
struct Cell
{
    enum Effect : quint8 {
        Bold = 1,
        Italic = 2,
        Underline = 4,
        DoubleWidth = 8,
        DoubleHeight = 16,
        Symbol = 32,  ///< `code` is that of a special symbol
    };

    quint16 left = 0;  ///< from the paper's left edge
    quint16 width = 0;
    quint16 height = 0;
    char16_t code = 0;
    quint8 effects = 0;

    bool has(Effect effect) const { return (effects & effect) != 0; }
    /// The cell of the font, without doubling.
    QSize fontCell() const
    {
        return {has(DoubleWidth) ? width / 2 : width, has(DoubleHeight) ? height / 2 : height};
    }
};

/// A picture or a code: each pixel is a rectangle of dots.
struct Raster
{
    MonochromeImage image;
    int alignmentBits = 8;
    int left = 0;
    QSize dotsPerPixel{1, 1};
};

/// A horizontal strip of the paper. Strips follow each other from the top and don't overlap.
struct Row
{
    enum Kind : quint8 {
        Text,
        Image,        ///< a raster
        FrameTop,     ///< upper edge of the frame around a fault
        FrameBottom,  ///< lower edge
        Cut,
    };

    Kind kind = Text;
    bool continues = false;  ///< the row goes on with a line that was too long for the one above
    bool framed = false;     ///< part of a fault, so with the frame's sides
    int top = 0;
    int height = 0;
    int firstCell = 0;  ///< into Layout::cells()
    int cellCount = 0;
    int raster = -1;  ///< into Layout::rasters()

    int bottom() const { return top + height; }
};

/// What a document looks like on a paper: everything has its place, nothing is painted yet. The
/// unit is the dot, the origin the paper's upper left corner. Linear in the document's size, and
/// bounded by the longest paper.
class Layout
{
public:
    /// Above this the document is cut off, as tooLong() tells: 125 m, more than a roll of paper.
    static constexpr int longestPaper = 1'000'000;
    /// Blank at both ends of the paper, and between the text and a cut.
    static constexpr int endMargin = 24;
    static constexpr int cutHeight = 2;
    static constexpr int dotsPerLineSpacing = 4;

    Layout(const TextPrinterDocument &document, const Paper &paper);

    const Paper &paper() const { return m_paper; }
    QSize size() const { return {m_paper.width(), m_height}; }
    const std::vector<Row> &rows() const { return m_rows; }
    const std::vector<Cell> &cells() const { return m_cells; }
    const std::vector<Raster> &rasters() const { return m_rasters; }

    QRect cellRect(const Row &row, const Cell &cell) const
    {
        return {cell.left, row.bottom() - cell.height, cell.width, cell.height};
    }
    /// The drawing of a cell with a special symbol. Its rows are aligned to 8 bits.
    const MonochromeImage &symbol(const Cell &cell) const;
    /// The first row that ends below a height.
    std::vector<Row>::const_iterator firstRowBelow(int top) const;

    bool tooLong() const { return m_tooLong; }
    /// What the model doesn't print as the document asks for, in the order of its blocks.
    const QStringList &warnings() const { return m_warnings; }

private:
    friend class LayoutBuilder;

    Paper m_paper;
    int m_height = 0;
    bool m_tooLong = false;
    std::vector<Row> m_rows;
    std::vector<Cell> m_cells;
    std::vector<Raster> m_rasters;
    std::map<std::tuple<int, int, int>, MonochromeImage> m_symbols;
    QStringList m_warnings;
};

}  // namespace receiptpreview
