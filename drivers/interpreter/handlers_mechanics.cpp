#include "interpreter/handlers_mechanics_p.h"

#include <algorithm>

#include "interpreter/handlers_p.h"
#include "interpreter/handlers_page_p.h"

namespace printerslib::drivers {

void addPulse(Printer &printer, int pin, int on, int off)
{
    Paper::Event event;
    event.kind = Paper::Event::Pulse;
    event.pin = pin;
    event.onMilliseconds = on;
    event.offMilliseconds = off;
    event.text = QStringLiteral("pulse of %1 ms to pin %2").arg(on).arg(pin);
    printer.roll.addEvent(event);
}

void beep(Printer &printer, const StreamCommand & /*command*/)
{
    printer.roll.addEvent(Paper::Event::Beep, QStringLiteral("beep"));
}

namespace {

using Event = Paper::Event;

/// Cuts where the paper is at the cutter.
void cutAtCutter(Printer &printer, const StreamCommand &command, Event::Kind kind)
{
    printer.endLineFor(command);
    printer.roll.cut(kind, printer.roll.top() - printer.profile.dotsToCutter());
}

void cutFully(Printer &printer, const StreamCommand &command)
{
    cutAtCutter(printer, command, Event::Cut);
}

void cutPartially(Printer &printer, const StreamCommand &command)
{
    cutAtCutter(printer, command, Event::PartialCut);
}

void cutPaper(Printer &printer, const StreamCommand &command)
{
    const int mode = choiceOf(command, 0, 2);
    if (mode < 0)
        printer.noteFor(command, QStringLiteral("has no mode %1").arg(command.operand(0)));
    else
        cutAtCutter(printer, command, mode == 0 ? Event::Cut : Event::PartialCut);
}

/// What is printed, and n units more, goes past the cutter first. The same is cut by the commands
/// that cut later or feed back: the places differ by what hangs between head and cutter only.
void feedAndCut(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    const int mode = command.operand(0);
    const bool isFull = mode == 65 || mode == 97 || mode == 103;
    const int dots = printer.dotsDown(command.operand(1));
    printer.roll.feed(dots, printer.state.lineSpacing);
    printer.roll.cut(isFull ? Event::Cut : Event::PartialCut, printer.roll.top());
}

int pinOf(int choice)
{
    return choice == 0 ? 2 : 5;
}

void pulse(Printer &printer, const StreamCommand &command)
{
    constexpr int unit = 2;  // milliseconds
    const int choice = choiceOf(command, 0, 2);
    const int on = unit * command.operand(1);
    if (choice < 0)
        printer.noteFor(command, QStringLiteral("has no drawer %1").arg(command.operand(0)));
    else
        addPulse(printer, pinOf(choice), on, std::max(on, unit * command.operand(2)));
}

/// DLE DC4 1 m t: as long on as off.
void pulseAtOnce(Printer &printer, const StreamCommand &command)
{
    constexpr int unit = 100;  // milliseconds
    const int choice = choiceOf(command, 1, 2);
    const int time = unit * command.operand(2);
    if (choice >= 0)
        addPulse(printer, pinOf(choice), time, time);
}

void clearAtOnce(Printer &printer, const StreamCommand &command)
{
    printer.dropLine(command);
    if (printer.isPageMode)
        leavePageMode(printer);
}

template <Event::Kind kind>
void moveTicket(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    const char *text = kind == Event::Eject     ? "ejects the ticket"
                       : kind == Event::Present ? "presents the ticket"
                                                : "takes the ticket back";
    printer.roll.addEvent(kind, QLatin1String(text));
}

void reset(Printer &printer, const StreamCommand &command)
{
    printer.dropLine(command);
    if (printer.isPageMode && !printer.page.items().isEmpty())
        printer.noteFor(command, QStringLiteral("throws away a page that wasn't printed"));
    printer.reset();
}

void ignoreMechanics(Printer & /*printer*/, const StreamCommand & /*command*/) {}

constexpr HandlerRow mechanicsRows[] = {
    {CommandId::FullCut, cutFully},
    {CommandId::PartialCut, cutPartially},
    {CommandId::CutPaper, cutPaper},
    {CommandId::FeedAndCut, feedAndCut},
    {CommandId::CutLater, feedAndCut},
    {CommandId::FeedCutReturn, feedAndCut},
    {CommandId::Pulse, pulse},
    {CommandId::RealTimePulse, pulseAtOnce},
    {CommandId::RealTimeClear, clearAtOnce},
    {CommandId::RealTimeBuzzer, beep},
    {CommandId::Buzzer, beep},
    {CommandId::Beeper, beep},
    {CommandId::EjectorPresent, moveTicket<Event::Present>},
    {CommandId::EjectorHold, moveTicket<Event::Present>},
    {CommandId::EjectorEject, moveTicket<Event::Eject>},
    {CommandId::EjectorRetract, moveTicket<Event::Retract>},
    {CommandId::EjectorStop, ignoreMechanics},
    {CommandId::EjectorTimer, ignoreMechanics},
    {CommandId::Initialize, reset},
    {CommandId::ResetPrinter, reset},
};

}  // namespace

HandlerRows mechanicsHandlers()
{
    return {std::begin(mechanicsRows), std::end(mechanicsRows)};
}

}  // namespace printerslib::drivers
