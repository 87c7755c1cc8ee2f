#pragma once

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVector>

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// One piece of paper as it leaves a printer: what stands where, in dots of the head. The origin is
/// the upper left dot that the head can burn. What the printer does besides (cuts, pulses) stands
/// among it as events, in the order of the stream.
///
/// A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT Paper
{
    /// How a character looks beyond its cell.
    enum Effect : quint16 {
        Bold = 0x01,
        Italic = 0x02,
        Underline = 0x04,
        ThickUnderline = 0x08,
        Inverse = 0x10,     ///< white on black
        UpsideDown = 0x20,  ///< turned by 180 degrees
        Turned = 0x40,      ///< turned by 90 degrees clockwise
        SecondColour = 0x80,
    };

    /// A printed character, blanks among them.
    struct Cell
    {
        int left = 0;            ///< dots from the left
        int top = 0;             ///< dots from the top
        quint16 width = 0;       ///< of the cell with its enlargement
        quint16 height = 0;      ///< the same downwards
        quint8 widthScale = 1;   ///< 1 to 8
        quint8 heightScale = 1;  ///< 1 to 8
        quint16 effects = 0;     ///< of Effect, or-ed
        /// U+FFFD for a byte that the character set leaves free, and for a drawing that the
        /// interpreter's LetterReader doesn't know.
        char16_t character = 0;
        int drawing = -1;  ///< of `pictures`: a character that the stream defines; -1: none
    };

    /// Dots: a picture, or the drawing of a character.
    struct Picture
    {
        QRect place;               ///< on the paper
        QSize size;                ///< in pixels
        QSize dotsPerPixel{1, 1};  ///< how large each pixel is
        QByteArray rows;           ///< each of whole bytes, the leftmost pixel the highest bit
    };

    /// What a code is.
    enum class Symbology {
        UpcA,
        UpcE,
        Ean13,
        Ean8,
        Code39,
        Itf,
        Codabar,
        Code93,
        Code128,
        Gs1_128,
        GS1DataBar,
        QrCode,
        MicroQrCode,
        Pdf417,
        DataMatrix,
        Aztec,
        MaxiCode,
        Other,
    };

    /// A barcode or two-dimensional code that the printer draws by itself.
    struct Code
    {
        /// Forms of one symbology.
        enum Variant : quint8 {
            Usual,            ///< GS1 DataBar: omnidirectional, truncated or not
            Limited,          ///< GS1 DataBar
            Expanded,         ///< GS1 DataBar
            Stacked,          ///< GS1 DataBar
            StackedOmni,      ///< GS1 DataBar
            ExpandedStacked,  ///< GS1 DataBar
            Compact,          ///< PDF417, Aztec
            ModelOne,         ///< QR codes
            Rectangular,      ///< Data Matrix
            OnlySetB,         ///< Code 128: no digits in pairs
        };

        Symbology symbology = Symbology::Other;  ///< what it is
        /// As the code holds it, without marks of code sets. FNC1 is the byte 1D, as readers give
        /// it.
        QByteArray payload;
        QByteArray sent;  ///< as the stream has it
        QRect place;      ///< modules, without quiet zone and digits
        QSize module;     ///< dots of one module; in barcodes its height is that of the bars
        /// Of QR codes 'L', 'M', 'Q' or 'H', of PDF417 '0' to '8'; 0: as the drawer likes.
        char correctionLevel = 0;
        Variant variant = Usual;  ///< which form of it
        /// Clockwise, as it lies on the paper. `module`, `modules` and `rows` are turned already.
        quint8 quarterTurns = 0;
        QSize grid;       ///< PDF417: columns and rows of code words; 0: as fits the data
        QSize modules;    ///< how many
        QByteArray rows;  ///< the modules, as in Picture; a barcode is one row
        QString fault;    ///< why it can't be drawn; then there are no modules
    };

    /// What happened at a place of the paper.
    struct Event
    {
        /// What happened.
        enum Kind {
            Cut,         ///< the end of a piece
            PartialCut,  ///< the same, with a bridge left
            Eject,       ///< handed out
            Retract,     ///< taken back
            Present,     ///< held out
            Pulse,       ///< of a drawer
            Beep,
            Reset,
            Status,  ///< an answer is due
            Note,    ///< what the printer doesn't do as the stream asks, or a fault in it
        };
        Kind kind = Note;         ///< what happened
        qint64 offset = 0;        ///< of its command in the stream
        int top = 0;              ///< where the head is at that time
        int pin = 0;              ///< Pulse: 2 or 5, as the connector counts
        int onMilliseconds = 0;   ///< Pulse: how long it is on
        int offMilliseconds = 0;  ///< Pulse: how long it is off behind that
        QString text;             ///< in English
    };

    /// A printed line or another strip, from top to bottom in the order of printing. Pages of page
    /// mode are one line. What is empty is paper that was fed.
    struct Line
    {
        /// What stands there.
        enum Kind : quint8 { Text, Graphics, Page, Feed };
        Kind kind = Text;        ///< what stands there
        bool isWrapped = false;  ///< goes on with a line that was too long
        int top = 0;             ///< dots from the top
        int height = 0;          ///< to the next line's top
        int firstCell = 0;       ///< of `cells`; the counts follow each other
        int cellCount = 0;       ///< how many of `cells`
        int firstPicture = 0;    ///< of `pictures`
        int pictureCount = 0;    ///< how many of `pictures`
        int firstCode = 0;       ///< of `codes`
        int codeCount = 0;       ///< how many of `codes`
        int blankLines = 0;      ///< Feed: how many lines a reader sees there
    };

    int width = 0;              ///< dots that can be burnt
    int length = 0;             ///< dots from the first to the cut, or to where the stream ends
    int dotsPerInch = 203;      ///< both ways
    QSize cell;                 ///< of the font after a reset: the unit of columns in the text
    qint64 firstByte = 0;       ///< of the stream; events before it belong to it, too
    bool isCut = false;         ///< false for what hangs in the printer when the stream ends
    bool isTooLong = false;     ///< more than `longest`; the rest was left out
    QVector<Line> lines;        ///< from top to bottom
    QVector<Cell> cells;        ///< in the order of the lines
    QVector<Picture> pictures;  ///< those of lines, and drawings of characters
    QVector<Code> codes;        ///< in the order of the lines
    QVector<Event> events;      ///< in the order of the stream

    /// 10 m at 203 dots per inch. What goes beyond is left out, and told as a note.
    static constexpr int longest = 80'000;

    /// Whether it is the blank end that hangs in the printer behind the last cut.
    bool isBlankEnd() const
    {
        return !isCut && cells.isEmpty() && pictures.isEmpty() && codes.isEmpty();
    }
    /// Whether nothing stands on it and nothing happened.
    bool isEmpty() const { return lines.isEmpty() && events.isEmpty(); }

    /// The lines as they are read: characters at their columns, "[QR: payload]" and the like for
    /// codes, "[picture 384 x 120]" for pictures (those that touch are one), "[cut]" at the end of
    /// a piece. Each line ends with a line feed, none has blanks at its end.
    QString toText() const;
};

}  // namespace printerslib::drivers
