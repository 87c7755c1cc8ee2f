#include <QtTest>
#include <algorithm>
#include <optional>
#include <random>

#include "helperbench.h"
#include "logcatcher.h"

using namespace helperbench;

namespace {

/// Adds up what is waited for, and waits.
class CountedWaits
{
public:
    CountedWaits()
    {
        sum() = 0;
        real() = discovery::waitForInput;
        discovery::waitForInput = [](QSerialPort &port, int milliseconds) {
            sum() += milliseconds;
            return real()(port, milliseconds);
        };
    }
    ~CountedWaits() { discovery::waitForInput = real(); }
    CountedWaits(const CountedWaits &) = delete;
    CountedWaits &operator=(const CountedWaits &) = delete;

    int milliseconds() const { return sum(); }

private:
    static int &sum()
    {
        static int milliseconds = 0;
        return milliseconds;
    }

    static discovery::WaitForInput &real()
    {
        static discovery::WaitForInput wait = nullptr;
        return wait;
    }
};

}  // namespace

/// Stops, ports that go, and devices that send what no printer sends.
class TestHelperFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Quiet for those tests that don't look at the log; debug lines are still made.
        m_quiet.emplace();
    }

    void cleanupTestCase() { m_quiet.reset(); }

    void av268IsFoundThoughThePortWentInTheSilentWait()
    {
        // A wait without input is what the probe hopes for, whatever the reason.
        Setup setup(printerOf("AV_268", 115200, QSerialPort::SoftwareControl));
        setup.bench.beforeWait = [](QSerialPort &port, int, int count) {
            if (count == 4)
                port.close();
        };
        const LogCatcher log;
        QVERIFY(setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("AV_268"));
        QCOMPARE(log.lines().filter("device not open"), QStringList());
    }

    void stopEndsEachWalkAtItsNextTurn_data()
    {
        QTest::addColumn<int>("stopAtWait");
        QTest::addColumn<QStringList>("sent");
        const QStringList av268 = silentsearch::scanAV268();
        const QStringList identification = silentsearch::scan1D491();
        const QStringList swecoin = silentsearch::scanSwecoin();
        const QStringList star = silentsearch::scanStar();
        QTest::newRow("before the scan") << 0 << av268;
        QTest::newRow("first wait: the dialogue runs to its end")
            << 1 << identification.mid(0, 2) + av268;
        QTest::newRow("fifth wait") << 5 << identification.mid(0, 6) + av268;
        QTest::newRow("in scanSwecoin") << 127 << identification + swecoin.mid(0, 1) + av268;
        QTest::newRow("in scanStar") << 190 << identification + swecoin + star.mid(0, 1) + av268;
        QTest::newRow("in scanAV268") << 214 << identification + swecoin + star + av268;
        QTest::newRow("in scanSimple")
            << 215
            << identification + swecoin + star + av268 + silentsearch::scanSimple().mid(0, 1);
    }

    void stopEndsEachWalkAtItsNextTurn()
    {
        QFETCH(int, stopAtWait);
        Setup setup(faultyPrinter(VirtualFault::Silent));
        if (stopAtWait == 0)
            setup.helper.requestStop();
        setup.bench.beforeWait = [&setup, stopAtWait](QSerialPort &, int, int count) {
            if (count == stopAtWait)
                setup.helper.requestStop();
        };
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QTEST(linesOf(*setup.printer), "sent");
    }

    void av268RunsAfterAStop()
    {
        Setup setup(printerOf("AV_268", 115200, QSerialPort::SoftwareControl));
        setup.helper.requestStop();
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("AV_268"));
    }

    void stoppedStarPutsTheListBack()
    {
        // The list shows in the count of entries of a walk that a stop ends at once.
        Setup setup(faultyPrinter(VirtualFault::Silent));
        setup.helper.requestStop();
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        const LogCatcher log;
        QVERIFY(!setup.helper.scanSwecoin(setup.id, setup.settings));
        QCOMPARE(log.lines(),
                 QStringList("printers debug " + setup.printer->portName() + " 115200 1 from 63"));
    }

    void closedPortEndsTheScanBeforeTheNextExchange_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("closeAtWait");
        for (int wait = 1; wait <= 2; ++wait)
            QTest::addRow("identification, wait %d", wait) << "CUSTOM_VKP_80" << wait;
        for (int wait = 1; wait <= 4; ++wait)
            QTest::addRow("Swecoin, wait %d", wait) << "SWECOIN_TM_20XX" << wait;
        for (int wait = 1; wait <= 3; ++wait)
            QTest::addRow("Star, wait %d", wait) << "TSP-TUP" << wait;
        for (int wait = 1; wait <= 3; ++wait)
            QTest::addRow("AV-268, wait %d", wait) << "AV_268" << wait;
        for (int wait = 1; wait <= 3; ++wait)
            QTest::addRow("simple, wait %d", wait) << "CITIZEN_PPU_231" << wait;
    }

    void closedPortEndsTheScanBeforeTheNextExchange()
    {
        QFETCH(QString, model);
        QFETCH(int, closeAtWait);
        const bool isAv268 = model == "AV_268";
        const int baudRate = isAv268 ? 115200 : 19200;
        const auto flow = isAv268 ? QSerialPort::SoftwareControl : QSerialPort::NoFlowControl;
        Setup setup(printerOf(model, baudRate, flow));
        int waits = 0;
        setup.bench.beforeWait = [&waits, closeAtWait](QSerialPort &port, int, int count) {
            waits = count;
            if (count == closeAtWait)
                port.close();
        };
        const LogCatcher log;
        setup.id = model;
        setup.settings = settingsOf(baudRate, flow);
        // A Star printer is looked for on its first line setting.
        if (model == "TSP-TUP")
            setup.printer = setup.bench.add(printerOf(model, 38400));
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QVERIFY(waits <= closeAtWait);
        QCOMPARE(log.lines().filter("device not open"), QStringList());
    }

    void printerThatVanishesIsNeverFoundAndNeverHangs_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("bytes");
        const QList<QPair<QString, int>> dialogues{{"CUSTOM_VKP_80", 6},
                                                   {"SWECOIN_TM_20XX", 12},
                                                   {"TSP-TUP", 9},
                                                   {"AV_268", 6},
                                                   {"CITIZEN_PPU_231", 4}};
        for (const auto &[model, most] : dialogues) {
            for (int bytes = 1; bytes <= most; ++bytes)
                QTest::addRow("%s after %d", qPrintable(model), bytes) << model << bytes;
        }
    }

    void printerThatVanishesIsNeverFoundAndNeverHangs()
    {
        QFETCH(QString, model);
        QFETCH(int, bytes);
        VirtualPrinterOptions options = model == "AV_268"
                                            ? printerOf(model, 115200, QSerialPort::SoftwareControl)
                                        : model == "TSP-TUP" ? printerOf(model, 38400)
                                                             : printerOf(model, 19200);
        options.fault = VirtualFault::HangUp;
        options.faultValue = bytes;
        Setup setup(options);
        setup.id = model;
        setup.settings = settingsOf(options.baudRate, *options.flowControl);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
    }

    void faultyDevicesAreNotTakenForPrinters_data()
    {
        QTest::addColumn<int>("fault");
        QTest::newRow("echo") << int(VirtualFault::Echo);
        QTest::newRow("partial") << int(VirtualFault::Partial);
        QTest::newRow("differing ids") << int(VirtualFault::DifferingIds);
    }

    void faultyDevicesAreNotTakenForPrinters()
    {
        QFETCH(int, fault);
        Setup setup(faultyPrinter(VirtualFault(fault)));
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QVERIFY(setup.id.isNull());
    }

    void randomAnswersEndTheScan_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 40; ++seed)
            QTest::addRow("garbage, seed %u", seed) << int(VirtualFault::Garbage) << seed;
        for (unsigned seed = 1; seed <= 10; ++seed)
            QTest::addRow("flood, seed %u", seed) << int(VirtualFault::Flood) << seed;
    }

    void randomAnswersEndTheScan()
    {
        QFETCH(int, fault);
        QFETCH(unsigned, seed);
        Setup setup(faultyPrinter(VirtualFault(fault), 0, seed));
        // What does come at once comes late, behind a wait or two.
        std::mt19937 random(seed);
        setup.bench.beforeWait = [&random, &setup](QSerialPort &port, int, int) {
            if (random() % 4 == 0) {
                port.flush();
                setup.printer->service();
            }
        };
        const bool found = setup.helper.scan(setup.id, setup.settings);
        QVERIFY(found || setup.id.isNull());
        QVERIFY(setup.id.isNull() || std::find(std::begin(modelIds), std::end(modelIds),
                                               setup.id) != std::end(modelIds));
        QVERIFY(setup.port->bytesAvailable() < 1024 * 1024);
    }

    void realWaitsFindAPrinterThatAnswersLate()
    {
        VirtualPrinterOptions options = printerOf("CUSTOM_VKP_80");
        options.fault = VirtualFault::Slow;
        options.faultValue = 20;
        VirtualPrinter printer(options);
        printer.start();
        const QSharedPointer<QSerialPort> port(new QSerialPort(printer.portPath()));
        PrintersHelper helper(port, nullptr);
        QString id;
        hearth::Rs232PortSettings settings;
        QVERIFY(helper.scan(id, settings));
        QCOMPARE(id, QString("CUSTOM_VKP_80"));
        const QByteArray closing = QByteArray::fromHex("1B69200A200A200A200A200A200A200A1D6502");
        QTRY_VERIFY(printer.received().endsWith(closing));
    }

    // No device makes a dialogue on one line setting ask for more than the hostile one does.
    void confirmationsUnderRandomBytesAskForNoLongerWaitsThanThoseOfAHostileDevice()
    {
        VirtualPrinter printer(faultyPrinter(VirtualFault::Garbage, 0, 7));
        printer.start();
        const QSharedPointer<QSerialPort> port(new QSerialPort(printer.portPath()));
        PrintersHelper helper(port, nullptr);
        const CountedWaits waits;
        int most = 0;
        for (const auto &[model, milliseconds] :
             {std::pair<const char *, int>("CUSTOM_VKP_80", 4 * 300),
              {"CUSTOM_TG_2480_H", 4 * 300},
              {"CUSTOM_TG_2480_SE", 4 * 300},
              {"CITIZEN_PPU_700", 4 * 300},
              {"CITIZEN_CBM_1000", 4 * 300},
              {"CITIZEN_CTS_2000", 4 * 300},
              {"CITIZEN_CPP_8001", 4 * 300},
              {"EPSON_EU_4XX", 4 * 300},
              {"SWECOIN_TM_20XX", 4 * 1400},
              {"AV_268", 4 * 1000},
              {"CITIZEN_PPU_231", 3 * 1000}}) {
            QString id = model;
            hearth::Rs232PortSettings settings = settingsOf(19200);
            helper.scan(id, settings);
            most += milliseconds;
            QVERIFY2(waits.milliseconds() <= most, model);
        }
        QVERIFY(waits.milliseconds() > 0);
        QVERIFY(port->isOpen());
    }

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestHelperFaults)
#include "tst_helperfaults.moc"
