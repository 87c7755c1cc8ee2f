// "receipt print --to" a printer: what it prints, tells and gives as its status when all goes well,
// and when printer, line or user don't let it.
#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "playedprinter.h"
#include "printerslib/drivers/devicelock.h"
#include "pseudoterminal.h"

using printerslib::drivers::DeviceLock;
using printerslib::drivers::PrinterAddress;

namespace {

const QString citizen = "CITIZEN_CTS_2000";

QStringList kiosk(const QString &address, const QStringList &options = {},
                  const QString &model = citizen)
{
    return QStringList{
               "print", example("kiosk.cpt"), example("kiosk.json"), "--to", address, "--model",
               model} +
           options;
}

QString decoded(const QByteArray &bytes, const QString &model = citizen)
{
    return runReceipt({"decode", "-", "--model", model}, bytes).output;
}

QJsonObject jsonOf(const ReceiptRun &run)
{
    return QJsonDocument::fromJson(run.output.toUtf8()).object();
}

// More than a connection takes before the printer has.
constexpr int manyMore = 15000;

/// Lines that take a while.
QByteArray manyLines(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "line " + QByteArray::number(i) + " of the receipt\n";
    return text;
}

}  // namespace

class TestReceiptPrintTo : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    QStringList longText(const QString &address, int lines = 1000,
                         const QStringList &options = {}) const
    {
        const QString file = m_folder.file("long.txt", manyLines(lines));
        return QStringList{"print", "--plain", file, "--to", address, "--model", citizen} + options;
    }

    /// A saved document whose ticket is held out, and taken back after so many seconds.
    QString heldTicket(int seconds) const
    {
        const QByteArray json =
            "{\"blocks\":[{\"align\":0,\"fmt\":[\"AA==\"],\"fnt\":[\"AA==\"],\"ls\":[0],"
            "\"txt\":[\"x\"],\"type\":0}],\"cta\":9,\"init\":true,\"loop\":0,\"pta\":0,"
            "\"rtout\":" +
            QByteArray::number(seconds) + "}";
        const QByteArray sum =
            QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex() + "  held\n";
        m_folder.file("held.sha1", sum);
        return m_folder.file("held", json);
    }

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path("config").toLocal8Bit());
        QDir(m_folder.path("")).mkpath("config/printerslib");
    }

    void receiptIsPrinted_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("confirmed as read") << citizen << "processed";
        QTest::newRow("counted by Star") << "TSP-TUP"
                                         << "printed";
        QTest::newRow("asked of Swecoin") << "SWECOIN_TM_20XX"
                                          << "printed";
    }
    void receiptIsPrinted()
    {
        QFETCH(QString, model);
        QFETCH(QString, outcome);
        PlayedPrinter printer(model);
        const ReceiptRun run = runReceipt(kiosk(printer.address(), {}, model));
        QCOMPARE(run.errors, QString());
        QVERIFY2(
            run.output.startsWith(printer.address() + ": " + outcome + ": " + model + ", paper "),
            qPrintable(run.output));
        QVERIFY2(run.output.endsWith(", 1 piece of paper\n"), qPrintable(run.output));
        QCOMPARE(run.status, 0);
        const QString paper = decoded(printer.received(), model);
        QCOMPARE(paper.count("Harbour Kiosk"), 1);
        QVERIFY2(paper.contains("Thank you!"), qPrintable(paper));
    }

    void modelThatCannotTellIsSaidToBeSo()
    {
        const QString models = m_folder.file(
            "own.json", R"([{"id": "OURS", "like": "CITIZEN_CTS_2000", "confirmation": "None"}])");
        PlayedPrinter printer;
        const ReceiptRun run = runReceipt(kiosk(printer.address(), {"--models", models}, "OURS"));
        QCOMPARE(run.errors, "receipt: " + printer.address() +
                                 ": sent: OURS can't tell whether it has printed\n");
        QVERIFY2(run.output.startsWith(printer.address() + ": sent: OURS"), qPrintable(run.output));
        QCOMPARE(run.status, 0);
    }

    void receiptIsPrintedOverASerialLine()
    {
        PlayedPrinter printer("CUSTOM_VKP_80", 57600);
        const ReceiptRun run = runReceipt(kiosk(printer.address(), {}, "CUSTOM_VKP_80"));
        // A job of another test may have been cut off on a terminal of the same number.
        QVERIFY2(run.errors.isEmpty() || run.errors.contains("a job before this one was cut off"),
                 qPrintable(run.errors));
        QVERIFY2(run.output.contains(": processed: "), qPrintable(run.output));
        QCOMPARE(run.status, 0);
    }

    void dryRunSendsNothingAndTakesTheLinesSpeed()
    {
        const ReceiptRun run = runReceipt(kiosk("serial:/dev/nowhere?baud=57600", {"--dry-run"}));
        QVERIFY2(run.output.endsWith(" s at 57600 baud\n"), qPrintable(run.output));
        QCOMPARE(run.status, 0);
        const ReceiptRun other =
            runReceipt(kiosk("serial:/dev/nowhere?baud=57600", {"--dry-run", "--baud", "9600"}));
        QVERIFY2(other.output.endsWith(" s at 9600 baud\n"), qPrintable(other.output));
    }

    void printerWithoutPaperGetsNothing()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const ReceiptRun run = runReceipt(kiosk(printer.address()));
        QVERIFY2(run.errors.contains("receipt: " + printer.address() +
                                     ": not printed: There is no paper."),
                 qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 4);
        QVERIFY(!decoded(printer.received()).contains("Harbour"));
    }

    void printerThatIsNotReachedIsTold_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("port") << "tcp:127.0.0.1:1";
        QTest::newRow("device") << "device:/dev/no-such-printer";
        QTest::newRow("serial line") << "serial:/dev/no-such-line";
        QTest::newRow("USB") << "usb:ffff:fffe";
    }
    void printerThatIsNotReachedIsTold()
    {
        QFETCH(QString, address);
        const ReceiptRun run = runReceipt(kiosk(address));
        QVERIFY2(run.errors.contains(": not printed: "), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 4);
    }

    void paperThatEndsInTheMiddleIsTold()
    {
        PlayedPrinter printer(citizen, {"--pace", "20000,0", "--at", "byte 6000:paper out"});
        const ReceiptRun run = runReceipt(longText(printer.address(), manyMore));
        const QRegularExpression fault(
            ": printed in part: There is no paper\\..*; \\d+ of \\d+ bytes went out, at most \\d+; "
            "the first that didn't stands in line \\d+\n$");
        QVERIFY2(run.errors.contains(fault), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 5);
    }

    void connectionThatIsLostIsTold()
    {
        PlayedPrinter printer(citizen, {"--pace", "20000,0", "--at", "byte 6000:reset connection"});
        const ReceiptRun run = runReceipt(longText(printer.address(), manyMore, {"--json"}));
        QCOMPARE(jsonOf(run).value("outcome").toString(), QString("partlySent"));
        QCOMPARE(jsonOf(run).value("reason").toString(), QString("line"));
        QCOMPARE(jsonOf(run).value("block").toInt(), 1);
        QVERIFY(jsonOf(run).value("line").toInt() > 0);
        QCOMPARE(jsonOf(run).value("sourceLine"), jsonOf(run).value("line"));
        QCOMPARE(run.status, 5);
    }

    void printerThatDoesNotAnswerGetsNothing()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("answers never"));
        const ReceiptRun run = runReceipt(kiosk(printer.address()));
        QVERIFY2(run.errors.contains(": not printed: the printer didn't answer"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 4);
        QVERIFY(!decoded(printer.received()).contains("Harbour"));
    }

    void confirmationThatDoesNotComeIsTold()
    {
        PlayedPrinter printer(citizen, {"--pace", "2000,0", "--at", "byte 300:answers never"});
        RunningReceipt program(kiosk(printer.address()));
        // The cut, which is the receipt's end.
        QTRY_VERIFY_WITH_TIMEOUT(printer.received().contains(QByteArray::fromHex("1D5600")),
                                 printerPatience);
        program.interrupt();
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.contains(": sent: cancelled "), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 3);
    }

    void lineWithoutAWayBackIsNotAsked()
    {
        const SilentPort port;
        RunningReceipt program(kiosk(port.address(), {"--one-way"}));
        QVERIFY(port.getsSomething());
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors,
                 "receipt: " + port.address() + ": sent: it isn't asked whether it has printed\n");
        QVERIFY2(run.output.contains(": sent: " + citizen), qPrintable(run.output));
        QCOMPARE(run.status, 0);
    }

    void paperIsWaitedForIfToldSo()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        RunningReceipt program(kiosk(printer.address(), {"--wait-for-paper"}));
        QVERIFY(program.errorLine().contains(": the paper is near its end"));
        QVERIFY(program.errorLine().startsWith("receipt: " + printer.address() +
                                               ": waiting for the printer: There is no paper."));
        QVERIFY(printer.befall("paper back"));
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, "receipt: " + printer.address() + ": goes on\n");
        QVERIFY2(run.output.contains(": processed: "), qPrintable(run.output));
        QCOMPARE(run.status, 0);
        QCOMPARE(decoded(printer.received()).count("Harbour Kiosk"), 1);
    }

    void interruptEndsTheWaitForPaper_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("Ctrl+C") << SIGINT;
        QTest::newRow("request to end") << SIGTERM;
    }
    void interruptEndsTheWaitForPaper()
    {
        QFETCH(int, signal);
        PlayedPrinter printer;
        QVERIFY(printer.befall("cover open"));
        RunningReceipt program(kiosk(printer.address(), {"--wait-for-paper"}));
        QVERIFY(!program.errorLine().isEmpty());
        program.interrupt(signal);
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, "receipt: " + printer.address() + ": not printed: cancelled\n");
        QCOMPARE(run.status, 4);
        QVERIFY(!decoded(printer.received()).contains("Harbour"));
    }

    void interruptStopsAReceiptInItsMiddle()
    {
        PlayedPrinter printer(citizen, {"--pace", "20000,0"});
        RunningReceipt program(longText(printer.address(), manyMore));
        QTRY_VERIFY_WITH_TIMEOUT(printer.received().contains("line 5 of"), printerPatience);
        program.interrupt();
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.contains(": stops; Ctrl+C again ends the program at once\n"),
                 qPrintable(run.errors));
        QVERIFY2(run.errors.contains(": printed in part: cancelled; "), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 5);
        // Reset and cut at the end of a command; the receipt has begun with a reset, too.
        const QByteArray reset = QByteArray::fromHex("1B40");
        QTRY_COMPARE_WITH_TIMEOUT(printer.received().count(reset), 2, printerPatience);
        const QByteArray bytes = printer.received();
        QVERIFY2(bytes.mid(bytes.lastIndexOf(reset)).contains(QByteArray::fromHex("1D56")),
                 bytes.right(20).toHex(' ').constData());
        QVERIFY(!bytes.contains("line " + QByteArray::number(manyMore - 1) + " of"));
    }

    void secondInterruptEndsTheProgramAtOnce()
    {
        PlayedPrinter printer(citizen, {"--pace", "200,0"});
        RunningReceipt program(longText(printer.address(), manyMore));
        QTRY_VERIFY_WITH_TIMEOUT(printer.received().contains("line 1 of"), printerPatience);
        program.interrupt();
        QVERIFY(program.errorLine().endsWith(": stops; Ctrl+C again ends the program at once"));
        program.interrupt();
        QVERIFY(program.waitForFinished(printerPatience));
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    }

    void placeInTheQueueIsTold()
    {
        PlayedPrinter printer;
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        RunningReceipt program(kiosk(printer.address()));
        QCOMPARE(program.errorLine(),
                 "receipt: " + printer.address() + ": waiting, 1 job is in front");
        lock.release();
        QCOMPARE(program.result().status, 0);
    }

    /// As on standard error, by the lines of the text, with those that are too long.
    void jsonHasTheNotes()
    {
        PlayedPrinter printer;
        const QString file =
            m_folder.file("notes.txt", "good\n\n<27>bad\n" + QByteArray(100, 'x') + "\n<N>askew\n");
        const ReceiptRun run = runReceipt(
            {"print", "--plain", file, "--to", printer.address(), "--model", citizen, "--json"});
        const QStringList notes{
            "line 3: the code 27 (0x1B) isn't printed",
            "line 4: \"" + QString(40, 'x') +
                "...\" is too long for the paper: its 100 characters take 2 rows",
            "line 5: the model prints no text that is italic"};
        QCOMPARE(jsonOf(run).value("notes"), QJsonValue(QJsonArray::fromStringList(notes)));
        QString told;
        for (const QString &note : notes)
            told += "receipt: " + file + ": " + note + "\n";
        QCOMPARE(run.errors, told);
        QCOMPARE(jsonOf(run).value("sourceLine"), QJsonValue(0));
    }

    void jsonTellsWhatIsKnown()
    {
        PlayedPrinter printer;
        const ReceiptRun run = runReceipt(kiosk(printer.address(), {"--json"}));
        const QJsonObject json = jsonOf(run);
        QCOMPARE(json.keys(), (QStringList{"block", "line", "model", "mostBytes", "notes",
                                           "outcome", "pieces", "printer", "reason", "sentBytes",
                                           "sourceLine", "status", "text", "totalBytes"}));
        QCOMPARE(json.value("printer").toString(), printer.address());
        QCOMPARE(json.value("outcome").toString(), QString("processed"));
        QCOMPARE(json.value("reason").toString(), QString("none"));
        QCOMPARE(json.value("pieces").toInt(), 1);
        QCOMPARE(json.value("sentBytes"), json.value("totalBytes"));
        QCOMPARE(json.value("status").toObject().value("paperOut").toBool(true), false);
        QVERIFY(printer.befall("paper out"));
        const ReceiptRun out = runReceipt(kiosk(printer.address(), {"--json"}));
        QCOMPARE(jsonOf(out).value("outcome").toString(), QString("notBegun"));
        QCOMPARE(jsonOf(out).value("reason").toString(), QString("status"));
        QCOMPARE(jsonOf(out).value("sentBytes").toInt(-1), 0);
        QVERIFY(!out.errors.isEmpty());
        QCOMPARE(out.status, 4);
    }

    void repeatSaysThatItIsOne_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("word");
        QTest::newRow("no language") << QStringList() << "REPEAT";
        QTest::newRow("English") << QStringList{"--language", "en"} << "REPEAT";
        QTest::newRow("German") << QStringList{"--language", "de"} << "WIEDERHOLUNG";
        QTest::newRow("Russian") << QStringList{"--language", "ru"} << "ПОВТОР";
    }
    void repeatSaysThatItIsOne()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, word);
        PlayedPrinter printer;
        const ReceiptRun run =
            runReceipt(kiosk(printer.address(), QStringList("--repeat") + options));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(decoded(printer.received()).section('\n', 0, 0).trimmed(), word);
        QCOMPARE(decoded(printer.received()).section('\n', 1, 1).trimmed(),
                 QString("Harbour Kiosk"));
    }

    void repeatInAFileSaysThatItIsOne()
    {
        const QString file = m_folder.path("repeat.bin");
        QCOMPARE(runReceipt(kiosk("file:" + file, {"--repeat"})).status, 0);
        QVERIFY(decoded(m_folder.content("repeat.bin")).trimmed().startsWith("REPEAT\n"));
    }

    void sparePrinterTakesThePlaceOfOneWithoutPaper()
    {
        PlayedPrinter first;
        PlayedPrinter spare("TSP-TUP");
        QVERIFY(first.befall("paper out"));
        const QStringList options{"--spare", spare.address(), "--spare-model", "TSP-TUP"};
        const ReceiptRun run = runReceipt(kiosk(first.address(), options));
        QVERIFY2(run.errors.contains("receipt: " + first.address() +
                                     ": not printed: There is no paper."),
                 qPrintable(run.errors));
        QVERIFY2(run.errors.endsWith("receipt: " + spare.address() + " takes its place\n"),
                 qPrintable(run.errors));
        QVERIFY2(run.output.startsWith(spare.address() + ": printed: TSP-TUP"),
                 qPrintable(run.output));
        QCOMPARE(run.status, 0);
        QVERIFY(!decoded(first.received()).contains("Harbour"));
        const QString paper = decoded(spare.received(), "TSP-TUP");
        QCOMPARE(paper.count("Harbour Kiosk"), 1);
        QVERIFY(!paper.contains("REPEAT"));
    }

    void sparePrinterTakesThePlaceOfOneThatIsNotReached()
    {
        PlayedPrinter spare;
        const ReceiptRun run =
            runReceipt(kiosk("tcp:127.0.0.1:1", {"--spare", spare.address(), "--json"}));
        QCOMPARE(jsonOf(run).value("printer").toString(), spare.address());
        QCOMPARE(jsonOf(run).value("outcome").toString(), QString("processed"));
        QCOMPARE(run.status, 0);
    }

    void whatIsNotPrintedIsToldOnceOfTwoPrintersOfAModel_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("count");
        const QString star = "TSP-TUP";
        QTest::newRow("its model isn't named") << citizen << QStringList() << 1;
        QTest::newRow("the same model") << citizen << QStringList({"--spare-model", citizen}) << 1;
        QTest::newRow("another model") << star << QStringList({"--spare-model", star}) << 2;
    }
    void whatIsNotPrintedIsToldOnceOfTwoPrintersOfAModel()
    {
        QFETCH(QString, model);
        QFETCH(QStringList, options);
        QFETCH(int, count);
        PlayedPrinter spare(model);
        const QString file = m_folder.file("tea.txt", "Tea \xE8\xAA\x9E 1\n");
        const ReceiptRun run =
            runReceipt(QStringList{"print", "--plain", file, "--to", "tcp:127.0.0.1:1", "--model",
                                   citizen, "--spare", spare.address()} +
                       options);
        QVERIFY2(run.errors.count(file + ": line 1: ") == count, qPrintable(run.errors));
        QVERIFY2(decoded(spare.received(), model).startsWith("Tea "), qPrintable(run.errors));
        QCOMPARE(run.status, 0);
    }

    void sparePrinterIsLeftAloneWhileTheFirstOnePrints()
    {
        PlayedPrinter first;
        PlayedPrinter spare;
        QCOMPARE(runReceipt(kiosk(first.address(), {"--spare", spare.address()})).status, 0);
        QCOMPARE(spare.received(), QByteArray());
    }

    void bothPrintersFaultsAreTold()
    {
        PlayedPrinter first;
        PlayedPrinter spare;
        QVERIFY(first.befall("paper out"));
        QVERIFY(spare.befall("cover open"));
        const ReceiptRun run = runReceipt(kiosk(first.address(), {"--spare", spare.address()}));
        QVERIFY2(run.errors.contains("There is no paper."), qPrintable(run.errors));
        QVERIFY2(run.errors.contains(spare.address() + ": not printed: The cover is open."),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 4);
    }

    void sparePrinterGetsNothingOfWhatHasBegun()
    {
        PlayedPrinter first(citizen, {"--pace", "20000,0", "--at", "byte 6000:paper out"});
        PlayedPrinter spare;
        const ReceiptRun run =
            runReceipt(longText(first.address(), manyMore, {"--spare", spare.address()}));
        QCOMPARE(run.status, 5);
        QCOMPARE(spare.received(), QByteArray());
    }

    void sparePrinterRepeatsWhatHasBegunIfToldSo()
    {
        PlayedPrinter first(citizen, {"--pace", "20000,0", "--at", "byte 6000:paper out"});
        PlayedPrinter spare;
        const ReceiptRun run = runReceipt(
            longText(first.address(), manyMore, {"--spare", spare.address(), "--spare-repeats"}));
        QVERIFY2(run.errors.contains(": printed in part: There is no paper."),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 0);
        const QByteArray bytes = spare.received();
        QVERIFY(decoded(bytes).trimmed().startsWith("REPEAT\nline 0 of"));
        QVERIFY(bytes.contains("line " + QByteArray::number(manyMore - 1) + " of"));
    }

    void sparePrinterRepeatsWhatIsNotConfirmedIfToldSo()
    {
        // The line has taken all long before.
        const QStringList outOfPaper{"--pace", "400,0", "--at", "byte 200:paper out"};
        PlayedPrinter first(citizen, outOfPaper);
        PlayedPrinter spare;
        const ReceiptRun alone = runReceipt(kiosk(first.address(), {"--spare", spare.address()}));
        QVERIFY2(alone.errors.contains(": sent: There is no paper."), qPrintable(alone.errors));
        QCOMPARE(alone.status, 3);
        QCOMPARE(spare.received(), QByteArray());
        PlayedPrinter other(citizen, outOfPaper);
        const ReceiptRun run =
            runReceipt(kiosk(other.address(), {"--spare", spare.address(), "--spare-repeats"}));
        QCOMPARE(run.status, 0);
        QVERIFY(decoded(spare.received()).trimmed().startsWith("REPEAT\n"));
        QCOMPARE(run.output, runReceipt(kiosk(spare.address(), {"--repeat"})).output);
    }

    void sparePrinterIsNotForWhatTheUserCancels()
    {
        PlayedPrinter first;
        PlayedPrinter spare;
        DeviceLock lock(*PrinterAddress::parse(first.address()));
        QVERIFY(lock.waitFor(500));
        RunningReceipt program(kiosk(first.address(), {"--spare", spare.address()}));
        QVERIFY(!program.errorLine().isEmpty());
        program.interrupt();
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, "receipt: " + first.address() + ": not printed: cancelled\n");
        QCOMPARE(run.status, 4);
        QCOMPARE(spare.received(), QByteArray());
    }

    void sparePrinterIsNotForALineThatFailsWhileTheUserCancels()
    {
        QTcpServer first;
        QVERIFY(first.listen(QHostAddress::LocalHost));
        PlayedPrinter spare;
        const QString address = QString("tcp:127.0.0.1:%1").arg(first.serverPort());
        RunningReceipt program(longText(
            address, manyMore, {"--one-way", "--spare", spare.address(), "--spare-repeats"}));
        QVERIFY(first.waitForNewConnection(printerPatience));
        QTcpSocket *const line = first.nextPendingConnection();
        line->setReadBufferSize(1);
        QVERIFY(line->waitForReadyRead(printerPatience));
        program.interrupt();
        // Another test's job may have been cut off at this port.
        QString told;
        do {
            told = program.errorLine();
        } while (told.contains(": a job before this one "));
        QVERIFY2(told.endsWith(": stops; Ctrl+C again ends the program at once"), qPrintable(told));
        line->abort();
        const ReceiptRun run = program.result();
        QVERIFY2(run.errors.startsWith("receipt: " + address + ": printed in part: "),
                 qPrintable(run.errors));
        QVERIFY2(!run.errors.contains("takes its place"), qPrintable(run.errors));
        QCOMPARE(run.status, 5);
        QCOMPARE(spare.received(), QByteArray());
    }

    void ticketThatIsHeldOutIsTakenBack()
    {
        PlayedPrinter printer("CUSTOM_VKP_80", QStringList());
        const QStringList call{"print",           "--document", heldTicket(1),  "--to",
                               printer.address(), "--model",    "CUSTOM_VKP_80"};
        const ReceiptRun run = runReceipt(call);
        QCOMPARE(run.errors,
                 "receipt: " + printer.address() +
                     ": the ticket is held out, and taken back in 1 s; Ctrl+C leaves it\n");
        QVERIFY2(run.output.contains(": processed: "), qPrintable(run.output));
        QCOMPARE(run.status, 0);
        QTRY_VERIFY_WITH_TIMEOUT(printer.received().endsWith(QByteArray::fromHex("1D6502")),
                                 printerPatience);
    }

    void interruptLeavesATicketThatIsHeldOut()
    {
        PlayedPrinter printer("CUSTOM_VKP_80", QStringList());
        RunningReceipt program({"print", "--document", heldTicket(3000), "--to", printer.address(),
                                "--model", "CUSTOM_VKP_80"});
        QVERIFY(program.errorLine().contains("Ctrl+C leaves it"));
        program.interrupt();
        const ReceiptRun run = program.result();
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(!printer.received().contains(QByteArray::fromHex("1D6502")));
    }

    void strictRefusesBeforeThePrinterIsReached()
    {
        const QString file = m_folder.file("bell.txt",
                                           "a\x07"
                                           "b\n");
        PlayedPrinter printer;
        const ReceiptRun run = runReceipt(
            {"print", "--plain", file, "--to", printer.address(), "--model", citizen, "--strict"});
        QVERIFY2(run.errors.endsWith("not printed, as that isn't all of it\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
        QCOMPARE(printer.received(), QByteArray());
    }

    void printerOfTheConfigurationIsPrintedOn()
    {
        PlayedPrinter printer;
        m_folder.file(
            "config/printerslib/receipt.conf",
            "to=" + printer.address().toUtf8() + "\nmodel=" + citizen.toUtf8() + "\npaper=1\n");
        const QStringList call{"print", example("kiosk.cpt"), example("kiosk.json")};
        const ReceiptRun run = runReceipt(call);
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith(printer.address() + ": processed: " + citizen),
                 qPrintable(run.output));
        const ReceiptRun other = runReceipt(call + QStringList{"--to", "-", "--paper", "0"});
        QFile::remove(m_folder.path("config/printerslib/receipt.conf"));
        QCOMPARE(other.status, 0);
        QVERIFY(run.output.section(", paper ", 1).section(':', 0, 0) != "80 mm");
    }

    void programWithoutStandardStreamsPrints()
    {
        PlayedPrinter printer;
        QProcess process;
        process.start("sh", QStringList{"-c", "exec \"$@\" <&- >&- 2>&-", "sh", RECEIPT_PROGRAM} +
                                kiosk(printer.address()));
        QVERIFY(process.waitForFinished(printerPatience));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(decoded(printer.received()).count("Harbour Kiosk"), 1);
    }

    void readerThatHasGoneDoesNotCancelAReceipt()
    {
        // Over TCP Qt would see to it.
        const QString model = "CUSTOM_VKP_80";
        PlayedPrinter printer(model, 57600);
        QVERIFY(printer.befall("paper out"));
        QProcess process;
        const QStringList call{"-o",   "pipefail",     "-c", "\"$@\" 2>&1 >/dev/null | head -n 1",
                               "bash", RECEIPT_PROGRAM};
        process.start("bash", call + kiosk(printer.address(), {"--wait-for-paper"}, model));
        QVERIFY(process.waitForReadyRead(printerPatience));
        QVERIFY(printer.befall("paper back"));
        QVERIFY(process.waitForFinished(printerPatience));
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(decoded(printer.received(), model).count("Harbour Kiosk"), 1);
    }

    void fullOutputDoesNotMakeAPrintedReceiptAFailure()
    {
        PlayedPrinter printer;
        for (const QStringList &options : {QStringList(), QStringList{"--json"}}) {
            QProcess process;
            process.setStandardOutputFile("/dev/full");
            process.start(RECEIPT_PROGRAM, kiosk(printer.address(), options));
            const ReceiptRun run = finished(process);
            QVERIFY2(run.errors.startsWith("receipt: standard output: "), qPrintable(run.errors));
            QCOMPARE(run.errors.count('\n'), 1);
            QCOMPARE(run.status, 0);
        }
    }

    void terminalShowsHowFarItIs()
    {
        PlayedPrinter printer(citizen, {"--pace", "150000,0"});
        PseudoTerminal terminal;
        QProcess process;
        process.setStandardErrorFile(terminal.path());
        process.start(RECEIPT_PROGRAM, longText(printer.address(), manyMore));
        QByteArray shown;
        while (process.state() != QProcess::NotRunning) {
            process.waitForFinished(50);
            shown += terminal.read();
        }
        QVERIFY2(shown.contains("printing: "), shown.constData());
        QVERIFY(shown.endsWith("\r\x1B[K"));
        QCOMPARE(process.exitCode(), 0);
    }

    void wrongUsageIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QStringList &options, const char *complaint) {
            QTest::newRow(name) << options << QString(complaint);
        };
        const QString file = "file:" + m_folder.path("x.bin");
        const char needs[] =
            "--wait-for-paper, --one-way, --json, --spare, --queue and --later need a printer";
        row("waiting of a file", kiosk(file, {"--wait-for-paper"}), needs);
        row("JSON of a file", kiosk(file, {"--json"}), needs);
        row("one way of standard output", kiosk("-", {"--one-way"}), needs);
        row("spare of a file", kiosk(file, {"--spare", "tcp:b"}), needs);
        row("spare that is none", kiosk("tcp:a", {"--spare", "b"}), "--spare: \"b\" is no printer");
        row("spare that is a file", kiosk("tcp:a", {"--spare", file}), "is a file");
        row("spare that is the same", kiosk("tcp:a", {"--spare", "tcp:a:9100"}),
            "--spare: tcp:a:9100 is the printer of --to");
        row("model of no spare", kiosk("tcp:a", {"--spare-model", citizen}), "need --spare");
        row("repeats of no spare", kiosk("tcp:a", {"--spare-repeats"}), "need --spare");
        row("unknown model of the spare",
            kiosk("tcp:a", {"--spare", "tcp:b", "--spare-model", "TYPEWRITER"}),
            "there is no model \"TYPEWRITER\"");
        row("spare and waiting", kiosk("tcp:a", {"--spare", "tcp:b", "--wait-for-paper"}),
            "--wait-for-paper and --spare exclude each other");
    }
    void wrongUsageIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void pageShowsWhatItPrints()
    {
        QFile page(PRINTERSLIB_EXAMPLES "/../docs/printing.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        QString shown =
            QString::fromUtf8(page.readAll())
                .section("<!-- receipt print with --spare, behind \"paper out\" -->\n```\n", 1)
                .section("```\n", 0, 0);
        PlayedPrinter first;
        PlayedPrinter spare;
        QVERIFY(first.befall("paper out"));
        const ReceiptRun run = runReceipt(kiosk(first.address(), {"--spare", spare.address()}));
        shown.replace("tcp:192.168.0.5:9100", first.address());
        shown.replace("tcp:192.168.0.6:9100", spare.address());
        QCOMPARE(run.errors + run.output, shown);
    }

    void helpTellsTheExitStatuses()
    {
        const QString help = runReceipt({"print", "--help"}).output.simplified();
        for (const char *words : {"0 printed, processed, or sent", "3 sent, but", "4 not printed",
                                  "5 some of it", "1 bad input", "2 wrong usage"})
            QVERIFY2(help.contains(words), words);
    }
};

QTEST_GUILESS_MAIN(TestReceiptPrintTo)
#include "tst_receipt_print_to.moc"
