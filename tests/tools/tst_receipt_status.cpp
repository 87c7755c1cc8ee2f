// "receipt status": what it tells of printers in each state, of those that don't answer, and of
// those that aren't reached; whose turn it is; how it ends.
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "playedprinter.h"
#include "printerslib/drivers/devicelock.h"
#include "printerslib/drivers/servicestatereader.h"

using printerslib::drivers::DeviceLock;
using printerslib::drivers::PrinterAddress;
using printerslib::drivers::ServiceStateReader;

namespace {

const QString usualModel = "CITIZEN_CTS_2000";
const QString epsonQuestions = "10 04 01 10 04 02 10 04 03 10 04 04";

QStringList asking(const QString &address, const QStringList &options = {},
                   const QString &model = usualModel)
{
    return QStringList{"--to", address, "--model", model} + options;
}

ReceiptRun status(const QStringList &options)
{
    return runReceipt(QStringList("status") + options);
}

QJsonObject jsonOf(const ReceiptRun &run)
{
    return QJsonDocument::fromJson(run.output.toUtf8()).object();
}

}  // namespace

class TestReceiptStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void printerThatIsReadyCanPrint()
    {
        PlayedPrinter printer;
        const ReceiptRun run = status(asking(printer.address()));
        QCOMPARE(run.output, QString("Printing: possible\n"
                                     "On line:  yes\n"
                                     "Paper:    there\n"
                                     "Cover:    closed\n"
                                     "Cutter:   no error\n"
                                     "Errors:   none\n"
                                     "Answer:   12 12 12 12\n"
                                     "The printer is ready.\n"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void printerOnASerialLineIsAsked()
    {
        PlayedPrinter printer("CUSTOM_VKP_80", 57600);
        const ReceiptRun run = status(asking(printer.address(), {}, "CUSTOM_VKP_80"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(printer.befall("cover open"));
        const ReceiptRun open = status(asking(printer.address(), {}, "CUSTOM_VKP_80"));
        QVERIFY2(open.output.contains("\nCover:    open\n"), qPrintable(open.output));
        QCOMPARE(open.errors, QString());
        QCOMPARE(open.status, 4);
    }

    void stateIsTold_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("value");
        for (const QString &model :
             {QString("CITIZEN_CTS_2000"), QString("TSP-TUP"), QString("SWECOIN_TM_20XX"),
              QString("CUSTOM_VKP_80"), QString("CITIZEN_PPU_700")}) {
            const auto row = [&model](const char *fault, int exitStatus, const char *line,
                                      const char *key, bool value = true) {
                QTest::addRow("%s: %s", qPrintable(model), fault)
                    << model << QString(fault) << exitStatus << QString(line) << QString(key)
                    << value;
            };
            row("on line", 0, "On line:  yes", "onLine");
            row("paper back", 0, "Paper:    there", "paperOut", false);
            row("cover closed", 0, "Cover:    closed", "coverOpen", false);
            row("cutter repaired", 0, "Cutter:   no error", "cutterError", false);
            row("paper out", 4, "Paper:    out", "paperOut");
            row("near end", 0, "Paper:    there, but nearly used up", "paperNearEnd");
            row("cover open", 4, "Cover:    open", "coverOpen");
            row("cutter error", 4, "Cutter:   stuck", "cutterError");
            // Swecoin's commands have no word for it.
            if (model != "SWECOIN_TM_20XX")
                row("off line", 4, "On line:  no", "onLine", false);
        }
    }

    void stateIsTold()
    {
        QFETCH(QString, model);
        QFETCH(QString, fault);
        QFETCH(QString, line);
        QFETCH(QString, key);
        PlayedPrinter printer(model);
        QVERIFY(printer.befall(fault));
        const ReceiptRun run = status(asking(printer.address(), {}, model));
        QVERIFY2(run.output.split('\n').contains(line), qPrintable(run.output + run.errors));
        QTEST(run.status, "exitStatus");
        const ReceiptRun json = status(asking(printer.address(), {"--json"}, model));
        QVERIFY2(jsonOf(json).value(key).isBool(), qPrintable(json.output));
        QTEST(jsonOf(json).value(key).toBool(), "value");
        QCOMPARE(jsonOf(json).value("canPrint").toBool(), json.status == 0);
        QTEST(json.status, "exitStatus");
    }

    void severalThingsAreToldTogether()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        QVERIFY(printer.befall("cover open"));
        const ReceiptRun run = status(asking(printer.address()));
        QVERIFY(run.output.contains("\nPaper:    out\nCover:    open\n"));
        QVERIFY(run.output.contains("There is no paper. The cover is open."));
    }

    void repairedPrinterCanPrintAgain()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        QCOMPARE(status(asking(printer.address())).status, 4);
        QVERIFY(printer.befall("paper back"));
        QCOMPARE(status(asking(printer.address())).status, 0);
    }

    void jsonHasAllOfIt()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const ReceiptRun run = status(asking(printer.address(), {"--json"}));
        const QJsonObject json = jsonOf(run);
        QCOMPARE(json.keys(),
                 (QStringList{"answer", "answered", "canPrint", "coverOpen", "cutterError",
                              "dataLost", "model", "onLine", "paperInPresenter", "paperNearEnd",
                              "paperOut", "printDataExists", "printer", "reached",
                              "recoverableError", "state", "text", "unrecoverableError"}));
        QCOMPARE(json.value("printer").toString(), printer.address());
        QCOMPARE(json.value("model").toString(), usualModel);
        QCOMPARE(json.value("reached").toBool(), true);
        QCOMPARE(json.value("answered").toBool(), true);
        QVERIFY(json.value("text").toString().startsWith("There is no paper."));
        QCOMPARE(run.errors, QString());
    }

    void jsonHasTheRecordOfAPrintService()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const QJsonObject record =
            jsonOf(status(asking(printer.address(), {"--json"}))).value("state").toObject();
        QString error;
        const auto state = ServiceStateReader::readJson(QJsonDocument(record).toJson(), &error);
        QVERIFY2(state, qPrintable(error));
        QCOMPARE(state->serviceState(), PrintServiceState::ServiceWorkableFirst);
        QCOMPARE(state->deviceState(), PrintServiceState::DeviceCritical);
        QVERIFY(!state->tapeAvailable());
        const ReceiptRun explained = runReceipt({"state", "-"}, QJsonDocument(record).toJson());
        QVERIFY(explained.output.contains("not possible"));
        QCOMPARE(explained.errors, QString());
    }

    void silentPortDoesNotAnswer()
    {
        const SilentPort port;
        const ReceiptRun run = status(asking(port.address(), {"--timeout", "1"}));
        QCOMPARE(run.errors, QString("receipt: %1 doesn't answer: sent %2, waited 1 s\n")
                                 .arg(port.address(), epsonQuestions));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void fiveSecondsAreWaitedForAnAnswer()
    {
        const SilentPort port;
        const ReceiptRun run = status(asking(port.address(), {}));
        QCOMPARE(run.errors, QString("receipt: %1 doesn't answer: sent %2, waited 5 s\n")
                                 .arg(port.address(), epsonQuestions));
        QCOMPARE(run.status, 1);
    }

    void jsonOfASilentPortSaysSo()
    {
        const SilentPort port;
        const ReceiptRun run = status(asking(port.address(), {"--timeout", "1", "--json"}));
        const QJsonObject json = jsonOf(run);
        QCOMPARE(json.value("reached").toBool(), true);
        QCOMPARE(json.value("answered").toBool(true), false);
        QCOMPARE(json.value("canPrint").toBool(true), false);
        QVERIFY(json.value("onLine").isNull());
        QVERIFY(json.value("paperOut").isNull());
        QCOMPARE("receipt: " + json.value("error").toString() + '\n', run.errors);
        QCOMPARE(json.value("text").toString(), QString("The printer doesn't answer."));
        QCOMPARE(json.value("state").toObject().value("deviceState").toInt(), 3);
        QCOMPARE(json.value("state").toObject().value("deviceErrorCode").toInt(), 1);
        QCOMPARE(run.status, 1);
    }

    void lineThatTakesNothingIsTold()
    {
        const SilentPort port;
        port.stop();
        const ReceiptRun run = status(asking(port.address(), {"--timeout", "1"}));
        QVERIFY2(run.errors.endsWith("waited 1 s; the line has taken 0 of 12 bytes\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void printerThatNeverAnswersIsTold()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("answers never"));
        const ReceiptRun run = status(asking(printer.address(), {"--timeout", "1"}));
        QVERIFY2(run.errors.contains(" doesn't answer: sent " + epsonQuestions),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void lateAnswerIsWaitedFor()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("answers late 1200"));
        QCOMPARE(status(asking(printer.address(), {"--timeout", "30"})).status, 0);
    }

    void printerThatIsOffIsNotReached()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("power off"));
        const ReceiptRun run = status(asking(printer.address(), {"--timeout", "1"}));
        QVERIFY(!run.errors.isEmpty());
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void answersOfAnotherModelAreCounted()
    {
        Host host("hello");
        RunningReceipt program(QStringList("status") + asking(host.address(), {"--timeout", "1"}));
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.endsWith("waited 1 s; 5 bytes came that are no answer of this model\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void halfAnAnswerIsToldAsSuch()
    {
        Host host("\x1A");
        RunningReceipt program(QStringList("status") + asking(host.address(), {"--timeout", "1"}));
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.contains(" doesn't answer all of it: sent "), qPrintable(run.errors));
        QVERIFY2(run.output.startsWith("Printing: not known\nOn line:  no\nPaper:    not told\n"),
                 qPrintable(run.output));
        QCOMPARE(run.status, 1);
    }

    void connectionThatIsResetIsTold()
    {
        Host host({}, true);
        RunningReceipt program(QStringList("status") + asking(host.address(), {"--timeout", "30"}));
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.startsWith("receipt: " + host.address()), qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void whatIsNotReachedIsToldInTheLinesWords_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("words");
        QTest::newRow("nobody listens") << "tcp:127.0.0.1:9"
                                        << "refuses the connection";
        QTest::newRow("no serial line") << "serial:/dev/ttyNowhere"
                                        << "there is no /dev/ttyNowhere";
        QTest::newRow("no device") << "device:/dev/usb/nowhere"
                                   << "there is no /dev/usb/nowhere";
        QTest::newRow("no USB printer") << "usb:04b8:ffff"
                                        << "there is no USB printer usb:04b8:ffff";
        QTest::newRow("no device at all") << "device:/etc/hostname"
                                          << "/etc/hostname";
    }

    void whatIsNotReachedIsToldInTheLinesWords()
    {
        QFETCH(QString, address);
        QFETCH(QString, words);
        const ReceiptRun run = status(asking(address));
        QVERIFY2(run.errors.contains(words), qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        const ReceiptRun json = status(asking(address, {"--json"}));
        QCOMPARE(jsonOf(json).value("reached").toBool(true), false);
        QVERIFY(jsonOf(json).value("error").toString().contains(words));
        QCOMPARE(jsonOf(json).value("state").toObject().value("deviceErrorCode").toInt(), 1);
        QCOMPARE(json.status, 1);
    }

    void wrongUsageIsRefused_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("words");
        QTest::newRow("no printer") << QStringList() << "status needs --to URL";
        QTest::newRow("no kind") << QStringList{"--to", "foo:bar"} << "--to: \"foo\" is no kind";
        QTest::newRow("nothing") << QStringList{"--to", ""} << "--to: ";
        QTest::newRow("control") << QStringList{"--to", "a\x1B[m:b"} << "--to: \"a\\u001b[m\"";
        QTest::newRow("no host") << QStringList{"--to", "tcp:"} << "--to: ";
        QTest::newRow("setting") << QStringList{"--to", "serial:ttyS0?baud=fast"} << "--to: ";
        QTest::newRow("file") << QStringList{"--to", "file:/tmp/x"}
                              << "--to: file:/tmp/x is a file, which answers nothing";
        QTest::newRow("unknown model")
            << asking("tcp:127.0.0.1:9", {}, "NONE") << "there is no model \"NONE\"";
        QTest::newRow("no time") << asking("tcp:127.0.0.1:9", {"--timeout", "0"}) << "--timeout";
        QTest::newRow("no number") << asking("tcp:127.0.0.1:9", {"--timeout", "x"}) << "--timeout";
        QTest::newRow("too long") << asking("tcp:127.0.0.1:9", {"--timeout", "3601"})
                                  << "--timeout";
        QTest::newRow("argument") << asking("tcp:127.0.0.1:9", {"more"}) << "status";
        QTest::newRow("unknown option") << QStringList{"--fast"} << "fast";
    }

    void wrongUsageIsRefused()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, words);
        const ReceiptRun run = status(options);
        QVERIFY2(run.errors.contains(words), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void modelOfAFileIsAsked()
    {
        const WorkFolder folder;
        const QString file =
            folder.file("own.json", R"([{"id": "OWN", "like": "SWECOIN_TM_20XX"}])");
        PlayedPrinter printer("SWECOIN_TM_20XX");
        const ReceiptRun run = status(asking(printer.address(), {"--models", file}, "OWN"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void faultOfAModelsFileIsTold()
    {
        const WorkFolder folder;
        const QString file = folder.file("own.json", "[{]");
        const ReceiptRun run = status(asking("tcp:127.0.0.1:9", {"--models", file}));
        QVERIFY2(run.errors.contains(file), qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void placeInTheQueueIsTold()
    {
        PlayedPrinter printer;
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        RunningReceipt program(QStringList("status") +
                               asking(printer.address(), {"--timeout", "60"}));
        QCOMPARE(program.errorLine(),
                 "receipt: " + printer.address() + ": waiting, 1 job is in front");
        lock.release();
        const ReceiptRun run = program.result();
        QVERIFY(run.output.startsWith("Printing: possible\n"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void interruptEndsTheWaitForItsTurn()
    {
        PlayedPrinter printer;
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        RunningReceipt program(QStringList("status") +
                               asking(printer.address(), {"--timeout", "3600"}));
        QVERIFY(!program.errorLine().isEmpty());
        program.interrupt();
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, QString("receipt: cancelled\n"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void turnThatDoesNotComeIsTold()
    {
        PlayedPrinter printer;
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        const ReceiptRun run = status(asking(printer.address(), {"--timeout", "1", "--json"}));
        QCOMPARE(
            run.errors.section('\n', 1, 1),
            "receipt: " + printer.address() + " isn't free: waited 1 s, and 1 job is in front");
        QCOMPARE(jsonOf(run).value("reached").toBool(true), false);
        QCOMPARE(jsonOf(run).value("state").toObject().value("deviceState").toInt(), 255);
        QCOMPARE(run.status, 1);
    }

    void lockIsFreeBehindIt()
    {
        PlayedPrinter printer;
        QCOMPARE(status(asking(printer.address())).status, 0);
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        QVERIFY(lock.record().isEmpty());
    }

    void interruptEndsTheWaitForAnAnswer()
    {
        const SilentPort port;
        RunningReceipt program(QStringList("status") +
                               asking(port.address(), {"--timeout", "3600"}));
        QVERIFY(port.getsSomething());
        program.interrupt();
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, QString("receipt: cancelled\n"));
        QCOMPARE(run.status, 1);
    }

    void helpTellsTheExitStatuses()
    {
        const ReceiptRun help = status({"--help"});
        for (const char *words : {"0 it can print", "4 it can't", "1 it isn't reached", "2 wrong"})
            QVERIFY2(help.output.simplified().contains(words), words);
        QCOMPARE(help.status, 0);
    }

    void pageShowsWhatItPrints()
    {
        QFile page(PRINTERSLIB_EXAMPLES "/../docs/printing.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const QString shown =
            text.section("<!-- receipt status, behind \"paper out\" -->\n```\n", 1)
                .section("```\n", 0, 0);
        QCOMPARE(shown, status(asking(printer.address())).output);
    }
};

QTEST_GUILESS_MAIN(TestReceiptStatus)

#include "tst_receipt_status.moc"
