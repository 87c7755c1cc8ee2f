#include <algorithm>

#include "interpreter/dots_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

using Event = Paper::Event;

/// Prints and cuts where the paper is at the cutter: nothing feeds there by itself.
void endSwecoinPage(Printer &printer, const StreamCommand &command)
{
    if (!printer.line.isEmpty())
        printer.printLine(1);
    printer.roll.cut(Event::Cut, printer.roll.top() - printer.profile.dotsToCutter());
    Q_UNUSED(command)
}

void ejectTicket(Printer &printer)
{
    printer.roll.addEvent(Event::Eject, QStringLiteral("ejects the ticket"));
}

void cutAndEject(Printer &printer, const StreamCommand &command)
{
    endSwecoinPage(printer, command);
    ejectTicket(printer);
}

void presentTicket(Printer &printer, const StreamCommand &command)
{
    printer.roll.addEvent(Event::Present,
                          QStringLiteral("presents %1 mm of the ticket").arg(command.operand(0)));
}

/// Below 100 the ticket goes out, from there on it is taken back.
void ejectOrRetract(Printer &printer, const StreamCommand &command)
{
    constexpr int firstRetraction = 100;
    if (command.operand(0) < firstRetraction)
        ejectTicket(printer);
    else
        printer.roll.addEvent(Event::Retract, QStringLiteral("takes the ticket back"));
}

void clearPresenter(Printer &printer, const StreamCommand & /*command*/)
{
    ejectTicket(printer);
}

template <auto member>
void setSwecoinScale(Printer &printer, const StreamCommand &command)
{
    const int scale = choiceOf(command, 0, 8);
    if (scale >= 0)
        printer.state.*member = scale + 1;
}

void setThickness(Printer &printer, const StreamCommand &command)
{
    printer.state.underline = std::min(2, std::max(0, choiceOf(command, 0, 10)));
}

void setSwecoinFont(Printer &printer, const StreamCommand &command)
{
    const int font = choiceOf(command, 0, printer.profile.fontCells().size());
    if (font >= 0)
        printer.state.font = font;
    else
        printer.noteFor(command, QStringLiteral("asks for font %1, of which the model's data knows "
                                                "nothing")
                                     .arg(command.operand(0)));
}

void printBuffer(Printer &printer, const StreamCommand & /*command*/)
{
    if (!printer.line.isEmpty())
        printer.printLine(1);
}

/// A number of which the high byte comes first.
int highFirst(const StreamCommand &command, int index)
{
    return 256 * command.operand(index) + command.operand(index + 1);
}

void feedQuickly(Printer &printer, const StreamCommand &command)
{
    printer.printLineAndFeed(highFirst(command, 0));
}

void setSwecoinTabs(Printer &printer, const StreamCommand &command)
{
    constexpr int unit = 20;  // dots, 2.5 mm
    printer.state.tabs.clear();
    const QByteArray payload = command.payload();
    for (const char byte : payload) {
        if (byte != 0)
            printer.state.tabs.append(unit * static_cast<unsigned char>(byte));
    }
}

void choosePacking(Printer &printer, const StreamCommand &command)
{
    printer.raster.isPacked = command.operand(command.row->operandCount - 1) != 0;
}

void printDotLine(Printer &printer, const StreamCommand &command)
{
    if (printer.raster.isPacked) {
        printer.noteFor(command, QStringLiteral("is packed, and isn't carried out"));
        return;
    }
    printer.endLineFor(command);
    const QByteArray dots = command.payload();
    printer.printPicture(pictureOfRows(dots, 8 * dots.size(), 1));
}

/// What is placed on a page goes to its place across, on a line of its own.
void printPlacedText(Printer &printer, const StreamCommand &command)
{
    if (!printer.line.isEmpty())
        printer.printLine(1);
    printer.noteFor(command, QStringLiteral("isn't placed along the paper"));
    QByteArray text = command.payload();
    text.replace('\0', QByteArray());
    printer.line.moveTo(std::min(highFirst(command, 0), printer.lineWidth()));
    printer.printText(text);
    printer.printLine(1);
}

constexpr HandlerRow swecoinRows[] = {
    {CommandId::FormFeed, cutAndEject},
    {CommandId::CutAndEject, cutAndEject},
    {CommandId::FullCut, endSwecoinPage},
    {CommandId::EjectorPresent, presentTicket},
    {CommandId::EjectOrRetract, ejectOrRetract},
    {CommandId::ClearPresenter, clearPresenter},
    {CommandId::BoldSwitch, switchState<&PrintState::isBold>},
    {CommandId::ItalicSwitch, switchState<&PrintState::isItalic>},
    {CommandId::UnderlineThickness, setThickness},
    {CommandId::HeightScale, setSwecoinScale<&PrintState::heightScale>},
    {CommandId::WidthScale, setSwecoinScale<&PrintState::widthScale>},
    {CommandId::Font, setSwecoinFont},
    {CommandId::PrintBuffer, printBuffer},
    {CommandId::QuickFeed, feedQuickly},
    {CommandId::TabStops, setSwecoinTabs},
    {CommandId::DotLineCompression, choosePacking},
    {CommandId::DotLine, printDotLine},
    {CommandId::PlacedText, printPlacedText},
};

}  // namespace

HandlerRows swecoinHandlers()
{
    return {std::begin(swecoinRows), std::end(swecoinRows)};
}

}  // namespace printerslib::drivers
