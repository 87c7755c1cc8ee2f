#pragma once

#include <QString>
#include <functional>

namespace printerslib::drivers {
class DeviceLock;
class PrinterAddress;
}  // namespace printerslib::drivers

namespace tool {

/// "2 jobs are in front"
QString jobsInFront(int ahead);
/// Tells on standard error how many jobs of others a printer's turn is waited behind.
void tellPlaceInQueue(const printerslib::drivers::PrinterAddress &address, int ahead);
/// Waits until no other program has the printer, and tells meanwhile how many are in front.
/// @param obstacle why it isn't waited for any longer, empty as long as it is; asked every now and
///                 then with the number of those in front
/// @return why it hasn't come to that; empty if the lock is held
QString waitForTurn(printerslib::drivers::DeviceLock &lock,
                    const printerslib::drivers::PrinterAddress &address,
                    const std::function<QString(int ahead)> &obstacle);

}  // namespace tool
