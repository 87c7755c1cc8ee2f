#pragma once

#include <QMetaType>
#include <QString>

#include "hearth/rs232portsettings.h"
#include "printerslib_export.h"

/// A receipt printer on a serial port: what PrintDeviceFinder found, or what it is to look for
/// again. A plain value, registered as a metatype; any thread may use its own object.
class PRINTERSLIB_EXPORT PrintDeviceInfo
{
public:
    /// Nothing identified.
    PrintDeviceInfo() = default;

    /// Whether a printer is named: a device type and an identifier.
    bool isValid() const;

    /// 0: nothing identified; 1: a serial text printer. Discovery writes no other value.
    unsigned int deviceType() const;
    void setDeviceType(unsigned int const &deviceType);

    /// The model's identifier, one of TextPrinterModels.
    QString deviceId() const;
    void setDeviceId(QString const &deviceId);

    /// Port name and line parameters with which the printer answered. In a result without a
    /// printer the port name alone has a meaning.
    hearth::Rs232PortSettings settings() const;
    void setSettings(hearth::Rs232PortSettings const &settings);

    /// Compares all fields.
    bool operator==(const PrintDeviceInfo &other) const;
    bool operator!=(const PrintDeviceInfo &other) const;

private:
    quint32 m_deviceType = 0;
    QString m_deviceId;
    hearth::Rs232PortSettings m_settings;
};

Q_DECLARE_METATYPE(PrintDeviceInfo)
