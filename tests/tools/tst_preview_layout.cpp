#include <QtTest>

#include "layout.h"
#include "layoutbench.h"
#include "previewtools.h"
#include "printerdocs/echarformat.h"

using namespace layoutbench;

namespace {

constexpr int firstTop = Layout::endMargin;

QVector<int> leftEdges(const Layout &layout, const Row &row)
{
    QVector<int> edges;
    for (int i = 0; i < row.cellCount; ++i)
        edges.append(layout.cells().at(static_cast<std::size_t>(row.firstCell + i)).left);
    return edges;
}

std::vector<Row> textRows(const Layout &layout)
{
    std::vector<Row> rows;
    std::copy_if(layout.rows().begin(), layout.rows().end(), std::back_inserter(rows),
                 [](const Row &row) { return row.kind == Row::Text; });
    return rows;
}

/// The line that the cells show, with a blank for each cell that is passed over.
QString lineByCells(const Layout &layout, const Row &row, int cellWidth)
{
    QString line;
    for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i) {
        const Cell &cell = cellAt(layout, i);
        const int column = (cell.left - layout.paper().leftMargin()) / cellWidth;
        line = line.leftJustified(column);
        line += QChar(cell.code);
    }
    return line;
}

}  // namespace

/// Where the characters of a line stand.
class TestPreviewLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersThatTheCodePageLacksAreNamedOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("codePage");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char *name, const QString &text, const char *codePage,
                            const char *warning) {
            QTest::newRow(name) << text << QByteArray(codePage) << QString::fromUtf8(warning);
        };
        const char *const lacks = "not in the printer's character set, IBM866: ";
        row("all there", "abc ~\u0416\u2116", "", "");
        row("once", "\u20AC1\n\u20AC2", "", (lacks + std::string("\"€\"")).c_str());
        row("in their order", "\u00BB\n\u20AC", "", (lacks + std::string("\"»\", \"€\"")).c_str());
        row("beyond 16 bits", "a\U0001F600", "", (lacks + std::string("\"😀\"")).c_str());
        row("raw codes", "<128><255>", "", "");
        row("another code page", "\u20AC\u0416", "windows-1252",
            "not in the printer's character set, windows-1252: \"Ж\"");
    }
    void charactersThatTheCodePageLacksAreNamedOnce()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, codePage);
        QFETCH(QString, warning);
        const Paper paper(modelOf("CUSTOM_VKP_80"), 0, 0, QTextCodec::codecForName(codePage));
        QCOMPARE(Layout(markup(text), paper).warnings().join('\n'), warning);
    }

    void manyCharactersThatTheCodePageLacksAreCounted()
    {
        QString text;
        for (ushort code = 0x4E00; code < 0x4E00 + 25; ++code)
            text += QChar(code);
        const QStringList warnings = Layout(markup(text), paperOf()).warnings();
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings.constFirst().contains(QString("\"\u4E13\" and 5 more")));
        QVERIFY(!warnings.constFirst().contains(QChar(0x4E14)));
    }

    void rawCodesShowTheCodePage()
    {
        const Paper western(modelOf("CUSTOM_VKP_80"), 0, 0,
                            QTextCodec::codecForName("windows-1252"));
        QCOMPARE(textOf(Layout(markup("<196>"), western),
                        textRows(Layout(markup("<196>"), western)).at(0)),
                 QString("\u00C4"));
        // A byte that is no character by itself.
        const Paper wide(modelOf("CUSTOM_VKP_80"), 0, 0, QTextCodec::codecForName("Shift_JIS"));
        QCOMPARE(Layout(markup("<136>x"), wide).cells().size(), std::size_t(2));
    }

    void cellsStandSideBySideFromThePrintedLinesEdge()
    {
        const Layout layout(markup("ABC"), paperOf());
        const Row row = layout.rows().at(0);
        QCOMPARE(row.top, firstTop);
        QCOMPARE(row.height, 24);
        QCOMPARE(leftEdges(layout, row), QVector<int>({margin, margin + 10, margin + 20}));
        QCOMPARE(layout.cellRect(row, cellAt(layout, 1)), QRect(margin + 10, firstTop, 10, 24));
    }

    void paperIsAsWideAsItsCaptionSays_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("line");
        QTest::newRow("80 mm") << "CUSTOM_VKP_80" << 0 << 639 << 512;
        QTest::newRow("60 mm") << "CUSTOM_VKP_80" << 1 << 480 << 400;
        QTest::newRow("82 mm") << "CUSTOM_VKP_80" << 3 << 655 << 512;
        QTest::newRow("54.5 mm") << "CITIZEN_CTS_2000" << 2 << 436 << 422;
        QTest::newRow("a line of more dots than the paper") << "TSP-TUP" << 0 << 640 << 640;
        QTest::newRow("beyond the last paper") << "CUSTOM_TG_2480_H" << 9 << 640 << 640;
    }
    void paperIsAsWideAsItsCaptionSays()
    {
        QFETCH(QString, model);
        QFETCH(int, paper);
        const Paper result = paperOf(model, paper);
        QTEST(result.width(), "width");
        QTEST(result.printableWidth(), "line");
        QCOMPARE(result.leftMargin(), (result.width() - result.printableWidth()) / 2);
    }

    void recordWithoutFontsAndPapersStillGivesALayout()
    {
        const Layout layout(markup("A"), Paper(PrinterInfo(), 0, 0));
        QVERIFY(layout.size().width() > 0);
        QCOMPARE(layout.cells().size(), std::size_t(1));
    }

    // The library's own text form pads by characters: the same columns must come out, on every
    // model, paper and font.
    void alignmentsAgreeWithTheTextForm_data()
    {
        QTest::addColumn<QString>("line");
        for (const char *line : {"", "abc", "<C>abc", "<R>abc", "<C>ab", "ab<S>cd", "ab<S>",
                                 "<S>cd", "<S>", "<C>Спасибо за покупку!", "a<C> b ", "<R>x "})
            QTest::newRow(line) << QString(line);
    }
    void alignmentsAgreeWithTheTextForm()
    {
        QFETCH(QString, line);
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            for (const int paperId : model.paperTypes().keys()) {
                for (int font = 0; font < 4; ++font) {
                    const Paper paper(model, paperId, font);
                    const TextPrinterDocument document = markup(line);
                    const Layout layout(document, paper);
                    QStringList expected;
                    for (DocumentBlock block : document.blocks())
                        expected += block.toStringList(paper.charactersPerLine());
                    const auto rows = textRows(layout);
                    QCOMPARE(rows.size(), std::size_t(expected.size()));
                    if (!rows.empty())
                        QCOMPARE(lineByCells(layout, rows[0], paper.baseFont().width()),
                                 expected.at(0));
                }
            }
        }
    }

    void lineThatFillsThePaperStaysOneRow()
    {
        const QString full(51, 'x');
        QCOMPARE(textRows(Layout(markup(full), paperOf())).size(), std::size_t(1));
        const auto rows = textRows(Layout(markup(full + "y"), paperOf()));
        QCOMPARE(rows.size(), std::size_t(2));
        QVERIFY(!rows[0].continues);
        QVERIFY(rows[1].continues);
        QCOMPARE(rows[1].cellCount, 1);
        QCOMPARE(rows[1].top, rows[0].bottom());
    }

    void wrappedLineBeginsAtTheLeftWhateverItsAlignment_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::newRow("left") << "";
        QTest::newRow("right") << "<R>";
        QTest::newRow("center") << "<C>";
    }
    void wrappedLineBeginsAtTheLeftWhateverItsAlignment()
    {
        QFETCH(QString, tag);
        const Layout layout(markup(tag + QString(60, 'x') + "\n" + tag + "y"), paperOf());
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(3));
        QCOMPARE(leftEdges(layout, rows[0]).first(), margin);
        QCOMPARE(leftEdges(layout, rows[1]).first(), margin);
        QVERIFY(rows[1].continues);
        QVERIFY2(!rows[2].continues, "the next line is one of its own");
    }

    void lineOfAThousandCharactersLosesNone()
    {
        QString text;
        for (int i = 0; i < 1000; ++i)
            text += QChar('a' + i % 26);
        const Layout layout(markup(text), paperOf());
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(20));
        QString shown;
        for (const Row &row : rows)
            shown += textOf(layout, row);
        QCOMPARE(shown, text);
    }

    void wideCharactersWrapWhereHalfACellIsLeft()
    {
        // 25 wide cells take 500 of 512 dots.
        const auto rows = textRows(Layout(markup("<W2>" + QString(26, 'x')), paperOf()));
        QCOMPARE(rows.size(), std::size_t(2));
        QCOMPARE(rows[0].cellCount, 25);
    }

    void justifiedLineThatOverflowsHasOneBlankForItsTab()
    {
        const Layout layout(markup(QString(40, 'x') + "<S>" + QString(20, 'y')), paperOf());
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(2));
        QCOMPARE(textOf(layout, rows[0]) + textOf(layout, rows[1]),
                 QString(40, 'x') + " " + QString(20, 'y'));
    }

    void everyTabOfAJustifiedLineTakesTheFreeCells()
    {
        const Layout layout(markup("a<S>b<S>c"), paperOf());
        const auto rows = textRows(layout);
        QString shown;
        for (const Row &row : rows)
            shown += textOf(layout, row);
        const QString gap(51 - 5 + 1, ' ');
        QCOMPARE(shown, "a" + gap + "b" + gap + "c");
    }

    void justifiedWideLineReachesBothEdges()
    {
        const Layout layout(markup("<W2>ab<S>cd"), paperOf());
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(1));
        const Cell &last = cellAt(layout, rows[0].firstCell + rows[0].cellCount - 1);
        QCOMPARE(last.left + last.width, margin + 510);
    }

    void tabOfALineThatIsNotJustifiedIsOneBlankCell()
    {
        DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList("a\tb"), AlignLeft, 0, 0, 0, 0);
        const Layout layout(documentOf({block}), paperOf());
        QCOMPARE(leftEdges(layout, layout.rows().at(0)),
                 QVector<int>({margin, margin + 10, margin + 20}));
    }

    void doubledCellsStandOnTheRowsBase()
    {
        const Layout layout(markup("a<W2:>b<:W2><H2:>c<:H2><F4>d"), paperOf());
        const Row row = layout.rows().at(0);
        QCOMPARE(row.height, 48);
        const QVector<QRect> expected{{margin, firstTop + 24, 10, 24},
                                      {margin + 10, firstTop + 24, 20, 24},
                                      {margin + 30, firstTop, 10, 48},
                                      {margin + 40, firstTop + 24, 18, 24}};
        for (int i = 0; i < 4; ++i)
            QCOMPARE(layout.cellRect(row, cellAt(layout, i)), expected.at(i));
    }

    void fontOptionReplacesFontZeroOnly()
    {
        const Layout layout(markup("a<F2>b<F1>c"), paperOf("CUSTOM_VKP_80", 0, 3));
        QCOMPARE(int(cellAt(layout, 0).width), 18);
        QCOMPARE(int(cellAt(layout, 1).width), 14);
        QCOMPARE(int(cellAt(layout, 2).width), 18);
    }

    void fontsThatTheModelLacksCountAsTheBase()
    {
        const DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList("a"), AlignLeft, 77, 0, 0, 0);
        const Layout layout(documentOf({block}), paperOf());
        QCOMPARE(int(cellAt(layout, 0).width), 10);
    }

    void effectsComeOutPlainWhereTheModelLacksThem_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("effect");
        QTest::newRow("bold") << int(CharBold) << int(Cell::Bold);
        QTest::newRow("italic") << int(CharItalic) << int(Cell::Italic);
        QTest::newRow("underline") << int(CharUnderline) << int(Cell::Underline);
        QTest::newRow("double width") << int(CharDoubleWidth) << int(Cell::DoubleWidth);
        QTest::newRow("double height") << int(CharDoubleHeight) << int(Cell::DoubleHeight);
        QTest::newRow("marked") << int(CharMarkZ) << 0;
    }
    void effectsComeOutPlainWhereTheModelLacksThem()
    {
        QFETCH(int, format);
        QFETCH(int, effect);
        const DocumentBlock block = DocumentBlock::createSimpleBlock(
            QStringList("a"), AlignLeft, 0, static_cast<unsigned char>(format), 0, 0);
        PrinterInfo able = modelOf("SWECOIN_TM_20XX");
        PrinterInfo plain = able;
        plain.setBold(false);
        plain.setItalic(false);
        plain.setUnderline(false);
        plain.setDoubleWidth(false);
        plain.setDoubleHeight(false);
        QCOMPARE(int(cellAt(Layout(documentOf({block}), Paper(able, 0, 0)), 0).effects), effect);
        const Layout without(documentOf({block}), Paper(plain, 0, 0));
        QCOMPARE(int(cellAt(without, 0).effects), 0);
        QCOMPARE(int(cellAt(without, 0).width), 18);
        QCOMPARE(int(cellAt(without, 0).height), 24);
    }

    void italicIsOfOneModelOnly()
    {
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const Layout layout(markup("<N>a"), Paper(model, 0, 0));
            QCOMPARE(cellAt(layout, 0).has(Cell::Italic), model.id() == "SWECOIN_TM_20XX");
        }
    }

    void lineSpacingFeedsBehindTheLine()
    {
        const Layout layout(markup("<LS3>a\nb\n<LS0>c\nd"), paperOf());
        const auto rows = textRows(layout);
        QCOMPARE(rows[1].top, rows[0].bottom() + 3 * Layout::dotsPerLineSpacing);
        QCOMPARE(rows[2].top, rows[1].bottom());
        QCOMPARE(rows[3].top, rows[2].bottom());
        const Layout fixed(markup("<LS3>a\nb"), paperOf("SWECOIN_TM_20XX"));
        QCOMPARE(textRows(fixed)[1].top, textRows(fixed)[0].bottom());
    }

    void spacingCodesOutOfRangeAreHeldInIt()
    {
        DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList({"a", "b", "c"}), AlignLeft, 0, 0, 0, 0);
        block.setLineSpacing(QList<int>({-5, INT_MAX, 0}));
        const auto rows = textRows(Layout(documentOf({block}), paperOf()));
        QCOMPARE(rows[1].top, rows[0].bottom());
        QCOMPARE(rows[2].top, rows[1].bottom() + 7 * Layout::dotsPerLineSpacing);
    }

    void emptyLineIsAsHighAsTheBaseFont()
    {
        const auto rows = textRows(Layout(markup("a\n\nb"), paperOf("AV_268")));
        QCOMPARE(rows.size(), std::size_t(3));
        QCOMPARE(rows[1].height, 16);
        QCOMPARE(rows[1].cellCount, 0);
    }

    void shortFormatAndFontArraysGoOnWithTheirLastByte()
    {
        DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList("abc"), AlignLeft, 0, 0, 0, 0);
        block.setFormat(QList<QByteArray>{QByteArray(1, CharBold)});
        block.setFont(QList<QByteArray>{QByteArray("\0\3", 2)});
        const Layout layout(documentOf({block}), paperOf());
        for (int i = 0; i < 3; ++i)
            QVERIFY(cellAt(layout, i).has(Cell::Bold));
        QCOMPARE(int(cellAt(layout, 0).width), 10);
        QCOMPARE(int(cellAt(layout, 2).width), 18);
    }

    void rawCodesShowThePrintersCodePage()
    {
        const Layout layout(markup("<128><65><#65><31><1>"), paperOf());
        QCOMPARE(textOf(layout, layout.rows().at(0)), QString("АAA  "));
        QVERIFY2(!cellAt(layout, 4).has(Cell::Symbol), "a raw code is never a symbol");
    }
};

QTEST_MAIN(TestPreviewLayout)
#include "tst_preview_layout.moc"
