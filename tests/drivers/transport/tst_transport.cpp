// What clients do to a transport within its signals, and what a transport leaves behind.
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtTest>
#include <functional>

#include "pseudoterminal.h"
#include "transportwatch.h"

using namespace transportwatch;

namespace {

/// A printer on each kind of line, that answers, stops taking, and goes.
class Printer
{
public:
    virtual ~Printer() = default;
    virtual QString address() const = 0;
    virtual void answer() = 0;
    virtual void go() = 0;
    /// Ends what connections there are.
    virtual void forget() {}
};

class TerminalPrinter : public Printer
{
public:
    explicit TerminalPrinter(const char *kind) : m_kind(kind) {}
    QString address() const override { return m_kind + m_terminal.path(); }
    void answer() override { m_terminal.write("!"); }
    void go() override { m_terminal.hangUp(); }

private:
    QString m_kind;
    PseudoTerminal m_terminal;
};

class NetworkPrinter : public Printer
{
public:
    NetworkPrinter() { m_server.listen(QHostAddress::LocalHost); }
    QString address() const override
    {
        return QString("tcp:127.0.0.1:%1").arg(m_server.serverPort());
    }
    void answer() override { socket().write("!"); }
    void go() override { socket().abort(); }
    void forget() override
    {
        while (m_server.hasPendingConnections())
            delete m_server.nextPendingConnection();
    }

private:
    QTcpSocket &socket()
    {
        while (m_socket == nullptr) {
            QTest::qWait(1);
            m_socket = m_server.nextPendingConnection();
        }
        return *m_socket;
    }

    QTcpServer m_server;
    QTcpSocket *m_socket = nullptr;
};

std::unique_ptr<Printer> printerOf(const QString &kind)
{
    if (kind == "tcp")
        return std::make_unique<NetworkPrinter>();
    return std::make_unique<TerminalPrinter>(kind == "serial" ? "serial:" : "device:");
}

using Slot = std::function<void()>;

/// Calls the slot within a signal.
void connectTo(const QString &signal, Transport &transport, const QObject &context,
               const Slot &slot)
{
    if (signal == "opened")
        QObject::connect(&transport, &Transport::opened, &context, slot);
    else if (signal == "written")
        QObject::connect(&transport, &Transport::written, &context, slot);
    else if (signal == "received")
        QObject::connect(&transport, &Transport::received, &context, slot);
    else if (signal == "lost")
        QObject::connect(&transport, &Transport::lost, &context, slot);
    else if (signal == "failed")
        QObject::connect(&transport, &Transport::failed, &context, slot);
    else
        QObject::connect(&transport, &Transport::closed, &context, slot);
}

/// Brings a signal about.
void provoke(const QString &signal, Transport &transport, Printer &printer)
{
    if (signal == "written")
        transport.write("bytes");
    else if (signal == "received")
        printer.answer();
    else if (signal == "lost" || signal == "failed")
        printer.go();
    else if (signal == "closed")
        transport.close();
}

int countOf(const char *folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

}  // namespace

class TestTransport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clientsDoAnythingWithinSignals_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("signal");
        QTest::addColumn<QString>("deed");
        for (const char *kind : {"serial", "device", "tcp"}) {
            for (const char *signal :
                 {"opened", "written", "received", "lost", "failed", "closed"}) {
                for (const char *deed : {"delete", "close", "write", "discard", "reopen"})
                    QTest::addRow("%s %s %s", kind, signal, deed) << kind << signal << deed;
            }
        }
    }
    void clientsDoAnythingWithinSignals()
    {
        QFETCH(QString, kind);
        QFETCH(QString, signal);
        QFETCH(QString, deed);
        const auto printer = printerOf(kind);
        TransportOptions options;
        options.reopens = signal == "lost";
        options.reopenMilliseconds = 10;
        std::unique_ptr<Transport> transport =
            Transport::make(addressOf(printer->address()), options);
        QObject context;
        int deeds = 0;
        connectTo(signal, *transport, context, [&] {
            if (++deeds > 3)
                return;
            if (deed == "delete")
                transport.reset();
            else if (deed == "close")
                transport->close();
            else if (deed == "write")
                transport->write("more");
            else if (deed == "discard")
                transport->discard();
            else {
                transport->close();
                transport->open();
            }
        });
        transport->open();
        if (signal != "opened") {
            TRY_COMPARE(transport->state(), State::Open);
            provoke(signal, *transport, *printer);
        }
        TRY_VERIFY(deeds > 0);
        QTest::qWait(30);
        if (deed == "close")
            QVERIFY(transport->state() == State::Closed);
        QCOMPARE(transport == nullptr, deed == "delete");
    }

    // Of each of a thousand openings nothing is left.
    void nothingIsLeftBehind_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("serial") << "serial";
        QTest::newRow("device") << "device";
        QTest::newRow("tcp") << "tcp";
        QTest::newRow("refused") << "refused";
        QTest::newRow("missing") << "missing";
    }
    void nothingIsLeftBehind()
    {
        QFETCH(QString, kind);
        std::unique_ptr<Printer> printer;
        QString address = "device:/nonexistent/lp0";
        if (kind != "missing") {
            printer = printerOf(kind == "refused" ? "tcp" : kind);
            address = printer->address();
        }
        if (kind == "refused")
            printer.reset();
        int descriptors = 0;
        int threads = 0;
        const int openings = 1000;
        for (int i = 0; i < openings; ++i) {
            if (i == 5) {
                QCoreApplication::processEvents();
                if (printer)
                    printer->forget();
                descriptors = countOf("/proc/self/fd");
                threads = countOf("/proc/self/task");
            }
            const auto transport = Transport::make(addressOf(address));
            Watch watch(*transport);
            transport->open();
            QElapsedTimer clock;
            clock.start();
            while (watch.told.isEmpty() && clock.elapsed() < 30000)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCOMPARE(watch.told.size(), 1);
            if (watch.told.contains("opened") && i % 2 == 0)
                transport->write("x");
            if (i % 3 == 0)
                transport->close();
            if (printer)
                printer->forget();
        }
        // A server's side of a connection may come late.
        TRY_VERIFY((printer ? printer->forget() : void(), countOf("/proc/self/fd") == descriptors));
        QCOMPARE(countOf("/proc/self/task"), threads);
    }

    void errorsTravelBetweenThreads()
    {
        QCOMPARE(qMetaTypeId<TransportError>(),
                 QMetaType::type("printerslib::drivers::TransportError"));
        const auto transport = Transport::make(PrinterAddress());
        QObject context;
        Kind kind = Kind::None;
        connect(
            transport.get(), &Transport::failed, &context,
            [&kind](const TransportError &error) { kind = error.kind; }, Qt::QueuedConnection);
        transport->open();
        TRY_COMPARE(kind, Kind::BadAddress);
        QVERIFY(!TransportError());
    }
};

QTEST_GUILESS_MAIN(TestTransport)
#include "tst_transport.moc"
