#include <QtTest>
#include <limits>

#include "blockbench.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/echarformat.h"

using namespace blockbench;

namespace {

constexpr int minimum = std::numeric_limits<int>::min();
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
