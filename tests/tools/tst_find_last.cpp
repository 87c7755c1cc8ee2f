#include <unistd.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

#include "findrun.h"
#include "virtualprinter.h"

using namespace findrun;

/// Files of printers that are known: asked again, kept, and wrong ones.
class TestFindLast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lastSearchesOnceAndThenConfirms()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const QTemporaryDir folder;
        const QString file = folder.filePath("printers.json");
        const QStringList arguments{"--last", file, "--port", printer.portPath(), "--json"};
        const ReceiptRun first = receipt(arguments);
        QCOMPARE(first.status, 0);
        QCOMPARE(content(file), first.output.toUtf8());
        QVERIFY(first.errors.contains("line setting 1 of 63"));

        // The one that answers as it stands there is left as it is, with those beside it.
        const QJsonArray known{deviceJson("no-such-port", "AV_268"),
                               deviceJson(printer.portPath(), "CUSTOM_VKP_80")};
        write(file, QJsonDocument(known).toJson());
        const ReceiptRun second = receipt(arguments);
        QCOMPARE(second.status, 0);
        QCOMPARE(second.output, first.output);
        QVERIFY(second.errors.contains("line setting 1 of 1"));
        QVERIFY(!second.errors.contains("of 63"));
        QCOMPARE(content(file), QJsonDocument(known).toJson());
    }

    void lastSearchesWhenNoKnownPrinterAnswers()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const QTemporaryDir folder;
        const QString file = folder.filePath("printers.json");
        write(file, QJsonDocument(QJsonArray{deviceJson(printer.portPath(), "CUSTOM_VKP_80", 9600)})
                        .toJson());
        const ReceiptRun run = receipt({"--last", file, "--port", printer.portPath(), "--json"});
        QCOMPARE(run.status, 0);
        QCOMPARE(QJsonDocument::fromJson(run.output.toUtf8()).array(),
                 QJsonArray{deviceJson(printer.portPath(), "CUSTOM_VKP_80")});
        QCOMPARE(content(file), run.output.toUtf8());
    }

    void lastKeepsItsFileWhenNobodyAnswers()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("printers.json");
        const QByteArray known =
            QJsonDocument(QJsonArray{deviceJson("no-such-port", "AV_268")}).toJson();
        write(file, known);
        const ReceiptRun run = receipt({"--last", file, "--port", "no-such-port", "--json"});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output, QString("[\n]\n"));
        QCOMPARE(content(file), known);
        QCOMPARE(run.errors, QString("receipt: find: there is no port /dev/no-such-port\n"
                                     "receipt: There no devices finded\n"));
    }

    void lastLeavesAFileOfAnotherKindAlone()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const QTemporaryDir folder;
        const QString file = folder.filePath("receipt.tpl");
        write(file, "<C>SHOP\n");
        const ReceiptRun run = receipt({"--last", file, "--port", printer.portPath()});
        QCOMPARE(run.status, 1);
        QCOMPARE(content(file), QByteArray("<C>SHOP\n"));
        QVERIFY2(run.errors.contains("receipt.tpl"), qPrintable(run.errors));
        QCOMPARE(printer.received(), QByteArray());
    }

    void lastThatCannotBeWrittenIsBadInput()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const ReceiptRun run =
            receipt({"--last", "/no-such-folder/printers.json", "--port", printer.portPath()});
        QCOMPARE(run.status, 1);
        QVERIFY(run.output.contains("CUSTOM_VKP_80"));
        QVERIFY2(run.errors.contains("/no-such-folder/printers.json"), qPrintable(run.errors));
    }

    void emptyLastIsAFirstSearch()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const QTemporaryDir folder;
        const QString file = folder.filePath("printers.json");
        write(file, "");
        QCOMPARE(receipt({"--last", file, "--port", printer.portPath()}).status, 0);
        QVERIFY(content(file).contains("CUSTOM_VKP_80"));
    }

    void wrongFilesAreNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QByteArray &text, const QString &complaint) {
            QTest::newRow(name) << text << complaint;
        };
        row("not JSON", "[\n  {", ":2:");
        row("no array", "{}", ": this is no array of devices");
        row("empty array", "[]", "There are no available configs");
        row("no device", "[7]", ": device 1: \"deviceType\" is missing or wrong");
        row("no id", "[{\"deviceType\": 1}]", ": device 1: \"deviceId\" is missing or wrong");
        QJsonObject device = deviceJson("ttyS0", "AV_268");
        QJsonObject settings = device.value("settings").toObject();
        settings.insert("parity", "some");
        device.insert("settings", settings);
        row("unknown parity",
            QJsonDocument(QJsonArray{deviceJson("ttyS0", "AV_268"), device}).toJson(),
            ": device 2: \"settings.parity\" is missing or wrong");
        device.remove("settings");
        row("no settings", QJsonDocument(QJsonArray{device}).toJson(),
            ": device 1: \"settings\" is missing or wrong");
    }

    void wrongFilesAreNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, complaint);
        const ReceiptRun run = confirm(text, {});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
    }

    void missingFileIsBadInput()
    {
        const ReceiptRun run = receipt({"--confirm", "no-such-file.json"});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("no-such-file.json"), qPrintable(run.errors));
    }

    void recordsOfOnePortAreAskedInTurn()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const QTemporaryDir folder;
        const QString alias = folder.filePath("printer");
        QVERIFY(QFile::link(printer.portPath(), alias));
        const QJsonArray records{deviceJson(printer.portPath(), "CUSTOM_VKP_80", 9600),
                                 deviceJson(alias, "CUSTOM_VKP_80")};
        const ReceiptRun run = confirm(QJsonDocument(records).toJson(), {"--json"});
        QCOMPARE(run.status, 0);
        QCOMPARE(QJsonDocument::fromJson(run.output.toUtf8()).array(), QJsonArray{records.at(1)});
    }

    void recordThatIsNoPrinterIsNamed()
    {
        QJsonObject record = deviceJson("ttyS0", "AV_268");
        record.insert("deviceType", 2);
        const ReceiptRun run = confirm(QJsonDocument(QJsonArray{record}).toJson(), {});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors,
                 QString("receipt: find: device 1 is no serial printer with a model and a port\n"
                         "receipt: There no devices finded\n"));
    }

    void progressOfAConfirmationNamesTheDialogueOfTheModel_data()
    {
        QTest::addColumn<int>("baudRate");
        QTest::addColumn<QString>("progress");
        const QString onTheGivenLine = ": line setting 1 of 1, %1, 19200 baud";
        QTest::newRow("CITIZEN_PPU_700") << 19200 << onTheGivenLine.arg("Custom, Citizen, Epson");
        QTest::newRow("SWECOIN_TM_20XX") << 19200 << onTheGivenLine.arg("Swecoin");
        QTest::newRow("CITIZEN_PPU_231") << 19200 << onTheGivenLine.arg("Citizen PPU-231");
        QTest::newRow("TSP-TUP") << 38400 << ": line setting 1 of 24, Star, 38400 baud";
        QTest::newRow("AV_268") << 115200 << ": AV-268, 115200 baud";
    }

    void progressOfAConfirmationNamesTheDialogueOfTheModel()
    {
        QFETCH(int, baudRate);
        QFETCH(QString, progress);
        const QString model = QTest::currentDataTag();
        VirtualPrinterOptions options = printerOnFirstLine(model);
        options.baudRate = baudRate;
        if (model == "AV_268")
            options.flowControl = QSerialPort::SoftwareControl;
        VirtualPrinter printer(options);
        printer.start();
        const QJsonArray record{deviceJson(printer.portPath(), model, 19200)};
        const ReceiptRun run = confirm(QJsonDocument(record).toJson(), {});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, printer.portName() + progress + "\n");
    }

private:
    static QByteArray content(const QString &fileName)
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

QTEST_GUILESS_MAIN(TestFindLast)
#include "tst_find_last.moc"
