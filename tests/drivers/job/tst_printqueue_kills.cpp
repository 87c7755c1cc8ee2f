// A queue whose programs are ended at each step on the disk: nothing is lost, and nothing is
// printed twice. The program starts itself for that.
#include <unistd.h>

#include <QProcess>
#include <QtTest>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "job/queuefolder_p.h"
#include "jobparts.h"
#include "printerslib/drivers/printqueue.h"

using namespace jobparts;
using State = PrintQueueEntry::State;

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

namespace {

constexpr int jobs = 3;

int stepsLeft = -1;

void endAtTheLastStep()
{
    if (stepsLeft-- == 0)
        ::raise(SIGKILL);
}

QByteArray textOf(int number)
{
    return "<receipt " + QByteArray::number(number) + ">";
}

/// What prints into a file.
class FileQueue : public PrintQueue
{
public:
    explicit FileQueue(const QString &root) : PrintQueue(root + "/queue"), m_root(root) {}

    static QString paperOf(const QString &root) { return root + "/paper"; }
    qint64 addReceipt(int number)
    {
        PrintQueueRequest request;
        request.document.bytes = "\x1B@" + textOf(number) + "\n";
        request.document.marks = {{2, 1, 1}};
        request.address = address("file:" + paperOf(m_root));
        request.profile = PrinterProfile::forModel("GENERAL_EPSON_PROTOCOL").value();
        request.documentNumber = QString::number(number);
        return add(request);
    }

protected:
    std::unique_ptr<PrintJob> makeJob(const EncodedDocument &document,
                                      const PrinterProfile &profile, const PrinterAddress &where,
                                      const PrintJobOptions &options) override
    {
        struct Opened : PrintJob
        {
            Opened(const EncodedDocument &d, const PrinterProfile &p, std::unique_ptr<Transport> t,
                   std::unique_ptr<DeviceLock> l, const PrintJobOptions &o)
                : PrintJob(d, p, std::move(t), std::move(l), o, 1)
            {}
        };
        return std::make_unique<Opened>(document, profile, Transport::make(where),
                                        std::make_unique<Lock>(where, m_root), options);
    }

private:
    QString m_root;
};

// ---- What the programs do that are started

int addReceipts(const QString &root, int first, int count)
{
    FileQueue queue(root);
    for (int number = first; number < first + count; ++number) {
        if (queue.addReceipt(number) == 0)
            return 1;
        // The next step may be the last, but this receipt was promised to be kept.
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
    return 0;
}

int printAll(const QString &root)
{
    FileQueue queue(root);
    QObject::connect(&queue, &PrintQueue::idle, &queue, [] { QCoreApplication::exit(0); });
    return queue.start() ? QCoreApplication::exec() : 1;
}

int decide(const QString &root, bool isRepeat)
{
    FileQueue queue(root);
    return (isRepeat ? queue.repeat(1) : queue.drop(1)) ? 0 : 1;
}

int runAs(const QStringList &arguments)
{
    const QString &what = arguments.at(1);
    const QString &root = arguments.at(2);
    stepsLeft = arguments.at(3).toInt();
    QueueFolder::_atStep = endAtTheLastStep;
    if (what == "add")
        return addReceipts(root, arguments.at(4).toInt(), arguments.at(5).toInt());
    if (what == "print")
        return printAll(root);
    return decide(root, what == "repeat");
}

// ---- What is seen of them

struct Ended
{
    bool isKilled = false;
    int status = 0;
    QByteArray output;
};

Ended runProgram(const QStringList &arguments)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QCoreApplication::applicationFilePath(), arguments);
    if (!program.waitForFinished(30000))
        qFatal("the program doesn't end");
    return {program.exitStatus() == QProcess::CrashExit, program.exitCode(),
            program.readAllStandardOutput()};
}

QByteArray paper(const QString &root)
{
    QFile file(FileQueue::paperOf(root));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QMap<int, PrintQueueEntry> entriesOf(const QString &root)
{
    FileQueue queue(root);
    QMap<int, PrintQueueEntry> found;
    const auto entries = queue.entries() + queue.journal();
    for (const PrintQueueEntry &entry : entries) {
        if (found.contains(entry.documentNumber.toInt()))
            qFatal("receipt %s is there twice", qPrintable(entry.documentNumber));
        found.insert(entry.documentNumber.toInt(), entry);
    }
    if (!queue.damagedFiles().isEmpty())
        qFatal("%s", qPrintable(queue.damagedFiles().join(' ')));
    return found;
}

}  // namespace

class TestPrintQueueKills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatWasAddedIsKept();
    void whatIsPrintedIsPrintedOnce();
    void aDecisionIsMadeOrNot_data();
    void aDecisionIsMadeOrNot();
    void severalProgramsAddAtOnce();
};

void TestPrintQueueKills::whatWasAddedIsKept()
{
    int step = 0;
    for (bool isKilled = true; isKilled; ++step) {
        const QTemporaryDir root;
        const Ended end =
            runProgram({"add", root.path(), QString::number(step), "1", QString::number(jobs)});
        isKilled = end.isKilled;
        QVERIFY(isKilled || end.status == 0);
        const auto entries = entriesOf(root.path());
        const int promised = end.output.count('\n');
        QVERIFY2(entries.size() >= promised, qPrintable(QString("step %1").arg(step)));
        QVERIFY(entries.size() <= promised + 1);
        for (const PrintQueueEntry &entry : entries)
            QCOMPARE(entry.state, State::Waiting);
        // The next one goes on, and takes away what is left of the one that was ended.
        QCOMPARE(runProgram({"add", root.path(), "-1", "9", "1"}).status, 0);
        QCOMPARE(runProgram({"print", root.path(), "-1"}).status, 0);
        for (int number = 1; number <= promised; ++number)
            QCOMPARE(paper(root.path()).count(textOf(number)), 1);
        QCOMPARE(paper(root.path()).count(textOf(9)), 1);
        QCOMPARE(QDir(root.filePath("queue")).entryList(QDir::Files), QStringList());
    }
    QVERIFY2(step > 5 * jobs, "it was ended often enough");
}

void TestPrintQueueKills::whatIsPrintedIsPrintedOnce()
{
    int step = 0;
    int held = 0;
    for (bool isKilled = true; isKilled; ++step) {
        const QTemporaryDir root;
        QCOMPARE(runProgram({"add", root.path(), "-1", "1", QString::number(jobs)}).status, 0);
        isKilled = runProgram({"print", root.path(), QString::number(step)}).isKilled;
        const QByteArray before = paper(root.path());
        const auto entries = entriesOf(root.path());
        QCOMPARE(entries.size(), jobs);
        for (int number = 1; number <= jobs; ++number) {
            const int times = before.count(textOf(number));
            const State state = entries.value(number).state;
            QVERIFY(times <= 1);
            QVERIFY2(state != State::Waiting || times == 0, qPrintable(QString::number(step)));
            QVERIFY2(state != State::Done || times == 1, qPrintable(QString::number(step)));
            held += state == State::Unknown ? 1 : 0;
        }
        QCOMPARE(runProgram({"print", root.path(), "-1"}).status, 0);
        const QByteArray after = paper(root.path());
        const auto later = entriesOf(root.path());
        for (int number = 1; number <= jobs; ++number) {
            const State state = later.value(number).state;
            QCOMPARE(state, entries.value(number).isHeld() ? State::Unknown : State::Done);
            QVERIFY(after.count(textOf(number)) <= 1);
            QVERIFY(state != State::Done || after.count(textOf(number)) == 1);
        }
    }
    QVERIFY(step > 10 * jobs);
    QVERIFY(held > 0);
}

void TestPrintQueueKills::aDecisionIsMadeOrNot_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("made");
    QTest::newRow("repeat") << "repeat" << int(State::Waiting);
    QTest::newRow("drop") << "drop" << int(State::Dropped);
}

void TestPrintQueueKills::aDecisionIsMadeOrNot()
{
    QFETCH(QString, what);
    QFETCH(int, made);
    int step = 0;
    for (bool isKilled = true; isKilled; ++step) {
        const QTemporaryDir root;
        QCOMPARE(runProgram({"add", root.path(), "-1", "1", "1"}).status, 0);
        QueueFolder folder(root.filePath("queue"));
        auto job = folder.read(QueueFolder::Place::Queue, 1);
        job->entry.state = State::Unknown;
        QVERIFY(folder.write(QueueFolder::Place::Queue, *job));
        const Ended end = runProgram({what, root.path(), QString::number(step)});
        isKilled = end.isKilled;
        const int state = int(entriesOf(root.path()).value(1).state);
        QVERIFY(state == made || (isKilled && state == int(State::Unknown)));
    }
    QVERIFY(step > 5);
}

void TestPrintQueueKills::severalProgramsAddAtOnce()
{
    constexpr int programs = 4;
    constexpr int each = 10;
    const QTemporaryDir root;
    std::vector<std::unique_ptr<QProcess>> running;
    for (int i = 0; i < programs; ++i) {
        running.push_back(std::make_unique<QProcess>());
        running.back()->start(
            QCoreApplication::applicationFilePath(),
            {"add", root.path(), "-1", QString::number(100 * (i + 1)), QString::number(each)});
    }
    FileQueue queue(root.path());
    QVERIFY(queue.start());
    for (const auto &program : running) {
        TRY(program->state() == QProcess::NotRunning);
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 0);
    }
    TRY(queue.journal().size() == programs * each);
    const QByteArray printed = paper(root.path());
    for (int i = 1; i <= programs; ++i) {
        int place = -1;
        for (int number = 100 * i; number < 100 * i + each; ++number) {
            QCOMPARE(printed.count(textOf(number)), 1);
            QVERIFY2(printed.indexOf(textOf(number)) > place, "each one's in their order");
            place = printed.indexOf(textOf(number));
        }
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QStringList programs = {"add", "print", "repeat", "drop"};
    if (programs.contains(arguments.value(1)))
        return runAs(arguments);
    TestPrintQueueKills test;
    return QTest::qExec(&test, arguments);
}
#include "tst_printqueue_kills.moc"
