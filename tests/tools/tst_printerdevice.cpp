// A receipt printer in the process, without its line: what it prints, answers, keeps and loses.
#include <printerslib/drivers/printermodels.h>
#include <rapidcheck.h>

#include <QTemporaryFile>
#include <QtTest>

#include "printerdevice.h"
#include "virtualprintermodels.h"

namespace {

using printerslib::drivers::Paper;
using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamInterpreter;

const QByteArray cut("\x1DVB\x00", 4);  // fed to the cutter first
const QByteArray idle = QByteArray::fromHex("1000000F");

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QByteArray realTime(int n)
{
    return hex("1004") + static_cast<char>(n);
}

PrinterProfile profileOf(const QString &id)
{
    return PrinterProfile::forModel(id).value_or(PrinterProfile());
}

/// A general Epson printer that says when a job is on the paper.
PrinterProfile respondingProfile()
{
    QTemporaryFile file;
    file.open();
    file.write(R"([{"id": "R", "like": "GENERAL_EPSON_PROTOCOL", "confirmation": "ResponseId"}])");
    file.close();
    PrinterModels models;
    models.addFile(file.fileName());
    return models.profile("R").value_or(PrinterProfile());
}

void befall(PrinterDevice &device, const QString &text)
{
    QString error;
    const auto fault = printerFault(text, &error);
    QVERIFY2(fault, qPrintable(error));
    device.apply(*fault);
}

void planFor(PrinterDevice &device, const QString &text)
{
    QString error;
    const auto fault = plannedFault(text, &error);
    QVERIFY2(fault, qPrintable(error));
    device.plan(*fault);
}

QByteArray ask(PrinterDevice &device, const QByteArray &question)
{
    device.take(question);
    return device.takeAnswers();
}

QString textOf(const QVector<Paper> &papers)
{
    QString text;
    for (const Paper &paper : papers)
        text += paper.toText();
    return text;
}

/// All that is on the paper by now.
QString printedBy(PrinterDevice &device)
{
    return textOf(device.finish());
}

/// A printer that moves a line in 100 ms.
PrinterDevice::Options slowHead(const PrinterProfile &profile)
{
    PrinterDevice::Options options;
    options.millimetresPerSecond = 10 * 25.4 * profile.lineSpacing() / profile.dotsPerInch();
    return options;
}

constexpr qint64 lineTime = 100'000;

}  // namespace

class TestPrinterDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFaultHasItsBits_data()
    {
        QTest::addColumn<QStringList>("faults");
        QTest::addColumn<QByteArray>("realTimeStatuses");  // DLE EOT 1 to 4
        QTest::addColumn<QByteArray>("automaticStatus");
        QTest::newRow("none") << QStringList() << hex("12121212") << idle;
        QTest::newRow("paper out")
            << QStringList{"paper out"} << hex("1A32127E") << hex("18000F0F");
        QTest::newRow("near end") << QStringList{"near end"} << hex("1212121E") << hex("1000030F");
        QTest::newRow("cover open")
            << QStringList{"cover open"} << hex("1A161212") << hex("3800000F");
        QTest::newRow("cutter error")
            << QStringList{"cutter error"} << hex("1A521A12") << hex("1808000F");
        QTest::newRow("off line") << QStringList{"off line"} << hex("1A121212") << hex("1800000F");
        QTest::newRow("all of them")
            << QStringList{"paper out", "cover open", "cutter error", "off line"} << hex("1A761A7E")
            << hex("38080F0F");
        QTest::newRow("paper back")
            << QStringList{"near end", "paper out", "paper back"} << hex("12121212") << idle;
        QTest::newRow("cover closed")
            << QStringList{"cover open", "cover closed"} << hex("12121212") << idle;
        QTest::newRow("cutter repaired")
            << QStringList{"cutter error", "cutter repaired"} << hex("12121212") << idle;
        QTest::newRow("on line") << QStringList{"off line", "on line"} << hex("12121212") << idle;
        QTest::newRow("power on") << QStringList{"off line", "power off", "power on"}
                                  << hex("12121212") << idle;
    }

    void eachFaultHasItsBits()
    {
        QFETCH(QStringList, faults);
        PrinterDevice device((PrinterProfile()));
        for (const QString &fault : faults)
            befall(device, fault);
        QByteArray statuses;
        for (int n = 1; n <= 4; ++n)
            statuses += ask(device, realTime(n));
        QTEST(statuses, "realTimeStatuses");
        QFETCH(QByteArray, automaticStatus);
        if (!device.hardware().isStopped())
            QCOMPARE(ask(device, hex("1D610E")), automaticStatus);
        PrinterDevice told((PrinterProfile()));
        QCOMPARE(ask(told, hex("1D610E")), idle);
        for (const QString &fault : faults)
            befall(told, fault);
        const QByteArray changes = told.takeAnswers();
        if (!faults.isEmpty() && !faults.contains("power off"))
            QCOMPARE(changes.right(4), automaticStatus);
    }

    void sensorsAreToldInTurn()
    {
        PrinterDevice device((PrinterProfile()));
        QCOMPARE(ask(device, hex("1B76")), hex("00"));
        QCOMPARE(ask(device, hex("1B7500")), hex("00"));
        QCOMPARE(ask(device, hex("1D7201")), hex("00"));
        QCOMPARE(ask(device, hex("1D7232")), hex("00"));
        QCOMPARE(ask(device, hex("1D7263")), hex(""));
        befall(device, "near end");
        QCOMPARE(ask(device, hex("1B76")), hex("03"));
        QCOMPARE(ask(device, hex("1D7231")), hex("03"));
    }

    void customTellsItsFullStatus()
    {
        PrinterDevice device(profileOf("CUSTOM_VKP_80"));
        QCOMPARE(ask(device, realTime(20)), hex("100F00000000"));
        befall(device, "paper out");
        befall(device, "cover open");
        befall(device, "cutter error");
        QCOMPARE(ask(device, realTime(20)), hex("100F05020001"));
        PrinterDevice general((PrinterProfile()));
        QCOMPARE(ask(general, realTime(20)), QByteArray());
    }

    void identificationHasTextsOfTheModel()
    {
        PrinterDevice device(profileOf("CITIZEN_CTS_2000"));
        QCOMPARE(ask(device, hex("1D4901")), hex("51"));
        QCOMPARE(ask(device, hex("1D4942")), QByteArray("_CITIZEN\0", 9));
        QCOMPARE(ask(device, hex("1D4943")), QByteArray("_CITIZEN_CTS_2000\0", 18));
        QCOMPARE(ask(device, hex("1D49FF")), QByteArray());
    }

    void searchGetsItsAnswers_data()
    {
        QTest::addColumn<QString>("id");
        const QStringList ids = virtualModelIds();
        for (const QString &id : ids)
            QTest::newRow(qPrintable(id)) << id;
    }

    /// Star's printers answer ESC ACK SOH with more bytes than a search looks at.
    void searchGetsItsAnswers()
    {
        QFETCH(QString, id);
        PrinterDevice device(profileOf(id));
        const QVector<VirtualReply> replies = virtualModel(id)->replies;
        for (const VirtualReply &reply : replies) {
            const QByteArray answer = ask(device, reply.request);
            if (reply.request == hex("1B0601"))
                QCOMPARE(answer.at(0) & 0xD1, 0x01);
            else if (reply.request != hex("01020304"))
                QCOMPARE(answer, reply.answers.value(0));
        }
    }

    void searchIsNotAnsweredByOtherModels()
    {
        for (const char *const id : {"AV_268", "CITIZEN_PPU_231"}) {
            PrinterDevice device(profileOf(id));
            QCOMPARE(ask(device, hex("1D49011D4931")), QByteArray());
            QCOMPARE(ask(device, hex("1B05071B05011B06111B0612")), QByteArray());
            QCOMPARE(ask(device, hex("1B1E60021B0601")), QByteArray());
            QCOMPARE(ask(device, hex("01020304")), QByteArray());
        }
    }

    void paperIsThatOfTheInterpreter()
    {
        const QByteArray stream =
            "Hello\n\x1B!\x30"
            "Big\n" +
            cut + "second\n";
        PrinterDevice device((PrinterProfile()));
        device.take(stream);
        QCOMPARE(textOf(device.takePapers()), QString("Hello\nBig\n[cut]\n"));
        QCOMPARE(printedBy(device), QString("second\n"));
        QVERIFY(device.isIdle());
        QCOMPARE(device.bytesLost(), 0LL);
        QCOMPARE(device.bytesReceived(), qint64(stream.size()));
    }

    void paperIsTheSameHoweverBytesCome()
    {
        const bool holds = rc::check([] {
            const auto bytes = *rc::gen::container<std::string>(rc::gen::weightedOneOf<char>(
                {{3, rc::gen::elementOf(std::string("\x1B\x1D\x10\x04\x0A\x01\x02@V!avk"))},
                 {1, rc::gen::arbitrary<char>()}}));
            const auto piece = *rc::gen::inRange(1, 9);
            const QByteArray stream = QByteArray::fromStdString(bytes);
            PrinterDevice::Options options;
            options.bufferBytes = *rc::gen::inRange(16, 40);
            PrinterDevice device(PrinterProfile(), options);
            for (int at = 0; at < stream.size(); at += piece)
                device.take(stream.mid(at, piece));
            RC_ASSERT(device.bytesLost() == 0);
            QVector<Paper> papers = StreamInterpreter::papersOf(
                stream.left(stream.size() - device.bytesOfOpenCommand()), PrinterProfile());
            RC_ASSERT(printedBy(device).toStdString() == textOf(papers).toStdString());
        });
        QVERIFY(holds);
    }

    void atOnceIsAnsweredOnlyOnce_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("by itself") << QByteArray() << QByteArray();
        QTest::newRow("among text") << QByteArray("abc") << QByteArray("def\n");
        QTest::newRow("inside a picture") << hex("1D76300001000500FF") << hex("00");
        QTest::newRow("inside a picture that has only begun")
            << hex("1D7630004800FF00FF") << QByteArray();
        QTest::newRow("behind a beginning of itself") << hex("1010") << QByteArray();
    }

    void atOnceIsAnsweredOnlyOnce()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        for (int cutAt = 0; cutAt <= 3; ++cutAt) {
            PrinterDevice device((PrinterProfile()));
            device.take(before + realTime(4).left(cutAt));
            const QByteArray first = device.takeAnswers();
            QCOMPARE(first, cutAt == 3 ? hex("12") : QByteArray());
            device.take(realTime(4).mid(cutAt) + after);
            QCOMPARE(first + device.takeAnswers(), hex("12"));
        }
    }

    void atOnceIsAnsweredWhileItIsStopped_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("repair");
        QTest::newRow("paper") << "paper out"
                               << "paper back";
        QTest::newRow("cover") << "cover open"
                               << "cover closed";
        QTest::newRow("cutter") << "cutter error"
                                << "cutter repaired";
        QTest::newRow("line") << "off line"
                              << "on line";
    }

    void atOnceIsAnsweredWhileItIsStopped()
    {
        QFETCH(QString, fault);
        QFETCH(QString, repair);
        PrinterDevice device((PrinterProfile()));
        device.take("first\n");
        befall(device, fault);
        device.take("second\n" + hex("1D7201"));
        QCOMPARE(device.takeAnswers(), QByteArray());
        QCOMPARE(ask(device, realTime(1)), hex("1A"));
        QCOMPARE(device.bytesWaiting(), 13);
        device.take("third\n" + cut);
        QVERIFY(device.takePapers().isEmpty());
        befall(device, repair);
        QCOMPARE(device.takeAnswers(), hex("00"));
        QCOMPARE(textOf(device.takePapers()), QString("first\nsecond\nthird\n[cut]\n"));
        QCOMPARE(device.bytesWaiting(), 0);
    }

    void twoFaultsStopUntilBothAreRepaired()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "cover open");
        befall(device, "paper out");
        device.take("a\n" + cut);
        befall(device, "paper back");
        QVERIFY(device.takePapers().isEmpty());
        befall(device, "cover closed");
        QCOMPARE(textOf(device.takePapers()), QString("a\n[cut]\n"));
    }

    void nearEndStopsNothing()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "near end");
        device.take("a\n" + cut);
        QCOMPARE(textOf(device.takePapers()), QString("a\n[cut]\n"));
        QCOMPARE(ask(device, realTime(1)), hex("12"));
    }

    void bufferThrowsAwayWhatDoesNotFit()
    {
        PrinterDevice::Options options;
        options.bufferBytes = 10;
        PrinterDevice device(PrinterProfile(), options);
        QCOMPARE(device.room(), 10);
        befall(device, "paper out");
        device.take("12345\n789\nlost\n");
        QCOMPARE(device.room(), 0);
        QCOMPARE(device.bytesLost(), 5LL);
        QCOMPARE(device.takeNotes(), QStringList("lost: 5 bytes, as the buffer of 10 was full"));
        QCOMPARE(device.takeNotes(), QStringList());
        QCOMPARE(ask(device, realTime(4)), hex("7E"));
        QCOMPARE(device.bytesLost(), 8LL);
        befall(device, "paper back");
        QCOMPARE(device.room(), 10);
        device.take("more\n");
        QCOMPARE(printedBy(device), QString("12345\n789\nmore\n"));
    }

    void picturesGreaterThanTheBufferArePrinted()
    {
        PrinterDevice::Options options;
        options.bufferBytes = 64;
        PrinterDevice device(PrinterProfile(), options);
        device.take(hex("1D76300048006400") + QByteArray(72 * 100, '\x55') + "below\n");
        QCOMPARE(device.bytesLost(), 0LL);
        QCOMPARE(printedBy(device), QString("[picture 576 x 100]\nbelow\n"));
    }

    void bufferIsTheModels()
    {
        QCOMPARE(PrinterDevice(profileOf("CITIZEN_CTS_2000")).room(), 4096);
        QCOMPARE(PrinterDevice(profileOf("AV_268")).room(), PrinterDevice::usualBuffer);
    }

    void busyEndsWithMoreRoomThanItBeganWith()
    {
        const auto befallAtRoom = [](int bufferBytes, int busy, int free) {
            PrinterDevice::Options options;
            options.bufferBytes = bufferBytes;
            const PrinterProfile profile;
            options.millimetresPerSecond = slowHead(profile).millimetresPerSecond;
            PrinterDevice device(profile, options);
            device.take("\n");
            device.take(QByteArray(bufferBytes - busy - 1, '\n'));
            QVERIFY(!device.isBusy());
            device.take("\n");
            QVERIFY(device.isBusy());
            device.advanceTo((free - busy - 1) * lineTime);
            QCOMPARE(device.room(), free - 1);
            QVERIFY(device.isBusy());
            device.advanceTo((free - busy) * lineTime);
            QVERIFY(!device.isBusy());
        };
        befallAtRoom(4096, 128, 256);
        befallAtRoom(45, 16, 26);
    }

    void powerOffLosesBufferAndState()
    {
        PrinterDevice device((PrinterProfile()));
        QCOMPARE(ask(device, hex("1D610E")), idle);
        device.take("on paper\nbegun " + hex("1B4501") + "a line");
        befall(device, "paper out");
        device.takeAnswers();
        device.take("waits\n");
        befall(device, "power off");
        QCOMPARE(device.bytesWaiting(), 0);
        QCOMPARE(textOf(device.takePapers()), QString("on paper\n"));
        device.take("nobody hears\n" + realTime(1));
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "paper back");
        befall(device, "power on");
        QCOMPARE(device.takeAnswers(), QByteArray());
        device.take("new\n" + cut);
        const QVector<Paper> papers = device.takePapers();
        QCOMPARE(textOf(papers), QString("new\n[cut]\n"));
        QCOMPARE(int(papers.value(0).cells.value(0).effects), 0);
    }

    void powerOffInsideAPictureLosesIt()
    {
        PrinterDevice device((PrinterProfile()));
        device.take(hex("1D76300048006400") + QByteArray(100, '\x55'));
        befall(device, "power off");
        befall(device, "power on");
        device.take("text\n");
        QCOMPARE(printedBy(device), QString("text\n"));
    }

    void statusInTurnDoesNotWaitForThePaper()
    {
        const PrinterProfile profile = respondingProfile();
        PrinterDevice device(profile, slowHead(profile));
        device.take("a\n" + hex("1D7201") + hex("1D2848060030304A4F4231"));
        QCOMPARE(device.takeAnswers(), hex("00"));
        QVERIFY(!device.isIdle());
        device.advanceTo(lineTime - 1000);
        QCOMPARE(device.takeAnswers(), QByteArray());
        QCOMPARE(device.nextEvent(), lineTime);
        device.advanceTo(lineTime);
        QCOMPARE(device.takeAnswers(), QByteArray("\x37\x22JOB1\0", 7));
        QVERIFY(device.isIdle());
        QCOMPARE(device.nextEvent(), -1LL);
    }

    void responseIsOfModelsThatHaveOne()
    {
        PrinterDevice device((PrinterProfile()));
        QCOMPARE(ask(device, hex("1D2848060030304A4F4231")), QByteArray());
    }

    void responseComesBehindTheRepair()
    {
        const PrinterProfile profile = respondingProfile();
        PrinterDevice device(profile, slowHead(profile));
        device.take("a\n" + hex("1D2848060030304A4F4231"));
        device.advanceTo(40'000);
        befall(device, "paper out");
        device.advanceTo(10 * lineTime);
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "paper back");
        device.advanceTo(10 * lineTime + 59'000);
        QCOMPARE(device.takeAnswers(), QByteArray());
        device.advanceTo(10 * lineTime + 60'000);
        QCOMPARE(device.takeAnswers(), QByteArray("\x37\x22JOB1\0", 7));
    }

    void linesTakeTheirTime()
    {
        const PrinterProfile profile;
        PrinterDevice device(profile, slowHead(profile));
        device.take("1\n2\n3\n" + cut);
        device.advanceTo(2 * lineTime - 1);
        QCOMPARE(device.bytesWaiting(), 6);
        device.advanceTo(3 * lineTime - 1);
        QVERIFY(device.takePapers().isEmpty());
        device.advanceTo(3 * lineTime);
        QCOMPARE(textOf(device.takePapers()), QString("1\n2\n3\n[cut]\n"));
    }

    void automaticStatusComesOnChangeOnly()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "near end");
        QCOMPARE(device.takeAnswers(), QByteArray());
        QCOMPARE(ask(device, hex("1D610E")), hex("1000030F"));
        befall(device, "near end");
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "cover open");
        QCOMPARE(device.takeAnswers(), hex("3800030F"));
        befall(device, "cover open");
        device.take("text");
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "cover closed");
        QCOMPARE(device.takeAnswers(), hex("1000030F"));
        device.take(hex("1D6100"));
        befall(device, "cover open");
        QCOMPARE(device.takeAnswers(), QByteArray());
    }

    void automaticStatusTellsOfWhatIsChosen()
    {
        PrinterDevice device((PrinterProfile()));
        QCOMPARE(ask(device, hex("1D6108")), idle);
        befall(device, "off line");
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "paper out");
        QCOMPARE(device.takeAnswers(), hex("18000F0F"));
        befall(device, "paper back");
        befall(device, "on line");
        QCOMPARE(device.takeAnswers(), hex("1800000F"));
        device.take(hex("1B40"));
        befall(device, "paper out");
        QCOMPARE(device.takeAnswers(), QByteArray());
    }

    void recoveryEndsTheCuttersError()
    {
        PrinterDevice device((PrinterProfile()));
        device.take(hex("100501"));
        befall(device, "cutter error");
        device.take("a\n" + hex("100501") + "b\n");
        QCOMPARE(ask(device, realTime(3)), hex("12"));
        befall(device, "cutter error");
        device.take("c\n" + hex("100502") + "d\n");
        QCOMPARE(printedBy(device), QString("a\nb\nd\n"));
        befall(device, "paper out");
        device.take(hex("100501"));
        QCOMPARE(ask(device, realTime(1)), hex("1A"));
    }

    void clearingEmptiesTheBuffer()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "paper out");
        device.take("lost\n");
        QCOMPARE(ask(device, hex("10140801031401060208")), hex("372500"));
        befall(device, "paper back");
        device.take("kept\n");
        QCOMPARE(printedBy(device), QString("kept\n"));
    }

    void neighbourIsNotAnsweredFor()
    {
        PrinterDevice device((PrinterProfile()));
        QCOMPARE(ask(device, hex("1B3D021D72011D4901")), QByteArray());
        QCOMPARE(ask(device, realTime(1)), hex("12"));
        QCOMPARE(ask(device, hex("1B3D011D7201")), hex("00"));
    }

    void starTellsItsStatus()
    {
        PrinterDevice device(profileOf("TSP-TUP"));
        const QByteArray question = hex("1B0601");
        QCOMPARE(ask(device, question), hex("230600000000000000"));
        befall(device, "paper out");
        QCOMPARE(ask(device, question), hex("2306080000000C0000").left(5) + hex("0C000000"));
        befall(device, "cover open");
        befall(device, "cutter error");
        QCOMPARE(ask(device, question), hex("23062808000C000000"));
        befall(device, "paper back");
        befall(device, "cover closed");
        befall(device, "cutter repaired");
        befall(device, "near end");
        QCOMPARE(ask(device, question), hex("230600000004000000"));
        befall(device, "off line");
        QCOMPARE(ask(device, question), hex("230608000004000000"));
    }

    void starCountsItsMarksBehindThePaper()
    {
        const PrinterProfile profile = profileOf("TSP-TUP");
        PrinterDevice device(profile, slowHead(profile));
        QCOMPARE(ask(device, hex("1B1E6101")), hex("230600000000000000"));
        device.take("a\n\x17");
        QCOMPARE(device.takeAnswers(), QByteArray());
        device.advanceTo(10 * lineTime);
        QCOMPARE(device.takeAnswers(), hex("230602000000000200"));
        for (int i = 0; i < 7; ++i)
            device.take("\x17");
        QCOMPARE(device.takeAnswers().right(9), hex("230602000000002000"));
        device.take(hex("1B1E4500"));
        QCOMPARE(device.takeAnswers(), QByteArray());
        QCOMPARE(ask(device, hex("1B0601")), hex("230600000000000000"));
    }

    void swecoinTellsItsStatus()
    {
        PrinterDevice device(profileOf("SWECOIN_TM_20XX"));
        QCOMPARE(ask(device, hex("1B0506")), hex("0000"));
        device.take("a line");
        QCOMPARE(ask(device, hex("1B0506")), hex("4000"));
        device.take("\n");
        QCOMPARE(ask(device, hex("1B0506")), hex("0000"));
        befall(device, "near end");
        QCOMPARE(ask(device, hex("1B0506")), hex("0002"));
        QCOMPARE(ask(device, hex("1B0502")), hex("01"));
        QCOMPARE(ask(device, hex("1B0501")), hex("06"));
        befall(device, "cover open");
        QCOMPARE(ask(device, hex("1B0501")), hex("1504"));
        befall(device, "paper out");
        QCOMPARE(ask(device, hex("1B0501")), hex("1503"));
        device.take("waits\n");
        QCOMPARE(ask(device, hex("1B0506")), hex("C023"));
        befall(device, "cutter error");
        QCOMPARE(ask(device, hex("1B0501")), hex("1502"));
        for (const char *const repair : {"cover closed", "paper back", "cutter repaired"})
            befall(device, repair);
        QCOMPARE(ask(device, hex("1B0506")), hex("0000"));
        befall(device, "power off");
        befall(device, "power on");
        QCOMPARE(ask(device, hex("1B0506")), hex("2000"));
        QCOMPARE(ask(device, hex("1B0506")), hex("0000"));
    }

    void swecoinSaysWhenThePaperHasMoved()
    {
        const PrinterProfile profile = profileOf("SWECOIN_TM_20XX");
        PrinterDevice device(profile, slowHead(profile));
        device.take("a\n" + hex("1B0633") + hex("1B0506"));
        QCOMPARE(device.takeAnswers(), hex("4000"));
        device.advanceTo(10 * lineTime);
        QCOMPARE(device.takeAnswers(), hex("33"));
        QCOMPARE(ask(device, hex("1B0506")), hex("0000"));
    }

    void answersComeLateOrNever()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "answers late 50");
        QCOMPARE(ask(device, realTime(1)), QByteArray());
        QCOMPARE(device.nextEvent(), 50'000LL);
        device.advanceTo(49'999);
        QCOMPARE(device.takeAnswers(), QByteArray());
        befall(device, "answers again");
        QCOMPARE(ask(device, realTime(4)), QByteArray());
        device.advanceTo(50'000);
        QCOMPARE(device.takeAnswers(), hex("1212"));
        befall(device, "answers never");
        QCOMPARE(ask(device, realTime(1)), QByteArray());
        befall(device, "answers again");
        device.advanceTo(100'000);
        QCOMPARE(device.takeAnswers(), QByteArray());
        QCOMPARE(ask(device, realTime(1)), hex("12"));
    }

    void lineLosesAndChangesBytes()
    {
        PrinterDevice device((PrinterProfile()));
        befall(device, "swallow 3");
        device.take("ab");
        device.take("cdef\n");
        QCOMPARE(printedBy(device), QString("def\n"));
        PrinterDevice::Options options;
        options.seed = 7;
        QStringList texts;
        for (int round = 0; round < 2; ++round) {
            PrinterDevice other(PrinterProfile(), options);
            befall(other, "change 4");
            other.take("\n\n\n\n" + QByteArray("kept\n"));
            texts.append(printedBy(other));
        }
        QVERIFY(texts.first().endsWith("kept\n"));
        QVERIFY(texts.first() != "\n\n\n\nkept\n");
        QCOMPARE(texts.first(), texts.last());
    }

    void plannedFaultsComeByByteAndTime()
    {
        PrinterDevice device((PrinterProfile()));
        planFor(device, "byte 4:paper out");
        planFor(device, "2:paper back");
        planFor(device, "1:near end");
        device.take("a\nb\nc\nd\n" + cut);
        QCOMPARE(device.bytesWaiting(), 8);
        QCOMPARE(device.nextEvent(), 1'000'000LL);
        device.advanceTo(1'999'999);
        QVERIFY(device.hardware().isNearEnd);
        QVERIFY(device.takePapers().isEmpty());
        device.advanceTo(5'000'000);
        QVERIFY(!device.hardware().isNearEnd);
        QCOMPARE(textOf(device.takePapers()), QString("a\nb\nc\nd\n[cut]\n"));
        planFor(device, "byte 3:cover open");
        QVERIFY(device.hardware().isCoverOpen);
        planFor(device, "4:off line");
        QVERIFY(device.hardware().isSwitchedOffLine);
    }

    void connectionIsResetOnce()
    {
        PrinterDevice device((PrinterProfile()));
        QVERIFY(!device.takeReset());
        planFor(device, "byte 1:reset connection");
        device.take("a");
        QVERIFY(device.takeReset());
        QVERIFY(!device.takeReset());
    }

    /// As npm's receiptio speaks with a printer: a question before the job, who it is, its own
    /// status for good, the job, and a status in its turn as the sign of its end.
    void hostAsksWhoPrintsAndWaits_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<bool>("isPrinted");
        QTest::newRow("sound") << QString() << hex("12") << true;
        QTest::newRow("cover open") << "cover open" << hex("16") << false;
        QTest::newRow("paper out") << "paper out" << hex("32") << false;
        QTest::newRow("near end") << "near end" << hex("12") << true;
    }

    void hostAsksWhoPrintsAndWaits()
    {
        QFETCH(QString, fault);
        QFETCH(bool, isPrinted);
        PrinterDevice device((PrinterProfile()));
        if (!fault.isEmpty())
            befall(device, fault);
        QTEST(ask(device, realTime(2)), "state");
        const QByteArray name = ask(device, hex("1D49421D4943"));
        QCOMPARE(name,
                 isPrinted ? QByteArray("_EPSON\0_GENERAL_EPSON_PROTOCOL\0", 31) : QByteArray());
        const QByteArray status = ask(device, hex("1D61FF"));
        QCOMPARE(status.size(), isPrinted ? 4 : 0);
        QCOMPARE(ask(device, "receipt\n" + cut + hex("1D7201")).size(), isPrinted ? 1 : 0);
        QCOMPARE(textOf(device.takePapers()), QString(isPrinted ? "receipt\n[cut]\n" : ""));
    }

    void severalAreIndependent()
    {
        PrinterDevice first((PrinterProfile()));
        PrinterDevice second((PrinterProfile()));
        befall(first, "paper out");
        first.take(hex("10"));
        second.take(hex("0401") + realTime(1));
        QCOMPARE(second.takeAnswers(), hex("12"));
        QCOMPARE(ask(first, hex("0401")), hex("1A"));
    }
};

QTEST_APPLESS_MAIN(TestPrinterDevice)
#include "tst_printerdevice.moc"
