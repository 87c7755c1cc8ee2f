#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

using CommandHandler = void (*)(Printer &, const StreamCommand &);

struct HandlerRow
{
    CommandId id;
    CommandHandler handler;
};

/// What carries a command out; null if nothing does.
CommandHandler handlerOf(Dialect dialect, CommandId id);

/// Part of the table of handlers.
struct HandlerRows
{
    const HandlerRow *first = nullptr;
    const HandlerRow *last = nullptr;

    const HandlerRow *begin() const { return first; }
    const HandlerRow *end() const { return last; }
};

HandlerRows characterHandlers();
HandlerRows kanjiHandlers();
HandlerRows lineHandlers();
HandlerRows pageHandlers();
HandlerRows graphicsHandlers();
HandlerRows barcodeHandlers();
HandlerRows symbolHandlers();
HandlerRows mechanicsHandlers();
HandlerRows statusHandlers();
HandlerRows macroHandlers();
/// Only these know the commands of these dialects, or take others' operands otherwise.
HandlerRows starHandlers();
HandlerRows starRasterHandlers();
HandlerRows swecoinHandlers();

/// An operand that is on by its lowest bit.
bool isSwitchedOn(const StreamCommand &command);
/// An operand that is a number from 0 on, or the same as a digit; -1 for any other.
int choiceOf(const StreamCommand &command, int index, int count);

/// Sets a member of the state as the operand says.
template <auto member>
void switchState(Printer &printer, const StreamCommand &command)
{
    printer.state.*member = isSwitchedOn(command);
}

/// Sets a member of the state by a command without operands.
template <auto member, auto value>
void setState(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.*member = value;
}

}  // namespace printerslib::drivers
