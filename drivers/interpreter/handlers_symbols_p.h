#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Prints the data that was stored, on lines of its own.
/// @param number GS ( k's cn
void printSymbol(Printer &printer, const StreamCommand &command, int number);

}  // namespace printerslib::drivers
