#include "commandsets/commandrows_p.h"
#include "commandsets/rowbuilder_p.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;
using Rule = PayloadRule;

constexpr const char *ttp2000 = "Zebra TTP 2000 Technical Manual, P1002902-002";
constexpr const char *ttp8000 = "Zebra TTP 8000 Technical Manual, P1003638-003";

constexpr CommandRow swecoinTable[] = {
    // Control characters
    row(Id::Backspace, "BS", "", "goes one step to the left", ttp2000),
    row(Id::HorizontalTab, "HT", "", "goes to the next tab stop", ttp2000),
    row(Id::LineFeed, "LF", "", "prints the line and feeds", ttp2000),
    row(Id::FormFeed, "FF", "", "prints, cuts and ejects the page", ttp2000),
    row(Id::CarriageReturn, "CR", "", "nothing, or the line's start, as the printer is set",
        ttp2000),
    row(Id::CancelData, "CAN", "", "clears the line", ttp2000),
    row(Id::CutAndEject, "RS", "", "cuts and ejects", ttp2000),
    row(Id::EjectOrRetract, "EM", "n", "ejects the page, or takes it back", ttp2000),
    row(Id::ClearPresenter, "ENQ", "", "clears the presenter", ttp2000),

    // Characters
    row(Id::BoldSwitch, "ESC B", "n", "prints bold, or not", ttp2000),
    row(Id::ItalicSwitch, "ESC i", "n", "prints italics, or not", ttp2000),
    row(Id::Inverse, "ESC T", "n", "prints white on black, or not", ttp2000),
    row(Id::UnderlineThickness, "ESC u", "n", "underlines with n dots, or not", ttp2000),
    row(Id::HeightScale, "ESC h", "n", "sets the height of characters", ttp2000),
    row(Id::WidthScale, "ESC w", "n", "sets the width of characters", ttp2000),
    row(Id::Font, "ESC P", "n", "chooses the font", ttp2000),
    row(Id::InternationalSet, "ESC R", "n", "chooses a country's characters", ttp2000),

    // Position and lines
    row(Id::FeedUnits, "ESC J", "n", "feeds by dots", ttp8000),
    row(Id::ReverseFeedUnits, "ESC j", "n", "feeds back by dots", ttp2000),
    row(Id::LineSpacing, "ESC 3", "n", "sets the line spacing", ttp2000),
    row(Id::Calibrate, "ESC #", "", "measures the marks of the paper", ttp2000),
    row(Id::NextForm, "ESC Z", "", "feeds to the next mark", ttp2000),
    row(Id::PrintBuffer, "ESC p", "", "prints what is in the buffer", ttp2000),

    // Cutter and presenter
    row(Id::FullCut, "ESC RS", "", "cuts", ttp2000),
    row(Id::EjectorPresent, "ESC FF", "n", "ejects by n mm", ttp2000),

    // Status and the printer itself
    forOperands(row(Id::ParameterStatus, "ESC ENQ", "n p", "asks for a parameter", ttp2000), 0,
                "P"),
    row(Id::StatusRequest, "ESC ENQ", "n", "asks for a status", ttp2000),
    row(Id::Acknowledge, "ESC ACK", "n", "answers n when all before is done", ttp2000),
    forOperands(
        row(Id::SetParameters, "ESC & P", "p f n", "sets parameters", ttp2000, Rule::LengthByte), 0,
        "\x00"),
    row(Id::SetParameter, "ESC & P", "p n", "sets a parameter", ttp2000),
    row(Id::StoreParameters, "ESC & EOT", "", "stores the parameters", ttp2000),
    row(Id::LoadFirmware, "ESC NUL", "", "begins to load firmware", ttp2000),
    row(Id::Initialize, "ESC ?", "", "resets the printer", ttp2000),
};

}  // namespace

CommandRows swecoinRows()
{
    return {std::begin(swecoinTable), std::end(swecoinTable)};
}

}  // namespace printerslib::drivers
