// In which order a queue has the disk keep what it does: a power cut behind any step leaves a file
// whole, and nothing that was promised is lost.
#include <sys/inotify.h>

#include <QtTest>
#include <cstring>

#include "disksteps.h"
#include "job/queuestore_p.h"
#include "printerslib/drivers/printqueue.h"

using namespace printerslib::drivers;
using disksteps::steps;
using disksteps::watch;
using State = PrintQueueEntry::State;

namespace {

const QStringList madeFolder{"sync shop", "sync queue"};
const QStringList written{"sync file", "name 0000000001.job", "sync queue"};
const QStringList movedToJournal{"sync file", "name 0000000001.job", "sync journal",
                                 "remove 0000000001.job", "sync queue"};

PrintQueueRequest request()
{
    PrintQueueRequest request;
    request.document.bytes = "\x1B@Total 1\n";
    request.profile = PrinterProfile::forModel("GENERAL_EPSON_PROTOCOL").value();
    request.address = PrinterAddress::parse("tcp:192.0.2.1:9100").value();
    return request;
}

/// When a file is opened and closed, by whatever process.
class Opens
{
public:
    explicit Opens(const QString &path)
        : m_events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
          m_watch(::inotify_add_watch(m_events, QFile::encodeName(path).constData(),
                                      IN_OPEN | IN_CLOSE_WRITE | IN_CLOSE_NOWRITE))
    {}
    ~Opens() { ::close(m_events); }
    Opens(const Opens &) = delete;
    Opens &operator=(const Opens &) = delete;

    bool isWatching() const { return m_watch >= 0; }
    QString seen() const
    {
        QStringList words;
        inotify_event event = {};
        while (::read(m_events, &event, sizeof event) == ssize_t(sizeof event))
            words.append((event.mask & IN_OPEN) != 0 ? "open" : "close");
        return words.join(' ');
    }

private:
    const int m_events;
    const int m_watch;
};

/// By this process, from whatever file.
qint64 bytesRead()
{
    QFile file("/proc/self/io");
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    return file.readAll().split('\n').constFirst().mid(int(std::strlen("rchar: "))).toLongLong();
}

struct Shop
{
    QTemporaryDir disk;
    QString folder = disk.filePath("shop/queue");
    QueueStore store{folder};

    Shop() { QDir().mkpath(disk.filePath("shop")); }
    qint64 add() { return store.add(QueuedJob::of(request())); }
    QStringList filesIn(const QString &place) const
    {
        return QDir(folder + place).entryList(QDir::Files);
    }
    std::optional<QueuedJob> begun()
    {
        auto job = store.next([](const PrintQueueEntry &) { return true; });
        return job && store.begin(*job) ? job : std::nullopt;
    }
};

}  // namespace

class TestQueueSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { watch(); }

    void whatIsAddedIsWholeInFrontOfItsName()
    {
        Shop shop;
        watch();
        QCOMPARE(shop.add(), 1);
        QCOMPARE(steps, madeFolder + written);
        QCOMPARE(disksteps::written, QFileInfo(shop.folder + "/0000000001.job").size());
    }

    void whatIsBegunIsOnTheDisk()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        QVERIFY(shop.store.beginPrinting());
        watch();
        QVERIFY(shop.begun());
        QCOMPARE(steps, written);
        QCOMPARE(shop.store.entries().constFirst().state, State::Printing);
    }

    // Else a power cut between the two would have it printed again.
    void whatIsDoneIsInTheJournalBeforeItLeavesTheQueue()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        QVERIFY(shop.store.beginPrinting());
        auto job = shop.begun();
        QVERIFY(job);
        job->entry.state = State::Done;
        watch();
        QVERIFY(shop.store.end(*job));
        QCOMPARE(steps, movedToJournal);
    }

    void whatIsDroppedIsInTheJournalBeforeItLeavesTheQueue()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        watch();
        QVERIFY(shop.store.drop(1));
        QCOMPARE(steps, movedToJournal);
    }

    void whatIsPutAsideIsOnTheDisk()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        QFile file(shop.folder + "/0000000001.job");
        QVERIFY(file.resize(5));
        watch();
        QCOMPARE(shop.store.beginPrinting().value_or(QStringList()).size(), 1);
        QCOMPARE(steps, (QStringList{"name 0000000001.job", "sync damaged", "sync queue"}));
    }

    void whatTheJournalLosesIsGoneFromTheDisk()
    {
        Shop shop;
        shop.store.setRetention(0, 1);
        QVERIFY(shop.store.beginPrinting());
        QCOMPARE(shop.add(), 1);
        QCOMPARE(shop.add(), 2);
        for (int i = 0; i < 2; ++i) {
            auto job = shop.begun();
            QVERIFY(job);
            job->entry.state = State::Done;
            watch();
            QVERIFY(shop.store.end(*job));
        }
        QCOMPARE(steps.mid(5), (QStringList{"remove 0000000001.job", "sync journal"}));
    }

    void whatTheDiskRefusesIsNotAdded_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<QString>("name");
        const QStringList all = madeFolder + written;
        for (int i = 0; i < all.size(); ++i)
            QTest::addRow("step %d, %s", i, qPrintable(all.at(i))) << i << all.at(i);
    }
    void whatTheDiskRefusesIsNotAdded()
    {
        QFETCH(int, step);
        QFETCH(QString, name);
        Shop shop;
        watch(step, EIO);
        QCOMPARE(shop.add(), 0);
        QCOMPARE(steps.value(step), name);
        QVERIFY2(shop.store.fault().contains(qt_error_string(EIO)), qPrintable(shop.store.fault()));
        watch();
        QVERIFY(shop.store.entries().isEmpty());
        QCOMPARE(shop.filesIn("").filter(".job"), QStringList());
        QCOMPARE(shop.add(), 1);
    }

    // The clients' own interface, which says why.
    void aClientIsToldThatTheDiskRefuses()
    {
        Shop shop;
        PrintQueue queue(shop.folder);
        watch(madeFolder.size(), ENOSPC);
        QCOMPARE(queue.add(request()), 0);
        QVERIFY2(queue.fault().contains(qt_error_string(ENOSPC)), qPrintable(queue.fault()));
        QVERIFY(queue.entries().isEmpty());
    }

    void whatCanNotBeWrittenAsBegunIsNotPrinted()
    {
        for (const int step : {0, 1, 2}) {
            Shop shop;
            QCOMPARE(shop.add(), 1);
            QVERIFY(shop.store.beginPrinting());
            watch(step);
            QVERIFY(!shop.begun());
            QVERIFY2(shop.store.fault().contains(qt_error_string(EIO)),
                     qPrintable(shop.store.fault()));
            watch();
            QCOMPARE(shop.store.entries().constFirst().state, State::Waiting);
        }
    }

    void whatIsNotInTheJournalStaysInTheQueue()
    {
        for (const int step : {0, 1, 2}) {
            Shop shop;
            QCOMPARE(shop.add(), 1);
            watch(step);
            QVERIFY(!shop.store.drop(1));
            watch();
            QCOMPARE(shop.filesIn("/journal"), QStringList());
            QCOMPARE(shop.store.entries().size(), 1);
        }
    }

    // A document may be long, and each step of its job writes it anew, in an event loop.
    void whatIsWrittenAnewIsNotRead()
    {
        constexpr int size = 8 * 1024 * 1024;
        Shop shop;
        PrintQueueRequest large = request();
        large.document.bytes = QByteArray(size, 'x');
        QCOMPARE(shop.store.add(QueuedJob::of(large)), 1);
        QVERIFY(shop.store.beginPrinting());
        auto job = shop.store.next([](const PrintQueueEntry &) { return true; });
        QVERIFY(job);
        const qint64 before = bytesRead();
        QVERIFY(shop.store.begin(*job));
        QVERIFY(bytesRead() - before < size / 2);
        const qint64 ofAll = bytesRead();
        QVERIFY(shop.store.next([](const PrintQueueEntry &) { return true; }) == std::nullopt);
        QVERIFY(shop.store.document(1).has_value());
        QVERIFY2(bytesRead() - ofAll > size, "or it counts nothing");
    }

    // Else a printing program would wait for what a copy of a long receipt takes.
    void aCopyIsMadeWhileNobodyHoldsTheFolder()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        QVERIFY(shop.store.beginPrinting());
        auto job = shop.begun();
        QVERIFY(job);
        job->entry.state = State::Done;
        QVERIFY(shop.store.end(*job));
        const Opens opens(shop.folder + "/.lock");
        if (!opens.isWatching())
            QSKIP("this user watches as many files as the system lets him");
        QCOMPARE(shop.store.reprint(std::nullopt, "COPY"), 2);
        QCOMPARE(opens.seen(), QString("open close open close"));
    }

    // What was there is there again, though its file had lost its name by then.
    void whatIsRefusedLeavesTheFileAsItWas()
    {
        Shop shop;
        QCOMPARE(shop.add(), 1);
        QVERIFY(shop.store.beginPrinting());
        QFile file(shop.folder + "/0000000001.job");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        watch(2);
        QVERIFY(!shop.begun());
        QCOMPARE(steps, (written + QStringList{"sync file", "name 0000000001.job"}));
        watch();
        QFile after(shop.folder + "/0000000001.job");
        QVERIFY(after.open(QIODevice::ReadOnly));
        QCOMPARE(after.readAll(), bytes);
        QCOMPARE(shop.filesIn(""), QStringList("0000000001.job"));
    }

    // Some file systems have no fsync of folders, and do without.
    void aFolderThatCanNotBeSyncedIsNoFault()
    {
        Shop shop;
        watch(4, EINVAL);
        QCOMPARE(shop.add(), 1);
        QCOMPARE(steps.value(4), QString("sync queue"));
        QCOMPARE(shop.store.fault(), QString());
    }
};

QTEST_GUILESS_MAIN(TestQueueSteps)
#include "tst_queuesteps.moc"
