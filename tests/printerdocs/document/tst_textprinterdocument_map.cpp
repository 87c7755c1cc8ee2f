#include <QJsonDocument>
#include <QtTest>

#include "printerdocs/textprinterdocument.h"

namespace {

using Images = QMultiMap<signed char, MonochromeImage>;
using Map = QMap<QString, QVariant>;

TextPrinterDocument documentOfMap(const Map &map)
{
    TextPrinterDocument document;
    document.setMap(map);
    return document;
}

QByteArray json(const TextPrinterDocument &document)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(QJsonDocument::Compact);
}

TextPrinterDocument throughJson(const TextPrinterDocument &document)
{
    return documentOfMap(QJsonDocument::fromJson(json(document)).toVariant().toMap());
}

const MonochromeImage small(8, 1, QByteArray("\x01", 1));
const MonochromeImage large(16, 1, QByteArray("\x01\x02", 2));
const Map smallMap{{"w", 8}, {"h", 1}, {"data", "AQ=="}};

TextPrinterDocument documentOfImages(const Images &images)
{
    TextPrinterDocument document;
    document.setCharImages(images);
    return document;
}

}  // namespace

class TestTextPrinterDocumentMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultDocumentWritesItsFixedKeys()
    {
        const Map map = TextPrinterDocument().toMap();
        QCOMPARE(
            map,
            (Map{
                {"blocks", QVariantList()}, {"pta", 0}, {"cta", 0}, {"loop", 0U}, {"init", true}}));
        QCOMPARE(map["blocks"].type(), QVariant::List);
        QCOMPARE(map["pta"].type(), QVariant::Int);
        QCOMPARE(map["cta"].type(), QVariant::Int);
        QCOMPARE(map["loop"].type(), QVariant::UInt);
        QCOMPARE(map["init"].type(), QVariant::Bool);
    }

    void receiptOfOneLineAsJson()
    {
        TextPrinterDocument document;
        document.appendBlock(
            DocumentBlock::createSimpleBlock(QStringList{"A"}, AlignLeft, 1, 0, 0, 0));
        document.setCurrentTicketAction(TicketActionEveryDocument | TicketActionReceipt);
        QCOMPARE(json(document),
                 QByteArray(R"({"blocks":[{"align":0,"fmt":["AA=="],"fnt":["AQ=="],"ls":[0],)"
                            R"("txt":["A"],"type":0}],"cta":9,"init":true,"loop":0,"pta":0})"));
        QVERIFY(throughJson(document) == document);
    }

    void imagesAsJson()
    {
        QCOMPARE(json(documentOfImages({{-5, small}, {7, small}})),
                 QByteArray(R"({"blocks":[],"cis":{"ci_-5":{"data":"AQ==","h":1,"w":8},)"
                            R"("ci_7":{"data":"AQ==","h":1,"w":8}},)"
                            R"("cta":0,"init":true,"loop":0,"pta":0})"));
    }

    void emptyMapIsNotTheDefaultDocument()
    {
        TextPrinterDocument document = documentOfImages({{1, small}});
        document.appendBlock(DocumentBlock());
        document.setPrevTicketAction(QFlag(1));
        document.setCurrentTicketAction(QFlag(2));
        document.setRetractionTimeout(3);
        document.setLoopPolicy(QFlag(4));
        document.setSymbolsPerLine(48);
        document.setMap({});
        TextPrinterDocument emptied;
        QVERIFY(document != emptied);
        emptied.setDoInit(false);
        QVERIFY(document == emptied);
        QVERIFY(!document.toMap().contains("init"));
    }

    void numbersAboveZeroAreWritten_data()
    {
        QTest::addColumn<int>("timeout");
        QTest::addColumn<bool>("written");
        QTest::newRow("-1") << -1 << false;
        QTest::newRow("0") << 0 << false;
        QTest::newRow("1") << 1 << true;
    }

    void numbersAboveZeroAreWritten()
    {
        QFETCH(int, timeout);
        QFETCH(bool, written);
        TextPrinterDocument document;
        document.setRetractionTimeout(timeout);
        QCOMPARE(document.toMap().contains("rtout"), written);
        QCOMPARE(documentOfMap(document.toMap()).retractionTimeout(), written ? timeout : 0);
        if (written)
            QCOMPARE(document.toMap().value("rtout").type(), QVariant::Int);
    }

    void symbolsPerLineIsWrittenAbove32_data()
    {
        QTest::addColumn<int>("symbols");
        QTest::addColumn<bool>("written");
        QTest::newRow("-1") << -1 << false;
        QTest::newRow("1") << 1 << false;
        QTest::newRow("32") << 32 << false;
        QTest::newRow("33") << 33 << true;
        QTest::newRow("48") << 48 << true;
    }

    void symbolsPerLineIsWrittenAbove32()
    {
        QFETCH(int, symbols);
        QFETCH(bool, written);
        TextPrinterDocument document;
        document.setSymbolsPerLine(symbols);
        QCOMPARE(document.toMap().contains("spl"), written);
        QCOMPARE(throughJson(document).symbolsPerLine(), written ? symbols : 0);
        QCOMPARE(documentOfMap({{"spl", 12}}).symbolsPerLine(), 12);
    }

    void flagsSurviveWhateverTheirBits_data()
    {
        QTest::addColumn<int>("bits");
        QTest::newRow("BBCode") << 5;
        QTest::newRow("highest bit") << -2147483647 - 1;
        QTest::newRow("all bits") << -1;
        QTest::newRow("all but the highest") << 2147483647;
    }

    void flagsSurviveWhateverTheirBits()
    {
        QFETCH(int, bits);
        TextPrinterDocument document;
        document.setPrevTicketAction(QFlag(bits));
        document.setCurrentTicketAction(QFlag(bits));
        document.setLoopPolicy(QFlag(bits));
        QCOMPARE(document.toMap().value("pta").toInt(), bits);
        QCOMPARE(document.toMap().value("cta").toInt(), bits);
        QCOMPARE(document.toMap().value("loop").toUInt(), static_cast<uint>(bits));
        QVERIFY(documentOfMap(document.toMap()) == document);
        QVERIFY(throughJson(document) == document);
    }

    void initialisationIsReadAsItStands()
    {
        QCOMPARE(documentOfMap({{"init", true}}).doInit(), true);
        QCOMPARE(documentOfMap({{"init", false}}).doInit(), false);
        TextPrinterDocument document;
        document.setDoInit(false);
        QVERIFY(throughJson(document) == document);
    }

    void blocksKeepTheirOrderValidOrNot()
    {
        TextPrinterDocument document;
        document.appendBlock(
            DocumentBlock::createSimpleBlock(QStringList{"a", "b"}, AlignRight, 1, 2, 3, 0));
        document.appendBlock(DocumentBlock());
        DocumentBlock qrCode;
        qrCode.setQrCode("x");
        document.appendBlock(qrCode);
        QVERIFY(throughJson(document) == document);
        const TextPrinterDocument read =
            documentOfMap({{"blocks", QVariantList{5, Map{{"type", 9}}, "x"}}});
        QCOMPARE(read.blocks().size(), 3);
        QVERIFY(read.blocks().at(0) == DocumentBlock());
        QCOMPARE(int(read.blocks().at(1).type()), 9);
    }

    void imagesSurviveByCode()
    {
        const TextPrinterDocument document = documentOfImages({{1, small}, {127, large}});
        QCOMPARE(document.toMap().value("cis").toMap().keys(), (QStringList{"ci_1", "ci_127"}));
        QVERIFY(throughJson(document) == document);
    }

    void imageAddedFirstWins()
    {
        Images images;
        images.insert(3, small);
        images.insert(3, large);
        const TextPrinterDocument document = documentOfImages(images);
        QCOMPARE(document.toMap().value("cis").toMap(), (Map{{"ci_3", smallMap}}));
        QVERIFY(documentOfMap(document.toMap()).charImages() == (Images{{3, small}}));
    }

    void negativeCodesAreWrittenAndDroppedOnReading()
    {
        const TextPrinterDocument document = documentOfImages({{-5, small}, {5, large}});
        QVERIFY(document.toMap().value("cis").toMap().contains("ci_-5"));
        QVERIFY(documentOfMap(document.toMap()).charImages() == (Images{{5, large}}));
    }

    void codesAreReadUnsignedAndNarrowed_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QList<int>>("codes");
        QTest::newRow("plain") << "ci_7" << QList<int>{7};
        QTest::newRow("300 is 44") << "ci_300" << QList<int>{44};
        QTest::newRow("200 is -56") << "ci_200" << QList<int>{-56};
        QTest::newRow("largest") << "ci_4294967295" << QList<int>{-1};
        QTest::newRow("any prefix of three") << "xyz9" << QList<int>{9};
        QTest::newRow("beyond 32 bits") << "ci_4294967296" << QList<int>{};
        QTest::newRow("no number") << "ci_x" << QList<int>{};
        QTest::newRow("negative") << "ci_-1" << QList<int>{};
        QTest::newRow("hexadecimal") << "ci_0x1" << QList<int>{};
        QTest::newRow("nothing behind the prefix") << "ci_" << QList<int>{};
        QTest::newRow("shorter than the prefix") << "7" << QList<int>{};
        QTest::newRow("empty") << "" << QList<int>{};
    }

    void codesAreReadUnsignedAndNarrowed()
    {
        QFETCH(QString, key);
        QFETCH(QList<int>, codes);
        const Images images = documentOfMap({{"cis", Map{{key, smallMap}}}}).charImages();
        QList<int> read;
        for (const signed char code : images.keys())
            read.append(code);
        QCOMPARE(read, codes);
        if (!images.isEmpty())
            QVERIFY(images.first() == small);
    }

    void keysOfOneCodeAllAddTheirImage()
    {
        const Map largeMap = large.toMap();
        const Images images =
            documentOfMap({{"cis", Map{{"ci_300", smallMap}, {"ci_44", largeMap}}}}).charImages();
        QCOMPARE(images.values(44).size(), 2);
        QVERIFY(images.values(44).first() == large);  // "ci_44" comes behind "ci_300"
    }

    void hostileMapIsReadWithoutHarm()
    {
        const TextPrinterDocument document = documentOfMap({{"blocks", "many"},
                                                            {"cis", QVariantList{1, 2}},
                                                            {"pta", QVariantMap{}},
                                                            {"cta", "x"},
                                                            {"rtout", 1e300},
                                                            {"loop", -1e300},
                                                            {"init", QVariantList{}},
                                                            {"spl", QVariant()}});
        QVERIFY(document.blocks().isEmpty());
        QVERIFY(document.charImages().isEmpty());
        QCOMPARE(int(document.prevTicketAction()), 0);
        QCOMPARE(int(document.currentTicketAction()), 0);
        QCOMPARE(document.doInit(), false);
        QCOMPARE(document.symbolsPerLine(), 0);
        QVERIFY(documentOfMap({{"cis", Map{{"ci_1", "image"}}}}).charImages() ==
                (Images{{1, MonochromeImage()}}));
    }

    void hugeListOfNothingIsRead()
    {
        QVariantList blocks;
        for (int i = 0; i < 200000; ++i)
            blocks.append(QVariant());
        QCOMPARE(documentOfMap({{"blocks", blocks}}).blocks().size(), 200000);
    }
};

QTEST_APPLESS_MAIN(TestTextPrinterDocumentMap)
#include "tst_textprinterdocument_map.moc"
