// Characters that a printer has no letters for: special symbols, and what no code page has.
#include <QtTest>

#include "encoder/glyphs_p.h"
#include "laiddocuments.h"
#include "printerdocs/echarformat.h"

using namespace laiddocuments;

Q_DECLARE_METATYPE(MonochromeImage)

namespace {

const char epson[] = "EPSON_EU_4XX";      // takes 95 own characters of 9 x 17 or (2, 3) 12 x 24
const char noOwn[] = "CITIZEN_CPP_8001";  // takes none
// No page of any model has it, and it has a drawing.
const QChar turned(0x1D14);
const QString noRaster = QStringLiteral("\"rasterCommand\": \"None\"");

MonochromeImage square(int width, int height)
{
    return MonochromeImage(width, height, QByteArray((width + 7) / 8 * height, '\xFF'));
}

}  // namespace

class TestPrintLayoutDrawings : public QObject
{
    Q_OBJECT

    static TextPrinterDocument withSymbols(const DocumentBlock &block,
                                           const QVector<MonochromeImage> &ofCodeThree)
    {
        TextPrinterDocument document = documentOf({block});
        QMultiMap<signed char, MonochromeImage> images;
        for (const MonochromeImage &image : ofCodeThree)
            images.insert(3, image);
        document.setCharImages(images);
        return document;
    }
    static PrintTarget blind(const char *model, int own)
    {
        return changedTarget(model,
                             qPrintable(noRaster + ", \"ownCharacters\": " + QString::number(own)));
    }
    static QVector<int> drawingsOf(const PrintLayout &layout)
    {
        QVector<int> drawings;
        for (const PrintLayout::Cell &cell : layout.cells)
            drawings += cell.drawing;
        return drawings;
    }
    /// Characters that no page has: those of phonetics.
    static QString rareCharacters(int count)
    {
        QString text;
        for (int i = 0; i < count; ++i)
            text += QChar(0x0250 + i);
        return text;
    }

private Q_SLOTS:
    void symbolIsDrawnInItsCell()
    {
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("a\x03"), {square(9, 17)}), targetOf(epson));
        QCOMPARE(drawingsOf(layout), (QVector<int>{-1, 0}));
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(layout.drawings.first().size, QSize(9, 17));
        QCOMPARE(layout.drawings.first().rows, QByteArray("\xFF\x80").repeated(17));
        QCOMPARE(cellAt(layout, 1).character, u' ');
        QCOMPARE(notesOf(layout), QStringList());
    }

    void smallerDrawingStandsInTheCorner()
    {
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("\x03"), {square(2, 1)}), targetOf(epson));
        QCOMPARE(layout.drawings.first().rows, QByteArray("\xC0\0", 2) + QByteArray(32, '\0'));
    }

    void largestDrawingThatFitsIsTaken()
    {
        const TextPrinterDocument document = withSymbols(
            textBlock("\x03\n\x03", AlignLeft, 0), {square(12, 24), square(9, 17), square(4, 4)});
        const PrintLayout small = layoutOf(document, targetOf(epson));
        QVERIFY(!small.drawings.first().rows.contains('\0'));
        const PrintLayout large = layoutOf(document, targetOf(epson, 0, 2));
        QCOMPARE(large.drawings.first().size, QSize(12, 24));
        QCOMPARE(large.drawings.first().rows, QByteArray("\xFF\xF0").repeated(24));
    }

    void drawingsAreShared()
    {
        DocumentBlock block = textBlock("\x03\x03" + QString(turned) + turned + "\n\x03");
        block.setFont(QList<QByteArray>{QByteArray("\x00\x02\x00\x00", 4), QByteArray()});
        const PrintLayout layout = layoutOf(withSymbols(block, {square(9, 17)}), targetOf(epson));
        QCOMPARE(drawingsOf(layout), (QVector<int>{0, 1, 2, 2, 0}));
        QCOMPARE(layout.drawings.size(), 3);
    }

    void symbolWithoutDrawingIsBlank_data()
    {
        QTest::addColumn<QVector<MonochromeImage>>("images");
        QTest::newRow("none") << QVector<MonochromeImage>();
        QTest::newRow("too wide") << QVector<MonochromeImage>{square(10, 17)};
        QTest::newRow("too high") << QVector<MonochromeImage>{square(9, 18)};
        QTest::newRow("not whole")
            << QVector<MonochromeImage>{MonochromeImage(8, 8, QByteArray(7, '\0'))};
    }
    void symbolWithoutDrawingIsBlank()
    {
        QFETCH(QVector<MonochromeImage>, images);
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("a\x03\x03"), images), targetOf(epson));
        QCOMPARE(textsOf(layout), QStringList{"a  "});
        QCOMPARE(drawingsOf(layout), (QVector<int>{-1, -1, -1}));
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(notesOf(layout), QStringList{"block 1, line 1: the symbol 3 is blank: it has no "
                                              "drawing that fits 9 x 17 dots"});
    }

    void symbolGoesAsDotsWhereThereAreNoOwnCharacters()
    {
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("a\x03\nb"), {square(9, 24)}), targetOf(noOwn));
        QVERIFY(!layout.rows[0].isRaster);
        QVERIFY(!cellAt(layout, 0).isDots);
        QVERIFY(cellAt(layout, 1).isDots);
        QVERIFY(!layout.rows[1].isRaster);
        QCOMPARE(drawingsOf(layout), (QVector<int>{-1, 0, -1}));
        QCOMPARE(layout.drawings.first().size, QSize(9, 24));
        QCOMPARE(notesOf(layout), QStringList());
    }

    /// Own characters of 13 dots in cells of 14: a drawing of 14 goes as dots rather than not.
    void symbolTooLargeForOwnCharactersGoesAsDots()
    {
        const PrintTarget custom = targetOf("CUSTOM_VKP_80", 0, 1);
        const PrintLayout fits = layoutOf(withSymbols(textBlock("\x03"), {square(13, 24)}), custom);
        QVERIFY(!fits.rows.front().isRaster && !cellAt(fits, 0).isDots);
        QCOMPARE(fits.drawings.first().size, QSize(13, 24));
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("\x03"), {square(14, 24)}), custom);
        QVERIFY(!layout.rows.front().isRaster);
        QVERIFY(cellAt(layout, 0).isDots);
        QCOMPARE(layout.drawings.first().size, QSize(14, 24));
    }

    /// Its dots are doubled as those of its letters are.
    void symbolOfADoubledFontHasTheDotsOfTheFont()
    {
        const PrintLayout layout = layoutOf(
            withSymbols(textBlock("\x03", AlignLeft, 0, 2), {square(8, 16)}), targetOf("AV_268"));
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(layout.rows.front().height, 32);
        QCOMPARE(layout.drawings.first().size, QSize(8, 16));
    }

    void symbolIsBlankWhereNothingElseGoes()
    {
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("\x03"), {square(9, 17)}), blind(epson, 0));
        QCOMPARE(textsOf(layout), QStringList{" "});
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(notesOf(layout), QStringList{"block 1, line 1: the symbol 3 is blank: the model "
                                              "takes no drawing of it"});
    }

    void rawSymbolIsACode()
    {
        const PrintLayout layout =
            layoutOf(withSymbols(textBlock("\x03", AlignLeft, CharRawCode), {square(9, 17)}),
                     targetOf(epson));
        QCOMPARE(drawingsOf(layout), QVector<int>{-1});
        QCOMPARE(notesOf(layout), QStringList{"block 1, line 1: the code 3 (0x03) isn't printed"});
    }

    void characterOfNoPageIsDrawn()
    {
        const PrintLayout layout = layoutOf(textBlock(turned), targetOf(epson));
        QCOMPARE(drawingsOf(layout), QVector<int>{0});
        QCOMPARE(cellAt(layout, 0).character, char16_t(turned.unicode()));
        const Paper::Picture glyph = glyphs::of(turned.unicode(), QSize(9, 17));
        QCOMPARE(layout.drawings.first().size, QSize(9, 17));
        QCOMPARE(layout.drawings.first().rows, glyph.rows);
        QCOMPARE(notesOf(layout), QStringList());
    }

    void characterOfNoPageGoesAsDots()
    {
        const PrintLayout layout = layoutOf(textBlock(QString(turned) + "a"), targetOf(noOwn));
        QVERIFY(!layout.rows.front().isRaster);
        QVERIFY(cellAt(layout, 0).isDots);
        QCOMPARE(drawingsOf(layout), (QVector<int>{0, -1}));
        QCOMPARE(textsOf(layout), QStringList{QString(turned) + "a"});
        QCOMPARE(layout.drawings.first().rows, glyphs::of(turned.unicode(), QSize(9, 24)).rows);
        QCOMPARE(notesOf(layout), QStringList());
    }

    void characterOfAPageIsTheprinters()
    {
        const PrintLayout layout = layoutOf(textBlock("Ж€é"), targetOf("GENERAL_EPSON_PROTOCOL"));
        QCOMPARE(drawingsOf(layout), (QVector<int>{-1, -1, -1}));
        QVERIFY(!layout.rows.front().isRaster);
    }

    void characterOfNoPageIsBlankWhereNothingElseGoes()
    {
        const PrintLayout layout = layoutOf(textBlock(QString(turned) + "a"), blind(noOwn, 0));
        QCOMPARE(textsOf(layout), QStringList{" a"});
        QCOMPARE(notesOf(layout), QStringList{QString("block 1, line 1: the character \"%1\" "
                                                      "(U+1D14) is blank: the model has no letter "
                                                      "for it")
                                                  .arg(turned)});
        QVERIFY(layout.notes.first().isLoss);
    }

    void rowNeedsNoMoreOwnCharactersThanThereAre_data()
    {
        QTest::addColumn<int>("needed");
        QTest::addColumn<bool>("isRaster");
        QTest::newRow("less") << 2 << false;
        QTest::newRow("as many") << 3 << false;
        QTest::newRow("more") << 4 << true;
    }
    void rowNeedsNoMoreOwnCharactersThanThereAre()
    {
        QFETCH(int, needed);
        QFETCH(bool, isRaster);
        const QString text = rareCharacters(needed).repeated(2) + "\n" + QChar(0x0260);
        const PrintLayout layout =
            layoutOf(textBlock(text), changedTarget(epson, R"("ownCharacters": 3)"));
        QCOMPARE(layout.rows[0].isRaster, isRaster);
        // Each row begins anew.
        QVERIFY(!layout.rows[1].isRaster);
        QCOMPARE(layout.drawings.size(), (isRaster ? 0 : needed) + 1);
    }

    void asManyOwnCharactersAsThereAreWhereNothingElseGoes()
    {
        const QString text = rareCharacters(3) + rareCharacters(3);
        const PrintLayout layout = layoutOf(textBlock(text), blind(epson, 2));
        QCOMPARE(drawingsOf(layout), (QVector<int>{0, 1, -1, 0, 1, -1}));
        QCOMPARE(layout.notes.size(), 1);
    }

    void fontWithoutOwnCharactersMakesARowOfDots()
    {
        // The small font takes them, the large one doesn't.
        const PrintTarget target = changedTarget("AV_268", R"("ownCharacters": 95)");
        DocumentBlock block = textBlock(QString(turned) + turned);
        QVERIFY(!layoutOf(block, target).rows.front().isRaster);
        block.setFont(QList<QByteArray>{QByteArray("\x00\x02", 2)});
        QVERIFY(layoutOf(block, target).rows.front().isRaster);
    }

    void characterWithoutGlyphIsABox_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("seen");
        QTest::newRow("ideograph") << "\u4E00"
                                   << "\"\u4E00\" (U+4E00)"
                                   << "\u4E00";
        QTest::newRow("pair") << QString::fromUtf8("\U0001F600")
                              << QString::fromUtf8("\"\U0001F600\" (U+1F600)") << "\u25A1 ";
        QTest::newRow("first half") << QString(QChar(0xD83D)) << "U+D83D"
                                    << "\u25A1";
        QTest::newRow("second half") << QString(QChar(0xDE00)) << "U+DE00"
                                     << "\u25A1";
    }
    void characterWithoutGlyphIsABox()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QFETCH(QString, seen);
        for (const char *const model : {epson, noOwn}) {
            const PrintLayout layout = layoutOf(textBlock(text + "\n"), targetOf(model));
            QCOMPARE(textsOf(layout).first(), seen);
            QCOMPARE(
                notesOf(layout),
                QStringList{QString("block 1, line 1: the character %1 is printed as a box: it "
                                    "has no drawing")
                                .arg(name)});
        }
    }

    void combiningCharactersAreDrawn()
    {
        const PrintLayout layout = layoutOf(textBlock("e\u0306"), targetOf(noOwn));
        QCOMPARE(layout.rows.front().count, 2);
        QVERIFY(cellAt(layout, 1).isDots);
    }

    void spacesOfAllKindsAreBlanks()
    {
        const PrintLayout layout =
            layoutOf(textBlock("1\u00A0000\u202F000\u2009"), targetOf(noOwn));
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(drawingsOf(layout), QVector<int>(10, -1));
        QCOMPARE(notesOf(layout), QStringList());
    }

    void everyRowIsAPictureIfTheShopWantsIt()
    {
        PrintOptions options;
        options.isPicture = true;
        const TextPrinterDocument document = withSymbols(textBlock("a\x03"
                                                                   "Ж\n\n "),
                                                         {square(9, 17)});
        const PrintLayout layout = layoutOf(document, targetOf(epson), options);
        QVERIFY(layout.rows[0].isRaster);
        // What is empty is fed.
        QVERIFY(!layout.rows[1].isRaster);
        QVERIFY(layout.rows[2].isRaster);
        QCOMPARE(drawingsOf(layout), (QVector<int>{-1, 0, -1, -1}));
        QCOMPARE(notesOf(layout), QStringList());
    }

    void pictureOfABytesCharacterIsWhatThePageShows()
    {
        PrintOptions options;
        options.isPicture = true;
        options.codePage = 17;
        const PrintLayout layout = layoutOf(textBlock(QString(QChar(0x80)), AlignLeft, CharRawCode),
                                            targetOf("GENERAL_EPSON_PROTOCOL"), options);
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(textsOf(layout), QStringList{"А"});
    }

    void pictureOfACharacterWithoutGlyphIsNoted()
    {
        PrintOptions options;
        options.isPicture = true;
        const PrintTarget target =
            changedTarget(epson, R"("codePages": {"0": "CP437", "1": "CP874"})");
        const QString rare = "\u0E01";
        QVERIFY(!glyphs::has(rare.at(0).unicode()));
        QCOMPARE(notesOf(layoutOf(textBlock(rare), target, options)).size(), 1);
        QCOMPARE(notesOf(layoutOf(textBlock(rare), target)).size(), 0);
    }

    void modelWithoutRasterPrintsNoTextAsPicture()
    {
        PrintOptions options;
        options.isPicture = true;
        const PrintLayout layout = layoutOf(textBlock("a"), blind(epson, 0), options);
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(textsOf(layout), QStringList{"a"});
        QCOMPARE(notesOf(layout), QStringList{"the model prints no text as dots"});
        QCOMPARE(layout.notes.first().block, 0);
    }

    /// CP864 has another character in the place of the percent sign.
    void asciiThatThePagesLackIsDrawn()
    {
        const PrintTarget target =
            changedTarget(noOwn, R"("codePages": {"0": "CP864"}, "initialCodePage": 0)");
        QVERIFY(cellAt(layoutOf(textBlock("5%"), target), 1).isDots);
        QVERIFY(!cellAt(layoutOf(textBlock("5%"), target), 0).isDots);
    }
};

QTEST_GUILESS_MAIN(TestPrintLayoutDrawings)
#include "tst_printlayout_drawings.moc"
