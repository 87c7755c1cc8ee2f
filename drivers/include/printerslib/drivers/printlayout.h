#pragma once

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>
#include <QVector>
#include <vector>

#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/codedrawer.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/paper.h"
#include "printerslib/drivers/printoptions.h"
#include "printerslib/drivers/printtarget.h"

namespace printerslib::drivers {

/// What a model doesn't print as a document asks for.
struct PRINTERSLIB_DRIVERS_EXPORT PrintNote
{
    int block = 0;       ///< counted from 1; 0: the whole document
    int line = 0;        ///< of the block, counted from 1; 0: the whole block
    QString text;        ///< in English
    bool isLoss = true;  ///< something is missing or looks otherwise on the paper

    /// "block 3, line 2: ..."
    QString toString() const;
};

/// A document as a model prints it: rows from top to bottom, each of which is text, a picture, a
/// code or a feed. The encoder sends them, the preview draws them: each row stands below the height
/// and feed of those before it, from the upper edge of the paper on.
///
/// - Cells stand with their feet on the lower edge of their row. What is blank about a line (spaces
///   in front, alignment, tabs) are cells, too, so that the first stands at the left edge.
/// - Of a raster row the paper shows rasterOf(). Of another it shows the printer's own letters,
///   drawings where cells have them, and rasterOf() a row of those cells alone that go as dots.
/// - Codes are drawn with `modules` of `module` dots from `left`, with the `correctionLevel` that
///   is told. Their quiet zones are feeds above and below.
/// - Nothing is fed for the paper's ends or for cuts.
///
/// A plain value without links to what it was made from. Lengths are in dots of the head, from the
/// left edge of the line.
struct PRINTERSLIB_DRIVERS_EXPORT PrintLayout
{
    /// 125 m, more than a roll of paper. What is longer is an error.
    static constexpr int longest = 1'000'000;

    /// A printed character; those of a row stand side by side from its left edge.
    struct Cell
    {
        char16_t character = u' ';  ///< what is seen; for a raw byte what the first page shows
        quint8 format = 0;          ///< of ECharFormat, those that are printed; CharRawCode: `byte`
        quint8 font = 0;            ///< as in the document; see PrintTarget::font()
        quint8 byte = 0;            ///< of a raw code: goes to the printer as it is
        bool isDots = false;        ///< goes as dots in a row that is text else; has a `drawing`
        /// Of `drawings`, in place of a character of the printer; or -1. Each of its pixels is so
        /// many dots as PrintFont::widthScale and heightScale say, doubled as `format` says, from
        /// the cell's upper left corner.
        qint16 drawing = -1;
    };

    /// A strip of the paper.
    struct Row
    {
        /// What stands in it.
        enum Kind : quint8 {
            Text,     ///< cells
            Picture,  ///< dots; of `pictures`
            Code,     ///< of `codes`
            Feed,     ///< nothing
            Fault,    ///< nothing, where something can't be printed; of `faults`. No height
        };
        Kind kind = Feed;        ///< what stands in it
        bool isWrapped = false;  ///< Text: goes on with a line that was too long
        bool isRaster = false;   ///< Text: goes to the printer as dots
        int block = 0;           ///< counted from 1
        int line = 0;            ///< of the block, counted from 1; 0: the whole block
        int left = 0;            ///< of picture or code
        int height = 0;          ///< of what stands there
        int feed = 0;            ///< below it; the next row is so far away
        int first = 0;           ///< of cells, or the index of picture, code or fault
        int count = 0;           ///< of cells
    };

    /// What can't be printed.
    struct Fault
    {
        QString what;        ///< "Barcode", "QR code"
        QString cause;       ///< a sentence
        QByteArray payload;  ///< of the code
    };

    PrintTarget target;                ///< what it was laid out for
    int firstPage = 0;                 ///< number of the code page that the text begins with
    std::vector<Row> rows;             ///< from top to bottom
    std::vector<Cell> cells;           ///< in the order of the rows
    QVector<Paper::Picture> drawings;  ///< of characters; `size` and `rows` count, not `place`
    QVector<Paper::Picture> pictures;  ///< as wide as they are printed; the same
    QVector<Paper::Code> codes;        ///< drawn; `module` says how large, `place` counts not
    QVector<Fault> faults;             ///< in the order of the rows
    QVector<PrintNote> notes;          ///< in the order of the blocks, those of the document first
    /// Indices of `cells`, ascending: those that are blank as the model can print the character or
    /// special symbol in no way. What a document has a blank for isn't among them.
    std::vector<int> unprintedCells;
    /// Why the document can't be printed at all; names the block. All else is what could be laid
    /// out nevertheless.
    QString error;

    /// An empty one.
    explicit PrintLayout(const PrintTarget &printTarget) : target(printTarget) {}
    /// Lays a document out.
    /// @param codes outlives the call
    static PrintLayout of(const TextPrinterDocument &document, const PrintTarget &target,
                          const PrintOptions &options, const CodeDrawer &codes);

    /// Dots of a cell on the paper.
    QSize sizeOf(const Cell &cell) const;
    /// Dots of a row of text, as wide as its cells are together: what a printer without letters
    /// gets. The letters are compiled in; no font is looked up.
    Paper::Picture rasterOf(const Row &row) const;
};

}  // namespace printerslib::drivers
