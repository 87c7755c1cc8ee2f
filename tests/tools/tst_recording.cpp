// Recorded sessions with printers, and printers that play them again.
#include <QtTest>

#include "recording.h"
#include "replay.h"

namespace {

QVector<RecordedPiece> recording(const char *text)
{
    QString error;
    return readRecording(text, &error).value_or(QVector<RecordedPiece>());
}

const char *const session =
    "0.0 host 10 04 01\n"
    "0.5 printer 12\n"
    "0.6 host 41 0A 1D 72 01\n"
    "1.0 printer 00\n"
    "9.0 printer 14 00 00 0F\n";

}  // namespace

class TestRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreRead()
    {
        const auto pieces = recording("# a till\n\n0 host 1b40\r\n  0.0125   printer  12 0a \n");
        QCOMPARE(pieces.size(), 2);
        QCOMPARE(pieces.at(0).microseconds, 0LL);
        QVERIFY(!pieces.at(0).fromPrinter);
        QCOMPARE(pieces.at(0).bytes, QByteArray("\x1B@"));
        QCOMPARE(pieces.at(1).microseconds, 12'500LL);
        QVERIFY(pieces.at(1).fromPrinter);
        QCOMPARE(pieces.at(1).bytes, QByteArray("\x12\n"));
    }

    void piecesAreWrittenAsTheyAreRead()
    {
        QString text;
        const QVector<RecordedPiece> pieces = recording(session);
        for (const RecordedPiece &piece : pieces)
            text += piece.toString() + '\n';
        QCOMPARE(text, QString("0.000000 host 10 04 01\n0.500000 printer 12\n"
                               "0.600000 host 41 0A 1D 72 01\n1.000000 printer 00\n"
                               "9.000000 printer 14 00 00 0F\n"));
        QCOMPARE(recording(text.toLatin1()).size(), pieces.size());
    }

    void nothingIsARecording()
    {
        QString error;
        QCOMPARE(readRecording("", &error)->size(), 0);
    }

    void faultNamesItsLine_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("time") << QByteArray("#\nx host 00")
                              << "line 2: \"x\" is no time in seconds";
        QTest::newRow("negative time")
            << QByteArray("-1 host 00") << "line 1: \"-1\" is no time in seconds";
        QTest::newRow("time of nothing")
            << QByteArray("nan host 00") << "line 1: \"nan\" is no time in seconds";
        QTest::newRow("time that goes back") << QByteArray("1 host 00\n0.9 host 00")
                                             << "line 2: the time is before that of the line above";
        QTest::newRow("side") << QByteArray("1 till 00")
                              << "line 1: \"till\" is neither host nor printer";
        QTest::newRow("no side") << QByteArray("1") << "line 1: \"\" is neither host nor printer";
        QTest::newRow("no bytes") << QByteArray("1 host")
                                  << "line 1: there are no bytes in hexadecimal";
        QTest::newRow("half a byte")
            << QByteArray("1 host 0") << "line 1: there are no bytes in hexadecimal";
        QTest::newRow("other digits")
            << QByteArray("1 host 0G") << "line 1: there are no bytes in hexadecimal";
        QTest::newRow("bytes that are no text")
            << QByteArray("1 host \xFF\xFE") << "line 1: there are no bytes in hexadecimal";
    }

    void faultNamesItsLine()
    {
        QFETCH(QByteArray, text);
        QString error;
        QVERIFY(!readRecording(text, &error));
        QTEST(error, "message");
    }

    void answersComeBehindTheirBytesAndTime()
    {
        Replay replay(recording(session));
        replay.advanceTo(5'000'000);
        QCOMPARE(replay.takeAnswers(), QByteArray());
        QCOMPARE(replay.nextEvent(), -1LL);
        replay.take(QByteArray::fromHex("1004"));
        QCOMPARE(replay.nextEvent(), -1LL);
        replay.take(QByteArray::fromHex("01"));
        QCOMPARE(replay.nextEvent(), 5'500'000LL);
        replay.advanceTo(5'499'999);
        QCOMPARE(replay.takeAnswers(), QByteArray());
        replay.advanceTo(5'500'000);
        QCOMPARE(replay.takeAnswers(), QByteArray::fromHex("12"));
        QCOMPARE(replay.takeAnswers(), QByteArray());
        replay.advanceTo(6'000'000);
        replay.take("A\n\x1Dr\x01");
        replay.advanceTo(6'400'000);
        QCOMPARE(replay.takeAnswers(), QByteArray(1, '\0'));
        QCOMPARE(replay.takeNotes(), QStringList());
        replay.advanceTo(14'400'000);
        QCOMPARE(replay.takeAnswers(), QByteArray::fromHex("1400000F"));
        QCOMPARE(replay.takeNotes(), QStringList("the recording has ended"));
        QCOMPARE(replay.nextEvent(), -1LL);
    }

    void hostMayRunAhead()
    {
        Replay replay(recording(session));
        replay.take(QByteArray::fromHex("100401410A1D7201"));
        replay.advanceTo(100'000'000);
        QCOMPARE(replay.takeAnswers(), QByteArray::fromHex("12"));
        replay.advanceTo(100'400'000);
        QCOMPARE(replay.takeAnswers(), QByteArray(1, '\0'));
        replay.advanceTo(200'000'000);
        replay.takeAnswers();
        QCOMPARE(replay.takeNotes(), QStringList("the recording has ended"));
    }

    void firstDifferenceIsTold()
    {
        Replay replay(recording(session));
        replay.take(QByteArray::fromHex("1004"));
        replay.take(QByteArray::fromHex("0242"));
        QCOMPARE(replay.takeNotes(),
                 QStringList("differs: byte 2 is 02, where the recording has 01"));
        replay.advanceTo(500'000);
        QCOMPARE(replay.takeAnswers(), QByteArray::fromHex("12"));
    }

    void bytesBehindTheEndAreTold()
    {
        Replay replay(recording("0 host 41"));
        replay.take("A");
        QCOMPARE(replay.takeNotes(), QStringList("the recording has ended"));
        replay.take("BC");
        QCOMPARE(replay.takeNotes(), QStringList("differs: byte 1 is more than the recording has"));
        replay.take("D");
        QCOMPARE(replay.takeNotes(), QStringList());
    }

    void printerMaySpeakFirst()
    {
        Replay replay(recording("0 printer 11\n1 host 41\n"));
        QCOMPARE(replay.takeAnswers(), QByteArray("\x11"));
    }
};

QTEST_APPLESS_MAIN(TestRecording)
#include "tst_recording.moc"
