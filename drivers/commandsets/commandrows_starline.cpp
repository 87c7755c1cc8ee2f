#include "commandsets/commandrows_p.h"
#include "commandsets/rowbuilder_p.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;
using Rule = PayloadRule;
using Trait = CommandRow::Trait;

constexpr const char *lineThermal =
    "Star Line Thermal Printer, STAR Line Mode Command Specifications";
constexpr const char *hybrid =
    "Star Line Thermal/Dot Printer, STAR Line Mode Command Specifications, rev. 0.00";
constexpr const char *lineMode = "Star Line Mode Command Specifications, rev. 1.9x";
constexpr const char *oki =
    "Oki OKIPOS 408II Programmer's Technical Reference, STAR Line Mode Command Specifications";
constexpr const char *sp500 = "Samsung SRP-275 Operator's Manual, STAR mode (SP500)";

/// A setting of the raster mode: a number in decimal digits, and a zero byte.
constexpr CommandRow rasterSetting(Id id, const char *mnemonic, const char *meaning)
{
    return row(id, mnemonic, "", meaning, hybrid, Rule::NulTerminated);
}

constexpr CommandRow starLineTable[] = {
    // Control characters
    row(Id::HorizontalTab, "HT", "", "goes to the next tab stop", lineThermal),
    row(Id::LineFeed, "LF", "", "prints the line and feeds", lineThermal),
    row(Id::CarriageReturn, "CR", "", "as LF, or nothing, as the printer is set", lineThermal),
    row(Id::FormFeed, "FF", "", "feeds to the next form", lineThermal),
    row(Id::VerticalTab, "VT", "", "feeds to the next vertical tab stop", lineThermal),
    row(Id::CancelData, "CAN", "", "clears the line and resets", lineThermal),
    row(Id::Drawer1, "BEL", "", "opens the first drawer", lineThermal),
    row(Id::Drawer1, "FS", "", "opens the first drawer", lineThermal),
    row(Id::Drawer2, "EM", "", "opens the second drawer", lineThermal),
    row(Id::Drawer2, "SUB", "", "opens the second drawer", lineThermal),
    row(Id::StatusRequest, "ENQ", "", "asks for the status", lineThermal),
    row(Id::StatusRequest, "EOT", "", "asks for the paper's status", lineThermal),
    row(Id::EtbMark, "ETB", "", "marks this place in the automatic status", lineThermal),
    row(Id::DoubleWidthOn, "SO", "", "prints at double width", lineThermal),
    row(Id::DoubleWidthOff, "DC4", "", "ends double width", lineThermal),
    row(Id::UpsideDownOn, "SI", "", "prints upside down", lineThermal),
    row(Id::UpsideDownOff, "DC2", "", "ends printing upside down", lineThermal),

    // Characters
    row(Id::CodePage, "ESC GS t", "n", "chooses the code page", lineThermal),
    row(Id::InternationalSet, "ESC R", "n", "chooses a country's characters", lineThermal),
    row(Id::SlashedZero, "ESC /", "n", "strikes zeros through, or not", lineThermal),
    row(Id::Font, "ESC RS F", "n", "chooses the font", lineThermal),
    row(Id::CharacterSpacing, "ESC SP", "n", "sets the space right of characters", lineThermal),
    row(Id::Pitch12, "ESC M", "", "sets characters of 12 dots", lineThermal),
    row(Id::Pitch14, "ESC g", "", "sets characters of 14 dots", lineThermal),
    row(Id::Pitch15, "ESC P", "", "sets characters of 15 dots", lineThermal),
    row(Id::Pitch16, "ESC :", "", "sets characters of 16 dots", lineThermal),
    row(Id::CharacterSet2, "ESC 6", "", "chooses the second character set", sp500),
    row(Id::CharacterSet1, "ESC 7", "", "chooses the first character set", sp500),
    row(Id::CharacterScale, "ESC i", "n1 n2", "sets height and width of characters", lineThermal),
    row(Id::WidthScale, "ESC W", "n", "sets the width of characters", lineThermal),
    row(Id::HeightScale, "ESC h", "n", "sets the height of characters", lineThermal),
    row(Id::DoubleHeightOn, "ESC SO", "", "prints at double height", lineThermal),
    row(Id::DoubleHeightOff, "ESC DC4", "", "ends double height", lineThermal),
    row(Id::BoldOn, "ESC E", "", "prints bold", lineThermal),
    row(Id::BoldOff, "ESC F", "", "ends bold", lineThermal),
    row(Id::Underline, "ESC -", "n", "underlines, or not", lineThermal),
    row(Id::Upperline, "ESC _", "n", "draws a line above, or not", lineThermal),
    row(Id::InverseOn, "ESC 4", "", "prints white on black", lineThermal),
    row(Id::InverseOff, "ESC 5", "", "ends white on black", lineThermal),
    row(Id::Rotation, "ESC RS i", "n", "turns characters by 90 degrees, or not", hybrid),
    row(Id::Smoothing, "ESC GS b", "n", "smooths enlarged characters, or not", lineMode),
    row(Id::Colour, "ESC RS c", "n", "chooses the colour", hybrid),
    row(Id::TwoColours, "ESC RS C", "n", "prints in two colours, or not", hybrid),
    row(Id::UserCharactersUsed, "ESC %", "n", "chooses the user's characters, or not", lineThermal),
    forOperands(row(Id::DefineCharacter, "ESC &", "a b n", "defines a character", lineThermal,
                    Rule::Bytes48),
                0, "\x01\x01"),
    forOperands(row(Id::CancelCharacter, "ESC &", "a b n", "takes a character's definition back",
                    lineThermal),
                0, "\x01\x00"),

    // Two-byte characters
    row(Id::KanjiOn, "ESC p", "", "begins JIS characters", lineThermal),
    row(Id::KanjiOff, "ESC q", "", "ends JIS characters", lineThermal),
    row(Id::KanjiCode, "ESC $", "n", "chooses shifted JIS, or not", lineThermal),
    row(Id::KanjiSpacing, "ESC s", "n1 n2", "sets the space beside two-byte characters",
        lineThermal),
    row(Id::KanaSpacing, "ESC t", "n1 n2", "sets the space beside narrow characters", lineThermal),
    row(Id::DefineKanji, "ESC r", "c1 c2", "defines a two-byte character", lineThermal,
        Rule::Bytes72),

    // Position and lines
    row(Id::AbsolutePosition, "ESC GS A", "n1 n2", "goes to a place of the line", lineThermal),
    row(Id::RelativePosition, "ESC GS R", "n1 n2", "goes on by a distance", lineThermal),
    row(Id::Alignment, "ESC GS a", "n", "aligns the line", lineThermal),
    row(Id::LeftMargin, "ESC l", "n", "sets the left margin in characters", lineThermal),
    row(Id::RightMargin, "ESC Q", "n", "sets the right margin in characters", lineThermal),
    row(Id::PrintArea, "ESC RS A", "n", "sets the area that is printed", hybrid),
    row(Id::TabStops, "ESC D", "", "sets the tab stops", lineThermal, Rule::TabStops),
    row(Id::VerticalTabStops, "ESC B", "", "sets the vertical tab stops", lineThermal,
        Rule::TabStops),
    row(Id::FeedLines, "ESC a", "n", "prints the line and feeds by lines", lineThermal),
    row(Id::LineSpacingChoice, "ESC z", "n", "sets lines of 4 mm, or of 3 mm", lineThermal),
    row(Id::NarrowLineSpacing, "ESC 0", "", "sets lines of 3 mm", lineThermal),
    row(Id::SevenSeventySecondsSpacing, "ESC 1", "", "sets lines of 7/72 inch", sp500),
    row(Id::DefineSpacing, "ESC A", "n", "defines the spacing of ESC 2 in 1/72 inch", sp500),
    row(Id::DefinedSpacing, "ESC 2", "", "sets the spacing of ESC A", sp500),
    row(Id::LineSpacing, "ESC 3", "n", "sets the line spacing in 1/216 inch", sp500),
    row(Id::LineSpacing144, "ESC y", "n", "sets the line spacing in 1/144 inch", sp500),
    row(Id::FeedUnits, "ESC J", "n", "prints the line and feeds by n/4 mm", lineThermal),
    row(Id::FeedHalfUnits, "ESC I", "n", "prints the line and feeds by n/8 mm", lineThermal),
    forOperands(
        row(Id::PageLengthInches, "ESC C", "a n", "sets the form's length in inches", lineThermal),
        0, "\x00"),
    row(Id::PageLength, "ESC C", "n", "sets the form's length in lines", lineThermal),
    row(Id::BottomMargin, "ESC N", "n", "sets the bottom margin in lines", lineThermal),
    row(Id::NoBottomMargin, "ESC O", "", "ends the bottom margin", lineThermal),

    // Page mode
    row(Id::PageMode, "ESC GS P 0", "", "begins page mode", oki),
    row(Id::StandardMode, "ESC GS P 1", "", "ends page mode", oki),
    row(Id::PageDirection, "ESC GS P 2", "n", "sets the direction of the page", oki),
    row(Id::PageArea, "ESC GS P 3", "xL xH yL yH dxL dxH dyL dyH", "sets the area of the page",
        oki),
    row(Id::PageAbsoluteHeight, "ESC GS P 4", "nL nH", "goes to a height of the page", oki),
    row(Id::PageRelativeHeight, "ESC GS P 5", "nL nH", "goes up or down the page", oki),
    row(Id::PrintPage, "ESC GS P 6", "", "prints the page and stays in page mode", oki),
    row(Id::PrintPageAndLeave, "ESC GS P 7", "", "prints the page and ends page mode", oki),
    row(Id::CancelPage, "ESC GS P 8", "", "clears the page", oki),

    // Pictures
    row(Id::CoarseBitImage, "ESC K", "n1 n2", "prints columns of dots, three times as large",
        hybrid, Rule::ColumnsOfByte),
    row(Id::WideBitImage, "ESC L", "n1 n2", "prints columns of dots, three times as high", hybrid,
        Rule::ColumnsOfByte),
    row(Id::FineRasterImage, "ESC k", "n1 n2", "prints 24 rows of dots", hybrid, Rule::RowsOf24),
    row(Id::FineBitImage, "ESC X", "n1 n2", "prints columns of 24 dots", hybrid,
        Rule::ColumnsOf3Bytes),
    row(Id::RasterImage, "ESC GS S", "m xL xH yL yH n", "prints a raster picture", lineMode,
        Rule::RasterWords),
    row(Id::PrintNvImage, "ESC FS p", "n m", "prints a stored picture", lineThermal),
    row(Id::DefineNvImages, "ESC FS q", "n", "stores pictures", lineThermal, Rule::NvPictures),
    row(Id::PrintNvImages, "ESC RS L", "m", "prints all stored pictures", lineThermal),

    // The raster mode
    row(Id::RasterInitialize, "ESC * r R", "", "resets the raster mode", hybrid),
    withTraits(row(Id::RasterBegin, "ESC * r A", "", "begins the raster mode", hybrid),
               Trait::EntersRaster),
    withTraits(row(Id::RasterEnd, "ESC * r B", "", "ends the raster mode", hybrid),
               Trait::LeavesRaster),
    row(Id::RasterClear, "ESC * r C", "", "clears the raster data", hybrid),
    rasterSetting(Id::RasterDrawer, "ESC * r D", "opens a drawer"),
    rasterSetting(Id::RasterEotMode, "ESC * r E", "sets what EOT does"),
    rasterSetting(Id::RasterFormFeedMode, "ESC * r F", "sets what FF does"),
    rasterSetting(Id::RasterPageLength, "ESC * r P", "sets the page's length"),
    rasterSetting(Id::RasterQuality, "ESC * r Q", "sets the quality"),
    rasterSetting(Id::RasterLeftMargin, "ESC * r m l", "sets the left margin"),
    rasterSetting(Id::RasterRightMargin, "ESC * r m r", "sets the right margin"),
    rasterSetting(Id::RasterTopMargin, "ESC * r T", "sets the top margin"),
    rasterSetting(Id::RasterColour, "ESC * r K", "chooses the colour"),
    rasterSetting(Id::RasterMove, "ESC * r Y", "feeds by dots"),
    row(Id::RasterDiscard, "ESC * r N", "", "throws bytes away", lineThermal, Rule::DecimalCounted),
    rasterSetting(Id::RasterBuzzer, "ESC * r V", "sounds the buzzer"),
    withTraits(row(Id::RasterLine, "b", "n1 n2", "prints a row of dots and feeds", hybrid,
                   Rule::LengthWord),
               Trait::InRasterMode),
    withTraits(row(Id::RasterRow, "k", "n1 n2", "prints a row of dots", hybrid, Rule::LengthWord),
               Trait::InRasterMode),
    row(Id::RasterFormFeed, "ESC FF NUL", "", "does what is set for FF", hybrid),
    row(Id::RasterEot, "ESC FF EOT", "", "does what is set for EOT", hybrid),

    // Codes
    row(Id::StarBarcode, "ESC b", "n1 n2 n3 n4", "prints a barcode", lineThermal,
        Rule::RsTerminated),
    row(Id::QrModel, "ESC GS y S 0", "n", "sets a QR code's model", lineThermal),
    row(Id::QrLevel, "ESC GS y S 1", "n", "sets a QR code's correction", lineThermal),
    row(Id::QrModuleSize, "ESC GS y S 2", "n", "sets a QR code's module size", lineThermal),
    row(Id::QrStore, "ESC GS y D 1", "m nL nH", "takes a QR code's data", lineThermal,
        Rule::LengthWord),
    row(Id::QrStoreParts, "ESC GS y D 2", "a", "takes a QR code's data in parts of a type",
        lineThermal, Rule::QrParts),
    row(Id::QrPrint, "ESC GS y P", "", "prints the QR code", lineThermal),
    row(Id::QrSize, "ESC GS y I", "", "asks for the QR code's size", lineThermal),
    row(Id::Pdf417Shape, "ESC GS x S 0", "n p1 p2", "sets a PDF417's shape", lineThermal),
    row(Id::Pdf417Level, "ESC GS x S 1", "n", "sets a PDF417's correction", lineThermal),
    row(Id::Pdf417Width, "ESC GS x S 2", "n", "sets a PDF417's module width", lineThermal),
    row(Id::Pdf417Height, "ESC GS x S 3", "n", "sets a PDF417's row height", lineThermal),
    row(Id::Pdf417Store, "ESC GS x D", "nL nH", "takes a PDF417's data", lineThermal,
        Rule::LengthWord),
    row(Id::Pdf417Print, "ESC GS x P", "", "prints the PDF417", lineThermal),
    row(Id::Pdf417Size, "ESC GS x I", "", "asks for the PDF417's size", lineThermal),

    // Cutter, drawer, buzzer
    row(Id::StarCut, "ESC d", "n", "cuts, at once or at the cutter, a bridge left or not",
        lineThermal),
    row(Id::DrawerPulse, "ESC BEL", "n1 n2", "sets the first drawer's pulse", lineThermal),
    row(Id::Buzzer, "ESC GS BEL", "m n1 n2", "sounds the buzzer", lineMode),
    row(Id::BuzzerPulse, "ESC GS EM DC1", "m n1 n2", "sets the outer buzzer's pulse", lineMode),
    row(Id::BuzzerSound, "ESC GS EM DC2", "m n1 n2", "sounds the outer buzzer", lineMode),
    row(Id::Presenter, "ESC SYN", "n m", "takes the ticket back, or sets when that is done",
        hybrid),

    // Status and the printer itself
    row(Id::PrinterSelect, "DC1", "", "selects the printer again", hybrid),
    row(Id::PrinterDeselect, "DC3", "", "deselects the printer: all up to DC1 is thrown away",
        hybrid),
    withTraits(
        row(Id::RealTimeStatus, "ESC ACK SOH", "", "asks for the status at once", lineThermal),
        Trait::ActsAtOnce),
    row(Id::StatusMode, "ESC RS `", "n", "sets the mode of the status", searchOnly),
    row(Id::AutomaticStatus, "ESC RS a", "n", "chooses what the printer tells by itself",
        lineThermal),
    row(Id::EtbReset, "ESC RS E", "n", "resets the marks of ETB", lineThermal),
    row(Id::EndMark, "ESC GS ETX", "s n1 n2", "marks the end of a document", lineMode),
    row(Id::Initialize, "ESC @", "", "resets to the settings after power-on", lineThermal),
    row(Id::ResetPrinter, "ESC ? LF NUL", "", "resets the printer", lineThermal),
    row(Id::MemorySwitch, "ESC GS #", "m N n1 n2 n3 n4 lf nul", "sets a memory switch",
        lineThermal),
    row(Id::PrintDensity, "ESC RS d", "n", "sets the density", lineThermal),
    row(Id::PrintSpeed, "ESC RS r", "n", "sets the speed", lineThermal),
    row(Id::DriverMode, "ESC RS m", "n", "sets the mode for the printer's driver", hybrid),

    // What nobody knows, but carries its length
    row(Id::Encoding, "ESC GS ) U", "pL pH m fn n", "chooses the encoding", lineMode,
        Rule::LengthWord),
    withTraits(row(Id::SkippedByLength, "ESC GS )", "c pL pH",
                   "is skipped by the length that it carries", lineMode, Rule::LengthWord),
               Trait::Family),
};

}  // namespace

CommandRows starLineRows()
{
    return {std::begin(starLineTable), std::end(starLineTable)};
}

}  // namespace printerslib::drivers
