// "receipt selftest": where the test goes, what is asked and how, and the file that comes of it.
// What stands on the paper is tst_selftest's.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "playedprinter.h"

namespace {

const QString model = "CITIZEN_CTS_2000";

ReceiptRun selfTest(const QStringList &options, const QByteArray &input = QByteArray())
{
    return runReceipt(QStringList("selftest") + options, input);
}

/// The one record of a file of models.
QJsonObject recordIn(const QByteArray &file)
{
    const QJsonArray records = QJsonDocument::fromJson(file).array();
    return records.size() == 1 ? records.at(0).toObject() : QJsonObject();
}

}  // namespace

class TestReceiptSelfTest : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", "/nonexistent");
        qputenv("XDG_CONFIG_DIRS", "/nonexistent");
    }

    void fileGetsTheBytesAndIsReadBack()
    {
        const QString file = m_folder.path("test.bin");
        const ReceiptRun run =
            selfTest({"--to", "file:" + file, "--model", model, "--no-questions"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 0);
        const ReceiptRun decoded = runReceipt({"decode", file, "--model", model});
        QVERIFY(decoded.output.startsWith("SELF TEST\n" + model + "\n576 dots at 203 dpi\n"));
        QVERIFY(decoded.output.contains("Code page 7 CP866\n"));
    }

    void printerConfirmsIt()
    {
        const PlayedPrinter printer(model);
        const ReceiptRun run = selfTest({"--to", printer.address(), "--model", model, "--only",
                                         "ruler,fonts", "--no-questions"});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.startsWith(printer.address() + ": processed: self test of " + model),
                 qPrintable(run.output));
    }

    void printerOfAFileIsTaken()
    {
        const PlayedPrinter printer(model);
        const QString config = m_folder.file(
            "shop.conf", "to=" + printer.address().toUtf8() + "\nmodel=" + model.toUtf8() + '\n');
        const ReceiptRun run = selfTest({"--config", config, "--only", "fonts", "--no-questions"});
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith(printer.address() + ": processed: self test of " + model),
                 qPrintable(run.output));
        QCOMPARE(run.status, 0);
    }

    void printerWithoutPaperIsNotAskedAbout()
    {
        PlayedPrinter printer(model);
        QVERIFY(printer.befall("paper out"));
        const ReceiptRun run = selfTest({"--to", printer.address(), "--model", model});
        QCOMPARE(run.status, 4);
        QVERIFY2(run.errors.contains("There is no paper"), qPrintable(run.errors));
        QVERIFY(!run.errors.contains("What does the paper show"));
    }

    void answersOnStandardInputBecomeAFile()
    {
        const QString output = m_folder.path("found.json");
        const ReceiptRun run =
            selfTest({"--no-print", "--model", model, "--only", "ruler,cuts", "--output", output},
                     "512\n\n\n128\nGsVPartial\n");
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString());
        QVERIFY(run.errors.contains("What does the paper show?"));
        QVERIFY(run.errors.contains("Ruler: the number of the last mark at its right end"));
        QVERIFY(run.errors.endsWith(output + ": what differs from what is known of " + model +
                                    "; use it by --models\n"));
        const QJsonObject record = recordIn(m_folder.content("found.json"));
        QCOMPARE(record.keys(),
                 QStringList({"cutCommand", "dotsToCutter", "headDots", "id", "sources"}));
        QCOMPARE(record.value("headDots").toInt(), 512);
        QCOMPARE(record.value("id").toString(), model);
        QVERIFY(record.value("sources")
                    .toObject()
                    .value("headDots")
                    .toString()
                    .startsWith("self test, 20"));
        const ReceiptRun shown = runReceipt({"models", model, "--models", output});
        QVERIFY(shown.output.contains("driver's headDots: 512 (self test, 20"));
        QVERIFY(shown.output.contains("driver's cutCommand: GsVPartial (self test, 20"));
    }

    void testOfWhatWasFoundFindsNothingMore()
    {
        const QString found = m_folder.file(
            "own.json", R"([{"id": "CITIZEN_CTS_2000", "headDots": 512, "dotsToCutter": 64}])");
        const ReceiptRun run = selfTest({"--no-print", "--model", model, "--models", found,
                                         "--only", "ruler,cuts", "--answers", "-"},
                                        "ruler: 512\ncutter: 64\ncuts: all\n");
        QCOMPARE(run.output, QString());
        QCOMPARE(run.errors, "Nothing differs from what is known of " + model + ".\n");
        QCOMPARE(run.status, 0);
    }

    void fileGoesToStandardOutputWithoutAName()
    {
        const ReceiptRun run =
            selfTest({"--no-print", "--model", model, "--answers", "-"}, "cuts: none");
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, QString());
        QCOMPARE(recordIn(run.output.toUtf8()).value("cutCommand").toString(), QString("None"));
    }

    void wrongAnswerIsAskedForAgain()
    {
        const ReceiptRun run =
            selfTest({"--no-print", "--model", model, "--only", "ruler"}, "wide\n7\n512\n");
        QCOMPARE(run.status, 0);
        QVERIFY(run.errors.contains("\"wide\" is no number from 8 to 576"));
        QVERIFY(run.errors.contains("\"7\" is no number from 8 to 576"));
        QCOMPARE(run.errors.count("ruler: "), 3);
        QCOMPARE(recordIn(run.output.toUtf8()).value("headDots").toInt(), 512);
    }

    void endOfTheInputLeavesTheRestAsItIs()
    {
        const ReceiptRun none = selfTest({"--no-print", "--model", model});
        QCOMPARE(none.status, 0);
        QVERIFY(none.errors.endsWith("Nothing differs from what is known of " + model + ".\n"));
        // Also in the middle of a line.
        const ReceiptRun some = selfTest({"--no-print", "--model", model}, "512");
        QCOMPARE(some.status, 0);
        QCOMPARE(recordIn(some.output.toUtf8()).value("headDots").toInt(), 512);
    }

    void interruptWhileAskingWritesNothing()
    {
        const QString output = m_folder.path("none.json");
        RunningReceipt run({"selftest", "--no-print", "--model", model, "--output", output});
        QVERIFY(run.errorLine().startsWith("What does the paper show?"));
        run.write("512\n");
        run.interrupt();
        const ReceiptRun result = run.result();
        QCOMPARE(result.status, 1);
        QVERIFY(result.errors.endsWith("cancelled\n"));
        QVERIFY(!QFile::exists(output));
    }

    void wrongAnswersOfAFileAreToldBeforeAnythingIsPrinted()
    {
        const PlayedPrinter printer(model);
        const QString answers = m_folder.file("answers", "# mine\nruler: 512\ncuts: sometimes\n");
        const ReceiptRun run =
            selfTest({"--to", printer.address(), "--model", model, "--answers", answers});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, "receipt: " + answers +
                                 ":3: cuts: \"sometimes\" is none of all, none, EscI, GsVPartial, "
                                 "GsV\n");
        QCOMPARE(run.output, QString());
    }

    void fileThatIsThereIsReplacedByForceAlone()
    {
        const QString output = m_folder.file("mine.json", "[]");
        const QStringList options = {"--no-print", "--model",  model, "--answers",
                                     "-",          "--output", output};
        const ReceiptRun run = selfTest(options, "cuts: none\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, "receipt: " + output + ": is there already; --force replaces it\n");
        QCOMPARE(m_folder.content("mine.json"), QByteArray("[]"));
        QCOMPARE(selfTest(options + QStringList("--force"), "cuts: none\n").status, 0);
        QCOMPARE(recordIn(m_folder.content("mine.json")).value("cutCommand").toString(),
                 QString("None"));
    }

    void nothingIsWrittenWhereNothingDiffers()
    {
        const QString output = m_folder.path("same.json");
        const ReceiptRun run =
            selfTest({"--no-print", "--model", model, "--answers", "-", "--output", output},
                     "ruler: 576\npages: all\n");
        QCOMPARE(run.status, 0);
        QVERIFY(!QFile::exists(output));
    }

    void drawerOpensOnlyWhenAsked()
    {
        const QString file = m_folder.path("drawer.bin");
        const QByteArray pulse("\x1Bp\x01", 3);
        QCOMPARE(selfTest({"--to", "file:" + file, "--model", model, "--no-questions"}).status, 0);
        QVERIFY(!m_folder.content("drawer.bin").contains(QByteArray("\x1Bp", 2)));
        QCOMPARE(selfTest({"--to", "file:" + file, "--model", model, "--no-questions",
                           "--open-drawer", "5"})
                     .status,
                 0);
        QVERIFY(m_folder.content("drawer.bin").contains(pulse));
    }

    void otherCodePagesCanBeLookedFor()
    {
        const ReceiptRun run = selfTest({"--no-print", "--model", "CUSTOM_VKP_80", "--pages",
                                         "0,15-18", "--only", "pages", "--answers", "-"},
                                        "pages: 0 17=CP866\n");
        QCOMPARE(run.status, 0);
        const QJsonObject pages = recordIn(run.output.toUtf8()).value("codePages").toObject();
        QCOMPARE(pages.value("17").toString(), QString("CP866"));
        QCOMPARE(pages.value("2").toString(), QString("CP850"));
    }

    void wrongUsageIsTold_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const QStringList &options, const char *message) {
            QTest::newRow(name) << options << QString(message);
        };
        row("no printer", {}, "selftest needs --to URL");
        row("no address", {"--to", "nowhere"}, "--to: ");
        row("no model", {"--no-print", "--model", "X"}, "there is no model \"X\"");
        row("no part", {"--no-print", "--only", "ruler,rules"}, "--only: \"rules\" is none of ");
        row("no pages", {"--no-print", "--pages", "1-x"}, "--pages: \"1-x\" is none of ");
        row("pages backwards", {"--no-print", "--pages", "9-3"}, "--pages: ");
        row("pages too high", {"--no-print", "--pages", "256"}, "--pages: ");
        row("no pin", {"--no-print", "--open-drawer", "3"}, "--open-drawer: \"3\" is none of 2, 5");
        row("no drawers", {"--no-print", "--model", "SWECOIN_TM_20XX", "--open-drawer", "2"},
            "--open-drawer: SWECOIN_TM_20XX has no command that opens one");
        row("no paper", {"--no-print", "--paper", "99"}, "--paper: ");
        row("nothing to do", {"--no-print", "--no-questions"}, "--no-questions doesn't go with");
        row("answers unasked", {"--to", "file:x", "--no-questions", "--answers", "x"},
            "--no-questions doesn't go with --answers");
        row("arguments", {"x"}, "wrong number of arguments");
    }
    void wrongUsageIsTold()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, message);
        const ReceiptRun run = selfTest(options);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.errors.contains(message), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
    }

    void filesThatCannotBeReadAreTold()
    {
        const ReceiptRun answers = selfTest({"--no-print", "--answers", "/nonexistent/answers"});
        QCOMPARE(answers.status, 1);
        QVERIFY(answers.errors.contains("/nonexistent/answers: "));
        const ReceiptRun models = selfTest({"--no-print", "--models", "/nonexistent/models"});
        QCOMPARE(models.status, 1);
        const ReceiptRun output = selfTest(
            {"--no-print", "--answers", "-", "--output", "/nonexistent/found"}, "cuts: none\n");
        QCOMPARE(output.status, 1);
        QVERIFY(output.errors.contains("/nonexistent/found: "));
    }

    void withoutStandardStreamsItPrintsNevertheless()
    {
        const QString file = m_folder.path("closed.bin");
        QProcess process;
        process.start("/bin/sh", {"-c", "exec \"$@\" <&- >&- 2>&-", "sh", RECEIPT_PROGRAM,
                                  "selftest", "--to", "file:" + file, "--model", model});
        QVERIFY(process.waitForFinished(printerPatience));
        QVERIFY(process.exitStatus() == QProcess::NormalExit);
        QVERIFY(m_folder.content("closed.bin").contains("SELF TEST"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptSelfTest)
#include "tst_receipt_selftest.moc"
