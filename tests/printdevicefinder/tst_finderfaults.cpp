#include <QtTest>
#include <atomic>
#include <optional>

#include "finderbench.h"
#include "logcatcher.h"
#include "printdevicefinder/cancellableport_p.h"

using namespace finderbench;

namespace {

/// Writes down how a port is closed, and doesn't wait.
class RecordingOutput : public SerialPortOutput
{
public:
    using SerialPortOutput::SerialPortOutput;
    static std::unique_ptr<PortOutput> of(QSerialPort &port)
    {
        return std::make_unique<RecordingOutput>(port);
    }

    bool pause(int milliseconds) override
    {
        calls.append(QString("pause %1").arg(milliseconds));
        return true;
    }
    void drop() override { calls.append("drop"); }
    void close() override
    {
        calls.append("close");
        SerialPortOutput::close();
    }

    static inline QStringList calls;
};

}  // namespace

/// Many ports, devices that are no printers, ports that go, and how a port is closed.
class TestFinderFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanup() { ObservedFinder::settle(); }

    void cleanupTestCase() { m_quiet.reset(); }

    void sixtyFourPortsAreSearchedAtOnce()
    {
        std::atomic<int> begun{0};
        constexpr int portCount = 64;
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &port, int, int) {
            // Each task gets to its first wait before any goes on.
            if (!port.property("begun").toBool()) {
                port.setProperty("begun", true);
                ++begun;
                bench.holdWhile([&begun] { return begun < portCount; });
            }
        };
        QStringList ports;
        for (int i = 0; i < portCount - 1; ++i)
            ports.append(bench.add(faultyPrinter(VirtualFault::Silent))->portPath());
        ports.append(bench.add(printerOf("CITIZEN_CTS_2000"))->portPath());
        ObservedFinder observed;
        observed.finder->start(ports);
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames.last(), QString("deviceFinded CITIZEN_CTS_2000"));
        QCOMPARE(observed.found.constFirst().settings().portName(), ports.last());
    }

    void faultyDevicesBesideAPrinter_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("value");
        QTest::newRow("silent") << int(VirtualFault::Silent) << 0;
        QTest::newRow("echo") << int(VirtualFault::Echo) << 0;
        QTest::newRow("partial") << int(VirtualFault::Partial) << 0;
        QTest::newRow("differing ids") << int(VirtualFault::DifferingIds) << 0;
        QTest::newRow("gone at once") << int(VirtualFault::HangUp) << 1;
        QTest::newRow("gone in mid-dialogue") << int(VirtualFault::HangUp) << 5;
    }

    void faultyDevicesBesideAPrinter()
    {
        QFETCH(int, fault);
        QFETCH(int, value);
        PrinterBench bench;
        const auto faulty = bench.add(faultyPrinter(VirtualFault(fault), value));
        const auto printer = bench.add(printerOf("CITIZEN_PPU_231", 1200));
        ObservedFinder observed;
        observed.finder->start({faulty->portPath(), printer->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.found.size(), 1);
        QCOMPARE(observed.found.constFirst().deviceId(), QString("CITIZEN_PPU_231"));
    }

    void portThatVanishesInASilentWaitIsNoPrinter_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("isSearch");
        // As many bytes as the host has sent when it waits for silence, on the first line setting.
        QTest::newRow("AV-268, confirmed") << "AV_268" << 10 << false;
        QTest::newRow("Citizen PPU-231, confirmed") << "CITIZEN_PPU_231" << 7 << false;
        QTest::newRow("Star, confirmed") << "TSP-TUP" << 12 << false;
        const int before = 63 * 6 + 63 * 3;  // scan1D491 and scanSwecoin
        QTest::newRow("AV-268, searched") << "AV_268" << before + 24 * 7 + 10 << true;
        QTest::newRow("Citizen PPU-231, searched")
            << "CITIZEN_PPU_231" << before + 24 * 7 + 2 + 7 << true;
        QTest::newRow("Star, searched") << "TSP-TUP" << before + 12 << true;
    }

    // A pulled adapter reads as silence, which is what these probes wait for.
    void portThatVanishesInASilentWaitIsNoPrinter()
    {
        QFETCH(QString, model);
        QFETCH(int, bytes);
        QFETCH(bool, isSearch);
        VirtualPrinterOptions options = model == "AV_268"
                                            ? printerOf(model, 115200, QSerialPort::SoftwareControl)
                                        : model == "TSP-TUP" ? printerOf(model, 38400)
                                                             : printerOf(model, 19200);
        for (const bool vanishes : {false, true}) {
            options.fault = vanishes ? VirtualFault::HangUp : VirtualFault::None;
            options.faultValue = bytes;
            PrinterBench bench;
            const auto printer = bench.add(options);
            ObservedFinder observed;
            QList<PrintDeviceInfo> records{record(printer->portPath(), model, options.baudRate)};
            if (isSearch)
                observed.finder->start({printer->portPath()});
            else
                observed.finder->test(records);
            QVERIFY(observed.waitForFinished());
            if (!vanishes)
                QCOMPARE(observed.signalNames.last(), "deviceFinded " + model);
            else
                QCOMPARE(observed.signalNames,
                         (QStringList{"noDevices There no devices finded", "finished"}));
            // The silent wait is the last: the count of bytes is the one on which it hangs.
            if (vanishes)
                QCOMPARE(printer->received().size(), bytes);
        }
    }

    void vanishedPortIsClosedAtTheNextLook()
    {
        VirtualPrinter printer(printerOf("AV_268"));
        const auto port = QSharedPointer<CancellablePort>::create(printer.portPath());
        const PrintersHelper helper(port);
        QVERIFY(port->open(QIODevice::ReadWrite));
        QVERIFY(!port->waitForReadyRead(0));
        QVERIFY(helper.portIsValid());
        // A line that has only run out of input, or can't do a parity, is still there.
        port->setParity(QSerialPort::EvenParity);
        QVERIFY(helper.portIsValid());
        printer.hangUp();
        QVERIFY(!port->waitForReadyRead(1000));
        QVERIFY(port->isOpen());
        QVERIFY(!helper.portIsValid());
        QVERIFY(!port->isOpen());
    }

    void closingBytesLeaveTheLineBeforeThePortCloses()
    {
        QStringList &calls = RecordingOutput::calls;
        for (const bool isPrinter : {true, false}) {
            calls.clear();
            PrinterBench bench;
            discovery::outputOf = RecordingOutput::of;
            const auto printer = bench.add(printerOf("CITIZEN_PPU_700", isPrinter ? 1200 : 9600));
            ObservedFinder observed;
            QList<PrintDeviceInfo> records{record(printer->portPath(), "CITIZEN_PPU_700", 1200)};
            observed.finder->test(records);
            QVERIFY(observed.waitForFinished());
            // 128 characters of 10 bits at 1200 baud.
            QCOMPARE(calls, isPrinter ? (QStringList{"pause 1067", "close"})
                                      : (QStringList{"drop", "close"}));
        }
    }

    // The system's close would wait for what a held line doesn't take.
    void cancelledTestDropsWhatIsUnderWay()
    {
        std::atomic<bool> reached{false};
        std::atomic<bool> hold{true};
        RecordingOutput::calls.clear();
        PrinterBench bench;
        discovery::outputOf = RecordingOutput::of;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        bench.beforeWait = [&](QSerialPort &, int, int) {
            reached = true;
            bench.holdWhile([&hold] { return hold.load(); });
        };
        ObservedFinder observed;
        QList<PrintDeviceInfo> records{record(printer->portPath())};
        observed.finder->test(records);
        QTRY_VERIFY(reached.load());
        observed.finder->cancel();
        hold = false;
        ObservedFinder::settle();
        QCOMPARE(RecordingOutput::calls, (QStringList{"drop", "close"}));
    }

    void endlessGarbageEndsTheSearch()
    {
        PrinterBench bench;
        QStringList ports;
        for (const auto fault : {VirtualFault::Garbage, VirtualFault::Flood})
            ports.append(bench.add(faultyPrinter(fault, 0, 3))->portPath());
        ObservedFinder observed;
        observed.finder->start(ports);
        QVERIFY(observed.waitForFinished());
    }

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestFinderFaults)
#include "tst_finderfaults.moc"
