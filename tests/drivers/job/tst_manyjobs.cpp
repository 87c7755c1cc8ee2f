// A thousand jobs, however they end, leave no descriptor and no thread behind.
#include <QDir>
#include <QTcpServer>
#include <QtTest>

#include "portjob.h"

using namespace portjob;

namespace {

/// How many entries the process has in a folder of its own. That of the folder itself counts each
/// time.
int entriesOf(const char *folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

int descriptors()
{
    return entriesOf("/proc/self/fd");
}

int threads()
{
    return entriesOf("/proc/self/task");
}

/// Of a port where nobody listens.
PrinterAddress nobody()
{
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost))
        qFatal("no port");
    return address(QString("tcp:127.0.0.1:%1").arg(server.serverPort()));
}

}  // namespace

class TestManyJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLeftOfThem();

private:
    enum class End { Printed, Cancelled, Deleted, Refused };
    struct Run
    {
        End end;
        std::unique_ptr<PrintJob> job;
    };

    static End endOf(int number);
    std::unique_ptr<Run> begun(int number, const PrinterAddress &printer) const;
    void finish(Run &run);
    void printTwo(int number);

    QTemporaryDir m_folder;
    PlayedPort m_ports[2]{{profile(), PlayedPort::Kind::Serial},
                          {profile(), PlayedPort::Kind::Tcp}};
    const PrinterAddress m_nobody = nobody();
    int m_confirmed = 0;
    int m_ended[4] = {};
};

TestManyJobs::End TestManyJobs::endOf(int number)
{
    switch (number % 20) {
        case 5:
            return End::Cancelled;
        case 10:
            return End::Deleted;
        case 15:
            return End::Refused;
        default:
            return End::Printed;
    }
}

std::unique_ptr<TestManyJobs::Run> TestManyJobs::begun(int number,
                                                       const PrinterAddress &printer) const
{
    auto run = std::make_unique<Run>();
    run->end = endOf(number);
    // What is cancelled or deleted at its beginning isn't asked for a confirmation yet, which the
    // next job would wait for.
    PrintJobOptions options;
    options.stepBytes = 512;
    const bool isLong = run->end == End::Cancelled || run->end == End::Deleted;
    run->job = std::make_unique<PortJob>(receipt(number, isLong ? 150 : linesOfReceipt),
                                         run->end == End::Refused ? m_nobody : printer,
                                         m_folder.path(), options);
    connect(run->job.get(), &PrintJob::progress, this, [run = run.get()] {
        if (run->end == End::Cancelled)
            run->job->cancel();
        else if (run->end == End::Deleted)
            run->job.reset();
    });
    run->job->start();
    return run;
}

void TestManyJobs::finish(Run &run)
{
    QTRY_VERIFY_WITH_TIMEOUT(run.job == nullptr || run.job->isFinished(), 60000);
    m_ended[static_cast<int>(run.end)]++;
    if (run.end == End::Deleted) {
        QVERIFY(run.job == nullptr);
        return;
    }
    const PrintJobResult result = run.job->result();
    if (run.end == End::Refused)
        QCOMPARE(result.outcome, Outcome::NotBegun);
    if (run.end == End::Printed)
        QVERIFY2(result.isSent(), qPrintable(result.text));
    m_confirmed += result.outcome == Outcome::Processed ? 1 : 0;
}

/// At once on the serial line and in the network.
void TestManyJobs::printTwo(int number)
{
    const auto one = begun(number, m_ports[0].address());
    const auto other = begun(number, m_ports[1].address());
    finish(*one);
    finish(*other);
}

void TestManyJobs::nothingIsLeftOfThem()
{
    constexpr int pairs = 500;
    constexpr int first = 20;  // with each end
    for (int number = 0; number < first; ++number)
        printTwo(number);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    const int descriptorsBefore = descriptors();
    const int threadsBefore = threads();
    for (int number = first; number < first + pairs; ++number) {
        printTwo(number);
        if (QTest::currentTestFailed())
            return;
    }
    QTRY_COMPARE(descriptors(), descriptorsBefore);
    QCOMPARE(threads(), threadsBefore);
    for (const int count : m_ended)
        QVERIFY(count >= 50);
    QVERIFY2(m_confirmed >= 800, QByteArray::number(m_confirmed));
}

QTEST_GUILESS_MAIN(TestManyJobs)
#include "tst_manyjobs.moc"
