#pragma once

#include <QString>
#include <QVector>

namespace printerslib::drivers {

/// Where the system shows its devices. Tests have folders of their own in their place.
struct DeviceRoots
{
    QString sys = QStringLiteral("/sys");
    QString dev = QStringLiteral("/dev");
    QString proc = QStringLiteral("/proc");
};

/// A printer interface of a USB device, with or without a device file.
struct UsbPrinter
{
    quint16 vendor = 0;
    quint16 product = 0;
    QString serialNumber;
    QString path;  ///< of the device file; empty if the kernel's driver doesn't serve it
    QString
        driver;  ///< of the interface, such as usblp, or usbfs if a program has it; may be empty
};

/// All that are plugged in, as sysfs shows them, in the order of their device files.
QVector<UsbPrinter> usbPrinters(const DeviceRoots &roots);

}  // namespace printerslib::drivers
