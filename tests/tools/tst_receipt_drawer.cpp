// "receipt drawer": what it sends to open a drawer, and what it tells of that.
#include <QJsonDocument>
#include <QJsonObject>

#include "playedprinter.h"

namespace {

const QString citizen = "CITIZEN_CTS_2000";

ReceiptRun drawer(const QString &address, const QStringList &options = {},
                  const QString &model = citizen)
{
    return runReceipt(QStringList{"drawer", "--to", address, "--model", model} + options);
}

/// Bytes without the job's own questions, which stand in front and behind.
QByteArray pulseIn(const QByteArray &bytes, const char *beginning)
{
    const int begin = bytes.indexOf(QByteArray::fromHex(beginning));
    return begin < 0 ? QByteArray() : bytes.mid(begin, 5);
}

}  // namespace

class TestReceiptDrawer : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

private Q_SLOTS:
    void drawerIsOpenedByTheModelsCommand_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("listed");
        QTest::newRow("first") << citizen << QStringList() << "1B 70 00 32 32";
        QTest::newRow("first by its pin")
            << citizen << QStringList{"--pin", "2"} << "1B 70 00 32 32";
        QTest::newRow("second") << citizen << QStringList{"--pin", "5"} << "1B 70 01 32 32";
        QTest::newRow("Star's first") << "TSP-TUP" << QStringList() << "1B 07 0A 0A 07";
        QTest::newRow("Star's second") << "TSP-TUP" << QStringList{"--pin", "5"} << "19";
    }
    void drawerIsOpenedByTheModelsCommand()
    {
        QFETCH(QString, model);
        QFETCH(QStringList, options);
        QFETCH(QString, listed);
        PlayedPrinter printer(model);
        const ReceiptRun run = drawer(printer.address(), options, model);
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith(printer.address() + ": obeyed: the drawer at pin "),
                 qPrintable(run.output));
        QCOMPARE(run.status, 0);
        const QByteArray bytes = printer.received();
        QVERIFY2(bytes.contains(QByteArray::fromHex(listed.toLatin1())),
                 bytes.toHex(' ').constData());
        // Nothing else is set or fed.
        QVERIFY(!bytes.contains(QByteArray::fromHex("1B40")));
        QCOMPARE(runReceipt({"decode", "-", "--model", model}, bytes).output, QString());
    }

    void exitStatusTellsThatItIsNotOpened()
    {
        PlayedPrinter printer;
        QVERIFY(printer.befall("paper out"));
        const ReceiptRun run = drawer(printer.address());
        QVERIFY2(run.errors.contains(": not sent: There is no paper."), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 4);
        QVERIFY(pulseIn(printer.received(), "1B70").isEmpty());
    }

    void modelWithoutADrawerIsTold()
    {
        PlayedPrinter printer("SWECOIN_TM_20XX");
        const ReceiptRun run = drawer(printer.address(), {}, "SWECOIN_TM_20XX");
        QCOMPARE(run.errors, QString("receipt: SWECOIN_TM_20XX has no drawer at pin 2\n"));
        QCOMPARE(run.status, 1);
        QCOMPARE(printer.received(), QByteArray());
    }

    void jsonTellsTheOutcome()
    {
        PlayedPrinter printer;
        const ReceiptRun run = drawer(printer.address(), {"--json"});
        const QJsonObject json = QJsonDocument::fromJson(run.output.toUtf8()).object();
        QCOMPARE(json.value("outcome").toString(), QString("processed"));
        QCOMPARE(json.value("totalBytes").toInt(), 5);
        QCOMPARE(json.value("pieces").toInt(-1), 0);
    }

    void printerOfTheConfigurationIsTaken()
    {
        PlayedPrinter printer;
        const QString file = m_folder.file("shop.conf", "to=" + printer.address().toUtf8() +
                                                            "\nmodel=CITIZEN_CTS_2000\npaper=1\n");
        const ReceiptRun run = runReceipt({"drawer", "--config", file});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(pulseIn(printer.received(), "1B70"), QByteArray::fromHex("1B70003232"));
    }

    void wrongUsageIsRefused_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("no printer") << QStringList() << "drawer needs --to URL";
        QTest::newRow("file") << QStringList{"--to", "file:/tmp/x"} << "is a file";
        QTest::newRow("pin") << QStringList{"--to", "tcp:a", "--pin", "3"}
                             << "--pin: \"3\" is none of 2, 5";
        QTest::newRow("pin below") << QStringList{"--to", "tcp:a", "--pin", "1"}
                                   << "--pin: \"1\" is no number from 2 to 5";
        QTest::newRow("model") << QStringList{"--to", "tcp:a", "--model", "X"}
                               << "there is no model \"X\"";
        QTest::newRow("argument") << QStringList{"open"} << "wrong number of arguments";
    }
    void wrongUsageIsRefused()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(QStringList("drawer") + options);
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.status, 2);
    }
};

QTEST_GUILESS_MAIN(TestReceiptDrawer)
#include "tst_receipt_drawer.moc"
