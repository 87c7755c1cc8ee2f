#include "transport/devicefault_p.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <cerrno>

#include "transport/deviceholder_p.h"
#include "transport/portuse_p.h"

namespace printerslib::drivers {

using namespace devicefault;
using Fault = TransportError::Kind;

namespace {

constexpr mode_t groupReadsAndWrites = S_IRGRP | S_IWGRP;
constexpr char driverOfPrograms[] = "usbfs";  // what an interface has that a program took

QString ruleFile()
{
    return QStringLiteral("70-printerslib.rules");
}

TransportError notThere(const Circumstances &device)
{
    if (device.error == ENXIO)
        return {Fault::NotFound, QStringLiteral("nobody reads from %1").arg(device.path)};
    return {
        Fault::NotFound,
        QStringLiteral("there is no %1: the printer is off, its cable is out, or it has another "
                       "name now")
            .arg(device.path)};
}

TransportError notPermitted(const Circumstances &device)
{
    if ((device.mode & groupReadsAndWrites) == groupReadsAndWrites &&
        device.group != QLatin1String("root"))
        return {
            Fault::NotPermitted,
            QStringLiteral("%1 is not permitted: members of the group \"%2\" may use it; \"adduser "
                           "USER %2\" adds a user, who then logs in anew")
                .arg(device.path, device.group)};
    return {Fault::NotPermitted,
            QStringLiteral("%1 is not permitted: user \"%2\" may use it; the udev rule %3 of this "
                           "package gives printers to the group \"lp\"")
                .arg(device.path, device.owner, ruleFile())};
}

TransportError held(const Circumstances &device)
{
    if (device.isHeldByCups)
        return {Fault::HeldByCups,
                QStringLiteral("CUPS holds %1: it prints there now; wait until it has, or take the "
                               "printer out of CUPS (\"lpstat -v\" tells its queue)")
                    .arg(device.path)};
    return {Fault::Busy,
            QStringLiteral("%1 is held by %2")
                .arg(device.path,
                     device.holder.isEmpty() ? QStringLiteral("another process") : device.holder)};
}

/// Whether a program has a USB printer, whose device file is away then.
bool hasTakenPrinter(const DeviceRoots &roots)
{
    const QVector<UsbPrinter> printers = usbPrinters(roots);
    return std::any_of(printers.begin(), printers.end(), [](const UsbPrinter &printer) {
        return printer.driver == QLatin1String(driverOfPrograms);
    });
}

TransportError noDeviceFile(const PrinterAddress &address, const UsbPrinter &printer,
                            const DeviceRoots &roots)
{
    Circumstances device;
    device.path = address.toString();
    if (printer.driver == QLatin1String(driverOfPrograms)) {
        device.isHeldByCups =
            deviceholder::isHeldByCups(roots.dev + QStringLiteral("/usb/lp"), roots.proc);
        return held(device);
    }
    return {
        Fault::NotFound,
        QStringLiteral("%1 is plugged in, but has no device file: the system's driver \"usblp\" "
                       "doesn't serve it; \"modprobe usblp\" loads it")
            .arg(device.path)};
}

}  // namespace

Circumstances devicefault::lookAt(const QString &path, int error, const DeviceRoots &roots)
{
    Circumstances device;
    device.path = path;
    device.error = error;
    const QString canonicalPath = QFileInfo(path).canonicalFilePath();
    struct stat status = {};
    device.isThere = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    if (device.isThere) {
        device.mode = status.st_mode;
        device.owner = deviceholder::userName(status.st_uid);
        device.group = deviceholder::groupName(status.st_gid);
    }
    if (error == EBUSY) {
        const qint64 holder = deviceholder::processHolding(canonicalPath);
        device.holder = holder == 0 ? QString() : deviceholder::describedProcess(holder);
        device.isHeldByCups = deviceholder::isHeldByCups(canonicalPath, roots.proc);
    } else if (!device.isThere && path.startsWith(roots.dev + QStringLiteral("/usb/lp"))) {
        device.isTaken = hasTakenPrinter(roots);
        device.isHeldByCups = device.isTaken && deviceholder::isHeldByCups(path, roots.proc);
    }
    return device;
}

TransportError devicefault::ofOpening(const Circumstances &device)
{
    if (device.isTaken)
        return held(device);
    switch (device.error) {
        case ENOENT:
        case ENODEV:
        case ENXIO:
        case ENOTDIR:
            return notThere(device);
        case EACCES:
        case EPERM:
            return notPermitted(device);
        case EBUSY:
            return held(device);
        default:
            return {Fault::Failed, QStringLiteral("%1 can't be opened: %2")
                                       .arg(device.path, qt_error_string(device.error))};
    }
}

TransportError devicefault::ofKind(const QString &path, mode_t mode)
{
    QString what = QStringLiteral("a socket");
    if (S_ISREG(mode))
        what = QStringLiteral("a file, which is written file:%1").arg(path);
    else if (S_ISDIR(mode))
        what = QStringLiteral("a folder");
    else if (S_ISBLK(mode))
        what = QStringLiteral("a disk");
    return {Fault::BadAddress, QStringLiteral("%1 is no printer, but %2").arg(path, what)};
}

TransportError devicefault::ofSerialPort(const QString &path, const PortUse &use)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return ofOpening(lookAt(path, errno, {}));
    if (!S_ISCHR(status.st_mode))
        return ofKind(path, status.st_mode);
    if (::access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0)
        return ofOpening(lookAt(path, errno, {}));
    const QString canonicalPath = QFileInfo(path).canonicalFilePath();
    if (deviceholder::isHeldByCups(canonicalPath, DeviceRoots().proc)) {
        Circumstances device;
        device.path = path;
        device.isHeldByCups = true;
        return held(device);
    }
    return {use.isSerialPort() ? Fault::Busy : Fault::BadAddress, use.reason()};
}

bool devicefault::isLoss(int error)
{
    return error == EIO || error == ENODEV || error == ENXIO || error == EPIPE;
}

TransportError devicefault::ofLoss(const QString &path)
{
    return {Fault::Lost, QStringLiteral("%1 has gone: the printer was switched off, or its cable "
                                        "pulled out")
                             .arg(path)};
}

TransportError devicefault::ofWriting(const QString &path, int error)
{
    if (isLoss(error))
        return ofLoss(path);
    return {Fault::Failed,
            QStringLiteral("%1 can't be written to: %2").arg(path, qt_error_string(error))};
}

FoundUsb devicefault::findUsb(const PrinterAddress &address, const DeviceRoots &roots)
{
    QVector<UsbPrinter> printers = usbPrinters(roots);
    QStringList serialNumbers;
    const auto isAnother = [&address](const UsbPrinter &printer) {
        return printer.vendor != address.vendor() || printer.product != address.product() ||
               (!address.serialNumber().isEmpty() &&
                printer.serialNumber != address.serialNumber());
    };
    printers.erase(std::remove_if(printers.begin(), printers.end(), isAnother), printers.end());
    for (const UsbPrinter &printer : qAsConst(printers))
        serialNumbers.append(printer.serialNumber);
    if (printers.isEmpty())
        return {
            {},
            {Fault::NotFound, QStringLiteral("there is no USB printer %1: it is off, or its cable "
                                             "is out")
                                  .arg(address.toString())}};
    if (printers.size() > 1)
        return {{},
                {Fault::BadAddress,
                 QStringLiteral("%1 printers are %2: add one of their serial numbers to the "
                                "address: %3")
                     .arg(printers.size())
                     .arg(address.toString(), serialNumbers.join(QStringLiteral(", ")))}};
    const UsbPrinter &printer = printers.constFirst();
    if (printer.path.isEmpty())
        return {{}, noDeviceFile(address, printer, roots)};
    return {printer.path, {}};
}

}  // namespace printerslib::drivers
