#include "openline.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>

OpenLine::OpenLine() = default;

OpenLine::~OpenLine()
{
    if (!m_link.isEmpty())
        ::unlink(m_link.constData());
    for (const int descriptor : {m_slave, m_master}) {
        if (descriptor >= 0)
            ::close(descriptor);
    }
}

bool OpenLine::open(const QString &link, QString *error)
{
    if (!openTerminal()) {
        *error = QStringLiteral("there is no pseudo terminal to be had: ") + qt_error_string(errno);
        return false;
    }
    const QByteArray path = QFile::encodeName(link);
    if (!link.isEmpty() &&
        ::symlink(QFile::encodeName(m_path).constData(), path.constData()) != 0) {
        *error = QStringLiteral("%1: %2").arg(link, qt_error_string(errno));
        return false;
    }
    m_link = path;
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { Q_EMIT readable(); });
    return true;
}

bool OpenLine::openTerminal()
{
    std::array<char, 64> path = {};
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, path.data(), path.size()) != 0)
        return false;
    m_slave = ::open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line{};
    if (m_slave < 0 || ::tcgetattr(m_slave, &line) != 0)
        return false;
    // A fresh terminal echoes and edits lines; a printer does neither.
    ::cfmakeraw(&line);
    m_path = QString::fromLocal8Bit(path.data());
    return ::tcsetattr(m_slave, TCSANOW, &line) == 0;
}

QByteArray OpenLine::read(int most)
{
    QByteArray bytes(most, Qt::Uninitialized);
    const ssize_t count = ::read(m_master, bytes.data(), static_cast<std::size_t>(most));
    bytes.truncate(count > 0 ? static_cast<int>(count) : 0);
    tell(false, bytes);
    return bytes;
}

/// A client that doesn't read loses what doesn't fit the line, as at a real one.
void OpenLine::write(const QByteArray &bytes)
{
    const ssize_t count =
        ::write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    tell(true, bytes.left(count > 0 ? static_cast<int>(count) : 0));
}

void OpenLine::setListening(bool isListening)
{
    m_notifier->setEnabled(isListening);
}

void OpenLine::tell(bool fromPrinter, const QByteArray &bytes)
{
    if (bytes.isEmpty() || !m_observer)
        return;
    VirtualExchange exchange;
    exchange.line = QStringLiteral("terminal");
    exchange.fromPrinter = fromPrinter;
    exchange.bytes = bytes;
    exchange.isOnItsLine = true;
    m_observer(exchange);
}
