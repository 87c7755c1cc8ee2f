#include "transport/devicetransport_p.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>

#include "transport/devicefault_p.h"

namespace printerslib::drivers {

/// How a terminal was set before it had to take any byte as it is.
struct SavedTerminal
{
    termios line = {};
};

namespace {

constexpr qint64 greatestPiece = 4096;  // bytes of one write or read
constexpr int pauseOfReading = 100;     // milliseconds
constexpr mode_t modeOfFiles = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

/// Without the signal that ends a process whose FIFO has lost its reader.
ssize_t writeQuietly(int descriptor, const char *bytes, size_t size)
{
    sigset_t pipe;
    sigset_t before;
    sigset_t pending;
    ::sigemptyset(&pipe);
    ::sigaddset(&pipe, SIGPIPE);
    ::sigemptyset(&pending);
    ::sigpending(&pending);
    ::pthread_sigmask(SIG_BLOCK, &pipe, &before);
    ssize_t count = 0;
    do
        count = ::write(descriptor, bytes, size);
    while (count < 0 && errno == EINTR);
    const int error = errno;
    const timespec now = {};
    if (count < 0 && error == EPIPE && ::sigismember(&pending, SIGPIPE) == 0)
        ::sigtimedwait(&pipe, nullptr, &now);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return count;
}

bool hasHungUp(int descriptor)
{
    pollfd line{descriptor, 0, 0};
    return ::poll(&line, 1, 0) == 1 && (line.revents & (POLLHUP | POLLERR)) != 0;
}

}  // namespace

DeviceTransport::DeviceTransport(const PrinterAddress &address, const TransportOptions &options,
                                 const DeviceRoots &roots)
    : QueuedTransport(address, options), m_roots(roots)
{
    m_readingPause.setSingleShot(true);
    connect(&m_readingPause, &QTimer::timeout, this, [this] {
        if (m_reading)
            m_reading->setEnabled(true);
    });
}

DeviceTransport::~DeviceTransport()
{
    DeviceTransport::shut();
}

void DeviceTransport::beginOpening()
{
    TransportError fault;
    m_path = findPath(fault);
    if (fault || !openPath(m_path, fault)) {
        hasNotOpened(fault);
        return;
    }
    watch();
    hasOpened();
}

QString DeviceTransport::findPath(TransportError &fault) const
{
    if (address().isNull())
        fault = {TransportError::Kind::BadAddress, QStringLiteral("no printer is named")};
    if (address().kind() != PrinterAddress::Kind::Usb)
        return address().path();
    const devicefault::FoundUsb found = devicefault::findUsb(address(), m_roots);
    fault = found.error;
    return found.path;
}

bool DeviceTransport::openPath(const QString &path, TransportError &fault)
{
    struct stat status = {};
    const bool isThere = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    if (isThere && !S_ISCHR(status.st_mode) && !S_ISFIFO(status.st_mode)) {
        fault = devicefault::ofKind(path, status.st_mode);
        return false;
    }
    if (S_ISFIFO(status.st_mode))
        return openWith(path, O_WRONLY, fault);
    // Some devices take bytes and give none.
    return openWith(path, O_RDWR, fault) ||
           (fault.kind == TransportError::Kind::NotPermitted && openWith(path, O_WRONLY, fault));
}

bool DeviceTransport::openWith(const QString &path, int flags, TransportError &fault)
{
    m_descriptor = ::open(QFile::encodeName(path).constData(),
                          flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, modeOfFiles);
    if (m_descriptor < 0) {
        fault = devicefault::ofOpening(devicefault::lookAt(path, errno, m_roots));
        return false;
    }
    fault = {};
    m_isReadable = (flags & O_ACCMODE) == O_RDWR;
    auto terminal = std::make_unique<SavedTerminal>();
    if (::tcgetattr(m_descriptor, &terminal->line) == 0) {
        termios raw = terminal->line;
        ::cfmakeraw(&raw);
        ::tcsetattr(m_descriptor, TCSANOW, &raw);
        // What somebody before asked for.
        ::tcflush(m_descriptor, TCIFLUSH);
        m_terminal = std::move(terminal);
    }
    return true;
}

void DeviceTransport::watch()
{
    m_writing = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Write);
    m_writing->setEnabled(false);
    connect(
        m_writing.get(), &QSocketNotifier::activated, this,
        [this] {
            if (m_writing)
                m_writing->setEnabled(false);
            look();
        },
        Qt::QueuedConnection);
    if (!m_isReadable)
        return;
    m_reading = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_reading.get(), &QSocketNotifier::activated, this, &DeviceTransport::read,
            Qt::QueuedConnection);
}

void DeviceTransport::shut()
{
    m_readingPause.stop();
    m_reading.reset();
    m_writing.reset();
    if (m_descriptor < 0)
        return;
    if (m_terminal) {
        if (underWay() > 0)
            ::tcflush(m_descriptor, TCOFLUSH);
        ::tcsetattr(m_descriptor, TCSANOW, &m_terminal->line);
    }
    m_terminal.reset();
    ::close(m_descriptor);
    m_descriptor = -1;
}

// A printer that has nothing to say may answer with nothing at once, and again and again.
void DeviceTransport::read()
{
    if (m_descriptor < 0 || !m_isReadable)
        return;
    char piece[greatestPiece];
    const ssize_t count = ::read(m_descriptor, piece, sizeof piece);
    const int error = errno;
    if (count > 0)
        hasReceived(QByteArray(piece, static_cast<int>(count)));
    else if (count < 0 ? devicefault::isLoss(error) : hasHungUp(m_descriptor))
        hasBroken(devicefault::ofLoss(m_path));
    else if (count == 0 || (error != EAGAIN && error != EINTR))
        pauseReading();
}

void DeviceTransport::pauseReading()
{
    m_reading->setEnabled(false);
    m_readingPause.start(pauseOfReading);
}

qint64 DeviceTransport::hand(const char *bytes, qint64 size, TransportError &fault)
{
    const ssize_t count =
        writeQuietly(m_descriptor, bytes, static_cast<size_t>(std::min(size, greatestPiece)));
    if (count >= 0)
        return count;
    if (errno == EAGAIN) {
        m_writing->setEnabled(true);
        return 0;
    }
    fault = devicefault::ofWriting(m_path, errno);
    return -1;
}

qint64 DeviceTransport::underWay() const
{
    int queued = 0;
    if (m_terminal && ::ioctl(m_descriptor, TIOCOUTQ, &queued) != 0)
        return unknown;
    return queued;
}

QString DeviceTransport::whyStuck() const
{
    return QStringLiteral("it is off line or out of paper, or its cover is open");
}

FileTransport::FileTransport(const PrinterAddress &address, const TransportOptions &options)
    : DeviceTransport(address, options)
{}

bool FileTransport::openPath(const QString &path, TransportError &fault)
{
    struct stat status = {};
    const bool isThere = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    if (isThere && (S_ISCHR(status.st_mode) || S_ISFIFO(status.st_mode)))
        return DeviceTransport::openPath(path, fault);
    if (isThere && !S_ISREG(status.st_mode)) {
        fault = devicefault::ofKind(path, status.st_mode);
        return false;
    }
    return openWith(path, O_WRONLY | O_CREAT | O_APPEND, fault);
}

}  // namespace printerslib::drivers
