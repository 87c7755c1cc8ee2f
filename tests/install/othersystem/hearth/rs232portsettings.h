#pragma once

#include <QSerialPort>
#include <QString>

namespace hearth {

/// Fields in another order than the stand-in's.
class Rs232PortSettings
{
public:
    int baudRate() const { return m_baudRate; }
    void setBaudRate(int baudRate) { m_baudRate = baudRate; }
    QSerialPort::Parity parity() const { return m_parity; }
    void setParity(QSerialPort::Parity parity) { m_parity = parity; }
    QSerialPort::DataBits dataBits() const { return m_dataBits; }
    void setDataBits(QSerialPort::DataBits dataBits) { m_dataBits = dataBits; }
    QSerialPort::StopBits stopBits() const { return m_stopBits; }
    void setStopBits(QSerialPort::StopBits stopBits) { m_stopBits = stopBits; }
    QSerialPort::FlowControl flowControl() const { return m_flowControl; }
    void setFlowControl(QSerialPort::FlowControl flowControl) { m_flowControl = flowControl; }
    QString portName() const { return m_portName; }
    void setPortName(const QString &portName) { m_portName = portName; }

    bool operator==(const Rs232PortSettings &other) const
    {
        return m_baudRate == other.m_baudRate && m_portName == other.m_portName;
    }
    bool operator!=(const Rs232PortSettings &other) const { return !(*this == other); }

private:
    int m_baudRate = QSerialPort::Baud2400;
    QSerialPort::FlowControl m_flowControl = QSerialPort::NoFlowControl;
    QSerialPort::Parity m_parity = QSerialPort::NoParity;
    QSerialPort::DataBits m_dataBits = QSerialPort::Data8;
    QSerialPort::StopBits m_stopBits = QSerialPort::OneStop;
    QString m_portName;
};

}  // namespace hearth
