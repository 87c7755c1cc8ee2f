#pragma once

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// The same document without the commands that open a drawer. Those that act at once stay where
/// they are data of another command.
EncodedDocument withDrawerShut(const EncodedDocument &document, const PrinterProfile &profile);
/// Whether it opens a drawer, and prints nothing.
bool opensDrawerAlone(const EncodedDocument &document, const PrinterProfile &profile);

}  // namespace printerslib::drivers
