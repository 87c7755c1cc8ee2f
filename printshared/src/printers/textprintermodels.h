#pragma once

#include <QString>

#include "printerslib_export.h"

/// The names of the text printer models that the system knows. Each is the `id` of the model's
/// record in the catalogue (PrinterInfo::fromResources), and the `deviceId` of a printer that
/// discovery found. Stored configurations hold these texts, so they never change.
///
/// The constants come into being when the library loads; code that runs earlier, as static
/// construction of another library may, must not use them. Afterwards any thread may read them.
class PRINTERSLIB_EXPORT TextPrinterModels
{
public:
    TextPrinterModels() = delete;

    /// The `id` of a model's record.
    static const QString MODEL_CUSTOM_VKP_80;
    static const QString MODEL_CUSTOM_TG_2480_H;
    static const QString MODEL_CUSTOM_TG_2480_SE;
    static const QString MODEL_CITIZEN_PPU_700;
    static const QString MODEL_CITIZEN_CBM_1000;
    static const QString MODEL_CITIZEN_CTS_2000;
    static const QString MODEL_AV_268;
    /// Any printer that understands the common command set; the one model whose codec can be set.
    static const QString MODEL_GENERAL_EPSON;

    /// The `id` of a model's record.
    static const QString MODEL_TSP_TUP;
    static const QString MODEL_CITIZEN_PPU_231;
    static const QString MODEL_EPSON_EU_4XX;
    static const QString MODEL_SWECOIN_TM_20XX;
    static const QString MODEL_CITIZEN_CPP_8001;
    static const QString MODEL_WPK833;
    /// Kept for clients: has no record in the catalogue and no reader in the library.
    static const QString MODEL_PNG;

    /// The `id` of a model's record.
    static const QString MODEL_MERCURY_G80_RS;
    static const QString MODEL_NP_F209_2D;
};
