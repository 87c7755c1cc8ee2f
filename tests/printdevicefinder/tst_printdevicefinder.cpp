#include <QSerialPortInfo>
#include <QSignalSpy>
#include <QThreadPool>
#include <QtTest>
#include <atomic>
#include <chrono>
#include <optional>
#include <random>
#include <thread>

#include "logcatcher.h"
#include "markingtranslator.h"
#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/finderlink_p.h"
#include "printdevicefinder/findertasks_p.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerbench.h"

namespace {

constexpr int searchMilliseconds = 60000;

hearth::Rs232PortSettings lineOf(const QString &portName, int baudRate)
{
    hearth::Rs232PortSettings settings;
    settings.setPortName(portName);
    settings.setBaudRate(baudRate);
    return settings;
}

PrintDeviceInfo record(const QString &portName, const QString &id = "CUSTOM_VKP_80",
                       int baudRate = 115200, unsigned type = 1)
{
    PrintDeviceInfo info;
    info.setDeviceType(type);
    info.setDeviceId(id);
    info.setSettings(lineOf(portName, baudRate));
    return info;
}

/// A finder with all its signals written down in the order in which they come.
class ObservedFinder
{
public:
    ObservedFinder() : finder(new PrintDeviceFinder(nullptr))
    {
        QObject::connect(finder.get(), &PrintDeviceFinder::deviceFinded,
                         [this](const PrintDeviceInfo &info) {
                             found.append(info);
                             signalNames.append("deviceFinded " + info.deviceId());
                         });
        QObject::connect(finder.get(), &PrintDeviceFinder::noDevices,
                         [this](const QString &err) { signalNames.append("noDevices " + err); });
        QObject::connect(finder.get(), &PrintDeviceFinder::finished,
                         [this] { signalNames.append("finished"); });
        QObject::connect(finder.get(), &PrintDeviceFinder::needCancel,
                         [this] { signalNames.append("needCancel"); });
    }

    /// Runs the event loop until this many "finished" have come, and then until the tasks are over
    /// and nothing is left to happen.
    bool waitForFinished(int count = 1)
    {
        const bool came = QTest::qWaitFor(
            [this, count] { return signalNames.count("finished") >= count; }, searchMilliseconds);
        settle();
        return came;
    }

    static void settle()
    {
        QThreadPool::globalInstance()->waitForDone();
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    QStringList signalNames;
    QList<PrintDeviceInfo> found;
    // The last one, as it signals when it dies.
    std::unique_ptr<PrintDeviceFinder> finder;
};

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

class TestPrintDeviceFinder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanup() { ObservedFinder::settle(); }

    void cleanupTestCase() { m_quiet.reset(); }

    void constructorWidensTheThreadPool()
    {
        QThreadPool &pool = *QThreadPool::globalInstance();
        pool.setMaxThreadCount(3);
        const LogCatcher log;
        {
            const PrintDeviceFinder finder(nullptr);
            QCOMPARE(pool.maxThreadCount(), 100);
        }
        QCOMPARE(pool.maxThreadCount(), 100);
        QCOMPARE(log.lines("printers debug "),
                 (QStringList{"printers debug 0 3", "printers debug 0 100"}));
    }

    void signalsAndSlotsStandInTheirOrder()
    {
        const QMetaObject &meta = PrintDeviceFinder::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods.append(meta.method(i).name());
        QCOMPARE(methods, (QStringList{"deviceFinded", "noDevices", "finished", "needCancel",
                                       "cancel", "start", "start", "test", "watcherFinished"}));
    }

    void emptyInputHasNoFinished()
    {
        ObservedFinder observed;
        observed.finder->start(QStringList());
        QList<PrintDeviceInfo> none;
        observed.finder->test(none);
        ObservedFinder::settle();
        QCOMPARE(observed.signalNames, (QStringList{"noDevices There are no available ports",
                                                    "noDevices There are no available configs"}));
    }

    void startWithoutNamesTakesThePortsOfTheMachine()
    {
        const PrinterBench bench;
        ObservedFinder observed;
        const bool hasPorts = !QSerialPortInfo::availablePorts().isEmpty();
        observed.finder->start();
        if (!hasPorts)
            QCOMPARE(observed.signalNames, QStringList("noDevices There are no available ports"));
        else
            QVERIFY(observed.waitForFinished());
    }

    void finishedComesBeforeTheDevice()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80", 19200));
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->start({printer->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames,
                 (QStringList{"needCancel", "finished", "deviceFinded CUSTOM_VKP_80"}));
        QVERIFY(observed.found.constFirst() == record(printer->portPath(), "CUSTOM_VKP_80", 19200));
        QCOMPARE(log.lines("printers warning "),
                 (QStringList{"printers warning STOPPED " + printer->portName(),
                              "printers warning CANCEL 1", "printers warning CANCELED 1"}));
    }

    void everyModelIsFoundAndConfirmed_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : virtualModelIds())
            QTest::newRow(qPrintable(model)) << model;
    }

    void everyModelIsFoundAndConfirmed()
    {
        QFETCH(QString, model);
        PrinterBench bench;
        VirtualPrinterOptions options;
        options.model = model;
        const auto printer = bench.add(options);
        ObservedFinder search;
        search.finder->start({printer->portPath()});
        QVERIFY(search.waitForFinished());
        QCOMPARE(search.found.size(), 1);
        QCOMPARE(search.found.constFirst().deviceId(), model);

        ObservedFinder confirmation;
        confirmation.finder->test(search.found);
        QVERIFY(confirmation.waitForFinished());
        if (model == "CITIZEN_CPP_8001")
            QCOMPARE(confirmation.signalNames,
                     (QStringList{"noDevices There no devices finded", "finished"}));
        else
            QVERIFY(confirmation.found == search.found);
    }

    void sameNameTwiceIsOneTask()
    {
        PrinterBench bench;
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->start({printer->portPath(), printer->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(log.lines("printers warning STOPPED").size(), 1);
        QCOMPARE(linesOf(*printer), silentsearch::wholeSearch());
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
        QCOMPARE(log.lines("printers warning There"),
                 QStringList("printers warning There no devices found"));
    }

    void portsThatCannotBeOpenedAreNothingFound()
    {
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->start({"no-such-port-1", "no-such-port-2"});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
        QCOMPARE(log.lines("printers warning "),
                 QStringList("printers warning There no devices found"));
    }

    void onePortThatCannotBeOpenedDoesNotEndTheSearch()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CITIZEN_PPU_231", 1200));
        ObservedFinder observed;
        observed.finder->start({"no-such-port", printer->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames.filter("deviceFinded"),
                 QStringList("deviceFinded CITIZEN_PPU_231"));
        QCOMPARE(observed.signalNames.filter("noDevices"), QStringList());
    }

    void answerWithoutAModelIsNothingFound()
    {
        PrinterBench bench;
        VirtualModel model{"nameless", 115200, QSerialPort::NoFlowControl, {}};
        model.replies = {{QByteArray::fromHex("1D4901"), {QByteArray::fromHex("3D")}}};
        const auto printer = bench.add(model);
        ObservedFinder observed;
        observed.finder->start({printer->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
    }

    void firstOfTwoPrintersEndsTheSearch()
    {
        // The first one answers when the second one is asked; that one, when the search is over.
        std::atomic<bool> asked{false};
        std::atomic<bool> over{false};
        PrinterBench bench;
        const auto first = bench.add(printerOf("CUSTOM_VKP_80"));
        const auto second = bench.add(printerOf("CITIZEN_PPU_700"));
        const QString secondPort = second->portName();
        bench.beforeWait = [&, secondPort](QSerialPort &port, int, int) {
            const bool isSecond = port.portName() == secondPort;
            if (isSecond)
                asked = true;
            bench.holdWhile([&] { return isSecond ? !over : !asked; });
        };
        ObservedFinder observed;
        QObject::connect(observed.finder.get(), &PrintDeviceFinder::deviceFinded,
                         [&over] { over = true; });
        const LogCatcher log;
        observed.finder->start({first->portPath(), second->portPath()});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames, (QStringList{"needCancel", "needCancel", "finished",
                                                    "deviceFinded CUSTOM_VKP_80"}));
        QCOMPARE(log.lines("printers warning STOP " + secondPort).size(), 2);
        QCOMPARE(log.lines("printers warning STOPPED " + secondPort).size(), 1);
    }

    void secondStartLeavesTheFirstTaskRunning()
    {
        std::atomic<bool> hold{true};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            bench.holdWhile([&hold] { return hold.load(); });
        };
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        observed.finder->start({printer->portPath()});
        observed.finder->start({printer->portPath()});
        hold = false;
        QVERIFY(observed.waitForFinished(2));
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished",
                              "noDevices There no devices finded", "finished"}));
    }

    void finderCanBeUsedAgain()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        const auto silent = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        observed.finder->start({silent->portPath()});
        QVERIFY(observed.waitForFinished(1));
        observed.finder->start({printer->portPath()});
        QVERIFY(observed.waitForFinished(2));
        observed.finder->cancel();
        observed.finder->start({printer->portPath()});
        QVERIFY(observed.waitForFinished(4));
        QCOMPARE(observed.found.size(), 2);
    }

    void searchOfAnotherPortEndsBehindACancel()
    {
        ObservedFinder observed;
        observed.finder->start({"no-such-port"});
        observed.finder->cancel();
        ObservedFinder::settle();
        observed.signalNames.clear();
        observed.finder->start({"no-such-port-either"});
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
    }

    void searchMayBeStartedFromFinished()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        ObservedFinder observed;
        bool again = true;
        QObject::connect(observed.finder.get(), &PrintDeviceFinder::finished, [&] {
            if (again) {
                again = false;
                observed.finder->start({printer->portPath()});
            }
        });
        observed.finder->start({printer->portPath()});
        QVERIFY(observed.waitForFinished(2));
        QCOMPARE(observed.found.size(), 2);
    }

    // Tests of records

    void unusableRecordsTouchNoPort_data()
    {
        QTest::addColumn<unsigned>("type");
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("withPort");
        QTest::newRow("no type") << 0U << "CUSTOM_VKP_80" << true;
        QTest::newRow("other type") << 2U << "CUSTOM_VKP_80" << true;
        QTest::newRow("no id") << 1U << "" << true;
        QTest::newRow("no port") << 1U << "CUSTOM_VKP_80" << false;
    }

    void unusableRecordsTouchNoPort()
    {
        QFETCH(unsigned, type);
        QFETCH(QString, id);
        QFETCH(bool, withPort);
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        ObservedFinder observed;
        QList<PrintDeviceInfo> records{
            record(withPort ? printer->portPath() : QString(), id, 115200, type)};
        observed.finder->test(records);
        QVERIFY(observed.waitForFinished());
        printer->service();
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
        QCOMPARE(linesOf(*printer), QStringList());
    }

    void resultsWithoutADeviceNameTheirPort()
    {
        const auto link = QSharedPointer<FinderLink>::create(nullptr);
        PrintDeviceInfo onlyPort;
        hearth::Rs232PortSettings settings;
        settings.setPortName("no-such-port");
        onlyPort.setSettings(settings);
        QVERIFY(findertasks::searchPort(link, 0, "no-such-port") == onlyPort);
        QVERIFY(findertasks::testDevice(link, 0, record("no-such-port")) == onlyPort);
        QVERIFY(findertasks::testDevice(link, 0, record("no-such-port", "")) == onlyPort);
    }

    void confirmedRecordEndsTheTest()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80", 9600));
        const auto other = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        const LogCatcher log;
        QList<PrintDeviceInfo> records{record("no-such-port"),
                                       record(printer->portPath(), "CUSTOM_VKP_80", 9600)};
        observed.finder->test(records);
        QVERIFY(observed.waitForFinished());
        QCOMPARE(observed.signalNames.last(), QString("deviceFinded CUSTOM_VKP_80"));
        QVERIFY(observed.found.constFirst() == records.at(1));
        QCOMPARE(records.size(), 2);
        QCOMPARE(log.lines("printers warning STOP"), QStringList());

        QList<PrintDeviceInfo> wrongLine{record(printer->portPath(), "CUSTOM_VKP_80", 19200),
                                         record(other->portPath())};
        ObservedFinder second;
        second.finder->test(wrongLine);
        QVERIFY(second.waitForFinished());
        QCOMPARE(second.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
    }

    void recordsOnOnePortAllRun()
    {
        PrinterBench bench;
        const auto silent = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        QList<PrintDeviceInfo> records{record(silent->portPath()),
                                       record(silent->portPath(), "CUSTOM_VKP_80", 9600)};
        observed.finder->test(records);
        QVERIFY(observed.waitForFinished(2));
        QCOMPARE(observed.signalNames.count("noDevices There no devices finded"), 2);
    }

    void resultsCountOnlyFromWatchers()
    {
        ObservedFinder observed;
        QVERIFY(QMetaObject::invokeMethod(observed.finder.get(), "watcherFinished"));
        QObject stranger;
        QVERIFY(connect(&stranger, SIGNAL(objectNameChanged(QString)), observed.finder.get(),
                        SLOT(watcherFinished())));
        stranger.setObjectName("stranger");
        QCOMPARE(observed.signalNames, QStringList());
    }

    void signalsComeWithWarningsSwitchedOff()
    {
        QLoggingCategory::setFilterRules("printers.warning=false");
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->start({"no-such-port"});
        const bool came = observed.waitForFinished();
        QLoggingCategory::setFilterRules(QString());
        QVERIFY(came);
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices There no devices finded", "finished"}));
        QCOMPARE(log.lines("printers warning"), QStringList());
    }

    void textsAreTranslatedInTheContextOfTheFinder()
    {
        MarkingTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        ObservedFinder observed;
        const LogCatcher log;
        QList<PrintDeviceInfo> none;
        observed.finder->start(QStringList());
        observed.finder->test(none);
        observed.finder->start({"no-such-port"});
        const bool came = observed.waitForFinished();
        QCoreApplication::removeTranslator(&translator);
        QVERIFY(came);
        QCOMPARE(observed.signalNames,
                 (QStringList{"noDevices PrintDeviceFinder: There are no available ports",
                              "noDevices PrintDeviceFinder: There are no available configs",
                              "noDevices PrintDeviceFinder: There no devices finded", "finished"}));
        QCOMPARE(log.lines("printers warning"),
                 QStringList("printers warning PrintDeviceFinder: There no devices found"));
    }

    // Cancelling

    void cancelDropsTasksThatThePoolHasNotBegun()
    {
        std::atomic<int> waiting{0};
        std::atomic<bool> hold{true};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            ++waiting;
            bench.holdWhile([&hold] { return hold.load(); });
        };
        const auto one = bench.add(faultyPrinter(VirtualFault::Silent));
        const auto other = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        // The constructor has widened the pool; the next one will do so again.
        QThreadPool::globalInstance()->setMaxThreadCount(1);
        const LogCatcher log;
        observed.finder->start({one->portPath(), other->portPath()});
        QTRY_COMPARE(waiting.load(), 1);
        observed.finder->cancel();
        hold = false;
        ObservedFinder::settle();
        QCOMPARE(log.lines("printers warning STOPPED ").size(), 1);
        one->service();
        other->service();
        QVERIFY(one->dialogue().isEmpty() != other->dialogue().isEmpty());
    }

    void cancelOfAnIdleFinder()
    {
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->cancel();
        QCOMPARE(observed.signalNames, (QStringList{"needCancel", "finished"}));
        QCOMPARE(log.lines(),
                 (QStringList{"printers warning CANCEL 0", "printers warning CANCELED 0"}));
    }

    void cancelSignalsOnceMoreForEachTask()
    {
        std::atomic<int> waiting{0};
        std::atomic<bool> hold{true};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            ++waiting;
            bench.holdWhile([&hold] { return hold.load(); });
        };
        QStringList ports;
        for (int i = 0; i < 3; ++i)
            ports.append(bench.add(faultyPrinter(VirtualFault::Silent))->portPath());
        ObservedFinder observed;
        const LogCatcher log;
        observed.finder->start(ports);
        QTRY_COMPARE(waiting.load(), 3);
        observed.finder->cancel();
        QCOMPARE(observed.signalNames,
                 (QStringList{"needCancel", "needCancel", "needCancel", "needCancel", "finished"}));
        hold = false;
        ObservedFinder::settle();
        QCOMPARE(observed.signalNames.size(), 5);
        QCOMPARE(log.lines("printers warning STOP ").size(), 3 * 4);
        QCOMPARE(log.lines("printers warning STOPPED ").size(), 3);
    }

    void resultsDontReachAFinderThatIsCancelling()
    {
        ObservedFinder observed;
        QObject::connect(observed.finder.get(), &PrintDeviceFinder::needCancel, [] {
            QThreadPool::globalInstance()->waitForDone();
            QCoreApplication::processEvents();
        });
        observed.finder->start({"no-such-port"});
        observed.finder->cancel();
        ObservedFinder::settle();
        QCOMPARE(observed.signalNames, (QStringList{"needCancel", "needCancel", "finished"}));
    }

    void cancelBetweenStartAndConnectionIsNotMissed()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        PrintDeviceFinder finder(nullptr);
        const auto link = QSharedPointer<FinderLink>::create(&finder);
        const int atStart = link->cancelCount();
        link->cancel([] {});
        const LogCatcher log;
        QVERIFY(!findertasks::searchPort(link, atStart, printer->portPath()).isValid());
        // scanAV268 has no look at a stop.
        QCOMPARE(linesOf(*printer), silentsearch::scanAV268());
        QCOMPARE(log.lines("printers warning "),
                 (QStringList{"printers warning STOP " + printer->portName(),
                              "printers warning STOPPED " + printer->portName()}));
        QVERIFY(!findertasks::testDevice(link, atStart, record(printer->portPath())).isValid());
        QCOMPARE(linesOf(*printer), silentsearch::scanAV268());
        QVERIFY(findertasks::testDevice(link, link->cancelCount(), record(printer->portPath()))
                    .isValid());
    }

    void taskOfADeadFinderStopsAtItsFirstLook()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        const auto link = QSharedPointer<FinderLink>::create(nullptr);
        QVERIFY(!findertasks::searchPort(link, 0, printer->portPath()).isValid());
        QVERIFY(!findertasks::testDevice(link, 0, record(printer->portPath())).isValid());
        QCOMPARE(linesOf(*printer), silentsearch::scanAV268());
    }

    void cancelledTestSendsNothingMore_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("cancelAtWait");
        QTest::addColumn<QByteArray>("sent");
        const auto row = [](const char *name, const char *model, int wait, const char *sent) {
            QTest::newRow(name) << QString(model) << wait << QByteArray::fromHex(sent);
        };
        row("first pass", "CUSTOM_VKP_80", 1, "1D4901");
        row("second pass", "CUSTOM_VKP_80", 2, "1D49011D4901");
        row("Swecoin step 1", "SWECOIN_TM_20XX", 1, "1B0507");
        row("Swecoin step 2", "SWECOIN_TM_20XX", 2, "1B05071B0501");
        row("Swecoin step 3", "SWECOIN_TM_20XX", 3, "1B05071B05011B0611");
        row("simple, status", "CITIZEN_PPU_231", 1, "1B76");
        row("simple, second status", "CITIZEN_PPU_231", 2, "1B761B76");
    }

    void cancelledTestSendsNothingMore()
    {
        QFETCH(QString, model);
        QFETCH(int, cancelAtWait);
        std::atomic<bool> reached{false};
        std::atomic<bool> hold{true};
        PrinterBench bench;
        const auto printer = bench.add(printerOf(model, 19200));
        bench.beforeWait = [&, cancelAtWait](QSerialPort &, int, int count) {
            if (count != cancelAtWait)
                return;
            reached = true;
            bench.holdWhile([&hold] { return hold.load(); });
        };
        ObservedFinder observed;
        const LogCatcher log;
        QList<PrintDeviceInfo> records{record(printer->portPath(), model, 19200)};
        observed.finder->test(records);
        QTRY_VERIFY(reached.load());
        observed.finder->cancel();
        hold = false;
        ObservedFinder::settle();
        observed.finder->cancel();
        printer->service();
        QTEST(printer->received(), "sent");
        QVERIFY(observed.found.isEmpty());
        QCOMPARE(log.lines("printers warning STOP"), QStringList());
    }

    void cancelledAtRandomMoments_data()
    {
        QTest::addColumn<bool>("isTest");
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("tests") << true << false;
        QTest::newRow("searches") << false << false;
        QTest::newRow("tests whose finder dies") << true << true;
        QTest::newRow("searches whose finder dies") << false << true;
    }

    void cancelledAtRandomMoments()
    {
        QFETCH(bool, isTest);
        QFETCH(bool, destroyed);
        constexpr int rounds = 150;
        PrinterBench bench;
        QStringList ports;
        QList<PrintDeviceInfo> records;
        for (const char *const model : {"CUSTOM_VKP_80", "SWECOIN_TM_20XX", "CITIZEN_PPU_231"}) {
            const auto printer = bench.add(faultyPrinter(VirtualFault::Garbage));
            ports.append(printer->portPath());
            records.append(record(printer->portPath(), model, 19200));
        }
        bench.beforeWait = [](QSerialPort &, int, int) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        };
        std::mt19937 random(4711);
        std::uniform_int_distribution<int> moment(0, 1500);
        auto finder = std::make_unique<PrintDeviceFinder>(nullptr);
        for (int round = 0; round < rounds; ++round) {
            if (isTest)
                finder->test(records);
            else
                finder->start(ports);
            std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
            if (destroyed)
                finder = std::make_unique<PrintDeviceFinder>(nullptr);
            else
                finder->cancel();
            QCoreApplication::processEvents();
        }
        finder.reset();
        ObservedFinder::settle();
        QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    }

    void destructionDuringASearchCancels()
    {
        std::atomic<int> waiting{0};
        std::atomic<bool> hold{true};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            ++waiting;
            bench.holdWhile([&hold] { return hold.load(); });
        };
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedFinder observed;
        observed.finder->start({printer->portPath()});
        QTRY_COMPARE(waiting.load(), 1);
        observed.finder.reset();
        QCOMPARE(observed.signalNames, (QStringList{"needCancel", "needCancel", "finished"}));
        hold = false;
        QVERIFY(QThreadPool::globalInstance()->waitForDone(searchMilliseconds));
        QCOMPARE(linesOf(*printer),
                 silentsearch::scan1D491().mid(0, 2) + silentsearch::scanAV268());
    }

    void finderMayBeDeletedInASlot_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QString>("signal");
        QTest::addColumn<QStringList>("signalNames");
        const QStringList death{"needCancel", "finished"};
        const QString found = "deviceFinded CUSTOM_VKP_80";
        const QString nothing = "noDevices There no devices finded";
        const auto row = [](const char *ending, const char *signal, const QStringList &names) {
            QTest::addRow("%s, %s", ending, signal) << QString(ending) << QString(signal) << names;
        };
        row("found", "needCancel", QStringList("needCancel") + death);
        row("found", "finished", death + death);
        row("found", "deviceFinded", death + QStringList(found) + death);
        row("not found", "noDevices", QStringList(nothing) + death);
        row("not found", "finished", QStringList{nothing, "finished"} + death);
        // Once in front of the tasks and once for each; then a deleted finder has none left.
        row("cancelled", "needCancel", QStringList{"needCancel", "needCancel"} + death);
        row("cancelled", "finished", QStringList{"needCancel", "needCancel", "finished"} + death);
        row("no port", "noDevices", QStringList("noDevices There are no available ports") + death);
        row("no record", "noDevices",
            QStringList("noDevices There are no available configs") + death);
    }

    // Whether the memory is used after it was freed is for ./dev asan to find; the signals tell
    // too.
    void finderMayBeDeletedInASlot()
    {
        QFETCH(QString, ending);
        QFETCH(QString, signal);
        QFETCH(QStringList, signalNames);
        std::atomic<bool> hold{ending == "cancelled"};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            bench.holdWhile([&hold] { return hold.load(); });
        };
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        ObservedFinder observed;
        const auto end = [&] { observed.finder.reset(); };
        PrintDeviceFinder *const finder = observed.finder.get();
        if (signal == "needCancel")
            QObject::connect(finder, &PrintDeviceFinder::needCancel, end);
        else if (signal == "finished")
            QObject::connect(finder, &PrintDeviceFinder::finished, end);
        else if (signal == "noDevices")
            QObject::connect(finder, &PrintDeviceFinder::noDevices, end);
        else
            QObject::connect(finder, &PrintDeviceFinder::deviceFinded, end);

        QList<PrintDeviceInfo> none;
        if (ending == "no port")
            finder->start(QStringList());
        else if (ending == "no record")
            finder->test(none);
        else
            finder->start({ending == "not found" ? "no-such-port" : printer->portPath()});
        if (ending == "cancelled")
            finder->cancel();
        QTRY_VERIFY(observed.finder == nullptr);
        hold = false;
        ObservedFinder::settle();
        QCOMPARE(observed.signalNames, signalNames);
    }

    void deletedInASlotOfAnotherFinder()
    {
        ObservedFinder one;
        ObservedFinder other;
        QObject::connect(one.finder.get(), &PrintDeviceFinder::noDevices,
                         [&] { other.finder.reset(); });
        other.finder->start({"no-such-port"});
        one.finder->start({"no-such-port-either"});
        QVERIFY(one.waitForFinished());
        QVERIFY(other.finder == nullptr);
        QCOMPARE(other.signalNames.last(), QString("finished"));
        QCOMPARE(one.signalNames, (QStringList{"noDevices There no devices finded", "finished"}));
    }

    // Many ports, faulty devices

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

QTEST_GUILESS_MAIN(TestPrintDeviceFinder)
#include "tst_printdevicefinder.moc"
