#include "deviceline.h"

#include <sys/socket.h>

#include <QHostAddress>
#include <QRegularExpression>

namespace {

constexpr int mostUnread = 4096;   // bytes that wait in the process
constexpr int mostUnsent = 65536;  // bytes of answers that nobody fetches
constexpr quint16 rawPort = 9100;  // of printers

constexpr char xon = 0x11;
constexpr char xoff = 0x13;

/// Leaves on the line what isn't taken.
class BoundedServer : public QTcpServer
{
protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *client = new QTcpSocket(this);
        client->setReadBufferSize(mostUnread);
        client->setSocketDescriptor(descriptor);
        addPendingConnection(client);
    }
};

}  // namespace

TerminalLine::TerminalLine(VirtualPrinter &printer, QSerialPort::FlowControl flow)
    : m_printer(printer), m_flow(flow), m_notifier(printer.descriptor(), QSocketNotifier::Read)
{
    m_printer.setAnswerer([this](const QByteArray &bytes) {
        m_taken += bytes;
        return QByteArray();
    });
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { Q_EMIT readable(); });
}

QByteArray TerminalLine::read(int most)
{
    m_taken.clear();
    m_printer.setAppetite(most);
    m_printer.service();
    return m_taken;
}

void TerminalLine::setBusy(bool isBusy)
{
    if (m_flow == QSerialPort::SoftwareControl)
        m_printer.say(QByteArray(1, isBusy ? xoff : xon));
}

TcpLine::TcpLine() : m_server(new BoundedServer)
{
    // One more is taken from the system, and waits here.
    m_server->setMaxPendingConnections(1);
    connect(m_server.get(), &QTcpServer::newConnection, this, &TcpLine::takeClient);
}

TcpLine::~TcpLine()
{
    if (m_client != nullptr)
        m_client->disconnect(this);
}

bool TcpLine::listen(const QString &address, QString *error)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:\\[([0-9A-Fa-f:.]+)\\]|([^:]+))(?::([0-9]{1,5}))?\\z"));
    const QRegularExpressionMatch match = form.match(address);
    const QString host = match.captured(1) + match.captured(2);
    m_host = host == QLatin1String("localhost") ? QHostAddress(QHostAddress::LocalHost)
                                                : QHostAddress(host);
    const QString port = match.captured(3);
    const int number = port.isEmpty() ? rawPort : port.toInt();
    if (!match.hasMatch() || m_host.isNull() || number > 65535) {
        *error =
            QStringLiteral("\"%1\" is no address and port, such as 127.0.0.1:9100").arg(address);
        return false;
    }
    m_port = static_cast<quint16>(number);
    if (!listenAgain()) {
        *error = QStringLiteral("%1: %2").arg(address, m_server->errorString());
        return false;
    }
    m_port = m_server->serverPort();
    return true;
}

/// Who connects gets the window of the port.
bool TcpLine::listenAgain()
{
    if (!m_server->listen(m_host, m_port))
        return false;
    if (m_window > 0)
        ::setsockopt(static_cast<int>(m_server->socketDescriptor()), SOL_SOCKET, SO_RCVBUF,
                     &m_window, sizeof m_window);
    return true;
}

QString TcpLine::name() const
{
    const QString host = m_host.toString();
    return (host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2"))
        .arg(host)
        .arg(m_port);
}

QString TcpLine::clientName() const
{
    return QStringLiteral("%1:%2")
        .arg(m_client->peerAddress().toString())
        .arg(m_client->peerPort());
}

void TcpLine::takeClient()
{
    if (m_client != nullptr || !m_server->hasPendingConnections())
        return;
    m_client = m_server->nextPendingConnection();
    connect(m_client, &QTcpSocket::readyRead, this, &TcpLine::tellReadable);
    connect(m_client, &QTcpSocket::disconnected, this, &TcpLine::dropWhenRead);
    Q_EMIT said(QStringLiteral("connected: ") + clientName());
    tellReadable();
    dropWhenRead();
}

/// What has come in meanwhile, also of a client whose turn has come, isn't told again.
void TcpLine::setListening(bool isListening)
{
    const bool isMissed =
        isListening && !m_isListening && m_client != nullptr && m_client->bytesAvailable() > 0;
    m_isListening = isListening;
    if (isMissed)
        Q_EMIT readable();
}

void TcpLine::tellReadable()
{
    if (m_isListening)
        Q_EMIT readable();
}

/// What a client sent before it went is printed first.
void TcpLine::dropWhenRead()
{
    if (m_client == nullptr || m_client->state() != QAbstractSocket::UnconnectedState ||
        m_client->bytesAvailable() > 0)
        return;
    const QString text = QStringLiteral("disconnected: ") + clientName();
    m_client->disconnect(this);
    m_client->deleteLater();
    m_client = nullptr;
    Q_EMIT said(text);
    takeClient();
}

QByteArray TcpLine::read(int most)
{
    QByteArray bytes = m_client == nullptr ? QByteArray() : m_client->read(most);
    tell(false, bytes);
    dropWhenRead();
    return bytes;
}

void TcpLine::write(const QByteArray &bytes)
{
    if (m_client == nullptr || m_client->state() != QAbstractSocket::ConnectedState ||
        m_client->bytesToWrite() > mostUnsent)
        return;
    m_client->write(bytes);
    m_client->flush();
    tell(true, bytes);
}

void TcpLine::tell(bool fromPrinter, const QByteArray &bytes)
{
    if (bytes.isEmpty() || !m_observer)
        return;
    VirtualExchange exchange;
    exchange.line = QStringLiteral("tcp");
    exchange.fromPrinter = fromPrinter;
    exchange.bytes = bytes;
    exchange.isOnItsLine = true;
    m_observer(exchange);
}

bool TcpLine::reset()
{
    if (m_client == nullptr)
        return false;
    // Closed so, the system sends a reset, and what waits on the line is lost.
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(m_client->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                 sizeof atOnce);
    // When that is told, the next client's turn comes, whose bytes aren't to be lost.
    m_client->readAll();
    m_client->abort();
    dropWhenRead();
    return true;
}

/// A printer without power answers nobody, and has forgotten its connections when it is back.
void TcpLine::setPowered(bool isPowered)
{
    if (!isPowered) {
        m_server->close();
        return;
    }
    // Who was connected may come again at once.
    const bool isListening = listenAgain();
    reset();
    if (!isListening)
        Q_EMIT said(QStringLiteral("%1: %2").arg(name(), m_server->errorString()));
}
