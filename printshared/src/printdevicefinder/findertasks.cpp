#include "printdevicefinder/findertasks_p.h"

#include <QSerialPort>
#include <mutex>

#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/printershelper.h"
#include "printdevicefinder/searchprinters_p.h"

namespace {

constexpr unsigned int serialTextPrinter = 1;

/// The way from a cancel to the helper on a task's stack. A cancel may be under way on its thread
/// while the task ends, so the helper is taken off the line before it goes.
class StopSwitch
{
public:
    explicit StopSwitch(PrintersHelper *helper) : m_helper(helper) {}

    void stop()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_helper != nullptr)
            m_helper->requestStop();
    }

    void detach()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_helper = nullptr;
    }

private:
    std::mutex m_mutex;
    PrintersHelper *m_helper;
};

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
    const auto stopSwitch = QSharedPointer<StopSwitch>::create(&helper);
    const QMetaObject::Connection connection = link->onCancel(cancelCount, [port, stopSwitch] {
        qCWarning(SEARCH_PRINTERS).nospace().noquote() << "STOP " << port->portName();
        stopSwitch->stop();
    });
    PrintDeviceInfo result = scanned(helper, QString(), hearth::Rs232PortSettings(), portName);
    port->close();
    link->disconnect(connection);
    stopSwitch->detach();
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
