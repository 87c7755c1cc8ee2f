#include "printdevicefinder/outputdrain_p.h"

#include <sys/ioctl.h>

#include <QThread>
#include <algorithm>

namespace {

constexpr qint64 spareMilliseconds = 200;
constexpr qint64 adapterCharacters = 128;
constexpr qint64 lookEveryMilliseconds = 5;
constexpr qint64 millisecondsPerSecond = 1000;
// A record may name any baud rate, on which closing would take a quarter of an hour.
constexpr qint64 slowestBaudRate = 300;

int bitsPerCharacter(const QSerialPort &port)
{
    const int startBit = 1;
    const int parityBit = port.parity() == QSerialPort::NoParity ? 0 : 1;
    const int stopBits = port.stopBits() == QSerialPort::OneStop ? 1 : 2;
    return startBit + port.dataBits() + parityBit + stopBits;
}

std::unique_ptr<PortOutput> serialPortOutput(QSerialPort &port)
{
    return std::make_unique<SerialPortOutput>(port);
}

/// The part of the time that a wait may take, until the end.
int stepUntil(qint64 end, const PortOutput &output)
{
    return static_cast<int>(std::clamp<qint64>(end - output.now(), 0, lookEveryMilliseconds));
}

/// Until the driver's queue is empty; false if that isn't so in time.
bool emptyQueues(PortOutput &output, qint64 end)
{
    while (output.unwritten() > 0) {
        const int step = stepUntil(end, output);
        if (step == 0 || (!output.handOver(step) && !output.pause(step)))
            return false;
    }
    while (output.queued() > 0) {
        const int step = stepUntil(end, output);
        if (step == 0 || !output.pause(step))
            return false;
    }
    return true;
}

}  // namespace

discovery::OutputOf discovery::outputOf = serialPortOutput;

SerialPortOutput::SerialPortOutput(QSerialPort &port) : m_port(port)
{
    m_clock.start();
}

qint64 SerialPortOutput::millisecondsFor(qint64 characters) const
{
    const qint64 baudRate = std::max<qint64>(slowestBaudRate, m_port.baudRate(QSerialPort::Output));
    return (characters * bitsPerCharacter(m_port) * millisecondsPerSecond + baudRate - 1) /
           baudRate;
}

qint64 SerialPortOutput::unwritten() const
{
    return m_port.bytesToWrite();
}

bool SerialPortOutput::handOver(int milliseconds)
{
    return m_port.waitForBytesWritten(milliseconds);
}

qint64 SerialPortOutput::queued() const
{
    int count = 0;
    return ::ioctl(static_cast<int>(m_port.handle()), TIOCOUTQ, &count) == 0 ? count : 0;
}

bool SerialPortOutput::pause(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    return true;
}

qint64 SerialPortOutput::now() const
{
    return m_clock.elapsed();
}

void SerialPortOutput::drop()
{
    m_port.clear(QSerialPort::Output);
}

void SerialPortOutput::close()
{
    m_port.close();
}

bool discovery::drain(PortOutput &output)
{
    const qint64 ownTime = output.millisecondsFor(output.unwritten() + output.queued());
    if (!emptyQueues(output, output.now() + ownTime + spareMilliseconds))
        return false;
    return output.pause(static_cast<int>(output.millisecondsFor(adapterCharacters)));
}

void discovery::closePort(PortOutput &output, bool isPrinter)
{
    if (!isPrinter || !drain(output))
        output.drop();
    output.close();
}
