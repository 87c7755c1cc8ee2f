#include <QSerialPortInfo>
#include <QThreadPool>
#include <QtTest>
#include <atomic>
#include <optional>

#include "finderbench.h"
#include "logcatcher.h"
#include "markingtranslator.h"
#include "printdevicefinder/finderlink_p.h"
#include "printdevicefinder/findertasks_p.h"

using namespace finderbench;

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

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestPrintDeviceFinder)
#include "tst_printdevicefinder.moc"
