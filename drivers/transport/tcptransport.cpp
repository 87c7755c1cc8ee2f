#include "transport/tcptransport_p.h"

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <termios.h>

#include <QNetworkProxy>
#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr qint64 greatestTcpInput = 64LL * 1024;   // bytes of the printer that wait to be read
constexpr qint64 greatestTcpWindow = 64LL * 1024;  // bytes that aren't confirmed

/// A connection that is closed with bytes under way is reset: they aren't counted as taken, and
/// shouldn't be printed later.
void dropOnClosing(const QTcpSocket &socket)
{
    const linger at_once = {1, 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &at_once,
                 sizeof at_once);
}

}  // namespace

TcpTransport::TcpTransport(const PrinterAddress &address, const TransportOptions &options)
    : QueuedTransport(address, options)
{}

TcpTransport::~TcpTransport()
{
    TcpTransport::shut();
}

void TcpTransport::beginOpening()
{
    m_socket = std::make_unique<QTcpSocket>();
    QTcpSocket *const socket = m_socket.get();
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->setReadBufferSize(greatestTcpInput);
    const auto lookAgain = [this] { lookAtConnection(); };
    connect(socket, &QTcpSocket::connected, this, lookAgain, Qt::QueuedConnection);
    connect(socket, &QTcpSocket::errorOccurred, this, lookAgain, Qt::QueuedConnection);
    connect(socket, &QTcpSocket::disconnected, this, lookAgain, Qt::QueuedConnection);
    connect(socket, &QTcpSocket::readyRead, this, &TcpTransport::read, Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::bytesWritten, this, [this] { look(); }, Qt::QueuedConnection);
    socket->connectToHost(address().host(), address().port());
}

void TcpTransport::shut()
{
    if (!m_socket)
        return;
    m_socket->disconnect(this);
    if (underWay() > 0)
        dropOnClosing(*m_socket);
    if (m_socket->isOpen())
        m_socket->readAll();  // a connection with unread bytes is closed by a reset
    m_socket->abort();
    m_socket.reset();
}

// Signals may be those of a connection before this one.
void TcpTransport::lookAtConnection()
{
    if (!m_socket)
        return;
    const bool isConnected = m_socket->state() == QAbstractSocket::ConnectedState;
    const bool isOver = m_socket->state() == QAbstractSocket::UnconnectedState;
    if (isConnected && state() != State::Open) {
        m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        hasOpened();
    } else if (isOver && state() != State::Open) {
        hasNotOpened(faultOf(*m_socket));
    } else if (isOver && hasReceived(lastWords())) {
        hasBroken({TransportError::Kind::Lost,
                   QStringLiteral("%1 ended the connection: it was switched off, or cut the line "
                                  "(%2)")
                       .arg(address().toString(), m_socket->errorString())});
    }
}

QByteArray TcpTransport::lastWords()
{
    return m_socket->isOpen() ? m_socket->readAll() : QByteArray();
}

void TcpTransport::read()
{
    if (m_socket && state() == State::Open && m_socket->bytesAvailable() > 0)
        hasReceived(m_socket->readAll());
}

TransportError TcpTransport::faultOf(const QAbstractSocket &socket) const
{
    switch (socket.error()) {
        case QAbstractSocket::ConnectionRefusedError:
            return {TransportError::Kind::Refused,
                    QStringLiteral("%1 refuses the connection: another program is printing, or "
                                   "nobody listens at that port")
                        .arg(address().toString())};
        case QAbstractSocket::HostNotFoundError:
            return {TransportError::Kind::NotFound,
                    QStringLiteral("there is no host %1").arg(address().host())};
        case QAbstractSocket::SocketTimeoutError:
            return {TransportError::Kind::TimedOut,
                    QStringLiteral("%1 didn't answer").arg(address().toString())};
        case QAbstractSocket::SocketAccessError:
            return {TransportError::Kind::NotPermitted,
                    QStringLiteral("%1 may not be connected to: %2")
                        .arg(address().toString(), socket.errorString())};
        default:
            return {TransportError::Kind::Failed,
                    QStringLiteral("%1 can't be connected to: %2")
                        .arg(address().toString(), socket.errorString())};
    }
}

qint64 TcpTransport::hand(const char *bytes, qint64 size, TransportError &fault)
{
    const qint64 count = std::min(size, greatestTcpWindow - underWay());
    if (count <= 0)
        return 0;
    const qint64 taken = m_socket->write(bytes, count);
    if (taken < 0)
        fault = {TransportError::Kind::Lost, m_socket->errorString()};
    else
        m_socket->flush();
    return taken;
}

qint64 TcpTransport::underWay() const
{
    int unconfirmed = 0;
    const int descriptor = static_cast<int>(m_socket->socketDescriptor());
    if (descriptor < 0 || ::ioctl(descriptor, TIOCOUTQ, &unconfirmed) != 0)
        return unknown;
    return m_socket->bytesToWrite() + unconfirmed;
}

QString TcpTransport::whyStuck() const
{
    return QStringLiteral("it is out of paper, its cover is open, or the network is cut");
}

}  // namespace printerslib::drivers
