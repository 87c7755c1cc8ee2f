#include <QtTest>

#include "differential/generator.h"
#include "printedlines.h"
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
