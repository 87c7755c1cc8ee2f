// What a queue keeps, prints and holds, against printers of the test's own and a folder of its own.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QtTest>
#include <csignal>

#include "job/jobrecord_p.h"
#include "job/queuefolder_p.h"
#include "jobparts.h"
#include "printerslib/drivers/leadingline.h"
#include "printerslib/drivers/printqueue.h"

using namespace jobparts;
using State = PrintQueueEntry::State;

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

namespace {

bool watchesNothing = false;

}  // namespace

/// In place of the system's: a user may watch so many folders, and no more.
extern "C" Q_DECL_EXPORT int inotify_add_watch(int descriptor, const char *path, uint32_t mask)
{
    if (!watchesNothing)
        return int(::syscall(SYS_inotify_add_watch, descriptor, path, mask));
    errno = ENOSPC;
    return -1;
}

namespace {

const QString usualModel = QStringLiteral("GENERAL_EPSON_PROTOCOL");

PrinterProfile profileOf(const QString &id = usualModel)
{
    return PrinterProfile::forModel(id).value();
}

EncodedDocument receipt(const QByteArray &text)
{
    EncodedDocument document;
    document.bytes = "\x1B@" + text + "\n" + QByteArray("\x1DV\x01", 3);
    document.marks = {{0, 0, 0}, {2, 1, 1}, {document.bytes.size() - 3, 0, 0}};
    document.pieces = 1;
    return document;
}

PrintQueueRequest requestOf(const QByteArray &text, const QString &number = {})
{
    PrintQueueRequest request;
    request.document = receipt(text);
    request.profile = profileOf();
    request.address = address();
    request.options = soon();
    request.documentNumber = number;
    request.title = "receipt " + number;
    return request;
}

/// One of several steps, whose line may be stuck as long as it likes.
PrintQueueRequest longRequest()
{
    PrintQueueRequest request = requestOf(QByteArray(3000, 'x'));
    request.options.stepBytes = 512;
    request.options.transport.writeMilliseconds = 0;
    return request;
}

/// A line that opens, and takes nothing.
class FullLine : public Line
{
public:
    using Line::Line;
    bool write(const QByteArray & /*bytes*/) override { return false; }
};

/// A queue that prints on printers of the test.
class Queue : public PrintQueue
{
public:
    explicit Queue(const QString &folder, const QString &locks)
        : PrintQueue(folder), m_locks(locks), m_printers(&m_own)
    {
        connect(this, &PrintQueue::ended, this,
                [this](const PrintQueueEntry &entry) { ends.append(entry); });
        connect(this, &PrintQueue::idle, this, [this] { idles++; });
        connect(this, &PrintQueue::stopped, this, [this] { stops++; });
        connect(this, &PrintQueue::note, this,
                [this](qint64, const QString &text) { notes.append(text); });
    }

    QVector<PrintQueueEntry> ends;
    int idles = 0;
    int stops = 0;
    QStringList notes;
    Line *line = nullptr;
    bool refusesBytes = false;
    std::function<void(Line &)> prepare;

    /// Those of another queue.
    void shareWith(Queue &other) { m_printers = other.m_printers; }
    Printer &printer(const PrinterAddress &where = address())
    {
        auto &printer = (*m_printers)[where.toString()];
        if (!printer)
            printer = std::make_unique<Printer>(profileOf());
        return *printer;
    }
    QByteArray got() { return printer().got; }
    /// Prints until there is nothing to be tried any more.
    void run()
    {
        idles = 0;
        QVERIFY2(start(), qPrintable(fault()));
        TRY(idles > 0);
    }
    void end()
    {
        stop();
        TRY(stops > 0);
        stops = 0;
    }

protected:
    std::unique_ptr<PrintJob> makeJob(const EncodedDocument &document,
                                      const PrinterProfile &profile, const PrinterAddress &where,
                                      const PrintJobOptions &options) override
    {
        line =
            refusesBytes ? new FullLine(where, &printer(where)) : new Line(where, &printer(where));
        if (prepare)
            prepare(*line);
        return std::make_unique<Job>(document, profile, line, new Lock(where, m_locks), options);
    }

private:
    using Printers = std::map<QString, std::unique_ptr<Printer>>;
    QString m_locks;
    Printers m_own;
    Printers *m_printers;
};

struct Shop
{
    QTemporaryDir folder;
    QString path = folder.filePath("queue");
    std::unique_ptr<Queue> queue = std::make_unique<Queue>(path, folder.path());

    qint64 add(const QByteArray &text, const QString &number = {}) const
    {
        return queue->add(requestOf(text, number));
    }
    /// As another program sees it.
    std::unique_ptr<Queue> other() const
    {
        auto queueOfOther = std::make_unique<Queue>(path, folder.path());
        queueOfOther->shareWith(*queue);
        return queueOfOther;
    }
    QString file(qint64 id, const QString &sub = {}) const
    {
        return path + '/' + sub + QueueFolder::nameOf(id);
    }
    State state(qint64 id) const { return queue->entry(id).value_or(PrintQueueEntry()).state; }
};

/// Files of this process can't grow beyond so many bytes.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

private:
    rlimit m_before = {};
};

QVector<qint64> idsOf(const QVector<PrintQueueEntry> &entries)
{
    QVector<qint64> ids;
    for (const PrintQueueEntry &entry : entries)
        ids.append(entry.id);
    return ids;
}

void overwrite(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

class TestPrintQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Keeping
    void whatIsAddedIsThereInAnotherProcess();
    void allOfARequestIsKept();
    void aModelOfAUsersFileIsKept();
    void everyModelIsKept();
    void idsGoUpAndAreNeverGivenTwice();
    void whatCanNotBePrintedIsNotAdded_data();
    void whatCanNotBePrintedIsNotAdded();
    void theDefaultFolderIsThatOfTheUsersState();

    // ---- Printing
    void jobsArePrintedInTheOrderOfAdding();
    void whatIsAddedWhileItPrintsIsPrinted();
    void whatIsAddedToAFolderThatIsNotWatchedIsPrinted();
    void aJobIsWrittenAsBegunInFrontOfItsFirstByte();
    void aPrinterThatCanNotPrintKeepsItsJobs();
    void aPrinterThatCanNotPrintDoesNotHoldUpOthers();
    void aJobThatWaitsForItsPrinterMayBeDropped();
    void onlyOnePrints();
    void stopLetsAnotherOnePrint();
    void startBehindStopPrintsWhatWasCancelled();
    void stopWhileAJobIsSentHoldsIt();
    void aJobThatNothingOfWentOutWaitsAgain();
    void stopInFrontOfAWrittenEndHoldsTheJob();
    void aTicketIsTakenBackInFrontOfIdle();
    void thatATicketStaysIsTold();
    void idleIsToldOnceUntilThereIsSomething();
    void deletionInEachSignalIsSafe_data();
    void deletionInEachSignalIsSafe();

    void aSlotMayDoAnything_data();
    void aSlotMayDoAnything();
    void aFolderMayHaveAnyName();
    void whatLooksIsNotHeldUpByWhatPrints();

    // ---- Held
    void resultsDecideWhatIsHeld_data();
    void resultsDecideWhatIsHeld();
    void whatWasCutOffIsHeldAndNotRepeated();
    void aHeldJobDoesNotHoldUpTheRest();
    void aRepeatSaysThatItIsOne();
    void aRepeatOfARepeatSaysItOnce();
    void onlyHeldJobsAreRepeated();
    void aJobUnderWayIsNobodysToDecide();
    void whatIsDroppedIsNotPrinted();

    // ---- Journal
    void theJournalHasTheNewestFirst();
    void aReprintIsMarkedAsACopy();
    void aReprintIsOfTheLastWithItsNumber();
    void aReprintOpensNoDrawer();
    void aReceiptThatOnlyOpenedADrawerIsNotReprinted_data();
    void aReceiptThatOnlyOpenedADrawerIsNotReprinted();
    void theLastReceiptIsReprintedBehindADrawer();
    void theLastReceiptStaysBehindADrawer();
    void whatPrintsBesidesADrawerIsReprinted_data();
    void whatPrintsBesidesADrawerIsReprinted();
    void aRepeatedCopySaysSoInFrontOfItsMark_data();
    void aRepeatedCopySaysSoInFrontOfItsMark();
    void copiesAreNotCopied();
    void thereIsNothingToReprint();
    void theJournalKeepsSoMany();
    void theJournalKeepsSoLong();
    void withoutASettingTheJournalKeepsTenThousand();
    void theLastOneStays();
    void theLastReceiptStaysBehindItsCopy();
    void timesAheadDoNotEndTheRetention();

    // ---- Damage
    void damagedFilesArePutAside_data();
    void damagedFilesArePutAside();
    void whatIsDamagedBehindItsReadingIsPrinted();
    void everyDamagedByteIsFound();
    void filesOfOthersAreLeftAlone();
    void aNewerVersionsFileIsLeftAlone();
    void aNumberThatIsTooGreatIsNoJobs();
    void thereIsNoNumberBehindTheGreatest();
    void whatTheJournalCanNotReadIsTold();
    void aFolderThatCanNotBeReadIsTold_data();
    void aFolderThatCanNotBeReadIsTold();
    void aJobInBothPlacesIsOver();
    void whatCanNotBeWrittenIsTold();
    void whyAJobIsRefusedIsToldThoughASlotLooksIntoTheFolder();
    void aJobOfAFolderThatIsBusyIsBegunLater();
    void aFolderThatStaysBusyIsTriedAgain();
    void whatIsRefusedHoldsUpNoOtherPrinter();
    void anEndThatCanNotBeWrittenIsWrittenLater();
    void aFolderThatIsNoneIsTold();
};

// ---- Keeping

void TestPrintQueue::whatIsAddedIsThereInAnotherProcess()
{
    const Shop shop;
    const qint64 id = shop.add("one", "17");
    QCOMPARE(id, 1);
    const auto entries = shop.other()->entries();
    QCOMPARE(entries.size(), 1);
    const PrintQueueEntry &entry = entries.at(0);
    QCOMPARE(entry.id, id);
    QCOMPARE(entry.state, State::Waiting);
    QCOMPARE(entry.documentNumber, QString("17"));
    QCOMPARE(entry.title, QString("receipt 17"));
    QCOMPARE(entry.modelId, usualModel);
    QVERIFY(entry.address == address());
    QVERIFY(entry.added.isValid());
    QCOMPARE(entry.added.timeSpec(), Qt::UTC);
    QVERIFY(!entry.begun.isValid());
    QVERIFY(!entry.ended.isValid());
    QVERIFY(!entry.isHeld());
}

void TestPrintQueue::allOfARequestIsKept()
{
    const Shop shop;
    PrintQueueRequest request = requestOf(
        "M\xFC"
        "ller\0",
        QString::fromUtf8("№ 17 Ä"));
    request.document.notes = {{3, 2, "a picture is missing", true}, {0, 0, "wide", false}};
    request.document.retractAfterSeconds = 20;
    request.document.retraction =
        "\x1D"
        "e\x05";
    request.document.pieces = 3;
    request.paperId = 1;
    request.baseFont = 1;
    request.address = address("serial:/dev/ttyS7?baud=19200&flow=dtr");
    request.options.waitMilliseconds = PrintJobOptions::forEver;
    request.options.asks = false;
    request.options.confirms = false;
    request.options.stepBytes = 777;
    request.options.transport.connectMilliseconds = 123;
    request.isCopy = true;
    const qint64 id = shop.queue->add(request);
    QueueFolder folder(shop.path);
    const auto kept = folder.read(QueueFolder::Place::Queue, id);
    QVERIFY(kept);
    const PrintQueueRequest &got = kept->request;
    QCOMPARE(got.document.bytes, request.document.bytes);
    QCOMPARE(got.document.marks.size(), 3);
    QCOMPARE(got.document.marks.at(1).offset, 2);
    QCOMPARE(got.document.marks.at(1).block, 1);
    QCOMPARE(got.document.marks.at(1).line, 1);
    QCOMPARE(got.document.notes.at(0).toString(), request.document.notes.at(0).toString());
    QCOMPARE(got.document.notes.at(1).isLoss, false);
    QCOMPARE(got.document.retractAfterSeconds, 20);
    QCOMPARE(got.document.retraction, request.document.retraction);
    QCOMPARE(got.document.pieces, 3);
    QCOMPARE(got.paperId, 1);
    QCOMPARE(got.baseFont, 1);
    QVERIFY(got.address == request.address);
    QCOMPARE(got.options.waitMilliseconds, int(PrintJobOptions::forEver));
    QCOMPARE(got.options.asks, false);
    QCOMPARE(got.options.confirms, false);
    QCOMPARE(got.options.stepBytes, 777);
    QCOMPARE(got.options.transport.connectMilliseconds, 123);
    QCOMPARE(got.options.statusMilliseconds, soon().statusMilliseconds);
    QCOMPARE(got.documentNumber, request.documentNumber);
    QVERIFY(got.isCopy);
    QCOMPARE(shop.queue->document(id)->bytes, request.document.bytes);
}

void TestPrintQueue::aModelOfAUsersFileIsKept()
{
    PrinterModels models;
    QCOMPARE(models.add(R"([{"id": "SHOP", "like": "CUSTOM_VKP_80", "headDots": 500},
                            {"id": "CITIZEN_CTS_2000", "confirmation": "ResponseId"}])",
                        "models.json"),
             QStringList());
    const Shop shop;
    for (const QString &id : {QString("SHOP"), QString("CITIZEN_CTS_2000")}) {
        PrintQueueRequest request = requestOf("one");
        request.profile = models.profile(id).value();
        const qint64 job = shop.queue->add(request);
        QueueFolder folder(shop.path);
        const auto kept = folder.read(QueueFolder::Place::Queue, job);
        QVERIFY2(kept, qPrintable(folder.fault()));
        QCOMPARE(kept->entry.modelId, id);
        QCOMPARE(kept->request.profile.headDots(), request.profile.headDots());
        QCOMPARE(kept->request.profile.confirmation(), request.profile.confirmation());
        QCOMPARE(kept->request.profile.catalogueId(), request.profile.catalogueId());
    }
}

void TestPrintQueue::everyModelIsKept()
{
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids) {
        PrintQueueRequest request = requestOf("one");
        request.profile = profileOf(id);
        QueuedJob job = QueuedJob::of(request);
        job.entry.id = 5;
        QueuedFault fault;
        const auto kept = QueuedJob::fromBytes(job.toBytes(), 5, &fault);
        QVERIFY2(kept, qPrintable(id + ": " + fault.text));
        QJsonObject before = request.profile.toJson();
        QJsonObject after = kept->request.profile.toJson();
        for (const char *key : {"sources", "note"}) {
            before.remove(key);
            after.remove(key);
        }
        QCOMPARE(after, before);
    }
}

void TestPrintQueue::idsGoUpAndAreNeverGivenTwice()
{
    const Shop shop;
    shop.queue->setRetention(0, 1);
    QCOMPARE(shop.add("one"), 1);
    QCOMPARE(shop.add("two"), 2);
    shop.queue->run();
    QCOMPARE(shop.queue->entries().size(), 0);
    QCOMPARE(shop.other()->add(requestOf("three")), 3);
    QVERIFY(shop.queue->drop(3) || shop.state(3) == State::Done);
    TRY(shop.queue->entries().isEmpty());
    QCOMPARE(shop.add("four"), 4);
}

void TestPrintQueue::whatCanNotBePrintedIsNotAdded_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("fault");
    QTest::newRow("empty") << 0 << "the document is empty";
    QTest::newRow("with an error") << 1 << "block 2: no such code";
    QTest::newRow("without a printer") << 2 << "no printer is named";
    QTest::newRow("too large") << 3 << "the document has 67108865 bytes; 67108864 are the most";
    const QString tooLong = "a title, document number or address of more than 4096 characters";
    QTest::newRow("title") << 4 << tooLong;
    QTest::newRow("number") << 5 << tooLong;
    QTest::newRow("address") << 6 << tooLong;
}

void TestPrintQueue::whatCanNotBePrintedIsNotAdded()
{
    QFETCH(int, what);
    const Shop shop;
    PrintQueueRequest request = requestOf("one");
    if (what == 0)
        request.document = {};
    else if (what == 1)
        request.document.error = "block 2: no such code";
    else if (what == 2)
        request.address = {};
    else if (what == 3)
        request.document.bytes = QByteArray(PrintQueue::mostBytes + 1, 'x');
    else if (what == 4)
        request.title = QString(4097, 'x');
    else if (what == 5)
        request.documentNumber = QString(4097, 'x');
    else
        request.address = PrinterAddress::parse("file:/" + QString(4097, 'x')).value();
    QCOMPARE(shop.queue->add(request), 0);
    QTEST(shop.queue->fault(), "fault");
    QVERIFY(shop.queue->entries().isEmpty());
}

void TestPrintQueue::theDefaultFolderIsThatOfTheUsersState()
{
    const QByteArray before = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", "/var/tills/state");
    QCOMPARE(PrintQueue::defaultFolder(), QString("/var/tills/state/printerslib/queue"));
    for (const char *none : {"", "state"}) {
        qputenv("XDG_STATE_HOME", none);
        QCOMPARE(PrintQueue::defaultFolder(), QDir::homePath() + "/.local/state/printerslib/queue");
    }
    qputenv("XDG_STATE_HOME", before);
}

// ---- Printing

void TestPrintQueue::jobsArePrintedInTheOrderOfAdding()
{
    const Shop shop;
    for (const char *text : {"one", "two", "three"})
        QVERIFY(shop.add(text) > 0);
    shop.queue->run();
    const QByteArray got = shop.queue->got();
    QCOMPARE(got.count("one"), 1);
    QVERIFY(got.indexOf("one") < got.indexOf("two"));
    QVERIFY(got.indexOf("two") < got.indexOf("three"));
    QCOMPARE(idsOf(shop.queue->ends), (QVector<qint64>{1, 2, 3}));
    for (const PrintQueueEntry &entry : std::as_const(shop.queue->ends)) {
        QCOMPARE(entry.state, State::Done);
        QCOMPARE(entry.result.outcome, Outcome::Processed);
        QVERIFY(entry.added <= entry.begun);
        QVERIFY(entry.begun <= entry.ended);
    }
    QVERIFY(shop.queue->entries().isEmpty());
    QCOMPARE(shop.queue->journal().size(), 3);
    QCOMPARE(shop.other()->entry(2)->result.outcome, Outcome::Processed);
}

void TestPrintQueue::whatIsAddedWhileItPrintsIsPrinted()
{
    const Shop shop;
    shop.queue->run();
    QCOMPARE(shop.other()->add(requestOf("of another program")), 1);
    TRY(shop.queue->got().contains("of another program"));
    TRY(shop.queue->idles == 2);
    QCOMPARE(shop.add("of its own"), 2);
    TRY(shop.queue->idles == 3);
    QVERIFY(shop.queue->got().contains("of its own"));
}

void TestPrintQueue::whatIsAddedToAFolderThatIsNotWatchedIsPrinted()
{
    const Shop shop;
    watchesNothing = true;
    shop.queue->run();
    watchesNothing = false;
    QCOMPARE(shop.other()->add(requestOf("of another program")), 1);
    TRY(shop.queue->idles == 2);
    QCOMPARE(shop.queue->got().count("of another program"), 1);
    shop.queue->end();
    QCOMPARE(shop.other()->add(requestOf("behind the end")), 2);
    QTest::qWait(1200);  // looks every second
    QCOMPARE(shop.queue->idles, 2);
    QCOMPARE(shop.state(2), State::Waiting);
}

void TestPrintQueue::aJobIsWrittenAsBegunInFrontOfItsFirstByte()
{
    const Shop shop;
    shop.add("one");
    State seen = State::Waiting;
    bool isSeen = false;
    shop.queue->prepare = [&](Line &line) {
        line.perTurn = 1;
        line.onTaken = [&](qint64) {
            if (isSeen || !shop.queue->got().contains("o"))
                return;
            isSeen = true;
            seen = QueueFolder(shop.path).readHead(QueueFolder::Place::Queue, 1)->entry.state;
        };
    };
    shop.queue->run();
    QVERIFY(isSeen);
    QCOMPARE(seen, State::Printing);
}

void TestPrintQueue::aPrinterThatCanNotPrintKeepsItsJobs()
{
    const Shop shop;
    shop.queue->printer().isPaperOut = true;
    shop.add("one");
    shop.add("two");
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->ends), QVector<qint64>{1});
    QCOMPARE(shop.queue->ends.at(0).state, State::Waiting);
    QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Status);
    QVERIFY(!shop.queue->ends.at(0).begun.isValid());
    QCOMPARE(shop.queue->entries().size(), 2);
    QVERIFY(!shop.queue->got().contains("one"));
    shop.queue->printer().isPaperOut = false;
    shop.queue->run();
    QVERIFY(shop.queue->entries().isEmpty());
    QVERIFY(shop.queue->got().indexOf("one") < shop.queue->got().indexOf("two"));
    QCOMPARE(shop.queue->got().count("one"), 1);
}

void TestPrintQueue::aPrinterThatCanNotPrintDoesNotHoldUpOthers()
{
    const Shop shop;
    const PrinterAddress kitchen = address("tcp:192.0.2.2:9100");
    shop.queue->printer().isPaperOut = true;
    shop.add("one");
    PrintQueueRequest request = requestOf("soup");
    request.address = kitchen;
    shop.queue->add(request);
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->entries()), QVector<qint64>{1});
    QVERIFY(shop.queue->printer(kitchen).got.contains("soup"));
}

void TestPrintQueue::aJobThatWaitsForItsPrinterMayBeDropped()
{
    const Shop shop;
    shop.queue->printer().isPaperOut = true;
    PrintQueueRequest request = requestOf("one");
    request.options.waitMilliseconds = PrintJobOptions::forEver;
    shop.queue->add(request);
    QVERIFY(shop.queue->start());
    TRY(shop.queue->printer().questions > 8);
    QVERIFY2(shop.other()->drop(1), "by another program");
    TRY(shop.queue->idles > 0);
    QCOMPARE(shop.queue->ends.at(0).state, State::Dropped);
    shop.queue->printer().isPaperOut = false;
    shop.add("two");
    TRY(shop.queue->idles == 2);
    QVERIFY(!shop.queue->got().contains("one"));
    QVERIFY(shop.queue->got().contains("two"));
    QCOMPARE(shop.state(1), State::Dropped);
}

void TestPrintQueue::onlyOnePrints()
{
    const Shop shop;
    shop.queue->run();
    const auto other = shop.other();
    QVERIFY(!other->start());
    QCOMPARE(other->fault(), shop.path + ": another program prints what is in it");
    QVERIFY(!other->isRunning());
    QVERIFY(shop.queue->start());
}

void TestPrintQueue::stopLetsAnotherOnePrint()
{
    const Shop shop;
    shop.queue->run();
    shop.queue->end();
    QVERIFY(!shop.queue->isRunning());
    const auto other = shop.other();
    shop.add("one");
    other->run();
    QVERIFY(shop.queue->got().contains("one"));
    QVERIFY(shop.queue->ends.isEmpty());
}

void TestPrintQueue::startBehindStopPrintsWhatWasCancelled()
{
    const Shop shop;
    shop.queue->printer().isPaperOut = true;
    PrintQueueRequest request = requestOf("one");
    request.options.waitMilliseconds = PrintJobOptions::forEver;
    shop.queue->add(request);
    QVERIFY(shop.queue->start());
    TRY(shop.queue->printer().questions > 8);
    shop.queue->printer().isPaperOut = false;
    shop.queue->stop();
    QVERIFY2(shop.queue->start(), "before it has stopped");
    TRY(shop.queue->idles > 0);
    QCOMPARE(shop.queue->ends.at(0).state, State::Waiting);
    QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Cancelled);
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.queue->got().count("one"), 1);
    QCOMPARE(shop.queue->stops, 0);
}

void TestPrintQueue::stopWhileAJobIsSentHoldsIt()
{
    const Shop shop;
    shop.queue->add(longRequest());
    shop.add("two");
    shop.queue->prepare = [&](Line &line) {
        line.perTurn = 100;
        line.onTaken = [&](qint64 taken) {
            if (taken > 1000)
                shop.queue->stop();
        };
    };
    QVERIFY(shop.queue->start());
    TRY(shop.queue->stops == 1);
    QCOMPARE(shop.state(1), State::Partial);
    QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Cancelled);
    QCOMPARE(shop.state(2), State::Waiting);
    QVERIFY(!shop.queue->got().contains("two"));
}

void TestPrintQueue::aJobThatNothingOfWentOutWaitsAgain()
{
    const Shop shop;
    PrintQueueRequest request = requestOf("one");
    request.options.asks = false;
    shop.queue->add(request);
    shop.queue->refusesBytes = true;
    shop.queue->run();
    QCOMPARE(shop.queue->ends.at(0).state, State::Waiting);
    const auto entry = shop.other()->entry(1);
    QCOMPARE(entry->state, State::Waiting);
    QVERIFY(!entry->begun.isValid());
    QVERIFY(!entry->ended.isValid());
    shop.queue->refusesBytes = false;
    shop.queue->run();
    QCOMPARE(shop.state(1), State::Done);
}

void TestPrintQueue::stopInFrontOfAWrittenEndHoldsTheJob()
{
    const Shop shop;
    shop.add("one");
    {
        std::unique_ptr<SmallDisk> disk;
        shop.queue->prepare = [&](Line &line) {
            line.onTaken = [&](qint64) {
                if (!disk && shop.queue->got().contains("one"))
                    disk = std::make_unique<SmallDisk>(100);
            };
        };
        QVERIFY(shop.queue->start());
        TRY(!shop.queue->notes.isEmpty());
        shop.queue->end();
    }
    QVERIFY(shop.queue->ends.isEmpty());
    QCOMPARE(shop.state(1), State::Printing);
    QCOMPARE(shop.queue->entries().at(0).state, State::Unknown);
    shop.queue->run();
    QCOMPARE(shop.queue->got().count("one"), 1);
}

void TestPrintQueue::aTicketIsTakenBackInFrontOfIdle()
{
    const Shop shop;
    PrintQueueRequest request = requestOf("one");
    request.document.retractAfterSeconds = 3;
    request.document.retraction =
        "\x1D"
        "e\x02";
    shop.queue->add(request);
    shop.queue->run();
    QVERIFY(shop.queue->got().contains(request.document.retraction));
    QCOMPARE(shop.state(1), State::Done);
}

void TestPrintQueue::thatATicketStaysIsTold()
{
    const Shop shop;
    PrintQueueRequest request = requestOf("one");
    request.document.retractAfterSeconds = 3;
    request.document.retraction =
        "\x1D"
        "e\x02";
    shop.queue->add(request);
    QVector<qint64> noted;
    connect(shop.queue.get(), &PrintQueue::note, shop.queue.get(),
            [&noted](qint64 id) { noted.append(id); });
    connect(shop.queue.get(), &PrintQueue::ended, shop.queue.get(), [&shop] {
        // Another program prints before it is taken back.
        Lock lock(address(), shop.folder.path());
        QVERIFY(lock.waitFor(500));
        QVERIFY(lock.setRecord(JobRecord().toBytes()));
    });
    shop.queue->run();
    QCOMPARE(shop.queue->notes, QStringList{"another job has printed since: its ticket stays"});
    QCOMPARE(noted, QVector<qint64>{1});
    QVERIFY(!shop.queue->got().contains(request.document.retraction));
}

void TestPrintQueue::idleIsToldOnceUntilThereIsSomething()
{
    const Shop shop;
    shop.queue->run();
    QTest::qWait(20);
    QCOMPARE(shop.queue->idles, 1);
    overwrite(shop.path + "/foreign", "x");
    QTest::qWait(20);
    QCOMPARE(shop.queue->idles, 1);
}

void TestPrintQueue::deletionInEachSignalIsSafe_data()
{
    QTest::addColumn<int>("signal");
    for (int i = 0; i < 5; ++i)
        QTest::addRow("%d", i) << i;
}

void TestPrintQueue::deletionInEachSignalIsSafe()
{
    QFETCH(int, signal);
    Shop shop;
    shop.add("one");
    QFile damaged(shop.file(7));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.close();
    bool isGone = false;
    const auto go = [&] {
        shop.queue.reset();
        isGone = true;
    };
    Queue *const queue = shop.queue.get();
    QObject context;
    if (signal == 0)
        connect(queue, &PrintQueue::started, &context, go);
    else if (signal == 1)
        connect(queue, &PrintQueue::progress, &context, go);
    else if (signal == 2)
        connect(queue, &PrintQueue::note, &context, go);
    else if (signal == 3)
        connect(queue, &PrintQueue::ended, &context, go);
    else
        connect(queue, &PrintQueue::idle, &context, go);
    QVERIFY(queue->start());
    TRY(isGone);
    QTest::qWait(5);
    PrintQueue next(shop.path);
    QVERIFY(next.start());
    const auto left = next.entries();
    QCOMPARE(left.size() + next.journal().size(), 1);
}

void TestPrintQueue::aSlotMayDoAnything_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QVector<qint64>>("done");
    QTest::newRow("adds when a job ends") << 0 << QVector<qint64>{1, 2, 3};
    QTest::newRow("stops when a job begins") << 1 << QVector<qint64>();
    QTest::newRow("drops what begins") << 2 << QVector<qint64>{2};
    QTest::newRow("starts when nothing is left") << 3 << QVector<qint64>{1, 2};
    QTest::newRow("stops and starts when a job ends") << 4 << QVector<qint64>{1, 2};
}

void TestPrintQueue::aSlotMayDoAnything()
{
    QFETCH(int, what);
    QFETCH(QVector<qint64>, done);
    const Shop shop;
    Queue &queue = *shop.queue;
    shop.add("one");
    shop.add("two");
    int calls = 0;
    connect(&queue, &PrintQueue::started, &queue, [&](const PrintQueueEntry &entry) {
        if (what == 1)
            queue.stop();
        else if (what == 2 && entry.id == 1)
            QVERIFY(queue.drop(1));
    });
    connect(&queue, &PrintQueue::ended, &queue, [&] {
        if (what == 0 && calls++ == 0)
            QCOMPARE(shop.add("three"), 3);
        if (what == 4) {
            queue.stop();
            QVERIFY(queue.start());
        }
    });
    connect(&queue, &PrintQueue::idle, &queue, [&] {
        if (what == 3 && calls++ < 3)
            QVERIFY(queue.start());
    });
    QVERIFY(queue.start());
    TRY(what == 1 ? queue.stops == 1 : queue.idles > (what == 3 ? 3 : 0));
    QVector<qint64> found;
    const auto entries = queue.journal();
    for (const PrintQueueEntry &entry : entries) {
        if (entry.state == State::Done)
            found.prepend(entry.id);
    }
    QCOMPARE(found, done);
    QCOMPARE(queue.got().count("one"), done.contains(1) ? 1 : 0);
    QCOMPARE(queue.got().count("two"), done.contains(2) ? 1 : 0);
}

void TestPrintQueue::aFolderMayHaveAnyName()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("Größe 100% ☃\n*[a]?/und/tiefer/queue"));
    Queue queue(path, folder.path());
    QCOMPARE(queue.add(requestOf("one", QString::fromUtf8("№\n17"))), 1);
    queue.run();
    QCOMPARE(queue.got().count("one"), 1);
    QCOMPARE(queue.reprint(QString::fromUtf8("№\n17")), 2);
    QCOMPARE(queue.folder(), path);
    QCOMPARE(Queue("queue/../x/", folder.path()).folder(), QDir::current().filePath("x"));
}

void TestPrintQueue::whatLooksIsNotHeldUpByWhatPrints()
{
    const Shop shop;
    shop.add("one");
    // Held by a program that is stopped, as by a debugger.
    QueueFolder folder(shop.path);
    const auto held = folder.lock(0);
    QVERIFY(held);
    QCOMPARE(shop.queue->entries().size(), 1);
    QCOMPARE(shop.queue->journal().size(), 0);
    QVERIFY(shop.queue->entry(1));
    QVERIFY(shop.queue->document(1));
    QVERIFY(shop.queue->damagedFiles().isEmpty());
    QVERIFY(!shop.queue->drop(1));
    QCOMPARE(shop.queue->fault(), shop.path + ": another program has held the folder for 5 s");
}

// ---- Held

void TestPrintQueue::resultsDecideWhatIsHeld_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<int>("state");
    QTest::newRow("confirmed") << 0 << int(State::Done);
    QTest::newRow("not asked to confirm") << 1 << int(State::Done);
    QTest::newRow("no confirmation") << 2 << int(State::Unknown);
    QTest::newRow("line is lost") << 3 << int(State::Partial);
    QTest::newRow("line doesn't open") << 4 << int(State::Waiting);
}

void TestPrintQueue::resultsDecideWhatIsHeld()
{
    QFETCH(int, what);
    QFETCH(int, state);
    const Shop shop;
    PrintQueueRequest request = requestOf("one" + QByteArray(3000, ' '));
    request.options.confirms = what != 1;
    shop.queue->printer().holdsBack = what == 2;
    shop.queue->prepare = [&](Line &line) {
        line.breaksAt = what == 3 ? 1000 : -1;
        line.failsToOpen = what == 4;
    };
    shop.queue->add(request);
    shop.queue->run();
    QCOMPARE(shop.queue->ends.size(), 1);
    const PrintQueueEntry end = shop.queue->ends.at(0);
    QCOMPARE(int(end.state), state);
    const auto kept = shop.other()->entry(1);
    QCOMPARE(int(kept->state), state);
    QCOMPARE(kept->isHeld(), state == int(State::Unknown) || state == int(State::Partial));
    // What was never begun leaves no trace.
    if (what == 4)
        return;
    QCOMPARE(kept->result.outcome, end.result.outcome);
    QCOMPARE(kept->result.reason, end.result.reason);
    QCOMPARE(kept->result.text, end.result.text);
    QCOMPARE(kept->result.sentBytes, end.result.sentBytes);
    QCOMPARE(kept->result.mostBytes, end.result.mostBytes);
    QCOMPARE(kept->result.totalBytes, request.document.bytes.size());
    QCOMPARE(kept->ended, end.ended);
}

void TestPrintQueue::whatWasCutOffIsHeldAndNotRepeated()
{
    Shop shop;
    shop.queue->add(longRequest());
    bool isCut = false;
    shop.queue->prepare = [&](Line &line) {
        line.onTaken = [&](qint64 taken) { isCut = isCut || taken > 1000; };
        line.stopsAt = 1500;
    };
    QVERIFY(shop.queue->start());
    TRY(isCut);
    QCOMPARE(shop.state(1), State::Printing);
    const auto other = shop.other();
    QCOMPARE(other->entries().at(0).state, State::Printing);
    other->shareWith(*other);
    shop.queue.reset();  // without a word, as a crash does
    const auto held = other->entries().at(0);
    QCOMPARE(held.state, State::Unknown);
    QCOMPARE(held.result.text, QString("the program that printed it ended meanwhile"));
    QVERIFY(held.begun.isValid());
    QVERIFY(!held.ended.isValid());
    Queue next(shop.path, shop.folder.path());
    next.run();
    QVERIFY(next.got().isEmpty());
    QVERIFY(next.ends.isEmpty());
    QCOMPARE(next.entries().at(0).state, State::Unknown);
}

void TestPrintQueue::aHeldJobDoesNotHoldUpTheRest()
{
    const Shop shop;
    int jobs = 0;
    shop.queue->prepare = [&](Line &line) { line.breaksAt = jobs++ == 0 ? 1000 : -1; };
    shop.add(QByteArray(3000, 'x'));
    shop.add("two");
    shop.queue->run();
    QCOMPARE(shop.state(1), State::Partial);
    QCOMPARE(shop.state(2), State::Done);
}

void TestPrintQueue::aRepeatSaysThatItIsOne()
{
    const Shop shop;
    int jobs = 0;
    shop.queue->prepare = [&](Line &line) { line.breaksAt = jobs++ == 0 ? 1000 : -1; };
    const QByteArray text = "one" + QByteArray(3000, ' ') + "all";
    shop.add(text);
    shop.queue->run();
    shop.queue->end();
    shop.add("two");
    QVERIFY2(shop.queue->repeat(1), qPrintable(shop.queue->fault()));
    QCOMPARE(shop.state(1), State::Waiting);
    QCOMPARE(shop.queue->entry(1)->repeats, 1);
    shop.queue->printer().got.clear();
    shop.queue->run();
    const QByteArray got = shop.queue->got();
    const auto target = PrintTarget::forModel(usualModel, 0);
    const QByteArray expected = withLineInFront(receipt(text), *target, "REPEAT").bytes;
    QVERIFY(got.contains(expected.mid(2)));
    QVERIFY2(got.indexOf("all") < got.indexOf("two"), "in its old place");
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.queue->document(1)->bytes, receipt(text).bytes);
}

void TestPrintQueue::aRepeatOfARepeatSaysItOnce()
{
    const Shop shop;
    int jobs = 0;
    shop.queue->prepare = [&](Line &line) { line.breaksAt = jobs++ < 2 ? 1000 : -1; };
    shop.add(QByteArray(3000, 'x'));
    shop.queue->run();
    QVERIFY(shop.queue->repeat(1));
    shop.queue->run();
    QVERIFY(shop.queue->repeat(1));
    shop.queue->printer().got.clear();
    shop.queue->run();
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.queue->entry(1)->repeats, 2);
    QCOMPARE(shop.queue->got().count("REPEAT"), 1);
}

void TestPrintQueue::onlyHeldJobsAreRepeated()
{
    const Shop shop;
    const qint64 id = shop.add("one");
    QVERIFY(!shop.queue->repeat(id));
    QCOMPARE(shop.queue->fault(), QString("job 1 of %1 isn't held: it waits").arg(shop.path));
    QVERIFY(!shop.queue->repeat(2));
    QCOMPARE(shop.queue->fault(), QString("there is no job 2 of %1").arg(shop.path));
    shop.queue->run();
    QVERIFY(!shop.queue->repeat(id));
    QCOMPARE(shop.queue->fault(), QString("job 1 of %1 is over").arg(shop.path));
    QVERIFY(!shop.queue->drop(id));
    QVERIFY(!shop.queue->drop(-1));
    QVERIFY(!shop.queue->entry(0));
}

void TestPrintQueue::aJobUnderWayIsNobodysToDecide()
{
    const Shop shop;
    shop.queue->add(longRequest());
    bool isUnderWay = false;
    shop.queue->prepare = [&](Line &line) {
        line.stopsAt = 1500;
        line.onTaken = [&](qint64 taken) { isUnderWay = taken > 1000; };
    };
    QVERIFY(shop.queue->start());
    TRY(isUnderWay);
    const auto other = shop.other();
    for (Queue *const one : {shop.queue.get(), other.get()}) {
        QVERIFY(!one->repeat(1));
        QVERIFY(!one->drop(1));
        QCOMPARE(one->fault(), QString("job 1 of %1 is being printed").arg(shop.path));
    }
    shop.queue->line->goOn();
    TRY(shop.queue->idles > 0);
    QCOMPARE(shop.state(1), State::Done);
}

void TestPrintQueue::whatIsDroppedIsNotPrinted()
{
    const Shop shop;
    shop.add("one");
    shop.add("two");
    QVERIFY(shop.other()->drop(1));
    shop.queue->run();
    QVERIFY(!shop.queue->got().contains("one"));
    QCOMPARE(shop.state(1), State::Dropped);
    QVERIFY(shop.queue->entry(1)->ended.isValid());
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{2, 1}));
}

// ---- Journal

void TestPrintQueue::theJournalHasTheNewestFirst()
{
    const Shop shop;
    QVERIFY(shop.queue->journal().isEmpty());
    for (const char *text : {"one", "two", "three"})
        shop.add(text);
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{3, 2, 1}));
    QCOMPARE(idsOf(shop.queue->journal(2)), (QVector<qint64>{3, 2}));
    QVERIFY(shop.queue->journal(0).isEmpty());
}

void TestPrintQueue::aReprintIsMarkedAsACopy()
{
    const Shop shop;
    shop.add("one", "17");
    shop.add("two", "18");
    shop.queue->run();
    shop.queue->printer().got.clear();
    const qint64 copy = shop.queue->reprintLast();
    QCOMPARE(copy, 3);
    const auto entry = shop.queue->entry(copy);
    QVERIFY(entry->isCopy);
    QCOMPARE(entry->copyOf, 2);
    QCOMPARE(entry->documentNumber, QString("18"));
    shop.queue->run();
    const auto target = PrintTarget::forModel(usualModel, 0);
    const QByteArray expected = withLineInFront(receipt("two"), *target, "CHECK_COPY").bytes;
    QVERIFY(shop.queue->got().contains(expected.mid(2)));
    QVERIFY(!shop.queue->got().contains("<C>"));
    QCOMPARE(shop.state(copy), State::Done);
}

void TestPrintQueue::aReprintIsOfTheLastWithItsNumber()
{
    const Shop shop;
    shop.add("one", "17");
    shop.add("again", "17");
    shop.add("other", "18");
    shop.queue->run();
    shop.queue->printer().got.clear();
    QCOMPARE(shop.queue->reprint("17"), 4);
    shop.queue->run();
    QVERIFY(shop.queue->got().contains("again"));
    QVERIFY(!shop.queue->got().contains("one"));
}

void TestPrintQueue::aReprintOpensNoDrawer()
{
    const Shop shop;
    PrintQueueRequest request = requestOf("one");
    const QByteArray pulse("\x1Bp\0\x19\x19", 5);
    request.document.bytes.insert(2, pulse);
    request.document.marks[1].offset += pulse.size();
    shop.queue->add(request);
    shop.queue->run();
    QVERIFY(shop.queue->got().contains(pulse));
    shop.queue->printer().got.clear();
    QVERIFY(shop.queue->reprintLast() > 0);
    shop.queue->run();
    QVERIFY(!shop.queue->got().contains(pulse));
    QVERIFY(shop.queue->got().contains("one"));
}

namespace {

const QByteArray drawerPulse("\x1Bp\0\x19\x19", 5);

PrintQueueRequest drawerRequest(const QString &number = {})
{
    PrintQueueRequest request = requestOf({}, number);
    request.document = {};
    request.document.bytes = drawerPulse;
    return request;
}

/// What a client makes of a document without lines.
PrintQueueRequest encodedDrawerRequest(const QString &number = {})
{
    PrintQueueRequest request = requestOf({}, number);
    PrintOptions options;
    options.drawer = PrintOptions::Drawer::After;
    TextPrinterDocument document;
    document.setDoInit(true);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
    request.document =
        DocumentEncoder(*PrintTarget::forModel(usualModel, 0), options).encode(document);
    return request;
}

}  // namespace

void TestPrintQueue::aReceiptThatOnlyOpenedADrawerIsNotReprinted_data()
{
    QTest::addColumn<bool>("isEncoded");
    QTest::newRow("bytes") << false;
    QTest::newRow("a document") << true;
}

void TestPrintQueue::aReceiptThatOnlyOpenedADrawerIsNotReprinted()
{
    QFETCH(bool, isEncoded);
    const Shop shop;
    shop.queue->add(isEncoded ? encodedDrawerRequest("17") : drawerRequest("17"));
    shop.queue->run();
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.queue->reprintLast(), 0);
    QCOMPARE(shop.queue->fault(), QString("the journal of %1 has no such receipt").arg(shop.path));
    QCOMPARE(shop.queue->reprint("17"), 0);
    QCOMPARE(shop.queue->fault(),
             QString("job 1 of %1 can't be copied: it opened a drawer, and printed nothing")
                 .arg(shop.path));
    QVERIFY(shop.queue->entries().isEmpty());
    shop.add("two");
    shop.queue->run();
    QCOMPARE(shop.state(2), State::Done);
}

/// As a cashier opens it to give change back for the receipt.
void TestPrintQueue::theLastReceiptIsReprintedBehindADrawer()
{
    const Shop shop;
    shop.add("one");
    shop.add("two", "17");
    shop.queue->add(drawerRequest());
    shop.queue->add(encodedDrawerRequest());
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{4, 3, 2, 1}));
    shop.queue->printer().got.clear();
    const qint64 copy = shop.other()->reprintLast();
    QCOMPARE(copy, 5);
    QCOMPARE(shop.queue->entry(copy)->copyOf, 2);
    QCOMPARE(shop.queue->entry(copy)->documentNumber, QString("17"));
    TRY(shop.state(copy) == State::Done);
    QCOMPARE(shop.queue->got().count("two"), 1);
    QVERIFY(!shop.queue->got().contains(drawerPulse));
}

void TestPrintQueue::theLastReceiptStaysBehindADrawer()
{
    const Shop shop;
    shop.queue->setRetention(0, 1);
    shop.add("one", "17");
    shop.queue->add(drawerRequest());
    shop.queue->add(drawerRequest());
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{3, 1}));
    QCOMPARE(shop.queue->reprintLast(), 4);
    QCOMPARE(shop.queue->entry(4)->copyOf, 1);
}

void TestPrintQueue::whatPrintsBesidesADrawerIsReprinted_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text in front") << "a" + drawerPulse;
    QTest::newRow("text behind") << drawerPulse + "a";
    QTest::newRow("a cut") << drawerPulse + QByteArray("\x1DV\0", 3);
    QTest::newRow("a command that isn't whole") << drawerPulse + "\x1DV";
    QTest::newRow("far behind") << drawerPulse.repeated(5000) + "\n";
    QTest::newRow("no drawer") << QByteArray("\x1B@");
}

void TestPrintQueue::whatPrintsBesidesADrawerIsReprinted()
{
    QFETCH(QByteArray, bytes);
    const Shop shop;
    PrintQueueRequest request = drawerRequest();
    request.document.bytes = bytes;
    shop.queue->add(request);
    shop.queue->run();
    QVERIFY2(shop.queue->reprintLast() == 2, qPrintable(shop.queue->fault()));
}

void TestPrintQueue::aRepeatedCopySaysSoInFrontOfItsMark_data()
{
    QTest::addColumn<bool>("hasMarks");
    QTest::newRow("of a document") << true;
    QTest::newRow("of bytes without marks") << false;
}

void TestPrintQueue::aRepeatedCopySaysSoInFrontOfItsMark()
{
    QFETCH(bool, hasMarks);
    const Shop shop;
    PrintQueueRequest request = requestOf("one" + QByteArray(3000, ' ') + "all");
    if (!hasMarks)
        request.document.marks.clear();
    shop.queue->add(request);
    shop.queue->run();
    const qint64 copy = shop.queue->reprintLast();
    shop.queue->prepare = [](Line &line) { line.breaksAt = 1500; };
    shop.queue->run();
    QCOMPARE(shop.state(copy), State::Partial);
    QVERIFY(shop.queue->repeat(copy));
    shop.queue->prepare = {};
    shop.queue->printer().got.clear();
    shop.queue->run();
    QCOMPARE(shop.state(copy), State::Done);
    const QByteArray got = shop.queue->got();
    const int repeat = got.indexOf("REPEAT");
    QVERIFY(repeat >= 0);
    QVERIFY(got.indexOf("CHECK_COPY", repeat) > repeat);
    QVERIFY(got.indexOf("one", repeat) > got.indexOf("CHECK_COPY"));
    QCOMPARE(got.count("REPEAT"), 1);
    QCOMPARE(got.count("CHECK_COPY"), 1);
}

void TestPrintQueue::copiesAreNotCopied()
{
    const Shop shop;
    shop.add("one", "17");
    shop.queue->run();
    QCOMPARE(shop.queue->reprintLast(), 2);
    shop.queue->run();
    QCOMPARE(shop.queue->reprint("17"), 3);
    QCOMPARE(shop.queue->entry(3)->copyOf, 1);
    shop.queue->printer().got.clear();
    shop.queue->run();
    QCOMPARE(shop.queue->got().count("CHECK_COPY"), 1);
}

void TestPrintQueue::thereIsNothingToReprint()
{
    const Shop shop;
    QCOMPARE(shop.queue->reprintLast(), 0);
    QCOMPARE(shop.queue->fault(), QString("the journal of %1 has no such receipt").arg(shop.path));
    shop.add("one", "17");
    QVERIFY2(shop.queue->reprintLast() == 0, "it only waits");
    shop.queue->drop(1);
    QVERIFY2(shop.queue->reprintLast() == 0, "it wasn't printed");
    QCOMPARE(shop.queue->reprint("17"), 0);
}

void TestPrintQueue::theJournalKeepsSoMany()
{
    const Shop shop;
    shop.queue->setRetention(0, 2);
    for (int i = 1; i <= 5; ++i)
        shop.add("x", QString::number(i));
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{5, 4}));
    QCOMPARE(shop.queue->reprint("3"), 0);
    QVERIFY(shop.queue->reprint("4") > 0);
}

void TestPrintQueue::theJournalKeepsSoLong()
{
    const Shop shop;
    for (int i = 1; i <= 3; ++i)
        shop.add("x");
    shop.queue->run();
    QueueFolder folder(shop.path);
    for (const qint64 id : {1, 2}) {
        auto job = folder.read(QueueFolder::Place::Journal, id);
        job->entry.ended = job->entry.ended.addDays(id == 1 ? -31 : -29);
        QVERIFY(folder.write(QueueFolder::Place::Journal, *job));
    }
    shop.add("x");
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{4, 3, 2}));
}

void TestPrintQueue::withoutASettingTheJournalKeepsTenThousand()
{
    const Shop shop;
    shop.add("x");
    shop.queue->run();
    const QString journal = shop.path + "/journal/";
    const QByteArray first = QFile::encodeName(journal + QueueFolder::nameOf(1));
    for (qint64 id = 2; id <= PrintQueue::usualCount; ++id) {
        const QByteArray name = QFile::encodeName(journal + QueueFolder::nameOf(id));
        QVERIFY(::link(first.constData(), name.constData()) == 0);
    }
    const qint64 last = shop.add("x");
    QCOMPARE(last, PrintQueue::usualCount + 1);
    shop.queue->run();
    const auto ids = QueueFolder(shop.path).ids(QueueFolder::Place::Journal);
    QCOMPARE(ids.size(), PrintQueue::usualCount);
    QCOMPARE(ids.constFirst(), 2);
    QCOMPARE(ids.constLast(), last);
}

void TestPrintQueue::theLastOneStays()
{
    const Shop shop;
    shop.queue->setRetention(1, 0);
    shop.add("one");
    shop.queue->run();
    QueueFolder folder(shop.path);
    auto job = folder.read(QueueFolder::Place::Journal, 1);
    job->entry.ended = job->entry.ended.addDays(-400);
    QVERIFY(folder.write(QueueFolder::Place::Journal, *job));
    shop.queue->end();
    shop.queue->run();
    QCOMPARE(shop.queue->reprintLast(), 2);
}

void TestPrintQueue::theLastReceiptStaysBehindItsCopy()
{
    const Shop shop;
    shop.queue->setRetention(0, 1);
    shop.add("one", "17");
    shop.queue->run();
    QCOMPARE(shop.queue->reprintLast(), 2);
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{2, 1}));
    QCOMPARE(shop.queue->reprintLast(), 3);
    shop.add("two");
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), QVector<qint64>{4});
}

void TestPrintQueue::timesAheadDoNotEndTheRetention()
{
    const Shop shop;
    for (int i = 1; i <= 4; ++i)
        shop.add("x");
    shop.queue->run();
    QueueFolder folder(shop.path);
    const auto age = [&folder](qint64 id, int days) {
        auto job = folder.read(QueueFolder::Place::Journal, id);
        job->entry.ended = job->entry.ended.addDays(-days);
        QVERIFY(folder.write(QueueFolder::Place::Journal, *job));
    };
    age(1, -4000);
    age(2, 31);
    age(3, -4000);
    shop.add("x");
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{5, 4, 3}));
}

// ---- Damage

void TestPrintQueue::damagedFilesArePutAside_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << 0 << "it is damaged";
    QTest::newRow("cut off") << 1 << "its document is damaged";
    QTest::newRow("another's name") << 2 << "it isn't what its name says";
    QTest::newRow("a folder") << 3 << "this is no file";
    QTest::newRow("a link") << 4 << "Too many levels of symbolic links";
    QTest::newRow("a FIFO") << 5 << "this is no file";
}

void TestPrintQueue::damagedFilesArePutAside()
{
    QFETCH(int, what);
    QFETCH(QString, text);
    const Shop shop;
    shop.add("one");
    shop.add("two");
    const QString file = shop.file(1);
    const QByteArray bytes = contentOf(shop.file(2));
    QVERIFY(QFile::remove(file));
    if (what == 0)
        overwrite(file, {});
    else if (what == 1)
        overwrite(file, bytes.chopped(4));
    else if (what == 2)
        overwrite(file, bytes);
    else if (what == 3)
        QVERIFY(QDir().mkdir(file));
    else if (what == 4)
        QVERIFY(QFile::link(shop.file(2), file));
    else
        QCOMPARE(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    QCOMPARE(shop.queue->damagedFiles(), QStringList{"0000000001.job"});
    shop.queue->run();
    TRY(!shop.queue->notes.isEmpty());
    QCOMPARE(shop.queue->notes.at(0),
             QString("%1: %2; it lies in the folder \"damaged\" now").arg(file, text));
    QCOMPARE(shop.queue->damagedFiles(), QStringList{"damaged/0000000001.job"});
    QCOMPARE(shop.queue->got().count("two"), 1);
    QCOMPARE(shop.add("three"), 3);
}

void TestPrintQueue::whatIsDamagedBehindItsReadingIsPrinted()
{
    const Shop shop;
    shop.add("one");
    const QObject guard;
    QObject::connect(shop.queue.get(), &PrintQueue::started, &guard,
                     [&] { overwrite(shop.file(1), "nothing"); });
    shop.queue->run();
    QCOMPARE(shop.queue->ends.at(0).state, State::Done);
    QCOMPARE(shop.queue->got().count("one"), 1);
    QCOMPARE(shop.queue->document(1)->bytes, receipt("one").bytes);
}

void TestPrintQueue::everyDamagedByteIsFound()
{
    QueuedJob job = QueuedJob::of(requestOf("one", "17"));
    job.entry.id = 3;
    const QByteArray whole = job.toBytes();
    QueuedFault fault;
    QVERIFY(QueuedJob::fromBytes(whole, 3, &fault));
    for (int i = 0; i < whole.size(); ++i) {
        QByteArray damaged = whole;
        damaged[i] = char(damaged.at(i) ^ 0x20);
        QVERIFY2(!QueuedJob::fromBytes(damaged, 3, &fault), qPrintable(QString::number(i)));
        QVERIFY(!QueuedJob::fromBytes(whole.left(i), 3, &fault));
    }
}

void TestPrintQueue::filesOfOthersAreLeftAlone()
{
    const Shop shop;
    shop.add("one");
    const QStringList names = {"notes.txt",       "1.job",          "0000000001.job~",
                               "0000000009.jobs", "-000000001.job", "0000000000.job"};
    for (const QString &name : names)
        overwrite(shop.path + '/' + name, "mine");
    overwrite(shop.file(4) + ".abcDEF", "half of one");
    shop.queue->run();
    QCOMPARE(shop.queue->notes, QStringList());
    for (const QString &name : names)
        QCOMPARE(contentOf(shop.path + '/' + name), QByteArray("mine"));
    QVERIFY(!QFile::exists(shop.file(4) + ".abcDEF"));
    QCOMPARE(shop.state(1), State::Done);
}

void TestPrintQueue::aNewerVersionsFileIsLeftAlone()
{
    const Shop shop;
    shop.add("one");
    shop.add("two");
    QByteArray bytes = contentOf(shop.file(1));
    const QByteArray head = bytes.mid(8, bytes.indexOf("}", bytes.lastIndexOf("\"version\"")) - 7);
    QByteArray newer = head;
    newer.replace("\"version\":1", "\"version\":9");
    bytes.replace(head, newer);
    bytes.replace(QCryptographicHash::hash(head, QCryptographicHash::Sha256),
                  QCryptographicHash::hash(newer, QCryptographicHash::Sha256));
    overwrite(shop.file(1), bytes);
    shop.queue->run();
    TRY(!shop.queue->notes.isEmpty());
    QCOMPARE(shop.queue->notes.at(0),
             shop.file(1) + ": a newer version of this program has made it");
    QCOMPARE(contentOf(shop.file(1)), bytes);
    QVERIFY(shop.queue->got().contains("two"));
}

void TestPrintQueue::aNumberThatIsTooGreatIsNoJobs()
{
    const Shop shop;
    shop.add("one");
    for (const char *name : {"9223372036854775807.job", "1000000000000000.job"})
        overwrite(shop.path + '/' + name, "mine");
    QCOMPARE(shop.add("two"), 2);
    QCOMPARE(shop.queue->damagedFiles(), QStringList());
}

void TestPrintQueue::thereIsNoNumberBehindTheGreatest()
{
    const Shop shop;
    shop.add("one");
    const QString last = shop.path + "/999999999999999.job";
    overwrite(last, "mine");
    QCOMPARE(shop.add("two"), 0);
    QCOMPARE(shop.queue->fault(),
             QString("%1: a file has the greatest number that a job may have").arg(shop.path));
    QVERIFY(QFile::remove(last));
    QCOMPARE(shop.add("two"), 2);
}

void TestPrintQueue::whatTheJournalCanNotReadIsTold()
{
    const Shop shop;
    for (const char *number : {"17", "18", "19"})
        shop.add("x", number);
    shop.queue->run();
    overwrite(shop.file(2, "journal/"), "nothing");
    const QString fault = shop.file(2, "journal/") + ": it is damaged";
    QCOMPARE(idsOf(shop.queue->journal()), (QVector<qint64>{3, 1}));
    QCOMPARE(shop.queue->fault(), fault);
    QCOMPARE(idsOf(shop.queue->journal(1)), QVector<qint64>{3});
    QCOMPARE(shop.queue->fault(), QString());
    QCOMPARE(shop.queue->reprint("18"), 0);
    const QString maybe = ", and may be the receipt that is asked for";
    QCOMPARE(shop.queue->fault(), fault + maybe);
    QCOMPARE(shop.queue->reprint("17"), 4);
    QCOMPARE(shop.queue->reprintLast(), 5);
    overwrite(shop.file(3, "journal/"), "nothing");
    QVERIFY2(shop.queue->reprintLast() == 0, "the one before isn't the last one");
    QCOMPARE(shop.queue->fault(), shop.file(3, "journal/") + ": it is damaged" + maybe);
}

void TestPrintQueue::aFolderThatCanNotBeReadIsTold_data()
{
    QTest::addColumn<QString>("sub");
    QTest::newRow("of all") << "";
    // Numbers that are in there would be given again.
    QTest::newRow("of what is over") << "/journal";
    QTest::newRow("of what is damaged") << "/damaged";
}

void TestPrintQueue::aFolderThatCanNotBeReadIsTold()
{
    QFETCH(QString, sub);
    const Shop shop;
    shop.add("one");
    shop.queue->run();
    shop.queue->end();
    shop.add("two");
    // A file in its place is what nobody can list, not even the superuser.
    const QString path = shop.path + sub;
    QVERIFY(QDir().rename(path, path + "-away"));
    overwrite(path, "no folder");
    QVERIFY(shop.queue->entries().isEmpty());
    QVERIFY2(shop.queue->fault().startsWith(path + ": "), qPrintable(shop.queue->fault()));
    shop.queue->journal();
    QVERIFY2(shop.queue->fault().startsWith(path), qPrintable(shop.queue->fault()));
    QCOMPARE(shop.add("three"), 0);
    QVERIFY2(shop.queue->fault().startsWith(path), qPrintable(shop.queue->fault()));
    QVERIFY(!shop.queue->start());
}

void TestPrintQueue::aJobInBothPlacesIsOver()
{
    const Shop shop;
    shop.add("one");
    const QByteArray before = contentOf(shop.file(1));
    shop.queue->run();
    shop.queue->end();
    // A power cut may undo the removal and not the rename.
    overwrite(shop.file(1), before);
    QVERIFY(shop.queue->entries().isEmpty());
    QCOMPARE(shop.state(1), State::Done);
    shop.queue->run();
    QCOMPARE(shop.queue->got().count("one"), 1);
    QVERIFY(!QFile::exists(shop.file(1)));
}

void TestPrintQueue::whatCanNotBeWrittenIsTold()
{
    const Shop shop;
    shop.add("one");
    {
        const SmallDisk disk(100);
        QCOMPARE(shop.add("two"), 0);
        QVERIFY2(shop.queue->fault().contains("0000000002.job: "), qPrintable(shop.queue->fault()));
        shop.queue->run();
        QCOMPARE(shop.queue->ends.at(0).state, State::Waiting);
        QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Refused);
        QVERIFY(shop.queue->ends.at(0).result.text.contains("0000000001.job: "));
        QVERIFY(!shop.queue->got().contains("one"));
    }
    QCOMPARE(idsOf(shop.queue->entries()), QVector<qint64>{1});
    shop.queue->run();
    QCOMPARE(shop.queue->got().count("one"), 1);
}

void TestPrintQueue::whyAJobIsRefusedIsToldThoughASlotLooksIntoTheFolder()
{
    const Shop shop;
    shop.add("one");
    int looks = 0;
    connect(shop.queue.get(), &PrintQueue::statusChanged, shop.queue.get(), [&] {
        looks++;
        QCOMPARE(shop.queue->entries().size(), 1);
    });
    const SmallDisk disk(100);
    shop.queue->run();
    QVERIFY(looks > 0);
    QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Refused);
    const QString text = shop.queue->ends.at(0).result.text;
    QVERIFY2(text.startsWith(shop.file(1) + ": "), qPrintable(text));
}

void TestPrintQueue::aJobOfAFolderThatIsBusyIsBegunLater()
{
    const Shop shop;
    shop.add("one");
    shop.add("two");
    std::unique_ptr<Turns> held;
    shop.queue->prepare = [&](Line &) {
        if (shop.queue->ends.isEmpty())
            held = QueueFolder(shop.path).lock(30000);
    };
    connect(shop.queue.get(), &PrintQueue::ended, shop.queue.get(), [&held] { held.reset(); });
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->ends), (QVector<qint64>{1, 1, 2}));
    QCOMPARE(shop.queue->ends.at(0).state, State::Waiting);
    QCOMPARE(shop.queue->ends.at(0).result.reason, Reason::Refused);
    QCOMPARE(shop.queue->ends.at(0).result.text,
             shop.path + ": another program has held the folder for 0.5 s");
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.state(2), State::Done);
    QCOMPARE(shop.queue->got().count("one"), 1);
}

// A program that ends with it isn't to wait for ever, and one that goes on is to print.
void TestPrintQueue::aFolderThatStaysBusyIsTriedAgain()
{
    const Shop shop;
    shop.add("one");
    std::unique_ptr<Turns> held;
    shop.queue->prepare = [&](Line &) {
        if (shop.queue->ends.size() < 3)
            held = QueueFolder(shop.path).lock(30000);
    };
    connect(shop.queue.get(), &PrintQueue::ended, shop.queue.get(), [&held] { held.reset(); });
    int idlesBefore = -1;
    connect(shop.queue.get(), &PrintQueue::idle, shop.queue.get(), [&] {
        if (idlesBefore < 0)
            idlesBefore = shop.queue->ends.size();
    });
    shop.queue->run();
    QCOMPARE(idlesBefore, 2);
    TRY(shop.state(1) == State::Done);
    QCOMPARE(shop.queue->ends.size(), 4);
    QCOMPARE(shop.queue->got().count("one"), 1);
}

void TestPrintQueue::whatIsRefusedHoldsUpNoOtherPrinter()
{
    const Shop shop;
    shop.add("one");
    PrintQueueRequest request = requestOf("two");
    request.address = PrinterAddress::parse("tcp:192.0.2.2:9100").value();
    shop.queue->add(request);
    std::unique_ptr<Turns> held;
    shop.queue->prepare = [&](Line &) {
        if (shop.queue->ends.isEmpty())
            held = QueueFolder(shop.path).lock(30000);
    };
    connect(shop.queue.get(), &PrintQueue::ended, shop.queue.get(), [&held] { held.reset(); });
    shop.queue->run();
    QCOMPARE(idsOf(shop.queue->ends), (QVector<qint64>{1, 2, 1}));
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.state(2), State::Done);
}

void TestPrintQueue::anEndThatCanNotBeWrittenIsWrittenLater()
{
    const Shop shop;
    shop.add("one");
    shop.add("two");
    std::unique_ptr<SmallDisk> disk;
    shop.queue->prepare = [&](Line &line) {
        line.onTaken = [&](qint64) {
            if (!disk && shop.queue->notes.isEmpty() && shop.queue->got().contains("one"))
                disk = std::make_unique<SmallDisk>(100);
        };
    };
    QVERIFY(shop.queue->start());
    TRY(!shop.queue->notes.isEmpty());
    QVERIFY2(shop.queue->notes.at(0).startsWith("what became of it can't be written down: "),
             qPrintable(shop.queue->notes.at(0)));
    QVERIFY(shop.queue->ends.isEmpty());
    disk.reset();
    QCOMPARE(shop.state(1), State::Printing);
    TRY(shop.queue->idles > 0);
    QCOMPARE(idsOf(shop.queue->ends), (QVector<qint64>{1, 2}));
    QCOMPARE(shop.state(1), State::Done);
    QCOMPARE(shop.queue->got().count("one"), 1);
}

void TestPrintQueue::aFolderThatIsNoneIsTold()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("file");
    overwrite(file, "x");
    PrintQueue queue(file);
    QCOMPARE(queue.add(requestOf("one")), 0);
    QCOMPARE(queue.fault(), file + ": this is no folder");
    QVERIFY(!queue.start());
    QVERIFY(queue.entries().isEmpty());
    PrintQueue below(file + "/queue");
    QCOMPARE(below.add(requestOf("one")), 0);
    QVERIFY2(below.fault().startsWith(file), qPrintable(below.fault()));
    QCOMPARE(contentOf(file), QByteArray("x"));
}

QTEST_GUILESS_MAIN(TestPrintQueue)
#include "tst_printqueue.moc"
