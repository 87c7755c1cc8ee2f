#include "printdevicefinder/printdeviceinfo.h"

namespace {

// Registered by name when the library loads, so that queued connections carry the type.
const int metaTypeId = qRegisterMetaType<PrintDeviceInfo>("PrintDeviceInfo");

}  // namespace

bool PrintDeviceInfo::isValid() const
{
    return m_deviceType != 0 && !m_deviceId.isEmpty();
}

unsigned int PrintDeviceInfo::deviceType() const
{
    return m_deviceType;
}

void PrintDeviceInfo::setDeviceType(unsigned int const &deviceType)
{
    m_deviceType = deviceType;
}

QString PrintDeviceInfo::deviceId() const
{
    return m_deviceId;
}

void PrintDeviceInfo::setDeviceId(QString const &deviceId)
{
    m_deviceId = deviceId;
}

hearth::Rs232PortSettings PrintDeviceInfo::settings() const
{
    return m_settings;
}

void PrintDeviceInfo::setSettings(hearth::Rs232PortSettings const &settings)
{
    m_settings = settings;
}

bool PrintDeviceInfo::operator==(const PrintDeviceInfo &other) const
{
    return m_deviceType == other.m_deviceType && m_deviceId == other.m_deviceId &&
           m_settings == other.m_settings;
}

bool PrintDeviceInfo::operator!=(const PrintDeviceInfo &other) const
{
    return !(*this == other);
}
