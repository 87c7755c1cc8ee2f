#pragma once

#include <iterator>

/// What people know of the models of the catalogue, written down a second time, row by row in its
/// order. Whatever counts models, papers or fonts counts these rows.
namespace cataloguemodels {

struct Model
{
    const char *id;
    const char *name;
    const char *interface;
    int resolution;
    const char *flags;  ///< those that are true, as the file names them
};

constexpr Model models[] = {
    {"CUSTOM_VKP_80", "Custom VKP-80", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols customImages lineSpacing retraction ejection paperLoopSupported "
     "checkMoveSettings"},
    {"CUSTOM_TG_2480_H", "Custom TG 2480 H (TG 2460 H)", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols customImages lineSpacing retraction ejection"},
    {"CUSTOM_TG_2480_SE", "Custom TG 2480 (TG 2460 SE)", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols customImages lineSpacing retraction ejection"},
    {"CITIZEN_PPU_700", "Citizen PPU-700", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing retraction retractTimeout"},
    {"CITIZEN_CBM_1000", "Citizen CBM-1000", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing"},
    {"CITIZEN_CTS_2000", "Citizen CT-S2000", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing retraction retractTimeout"},
    {"AV_268", "AV-268", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion customSymbols lineSpacing"},
    // The second word is a Latin letter.
    {"GENERAL_EPSON_PROTOCOL", "Принтер \x63 EPSON протоколом", "COM", 203,
     "doubleWidth doubleHeight bold underline lineSpacing"},
    {"TSP-TUP", "Star TSP 600/700/800, TUP 900", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing"},
    {"CITIZEN_PPU_231", "Citizen PPU-231", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing retraction retractTimeout"},
    {"EPSON_EU_4XX", "EPSON EU-4XX", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing retraction retractTimeout"},
    {"SWECOIN_TM_20XX", "Swecoin TM 20xx", "COM", 203,
     "doubleWidth doubleHeight bold italic underline inversion alignCenter alignRight "
     "alignLeft retraction ejection"},
    {"CITIZEN_CPP_8001", "CPP-8001", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing retraction retractTimeout"},
    {"WPK_833", "WinPos WPK 833", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols customImages lineSpacing retraction retractTimeout"},
    {"MERCURY_G80_RS", "Меркурий G80 (RS232)", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion alignCenter alignRight alignLeft "
     "customSymbols lineSpacing plainText"},
    {"NP_F209_2D", "NP-F2092D", "COM", 203,
     "doubleWidth doubleHeight bold underline inversion customSymbols lineSpacing"},
};

struct Paper
{
    const char *model;
    int id;
    int width;
    int pointsToLine;
    const char *caption;
};

constexpr Paper papers[] = {
    {"CUSTOM_VKP_80", 0, 74, 512, "80 mm"},
    {"CUSTOM_VKP_80", 1, 54, 400, "60 mm"},
    {"CUSTOM_VKP_80", 2, 70, 512, "76 mm"},
    {"CUSTOM_VKP_80", 3, 76, 512, "82 mm"},
    {"CUSTOM_TG_2480_H", 0, 74, 640, "80 mm"},
    {"CUSTOM_TG_2480_SE", 0, 72, 640, "80 mm"},
    {"CITIZEN_PPU_700", 0, 72, 576, "80 mm"},
    {"CITIZEN_CBM_1000", 0, 72, 625, "80 mm"},
    {"CITIZEN_CBM_1000", 1, 50, 422, "58 mm"},
    {"CITIZEN_CTS_2000", 0, 72, 625, "80 mm"},
    {"CITIZEN_CTS_2000", 1, 66, 558, "72 mm"},
    {"CITIZEN_CTS_2000", 2, 50, 422, "54.5 mm"},
    {"CITIZEN_CTS_2000", 3, 48, 406, "54 mm"},
    {"AV_268", 0, 48, 384, "60 mm"},
    {"GENERAL_EPSON_PROTOCOL", 0, 48, 384, "60 mm"},
    {"GENERAL_EPSON_PROTOCOL", 1, 72, 625, "80 mm"},
    {"TSP-TUP", 0, 72, 640, "80 mm"},
    {"CITIZEN_PPU_231", 0, 72, 576, "80 mm"},
    {"EPSON_EU_4XX", 0, 80, 640, "82.5 mm"},
    {"EPSON_EU_4XX", 1, 72, 576, "79.5 mm"},
    {"EPSON_EU_4XX", 2, 56, 448, "60 mm"},
    {"EPSON_EU_4XX", 3, 54, 432, "58 mm"},
    {"SWECOIN_TM_20XX", 0, 72, 640, "80 mm"},
    {"CITIZEN_CPP_8001", 0, 72, 576, "80 mm"},
    {"WPK_833", 0, 72, 576, "80 mm"},
    {"MERCURY_G80_RS", 0, 72, 576, "80 mm"},
    {"NP_F209_2D", 0, 48, 384, "60 mm"},
};

/// Fonts that follow each other and are alike stand in one row: first and last id, cell in dots,
/// size in millimetres, whether own symbols fit in, and their cell as the file lists it.
struct Font
{
    const char *model;
    int first;
    int last;
    int width;
    int height;
    double mwidth;
    double mheight;
    bool customSymbols;
    int listedWidth;
    int listedHeight;
};

constexpr Font fonts[] = {
    {"CUSTOM_VKP_80", 0, 0, 10, 24, 1.3, 3.0, true, 10, 24},
    {"CUSTOM_VKP_80", 1, 2, 14, 24, 1.75, 3.0, true, 13, 24},
    {"CUSTOM_VKP_80", 3, 3, 18, 24, 2.18, 3.0, true, 16, 24},
    {"CUSTOM_TG_2480_H", 0, 0, 10, 24, 1.24, 3.0, true, 10, 24},
    {"CUSTOM_TG_2480_H", 1, 2, 14, 24, 1.73, 3.0, true, 13, 24},
    {"CUSTOM_TG_2480_H", 3, 3, 18, 24, 2.23, 3.0, true, 16, 24},
    {"CUSTOM_TG_2480_SE", 0, 1, 10, 24, 1.26, 3.0, true, 10, 24},
    {"CUSTOM_TG_2480_SE", 2, 3, 14, 24, 1.72, 3.0, true, 13, 24},
    {"CITIZEN_PPU_700", 0, 0, 8, 16, 1.0, 2.0, true, 8, 16},
    {"CITIZEN_PPU_700", 1, 2, 9, 17, 1.13, 2.13, true, 9, 17},
    {"CITIZEN_PPU_700", 3, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"CITIZEN_CBM_1000", 0, 1, 9, 24, 1.13, 3.0, true, 9, 24},
    {"CITIZEN_CBM_1000", 2, 3, 12, 24, 1.53, 3.0, true, 12, 24},
    {"CITIZEN_CTS_2000", 0, 0, 8, 16, 1.0, 2.0, true, 8, 16},
    {"CITIZEN_CTS_2000", 1, 2, 9, 24, 1.125, 3.0, true, 9, 24},
    {"CITIZEN_CTS_2000", 3, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"AV_268", 0, 1, 8, 16, 1.0, 1.0, true, 8, 16},
    {"AV_268", 2, 3, 16, 32, 2.0, 2.0, false, 16, 32},
    {"GENERAL_EPSON_PROTOCOL", 0, 3, 12, 24, 1.4, 3.0, false, 8, 16},
    {"TSP-TUP", 0, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"CITIZEN_PPU_231", 0, 1, 9, 24, 1.125, 3.0, true, 9, 24},
    {"CITIZEN_PPU_231", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"EPSON_EU_4XX", 0, 1, 9, 17, 1.13, 2.13, true, 9, 17},
    {"EPSON_EU_4XX", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"SWECOIN_TM_20XX", 0, 3, 18, 24, 1.32, 3.0, false, 18, 24},
    {"CITIZEN_CPP_8001", 0, 0, 9, 24, 1.274, 3.0, true, 9, 24},
    {"CITIZEN_CPP_8001", 1, 1, 9, 24, 1.28, 3.0, true, 9, 24},
    {"CITIZEN_CPP_8001", 2, 3, 12, 24, 1.68, 3.0, true, 12, 24},
    {"WPK_833", 0, 0, 9, 24, 1.274, 3.0, true, 9, 24},
    {"WPK_833", 1, 1, 9, 24, 1.28, 3.0, true, 9, 24},
    {"WPK_833", 2, 3, 12, 24, 1.68, 3.0, true, 12, 24},
    {"MERCURY_G80_RS", 0, 1, 9, 24, 1.125, 3.0, true, 9, 24},
    {"MERCURY_G80_RS", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"NP_F209_2D", 0, 3, 12, 24, 1.5, 3.0, false, 12, 24},
};

constexpr int modelCount = int(std::size(models));
constexpr int paperCount = int(std::size(papers));

constexpr int countFonts()
{
    int count = 0;
    for (const Font &row : fonts)
        count += row.last - row.first + 1;
    return count;
}
constexpr int fontCount = countFonts();

}  // namespace cataloguemodels
