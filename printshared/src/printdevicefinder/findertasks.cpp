#include "printdevicefinder/findertasks_p.h"

#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/outputdrain_p.h"
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

/// Looks for the printer and closes the port. A port whose device went while the last probe waited
/// for silence is none with a printer.
PrintDeviceInfo scanned(CancellablePort &port, PrintersHelper &helper, QString id,
                        hearth::Rs232PortSettings settings, const QString &portName)
{
    PrintDeviceInfo result;
    const bool isPrinter = helper.scan(id, settings) && helper.portIsValid();
    if (isPrinter) {
        result.setDeviceType(serialTextPrinter);
        result.setDeviceId(id);
    }
    settings.setPortName(portName);
    result.setSettings(settings);
    if (port.isOpen())
        discovery::closePort(*discovery::outputOf(port), isPrinter);
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
    const auto port = QSharedPointer<CancellablePort>::create(portName);
    port->open(QIODevice::ReadWrite);
    if (!port->isOpen())
        return nothingOn(portName);

    PrintersHelper helper(port);
    PrintersHelper *const stopped = &helper;
    const QMetaObject::Connection connection = link->onCancel(cancelCount, [port, stopped] {
        qCWarning(SEARCH_PRINTERS).nospace().noquote() << "STOP " << port->portName();
        stopped->requestStop();
    });
    PrintDeviceInfo result =
        scanned(*port, helper, QString(), hearth::Rs232PortSettings(), portName);
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
    return scanned(*port, helper, record.deviceId(), record.settings(), portName);
}
