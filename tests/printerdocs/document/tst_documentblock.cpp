#include <QtTest>
#include <limits>

#include "printerdocs/documentblock.h"
#include "printerdocs/echarformat.h"

namespace {

using Block = DocumentBlock;
using Bytes = QList<QByteArray>;

constexpr int maximum = std::numeric_limits<int>::max();
constexpr int minimum = std::numeric_limits<int>::min();

Block blockOf(const QStringList &lines, ETextAlignment alignment = AlignLeft)
{
    return Block::createSimpleBlock(lines, alignment, 0, 0, 0, 0);
}

const MonochromeImage dot(1, 1, QByteArray("\x80", 1));

}  // namespace

class TestDocumentBlock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultBlockHoldsNothing()
    {
        Block block;
        QCOMPARE(block.type(), Block::BlockText);
        QCOMPARE(block.barCodeType(), Block::BarcodeNone);
        QVERIFY(block.text().isEmpty());
        QVERIFY(block.format().isEmpty());
        QVERIFY(block.font().isEmpty());
        QCOMPARE(block.alignment(), AlignLeft);
        QVERIFY(block.lineSpacing().isEmpty());
        QVERIFY(block.img() == MonochromeImage());
        QVERIFY(!block.isText());
        QVERIFY(!block.isValid());
        QVERIFY(!block.isEmpty());
        QVERIFY(block.toStringList(80).isEmpty());
        QCOMPARE(block.symbolsCount(), 0);
        QVERIFY(block.qrCode().isNull());
        QVERIFY(block.barcode().isNull());
    }

    void enumeratorsKeepTheirNumbers()
    {
        QCOMPARE(int(Block::BlockText), 0);
        QCOMPARE(int(Block::BlockImage), 1);
        QCOMPARE(int(Block::BlockBarcode), 2);
        QCOMPARE(int(Block::BlockQrCode), 3);
        QCOMPARE(int(Block::BarcodeNone), 0);
        QCOMPARE(int(Block::BarcodeBbCode), 7);
        QCOMPARE(int(sizeof(Block::EBlockType)), 4);
        QCOMPARE(int(sizeof(Block::EBarcodeType)), 4);
        QCOMPARE(int(sizeof(ETextAlignment)), 4);
        QCOMPARE(int(AlignLeft), 0);
        QCOMPARE(int(AlignRight), 1);
        QCOMPARE(int(AlignCenter), 2);
        QCOMPARE(int(AlignJustify), 3);
        QCOMPARE(int(CharBold), 0x01);
        QCOMPARE(int(CharItalic), 0x02);
        QCOMPARE(int(CharMarkZ), 0x04);
        QCOMPARE(int(CharUnderline), 0x08);
        QCOMPARE(int(CharDoubleWidth), 0x10);
        QCOMPARE(int(CharDoubleHeight), 0x20);
        QCOMPARE(int(CharRawCode), 0x40);
    }

    void settersTouchTheirFieldOnly()
    {
        Block block;
        block.setImg(dot);
        QCOMPARE(block.type(), Block::BlockText);
        block.setType(Block::BlockImage);
        block.setBarCodeType(static_cast<Block::EBarcodeType>(12345));
        block.setText({"a"});
        block.setFormat(Bytes{"f"});
        block.setFont(Bytes{"F"});
        block.setAlignment(static_cast<ETextAlignment>(-3));
        block.setLineSpacing(QList<int>{5});
        QVERIFY(block.img() == dot);
        QCOMPARE(block.type(), Block::BlockImage);
        QCOMPARE(int(block.barCodeType()), 12345);
        QCOMPARE(block.text(), QStringList{"a"});
        QCOMPARE(block.format(), Bytes{"f"});
        QCOMPARE(block.font(), Bytes{"F"});
        QCOMPARE(int(block.alignment()), -3);
        QCOMPARE(block.lineSpacing(), QList<int>{5});
    }

    void listsOutOfStepAreNoText()
    {
        const Block good = blockOf({"a", "b", "c"});
        QVERIFY(good.isText());
        Block block = good;
        block.setFont(Bytes{"", ""});
        QVERIFY(!block.isText());
        QVERIFY(!block.isValid());
        QVERIFY(block.toStringList(10).isEmpty());
        block = good;
        block.setFormat(Bytes{"", "", "", ""});
        QVERIFY(!block.isText());
        block = good;
        block.setLineSpacing(QList<int>{0});
        QVERIFY(!block.isText());
        block = good;
        block.setText({"a"});
        QVERIFY(!block.isText());
        block = good;
        block.setType(Block::BlockQrCode);
        QVERIFY(!block.isText());
    }

    void arraysOfAnyLengthAreText()
    {
        Block block = blockOf({"abc"});
        block.setFont(Bytes{""});
        block.setFormat(Bytes{"ab"});
        QVERIFY(block.isText());
    }

    void imageNeedsTypeAndValidImage()
    {
        Block block;
        block.setImg(dot);
        QVERIFY(!block.isImage());
        block.setType(Block::BlockImage);
        QVERIFY(block.isImage());
        QVERIFY(block.isValid());
        QVERIFY(!block.isEmpty());
        block.setImg(MonochromeImage());
        QVERIFY(!block.isImage());
        QVERIFY(!block.isValid());
    }

    void barcodeNeedsTypePayloadAndSymbology()
    {
        Block block;
        block.setBarCode("123");
        QCOMPARE(block.type(), Block::BlockBarcode);
        QCOMPARE(block.text(), QStringList{"MTIz"});
        QCOMPARE(block.barcode(), QByteArray("123"));
        QVERIFY(!block.isBarcode());
        block.setBarCodeType(Block::BarcodeBbCode);
        QVERIFY(block.isBarcode());
        QVERIFY(block.isValid());
        QVERIFY(!block.isEmpty());
        block.setText({});
        QVERIFY(!block.isBarcode());
    }

    void settingABarcodeReplacesTheText()
    {
        Block block = blockOf({"a", "b"});
        block.setBarCode("x", static_cast<Block::EBarcodeType>(99));
        QCOMPARE(block.text(), QStringList{"eA=="});
        QCOMPARE(int(block.barCodeType()), 99);
        block.setBarCode("y");
        QCOMPARE(int(block.barCodeType()), 99);
        QCOMPARE(block.barcode(), QByteArray("y"));
        QCOMPARE(block.format().size(), 2);
    }

    void nullBarcodeIsOneEmptyText()
    {
        Block block;
        block.setBarCode(QByteArray(), Block::BarcodeBbCode);
        QCOMPARE(block.text(), QStringList{""});
        QVERIFY(block.isBarcode());
        QVERIFY(block.barcode().isEmpty());
    }

    void qrCodeNeedsTypeAndPayload()
    {
        Block block = blockOf({"a", "b"});
        block.setQrCode(QByteArray("\x00\xff", 2));
        QCOMPARE(block.type(), Block::BlockQrCode);
        QCOMPARE(block.text(), QStringList{"AP8="});
        QCOMPARE(block.qrCode(), QByteArray("\x00\xff", 2));
        QVERIFY(block.isQrCode());
        QVERIFY(block.isValid());
        QVERIFY(!block.isEmpty());
        QVERIFY(!block.isBarcode());
        QCOMPARE(block.barCodeType(), Block::BarcodeNone);
        block.setText({});
        QVERIFY(!block.isQrCode());
    }

    void payloadIsReadFromTheFirstLineOfAnyBlock()
    {
        const Block block = blockOf({"MTIz", "eA=="});
        QCOMPARE(block.qrCode(), QByteArray("123"));
        QCOMPARE(block.barcode(), QByteArray("123"));
        QCOMPARE(blockOf({"Ж"}).qrCode(), QByteArray());
    }

    void emptyMeansAllLinesBlank_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<bool>("empty");
        QTest::newRow("one empty line") << QStringList{""} << true;
        QTest::newRow("blanks and tabs") << QStringList{"   ", " \t "} << true;
        QTest::newRow("no-break space is trimmed too") << QStringList{"\u00a0"} << true;
        QTest::newRow("one character in the last line") << QStringList{"  ", "", " x"} << false;
        QTest::newRow("a special symbol") << QStringList{QString(QChar(3))} << false;
    }

    void emptyMeansAllLinesBlank()
    {
        QFETCH(QStringList, lines);
        QTEST(blockOf(lines).isEmpty(), "empty");
    }

    void symbolsOfTextBlocksAreCounted()
    {
        QCOMPARE(blockOf({"ab\tc", "", QString(QChar(1)), "Чай"}).symbolsCount(), 8);
        Block block;
        block.setText({"abc"});
        QCOMPARE(block.symbolsCount(), 3);  // the type counts, not isText()
        block.setQrCode("abc");
        QCOMPARE(block.symbolsCount(), 0);
    }

    void symbolsBeyondTheRangeAreCappedAtIt()
    {
        const QString line(1 << 20, 'x');
        QStringList lines;
        for (int i = 0; i < 4096; ++i)
            lines.append(line);
        Block block;
        block.setText(lines);
        QCOMPARE(block.symbolsCount(), maximum);
    }

    void oneByteFillsEveryCharacter()
    {
        Block block;
        block.setText({"abc", "", "Ж"});
        block.setFormat(static_cast<unsigned char>(0x81));
        block.setFont(static_cast<unsigned char>(2));
        QCOMPARE(block.format(), (Bytes{"\x81\x81\x81", "", "\x81"}));
        QCOMPARE(block.font(), (Bytes{"\x02\x02\x02", "", "\x02"}));
        block.setText({});
        block.setFormat(static_cast<unsigned char>(1));
        QVERIFY(block.format().isEmpty());
    }

    void oneLineSpacingFillsEveryLine()
    {
        Block block;
        block.setLineSpacing(QList<int>{1, 2, 3, 4});
        block.setText({"a", "b"});
        block.setLineSpacing(-7);
        QCOMPARE(block.lineSpacing(), (QList<int>{-7, -7}));
        block.setText({});
        block.setLineSpacing(1);
        QVERIFY(block.lineSpacing().isEmpty());
    }

    void fontSizeIsFontPlusOneDoubledForDoubleBothWays_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("font");
        QTest::addColumn<int>("size");
        QTest::newRow("plain") << 0x00 << 1 << 2;
        QTest::newRow("double width alone") << 0x10 << 1 << 2;
        QTest::newRow("double height alone") << 0x20 << 1 << 2;
        QTest::newRow("both") << 0x30 << 1 << 4;
        QTest::newRow("both, first font") << 0x30 << 0 << 2;
        QTest::newRow("both among others") << 0xff << 3 << 8;
        QTest::newRow("largest font") << 0x00 << 127 << 128;
        QTest::newRow("font is signed") << 0x00 << 0xff << 0;
        QTest::newRow("most negative font doubled") << 0x30 << 0x80 << -254;
    }

    void fontSizeIsFontPlusOneDoubledForDoubleBothWays()
    {
        QFETCH(int, format);
        QFETCH(int, font);
        QTEST(Block().prepareFont(char(format), char(font)), "size");
    }

    void linesAreLaidOutForTheWidth_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("laidOut");
        const auto row = [](const char *name, const char *line, int alignment, int width,
                            const char *laidOut) {
            QTest::newRow(name) << QString(line) << alignment << width << QString(laidOut);
        };
        row("left is left alone", "abc", AlignLeft, 10, "abc");
        row("left keeps its tab", "ab\tcd", AlignLeft, 10, "ab\tcd");
        row("left tab becomes a blank at full width", "ab\tcd", AlignLeft, 5, "ab cd");
        row("right", "abc", AlignRight, 10, "       abc");
        row("right keeps its tab", "a\tb", AlignRight, 5, "  a\tb");
        row("centre", "abc", AlignCenter, 10, "   abc");
        row("centre rounds down", "abcd", AlignCenter, 7, " abcd");
        row("centre with one missing", "abcd", AlignCenter, 5, "abcd");
        row("justified", "ab\tcd", AlignJustify, 10, "ab      cd");
        row("justified by one", "ab\tcd", AlignJustify, 6, "ab  cd");
        row("justified widens every tab", "a\tb\tc", AlignJustify, 7, "a   b   c");
        row("justified without tab", "abc", AlignJustify, 10, "abc");
        row("justified at full width", "ab\tcd", AlignJustify, 5, "ab cd");
        row("justified overflowing", "ab\tcd", AlignJustify, 4, "ab cd");
        row("right overflowing", "ab\tcd", AlignRight, 4, "ab cd");
        row("overflow is never cut", "abcdef", AlignCenter, 3, "abcdef");
        row("other alignment is left", "ab\tcd", 4, 10, "ab\tcd");
        row("negative alignment is left", "ab\tcd", -1, 10, "ab\tcd");
        row("empty line right", "", AlignRight, 3, "   ");
        row("empty line at no width", "", AlignRight, 0, "");
        row("negative width", "a\tb", AlignRight, -5, "a b");
        row("most negative width", "a\tb", AlignJustify, minimum, "a b");
        row("non-ASCII counts by characters", "Чай", AlignRight, 5, "  Чай");
        row("wild width of a right line", "a\tb", AlignRight, maximum, "a b");
        row("wild width of a left line", "a\tb", AlignLeft, maximum, "a\tb");
        row("wild width of a justified line", "a\t\tb", AlignJustify, maximum, "a  b");
    }

    void linesAreLaidOutForTheWidth()
    {
        QFETCH(QString, line);
        QFETCH(int, alignment);
        QFETCH(int, width);
        QFETCH(QString, laidOut);
        Block block = blockOf({line, "-"}, static_cast<ETextAlignment>(alignment));
        const QStringList lines = block.toStringList(width);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.first(), laidOut);
        QCOMPARE(block.text(), (QStringList{line, "-"}));
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

    void everyFieldTakesPartInTheComparison()
    {
        const Block base = blockOf({"a"});
        Block blocks[8] = {base, base, base, base, base, base, base, base};
        QVERIFY(blocks[0] == base);
        QVERIFY(!(blocks[0] != base));
        blocks[0].setType(Block::BlockImage);
        blocks[1].setBarCodeType(Block::BarcodeBbCode);
        blocks[2].setText({"b"});
        blocks[3].setFormat(Bytes{"x"});
        blocks[4].setFont(Bytes{"x"});
        blocks[5].setAlignment(AlignRight);
        blocks[6].setLineSpacing(1);
        blocks[7].setImg(dot);
        for (const Block &block : blocks)
            QVERIFY(block != base);
    }
};

QTEST_APPLESS_MAIN(TestDocumentBlock)
#include "tst_documentblock.moc"
