#pragma once

#include "interpreter/printer_p.h"

namespace printerslib::drivers {

/// Prints the page of page mode, which stays as it is.
void printPage(Printer &printer);
void leavePageMode(Printer &printer);

}  // namespace printerslib::drivers
