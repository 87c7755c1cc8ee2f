#include <QtTest>

#include "receiptprogram.h"

// What all commands have in common.
class TestReceiptProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutACommandItHelpsAndFails()
    {
        const ReceiptRun run = runReceipt({});
        QCOMPARE(run.status, 2);
        QVERIFY(run.output.startsWith("Usage: receipt COMMAND"));
    }

    void helpListsTheCommands_data()
    {
        QTest::addColumn<QString>("option");
        QTest::newRow("long") << "--help";
        QTest::newRow("short") << "-h";
    }
    void helpListsTheCommands()
    {
        QFETCH(QString, option);
        const ReceiptRun run = runReceipt({option});
        QCOMPARE(run.status, 0);
        for (const char *command :
             {"\n  eval ", "\n  fill ", "\n  lint ", "\n  render ", "\n  split "})
            QVERIFY2(run.output.contains(command), command);
        QCOMPARE(run.errors, QString());
    }

    void versionIsThatOfTheLibrary()
    {
        const ReceiptRun run = runReceipt({"--version"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString("receipt 5.0.28\n"));
    }

    void unknownCommandIsWrongUsage()
    {
        const ReceiptRun run = runReceipt({"fil"});
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors,
                 QString("receipt: there is no command \"fil\"; see \"receipt --help\"\n"));
        QCOMPARE(run.output, QString());
    }

    void everyCommandHelps_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("usage");
        QTest::newRow("eval") << "eval"
                              << "Usage: receipt eval [options] EXPRESSION\n";
        QTest::newRow("fill") << "fill"
                              << "Usage: receipt fill [options] TEMPLATE DATA.json\n";
        QTest::newRow("lint") << "lint"
                              << "Usage: receipt lint [options] TEMPLATE...\n";
        QTest::newRow("preview") << "preview"
                                 << "Usage: receipt preview [options] TEMPLATE DATA.json\n";
        QTest::newRow("render") << "render"
                                << "Usage: receipt render [options] TEMPLATE DATA.json\n";
        QTest::newRow("split") << "split"
                               << "Usage: receipt split [options] TEMPLATE\n";
    }
    void everyCommandHelps()
    {
        QFETCH(QString, command);
        QFETCH(QString, usage);
        const ReceiptRun run = runReceipt({command, "--help"});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.startsWith(usage), qPrintable(run.output));
        QVERIFY(run.output.contains("--verbose"));
        QCOMPARE(run.errors, QString());
    }

    void wrongCommandLinesAreWrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QString count =
            "receipt: receipt %1: wrong number of arguments; see \"receipt %1 "
            "--help\"\n";
        QTest::newRow("eval without an expression") << QStringList{"eval"} << count.arg("eval");
        QTest::newRow("eval with two") << QStringList{"eval", "1", "2"} << count.arg("eval");
        QTest::newRow("fill without a document")
            << QStringList{"fill", "a.cpt"} << count.arg("fill");
        QTest::newRow("fill with three files")
            << QStringList{"fill", "a", "b", "c"} << count.arg("fill");
        QTest::newRow("lint without a template")
            << QStringList{"lint"}
            << "receipt: lint: a template is expected; see \"receipt lint --help\"\n";
        QTest::newRow("split without a template") << QStringList{"split"} << count.arg("split");
        QTest::newRow("render without files") << QStringList{"render"} << count.arg("render");
        QTest::newRow("render without a document")
            << QStringList{"render", "a.cpt"}
            << "receipt: a template and a document are expected\n";
        QTest::newRow("render --plain with two files")
            << QStringList{"render", "--plain", "a", "b"}
            << "receipt: --plain: one file is expected\n";
        QTest::newRow("unknown option")
            << QStringList{"fill", "--nosuch", "a", "b"} << "receipt: Unknown option 'nosuch'.\n";
        QTest::newRow("option without its value") << QStringList{"fill", "a", "b", "--codec"}
                                                  << "receipt: Missing value after '--codec'.\n";
        QTest::newRow("two files from standard input")
            << QStringList{"fill", "-", "-"}
            << "receipt: standard input can be only one of the files\n";
        QTest::newRow("two files from standard input, rendered")
            << QStringList{"render", "-", "-"}
            << "receipt: standard input can be only one of the files\n";
    }
    void wrongCommandLinesAreWrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.errors, complaint);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QString());
    }

    void outputThatCannotBeWrittenIsReported_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const QString general = "GENERAL_EPSON_PROTOCOL";
        QTest::newRow("eval") << QStringList{"eval", "1"};
        QTest::newRow("models") << QStringList{"models", general};
        QTest::newRow("print") << QStringList{
            "print", example("kiosk.cpt"), example("kiosk.json"), "--model", general, "--dry-run"};
        QTest::newRow("settings") << QStringList{"settings", "show",
                                                 example("client/settings.json")};
    }
    void outputThatCannotBeWrittenIsReported()
    {
        QFETCH(QStringList, arguments);
        if (!QFile::exists("/dev/full"))
            QSKIP("/dev/full is missing");
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(RECEIPT_PROGRAM, arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardError(),
                 QByteArray("receipt: standard output: No space left on device\n"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptProgram)
#include "tst_receipt_program.moc"
