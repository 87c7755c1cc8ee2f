#include "transport/serialtransport_p.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "transport/devicefault_p.h"
#include "transport/portuse_p.h"

namespace printerslib::drivers {

namespace {

constexpr qint64 greatestInput = 64LL * 1024;  // bytes of the printer that wait to be read
constexpr int bitsPerCharacter = 10;
constexpr int windowsPerSecond = 10;
constexpr int smallestWindow = 64;
constexpr int greatestWindow = 4096;
// A printer with a buffer of 45 bytes raises its hand when 16 are free.
constexpr int dtrWindow = 16;
constexpr int millisecondsInSecond = 1000;
constexpr int longestDtrStep = 10;  // milliseconds

QSerialPort::Parity portParity(PrinterAddress::Parity parity)
{
    switch (parity) {
        case PrinterAddress::Parity::Even:
            return QSerialPort::EvenParity;
        case PrinterAddress::Parity::Odd:
            return QSerialPort::OddParity;
        case PrinterAddress::Parity::Space:
            return QSerialPort::SpaceParity;
        case PrinterAddress::Parity::Mark:
            return QSerialPort::MarkParity;
        case PrinterAddress::Parity::None:
            break;
    }
    return QSerialPort::NoParity;
}

QSerialPort::StopBits portStopBits(PrinterAddress::StopBits wanted)
{
    switch (wanted) {
        case PrinterAddress::StopBits::OneAndHalf:
            return QSerialPort::OneAndHalfStop;
        case PrinterAddress::StopBits::Two:
            return QSerialPort::TwoStop;
        case PrinterAddress::StopBits::One:
            break;
    }
    return QSerialPort::OneStop;
}

QSerialPort::FlowControl portFlow(PrinterAddress::Flow flow)
{
    switch (flow) {
        case PrinterAddress::Flow::Hardware:
            return QSerialPort::HardwareControl;
        case PrinterAddress::Flow::Software:
            return QSerialPort::SoftwareControl;
        case PrinterAddress::Flow::None:
        case PrinterAddress::Flow::Dtr:
            break;
    }
    return QSerialPort::NoFlowControl;
}

int descriptorOf(const QSerialPort &port)
{
    return static_cast<int>(port.handle());
}

/// QSerialPort sets IXANY with XON/XOFF: any byte of the printer, such as a status, would then
/// resume a line that it has stopped.
void clearAnyResumes(const QSerialPort &port)
{
    termios line = {};
    if (::tcgetattr(descriptorOf(port), &line) != 0 || (line.c_iflag & IXANY) == 0)
        return;
    line.c_iflag &= ~static_cast<tcflag_t>(IXANY);
    ::tcsetattr(descriptorOf(port), TCSANOW, &line);
}

}  // namespace

SerialTransport::SerialTransport(const PrinterAddress &address, const TransportOptions &options)
    : QueuedTransport(address, options), m_flow(address.line().flow)
{}

SerialTransport::~SerialTransport()
{
    SerialTransport::shut();
}

void SerialTransport::beginOpening()
{
    // As long as this lives, the port isn't closed in between, on which some printers start anew.
    const PortUse use(address().path());
    if (!use.isUsable()) {
        hasNotOpened(devicefault::ofSerialPort(address().path(), use));
        return;
    }
    m_port = std::make_unique<QSerialPort>(address().path());
    m_port->setReadBufferSize(greatestInput);
    applyLine(address().line());
    if (!m_port->open(QIODevice::ReadWrite)) {
        const QString words = m_port->errorString();
        m_port.reset();
        hasNotOpened({TransportError::Kind::Failed,
                      QStringLiteral("%1 can't be opened: %2").arg(address().path(), words)});
        return;
    }
    clearAnyResumes(*m_port);
    // What somebody before asked for.
    ::tcflush(descriptorOf(*m_port), TCIFLUSH);
    watch();
    hasOpened();
}

void SerialTransport::applyLine(const PrinterAddress::Line &line)
{
    m_flow = line.flow;
    m_port->setBaudRate(line.baudRate);
    m_port->setDataBits(static_cast<QSerialPort::DataBits>(line.dataBits));
    m_port->setParity(portParity(line.parity));
    m_port->setStopBits(portStopBits(line.stopBits));
    m_port->setFlowControl(portFlow(line.flow));
}

bool SerialTransport::setFlow(PrinterAddress::Flow flow)
{
    if (!m_port || !m_port->setFlowControl(portFlow(flow)))
        return false;
    clearAnyResumes(*m_port);
    m_flow = flow;
    return true;
}

void SerialTransport::watch()
{
    QSerialPort *const port = m_port.get();
    connect(port, &QSerialPort::readyRead, this, &SerialTransport::read, Qt::QueuedConnection);
    connect(
        port, &QSerialPort::errorOccurred, this, [this] { lookAtError(); }, Qt::QueuedConnection);
}

// The system's own close waits for a line that is held up, as long as half a minute.
void SerialTransport::shut()
{
    if (!m_port)
        return;
    dropUnderWay();
    m_port->close();
    m_port.reset();
}

void SerialTransport::read()
{
    if (m_port && m_port->bytesAvailable() > 0)
        hasReceived(m_port->readAll());
}

// An error may be an old one's, or that of a pin that the line hasn't got.
void SerialTransport::lookAtError()
{
    if (m_port && hasGone() && hasReceived(m_port->readAll()))
        hasBroken(lossOf());
}

bool SerialTransport::hasGone() const
{
    pollfd line{descriptorOf(*m_port), 0, 0};
    return m_port->error() == QSerialPort::ResourceError ||
           (::poll(&line, 1, 0) == 1 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0);
}

TransportError SerialTransport::lossOf() const
{
    return devicefault::ofLoss(address().path());
}

bool SerialTransport::isDataSetReady(QSerialPort &port)
{
    return port.pinoutSignals().testFlag(QSerialPort::DataSetReadySignal);
}

/// How much the system may have at once: what the line takes a tenth of a second for, so that
/// little is under way when a job is stopped, and the line is never idle.
qint64 SerialTransport::window()
{
    if (m_flow == PrinterAddress::Flow::Dtr)
        return isDataSetReady(*m_port) ? dtrWindow : 0;
    return std::clamp(address().line().baudRate / bitsPerCharacter / windowsPerSecond,
                      smallestWindow, greatestWindow);
}

// Past QSerialPort's own buffer, so that what the system has taken is known to the byte.
qint64 SerialTransport::hand(const char *bytes, qint64 size, TransportError &fault)
{
    const bool isTooSoon = m_flow == PrinterAddress::Flow::Dtr && m_sincePortion.isValid() &&
                           m_sincePortion.elapsed() < lookEvery();
    const qint64 count = isTooSoon ? 0 : std::min(size, window() - underWay());
    if (count <= 0)
        return 0;
    m_sincePortion.start();
    const ssize_t taken = ::write(descriptorOf(*m_port), bytes, static_cast<size_t>(count));
    if (taken >= 0 || errno == EAGAIN || errno == EINTR)
        return std::max<qint64>(0, taken);
    fault = devicefault::ofWriting(address().path(), errno);
    return -1;
}

qint64 SerialTransport::underWay() const
{
    int queued = 0;
    // Of a line that has gone nobody knows.
    if (::ioctl(descriptorOf(*m_port), TIOCOUTQ, &queued) != 0 && devicefault::isLoss(errno))
        return unknown;
    return queued;
}

void SerialTransport::dropUnderWay()
{
    // A pseudo terminal would throw away what counts as taken.
    if (underWay() > 0)
        ::tcflush(descriptorOf(*m_port), TCOFLUSH);
}

// With DTR, about as long as half of what the system may have takes on the line.
int SerialTransport::lookEvery() const
{
    if (m_flow != PrinterAddress::Flow::Dtr)
        return QueuedTransport::lookEvery();
    const int halfWindow =
        dtrWindow * bitsPerCharacter * millisecondsInSecond / 2 / address().line().baudRate;
    return std::clamp(halfWindow, 1, longestDtrStep);
}

QString SerialTransport::whyStuck() const
{
    switch (m_flow) {
        case PrinterAddress::Flow::Hardware:
            return QStringLiteral(
                "its CTS is down: it is off or out of paper, its cover is open, or "
                "the cable lacks that wire");
        case PrinterAddress::Flow::Dtr:
            return QStringLiteral(
                "our DSR is down: it is off or out of paper, its cover is open, or "
                "the cable lacks that wire");
        case PrinterAddress::Flow::Software:
            return QStringLiteral("it has sent XOFF: it is out of paper, or its cover is open");
        case PrinterAddress::Flow::None:
            break;
    }
    return QStringLiteral("the line itself is stuck");
}

}  // namespace printerslib::drivers
