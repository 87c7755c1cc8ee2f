// A search that ends once, with one result.
#include <sys/stat.h>
#include <unistd.h>

#include <QtTest>
#include <atomic>
#include <memory>

#include "../../printdevicefinder/finderbench.h"
#include "printerslib/drivers/printersearch.h"
#include "pseudoterminal.h"
#include "transport/portuse_p.h"

using namespace finderbench;
using printerslib::drivers::PortUse;
using printerslib::drivers::PrinterSearch;
using Result = PrinterSearch::Result;

namespace {

/// A search whose results are written down.
class ObservedSearch
{
public:
    ObservedSearch() : search(new PrinterSearch)
    {
        QObject::connect(search.get(), &PrinterSearch::over, search.get(),
                         [this](Result result) { results.append(result); });
    }

    /// Waits for the result, and then for all that could come behind it.
    bool wait()
    {
        const bool came =
            QTest::qWaitFor([this] { return !results.isEmpty(); }, searchMilliseconds);
        ObservedFinder::settle();
        return came;
    }

    QVector<Result> results;
    std::unique_ptr<PrinterSearch> search;
};

/// Holds a port by a lock file as another program of QSerialPort's would.
class HeldPort
{
public:
    explicit HeldPort(const QString &path) : m_file(PortUse::lockFilePath(path))
    {
        if (m_file.open(QIODevice::WriteOnly))
            m_file.write(QByteArray::number(::getppid()) + "\ntill\nhost\n");
        m_file.close();
    }
    ~HeldPort() { m_file.remove(); }

private:
    QFile m_file;
};

/// The superuser may use every port, so it is somebody else meanwhile.
class Unprivileged
{
public:
    Unprivileged() : m_isRoot(::geteuid() == 0)
    {
        if (m_isRoot)
            m_isChanged = ::setresuid(nobody, nobody, 0) == 0;
    }
    ~Unprivileged()
    {
        if (m_isChanged && ::setresuid(0, 0, 0) != 0)
            qFatal("still somebody else");
    }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    const bool m_isRoot;
    bool m_isChanged = false;
};

}  // namespace

class TestPrinterSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { ObservedFinder::settle(); }

    void printerIsFoundOnce()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        ObservedSearch observed;
        QVERIFY(observed.search->start({printer->portPath()}));
        QVERIFY(observed.search->isRunning());
        QVERIFY(observed.results.isEmpty());
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Found});
        QVERIFY(!observed.search->isRunning());
        QVERIFY(observed.search->result() == Result::Found);
        QCOMPARE(observed.search->device().deviceId(), QString("CUSTOM_VKP_80"));
        QVERIFY(observed.search->device().isValid());
        QCOMPARE(observed.search->text(), observed.search->device().deviceId() + " on " +
                                              observed.search->device().settings().portName());
    }

    void nothingToSearchIsNone()
    {
        ObservedSearch observed;
        QVERIFY(observed.search->start(QStringList()));
        QVERIFY(observed.results.isEmpty());
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::None});
        QCOMPARE(observed.search->text(), QString("There are no available ports"));
        QVERIFY(!observed.search->device().isValid());
    }

    void nothingToConfirmIsNone()
    {
        ObservedSearch observed;
        QVERIFY(observed.search->confirm({}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::None});
        QCOMPARE(observed.search->text(), QString("There are no available configs"));
    }

    void missingPortIsNone()
    {
        ObservedSearch observed;
        QVERIFY(observed.search->start({"/dev/no-such-port"}));
        QVERIFY(observed.results.isEmpty());
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::None});
        QCOMPARE(observed.search->text(), QString("there is no port /dev/no-such-port"));
    }

    void printerThatIsGoneIsNone()
    {
        PrinterBench bench;
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedSearch observed;
        QVERIFY(observed.search->confirm({record(printer->portPath())}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::None});
        QCOMPARE(observed.search->text(), QString("There no devices finded"));
    }

    void recordsOfOnePortAreTriedInTurn()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        ObservedSearch first;
        QVERIFY(first.search->start({printer->portPath()}));
        QVERIFY(first.wait());
        const PrintDeviceInfo right = first.search->device();
        QVERIFY(right.isValid());
        PrintDeviceInfo unusable = right;
        unusable.setDeviceType(0);
        ObservedSearch observed;
        QVERIFY(observed.search->confirm({unusable, unusable, right}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Found});
        QVERIFY(observed.search->device() == right);
    }

    void heldPortIsBusy()
    {
        const PseudoTerminal line;
        const HeldPort held(line.path());
        ObservedSearch observed;
        QVERIFY(observed.search->start({line.path()}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Busy});
        QVERIFY2(observed.search->text().contains(" is held by process"),
                 qPrintable(observed.search->text()));
        ObservedSearch again;
        QVERIFY(again.search->confirm({record(line.path())}));
        QVERIFY(again.wait());
        QCOMPARE(again.results, QVector<Result>{Result::Busy});
    }

    void foundPrinterCountsBesideAHeldPort()
    {
        PrinterBench bench;
        const auto printer = bench.add(printerOf("CUSTOM_VKP_80"));
        const PseudoTerminal line;
        const HeldPort held(line.path());
        ObservedSearch observed;
        QVERIFY(observed.search->start({line.path(), printer->portPath()}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Found});
    }

    void portOfOthersIsNotPermitted()
    {
        const PseudoTerminal line;
        QCOMPARE(::chmod(qPrintable(line.path()), 0), 0);
        ObservedSearch observed;
        {
            const Unprivileged user;
            QVERIFY(observed.search->start({line.path()}));
            QVERIFY(observed.wait());
        }
        QCOMPARE(observed.results, QVector<Result>{Result::NotPermitted});
        QVERIFY2(observed.search->text().contains(" is not permitted: "),
                 qPrintable(observed.search->text()));
    }

    void cancelEndsASearchOnce()
    {
        std::atomic<bool> hold{true};
        PrinterBench bench;
        bench.beforeWait = [&](QSerialPort &, int, int) {
            bench.holdWhile([&hold] { return hold.load(); });
        };
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedSearch observed;
        QVERIFY(observed.search->start({printer->portPath()}));
        observed.search->cancel();
        observed.search->cancel();
        QVERIFY(observed.results.isEmpty());
        hold = false;
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Cancelled});
        QCOMPARE(observed.search->text(), QString("The search was cancelled."));
    }

    void cancelOfNothingIsNothing()
    {
        ObservedSearch observed;
        observed.search->cancel();
        ObservedFinder::settle();
        QVERIFY(observed.results.isEmpty());
    }

    void cancelOfASearchOverNothingIsCancelled()
    {
        ObservedSearch observed;
        QVERIFY(observed.search->start({"/dev/no-such-port"}));
        observed.search->cancel();
        QVERIFY(observed.wait());
        QCOMPARE(observed.results, QVector<Result>{Result::Cancelled});
    }

    void secondSearchIsRefusedMeanwhile()
    {
        ObservedSearch observed;
        QVERIFY(observed.search->start(QStringList()));
        QVERIFY(!observed.search->start(QStringList()));
        QVERIFY(!observed.search->confirm({}));
        QVERIFY(observed.wait());
        QCOMPARE(observed.results.size(), 1);
        QVERIFY(observed.search->confirm({}));
        QVERIFY(observed.search->text().isEmpty());
        ObservedFinder::settle();
        QCOMPARE(observed.results.size(), 2);
    }

    void nextSearchMayBeginInTheSlot()
    {
        PrinterBench bench;
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedSearch observed;
        int left = 3;
        QObject::connect(observed.search.get(), &PrinterSearch::over, observed.search.get(), [&] {
            if (--left > 0)
                QVERIFY(observed.search->confirm({record(printer->portPath())}));
        });
        QVERIFY(observed.search->confirm({record(printer->portPath())}));
        QVERIFY(QTest::qWaitFor([&] { return left == 0; }, searchMilliseconds));
        ObservedFinder::settle();
        QCOMPARE(observed.results, QVector<Result>(3, Result::None));
    }

    void slotMayDeleteTheSearch()
    {
        auto *const search = new PrinterSearch;
        bool isOver = false;
        QObject::connect(search, &PrinterSearch::over, [&isOver, search] {
            isOver = true;
            delete search;
        });
        QVERIFY(search->start(QStringList()));
        QVERIFY(QTest::qWaitFor([&isOver] { return isOver; }, searchMilliseconds));
    }

    void deletedSearchIsSilent()
    {
        PrinterBench bench;
        const auto printer = bench.add(faultyPrinter(VirtualFault::Silent));
        ObservedSearch observed;
        QVERIFY(observed.search->start({printer->portPath()}));
        observed.search.reset();
        ObservedFinder::settle();
        QVERIFY(observed.results.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPrinterSearch)
#include "tst_printersearch.moc"
