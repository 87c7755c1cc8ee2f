#include "virtualprinter.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <utility>
#include <vector>

namespace {

constexpr int threadPollMilliseconds = 20;
constexpr int floodPollMilliseconds = 1;
constexpr int garbageAtMost = 24;
constexpr int floodBlock = 512;
constexpr std::size_t mostLocked = 64;
// The dialogue of a whole search is a few hundred exchanges; a flood must not fill the memory.
constexpr int exchangesKept = 10000;

struct SpeedRow
{
    speed_t speed;
    int baudRate;
};

constexpr SpeedRow speeds[] = {
    {B1200, 1200},   {B2400, 2400},   {B4800, 4800},   {B9600, 9600},
    {B19200, 19200}, {B38400, 38400}, {B57600, 57600}, {B115200, 115200},
};

int baudRateOf(speed_t speed)
{
    const auto *const row = std::find_if(std::begin(speeds), std::end(speeds),
                                         [speed](const auto &r) { return r.speed == speed; });
    return row == std::end(speeds) ? 0 : row->baudRate;
}

QSerialPort::FlowControl flowControlOf(const termios &line)
{
    if ((line.c_cflag & CRTSCTS) != 0)
        return QSerialPort::HardwareControl;
    if ((line.c_iflag & IXON) != 0)
        return QSerialPort::SoftwareControl;
    return QSerialPort::NoFlowControl;
}

QLatin1String flowControlName(QSerialPort::FlowControl flowControl)
{
    switch (flowControl) {
        case QSerialPort::HardwareControl:
            return QLatin1String("hardware");
        case QSerialPort::SoftwareControl:
            return QLatin1String("software");
        default:
            return QLatin1String("none");
    }
}

bool waitForInput(int descriptor, int milliseconds)
{
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, milliseconds) == 1 && (waiting.revents & POLLIN) != 0;
}

/// QSerialPort closes a port before it unlocks it: another program that lets go of the last
/// terminal of this name may still have its lock.
bool isLocked(const QString &path)
{
    QSerialPort port(path);
    return !path.isEmpty() && !port.open(QIODevice::ReadWrite) &&
           port.error() == QSerialPort::PermissionError;
}

VirtualModel modelOf(const VirtualPrinterOptions &options)
{
    return virtualModel(options.model).value_or(VirtualModel());
}

}  // namespace

QString VirtualExchange::heading() const
{
    if (!line.isEmpty())
        return line + QLatin1String(fromPrinter ? " >" : " <");
    return QStringLiteral("%1 %2 %3")
        .arg(baudRate)
        .arg(flowControlName(flowControl), QLatin1String(fromPrinter ? ">" : "<"));
}

QString VirtualExchange::toString() const
{
    return heading() + QLatin1Char(' ') + QString::fromLatin1(bytes.toHex(' ').toUpper());
}

VirtualPrinter::VirtualPrinter(const VirtualPrinterOptions &options)
    : VirtualPrinter(modelOf(options), options)
{}

VirtualPrinter::VirtualPrinter(const VirtualModel &model, const VirtualPrinterOptions &options)
    : m_model(model), m_options(options), m_random(options.seed)
{
    if (options.baudRate != 0)
        m_model.baudRate = options.baudRate;
    m_model.flowControl = options.flowControl.value_or(m_model.flowControl);
    if (!m_model.id.isEmpty())
        openTerminal();
}

VirtualPrinter::~VirtualPrinter()
{
    stop();
    closeTerminal();
}

void VirtualPrinter::openTerminal()
{
    // Those locked keep their names until another is found.
    std::vector<std::array<int, 2>> locked;
    QString path = openAnyTerminal();
    while (isLocked(path) && locked.size() < mostLocked) {
        locked.push_back({std::exchange(m_slave, -1), std::exchange(m_master, -1)});
        path = openAnyTerminal();
    }
    for (const std::array<int, 2> &descriptors : locked)
        std::for_each(descriptors.begin(), descriptors.end(), ::close);
    if (path.isEmpty())
        closeTerminal();
    m_path = path;
}

/// A raw one. Its path is empty if there is none to be had.
QString VirtualPrinter::openAnyTerminal()
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char path[64] = {};
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, path, sizeof path) != 0)
        return {};
    m_slave = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line{};
    if (m_slave < 0 || ::tcgetattr(m_slave, &line) != 0)
        return {};
    // A fresh terminal echoes and edits lines; a serial line does neither.
    ::cfmakeraw(&line);
    // A pseudo terminal has no PARENB, and glibc reports a change of that bit alone as failed.
    // With PARODD set there is another bit to change.
    line.c_cflag |= PARODD;
    ::tcsetattr(m_slave, TCSANOW, &line);
    return QString::fromLocal8Bit(path);
}

void VirtualPrinter::closeTerminal()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    for (int *const descriptor : {&m_slave, &m_master}) {
        if (*descriptor >= 0)
            ::close(*descriptor);
        *descriptor = -1;
    }
}

bool VirtualPrinter::isValid() const
{
    return !m_path.isEmpty();
}

QString VirtualPrinter::portPath() const
{
    return m_path;
}

QString VirtualPrinter::portName() const
{
    return m_path.mid(QStringLiteral("/dev/").size());
}

void VirtualPrinter::setObserver(std::function<void(const VirtualExchange &)> observer)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_observer = std::move(observer);
}

void VirtualPrinter::setAnswerer(std::function<QByteArray(const QByteArray &)> answerer)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_answerer = std::move(answerer);
}

void VirtualPrinter::setAppetite(int bytes)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_appetite = std::min(bytes, mostTakenAtOnce);
}

void VirtualPrinter::say(const QByteArray &bytes)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    send(bytes);
}

int VirtualPrinter::descriptor() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return m_master;
}

VirtualExchange VirtualPrinter::lineNow() const
{
    termios line{};
    VirtualExchange exchange;
    if (::tcgetattr(m_master, &line) == 0) {
        exchange.baudRate = baudRateOf(::cfgetospeed(&line));
        exchange.flowControl = flowControlOf(line);
    }
    return exchange;
}

bool VirtualPrinter::lineMatches(const VirtualExchange &line) const
{
    return line.baudRate == m_model.baudRate && line.flowControl == m_model.flowControl;
}

void VirtualPrinter::record(VirtualExchange exchange, bool fromPrinter, const QByteArray &bytes)
{
    exchange.fromPrinter = fromPrinter;
    exchange.bytes = bytes;
    exchange.isOnItsLine = lineMatches(exchange);
    if (m_dialogue.size() < exchangesKept)
        m_dialogue.append(exchange);
    if (m_observer)
        m_observer(exchange);
}

/// In one piece what has come in by now, however it was cut on its way.
QByteArray VirtualPrinter::readAll()
{
    QByteArray bytes;
    char buffer[4096];
    while (m_master >= 0 && bytes.size() < m_appetite && waitForInput(m_master, 0)) {
        const int most = std::min<int>(sizeof buffer, m_appetite - bytes.size());
        const ssize_t count = ::read(m_master, buffer, static_cast<size_t>(most));
        if (count <= 0)
            break;
        bytes.append(buffer, static_cast<int>(count));
    }
    return bytes;
}

void VirtualPrinter::service()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const QByteArray bytes = readAll();
    if (!bytes.isEmpty())
        take(bytes);
    if (m_master >= 0 && m_options.fault == VirtualFault::Flood && m_receivedCount > 0)
        send(randomBytes(floodBlock));
}

void VirtualPrinter::waitAndService(int milliseconds)
{
    if (m_options.fault == VirtualFault::Flood)
        milliseconds = floodPollMilliseconds;
    int master = -1;
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        master = m_master;
    }
    if (master < 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(std::max(milliseconds, 0)));
    else
        waitForInput(master, milliseconds);
    service();
}

void VirtualPrinter::take(const QByteArray &bytes)
{
    m_receivedCount += bytes.size();
    // Looked at once: an observer may have the client change it.
    const VirtualExchange line = lineNow();
    record(line, false, bytes);
    if (handledByFault(bytes))
        return;
    if (!lineMatches(line)) {
        m_pending.clear();
        return;
    }
    if (m_answerer) {
        send(m_answerer(bytes));
        return;
    }
    m_pending += bytes;
    // In one piece, so that the client finds either all of it or nothing.
    send(answerPending());
}

bool VirtualPrinter::handledByFault(const QByteArray &bytes)
{
    switch (m_options.fault) {
        case VirtualFault::Silent:
            return true;
        case VirtualFault::Echo:
            send(bytes);
            return true;
        case VirtualFault::Garbage:
            send(randomBytes(garbageAtMost));
            return true;
        case VirtualFault::HangUp:
            if (m_receivedCount < m_options.faultValue)
                return false;
            closeTerminal();
            return true;
        default:
            return false;
    }
}

// Requests may come in pieces; bytes that begin no request are dropped, as a printer prints them.
QByteArray VirtualPrinter::answerPending()
{
    QByteArray answers;
    while (!m_pending.isEmpty()) {
        bool incomplete = false;
        VirtualReply *found = nullptr;
        for (VirtualReply &reply : m_model.replies) {
            if (m_pending.startsWith(reply.request))
                found = &reply;
            else
                incomplete = incomplete || reply.request.startsWith(m_pending);
        }
        if (found == nullptr && incomplete)
            break;
        m_pending.remove(0, found == nullptr ? 1 : found->request.size());
        if (found != nullptr)
            answers += answerTo(*found);
    }
    return answers;
}

QByteArray VirtualPrinter::answerTo(VirtualReply &reply)
{
    if (reply.answers.isEmpty())
        return {};
    QByteArray bytes = reply.answers.constFirst();
    reply.answers.move(0, reply.answers.size() - 1);
    const VirtualExchange line = lineNow();
    if (m_options.fault == VirtualFault::Partial) {
        if (m_answeredLine.baudRate == line.baudRate &&
            m_answeredLine.flowControl == line.flowControl)
            return {};
        m_answeredLine = line;
    }
    if (m_options.fault == VirtualFault::Slow)
        std::this_thread::sleep_for(std::chrono::milliseconds(m_options.faultValue));
    if (m_options.fault == VirtualFault::DifferingIds && !bytes.isEmpty()) {
        const int last = bytes.size() - 1;
        bytes[last] = static_cast<char>(bytes.at(last) + (m_answerCount % 2));
    }
    ++m_answerCount;
    return bytes;
}

void VirtualPrinter::send(const QByteArray &bytes)
{
    if (bytes.isEmpty() || m_master < 0)
        return;
    // A full line takes less; a printer that does not look at its line either loses the rest.
    const ssize_t count = ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size()));
    if (count > 0)
        record(lineNow(), true, bytes.left(static_cast<int>(count)));
}

QByteArray VirtualPrinter::randomBytes(int most)
{
    std::uniform_int_distribution<int> length(0, most);
    std::uniform_int_distribution<int> value(0, 255);
    QByteArray bytes(length(m_random), '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(value(m_random));
    return bytes;
}

void VirtualPrinter::start()
{
    stop();
    m_stopping = false;
    m_thread = std::thread([this] {
        while (!m_stopping)
            waitAndService(threadPollMilliseconds);
    });
}

void VirtualPrinter::stop()
{
    m_stopping = true;
    if (m_thread.joinable())
        m_thread.join();
}

void VirtualPrinter::hangUp()
{
    stop();
    closeTerminal();
}

bool VirtualPrinter::hasHungUp() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return isValid() && m_master < 0;
}

QVector<VirtualExchange> VirtualPrinter::dialogue() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    // A copy that shares nothing with the list that the printer's thread appends to.
    return QVector<VirtualExchange>(m_dialogue.cbegin(), m_dialogue.cend());
}

QByteArray VirtualPrinter::received() const
{
    QByteArray bytes;
    const QVector<VirtualExchange> exchanges = dialogue();
    for (const VirtualExchange &exchange : exchanges) {
        if (!exchange.fromPrinter)
            bytes += exchange.bytes;
    }
    return bytes;
}
