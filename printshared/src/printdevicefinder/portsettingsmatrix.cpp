#include "printdevicefinder/portsettingsmatrix_p.h"

#include <QSerialPort>
#include <initializer_list>

namespace {

hearth::Rs232PortSettings entry(int baudRate, QSerialPort::Parity parity,
                                QSerialPort::FlowControl flowControl)
{
    hearth::Rs232PortSettings settings;
    settings.setBaudRate(baudRate);
    settings.setParity(parity);
    settings.setDataBits(QSerialPort::Data8);
    settings.setStopBits(QSerialPort::OneStop);
    settings.setFlowControl(flowControl);
    return settings;
}

QVector<hearth::Rs232PortSettings> matrix(
    std::initializer_list<int> baudRates,
    std::initializer_list<QSerialPort::FlowControl> flowControls)
{
    QVector<hearth::Rs232PortSettings> entries;
    for (const int baudRate : baudRates) {
        for (const auto parity :
             {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity}) {
            for (const auto flowControl : flowControls)
                entries.append(entry(baudRate, parity, flowControl));
        }
    }
    return entries;
}

}  // namespace

QVector<hearth::Rs232PortSettings> portsettingsmatrix::common()
{
    return matrix(
        {115200, 57600, 38400, 19200, 9600, 4800, 1200},
        {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl});
}

QVector<hearth::Rs232PortSettings> portsettingsmatrix::star()
{
    return matrix({38400, 19200, 9600, 4800},
                  {QSerialPort::NoFlowControl, QSerialPort::HardwareControl});
}
