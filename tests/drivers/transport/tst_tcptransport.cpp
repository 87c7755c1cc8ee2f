// Printers in the network, on servers of this machine.
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtTest>

#include "transportwatch.h"

using namespace transportwatch;

namespace {

/// A printer that listens; it reads only what it is asked to.
class Listener
{
public:
    explicit Listener(quint16 port = 0, const QString &host = "127.0.0.1")
    {
        // A small buffer, so that it is soon full.
        if (!m_server.listen(QHostAddress(host), port))
            qFatal("%s", qPrintable(m_server.errorString()));
    }
    ~Listener()
    {
        m_server.close();
        reset();
    }
    quint16 port() const { return m_server.serverPort(); }
    QString address() const { return QString("tcp:127.0.0.1:%1").arg(port()); }
    bool isConnected()
    {
        if (m_socket == nullptr)
            m_socket = m_server.nextPendingConnection();
        if (m_socket != nullptr && !m_isReading)
            m_socket->setReadBufferSize(1);
        return m_socket != nullptr;
    }
    QByteArray read()
    {
        m_isReading = true;
        if (!isConnected())
            return {};
        m_socket->setReadBufferSize(0);
        return m_socket->readAll();
    }
    void write(const QByteArray &bytes) { m_socket->write(bytes); }
    /// As a printer that loses its power in the middle.
    void reset()
    {
        if (m_socket == nullptr)
            return;
        const linger at_once = {1, 0};
        ::setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER,
                     &at_once, sizeof at_once);
        m_socket->abort();
        m_socket = nullptr;
    }
    /// As a printer that ends the connection in good order.
    void hangUp()
    {
        m_socket->readAll();
        m_socket->disconnectFromHost();
        m_socket = nullptr;
    }
    bool isGone() const { return m_socket->state() == QAbstractSocket::UnconnectedState; }

private:
    QTcpServer m_server;
    QTcpSocket *m_socket = nullptr;
    bool m_isReading = false;
};

/// A port where connections are neither taken nor refused: its queue of them is full.
class SilentPort
{
public:
    SilentPort()
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0 ||
            ::listen(m_listener, 0) != 0 ||
            ::getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
            qFatal("no port");
        m_port = ntohs(address.sin_port);
        for (int &client : m_clients) {
            client = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
            if (::connect(client, reinterpret_cast<sockaddr *>(&address), size) == 0)
                qFatal("connected at once");
        }
    }
    ~SilentPort()
    {
        for (const int client : m_clients)
            ::close(client);
        ::close(m_listener);
    }
    QString address() const { return QString("tcp:127.0.0.1:%1").arg(m_port); }

private:
    int m_listener = -1;
    int m_clients[4] = {};
    quint16 m_port = 0;
};

TransportOptions impatientCaller()
{
    TransportOptions options = impatient();
    options.connectMilliseconds = 300;
    return options;
}

TransportOptions callerThatComesBack()
{
    TransportOptions options = comingBack();
    options.connectMilliseconds = 30000;
    return options;
}

const QByteArray tooMuch(64 * 1024 * 1024, 'x');

}  // namespace

class TestTcpTransport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesGoBothWays()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        Watch watch(*transport);
        transport->open();
        QVERIFY(watch.told.isEmpty());
        const QByteArray bytes = pattern(300000);
        QVERIFY(transport->write(bytes));
        QByteArray printed;
        TRY_COMPARE((printed += printer.read(), printed.size()), bytes.size());
        QCOMPARE(printed, bytes);
        TRY_COMPARE(transport->bytesWritten(), bytes.size());
        QCOMPARE(transport->bytesToWrite(), 0);
        QVERIFY(std::is_sorted(watch.totals.begin(), watch.totals.end()));
        QCOMPARE(watch.totals.last(), bytes.size());
        printer.write(QByteArray("\x12\0\xFF", 3));
        TRY_COMPARE(watch.received, QByteArray("\x12\0\xFF", 3));
        transport->close();
        TRY_VERIFY(printer.isGone());
        QCOMPARE(watch.told, QStringList({"opened", "closed"}));
    }

    // Who ends a job by an answer is to know how far it came.
    void whatIsAnsweredCountsAsTaken()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        QVector<qint64> taken;
        QObject::connect(transport.get(), &Transport::received, transport.get(),
                         [&] { taken.append(transport->bytesWritten()); });
        transport->open();
        TRY_VERIFY(printer.isConnected());
        QByteArray printed;
        for (int asked = 1; asked <= 50; ++asked) {
            QVERIFY(transport->write("?"));
            TRY_COMPARE((printed += printer.read(), printed.size()), asked);
            printer.write("!");
            TRY_COMPARE(taken.size(), asked);
            QCOMPARE(taken.last(), asked);
        }
    }

    void addressesOfSixteenBytesAreReached()
    {
        if (!QTcpServer().listen(QHostAddress::LocalHostIPv6))
            QSKIP("this machine has no IPv6");
        Listener printer(0, "::1");
        const auto transport =
            Transport::make(addressOf(QString("tcp:[::1]:%1").arg(printer.port())));
        transport->open();
        QVERIFY(transport->write("x"));
        QByteArray printed;
        TRY_COMPARE((printed += printer.read()), QByteArray("x"));
    }

    void refusedConnectionIsTold()
    {
        const quint16 port = Listener().port();
        const auto transport = Transport::make(addressOf(QString("tcp:127.0.0.1:%1").arg(port)));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("failed"));
        QCOMPARE(watch.error.kind, Kind::Refused);
        QCOMPARE(watch.error.text, QString("tcp:127.0.0.1:%1 refuses the connection: another "
                                           "program is printing, or nobody listens at that port")
                                       .arg(port));
        QCOMPARE(transport->state(), State::Closed);
    }

    void silentHostTimesOutAndBlocksNothing()
    {
        bool isBeating = false;
        for (int i = 0; i < Heart::tries && !isBeating; ++i) {
            const SilentPort port;
            const auto transport = Transport::make(addressOf(port.address()), impatientCaller());
            Watch watch(*transport);
            const Heart heart(impatientCaller().connectMilliseconds);
            transport->open();
            QVERIFY(transport->write("waits"));
            TRY_COMPARE(watch.told, QStringList("failed"));
            QCOMPARE(watch.error.kind, Kind::TimedOut);
            QCOMPARE(watch.error.text,
                     port.address() +
                         " didn't answer within 0.3 s: it is off, its cable is out, or the "
                         "address is another one's");
            QCOMPARE(transport->bytesToWrite(), 0);
            isBeating = heart.isBeating();
        }
        QVERIFY(isBeating);
    }

    void openingCanBeEnded()
    {
        const SilentPort port;
        const auto transport = Transport::make(addressOf(port.address()));
        Watch watch(*transport);
        transport->open();
        QTest::qWait(50);
        QCOMPARE(transport->state(), State::Opening);
        transport->close();
        QCOMPARE(watch.told, QStringList("closed"));
        QTest::qWait(50);
        QCOMPARE(watch.told, QStringList("closed"));
    }

    void unknownHostIsNotFound()
    {
        const auto transport = Transport::make(addressOf("tcp:printer.invalid"));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("failed"));
        if (watch.error.kind == Kind::TimedOut)
            QSKIP("this machine asks a server for names, which doesn't answer");
        QCOMPARE(watch.error.kind, Kind::NotFound);
        QCOMPARE(watch.error.text, QString("there is no host printer.invalid"));
    }

    void stuckPrinterFailsAndBlocksNothing()
    {
        bool isBeating = false;
        for (int i = 0; i < Heart::tries && !isBeating; ++i) {
            Listener printer;
            const auto transport = Transport::make(addressOf(printer.address()), impatientCaller());
            Watch watch(*transport);
            transport->open();
            TRY_VERIFY(printer.isConnected());
            QVERIFY(transport->write(tooMuch));
            TRY_VERIFY(transport->bytesWritten() > 0);
            const Heart heart(impatient().writeMilliseconds);
            TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
            QCOMPARE(watch.error.kind, Kind::TimedOut);
            QVERIFY2(
                watch.error.text.endsWith("of them being left: it is out of paper, its cover is "
                                          "open, or the network is cut"),
                qPrintable(watch.error.text));
            QVERIFY(transport->bytesWritten() < tooMuch.size());
            isBeating = heart.isBeating();
        }
        QVERIFY(isBeating);
    }

    void resetInTheMiddleIsALoss()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        Watch watch(*transport);
        transport->open();
        TRY_VERIFY(printer.isConnected());
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        printer.reset();
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::Lost);
        QVERIFY2(watch.error.text.startsWith(
                     printer.address() +
                     " ended the connection: it was switched off, or cut the line ("),
                 qPrintable(watch.error.text));
        QVERIFY(transport->bytesWritten() < tooMuch.size() / 2);
        QCOMPARE(transport->bytesWritten(), watch.totals.last());
    }

    void lastWordsAreHeard()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        Watch watch(*transport);
        transport->open();
        TRY_VERIFY(printer.isConnected());
        printer.write("last words");
        printer.hangUp();
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.received, QByteArray("last words"));
        QCOMPARE(watch.error.kind, Kind::Lost);
    }

    void restartedPrinterIsConnectedToAgain()
    {
        auto printer = std::make_unique<Listener>();
        const quint16 port = printer->port();
        const auto transport =
            Transport::make(addressOf(printer->address()), callerThatComesBack());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write("one"));
        QByteArray printed;
        TRY_COMPARE((printed += printer->read()), QByteArray("one"));
        TRY_COMPARE(transport->bytesWritten(), 3);
        printer.reset();
        TRY_COMPARE(watch.told, QStringList({"opened", "lost"}));
        TRY_COMPARE(transport->error().kind, Kind::Refused);
        QCOMPARE(transport->state(), State::Lost);
        QVERIFY(!transport->write("nobody"));
        printer = std::make_unique<Listener>(port);
        TRY_COMPARE(watch.told, QStringList({"opened", "lost", "opened"}));
        QVERIFY(transport->write("two"));
        printed.clear();
        TRY_COMPARE((printed += printer->read()), QByteArray("two"));
    }

    // What isn't counted as taken shouldn't be printed later.
    void closedConnectionSendsNothingMore()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        transport->open();
        TRY_VERIFY(printer.isConnected());
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        transport->close();
        QByteArray printed;
        TRY_VERIFY((printed += printer.read(), printer.isGone()));
        QVERIFY(printed.size() <= transport->bytesWritten() + 64 * 1024);
    }

    void discardedBytesAreNotSent()
    {
        Listener printer;
        const auto transport = Transport::make(addressOf(printer.address()));
        transport->open();
        TRY_VERIFY(printer.isConnected());
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        transport->discard();
        QVERIFY(transport->bytesToWrite() <= 64 * 1024);
        QVERIFY(transport->write("\x1B@"));
        QByteArray printed;
        TRY_VERIFY((printed += printer.read()).endsWith("\x1B@"));
        TRY_COMPARE(transport->bytesToWrite(), 0);
        QCOMPARE(transport->bytesWritten(), printed.size());
        QVERIFY(printed.size() < tooMuch.size());
    }
};

QTEST_GUILESS_MAIN(TestTcpTransport)
#include "tst_tcptransport.moc"
