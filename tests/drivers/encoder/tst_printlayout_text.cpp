// Text blocks on the paper: rows, heights, feeds, and what isn't printed as asked.
#include <QtTest>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"

using namespace laiddocuments;

namespace {

const char epson[] = "EPSON_EU_4XX";              // fonts 9 x 17 and (2, 3) 12 x 24; own characters
const char general[] = "GENERAL_EPSON_PROTOCOL";  // 12 x 24; 384 dots

QString blanks(int count)
{
    return QString(count, QLatin1Char(' '));
}

}  // namespace

class TestPrintLayoutText : public QObject
{
    Q_OBJECT

    static QVector<int> heightsOf(const PrintLayout &layout)
    {
        QVector<int> heights;
        for (const PrintLayout::Row &row : layout.rows)
            heights += row.height;
        return heights;
    }
    static QVector<int> feedsOf(const PrintLayout &layout)
    {
        QVector<int> feeds;
        for (const PrintLayout::Row &row : layout.rows)
            feeds += row.feed;
        return feeds;
    }

private Q_SLOTS:
    void rowsSayWhereTheyAreFrom()
    {
        const PrintLayout layout = layoutOf(
            documentOf({textBlock("a\n" + QString(33, u'b')), DocumentBlock(), textBlock("c")}),
            targetOf(general));
        QCOMPARE(layout.rows.size(), size_t(4));
        const QVector<QVector<int>> expected = {{1, 1, 0}, {1, 2, 0}, {1, 2, 1}, {3, 1, 0}};
        for (size_t i = 0; i < 4; ++i) {
            const PrintLayout::Row &row = layout.rows[i];
            QCOMPARE((QVector<int>{row.block, row.line, row.isWrapped}), expected.at(int(i)));
            QCOMPARE(row.left, 0);
            QVERIFY(!row.isRaster);
        }
        QCOMPARE(notesOf(layout), QStringList());
    }

    void cellsHaveFormatFontAndCharacter()
    {
        const PrintLayout layout =
            layoutOf(textBlock("aЖ", AlignLeft, CharBold | CharMarkZ, 2), targetOf(epson));
        const PrintLayout::Cell cell = cellAt(layout, 1);
        QCOMPARE(cell.character, char16_t(0x416));
        QCOMPARE(int(cell.format), CharBold | CharMarkZ);
        QCOMPARE(int(cell.font), 2);
        QCOMPARE(layout.sizeOf(cell), QSize(12, 24));
    }

    void sizeOfACellCountsWhatIsDoubled()
    {
        const PrintLayout layout = layoutOf(
            textBlock("a", AlignLeft, CharDoubleWidth | CharDoubleHeight, 2), targetOf(epson));
        QCOMPARE(layout.sizeOf(cellAt(layout, 0)), QSize(24, 48));
        const PrintLayout high =
            layoutOf(textBlock("a", AlignLeft, CharDoubleHeight), targetOf(epson));
        QCOMPARE(high.sizeOf(cellAt(high, 0)), QSize(9, 34));
    }

    void rowIsAsHighAsItsHighestCell()
    {
        DocumentBlock block = textBlock("abc");
        block.setFont(QList<QByteArray>{QByteArray("\x01\x02\x01", 3)});
        QCOMPARE(heightsOf(layoutOf(block, targetOf(epson))), QVector<int>{24});
        block.setFormat(QList<QByteArray>{QByteArray("\x20\x00\x00", 3)});
        QCOMPARE(heightsOf(layoutOf(block, targetOf(epson))), QVector<int>{34});
    }

    /// A line that goes on below is as high there as what stands there.
    void wrappedRowHasItsOwnHeight()
    {
        DocumentBlock block = textBlock(QString(32, u'a') + "b");
        block.setFormat(QList<QByteArray>{QByteArray(32, CharDoubleHeight) + QByteArray(1, '\0')});
        QCOMPARE(heightsOf(layoutOf(block, targetOf(general))), (QVector<int>{48, 24}));
    }

    void alignmentCellsOfTheFirstFontCountForTheHeight()
    {
        DocumentBlock block = textBlock("ab", AlignRight);
        block.setFont(QList<QByteArray>{QByteArray("\x02\x01", 2)});
        QCOMPARE(heightsOf(layoutOf(block, targetOf(epson))), QVector<int>{24});
    }

    void emptyRowIsAsHighAsItsFirstFont()
    {
        QCOMPARE(heightsOf(layoutOf(textBlock(""), targetOf(epson))), QVector<int>{17});
        QCOMPARE(heightsOf(layoutOf(textBlock(""), targetOf(epson, 0, 2))), QVector<int>{24});
        DocumentBlock block = textBlock("");
        block.setFont(QList<QByteArray>{QByteArray(1, '\x03')});
        QCOMPARE(heightsOf(layoutOf(block, targetOf(epson))), QVector<int>{24});
        QCOMPARE(layoutOf(textBlock("\n\n"), targetOf(epson)).rows.size(), size_t(3));
    }

    void emptyBlocksAreEmptyRows()
    {
        const PrintLayout layout =
            layoutOf(DocumentBlock::emptyBlock(2, AlignRight, 1), targetOf(epson));
        QCOMPARE(textsOf(layout), (QStringList{"", ""}));
        QCOMPARE(feedsOf(layout), (QVector<int>{4, 4}));
        QCOMPARE(layoutOf(DocumentBlock::emptyBlock(0, AlignRight, 1), targetOf(epson)).rows.size(),
                 size_t(0));
    }

    void lineSpacingIsFourDotsForEachCode_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("feed");
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("one") << 1 << 4;
        QTest::newRow("greatest") << 7 << 28;
        QTest::newRow("beyond") << 8 << 28;
        QTest::newRow("far beyond") << 2147483647 << 28;
        QTest::newRow("negative") << -1 << 0;
        QTest::newRow("far negative") << -2147483647 - 1 << 0;
    }
    void lineSpacingIsFourDotsForEachCode()
    {
        QFETCH(int, code);
        QFETCH(int, feed);
        // Rows that a line needs have it, too.
        const DocumentBlock block = textBlock(QString(33, u'a'), AlignLeft, 0, 0, code);
        QCOMPARE(feedsOf(layoutOf(block, targetOf(general))), (QVector<int>{feed, feed}));
    }

    void modelWithoutLineSpacingFeedsNone()
    {
        const DocumentBlock block = textBlock("a", AlignLeft, 0, 0, 7);
        QCOMPARE(feedsOf(layoutOf(block, targetOf("SWECOIN_TM_20XX"))), QVector<int>{0});
    }

    void formatsThatAreNotPrintedAreNoted()
    {
        const DocumentBlock italic = textBlock("a\nbb\n \nc", AlignLeft, CharItalic | CharMarkZ);
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("x"), italic}), targetOf(general));
        QStringList notes;
        for (const int line : {1, 2, 3, 4}) {
            for (const char *format : {"italic", "inverse"})
                notes += QStringLiteral("block 2, line %1: the model prints no text that is %2")
                             .arg(line)
                             .arg(QLatin1String(format));
        }
        QCOMPARE(notesOf(layout), notes);
        QVERIFY(layout.notes.first().isLoss);
        QCOMPARE(int(cellAt(layout, 0, 1).format), 0);
        // An empty line has no format.
        QCOMPARE(notesOf(layoutOf(textBlock("", AlignLeft, CharItalic), targetOf(general))),
                 QStringList());
    }

    void formatBitWithoutMeaningIsNotNoted()
    {
        const PrintLayout layout = layoutOf(textBlock("a", AlignLeft, 0x80), targetOf(epson));
        QCOMPARE(notesOf(layout), QStringList());
        QCOMPARE(int(cellAt(layout, 0).format), 0);
    }

    void notesAreLimited_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("last");
        QTest::newRow("as many as there may be")
            << 100 << "block 1, line 100: the model prints no text that is italic";
        QTest::newRow("one more") << 101 << "and 1 more";
        QTest::newRow("many more") << 350 << "and 250 more";
    }
    void notesAreLimited()
    {
        QFETCH(int, lines);
        QFETCH(QString, last);
        QStringList text;
        for (int i = 0; i < lines; ++i)
            text += "a";
        const PrintLayout layout =
            layoutOf(textBlock(text.join("\n"), AlignLeft, CharItalic), targetOf(epson));
        QCOMPARE(layout.notes.size(), qMin(lines, 101));
        QCOMPARE(layout.notes.last().toString(), last);
        QVERIFY(layout.notes.last().isLoss);
    }

    void codesAreBlankAndNoted_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("text") << 0;
        QTest::newRow("raw") << int(CharRawCode);
    }
    void codesAreBlankAndNoted()
    {
        QFETCH(int, format);
        const QString text = QString(
                                 "\x1B"
                                 "p\x1B") +
                             QChar(0) + "\x7F";
        const PrintLayout layout = layoutOf(textBlock(text, AlignLeft, format), targetOf(epson));
        QCOMPARE(textsOf(layout), QStringList{" p   "});
        QCOMPARE(notesOf(layout),
                 (QStringList{"block 1, line 1: the code 27 (0x1B) isn't printed",
                              "block 1, line 1: the code 0 (0x00) isn't printed",
                              "block 1, line 1: the code 127 (0x7F) isn't printed"}));
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(int(cellAt(layout, i).byte), 0);
            QCOMPARE(int(cellAt(layout, i).format), 0);
            QCOMPARE(int(cellAt(layout, i).drawing), -1);
        }
    }

    void codesOfTheUpperHalfAreBlankAndNoted()
    {
        const PrintLayout layout = layoutOf(textBlock(QString("a") + QChar(0x9B)), targetOf(epson));
        QCOMPARE(textsOf(layout), QStringList{"a "});
        QCOMPARE(notesOf(layout),
                 QStringList{"block 1, line 1: the code 155 (0x9B) isn't printed"});
    }

    void codesAreNotedOncePerLine()
    {
        const PrintLayout layout =
            layoutOf(textBlock(QString(40, u'\x1B') + "\n\x1B"), targetOf(general));
        QCOMPARE(layout.notes.size(), 2);
        QCOMPARE(layout.notes.at(1).line, 2);
    }

    void tabsAreNotNoted()
    {
        QCOMPARE(notesOf(layoutOf(textBlock("a\tb\n\t", AlignJustify), targetOf(epson))),
                 QStringList());
        QCOMPARE(notesOf(layoutOf(textBlock("a\tb", AlignLeft, CharRawCode), targetOf(epson))),
                 QStringList());
    }

    void rawCodesAreBytesOfTheFirstPage()
    {
        PrintOptions options;
        options.codePage = 17;
        const PrintLayout layout =
            layoutOf(textBlock(QString("A") + QChar(0x80) + QChar(0xFF), AlignLeft, CharRawCode),
                     targetOf(general), options);
        QCOMPARE(layout.firstPage, 17);
        QCOMPARE(textsOf(layout), QStringList{QString("AА") + QChar(0xA0)});
        QCOMPARE(int(cellAt(layout, 0).byte), 0);
        QCOMPARE(int(cellAt(layout, 0).format), 0);
        QCOMPARE(int(cellAt(layout, 1).byte), 0x80);
        QCOMPARE(int(cellAt(layout, 1).format), int(CharRawCode));
        QCOMPARE(int(cellAt(layout, 2).byte), 0xFF);
        QCOMPARE(notesOf(layout), QStringList());
    }

    void rawCodesThatThePageLeavesFreeAreBlank()
    {
        PrintOptions options;
        options.codePage = 16;  // 0x81 is free
        const PrintLayout layout = layoutOf(textBlock(QString(QChar(0x81)), AlignLeft, CharRawCode),
                                            targetOf(general), options);
        QCOMPARE(textsOf(layout), QStringList{" "});
        QCOMPARE(int(cellAt(layout, 0).byte), 0);
        QCOMPARE(int(cellAt(layout, 0).format), 0);
        QCOMPARE(notesOf(layout), QStringList{"block 1, line 1: the code 129 (0x81) isn't printed: "
                                              "it is free on the code page"});
    }

    void allowedCodesGoToThePrinter()
    {
        PrintOptions options;
        options.allowedRawCodes = QByteArray("\x07\x1B", 2);
        DocumentBlock block = textBlock("\x07\x1B\x1D\x1B");
        block.setFormat(QList<QByteArray>{QByteArray("\x40\x40\x40\x00", 4)});
        const PrintLayout layout = layoutOf(block, targetOf(general), options);
        QCOMPARE(textsOf(layout), QStringList{blanks(4)});
        QCOMPARE(int(cellAt(layout, 0).byte), 7);
        QCOMPARE(int(cellAt(layout, 0).format), int(CharRawCode));
        QCOMPARE(int(cellAt(layout, 1).byte), 27);
        QCOMPARE(int(cellAt(layout, 2).byte), 0);
        QCOMPARE(int(cellAt(layout, 3).byte), 0);
        QCOMPARE(notesOf(layout),
                 (QStringList{"block 1, line 1: the code 29 (0x1D) isn't printed",
                              "block 1, line 1: the code 27 (0x1B) isn't printed"}));
    }

    /// Dots can't hold a code.
    void allowedCodesOfRowsOfDotsAreNoted()
    {
        PrintOptions options;
        options.allowedRawCodes = "\x07";
        options.isPicture = true;
        const PrintLayout layout =
            layoutOf(textBlock("\x07", AlignLeft, CharRawCode), targetOf(general), options);
        QVERIFY(layout.rows.front().isRaster);
        QCOMPARE(int(cellAt(layout, 0).byte), 0);
        QCOMPARE(int(cellAt(layout, 0).format), 0);
        QCOMPARE(notesOf(layout), QStringList{"block 1, line 1: the code 7 (0x07) isn't sent: its "
                                              "row is printed as dots"});
    }

    void spacesStandInFrontOfEachRow()
    {
        PrintOptions options;
        options.spacesInFront = 2;
        const PrintLayout layout =
            layoutOf(textBlock(QString(31, u'a') + "\n\nb"), targetOf(general), options);
        QCOMPARE(textsOf(layout), (QStringList{"  " + QString(30, u'a'), "  a", "", "  b"}));
        const PrintLayout right = layoutOf(textBlock("ab", AlignRight), targetOf(general), options);
        QCOMPARE(textsOf(right), QStringList{blanks(30) + "ab"});
        const PrintLayout centre =
            layoutOf(textBlock("ab", AlignCenter), targetOf(general), options);
        QCOMPARE(textsOf(centre), QStringList{blanks(16) + "ab"});
    }

    void spacesInFrontAreOfTheBaseFontAndPlain()
    {
        PrintOptions options;
        options.spacesInFront = 1;
        const PrintLayout layout =
            layoutOf(textBlock("a", AlignLeft, CharUnderline, 1), targetOf(epson, 0, 2), options);
        QCOMPARE(int(cellAt(layout, 0).font), 0);
        QCOMPARE(int(cellAt(layout, 0).format), 0);
        QCOMPARE(int(cellAt(layout, 1).font), 1);
        QCOMPARE(heightsOf(layout), QVector<int>{24});
    }

    void spacesInFrontAreSixteenAtMost_data()
    {
        QTest::addColumn<int>("spaces");
        QTest::addColumn<int>("printed");
        QTest::newRow("negative") << -1 << 0;
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("most") << 16 << 16;
        QTest::newRow("more") << 17 << 16;
    }
    void spacesInFrontAreSixteenAtMost()
    {
        QFETCH(int, spaces);
        QFETCH(int, printed);
        PrintOptions options;
        options.spacesInFront = spaces;
        QCOMPARE(textsOf(layoutOf(textBlock("a"), targetOf(general), options)),
                 QStringList{blanks(printed) + "a"});
    }

    void spacesInFrontLeaveRoomForText()
    {
        PrintOptions options;
        options.spacesInFront = 16;
        const PrintTarget target = changedTarget(general, R"("headDots": 50)");
        QCOMPARE(textsOf(layoutOf(textBlock("ab"), target, options)),
                 (QStringList{"   a", "   b"}));
    }

    void pageThatTheModelLacksIsAnError()
    {
        PrintOptions options;
        options.codePage = 99;
        const PrintLayout layout = layoutOf(textBlock("a"), targetOf("CITIZEN_CBM_1000"), options);
        QCOMPARE(layout.error,
                 QString("the model has no code page 99, but 0 (CP437), 1 (KATAKANA), 2 (CP858), "
                         "3 (CP860), 4 (CP863), 5 (CP865), 6 (CP852), 7 (CP866), 8 (CP857)"));
    }

    void firstPageIsThatOfOptionsOrModel()
    {
        PrintOptions options;
        options.codec = "cp866";
        QCOMPARE(layoutOf(textBlock("a"), targetOf(general), options).firstPage, 17);
        // Other models don't know codecs.
        QCOMPARE(layoutOf(textBlock("a"), targetOf("CITIZEN_CBM_1000"), options).firstPage, 0);
        options.codePage = 7;
        QCOMPARE(layoutOf(textBlock("a"), targetOf("CITIZEN_CBM_1000"), options).firstPage, 7);
        options.codePage = 0;
        options.codec = "klingon";
        const PrintLayout layout = layoutOf(textBlock("a"), targetOf(general), options);
        QCOMPARE(layout.firstPage, 0);
        QCOMPARE(layout.error, QString());
        QCOMPARE(notesOf(layout), QStringList{"the model has no code page \"klingon\""});
    }
};

QTEST_GUILESS_MAIN(TestPrintLayoutText)
#include "tst_printlayout_text.moc"
