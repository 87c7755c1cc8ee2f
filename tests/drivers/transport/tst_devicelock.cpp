// Whose turn it is on a printer, over objects and processes. The program starts itself as a process
// that holds a lock, when it is given a folder.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QRegularExpression>
#include <QtTest>
#include <cstdio>

#include "printerslib/drivers/devicelock.h"
#include "transport/lockfolder_p.h"
#include "transportwatch.h"

using namespace transportwatch;
using printerslib::drivers::DeviceLock;
using printerslib::drivers::LockFolder;
using printerslib::drivers::lockFolder;
using printerslib::drivers::LockRoots;

namespace {

const QString printer = "tcp:192.0.2.1:9100";

/// A lock whose files lie in a folder of the test.
class Lock : public DeviceLock
{
public:
    explicit Lock(const QString &folder, const QString &address = printer)
        : DeviceLock(address.isEmpty() ? PrinterAddress() : addressOf(address),
                     LockRoots{folder, {}, folder}, nullptr)
    {
        connect(this, &DeviceLock::waiting, this, [this](int ahead) { places.append(ahead); });
        connect(this, &DeviceLock::acquired, this, [this] { told.append("acquired"); });
        connect(this, &DeviceLock::failed, this, [this](const QString &what) {
            told.append("failed");
            failure = what;
        });
    }
    QVector<int> places;
    QStringList told;
    QString failure;
};

/// A process that takes the lock, says so with what it found recorded, records its own name, and
/// holds the lock until it is told to go on, or killed.
class Process : public QProcess
{
public:
    Process(const QString &folder, const QString &name)
    {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(QCoreApplication::applicationFilePath(), {"--hold", folder, name});
        if (!waitForStarted())
            qFatal("no process");
    }
    ~Process() override
    {
        kill();
        waitForFinished();
    }
    /// What it has said so far.
    QString said()
    {
        m_said += QString::fromUtf8(readAllStandardOutput());
        return m_said;
    }

private:
    QString m_said;
};

void say(const QString &text)
{
    std::puts(qPrintable(text));
    std::fflush(stdout);
}

int hold(const QString &folder, const QString &name)
{
    Lock lock(folder);
    int place = -1;
    while (!lock.waitFor(20)) {
        if (!lock.fault().isEmpty())
            return 1;
        if (lock.ahead() != place) {
            place = lock.ahead();
            say(QString("place %1").arg(place));
        }
    }
    say("held behind " + QString::fromUtf8(lock.record()));
    if (!lock.setRecord(name.toUtf8()))
        return 1;
    say("recorded");
    std::getchar();
    lock.release();
    return 0;
}

QVector<int> placesIn(const QString &said)
{
    static const QRegularExpression place("^place (\\d+)$", QRegularExpression::MultilineOption);
    QVector<int> places;
    for (auto found = place.globalMatch(said); found.hasNext();)
        places.append(found.next().captured(1).toInt());
    return places;
}

}  // namespace

class TestDeviceLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isHeldByOneAtATime()
    {
        QTemporaryDir folder;
        Lock one(folder.path());
        Lock other(folder.path());
        Lock another(folder.path(), "tcp:192.0.2.1:9101");
        QVERIFY(!one.isHeld());
        one.acquire();
        one.acquire();
        QVERIFY(one.told.isEmpty());
        TRY_COMPARE(one.told, QStringList("acquired"));
        QVERIFY(one.isHeld());
        QCOMPARE(one.ahead(), 0);
        QVERIFY(one.places.isEmpty());
        QCOMPARE(one.folder(), folder.path() + "/printerslib");
        QVERIFY(one.isShared());
        other.acquire();
        another.acquire();
        TRY_COMPARE(another.told, QStringList("acquired"));
        TRY_COMPARE(other.places, QVector<int>{1});
        QCOMPARE(other.ahead(), 1);
        QVERIFY(!other.isHeld());
        one.release();
        QVERIFY(!one.isHeld());
        TRY_COMPARE(other.told, QStringList("acquired"));
        QCOMPARE(one.told, QStringList("acquired"));
        other.acquire();
        QTest::qWait(20);
        QCOMPARE(other.told, QStringList("acquired"));
    }

    void turnsComeInTheOrderOfAsking()
    {
        QTemporaryDir folder;
        std::vector<std::unique_ptr<Lock>> locks;
        for (int i = 0; i < 8; ++i) {
            locks.push_back(std::make_unique<Lock>(folder.path()));
            QCOMPARE(locks.back()->waitFor(0), i == 0);
            QCOMPARE(locks.back()->ahead(), i);
        }
        // Whoever gives up is no longer in front of the others.
        locks.erase(locks.begin() + 3);
        QVERIFY(!locks.at(3)->waitFor(0));
        QCOMPARE(locks.at(3)->ahead(), 3);
        while (locks.size() > 1) {
            locks.erase(locks.begin());
            for (size_t i = locks.size(); i-- > 0;)
                QCOMPARE(locks.at(i)->waitFor(i == 0 ? 500 : 0), i == 0);
        }
    }

    void lockIsGivenBackWithTheObject()
    {
        QTemporaryDir folder;
        auto one = std::make_unique<Lock>(folder.path());
        QVERIFY(one->waitFor(500));
        one.reset();
        Lock other(folder.path());
        QVERIFY(other.waitFor(500));
    }

    void waitsAreBounded()
    {
        QTemporaryDir folder;
        Lock one(folder.path());
        Lock other(folder.path());
        QVERIFY(one.waitFor(-1));
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!other.waitFor(3600 * 1000));
        QVERIFY(clock.elapsed() < 30000);
        QVERIFY(other.fault().isEmpty());
    }

    void lockGoesWithItsProcess()
    {
        QTemporaryDir folder;
        Process holder(folder.path(), "holder");
        TRY_VERIFY(holder.said().contains("recorded"));
        Lock next(folder.path());
        next.acquire();
        TRY_COMPARE(next.places, QVector<int>{1});
        QVERIFY(!next.setRecord("not yet"));
        QCOMPARE(next.record(), QByteArray());
        ::kill(static_cast<pid_t>(holder.processId()), SIGKILL);
        TRY_COMPARE(next.told, QStringList("acquired"));
        QCOMPARE(next.record(), QByteArray("holder"));
    }

    void eightProcessesTakeTurns()
    {
        QTemporaryDir folder;
        std::vector<std::unique_ptr<Process>> processes;
        for (int i = 0; i < 8; ++i) {
            processes.push_back(std::make_unique<Process>(folder.path(), QString::number(i)));
            const QString expected = i == 0 ? "recorded" : QString("place %1\n").arg(i);
            TRY_VERIFY(processes.back()->said().contains(expected));
        }
        // Every other one is killed where it stands.
        for (int i = 0; i < 8; ++i) {
            Process &process = *processes.at(i);
            TRY_VERIFY(process.said().contains("recorded"));
            QVERIFY2(process.said().contains(
                         QString("held behind %1\n").arg(i == 0 ? "" : QString::number(i - 1))),
                     qPrintable(process.said()));
            for (int j = i + 1; j < 8; ++j)
                QVERIFY(!processes.at(j)->said().contains("held"));
            if (i % 2 == 0)
                ::kill(static_cast<pid_t>(process.processId()), SIGKILL);
            else
                process.write("\n");
            QVERIFY(process.waitForFinished(30000));
        }
        // A turn that was short may have gone untold.
        const QVector<int> places = placesIn(processes.at(7)->said());
        QCOMPARE(places.first(), 7);
        for (int i = 1; i < places.size(); ++i)
            QVERIFY(places.at(i) < places.at(i - 1));
    }

    void recordsReplaceEachOther()
    {
        QTemporaryDir folder;
        Lock lock(folder.path());
        QVERIFY(!lock.setRecord("without the lock"));
        QVERIFY(lock.waitFor(500));
        QCOMPARE(lock.record(), QByteArray());
        const QByteArray bytes = pattern(64 * 1024);
        for (const QByteArray &record :
             {QByteArray("a"), bytes, QByteArray(), QByteArray(1, '\0')}) {
            QVERIFY(lock.setRecord(record));
            QCOMPARE(lock.record(), record);
        }
        QVERIFY(!lock.setRecord(bytes + "x"));
        QCOMPARE(lock.record(), QByteArray(1, '\0'));
        lock.release();
        QCOMPARE(lock.record(), QByteArray());
        Lock another(folder.path(), "tcp:192.0.2.1:9");
        QVERIFY(another.waitFor(500));
        QCOMPARE(another.record(), QByteArray());
        QCOMPARE(QDir(lock.folder()).entryList({"*.state"}, QDir::Files).size(), 1);
        QCOMPARE(QDir(lock.folder()).entryList({"*.state.*"}, QDir::Files).size(), 0);
    }

    // Users can't replace each other's files in a folder of all users, so each has its own.
    void newestRecordOfAllUsersCounts()
    {
        if (::geteuid() != 0)
            QSKIP("only root can make files of others");
        QTemporaryDir folder;
        Lock lock(folder.path());
        QVERIFY(lock.waitFor(500));
        QVERIFY(lock.setRecord("first"));
        const QDir files(lock.folder());
        const QString own = files.filePath(files.entryList({"*.state"}).constFirst());
        QString others = own;
        others.replace(".0.state", ".65534.state");
        QFile::rename(own, others);
        // It isn't the file of the user in its name yet.
        QCOMPARE(lock.record(), QByteArray());
        QCOMPARE(::chown(QFile::encodeName(others), 65534, 65534), 0);
        QCOMPARE(lock.record(), QByteArray("first"));
        QVERIFY(lock.setRecord("second"));
        QCOMPARE(lock.record(), QByteArray("second"));
        QVERIFY(QFile::exists(others));
        QVERIFY(QFile::remove(own));
        QCOMPARE(lock.record(), QByteArray("first"));
    }

    void damagedRecordsAreNone_data()
    {
        QTest::addColumn<int>("changed");
        QTest::addColumn<int>("size");
        QTest::newRow("empty") << -1 << 0;
        QTest::newRow("cut off") << -1 << 20;
        QTest::newRow("start") << 0 << -1;
        QTest::newRow("number") << 11 << -1;
        QTest::newRow("content") << 17 << -1;
        QTest::newRow("checksum") << 40 << -1;
    }
    void damagedRecordsAreNone()
    {
        QFETCH(int, changed);
        QFETCH(int, size);
        QTemporaryDir folder;
        Lock lock(folder.path());
        QVERIFY(lock.waitFor(500));
        QVERIFY(lock.setRecord("record"));
        const QDir files(lock.folder());
        QFile file(files.filePath(files.entryList({"*.state"}).constFirst()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        if (size >= 0)
            QVERIFY(file.resize(size));
        if (changed >= 0)
            QVERIFY(file.seek(changed) && file.write("\x7F") == 1);
        file.close();
        QCOMPARE(lock.record(), QByteArray());
        QVERIFY(lock.setRecord("again"));
        QCOMPARE(lock.record(), QByteArray("again"));
    }

    void linksOfOthersAreNotFollowed()
    {
        QTemporaryDir folder;
        const QString victim = folder.filePath("victim");
        QFile file(victim);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
        file.close();
        Lock lock(folder.path());
        QVERIFY(lock.waitFor(500));
        QVERIFY(lock.setRecord("record"));
        const QDir files(lock.folder());
        const QString record = files.filePath(files.entryList({"*.state"}).constFirst());
        const QString lockFile = files.filePath(files.entryList({"*.lock"}).constFirst());
        lock.release();
        for (const QString &name : {record, lockFile}) {
            QVERIFY(QFile::remove(name));
            QVERIFY(QFile::link(victim, name));
        }
        Lock next(folder.path());
        next.acquire();
        TRY_COMPARE(next.told, QStringList("failed"));
        QVERIFY2(next.failure.startsWith(lockFile + ": "), qPrintable(next.failure));
        QVERIFY(QFile::remove(lockFile));
        next.acquire();
        TRY_COMPARE(next.told, QStringList({"failed", "acquired"}));
        QCOMPARE(next.record(), QByteArray());
        QVERIFY(next.setRecord("own"));
        QCOMPARE(next.record(), QByteArray("own"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("precious"));
    }

    // A cleaner of folders takes a file away, under those who wait for it.
    void removedFileIsMadeAnew()
    {
        QTemporaryDir folder;
        Lock one(folder.path());
        Lock other(folder.path());
        QVERIFY(one.waitFor(500));
        QVERIFY(!other.waitFor(0));
        const QDir files(one.folder());
        QVERIFY(QFile::remove(files.filePath(files.entryList({"*.lock"}).constFirst())));
        one.release();
        Lock another(folder.path());
        QVERIFY(another.waitFor(500));
        QVERIFY(!other.waitFor(0));
        another.release();
        QVERIFY(other.waitFor(500));
    }

    void filesServeAllUsersWhateverTheMask()
    {
        QTemporaryDir folder;
        const mode_t before = ::umask(0077);
        Lock lock(folder.path());
        const bool isHeld = lock.waitFor(500) && lock.setRecord("x");
        ::umask(before);
        QVERIFY(isHeld);
        const auto modeOf = [](const QString &path) {
            struct stat status = {};
            return ::stat(QFile::encodeName(path).constData(), &status) == 0
                       ? status.st_mode & 07777
                       : 0;
        };
        const QDir files(lock.folder());
        QCOMPARE(modeOf(lock.folder()), 01777U);
        QCOMPARE(modeOf(files.filePath(files.entryList({"*.lock"}).constFirst())), 0666U);
        QCOMPARE(modeOf(files.filePath(files.entryList({"*.state"}).constFirst())), 0644U);
    }

    void folderIsTheFirstThatCanBe()
    {
        QTemporaryDir temporary;
        const QString shared = temporary.filePath("shared");
        const QString runtime = temporary.filePath("runtime");
        const LockRoots roots{shared, runtime, temporary.path()};
        const QString own = temporary.path() + QString("/printerslib-%1").arg(::geteuid());
        LockFolder found = lockFolder(roots);
        QCOMPARE(found.path, own);
        QVERIFY(!found.isShared);
        QVERIFY(QDir().mkdir(runtime));
        found = lockFolder(roots);
        QCOMPARE(found.path, runtime + "/printerslib");
        QVERIFY(!found.isShared);
        QVERIFY(QDir().mkdir(shared));
        found = lockFolder(roots);
        QCOMPARE(found.path, shared + "/printerslib");
        QVERIFY(found.isShared);
        QCOMPARE(lockFolder(roots).path, found.path);
        QCOMPARE(lockFolder({{}, {}, temporary.path()}).path, own);
    }

    void foldersOfOthersAreNotUsed()
    {
        QTemporaryDir temporary;
        const QString own = temporary.path() + QString("/printerslib-%1").arg(::geteuid());
        const LockRoots roots{"/nonexistent", {}, temporary.path()};
        QVERIFY(QFile::link("/tmp", own));
        QCOMPARE(lockFolder(roots).fault,
                 "there is no folder for locks: /nonexistent/printerslib: No such file or "
                 "directory; " +
                     own + " is no folder");
        QVERIFY(QFile::remove(own));
        QVERIFY(QDir().mkdir(own));
        QCOMPARE(::chmod(QFile::encodeName(own), 0777), 0);
        QVERIFY(lockFolder(roots).fault.endsWith(own + " is another user's, or open to others"));
        QCOMPARE(::chmod(QFile::encodeName(own), 0700), 0);
        QCOMPARE(lockFolder(roots).path, own);
    }

    void withoutAFolderThatIsTold()
    {
        Lock lock("/nonexistent");
        lock.acquire();
        QVERIFY(lock.told.isEmpty());
        TRY_COMPARE(lock.told, QStringList("failed"));
        QVERIFY(lock.failure.startsWith("there is no folder for locks: "));
        QCOMPARE(lock.fault(), lock.failure);
        QVERIFY(!lock.waitFor(500));
        QVERIFY(!lock.setRecord("x"));
    }

    void withoutAPrinterThatIsTold()
    {
        QTemporaryDir folder;
        Lock lock(folder.path(), QString());
        QVERIFY(!lock.waitFor(500));
        QCOMPARE(lock.fault(), QString("no printer is named"));
    }

    void longAddressesHaveLocksToo()
    {
        QTemporaryDir folder;
        const QString path = "file:/tmp/" + QString(200, QChar(0x0436));
        Lock one(folder.path(), path);
        Lock other(folder.path(), path);
        Lock another(folder.path(), path + "x");
        QVERIFY(one.waitFor(500));
        QVERIFY(one.setRecord("x"));
        QVERIFY(!other.waitFor(0));
        QVERIFY(another.waitFor(500));
    }

    void clientsDoAnythingWithinSignals_data()
    {
        QTest::addColumn<QString>("signal");
        QTest::addColumn<QString>("deed");
        for (const char *signal : {"acquired", "waiting", "failed"}) {
            for (const char *deed : {"delete", "release", "acquire"})
                QTest::addRow("%s %s", signal, deed) << signal << deed;
        }
    }
    void clientsDoAnythingWithinSignals()
    {
        QFETCH(QString, signal);
        QFETCH(QString, deed);
        QTemporaryDir folder;
        Lock holder(folder.path());
        QCOMPARE(holder.waitFor(signal == "waiting" ? 500 : 0), true);
        if (signal != "waiting")
            holder.release();
        auto lock = std::make_unique<Lock>(signal == "failed" ? "/nonexistent" : folder.path());
        QObject context;
        int deeds = 0;
        const auto act = [&] {
            if (++deeds > 1)
                return;
            if (deed == "delete")
                lock.reset();
            else if (deed == "release")
                lock->release();
            else
                lock->acquire();
        };
        connect(lock.get(), &DeviceLock::acquired, &context, act);
        connect(lock.get(), &DeviceLock::waiting, &context, act);
        connect(lock.get(), &DeviceLock::failed, &context, act);
        lock->acquire();
        TRY_VERIFY(deeds > 0);
        QTest::qWait(20);
        QCOMPARE(lock == nullptr, deed == "delete");
    }

    void nothingIsLeftBehind()
    {
        QTemporaryDir folder;
        const auto descriptors = [] {
            return QDir("/proc/self/fd")
                .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
                .size();
        };
        const int before = descriptors();
        for (int i = 0; i < 1000; ++i) {
            Lock one(folder.path());
            Lock other(folder.path());
            QVERIFY(one.waitFor(500));
            QVERIFY(!other.waitFor(0));
            if (i % 100 == 0)
                QVERIFY(one.setRecord("x"));
        }
        QCOMPARE(descriptors(), before);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--hold")
        return hold(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
    TestDeviceLock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_devicelock.moc"
