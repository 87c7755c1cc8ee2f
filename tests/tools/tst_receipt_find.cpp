#include <signal.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "virtualprinter.h"

namespace {

constexpr int runMilliseconds = 60000;

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

Run receipt(const QStringList &arguments)
{
    QProcess program;
    program.start(RECEIPT_PROGRAM, QStringList("find") + arguments);
    Run run;
    if (program.waitForFinished(runMilliseconds) && program.exitStatus() == QProcess::NormalExit)
        run.exitCode = program.exitCode();
    run.output = QString::fromUtf8(program.readAllStandardOutput());
    run.errors = QString::fromUtf8(program.readAllStandardError());
    return run;
}

VirtualPrinterOptions printerOnFirstLine(const QString &model)
{
    VirtualPrinterOptions options;
    options.model = model;
    options.baudRate = 115200;
    options.flowControl = QSerialPort::NoFlowControl;
    return options;
}

QJsonObject deviceJson(const QString &port, const QString &id, int baudRate = 115200)
{
    return {{"deviceType", 1},
            {"deviceId", id},
            {"settings", QJsonObject{{"portName", port},
                                     {"baudRate", baudRate},
                                     {"dataBits", 8},
                                     {"parity", "none"},
                                     {"stopBits", 1},
                                     {"flowControl", "none"}}}};
}

}  // namespace

class TestReceiptFind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tableNamesPortModelAndLine()
    {
        VirtualPrinter printer(printerOnFirstLine("EPSON_EU_4XX"));
        printer.start();
        const Run run = receipt({"--port", "no-such-port", "--port", printer.portPath()});
        QCOMPARE(run.exitCode, 0);
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(0).simplified(), QString("PORT MODEL NAME LINE"));
        QCOMPARE(lines.at(1).simplified(), printer.portPath() +
                                               " EPSON_EU_4XX EPSON EU-4XX 115200 8N1, flow "
                                               "control none");
        QCOMPARE(run.errors, "receipt: find: there is no port /dev/no-such-port\n" +
                                 printer.portName() +
                                 ": line setting 1 of 63, Custom, Citizen, Epson, 115200 baud\n");
    }

    void jsonIsWhatConfirmReads()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const Run found = receipt({"--port", printer.portPath(), "--json"});
        QCOMPARE(found.exitCode, 0);
        const QJsonArray expected{deviceJson(printer.portPath(), "CUSTOM_VKP_80")};
        QCOMPARE(QJsonDocument::fromJson(found.output.toUtf8()).array(), expected);

        const Run confirmed = confirm(found.output.toUtf8(), {"--json"});
        QCOMPARE(confirmed.exitCode, 0);
        QCOMPARE(confirmed.output, found.output);

        VirtualPrinterOptions silentOptions = printerOnFirstLine("CUSTOM_VKP_80");
        silentOptions.fault = VirtualFault::Silent;
        const VirtualPrinter silent(silentOptions);
        const QJsonArray record{deviceJson(silent.portPath(), "CUSTOM_VKP_80")};
        const Run gone = confirm(QJsonDocument(record).toJson(), {"--json"});
        QCOMPARE(gone.exitCode, 1);
        QCOMPARE(QJsonDocument::fromJson(gone.output.toUtf8()).array(), QJsonArray());
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
        const Run run = confirm(QJsonDocument(record).toJson(), {});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.errors, printer.portName() + progress + "\n");
    }

    void virtualPrinterIsFound()
    {
        const Run run = receipt({"--virtual", "CUSTOM_TG_2480_H"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.output.contains("CUSTOM_TG_2480_H"), qPrintable(run.output));
        QVERIFY2(run.output.contains("57600 8N1, flow control none"), qPrintable(run.output));
    }

    void nothingFoundIsStatusOne()
    {
        const Run run = receipt({"--port", "no-such-port"});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.errors, QString("receipt: find: there is no port /dev/no-such-port\n"
                                     "receipt: There no devices finded\n"));
    }

    void interruptCancels()
    {
        QProcess program;
        program.start(RECEIPT_PROGRAM, {"find", "--virtual", "CITIZEN_PPU_231"});
        program.setReadChannel(QProcess::StandardError);
        while (!program.canReadLine())
            QVERIFY(program.waitForReadyRead(runMilliseconds));
        ::kill(static_cast<pid_t>(program.processId()), SIGINT);
        QVERIFY(program.waitForFinished(runMilliseconds));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("receipt: cancelled\n"));
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
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
        const Run run = confirm(text, {});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
    }

    void wrongUsageIsStatusTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("argument") << QStringList("ttyS0");
        QTest::newRow("option") << QStringList("--ports");
        QTest::newRow("two sources") << QStringList{"--port", "a", "--virtual", "AV_268"};
        QTest::newRow("unknown virtual model") << QStringList{"--virtual", "WPK_833"};
    }

    void wrongUsageIsStatusTwo()
    {
        QFETCH(QStringList, arguments);
        const Run run = receipt(arguments);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(!run.errors.isEmpty());
        QCOMPARE(run.output, QString());
    }

    void missingFileIsBadInput()
    {
        const Run run = receipt({"--confirm", "no-such-file.json"});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains("no-such-file.json"), qPrintable(run.errors));
    }

private:
    static Run confirm(const QByteArray &text, const QStringList &options)
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("devices.json"));
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write(text);
        file.close();
        return receipt(QStringList{"--confirm", file.fileName()} + options);
    }
};

QTEST_GUILESS_MAIN(TestReceiptFind)
#include "tst_receipt_find.moc"
