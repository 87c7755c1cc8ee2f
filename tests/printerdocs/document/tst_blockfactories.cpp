#include <QtTest>

#include "blockbench.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/echarformat.h"

using namespace blockbench;

/// Blocks made of lines, texts and nothing, and what appending, cases and margins make of them.
class TestBlockFactories : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyBlockHasEmptyLines()
    {
        QVERIFY(Block::emptyBlock(0, AlignLeft, 0) == Block());
        QVERIFY(Block::emptyBlock(-1, AlignRight, 5) == Block());
        QVERIFY(Block::emptyBlock(maximum, AlignRight, 5) == Block());
        const Block block = Block::emptyBlock(2, AlignRight, 5);
        QCOMPARE(block.text(), (QStringList{"", ""}));
        QCOMPARE(block.format(), (Bytes{"", ""}));
        QCOMPARE(block.font(), (Bytes{"", ""}));
        QCOMPARE(block.lineSpacing(), (QList<int>{5, 5}));
        QCOMPARE(block.alignment(), AlignRight);
        QVERIFY(block.isText());
        QVERIFY(block.isEmpty());
        QVERIFY(block.isValid());
    }

    void simpleBlockOfLines()
    {
        const Block block =
            Block::createSimpleBlock(QStringList{"ab", ""}, AlignCenter, 3, 0x41, 9, 1);
        QCOMPARE(block.type(), Block::BlockText);
        QCOMPARE(block.text(), (QStringList{" ab", " "}));
        QCOMPARE(block.font(), (Bytes{QByteArray("\0\3\3", 3), QByteArray(1, '\0')}));
        QCOMPARE(block.format(), (Bytes{QByteArray("\0AA", 3), QByteArray(1, '\0')}));
        QCOMPARE(block.lineSpacing(), (QList<int>{9, 9}));
        QCOMPARE(block.alignment(), AlignCenter);
        QVERIFY(!Block::createSimpleBlock(QStringList(), AlignLeft, 0, 0, 0, 1).isText());
    }

    void simpleBlockOfTextSplitsBytesWithTheLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<Bytes>("split");
        QTest::newRow("one byte goes on")
            << "a\n\nbc" << QByteArray("\x01") << QStringList{"a", "", "bc"}
            << Bytes{"\x01", "", "\x01\x01"};
        QTest::newRow("no bytes are zero bytes")
            << "a\nbc" << QByteArray() << QStringList{"a", "bc"}
            << Bytes{QByteArray(1, '\0'), QByteArray(2, '\0')};
        QTest::newRow("line breaks take a byte")
            << "ab\ncd" << QByteArray("12n34") << QStringList{"ab", "cd"} << Bytes{"12", "34"};
        QTest::newRow("empty lines take one too")
            << "\n\nab\n"
            << QByteArray("xy12z") << QStringList{"", "", "ab", ""} << Bytes{"", "", "12", ""};
        QTest::newRow("short bytes go on")
            << "abc\nd" << QByteArray("12") << QStringList{"abc", "d"} << Bytes{"122", "2"};
        QTest::newRow("long bytes are cut")
            << "a" << QByteArray("123") << QStringList{"a"} << Bytes{"1"};
        QTest::newRow("empty text is one empty line")
            << "" << QByteArray("1") << QStringList{""} << Bytes{""};
    }

    void simpleBlockOfTextSplitsBytesWithTheLines()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(Bytes, split);
        const Block block = Block::createSimpleBlock(text, AlignRight, bytes, bytes, 4, 0);
        QCOMPARE(block.text(), lines);
        QCOMPARE(block.font(), split);
        QCOMPARE(block.format(), split);
        QCOMPARE(block.alignment(), AlignRight);
        QCOMPARE(block.lineSpacing().count(4), lines.size());
        QVERIFY(block.isText());
    }

    void simpleBlockOfTextKeepsFontAndFormatApart()
    {
        const Block block = Block::createSimpleBlock(QString("a\nb"), AlignLeft, QByteArray("F"),
                                                     QByteArray("f"), 0, 1);
        QCOMPARE(block.font(), (Bytes{QByteArray("\0F", 2), QByteArray("\0F", 2)}));
        QCOMPARE(block.format(), (Bytes{QByteArray("\0f", 2), QByteArray("\0f", 2)}));
        QCOMPARE(block.text(), (QStringList{" a", " b"}));
    }

    void caseChangesInEveryBlock()
    {
        Block block = blockOf({"Straße", "Чай"});
        block.toUpper();
        QCOMPARE(block.text(), (QStringList{"STRASSE", "ЧАЙ"}));
        block.toLower();
        QCOMPARE(block.text(), (QStringList{"strasse", "чай"}));
        Block barcode;
        barcode.setBarCode("123");
        barcode.toLower();
        QCOMPARE(barcode.text(), QStringList{"mtiz"});
    }

    void appendJoinsTextBlocksOfOneAlignment()
    {
        Block first = Block::createSimpleBlock(QStringList{"a"}, AlignRight, 1, 2, 3, 0);
        const Block second =
            Block::createSimpleBlock(QStringList{"bc", ""}, AlignRight, 4, 5, 6, 0);
        QCOMPARE(first.append(second), true);
        QCOMPARE(first.text(), (QStringList{"a", "bc", ""}));
        QCOMPARE(first.font(), (Bytes{"\x01", "\x04\x04", ""}));
        QCOMPARE(first.format(), (Bytes{"\x02", "\x05\x05", ""}));
        QCOMPARE(first.lineSpacing(), (QList<int>{3, 6, 6}));
        QCOMPARE(first.alignment(), AlignRight);
        QCOMPARE(second.text(), (QStringList{"bc", ""}));
    }

    void appendToItselfDoublesTheLines()
    {
        Block block = blockOf({"a", "b"});
        QCOMPARE(block.append(block), true);
        QCOMPARE(block.text(), (QStringList{"a", "b", "a", "b"}));
        QVERIFY(block.isText());
    }

    void appendRefusesWhatDoesNotFit()
    {
        const Block text = blockOf({"a"});
        Block qrCode;
        qrCode.setQrCode("x");
        const Block others[] = {blockOf({"b"}, AlignRight), Block(), qrCode};
        for (const Block &other : others) {
            Block left = text;
            QCOMPARE(left.append(other), false);
            QVERIFY(left == text);
            Block right = other;
            QCOMPARE(right.append(text), false);
            QVERIFY(right == other);
        }
    }

    void manyBlocksMerge()
    {
        Block block = blockOf({"0"});
        for (int line = 1; line < 100000; ++line)
            QVERIFY(block.append(blockOf({QString::number(line)})));
        QCOMPARE(block.text().size(), 100000);
        QCOMPARE(block.toStringList(5).last(), QString("99999"));
    }

    void spacesBeforeActFromOneToSixteen_data()
    {
        QTest::addColumn<int>("spaces");
        QTest::addColumn<int>("added");
        QTest::newRow("negative") << -1 << 0;
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("one") << 1 << 1;
        QTest::newRow("sixteen") << 16 << 16;
        QTest::newRow("seventeen") << 17 << 0;
        QTest::newRow("largest") << maximum << 0;
    }

    void spacesBeforeActFromOneToSixteen()
    {
        QFETCH(int, spaces);
        QFETCH(int, added);
        Block block = Block::createSimpleBlock(QStringList{"a", ""}, AlignLeft, 1, 2, 3, 0);
        block.setSpacesBefore(spaces);
        const QString blanks(added, ' ');
        const QByteArray zeros(added, '\0');
        QCOMPARE(block.text(), (QStringList{blanks + "a", blanks}));
        QCOMPARE(block.font(), (Bytes{zeros + "\x01", zeros}));
        QCOMPARE(block.format(), (Bytes{zeros + "\x02", zeros}));
        QCOMPARE(block.lineSpacing(), (QList<int>{3, 3}));
    }

    void spacesBeforeLeaveMissingEntriesMissing()
    {
        Block block;
        block.setText({"a", "b"});
        block.setFont(Bytes{"x"});
        block.setSpacesBefore(2);
        QCOMPARE(block.text(), (QStringList{"  a", "  b"}));
        QCOMPARE(block.font(), (Bytes{QByteArray("\0\0x", 3)}));
        QVERIFY(block.format().isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestBlockFactories)
#include "tst_blockfactories.moc"
