#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Opens a drawer, for so many milliseconds on and off.
void addPulse(Printer &printer, int pin, int on, int off);
void beep(Printer &printer, const StreamCommand &command);

}  // namespace printerslib::drivers
