#pragma once

#include <QByteArray>
#include <QVector>

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// What a command does. Commands of different dialects that do the same share an enumerator, and
/// what reads their operands asks for the row's dialect.
enum class CommandId : quint16;

/// How long the data behind a command's operands is.
enum class PayloadRule : quint8;

/// One command of a dialect, as a manual has it. The one place for its bytes: reader, listing,
/// interpreter and encoder take them from here.
struct CommandRow
{
    enum Trait : quint8 {
        ActsAtOnce = 0x01,  ///< even inside the data of another command
    };

    CommandId id;
    const char *introducer;  ///< with zero bytes among them, so it has a length
    quint8 introducerSize;
    const char *mnemonic;  ///< "GS v 0"
    const char *operands;  ///< names of the single bytes, separated by blanks: "m xL xH yL yH"
    PayloadRule payload;
    quint8 traits;
    Vendor vendor;        ///< General, or the one whose printers alone know it so
    const char *meaning;  ///< "prints a raster picture"
    const char *source;   ///< the manual that it was taken from
};

/// The rows of a dialect as a vendor's printers know them: of two with the same introducer the
/// vendor's own.
const QVector<const CommandRow *> &commandsOf(Dialect dialect, Vendor vendor);
/// The row of a command, for those who write it; never null for an id of the dialect.
const CommandRow *commandOf(Dialect dialect, Vendor vendor, CommandId id);

}  // namespace printerslib::drivers
