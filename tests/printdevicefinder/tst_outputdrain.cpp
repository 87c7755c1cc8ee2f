#include <QtTest>

#include "printdevicefinder/outputdrain_p.h"
#include "virtualprinter.h"

namespace {

/// A line of one character in ten milliseconds, with a clock that runs while somebody waits.
class FakeQueue : public PortOutput
{
public:
    FakeQueue(qint64 inPort, qint64 inDriver) : m_inPort(inPort), m_inDriver(inDriver) {}

    qint64 millisecondsFor(qint64 characters) const override { return 10 * characters; }
    qint64 unwritten() const override { return m_inPort; }
    bool handOver(int milliseconds) override
    {
        note("hand over");
        if (portIsStuck)
            return false;
        m_inDriver += m_inPort;
        m_inPort = 0;
        run(milliseconds > 0 ? 1 : 0);
        return true;
    }
    qint64 queued() const override { return m_inDriver; }
    bool pause(int milliseconds) override
    {
        note(m_inPort == 0 && m_inDriver == 0 ? QString("pause %1").arg(milliseconds)
                                              : QString("look"));
        run(milliseconds);
        return pausesLeft < 0 || pausesLeft-- > 0;
    }
    qint64 now() const override { return m_now; }
    void drop() override { note("drop"); }
    void close() override { note("close"); }

    QStringList calls;         ///< Without repeats of the same one.
    bool isHeld = false;       ///< By flow control: nothing leaves the driver.
    bool portIsStuck = false;  ///< The driver takes nothing.
    int pausesLeft = -1;       ///< How often there is time to wait; -1: always.

private:
    void note(const QString &call)
    {
        if (calls.isEmpty() || calls.constLast() != call)
            calls.append(call);
    }

    void run(qint64 milliseconds)
    {
        m_now += milliseconds;
        m_onLine += isHeld ? 0 : milliseconds;
        const qint64 gone = qMin(m_inDriver, m_onLine / 10);
        m_inDriver -= gone;
        m_onLine -= 10 * gone;
    }

    qint64 m_inPort;
    qint64 m_inDriver;
    qint64 m_now = 5000;
    qint64 m_onLine = 0;
};

constexpr qint64 spare = 200;
constexpr qint64 adapter = 128 * 10;

}  // namespace

class TestOutputDrain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void closeComesBehindPortDriverAndAdapter_data()
    {
        QTest::addColumn<int>("inPort");
        QTest::addColumn<int>("inDriver");
        QTest::addColumn<QStringList>("calls");
        const QStringList end{"pause 1280", "close"};
        QTest::newRow("nothing under way") << 0 << 0 << end;
        QTest::newRow("in the port") << 17 << 0 << QStringList{"hand over", "look"} + end;
        QTest::newRow("in the driver") << 0 << 17 << QStringList{"look"} + end;
        QTest::newRow("in both") << 3 << 17 << QStringList{"hand over", "look"} + end;
    }

    void closeComesBehindPortDriverAndAdapter()
    {
        QFETCH(int, inPort);
        QFETCH(int, inDriver);
        FakeQueue queue(inPort, inDriver);
        const qint64 start = queue.now();
        discovery::closePort(queue, true);
        QTEST(queue.calls, "calls");
        QCOMPARE(queue.unwritten() + queue.queued(), 0);
        QVERIFY(queue.now() - start >= 10 * (inPort + inDriver) + adapter);
        QVERIFY(queue.now() - start <= 10 * (inPort + inDriver) + adapter + spare);
    }

    void heldLineIsGivenUpInTimeAndDropped_data()
    {
        QTest::addColumn<bool>("portIsStuck");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("by flow control") << false << QStringList{"hand over", "look"};
        QTest::newRow("by the driver") << true << QStringList{"hand over", "look"};
    }

    void heldLineIsGivenUpInTimeAndDropped()
    {
        QFETCH(bool, portIsStuck);
        FakeQueue queue(17, 4);
        queue.isHeld = true;
        queue.portIsStuck = portIsStuck;
        const qint64 start = queue.now();
        discovery::closePort(queue, true);
        QCOMPARE(queue.calls.mid(queue.calls.size() - 2), (QStringList{"drop", "close"}));
        QVERIFY(!queue.calls.contains("pause 1280"));
        QCOMPARE(queue.now() - start, 21 * 10 + spare);
    }

    void nothingIsWaitedForWithoutAPrinter()
    {
        FakeQueue queue(17, 4);
        discovery::closePort(queue, false);
        QCOMPARE(queue.calls, (QStringList{"drop", "close"}));
    }

    void noTimeToWaitEndsItAtOnce()
    {
        for (const int pauses : {0, 1, 2}) {
            FakeQueue queue(0, 17);
            queue.pausesLeft = pauses;
            discovery::closePort(queue, true);
            QCOMPARE(queue.calls, (QStringList{"look", "drop", "close"}));
        }
    }

    void charactersTakeTheirBits_data()
    {
        QTest::addColumn<int>("baudRate");
        QTest::addColumn<int>("stopBits");
        QTest::addColumn<int>("characters");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("the closing bytes at 1200") << 1200 << 1 << 17 << 142;
        QTest::newRow("two stop bits") << 1200 << 2 << 12 << 110;
        QTest::newRow("an adapter's buffer at 1200") << 1200 << 1 << 128 << 1067;
        QTest::newRow("an adapter's buffer at 115200") << 115200 << 1 << 128 << 12;
        QTest::newRow("the slowest line that is waited for") << 300 << 1 << 128 << 4267;
        QTest::newRow("no printer's line") << 1 << 1 << 128 << 4267;
        QTest::newRow("none") << 9600 << 1 << 0 << 0;
    }

    void charactersTakeTheirBits()
    {
        QFETCH(int, baudRate);
        QFETCH(int, stopBits);
        QFETCH(int, characters);
        VirtualPrinterOptions options;
        options.model = "AV_268";
        const VirtualPrinter printer(options);
        QSerialPort port(printer.portPath());
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(port.setBaudRate(baudRate));
        QVERIFY(port.setStopBits(stopBits == 1 ? QSerialPort::OneStop : QSerialPort::TwoStop));
        QTEST(int(SerialPortOutput(port).millisecondsFor(characters)), "milliseconds");
    }

    void realPortHandsOverAndCloses()
    {
        VirtualPrinterOptions options;
        options.model = "CITIZEN_CTS_2000";
        VirtualPrinter printer(options);
        QSerialPort port(printer.portPath());
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(port.setBaudRate(QSerialPort::Baud115200));
        port.write("\x20\x0A\x1B\x69");
        SerialPortOutput output(port);
        QCOMPARE(output.unwritten(), 4);
        discovery::closePort(output, true);
        QVERIFY(!port.isOpen());
        printer.service();
        QCOMPARE(printer.received(), QByteArray("\x20\x0A\x1B\x69"));
        // Closed: nothing to wait for, and no failure.
        discovery::closePort(output, false);
    }
};

QTEST_GUILESS_MAIN(TestOutputDrain)
#include "tst_outputdrain.moc"
