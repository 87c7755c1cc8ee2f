#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

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

}  // namespace printerslib::drivers
