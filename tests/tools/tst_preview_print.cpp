// What printers have printed, drawn: pieces of paper that are made by hand here.
#include <QSvgRenderer>
#include <QtTest>

#include "previewtools.h"
#include "printerslib/drivers/symbologydrawer.h"

using Print = printerslib::drivers::Paper;
using printerslib::drivers::SymbologyDrawer;

namespace {

constexpr int margin = 63;
constexpr int top = Layout::endMargin;
constexpr QSize font(12, 24);
constexpr QRgb white = 0xFFFFFFFF;
constexpr QRgb black = 0xFF000000;
constexpr QRgb red = 0xFFC00000;
constexpr QRgb grey = 0xFF808080;

/// A piece of paper under a pen.
class Piece
{
public:
    Piece()
    {
        m_print.width = 512;
        m_print.cell = font;
    }

    /// A line of its own at a height, with cells side by side.
    Piece &text(const QString &text, const QPoint &place, quint16 effects = 0,
                const QSize &scale = {1, 1})
    {
        Print::Line &line = addLine(place.y(), font.height() * scale.height());
        QPoint at = place;
        for (const QChar character : text) {
            Print::Cell cell;
            cell.left = at.x();
            cell.top = at.y();
            QSize size(font.width() * scale.width(), font.height() * scale.height());
            if ((effects & Print::Turned) != 0)
                size.transpose();
            cell.width = static_cast<quint16>(size.width());
            cell.height = static_cast<quint16>(size.height());
            cell.widthScale = static_cast<quint8>(scale.width());
            cell.heightScale = static_cast<quint8>(scale.height());
            cell.effects = effects;
            cell.character = character.unicode();
            m_print.cells.append(cell);
            ++line.cellCount;
            at.rx() += cell.width;
        }
        return *this;
    }

    /// The last line's cells show this picture.
    Piece &asDrawing(const QSize &size, const QByteArray &rows)
    {
        Print::Picture picture;
        picture.size = size;
        picture.rows = rows;
        m_print.pictures.append(picture);
        for (int i = 0; i < m_print.lines.constLast().cellCount; ++i)
            m_print.cells[m_print.lines.constLast().firstCell + i].drawing =
                m_print.pictures.size() - 1;
        return *this;
    }

    Piece &picture(const QPoint &place, const QSize &size, const QByteArray &rows,
                   const QSize &dots = {1, 1})
    {
        Print::Line &line = addLine(place.y(), size.height() * dots.height());
        Print::Picture picture;
        picture.place =
            QRect(place, QSize(size.width() * dots.width(), size.height() * dots.height()));
        picture.size = size;
        picture.dotsPerPixel = dots;
        picture.rows = rows;
        m_print.pictures.append(picture);
        line.pictureCount = 1;
        return *this;
    }

    Piece &code(const QPoint &place, Print::Symbology symbology, const QByteArray &payload,
                const QSize &module)
    {
        Print::Code code;
        code.symbology = symbology;
        code.payload = payload;
        code.module = module;
        SymbologyDrawer().draw(code);
        code.place = QRect(place, QSize(code.modules.width() * module.width(),
                                        code.modules.height() * module.height()));
        addLine(place.y(), code.place.height()).codeCount = 1;
        m_print.codes.append(code);
        return *this;
    }

    Piece &cut()
    {
        m_print.isCut = true;
        return *this;
    }
    Piece &length(int dots)
    {
        m_print.length = dots;
        return *this;
    }
    Piece &width(int dots)
    {
        m_print.width = dots;
        return *this;
    }
    Piece &wrapped()
    {
        m_print.lines.last().isWrapped = true;
        return *this;
    }

    operator Print() const { return m_print; }

private:
    Print::Line &addLine(int lineTop, int height)
    {
        Print::Line line;
        line.top = lineTop;
        line.height = height;
        line.firstCell = m_print.cells.size();
        line.firstPicture = m_print.pictures.size();
        line.firstCode = m_print.codes.size();
        m_print.lines.append(line);
        m_print.length = qMax(m_print.length, lineTop + height);
        return m_print.lines.last();
    }

    Print m_print;
};

Layout layoutOf(const QVector<Print> &pieces)
{
    return Layout(pieces, paperOf());
}

QImage drawn(const Print &piece, int scale = 1)
{
    return pictureOf(layoutOf({piece}), scale);
}

int pixelsOtherThan(const QImage &picture, const QRect &rect, QRgb colour)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += picture.pixel(x, y) != colour ? 1 : 0;
    }
    return count;
}

/// A place of the piece in the picture.
QRect at(int left, int y, int width, int height)
{
    return {margin + left, top + y, width, height};
}

QImage part(const QImage &picture, const QRect &rect)
{
    return picture.copy(rect);
}

/// Pixels that are black in one and white in the other, by their half.
int differing(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return INT_MAX;
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 100 ? 1 : 0;
    }
    return count;
}

QImage turned(const QImage &image, int degrees)
{
    return image.transformed(QTransform().rotate(degrees));
}

// Two columns wide and three rows high: XX / X. / .X
const QByteArray smallRows("\xC0\x80\x40", 3);
constexpr QSize smallSize(2, 3);

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

    void pieceIsInTheMiddleOfThePaper_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("left");
        QTest::newRow("the paper's line") << 512 << 63;
        QTest::newRow("narrower") << 384 << 127;
        QTest::newRow("wider than the paper") << 700 << 0;
    }
    void pieceIsInTheMiddleOfThePaper()
    {
        QFETCH(int, line);
        QFETCH(int, left);
        const Layout layout = layoutOf({Piece().width(line).text("A", {0, 0})});
        QCOMPARE(layout.cells().at(0).left, left);
        QCOMPARE(layout.size().width(), qMax(639, line));
    }

    void resolutionIsThatOfThePiece()
    {
        Print print = Piece().text("A", {0, 0});
        print.dotsPerInch = 180;
        const Layout layout = layoutOf({print});
        QCOMPARE(layout.paper().dotsPerInch(), 180);
        QCOMPARE(layout.size().width(), 567);  // 80 mm
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

    void wrappedLineIsMarked()
    {
        const QImage picture = drawn(Piece().text("A", {0, 0}).text("B", {0, 30}).wrapped());
        QCOMPARE(pixelsOtherThan(picture, {margin - 10, top + 30, 6, 24}, red), 0);
        QCOMPARE(pixelsOtherThan(picture, {0, top, margin, 30}, white), 0);
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
        const Layout layout = layoutOf({});
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
        picture.save("drawn-print.png");
        const QImage recorded = QImage(PRINTERSLIB_TEST_DATA "/preview/print.png")
                                    .convertToFormat(QImage::Format_RGB32);
        const int wrong = differing(picture, recorded);
        QVERIFY2(wrong <= 40, qPrintable(QString::number(wrong)));
    }
};

QTEST_MAIN(TestPreviewPrint)
#include "tst_preview_print.moc"
