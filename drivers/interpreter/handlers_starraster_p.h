#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Prints the rows that came one by one, as one picture.
void flushRasterRows(Printer &printer);

}  // namespace printerslib::drivers
