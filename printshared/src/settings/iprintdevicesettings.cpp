#include "settings/iprintdevicesettings.h"

#include <mutex>

namespace {

// Guards the pointer alone. Callers may hold the settings mutex, so nothing is called under it.
std::mutex pointerMutex;

}  // namespace

QSharedPointer<IPrintDeviceSettings> IPrintDeviceSettings::_printDeviceSettings;

IPrintDeviceSettings::~IPrintDeviceSettings() = default;

QSharedPointer<IPrintDeviceSettings> IPrintDeviceSettings::printDeviceSettings()
{
    const std::lock_guard<std::mutex> lock(pointerMutex);
    return _printDeviceSettings;
}

void IPrintDeviceSettings::setPrintDeviceSettings(
    const QSharedPointer<IPrintDeviceSettings> &settings)
{
    // The object that is replaced may die here, and its destructor may ask for the settings.
    QSharedPointer<IPrintDeviceSettings> replaced = settings;
    const std::lock_guard<std::mutex> lock(pointerMutex);
    _printDeviceSettings.swap(replaced);
}
