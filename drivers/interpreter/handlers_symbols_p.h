#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// What GS ( k's cn stands for.
Paper::Symbology symbologyOfFamily(int number);
/// Prints the data that was stored, on lines of its own.
/// @param symbology unless the stream chose one
void printSymbol(Printer &printer, const StreamCommand &command, const SymbolState &symbol,
                 Paper::Symbology symbology);

}  // namespace printerslib::drivers
