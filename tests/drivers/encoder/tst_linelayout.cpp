// Lines of text blocks as rows of cells.
#include <QtTest>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"
#include "printerslib/drivers/linelayout.h"

using namespace laiddocuments;

namespace {

// 32 cells of 12 dots.
PrintTarget narrow()
{
    return targetOf("GENERAL_EPSON_PROTOCOL");
}

// 640 dots: 71 cells of 9 dots, which leave one, or 53 of 12, which leave 4.
PrintTarget wide()
{
    return targetOf("EPSON_EU_4XX");
}

QString blanks(int count)
{
    return QString(count, QLatin1Char(' '));
}

QByteArray bytesOf(int count, int value)
{
    return QByteArray(count, static_cast<char>(value));
}

}  // namespace

class TestLineLayout : public QObject
{
    Q_OBJECT

    static QVector<LaidLine> rowsOf(const QString &text, ETextAlignment alignment = AlignLeft,
                                    int format = 0)
    {
        return LineLayout(narrow()).rowsOf(text, bytesOf(1, format), {}, alignment);
    }
    static QStringList textsOf(const QVector<LaidLine> &rows)
    {
        QStringList texts;
        for (const LaidLine &row : rows)
            texts += row.text;
        return texts;
    }

private Q_SLOTS:
    void lineIsARowWithItsBytes()
    {
        const QVector<LaidLine> rows = LineLayout(narrow()).rowsOf(
            "abc", QByteArray("\x01\x00\x08", 3), QByteArray("\x00\x01\x02", 3), AlignLeft);
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows.first().text, QString("abc"));
        QCOMPARE(rows.first().format, QByteArray("\x01\x00\x08", 3));
        QCOMPARE(rows.first().font, QByteArray("\x00\x01\x02", 3));
        QVERIFY(!rows.first().isWrapped);
    }

    void shortBytesGoOnWithTheirLast()
    {
        const QVector<LaidLine> rows = LineLayout(narrow()).rowsOf(
            "abcd", QByteArray("\x01\x08", 2), QByteArray("\x02", 1), AlignLeft);
        QCOMPARE(rows.first().format, QByteArray("\x01\x08\x08\x08", 4));
        QCOMPARE(rows.first().font, bytesOf(4, 2));
    }

    void longBytesAreCut()
    {
        const QVector<LaidLine> rows = LineLayout(narrow()).rowsOf(
            "a", QByteArray("\x01\x08\x08", 3), bytesOf(9, 1), AlignLeft);
        QCOMPARE(rows.first().format, bytesOf(1, CharBold));
        QCOMPARE(rows.first().font, bytesOf(1, 1));
    }

    void emptyLineIsAnEmptyRow_data()
    {
        QTest::addColumn<int>("alignment");
        for (int alignment = 0; alignment < 4; ++alignment)
            QTest::addRow("%d", alignment) << alignment;
    }
    void emptyLineIsAnEmptyRow()
    {
        QFETCH(int, alignment);
        const auto rows = rowsOf("", static_cast<ETextAlignment>(alignment));
        QCOMPARE(textsOf(rows), QStringList{""});
        QCOMPARE(rows.first().format, QByteArray());
    }

    void alignmentIsBlankCells_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QString>("row");
        QTest::newRow("left") << int(AlignLeft) << "abc";
        QTest::newRow("right") << int(AlignRight) << blanks(29) + "abc";
        QTest::newRow("centre") << int(AlignCenter) << blanks(14) + "abc";
        QTest::newRow("justified without tab") << int(AlignJustify) << "abc";
        QTest::newRow("unknown") << 7 << "abc";
        QTest::newRow("negative") << -1 << "abc";
    }
    void alignmentIsBlankCells()
    {
        QFETCH(int, alignment);
        QFETCH(QString, row);
        QCOMPARE(textsOf(rowsOf("abc", static_cast<ETextAlignment>(alignment))), QStringList{row});
    }

    void alignmentCellsArePlainAndOfTheFirstFont()
    {
        const QVector<LaidLine> rows = LineLayout(wide()).rowsOf(
            "ab", bytesOf(2, CharUnderline), QByteArray("\x02\x01", 2), AlignRight);
        // 640 - 12 - 9 are 51 cells of 12.
        QCOMPARE(rows.first().text, blanks(51) + "ab");
        QCOMPARE(rows.first().format, bytesOf(51, 0) + bytesOf(2, CharUnderline));
        QCOMPARE(rows.first().font, bytesOf(52, 2) + bytesOf(1, 1));
    }

    void doubleWidthTakesTwoCells()
    {
        const auto rows = rowsOf("abc", AlignRight, CharDoubleWidth);
        QCOMPARE(textsOf(rows), QStringList{blanks(26) + "abc"});
        // One of two cells and 31 of one leave none.
        QCOMPARE(textsOf(rowsOf(QString(16, u'a'), AlignCenter, CharDoubleWidth)),
                 QStringList{QString(16, u'a')});
    }

    void fullLineIsARow_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("format");
        QTest::addColumn<QVector<int>>("sizes");
        QTest::newRow("one less") << 31 << 0 << QVector<int>{31};
        QTest::newRow("full") << 32 << 0 << QVector<int>{32};
        QTest::newRow("one more") << 33 << 0 << QVector<int>{32, 1};
        QTest::newRow("twice") << 64 << 0 << QVector<int>{32, 32};
        QTest::newRow("more than twice") << 65 << 0 << QVector<int>{32, 32, 1};
        QTest::newRow("wide, one less") << 15 << int(CharDoubleWidth) << QVector<int>{15};
        QTest::newRow("wide, full") << 16 << int(CharDoubleWidth) << QVector<int>{16};
        QTest::newRow("wide, one more") << 17 << int(CharDoubleWidth) << QVector<int>{16, 1};
    }
    void fullLineIsARow()
    {
        QFETCH(int, size);
        QFETCH(int, format);
        QFETCH(QVector<int>, sizes);
        for (const auto alignment : {AlignLeft, AlignRight, AlignCenter, AlignJustify}) {
            QVector<int> found;
            bool areMarked = true;
            const auto rows = rowsOf(QString(size, u'a'), alignment, format);
            for (const LaidLine &row : rows) {
                areMarked = areMarked && row.isWrapped == !found.isEmpty();
                found += row.text.trimmed().size();
            }
            QCOMPARE(found, sizes);
            QVERIFY(areMarked);
        }
    }

    /// A cell of two doesn't stand over the edge: the last single one stays blank.
    void wideCellAtTheEdgeGoesBelow_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<QVector<int>>("sizes");
        QTest::newRow("fits") << 30 << QVector<int>{31};
        QTest::newRow("one dot cell too few") << 31 << QVector<int>{31, 1};
        QTest::newRow("none left") << 32 << QVector<int>{32, 1};
    }
    void wideCellAtTheEdgeGoesBelow()
    {
        QFETCH(int, before);
        QFETCH(QVector<int>, sizes);
        const QString text = QString(before, u'a') + "W";
        const auto rows = LineLayout(narrow()).rowsOf(
            text, bytesOf(before, 0) + bytesOf(1, CharDoubleWidth), {}, AlignLeft);
        QVector<int> found;
        for (const LaidLine &row : rows)
            found += row.text.size();
        QCOMPARE(found, sizes);
    }

    /// 71 cells of 9 dots leave a dot; one of 12 behind 69 doesn't fit, behind 69.78 none would.
    void fontsOfOtherWidthsShareARow()
    {
        const LineLayout layout(wide());
        const auto rowsWith = [&layout](int small) {
            return layout.rowsOf(QString(small + 1, u'a'), {}, bytesOf(small, 1) + bytesOf(1, 3),
                                 AlignLeft);
        };
        QCOMPARE(rowsWith(69).size(), 1);  // 621 + 12
        QCOMPARE(rowsWith(70).size(), 2);  // 630 + 12
    }

    void justifiedTabTakesWhatIsFree()
    {
        QCOMPARE(textsOf(rowsOf("ab\tcd", AlignJustify)), QStringList{"ab" + blanks(28) + "cd"});
        QCOMPARE(textsOf(rowsOf("\tcd", AlignJustify)), QStringList{blanks(30) + "cd"});
        QCOMPARE(textsOf(rowsOf("ab\t", AlignJustify)), QStringList{"ab" + blanks(30)});
    }

    void justifiedTabOfAFullLineIsOneBlank()
    {
        const QString left(16, u'a');
        const QString right(15, u'b');
        QCOMPARE(textsOf(rowsOf(left + "\t" + right, AlignJustify)),
                 QStringList{left + " " + right});
        QCOMPARE(textsOf(rowsOf(left + "\t" + right + "c", AlignJustify)),
                 (QStringList{left + " " + right, "c"}));
    }

    /// As in the library's text form, where each tab is so wide.
    void furtherTabsMakeTheLineTooLong()
    {
        const auto rows = rowsOf("a\tb\tc", AlignJustify);
        QCOMPARE(textsOf(rows).join(""), "a" + blanks(28) + "b" + blanks(28) + "c");
        QCOMPARE(rows.size(), 2);
    }

    void tabOfOtherAlignmentsIsOneBlank()
    {
        for (const auto alignment : {AlignLeft, AlignRight, AlignCenter})
            QCOMPARE(textsOf(rowsOf("a\tb", alignment)).first().trimmed(), QString("a b"));
    }

    /// The cells of a tab look as it does, but for its width.
    void tabKeepsItsFormatButForTheWidth()
    {
        const auto rows =
            LineLayout(wide()).rowsOf("a\tb", bytesOf(3, CharUnderline | CharDoubleWidth),
                                      bytesOf(1, 2) + bytesOf(2, 1), AlignJustify);
        // 640 - 24 - 18 - 18 = 580: 48 cells of 12.
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows.first().text, "a" + blanks(49) + "b");
        QCOMPARE(rows.first().format, bytesOf(2, CharUnderline | CharDoubleWidth) +
                                          bytesOf(48, CharUnderline) +
                                          bytesOf(1, CharUnderline | CharDoubleWidth));
        QCOMPARE(rows.first().font, bytesOf(1, 2) + bytesOf(1, 1) + bytesOf(48, 2) + bytesOf(1, 1));
    }

    void formatsThatTheModelLacksAreTakenOut()
    {
        const int all = 0xBF;
        QCOMPARE(rowsOf("a", AlignLeft, all).first().format,
                 bytesOf(1, CharBold | CharUnderline | CharDoubleWidth | CharDoubleHeight));
        // Width that isn't printed takes no room.
        const PrintTarget bare(*PrinterProfile::forModel("AV_268"), PrinterInfo(), 0);
        QCOMPARE(LineLayout(bare).rowsOf("ab", bytesOf(1, all), {}, AlignLeft).size(), 1);
    }

    void codesAreBlank_data()
    {
        QTest::addColumn<int>("code");
        for (const int code : {0, 8, 9, 10, 13, 27, 31, 127, 128, 155, 159})
            QTest::addRow("%d", code) << code;
    }
    void codesAreBlank()
    {
        QFETCH(int, code);
        const QString text = QString("a") + QChar(code) + "b";
        QCOMPARE(textsOf(rowsOf(text)), QStringList{"a b"});
        // With the mark of a raw code those of the upper half are bytes.
        const auto raw = rowsOf(text, AlignLeft, CharRawCode).first();
        QCOMPARE(raw.text, code < 128 ? QString("a b") : text);
        QCOMPARE(int(raw.format.at(1)), code < 128 ? 0 : int(CharRawCode));
    }

    void rawCodesOfAsciiAndBeyondBytesAreText()
    {
        const auto row = rowsOf(QString("aЖ"), AlignLeft, CharRawCode).first();
        QCOMPARE(row.text, QString("aЖ"));
        QCOMPARE(row.format, bytesOf(2, 0));
    }

    void allowedCodesStay()
    {
        const LineLayout layout(narrow(), QByteArray("\x07\x1B", 2));
        const auto raw = layout.rowsOf("\x07\x1B\x1D", bytesOf(1, CharRawCode), {}, AlignLeft);
        QCOMPARE(raw.first().text, QString("\x07\x1B "));
        QCOMPARE(raw.first().format, bytesOf(2, CharRawCode) + bytesOf(1, 0));
        // Without the mark a code is none that may be sent.
        const auto text = layout.rowsOf("\x1B", {}, {}, AlignLeft);
        QCOMPARE(text.first().text, QString(" "));
    }

    /// Allowing more than codes opens no way for anything else.
    void onlyCodesCanBeAllowed()
    {
        const LineLayout layout(narrow(), QByteArray("\x7F\x41", 2));
        const auto row = layout.rowsOf("\x7F\x41", bytesOf(1, CharRawCode), {}, AlignLeft).first();
        QCOMPARE(row.text, QString(" A"));
        QCOMPARE(row.format, bytesOf(2, 0));
    }

    void symbolsKeepTheirCodes()
    {
        const QString symbols("\x01\x02\x03\x04\x05\x06\x07");
        QCOMPARE(rowsOf(symbols).first().text, symbols);
        QCOMPARE(rowsOf(symbols, AlignLeft, CharRawCode).first().text, blanks(7));
        QCOMPARE(rowsOf("\x08").first().text, blanks(1));
    }

    void halvesOfACharacterKeepTogether()
    {
        const QString face = QString::fromUtf8("\U0001F600");
        const QString row(31, u'a');
        QCOMPARE(textsOf(rowsOf(row.mid(1) + face)), QStringList{row.mid(1) + face});
        QCOMPARE(textsOf(rowsOf(row + face)), (QStringList{row, face}));
        // The second half looks like the first.
        const auto rows =
            LineLayout(narrow()).rowsOf(face, QByteArray("\x01\x00", 2), {}, AlignLeft);
        QCOMPARE(rows.first().format, bytesOf(2, CharBold));
    }

    void halvesWithoutTheOtherAreCharacters()
    {
        const QString low(QChar(0xDE00));
        const QString high(QChar(0xD83D));
        QCOMPARE(rowsOf(low + high + "a").first().text, low + high + "a");
    }

    void combiningCharactersHaveCells()
    {
        const QString text = QString::fromUtf8("e\u0301a");
        QCOMPARE(rowsOf(text, AlignRight).first().text, blanks(29) + text);
    }

    void blockHasTheRowsOfItsLines()
    {
        DocumentBlock block = textBlock("ab\n\n" + QString(33, u'c'), AlignRight);
        const auto rows = LineLayout(narrow()).rowsOf(block);
        QCOMPARE(textsOf(rows), (QStringList{blanks(30) + "ab", "", QString(32, u'c'), "c"}));
        QCOMPARE(rows.at(2).isWrapped, false);
        QCOMPARE(rows.at(3).isWrapped, true);
    }

    void blockOutOfStepHasNoRows()
    {
        DocumentBlock block = textBlock("ab\ncd");
        block.setFont(QList<QByteArray>{QByteArray(2, '\0')});
        QCOMPARE(LineLayout(narrow()).rowsOf(block).size(), 0);
        QCOMPARE(LineLayout(narrow()).rowsOf(DocumentBlock()).size(), 0);
    }

    void cellWiderThanTheLineIsARow()
    {
        const PrintTarget tiny(*PrinterProfile::forModel("SWECOIN_TM_20XX"), PrinterInfo(), 0);
        QCOMPARE(tiny.lineDots(), 16);
        const auto rows = LineLayout(tiny).rowsOf("abc", {}, {}, AlignCenter);
        QCOMPARE(textsOf(rows), (QStringList{"a", "b", "c"}));
    }

    void longLineIsManyRows()
    {
        const auto rows = rowsOf(QString(100'000, u'a'));
        QCOMPARE(rows.size(), 3125);
        QCOMPARE(rows.last().text.size(), 32);
    }
};

QTEST_GUILESS_MAIN(TestLineLayout)
#include "tst_linelayout.moc"
