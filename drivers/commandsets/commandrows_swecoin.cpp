#include "commandsets/commandrows_p.h"
#include "commandsets/rowbuilder_p.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;
using Rule = PayloadRule;

constexpr const char *ttp2000 = "Zebra TTP 2000 Technical Manual, P1002902-002";
constexpr const char *ttp1000 = "Zebra TTP 1020/TTP 1030 Technical Manual, P1003643-001";
constexpr const char *ttp2100 = "Zebra TTP 2100 Technical Manual, P1003640-001";
constexpr const char *unopened = "Swecoin TTP 2000 Technical Manual, 103471";
constexpr const char *ttp8000 = "Zebra TTP 8000 Technical Manual, P1003638-003";

constexpr CommandRow swecoinTable[] = {
    // Control characters
    row(Id::Backspace, "BS", "", "goes one step to the left", ttp2000),
    row(Id::HorizontalTab, "HT", "", "goes to the next tab stop", ttp2000),
    row(Id::LineFeed, "LF", "", "prints the line and feeds", ttp2000),
    row(Id::FormFeed, "FF", "", "prints the page, cuts and ejects it, as the printer is set",
        ttp2000),
    row(Id::CarriageReturn, "CR", "", "nothing, or the line's start, as the printer is set",
        ttp2000),
    row(Id::CancelData, "CAN", "", "clears the line", ttp2000),
    row(Id::CutAndEject, "RS", "", "cuts and ejects", ttp8000),
    row(Id::EjectOrRetract, "EM", "n", "ejects the page, or takes it back", ttp8000),
    row(Id::ClearPresenter, "ENQ", "", "clears the presenter", ttp8000),

    // Characters
    row(Id::Font, "ESC !", "n", "chooses the font", ttp2000),
    row(Id::BoldSwitch, "ESC B", "n", "prints bold, or not", ttp2000),
    row(Id::ItalicSwitch, "ESC i", "n", "prints italics, or not", ttp2000),
    row(Id::Inverse, "ESC T", "n", "prints white on black, or not", ttp2000),
    row(Id::UnderlineThickness, "ESC u", "n", "underlines with n dots, or not", ttp2000),
    row(Id::HeightScale, "ESC h", "n", "sets the height of characters", ttp2000),
    row(Id::WidthScale, "ESC w", "n", "sets the width of characters", ttp2000),
    forOperands(row(Id::PlacedText, "ESC t", "xH xL yH yL n", "prints a text at a place", ttp2000,
                    Rule::NulTerminated),
                4, "\x00"),
    row(Id::PlacedText, "ESC t", "xH xL yH yL n", "prints a text at a place", ttp2000,
        Rule::LengthByte),

    // Position and lines
    row(Id::TabStops, "ESC F", "", "sets the tab stops in 2.5 mm", ttp8000, Rule::TabStops),
    row(Id::FeedLines, "ESC d", "n", "prints the line and feeds by lines", ttp2000),
    row(Id::FeedUnits, "ESC J", "n", "feeds by dots", ttp2000),
    row(Id::ReverseFeedUnits, "ESC j", "n", "feeds back by dots", ttp2000),
    row(Id::QuickFeed, "ESC Q", "nH nL", "feeds by many dots", ttp2000),
    row(Id::LineSpacing, "ESC 3", "n", "sets the line spacing in dots", ttp1000),
    row(Id::Calibrate, "ESC #", "", "measures the marks of the paper", ttp2000),
    row(Id::NextForm, "ESC Z", "", "feeds to the next mark", ttp2000),
    row(Id::PrintBuffer, "ESC p", "", "prints what is in the buffer", ttp8000),
    row(Id::Orientation, "ESC o", "n", "prints upright, or across", ttp8000),

    // Pictures and codes
    forOperands(row(Id::DotLineCompression, "ESC s", "n c", "packs rows of dots, or not", ttp8000),
                0, "\x00"),
    row(Id::DotLine, "ESC s", "n", "prints a row of dots", ttp8000, Rule::LengthByte),
    forOperands(
        row(Id::DotLineCompression, "ESC l", "nH nL c", "packs rows of dots, or not", ttp8000), 0,
        "\x00\x00"),
    row(Id::DotLine, "ESC l", "nH nL", "prints a row of dots", ttp8000, Rule::LengthWordHighFirst),
    row(Id::PlacedBitmap, "ESC b", "a xH xL yH yL", "prints a bitmap file at a place", ttp8000,
        Rule::Bitmap),
    row(Id::PlacedLogo, "ESC g", "n xH xL yH yL", "prints a stored logo at a place", ttp8000),
    row(Id::BarcodeClear, "ESC B C", "n", "clears a barcode's field", ttp1000),
    row(Id::BarcodeField, "ESC B S", "f xH xL yH yL d hH hL t w r", "sets a barcode's field",
        ttp1000),
    row(Id::BarcodeWrite, "ESC B W", "f", "takes the data of a barcode's field", ttp1000,
        Rule::NulTerminated),

    // Cutter and presenter
    row(Id::FullCut, "ESC RS", "", "cuts", ttp8000),
    row(Id::EjectorPresent, "ESC FF", "n", "ejects by n mm", ttp8000),

    // Status and the printer itself
    forOperands(row(Id::ParameterStatus, "ESC ENQ", "n p", "asks for a parameter", ttp2100), 0,
                "P"),
    row(Id::StatusRequest, "ESC ENQ", "n", "asks for a status", ttp2000),
    row(Id::Acknowledge, "ESC ACK", "n", "answers n when all before is done", ttp2100),
    forOperands(row(Id::SetParameters, "ESC & P", "p f n", "sets parameters from f on", ttp2000,
                    Rule::LengthByte),
                0, "\x00"),
    row(Id::SetParameter, "ESC & P", "p n", "sets a parameter", ttp2000),
    row(Id::StoreParameters, "ESC & EOT", "", "stores the parameters", ttp2000),
    row(Id::EraseLogos, "ESC & L", "", "erases all logos", ttp8000),
    row(Id::LoadFirmware, "ESC NUL", "", "begins to load firmware", ttp2000),
    row(Id::Initialize, "ESC ?", "", "resets the printer", unopened),
};

}  // namespace

CommandRows swecoinRows()
{
    return {std::begin(swecoinTable), std::end(swecoinTable)};
}

}  // namespace printerslib::drivers
