// What a printer's status means to users, to the till and on the bus.
#include <QtTest>

#include "printerslib/drivers/printerstatus.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"

using printerslib::drivers::PrinterStatus;

Q_DECLARE_METATYPE(PrinterStatus::Flag)

class TestPrinterStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flagMeans_data();
    void flagMeans();
    void nothingTheMatterIsReady();
    void nothingKnownIsNeitherReadyNorWorkable();
    void whatIsKnownOfAnUnknownStatusCounts();
    void gravestFlagDecidesAndComesFirst();
    void offLineIsSaidWhereNothingElseExplainsIt();
    void everySetOfFlagsPassesTheBus();
    void serviceThatDoesNotWorkIsNotWorkable();
    void nativeCodeIsTheFirstFourBytes_data();
    void nativeCodeIsTheFirstFourBytes();
    void withAddsFlags();
    void comparesAllFields();
};

void TestPrinterStatus::flagMeans_data()
{
    QTest::addColumn<PrinterStatus::Flag>("flag");
    QTest::addColumn<int>("deviceState");
    QTest::addColumn<int>("txtFlags");
    QTest::addColumn<bool>("workable");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, PrinterStatus::Flag flag, int state, int txtFlags,
                        bool workable, const char *text) {
        QTest::newRow(name) << flag << state << txtFlags << workable << QString(text);
    };
    row("paper out", PrinterStatus::PaperOut, 3, 0x002, false, "There is no paper.");
    row("cover", PrinterStatus::CoverOpen, 3, 0x030, false, "The cover is open.");
    row("cutter", PrinterStatus::CutterError, 3, 0x060, false, "The cutter is stuck.");
    row("recoverable", PrinterStatus::RecoverableError, 3, 0x020, false,
        "The printer has stopped: its paper is jammed, or it is too hot.");
    row("unrecoverable", PrinterStatus::UnrecoverableError, 4, 0x200, false,
        "The printer has an error: switch it off and on, or call the service.");
    row("off line", PrinterStatus::OffLine, 3, 0x001, false, "The printer is off line.");
    row("no answer", PrinterStatus::NoAnswer, 3, 0x001, false, "The printer doesn't answer.");
    row("data lost", PrinterStatus::DataLost, 3, 0x001, false, "The printer has lost data.");
    row("near end", PrinterStatus::PaperNearEnd, 2, 0x004, true, "The paper is nearly used up.");
    row("in the presenter", PrinterStatus::PaperInPresenter, 0, 0x008, true,
        "A ticket hasn't been taken yet.");
    row("data", PrinterStatus::PrintDataExists, 0, 0, true, "");
    row("power", PrinterStatus::PowerWasOff, 0, 0, true, "");
}

void TestPrinterStatus::flagMeans()
{
    QFETCH(PrinterStatus::Flag, flag);
    QFETCH(int, deviceState);
    QFETCH(int, txtFlags);
    QFETCH(bool, workable);
    QFETCH(QString, text);
    const PrinterStatus status(flag, "\x12\x34");
    QVERIFY(status.has(flag));
    QCOMPARE(status.canPrint(), workable);
    QCOMPARE(status.text(), text.isEmpty() ? "The printer is ready." : text);
    const TxtPrinterError error = status.toTxtPrinterError();
    QCOMPARE(int(error.errorCode()), txtFlags);
    QCOMPARE(bool(error), !workable);
    QCOMPARE(error.errorText(), text);
    const PrintServiceState state = status.toServiceState(PrintServiceState::ServiceWorkableSecond);
    QCOMPARE(int(state.serviceState()), 2);
    QCOMPARE(int(state.deviceState()), deviceState);
    QCOMPARE(int(state.deviceErrorCode()), txtFlags);
    QCOMPARE(state.deviceNativeCode(), 0x1234U);
    QCOMPARE(state.deviceErrorMsg(), text);
    QCOMPARE(state.tapeAvailable(), flag != PrinterStatus::PaperOut);
}

void TestPrinterStatus::nothingTheMatterIsReady()
{
    const PrinterStatus status{PrinterStatus::Flags(), "\x12\x12\x12\x12"};
    QVERIFY(status.isKnown());
    QVERIFY(status.canPrint());
    QCOMPARE(status.text(), QString("The printer is ready."));
    QVERIFY(!status.toTxtPrinterError());
    QVERIFY(status.toTxtPrinterError().errorText().isEmpty());
    const PrintServiceState state = status.toServiceState(PrintServiceState::ServiceWorkableFirst);
    QCOMPARE(int(state.deviceState()), 0);
    QVERIFY(state.tapeAvailable());
    QVERIFY(state.deviceErrorMsg().isEmpty());
}

void TestPrinterStatus::nothingKnownIsNeitherReadyNorWorkable()
{
    const PrinterStatus status;
    QVERIFY(!status.isKnown());
    QVERIFY(!status.canPrint());
    QVERIFY(!status.flags());
    QVERIFY(status.native().isEmpty());
    QCOMPARE(status.nativeCode(), 0U);
    QCOMPARE(status.text(), QString("The printer hasn't told its status."));
    QVERIFY(!status.toTxtPrinterError());
    const PrintServiceState state = status.toServiceState(PrintServiceState::ServiceWorkableFirst);
    QCOMPARE(int(state.deviceState()), 255);
    const PrintServiceStateCorvidWrapper onBus(
        PrintServiceStateCorvidWrapper(state).toClientState());
    QVERIFY(!onBus.isValid());
    QVERIFY(!onBus.isWorkable());
}

void TestPrinterStatus::whatIsKnownOfAnUnknownStatusCounts()
{
    const PrinterStatus out(PrinterStatus::PaperOut, QByteArray(), false);
    QCOMPARE(out.text(), QString("There is no paper."));
    QCOMPARE(int(out.toServiceState(PrintServiceState::ServiceWorkableFirst).deviceState()), 3);
    const PrinterStatus near(PrinterStatus::PaperNearEnd, QByteArray(), false);
    QVERIFY(!near.canPrint());
    QCOMPARE(int(near.toServiceState(PrintServiceState::ServiceWorkableFirst).deviceState()), 255);
}

void TestPrinterStatus::gravestFlagDecidesAndComesFirst()
{
    const PrinterStatus status(PrinterStatus::PaperNearEnd | PrinterStatus::UnrecoverableError |
                               PrinterStatus::PaperOut | PrinterStatus::CoverOpen);
    QCOMPARE(status.text(),
             QString("The printer has an error: switch it off and on, or call the service. There "
                     "is no paper. The cover is open. The paper is nearly used up."));
    const PrintServiceState state = status.toServiceState(PrintServiceState::ServiceWorkableFirst);
    QCOMPARE(int(state.deviceState()), 4);
    QCOMPARE(state.deviceErrorCode(), 0x236U);
    QVERIFY(!state.tapeAvailable());
}

void TestPrinterStatus::offLineIsSaidWhereNothingElseExplainsIt()
{
    QCOMPARE(PrinterStatus(PrinterStatus::OffLine | PrinterStatus::PaperOut).text(),
             QString("There is no paper."));
    QCOMPARE(PrinterStatus(PrinterStatus::OffLine | PrinterStatus::PaperNearEnd).text(),
             QString("The printer is off line. The paper is nearly used up."));
    QCOMPARE(int(PrinterStatus(PrinterStatus::OffLine | PrinterStatus::PaperOut)
                     .toTxtPrinterError()
                     .errorCode()),
             0x003);
}

void TestPrinterStatus::everySetOfFlagsPassesTheBus()
{
    for (int set = 0; set < 0x1000; ++set) {
        const PrinterStatus status{PrinterStatus::Flags(QFlag(set)), "\xFF\xFF\xFF\xFF"};
        const PrintServiceState state =
            status.toServiceState(PrintServiceState::ServiceWorkableThird);
        const PrintServiceStateCorvidWrapper onBus(
            PrintServiceStateCorvidWrapper(state).toClientState());
        QVERIFY(onBus.isValid());
        QVERIFY(onBus.state() == state);
        QCOMPARE(onBus.isWorkable(), status.canPrint());
        QCOMPARE(bool(status.toTxtPrinterError()), !status.canPrint());
        QCOMPARE(status.canPrint(), (set & 0xFF) == 0);
        QCOMPARE(int(onBus.stateType()), (set & 0x10) != 0    ? 3
                                         : (set & 0xFF) != 0  ? 2
                                         : (set & 0x100) != 0 ? 1
                                                              : 0);
    }
}

void TestPrinterStatus::serviceThatDoesNotWorkIsNotWorkable()
{
    const PrinterStatus ready{PrinterStatus::Flags()};
    for (const auto service :
         {PrintServiceState::ServiceUnworkable, PrintServiceState::ServiceCritical,
          PrintServiceState::ServiceInvalid}) {
        const PrintServiceStateCorvidWrapper onBus(
            PrintServiceStateCorvidWrapper(ready.toServiceState(service)).toClientState());
        QVERIFY(!onBus.isWorkable());
    }
}

void TestPrinterStatus::nativeCodeIsTheFirstFourBytes_data()
{
    QTest::addColumn<QByteArray>("native");
    QTest::addColumn<unsigned int>("code");
    QTest::newRow("none") << QByteArray() << 0U;
    QTest::newRow("one") << QByteArray::fromHex("92") << 0x92U;
    QTest::newRow("three") << QByteArray::fromHex("034002") << 0x034002U;
    QTest::newRow("four") << QByteArray::fromHex("ff161ad2") << 0xff161ad2U;
    QTest::newRow("seven") << QByteArray::fromHex("01020304050607") << 0x01020304U;
}

void TestPrinterStatus::nativeCodeIsTheFirstFourBytes()
{
    QFETCH(QByteArray, native);
    QFETCH(unsigned int, code);
    const PrinterStatus status(PrinterStatus::Flags(), native);
    QCOMPARE(status.native(), native);
    QCOMPARE(status.nativeCode(), code);
}

void TestPrinterStatus::withAddsFlags()
{
    const PrinterStatus status =
        PrinterStatus(PrinterStatus::PaperNearEnd, "\x12").with(PrinterStatus::NoAnswer);
    QCOMPARE(int(status.flags()), int(PrinterStatus::PaperNearEnd | PrinterStatus::NoAnswer));
    QCOMPARE(status.native(), QByteArray("\x12"));
    QVERIFY(status.isKnown());
    QVERIFY(!PrinterStatus().with(PrinterStatus::NoAnswer).isKnown());
    QCOMPARE(PrinterStatus().with(PrinterStatus::NoAnswer).text(),
             QString("The printer doesn't answer."));
}

void TestPrinterStatus::comparesAllFields()
{
    const PrinterStatus status(PrinterStatus::PaperOut, "\x12");
    QVERIFY(status == PrinterStatus(PrinterStatus::PaperOut, "\x12"));
    QVERIFY(status != PrinterStatus(PrinterStatus::CoverOpen, "\x12"));
    QVERIFY(status != PrinterStatus(PrinterStatus::PaperOut, "\x13"));
    QVERIFY(status != PrinterStatus(PrinterStatus::PaperOut, "\x12", false));
    QVERIFY(!(status != PrinterStatus(status)));
}

QTEST_APPLESS_MAIN(TestPrinterStatus)
#include "tst_printerstatus.moc"
