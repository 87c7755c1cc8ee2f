#include "transport/usbprinters_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr qint64 greatestAttribute = 4096;  // bytes; the kernel's own bound
constexpr int baseOfUsbNumbers = 16;

QString attributeOf(const QString &folder, const char *name)
{
    QFile file(folder + QLatin1Char('/') + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(greatestAttribute)).trimmed();
}

/// Its device file, which the uevent of its class device names.
QString deviceFileOf(const QString &interface, const QString &dev)
{
    const QString folder = interface + QStringLiteral("/usbmisc");
    const QStringList entries = QDir(folder).entryList({QStringLiteral("lp*")}, QDir::Dirs);
    if (entries.isEmpty())
        return {};
    const QStringList lines =
        attributeOf(folder + QLatin1Char('/') + entries.first(), "uevent").split(QLatin1Char('\n'));
    const QString key = QStringLiteral("DEVNAME=");
    for (const QString &line : lines) {
        if (line.startsWith(key))
            return dev + QLatin1Char('/') + line.mid(key.size());
    }
    return dev + QStringLiteral("/usb/") + entries.first();
}

}  // namespace

// Interfaces are named after their device: "1-2:1.0" is the interface 0 of the device "1-2".
QVector<UsbPrinter> usbPrinters(const DeviceRoots &roots)
{
    QVector<UsbPrinter> printers;
    const QDir devices(roots.sys + QStringLiteral("/bus/usb/devices"));
    const QStringList interfaces =
        devices.entryList({QStringLiteral("*:*")}, QDir::Dirs, QDir::Name);
    for (const QString &name : interfaces) {
        const QString interface = devices.filePath(name);
        if (attributeOf(interface, "bInterfaceClass") != QLatin1String("07"))
            continue;
        const QString device = devices.filePath(name.section(QLatin1Char(':'), 0, 0));
        UsbPrinter printer;
        printer.vendor = attributeOf(device, "idVendor").toUShort(nullptr, baseOfUsbNumbers);
        printer.product = attributeOf(device, "idProduct").toUShort(nullptr, baseOfUsbNumbers);
        printer.serialNumber = attributeOf(device, "serial");
        printer.path = deviceFileOf(interface, roots.dev);
        printer.driver =
            QFileInfo(QFile::symLinkTarget(interface + QStringLiteral("/driver"))).fileName();
        printers.append(printer);
    }
    std::stable_sort(
        printers.begin(), printers.end(),
        [](const UsbPrinter &one, const UsbPrinter &other) { return one.path < other.path; });
    return printers;
}

}  // namespace printerslib::drivers
