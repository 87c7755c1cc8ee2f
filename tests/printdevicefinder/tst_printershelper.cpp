#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <QtTest>
#include <optional>
#include <random>

#include "logcatcher.h"
#include "markingtranslator.h"
#include "printdevicefinder/printershelper.h"
#include "printerbench.h"
#include "printers/textprintermodels.h"

namespace {

using Probe = bool (PrintersHelper::*)(QString &, hearth::Rs232PortSettings &);

/// A table of replies written as "1D4901:5D,5E 1B76:-": requests with their answers in turn, "-"
/// being silence.
VirtualModel printerAnswering(const QString &replies, int baudRate,
                              QSerialPort::FlowControl flowControl)
{
    VirtualModel model{"printer of the test", baudRate, flowControl, {}};
    for (const QString &reply : replies.split(' ', Qt::SkipEmptyParts)) {
        VirtualReply row{QByteArray::fromHex(reply.section(':', 0, 0).toLatin1()), {}};
        for (const QString &answer : reply.section(':', 1).split(','))
            row.answers.append(QByteArray::fromHex(answer.toLatin1()));
        model.replies.append(row);
    }
    return model;
}

hearth::Rs232PortSettings settingsOf(int baudRate,
                                     QSerialPort::FlowControl flow = QSerialPort::NoFlowControl,
                                     QSerialPort::Parity parity = QSerialPort::NoParity)
{
    hearth::Rs232PortSettings settings;
    settings.setBaudRate(baudRate);
    settings.setFlowControl(flow);
    settings.setParity(parity);
    return settings;
}

/// A helper over an open port with a virtual printer at its other end.
class Setup
{
public:
    explicit Setup(const VirtualPrinterOptions &options)
        : printer(bench.add(options)), helper(openPort())
    {}
    explicit Setup(const VirtualModel &model) : printer(bench.add(model)), helper(openPort()) {}

    /// What went over the line on one line setting, as "< 1D 49 01".
    QStringList dialogueOn(const QString &lineSetting)
    {
        printer->service();
        QStringList found;
        for (const QString &line : linesOf(*printer)) {
            if (line.startsWith(lineSetting + " "))
                found.append(line.mid(lineSetting.size() + 1));
        }
        return found;
    }

    PrinterBench bench;
    std::shared_ptr<VirtualPrinter> printer;
    QSharedPointer<QSerialPort> port;
    PrintersHelper helper;
    QString id;
    hearth::Rs232PortSettings settings;

private:
    const QSharedPointer<QSerialPort> &openPort()
    {
        port.reset(new QSerialPort(printer->portPath()));
        port->open(QIODevice::ReadWrite);
        return port;
    }
};

/// A device that answers each question at the last moment, whatever the line setting, so that a
/// search waits as long as it can, and is never taken for a printer.
class HostileDevice
{
public:
    HostileDevice()
    {
        m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        char path[64] = {};
        if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
            ::ptsname_r(m_master, path, sizeof path) != 0)
            qFatal("there is no pseudo terminal to be had");
        portPath = QString::fromLocal8Bit(path);
        current() = this;
        m_realWait = discovery::waitForInput;
        discovery::waitForInput = wait;
    }
    ~HostileDevice()
    {
        discovery::waitForInput = m_realWait;
        ::close(m_master);
    }
    HostileDevice(const HostileDevice &) = delete;
    HostileDevice &operator=(const HostileDevice &) = delete;

    QString portPath;
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
        char request[64];
        const ssize_t count = ::read(device.m_master, request, sizeof request);
        const QByteArray answer =
            device.answerTo(QByteArray(request, int(qMax<ssize_t>(count, 0))));
        if (::write(device.m_master, answer.constData(), size_t(answer.size())) != answer.size())
            qFatal("the answer didn't get out");
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

    int m_master = -1;
    int m_identification = 0;
    discovery::WaitForInput m_realWait = nullptr;
};

const char *const modelIds[] = {
    "CUSTOM_VKP_80",    "CUSTOM_TG_2480_H", "CUSTOM_TG_2480_SE",
    "CITIZEN_PPU_700",  "CITIZEN_CBM_1000", "CITIZEN_CTS_2000",
    "CITIZEN_CPP_8001", "EPSON_EU_4XX",     "SWECOIN_TM_20XX",
    "TSP-TUP",          "AV_268",           "CITIZEN_PPU_231",
};

}  // namespace

class TestPrintersHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Quiet for those tests that don't look at the log; debug lines are still made.
        m_quiet.emplace();
    }

    void cleanupTestCase() { m_quiet.reset(); }

    // Helper and line settings

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

    // The whole scan

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
        const QSharedPointer<QSerialPort> port(new QSerialPort(device.portPath));
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

    void everyModelIsFound_data()
    {
        QTest::addColumn<int>("baudRate");
        QTest::addColumn<int>("flowControl");
        for (const char *const model : modelIds) {
            const bool isAv268 = QByteArray(model) == "AV_268";
            QTest::addRow("%s", model)
                << (isAv268 ? 115200 : 9600)
                << int(isAv268 ? QSerialPort::SoftwareControl : QSerialPort::HardwareControl);
        }
    }

    void everyModelIsFound()
    {
        QFETCH(int, baudRate);
        QFETCH(int, flowControl);
        const QString model = QTest::currentDataTag();
        Setup setup(printerOf(model, baudRate, QSerialPort::FlowControl(flowControl)));
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, model);
        QCOMPARE(setup.settings, settingsOf(baudRate, QSerialPort::FlowControl(flowControl)));
    }

    void everyModelIsConfirmedOnItsOwnLine_data() { everyModelIsFound_data(); }

    void everyModelIsConfirmedOnItsOwnLine()
    {
        QFETCH(int, baudRate);
        QFETCH(int, flowControl);
        const QString model = QTest::currentDataTag();
        Setup setup(printerOf(model, baudRate, QSerialPort::FlowControl(flowControl)));
        setup.id = model;
        setup.settings = settingsOf(baudRate, QSerialPort::FlowControl(flowControl));
        const hearth::Rs232PortSettings given = setup.settings;
        const bool confirmable = model != "CITIZEN_CPP_8001";
        QCOMPARE(setup.helper.scan(setup.id, setup.settings), confirmable);
        QCOMPARE(setup.id, model);
        QCOMPARE(setup.settings, given);
    }

    void modelsThatNoProbeConfirms_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("Citizen CPP-8001") << TextPrinterModels::MODEL_CITIZEN_CPP_8001;
        QTest::newRow("common command set") << TextPrinterModels::MODEL_GENERAL_EPSON;
        QTest::newRow("WPK 833") << TextPrinterModels::MODEL_WPK833;
        QTest::newRow("no model") << "NONE";
    }

    void modelsThatNoProbeConfirms()
    {
        QFETCH(QString, id);
        Setup setup(printerOf("CITIZEN_CPP_8001"));
        setup.settings = settingsOf(115200);
        QString given = id;
        QVERIFY(!setup.helper.scan(given, setup.settings));
        QCOMPARE(given, id);
        QCOMPARE(setup.dialogueOn("115200 none"), QStringList());
    }

    void confirmationMayGiveAnotherModelOfTheFamily()
    {
        Setup setup(printerOf("CITIZEN_PPU_700", 19200));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("CITIZEN_PPU_700"));
    }

    void confirmationTriesTheGivenLineAlone()
    {
        Setup setup(printerOf("CUSTOM_VKP_80", 9600));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200, QSerialPort::SoftwareControl);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer),
                 (QStringList{"19200 software < 1D 49 01", "19200 software < 1D 49 31"}));
    }

    void starConfirmationDropsTheGivenLine()
    {
        Setup setup(printerOf("TSP-TUP", 9600, QSerialPort::HardwareControl));
        setup.id = "TSP-TUP";
        setup.settings = settingsOf(115200);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.settings, settingsOf(9600, QSerialPort::HardwareControl));
    }

    void confirmationReplacesTheListForGood()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(9600);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QString noId;
        QVERIFY(!setup.helper.scan(noId, setup.settings));
        const QStringList oneEntry{"9600 none < 1D 49 01", "9600 none < 1D 49 31"};
        QCOMPARE(linesOf(*setup.printer), oneEntry + oneEntry +
                                              QStringList("9600 none < 1B 05 07") +
                                              silentsearch::scanStar() + silentsearch::scanAV268() +
                                              QStringList("9600 none < 1B 76"));
    }

    void scan1B73TouchesNothing()
    {
        Setup setup(printerOf("CUSTOM_VKP_80"));
        setup.id = "x";
        setup.settings = settingsOf(4800);
        QVERIFY(!setup.helper.scan1B73(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("x"));
        QCOMPARE(setup.settings, settingsOf(4800));
        QVERIFY(linesOf(*setup.printer).isEmpty());
    }

    // Dialogues

    void dialogueOfOneLineSetting_data()
    {
        QTest::addColumn<QString>("model");     // the one to confirm
        QTest::addColumn<QString>("replies");   // of the printer
        QTest::addColumn<QStringList>("line");  // what is seen on its line setting
        QTest::addColumn<QString>("id");        // found; null: none
        dialoguesOfIdentification();
        dialoguesOfSwecoin();
        dialoguesOfStar();
        dialoguesOfAv268();
        dialoguesOfSimple();
    }

    void dialogueOfOneLineSetting()
    {
        QFETCH(QString, model);
        QFETCH(QString, replies);
        QFETCH(QStringList, line);
        QFETCH(QString, id);
        const bool isStar = model == "TSP-TUP";
        const bool isAv268 = model == "AV_268";
        const int baudRate = isStar ? 38400 : isAv268 ? 115200 : 19200;
        const auto flow = isAv268 ? QSerialPort::SoftwareControl : QSerialPort::NoFlowControl;
        Setup setup(printerAnswering(replies, baudRate, flow));
        setup.id = model;
        setup.settings = settingsOf(baudRate, flow);

        QCOMPARE(setup.helper.scan(setup.id, setup.settings), !id.isNull());
        QStringList seen =
            setup.dialogueOn(QString("%1 %2").arg(baudRate).arg(isAv268 ? "software" : "none"));
        // A Star printer is tried once with each parity, if it isn't found with the first.
        if (isStar && id.isNull() && seen.size() == 3 * line.size())
            seen = seen.mid(2 * line.size());
        QCOMPARE(seen, line);
        if (!id.isNull())
            QCOMPARE(setup.id, id);
    }

    void answer3DIsTrueWithoutAModel()
    {
        Setup setup(printerAnswering("1D4901:3D", 115200, QSerialPort::NoFlowControl));
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QVERIFY(setup.id.isNull());
        QCOMPARE(setup.settings, settingsOf(115200));
        QCOMPARE(setup.dialogueOn("115200 none"),
                 (QStringList{"< 1D 49 01", "> 3D", "< 1D 49 01", "> 3D"}));
    }

    void secondAnswerMayHaveComeWithTheFirst()
    {
        Setup setup(printerAnswering("1D4901:5D5D,-", 115200, QSerialPort::NoFlowControl));
        QVERIFY(setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("CUSTOM_VKP_80"));
    }

    void differingAnswersGoOnToTheNextLineSetting()
    {
        VirtualPrinterOptions options = printerOf("CUSTOM_VKP_80");
        options.fault = VirtualFault::DifferingIds;
        Setup setup(options);
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(setup.settings,
                 settingsOf(1200, QSerialPort::SoftwareControl, QSerialPort::OddParity));
    }

    void simpleSendsNothingAbove19200()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QVERIFY(!setup.helper.scanSimple(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer), silentsearch::scanSimple());
    }

    void simpleIsNotConfirmedAbove19200()
    {
        Setup setup(printerOf("CITIZEN_PPU_231", 38400));
        setup.id = "CITIZEN_PPU_231";
        setup.settings = settingsOf(38400);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        setup.printer->service();
        QCOMPARE(linesOf(*setup.printer), QStringList());
    }

    void staleBytesInFrontOfTheFirstRequest_data()
    {
        QTest::addColumn<QByteArray>("stale");
        QTest::addColumn<bool>("found");
        const auto row = [](const char *model, const char *stale, bool found) {
            QTest::newRow(model) << QByteArray::fromHex(stale) << found;
        };
        row("CUSTOM_VKP_80", "42", true);
        row("SWECOIN_TM_20XX", "01", true);
        row("TSP-TUP", "1100", true);
        row("AV_268", "00", true);
        // This probe clears nothing: the stale byte is its first answer, and the second one is two
        // bytes long.
        row("CITIZEN_PPU_231", "00", false);
    }

    void staleBytesInFrontOfTheFirstRequest()
    {
        QFETCH(QByteArray, stale);
        const QString id = QTest::currentDataTag();
        std::optional<VirtualModel> model = virtualModel(id);
        QVERIFY(model.has_value());
        const QByteArray trigger = QByteArray::fromHex("7E");
        model->replies.append(VirtualReply{trigger, QList<QByteArray>{stale}});
        Setup setup(*model);
        setup.id = id;
        setup.settings = settingsOf(model->baudRate, model->flowControl);
        setup.helper.setPortSettings(setup.settings);
        setup.port->write(trigger);
        QVERIFY(setup.helper.waitForReadyRead(0));
        QCOMPARE(setup.port->bytesAvailable(), qint64(stale.size()));
        QTEST(setup.helper.scan(setup.id, setup.settings), "found");
    }

    void bytesBehindAnAnswerAnswerTheNextRequest_data()
    {
        QTest::addColumn<QString>("replies");
        QTest::newRow("AV_268") << "1B76:000000,-,- 01020304:-";
        QTest::newRow("CITIZEN_PPU_231") << "1B76:0000,- 010203:-";
    }

    // Neither of these probes clears between its exchanges.
    void bytesBehindAnAnswerAnswerTheNextRequest()
    {
        QFETCH(QString, replies);
        const QString id = QTest::currentDataTag();
        const VirtualModel model = *virtualModel(id);
        Setup setup(printerAnswering(replies, model.baudRate, model.flowControl));
        // The bytes of an answer come one by one, as they do on a slow line.
        setup.port->setReadBufferSize(1);
        setup.id = id;
        setup.settings = settingsOf(model.baudRate, model.flowControl);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, id);
    }

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

    void av268HasItsOwnLineSetting()
    {
        Setup setup(printerOf("AV_268", 115200, QSerialPort::SoftwareControl));
        setup.settings = settingsOf(9600, QSerialPort::HardwareControl, QSerialPort::OddParity);
        setup.settings.setDataBits(QSerialPort::Data7);
        setup.settings.setStopBits(QSerialPort::TwoStop);
        QVERIFY(setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(setup.settings, settingsOf(115200, QSerialPort::SoftwareControl));
    }

    // The list after scanStar

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

    // Stops

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

    // Ports that go away

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

    // Log lines

    void searchIsLogged()
    {
        Setup setup(printerOf("CUSTOM_VKP_80", 115200, QSerialPort::HardwareControl));
        const QString port = setup.printer->portName();
        const LogCatcher log;
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        const QString start = "printers debug ";
        QCOMPARE(log.lines(),
                 (QStringList{start + "Start search on " + port + " for printers",
                              start + port + " 115200 1 from 63", start + port + " write: 1D 49 01",
                              start + port + " write: 1D 49 31", start + port + " 115200 2 from 63",
                              start + port + " write: 1D 49 01", start + port + " read: 5D",
                              start + port + " write: 1D 49 01", start + port + " read: 5D",
                              start + "Stop search on " + port + " for printers CUSTOM_VKP_80"}));
    }

    void unknownIdentificationIsLoggedWithTheBaudRate()
    {
        Setup setup(printerAnswering("1D4901:42", 19200, QSerialPort::NoFlowControl));
        const QString port = setup.printer->portName();
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(log.lines("printers debug " + port + " read: 42 19200").size(), 1);
    }

    void closedPortIsLoggedAsClosed()
    {
        Setup setup(printerOf("CUSTOM_VKP_80"));
        setup.port->close();
        const LogCatcher log;
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QVERIFY(!setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(log.lines(), (QStringList{"printers debug port is closed 115200 1 from 63",
                                           "printers debug port is closed"}));
    }

    void swecoinFirmwareIsLoggedSigned()
    {
        Setup setup(printerAnswering("1B0507:FF0C", 115200, QSerialPort::NoFlowControl));
        setup.id = "SWECOIN_TM_20XX";
        setup.settings = settingsOf(115200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(log.lines("printers debug FIRMWARE"),
                 QStringList("printers debug FIRMWARE: -1.12"));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " write: "),
                 (QStringList{port + " write: 1B 05 07", port + " write: 1B 05 01"}));
        QCOMPARE(log.lines(port + " read: "), QStringList(port + " read: FF 0C"));
    }

    void swecoinFirmwareOfOneByteIsLoggedAsRead()
    {
        Setup setup(printerAnswering("1B0507:FE", 115200, QSerialPort::NoFlowControl));
        setup.id = "SWECOIN_TM_20XX";
        setup.settings = settingsOf(115200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " read: "), QStringList(port + " read: FE"));
        QCOMPARE(log.lines("printers debug FIRMWARE"), QStringList());
    }

    void starStatusIsLoggedAsAWarning()
    {
        Setup setup(printerAnswering("1B0601:FF00", 38400, QSerialPort::HardwareControl));
        const LogCatcher log;
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        const QStringList lines = log.lines("default warning ");
        QCOMPARE(lines.size(), 24);
        const QString sent = "default warning 1B 1E 60 02 1B 06 01 ";
        QCOMPARE(lines.at(0), sent + "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
        QCOMPARE(lines.at(1), sent + "FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
    }

    void starThatAnswersTextIsLoggedAsAWarning()
    {
        Setup setup(printerAnswering("1B1E6002:- 1B0601:0100 05:01 04:02 535441:AABBCC", 38400,
                                     QSerialPort::NoFlowControl));
        const LogCatcher log;
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        QCOMPARE(
            log.lines("default warning AA BB CC"),
            (QStringList{"default warning AA BB CC 01 02 03", "default warning AA BB CC 01 02 03",
                         "default warning AA BB CC 01 02 03"}));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " read: ").mid(0, 2),
                 (QStringList{port + " read: 01", port + " read: 02"}));
    }

    void av268IsLogged()
    {
        Setup setup(printerAnswering("1B76:07 01020304:-", 115200, QSerialPort::SoftwareControl));
        const QString port = "printers debug " + setup.printer->portName();
        const LogCatcher log;
        QVERIFY(setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(log.lines(), (QStringList{port, port + " read: 07", port + " read: 07",
                                           port + " read: 07", port + " read: 07 00 00 00 00"}));
    }

    void simpleIsLogged_data()
    {
        QTest::addColumn<QString>("replies");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("no answer") << "00:00" << QStringList("timeout");
        QTest::newRow("two bytes") << "1B76:0102" << QStringList("incorrect data 01 02 00 00 00");
        QTest::newRow("second answer missing") << "1B76:01,-" << QStringList("timeout");
        QTest::newRow("second answer of two bytes")
            << "1B76:07,0809" << QStringList("incorrect data 08 09 00 00 00");
        QTest::newRow("answer to the filler")
            << "1B76:07 010203:AABB" << QStringList("incorrect data AA BB 00 00 00");
        QTest::newRow("bit of mask 10: no line") << "1B76:10" << QStringList();
        QTest::newRow("found: no line") << "1B76:EF" << QStringList();
    }

    void simpleIsLogged()
    {
        QFETCH(QString, replies);
        QFETCH(QStringList, lines);
        Setup setup(printerAnswering(replies, 19200, QSerialPort::NoFlowControl));
        setup.id = "CITIZEN_PPU_231";
        setup.settings = settingsOf(19200);
        const QString port = setup.printer->portName();
        QStringList expected{"Start search on " + port + " for printers", port + " 19200 1 from 1"};
        expected += lines;
        expected.append("Stop search on " + port + " for printers CITIZEN_PPU_231");
        expected.replaceInStrings(QRegularExpression("^"), "printers debug ");
        const LogCatcher log;
        setup.helper.scan(setup.id, setup.settings);
        QCOMPARE(log.lines(), expected);
    }

    void silentCategoryLogsNothing()
    {
        QLoggingCategory::setFilterRules("printers=false");
        Setup setup(printerOf("CUSTOM_VKP_80"));
        {
            const LogCatcher log;
            QVERIFY(setup.helper.scan(setup.id, setup.settings));
            QCOMPARE(log.lines(), QStringList());
        }
        QLoggingCategory::setFilterRules(QString());
    }

    // Whatever a device sends

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

    // Without the bench: the port's own waits

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

    void realWaitsEndInTimeUnderRandomBytes()
    {
        VirtualPrinter printer(faultyPrinter(VirtualFault::Garbage, 0, 7));
        printer.start();
        const QSharedPointer<QSerialPort> port(new QSerialPort(printer.portPath()));
        PrintersHelper helper(port, nullptr);
        for (const char *const model : modelIds) {
            QString id = model;
            hearth::Rs232PortSettings settings = settingsOf(19200);
            if (id != "TSP-TUP")
                helper.scan(id, settings);
        }
        QVERIFY(port->isOpen());
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

    static void dialoguesOfIdentification()
    {
        const QString vkp = "CUSTOM_VKP_80";
        const QString spacing = "< 1B 33 FF 0A 1B 69";
        const QString custom = "< 1C C0 AA 0F EE 0B 34";
        const QString eject = "< 1B 69 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 1D 65 02";
        const auto identified = [&](const char *answer, const QString &closing, const char *id) {
            const QString read = QString("> ") + answer;
            QTest::addRow("identification %s", answer)
                << vkp << QString("1D4901:%1").arg(answer)
                << QStringList{"< 1D 49 01", read, "< 1D 49 01", read, closing} << QString(id);
        };
        identified("20", spacing, "CITIZEN_CPP_8001");
        identified("27", "< 1D 56 66 A0", "EPSON_EU_4XX");
        identified("30", spacing, "CITIZEN_CBM_1000");
        identified("51", "< 20 0A 20 0A 1B 69 20 0A", "CITIZEN_CTS_2000");
        identified("5D", eject, "CUSTOM_VKP_80");
        identified("5E", eject, "CUSTOM_VKP_80");
        identified("75", spacing, "CITIZEN_PPU_700");
        identified("93", custom, "CUSTOM_TG_2480_SE");
        identified("A7", custom, "CUSTOM_TG_2480_H");
        identified("A8", custom, "CUSTOM_TG_2480_H");

        QTest::newRow("identification 3D leaves the id and closes nothing")
            << vkp << "1D4901:3D" << QStringList{"< 1D 49 01", "> 3D", "< 1D 49 01", "> 3D"} << vkp;
        QTest::newRow("request B where A has no answer")
            << vkp << "1D4931:27"
            << QStringList{"< 1D 49 01", "< 1D 49 31", "> 27",         "< 1D 49 01",
                           "< 1D 49 31", "> 27",       "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("request B in the second pass only")
            << vkp << "1D4901:27,- 1D4931:27" << QStringList{"< 1D 49 01", "> 27", "< 1D 49 01",
                                                             "< 1D 49 31", "> 27", "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("request B in the first pass only")
            << vkp << "1D4901:-,27 1D4931:27"
            << QStringList{"< 1D 49 01", "< 1D 49 31", "> 27",
                           "< 1D 49 01", "> 27",       "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("no answer in the second pass")
            << vkp << "1D4901:27,-" << QStringList{"< 1D 49 01", "> 27", "< 1D 49 01", "< 1D 49 31"}
            << QString();
        QTest::newRow("differing answers that mean the same model")
            << vkp << "1D4901:5D,5E" << QStringList{"< 1D 49 01", "> 5D", "< 1D 49 01", "> 5E"}
            << QString();
        QTest::newRow("unknown answer")
            << vkp << "1D4901:00" << QStringList{"< 1D 49 01", "> 00", "< 1D 49 01", "> 00"}
            << QString();
    }

    static void dialoguesOfSwecoin()
    {
        const QString model = "SWECOIN_TM_20XX";
        const QStringList firmware{"< 1B 05 07", "> 01 0C", "< 1B 05 01"};
        QTest::newRow("Swecoin with ACK")
            << model << "1B0507:010C 1B0501:06 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 11", "< 1B 06 12", "> 12"} << model;
        QTest::newRow("Swecoin with NAK and more behind it")
            << model << "1B0507:010C 1B0501:15AABB 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 15 AA BB", "< 1B 06 11", "> 11", "< 1B 06 12", "> 12"}
            << model;
        QTest::newRow("Swecoin with ACK and more behind it, which spoils step 3")
            << model << "1B0507:010C 1B0501:06AA 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 06 AA", "< 1B 06 11", "> 11"} << QString();
        QTest::newRow("Swecoin with any firmware")
            << model << "1B0507:0000 1B0501:06 1B0611:11 1B0612:12"
            << QStringList{"< 1B 05 07", "> 00 00", "< 1B 05 01", "> 06",
                           "< 1B 06 11", "> 11",    "< 1B 06 12", "> 12"}
            << model;
        QTest::newRow("Swecoin with one byte of firmware")
            << model << "1B0507:01" << QStringList{"< 1B 05 07", "> 01"} << QString();
        QTest::newRow("Swecoin without an answer to step 2")
            << model << "1B0507:010C" << firmware << QString();
        QTest::newRow("Swecoin with neither ACK nor NAK")
            << model << "1B0507:010C 1B0501:07" << firmware + QStringList("> 07") << QString();
        QTest::newRow("Swecoin with a wrong step 3")
            << model << "1B0507:010C 1B0501:06 1B0611:12"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 12"} << QString();
        QTest::newRow("Swecoin with a wrong step 4")
            << model << "1B0507:010C 1B0501:06 1B0611:11 1B0612:11"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 11", "< 1B 06 12", "> 11"}
            << QString();
    }

    static void dialoguesOfStar()
    {
        const QString model = "TSP-TUP";
        const QString mode = "< 1B 1E 60 02 1B 06 01";
        const QString quiet = "1B1E6002:- ";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << quiet + replies << QStringList(mode) + line
                                << (found ? model : QString());
        };
        row("Star", "1B0601:0100 05:AA 04:BB",
            {"> 01 00", "< 05", "> AA", "< 04", "> BB", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with all free status bits", "1B0601:2F00 05:00 04:00",
            {"> 2F 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with a long status", "1B0601:01020304 05:00 04:00",
            {"> 01 02 03 04", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with two bytes behind the filler", "1B0601:0100 05:00 04:00 535441:AABB",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "> AA BB", "< 1B 64 32"},
            true);
        row("Star with three bytes behind the filler", "1B0601:0100 05:00 04:00 535441:AABBCC",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "> AA BB CC"}, false);
        row("Star with a second byte behind ENQ, which answers no EOT", "1B0601:0100 05:AABB",
            {"> 01 00", "< 05", "> AA BB", "< 04"}, false);
        row("Star with a status of 17 bytes, the last of which answers no ENQ",
            "1B0601:0102030405060708090A0B0C0D0E0F1011",
            {"> 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11", "< 05"}, false);
        row("Star with three bytes too many behind EOT, which answer no filler",
            "1B0601:0100 05:00 04:00AABBCC",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00 AA BB CC", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with one status byte", "1B0601:01", {"> 01"}, false);
        row("Star with a wrong status bit", "1B0601:1100", {"> 11 00"}, false);
        row("Star without the status bit", "1B0601:0001", {"> 00 01"}, false);
        row("Star without an answer to ENQ", "1B0601:0100", {"> 01 00", "< 05"}, false);
        row("Star without an answer to EOT", "1B0601:0100 05:00",
            {"> 01 00", "< 05", "> 00", "< 04"}, false);
        row("echo of the status request", "1B0601:1B0601", {"> 1B 06 01"}, false);
    }

    static void dialoguesOfAv268()
    {
        const QString model = "AV_268";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << replies << line << (found ? model : QString());
        };
        row("AV-268 with any status", "1B76:00,FF,07 01020304:-",
            {"< 1B 76", "> 00", "< 1B 76", "> FF", "< 1B 76", "> 07", "< 01 02 03 04", "< 1B 69"},
            true);
        row("AV-268 silent", "00:00", {"< 1B 76"}, false);
        row("AV-268 with two bytes", "1B76:0001", {"< 1B 76", "> 00 01"}, false);
        row("AV-268 silent the second time", "1B76:00,-", {"< 1B 76", "> 00", "< 1B 76"}, false);
        row("AV-268 with two bytes the third time", "1B76:00,00,0000",
            {"< 1B 76", "> 00", "< 1B 76", "> 00", "< 1B 76", "> 00 00"}, false);
        row("AV-268 that answers the filler", "1B76:00 01020304:00",
            {"< 1B 76", "> 00", "< 1B 76", "> 00", "< 1B 76", "> 00", "< 01 02 03 04", "> 00"},
            false);
    }

    static void dialoguesOfSimple()
    {
        const QString model = "CITIZEN_PPU_231";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << replies << line << (found ? model : QString());
        };
        const QStringList twice{"< 1B 76", "> 00", "< 1B 76", "> 00"};
        row("simple", "1B76:00 010203:-", twice + QStringList{"< 01 02 03", "< 1B 69"}, true);
        row("simple with all other bits", "1B76:EF",
            {"< 1B 76", "> EF", "< 1B 76", "> EF", "< 01 02 03", "< 1B 69"}, true);
        row("simple: the second status byte decides", "1B76:10,00",
            {"< 1B 76", "> 10", "< 1B 76", "> 00", "< 01 02 03", "< 1B 69"}, true);
        row("simple with the bit of mask 10", "1B76:00,10",
            {"< 1B 76", "> 00", "< 1B 76", "> 10", "< 01 02 03"}, false);
        row("simple silent", "00:00", {"< 1B 76"}, false);
        row("simple with two bytes", "1B76:0000", {"< 1B 76", "> 00 00"}, false);
        row("simple silent the second time", "1B76:00,-", {"< 1B 76", "> 00", "< 1B 76"}, false);
        row("simple with two bytes the second time", "1B76:00,0000",
            {"< 1B 76", "> 00", "< 1B 76", "> 00 00"}, false);
        row("simple that answers the filler", "1B76:00 010203:00",
            twice + QStringList{"< 01 02 03", "> 00"}, false);
    }

    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestPrintersHelper)
#include "tst_printershelper.moc"
