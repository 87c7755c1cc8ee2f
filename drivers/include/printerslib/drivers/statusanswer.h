#pragma once

#include <QByteArray>
#include <QMetaType>

#include "printerslib/drivers/printerstatus.h"

namespace printerslib::drivers {

/// What a printer can be asked.
enum class StatusQuestion {
    Printer,           ///< DLE EOT 1
    OffLineCause,      ///< DLE EOT 2
    Errors,            ///< DLE EOT 3
    Paper,             ///< DLE EOT 4
    ErrorDetails,      ///< DLE EOT 5, Citizen's printers with a presenter alone
    MoreErrorDetails,  ///< DLE EOT 6, likewise
    FullStatus,        ///< DLE EOT 20, Custom's printers alone: six bytes
    BufferRead,        ///< GS r 1: answered when all before is read, which isn't yet printed
    /// GS a, by which an ESC/POS printer tells all now and with each change; ESC ACK SOH of Star.
    /// Such answers come without a question, too.
    Automatic,
    Response,    ///< GS ( H: answered when all before is printed
    Text,        ///< none; what GS I and others answer, from a header to a zero byte
    StatusCode,  ///< ESC ENQ 1 of Swecoin
    Sensors,     ///< ESC ENQ 6 of Swecoin: two bytes
};

/// An answer that was found in what a printer sent. A plain value.
struct StatusAnswer
{
    StatusQuestion question = StatusQuestion::Text;  ///< what it answers
    QByteArray bytes;                                ///< all of it
    PrinterStatus::Flags flags;                      ///< what it says is the matter
    /// StarCounter: the marks of ETB that were printed, 0 to 31, if Star's status has them; else
    /// -1.
    int counter = -1;
    QByteArray id;  ///< the four bytes of GS ( H; of others empty

    /// Compares all members.
    bool operator==(const StatusAnswer &other) const
    {
        return question == other.question && bytes == other.bytes && flags == other.flags &&
               counter == other.counter && id == other.id;
    }
    /// The opposite.
    bool operator!=(const StatusAnswer &other) const { return !(*this == other); }
};

}  // namespace printerslib::drivers

Q_DECLARE_METATYPE(printerslib::drivers::StatusQuestion)
Q_DECLARE_METATYPE(printerslib::drivers::StatusAnswer)
