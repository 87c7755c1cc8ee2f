// Characters on paper, drawn: their places, sizes and looks.
#include <QtTest>

#include "printbench.h"

using namespace printbench;

namespace {

QImage turned(const QImage &image, int degrees)
{
    return image.transformed(QTransform().rotate(degrees));
}

// Two columns wide and three rows high: XX / X. / .X
const QByteArray smallRows("\xC0\x80\x40", 3);
constexpr QSize smallSize(2, 3);

}  // namespace

class TestPreviewCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsStandAtTheirPlaces()
    {
        const QImage picture = drawn(Piece().text("A", {30, 10}).text("B", {200, 70}));
        QCOMPARE(picture.size(), QSize(639, 94 + 2 * top));
        QVERIFY(pixelsOtherThan(picture, at(30, 10, 12, 24), white) > 10);
        QVERIFY(pixelsOtherThan(picture, at(200, 70, 12, 24), white) > 10);
        QCOMPARE(pixelsOtherThan(picture, {0, 0, 639, top + 10}, white), 0);
        QCOMPARE(pixelsOtherThan(picture, at(42, 10, 400, 24), white), 0);
        QCOMPARE(pixelsOtherThan(picture, at(0, 34, 512, 36), white), 0);
    }

    void blanksAreNotDrawn()
    {
        const Layout layout = layoutOf({Piece()
                                            .text(" a \t\n", {0, 0})
                                            .text(" ", {0, 30}, Print::Underline)
                                            .text(" ", {0, 60}, Print::Inverse)
                                            .text("   ", {0, 90})});
        QCOMPARE(layout.cells().size(), std::size_t(3));
        QCOMPARE(layout.rows().size(), std::size_t(3));
    }

    void characterThatTheSetLacksIsDrawn()
    {
        const QImage picture = drawn(Piece().text(QString(QChar(0xFFFD)), {0, 0}));
        QVERIFY(pixelsOtherThan(picture, at(0, 0, 12, 24), white) > 10);
    }

    void scaledCellIsTheSameLetter_data()
    {
        QTest::addColumn<QSize>("scale");
        QTest::newRow("8 x 8") << QSize(8, 8);
        QTest::newRow("wide") << QSize(3, 1);
        QTest::newRow("high") << QSize(1, 4);
    }
    void scaledCellIsTheSameLetter()
    {
        QFETCH(QSize, scale);
        const QImage large = part(drawn(Piece().text("R", {0, 0}, 0, scale)),
                                  at(0, 0, 12 * scale.width(), 24 * scale.height()));
        const QImage small =
            part(drawn(Piece().text("R", {0, 0})), at(0, 0, 12, 24))
                .scaled(large.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QVERIFY(differing(large, small) * 100 < 12 * large.width() * large.height());
    }

    void upsideDownIsTurnedByHalf()
    {
        const QImage upright = part(drawn(Piece().text("R", {0, 0}), 4), {63 * 4, 96, 48, 96});
        const QImage down =
            part(drawn(Piece().text("R", {0, 0}, Print::UpsideDown), 4), {63 * 4, 96, 48, 96});
        QVERIFY(differing(upright, down) > 200);
        QVERIFY(differing(turned(upright, 180), down) < 20);
    }

    void turnedIsTurnedClockwise()
    {
        const QImage upright = part(drawn(Piece().text("R", {0, 0}), 4), {63 * 4, 96, 48, 96});
        const QImage clockwise =
            part(drawn(Piece().text("R", {0, 0}, Print::Turned), 4), {63 * 4, 96, 96, 48});
        QVERIFY(differing(turned(upright, 90), clockwise) < 20);
        const QImage both =
            part(drawn(Piece().text("R", {0, 0}, Print::Turned | Print::UpsideDown), 4),
                 {63 * 4, 96, 96, 48});
        QVERIFY(differing(turned(upright, 270), both) < 20);
    }

    void inverseIsWhiteOnBlack()
    {
        QImage plain = part(drawn(Piece().text("R", {0, 0})), at(0, 0, 12, 24));
        plain.invertPixels();
        const QImage inverse =
            part(drawn(Piece().text("R", {0, 0}, Print::Inverse)), at(0, 0, 12, 24));
        QCOMPARE(differing(plain, inverse), 0);
        const QImage blank = drawn(Piece().text("  ", {0, 0}, Print::Inverse));
        QCOMPARE(pixelsOtherThan(blank, at(0, 0, 24, 24), black), 0);
    }

    void inkIsAddedToInverseCells()
    {
        const QByteArray bar(24 * 2, '\xFF');
        for (const bool isBefore : {false, true}) {
            Piece piece;
            if (isBefore)
                piece.picture({0, 0}, {12, 24}, bar);
            piece.text("R", {0, 0}, Print::Inverse);
            if (!isBefore)
                piece.picture({0, 0}, {12, 24}, bar);
            QCOMPARE(pixelsOtherThan(drawn(piece), at(0, 0, 12, 24), black), 0);
        }
    }

    void inverseHasNoUnderline()
    {
        const QImage plain = drawn(Piece().text("R", {0, 0}, Print::Inverse));
        QVERIFY(drawn(Piece().text("R", {0, 0}, Print::Inverse | Print::ThickUnderline)) == plain);
    }

    void underlineIsOneOrTwoDots_data()
    {
        QTest::addColumn<int>("effect");
        QTest::addColumn<QSize>("scale");
        QTest::addColumn<int>("dots");
        QTest::newRow("fine") << int(Print::Underline) << QSize(1, 1) << 1;
        QTest::newRow("thick") << int(Print::ThickUnderline) << QSize(1, 1) << 2;
        QTest::newRow("fine under large letters") << int(Print::Underline) << QSize(4, 4) << 1;
        QTest::newRow("thick under large letters")
            << int(Print::ThickUnderline) << QSize(4, 4) << 2;
    }
    void underlineIsOneOrTwoDots()
    {
        QFETCH(int, effect);
        QFETCH(QSize, scale);
        QFETCH(int, dots);
        const QImage picture =
            drawn(Piece().text("  ", {0, 0}, static_cast<quint16>(effect), scale));
        const int height = 24 * scale.height();
        const int width = 24 * scale.width();
        QCOMPARE(pixelsOtherThan(picture, at(0, height - dots, width, dots), black), 0);
        QCOMPARE(pixelsOtherThan(picture, at(0, 0, width, height - dots), white), 0);
        QCOMPARE(pixelsOtherThan(picture, at(width, 0, 20, height), white), 0);
    }

    void underlineOfUpsideDownIsAbove()
    {
        const QImage picture =
            drawn(Piece().text(" ", {0, 0}, Print::UpsideDown | Print::ThickUnderline));
        QCOMPARE(pixelsOtherThan(picture, at(0, 0, 12, 2), black), 0);
        QCOMPARE(pixelsOtherThan(picture, at(0, 2, 12, 22), white), 0);
    }

    void secondColourIsBlack()
    {
        QVERIFY(drawn(Piece().text("R", {0, 0}, Print::SecondColour)) ==
                drawn(Piece().text("R", {0, 0})));
    }

    void drawingOfACharacterIsExact_data()
    {
        QTest::addColumn<int>("effects");
        QTest::addColumn<QSize>("scale");
        QTest::addColumn<QStringList>("dots");
        const auto row = [](const char *name, int effects, const QSize &scale,
                            const QStringList &dots) {
            QTest::newRow(name) << effects << scale << dots;
        };
        row("plain", 0, {1, 1}, {"XX.", "X..", ".X.", "..."});
        row("doubled", 0, {2, 1}, {"XXXX.", "XX...", "..XX.", "....."});
        row("doubled in height", 0, {1, 2}, {"XX.", "XX.", "X..", "X..", ".X.", ".X.", "..."});
    }
    void drawingOfACharacterIsExact()
    {
        QFETCH(int, effects);
        QFETCH(QSize, scale);
        QFETCH(QStringList, dots);
        const QImage picture = drawn(Piece()
                                         .text("?", {10, 10}, static_cast<quint16>(effects), scale)
                                         .asDrawing(smallSize, smallRows));
        for (int y = 0; y < dots.size(); ++y) {
            for (int x = 0; x < dots.at(y).size(); ++x)
                QCOMPARE(picture.pixel(margin + 10 + x, top + 10 + y),
                         dots.at(y).at(x) == 'X' ? black : white);
        }
        QCOMPARE(pixelsOtherThan(picture, at(10, 10, 24, 48), white),
                 4 * scale.width() * scale.height());
    }

    void drawingIsTurnedWithItsCell()
    {
        const auto drawing = [](int effects) {
            return drawn(Piece()
                             .text("?", {0, 0}, static_cast<quint16>(effects))
                             .asDrawing(smallSize, smallRows));
        };
        const QImage upright = part(drawing(0), at(0, 0, 12, 24));
        QVERIFY(part(drawing(Print::UpsideDown), at(0, 0, 12, 24)) == turned(upright, 180));
        QVERIFY(part(drawing(Print::Turned), at(0, 0, 24, 12)) == turned(upright, 90));
        QVERIFY(part(drawing(Print::Turned | Print::UpsideDown), at(0, 0, 24, 12)) ==
                turned(upright, 270));
        QImage inverse = part(drawing(Print::Inverse), at(0, 0, 12, 24));
        inverse.invertPixels();
        QVERIFY(inverse == upright);
    }

    void drawingEndsWithItsCell()
    {
        const QImage picture =
            drawn(Piece().text("?", {0, 0}).asDrawing({24, 48}, QByteArray(3 * 48, '\xFF')));
        QCOMPARE(pixelsOtherThan(picture, at(0, 0, 12, 24), black), 0);
        QCOMPARE(pixelsOtherThan(picture, at(12, 0, 100, 24), white), 0);
    }

    void drawingThatIsMissingIsTheCharacter()
    {
        Print print = Piece().text("R", {0, 0});
        print.cells[0].drawing = 7;
        QVERIFY(drawn(print) == drawn(Piece().text("R", {0, 0})));
    }
};

QTEST_MAIN(TestPreviewCells)
#include "tst_preview_cells.moc"
