#pragma once

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/printerprofile.h"

/// What a shop's till prints.
namespace till {

/// Of the printer at all tills.
printerslib::drivers::PrinterProfile profile();

/// How many items the receipt of a number has: 1 to 40, few more often than many, the same at each
/// call.
int itemsOf(int number);

/// A receipt of so many items, with the cut behind it.
printerslib::drivers::EncodedDocument receiptOf(int items);

}  // namespace till
