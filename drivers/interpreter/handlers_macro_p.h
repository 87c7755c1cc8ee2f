#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Keeps a command for the macro that is being defined. False if none is.
bool recordForMacro(Printer &printer, const StreamCommand &command);

}  // namespace printerslib::drivers
