#include <QtTest>

#include "layout.h"
#include "layoutbench.h"
#include "previewtools.h"
#include "printerdocs/echarformat.h"

using namespace layoutbench;

namespace {

constexpr int firstTop = Layout::endMargin;
constexpr int dotsPerSpacing = 4;

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
    // A character that no code page of the model has is drawn.
    void everyCharacterIsPrinted_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("drawings");
        QTest::newRow("of the first page") << "CUSTOM_VKP_80"
                                           << "ab~"
                                           << "ab~" << 0;
        QTest::newRow("of another page") << "CUSTOM_VKP_80"
                                         << "\u20AC1"
                                         << "\u20AC1" << 0;
        QTest::newRow("of no page") << "CUSTOM_VKP_80"
                                    << "aЖbЖя"
                                    << "aЖbЖя" << 2;
        QTest::newRow("of two pages") << "GENERAL_EPSON_PROTOCOL"
                                      << "\u20ACЖ"
                                      << "\u20ACЖ" << 0;
    }
    void everyCharacterIsPrinted()
    {
        QFETCH(QString, model);
        QFETCH(QString, text);
        const Layout layout = layoutOf(markup(text), targetOf(model));
        QTEST(textOf(layout, layout.rows().at(0)), "shown");
        QTEST(int(layout.drawings().size()), "drawings");
        QCOMPARE(notesOf(markup(text), targetOf(model)), QStringList());
    }

    void characterWithoutDrawingIsABoxAndNamed()
    {
        const QString smile = QString::fromUtf8("\U0001F600");
        const QStringList notes = notesOf(markup("a\n" + smile + smile));
        QCOMPARE(notes.size(), 1);
        QVERIFY2(notes.constFirst().startsWith("block 1, line 2: ") &&
                     notes.constFirst().contains("box"),
                 qPrintable(notes.constFirst()));
    }

    void rowWithoutLettersIsARaster_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isPicture");
        QTest::newRow("no own characters") << "SWECOIN_TM_20XX"
                                           << "aЖ" << false;
        QTest::newRow("as a picture") << "CUSTOM_VKP_80"
                                      << "a" << true;
    }
    void rowWithoutLettersIsARaster()
    {
        QFETCH(QString, model);
        QFETCH(QString, text);
        QFETCH(bool, isPicture);
        PrintOptions options;
        options.isPicture = isPicture;
        const PrintTarget target = targetOf(model);
        const Layout layout = layoutOf(markup(text), target, options);
        QCOMPARE(layout.rasters().size(), std::size_t(1));
        QCOMPARE(layout.rows().at(0).rasterCount, 1);
        QCOMPARE(layout.rows().at(0).height, target.font(0).cell.height());
        const Raster &raster = layout.rasters().at(0);
        QCOMPARE(raster.left, layout.paper().leftMargin());
        QCOMPARE(raster.image.height(), target.font(0).cell.height());
        QCOMPARE(raster.dotsPerPixel, QSize(1, 1));
    }

    /// Those side by side are one; whoever searches the text finds their characters.
    void charactersWithoutLettersAreRastersAmongTheOthers()
    {
        const QString rouble = QString::fromUtf8("₽");
        const QString text = "a" + rouble + rouble + "b" + rouble;
        const PrintTarget target = targetOf("GENERAL_EPSON_PROTOCOL");
        const Layout layout = layoutOf(markup(text), target);
        const Row &row = layout.rows().at(0);
        QCOMPARE(textOf(layout, row), text);
        QCOMPARE(row.rasterCount, 2);
        QCOMPARE(layout.rasters().size(), std::size_t(2));
        const int margin = layout.paper().leftMargin();
        const Raster &pair = layout.rasters().at(0);
        QCOMPARE(pair.left, margin + 12);
        QCOMPARE(pair.image.width(), 24);
        QCOMPARE(layout.rasters().at(1).left, margin + 48);
        for (int i = 0; i < text.size(); ++i) {
            const Cell &cell = cellAt(layout, i);
            QCOMPARE(cell.left, margin + 12 * i);
            QCOMPARE(cell.has(Cell::Hidden), text.at(i) == rouble.at(0));
            QCOMPARE(cell.drawing, -1);
        }
    }

    void wrappedRasterRowsAreMarked()
    {
        PrintOptions options;
        options.isPicture = true;
        const Layout layout = layoutOf(markup(QString(60, 'x') + "\ny"), targetOf(), options);
        QCOMPARE(layout.rasters().size(), std::size_t(3));
        QVERIFY(!layout.rows().at(0).continues);
        QVERIFY(layout.rows().at(1).continues);
        QVERIFY(!layout.rows().at(2).continues);
    }

    void rawCodesShowTheChosenCodePage()
    {
        PrintOptions western;
        western.codePage = 2;  // code page 850
        const TextPrinterDocument document = markup("<189>");
        const auto shown = [&document](const PrintOptions &options) {
            const Layout layout = layoutOf(document, targetOf(), options);
            return textOf(layout, layout.rows().at(0));
        };
        QCOMPARE(shown({}), QString("\u255C"));
        QCOMPARE(shown(western), QString("\u00A2"));
    }

    void cellsStandSideBySideFromThePrintedLinesEdge()
    {
        const Layout layout = layoutOf(markup("ABC"));
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
        QTest::newRow("80 mm") << "CUSTOM_VKP_80" << 0 << 643 << 512;
        QTest::newRow("60 mm") << "CUSTOM_VKP_80" << 1 << 482 << 400;
        QTest::newRow("82 mm") << "CUSTOM_VKP_80" << 3 << 659 << 512;
        QTest::newRow("54.5 mm") << "CITIZEN_CTS_2000" << 2 << 436 << 422;
        QTest::newRow("a line of more dots than the head") << "TSP-TUP" << 0 << 639 << 576;
        QTest::newRow("a head as wide as the paper") << "EPSON_EU_4XX" << 0 << 659 << 640;
        QTest::newRow("a line with less than a margin") << "CUSTOM_TG_2480_H" << 0 << 652 << 640;
        QTest::newRow("beyond the last paper") << "CUSTOM_TG_2480_H" << 9 << 652 << 640;
    }
    void paperIsAsWideAsItsCaptionSays()
    {
        QFETCH(QString, model);
        QFETCH(int, paper);
        const Paper result(targetOf(model, paper));
        QTEST(result.width(), "width");
        QTEST(result.printableWidth(), "line");
        QCOMPARE(result.leftMargin(), (result.width() - result.printableWidth()) / 2);
    }

    void recordWithoutFontsAndPapersStillGivesALayout()
    {
        const Layout layout = layoutOf(markup("A"), targetOf(PrinterInfo(), 0, 0));
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
                    const PrintTarget target = targetOf(model, paperId, font);
                    const TextPrinterDocument document = markup(line);
                    const Layout layout = layoutOf(document, target);
                    QStringList expected;
                    for (DocumentBlock block : document.blocks())
                        expected += block.toStringList(target.symbolsPerLine());
                    const auto rows = textRows(layout);
                    QCOMPARE(rows.size(), std::size_t(expected.size()));
                    if (!rows.empty())
                        QCOMPARE(lineByCells(layout, rows[0], target.font(0).cell.width()),
                                 expected.at(0));
                }
            }
        }
    }

    void lineThatFillsThePaperStaysOneRow()
    {
        const QString full(51, 'x');
        QCOMPARE(textRows(layoutOf(markup(full))).size(), std::size_t(1));
        const auto rows = textRows(layoutOf(markup(full + "y")));
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
        const Layout layout = layoutOf(markup(tag + QString(60, 'x') + "\n" + tag + "y"));
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
        const Layout layout = layoutOf(markup(text));
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
        const auto rows = textRows(layoutOf(markup("<W2>" + QString(26, 'x'))));
        QCOMPARE(rows.size(), std::size_t(2));
        QCOMPARE(rows[0].cellCount, 25);
    }

    void justifiedLineThatOverflowsHasOneBlankForItsTab()
    {
        const Layout layout = layoutOf(markup(QString(40, 'x') + "<S>" + QString(20, 'y')));
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(2));
        QCOMPARE(textOf(layout, rows[0]) + textOf(layout, rows[1]),
                 QString(40, 'x') + " " + QString(20, 'y'));
    }

    void everyTabOfAJustifiedLineTakesTheFreeCells()
    {
        const Layout layout = layoutOf(markup("a<S>b<S>c"));
        const auto rows = textRows(layout);
        QString shown;
        for (const Row &row : rows)
            shown += textOf(layout, row);
        const QString gap(51 - 5 + 1, ' ');
        QCOMPARE(shown, "a" + gap + "b" + gap + "c");
    }

    void justifiedWideLineReachesBothEdges()
    {
        const Layout layout = layoutOf(markup("<W2>ab<S>cd"));
        const auto rows = textRows(layout);
        QCOMPARE(rows.size(), std::size_t(1));
        const Cell &last = cellAt(layout, rows[0].firstCell + rows[0].cellCount - 1);
        QCOMPARE(last.left + last.width, margin + 510);
    }

    void tabOfALineThatIsNotJustifiedIsOneBlankCell()
    {
        DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList("a\tb"), AlignLeft, 0, 0, 0, 0);
        const Layout layout = layoutOf(documentOf({block}));
        QCOMPARE(leftEdges(layout, layout.rows().at(0)),
                 QVector<int>({margin, margin + 10, margin + 20}));
    }

    void doubledCellsStandOnTheRowsBase()
    {
        const Layout layout = layoutOf(markup("a<W2:>b<:W2><H2:>c<:H2><F4>d"));
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
        const Layout layout = layoutOf(markup("a<F2>b<F1>c"), targetOf("CUSTOM_VKP_80", 0, 3));
        QCOMPARE(int(cellAt(layout, 0).width), 18);
        QCOMPARE(int(cellAt(layout, 1).width), 14);
        QCOMPARE(int(cellAt(layout, 2).width), 18);
    }

    void fontsThatTheModelLacksCountAsTheBase()
    {
        const DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList("a"), AlignLeft, 77, 0, 0, 0);
        const Layout layout = layoutOf(documentOf({block}));
        QCOMPARE(int(cellAt(layout, 0).width), 10);
    }

    void effectsComeOutPlainWhereTheModelLacksThem_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("effect");
        QTest::addColumn<QSize>("size");
        const QSize usual(18, 24);
        QTest::newRow("bold") << int(CharBold) << int(Cell::Bold) << usual;
        QTest::newRow("italic") << int(CharItalic) << int(Cell::Italic) << usual;
        QTest::newRow("underline") << int(CharUnderline) << int(Cell::Underline) << usual;
        QTest::newRow("double width") << int(CharDoubleWidth) << 0 << QSize(36, 24);
        QTest::newRow("double height") << int(CharDoubleHeight) << 0 << QSize(18, 48);
        QTest::newRow("marked") << int(CharMarkZ) << int(Cell::Inverse) << usual;
    }
    void effectsComeOutPlainWhereTheModelLacksThem()
    {
        QFETCH(int, format);
        QFETCH(int, effect);
        QFETCH(QSize, size);
        const DocumentBlock block = DocumentBlock::createSimpleBlock(
            QStringList("a"), AlignLeft, 0, static_cast<unsigned char>(format), 0, 0);
        PrinterInfo able = modelOf("SWECOIN_TM_20XX");
        able.setInversion(true);
        PrinterInfo plain = able;
        plain.setBold(false);
        plain.setItalic(false);
        plain.setInversion(false);
        plain.setUnderline(false);
        plain.setDoubleWidth(false);
        plain.setDoubleHeight(false);
        const Layout with = layoutOf(documentOf({block}), targetOf(able));
        QCOMPARE(int(cellAt(with, 0).effects), effect);
        QCOMPARE(QSize(cellAt(with, 0).width, cellAt(with, 0).height), size);
        QCOMPARE(with.hasInverse(), effect == Cell::Inverse);
        const Layout without = layoutOf(documentOf({block}), targetOf(plain));
        QCOMPARE(int(cellAt(without, 0).effects), 0);
        QCOMPARE(QSize(cellAt(without, 0).width, cellAt(without, 0).height), QSize(18, 24));
        QCOMPARE(notesOf(documentOf({block}), targetOf(plain)).size(), 1);
    }

    void italicIsOfOneModelOnly()
    {
        for (const PrinterInfo &model : PrinterInfo::fromResources()) {
            const Layout layout = layoutOf(markup("<N>a"), targetOf(model, 0, 0));
            QCOMPARE(cellAt(layout, 0).has(Cell::Italic), model.id() == "SWECOIN_TM_20XX");
        }
    }

    void lineSpacingFeedsBehindTheLine()
    {
        const Layout layout = layoutOf(markup("<LS3>a\nb\n<LS0>c\nd"));
        const auto rows = textRows(layout);
        QCOMPARE(rows[1].top, rows[0].bottom() + 3 * dotsPerSpacing);
        QCOMPARE(rows[2].top, rows[1].bottom());
        QCOMPARE(rows[3].top, rows[2].bottom());
        const Layout fixed = layoutOf(markup("<LS3>a\nb"), targetOf("SWECOIN_TM_20XX"));
        QCOMPARE(textRows(fixed)[1].top, textRows(fixed)[0].bottom());
    }

    void spacingCodesOutOfRangeAreHeldInIt()
    {
        DocumentBlock block =
            DocumentBlock::createSimpleBlock(QStringList({"a", "b", "c"}), AlignLeft, 0, 0, 0, 0);
        block.setLineSpacing(QList<int>({-5, INT_MAX, 0}));
        const auto rows = textRows(layoutOf(documentOf({block})));
        QCOMPARE(rows[1].top, rows[0].bottom());
        QCOMPARE(rows[2].top, rows[1].bottom() + 7 * dotsPerSpacing);
    }

    void emptyLineIsAsHighAsTheBaseFont()
    {
        const auto rows = textRows(layoutOf(markup("a\n\nb"), targetOf("AV_268")));
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
        const Layout layout = layoutOf(documentOf({block}));
        for (int i = 0; i < 3; ++i)
            QVERIFY(cellAt(layout, i).has(Cell::Bold));
        QCOMPARE(int(cellAt(layout, 0).width), 10);
        QCOMPARE(int(cellAt(layout, 2).width), 18);
    }

    void rawCodesShowThePrintersCodePage()
    {
        const Layout layout = layoutOf(markup("<128><65><#65><31><1>"));
        QCOMPARE(textOf(layout, layout.rows().at(0)), QString("ÇAA  "));
        QVERIFY2(cellAt(layout, 4).drawing < 0, "a raw code is never a symbol");
    }
};

QTEST_MAIN(TestPreviewLayout)
#include "tst_preview_layout.moc"
