#include <QtTest>
#include <optional>

#include "helperbench.h"
#include "logcatcher.h"
#include "markingtranslator.h"
#include "pseudoterminal.h"

using namespace helperbench;

namespace {

using Probe = bool (PrintersHelper::*)(QString &, hearth::Rs232PortSettings &);

/// A device that answers each question at the last moment, whatever the line setting, so that a
/// search waits as long as it can, and is never taken for a printer.
class HostileDevice
{
public:
    HostileDevice()
    {
        if (m_terminal.path().isEmpty())
            qFatal("there is no pseudo terminal to be had");
        current() = this;
        m_realWait = discovery::waitForInput;
        discovery::waitForInput = wait;
    }
    ~HostileDevice() { discovery::waitForInput = m_realWait; }
    HostileDevice(const HostileDevice &) = delete;
    HostileDevice &operator=(const HostileDevice &) = delete;

    const QString &portPath() const { return m_terminal.path(); }

    int waited = 0;  ///< Milliseconds that the search would have waited.

private:
    static HostileDevice *&current()
    {
        static HostileDevice *device = nullptr;
        return device;
    }

    static bool wait(QSerialPort &port, int milliseconds)
    {
        HostileDevice &device = *current();
        device.waited += milliseconds;
        while (port.bytesToWrite() > 0 && port.flush()) {
        }
        device.m_terminal.write(device.answerTo(device.m_terminal.read()));
        return port.waitForReadyRead(0);
    }

    QByteArray answerTo(const QByteArray &request)
    {
        static const QMap<QByteArray, QByteArray> answers{
            {"1d4901", ""},   {"1b0507", "0101"},         {"1b0501", "06"},
            {"1b0611", "11"}, {"1b0612", "13"},           {"05", "01"},
            {"04", "01"},     {"1b1e60021b0601", "0101"}, {"535441", "010203"},
            {"1b76", "10"},   {"01020304", "01"},         {"010203", ""}};
        // The second form of the identification gets another byte each time.
        if (request.toHex() == "1d4931")
            return QByteArray(1, char(++m_identification % 2 + 1));
        if (!answers.contains(request.toHex()))
            qFatal("unknown request %s", request.toHex().constData());
        return QByteArray::fromHex(answers.value(request.toHex()));
    }

    PseudoTerminal m_terminal;
    int m_identification = 0;
    discovery::WaitForInput m_realWait = nullptr;
};

}  // namespace

/// The helper, its port, and its walk over the line settings.
class TestHelperWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Quiet for those tests that don't look at the log; debug lines are still made.
        m_quiet.emplace();
    }

    void cleanupTestCase() { m_quiet.reset(); }

    void helperIsNamedAfterItsPort()
    {
        const QSharedPointer<QSerialPort> port(new QSerialPort("ttyS7"));
        QCOMPARE(PrintersHelper(port, nullptr).objectName(), QString("printersHelper[ttyS7]"));
        QCOMPARE(PrintersHelper(QSharedPointer<QSerialPort>(), nullptr).objectName(),
                 QString("printersHelper[Unknown]"));
        QObject parent;
        QCOMPARE((new PrintersHelper(port, &parent))->parent(), &parent);
    }

    void helperWithoutPortFindsNothing()
    {
        PrintersHelper helper(QSharedPointer<QSerialPort>(), nullptr);
        QString id;
        hearth::Rs232PortSettings settings;
        helper.setPortSettings(settings);
        QVERIFY(!helper.portIsValid());
        QVERIFY(!helper.waitForReadyRead(0));
        {
            const LogCatcher log;
            QVERIFY(!helper.scan(id, settings));
            QCOMPARE(log.lines(), QStringList("default critical There are no port objects"));
        }
        for (const Probe probe :
             {&PrintersHelper::scan1D491, &PrintersHelper::scan1B73, &PrintersHelper::scanSwecoin,
              &PrintersHelper::scanStar, &PrintersHelper::scanAV268, &PrintersHelper::scanSimple})
            QVERIFY(!(helper.*probe)(id, settings));
        QVERIFY(id.isNull());
    }

    void portThatCannotBeOpenedIsReported()
    {
        const QSharedPointer<QSerialPort> port(new QSerialPort("no-such-port"));
        PrintersHelper helper(port, nullptr);
        QString id;
        hearth::Rs232PortSettings settings;
        const LogCatcher log;
        QVERIFY(!helper.scan(id, settings));
        QCOMPARE(log.lines(),
                 (QStringList{"printers debug Start search on no-such-port for printers",
                              "default critical Open port error (no-such-port)"}));
    }

    void starSettingsAreTwentyFour()
    {
        PrintersHelper helper(QSharedPointer<QSerialPort>(), nullptr);
        const QVector<hearth::Rs232PortSettings> entries = helper.prepareStarSettings();
        QCOMPARE(entries.size(), 24);
        checkMatrix(entries, {38400, 19200, 9600, 4800}, 2);
    }

    void searchWalksSixtyThreeLineSettings()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QVector<hearth::Rs232PortSettings> entries;
        setup.bench.beforeWait = [&](QSerialPort &, int, int) { entries.append(setup.settings); };
        QVERIFY(!setup.helper.scanSwecoin(setup.id, setup.settings));
        QCOMPARE(entries.size(), 63);
        checkMatrix(entries, {115200, 57600, 38400, 19200, 9600, 4800, 1200}, 3);
    }

    void settingsArePutOnThePort()
    {
        // A closed port takes what a pseudo terminal would refuse.
        const QSharedPointer<QSerialPort> port(new QSerialPort("ttyS7"));
        PrintersHelper helper(port, nullptr);
        hearth::Rs232PortSettings wanted =
            settingsOf(4800, QSerialPort::HardwareControl, QSerialPort::OddParity);
        wanted.setDataBits(QSerialPort::Data7);
        wanted.setStopBits(QSerialPort::TwoStop);
        helper.setPortSettings(wanted);
        QCOMPARE(port->baudRate(), 4800);
        QCOMPARE(port->parity(), QSerialPort::OddParity);
        QCOMPARE(port->dataBits(), QSerialPort::Data7);
        QCOMPARE(port->stopBits(), QSerialPort::TwoStop);
        QCOMPARE(port->flowControl(), QSerialPort::HardwareControl);
    }

    void inputThatIsThereNeedsNoWait()
    {
        Setup setup(faultyPrinter(VirtualFault::Echo));
        QVERIFY(!setup.helper.waitForReadyRead(0));
        setup.port->write("ab");
        QVERIFY(setup.helper.waitForReadyRead(0));
        char byte = 0;
        QCOMPARE(setup.port->read(&byte, 1), qint64(1));
        setup.bench.beforeWait = [](QSerialPort &, int, int) { QFAIL("there is input"); };
        QVERIFY(setup.helper.waitForReadyRead(1000));
        setup.port->close();
        QVERIFY(!setup.helper.portIsValid());
        QVERIFY(!setup.helper.waitForReadyRead(1000));
    }

    void waitLetsEventsRun()
    {
        PrintersHelper helper(QSharedPointer<QSerialPort>(), nullptr);
        QObject receiver;
        bool came = false;
        QMetaObject::invokeMethod(
            &receiver, [&came] { came = true; }, Qt::QueuedConnection);
        QVERIFY(!helper.waitForReadyRead(0));
        QVERIFY(came);
    }

    void eachTurnOfAWalkLetsEventsRun()
    {
        // On a closed port the walk ends in front of its first wait.
        Setup setup(faultyPrinter(VirtualFault::Silent));
        setup.port->close();
        QObject receiver;
        bool came = false;
        QMetaObject::invokeMethod(
            &receiver, [&came] { came = true; }, Qt::QueuedConnection);
        QVERIFY(!setup.helper.scanSwecoin(setup.id, setup.settings));
        QVERIFY(came);
    }

    void stopByAnEventEndsTheWalkInThatTurn()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QObject receiver;
        QMetaObject::invokeMethod(
            &receiver, [&setup] { setup.helper.requestStop(); }, Qt::QueuedConnection);
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer), QStringList());
    }

    void confirmationByAnEventLeavesTheWalkItsEntries()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QObject receiver;
        const auto confirm = [&setup] {
            QString id = "CUSTOM_VKP_80";
            hearth::Rs232PortSettings settings = settingsOf(9600);
            setup.helper.scan(id, settings);
        };
        QMetaObject::invokeMethod(&receiver, confirm, Qt::QueuedConnection);
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer),
                 (QStringList{"9600 none < 1D 49 01", "9600 none < 1D 49 31"}) +
                     silentsearch::scan1D491());
    }

    void textsAreTranslatedInTheContextOfTheHelper()
    {
        MarkingTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QCOMPARE(PrintersHelper(QSharedPointer<QSerialPort>(), nullptr).objectName(),
                 QString("printersHelper[PrintersHelper: Unknown]"));
        const LogCatcher log;
        QString id;
        hearth::Rs232PortSettings settings;
        PrintersHelper(QSharedPointer<QSerialPort>(), nullptr).scan(id, settings);
        const QSharedPointer<QSerialPort> closed(new QSerialPort("no-such-port"));
        PrintersHelper(closed, nullptr).scan(id, settings);
        Setup setup(printerAnswering("1B76:0102,-", 19200, QSerialPort::NoFlowControl));
        for (int i = 0; i < 2; ++i) {
            setup.id = "CITIZEN_PPU_231";
            setup.settings = settingsOf(19200);
            setup.helper.scan(setup.id, setup.settings);
        }
        QCoreApplication::removeTranslator(&translator);
        const QString port = setup.printer->portName();
        const QStringList start{
            "printers debug PrintersHelper: Start search on " + port + " for printers",
            "printers debug " + port + " 19200 1 from 1"};
        const QString stop = "printers debug PrintersHelper: Stop search on " + port +
                             " for printers CITIZEN_PPU_231";
        QCOMPARE(
            log.lines(),
            (QStringList{"default critical PrintersHelper: There are no port objects",
                         "printers debug PrintersHelper: Start search on no-such-port for printers",
                         "default critical PrintersHelper: Open port error (no-such-port)"}) +
                start +
                QStringList(
                    {"printers debug PrintersHelper: incorrect data 01 02 00 00 00", stop}) +
                start + QStringList({"printers debug PrintersHelper: timeout", stop}));
    }

    void silentPortGetsAllProbesInTheirOrder()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QVERIFY(setup.id.isNull());
        QCOMPARE(linesOf(*setup.printer), silentsearch::wholeSearch());
        QVERIFY(setup.port->isOpen());
    }

    void waitsOfASilentPort()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QList<int> waits;
        setup.bench.beforeWait = [&waits](QSerialPort &, int milliseconds, int) {
            waits.append(milliseconds);
        };
        setup.helper.scan(setup.id, setup.settings);
        QList<int> expected;
        for (const auto &[count, milliseconds] :
             {std::pair<int, int>(126, 300), {63, 1400}, {24, 300}, {1, 1000}, {36, 1000}}) {
            for (int i = 0; i < count; ++i)
                expected.append(milliseconds);
        }
        QCOMPARE(waits, expected);
    }

    // The pages give both sums: 170.2 seconds of silence, and this one.
    void hostileDeviceKeepsASearchForNineMinutes()
    {
        HostileDevice device;
        const QSharedPointer<QSerialPort> port(new QSerialPort(device.portPath()));
        QVERIFY(port->open(QIODevice::ReadWrite));
        PrintersHelper helper(port);
        QString id;
        hearth::Rs232PortSettings settings;
        QVERIFY(!helper.scan(id, settings));
        const int identification = 63 * 4 * 300;
        // Under software flow control the line takes the answer 11 for its own, and step 4 isn't
        // tried.
        const int swecoin = (42 * 4 + 21 * 3) * 1400;
        const int star = 24 * (300 + 100 + 100 + 1000);
        const int av268 = 4 * 1000;
        const int simple = 36 * 3 * 1000;
        QCOMPARE(device.waited, identification + swecoin + star + av268 + simple);
        QCOMPARE(device.waited, 547000);
    }

    void closedPortIsOpenedAndLeftOpen()
    {
        Setup setup(printerOf("CUSTOM_VKP_80"));
        setup.port->close();
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QVERIFY(setup.port->isOpen());
    }

    void listIsBackAfterStar()
    {
        Setup silent(faultyPrinter(VirtualFault::Silent));
        QVERIFY(!silent.helper.scanStar(silent.id, silent.settings));
        QVERIFY(!silent.helper.scanSimple(silent.id, silent.settings));
        QCOMPARE(linesOf(*silent.printer), silentsearch::scanStar() + silentsearch::scanSimple());
    }

    void listIsBackAfterAFoundStar()
    {
        Setup found(printerOf("TSP-TUP", 38400));
        QVERIFY(found.helper.scanStar(found.id, found.settings));
        found.printer->service();
        QVERIFY(!found.helper.scanSimple(found.id, found.settings));
        QCOMPARE(linesOf(*found.printer).filter("1B 76"), silentsearch::scanSimple());
    }

    void starListStaysAfterAnEchoingLine()
    {
        Setup setup(printerAnswering("1B0601:1B0601", 38400, QSerialPort::NoFlowControl));
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        QCOMPARE(setup.dialogueOn("38400 none"),
                 (QStringList{"< 1B 1E 60 02 1B 06 01", "> 1B 06 01"}));
        QVERIFY(!setup.helper.scanSimple(setup.id, setup.settings));
        checkStarListIsWalkedBySimple(*setup.printer);
    }

    void listIsBackAfterALineThatEchoesEverything()
    {
        // The echo begins with the Star mode, so it is just a wrong status.
        Setup setup(faultyPrinter(VirtualFault::Echo));
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer).filter("<"), silentsearch::scanStar());
        setup.helper.requestStop();
        const LogCatcher log;
        QVERIFY(!setup.helper.scanSwecoin(setup.id, setup.settings));
        QCOMPARE(log.lines(),
                 QStringList("printers debug " + setup.printer->portName() + " 115200 1 from 63"));
    }

    void starListStaysAfterAPortThatWent_data()
    {
        QTest::addColumn<int>("waits");
        QTest::newRow("at the head of an entry") << 0;
        QTest::newRow("in the wait for the status") << 1;
        QTest::newRow("in the wait for the answer to ENQ") << 2;
        QTest::newRow("in the wait for the answer to EOT") << 3;
        QTest::newRow("in the wait behind the filler") << 4;
    }

    void starListStaysAfterAPortThatWent()
    {
        QFETCH(int, waits);
        Setup setup(printerOf("TSP-TUP", 38400));
        if (waits == 0)
            setup.port->close();
        setup.bench.beforeWait = [waits](QSerialPort &port, int, int count) {
            if (count == waits)
                port.close();
        };
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        setup.bench.beforeWait = nullptr;
        QVERIFY(setup.port->open(QIODevice::ReadWrite));
        setup.port->clear();
        QVERIFY(!setup.helper.scanSimple(setup.id, setup.settings));
        checkStarListIsWalkedBySimple(*setup.printer);
    }

private:
    static void checkMatrix(const QVector<hearth::Rs232PortSettings> &entries,
                            const QList<int> &baudRates, int flowControls)
    {
        int i = 0;
        for (const int baudRate : baudRates) {
            for (const auto parity :
                 {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity}) {
                for (int flow = 0; flow < flowControls; ++flow) {
                    const hearth::Rs232PortSettings &entry = entries.at(i++);
                    QCOMPARE(entry, settingsOf(baudRate, QSerialPort::FlowControl(flow), parity));
                    QCOMPARE(entry.dataBits(), QSerialPort::Data8);
                    QCOMPARE(entry.stopBits(), QSerialPort::OneStop);
                    QVERIFY(entry.portName().isNull());
                }
            }
        }
        QCOMPARE(i, entries.size());
    }

    static void checkStarListIsWalkedBySimple(const VirtualPrinter &printer)
    {
        QCOMPARE(
            linesOf(printer).filter(QRegularExpression("< 1B 76$")),
            silentsearch::messagesOnEach({19200, 9600, 4800}, {"none", "hardware"}, {"1B 76"}));
    }

    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestHelperWalk)
#include "tst_helperwalk.moc"
