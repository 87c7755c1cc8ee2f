// Streams that end anywhere, come in pieces, or are endless.
#include <QtTest>

#include "printerstreams.h"
#include "streamreading.h"

using namespace streamreading;
using printerstreams::holds;

class TestStreamReaderPieces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsInsideCommands_data();
    void endsInsideCommands();
    void whatIsTooLongIsGivenUp_data();
    void whatIsTooLongIsGivenUp();
    void longestCommandIsWhole();
    void longCommandsInSmallPiecesTakeNoLonger();
    void unendingTextsInSmallPiecesAreSearchedOnce();
    void bytesPutTogetherAreTheStream();
    void piecesMakeTheSameCommands();
    void everyCutOfAStreamIsRead();
};

void TestStreamReaderPieces::endsInsideCommands_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("commands");
    const auto row = [](const char *name, const char *stream, const char *commands) {
        QTest::newRow(name) << QByteArray(stream) << QByteArray(commands);
    };
    row("introducer", "'A'1b", "'A'; incomplete  1/0");
    row("operand", "1b45", "incomplete ESC E 2/3");
    row("last operand", "1b7000", "incomplete ESC p 3/5");
    row("length", "1d286b03", "incomplete GS ( k 4/0");
    row("function", "1d286b030031", "incomplete GS ( k 6/8");
    row("length of a picture", "1d7630000200", "incomplete GS v 0 6/0");
    row("data of a picture", "1d76300002000300'abcde'", "incomplete GS v 0 13/14");
    row("no data of a picture", "1d76300060006000", "incomplete GS v 0 8/9224");
    row("data without an end", "1d6b02'4006'", "incomplete GS k 7/0");
    row("tab stops", "1b440810", "incomplete ESC D 4/0");
    row("unknown with a length", "1d28790300'ab'", "incomplete GS ( 7/8");
    row("unknown without its length", "1d28", "incomplete GS ( 2/0");
    row("operand that may be missing", "1b34", "ESC 4");
    row("stored pictures", "1c7102 00000000 00", "incomplete FS q 8/0");
    row("four bytes of length", "1d384c ffffffff 3070", "incomplete GS 8 L 9/4294967302");
}

void TestStreamReaderPieces::endsInsideCommands()
{
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, commands);
    QCOMPARE(told(stream), commands);
}

void TestStreamReaderPieces::whatIsTooLongIsGivenUp()
{
    constexpr int longest = 64 * 1024 * 1024;
    QFETCH(QByteArray, head);
    QFETCH(qint64, expected);
    const QByteArray stream = head + QByteArray(longest, 'x');
    const PrinterProfile profile = profileOf();
    const auto whole = StreamReader::commandsOf(stream, profile);
    QCOMPARE(whole.size(), 2);
    QCOMPARE(whole.first().kind, StreamCommand::Incomplete);
    QCOMPARE(whole.first().bytesExpected, expected);
    QCOMPARE(whole.first().bytes.size(), longest);
    QCOMPARE(told(whole.at(1)), "'" + QByteArray(head.size(), 'x') + "'");
    QCOMPARE(whole.at(1).offset, qint64(longest));
    QVERIFY(areSame(joined(readInPieces(stream, profile, {longest / 2, longest / 2 - 1})), whole));
}

void TestStreamReaderPieces::whatIsTooLongIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("a length") << streamOf("1d385affffffff") << qint64(4294967302);
    QTest::newRow("a byte too long") << streamOf("1d385afaffff03") << qint64(64 * 1024 * 1024 + 1);
    QTest::newRow("no end") << streamOf("1d6b04") << qint64(0);
}

void TestStreamReaderPieces::longestCommandIsWhole()
{
    constexpr int longest = 64 * 1024 * 1024;
    const QByteArray stream = streamOf("1d385af9ffff03") + QByteArray(longest - 7, 'x') + 'A';
    const auto commands = StreamReader::commandsOf(stream, profileOf());
    QCOMPARE(commands.size(), 2);
    QCOMPARE(commands.first().kind, StreamCommand::Skipped);
    QCOMPARE(commands.first().bytes.size(), longest);
}

// Were the bytes looked at again with each new one, these would take hours.
void TestStreamReaderPieces::longCommandsInSmallPiecesTakeNoLonger()
{
    constexpr int size = 1'000'000;
    StreamReader reader(profileOf());
    reader.read(streamOf("1d385a40420f00"));
    for (int i = 0; i < size - 1; ++i)
        QVERIFY(reader.read("x").isEmpty());
    const auto commands = reader.read("x");
    QCOMPARE(commands.size(), 1);
    QCOMPARE(commands.first().bytes.size(), size + 7);
}

void TestStreamReaderPieces::unendingTextsInSmallPiecesAreSearchedOnce()
{
    constexpr int size = 1'000'000;
    StreamReader reader(profileOf());
    reader.read(streamOf("1d6b04"));
    for (int i = 0; i < size; ++i)
        QVERIFY(reader.read("x").isEmpty());
    const auto commands = reader.read(QByteArray(1, '\0'));
    QCOMPARE(commands.size(), 1);
    QCOMPARE(commands.first().bytes.size(), size + 4);
}

void TestStreamReaderPieces::bytesPutTogetherAreTheStream()
{
    QVERIFY(
        holds("put together = stream", [](const QByteArray &stream, const PrinterProfile &profile) {
            const auto commands = StreamReader::commandsOf(stream, profile);
            RC_ASSERT(together(commands) == stream);
            qint64 offset = 0;
            for (const StreamCommand &command : commands) {
                RC_ASSERT(command.offset == offset);
                RC_ASSERT(!command.bytes.isEmpty());
                RC_ASSERT(command.operandsBegin <= command.payloadBegin);
                RC_ASSERT(command.payloadBegin <= command.bytes.size());
                offset += command.bytes.size();
            }
        }));
}

void TestStreamReaderPieces::piecesMakeTheSameCommands()
{
    QVERIFY(holds("pieces = whole", [](const QByteArray &stream, const PrinterProfile &profile) {
        const auto sizes = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 9));
        const auto whole = StreamReader::commandsOf(stream, profile);
        RC_ASSERT(areSame(joined(readInPieces(stream, profile, sizes)), joined(whole)));
    }));
}

void TestStreamReaderPieces::everyCutOfAStreamIsRead()
{
    QVERIFY(holds("cut anywhere", [](const QByteArray &stream, const PrinterProfile &profile) {
        for (int size = 0; size <= stream.size(); ++size) {
            const auto commands = StreamReader::commandsOf(stream.left(size), profile);
            RC_ASSERT(together(commands) == stream.left(size));
            for (int i = 0; i + 1 < commands.size(); ++i)
                RC_ASSERT(commands.at(i).kind != StreamCommand::Incomplete);
        }
    }));
}

QTEST_APPLESS_MAIN(TestStreamReaderPieces)
#include "tst_streamreader_pieces.moc"
