#include "printdevicefinder/findertasks_p.h"

#include <QSerialPort>

#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/printershelper.h"
#include "printdevicefinder/searchprinters_p.h"

namespace {

constexpr unsigned int serialTextPrinter = 1;

PrintDeviceInfo nothingOn(const QString &portName)
{
    hearth::Rs232PortSettings settings;
    settings.setPortName(portName);
    PrintDeviceInfo result;
    result.setSettings(settings);
    return result;
}

PrintDeviceInfo scanned(PrintersHelper &helper, QString id, hearth::Rs232PortSettings settings,
                        const QString &portName)
{
    PrintDeviceInfo result;
    if (helper.scan(id, settings)) {
        result.setDeviceType(serialTextPrinter);
        result.setDeviceId(id);
    }
    settings.setPortName(portName);
    result.setSettings(settings);
    return result;
}

bool isUsable(const PrintDeviceInfo &record)
{
    return !record.deviceId().isEmpty() && !record.settings().portName().isEmpty() &&
           record.deviceType() == serialTextPrinter;
}

}  // namespace

PrintDeviceInfo findertasks::searchPort(const QSharedPointer<FinderLink> &link, int cancelCount,
                                        const QString &portName)
{
    const auto port = QSharedPointer<QSerialPort>::create(portName);
    port->open(QIODevice::ReadWrite);
    if (!port->isOpen())
        return nothingOn(portName);

    PrintersHelper helper(port);
    PrintersHelper *const stopped = &helper;
    const QMetaObject::Connection connection = link->onCancel(cancelCount, [port, stopped] {
        qCWarning(SEARCH_PRINTERS).nospace().noquote() << "STOP " << port->portName();
        stopped->requestStop();
    });
    PrintDeviceInfo result = scanned(helper, QString(), hearth::Rs232PortSettings(), portName);
    port->close();
    link->disconnect(connection);
    qCWarning(SEARCH_PRINTERS).nospace().noquote() << "STOPPED " << port->portName();
    return result;
}

PrintDeviceInfo findertasks::testDevice(const QSharedPointer<FinderLink> &link, int cancelCount,
                                        const PrintDeviceInfo &record)
{
    const QString portName = record.settings().portName();
    if (!isUsable(record))
        return nothingOn(portName);

    const auto port = QSharedPointer<CancellablePort>::create(portName);
    // Never disconnected: the port lives as long as the finder, and asking again does no harm.
    link->onCancel(cancelCount, [port] { port->requestClose(); });
    port->open(QIODevice::ReadWrite);
    if (!port->isOpen())
        return nothingOn(portName);

    PrintersHelper helper(port);
    PrintDeviceInfo result = scanned(helper, record.deviceId(), record.settings(), portName);
    port->close();
    return result;
}
