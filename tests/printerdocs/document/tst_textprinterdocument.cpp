#include <QtTest>
#include <limits>

#include "printerdocs/textprinterdocument.h"

namespace {

using Images = QMultiMap<signed char, MonochromeImage>;

DocumentBlock blockOf(const QStringList &lines, ETextAlignment alignment = AlignLeft)
{
    return DocumentBlock::createSimpleBlock(lines, alignment, 0, 0, 0, 0);
}

DocumentBlock imageBlock()
{
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(MonochromeImage(1, 1, "\x80"));
    return block;
}

TextPrinterDocument documentOf(const QList<DocumentBlock> &blocks)
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    return document;
}

}  // namespace

class TestTextPrinterDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultDocumentAsksForInitialisationOnly()
    {
        const TextPrinterDocument document;
        QVERIFY(document.blocks().isEmpty());
        QVERIFY(document.charImages().isEmpty());
        QCOMPARE(int(document.prevTicketAction()), 0);
        QCOMPARE(int(document.currentTicketAction()), 0);
        QCOMPARE(document.retractionTimeout(), 0);
        QCOMPARE(int(document.loopPolicy()), 0);
        QCOMPARE(document.doInit(), true);
        QCOMPARE(document.symbolsPerLine(), 0);
        QCOMPARE(document.symbolsCount(), 0);
        QVERIFY(document.toStringList().isEmpty());
    }

    void flagTypesAreThirtyTwoBitsWide()
    {
        QCOMPARE(int(sizeof(QFlags<EPrinterTicketAction>)), 4);
        QCOMPARE(int(sizeof(QFlags<EPaperLoopFlag>)), 4);
        QCOMPARE(int(TicketActionNone), 0);
        QCOMPARE(int(TicketActionEveryDocument), 1);
        QCOMPARE(int(TicketActionBbCodeDocument), 4);
        QCOMPARE(int(TicketActionReceipt), 8);
        QCOMPARE(int(TicketActionEveryDocument | TicketActionReceipt), 9);
    }

    void settersReplaceTheirField()
    {
        TextPrinterDocument document;
        const Images images{{3, MonochromeImage(1, 1, "\x80")}};
        document.setBlocks({blockOf({"a"})});
        document.setCharImages(images);
        document.setPrevTicketAction(QFlag(0x40000000));
        document.setCurrentTicketAction(QFlag(-1));
        document.setRetractionTimeout(-5);
        document.setLoopPolicy(QFlag(77));
        document.setDoInit(false);
        document.setSymbolsPerLine(-9);
        QCOMPARE(document.blocks().size(), 1);
        QVERIFY(document.charImages() == images);
        QCOMPARE(int(document.prevTicketAction()), 0x40000000);
        QCOMPARE(int(document.currentTicketAction()), -1);
        QCOMPARE(document.retractionTimeout(), -5);
        QCOMPARE(int(document.loopPolicy()), 77);
        QCOMPARE(document.doInit(), false);
        QCOMPARE(document.symbolsPerLine(), -9);
    }

    void blocksAreAddedAtBothEnds()
    {
        TextPrinterDocument document;
        document.appendBlock(blockOf({"b"}));
        document.appendBlock(blockOf({"c"}));
        document.prependBlock(blockOf({"a"}));
        QCOMPARE(document.toStringList(), (QStringList{"a", "b", "c"}));
    }

    void symbolsAreCountedWithAMarginOfAFifth_data()
    {
        QTest::addColumn<int>("characters");
        QTest::addColumn<int>("count");
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("one") << 1 << 1;
        QTest::newRow("four") << 4 << 4;
        QTest::newRow("five") << 5 << 6;
        QTest::newRow("seven") << 7 << 8;
        QTest::newRow("ten") << 10 << 12;
        QTest::newRow("hundred") << 100 << 120;
    }

    void symbolsAreCountedWithAMarginOfAFifth()
    {
        QFETCH(int, characters);
        TextPrinterDocument document;
        document.appendBlock(imageBlock());
        document.appendBlock(blockOf({QString(characters / 2, 'x')}));
        document.appendBlock(blockOf({QString(characters - characters / 2, 'x')}));
        QTEST(document.symbolsCount(), "count");
    }

    void imageAloneHasNoSymbols() { QCOMPARE(documentOf({imageBlock()}).symbolsCount(), 0); }

    void symbolsBeyondTheRangeAreCappedAtIt()
    {
        QStringList lines;
        for (int i = 0; i < 1900; ++i)
            lines.append(QString());
        const QString line(1 << 20, 'x');
        for (QString &entry : lines)
            entry = line;
        DocumentBlock block;
        block.setText(lines);  // 1.99e9 characters, 2.39e9 with the margin
        QCOMPARE(documentOf({block}).symbolsCount(), std::numeric_limits<int>::max());
        QCOMPARE(documentOf({block, block, block}).symbolsCount(), std::numeric_limits<int>::max());
    }

    void plainLinesAreEightyCharactersWide()
    {
        DocumentBlock qrCode;
        qrCode.setQrCode("x");
        TextPrinterDocument document = documentOf({blockOf({"ab\tcd"}, AlignJustify), imageBlock(),
                                                   qrCode, blockOf({"x", ""}, AlignRight)});
        document.setSymbolsPerLine(40);
        const QStringList lines = document.toStringList();
        QCOMPARE(lines, (QStringList{"ab" + QString(76, ' ') + "cd", QString(79, ' ') + "x",
                                     QString(80, ' ')}));
        QCOMPARE(document.blocks().first().text(), QStringList{"ab\tcd"});
    }

    void caseChangesInEveryBlock()
    {
        DocumentBlock barcode;
        barcode.setBarCode("123");
        TextPrinterDocument document = documentOf({blockOf({"Чай"}), barcode});
        const TextPrinterDocument before = document;
        document.toUpper();
        QCOMPARE(document.blocks().at(0).text(), QStringList{"ЧАЙ"});
        QCOMPARE(document.blocks().at(1).text(), QStringList{"MTIZ"});
        document.toLower();
        QCOMPARE(document.blocks().at(0).text(), QStringList{"чай"});
        QCOMPARE(document.blocks().at(1).text(), QStringList{"mtiz"});
        QCOMPARE(before.blocks().at(0).text(), QStringList{"Чай"});
    }

    void everyFieldTakesPartInTheComparison()
    {
        const TextPrinterDocument base;
        TextPrinterDocument documents[8];
        QVERIFY(documents[0] == base);
        QVERIFY(!(documents[0] != base));
        documents[0].appendBlock(DocumentBlock());
        documents[1].setCharImages({{1, MonochromeImage()}});
        documents[2].setPrevTicketAction(TicketActionReceipt);
        documents[3].setCurrentTicketAction(TicketActionReceipt);
        documents[4].setRetractionTimeout(1);
        documents[5].setLoopPolicy(PaperLoopFirst);
        documents[6].setDoInit(false);
        documents[7].setSymbolsPerLine(1);
        for (const TextPrinterDocument &document : documents)
            QVERIFY(document != base);
    }

    void imagesAreComparedInTheirOrder()
    {
        Images forward;
        forward.insert(1, MonochromeImage(1, 1, "a"));
        forward.insert(1, MonochromeImage(2, 2, "b"));
        Images backward;
        backward.insert(1, MonochromeImage(2, 2, "b"));
        backward.insert(1, MonochromeImage(1, 1, "a"));
        TextPrinterDocument first;
        first.setCharImages(forward);
        TextPrinterDocument second;
        second.setCharImages(backward);
        QVERIFY(first != second);
        second.setCharImages(forward);
        QVERIFY(first == second);
        Images otherCode;
        otherCode.insert(2, MonochromeImage(1, 1, "a"));
        otherCode.insert(2, MonochromeImage(2, 2, "b"));
        second.setCharImages(otherCode);
        QVERIFY(first != second);
    }
};

QTEST_APPLESS_MAIN(TestTextPrinterDocument)
#include "tst_textprinterdocument.moc"
