#include <QtTest>
#include <limits>
#include <memory>

#include "formatterbench.h"
#include "htmlframes.h"

using namespace formatterbench;
using namespace htmlframes;

/// Plain text, HTML and blocks of the same template, from call to call.
class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void cleanup() { clearSettings(); }

    void plainTextIsLaidOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("left") << "abc" << 6 << QStringList{"abc"};
        QTest::newRow("right") << "<R>abc" << 6 << QStringList{"   abc"};
        QTest::newRow("centre") << "<C>abc" << 6 << QStringList{" abc"};
        QTest::newRow("justify") << "a<S>b" << 6 << QStringList{"a    b"};
        QTest::newRow("empty line is as wide as the paper")
            << "a\n\nb" << 6 << QStringList{"a", "      ", "b"};
        QTest::newRow("empty line behind a right-aligned one") << "<R>a\n"
                                                               << 3 << QStringList{"  a", "   "};
        QTest::newRow("width 0") << "a\n" << 0 << QStringList{"a", ""};
        QTest::newRow("negative width") << "a\n" << -5 << QStringList{"a", ""};
        QTest::newRow("overflowing line is not cut")
            << "abcdef<S>g" << 3 << QStringList{"abcdef g"};
        QTest::newRow("nothing but tags gives no line")
            << "a\n<B><C>\nb" << 6 << QStringList{"a", "b"};
        QTest::newRow("QR tag is text") << "a<QR>b" << 6 << QStringList{"a<QR>b"};
        QTest::newRow("line of blanks") << "  " << 6 << QStringList{"  "};
    }
    void plainTextIsLaidOut()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(QStringList, lines);
        m_formatter->setTemplate(text);
        QCOMPARE(m_formatter->toPlainText(documentOf(), width), lines);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, width), lines);
    }

    void wildWidthsAndMarginsDoNoHarm()
    {
        const int wild = std::numeric_limits<int>::max();
        const QStringList lines = m_formatter->plainTextToFormattedPlainText("", wild);
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().trimmed().isEmpty());
        QCOMPARE(m_formatter->plainTextToFormattedPlainText("", -1), QStringList{QString()});
        const PrinterDocumentFormatter wideFormatter(wild, nullptr);
        const QStringList shifted = wideFormatter.plainTextToFormattedPlainText("x", 10);
        QCOMPARE(shifted.size(), 1);
        QCOMPARE(shifted.first().trimmed(), QString("x"));
        DocumentBlock justified = DocumentBlock::emptyBlock(1, AlignJustify, 0);
        QCOMPARE(justified.toStringList(wild), QStringList{QString()});
    }

    void leftMarginStandsInFrontOfLinesWithText()
    {
        PrinterDocumentFormatter formatter(2, nullptr);
        formatter.setTemplate("x\n\n<C>y");
        QCOMPARE(formatter.toPlainText(documentOf(), 7), (QStringList{"  x", "       ", "    y"}));
        QCOMPARE(shown(formatter.toTextPrinterDocument(documentOf())),
                 (QStringList{"left:   x|", "center:   y"}));
    }

    void htmlFrames()
    {
        const QString text = "ab";
        m_formatter->setTemplate(text);
        const QStringList rows{cellOf("ab")};
        QCOMPARE(m_formatter->toHtml(documentOf(), false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(documentOf(), false),
                 html(documentHead, rows, documentTail));
        QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                 html(documentHead, rows, documentTail));
    }

    void htmlRows_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("lines") << "a\nb" << QStringList{cellOf("a"), cellOf("b")};
        QTest::newRow("blank line") << "a\n\nb" << QStringList{cellOf("a"), "<br>", cellOf("b")};
        QTest::newRow("blank line only") << "" << QStringList{"<br>"};
        QTest::newRow("nothing but tags gives no output")
            << "a\n<B:>\n<C>\n<:B>\nb" << QStringList{cellOf("a"), cellOf("b")};
        QTest::newRow("centre")
            << "<C>a"
            << QStringList{
                   R"(<tr><td colspan="2" align = "center"> <font size = 1>a</font> </td></tr>)"};
        QTest::newRow("format is carried to the next line")
            << "<B:>a\nb<:B>" << QStringList{cellOf("<b>a</b>"), cellOf("<b>b</b>")};
        QTest::newRow("font is carried to the next line")
            << "<F3>a\n\nb"
            << QStringList{QString(cellOf("a")).replace("size = 1", "size = 3"), "<br>",
                           QString(cellOf("b")).replace("size = 1", "size = 3")};
        QTest::newRow("QR tag is text") << "a<QR>b" << QStringList{cellOf("a<QR>b")};
        QTest::newRow("text is not escaped") << "a & b < c" << QStringList{cellOf("a & b < c")};
    }
    void htmlRows()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        m_formatter->setTemplate(text);
        everyHtmlHas(rows, text);
    }

    void htmlFlagAlignsTheSecondCell()
    {
        const QString row = R"(<tr><td align = "left" width="50%"> <font size = 1>a</font> </td>)"
                            R"(<td align = "%1" width="50%"> <font size = 1>b</font> </td></tr>)";
        m_formatter->setTemplate("a<S>b");
        for (const bool right : {false, true}) {
            const QStringList rows{QString(row).replace("%1", right ? "right" : "left")};
            QCOMPARE(m_formatter->toHtml(documentOf(), right),
                     html(fragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->toHtmlDocument(documentOf(), right),
                     html(documentHead, rows, documentTail));
            QCOMPARE(m_formatter->plainTextToHtml("a<S>b", right),
                     html(plainFragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->plainTextToHtmlDocument("a<S>b", right),
                     html(documentHead, rows, documentTail));
        }
    }

    void htmlIsMadeOfPreparedLines()
    {
        m_formatter->setTemplate("<DOCNO>\n<ABCD>\n<ENTRIES>\n<X>q");
        const PrinterDocument copy = copyOf(documentOf({{"DOCNO", 17}}, "t"));
        const QStringList rows{cellOf("17"),
                               QString(cellOf("CHECK_COPY")).replace("\"left\"", "\"center\""),
                               cellOf("t"), "<br>"};
        QCOMPARE(m_formatter->toHtml(copy, false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(copy, false), html(documentHead, rows, documentTail));
    }

    void noTemplateGivesNothing()
    {
        const PrinterDocument sale = copyOf(documentOf({}, "a=1"));
        QCOMPARE(m_formatter->prepareDocument(sale), QStringList());
        QCOMPARE(m_formatter->toFormattedText(sale), QStringList());
        QCOMPARE(m_formatter->toPlainText(sale, 20), QStringList());
        QCOMPARE(m_formatter->toHtml(sale, false), html(fragmentHead, {}, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(sale, false), html(documentHead, {}, documentTail));
        TextPrinterDocument nothing;
        nothing.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(m_formatter->toTextPrinterDocument(sale) == nothing);
    }

    void templateOfVanishingLinesIsABlankLine()
    {
        m_formatter->setTemplate("<ABCD>\n<SPECSYMBOLS=x>");
        QCOMPARE(m_formatter->toPlainText(documentOf(), 3), QStringList{"   "});
        QCOMPARE(m_formatter->toHtml(documentOf(), true),
                 html(fragmentHead, {"<br>"}, fragmentTail));
        const auto blocks = m_formatter->toTextPrinterDocument(documentOf()).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().text(), QStringList{""});
    }

    void templateOfVanishingImagesGivesNothing()
    {
        m_formatter->setTemplate("<ABCD>\n<I>1 1 a</I>");
        QCOMPARE(m_formatter->toPlainText(documentOf(), 20), QStringList());
        QCOMPARE(m_formatter->toHtml(documentOf(), true), html(fragmentHead, {}, fragmentTail));
        QVERIFY(m_formatter->toTextPrinterDocument(documentOf()).blocks().isEmpty());
    }

    void caseIsFoldedByTheCharactersMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("folded");
        QTest::newRow("as written") << 0 << "aB чЕк";
        QTest::newRow("upper") << 1 << "AB ЧЕК";
        QTest::newRow("lower") << 2 << "ab чек";
    }
    void caseIsFoldedByTheCharactersMode()
    {
        QFETCH(int, mode);
        QFETCH(QString, folded);
        const QString text = "aB <U:>чЕк";
        m_formatter->setTemplate(text);
        setCharactersMode(mode);
        const QStringList lines{folded};
        QCOMPARE(m_formatter->toPlainText(documentOf(), 9), lines);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 9), lines);
        const QStringList blocks{"left: " + folded + " formats 000000080808"};
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())), blocks);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
        const QStringList rows{
            cellOf(folded.left(3) + "</font><font size = 1><u>" + folded.mid(3) + "</u>")};
        everyHtmlHas(rows, text);
    }

    void caseStaysWithoutSettings()
    {
        setCharactersMode(1);
        IPrintDeviceSettings::setPrintDeviceSettings({});
        m_formatter->setTemplate("aB");
        QCOMPARE(m_formatter->toPlainText(documentOf(), 9), QStringList{"aB"});
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())), QStringList{"left: aB"});
        QCOMPARE(m_formatter->toHtml(documentOf(), false),
                 html(fragmentHead, {cellOf("aB")}, fragmentTail));
    }

    void tagsAreReadBeforeTheCaseIsFolded()
    {
        setCharactersMode(1);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument("<b>x<c>")),
                 QStringList{"left: <B>X<C>"});
    }

    void textWithoutAttributesReadsMarkupAlone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("attribute") << "<ABCD>";
        QTest::newRow("expression") << "<A + B>";
        QTest::newRow("document number") << "<DOCNO>";
        QTest::newRow("entries") << "<ENTRIES>";
        QTest::newRow("special symbols") << "<SPECSYMBOLS=one>";
        QTest::newRow("marked part") << "<X:>a<:X>";
        QTest::newRow("marked line") << "<X>a";
        QTest::newRow("image") << "<I>1 1 a</I>";
        QTest::newRow("QR code") << "a<QR>data";
        QTest::newRow("fiscal marker") << "<FISCAL_BODY>";
        QTest::newRow("carriage return stays") << "a\r";
    }
    void textWithoutAttributesReadsMarkupAlone()
    {
        QFETCH(QString, text);
        const SymbolFolder symbols;
        m_formatter->setSpecCharsPath(symbols.path());
        m_formatter->setTemplate("template");
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 0), QStringList{text});
        const TextPrinterDocument made = m_formatter->plainTextToTextPrinterDocument(text);
        QCOMPARE(shown(made), QStringList{"left: " + text});
        QVERIFY(made.charImages().isEmpty());
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, {cellOf(text)}, fragmentTail));
    }

    void textWithoutAttributesMakesAFullDocument()
    {
        TextPrinterDocument told;
        told.setBlocks({DocumentBlock::emptyBlock(1, AlignLeft, 0)});
        told.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(m_formatter->plainTextToTextPrinterDocument("") == told);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText("", 3), QStringList{"   "});
    }

    void nothingIsCarriedFromOneCallToTheNext()
    {
        const QString text = "\na<B:><F2>\n<R>b<F3>c<U:>";
        m_formatter->setTemplate(text);
        const QStringList blocks{"left: |a", "right: bc formats 0101 fonts 0002"};
        const QStringList plain{"    ", "a", "  bc"};
        const QStringList rows{
            "<br>", cellOf("a"),
            R"(<tr><td colspan="2" align = "right"> <font size = 1><b>b</b></font>)"
            R"(<font size = 3><b>c</b></font> </td></tr>)"};
        for (int run = 0; run < 2; ++run) {
            QCOMPARE(m_formatter->toPlainText(documentOf(), 4), plain);
            QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 4), plain);
            QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())), blocks);
            QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
            QCOMPARE(m_formatter->toHtml(documentOf(), false),
                     html(fragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                     html(documentHead, rows, documentTail));
        }
    }

private:
    /// What is made of the template, and of the same text without a document.
    void everyHtmlHas(const QStringList &rows, const QString &text) const
    {
        QCOMPARE(m_formatter->toHtml(documentOf(), false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(documentOf(), false),
                 html(documentHead, rows, documentTail));
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                 html(documentHead, rows, documentTail));
    }

    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestForms)
#include "tst_forms.moc"
