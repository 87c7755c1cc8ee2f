#pragma once

#include <QByteArray>
#include <QVector>

#include "commandsets/commandid_p.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// How long the data behind a command's operands is.
enum class PayloadRule : quint8 {
    None,
    NulTerminated,        ///< up to a zero byte
    RsTerminated,         ///< up to 1E
    DecimalCounted,       ///< a number in decimal digits, a zero byte, and so many bytes
    TabStops,             ///< up to a zero byte; 32 bytes at most, each greater than the one before
    FiveSemicolons,       ///< five numbers, each with a semicolon behind it
    LengthByte,           ///< counted by one operand
    LengthWord,           ///< counted by two, the low one first
    LengthWordHighFirst,  ///< counted by two, the high one first
    LengthDouble,         ///< counted by four, the lowest first
    RasterWords,          ///< two words: bytes of a row, rows
    ColumnsOfByte,        ///< a word: columns of one byte
    ColumnsOf3Bytes,      ///< a word: columns of three bytes
    ColumnsByMode,        ///< a mode and a word: columns of one byte, in modes 32 and 33 of three
    RowsOf24,             ///< two bytes: bytes of a row and nothing, 24 rows
    EightDotCells,        ///< two bytes: x and y, 8 bytes for each of x * y
    NvPictures,      ///< a byte: so many pictures, each of two words and 8 bytes for each x * y
    UserCharacters,  ///< bytes of a column, first and last character; each of columns and data
    QrParts,         ///< a byte: so many parts, each of a type, a word and as many bytes
    Bitmap,          ///< a file of Windows' format, which has its length in it
    Bytes48,         ///< 48 bytes
    Bytes72,         ///< 72 bytes
};

/// One command of a dialect, as a manual has it. The one place for its bytes: reader, listing,
/// interpreter and encoder take them from here.
struct CommandRow
{
    enum Trait : quint8 {
        ActsAtOnce = 0x01,    ///< even inside the data of another command
        InRasterMode = 0x02,  ///< known in the raster mode alone
        EntersRaster = 0x04,  ///< begins the raster mode
        LeavesRaster = 0x08,  ///< ends it
        Family = 0x10,        ///< for commands that nobody knows: they carry their length
    };

    CommandId id;
    char introducer[8];  ///< zero bytes may stand among them
    quint8 introducerSize;
    const char *mnemonic;  ///< "GS v 0": the introducer as manuals write it
    const char *operands;  ///< names of the single bytes, separated by blanks: "m xL xH yL yH"
    quint8 operandCount;
    /// The operands that the row is for, where manuals distinguish functions by them. They stand
    /// at `selectorAt`, an index of the operands. Without any the row is for all values.
    char selector[8];
    quint8 selectorSize;
    quint8 selectorAt;
    PayloadRule payload;
    /// Index of the operand that begins the length. What stands behind the length, operands among
    /// them, is counted by it.
    quint8 lengthAt;
    quint8 traits;
    Vendor vendor;        ///< General, or the one whose printers alone know it so
    const char *meaning;  ///< "prints a raster picture"
    const char *source;   ///< the manual that it was taken from
};

/// The rows of a dialect as a vendor's printers know them: of two with the same introducer and
/// selector the vendor's own.
const QVector<const CommandRow *> &commandsOf(Dialect dialect, Vendor vendor);
/// The row of a command, for those who write it, the first of several. Null for an id that the
/// dialect doesn't have.
const CommandRow *commandOf(Dialect dialect, Vendor vendor, CommandId id);

}  // namespace printerslib::drivers
