#pragma once

#include "settings/textprintersettings.h"
#include "settingsitems.h"

/// Takes the settings of the process back to what they are at its start, or nearly so.
namespace settingsreset {

// Prints images, forms loops, can be moved; four papers; fonts of 10, 14, 14 and 18 dots.
inline const QString able = "CUSTOM_VKP_80";
// Can nothing of that; the codec can be set; two papers; fonts of 12 dots.
inline const QString general = "GENERAL_EPSON_PROTOCOL";
// Fonts of 8, 8, 16 and 16 dots, one paper of 384 dots.
inline const QString narrow = "AV_268";

inline void resetPrinterSettings()
{
    PrinterSettings settings;
    settings.setPrinterId(QString());
    settings.setList(sectionItems());
    settings.setPortSettings(QString(), hearth::RS232Settings(QString()));
}

inline void resetTextPrinterSettings()
{
    TextPrinterSettings settings;
    settings.setPrinterType(0);
    settings.setPrinterId(able);
    settings.setPaperTypeId(0);
    settings.setCodec("cp866");
    settings.setDefaultFont(QString());
    settings.setPrintAsImage(false);
    settings.setCodePage(0);
    settings.setPrinterId(QString());
    settings.setPaperLoopFlag(PaperLoopNone);
    settings.setCheckMovingTo(50);
    settings.setBaseFiscalFont(1);
    settings.setDefSymbolsPerLine(0);
}

}  // namespace settingsreset
