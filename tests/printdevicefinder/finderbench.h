#pragma once

#include <QtTest>
#include <memory>

#include "printdevicefinder/printdevicefinder.h"
#include "printerbench.h"

/// Records of printers to be confirmed, and a finder that is watched.
namespace finderbench {

inline constexpr int searchMilliseconds = 60000;

inline hearth::Rs232PortSettings lineOf(const QString &portName, int baudRate)
{
    hearth::Rs232PortSettings settings;
    settings.setPortName(portName);
    settings.setBaudRate(baudRate);
    return settings;
}

inline PrintDeviceInfo record(const QString &portName, const QString &id = "CUSTOM_VKP_80",
                              int baudRate = 115200, unsigned type = 1)
{
    PrintDeviceInfo info;
    info.setDeviceType(type);
    info.setDeviceId(id);
    info.setSettings(lineOf(portName, baudRate));
    return info;
}

/// A finder with all its signals written down in the order in which they come.
class ObservedFinder
{
public:
    ObservedFinder() : finder(new PrintDeviceFinder(nullptr))
    {
        QObject::connect(finder.get(), &PrintDeviceFinder::deviceFinded,
                         [this](const PrintDeviceInfo &info) {
                             found.append(info);
                             signalNames.append("deviceFinded " + info.deviceId());
                         });
        QObject::connect(finder.get(), &PrintDeviceFinder::noDevices,
                         [this](const QString &err) { signalNames.append("noDevices " + err); });
        QObject::connect(finder.get(), &PrintDeviceFinder::finished,
                         [this] { signalNames.append("finished"); });
        QObject::connect(finder.get(), &PrintDeviceFinder::needCancel,
                         [this] { signalNames.append("needCancel"); });
    }

    /// Runs the event loop until this many "finished" have come, and then until the tasks are over
    /// and nothing is left to happen.
    bool waitForFinished(int count = 1)
    {
        const bool came = QTest::qWaitFor(
            [this, count] { return signalNames.count("finished") >= count; }, searchMilliseconds);
        settle();
        return came;
    }

    static void settle()
    {
        QThreadPool::globalInstance()->waitForDone();
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    QStringList signalNames;
    QList<PrintDeviceInfo> found;
    // The last one, as it signals when it dies.
    std::unique_ptr<PrintDeviceFinder> finder;
};

}  // namespace finderbench
