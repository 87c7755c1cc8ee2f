#include "hearth/rs232portsettings.h"

namespace hearth {

QString Rs232PortSettings::portName() const
{
    return m_portName;
}

void Rs232PortSettings::setPortName(const QString &portName)
{
    m_portName = portName;
}

int Rs232PortSettings::baudRate() const
{
    return m_baudRate;
}

void Rs232PortSettings::setBaudRate(const int &baudRate)
{
    m_baudRate = baudRate;
}

QSerialPort::Parity Rs232PortSettings::parity() const
{
    return m_parity;
}

void Rs232PortSettings::setParity(const QSerialPort::Parity &parity)
{
    m_parity = parity;
}

QSerialPort::DataBits Rs232PortSettings::dataBits() const
{
    return m_dataBits;
}

void Rs232PortSettings::setDataBits(const QSerialPort::DataBits &dataBits)
{
    m_dataBits = dataBits;
}

QSerialPort::StopBits Rs232PortSettings::stopBits() const
{
    return m_stopBits;
}

void Rs232PortSettings::setStopBits(const QSerialPort::StopBits &stopBits)
{
    m_stopBits = stopBits;
}

QSerialPort::FlowControl Rs232PortSettings::flowControl() const
{
    return m_flowControl;
}

void Rs232PortSettings::setFlowControl(const QSerialPort::FlowControl &flowControl)
{
    m_flowControl = flowControl;
}

bool Rs232PortSettings::operator==(const Rs232PortSettings &other) const
{
    return m_portName == other.m_portName && m_baudRate == other.m_baudRate &&
           m_parity == other.m_parity && m_dataBits == other.m_dataBits &&
           m_stopBits == other.m_stopBits && m_flowControl == other.m_flowControl;
}

bool Rs232PortSettings::operator!=(const Rs232PortSettings &other) const
{
    return !(*this == other);
}

}  // namespace hearth
