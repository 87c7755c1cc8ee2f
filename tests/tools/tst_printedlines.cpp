#include <QtTest>

#include "differential/generator.h"
#include "printedlines.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "templatelint.h"

using templatelint::printedLinesOf;
using templatelint::printedLinesOfText;

class TestPrintedLines : public QObject
{
    Q_OBJECT

private:
    static int partsOf(const TextPrinterDocument &document)
    {
        int parts = 0;
        for (const DocumentBlock &block : document.blocks())
            parts += block.isText() ? block.text().size() : 1;
        return parts;
    }

    static TextPrinterDocument printed(const QStringList &lines, const PrinterDocument &document)
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setSpecCharsPath("/dev/null");
        formatter.setTemplate(lines.join('\n'));
        return formatter.toTextPrinterDocument(document);
    }

private Q_SLOTS:
    void everyLineKnowsItsPlace_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QVector<int>>("numbers");
        const auto row = [](const char *name, const QStringList &lines,
                            const QVector<int> &numbers) {
            QTest::newRow(name) << lines << numbers;
        };
        row("plain", {"a", "b", "c"}, {1, 2, 3});
        row("blank line", {"a", "", "c"}, {1, 0, 3});
        row("line that vanishes", {"[<ZERO>]", "<NONE>", "c"}, {3});
        row("line of tags alone", {"<F2>", "<B>", "c"}, {3});
        row("value alone", {"a", "<NAME>"}, {1, 2});
        row("entries", {"a", "<ENTRIES>", "c"}, {1, 2, 2, 3});
        row("copy's mark", {"a", "Bill <DOCNO>", "c"}, {1, 2, 2, 3});
        row("code", {"a", "<QR>x", "b<QR>y", "c"}, {1, 2, 3, 3, 4});
        row("code behind tags", {"<B><QR>x", "c"}, {1, 2});
        row("part that is removed", {"a<X:>b", "c", "d<:X>e", "f"}, {1, 4});
        row("symbols", {"<SPECSYMBOLS=x>", "b"}, {2});
        row("alignments", {"<C>a", "<R>b", "c"}, {1, 2, 3});
    }
    void everyLineKnowsItsPlace()
    {
        QFETCH(QStringList, lines);
        PrinterDocument document;
        document.setAttributes({{"NAME", "tea"}, {"ZERO", 0}, {"DOCNO", 7}});
        document.setEntries("one=1\ttwo=2");
        document.setIsCopy(true);
        QTEST(printedLinesOf(lines, document), "numbers");
        QCOMPARE(printedLinesOf(lines, document).size(), partsOf(printed(lines, document)));
    }

    void piecesBetweenFiscalMarkersKnowTheirPlaces()
    {
        const QStringList lines{"<FISCAL_HEADER>", "a",    "<NONE>",
                                "b <FISCAL_BODY>", "<C>c", "<FISCAL_FOOTER>d"};
        QCOMPARE(templatelint::printedLinesOfPieces(lines, PrinterDocument()),
                 (QVector<int>{0, 2, 4, 0, 5, 0, 6}));
    }

    void textWithoutAttributesKnowsItsPlace()
    {
        const QStringList lines{"a", "", "<B>", "<QR>x", "<NAME>"};
        QCOMPARE(printedLinesOfText(lines), (QVector<int>{1, 2, 4, 5}));
    }

    void bbCodeTextKnowsItsPlace_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QVector<int>>("numbers");
        const auto row = [](const char *name, const QStringList &lines,
                            const QVector<int> &numbers) {
            QTest::newRow(name) << lines << numbers;
        };
        row("nothing", {}, {});
        row("plain", {"one", "two"}, {1, 2});
        row("blank line", {"one", "", "two"}, {1, 0, 2 + 1});
        row("same words", {"tea", "tea", "[b]tea[/b]"}, {1, 2, 3});
        row("code", {"one", "[barcode]123[/barcode]", "two"}, {1, 0, 2, 0, 3});
        row("code over lines", {"[qrcode]", "abc", "[/qrcode]", "two"}, {2, 0, 4});
        row("rule comes before what is gathered", {"one", "[hr][/hr]", "two"}, {0, 1, 0, 3});
        row("quotation marks",
            {"\u00AB"
             "a\u00BB",
             "\u2014 b"},
            {1, 2});
        row("picture that is missing", {"a", "[img name=none][/img]", "b"}, {1, 0, 0, 3});
        row("padded", {"[column width=9 align=right]a", "b[/column]"}, {1, 2});
    }
    void bbCodeTextKnowsItsPlace()
    {
        QFETCH(QStringList, lines);
        BbCodeParser parser(nullptr);
        parser.setImagesPath("/dev/null");
        parser.parseText(lines.join('\n'));
        QTEST(templatelint::printedLinesOfBbCode(lines, parser.blocks()), "numbers");
    }

    void picturesOfBbCodeKnowTheirPlace()
    {
        BbCodeParser parser(nullptr);
        parser.setImagesPath(QFINDTESTDATA("../../examples/images"));
        const QStringList lines{"[img name=none][/img]a", "[img name=LOGO][/img]", "b",
                                "[img name=lo*][/img]"};
        parser.parseText(lines.join('\n'));
        QVector<int> places;
        const QVector<int> numbers = templatelint::printedLinesOfBbCode(lines, parser.blocks());
        int part = 0;
        for (const DocumentBlock &block : parser.blocks()) {
            if (block.isImage())
                places.append(numbers.at(part));
            part += block.isText() ? block.text().size() : 1;
        }
        QCOMPARE(places, (QVector<int>{2, 4}));
        QCOMPARE(numbers.size(), part);
    }

    /// Each line and code of any receipt has a number, and they ascend.
    void receiptsMadeAtRandomAreCountedRight()
    {
        int known = 0;
        for (unsigned number = 0; number < 400; ++number) {
            const auto made = differential::Generator(7, differential::Generator::Template, number)
                                  .templateCase();
            const QStringList lines = made.lines.join('\n').split('\n');
            if (templatelint::endlessValueOf(lines, made.document, templatelint::Filling::Receipt))
                continue;
            const QVector<int> numbers = printedLinesOf(lines, made.document);
            if (numbers.isEmpty())
                continue;
            ++known;
            QCOMPARE(numbers.size(), partsOf(printed(lines, made.document)));
            int last = 0;
            for (const int line : numbers) {
                QVERIFY(line == 0 || (line >= last && line <= lines.size()));
                last = qMax(last, line);
            }
        }
        QVERIFY2(known > 300, qPrintable(QString::number(known)));
    }

    void endlessValuesHaveNoLines()
    {
        PrinterDocument document;
        document.setAttributes({{"NAME", "<NAME>x"}});
        QCOMPARE(printedLinesOf({"<NAME>"}, document), QVector<int>());
    }
};

QTEST_GUILESS_MAIN(TestPrintedLines)
#include "tst_printedlines.moc"
