#include <signal.h>

#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#include "virtualprinter.h"

namespace {

constexpr int answerMilliseconds = 5000;

VirtualPrinterOptions optionsFor(const QString &model)
{
    VirtualPrinterOptions options;
    options.model = model;
    return options;
}

VirtualPrinterOptions faulty(VirtualFault fault, int value = 0)
{
    VirtualPrinterOptions options = optionsFor("CUSTOM_VKP_80");
    options.fault = fault;
    options.faultValue = value;
    return options;
}

/// A client's end of the line to a printer.
class Line
{
public:
    explicit Line(VirtualPrinter &printer, int baudRate = QSerialPort::Baud57600)
        : m_printer(printer)
    {
        port.setPortName(printer.portPath());
        opened = port.open(QIODevice::ReadWrite) && port.setBaudRate(baudRate);
    }

    QByteArray ask(const QByteArray &request)
    {
        port.write(request);
        port.flush();
        m_printer.service();
        port.waitForReadyRead(0);
        return port.readAll();
    }

    QSerialPort port;
    bool opened = false;

private:
    VirtualPrinter &m_printer;
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

}  // namespace

class TestVirtualPrinter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyModelAnswersAsItsFamilyDoes_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("answer");

        QTest::newRow("VKP-80") << "CUSTOM_VKP_80" << hex("1D4901") << hex("5D");
        QTest::newRow("VKP-80, request B") << "CUSTOM_VKP_80" << hex("1D4931") << hex("5D");
        QTest::newRow("TG 2480 H") << "CUSTOM_TG_2480_H" << hex("1D4901") << hex("A7");
        QTest::newRow("TG 2480 SE") << "CUSTOM_TG_2480_SE" << hex("1D4901") << hex("93");
        QTest::newRow("PPU-700") << "CITIZEN_PPU_700" << hex("1D4901") << hex("75");
        QTest::newRow("CBM-1000") << "CITIZEN_CBM_1000" << hex("1D4901") << hex("30");
        QTest::newRow("CT-S2000") << "CITIZEN_CTS_2000" << hex("1D4901") << hex("51");
        QTest::newRow("CPP-8001") << "CITIZEN_CPP_8001" << hex("1D4901") << hex("20");
        QTest::newRow("EU-4XX") << "EPSON_EU_4XX" << hex("1D4901") << hex("27");
        QTest::newRow("Swecoin firmware") << "SWECOIN_TM_20XX" << hex("1B0507") << hex("010C");
        QTest::newRow("EU-4XX, request B") << "EPSON_EU_4XX" << hex("1D4931") << hex("27");
        QTest::newRow("Swecoin step 2") << "SWECOIN_TM_20XX" << hex("1B0501") << hex("06");
        QTest::newRow("Swecoin step 3") << "SWECOIN_TM_20XX" << hex("1B0611") << hex("11");
        QTest::newRow("Swecoin step 4") << "SWECOIN_TM_20XX" << hex("1B0612") << hex("12");
        QTest::newRow("Star status behind its mode")
            << "TSP-TUP" << hex("1B1E60021B0601") << hex("0100");
        QTest::newRow("Star takes no ENQ from a Swecoin request")
            << "TSP-TUP" << hex("1B0507") << QByteArray();
        QTest::newRow("Star ENQ") << "TSP-TUP" << hex("05") << hex("00");
        QTest::newRow("Star EOT") << "TSP-TUP" << hex("04") << hex("00");
        QTest::newRow("Star takes no EOT from another's filler")
            << "TSP-TUP" << hex("01020304") << QByteArray();
        QTest::newRow("Star is silent on text") << "TSP-TUP" << hex("535441") << QByteArray();
        QTest::newRow("AV-268 status") << "AV_268" << hex("1B76") << hex("00");
        QTest::newRow("AV-268 is silent on filler") << "AV_268" << hex("01020304") << QByteArray();
        QTest::newRow("PPU-231 status") << "CITIZEN_PPU_231" << hex("1B76") << hex("00");
        QTest::newRow("PPU-231 is silent on filler")
            << "CITIZEN_PPU_231" << hex("010203") << QByteArray();
        QTest::newRow("VKP-80 is silent on its closing")
            << "CUSTOM_VKP_80" << hex("1B69200A200A1D6502") << QByteArray();
        QTest::newRow("two requests, two answers")
            << "CITIZEN_PPU_231" << hex("1B761B76") << hex("0000");
    }

    void everyModelAnswersAsItsFamilyDoes()
    {
        QFETCH(QString, model);
        QFETCH(QByteArray, request);
        VirtualPrinterOptions options = optionsFor(model);
        options.baudRate = 57600;
        options.flowControl = QSerialPort::NoFlowControl;
        VirtualPrinter printer(options);
        QVERIFY(printer.isValid());
        Line line(printer);
        QVERIFY(line.opened);
        QTEST(line.ask(request), "answer");
    }

    void nameThatIsStillLockedIsNotTaken()
    {
        const VirtualPrinterOptions options = optionsFor("CUSTOM_VKP_80");
        const QString name = VirtualPrinter(options).portName();
        QLockFile lock("/var/lock/LCK.." + QString(name).replace('/', '_'));
        lock.setStaleLockTime(0);
        if (!lock.tryLock())
            QSKIP("somebody else has taken the name, or locks are kept elsewhere");
        const VirtualPrinter printer(options);
        QVERIFY(printer.isValid());
        QVERIFY2(printer.portName() != name, qPrintable(name));
    }

    void unknownModelIsNoPrinter()
    {
        QVERIFY(!VirtualPrinter(optionsFor("GENERAL_EPSON_PROTOCOL")).isValid());
        QVERIFY(!VirtualPrinter(optionsFor("")).isValid());
    }

    void answersOnItsOwnLineSettingOnly()
    {
        VirtualPrinterOptions options = optionsFor("CUSTOM_VKP_80");
        options.baudRate = 19200;
        options.flowControl = QSerialPort::HardwareControl;
        VirtualPrinter printer(options);
        Line line(printer, 19200);
        QCOMPARE(line.ask(hex("1D4901")), QByteArray());
        QVERIFY(line.port.setFlowControl(QSerialPort::HardwareControl));
        QCOMPARE(line.ask(hex("1D4901")), hex("5D"));
        QVERIFY(line.port.setBaudRate(9600));
        QCOMPARE(line.ask(hex("1D4901")), QByteArray());

        QStringList lines;
        for (const VirtualExchange &exchange : printer.dialogue())
            lines.append(exchange.toString());
        QCOMPARE(lines, (QStringList{"19200 none < 1D 49 01", "19200 hardware < 1D 49 01",
                                     "19200 hardware > 5D", "9600 hardware < 1D 49 01"}));
    }

    void requestMayComeInPieces()
    {
        VirtualPrinter printer(optionsFor("CUSTOM_VKP_80"));
        Line line(printer);
        QCOMPARE(line.ask(hex("41421D")), QByteArray());
        QCOMPARE(line.ask(hex("49")), QByteArray());
        QCOMPARE(line.ask(hex("01")), hex("5D"));
        QCOMPARE(printer.received(), hex("41421D4901"));
    }

    void faultsShowOnTheLine()
    {
        VirtualPrinter silent(faulty(VirtualFault::Silent));
        QCOMPARE(Line(silent).ask(hex("1D4901")), QByteArray());

        VirtualPrinter echo(faulty(VirtualFault::Echo));
        QCOMPARE(Line(echo, 1200).ask(hex("1D4901")), hex("1D4901"));

        VirtualPrinter flood(faulty(VirtualFault::Flood));
        QVERIFY(!Line(flood).ask(hex("00")).isEmpty());

        VirtualPrinter differing(faulty(VirtualFault::DifferingIds));
        Line differingLine(differing);
        QCOMPARE(differingLine.ask(hex("1D4901")), hex("5D"));
        QCOMPARE(differingLine.ask(hex("1D4901")), hex("5E"));
        QCOMPARE(differingLine.ask(hex("1D4901")), hex("5D"));

        VirtualPrinter partial(faulty(VirtualFault::Partial));
        Line partialLine(partial);
        QCOMPARE(partialLine.ask(hex("1D4901")), hex("5D"));
        QCOMPARE(partialLine.ask(hex("1D4901")), QByteArray());

        VirtualPrinter leaving(faulty(VirtualFault::HangUp, 4));
        Line leavingLine(leaving);
        QCOMPARE(leavingLine.ask(hex("1D4901")), hex("5D"));
        QCOMPARE(leavingLine.ask(hex("1D4901")), QByteArray());
        leavingLine.port.waitForReadyRead(0);
        QVERIFY(leavingLine.port.error() != QSerialPort::NoError);
    }

    void garbageIsTheSameForOneSeed()
    {
        QByteArray first;
        QByteArray second;
        for (QByteArray *const bytes : {&first, &second}) {
            VirtualPrinter printer(faulty(VirtualFault::Garbage));
            Line line(printer);
            for (int i = 0; i < 20; ++i)
                *bytes += line.ask("x");
        }
        QVERIFY(!first.isEmpty());
        QCOMPARE(first, second);
    }

    void threadServicesThePrinterUntilItHangsUp()
    {
        VirtualPrinter printer(faulty(VirtualFault::Slow, 5));
        printer.start();
        Line line(printer);
        line.port.write(hex("1D4901"));
        QVERIFY(line.port.waitForReadyRead(answerMilliseconds));
        QCOMPARE(line.port.readAll(), hex("5D"));
        printer.hangUp();
        QVERIFY(!line.port.waitForReadyRead(answerMilliseconds));
        QVERIFY(line.port.error() != QSerialPort::NoError);
    }

    void programPlaysAPrinter()
    {
        const QTemporaryDir folder;
        const QString link = folder.filePath("ttyPRN0");
        QProcess program;
        program.start(VIRTUAL_PRINTER_PROGRAM,
                      {"--model", "CUSTOM_VKP_80", "--baud", "19200", "--flow", "hardware",
                       "--fault", "slow=1", "--link", link});
        QVERIFY(program.waitForReadyRead(answerMilliseconds));
        const QString path = QString::fromLatin1(program.readLine()).trimmed();
        QVERIFY2(path.startsWith("/dev/pts/"), qPrintable(path));
        QCOMPARE(QFile::symLinkTarget(link), path);

        QSerialPort port(path);
        QVERIFY(port.open(QIODevice::ReadWrite));
        port.setBaudRate(19200);
        port.setFlowControl(QSerialPort::HardwareControl);
        port.write(hex("1D4901"));
        QVERIFY(port.waitForReadyRead(answerMilliseconds));
        QCOMPARE(port.readAll(), hex("5D"));
        while (!program.canReadLine())
            QVERIFY(program.waitForReadyRead(answerMilliseconds));
        QCOMPARE(program.readLine(), QByteArray("19200 hardware < 1D 49 01\n"));

        ::kill(static_cast<pid_t>(program.processId()), SIGINT);
        QVERIFY(program.waitForFinished(answerMilliseconds));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(!QFileInfo(link).isSymLink());
    }

    void programEndsWhenItsFaultHungUp()
    {
        const QTemporaryDir folder;
        const QString link = folder.filePath("printer");
        QProcess program;
        program.start(VIRTUAL_PRINTER_PROGRAM, {"--model", "CUSTOM_VKP_80", "--baud", "9600",
                                                "--fault", "hangup-after=4", "--link", link});
        while (!program.canReadLine())
            QVERIFY(program.waitForReadyRead(answerMilliseconds));
        QSerialPort port(link);
        QVERIFY(port.open(QIODevice::ReadWrite));
        port.write("\x1D\x49\x01", 3);
        port.waitForBytesWritten(answerMilliseconds);
        QVERIFY(!program.waitForFinished(300));
        port.write("\x1D\x49\x01", 3);
        port.waitForBytesWritten(answerMilliseconds);
        QVERIFY(program.waitForFinished(answerMilliseconds));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        const QList<QByteArray> lines = program.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(lines.last(), QByteArray("hung up after 6 bytes"));
        QVERIFY(!QFileInfo(link).isSymLink());
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }

    void programRejectsWrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no model") << QStringList();
        QTest::newRow("unknown model") << QStringList{"--model", "NONE"};
        QTest::newRow("model that no search reports") << QStringList{"--model", "WPK_833"};
        QTest::newRow("baud rate of no printer") << QStringList{"--model", "AV_268", "--baud", "7"};
        QTest::newRow("flow control") << QStringList{"--model", "AV_268", "--flow", "both"};
        QTest::newRow("fault") << QStringList{"--model", "AV_268", "--fault", "fire"};
        QTest::newRow("fault without its number")
            << QStringList{"--model", "AV_268", "--fault", "slow"};
        QTest::newRow("fault with a number of no use")
            << QStringList{"--model", "AV_268", "--fault", "echo=1"};
        QTest::newRow("unknown option") << QStringList{"--modell", "AV_268"};
        QTest::newRow("argument too many") << QStringList{"--model", "AV_268", "x"};
    }

    void programRejectsWrongUsage()
    {
        QFETCH(QStringList, arguments);
        QProcess program;
        program.start(VIRTUAL_PRINTER_PROGRAM, arguments);
        QVERIFY(program.waitForFinished(answerMilliseconds));
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(!program.readAllStandardError().isEmpty());
        QVERIFY(program.readAllStandardOutput().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestVirtualPrinter)
#include "tst_virtualprinter.moc"
