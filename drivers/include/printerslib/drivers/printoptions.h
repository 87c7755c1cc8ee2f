#pragma once

#include <QByteArray>
#include <QString>

#include "printerslib/drivers/drivers_export.h"

class TextPrinterSettings;

namespace printerslib::drivers {

/// How a document is printed: what its maker doesn't say, the shop does. docs/drivers.md tells
/// what each means on which model. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT PrintOptions
{
    /// When the drawer is opened.
    enum class Drawer {
        Shut,    ///< not at all; no text of a document opens it
        Before,  ///< before anything is printed
        After,   ///< when all is printed and cut
    };

    int codePage = 0;            ///< number that the text begins with; 0: not set
    QString codec;               ///< name of that page; counts for the general Epson model alone
    bool isPicture = false;      ///< prints all text as dots
    int emptyLinesAtEnd = 0;     ///< fed before the cut; at least as far as the cutter is
    int spacesInFront = 0;       ///< blanks of the base font in front of each row, 0 to 16
    int paperLoop = 0;           ///< EPaperLoopFlag
    int ticketMove = 0;          ///< millimetres that a ticket is held out; 0: as the printer does
    QByteArray allowedRawCodes;  ///< codes below 0x20 that a text may send
    Drawer drawer = Drawer::Shut;     ///< whether it opens, and when
    int drawerPin = 2;                ///< 2 or 5, as the connector counts
    int drawerOnMilliseconds = 100;   ///< how long the pulse is on
    int drawerOffMilliseconds = 100;  ///< and off behind that

    /// What the settings of a text printer say; all else stays as above.
    static PrintOptions fromSettings(TextPrinterSettings &settings);
};

}  // namespace printerslib::drivers
