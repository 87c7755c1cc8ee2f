#pragma once

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers::drawncodes {

/// Whether printers that draw a symbology take this payload as data: what they don't take, they
/// print as text.
bool isTaken(const Paper::Code &code);

/// The data of a Code 128 with the marks of its code sets, as few as there have to be: digits in
/// pairs are one byte each in set C. Empty if it holds other bytes than those below 0x80.
QByteArray withCodeSets(const QByteArray &payload);

}  // namespace printerslib::drivers::drawncodes
