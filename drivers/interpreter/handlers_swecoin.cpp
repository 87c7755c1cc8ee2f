#include <algorithm>

#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

using Event = Paper::Event;

void stepBack(Printer &printer, const StreamCommand & /*command*/)
{
    printer.line.x = std::max(0, printer.line.x - printer.columnWidth());
}

/// Prints and cuts: the printer feeds to its cutter by itself.
void endSwecoinPage(Printer &printer, const StreamCommand &command)
{
    if (!printer.line.isEmpty())
        printer.printLine(1);
    printer.roll.cut(Event::Cut, printer.roll.top());
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

template <auto member>
void setSwecoinSwitch(Printer &printer, const StreamCommand &command)
{
    printer.state.*member = isSwitchedOn(command);
}

void setThickness(Printer &printer, const StreamCommand &command)
{
    printer.state.underline = std::min(2, std::max(0, choiceOf(command, 0, 10)));
}

void setSwecoinFont(Printer &printer, const StreamCommand &command)
{
    const int font = choiceOf(command, 0, printer.fonts().size());
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

constexpr HandlerRow swecoinRows[] = {
    {CommandId::Backspace, stepBack},
    {CommandId::FormFeed, cutAndEject},
    {CommandId::CutAndEject, cutAndEject},
    {CommandId::FullCut, endSwecoinPage},
    {CommandId::EjectorPresent, presentTicket},
    {CommandId::EjectOrRetract, ejectOrRetract},
    {CommandId::ClearPresenter, clearPresenter},
    {CommandId::BoldSwitch, setSwecoinSwitch<&PrintState::isBold>},
    {CommandId::ItalicSwitch, setSwecoinSwitch<&PrintState::isItalic>},
    {CommandId::UnderlineThickness, setThickness},
    {CommandId::HeightScale, setSwecoinScale<&PrintState::heightScale>},
    {CommandId::WidthScale, setSwecoinScale<&PrintState::widthScale>},
    {CommandId::Font, setSwecoinFont},
    {CommandId::PrintBuffer, printBuffer},
};

}  // namespace

HandlerRows swecoinHandlers()
{
    return {std::begin(swecoinRows), std::end(swecoinRows)};
}

}  // namespace printerslib::drivers
