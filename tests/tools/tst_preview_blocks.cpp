#include <QtTest>

#include "layout.h"
#include "layoutbench.h"
#include "previewtools.h"
#include "printerdocs/bbcodeparser.h"
#include "printerslib/drivers/printermodels.h"

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

/// A printer that takes no dots and doesn't cut.
PrintTarget plainPrinter()
{
    printerslib::drivers::PrinterModels models;
    const QByteArray facts = R"([{"id": "PLAIN", "like": "AV_268", "rasterCommand": "None",
                                  "ownCharacters": 0, "cutCommand": "None"}])";
    if (!models.add(facts, "plain.json").isEmpty())
        qFatal("the facts are faulty");
    return *PrintTarget::forModel(models, "PLAIN", 0);
}

/// How far the ink of a drawing goes to the right.
int inkedWidth(const Raster &drawing)
{
    int width = 0;
    for (int y = 0; y < drawing.image.height(); ++y) {
        for (int x = 0; x < drawing.image.width(); ++x) {
            if (drawing.image.pixel(x, y, 8))
                width = qMax(width, x + 1);
        }
    }
    return width;
}

/// What stands in the place of a character.
const Raster &drawingAt(const Layout &layout, int cell)
{
    return layout.drawings().at(static_cast<std::size_t>(cellAt(layout, cell).drawing));
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
        const Layout layout = layoutOf(document);
        QCOMPARE(inkedWidth(drawingAt(layout, 0)), 8);
        QCOMPARE(inkedWidth(drawingAt(layout, 1)), 16);
        QCOMPARE(inkedWidth(drawingAt(layout, 2)), 16);
        QCOMPARE(drawingAt(layout, 1).dotsPerPixel, QSize(1, 1));
        QCOMPARE(drawingAt(layout, 2).dotsPerPixel, QSize(2, 1));
        QCOMPARE(notesOf(document), QStringList());
    }

    // Where a stream can't define characters, they are dots beside the letters of their row.
    void symbolIsDrawnWhereverThereIsRaster()
    {
        TextPrinterDocument document = markup("a<#3>");
        document.setCharImages({{3, filledImage(8, 16, 8)}});
        const PrintTarget target = targetOf("NP_F209_2D");
        const Layout layout = layoutOf(document, target);
        QCOMPARE(notesOf(document, target), QStringList());
        const Raster &symbol = layout.rasters().at(0);
        QCOMPARE(symbol.left, layout.paper().leftMargin() + 12);
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 12; ++x)
                QCOMPARE(symbol.image.pixel(x, y, 8), x < 8 && y < 16);
        }
    }

    void symbolsWithoutADrawingAreBlankAndReportedOncePerLine()
    {
        const QString blank = "the symbol 3 is blank: it has no drawing that fits 10 x 24 dots";
        QCOMPARE(notesOf(markup("<#3><#3>\n<#3>")),
                 (QStringList{"block 1, line 1: " + blank, "block 1, line 2: " + blank}));
        TextPrinterDocument document = markup("<#3>");
        document.setCharImages({{3, filledImage(20, 30, 8)}});
        QCOMPARE(notesOf(document), QStringList("block 1, line 1: " + blank));
        QVERIFY(cellAt(layoutOf(document), 0).drawing < 0);
    }

    void modelThatTakesNoDotsPrintsNoSymbols()
    {
        TextPrinterDocument document = markup("<#3>");
        document.setCharImages({{3, filledImage(8, 16, 8)}});
        QVERIFY(cellAt(layoutOf(document, plainPrinter()), 0).drawing < 0);
        QCOMPARE(notesOf(document, plainPrinter()),
                 QStringList("block 1, line 1: the symbol 3 is blank: the model takes no drawing "
                             "of it"));
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
        const Layout layout = layoutOf(documentOf({block}));
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
            const Layout layout = layoutOf(documentOf({block}));
            const MonochromeImage &image = layout.rasters().at(0).image;
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < 33; ++x)
                    QVERIFY(image.pixel(x, y, 8));
            }
        }
    }

    void pictureThatDoesNotComeOutWhollyIsReported()
    {
        const auto wide = documentOf({pictureBlock(filledImage(600, 2, 8), AlignCenter)});
        const Layout cut = layoutOf(wide);
        QCOMPARE(cut.rasters().at(0).left, margin);
        QCOMPARE(notesOf(wide), QStringList("block 1: the picture is 600 dots wide; what is right "
                                            "of the line's 512 is lost"));
        const Layout narrow = layoutOf(wide, targetOf("AV_268"));
        QCOMPARE(narrow.rasters().at(0).image.width(), 384);
    }

    void pictureOfAModelThatPrintsNoneIsAFault()
    {
        const auto document = documentOf({pictureBlock(filledImage(60, 2, 8), AlignCenter)});
        const Layout layout = layoutOf(document, plainPrinter());
        QVERIFY(layout.rasters().empty());
        QCOMPARE(layout.rows().size(), std::size_t(3));
        QCOMPARE(textOf(layout, layout.rows().at(1)), QString("Picture: The model prints none"));
        QCOMPARE(notesOf(document, plainPrinter()),
                 QStringList("block 1: Picture: The model prints none"));
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
        const Layout layout = layoutOf(documentOf({barcodeBlock(payload)}));
        QCOMPARE(layout.rasters().size(), std::size_t(module > 0 ? 1 : 0));
        if (module > 0) {
            const Raster &raster = layout.rasters().at(0);
            QCOMPARE(raster.dotsPerPixel, QSize(module, 80));
            const int bars = raster.image.width() * module;
            QVERIFY(raster.left >= margin && raster.left + bars <= margin + 512);
            QVERIFY2(qAbs(raster.left - margin - (512 - bars) / 2) <= 1, "not in the middle");
        } else {
            QCOMPARE(notesOf(documentOf({barcodeBlock(payload)})),
                     QStringList("block 1: Barcode: It doesn't fit the paper"));
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
        QTest::newRow("EAN-8 of one digit")
            << barcodeBlock("1", AlignLeft, 3) << "block 1: Barcode: It needs 7 or 8 digits";
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
        const Layout layout = layoutOf(documentOf({block}));
        const QStringList notes = notesOf(documentOf({block}));
        QCOMPARE(notes.size(), 1);
        QVERIFY2(notes.constFirst().startsWith(warning), qPrintable(notes.constFirst()));
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
        QCOMPARE(notesOf(documentOf({block})).size(), 1);
    }

    void blocksThatAreNotValidAreSkipped()
    {
        DocumentBlock noSymbology;
        noSymbology.setBarCode("1");
        noSymbology.setType(DocumentBlock::BlockBarcode);
        const auto document = documentOf({DocumentBlock(), noSymbology, qrBlock("1")});
        QCOMPARE(layoutOf(document).rows().size(), std::size_t(1));
        QCOMPARE(notesOf(document),
                 QStringList("block 2: the block isn't printed: its symbology isn't set"));
    }

    void unknownSymbologyIsAnErrorThatNamesItsBlock()
    {
        const auto document = documentOf({qrBlock("1"), barcodeBlock("1", AlignLeft, 20)});
        QCOMPARE(printOf(document, targetOf()).error,
                 QString("block 2: the symbology 20 of a barcode isn't known"));
    }

    void otherSymbologiesAreDrawn()
    {
        constexpr int ean13 = 4;
        constexpr int modules = 95;
        const Layout layout =
            layoutOf(documentOf({barcodeBlock("4600000000015", AlignLeft, ean13)}));
        QCOMPARE(layout.rasters().at(0).image.width(), modules);
        QCOMPARE(layout.rasters().at(0).dotsPerPixel, QSize(3, 80));
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
        QTest::newRow("other bits, which a presenter needs a cut for") << 4 << 12 << 1;
        QTest::newRow("what was held out is taken back") << 8 << 0 << 0;
    }
    void ticketActionsCut()
    {
        QFETCH(int, before);
        QFETCH(int, after);
        TextPrinterDocument document = documentOf(markup("a").blocks());
        document.setPrevTicketAction(QFlag(before));
        document.setCurrentTicketAction(QFlag(after));
        const Layout layout = layoutOf(document);
        int cuts = 0;
        for (const Row &row : layout.rows())
            cuts += row.kind == Row::Cut ? 1 : 0;
        QTEST(cuts, "cuts");
        const int cutHeight = Layout::endMargin + Layout::cutHeight;
        QCOMPARE(layout.size().height(), 2 * Layout::endMargin + 24 + cuts * cutHeight);
    }

    void ticketIsCutAsTheModelCan_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("isCut");
        QTest::newRow("held out") << "CUSTOM_VKP_80" << 8 << true;
        QTest::newRow("handed out") << "CUSTOM_VKP_80" << 4 << true;
        QTest::newRow("nobody holds it") << "CITIZEN_CBM_1000" << 8 << true;
        QTest::newRow("no cutter") << QString() << 1 << false;
        QTest::newRow("ejected") << "CITIZEN_CBM_1000" << 4 << false;
    }
    void ticketIsCutAsTheModelCan()
    {
        QFETCH(QString, model);
        QFETCH(int, action);
        QFETCH(bool, isCut);
        TextPrinterDocument document = documentOf(markup("a").blocks());
        document.setCurrentTicketAction(QFlag(action));
        const PrintTarget target = model.isEmpty() ? plainPrinter() : targetOf(model);
        QCOMPARE(layoutOf(document, target).rows().back().kind == Row::Cut, isCut);
    }

    void emptyDocumentIsBlankPaper()
    {
        const Layout layout = layoutOf(TextPrinterDocument());
        QVERIFY(layout.rows().empty());
        QCOMPARE(layout.size(), QSize(paperWidth, 2 * Layout::endMargin));
    }

    void documentLongerThanARollIsCutOff()
    {
        QStringList lines;
        for (int i = 0; i < Layout::longestPaper / 24 + 10; ++i)
            lines.append("x");
        const auto block = DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, 0, 0, 0);
        const PrintLayout print = printOf(documentOf({block}), targetOf());
        QCOMPARE(print.error, QString("block 1: the paper gets longer than 1000000 dots"));
        QVERIFY(Layout(print, {}, {}).size().height() <= Layout::longestPaper);
        const auto fitting =
            DocumentBlock::createSimpleBlock(lines.mid(0, 10000), AlignLeft, 0, 0, 0, 0);
        const Layout tenThousand = layoutOf(documentOf({fitting}));
        QVERIFY(!tenThousand.tooLong());
        QCOMPARE(tenThousand.size().height(), 240000 + 2 * Layout::endMargin);
    }

    void pictureOfAnAbsurdHeightIsTooLong()
    {
        const MonochromeImage image(1, 8'000'000, QByteArray(1'000'000, '\xFF'));
        QVERIFY(image.isValid());
        const auto document =
            documentOf({markup("a").blocks().at(0), pictureBlock(image, AlignLeft)});
        QCOMPARE(printOf(document, targetOf()).error,
                 QString("block 2: the paper gets longer than 1000000 dots"));
    }

    void rowsOfEveryModelFollowEachOtherAndStayOnThePaper()
    {
        QFile file(PRINTERSLIB_EXAMPLES "/coupon.bbcode");
        QVERIFY(file.open(QIODevice::ReadOnly));
        BbCodeParser parser(nullptr);
        parser.setImagesPath(PRINTERSLIB_EXAMPLES "/images");
        parser.parseText(QString::fromUtf8(file.readAll()));
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const Layout layout = layoutOf(parser.document(), targetOf(model, 0, 0));
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
