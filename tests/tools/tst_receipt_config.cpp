// The file that says which printer a shop has, as "receipt" takes it where options don't say.
#include <sys/stat.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "playedprinter.h"

namespace {

const QString star = "TSP-TUP";

}  // namespace

class TestReceiptConfig : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    /// Makes the user's file.
    QString shopFile(const QByteArray &content) const
    {
        QDir(m_folder.path("")).mkpath("printerslib");
        return m_folder.file("printerslib/receipt.conf", content);
    }
    static ReceiptRun status(const QStringList &options)
    {
        return runReceipt(QStringList("status") + options);
    }
    static QString modelIn(const ReceiptRun &run)
    {
        return QJsonDocument::fromJson(run.output.toUtf8()).object().value("model").toString();
    }

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path("").toLocal8Bit());
        qputenv("XDG_CONFIG_DIRS", "/nonexistent");
    }
    void cleanup() { QFile::remove(m_folder.path("printerslib/receipt.conf")); }

    void printerOfTheUserIsAsked()
    {
        const PlayedPrinter printer(star);
        shopFile("to=" + printer.address().toUtf8() + "\nmodel=" + star.toUtf8() + '\n');
        const ReceiptRun run = status({"--json"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(modelIn(run), star);
        QCOMPARE(run.status, 0);
    }

    void addressKeepsItsQuestionMarkAndPercent()
    {
        shopFile("to=serial:/dev/no%20where?baud=19200&parity=even\n");
        const ReceiptRun run = status({"--json", "--timeout", "1"});
        QCOMPARE(QJsonDocument::fromJson(run.output.toUtf8()).object().value("printer").toString(),
                 QString("serial:/dev/no%20where?baud=19200&parity=even&data=8&stop=1&flow=none"));
        QCOMPARE(run.status, 1);
    }

    void printerOfTheMachineIsAskedWhereTheUserHasNone()
    {
        const PlayedPrinter printer;
        const WorkFolder machine;
        QDir(machine.path("")).mkpath("printerslib");
        const QByteArray content = "to=" + printer.address().toUtf8() + '\n';
        machine.file("printerslib/receipt.conf", content);
        qputenv("XDG_CONFIG_DIRS", "/nonexistent:" + machine.path("").toLocal8Bit());
        QCOMPARE(status({}).status, 0);
        // The user's own prevails.
        shopFile("to=tcp:127.0.0.1:9\n");
        QCOMPARE(status({"--timeout", "1"}).status, 1);
    }

    void optionsPrevail()
    {
        const PlayedPrinter printer(star);
        shopFile("to=tcp:127.0.0.1:9\nmodel=SWECOIN_TM_20XX\n");
        const ReceiptRun run = status({"--json", "--to", printer.address(), "--model", star});
        QCOMPARE(run.errors, QString());
        QCOMPARE(modelIn(run), star);
    }

    void fileOfAnOptionIsTakenInPlace()
    {
        const PlayedPrinter printer;
        shopFile("to=tcp:127.0.0.1:9\n");
        const QString own = m_folder.file("own.conf", "to=" + printer.address().toUtf8() + '\n');
        QCOMPARE(status({"--config", own}).status, 0);
        const ReceiptRun none = status({"--config", "/dev/null"});
        QVERIFY2(none.errors.contains("--to"), qPrintable(none.errors));
        QCOMPARE(none.status, 2);
    }

    void modelsFileCountsFromTheFilesFolder()
    {
        const PlayedPrinter printer("SWECOIN_TM_20XX");
        QDir(m_folder.path("")).mkpath("printerslib");
        m_folder.file("printerslib/own.json", R"([{"id": "OWN", "like": "SWECOIN_TM_20XX"}])");
        m_folder.file("printerslib/b,c.json", R"([{"id": "OTHER", "like": "SWECOIN_TM_20XX"}])");
        shopFile("models=own.json, \"b,c.json\"\nmodel=OTHER\nto=" + printer.address().toUtf8() +
                 '\n');
        const ReceiptRun run = status({"--json"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(modelIn(run), QString("OTHER"));
        QCOMPARE(modelIn(status({"--json", "--model", "OWN"})), QString("OWN"));
    }

    void modelOfAFileOnTheCommandLineIsKnown()
    {
        const PlayedPrinter printer("SWECOIN_TM_20XX");
        shopFile("; a till's printer\n[General]\nmodel=OWN\nto=" + printer.address().toUtf8() +
                 '\n');
        const QString own =
            m_folder.file("own.json", R"([{"id": "OWN", "like": "SWECOIN_TM_20XX"}])");
        QCOMPARE(modelIn(status({"--json", "--models", own})), QString("OWN"));
        QCOMPARE(status({"--json"}).status, 1);
    }

    void fileOfAnotherSystemIsRead()
    {
        const PlayedPrinter printer;
        shopFile("to=" + printer.address().toUtf8() + "\r\nmodel=CITIZEN_CTS_2000\r\n");
        const ReceiptRun run = status({});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void modelOfTheSettingsIsAsked()
    {
        const PlayedPrinter printer(star);
        QDir(m_folder.path("")).mkpath("printerslib");
        m_folder.file("printerslib/shop.json",
                      R"([{"group": "PRINTER", "key": "printerType", "value": 1},
                          {"group": "PRINTER", "key": "printerName", "value": "TSP-TUP"}])");
        shopFile("settings=shop.json\nto=" + printer.address().toUtf8() + '\n');
        const ReceiptRun run = status({"--json"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(modelIn(run), star);
        QCOMPARE(modelIn(status({"--json", "--timeout", "1", "--model", "CUSTOM_VKP_80"})),
                 QString("CUSTOM_VKP_80"));
    }

    void receiptIsMadeForThePrinterOfTheFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("made");
        const auto row = [](const char *name, const QByteArray &content, const QStringList &options,
                            const char *made) {
            QTest::newRow(name) << content << options << QString(made);
        };
        const QByteArray settings = "settings=shop.json\n";
        const QByteArray model = "model=CUSTOM_VKP_80\npaper=1\n";
        row("settings", settings, {}, "TSP-TUP, paper ");
        row("model prevails over settings", settings, {"--model", "AV_268"}, "AV_268, paper ");
        row("model and paper", model, {}, "CUSTOM_VKP_80, paper 60 mm: ");
        row("paper prevails", model, {"--paper", "0"}, "CUSTOM_VKP_80, paper 80 mm: ");
        row("paper is that of the file's model", model, {"--model", "AV_268"}, "AV_268, paper ");
        row("settings prevail over model", model, {"--settings", m_folder.path("other.json")},
            "SWECOIN_TM_20XX, paper ");
    }
    void receiptIsMadeForThePrinterOfTheFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, options);
        QFETCH(QString, made);
        const QByteArray settings = R"([{"group": "PRINTER", "key": "printerType", "value": 1},
                                        {"group": "PRINTER", "key": "printerName", "value": "%1"}])";
        shopFile(content);
        m_folder.file("printerslib/shop.json", QByteArray(settings).replace("%1", "TSP-TUP"));
        m_folder.file("other.json", QByteArray(settings).replace("%1", "SWECOIN_TM_20XX"));
        const ReceiptRun run = runReceipt(
            QStringList{"print", "--plain", m_folder.file("a.txt", "x\n"), "--dry-run"} + options);
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith(made), qPrintable(run.output));
        QCOMPARE(run.status, 0);
    }

    void fileOfBytesCountsFromTheFilesFolder()
    {
        shopFile("to=file:sale 50%25.bin\nmodel=TSP-TUP\n");
        const ReceiptRun run = runReceipt({"print", "--plain", m_folder.file("a.txt", "x\n")});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(m_folder.content("printerslib/sale 50%.bin").contains('x'));
    }

    // What is an escape in an address is none in the name of the file's folder.
    void folderMayHaveSignsOfAddresses()
    {
        QDir(m_folder.path("")).mkpath("50% off? \u00E4");
        const QString config =
            m_folder.file("50% off? \u00E4/shop.conf", "to=file:100%25.bin\nmodel=TSP-TUP\n");
        const QString text = m_folder.file("a.txt", "x\n");
        for (const QStringList &call :
             {QStringList{"print", "--plain", text}, QStringList{"selftest", "--no-questions"}}) {
            const ReceiptRun run = runReceipt(call + QStringList{"--config", config});
            QCOMPARE(run.errors, QString());
            QCOMPARE(run.status, 0);
            QVERIFY(QFile::remove(m_folder.path("50% off? \u00E4/100%.bin")));
        }
    }

    // It would be read as an empty one.
    void pipeIsRefused()
    {
        const QString pipe = m_folder.path("pipe");
        QCOMPARE(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
        const ReceiptRun run = status({"--config", pipe});
        QCOMPARE(run.errors, "receipt: " + pipe + ": is no regular file\n");
        QCOMPARE(run.status, 1);
    }

    void nonAsciiNamesAreRead()
    {
        QDir(m_folder.path("")).mkpath("printerslib");
        m_folder.file("printerslib/Kasse \u00E4.json", R"([{"id": "OWN", "like": "TSP-TUP"}])");
        shopFile(QString("models=Kasse \u00E4.json\nmodel=OWN\n").toUtf8());
        const ReceiptRun run = status({});
        QVERIFY2(run.errors.contains("--to"), qPrintable(run.errors));
        QCOMPARE(run.status, 2);
    }

    void faultIsToldByFileAndKey_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QByteArray &content, const char *complaint) {
            QTest::newRow(name) << content << QString(complaint);
        };
        row("unknown key", "printer=tcp:a\n",
            ": there is no key \"printer\"; there are: to, model, models, settings, paper, font");
        row("unknown section", "[shop]\nto=tcp:a\n", ": there is no key \"shop/to\"");
        row("address", "to=lp0\n", ": the key \"to\": ");
        row("standard output", "to=-\n", ": the key \"to\": ");
        row("no value", "to=\n", ": the key \"to\": has no value");
        row("address twice", "to=tcp:a\n; to=tcp:c\nmodel=TSP-TUP\n to = tcp:b\n",
            ": the key \"to\": stands twice");
        row("two addresses", "to=tcp:a, tcp:b\n", ": the key \"to\": has several values");
        row("model", "model=TYPEWRITER\n",
            ": the key \"model\": there is no model \"TYPEWRITER\"; see \"receipt models\"");
        row("models that aren't there", "models=nowhere.json\n", ": the key \"models\": ");
        row("settings that aren't there", "settings=nowhere.json\n", ": the key \"settings\": ");
        row("paper", "paper=wide\n", ": the key \"paper\": \"wide\" is no number from 0 to 127");
        row("paper below", "paper=-1\n", ": the key \"paper\": \"-1\" is no number");
        row("paper of no such model", "model=TSP-TUP\npaper=1\n",
            ": the key \"paper\": \"1\" is no number from 0 to 0");
        row("paper of four", "paper=4\nmodel=CUSTOM_VKP_80\n",
            ": the key \"paper\": \"4\" is no number from 0 to 3");
        row("font", "font=4\n", ": the key \"font\": \"4\" is no number from 0 to 3");
        row("no keys at all", "tcp:192.168.0.5\n", ": has a line that isn't KEY=VALUE");
        row("byte order mark", "\xEF\xBB\xBFto=tcp:a\n",
            ": begins with a byte order mark; save it as UTF-8 without one");
        row("zero bytes", QByteArray(100, '\0'), ": ");
    }
    void faultIsToldByFileAndKey()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, complaint);
        const QString file = shopFile(content);
        const ReceiptRun run = status({"--to", "tcp:127.0.0.1:9"});
        QVERIFY2(run.errors.startsWith("receipt: " + file + complaint), qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void modelAndSettingsExcludeEachOther()
    {
        QDir(m_folder.path("")).mkpath("printerslib");
        m_folder.file("printerslib/shop.json", "[]");
        const QString file = shopFile("settings=shop.json\nmodel=TSP-TUP\n");
        const ReceiptRun run = status({});
        QCOMPARE(run.errors,
                 "receipt: " + file + ": the key \"settings\": excludes the key \"model\"\n");
        QCOMPARE(run.status, 1);
    }

    void fileThatIsNotThereIsToldIfItIsAskedFor()
    {
        const ReceiptRun run = status({"--config", m_folder.path("nowhere"), "--to", "tcp:a"});
        QVERIFY2(run.errors.startsWith("receipt: " + m_folder.path("nowhere") + ": "),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
        const ReceiptRun empty = status({"--config", "", "--to", "tcp:a"});
        QCOMPARE(empty.status, 1);
    }

    void helpIsShownWhateverTheFileSays()
    {
        shopFile("printer=tcp:a\n");
        const ReceiptRun run = status({"--help"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(runReceipt({"models"}).status, 0);
    }

    void wrongCommandLineIsToldFirst()
    {
        shopFile("printer=tcp:a\n");
        QCOMPARE(status({"--fast"}).status, 2);
    }
};

QTEST_GUILESS_MAIN(TestReceiptConfig)
#include "tst_receipt_config.moc"
