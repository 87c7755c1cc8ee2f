#pragma once

#include <QSerialPort>
#include <QString>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's record of a serial port: its name and line parameters.
///
/// The numbers mean what the QSerialPort enumerations mean; nothing is translated or checked, so a
/// record holds whatever a device or a configuration named. A default-constructed record names no
/// port and holds 9600 baud, 8 data bits, no parity, one stop bit, no flow control.
/// Plain value; any thread may use its own object.
class Q_DECL_EXPORT Rs232PortSettings
{
public:
    Rs232PortSettings() = default;

    /// Name of the port as QSerialPortInfo gives it, for example "ttyS0"; empty: none.
    QString portName() const;
    void setPortName(const QString &portName);

    /// Baud per second, in both directions.
    int baudRate() const;
    void setBaudRate(const int &baudRate);

    QSerialPort::Parity parity() const;
    void setParity(const QSerialPort::Parity &parity);

    QSerialPort::DataBits dataBits() const;
    void setDataBits(const QSerialPort::DataBits &dataBits);

    QSerialPort::StopBits stopBits() const;
    void setStopBits(const QSerialPort::StopBits &stopBits);

    QSerialPort::FlowControl flowControl() const;
    void setFlowControl(const QSerialPort::FlowControl &flowControl);

    /// Whether all six fields are equal.
    bool operator==(const Rs232PortSettings &other) const;
    bool operator!=(const Rs232PortSettings &other) const;

private:
    QString m_portName;
    int m_baudRate = QSerialPort::Baud9600;
    QSerialPort::Parity m_parity = QSerialPort::NoParity;
    QSerialPort::DataBits m_dataBits = QSerialPort::Data8;
    QSerialPort::StopBits m_stopBits = QSerialPort::OneStop;
    QSerialPort::FlowControl m_flowControl = QSerialPort::NoFlowControl;
};

}  // namespace hearth
