#include "encoder/glyphs_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>
#include <QtConcurrent>
#include <QtTest>
#include <numeric>

#include "printerslib/drivers/printtarget.h"

using namespace printerslib::drivers;

namespace {

bool isSet(const Paper::Picture &picture, int x, int y)
{
    const int bytes = (picture.size.width() + 7) / 8;
    return (static_cast<unsigned char>(picture.rows.at(y * bytes + x / 8)) >> (7 - x % 8) & 1) != 0;
}

bool isBlank(const Paper::Picture &picture)
{
    return picture.rows.count('\0') == picture.rows.size();
}

/// What stands at an edge of a drawing, dot by dot.
QString edgeOf(const Paper::Picture &picture, char edge)
{
    const QSize size = picture.size;
    const bool isSide = edge == 'l' || edge == 'r';
    QString dots;
    for (int i = 0; i < (isSide ? size.height() : size.width()); ++i) {
        const int x = isSide ? (edge == 'l' ? 0 : size.width() - 1) : i;
        const int y = isSide ? i : (edge == 't' ? 0 : size.height() - 1);
        dots += isSet(picture, x, y) ? u'#' : u'.';
    }
    return dots;
}

/// How many strokes there are that touch each other nowhere, not even at corners.
int partsOf(const Paper::Picture &picture)
{
    const QSize size = picture.size;
    QSet<QPair<int, int>> left;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (isSet(picture, x, y))
                left.insert({x, y});
        }
    }
    int parts = 0;
    for (; !left.isEmpty(); ++parts) {
        QVector<QPair<int, int>> next = {*left.begin()};
        while (!next.isEmpty()) {
            const auto dot = next.takeLast();
            if (!left.remove(dot))
                continue;
            for (int i = 0; i < 9; ++i)
                next.append({dot.first + i % 3 - 1, dot.second + i / 3 - 1});
        }
    }
    return parts;
}

const QString latin = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
const QString digits = QStringLiteral("0123456789");
const QString cyrillic =
    QStringLiteral("АБВГДЕЁЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдеёжзийклмнопрстуфхцчшщъыьэюя");
const QString signs =
    QStringLiteral("!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~€₽£¥§№«»„“”–…•°×");

}  // namespace

class TestGlyphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingOfTheDesktopIsNeeded()
    {
        // Glyphs are drawn where neither an application nor a font is.
        QVERIFY(QCoreApplication::instance() == nullptr);
        QVERIFY(!isBlank(glyphs::of(u'A', {9, 17})));
        QFile library(QStringLiteral(PRINTERSLIB_LIBRARY));
        QVERIFY(library.open(QIODevice::ReadOnly));
        const QByteArray bytes = library.readAll();
        QVERIFY(bytes.contains("DocumentCleaner"));
        for (const char *name : {"QFontDatabase", "QRawFont", "QGuiApplication", "QPainter",
                                 "FT_Init_FreeType", "fontconfig", ".ttf"})
            QVERIFY2(!bytes.contains(name), name);
    }

    void everyFontOfEveryModelHasItsCells_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : PrinterProfile::modelIds())
            QTest::newRow(qPrintable(model)) << model;
    }
    void everyFontOfEveryModelHasItsCells()
    {
        QFETCH(QString, model);
        const auto target = PrintTarget::forModel(model, 0);
        QVERIFY(target);
        for (int number = 0; number < 256; ++number) {
            const PrintFont font = target->font(static_cast<unsigned char>(number));
            const QSize cell(font.cell.width() / font.widthScale,
                             font.cell.height() / font.heightScale);
            QVERIFY(glyphs::drawingOf(u'A', cell).rows != nullptr);
            if (!font.ownCharacter.isEmpty())
                QVERIFY(glyphs::drawingOf(u'A', font.ownCharacter).rows != nullptr);
        }
    }

    void whatReceiptsAreMadeOfIsDrawn_data() { cellRows(); }
    void whatReceiptsAreMadeOfIsDrawn()
    {
        QFETCH(QSize, cell);
        const Paper::Picture box = glyphs::of(u'\u4E00', cell);
        for (const QChar character : latin + digits + cyrillic + signs) {
            const Paper::Picture drawing = glyphs::of(character.unicode(), cell);
            QVERIFY2(glyphs::has(character.unicode()), qPrintable(QString(character)));
            QCOMPARE(drawing.size, cell);
            QCOMPARE(drawing.rows.size(), (cell.width() + 7) / 8 * cell.height());
            QVERIFY2(!isBlank(drawing), qPrintable(QString(character)));
            QVERIFY2(drawing.rows != box.rows, qPrintable(QString(character)));
        }
    }

    void charactersCanBeToldApart_data() { cellRows(); }
    void charactersCanBeToldApart()
    {
        QFETCH(QSize, cell);
        for (const QString &alphabet : {latin + digits + signs, cyrillic + signs}) {
            QHash<QByteArray, QChar> known;
            for (const QChar character : alphabet) {
                const QByteArray rows = glyphs::of(character.unicode(), cell).rows;
                if (known.contains(rows))
                    QFAIL(qPrintable(QString(character) + " is " + known.value(rows)));
                known.insert(rows, character);
            }
        }
    }

    void strokesAreUnbroken_data() { cellRows(); }
    void strokesAreUnbroken()
    {
        QFETCH(QSize, cell);
        const QString inOne = QStringLiteral(
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghklmnopqrstuvwxyz123456789$&(){}[]/\\@#€£"
            "АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЪЬЭЮЯабвгдежзиклмнопрстуфхцчшщъьэюя");
        for (const QChar character : inOne) {
            const int parts = partsOf(glyphs::of(character.unicode(), cell));
            QVERIFY2(parts == 1, qPrintable(QString(character) + " in " + QString::number(parts)));
        }
        for (const QChar character : QStringLiteral("ijЫы:;=!?"))
            QCOMPARE(partsOf(glyphs::of(character.unicode(), cell)), 2);
    }

    void lettersStandOnOneLine_data() { cellRows(); }
    void lettersStandOnOneLine()
    {
        QFETCH(QSize, cell);
        const auto footOf = [cell](QChar character) {
            const Paper::Picture drawing = glyphs::of(character.unicode(), cell);
            for (int y = cell.height() - 1; y >= 0; --y) {
                for (int x = 0; x < cell.width(); ++x) {
                    if (isSet(drawing, x, y))
                        return y;
                }
            }
            return -1;
        };
        const int foot = footOf(u'A');
        QVERIFY(foot > cell.height() / 2);
        for (const QChar character : QStringLiteral("BEHMTXhmnx1247АБИЙЁПмштÄÖÜÉŠ"))
            QCOMPARE(footOf(character), foot);
    }

    void linesJoinThoseOfTheNextCell_data() { cellRows(); }
    void linesJoinThoseOfTheNextCell()
    {
        QFETCH(QSize, cell);
        struct Arms
        {
            char16_t horizontal;
            char16_t vertical;
            QString left, right, up, down;  // which have arms there
        };
        const Arms kinds[] = {
            {u'─', u'│', QStringLiteral("─┐┘┤┬┴┼"), QStringLiteral("─┌└├┬┴┼"),
             QStringLiteral("│└┘├┤┴┼"), QStringLiteral("│┌┐├┤┬┼")},
            {u'━', u'┃', QStringLiteral("━┓┛┫┳┻╋"), QStringLiteral("━┏┗┣┳┻╋"),
             QStringLiteral("┃┗┛┣┫┻╋"), QStringLiteral("┃┏┓┣┫┳╋")},
            {u'═', u'║', QStringLiteral("═╗╝╣╦╩╬╕╛╡╤╧╪"), QStringLiteral("═╔╚╠╦╩╬╒╘╞╤╧╪"),
             QStringLiteral("║╚╝╠╣╩╬╙╜╟╢╨╫"), QStringLiteral("║╔╗╠╣╦╬╓╖╟╢╥╫")},
        };
        for (const Arms &kind : kinds) {
            compareEdges(cell, kind.left, 'l', edgeOf(glyphs::of(kind.horizontal, cell), 'r'));
            compareEdges(cell, kind.right, 'r', edgeOf(glyphs::of(kind.horizontal, cell), 'l'));
            compareEdges(cell, kind.up, 't', edgeOf(glyphs::of(kind.vertical, cell), 'b'));
            compareEdges(cell, kind.down, 'b', edgeOf(glyphs::of(kind.vertical, cell), 't'));
        }
    }

    void theFullBlockFillsItsCell_data() { cellRows(); }
    void theFullBlockFillsItsCell()
    {
        QFETCH(QSize, cell);
        const auto full = glyphs::of(u'█', cell);
        for (const char edge : {'l', 'r', 't', 'b'})
            QVERIFY(!edgeOf(full, edge).contains(u'.'));
        QVERIFY(!edgeOf(glyphs::of(u'▀', cell), 't').contains(u'.'));
        QVERIFY(!edgeOf(glyphs::of(u'▄', cell), 'b').contains(u'.'));
        QVERIFY(!edgeOf(glyphs::of(u'▌', cell), 'l').contains(u'.'));
    }

    void nothingStandsOutsideOfItsCell_data() { cellRows(); }
    void nothingStandsOutsideOfItsCell()
    {
        QFETCH(QSize, cell);
        for (int code = 0x20; code < 0x10000; ++code) {
            const auto drawing = glyphs::of(char16_t(code), cell);
            const int bytes = (cell.width() + 7) / 8;
            const int spare = bytes * 8 - cell.width();
            for (int y = 0; y < cell.height(); ++y)
                QVERIFY((drawing.rows.at(y * bytes + bytes - 1) & ((1 << spare) - 1)) == 0);
        }
    }

    void marksAboveAnotherCharacterAreSeenAlone()
    {
        for (const char16_t mark : {u'\u0300', u'\u0301', u'\u0308', u'\u0327'}) {
            QVERIFY(glyphs::has(mark));
            for (const QSize cell : glyphs::cells)
                QVERIFY(!isBlank(glyphs::of(mark, cell)));
        }
    }

    void spacesAreBlankAndKnown()
    {
        for (const char16_t space : {u' ', u'\u00A0', u'\u2007'}) {
            QVERIFY(glyphs::has(space));
            for (const QSize cell : glyphs::cells)
                QVERIFY(isBlank(glyphs::of(space, cell)));
        }
    }

    void whatHasNoDrawingIsABox()
    {
        for (const char16_t none : {u'\0', u'\n', u'\u001B', u'\u007F', u'\u009F', char16_t(0xD83D),
                                    char16_t(0xDE00), u'\uE000', u'\u4E00', u'\uFFFF'}) {
            QVERIFY(!glyphs::has(none));
            for (const QSize cell : glyphs::cells) {
                const auto box = glyphs::of(none, cell);
                QCOMPARE(box.rows, glyphs::of(u'\u4E01', cell).rows);
                QCOMPARE(partsOf(box), 1);
                QVERIFY(!edgeOf(box, 'l').contains(u'#'));
                QVERIFY(!edgeOf(box, 'r').contains(u'#'));
            }
        }
    }

    void aCellThatNobodyForesawTakesTheLargestThatFits()
    {
        QVERIFY(glyphs::drawingOf(u'A', {24, 48}).rows == nullptr);
        // Twice as large as a known one.
        const auto twice = glyphs::of(u'A', {24, 48});
        const auto once = glyphs::of(u'A', {12, 24});
        QCOMPARE(twice.size, QSize(24, 48));
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 24; ++x)
                QCOMPARE(isSet(twice, x, y), isSet(once, x / 2, y / 2));
        }
        // In the middle.
        const auto framed = glyphs::of(u'A', {14, 26});
        const auto inner = glyphs::of(u'A', {14, 24});
        for (int x = 0; x < 14; ++x) {
            for (int y = 0; y < 24; ++y)
                QCOMPARE(isSet(framed, x, y + 1), isSet(inner, x, y));
        }
    }

    void aCellThatIsTooSmallStillShowsSomething()
    {
        for (const QSize cell :
             {QSize(5, 9), QSize(7, 14), QSize(1, 1), QSize(8, 15), QSize(40, 7)}) {
            const auto drawing = glyphs::of(u'A', cell);
            QCOMPARE(drawing.size, cell);
            QVERIFY(!isBlank(drawing));
        }
        QCOMPARE(partsOf(glyphs::of(u'H', {6, 12})), 1);
    }

    void anEmptyCellShowsNothing()
    {
        for (const QSize cell : {QSize(), QSize(0, 24), QSize(12, 0), QSize(-3, 4)})
            QVERIFY(glyphs::of(u'A', cell).rows.isEmpty());
    }

    void anyThreadMayDraw()
    {
        QVector<int> rounds(500);
        std::iota(rounds.begin(), rounds.end(), 0);
        QtConcurrent::blockingMap(rounds, [](int &round) {
            const QSize cell = glyphs::cells[size_t(round) % std::size(glyphs::cells)];
            round = partsOf(glyphs::of(u'A', cell));
        });
        QCOMPARE(rounds, QVector<int>(500, 1));
    }

private:
    static void cellRows()
    {
        QTest::addColumn<QSize>("cell");
        for (const QSize cell : glyphs::cells)
            QTest::addRow("%dx%d", cell.width(), cell.height()) << cell;
    }

    static void compareEdges(QSize cell, const QString &characters, char edge,
                             const QString &expected)
    {
        QVERIFY(expected.contains(u'#'));
        for (const QChar character : characters) {
            const QString dots = edgeOf(glyphs::of(character.unicode(), cell), edge);
            QVERIFY2(dots == expected,
                     qPrintable(QString(character) + ' ' + edge + '\n' + dots + '\n' + expected));
        }
    }
};

QTEST_APPLESS_MAIN(TestGlyphs)
#include "tst_glyphs.moc"
