#include <QtTest>
#include <optional>

#include "helperbench.h"
#include "logcatcher.h"
#include "printers/textprintermodels.h"

using namespace helperbench;

/// What is said to printers and answered by them, and which models come of it.
class TestPrintersHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Quiet for those tests that don't look at the log; debug lines are still made.
        m_quiet.emplace();
    }

    void cleanupTestCase() { m_quiet.reset(); }

    void everyModelIsFound_data()
    {
        QTest::addColumn<int>("baudRate");
        QTest::addColumn<int>("flowControl");
        for (const char *const model : modelIds) {
            const bool isAv268 = QByteArray(model) == "AV_268";
            QTest::addRow("%s", model)
                << (isAv268 ? 115200 : 9600)
                << int(isAv268 ? QSerialPort::SoftwareControl : QSerialPort::HardwareControl);
        }
    }

    void everyModelIsFound()
    {
        QFETCH(int, baudRate);
        QFETCH(int, flowControl);
        const QString model = QTest::currentDataTag();
        Setup setup(printerOf(model, baudRate, QSerialPort::FlowControl(flowControl)));
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, model);
        QCOMPARE(setup.settings, settingsOf(baudRate, QSerialPort::FlowControl(flowControl)));
    }

    void everyModelIsConfirmedOnItsOwnLine_data() { everyModelIsFound_data(); }

    void everyModelIsConfirmedOnItsOwnLine()
    {
        QFETCH(int, baudRate);
        QFETCH(int, flowControl);
        const QString model = QTest::currentDataTag();
        Setup setup(printerOf(model, baudRate, QSerialPort::FlowControl(flowControl)));
        setup.id = model;
        setup.settings = settingsOf(baudRate, QSerialPort::FlowControl(flowControl));
        const hearth::Rs232PortSettings given = setup.settings;
        const bool confirmable = model != "CITIZEN_CPP_8001";
        QCOMPARE(setup.helper.scan(setup.id, setup.settings), confirmable);
        QCOMPARE(setup.id, model);
        QCOMPARE(setup.settings, given);
    }

    void modelsThatNoProbeConfirms_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("Citizen CPP-8001") << TextPrinterModels::MODEL_CITIZEN_CPP_8001;
        QTest::newRow("common command set") << TextPrinterModels::MODEL_GENERAL_EPSON;
        QTest::newRow("WPK 833") << TextPrinterModels::MODEL_WPK833;
        QTest::newRow("no model") << "NONE";
    }

    void modelsThatNoProbeConfirms()
    {
        QFETCH(QString, id);
        Setup setup(printerOf("CITIZEN_CPP_8001"));
        setup.settings = settingsOf(115200);
        QString given = id;
        QVERIFY(!setup.helper.scan(given, setup.settings));
        QCOMPARE(given, id);
        QCOMPARE(setup.dialogueOn("115200 none"), QStringList());
    }

    void confirmationMayGiveAnotherModelOfTheFamily()
    {
        Setup setup(printerOf("CITIZEN_PPU_700", 19200));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("CITIZEN_PPU_700"));
    }

    void confirmationTriesTheGivenLineAlone()
    {
        Setup setup(printerOf("CUSTOM_VKP_80", 9600));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200, QSerialPort::SoftwareControl);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer),
                 (QStringList{"19200 software < 1D 49 01", "19200 software < 1D 49 31"}));
    }

    void starConfirmationDropsTheGivenLine()
    {
        Setup setup(printerOf("TSP-TUP", 9600, QSerialPort::HardwareControl));
        setup.id = "TSP-TUP";
        setup.settings = settingsOf(115200);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.settings, settingsOf(9600, QSerialPort::HardwareControl));
    }

    void confirmationReplacesTheListForGood()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(9600);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QString noId;
        QVERIFY(!setup.helper.scan(noId, setup.settings));
        const QStringList oneEntry{"9600 none < 1D 49 01", "9600 none < 1D 49 31"};
        QCOMPARE(linesOf(*setup.printer), oneEntry + oneEntry +
                                              QStringList("9600 none < 1B 05 07") +
                                              silentsearch::scanStar() + silentsearch::scanAV268() +
                                              QStringList("9600 none < 1B 76"));
    }

    void scan1B73TouchesNothing()
    {
        Setup setup(printerOf("CUSTOM_VKP_80"));
        setup.id = "x";
        setup.settings = settingsOf(4800);
        QVERIFY(!setup.helper.scan1B73(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("x"));
        QCOMPARE(setup.settings, settingsOf(4800));
        QVERIFY(linesOf(*setup.printer).isEmpty());
    }

    void dialogueOfOneLineSetting_data()
    {
        QTest::addColumn<QString>("model");     // the one to confirm
        QTest::addColumn<QString>("replies");   // of the printer
        QTest::addColumn<QStringList>("line");  // what is seen on its line setting
        QTest::addColumn<QString>("id");        // found; null: none
        dialoguesOfIdentification();
        dialoguesOfSwecoin();
        dialoguesOfStar();
        dialoguesOfAv268();
        dialoguesOfSimple();
    }

    void dialogueOfOneLineSetting()
    {
        QFETCH(QString, model);
        QFETCH(QString, replies);
        QFETCH(QStringList, line);
        QFETCH(QString, id);
        const bool isStar = model == "TSP-TUP";
        const bool isAv268 = model == "AV_268";
        const int baudRate = isStar ? 38400 : isAv268 ? 115200 : 19200;
        const auto flow = isAv268 ? QSerialPort::SoftwareControl : QSerialPort::NoFlowControl;
        Setup setup(printerAnswering(replies, baudRate, flow));
        setup.id = model;
        setup.settings = settingsOf(baudRate, flow);

        QCOMPARE(setup.helper.scan(setup.id, setup.settings), !id.isNull());
        QStringList seen =
            setup.dialogueOn(QString("%1 %2").arg(baudRate).arg(isAv268 ? "software" : "none"));
        // A Star printer is tried once with each parity, if it isn't found with the first.
        if (isStar && id.isNull() && seen.size() == 3 * line.size())
            seen = seen.mid(2 * line.size());
        QCOMPARE(seen, line);
        if (!id.isNull())
            QCOMPARE(setup.id, id);
    }

    void answer3DIsTrueWithoutAModel()
    {
        Setup setup(printerAnswering("1D4901:3D", 115200, QSerialPort::NoFlowControl));
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QVERIFY(setup.id.isNull());
        QCOMPARE(setup.settings, settingsOf(115200));
        QCOMPARE(setup.dialogueOn("115200 none"),
                 (QStringList{"< 1D 49 01", "> 3D", "< 1D 49 01", "> 3D"}));
    }

    void secondAnswerMayHaveComeWithTheFirst()
    {
        Setup setup(printerAnswering("1D4901:5D5D,-", 115200, QSerialPort::NoFlowControl));
        QVERIFY(setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(setup.id, QString("CUSTOM_VKP_80"));
    }

    void differingAnswersGoOnToTheNextLineSetting()
    {
        VirtualPrinterOptions options = printerOf("CUSTOM_VKP_80");
        options.fault = VirtualFault::DifferingIds;
        Setup setup(options);
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QCOMPARE(setup.settings,
                 settingsOf(1200, QSerialPort::SoftwareControl, QSerialPort::OddParity));
    }

    void simpleSendsNothingAbove19200()
    {
        Setup setup(faultyPrinter(VirtualFault::Silent));
        QVERIFY(!setup.helper.scanSimple(setup.id, setup.settings));
        QCOMPARE(linesOf(*setup.printer), silentsearch::scanSimple());
    }

    void simpleIsNotConfirmedAbove19200()
    {
        Setup setup(printerOf("CITIZEN_PPU_231", 38400));
        setup.id = "CITIZEN_PPU_231";
        setup.settings = settingsOf(38400);
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        setup.printer->service();
        QCOMPARE(linesOf(*setup.printer), QStringList());
    }

    void staleBytesInFrontOfTheFirstRequest_data()
    {
        QTest::addColumn<QByteArray>("stale");
        QTest::addColumn<bool>("found");
        const auto row = [](const char *model, const char *stale, bool found) {
            QTest::newRow(model) << QByteArray::fromHex(stale) << found;
        };
        row("CUSTOM_VKP_80", "42", true);
        row("SWECOIN_TM_20XX", "01", true);
        row("TSP-TUP", "1100", true);
        row("AV_268", "00", true);
        // This probe clears nothing: the stale byte is its first answer, and the second one is two
        // bytes long.
        row("CITIZEN_PPU_231", "00", false);
    }

    void staleBytesInFrontOfTheFirstRequest()
    {
        QFETCH(QByteArray, stale);
        const QString id = QTest::currentDataTag();
        std::optional<VirtualModel> model = virtualModel(id);
        QVERIFY(model.has_value());
        const QByteArray trigger = QByteArray::fromHex("7E");
        model->replies.append(VirtualReply{trigger, QList<QByteArray>{stale}});
        Setup setup(*model);
        setup.id = id;
        setup.settings = settingsOf(model->baudRate, model->flowControl);
        setup.helper.setPortSettings(setup.settings);
        setup.port->write(trigger);
        QVERIFY(setup.helper.waitForReadyRead(0));
        QCOMPARE(setup.port->bytesAvailable(), qint64(stale.size()));
        QTEST(setup.helper.scan(setup.id, setup.settings), "found");
    }

    void bytesBehindAnAnswerAnswerTheNextRequest_data()
    {
        QTest::addColumn<QString>("replies");
        QTest::newRow("AV_268") << "1B76:000000,-,- 01020304:-";
        QTest::newRow("CITIZEN_PPU_231") << "1B76:0000,- 010203:-";
    }

    // Neither of these probes clears between its exchanges.
    void bytesBehindAnAnswerAnswerTheNextRequest()
    {
        QFETCH(QString, replies);
        const QString id = QTest::currentDataTag();
        const VirtualModel model = *virtualModel(id);
        Setup setup(printerAnswering(replies, model.baudRate, model.flowControl));
        // The bytes of an answer come one by one, as they do on a slow line.
        setup.port->setReadBufferSize(1);
        setup.id = id;
        setup.settings = settingsOf(model.baudRate, model.flowControl);
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(setup.id, id);
    }

    void av268HasItsOwnLineSetting()
    {
        Setup setup(printerOf("AV_268", 115200, QSerialPort::SoftwareControl));
        setup.settings = settingsOf(9600, QSerialPort::HardwareControl, QSerialPort::OddParity);
        setup.settings.setDataBits(QSerialPort::Data7);
        setup.settings.setStopBits(QSerialPort::TwoStop);
        QVERIFY(setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(setup.settings, settingsOf(115200, QSerialPort::SoftwareControl));
    }

private:
    static void dialoguesOfIdentification()
    {
        const QString vkp = "CUSTOM_VKP_80";
        const QString spacing = "< 1B 33 FF 0A 1B 69";
        const QString custom = "< 1C C0 AA 0F EE 0B 34";
        const QString eject = "< 1B 69 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 1D 65 02";
        const auto identified = [&](const char *answer, const QString &closing, const char *id) {
            const QString read = QString("> ") + answer;
            QTest::addRow("identification %s", answer)
                << vkp << QString("1D4901:%1").arg(answer)
                << QStringList{"< 1D 49 01", read, "< 1D 49 01", read, closing} << QString(id);
        };
        identified("20", spacing, "CITIZEN_CPP_8001");
        identified("27", "< 1D 56 66 A0", "EPSON_EU_4XX");
        identified("30", spacing, "CITIZEN_CBM_1000");
        identified("51", "< 20 0A 20 0A 1B 69 20 0A", "CITIZEN_CTS_2000");
        identified("5D", eject, "CUSTOM_VKP_80");
        identified("5E", eject, "CUSTOM_VKP_80");
        identified("75", spacing, "CITIZEN_PPU_700");
        identified("93", custom, "CUSTOM_TG_2480_SE");
        identified("A7", custom, "CUSTOM_TG_2480_H");
        identified("A8", custom, "CUSTOM_TG_2480_H");

        QTest::newRow("identification 3D leaves the id and closes nothing")
            << vkp << "1D4901:3D" << QStringList{"< 1D 49 01", "> 3D", "< 1D 49 01", "> 3D"} << vkp;
        QTest::newRow("request B where A has no answer")
            << vkp << "1D4931:27"
            << QStringList{"< 1D 49 01", "< 1D 49 31", "> 27",         "< 1D 49 01",
                           "< 1D 49 31", "> 27",       "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("request B in the second pass only")
            << vkp << "1D4901:27,- 1D4931:27" << QStringList{"< 1D 49 01", "> 27", "< 1D 49 01",
                                                             "< 1D 49 31", "> 27", "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("request B in the first pass only")
            << vkp << "1D4901:-,27 1D4931:27"
            << QStringList{"< 1D 49 01", "< 1D 49 31", "> 27",
                           "< 1D 49 01", "> 27",       "< 1D 56 66 A0"}
            << "EPSON_EU_4XX";
        QTest::newRow("no answer in the second pass")
            << vkp << "1D4901:27,-" << QStringList{"< 1D 49 01", "> 27", "< 1D 49 01", "< 1D 49 31"}
            << QString();
        QTest::newRow("differing answers that mean the same model")
            << vkp << "1D4901:5D,5E" << QStringList{"< 1D 49 01", "> 5D", "< 1D 49 01", "> 5E"}
            << QString();
        QTest::newRow("unknown answer")
            << vkp << "1D4901:00" << QStringList{"< 1D 49 01", "> 00", "< 1D 49 01", "> 00"}
            << QString();
    }

    static void dialoguesOfSwecoin()
    {
        const QString model = "SWECOIN_TM_20XX";
        const QStringList firmware{"< 1B 05 07", "> 01 0C", "< 1B 05 01"};
        QTest::newRow("Swecoin with ACK")
            << model << "1B0507:010C 1B0501:06 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 11", "< 1B 06 12", "> 12"} << model;
        QTest::newRow("Swecoin with NAK and more behind it")
            << model << "1B0507:010C 1B0501:15AABB 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 15 AA BB", "< 1B 06 11", "> 11", "< 1B 06 12", "> 12"}
            << model;
        QTest::newRow("Swecoin with ACK and more behind it, which spoils step 3")
            << model << "1B0507:010C 1B0501:06AA 1B0611:11 1B0612:12"
            << firmware + QStringList{"> 06 AA", "< 1B 06 11", "> 11"} << QString();
        QTest::newRow("Swecoin with any firmware")
            << model << "1B0507:0000 1B0501:06 1B0611:11 1B0612:12"
            << QStringList{"< 1B 05 07", "> 00 00", "< 1B 05 01", "> 06",
                           "< 1B 06 11", "> 11",    "< 1B 06 12", "> 12"}
            << model;
        QTest::newRow("Swecoin with one byte of firmware")
            << model << "1B0507:01" << QStringList{"< 1B 05 07", "> 01"} << QString();
        QTest::newRow("Swecoin without an answer to step 2")
            << model << "1B0507:010C" << firmware << QString();
        QTest::newRow("Swecoin with neither ACK nor NAK")
            << model << "1B0507:010C 1B0501:07" << firmware + QStringList("> 07") << QString();
        QTest::newRow("Swecoin with a wrong step 3")
            << model << "1B0507:010C 1B0501:06 1B0611:12"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 12"} << QString();
        QTest::newRow("Swecoin with a wrong step 4")
            << model << "1B0507:010C 1B0501:06 1B0611:11 1B0612:11"
            << firmware + QStringList{"> 06", "< 1B 06 11", "> 11", "< 1B 06 12", "> 11"}
            << QString();
    }

    static void dialoguesOfStar()
    {
        const QString model = "TSP-TUP";
        const QString mode = "< 1B 1E 60 02 1B 06 01";
        const QString quiet = "1B1E6002:- ";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << quiet + replies << QStringList(mode) + line
                                << (found ? model : QString());
        };
        row("Star", "1B0601:0100 05:AA 04:BB",
            {"> 01 00", "< 05", "> AA", "< 04", "> BB", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with all free status bits", "1B0601:2F00 05:00 04:00",
            {"> 2F 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with a long status", "1B0601:01020304 05:00 04:00",
            {"> 01 02 03 04", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with two bytes behind the filler", "1B0601:0100 05:00 04:00 535441:AABB",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "> AA BB", "< 1B 64 32"},
            true);
        row("Star with three bytes behind the filler", "1B0601:0100 05:00 04:00 535441:AABBCC",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00", "< 53 54 41", "> AA BB CC"}, false);
        row("Star with a second byte behind ENQ, which answers no EOT", "1B0601:0100 05:AABB",
            {"> 01 00", "< 05", "> AA BB", "< 04"}, false);
        row("Star with a status of 17 bytes, the last of which answers no ENQ",
            "1B0601:0102030405060708090A0B0C0D0E0F1011",
            {"> 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11", "< 05"}, false);
        row("Star with three bytes too many behind EOT, which answer no filler",
            "1B0601:0100 05:00 04:00AABBCC",
            {"> 01 00", "< 05", "> 00", "< 04", "> 00 AA BB CC", "< 53 54 41", "< 1B 64 32"}, true);
        row("Star with one status byte", "1B0601:01", {"> 01"}, false);
        row("Star with a wrong status bit", "1B0601:1100", {"> 11 00"}, false);
        row("Star without the status bit", "1B0601:0001", {"> 00 01"}, false);
        row("Star without an answer to ENQ", "1B0601:0100", {"> 01 00", "< 05"}, false);
        row("Star without an answer to EOT", "1B0601:0100 05:00",
            {"> 01 00", "< 05", "> 00", "< 04"}, false);
        row("echo of the status request", "1B0601:1B0601", {"> 1B 06 01"}, false);
    }

    static void dialoguesOfAv268()
    {
        const QString model = "AV_268";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << replies << line << (found ? model : QString());
        };
        row("AV-268 with any status", "1B76:00,FF,07 01020304:-",
            {"< 1B 76", "> 00", "< 1B 76", "> FF", "< 1B 76", "> 07", "< 01 02 03 04", "< 1B 69"},
            true);
        row("AV-268 silent", "00:00", {"< 1B 76"}, false);
        row("AV-268 with two bytes", "1B76:0001", {"< 1B 76", "> 00 01"}, false);
        row("AV-268 silent the second time", "1B76:00,-", {"< 1B 76", "> 00", "< 1B 76"}, false);
        row("AV-268 with two bytes the third time", "1B76:00,00,0000",
            {"< 1B 76", "> 00", "< 1B 76", "> 00", "< 1B 76", "> 00 00"}, false);
        row("AV-268 that answers the filler", "1B76:00 01020304:00",
            {"< 1B 76", "> 00", "< 1B 76", "> 00", "< 1B 76", "> 00", "< 01 02 03 04", "> 00"},
            false);
    }

    static void dialoguesOfSimple()
    {
        const QString model = "CITIZEN_PPU_231";
        const auto row = [&](const char *name, const char *replies, const QStringList &line,
                             bool found) {
            QTest::newRow(name) << model << replies << line << (found ? model : QString());
        };
        const QStringList twice{"< 1B 76", "> 00", "< 1B 76", "> 00"};
        row("simple", "1B76:00 010203:-", twice + QStringList{"< 01 02 03", "< 1B 69"}, true);
        row("simple with all other bits", "1B76:EF",
            {"< 1B 76", "> EF", "< 1B 76", "> EF", "< 01 02 03", "< 1B 69"}, true);
        row("simple: the second status byte decides", "1B76:10,00",
            {"< 1B 76", "> 10", "< 1B 76", "> 00", "< 01 02 03", "< 1B 69"}, true);
        row("simple with the bit of mask 10", "1B76:00,10",
            {"< 1B 76", "> 00", "< 1B 76", "> 10", "< 01 02 03"}, false);
        row("simple silent", "00:00", {"< 1B 76"}, false);
        row("simple with two bytes", "1B76:0000", {"< 1B 76", "> 00 00"}, false);
        row("simple silent the second time", "1B76:00,-", {"< 1B 76", "> 00", "< 1B 76"}, false);
        row("simple with two bytes the second time", "1B76:00,0000",
            {"< 1B 76", "> 00", "< 1B 76", "> 00 00"}, false);
        row("simple that answers the filler", "1B76:00 010203:00",
            twice + QStringList{"< 01 02 03", "> 00"}, false);
    }

    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestPrintersHelper)
#include "tst_printershelper.moc"
