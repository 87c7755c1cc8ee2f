// Characters that a printer has no letters for, as dots among the letters of their row.
#include <QtTest>

#include "encoder/hazards_p.h"
#include "printedpaper.h"

using namespace printedpaper;

namespace {

const char general[] = "GENERAL_EPSON_PROTOCOL";  // 12 x 24 dots, no characters of a stream's own
const char small[] = "CITIZEN_CPP_8001";          // 9 x 24 dots, neither
const char star[] = "TSP-TUP";                    // 12 x 24 dots, neither
const QString rouble = QString::fromUtf8("₽");
// No page of any model has it.
const QString turned = QChar(0x1D14);

/// A drawing of 24 rows, from its columns of three bytes.
MonochromeImage imageOf(const QByteArray &columns)
{
    const int width = columns.size() / 3;
    const int bytes = (width + 7) / 8;
    QByteArray rows(24 * bytes, '\0');
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < 24; ++y) {
            if ((columns.at(3 * x + y / 8) & (0x80 >> y % 8)) != 0)
                rows[y * bytes + x / 8] = char(rows.at(y * bytes + x / 8) | (0x80 >> x % 8));
        }
    }
    return MonochromeImage(width, 24, rows);
}

TextPrinterDocument withSymbol(const DocumentBlock &block, const QByteArray &columns)
{
    TextPrinterDocument document = documentOf({block});
    QMultiMap<signed char, MonochromeImage> images;
    images.insert(3, imageOf(columns));
    document.setCharImages(images);
    return document;
}

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

QVector<bool> dotsIn(const PrintLayout &layout)
{
    QVector<bool> dots;
    for (const PrintLayout::Cell &cell : layout.cells)
        dots += cell.isDots;
    return dots;
}

/// The commands of the first line, as "text" or hexadecimal; of dots no more than their heads.
QStringList lineOf(const TextPrinterDocument &document, const PrintTarget &target)
{
    QStringList line;
    for (const StreamCommand &command :
         StreamReader::commandsOf(encoded(document, target).bytes, target.profile())) {
        const bool isText = command.kind == StreamCommand::Text;
        const QByteArray bytes = command.bytes;
        if (!isText && bytes == "\n")
            return line;
        const bool isDots = bytes.startsWith("\x1B*") || bytes.startsWith("\x1BX");
        const int head = bytes.startsWith("\x1B*") ? 5 : 4;
        line.append(isText   ? QString::fromLatin1(bytes)
                    : isDots ? QStringLiteral("%1 + %2")
                                   .arg(QString::fromLatin1(bytes.left(head).toHex(' ')))
                                   .arg(bytes.size() - head)
                             : QString::fromLatin1(bytes.toHex(' ')));
    }
    return line;
}

/// The same behind the first text.
QStringList restOf(const QString &text, const TextPrinterDocument &document,
                   const PrintTarget &target)
{
    const QStringList line = lineOf(document, target);
    return line.mid(line.indexOf(text) + 1);
}

QStringList restOf(const QString &text, const DocumentBlock &block, const PrintTarget &target)
{
    return restOf(text, documentOf({block}), target);
}

/// A block of one line, of which each character has a format and font of its own.
DocumentBlock mixedBlock(const QString &text, const QByteArray &formats, const QByteArray &fonts)
{
    return DocumentBlock::createSimpleBlock(text, AlignLeft, fonts, formats, 0, 0);
}

}  // namespace

class TestLineDots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void characterIsABitImageBehindTheText()
    {
        const TextPrinterDocument document =
            documentOf({textBlock(QString::fromUtf8("Итого 100 ₽"))});
        const PrintTarget target = targetOf(general);
        const PrintLayout layout = layoutOf(document, target);
        QVERIFY(!layout.rows.front().isRaster);
        QVector<bool> dots(11, false);
        dots[10] = true;
        QCOMPARE(dotsIn(layout), dots);
        QCOMPARE(layout.cells.back().character, char16_t(0x20BD));
        QCOMPARE(notesOf(layout), QStringList());
        const QString text = QString::fromLatin1("\x88\xE2\xAE\xA3\xAE 100 ");
        QCOMPARE(lineOf(document, target),
                 (QStringList{"1b 40", "1c 2e", "1b 4d 00", "1b 74 00", "1b 74 11", text,
                              "1b 2a 21 0c 00 + 36", "1b 33 18"}));
        QCOMPARE(differenceOf(document, target), QString());
        const Paper paper = papersOf(encoded(document, target).bytes, target.profile()).first();
        QCOMPARE(paper.toText(), QString::fromUtf8("Итого 100 [picture 12 x 24]\n"));
    }

    void charactersSideBySideAreOneBitImage()
    {
        QCOMPARE(restOf("a", textBlock("a" + turned.repeated(3) + "b " + turned + " " + turned),
                        targetOf(general)),
                 (QStringList{"1b 2a 21 24 00 + 108", "b ", "1b 2a 21 0c 00 + 36", " ",
                              "1b 2a 21 0c 00 + 36", "1b 33 18"}));
    }

    void looksAreInTheDots_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<QStringList>("rest");
        const QString dots = "1b 2a 21 0c 00 + 36";
        QTest::newRow("bold") << int(CharBold) << QStringList{"1b 45 00", dots, "1b 45 01", "b"};
        QTest::newRow("underlined")
            << int(CharUnderline) << QStringList{"1b 2d 00", dots, "1b 2d 02", "b"};
        QTest::newRow("inverse") << int(CharMarkZ)
                                 << QStringList{"1d 42 00", dots, "1d 42 01", "b"};
        QTest::newRow("wide") << int(CharDoubleWidth) << QStringList{"1b 2a 21 18 00 + 72", "b"};
    }
    void looksAreInTheDots()
    {
        QFETCH(int, format);
        QFETCH(QStringList, rest);
        const PrintTarget target = targetOf("NP_F209_2D");
        const DocumentBlock block = textBlock("a" + rouble + "b", AlignLeft, format);
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(dotsIn(layout), (QVector<bool>{false, true, false}));
        QCOMPARE(restOf("a", block, target), rest + QStringList{"1b 33 18"});
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
        // They are those of the row that has nothing else in it.
        const Paper paper =
            papersOf(encoded(documentOf({block}), target).bytes, target.profile()).first();
        PrintLayout::Row alone = layout.rows.front();
        alone.first = 1;
        alone.count = 1;
        QCOMPARE(paper.pictures.first().rows, layout.rasterOf(alone).rows);
    }

    void whatIsHigherThanTheBitImageMakesARowOfDots()
    {
        const PrintTarget target = targetOf(general);
        const DocumentBlock block = textBlock("a" + rouble, AlignLeft, CharDoubleHeight);
        QVERIFY(layoutOf(block, target).rows.front().isRaster);
        QCOMPARE(dotsIn(layoutOf(block, target)), (QVector<bool>{false, false}));
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
    }

    void characterBesideHigherLettersStandsOnTheirBase()
    {
        const PrintTarget target = targetOf(general);
        const DocumentBlock block =
            mixedBlock("a" + rouble + "b", QByteArray("\x20\x00\x00", 3), QByteArray(3, '\0'));
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(layout.sizeOf(layout.cells.front()).height(), 48);
        QVERIFY(!layout.rows.front().isRaster);
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
        const Paper paper =
            papersOf(encoded(documentOf({block}), target).bytes, target.profile()).first();
        QCOMPARE(paper.pictures.first().place, QRect(12, 24, 12, 24));
    }

    /// The bit image would make the row higher.
    void rowLowerThanTheBitImageGoesAsDots()
    {
        const PrintTarget target = changedTarget("EPSON_EU_4XX", R"("ownCharacters": 0)");
        const DocumentBlock block = textBlock("a" + turned);
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(layout.rows.front().height, 17);
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
    }

    void lowCharacterInAHighRowStandsAmongTheLetters()
    {
        const PrintTarget target = targetOf("AV_268");  // 8 x 16, and that doubled
        const DocumentBlock block =
            mixedBlock("a" + turned + "b", QByteArray(3, '\0'), QByteArray("\x02\x00\x00", 3));
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(layout.rows.front().height, 32);
        QCOMPARE(dotsIn(layout), (QVector<bool>{false, true, false}));
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
    }

    void symbolSmallerThanItsCellStandsInItsCorner()
    {
        const PrintTarget target = targetOf(general);
        TextPrinterDocument document = documentOf({textBlock("a\x01\x07z")});
        QMultiMap<signed char, MonochromeImage> images;
        images.insert(1, MonochromeImage(5, 3, QByteArray(3, '\xFF')));
        images.insert(7, MonochromeImage(12, 24, QByteArray(48, '\xFF')));
        document.setCharImages(images);
        const PrintLayout layout = layoutOf(document, target);
        QCOMPARE(dotsIn(layout), (QVector<bool>{false, true, true, false}));
        QCOMPARE(restOf("a", document, target),
                 (QStringList{"1b 2a 21 18 00 + 72", "z", "1b 33 18"}));
        QCOMPARE(differenceOf(document, target), QString());
        const Paper paper = papersOf(encoded(document, target).bytes, target.profile()).first();
        const QByteArray rows = paper.pictures.first().rows;
        QCOMPARE(rows.left(3), hex("f80fff"));
        QCOMPARE(rows.mid(9, 3), hex("000fff"));
        QVERIFY(!paper.toText().contains(QChar(1)));
    }

    void symbolWithoutDrawingStaysBlank()
    {
        const PrintLayout layout = layoutOf(textBlock("\x02" + rouble), targetOf(general));
        QCOMPARE(dotsIn(layout), (QVector<bool>{false, true}));
        QCOMPARE(textsOf(layout), QStringList{" " + rouble});
        QCOMPARE(layout.notes.size(), 1);
    }

    void bytesThatAreObeyedStandInTwoBitImages()
    {
        for (const char *const obeyed : {"000010040000", "000010050000", "000010140000"}) {
            const PrintTarget target = targetOf(general);
            const TextPrinterDocument document = withSymbol(textBlock("a\x03z"), hex(obeyed));
            QCOMPARE(restOf("a", document, target),
                     (QStringList{"1b 2a 21 01 00 + 3", "1b 2a 21 0b 00 + 33", "z", "1b 33 18"}));
            QCOMPARE(differenceOf(document, target), QString());
        }
    }

    void columnThatIsObeyedMakesARowOfDots()
    {
        for (const char *const obeyed : {"100400", "100500", "101400", "001004"}) {
            const PrintTarget target = targetOf(general);
            const TextPrinterDocument document = withSymbol(textBlock("a\x03z"), hex(obeyed));
            const PrintLayout layout = layoutOf(document, target);
            QVERIFY(layout.rows.front().isRaster);
            QCOMPARE(dotsIn(layout), QVector<bool>(3, false));
            QCOMPARE(layout.cells[1].drawing, qint16(0));
            QCOMPARE(differenceOf(document, target), QString());
        }
    }

    void columnsApartAreObeyedNowhere_data()
    {
        QTest::addColumn<bool>("isStar");
        QTest::addColumn<QByteArray>("columns");
        QTest::addColumn<QVector<int>>("parts");
        QTest::newRow("nothing") << false << QByteArray() << QVector<int>();
        QTest::newRow("one") << false << hex("101000") << QVector<int>{1};
        QTest::newRow("plain") << false << hex("101006000000040404") << QVector<int>{3};
        QTest::newRow("between") << false << hex("000010040000") << QVector<int>{1, 1};
        QTest::newRow("between, twice")
            << false << hex("000010040010140000000000") << QVector<int>{1, 1, 2};
        QTest::newRow("in the last") << false << hex("000000001004") << QVector<int>();
        QTest::newRow("Star's in one") << true << hex("0000001b0601") << QVector<int>();
        QTest::newRow("Star's, one over") << true << hex("001b06010000") << QVector<int>{1, 1};
        QTest::newRow("Star's, two over") << true << hex("00001b060100") << QVector<int>{1, 1};
        QTest::newRow("Epson's to Star") << true << hex("100400") << QVector<int>{1};
        QTest::newRow("Star's to Epson") << false << hex("1b0601") << QVector<int>{1};
    }
    void columnsApartAreObeyedNowhere()
    {
        QFETCH(bool, isStar);
        QFETCH(QByteArray, columns);
        QFETCH(QVector<int>, parts);
        const hazards::Rules rules = {isStar ? Dialect::StarLine : Dialect::EscPos, false};
        const std::vector<int> apart = hazards::columnsApart(columns, rules);
        QCOMPARE(QVector<int>(apart.begin(), apart.end()), parts);
    }

    void starHasAnImageOfColumns()
    {
        const PrintTarget target = targetOf(star);
        const DocumentBlock block = textBlock("a" + turned + turned + "b");
        QCOMPARE(dotsIn(layoutOf(block, target)), (QVector<bool>{false, true, true, false}));
        QCOMPARE(restOf("a", block, target), (QStringList{"1b 58 18 00 + 72", "b"}));
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
        for (const char *const obeyed : {"00001b060100", "001b06010000", "1b0601"}) {
            const TextPrinterDocument document = withSymbol(textBlock("a\x03z"), hex(obeyed));
            QCOMPARE(differenceOf(document, target), QString());
        }
    }

    void swecoinHasNoImageInALine()
    {
        const PrintTarget target = targetOf("SWECOIN_TM_20XX");
        QVERIFY(layoutOf(textBlock("a" + turned), target).rows.front().isRaster);
    }

    void modelWithoutDotsLeavesABlank()
    {
        const PrintTarget target = changedTarget(general, R"("rasterCommand": "None")");
        const PrintLayout layout = layoutOf(textBlock("a" + rouble), target);
        QCOMPARE(textsOf(layout), QStringList{"a "});
        QCOMPARE(dotsIn(layout), QVector<bool>(2, false));
        QCOMPARE(layout.notes.size(), 1);
    }

    void fullLineEndsWithItsDots()
    {
        for (const char *const model : {general, small, star}) {
            const PrintTarget target = targetOf(model);
            const int symbols = target.symbolsPerLine();
            const TextPrinterDocument document =
                documentOf({textBlock(QString(symbols - 1, 'x') + turned + "yz")});
            QCOMPARE(textsOf(layoutOf(document, target)).size(), 2);
            QCOMPARE(differenceOf(document, target), QString());
            const Paper paper = papersOf(encoded(document, target).bytes, target.profile()).first();
            QCOMPARE(paper.toText().section('\n', 1, 1), QString("yz"));
        }
    }

    void rowOfSuchCharactersTakesNoMoreBytesThanDots()
    {
        const PrintTarget target = targetOf(small);
        const DocumentBlock block = textBlock("a\n" + turned.repeated(64));
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(dotsIn(layout), QVector<bool>{false} + QVector<bool>(64, true));
        PrintOptions options;
        options.isPicture = true;
        const int inLine = encoded(documentOf({block}), target).bytes.size();
        const int asDots = encoded(documentOf({block}), target, options).bytes.size();
        QVERIFY2(inLine <= asDots, qPrintable(QString("%1, %2").arg(inLine).arg(asDots)));
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
    }

    /// Each of them takes two commands.
    void rowIsDotsIfThatIsShorter()
    {
        const PrintTarget target = targetOf(general);
        const QByteArray obeyed = hex("000010040000");
        const TextPrinterDocument few = withSymbol(textBlock("abc\x03"), obeyed);
        QVERIFY(!layoutOf(few, target).rows.front().isRaster);
        const TextPrinterDocument many = withSymbol(textBlock(QString(32, '\x03')), obeyed);
        const PrintLayout layout = layoutOf(many, target);
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(dotsIn(layout), QVector<bool>(32, false));
        QCOMPARE(differenceOf(many, target), QString());
    }

    /// What a row needs beyond the characters that a printer keeps.
    void dotsStandBesideOwnCharacters()
    {
        const PrintTarget target = changedTarget("CITIZEN_PPU_231", R"("ownCharacters": 1)");
        const DocumentBlock block = textBlock("a" + turned + QChar(0x0250) + turned + "b");
        const PrintLayout layout = layoutOf(block, target);
        QCOMPARE(dotsIn(layout), (QVector<bool>{false, false, true, false, false}));
        QCOMPARE(layout.cells[1].drawing, layout.cells[3].drawing);
        QCOMPARE(differenceOf(documentOf({block}), target), QString());
        QVERIFY(encoded(documentOf({block}), target).isFaithful());
    }

    void allowedCodesAreSentBesideDots()
    {
        PrintOptions options;
        options.allowedRawCodes = "\x07";
        const PrintTarget target = targetOf(general);
        const TextPrinterDocument document = documentOf(
            {mixedBlock("\x07" + rouble, QByteArray("\x40\x00", 2), QByteArray(2, '\0'))});
        const PrintLayout layout = layoutOf(document, target, options);
        QCOMPARE(notesOf(layout), QStringList());
        QVERIFY(encoded(document, target, options).bytes.contains(" \x07"));
    }

    void picturesOfAllRowsAreDotsAsAWhole()
    {
        PrintOptions options;
        options.isPicture = true;
        const PrintLayout layout = layoutOf(textBlock("a" + rouble), targetOf(general), options);
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(dotsIn(layout), QVector<bool>(2, false));
    }

    void eachLookIsPrintedAsLaidOut_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : models())
            QTest::newRow(qPrintable(model)) << model;
    }
    void eachLookIsPrintedAsLaidOut()
    {
        QFETCH(QString, model);
        const QByteArray id = model.toLatin1();
        const PrintTarget target = changedTarget(id.constData(), R"("ownCharacters": 0)");
        QList<DocumentBlock> blocks;
        for (int font = 0; font < 4; ++font) {
            for (int format = 0; format < 0x40; ++format)
                blocks.append(textBlock("a" + turned + rouble + " " + turned, AlignCenter, format,
                                        font, format % 8));
        }
        QCOMPARE(differenceOf(documentOf(blocks), target), QString());
    }
};

QTEST_GUILESS_MAIN(TestLineDots)
#include "tst_linedots.moc"
