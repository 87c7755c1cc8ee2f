// The commands that tell a virtual printer what befalls it.
#include <QtTest>

#include "printerfault.h"

class TestPrinterFault : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandReadsAsItIsWritten_data()
    {
        QTest::addColumn<QString>("text");
        const char *const texts[] = {
            "paper out",    "paper back",       "near end",        "cover open",    "cover closed",
            "cutter error", "cutter repaired",  "off line",        "on line",       "power off",
            "power on",     "reset connection", "answers late 20", "answers never", "answers again",
            "swallow 12",   "change 3"};
        for (const char *const text : texts)
            QTest::newRow(text) << QString(text);
    }

    void commandReadsAsItIsWritten()
    {
        QFETCH(QString, text);
        QString error;
        const auto fault = printerFault("  " + QString(text).replace(' ', "  ") + ' ', &error);
        QVERIFY2(fault, qPrintable(error));
        QCOMPARE(fault->toString(), text);
        QCOMPARE(error, QString());
    }

    void helpHasALineForEach()
    {
        const QStringList lines = printerFaultHelp();
        QCOMPARE(lines.size(), 17);
        QVERIFY(lines.first().startsWith("paper out "));
        QVERIFY(lines.last().startsWith("change N "));
    }

    void otherTextIsTold_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("nothing") << ""
                                 << "\"\" is no command; \"help\" lists them";
        QTest::newRow("other") << "paper  gone"
                               << "\"paper gone\" is no command; \"help\" lists them";
        QTest::newRow("longer word") << "paper outside"
                                     << "\"paper outside\" is no command; \"help\" lists them";
        QTest::newRow("number too many") << "paper out 3"
                                         << "\"paper out\" takes no number";
        QTest::newRow("number missing") << "swallow"
                                        << "\"swallow\" takes a number, not \"\"";
        QTest::newRow("no number") << "swallow x"
                                   << "\"swallow\" takes a number, not \"x\"";
        QTest::newRow("negative") << "swallow -1"
                                  << "\"swallow\" takes a number, not \"-1\"";
        QTest::newRow("too great") << "change 99999999999"
                                   << "\"change\" takes a number, not \"99999999999\"";
    }

    void otherTextIsTold()
    {
        QFETCH(QString, text);
        QString error;
        QVERIFY(!printerFault(text, &error));
        QTEST(error, "message");
    }

    void timeIsSecondsOrBytes()
    {
        QString error;
        const auto byTime = plannedFault("1.5:paper out", &error);
        QVERIFY(byTime);
        QCOMPARE(int(byTime->clock), int(PlannedFault::Microseconds));
        QCOMPARE(byTime->at, 1'500'000LL);
        QCOMPARE(byTime->fault.toString(), QString("paper out"));
        const auto byByte = plannedFault("byte 100:swallow 7", &error);
        QVERIFY(byByte);
        QCOMPARE(int(byByte->clock), int(PlannedFault::Bytes));
        QCOMPARE(byByte->at, 100LL);
        QCOMPARE(byByte->fault.toString(), QString("swallow 7"));
    }

    void otherTimeIsTold_data()
    {
        QTest::addColumn<QString>("text");
        const char *const texts[] = {"paper out",      "x:paper out",       ":paper out",
                                     "-1:paper out",   "nan:paper out",     "inf:paper out",
                                     "byte:paper out", "byte -1:paper out", "byte x:paper out",
                                     "1e30:paper out"};
        for (const char *const text : texts)
            QTest::newRow(text) << QString(text);
    }

    void otherTimeIsTold()
    {
        QFETCH(QString, text);
        QString error;
        QVERIFY(!plannedFault(text, &error));
        QCOMPARE(error, QString("\"%1\" is neither SECONDS:COMMAND nor byte N:COMMAND").arg(text));
    }

    void commandOfATimeIsTold()
    {
        QString error;
        QVERIFY(!plannedFault("1:fire", &error));
        QCOMPARE(error, QString("\"fire\" is no command; \"help\" lists them"));
    }
};

QTEST_APPLESS_MAIN(TestPrinterFault)
#include "tst_printerfault.moc"
