#pragma once

#include <sys/types.h>

#include <QString>

#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/transporterror.h"
#include "transport/usbprinters_p.h"

namespace printerslib::drivers {
class PortUse;
}

/// What is wrong with a device, in words for people.
namespace printerslib::drivers::devicefault {

/// What is known of a device that couldn't be opened.
struct Circumstances
{
    QString path;
    int error = 0;  ///< of open(), as errno
    bool isThere = false;
    mode_t mode = 0;
    QString owner;
    QString group;
    QString holder;  ///< the process that holds it; empty if none is to be seen
    bool isHeldByCups = false;
    bool isTaken =
        false;  ///< whether a program has taken a USB printer away from the system's driver
};

/// Looks around behind an open() that failed.
Circumstances lookAt(const QString &path, int error, const DeviceRoots &roots);
TransportError ofOpening(const Circumstances &circumstances);

/// Of something that is no device to print on.
TransportError ofKind(const QString &path, mode_t mode);
/// Of a serial port that can't be used.
TransportError ofSerialPort(const QString &path, const PortUse &use);
/// Of a write that failed.
TransportError ofWriting(const QString &path, int error);
/// Of a device that has gone while it was open.
TransportError ofLoss(const QString &path);
/// Whether an error says that.
bool isLoss(int error);

/// The device file of a USB printer, or why there is none.
struct FoundUsb
{
    QString path;
    TransportError error;
};
FoundUsb findUsb(const PrinterAddress &address, const DeviceRoots &roots);

}  // namespace printerslib::drivers::devicefault
