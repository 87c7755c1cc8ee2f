// Lines for threads that have no event loop.
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtTest>

#include "printerslib/drivers/blockingtransport.h"
#include "pseudoterminal.h"
#include "threads.h"
#include "transportwatch.h"

using namespace transportwatch;
using printerslib::drivers::BlockingTransport;

namespace {

constexpr int longest = BlockingTransport::longestWait;
constexpr int patience = 60;  // waits of half a second

bool hasOpened(BlockingTransport &transport)
{
    transport.open();
    for (int i = 0; i < patience && transport.state() == State::Opening; ++i) {
        if (transport.waitForOpened(longest))
            return true;
    }
    return false;
}

bool hasWritten(BlockingTransport &transport)
{
    for (int i = 0; i < patience && transport.state() == State::Open; ++i) {
        if (transport.waitForWritten(longest))
            return true;
    }
    return false;
}

int countOf(const char *folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

}  // namespace

class TestBlockingTransport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesGoBothWays()
    {
        PseudoTerminal terminal;
        BlockingTransport transport(addressOf("serial:" + terminal.path()));
        QCOMPARE(transport.state(), State::Closed);
        QVERIFY(!transport.write("too early"));
        QVERIFY(hasOpened(transport));
        QVERIFY(transport.write("question"));
        QCOMPARE(transport.bytesToWrite(), 8);
        QVERIFY(hasWritten(transport));
        QCOMPARE(transport.bytesWritten(), 8);
        QByteArray printed;
        for (int i = 0; i < 1000 && printed.size() < 8; ++i) {
            printed += terminal.read();
            QThread::msleep(10);
        }
        QCOMPARE(printed, QByteArray("question"));
        QCOMPARE(transport.waitForAnswer(0), QByteArray());
        terminal.write("an");
        terminal.write("swer");
        QByteArray answer;
        for (int i = 0; i < patience && answer.size() < 6; ++i)
            answer += transport.waitForAnswer(longest, 6 - answer.size());
        QCOMPARE(answer, QByteArray("answer"));
        QCOMPARE(transport.waitForAnswer(0), QByteArray());
        transport.close();
        QCOMPARE(transport.state(), State::Closed);
        QVERIFY(!transport.waitForOpened(longest));
        QVERIFY(!transport.waitForWritten(longest));
    }

    // Whatever is asked for. The bound is generous: a machine may be slow.
    void noCallIsLong()
    {
        PseudoTerminal terminal;
        BlockingTransport transport(addressOf("device:" + terminal.path()));
        QVERIFY(hasOpened(transport));
        QVERIFY(transport.write(QByteArray(4 * 1024 * 1024, 'x')));
        for (const int milliseconds : {-1, 0, 1, 60 * 60 * 1000}) {
            QElapsedTimer clock;
            clock.start();
            QVERIFY(!transport.waitForWritten(milliseconds));
            QCOMPARE(transport.waitForAnswer(milliseconds), QByteArray());
            QVERIFY(clock.elapsed() < 30000);
        }
        transport.discard();
        QVERIFY(hasWritten(transport));
    }

    void whatFailsIsTold()
    {
        BlockingTransport missing(addressOf("device:/nonexistent/lp0"));
        QVERIFY(!hasOpened(missing));
        QCOMPARE(missing.error().kind, Kind::NotFound);
        QVERIFY(!missing.error().text.isEmpty());

        TransportOptions options;
        options.writeMilliseconds = 100;
        PseudoTerminal terminal;
        BlockingTransport stuck(addressOf("serial:" + terminal.path()), options);
        QVERIFY(hasOpened(stuck));
        QVERIFY(stuck.write(QByteArray(4 * 1024 * 1024, 'x')));
        QVERIFY(!hasWritten(stuck));
        QCOMPARE(stuck.error().kind, Kind::TimedOut);
        QCOMPARE(stuck.state(), State::Closed);
    }

    void lastWordsOfALostPrinterAreGiven()
    {
        QTcpServer printer;
        QVERIFY(printer.listen(QHostAddress::LocalHost));
        BlockingTransport transport(
            addressOf(QString("tcp:127.0.0.1:%1").arg(printer.serverPort())));
        QVERIFY(hasOpened(transport));
        QVERIFY(printer.hasPendingConnections() || printer.waitForNewConnection(30000));
        QTcpSocket *const socket = printer.nextPendingConnection();
        socket->write("bye");
        QVERIFY(socket->waitForBytesWritten(30000));
        socket->disconnectFromHost();
        delete socket;
        QByteArray answer;
        for (int i = 0; i < patience && transport.state() == State::Open; ++i)
            answer += transport.waitForAnswer(longest, 100);
        QCOMPARE(answer, QByteArray("bye"));
        QCOMPARE(transport.error().kind, Kind::Lost);
    }

    // Threads of any making, each with a printer of its own.
    void threadsPrintAtOnce()
    {
        const int threads = 8;
        PseudoTerminal terminals[threads];
        QByteArray received[threads];
        std::atomic<int> done{0};
        runOnThreads(threads, [&](int thread) {
            BlockingTransport transport(addressOf("device:" + terminals[thread].path()));
            const QByteArray bytes = pattern(20000 + thread);
            bool isGood = hasOpened(transport) && transport.write(bytes);
            for (int i = 0; i < 3000 && received[thread].size() < bytes.size(); ++i) {
                transport.waitForWritten(5);
                received[thread] += terminals[thread].read();
            }
            isGood = isGood && hasWritten(transport) && received[thread] == bytes;
            terminals[thread].write("ok");
            QByteArray answer;
            for (int i = 0; i < patience && answer.size() < 2; ++i)
                answer += transport.waitForAnswer(longest, 2);
            done += isGood && answer == "ok" ? 1 : 0;
        });
        QCOMPARE(done.load(), threads);
    }

    void nothingIsLeftBehind()
    {
        PseudoTerminal terminal;
        const PrinterAddress address = addressOf("device:" + terminal.path());
        const auto printOnThreads = [&address] {
            runOnThreads(2, [&address](int) {
                BlockingTransport transport(address);
                hasOpened(transport);
            });
        };
        printOnThreads();
        const int descriptors = countOf("/proc/self/fd");
        const int threads = countOf("/proc/self/task");
        for (int i = 0; i < 100; ++i)
            printOnThreads();
        QCOMPARE(countOf("/proc/self/fd"), descriptors);
        QCOMPARE(countOf("/proc/self/task"), threads);
    }
};

QTEST_GUILESS_MAIN(TestBlockingTransport)
#include "tst_blockingtransport.moc"
