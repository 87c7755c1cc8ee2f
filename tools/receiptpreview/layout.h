#pragma once

#include <printerslib/drivers/printlayout.h>

#include <QFlags>
#include <QRect>
#include <QSize>
#include <QTransform>
#include <QVector>
#include <vector>

#include "paper.h"
#include "printerdocs/eprinterticketaction.h"
#include "printerdocs/monochromeimage.h"

namespace receiptpreview {

/// One printed character. Its cell stands on the bottom of its row, or so far above it.
struct Cell
{
    enum Effect : quint16 {
        Bold = 0x01,
        Italic = 0x02,
        Underline = 0x04,
        FineUnderline = 0x08,  ///< half as high as the other
        Inverse = 0x10,        ///< white on black
        UpsideDown = 0x20,
        Turned = 0x40,  ///< by 90 degrees clockwise; width and height are those on the paper
        Hidden = 0x80,  ///< not drawn: a raster shows it, and whoever searches the text finds it
        Unprinted = 0x100,  ///< blank on the paper, marked in the picture: the model can't print it
    };

    int left = 0;  ///< from the paper's left edge
    quint16 width = 0;
    quint16 height = 0;
    char16_t code = 0;
    quint16 effects = 0;
    int rise = 0;
    int drawing = -1;  ///< into Layout::drawings(), in place of the code

    bool has(Effect effect) const { return (effects & effect) != 0; }
};

/// From an upright cell to one of these effects, which has this size on the paper.
QTransform turnOf(quint16 effects, const QSizeF &cell);

/// A picture or a code: each pixel is a rectangle of dots. The rows are of whole bytes.
struct Raster
{
    MonochromeImage image;
    int left = 0;
    QSize dotsPerPixel{1, 1};
    int top = 0;  ///< from that of the row
};

/// A horizontal strip of the paper, in the order of their upper edges. Those of a document follow
/// each other and don't overlap; those of what a printer has printed may.
struct Row
{
    enum Kind : quint8 {
        Text,
        Image,        ///< a raster
        FrameTop,     ///< upper edge of the frame around a fault
        FrameBottom,  ///< lower edge
        Print,        ///< cells and rasters at any place in it
        Cut,
        Gap,  ///< no paper: what lies between two pieces
    };

    Kind kind = Text;
    bool continues = false;  ///< the row goes on with a line that was too long for the one above
    bool framed = false;     ///< part of a fault, so with the frame's sides
    int top = 0;
    int height = 0;
    int reach = 0;      ///< the lowest bottom of this row and those before it
    int firstCell = 0;  ///< into Layout::cells()
    int cellCount = 0;
    int firstRaster = 0;  ///< into Layout::rasters()
    int rasterCount = 0;

    int bottom() const { return top + height; }
};

/// What a document, or what a printer has printed, looks like on a paper: everything has its place,
/// nothing is painted yet. The unit is the dot, the origin the paper's upper left corner. Linear in
/// the document's size, and bounded by the longest paper.
class Layout
{
public:
    /// Above this the document is cut off, as tooLong() tells: 125 m, more than a roll of paper.
    static constexpr int longestPaper = 1'000'000;
    /// Blank at both ends of the paper, and between the text and a cut.
    static constexpr int endMargin = 24;
    static constexpr int cutHeight = 2;
    static constexpr int gapHeight = 40;

    /// What a model prints.
    /// @param print   the document, laid out
    /// @param before, after what happens to the tickets
    Layout(const printerslib::drivers::PrintLayout &print, QFlags<EPrinterTicketAction> before,
           QFlags<EPrinterTicketAction> after);
    /// Pieces of printed paper, one below the other, with a gap between them.
    /// @param paper what they are cut from; the printed line is theirs
    Layout(const QVector<printerslib::drivers::Paper> &pieces, const Paper &paper);

    const Paper &paper() const { return m_paper; }
    QSize size() const { return {m_paper.width(), m_height}; }
    const std::vector<Row> &rows() const { return m_rows; }
    const std::vector<Cell> &cells() const { return m_cells; }
    const std::vector<Raster> &rasters() const { return m_rasters; }
    /// What stands in the place of characters.
    const std::vector<Raster> &drawings() const { return m_drawings; }
    bool hasInverse() const { return m_hasInverse; }

    QRect cellRect(const Row &row, const Cell &cell) const
    {
        return {cell.left, row.bottom() - cell.rise - cell.height, cell.width, cell.height};
    }
    /// The first row that may end below a height: all before it end above.
    std::vector<Row>::const_iterator firstRowBelow(int top) const;

    bool tooLong() const { return m_tooLong; }

private:
    friend class LayoutBuilder;
    friend class PrintLayoutBuilder;

    /// A strip below all that is there. The reference holds up to the next one.
    Row &addRow(Row::Kind kind, int height);
    void feed(int dots);

    Paper m_paper;
    int m_height = 0;
    bool m_tooLong = false;
    bool m_hasInverse = false;
    std::vector<Row> m_rows;
    std::vector<Cell> m_cells;
    std::vector<Raster> m_rasters;
    std::vector<Raster> m_drawings;
};

}  // namespace receiptpreview
