#include <QSvgRenderer>
#include <QtTest>

#include "contactsheet.h"
#include "painting.h"
#include "picturebench.h"
#include "printerdocs/echarformat.h"

using layoutbench::margin;
using layoutbench::paperWidth;
using namespace picturebench;

namespace {

int darkPixels(const QImage &picture, const QRect &rect)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += qGray(picture.pixel(x, y)) < 128 ? 1 : 0;
    }
    return count;
}

int redPixels(const QImage &picture, const QRect &rect)
{
    return rect.width() * rect.height() - pixelsOtherThan(picture, rect, red);
}

/// A pattern in which every shift and mirror image shows.
MonochromeImage pattern(int width, int height)
{
    MonochromeImage image = MonochromeImage::createEmpty(width, height, 32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, (x * x + 3 * y + x * y) % 7 < 3, 32);
    }
    return image;
}

TextPrinterDocument boxes()
{
    TextPrinterDocument document =
        documentOf({pictureBlock(pattern(101, 37), AlignRight), qrBlock("https://example.org"),
                    barcodeBlock("ABC-1234", AlignLeft)});
    document.setCurrentTicketAction(QFlag(1));
    document.setPrevTicketAction(QFlag(1));
    return document;
}

QImage rendered(const QByteArray &svg, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QSvgRenderer renderer(svg);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

/// What is told of a picture beside its dots.
class Listener : public Canvas
{
public:
    void fill(const QRect &, Ink) override {}
    void glyph(const QRect &, char16_t code, quint16) override { letters += QChar(code); }
    void meaning(const QRect &dots, char16_t code) override
    {
        meanings += QChar(code);
        places.append(dots);
    }

    QString letters;
    QString meanings;
    QVector<QRect> places;
};

}  // namespace

class TestPreviewPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inkStaysInItsCells()
    {
        const QImage picture = pictureOf(layoutOf(markup("A B")));
        QVERIFY(darkPixels(picture, {margin, top, 10, 24}) > 10);
        QCOMPARE(pixelsOtherThan(picture, {margin + 10, top, 10, 24}, white), 0);
        QVERIFY(darkPixels(picture, {margin + 20, top, 10, 24}) > 10);
        QCOMPARE(pixelsOtherThan(picture, {margin + 30, top, 400, 24}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, 0, paperWidth, top}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, top + 24, paperWidth, 24}, white), 0);
    }

    void everyLetterFillsItsCellAtEveryFontSize()
    {
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const Layout layout = layoutOf(markup("Щ<F2>Щ<F3>Щ<F4>Щ"), targetOf(model, 0, 0));
            const QImage picture = pictureOf(layout);
            for (const Cell &cell : layout.cells()) {
                const QRect rect = layout.cellRect(layout.rows().at(0), cell);
                QVERIFY(darkPixels(picture, rect) * 100 > rect.width() * rect.height() * 15);
            }
        }
    }

    void boldIsDarkerAndItalicLeansToTheRight()
    {
        const PrintTarget paper = targetOf("SWECOIN_TM_20XX");
        const QImage picture = pictureOf(layoutOf(markup("l<B:>l<:B><N:>l"), paper), 4);
        constexpr int left = (639 - 576) / 2;
        const auto cell = [](int index) {
            return QRect((left + index * 18) * 4, top * 4, 18 * 4, 24 * 4);
        };
        QVERIFY(darkPixels(picture, cell(1)) * 10 > darkPixels(picture, cell(0)) * 12);
        const auto centre = [&picture](QRect rect) {
            int sum = 0;
            int count = 0;
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                for (int x = rect.left(); x <= rect.right(); ++x) {
                    if (qGray(picture.pixel(x, y)) < 128) {
                        sum += x - rect.left();
                        ++count;
                    }
                }
            }
            return double(sum) / count;
        };
        const QRect stem = cell(2).adjusted(0, 16, 0, -60);
        QVERIFY(centre(stem) > centre(stem.translated(-2 * 18 * 4, 0)) + 4);
    }

    // Whoever searches a PDF finds what is drawn in dots.
    void whatIsDrawnInDotsHasItsMeaning_data()
    {
        QTest::addColumn<bool>("isPicture");
        QTest::addColumn<QString>("letters");
        QTest::addColumn<QString>("meanings");
        QTest::newRow("characters of its own") << false << "ab"
                                               << "ЖЯ";
        QTest::newRow("all as a picture") << true << ""
                                          << "aЖЯb";
    }
    void whatIsDrawnInDotsHasItsMeaning()
    {
        QFETCH(bool, isPicture);
        PrintOptions options;
        options.isPicture = isPicture;
        const Layout layout = layoutOf(markup("aЖ <B:>Яb"), targetOf(), options);
        Listener listener;
        paint(layout, 0, layout.size().height(), listener);
        QTEST(listener.letters, "letters");
        QTEST(listener.meanings, "meanings");
        QCOMPARE(listener.places.at(isPicture ? 1 : 0), QRect(margin + 10, top, 10, 24));
        QVERIFY(written(writePdf, layout).contains("/ToUnicode"));
    }

    void underlineIsAnExactBoxUnderEveryCell()
    {
        const QImage picture = pictureOf(layoutOf(markup("<U:>a b<H2:>c<:H2><:U>d")));
        const int base = top + 48;
        QCOMPARE(pixelsOtherThan(picture, {margin, base - 2, 30, 2}, black), 0);
        // As printers have it: two dots, whatever the character's height.
        QCOMPARE(pixelsOtherThan(picture, {margin + 30, base - 2, 10, 2}, black), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin + 30, base - 4, 10, 2}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin + 40, base - 2, 10, 2}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin + 10, base - 24, 10, 22}, white), 0);
    }

    void linesThatGoOnAreMarkedInTheMargin()
    {
        const QImage picture = pictureOf(layoutOf(markup(QString(60, 'x'))));
        QCOMPARE(pixelsOtherThan(picture, {0, top, margin, 24}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin - 10, top + 24, 6, 24}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin - 4, top + 24, 4, 24}, white), 0);
        const QImage narrow =
            pictureOf(layoutOf(markup(QString(99, ' ')), targetOf("CUSTOM_TG_2480_H")));
        QCOMPARE(pixelsOtherThan(narrow, {0, top + 24, 2, 24}, red), 0);
        QCOMPARE(pixelsOtherThan(narrow, {2, top + 24, 4, 24}, white), 0);
    }

    void markNeverTouchesTheLine()
    {
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const QList<int> papers = model.paperTypes().keys();
            for (const int paper : papers) {
                const Layout layout = layoutOf(markup(QString(150, ' ')), targetOf(model, paper));
                const int line = layout.paper().leftMargin();
                const QImage picture = pictureOf(layout);
                const QString name = QString("%1, paper %2").arg(model.id()).arg(paper);
                const int marked = redPixels(picture, {0, 0, line, picture.height()});
                QVERIFY2(marked > 0, qPrintable(name));
                QVERIFY2(redPixels(picture, picture.rect()) == marked, qPrintable(name));
            }
        }
    }

    void cutIsADashedLineOverThePaper()
    {
        TextPrinterDocument document;
        document.setCurrentTicketAction(QFlag(1));
        const QImage picture = pictureOf(layoutOf(document));
        const int y = 2 * Layout::endMargin;
        QCOMPARE(pixelsOtherThan(picture, {0, 0, paperWidth, y}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, y, 12, 2}, grey), 0);
        QCOMPARE(pixelsOtherThan(picture, {12, y, 8, 2}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, {620, y, 12, 2}, grey), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, y + 2, paperWidth, Layout::endMargin}, white), 0);
    }

    void pictureBlocksAreDrawnDotForDot_data()
    {
        QTest::addColumn<int>("scale");
        QTest::newRow("1") << 1;
        QTest::newRow("3") << 3;
    }
    void pictureBlocksAreDrawnDotForDot()
    {
        QFETCH(int, scale);
        const MonochromeImage image = pattern(101, 600);
        const Layout layout = layoutOf(documentOf({pictureBlock(image, AlignRight)}));
        const QImage picture = pictureOf(layout, scale);
        QCOMPARE(picture.size(), layout.size() * scale);
        for (int y = 0; y < 600 * scale; ++y) {
            for (int x = 0; x < 101 * scale; ++x) {
                const QRgb expected = image.pixel(x / scale, y / scale, 32) ? black : white;
                const QPoint place((margin + 512 - 101) * scale + x, top * scale + y);
                if (picture.pixel(place) != expected)
                    QFAIL(qPrintable(QString("pixel %1, %2").arg(x).arg(y)));
            }
        }
    }

    void pictureWiderThanTheLineEndsAtItsEdge()
    {
        const MonochromeImage image(520, 8, QByteArray(65 * 8, '\xFF'));
        const QImage picture = pictureOf(layoutOf(documentOf({pictureBlock(image, AlignLeft)})));
        QCOMPARE(pixelsOtherThan(picture, {margin, top, 512, 8}, black), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin + 512, top, 64, 8}, white), 0);
    }

    void boldDrawingsAreADotWider()
    {
        const MonochromeImage image(4, 2, QByteArray("\x90\x20", 2));
        TextPrinterDocument document = markup("<#1><B:><#1><:B>");
        document.setCharImages({{1, image}});
        const QImage picture = pictureOf(layoutOf(document));
        const auto dots = [&picture](int cell, int y) {
            QString shown;
            for (int x = 0; x < 6; ++x)
                shown += picture.pixel(margin + 10 * cell + x, top + y) == black ? '#' : '.';
            return shown;
        };
        QCOMPARE(dots(0, 0), QString("#..#.."));
        QCOMPARE(dots(1, 0), QString("##.##."));
        QCOMPARE(dots(1, 1), QString("..##.."));
    }

    void boldDrawingsAreDoubledAsTheyAre()
    {
        // A dot is bold before it is enlarged; the last one stays in its cell.
        const MonochromeImage image(10, 1, QByteArray("\x90\x40", 2));
        TextPrinterDocument document = markup("<W2:><B:><#1><:B><:W2>");
        document.setCharImages({{1, image}});
        const QImage picture = pictureOf(layoutOf(document));
        QString shown;
        for (int x = 0; x < 22; ++x)
            shown += picture.pixel(margin + x, top) == black ? '#' : '.';
        QCOMPARE(shown, QString("####..####........##.."));
    }

    void symbolsAreDrawnDotForDotAndDoubled()
    {
        const MonochromeImage image = [] {
            MonochromeImage result = MonochromeImage::createEmpty(9, 20, 8);
            for (int i = 0; i < 9; ++i)
                result.setPixel(i, 2 * i, true, 8);
            return result;
        }();
        TextPrinterDocument document = markup("<#1><W2:><H2:><#1>");
        document.setCharImages({{1, image}});
        const QImage picture = pictureOf(layoutOf(document));
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 10; ++x) {
                const QRgb expected = image.pixel(x, y, 8) ? black : white;
                QCOMPARE(picture.pixel(margin + x, top + 24 + y), expected);
                QCOMPARE(picture.pixel(margin + 10 + 2 * x, top + 2 * y), expected);
                QCOMPARE(picture.pixel(margin + 11 + 2 * x, top + 2 * y + 1), expected);
            }
        }
    }

    void faultsAreFramedExactly()
    {
        const Layout layout = layoutOf(documentOf({barcodeBlock("Ж")}));
        const QImage picture = pictureOf(layout);
        const int height = layout.rows().back().bottom() - top;
        QCOMPARE(pixelsOtherThan(picture, {margin, top, 512, 2}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin, top + height - 2, 512, 2}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin, top, 2, height}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {margin + 510, top, 2, height}, red), 0);
        QVERIFY(darkPixels(picture, {margin + 8, top + 8, 496, height - 16}) > 100);
    }

    void codesAreReadBackOnEveryModel_data()
    {
        QTest::addColumn<DocumentBlock>("block");
        QTest::addColumn<QString>("payload");
        const QString url = "https://tea.example/coupon?card=004711";
        const QString cyrillic =
            "Чек № 1482 на сумму 1154,61 ₽, «Родничок»";
        QTest::newRow("QR") << qrBlock(url.toUtf8()) << url;
        QTest::newRow("QR left") << qrBlock(url.toUtf8(), AlignLeft) << url;
        QTest::newRow("QR right") << qrBlock(url.toUtf8(), AlignRight) << url;
        QTest::newRow("QR Cyrillic") << qrBlock(cyrillic.toUtf8()) << cyrillic;
        QTest::newRow("QR of one character") << qrBlock("1") << "1";
        QTest::newRow("digits") << barcodeBlock("4600000000017") << "4600000000017";
        QTest::newRow("left") << barcodeBlock("4600000000017", AlignLeft) << "4600000000017";
        QTest::newRow("right") << barcodeBlock("4600000000017", AlignRight) << "4600000000017";
        QTest::newRow("ASCII") << barcodeBlock("aB-~ 1#z") << "aB-~ 1#z";
    }
    void codesAreReadBackOnEveryModel()
    {
        QFETCH(DocumentBlock, block);
        QFETCH(QString, payload);
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            for (const int paper : model.paperTypes().keys()) {
                const Layout layout = layoutOf(documentOf({block}), targetOf(model, paper, 0));
                QCOMPARE(codesIn(pictureOf(layout)), QStringList(payload));
            }
        }
    }

    void longestPayloadsAreReadBack_data()
    {
        QTest::addColumn<DocumentBlock>("block");
        QTest::addColumn<QString>("payload");
        QTest::addColumn<QString>("model");
        const QString text = [] {
            QString result;
            for (int i = 0; result.size() < 2953; ++i)
                result += QString::number(i) + (i % 2 == 0 ? "a" : ";");
            return result.left(2953);
        }();
        const QString cyrillic = QString("Родничок") + QString(1468, QChar(0x0436));
        for (const char *model : {"CUSTOM_VKP_80", "AV_268"}) {
            const auto name = [model](const char *what) { return QByteArray(what) + model; };
            QTest::newRow(name("2953 bytes, ")) << qrBlock(text.toUtf8()) << text << model;
            QTest::newRow(name("2952 bytes of Cyrillic, "))
                << qrBlock(cyrillic.toUtf8()) << cyrillic << model;
            const QString digits(7089, '7');
            QTest::newRow(name("7089 digits, ")) << qrBlock(digits.toUtf8()) << digits << model;
        }
        const QString widest = "abcdefghijklmnopqrst";
        QTest::newRow("20 characters")
            << barcodeBlock(widest.toUtf8()) << widest << "CUSTOM_VKP_80";
        const QString digits(40, '9');
        QTest::newRow("40 digits") << barcodeBlock(digits.toUtf8()) << digits << "CUSTOM_VKP_80";
    }
    void longestPayloadsAreReadBack()
    {
        QFETCH(DocumentBlock, block);
        QFETCH(QString, payload);
        QFETCH(QString, model);
        const Layout layout = layoutOf(documentOf({block}), targetOf(model));
        QCOMPARE(notesOf(documentOf({block}), targetOf(model)), QStringList());
        const QStringList read = codesIn(pictureOf(layout));
        QCOMPARE(read.size(), 1);
        QVERIFY2(read.constFirst() == payload, qPrintable(read.constFirst().left(80)));
    }

    void sameInputGivesTheSameBytes_data()
    {
        QTest::addColumn<void *>("writer");
        QTest::newRow("png") << reinterpret_cast<void *>(writePng);
        QTest::newRow("pdf") << reinterpret_cast<void *>(writePdf);
        QTest::newRow("svg") << reinterpret_cast<void *>(writeSvg);
    }
    void sameInputGivesTheSameBytes()
    {
        QFETCH(void *, writer);
        const auto write = reinterpret_cast<Writer>(writer);
        TextPrinterDocument document = boxes();
        document.setBlocks(document.blocks() + markup("Привет <B:>мир").blocks());
        const QByteArray first = written(write, layoutOf(document));
        QTest::qSleep(1100);  // a time of writing would have whole seconds
        QVERIFY(written(write, layoutOf(document)) == first);
    }

    void drawnBoxesAreAsRecorded()
    {
        const QImage picture = pictureOf(layoutOf(boxes()));
        QVERIFY(picture == recorded("boxes.png", picture));
    }

    void textIsAsRecordedButForAFewPixels_data()
    {
        QTest::addColumn<QString>("model");
        QTest::newRow("italic, no letters but of one page") << "SWECOIN_TM_20XX";
        QTest::newRow("the default") << "CUSTOM_VKP_80";
    }
    void textIsAsRecordedButForAFewPixels()
    {
        constexpr int few = 40;
        QFETCH(QString, model);
        const Layout layout = layoutOf(
            markup("<C><B>Магазин «Родничок»\n<N>Курсив <U:>и<:U> ещё<S>1 154,61\n<W2><H2>ИТОГ\n" +
                   QString(80, 'w')),
            targetOf(model));
        const QImage picture = pictureOf(layout);
        const int differing = differingPixels(picture, recorded(model + ".png", picture));
        QVERIFY2(differing <= few, qPrintable(QString::number(differing)));
    }

    void emptyDocumentIsWhitePaper()
    {
        const Layout layout = layoutOf(TextPrinterDocument());
        const QImage picture = pictureOf(layout);
        QCOMPARE(picture.size(), QSize(paperWidth, 48));
        QCOMPARE(pixelsOtherThan(picture, picture.rect(), white), 0);
        QVERIFY(written(writePdf, layout).startsWith("%PDF"));
        QVERIFY(QSvgRenderer(written(writeSvg, layout)).isValid());
    }

    void bandsLeaveNoSeam()
    {
        // Rows of 17 dots and bands of 256 meet at every offset.
        QStringList lines;
        for (int i = 0; i < 60; ++i)
            lines.append("WgЩ");
        const Layout layout = layoutOf(markup(lines.join('\n')), targetOf("CITIZEN_PPU_700", 0, 1));
        const QImage picture = pictureOf(layout);
        const auto &rows = layout.rows();
        const QRect first(0, rows[0].top, picture.width(), rows[0].height);
        for (std::size_t i = 0; i < 60; ++i) {
            const Row &row = rows[i];
            QVERIFY(picture.copy(0, row.top, picture.width(), row.height) == picture.copy(first));
        }
    }

    void pngTellsItsResolution()
    {
        const QImage picture = QImage::fromData(written(writePng, layoutOf(markup("a")), 2), "PNG");
        QCOMPARE(picture.dotsPerMeterX(), qRound(2 * 204 / 0.0254));
        QCOMPARE(picture.format(), QImage::Format_Indexed8);
    }

    void pngBeyondItsLimitIsRefused()
    {
        QStringList lines;
        for (int i = 0; i < 10000; ++i)
            lines.append("x");
        const auto block = DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, 0, 0, 0);
        const Layout layout = layoutOf(documentOf({block}));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QString error;
        QVERIFY(!writePng(
            layout, typeface(), 5, buffer, [](int, int) {}, &error));
        QCOMPARE(error, QString("a PNG is 1000000 pixels high at most, and this would have "
                                "1200240; use a smaller scale, PDF or SVG"));
        QVERIFY(buffer.data().isEmpty());
    }

    void tenThousandLinesAreAllThere()
    {
        QStringList lines;
        for (int i = 0; i < 10000; ++i)
            lines.append("x");
        const auto block = DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, 0, 0, 0);
        const Layout layout = layoutOf(documentOf({block}));
        int last = 0;
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QString error;
        QVERIFY(writePng(
            layout, typeface(), 1, buffer, [&last](int done, int) { last = done; }, &error));
        QCOMPARE(last, 240048);
        const QImage picture = QImage::fromData(buffer.data(), "PNG");
        QCOMPARE(picture.size(), QSize(paperWidth, 240048));
        QVERIFY(darkPixels(picture, {margin, top + 239976, 10, 24}) > 10);
        QCOMPARE(written(writePdf, layout).count("/Type /Page\n"), 15);
    }

    void svgShowsWhatThePngShows()
    {
        TextPrinterDocument document = boxes();
        document.setBlocks(document.blocks() +
                           markup("Привет, <B:>мир<:B> <U:>gj\n" + QString(60, 'x')).blocks());
        const Layout layout = layoutOf(document);
        const QByteArray svg = written(writeSvg, layout);
        const QImage picture = pictureOf(layout);
        QVERIFY(differingPixels(rendered(svg, picture.size()), picture) < 60);
    }

    void deviceThatTakesNothingIsAnError_data() { sameInputGivesTheSameBytes_data(); }
    void deviceThatTakesNothingIsAnError()
    {
        QFETCH(void *, writer);
        QFile full("/dev/full");
        if (!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            QSKIP("/dev/full is missing");
        QString error;
        const Layout layout = layoutOf(markup("a"));
        QVERIFY(!reinterpret_cast<Writer>(writer)(
            layout, typeface(), 1, full, [](int, int) {}, &error));
        QCOMPARE(error, QString("No space left on device"));
    }

    void missingFontIsNamedWithItsPackage()
    {
        Typeface face;
        QString error;
        QVERIFY(!face.load("/nonexistent", &error));
        QCOMPARE(error, QString("/nonexistent/DejaVuSansMono.ttf: No such file or directory; the "
                                "file belongs to the Debian package fonts-dejavu-core"));
    }

    void contactSheetHasAPictureForEachEntry()
    {
        ContactSheet sheet(typeface());
        for (int i = 0; i < 5; ++i)
            sheet.add("model", layoutOf(documentOf(markup("text").blocks())));
        const QImage image = sheet.image();
        QCOMPARE(image.width(), 24 + 4 * (330 + 24));
        const int row = (image.height() - 24) / 2;
        QVERIFY(qAbs(row - (20 + 8 + 36 + 24)) <= 1);
        for (int i = 0; i < 5; ++i) {
            const QPoint place(24 + i % 4 * 354, 24 + i / 4 * row);
            QVERIFY(darkPixels(image, QRect(place, QSize(50, 20))) > 50);
            QCOMPARE(image.pixel(place + QPoint(0, 28)), white);
        }
        QCOMPARE(image.pixel(24 + 354, 24 + row + 28), 0xFFD0D0D0);
    }

    /// Where the paper is blank.
    void charactersThatCannotBePrintedAreCrossedBoxes()
    {
        const TextPrinterDocument document = markup("a<#3>b<#3> <#27>");
        const PrintLayout print = printOf(document, targetOf());
        QCOMPARE(print.unprintedCells, (std::vector<int>{1, 3}));
        const QImage picture = pictureOf(layoutOf(document));
        for (const int cell : {1, 3}) {
            const QRect box(margin + 10 * cell + 1, top + 1, 8, 22);
            QCOMPARE(redPixels(picture, {box.left(), box.top(), 8, 1}), 8);
            QCOMPARE(redPixels(picture, {box.left(), box.bottom(), 8, 1}), 8);
            QCOMPARE(redPixels(picture, {box.left(), box.top(), 1, 22}), 22);
            QCOMPARE(redPixels(picture, {box.right(), box.top(), 1, 22}), 22);
            QVERIFY(redPixels(picture, box.adjusted(2, 2, -2, -2)) >= 18);
            QCOMPARE(darkPixels(picture, box.adjusted(1, 1, -1, -1)) > 0, true);
        }
        // What is printed has none, and neither has a blank or a code.
        QCOMPARE(redPixels(picture, {margin, top, 10, 24}), 0);
        QCOMPARE(redPixels(picture, {margin + 20, top, 10, 24}), 0);
        QCOMPARE(redPixels(picture, {margin + 40, top, 40, 24}), 0);
    }

    void whatIsPrintedInAnyWayHasNoBox()
    {
        const QString text = QString::fromUtf8("A \u0416 \u20AC \u8A9E");
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const PrintTarget target = targetOf(model);
            const bool hasRaster =
                target.profile().rasterCommand() != printerslib::drivers::RasterCommand::None;
            if (hasRaster)
                QVERIFY2(printOf(markup(text), target).unprintedCells.empty(),
                         qPrintable(model.id()));
        }
    }

    void contactSheetShowsWholeReceipts()
    {
        ContactSheet sheet(typeface());
        const Layout layout =
            layoutOf(documentOf(markup(QString("<B>####\n").repeated(240)).blocks()));
        QVERIFY(layout.size().height() > 5700 && layout.size().height() <= ContactSheet::mostDots);
        sheet.add("model", layout);
        const QImage image = sheet.image();
        const int height = qRound(layout.size().height() * 322.0 / 643);
        QVERIFY(qAbs(image.height() - (24 + 28 + height + 24)) <= 1);
        QCOMPARE(redPixels(image, image.rect()), 0);
        // The last line is there.
        const int bottom = image.height() - 24;
        QVERIFY(darkPixels(image, QRect(24, bottom - 37, 321, 14)) > 0);
    }

    void contactSheetSaysWhereItCuts()
    {
        ContactSheet sheet(typeface());
        sheet.add("model", layoutOf(documentOf(markup(QString("x\n").repeated(300)).blocks())));
        const QImage image = sheet.image();
        const int pictureEnd = 24 + 28 + qRound(ContactSheet::mostDots * 322.0 / 643);
        QVERIFY(qAbs(image.height() - (pictureEnd + 2 + 8 + 20 + 24)) <= 1);
        const int textTop = image.height() - 24 - 20;
        QVERIFY(redPixels(image, QRect(24, textTop, 330, 20)) > 50);
        QVERIFY(redPixels(image, QRect(24, textTop - 10, 321, 2)) > 600);
    }

    void contactSheetNamesModelsThatWrap()
    {
        ContactSheet sheet(typeface());
        const TextPrinterDocument document = documentOf(markup(QString(55, 'x')).blocks());
        sheet.add("narrow", layoutOf(document));
        sheet.add("wide", layoutOf(document, targetOf("CITIZEN_PPU_700")));
        const QImage image = sheet.image();
        QVERIFY(redPixels(image, QRect(24, 44, 330, 20)) > 50);
        QCOMPARE(redPixels(image, QRect(24 + 354, 0, 330, image.height())), 0);
    }
};

QTEST_MAIN(TestPreviewPainting)
#include "tst_preview_painting.moc"
