#include <QtTest>

#include "layout.h"
#include "layoutbench.h"
#include "previewtools.h"
#include "printerdocs/bbcodeparser.h"

using namespace layoutbench;

namespace {

MonochromeImage filledImage(int width, int height, int alignmentBits)
{
    MonochromeImage image = MonochromeImage::createEmpty(width, height, alignmentBits);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, true, alignmentBits);
    }
    return image;
}

}  // namespace

/// Symbols, pictures and codes on the paper, and how long it is.
class TestPreviewBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void symbolIsTheLargestDrawingThatFitsTheCell()
    {
        TextPrinterDocument document = markup("<#3><F4><#3><W2:><#3>");
        QMultiMap<signed char, MonochromeImage> images;
        images.insert(3, filledImage(8, 16, 8));
        images.insert(3, filledImage(16, 24, 8));
        images.insert(3, filledImage(19, 24, 8));
        document.setCharImages(images);
        const Layout layout(document, paperOf());
        QVERIFY(cellAt(layout, 0).has(Cell::Symbol));
        QCOMPARE(layout.symbol(cellAt(layout, 0)).width(), 8);
        QCOMPARE(layout.symbol(cellAt(layout, 1)).width(), 16);
        QCOMPARE(layout.symbol(cellAt(layout, 2)).width(), 16);
        QCOMPARE(layout.warnings(), QStringList());
    }

    void symbolsWithoutADrawingOrAFontForThemAreBlankAndReportedOnce()
    {
        const Layout without(markup("<#3><#3>\n<#3>"), paperOf());
        QCOMPARE(without.warnings(),
                 QStringList("block 1: the symbol 3 is blank: it has no drawing"));
        TextPrinterDocument document = markup("<#3>");
        document.setCharImages({{3, filledImage(8, 16, 8)}});
        const Layout unable(document, paperOf("NP_F209_2D"));
        QVERIFY(!cellAt(unable, 0).has(Cell::Symbol));
        QCOMPARE(unable.warnings(), QStringList("block 1: the symbol 3 is blank: font 0 of the "
                                                "model takes no drawings"));
        document.setCharImages({{3, filledImage(20, 30, 8)}});
        const Layout tooLarge(document, paperOf());
        QCOMPARE(tooLarge.warnings(), QStringList("block 1: the symbol 3 is blank: it has no "
                                                  "drawing that fits 10 x 24 dots"));
    }

    void pictureIsPlacedDotForDot_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("left");
        QTest::newRow("left") << int(AlignLeft) << margin;
        QTest::newRow("center") << int(AlignCenter) << margin + 206;
        QTest::newRow("right") << int(AlignRight) << margin + 412;
    }
    void pictureIsPlacedDotForDot()
    {
        QFETCH(int, alignment);
        const auto block =
            pictureBlock(filledImage(100, 30, 32), static_cast<ETextAlignment>(alignment));
        const Layout layout(documentOf({block}), paperOf());
        const Row row = layout.rows().at(0);
        QCOMPARE(row.kind, Row::Image);
        QCOMPARE(row.height, 30);
        QTEST(layout.rasters().at(0).left, "left");
        QCOMPARE(layout.rasters().at(0).dotsPerPixel, QSize(1, 1));
    }

    void rowsOfPicturesAreAlignedAsTheirBytesAllow()
    {
        for (const int bits : {8, 32}) {
            const auto block = pictureBlock(filledImage(33, 5, bits), AlignLeft);
            const Layout layout(documentOf({block}), paperOf());
            QCOMPARE(layout.rasters().at(0).alignmentBits, bits);
        }
    }

    void pictureThatDoesNotComeOutWhollyIsReported()
    {
        const auto wide = documentOf({pictureBlock(filledImage(600, 2, 8), AlignCenter)});
        const Layout cut(wide, paperOf());
        QCOMPARE(cut.rasters().at(0).left, margin);
        QCOMPARE(cut.warnings(), QStringList("block 1: the picture is 600 dots wide; what is right "
                                             "of the line's 512 is lost"));
        const Layout unable(wide, paperOf("AV_268"));
        QVERIFY(unable.rasters().empty());
        QCOMPARE(unable.warnings(),
                 QStringList("block 1: the picture is left out: the model prints none"));
    }

    void barcodeTakesTheLargestModuleThatFits_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<int>("module");
        // Modules: 35 and 11 for each character; 10 more at both ends, for which the margins do.
        QTest::newRow("12 characters") << QByteArray(12, 'a') << 3;
        QTest::newRow("13 characters") << QByteArray(13, 'a') << 2;
        QTest::newRow("20 characters") << QByteArray(20, 'a') << 2;
        QTest::newRow("21 characters") << QByteArray(21, 'a') << 0;
    }
    void barcodeTakesTheLargestModuleThatFits()
    {
        QFETCH(QByteArray, payload);
        QFETCH(int, module);
        const Layout layout(documentOf({barcodeBlock(payload)}), paperOf());
        QCOMPARE(layout.rasters().size(), std::size_t(module > 0 ? 1 : 0));
        if (module > 0) {
            const Raster &raster = layout.rasters().at(0);
            QCOMPARE(raster.dotsPerPixel, QSize(module, 80));
            const int bars = raster.image.width() * module;
            QVERIFY(raster.left >= margin && raster.left + bars <= margin + 512);
            QVERIFY2(qAbs(raster.left - margin - (512 - bars) / 2) <= 1, "not in the middle");
        } else {
            QCOMPARE(layout.warnings(), QStringList("block 1: Barcode: It doesn't fit the paper"));
        }
    }

    void codesThatCannotBeMadeAreFramedFaults_data()
    {
        QTest::addColumn<DocumentBlock>("block");
        QTest::addColumn<QString>("warning");
        QTest::newRow("Cyrillic barcode")
            << barcodeBlock("Привет") << "block 1: Barcode: Code 128 holds ASCII characters only";
        QTest::newRow("empty barcode")
            << barcodeBlock("") << "block 1: Barcode: The payload is empty";
        QTest::newRow("unknown symbology")
            << barcodeBlock("1", AlignLeft, 3) << "block 1: Barcode: The symbology 3 isn't known";
        QTest::newRow("endless barcode")
            << barcodeBlock(QByteArray(100000, '1')) << "block 1: Barcode: Input data too long";
        QTest::newRow("empty QR code") << qrBlock("") << "block 1: QR code: The payload is empty";
        QTest::newRow("endless QR code")
            << qrBlock(QByteArray(2954, '\xD0')) << "block 1: QR code: Input too long";
    }
    void codesThatCannotBeMadeAreFramedFaults()
    {
        QFETCH(DocumentBlock, block);
        QFETCH(QString, warning);
        const Layout layout(documentOf({block}), paperOf());
        QCOMPARE(layout.warnings().size(), 1);
        QVERIFY2(layout.warnings().constFirst().startsWith(warning),
                 qPrintable(layout.warnings().constFirst()));
        QVERIFY(layout.rasters().empty());
        QCOMPARE(layout.rows().front().kind, Row::FrameTop);
        QCOMPARE(layout.rows().back().kind, Row::FrameBottom);
        for (const Row &row : layout.rows())
            QVERIFY(row.framed);
        QVERIFY(QString("block 1: " + textOf(layout, layout.rows().at(1)))
                    .startsWith(warning.left(40)));
    }

    // What stands in the frame of a fault is for the reader of the picture.
    void frameOfAFaultIsNotPrinted()
    {
        DocumentBlock block;
        block.setType(DocumentBlock::BlockQrCode);
        block.setQrCode(QString(4000, QChar(0x20AC)).toUtf8());
        QCOMPARE(Layout(documentOf({block}), paperOf()).warnings().size(), 1);
    }

    void blocksThatAreNotValidAreSkipped()
    {
        DocumentBlock noSymbology;
        noSymbology.setBarCode("1");
        noSymbology.setType(DocumentBlock::BlockBarcode);
        const Layout layout(documentOf({DocumentBlock(), noSymbology, qrBlock("1")}), paperOf());
        QCOMPARE(layout.rows().size(), std::size_t(1));
        QCOMPARE(layout.warnings(), QStringList());
    }

    void ticketActionsCut_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::addColumn<int>("cuts");
        QTest::newRow("none") << 0 << 0 << 0;
        QTest::newRow("a receipt") << 0 << 9 << 1;
        QTest::newRow("BBCode") << 4 << 5 << 1;
        QTest::newRow("the ticket before too") << 1 << 1 << 2;
        QTest::newRow("other bits") << 4 << 12 << 0;
    }
    void ticketActionsCut()
    {
        QFETCH(int, before);
        QFETCH(int, after);
        TextPrinterDocument document = documentOf(markup("a").blocks());
        document.setPrevTicketAction(QFlag(before));
        document.setCurrentTicketAction(QFlag(after));
        const Layout layout(document, paperOf());
        int cuts = 0;
        for (const Row &row : layout.rows())
            cuts += row.kind == Row::Cut ? 1 : 0;
        QTEST(cuts, "cuts");
        const int cutHeight = Layout::endMargin + Layout::cutHeight;
        QCOMPARE(layout.size().height(), 2 * Layout::endMargin + 24 + cuts * cutHeight);
    }

    void emptyDocumentIsBlankPaper()
    {
        const Layout layout(TextPrinterDocument(), paperOf());
        QVERIFY(layout.rows().empty());
        QCOMPARE(layout.size(), QSize(639, 2 * Layout::endMargin));
    }

    void documentLongerThanARollIsCutOff()
    {
        QStringList lines;
        for (int i = 0; i < Layout::longestPaper / 24 + 10; ++i)
            lines.append("x");
        const auto block = DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, 0, 0, 0);
        const Layout layout(documentOf({block}), paperOf());
        QVERIFY(layout.tooLong());
        QVERIFY(layout.size().height() <= Layout::longestPaper);
        const auto fitting =
            DocumentBlock::createSimpleBlock(lines.mid(0, 10000), AlignLeft, 0, 0, 0, 0);
        const Layout tenThousand(documentOf({fitting}), paperOf());
        QVERIFY(!tenThousand.tooLong());
        QCOMPARE(tenThousand.size().height(), 240000 + 2 * Layout::endMargin);
    }

    void pictureOfAnAbsurdHeightIsTooLong()
    {
        const MonochromeImage image(1, 8'000'000, QByteArray(1'000'000, '\xFF'));
        QVERIFY(image.isValid());
        QVERIFY(Layout(documentOf({pictureBlock(image, AlignLeft)}), paperOf()).tooLong());
    }

    void rowsOfEveryModelFollowEachOtherAndStayOnThePaper()
    {
        QFile file(PRINTERSLIB_EXAMPLES "/coupon.bbcode");
        QVERIFY(file.open(QIODevice::ReadOnly));
        BbCodeParser parser(nullptr);
        parser.setImagesPath(PRINTERSLIB_EXAMPLES "/images");
        parser.parseText(QString::fromUtf8(file.readAll()));
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const Layout layout(parser.document(), Paper(model, 0, 0));
            int bottom = 0;
            for (const Row &row : layout.rows()) {
                QVERIFY(row.top >= bottom);
                QVERIFY(row.height > 0);
                bottom = row.bottom();
            }
            QVERIFY(bottom <= layout.size().height());
            for (const Cell &cell : layout.cells())
                QVERIFY(cell.left + cell.width <= layout.size().width());
        }
    }
};

QTEST_MAIN(TestPreviewBlocks)
#include "tst_preview_blocks.moc"
