#include <QThreadPool>
#include <QtTest>
#include <atomic>
#include <chrono>
#include <optional>
#include <random>
#include <thread>

#include "finderbench.h"
#include "logcatcher.h"
#include "printdevicefinder/finderlink_p.h"
#include "printdevicefinder/findertasks_p.h"

using namespace finderbench;

/// A search that is cancelled, and a finder that dies.
class TestFinderCancel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanup() { ObservedFinder::settle(); }

    void cleanupTestCase() { m_quiet.reset(); }

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

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestFinderCancel)
#include "tst_findercancel.moc"
