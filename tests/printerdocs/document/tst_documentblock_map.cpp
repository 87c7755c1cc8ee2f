#include <QJsonDocument>
#include <QtTest>

#include "printerdocs/documentblock.h"

Q_DECLARE_METATYPE(DocumentBlock)

namespace {

using Block = DocumentBlock;
using Bytes = QList<QByteArray>;
using Map = QMap<QString, QVariant>;

Map textMap(const QVariant &text, const QVariant &format, const QVariant &font,
            const QVariant &lineSpacing)
{
    return {{"type", 0},     {"align", 0},  {"txt", text},
            {"fmt", format}, {"fnt", font}, {"ls", lineSpacing}};
}

Block throughJson(const Block &block)
{
    const QByteArray json =
        QJsonDocument::fromVariant(block.toMap()).toJson(QJsonDocument::Compact);
    return Block(QJsonDocument::fromJson(json).toVariant().toMap());
}

}  // namespace

class TestDocumentBlockMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textBlockIsWrittenLineByLine()
    {
        Block block =
            Block::createSimpleBlock(QStringList{"A", "", "\tЧ"}, AlignCenter, 1, 0xff, -3, 0);
        block.setFont(Bytes{"\x01", "", ""});
        const Map map = block.toMap();
        QCOMPARE(map.keys(), (QStringList{"align", "fmt", "fnt", "ls", "txt", "type"}));
        QCOMPARE(map["type"], QVariant(0));
        QCOMPARE(map["align"], QVariant(2));
        QCOMPARE(map["txt"].toList(), (QVariantList{"A", "", "\tЧ"}));
        QCOMPARE(map["fmt"].toList(), (QVariantList{"/w==", "", "//8="}));
        QCOMPARE(map["fnt"].toList(), (QVariantList{"AQ==", "", ""}));
        QCOMPARE(map["ls"].toList(), (QVariantList{-3, -3, -3}));
    }

    void valuesHaveTheKindsThatJsonKnows()
    {
        const Map map = Block::createSimpleBlock(QStringList{"A"}, AlignLeft, 1, 2, 3, 0).toMap();
        QCOMPARE(map["type"].type(), QVariant::Int);
        QCOMPARE(map["align"].type(), QVariant::Int);
        QCOMPARE(map["txt"].type(), QVariant::List);
        QCOMPARE(map["txt"].toList().first().type(), QVariant::String);
        QCOMPARE(map["fmt"].toList().first().type(), QVariant::String);
        QCOMPARE(map["fnt"].toList().first().type(), QVariant::String);
        QCOMPARE(map["ls"].toList().first().type(), QVariant::Int);
    }

    void imageBlockIsWrittenWithItsImage()
    {
        Block block;
        block.setImg(MonochromeImage(8, 1, "\x81"));
        block.setType(Block::BlockImage);
        QCOMPARE(block.toMap(),
                 (Map{{"type", 1}, {"img", Map{{"w", 8}, {"h", 1}, {"data", "gQ=="}}}}));
        QVERIFY(Block(block.toMap()) == block);
        QVERIFY(throughJson(block) == block);
    }

    void barcodeBlockIsWrittenWithPayloadAndSymbology()
    {
        Block block;
        block.setBarCode("123", static_cast<Block::EBarcodeType>(1000));
        QCOMPARE(block.toMap(), (Map{{"type", 2}, {"bar", "MTIz"}, {"bt", 1000}}));
        QVERIFY(Block(block.toMap()) == block);
        QVERIFY(throughJson(block) == block);
    }

    void qrCodeBlockIsWrittenWithItsPayload()
    {
        Block block;
        block.setQrCode("123");
        QCOMPARE(block.toMap(), (Map{{"type", 3}, {"qr", "MTIz"}}));
        QVERIFY(Block(block.toMap()) == block);
        QVERIFY(throughJson(block) == block);
    }

    void blockThatIsNotValidKeepsItsTypeAlone_data()
    {
        QTest::addColumn<Block>("block");
        QTest::addColumn<int>("type");
        Block outOfStep = Block::createSimpleBlock(QStringList{"a"}, AlignRight, 1, 2, 3, 0);
        outOfStep.setFont(Bytes{});
        QTest::newRow("text out of step") << outOfStep << 0;
        QTest::newRow("default block") << Block() << 0;
        Block image;
        image.setType(Block::BlockImage);
        image.setImg(MonochromeImage(8, 2, "a"));
        QTest::newRow("image without enough bytes") << image << 1;
        Block barcode;
        barcode.setBarCode("123");
        QTest::newRow("barcode without symbology") << barcode << 2;
        Block qrCode;
        qrCode.setType(Block::BlockQrCode);
        QTest::newRow("QR code without payload") << qrCode << 3;
        Block unknown = Block::createSimpleBlock(QStringList{"a"}, AlignRight, 1, 2, 3, 0);
        unknown.setType(static_cast<Block::EBlockType>(-9));
        QTest::newRow("type without a name") << unknown << -9;
    }

    void blockThatIsNotValidKeepsItsTypeAlone()
    {
        QFETCH(Block, block);
        QFETCH(int, type);
        QCOMPARE(block.toMap(), (Map{{"type", type}}));
    }

    void typeAloneReadsAsAnEmptyBlock()
    {
        QVERIFY(Block(Map{{"type", 0}}) == Block());
        QVERIFY(Block(Map{}) == Block());
        const Block barcode(Map{{"type", 2}});
        QCOMPARE(barcode.text(), QStringList{""});  // the payload is lost
        QVERIFY(!barcode.isBarcode());
        const Block unknown(Map{{"type", 77}, {"txt", QVariantList{"a"}}});
        QCOMPARE(int(unknown.type()), 77);
        QVERIFY(unknown.text().isEmpty());
        QCOMPARE(unknown.toMap(), (Map{{"type", 77}}));
    }

    void readingReplacesTheWholeBlock()
    {
        Block block = Block::createSimpleBlock(QStringList{"a"}, AlignRight, 1, 2, 3, 0);
        block.setBarCodeType(Block::BarcodeBbCode);
        MonochromeImage image(8, 1, "a");
        image.setFileName("old");
        block.setImg(image);
        block.setMap({});
        QVERIFY(block == Block());
    }

    void textBlockSurvivesARoundTrip()
    {
        Block block = Block::createSimpleBlock(QStringList{"A\t\"<&", "", "Чай"}, AlignJustify, 3,
                                               0x7f, -1, 2);
        block.setFormat(Bytes{"\x01", "", QByteArray("\0\xff\x80\x7f", 4)});
        QVERIFY(Block(block.toMap()) == block);
        QVERIFY(throughJson(block) == block);
    }

    void listsAreCutToTheShortest_data()
    {
        QTest::addColumn<int>("text");
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("font");
        QTest::addColumn<int>("lineSpacing");
        QTest::addColumn<int>("lines");
        QTest::newRow("line spacing is shortest") << 3 << 3 << 3 << 2 << 2;
        QTest::newRow("text is shortest") << 1 << 3 << 3 << 2 << 1;
        QTest::newRow("format is shortest") << 3 << 1 << 3 << 2 << 1;
        QTest::newRow("font is missing") << 3 << 3 << 0 << 2 << 0;
    }

    void listsAreCutToTheShortest()
    {
        QFETCH(int, text);
        QFETCH(int, format);
        QFETCH(int, font);
        QFETCH(int, lineSpacing);
        QFETCH(int, lines);
        const auto list = [](int size, const QVariant &entry) {
            QVariantList result;
            for (int i = 0; i < size; ++i)
                result.append(entry);
            return QVariant(result);
        };
        const Block block(textMap(list(text, "t"), list(format, "AQ=="), list(font, "Ag=="),
                                  list(lineSpacing, 7)));
        QCOMPARE(block.text().count("t"), lines);
        QCOMPARE(block.format().count("\x01"), lines);
        QCOMPARE(block.font().count("\x02"), lines);
        QCOMPARE(block.lineSpacing().count(7), lines);
        QCOMPARE(block.isText(), lines > 0);
    }

    void alignmentIsReadAsTheRemainderByFour_data()
    {
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<int>("read");
        QTest::newRow("0") << QVariant(0) << 0;
        QTest::newRow("3") << QVariant(3) << 3;
        QTest::newRow("4") << QVariant(4) << 0;
        QTest::newRow("5") << QVariant(5) << 1;
        QTest::newRow("7") << QVariant(7) << 3;
        QTest::newRow("-1") << QVariant(-1) << -1;
        QTest::newRow("-6") << QVariant(-6) << -2;
        QTest::newRow("a double of JSON") << QVariant(6.0) << 2;
        QTest::newRow("smallest number") << QVariant(-2147483647 - 1) << 0;
        QTest::newRow("no number") << QVariant("left") << 0;
    }

    void alignmentIsReadAsTheRemainderByFour()
    {
        QFETCH(QVariant, written);
        QFETCH(int, read);
        Map map = textMap(QVariantList{"t"}, QVariantList{""}, QVariantList{""}, QVariantList{0});
        map["align"] = written;
        const Block block(map);
        QCOMPARE(int(block.alignment()), read);
        QVERIFY(block.isText());
    }

    void alignmentBelongsToTextBlocks()
    {
        const Block block(Map{{"type", 3}, {"qr", "MTIz"}, {"align", 2}});
        QCOMPARE(block.alignment(), AlignLeft);
    }

    void listsOfTextsAreReadLikeListsOfValues()
    {
        const Block block(
            textMap(QStringList{"a"}, QStringList{"AQ=="}, QStringList{"Ag=="}, QVariantList{1.0}));
        QVERIFY(block == Block::createSimpleBlock(QStringList{"a"}, AlignLeft, 2, 1, 1, 0));
    }

    void entriesOfOtherKindsAreReadAsEmpty()
    {
        const QVariant map = QVariantMap{{"a", 1}};
        const Block block(textMap(QVariantList{map, 5}, QVariantList{map, "\u0416===="},
                                  QVariantList{QVariantList{}, QVariant()},
                                  QVariantList{"x", map}));
        QCOMPARE(block.text(), (QStringList{"", "5"}));
        QCOMPARE(block.format(), (Bytes{"", ""}));
        QCOMPARE(block.font(), (Bytes{"", ""}));
        QCOMPARE(block.lineSpacing(), (QList<int>{0, 0}));
        QVERIFY(block.isText());
    }

    void hostileMapIsReadWithoutHarm()
    {
        QVERIFY(Block(textMap("text", 5, QVariantMap{}, QVariant())) == Block());
        const Block image(Map{{"type", 1}, {"img", "picture"}});
        QVERIFY(!image.isValid());
        const Block wild(Map{{"type", "1e9"}, {"img", QVariantList{1}}});
        QVERIFY(wild == Block());
        QVariantList huge;
        huge.reserve(1000000);
        for (int i = 0; i < 1000000; ++i)
            huge.append(QVariant());
        QVERIFY(Block(textMap(huge, huge, huge, QVariantList{1})).text().size() == 1);
    }
};

QTEST_APPLESS_MAIN(TestDocumentBlockMap)
#include "tst_documentblock_map.moc"
