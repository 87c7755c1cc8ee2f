// Pieces of paper, drawn: where they lie, their pictures, codes and ends.
#include <QSvgRenderer>
#include <QtTest>

#include "printbench.h"

using namespace printbench;

namespace {

Print everything()
{
    return Piece()
        .text(QStringLiteral("Чек № 1207"), {0, 0}, Print::Bold, {2, 2})
        .text("plain, ", {0, 60})
        .text("fine", {84, 60}, Print::Underline)
        .text("thick", {144, 60}, Print::ThickUnderline)
        .text("italic", {216, 60}, Print::Italic)
        .text("INVERSE", {300, 60}, Print::Inverse)
        .text("red", {400, 60}, Print::SecondColour)
        .text("upside down", {0, 100}, Print::UpsideDown | Print::Underline)
        .text("turned", {200, 100}, Print::Turned)
        .text("both", {380, 100}, Print::Turned | Print::UpsideDown)
        .text("8", {0, 140}, 0, {8, 8})
        .text("abc", {120, 140}, Print::Inverse | Print::Bold, {3, 1})
        .text("overlap", {240, 150})
        .text("#######", {243, 155})
        .picture({120, 200}, {16, 4}, QByteArray("\xF0\xF0\x0F\x0F\xAA\xAA\xFF\x00", 8), {3, 9})
        .code({0, 350}, Print::Symbology::QrCode, "https://example.org/1207", {4, 4})
        .code({200, 350}, Print::Symbology::Code128, "1207", {2, 60})
        .text("1207", {230, 414})
        .cut();
}

}  // namespace

class TestPreviewPrint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pieceIsInTheMiddleOfThePaper_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("left");
        QTest::newRow("the paper's line") << 512 << 63;
        QTest::newRow("narrower") << 384 << 127;
        QTest::newRow("wider than the paper") << 700 << 6;
    }
    void pieceIsInTheMiddleOfThePaper()
    {
        QFETCH(int, line);
        QFETCH(int, left);
        const Layout layout = layoutOf({Piece().width(line).text("A", {0, 0})});
        QCOMPARE(layout.cells().at(0).left, left);
        QCOMPARE(layout.size().width(), qMax(639, line + 2 * 6));
    }

    void resolutionIsThatOfThePiece()
    {
        Print print = Piece().text("A", {0, 0});
        print.dotsPerInch = 180;
        const Layout layout = layoutOf({print});
        QCOMPARE(layout.paper().dotsPerInch(), 180);
        QCOMPARE(layout.size().width(), 567);  // 80 mm
    }

    void wrappedLineIsMarked()
    {
        const QImage picture = drawn(Piece().text("A", {0, 0}).text("B", {0, 30}).wrapped());
        QCOMPARE(pixelsOtherThan(picture, {margin - 10, top + 30, 6, 24}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, top, margin, 30}, white), 0);
    }

    void pictureIsDrawnDotForDot()
    {
        const QByteArray rows("\xF0\xF0\x0F\x0F", 4);
        const QImage picture = drawn(Piece().picture({7, 5}, {16, 2}, rows, {3, 9}));
        for (int y = 0; y < 18; ++y) {
            for (int x = 0; x < 48; ++x) {
                const bool isSet = (x / 3 % 8 < 4) == (y < 9);
                QCOMPARE(picture.pixel(margin + 7 + x, top + 5 + y), isSet ? black : white);
            }
        }
    }

    void pictureEndsAtTheLine()
    {
        const QImage picture = drawn(Piece().picture({500, 0}, {32, 2}, QByteArray(8, '\xFF')));
        QCOMPARE(pixelsOtherThan(picture, at(500, 0, 12, 2), black), 0);
        QCOMPARE(pixelsOtherThan(picture, at(512, 0, 63, 2), white), 0);
    }

    void codesAreReadBack()
    {
        const QImage picture = drawn(everything());
        QStringList codes = codesIn(picture);
        codes.sort();
        QCOMPARE(codes, (QStringList{"1207", "https://example.org/1207"}));
    }

    void codeWithoutModulesIsNothing()
    {
        const Layout layout =
            layoutOf({Piece().code({0, 0}, Print::Symbology::Ean13, "x", {2, 80})});
        QVERIFY(layout.rasters().empty());
    }

    void cutPieceEndsInADashedLine()
    {
        const QImage cut = drawn(Piece().length(100).cut());
        const int y = 100 + 2 * top;
        QCOMPARE(cut.height(), y + Layout::cutHeight);
        QCOMPARE(pixelsOtherThan(cut, {0, y, 12, 2}, grey), 0);
        QCOMPARE(pixelsOtherThan(cut, {12, y, 8, 2}, white), 0);
        const QImage hanging = drawn(Piece().length(100));
        QCOMPARE(hanging.height(), y);
        QCOMPARE(pixelsOtherThan(hanging, hanging.rect(), white), 0);
    }

    void piecesLieOneBelowTheOther()
    {
        const Layout layout = layoutOf({Piece().length(100).cut(), Piece().text("A", {0, 0})});
        const QImage picture = pictureOf(layout);
        const int gap = 100 + 2 * top + Layout::cutHeight;
        QCOMPARE(picture.height(), gap + Layout::gapHeight + 24 + 2 * top);
        const QRgb table = picture.pixel(0, gap);
        QVERIFY(table != white && table != grey);
        QCOMPARE(pixelsOtherThan(picture, {0, gap, 639, Layout::gapHeight}, table), 0);
        QVERIFY(pixelsOtherThan(picture, {margin, gap + Layout::gapHeight + top, 12, 24}, white) >
                10);
    }

    void noPiecesAreNoPaper()
    {
        const Layout layout = layoutOf(QVector<Print>());
        QCOMPARE(layout.size().height(), 0);
        QVERIFY(layout.rows().empty());
    }

    void linesMayOverlapAndStandInAnyOrder()
    {
        Piece disordered;
        Piece ordered;
        for (int i = 0; i < 40; ++i)
            ordered.text("x", {i * 12, i * 20}, 0, {1, 3});
        for (int i = 39; i >= 0; --i)
            disordered.text("x", {i * 12, i * 20}, 0, {1, 3});
        QVERIFY(drawn(ordered) == drawn(disordered));
    }

    void bandsLeaveNoSeam()
    {
        // A tall row begins far above what else is in a band.
        Piece piece;
        piece.picture({0, 0}, {8, 100}, QByteArray(100, '\x81'), {4, 20});
        for (int i = 0; i < 90; ++i)
            piece.text("Wx", {100 + i % 7 * 13, i * 21}, i % 2 == 0 ? 0 : Print::Inverse,
                       {1 + i % 3, 1 + i % 5});
        const Layout layout = layoutOf({piece});
        const QImage whole = topOf(layout, typeface(), layout.size().height());
        QCOMPARE(differing(whole, pictureOf(layout)), 0);
    }

    void whatReachesBelowThePieceBelongsToIt()
    {
        Print print = Piece().text("A", {0, 90});
        print.length = 100;
        QCOMPARE(layoutOf({print}).size().height(), 114 + 2 * top);
    }

    void whatBeginsAboveThePieceBeginsWithIt()
    {
        const Layout layout = layoutOf({Piece().text("A", {0, -10})});
        QCOMPARE(layout.rows().at(0).top, top);
    }

    void paperThatIsTooLongIsTold()
    {
        const Print longest = Piece().length(Print::longest);
        QVERIFY(!layoutOf(QVector<Print>(12, longest)).tooLong());
        QVERIFY(layoutOf(QVector<Print>(13, longest)).tooLong());
    }

    void eachPieceIsAPageOfThePdf()
    {
        const Print piece = Piece().text("A", {0, 0}).cut();
        const auto pages = [](const QByteArray &pdf) { return pdf.count("/Type /Page\n"); };
        QCOMPARE(pages(written(writePdf, layoutOf({piece}))), 1);
        QCOMPARE(pages(written(writePdf, layoutOf({piece, piece, piece}))), 3);
        // A page has 2 m at most, and a piece may have 10.
        const Print longest =
            Piece().text("A", {0, 0}).length(Print::longest).text("B", {0, 79976});
        QCOMPARE(pages(written(writePdf, layoutOf({longest}))), 6);
    }

    void svgIsThePicture()
    {
        const Layout layout = layoutOf({everything(), Piece().text("A", {0, 0})});
        QSvgRenderer renderer(written(writeSvg, layout));
        QVERIFY(renderer.isValid());
        QImage shown(layout.size(), QImage::Format_RGB32);
        shown.fill(Qt::white);
        QPainter painter(&shown);
        renderer.render(&painter);
        painter.end();
        const int wrong = differing(shown, pictureOf(layout));
        QVERIFY2(wrong < 600, qPrintable(QString::number(wrong)));
    }

    void pictureIsAsRecorded()
    {
        const QImage picture = pictureOf(layoutOf({everything(), Piece().text("A", {0, 0})}));
        const int wrong = differing(picture, recorded("print.png", picture));
        QVERIFY2(wrong <= 40, qPrintable(QString::number(wrong)));
    }
};

QTEST_MAIN(TestPreviewPrint)
#include "tst_preview_print.moc"
