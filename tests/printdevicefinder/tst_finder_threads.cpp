// Several finders at once, each on a thread of its own, while printers answer.
#include <QEventLoop>
#include <QTimer>
#include <QtTest>
#include <optional>
#include <random>

#include "logcatcher.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerbench.h"
#include "threads.h"

namespace {

/// What a finder told in one search.
struct Outcome
{
    QStringList models;
    int finished = 0;
    int noDevices = 0;
};

/// Searches on the calling thread until the finder says that the search is over, or until it is
/// cancelled at its `cancelAtTurn`-th turn of the event loop; 0: never.
Outcome search(PrintDeviceFinder &finder, const QStringList &ports, int cancelAtTurn = 0)
{
    Outcome outcome;
    QEventLoop loop;
    QObject receiver;
    QObject::connect(
        &finder, &PrintDeviceFinder::deviceFinded, &receiver,
        [&outcome](const PrintDeviceInfo &info) { outcome.models.append(info.deviceId()); });
    QObject::connect(&finder, &PrintDeviceFinder::noDevices, &receiver,
                     [&outcome](const QString &) { ++outcome.noDevices; });
    QObject::connect(&finder, &PrintDeviceFinder::finished, &receiver,
                     [&outcome] { ++outcome.finished; });
    finder.start(ports);
    for (int turn = 1; outcome.finished == 0; ++turn) {
        if (turn == cancelAtTurn)
            finder.cancel();
        loop.processEvents(QEventLoop::AllEvents);
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    // deviceFinded() comes behind finished().
    loop.processEvents(QEventLoop::AllEvents);
    return outcome;
}

}  // namespace

class TestFinderThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanup() { QThreadPool::globalInstance()->waitForDone(); }

    void cleanupTestCase() { m_quiet.reset(); }

    void findersOnTheirOwnThreadsFindTheirPrinters()
    {
        constexpr int rounds = 5;
        const QStringList models{"CUSTOM_VKP_80", "CITIZEN_PPU_231", "SWECOIN_TM_20XX"};
        PrinterBench bench;
        QVector<QStringList> ports;
        for (const QString &model : models)
            ports.append({bench.add(faultyPrinter(VirtualFault::Silent))->portPath(),
                          bench.add(printerOf(model, 19200))->portPath()});
        QVector<QStringList> found(models.size());
        runOnThreads(models.size(), [&](int thread) {
            QStringList &mine = found.data()[thread];
            for (int round = 0; round < rounds; ++round) {
                PrintDeviceFinder finder(nullptr);
                mine += search(finder, ports.at(thread)).models;
            }
        });
        for (int i = 0; i < models.size(); ++i)
            QCOMPARE(found.at(i), QStringList(QVector<QString>(rounds, models.at(i)).toList()));
    }

    // A port is open for one search at a time; the other one doesn't find it then.
    void findersThatWantTheSamePortsAllComeToAnEnd()
    {
        constexpr int rounds = 5;
        PrinterBench bench;
        const QStringList ports{bench.add(printerOf("CUSTOM_VKP_80", 19200))->portPath(),
                                bench.add(printerOf("CITIZEN_PPU_231", 19200))->portPath()};
        std::atomic<int> wrong{0};
        runOnThreads(3, [&](int) {
            PrintDeviceFinder finder(nullptr);
            for (int round = 0; round < rounds; ++round) {
                const Outcome outcome = search(finder, ports);
                if (outcome.finished != 1 || outcome.models.size() + outcome.noDevices != 1)
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

    void cancelsMeetAnswers_data()
    {
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("one finder per thread") << false;
        QTest::newRow("a new finder for each search") << true;
    }

    void cancelsMeetAnswers()
    {
        QFETCH(bool, destroyed);
        constexpr int threads = 3;
        constexpr int rounds = 30;
        PrinterBench bench;
        QVector<QStringList> ports;
        for (int thread = 0; thread < threads; ++thread)
            ports.append({bench.add(printerOf("CUSTOM_VKP_80"))->portPath(),
                          bench.add(printerOf("CITIZEN_PPU_231", 1200))->portPath(),
                          bench.add(faultyPrinter(VirtualFault::Garbage))->portPath()});
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&](int thread) {
            std::mt19937 random{unsigned(thread)};
            std::uniform_int_distribution<int> turn(1, 40);
            auto finder = std::make_unique<PrintDeviceFinder>(nullptr);
            for (int round = 0; round < rounds; ++round) {
                const Outcome outcome = search(*finder, ports.at(thread), turn(random));
                if (outcome.finished != 1 || outcome.models.size() > 1)
                    ++wrong;
                if (destroyed)
                    finder = std::make_unique<PrintDeviceFinder>(nullptr);
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestFinderThreads)
#include "tst_finder_threads.moc"
