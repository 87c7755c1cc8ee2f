// What the played printer says, as it was written down from the manuals by others, is understood.
#include <QtTest>

#include "answersof.h"
#include "statusbytes.h"

using namespace answersof;

class TestPlayedStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStateIsUnderstood_data();
    void everyStateIsUnderstood();

private:
    static QByteArray wholeStatus(Dialect dialect, const PrinterHardware &hardware);
};

QByteArray TestPlayedStatus::wholeStatus(Dialect dialect, const PrinterHardware &hardware)
{
    QByteArray bytes;
    switch (dialect) {
        case Dialect::StarLine:
            return statusbytes::starStatus(hardware, 0, false);
        case Dialect::Swecoin:
            return statusbytes::swecoinError(hardware) +
                   statusbytes::swecoinStatus(hardware, false, false);
        case Dialect::EscPos:
            for (int n = 1; n <= 4; ++n)
                bytes += statusbytes::realTimeStatus(n, hardware);
    }
    return bytes;
}

void TestPlayedStatus::everyStateIsUnderstood_data()
{
    QTest::addColumn<QString>("model");
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids)
        QTest::newRow(qPrintable(id)) << id;
}

void TestPlayedStatus::everyStateIsUnderstood()
{
    QFETCH(QString, model);
    const PrinterProfile profile = *PrinterProfile::forModel(model);
    for (unsigned int state = 0; state < 32; ++state) {
        PrinterHardware hardware;
        hardware.hasPaper = (state & 1U) == 0;
        hardware.isNearEnd = (state & 2U) != 0;
        hardware.isCoverOpen = (state & 4U) != 0;
        hardware.isCutterJammed = (state & 8U) != 0;
        hardware.isSwitchedOffLine = (state & 16U) != 0;
        StatusDialogue dialogue(profile);
        const auto check = [&] {
            const PrinterStatus status = dialogue.status();
            QVERIFY(status.isKnown());
            QCOMPARE(status.has(PrinterStatus::PaperOut), !hardware.hasPaper);
            QCOMPARE(status.has(PrinterStatus::PaperNearEnd), hardware.seesNearEnd());
            QCOMPARE(status.has(PrinterStatus::CoverOpen), hardware.isCoverOpen);
            QVERIFY(status.has(PrinterStatus::CutterError) || !hardware.isCutterJammed);
            QVERIFY(hardware.isCutterJammed || !status.has(PrinterStatus::CutterError));
            // Swecoin's answers have no word for it.
            if (profile.dialect() != Dialect::Swecoin)
                QCOMPARE(status.canPrint(), !hardware.isStopped());
        };
        dialogue.askStatus();
        dialogue.read(wholeStatus(profile.dialect(), hardware));
        QVERIFY(dialogue.expected().isEmpty());
        check();
        if (profile.dialect() == Dialect::EscPos) {
            dialogue.reset();
            dialogue.read(statusbytes::automaticStatus(hardware));
            check();
        }
        QCOMPARE(dialogue.strayBytes(), qint64(0));
    }
}

QTEST_APPLESS_MAIN(TestPlayedStatus)
#include "tst_playedstatus.moc"
