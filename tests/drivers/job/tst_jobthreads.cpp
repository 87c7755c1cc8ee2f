// Jobs in several threads of one process, each with an event loop of its own: on one printer they
// take turns, and on several they have nothing to do with each other.
#include <QtTest>
#include <numeric>
#include <optional>

#include "portjob.h"
#include "printerslib/drivers/printqueue.h"

using namespace portjob;

namespace {

constexpr int threadCount = 6;
constexpr int jobsOfThread = 5;

/// Prints one job after the other. @return how many were confirmed
int printJobs(int thread, const PrinterAddress &printer, const QString &folder)
{
    int confirmed = 0;
    for (int i = 0; i < jobsOfThread; ++i) {
        PortJob job(receipt(thread * jobsOfThread + i), printer, folder);
        QEventLoop loop;
        QObject::connect(&job, &PrintJob::finished, &loop, &QEventLoop::quit);
        job.start();
        loop.exec();
        confirmed += job.result().outcome == Outcome::Processed ? 1 : 0;
    }
    return confirmed;
}

/// Calls the function in so many threads that may have an event loop, and waits for their end.
template <typename Function>
void inThreads(int count, Function function)
{
    std::vector<std::unique_ptr<QThread>> threads;
    for (int thread = 0; thread < count; ++thread)
        threads.emplace_back(QThread::create(function, thread));
    for (const auto &thread : threads)
        thread->start();
    for (const auto &thread : threads)
        thread->wait();
}

/// @param printerOf gives that of a thread
template <typename PrinterOf>
int printInThreads(PrinterOf printerOf, const QString &folder)
{
    std::atomic<int> confirmed = 0;
    inThreads(threadCount,
              [&](int thread) { confirmed += printJobs(thread, printerOf(thread), folder); });
    return confirmed;
}

/// With the locks of printers in a folder of the test.
class PortQueue : public PrintQueue
{
public:
    PortQueue(const QString &folder, QString locks) : PrintQueue(folder), m_locks(std::move(locks))
    {}

protected:
    std::unique_ptr<PrintJob> makeJob(const EncodedDocument &document, const PrinterProfile &,
                                      const PrinterAddress &printer,
                                      const PrintJobOptions &options) override
    {
        return std::make_unique<PortJob>(document, printer, m_locks, options);
    }

private:
    QString m_locks;
};

/// Adds as many jobs as printJobs() prints. @return how many were kept
int addJobs(int thread, const PrinterAddress &printer, const QString &folder)
{
    int kept = 0;
    PrintQueue queue(folder);
    for (int i = 0; i < jobsOfThread; ++i) {
        PrintQueueRequest request;
        request.document = receipt(thread * jobsOfThread + i);
        request.profile = profile();
        request.address = printer;
        kept += queue.add(request) > 0 ? 1 : 0;
    }
    return kept;
}

/// Prints until so many have been.
void printQueue(int count, const QString &folder, const QString &locks)
{
    PortQueue queue(folder, locks);
    QEventLoop loop;
    QObject::connect(&queue, &PrintQueue::ended, &loop, [&](const PrintQueueEntry &entry) {
        if (entry.state == PrintQueueEntry::State::Done && --count == 0)
            queue.stop();
    });
    QObject::connect(&queue, &PrintQueue::stopped, &loop, &QEventLoop::quit);
    if (queue.start())
        loop.exec();
}

/// Takes the lines of whole jobs off the paper, each with all of its lines in their order.
/// @return the numbers of the jobs in their order; nothing if a line isn't where it belongs
std::optional<QVector<int>> jobsOn(const QVector<Paper> &papers)
{
    QVector<QPair<int, int>> lines;
    for (const Paper &paper : papers)
        lines += linesOn(paper);
    QVector<int> jobs;
    for (int i = 0; i < lines.size(); ++i) {
        const QPair<int, int> expected(lines.at(i - i % linesOfReceipt).first,
                                       i % linesOfReceipt + 1);
        if (lines.at(i) != expected)
            return std::nullopt;
        if (expected.second == linesOfReceipt)
            jobs.append(expected.first);
    }
    return jobs;
}

QVector<int> numbersUpTo(int count)
{
    QVector<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

/// Whether each job is there once, behind those that its thread had before.
bool areAllInTheirOrder(const QVector<int> &jobs)
{
    for (int thread = 0; thread < threadCount; ++thread) {
        for (int i = 1; i < jobsOfThread; ++i) {
            const int number = thread * jobsOfThread + i;
            if (jobs.indexOf(number - 1) > jobs.indexOf(number))
                return false;
        }
    }
    QVector<int> sorted = jobs;
    std::sort(sorted.begin(), sorted.end());
    return sorted == numbersUpTo(threadCount * jobsOfThread);
}

}  // namespace

Q_DECLARE_METATYPE(PlayedPort::Kind)

class TestJobThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theyTakeTurnsOnOnePrinter_data();
    void theyTakeTurnsOnOnePrinter();
    void eachHasAPrinterOfItsOwn();
    void theyAddToAQueueWhileItIsPrinted();

private:
    QTemporaryDir m_folder;
};

/// QtSerialPort makes something at its first use, which the sanitizer doesn't see.
void TestJobThreads::initTestCase()
{
    for (const auto kind : {PlayedPort::Kind::Serial, PlayedPort::Kind::Tcp}) {
        PlayedPortThread port(profile(), kind);
        QCOMPARE(printJobs(0, port.address(), m_folder.path()), jobsOfThread);
    }
}

void TestJobThreads::theyTakeTurnsOnOnePrinter_data()
{
    QTest::addColumn<PlayedPort::Kind>("kind");
    QTest::newRow("serial line") << PlayedPort::Kind::Serial;
    QTest::newRow("network") << PlayedPort::Kind::Tcp;
}

void TestJobThreads::theyTakeTurnsOnOnePrinter()
{
    QFETCH(PlayedPort::Kind, kind);
    PlayedPortThread port(profile(), kind);
    const auto printerOf = [&port](int) { return port.address(); };
    QCOMPARE(printInThreads(printerOf, m_folder.path()), threadCount * jobsOfThread);
    const auto jobs = jobsOn(port.finish());
    QVERIFY(jobs);
    QVERIFY(areAllInTheirOrder(*jobs));
}

void TestJobThreads::eachHasAPrinterOfItsOwn()
{
    std::vector<std::unique_ptr<PlayedPortThread>> ports;
    for (int i = 0; i < threadCount; ++i) {
        ports.push_back(std::make_unique<PlayedPortThread>(
            profile(), i % 2 == 0 ? PlayedPort::Kind::Serial : PlayedPort::Kind::Tcp));
    }
    const auto printerOf = [&ports](int number) { return ports[size_t(number)]->address(); };
    QCOMPARE(printInThreads(printerOf, m_folder.path()), threadCount * jobsOfThread);
    for (int thread = 0; thread < threadCount; ++thread) {
        const auto jobs = jobsOn(ports[size_t(thread)]->finish());
        QVERIFY(jobs);
        QVector<int> expected = numbersUpTo(jobsOfThread);
        for (int &number : expected)
            number += thread * jobsOfThread;
        QCOMPARE(*jobs, expected);
    }
}

void TestJobThreads::theyAddToAQueueWhileItIsPrinted()
{
    PlayedPortThread port(profile(), PlayedPort::Kind::Tcp);
    const QString folder = m_folder.filePath("queue");
    std::atomic<int> kept = 0;
    inThreads(threadCount + 1, [&](int thread) {
        if (thread == threadCount)
            printQueue(threadCount * jobsOfThread, folder, m_folder.path());
        else
            kept += addJobs(thread, port.address(), folder);
    });
    QCOMPARE(int(kept), threadCount * jobsOfThread);
    const auto jobs = jobsOn(port.finish());
    QVERIFY(jobs);
    QVERIFY(areAllInTheirOrder(*jobs));
    PrintQueue queue(folder);
    QCOMPARE(queue.entries().size(), 0);
    QCOMPARE(queue.journal().size(), threadCount * jobsOfThread);
}

QTEST_GUILESS_MAIN(TestJobThreads)
#include "tst_jobthreads.moc"
