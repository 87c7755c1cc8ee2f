// "receipt queue": what it lists, prints, holds, repeats, drops and copies, on printers that are
// played.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "playedprinter.h"
#include "printerdocs/bbcodeparser.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/printqueue.h"

using namespace printerslib::drivers;

namespace {

const QString usualModel = "CITIZEN_CTS_2000";
// Nobody listens there.
const QString nobody = "tcp:127.0.0.1:9";

struct Shop
{
    WorkFolder folder;
    QString path = folder.path("queue");

    qint64 add(const QString &address, const QString &text, const QString &number = {},
               const QString &model = usualModel, int confirmMilliseconds = 300) const
    {
        const auto target = PrintTarget::forModel(model, 0);
        BbCodeParser parser(nullptr);
        parser.parseText(text);
        PrintQueueRequest request;
        request.document = DocumentEncoder(*target, {}).encode(parser.document());
        request.profile = target->profile();
        request.address = PrinterAddress::parse(address).value();
        request.documentNumber = number;
        request.title = text;
        request.options.confirmMilliseconds = confirmMilliseconds;
        PrintQueue queue(path);
        const qint64 id = queue.add(request);
        if (id == 0)
            qFatal("%s", qPrintable(queue.fault()));
        return id;
    }
    ReceiptRun run(const QString &action, const QStringList &arguments = {}) const
    {
        return runReceipt(QStringList{"queue", action, "--folder", path} + arguments);
    }
};

QStringList linesOf(const ReceiptRun &run)
{
    return run.output.split('\n', Qt::SkipEmptyParts);
}

QJsonArray jsonOf(const ReceiptRun &run)
{
    return QJsonDocument::fromJson(run.output.toUtf8()).array();
}

}  // namespace

class TestReceiptQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyQueueListsNothing()
    {
        const Shop shop;
        for (const QString &action : {QString("list"), QString("journal")}) {
            const ReceiptRun run = shop.run(action);
            QCOMPARE(run.output, QString());
            QCOMPARE(run.errors, QString());
            QCOMPARE(run.status, 0);
            QCOMPARE(jsonOf(shop.run(action, {"--json"})), QJsonArray());
        }
        QCOMPARE(shop.run("run").status, 0);
    }

    void whatWaitsIsListed()
    {
        const Shop shop;
        shop.add(nobody, "Tea", "17");
        shop.add(nobody, "Coffee");
        const ReceiptRun run = shop.run("list");
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, QString());
        const QStringList lines = linesOf(run);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0).simplified(), QString("Job State Time Number Printer Title"));
        static const QRegularExpression row(
            "^1    waits  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d  17      tcp:127.0.0.1:9  "
            "Tea$");
        QVERIFY2(row.match(lines.at(1)).hasMatch(), qPrintable(lines.at(1)));
        QCOMPARE(lines.at(2).indexOf("tcp:"), lines.at(1).indexOf("tcp:"));
    }

    void jsonHasAllOfIt()
    {
        const Shop shop;
        shop.add(nobody, "Tea", "17");
        const QJsonArray array = jsonOf(shop.run("list", {"--json"}));
        QCOMPARE(array.size(), 1);
        const QJsonObject json = array.at(0).toObject();
        QCOMPARE(json.keys(),
                 (QStringList{"added",     "begun",   "block",   "copyOf", "ended",
                              "isCopy",    "job",     "line",    "model",  "mostBytes",
                              "number",    "outcome", "printer", "reason", "repeats",
                              "sentBytes", "state",   "text",    "title",  "totalBytes"}));
        QCOMPARE(json.value("job").toInt(), 1);
        QCOMPARE(json.value("state").toString(), QString("waiting"));
        QCOMPARE(json.value("number").toString(), QString("17"));
        QCOMPARE(json.value("model").toString(), usualModel);
        QCOMPARE(json.value("printer").toString(), nobody);
        QVERIFY(json.value("begun").isNull());
        QVERIFY(QDateTime::fromString(json.value("added").toString(), Qt::ISODateWithMs).isValid());
    }

    void whatWaitsIsPrintedInItsOrder()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea", "17");
        shop.add(printer.address(), "Coffee");
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("job 1 (number 17): processed\njob 2 (Coffee): processed\n"));
        QCOMPARE(run.status, 0);
        QCOMPARE(shop.run("list").output, QString());
        const QStringList lines = linesOf(shop.run("journal"));
        QCOMPARE(lines.size(), 3);
        QVERIFY2(lines.at(1).startsWith("2    processed  "), qPrintable(lines.at(1)));
        QCOMPARE(linesOf(shop.run("journal", {"--last", "1"})).size(), 2);
    }

    void aPrinterThatCanNotPrintKeepsItsJobs()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const Shop shop;
        shop.add(printer.address(), "Tea");
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.status, 4);
        QCOMPARE(run.output, QString());
        QVERIFY2(run.errors.contains("receipt: job 1 (Tea): not printed: There is no paper."),
                 qPrintable(run.errors));
        QVERIFY(printer.befall("paper back"));
        QCOMPARE(shop.run("run").status, 0);
    }

    void aPrinterThatIsNotReachedDoesNotHoldUpOthers()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(nobody, "Tea");
        shop.add(printer.address(), "Coffee");
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.status, 4);
        QCOMPARE(run.output, QString("job 2 (Coffee): processed\n"));
        QVERIFY2(run.errors.startsWith("receipt: job 1 (Tea): not printed: "),
                 qPrintable(run.errors));
    }

    void anUnconfirmedJobIsHeldUntilSomebodyDecides()
    {
        // It answers how it is, and no more.
        const Host host(QByteArray::fromHex("12121212"));
        const Shop shop;
        shop.add(host.address(), "Tea", "17");
        shop.add(host.address(), "Coffee");
        RunningReceipt running({"queue", "run", "--folder", shop.path});
        const ReceiptRun run = running.result();
        QCOMPARE(run.status, 3);
        QCOMPARE(run.output, QString());
        QVERIFY2(run.errors.contains("receipt: job 1 (number 17): held, as whether it is printed "
                                     "can't be known: the printer didn't confirm within 0.3 s; "
                                     "\"receipt queue repeat 1\" prints it again, \"receipt queue "
                                     "drop 1\" gives it up\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.errors.count("job 1 "), 1);
        QVERIFY(linesOf(shop.run("list")).at(1).startsWith("1    held "));
        const ReceiptRun again = shop.run("run");
        QCOMPARE(again.status, 3);
        QCOMPARE(again.errors.count("receipt queue drop"), 2);
        QVERIFY(shop.run("list").errors.contains("receipt queue repeat 2"));
        QCOMPARE(shop.run("repeat", {"1"}).status, 0);
        const QString row = linesOf(shop.run("list")).at(1);
        QVERIFY2(row.startsWith("1    waits") && row.endsWith("Tea, repeat"), qPrintable(row));
        QCOMPARE(shop.run("drop", {"1"}).status, 0);
        QCOMPARE(linesOf(shop.run("list")).size(), 2);
    }

    void aKilledProgramsJobWaitsIfNothingOfItWentOut()
    {
        SilentPort port;
        const Shop shop;
        shop.add(port.address(), "Tea", "17", "GENERAL_EPSON_PROTOCOL");
        {
            RunningReceipt running({"queue", "run", "--folder", shop.path});
            QVERIFY(port.getsSomething());
        }
        const ReceiptRun waits = shop.run("list");
        QVERIFY2(linesOf(waits).at(1).startsWith("1    waits"), "it was only asked how it is");
        QCOMPARE(shop.run("drop", {"1"}).status, 0);
        QVERIFY(linesOf(shop.run("journal")).at(1).startsWith("1    dropped"));
    }

    void aKilledProgramsJobIsHeldWhileItIsPrinted()
    {
        // It answers how it is, and is waited for in vain.
        const Host host(QByteArray::fromHex("12121212"));
        const Shop shop;
        shop.add(host.address(), "Tea", "17", usualModel, printerPatience);
        const auto state = [&] { return PrintQueue(shop.path).entry(1)->state; };
        {
            RunningReceipt running({"queue", "run", "--folder", shop.path});
            QVERIFY(QTest::qWaitFor([&] { return state() != PrintQueueEntry::State::Waiting; },
                                    printerPatience));
            QVERIFY(linesOf(shop.run("list")).at(1).startsWith("1    prints "));
            const ReceiptRun busy = shop.run("drop", {"1"});
            QCOMPARE(busy.errors,
                     QString("receipt: job 1 of %1 is being printed\n").arg(shop.path));
        }
        const ReceiptRun list = shop.run("list");
        QVERIFY2(linesOf(list).at(1).startsWith("1    held "), qPrintable(list.output));
        QVERIFY2(list.errors.contains("the program that printed it ended meanwhile"),
                 qPrintable(list.errors));
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.status, 3);
        QCOMPARE(run.output, QString());
    }

    void whatCanNotBeToldIsKeptNevertheless()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea", "17");
        QCOMPARE(shop.run("run").status, 0);
        const QStringList text{"--plain", shop.folder.file("text.txt", "Coffee\n")};
        for (const QStringList &call :
             {QStringList{"queue", "reprint", "17", "--folder", shop.path},
              QStringList{"print", "--queue", shop.path, "--to", nobody, "--model", usualModel} +
                  text}) {
            QProcess process;
            process.setStandardOutputFile("/dev/full");
            process.start(RECEIPT_PROGRAM, call);
            const ReceiptRun run = finished(process);
            QVERIFY2(run.errors.startsWith("receipt: standard output: "), qPrintable(run.errors));
            QCOMPARE(run.errors.count('\n'), 1);
            QCOMPARE(run.status, 0);
        }
        QCOMPARE(linesOf(shop.run("list")).size(), 3);
    }

    void printedJobsThatCanNotBeToldAreNoFailure()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea", "17");
        shop.add(printer.address(), "Coffee", "18");
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(RECEIPT_PROGRAM, {"queue", "run", "--folder", shop.path});
        const ReceiptRun run = finished(process);
        QVERIFY2(run.errors.startsWith("receipt: standard output: "), qPrintable(run.errors));
        QCOMPARE(run.status, 0);
        QCOMPARE(PrintQueue(shop.path).journal().size(), 2);
    }

    // A receipt isn't left half printed as nobody reads of it any more.
    void theEndOfItsReaderIsNoInterrupt()
    {
        PlayedPrinter printer;
        const Shop shop;
        for (int i = 0; i < 3; ++i)
            shop.add(printer.address(), "Tea");
        QProcess process;
        process.start("/bin/sh", {"-c", "{ \"$@\"; echo \"status $?\" >&2; } | true", "sh",
                                  RECEIPT_PROGRAM, "queue", "run", "--folder", shop.path});
        const ReceiptRun run = finished(process);
        QVERIFY2(run.errors.endsWith("status 0\n"), qPrintable(run.errors));
        QCOMPARE(PrintQueue(shop.path).journal().size(), 3);
    }

    void wrongNumbersAreTold()
    {
        const Shop shop;
        shop.add(nobody, "Tea");
        const ReceiptRun none = shop.run("drop", {"7"});
        QCOMPARE(none.status, 1);
        QCOMPARE(none.errors, QString("receipt: there is no job 7 of %1\n").arg(shop.path));
        const ReceiptRun word = shop.run("repeat", {"tea"});
        QCOMPARE(word.status, 2);
        QCOMPARE(word.errors, QString("receipt: \"tea\" is no number of a job\n"));
        const ReceiptRun waits = shop.run("repeat", {"1"});
        QCOMPARE(waits.status, 1);
        QCOMPARE(waits.errors,
                 QString("receipt: job 1 of %1 isn't held: it waits\n").arg(shop.path));
    }

    void aReprintIsACopy()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea", "17");
        shop.add(printer.address(), "Coffee", "18");
        QCOMPARE(shop.run("run").status, 0);
        const ReceiptRun run = shop.run("reprint", {"17", "--language", "de"});
        QCOMPARE(run.output, QString("job 3\n"));
        QCOMPARE(run.status, 0);
        const QString row = linesOf(shop.run("list")).at(1);
        QVERIFY2(row.endsWith("Tea, copy of job 1"), qPrintable(row));
        QCOMPARE(shop.run("reprint").output, QString("job 4\n"));
        QCOMPARE(shop.run("run").status, 0);
        const QJsonObject json =
            jsonOf(shop.run("journal", {"--json", "--last", "1"})).at(0).toObject();
        QCOMPARE(json.value("copyOf").toInt(), 2);
        QVERIFY(json.value("isCopy").toBool());
    }

    void thereIsNothingToReprint()
    {
        const Shop shop;
        const ReceiptRun run = shop.run("reprint", {"17"});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors,
                 QString("receipt: the journal of %1 has no such receipt\n").arg(shop.path));
        QCOMPARE(shop.run("reprint", {"--language", "xx"}).status, 2);
    }

    void anEmptyNumberIsNobodysReceipt()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea");
        QCOMPARE(shop.run("run").status, 0);
        const ReceiptRun run = shop.run("reprint", {""});
        QCOMPARE(run.errors, QString("receipt: the document's number is empty\n"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void onlyOneProgramPrints()
    {
        const Shop shop;
        PrintQueue queue(shop.path);
        QVERIFY(queue.start());
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors,
                 QString("receipt: %1: another program prints what is in it\n").arg(shop.path));
    }

    void itStaysUntilItIsInterrupted()
    {
        PlayedPrinter printer;
        const Shop shop;
        RunningReceipt running({"queue", "run", "--stay", "--folder", shop.path});
        shop.add(printer.address(), "Tea", "17");
        QVERIFY(QTest::qWaitFor([&] { return PrintQueue(shop.path).journal().size() == 1; },
                                printerPatience));
        running.interrupt();
        const ReceiptRun run = running.result();
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString("job 1 (number 17): processed\n"));
    }

    void aTroubleThatLastsIsToldOnce()
    {
        // The paper is out, and was near its end before.
        const Host host(QByteArray::fromHex("1A32127E"));
        const Shop shop;
        shop.add(host.address(), "Tea", "17");
        shop.add(nobody, "Coffee", "18");
        RunningReceipt running({"queue", "run", "--stay", "--folder", shop.path});
        QTRY_VERIFY_WITH_TIMEOUT(host.calls() == 2, printerPatience);
        running.interrupt();
        const ReceiptRun run = running.result();
        QCOMPARE(run.status, 4);
        for (const char *text : {"job 1: the paper is near its end", "job 1: There is no paper.",
                                 "job 1 (number 17): not printed: There is no paper.",
                                 "job 2 (number 18): not printed: tcp:127.0.0.1:9 "})
            QVERIFY2(run.errors.count(text) == 1, qPrintable(text + ('\n' + run.errors)));
    }

    void whatIsHeldAgainIsToldAgain()
    {
        // It answers how it is, and no more.
        const Host host(QByteArray::fromHex("12121212"));
        const Shop shop;
        shop.add(host.address(), "Tea", "17");
        RunningReceipt running({"queue", "run", "--stay", "--folder", shop.path});
        const QString held =
            "receipt: job 1 (number 17): held, as whether it is printed can't be known";
        const auto isTold = [&] {
            running.setReadChannel(QProcess::StandardError);
            return running.canReadLine() && QString::fromUtf8(running.readLine()).startsWith(held);
        };
        QVERIFY(QTest::qWaitFor(isTold, printerPatience));
        QVERIFY(PrintQueue(shop.path).repeat(1));
        QVERIFY(QTest::qWaitFor(isTold, printerPatience));
        running.interrupt();
        QCOMPARE(running.result().status, 3);
    }

    void anInterruptLeavesTheRest()
    {
        SilentPort port;
        const Shop shop;
        shop.add(port.address(), "Tea");
        shop.add(port.address(), "Coffee");
        RunningReceipt running({"queue", "run", "--folder", shop.path});
        QVERIFY(port.getsSomething());
        running.interrupt();
        const ReceiptRun run = running.result();
        QCOMPARE(run.status, 4);
        QVERIFY2(run.errors.contains("job 1 (Tea): not printed: cancelled"),
                 qPrintable(run.errors));
        QCOMPARE(linesOf(shop.run("list")).size(), 3);
    }

    void damagedFilesAreNamed()
    {
        const Shop shop;
        shop.add(nobody, "Tea");
        shop.folder.file("queue/0000000007.job", "nothing");
        const QString name = shop.path + "/0000000007.job";
        const ReceiptRun list = shop.run("list");
        QCOMPARE(list.errors,
                 QString("receipt: %1: this can't be read, and is left out\n").arg(name));
        QCOMPARE(linesOf(list).size(), 2);
        const ReceiptRun run = shop.run("run");
        QVERIFY2(run.errors.contains(name + ": it is damaged; it lies in the folder \"damaged\""),
                 qPrintable(run.errors));
        QVERIFY(shop.run("list").errors.contains("/damaged/0000000007.job"));
    }

    void runFailsIfOnlyADamagedFileIsLeft()
    {
        const Shop shop;
        shop.run("run");
        shop.folder.file("queue/0000000007.job", "nothing");
        QCOMPARE(shop.run("run").status, 1);
        QCOMPARE(shop.run("run").status, 0);
        shop.folder.file("queue/0000000008.job", "nothing");
        shop.add(nobody, "Tea");
        QVERIFY2(shop.run("run").status == 4, "a job that waits is told first");
    }

    void theJournalNamesWhatItLeavesOut()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea", "17");
        shop.add(printer.address(), "Coffee", "18");
        QCOMPARE(shop.run("run").status, 0);
        const QString file = shop.folder.file("queue/journal/0000000001.job", "nothing");
        const ReceiptRun run = shop.run("journal");
        QCOMPARE(run.errors, QString("receipt: %1: it is damaged\n").arg(file));
        QCOMPARE(run.status, 1);
        QCOMPARE(linesOf(run).size(), 2);
        QVERIFY(run.output.contains("Coffee"));
    }

    void aFolderThatCanNotBeReadIsNoEmptyQueue()
    {
        const Shop shop;
        const QString file = shop.folder.file("file", "x");
        for (const QString &action : {QString("list"), QString("journal")}) {
            const ReceiptRun run = runReceipt({"queue", action, "--folder", file});
            QCOMPARE(run.errors, QString("receipt: %1: Not a directory\n").arg(file));
            QCOMPARE(run.status, 1);
        }
    }

    void aFolderThatCanNotBeReadInTheEndIsTold()
    {
        PlayedPrinter printer;
        const Shop shop;
        shop.add(printer.address(), "Tea");
        RunningReceipt running({"queue", "run", "--stay", "--folder", shop.path});
        QVERIFY(QTest::qWaitFor([&] { return running.canReadLine(); }, printerPatience));
        QVERIFY(QDir().rename(shop.path, shop.folder.path("elsewhere")));
        shop.folder.file("queue", "x");
        running.interrupt();
        const ReceiptRun run = running.result();
        QCOMPARE(run.errors, QString("receipt: %1: Not a directory\n").arg(shop.path));
        QCOMPARE(run.status, 1);
    }

    void anEmptyFolderNameIsNotTheWorkingFolder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("list") << QStringList{"list"};
        QTest::newRow("run") << QStringList{"run"};
        QTest::newRow("repeat") << QStringList{"repeat", "1"};
        QTest::newRow("drop") << QStringList{"drop", "1"};
        QTest::newRow("journal") << QStringList{"journal"};
        QTest::newRow("reprint") << QStringList{"reprint"};
    }

    void anEmptyFolderNameIsNotTheWorkingFolder()
    {
        QFETCH(QStringList, arguments);
        const ReceiptRun run =
            runReceipt(QStringList{"queue"} + arguments + QStringList{"--folder="});
        QCOMPARE(run.errors, QString("receipt: --folder names no folder\n"));
        QCOMPARE(run.status, 2);
        QVERIFY(!QFile::exists("journal"));
    }

    void aFolderThatIsNoneIsTold()
    {
        const Shop shop;
        const QString file = shop.folder.file("file", "x");
        const ReceiptRun run = runReceipt({"queue", "run", "--folder", file});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, QString("receipt: %1: this is no folder\n").arg(file));
    }

    void theFolderIsThatOfTheUsersState()
    {
        const Shop shop;
        const QByteArray before = qgetenv("XDG_STATE_HOME");
        qputenv("XDG_STATE_HOME", shop.folder.path("state").toUtf8());
        PrintQueue().journal();
        const Shop usual{{}, shop.folder.path("state/printerslib/queue")};
        usual.add(nobody, "Tea");
        const QString text = shop.folder.file("text", "Black tea");
        const ReceiptRun later = runReceipt({"print", "--bbcode", text, "--to", nobody, "--model",
                                             usualModel, "--later", "--number", "18"});
        const ReceiptRun run = runReceipt({"queue", "list"});
        qputenv("XDG_STATE_HOME", before);
        QCOMPARE(later.output, QString("job 2\n"));
        QCOMPARE(later.errors, QString());
        QCOMPARE(linesOf(run).size(), 3);
        QVERIFY2(linesOf(run).at(2).contains("  18  "), qPrintable(run.output));
    }

    void printAddsInsteadOfPrinting()
    {
        PlayedPrinter printer;
        const Shop shop;
        const QString text = shop.folder.file("text", "Black tea");
        const auto add = [&](const QStringList &options) {
            return runReceipt(QStringList{"print", "--bbcode", text, "--to", printer.address(),
                                          "--model", usualModel, "--queue", shop.path} +
                              options);
        };
        const ReceiptRun first = add({"--number", "17"});
        QCOMPARE(first.errors, QString());
        QCOMPARE(first.output, QString("job 1\n"));
        QCOMPARE(first.status, 0);
        QCOMPARE(add({"--wait-for-paper", "--repeat"}).output, QString("job 2\n"));
        QCOMPARE(add({"--dry-run"}).status, 0);
        PrintQueue queue(shop.path);
        QCOMPARE(queue.entries().size(), 2);
        QCOMPARE(queue.entry(1)->documentNumber, QString("17"));
        QCOMPARE(queue.entry(1)->title, text);
        QVERIFY(queue.document(1)->bytes.contains("Black tea"));
        QVERIFY(!queue.document(1)->marks.isEmpty());
        QVERIFY(queue.document(2)->bytes.contains("REPEAT"));
        const ReceiptRun run = shop.run("run");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(shop.run("reprint", {"17"}).output, QString("job 3\n"));
    }

    void printKeepsItsModelsFiles()
    {
        const Shop shop;
        const QString text = shop.folder.file("text", "Black tea");
        const QString models = shop.folder.file(
            "models.json", R"([{"id": "SHOP", "like": "CUSTOM_VKP_80", "headDots": 500}])");
        const ReceiptRun run = runReceipt({"print", "--bbcode", text, "--to", nobody, "--model",
                                           "SHOP", "--models", models, "--queue", shop.path});
        QCOMPARE(run.errors, QString());
        QVERIFY(QFile::remove(models));
        QCOMPARE(PrintQueue(shop.path).entry(1)->modelId, QString("SHOP"));
        QCOMPARE(shop.run("run").status, 4);
        QCOMPARE(jsonOf(shop.run("list", {"--json"})).at(0).toObject().value("model").toString(),
                 QString("SHOP"));
    }

    void printTellsWhatAQueueDoesNotTake_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("error");
        QTest::newRow("number alone")
            << QStringList{"--to", nobody, "--number", "17"} << "--number needs --queue or --later";
        QTest::newRow("no folder")
            << QStringList{"--to", nobody, "--queue", ""} << "--queue names no folder";
        QTest::newRow("file")
            << QStringList{"--to", "-", "--queue", "queue"}
            << "--wait-for-paper, --one-way, --json, --spare, --queue and --later "
               "need a printer as --to";
        QTest::newRow("two folders") << QStringList{"--to", nobody, "--queue", "queue", "--later"}
                                     << "--queue and --later exclude each other";
        QTest::newRow("later, without a printer")
            << QStringList{"--to", "-", "--later"}
            << "--wait-for-paper, --one-way, --json, --spare, --queue and --later need a printer "
               "as --to";
        for (const QString &other : {QString("--json"), QString("--spare=tcp:127.0.0.1:8")})
            QTest::newRow(qPrintable(other))
                << QStringList{"--to", nobody, "--queue", "queue", other}
                << "--queue and --later exclude --spare and --json";
    }

    void printTellsWhatAQueueDoesNotTake()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, error);
        const Shop shop;
        const QString text = shop.folder.file("text", "Black tea");
        const ReceiptRun run =
            runReceipt(QStringList{"print", "--bbcode", text, "--model", usualModel} + options);
        QCOMPARE(run.errors, QString("receipt: %1\n").arg(error));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
        QVERIFY(!QFile::exists("queue"));
    }

    void printTellsOfAFolderThatIsNone()
    {
        const Shop shop;
        const QString text = shop.folder.file("text", "Black tea");
        const ReceiptRun run = runReceipt(
            {"print", "--bbcode", text, "--to", nobody, "--model", usualModel, "--queue", text});
        QCOMPARE(run.errors, QString("receipt: %1: this is no folder\n").arg(text));
        QCOMPARE(run.status, 1);
    }

    void helpNamesTheActions()
    {
        const ReceiptRun run = runReceipt({"queue", "--help"});
        QCOMPARE(run.status, 0);
        for (const char *action : {"list", "run", "repeat", "drop", "journal", "reprint"}) {
            QVERIFY(run.output.contains(QString("\n  %1 ").arg(action)));
            QCOMPARE(runReceipt({"queue", action, "--help"}).status, 0);
        }
        const ReceiptRun none = runReceipt({"queue", "print"});
        QCOMPARE(none.status, 2);
        QCOMPARE(none.errors,
                 QString("receipt: queue: there is no action \"print\"; see \"receipt queue "
                         "--help\"\n"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptQueue)
#include "tst_receipt_queue.moc"
