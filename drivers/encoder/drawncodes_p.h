#pragma once

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// Whether the printer draws a code by itself, of this payload and with this module; else it gets
/// the modules as dots. What printers don't take as data, they print as text.
bool isDrawnByPrinter(const PrinterProfile &profile, const Paper::Code &code);

namespace drawncodes {

/// The number of a QR code's correction level, from L on; L for one that isn't known.
int numberOfLevel(const Paper::Code &code);

/// What is sent of a payload, but for Star's mark of its end.
QByteArray dataOf(const Paper::Code &code, Dialect dialect);

/// The data of a Code 128 with the marks of its code sets, as few as there have to be: digits in
/// pairs are one byte each in set C. Empty if it holds other bytes than those below 0x80.
QByteArray withCodeSets(const QByteArray &payload);

}  // namespace drawncodes

}  // namespace printerslib::drivers
