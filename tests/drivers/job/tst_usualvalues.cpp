// The values that count where a client sets none: shops rely on them, and the pages name them.
#include <QtTest>

#include "printerslib/drivers/blockingtransport.h"
#include "printerslib/drivers/devicelock.h"
#include "printerslib/drivers/printjoboptions.h"
#include "printerslib/drivers/printqueue.h"

using namespace printerslib::drivers;

// Of these programs may have compiled the numbers in.
static_assert(BlockingTransport::longestWait == 500);
static_assert(DeviceLock::longestWait == 500);
static_assert(PrintJobOptions::forEver == -1);
static_assert(PrintQueue::usualDays == 30);
static_assert(PrintQueue::usualCount == 10'000);
static_assert(PrintQueue::everything == -1);
static_assert(PrintQueue::mostBytes == 64 * 1024 * 1024);

class TestUsualValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void timesAndSizes_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("usual");
        const PrintJobOptions job;
        const TransportOptions line;
        QTest::newRow("a host answers") << line.connectMilliseconds << 5000;
        QTest::newRow("a line takes a byte") << line.writeMilliseconds << 30'000;
        QTest::newRow("what has gone is looked for") << line.reopenMilliseconds << 500;
        QTest::newRow("the same of a job's line: a host answers")
            << job.transport.connectMilliseconds << 5000;
        QTest::newRow("the same of a job's line: it takes a byte")
            << job.transport.writeMilliseconds << 30'000;
        QTest::newRow("a printer tells how it is") << job.statusMilliseconds << 2000;
        QTest::newRow("a printer confirms") << job.confirmMilliseconds << 30'000;
        QTest::newRow("a printer is waited for") << job.waitMilliseconds << 0;
        QTest::newRow("a printer is asked again") << job.pollMilliseconds << 1000;
        QTest::newRow("a cancelled line takes a byte") << job.cancelMilliseconds << 5000;
        QTest::newRow("bytes in front of the line") << job.stepBytes << 4096;
    }
    void timesAndSizes()
    {
        QFETCH(int, value);
        QFETCH(int, usual);
        QCOMPARE(value, usual);
    }

    void whatIsAskedAndDone()
    {
        const PrintJobOptions job;
        QVERIFY(job.asks);
        QVERIFY(job.confirms);
        QVERIFY(!job.beforeSending);
        QVERIFY(!job.transport.reopens);
    }
};

QTEST_GUILESS_MAIN(TestUsualValues)
#include "tst_usualvalues.moc"
