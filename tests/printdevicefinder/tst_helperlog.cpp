#include <QtTest>

#include "helperbench.h"
#include "logcatcher.h"

using namespace helperbench;

class TestHelperLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchIsLogged()
    {
        Setup setup(printerOf("CUSTOM_VKP_80", 115200, QSerialPort::HardwareControl));
        const QString port = setup.printer->portName();
        const LogCatcher log;
        QVERIFY(setup.helper.scan(setup.id, setup.settings));
        const QString start = "printers debug ";
        QCOMPARE(log.lines(),
                 (QStringList{start + "Start search on " + port + " for printers",
                              start + port + " 115200 1 from 63", start + port + " write: 1D 49 01",
                              start + port + " write: 1D 49 31", start + port + " 115200 2 from 63",
                              start + port + " write: 1D 49 01", start + port + " read: 5D",
                              start + port + " write: 1D 49 01", start + port + " read: 5D",
                              start + "Stop search on " + port + " for printers CUSTOM_VKP_80"}));
    }

    void unknownIdentificationIsLoggedWithTheBaudRate()
    {
        Setup setup(printerAnswering("1D4901:42", 19200, QSerialPort::NoFlowControl));
        const QString port = setup.printer->portName();
        setup.id = "CUSTOM_VKP_80";
        setup.settings = settingsOf(19200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(log.lines("printers debug " + port + " read: 42 19200").size(), 1);
    }

    void closedPortIsLoggedAsClosed()
    {
        Setup setup(printerOf("CUSTOM_VKP_80"));
        setup.port->close();
        const LogCatcher log;
        QVERIFY(!setup.helper.scan1D491(setup.id, setup.settings));
        QVERIFY(!setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(log.lines(), (QStringList{"printers debug port is closed 115200 1 from 63",
                                           "printers debug port is closed"}));
    }

    void swecoinFirmwareIsLoggedSigned()
    {
        Setup setup(printerAnswering("1B0507:FF0C", 115200, QSerialPort::NoFlowControl));
        setup.id = "SWECOIN_TM_20XX";
        setup.settings = settingsOf(115200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        QCOMPARE(log.lines("printers debug FIRMWARE"),
                 QStringList("printers debug FIRMWARE: -1.12"));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " write: "),
                 (QStringList{port + " write: 1B 05 07", port + " write: 1B 05 01"}));
        QCOMPARE(log.lines(port + " read: "), QStringList(port + " read: FF 0C"));
    }

    void swecoinFirmwareOfOneByteIsLoggedAsRead()
    {
        Setup setup(printerAnswering("1B0507:FE", 115200, QSerialPort::NoFlowControl));
        setup.id = "SWECOIN_TM_20XX";
        setup.settings = settingsOf(115200);
        const LogCatcher log;
        QVERIFY(!setup.helper.scan(setup.id, setup.settings));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " read: "), QStringList(port + " read: FE"));
        QCOMPARE(log.lines("printers debug FIRMWARE"), QStringList());
    }

    void starStatusIsLoggedAsAWarning()
    {
        Setup setup(printerAnswering("1B0601:FF00", 38400, QSerialPort::HardwareControl));
        const LogCatcher log;
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        const QStringList lines = log.lines("default warning ");
        QCOMPARE(lines.size(), 24);
        const QString sent = "default warning 1B 1E 60 02 1B 06 01 ";
        QCOMPARE(lines.at(0), sent + "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
        QCOMPARE(lines.at(1), sent + "FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
    }

    void starThatAnswersTextIsLoggedAsAWarning()
    {
        Setup setup(printerAnswering("1B1E6002:- 1B0601:0100 05:01 04:02 535441:AABBCC", 38400,
                                     QSerialPort::NoFlowControl));
        const LogCatcher log;
        QVERIFY(!setup.helper.scanStar(setup.id, setup.settings));
        QCOMPARE(
            log.lines("default warning AA BB CC"),
            (QStringList{"default warning AA BB CC 01 02 03", "default warning AA BB CC 01 02 03",
                         "default warning AA BB CC 01 02 03"}));
        const QString port = "printers debug " + setup.printer->portName();
        QCOMPARE(log.lines(port + " read: ").mid(0, 2),
                 (QStringList{port + " read: 01", port + " read: 02"}));
    }

    void av268IsLogged()
    {
        Setup setup(printerAnswering("1B76:07 01020304:-", 115200, QSerialPort::SoftwareControl));
        const QString port = "printers debug " + setup.printer->portName();
        const LogCatcher log;
        QVERIFY(setup.helper.scanAV268(setup.id, setup.settings));
        QCOMPARE(log.lines(), (QStringList{port, port + " read: 07", port + " read: 07",
                                           port + " read: 07", port + " read: 07 00 00 00 00"}));
    }

    void simpleIsLogged_data()
    {
        QTest::addColumn<QString>("replies");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("no answer") << "00:00" << QStringList("timeout");
        QTest::newRow("two bytes") << "1B76:0102" << QStringList("incorrect data 01 02 00 00 00");
        QTest::newRow("second answer missing") << "1B76:01,-" << QStringList("timeout");
        QTest::newRow("second answer of two bytes")
            << "1B76:07,0809" << QStringList("incorrect data 08 09 00 00 00");
        QTest::newRow("answer to the filler")
            << "1B76:07 010203:AABB" << QStringList("incorrect data AA BB 00 00 00");
        QTest::newRow("bit of mask 10: no line") << "1B76:10" << QStringList();
        QTest::newRow("found: no line") << "1B76:EF" << QStringList();
    }

    void simpleIsLogged()
    {
        QFETCH(QString, replies);
        QFETCH(QStringList, lines);
        Setup setup(printerAnswering(replies, 19200, QSerialPort::NoFlowControl));
        setup.id = "CITIZEN_PPU_231";
        setup.settings = settingsOf(19200);
        const QString port = setup.printer->portName();
        QStringList expected{"Start search on " + port + " for printers", port + " 19200 1 from 1"};
        expected += lines;
        expected.append("Stop search on " + port + " for printers CITIZEN_PPU_231");
        expected.replaceInStrings(QRegularExpression("^"), "printers debug ");
        const LogCatcher log;
        setup.helper.scan(setup.id, setup.settings);
        QCOMPARE(log.lines(), expected);
    }

    void silentCategoryLogsNothing()
    {
        QLoggingCategory::setFilterRules("printers=false");
        Setup setup(printerOf("CUSTOM_VKP_80"));
        {
            const LogCatcher log;
            QVERIFY(setup.helper.scan(setup.id, setup.settings));
            QCOMPARE(log.lines(), QStringList());
        }
        QLoggingCategory::setFilterRules(QString());
    }
};

QTEST_GUILESS_MAIN(TestHelperLog)
#include "tst_helperlog.moc"
