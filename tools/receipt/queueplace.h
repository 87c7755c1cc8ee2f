#pragma once

#include <QString>

namespace printerslib::drivers {
class PrinterAddress;
}

namespace tool {

/// "2 jobs are in front"
QString jobsInFront(int ahead);
/// Tells on standard error how many jobs of others a printer's turn is waited behind.
void tellPlaceInQueue(const printerslib::drivers::PrinterAddress &address, int ahead);

}  // namespace tool
