#include <QtTest>

#include "receiptprogram.h"

namespace {

/// Runs "receipt state" with ' for " in the record, which comes from standard input.
ReceiptRun runState(const QByteArray &record, const QStringList &arguments = {"-"})
{
    return runReceipt(QStringList("state") + arguments, QByteArray(record).replace('\'', '"'));
}

const QByteArray working =
    "{'serviceState':1,'deviceState':2,'deviceErrorCode':5,'deviceNativeCode':4294967295,"
    "'deviceErrorMsg':'low','tapeAvailable':true}";

}  // namespace

class TestReceiptState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldIsExplained()
    {
        const ReceiptRun outcome = runState(working);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.output, QString("Service:       1 (works)\n"
                                         "Device:        2 (works, with a warning)\n"
                                         "Error code:    5 (0x00000005)\n"
                                         "Device's code: 4294967295 (0xffffffff)\n"
                                         "Message:       low\n"
                                         "Paper:         there\n"
                                         "On the bus:    1 (WARNING)\n"
                                         "Printing:      possible\n"));
        QCOMPARE(outcome.status, 0);
    }

    void statesAreGivenTheirMeaning_data()
    {
        QTest::addColumn<int>("service");
        QTest::addColumn<int>("device");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("service doesn't work")
            << 0 << 0
            << QStringList{"Service:       0 (doesn't work)", "On the bus:    0 (NORMAL)",
                           "Printing:      not possible"};
        QTest::newRow("service critical")
            << 4 << 0
            << QStringList{"Service:       4 (critical, doesn't work)",
                           "On the bus:    2 (CRITICAL)", "Printing:      not possible"};
        QTest::newRow("device fatal")
            << 2 << 4
            << QStringList{"Device:        4 (fatal, doesn't work)", "On the bus:    3 (FATAL)"};
        QTest::newRow("not set") << 255 << 255
                                 << QStringList{"Service:       255 (not set)",
                                                "Device:        255 (not set)",
                                                "On the bus:    255 (INVALID)",
                                                "Printing:      not possible"};
        QTest::newRow("device without meaning")
            << 3 << 9
            << QStringList{"Device:        9 (has no meaning)", "On the bus:    255 (INVALID)"};
    }

    void statesAreGivenTheirMeaning()
    {
        QFETCH(const int, service);
        QFETCH(const int, device);
        QFETCH(const QStringList, lines);
        const ReceiptRun outcome = runState(
            QString("{'serviceState':%1,'deviceState':%2}").arg(service).arg(device).toUtf8());
        QCOMPARE(outcome.status, 0);
        const QStringList printed = outcome.output.split('\n');
        for (const QString &line : lines)
            QVERIFY2(printed.contains(line), qPrintable(outcome.output));
        QVERIFY(outcome.errors.contains("note: \"tapeAvailable\" is missing"));
    }

    void wrongInputNamesItsPlace_data()
    {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QString>("message");
        QTest::newRow("no JSON") << QByteArray("{\n 'serviceState' 1}") << "receipt: -:2:";
        QTest::newRow("no object") << QByteArray("[1]") << "a state is a JSON object";
        QTest::newRow("wrong kind")
            << QByteArray("{'serviceState':'1'}") << "\"serviceState\" is of the wrong kind";
    }

    void wrongInputNamesItsPlace()
    {
        QFETCH(const QByteArray, record);
        QFETCH(const QString, message);
        const ReceiptRun outcome = runState(record);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.output, QString());
        QVERIFY2(outcome.errors.contains(message), qPrintable(outcome.errors));
    }

    void unknownFieldIsNoted()
    {
        const ReceiptRun outcome =
            runState(QByteArray(working).replace("}", ",'tapeAvailablle':1}"));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors,
                 QString("receipt: -: note: \"tapeAvailablle\" is no field of a state\n"));
    }

    void missingFileAndArgument()
    {
        QCOMPARE(runState("", {"/nonexistent/state.json"}).status, 1);
        QCOMPARE(runState("", {}).status, 2);
    }
};

QTEST_GUILESS_MAIN(TestReceiptState)
#include "tst_receipt_state.moc"
