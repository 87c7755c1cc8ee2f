#pragma once

#include <QMap>
#include <QString>
#include <QVariant>
#include <QtGlobal>

#include "printerslib_export.h"

/// How the print service and its printer are doing, as the print service tells the rest of the
/// system. PrintServiceStateCorvidWrapper puts the record on the message bus.
///
/// A plain value; one object is used by one thread at a time. No operation fails, and no number is
/// checked: states that have no name here are kept as they are.
class PRINTERSLIB_EXPORT PrintServiceState
{
public:
    /// State of the service, named by what it means for printing. Any value from 4 on, 255
    /// excepted, is critical.
    enum EServiceState : quint16 {
        ServiceUnworkable = 0,
        ServiceWorkableFirst = 1,
        ServiceWorkableSecond = 2,
        ServiceWorkableThird = 3,
        ServiceCritical = 4,
        ServiceInvalid = 255,  ///< has not been set
    };

    /// State of the device, named by its weight. Up to DeviceWarning it can print.
    enum EDeviceState : quint16 {
        DeviceNormalFirst = 0,
        DeviceNormalSecond = 1,
        DeviceWarning = 2,
        DeviceCritical = 3,
        DeviceFatal = 4,
        DeviceInvalid = 255,  ///< has not been set
    };

    /// Neither state is set, there are no error codes and no message, and there is paper.
    PrintServiceState() = default;

    /// How the service is doing.
    EServiceState serviceState() const;
    void setServiceState(EServiceState serviceState);

    /// How the device is doing.
    EDeviceState deviceState() const;
    void setDeviceState(EDeviceState deviceState);

    /// The system's own error code; 0: none.
    unsigned int deviceErrorCode() const;
    void setDeviceErrorCode(unsigned int deviceErrorCode);

    /// The status code as the device gave it; its meaning depends on the model.
    unsigned int deviceNativeCode() const;
    void setDeviceNativeCode(unsigned int deviceNativeCode);

    /// The device's error in words, for the user; empty: none.
    QString deviceErrorMsg() const;
    /// Intended: the name of this setter; the print service is built against it. See
    /// tst_printservicestate, everyFieldReadsBackAndTakesPartInTheComparison.
    void setDeviceErorMsg(const QString &deviceErrorMsg);

    /// Whether there is paper.
    bool tapeAvailable() const;
    void setTapeAvailable(bool tapeAvailable);

    /// Compares all fields.
    bool operator==(const PrintServiceState &other) const;
    bool operator!=(const PrintServiceState &other) const;

    /// The map form, all six fields under their names: the states are ints, the codes 64-bit
    /// integers. It passes through JSON unchanged.
    QMap<QString, QVariant> toMap() const;
    /// Takes over the fields whose keys are in the map; the others keep their values. A state is
    /// read as an unsigned number and cut to 16 bits.
    void setMap(const QMap<QString, QVariant> &map);

private:
    EServiceState m_serviceState = ServiceInvalid;
    EDeviceState m_deviceState = DeviceInvalid;
    quint32 m_deviceErrorCode = 0;
    quint32 m_deviceNativeCode = 0;
    QString m_deviceErrorMsg;
    bool m_tapeAvailable = true;
};
