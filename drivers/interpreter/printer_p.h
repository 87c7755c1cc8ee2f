#pragma once

#include <QHash>
#include <QMap>

#include "commandsets/commandrow_p.h"
#include "interpreter/linebuffer_p.h"
#include "interpreter/pagebuffer_p.h"
#include "interpreter/paperroll_p.h"
#include "interpreter/printstate_p.h"
#include "printerslib/drivers/streamcommand.h"
#include "printerslib/drivers/streaminterpreter.h"

namespace printerslib::drivers {

/// On and off, in milliseconds.
constexpr QSize usualDrawerPulse(200, 200);

/// A two-dimensional code of which the stream sets one property after the other.
struct SymbolState
{
    QByteArray data;
    int moduleWidth = 3;
    int moduleHeight = 3;  ///< PDF417: as a multiple of the width
    char level = 0;
    QSize grid;
    Paper::Code::Variant variant = Paper::Code::Usual;
    Paper::Symbology symbology = Paper::Symbology::Other;
};

/// Pictures that a stream keeps for later, by their keys.
struct GraphicsStore
{
    QHash<int, Paper::Picture> stored;      ///< GS ( L, kept without current
    QHash<int, Paper::Picture> downloaded;  ///< GS ( L
    QVector<Paper::Picture> nvPictures;     ///< FS q
    Paper::Picture download;                ///< GS *
    QVector<Paper::Picture> waiting;        ///< GS ( L 112, for the next 50
};

/// Pictures that come row by row, as in Star's raster mode.
struct RasterState
{
    QByteArray rows;
    int bytesPerRow = 0;
    int leftMargin = 0;  ///< in dots
    int formFeedMode = 0;
    int eotMode = 0;
    bool isPacked = false;  ///< Swecoin: rows are compressed
};

/// A character that the stream draws itself.
struct OwnCharacter
{
    Paper::Picture drawing;
    char16_t letter = 0;  ///< that it shows
};

struct MacroState
{
    bool isRecorded = false;
    bool isFull = false;
    int bytes = 0;
    QVector<StreamCommand> commands;
    qint64 bytesPlayed = 0;
};

/// A printer's state and what it does with commands. The handlers of commands act on it.
class Printer
{
public:
    Printer(const PrinterProfile &printerProfile, const StreamInterpreter::Options &givenOptions);

    void obey(const StreamCommand &command);
    /// Prints what waits for more, at the stream's end.
    void finish(qint64 end);

    // What characters look like, and where they go.
    void printText(const QByteArray &bytes);
    QSize cellSize() const;  ///< of the font, without enlargement
    int lineWidth() const;
    int dotsAcross(int units) const;
    int dotsDown(int units) const;
    int columnWidth() const;  ///< dots from character to character
    /// Keys of `ownCharacters`: a byte in the chosen font, or two bytes.
    int ownKey(int byte) const;
    static int ownKeyOfTwo(int lead, int trail);
    /// What goes beyond the cell isn't printed.
    void defineCharacter(int key, const Paper::Picture &drawn, QSize cell);

    // Lines.
    /// Prints the line, if there is one, and feeds by lines.
    void printLine(int lines);
    /// The same, and feeds by dots.
    void printLineAndFeed(int dots);
    /// What has to begin a line ends the one that is there, and it is told.
    void endLineFor(const StreamCommand &command);
    /// Whether a command that counts at the start of a line only may act.
    bool isAtLineStart(const StreamCommand &command);
    void dropLine(const StreamCommand &command);

    // Pictures and codes.
    /// Adds a picture to the line.
    void addToLine(Paper::Picture picture);
    /// Prints a picture on lines of its own.
    void printPicture(Paper::Picture picture);
    void printCode(Paper::Code code, const BarcodeState &barcode);
    /// Whether one more copy of so many bytes may be made of what is kept in the printer, as that
    /// costs a stream a few bytes each time. If not, it is told that `what` is left out.
    bool mayCopy(qint64 bytes, const QString &what);

    // The paper.
    void reset();
    void note(const QString &text) { roll.note(text); }
    void noteFor(const StreamCommand &command, const QString &text);

    const PrinterProfile profile;
    const StreamInterpreter::Options options;
    const int paperDots;
    const int firstCodePage;
    PaperRoll roll;
    PrintState state;
    LineBuffer line;
    /// Else what comes is for a neighbour on the line, such as a display, or for nobody.
    bool isSelected = true;
    bool isPageMode = false;
    PageBuffer page;
    GraphicsStore graphics;
    QMap<int, SymbolState> symbols;  ///< by GS ( k's cn
    RasterState raster;
    MacroState macro;
    QHash<int, OwnCharacter> ownCharacters;
    QSize drawerPulse = usualDrawerPulse;  ///< Star: on and off, in milliseconds

private:
    qint64 m_place = 0;        ///< of the stream: the byte at hand, in texts too
    qint64 m_copiedBytes = 0;  ///< of what is kept in the printer

    bool mayCopy(const Paper::Picture &picture);
    void obeyAtOnce(const StreamCommand &command);
    void call(const StreamCommand &command);
    void tellUnknown(const StreamCommand &command);
    void printCharacter(char16_t character, int key, const Paper::Cell &look, int advance);
    void printTwoByte(unsigned char byte);
    void printSingle(unsigned char byte);
    int alignedLeft(int width) const;
    int mirrored(int left, int width) const;
    void settleLine();
};

}  // namespace printerslib::drivers
