#include "encoder/rasterrow_p.h"

#include <QtTest>

#include "encoder/glyphs_p.h"
#include "printerdocs/echarformat.h"

using namespace printerslib::drivers;

namespace {

using Row = PrintLayout::Row;
using Cell = PrintLayout::Cell;

QStringList repeated(int count, const QString &line)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines += line;
    return lines;
}

/// Rows as lines of '#' and '.'.
QStringList dotsOf(const Paper::Picture &picture)
{
    QStringList lines;
    const int bytes = (picture.size.width() + 7) / 8;
    for (int y = 0; y < picture.size.height(); ++y) {
        QString line;
        for (int x = 0; x < picture.size.width(); ++x) {
            const auto byte = static_cast<unsigned char>(picture.rows.at(y * bytes + x / 8));
            line += (byte >> (7 - x % 8) & 1) != 0 ? u'#' : u'.';
        }
        lines += line;
    }
    return lines;
}

QStringList dotsOf(char16_t character, QSize cell)
{
    return dotsOf(glyphs::of(character, cell));
}

QStringList enlarged(const QStringList &lines, int xTimes, int yTimes)
{
    QStringList result;
    for (const QString &line : lines) {
        QString wide;
        for (const QChar dot : line)
            wide += QString(xTimes, dot);
        for (int i = 0; i < yTimes; ++i)
            result += wide;
    }
    return result;
}

QStringList sideBySide(const QStringList &left, const QStringList &right)
{
    QStringList result;
    for (int i = 0; i < left.size(); ++i)
        result += left.at(i) + right.at(i);
    return result;
}

QStringList bold(QStringList lines)
{
    for (QString &line : lines) {
        const QString thin = line;
        for (int x = 1; x < line.size(); ++x) {
            if (thin.at(x - 1) == u'#')
                line[x] = u'#';
        }
    }
    return lines;
}

/// A picture out of lines of '#' and '.'.
Paper::Picture pictureOf(const QStringList &lines)
{
    Paper::Picture picture;
    picture.size = {lines.first().size(), lines.size()};
    for (const QString &line : lines) {
        QByteArray row((line.size() + 7) / 8, 0);
        for (int x = 0; x < line.size(); ++x) {
            if (line.at(x) == u'#')
                row[x / 8] = char(row.at(x / 8) | 0x80 >> (x % 8));
        }
        picture.rows += row;
    }
    return picture;
}

Row textRow(int count, int height)
{
    Row row;
    row.kind = Row::Text;
    row.isRaster = true;
    row.height = height;
    row.count = count;
    return row;
}

/// The number of a model's font with a cell of some size.
int fontOf(const PrintTarget &target, QSize cell)
{
    int font = 0;
    while (font < 255 && target.font(static_cast<unsigned char>(font)).cell != cell)
        ++font;
    return font;
}

constexpr QSize fontA = {12, 24};
constexpr QSize fontB = {9, 24};

/// Of a model that has both fonts, of which the first is the one of most text.
PrintLayout layoutOf(std::vector<Cell> cells, const char *model = "CITIZEN_CBM_1000")
{
    const QString id = QString::fromLatin1(model);
    const int base = fontOf(*PrintTarget::forModel(id, 0), fontA);
    PrintLayout layout(*PrintTarget::forModel(id, 0, base));
    layout.cells = std::move(cells);
    return layout;
}

Cell cellOf(char16_t character, int format = 0, int font = 0)
{
    Cell cell;
    cell.character = character;
    cell.format = quint8(format);
    cell.font = quint8(font);
    return cell;
}

QStringList drawn(const PrintLayout &layout, int height)
{
    return dotsOf(layout.rasterOf(textRow(int(layout.cells.size()), height)));
}

QStringList drawn(const Cell &cell, int height = 24)
{
    return drawn(layoutOf({cell}), height);
}

}  // namespace

class TestRasterRow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsStandSideBySide()
    {
        const QStringList expected = sideBySide(dotsOf(u'Щ', fontA), dotsOf(u'€', fontA));
        QCOMPARE(drawn(layoutOf({cellOf(u'Щ'), cellOf(u'€')}), 24), expected);
    }

    void cellsOfOtherFontsStandOnTheFoot()
    {
        const auto layout = layoutOf({cellOf(u'A'), cellOf(u'b', CharDoubleHeight)});
        const QStringList above = repeated(24, QString(12, u'.'));
        QCOMPARE(drawn(layout, 48),
                 sideBySide(above + dotsOf(u'A', fontA), enlarged(dotsOf(u'b', fontA), 1, 2)));
    }

    void cellsAreInTheirFonts()
    {
        const int font = fontOf(layoutOf({}).target, fontB);
        QCOMPARE(drawn(cellOf(u'A', 0, font)), dotsOf(u'A', fontB));
    }

    void boldIsEachDotWithItsRightNeighbour()
    {
        for (const char16_t character : {u'A', u'Щ', u'─', u'█', u'@'})
            QCOMPARE(drawn(cellOf(character, CharBold)), bold(dotsOf(character, fontA)));
    }

    void boldStaysInItsCell()
    {
        const auto layout = layoutOf({cellOf(u'█', CharBold), cellOf(u' ')});
        QCOMPARE(drawn(layout, 24), sideBySide(dotsOf(u'█', fontA), dotsOf(u' ', fontA)));
    }

    void italicLeansToTheRightAndStaysInItsCell()
    {
        const QStringList upright = dotsOf(u'│', fontA);
        const QStringList leaning = drawn(cellOf(u'│', CharItalic));
        QCOMPARE(leaning.size(), 24);
        for (int y = 0; y < 24; ++y) {
            const int aside = (12 - y) / 5;
            const QString moved = aside > 0 ? QString(aside, u'.') + upright.at(y).left(12 - aside)
                                            : upright.at(y).mid(-aside) + QString(-aside, u'.');
            QCOMPARE(leaning.at(y), moved);
        }
        QVERIFY(leaning.first().indexOf(u'#') > leaning.last().indexOf(u'#'));
    }

    void italicLosesNoStrokeAtTheEdge()
    {
        // Strokes at both edges of the cell.
        auto layout = layoutOf({cellOf(u' ', CharItalic)});
        layout.drawings = {pictureOf(repeated(24, QStringLiteral("#..........#")))};
        layout.cells[0].drawing = 0;
        for (const QString &line : drawn(layout, 24)) {
            QCOMPARE(line.size(), 12);
            QCOMPARE(line.count(u'#'), 2);
        }
    }

    void underlineIsTwoDotsAtTheFoot()
    {
        QStringList expected = dotsOf(u'A', fontA);
        expected[22] = expected[23] = QString(12, u'#');
        QCOMPARE(drawn(cellOf(u'A', CharUnderline)), expected);
        const QStringList blank = drawn(cellOf(u' ', CharUnderline));
        QCOMPARE(blank.at(21), QString(12, u'.'));
        QCOMPARE(blank.at(22), QString(12, u'#'));
        QCOMPARE(blank.at(23), QString(12, u'#'));
    }

    void underlineIsNoThickerWhereAllIsDouble()
    {
        const QStringList lines =
            drawn(cellOf(u' ', CharUnderline | CharDoubleHeight | CharDoubleWidth), 48);
        QCOMPARE(lines.at(45), QString(24, u'.'));
        QCOMPARE(lines.at(46), QString(24, u'#'));
        QCOMPARE(lines.at(47), QString(24, u'#'));
    }

    void inverseIsWhiteOnBlackAndNotUnderlined()
    {
        QStringList expected = dotsOf(u'A', fontA);
        for (QString &line : expected)
            line.replace(u'#', u'x').replace(u'.', u'#').replace(u'x', u'.');
        QCOMPARE(drawn(cellOf(u'A', CharMarkZ)), expected);
        QCOMPARE(drawn(cellOf(u'A', CharMarkZ | CharUnderline)), expected);
        QCOMPARE(drawn(cellOf(u' ', CharMarkZ)), repeated(24, QString(12, u'#')));
    }

    void inverseIsNoHigherThanItsCell()
    {
        const auto layout = layoutOf({cellOf(u' ', CharMarkZ), cellOf(u' ', CharDoubleHeight)});
        const QStringList lines = drawn(layout, 48);
        QCOMPARE(lines.at(23), QString(24, u'.'));
        QCOMPARE(lines.at(24), QString(12, u'#') + QString(12, u'.'));
    }

    void doublingRepeatsDots()
    {
        const QStringList once = dotsOf(u'Ж', fontA);
        QCOMPARE(drawn(cellOf(u'Ж', CharDoubleWidth)), enlarged(once, 2, 1));
        QCOMPARE(drawn(cellOf(u'Ж', CharDoubleHeight), 48), enlarged(once, 1, 2));
        QCOMPARE(drawn(cellOf(u'Ж', CharDoubleWidth | CharDoubleHeight | CharBold), 48),
                 enlarged(bold(once), 2, 2));
    }

    void aFontThatIsTheDoubledOneOfThePrinterIsDoubled()
    {
        const auto target = *PrintTarget::forModel(QStringLiteral("AV_268"), 0);
        const auto cells = {cellOf(u'Ж', 0, fontOf(target, {16, 32}))};
        QCOMPARE(drawn(layoutOf(cells, "AV_268"), 32), enlarged(dotsOf(u'Ж', {8, 16}), 2, 2));
    }

    void aDrawingStandsInPlaceOfACharacter()
    {
        auto layout = layoutOf({cellOf(u'A')});
        layout.drawings = {pictureOf(dotsOf(u'B', fontA))};
        layout.cells[0].drawing = 0;
        QCOMPARE(drawn(layout, 24), dotsOf(u'B', fontA));
    }

    void aSmallDrawingStandsAtTheUpperLeft()
    {
        auto layout = layoutOf({cellOf(u'A', CharDoubleWidth)});
        layout.drawings = {pictureOf({QStringLiteral("##.##"), QStringLiteral("#...#")})};
        layout.cells[0].drawing = 0;
        QStringList expected = repeated(24, QString(24, u'.'));
        expected[0].replace(0, 10, QStringLiteral("####..####"));
        expected[1].replace(0, 10, QStringLiteral("##......##"));
        QCOMPARE(drawn(layout, 24), expected);
    }

    void aLargeDrawingIsCutToItsCell()
    {
        auto layout = layoutOf({cellOf(u'A'), cellOf(u' ')});
        layout.drawings = {pictureOf(repeated(40, QString(30, u'#')))};
        layout.cells[0].drawing = 0;
        QCOMPARE(drawn(layout, 24), repeated(24, QString(12, u'#') + QString(12, u'.')));
    }

    void aDrawingWithoutItsRowsIsBlank()
    {
        auto layout = layoutOf({cellOf(u'A')});
        layout.drawings = {Paper::Picture()};
        layout.drawings[0].size = {12, 24};
        layout.cells[0].drawing = 0;
        QCOMPARE(drawn(layout, 24), repeated(24, QString(12, u'.')));
    }

    void aDrawingThatIsNotThereIsTheCharacter()
    {
        auto layout = layoutOf({cellOf(u'A')});
        layout.cells[0].drawing = 7;
        QCOMPARE(drawn(layout, 24), dotsOf(u'A', fontA));
    }

    void whatIsBeyondTheLineIsCutOff()
    {
        const auto layout = layoutOf(std::vector<Cell>(200, cellOf(u'█')));
        const auto picture = layout.rasterOf(textRow(200, 24));
        const int line = layout.target.lineDots();
        QCOMPARE(picture.size, QSize(line, 24));
        QCOMPARE(dotsOf(picture), repeated(24, QString(line, u'#')));
        QCOMPARE(picture.rows.size(), (line + 7) / 8 * 24);
    }

    void dotsBesideTheLastCellAreWhite()
    {
        const auto picture = layoutOf({cellOf(u'█')}).rasterOf(textRow(1, 24));
        QCOMPARE(picture.rows, QByteArray("\xFF\xF0").repeated(24));
    }

    void aRowThatIsLowerThanItsCellsShowsTheirFeet()
    {
        QCOMPARE(drawn(layoutOf({cellOf(u'A')}), 10), dotsOf(u'A', fontA).mid(14));
        QCOMPARE(drawn(cellOf(u' ', CharUnderline), 1), QStringList({QString(12, u'#')}));
    }

    void aRowOfNoneIsEmpty()
    {
        QCOMPARE(layoutOf({}).rasterOf(textRow(0, 24)).size, QSize(0, 24));
        QVERIFY(layoutOf({}).rasterOf(textRow(0, 24)).rows.isEmpty());
        QVERIFY(layoutOf({cellOf(u'A')}).rasterOf(textRow(1, 0)).rows.isEmpty());
        QVERIFY(layoutOf({cellOf(u'A')}).rasterOf(textRow(1, -5)).rows.isEmpty());
    }

    void aRowTakesOnlyCellsThatAreThere()
    {
        const auto layout = layoutOf({cellOf(u'A'), cellOf(u'B')});
        Row row = textRow(1000, 24);
        row.first = 1;
        QCOMPARE(dotsOf(layout.rasterOf(row)), dotsOf(u'B', fontA));
        row.first = -3;
        row.count = 1;
        QCOMPARE(dotsOf(layout.rasterOf(row)), dotsOf(u'A', fontA));
        row.first = 5;
        QVERIFY(layout.rasterOf(row).rows.isEmpty());
        row.first = 0;
        row.count = -1;
        QVERIFY(layout.rasterOf(row).rows.isEmpty());
    }

    void aCharacterWithoutADrawingIsABox()
    {
        QCOMPARE(drawn(cellOf(u'\u4E00')), dotsOf(u'\u4E00', fontA));
        QVERIFY(drawn(cellOf(u'\u4E00')).join(QString()).contains(u'#'));
    }

    void aRawCodeLooksAsItsCharacter()
    {
        Cell cell = cellOf(u'A', CharRawCode);
        cell.byte = 0x42;
        QCOMPARE(drawn(cell), dotsOf(u'A', fontA));
    }
};

QTEST_APPLESS_MAIN(TestRasterRow)
#include "tst_rasterrow.moc"
