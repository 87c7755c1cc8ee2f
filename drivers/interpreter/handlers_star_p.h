#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Opens the drawer at a pin. The stream sets the pulse of the first one, at pin 2, alone.
void openStarDrawer(Printer &printer, int pin);

}  // namespace printerslib::drivers
