#include <QtTest>
#include <memory>

#include "formatterbench.h"

using namespace formatterbench;

/// What becomes of a template before its markup is read, and in which order.
class TestPipeline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void cleanup() { clearSettings(); }

    void templateIsPrepared_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("prepared");
        QTest::newRow("one empty line") << "" << QStringList{""};
        QTest::newRow("unknown attribute alone vanishes") << "<ABCD>" << QStringList{""};
        QTest::newRow("vanishing lines next to each other")
            << "a\n<ABCD>\n<EFGH>\nb" << QStringList{"a", "b"};
        QTest::newRow("vanishing lines first and last") << "<ABCD>\na\n<ABCD>" << QStringList{"a"};
        QTest::newRow("all lines vanish") << "<ABCD>\n<ABCD>" << QStringList{""};
        QTest::newRow("lines that vanish for different reasons")
            << "<ABCD>\n<SPECSYMBOLS=x>\n[<ZERO>]" << QStringList{""};
        QTest::newRow("nothing but a line of symbols") << "<SPECSYMBOLS=x>" << QStringList{""};
        QTest::newRow("blank lines stay") << "\na\n\n\nb\n"
                                          << QStringList{"", "a", "", "", "b", ""};
        QTest::newRow("a line of blanks stays") << "  " << QStringList{"  "};
        QTest::newRow("a blank beside the attribute keeps the line")
            << " <ABCD>" << QStringList{" "};
        QTest::newRow("attribute") << "Sum <SUMM>" << QStringList{"Sum 1250"};
        QTest::newRow("value with a line feed is two lines")
            << "a<BOTH>b" << QStringList{"aone", "twob"};
        QTest::newRow("group of zero vanishes with its line")
            << "[off <ZERO>]\nb" << QStringList{"b"};
        QTest::newRow("fiscal markers are unknown attributes")
            << "<FISCAL_HEADER>\na\n<FISCAL_BODY>\nx<FISCAL_QR>" << QStringList{"a", "x"};
        QTest::newRow("marked part") << "a<X:>b\nc<:X>d" << QStringList{"ad"};
        QTest::newRow("line emptied by a marked part stays")
            << "a\n<X:>b<:X>\nc" << QStringList{"a", "", "c"};
        QTest::newRow("all in a marked part is one empty line")
            << "<X:>a\nb<:X>" << QStringList{""};
        QTest::newRow("open tag alone is text") << "a<X:>b" << QStringList{"a<X:>b"};
        QTest::newRow("close tag alone is text") << "a<:X>b" << QStringList{"a<:X>b"};
        QTest::newRow("marked part is found after substitution")
            << "<OPEN>a<:X>b" << QStringList{"b"};
        QTest::newRow("marked line stays empty") << "a\n<X>text\nb" << QStringList{"a", "", "b"};
        QTest::newRow("marked line is emptied from behind") << "text<X>" << QStringList{""};
        QTest::newRow("marked line is found after substitution") << "text<LINE>" << QStringList{""};
        QTest::newRow("line tag inside a marked part goes with it")
            << "a<X:><X><:X>b" << QStringList{"ab"};
        QTest::newRow("image alone vanishes with its line")
            << "<I>10 20 data</I>\na" << QStringList{"a"};
        QTest::newRow("image in text") << "a<I>1 2 d</I>b" << QStringList{"ab"};
        QTest::newRow("images on one line") << "a<I>1 2 d</I>b<I>3 4 e</I>c" << QStringList{"abc"};
        QTest::newRow("images alone on one line")
            << "<I>1 2 d</I><I>3 4 e</I>\nx" << QStringList{"x"};
        QTest::newRow("images on lines next to each other")
            << "<I>1 2 d</I>\n<I>3 4 e</I>\nx" << QStringList{"x"};
        QTest::newRow("nothing but images") << "<I>1 2 d</I>\n<I>3 4 e</I>" << QStringList();
        QTest::newRow("the line behind an image is looked at")
            << "<I>1 2 d</I>\n<X>q\na<I>1 1 b</I>" << QStringList{"", "a"};
        QTest::newRow("blanks beside an image keep the line")
            << " <I>1 2 d</I>" << QStringList{" "};
        QTest::newRow("empty image") << "<I></I>" << QStringList();
        QTest::newRow("image of words") << "a<I>x y z</I>" << QStringList{"a"};
        QTest::newRow("image of great and negative sizes")
            << "a<I> 99999999999   -5  чек </I>" << QStringList{"a"};
        QTest::newRow("image with a size only") << "a<I> 7 </I>b" << QStringList{"ab"};
        QTest::newRow("image without end") << "a<I>1 2 d" << QStringList{"a<I>1 2 d"};
        QTest::newRow("image does not span lines")
            << "<I>1 2 d\n</I>" << QStringList{"<I>1 2 d", "</I>"};
        QTest::newRow("image end in front") << "</I>a<I>" << QStringList{"</I>a<I>"};
        QTest::newRow("image end in front, image behind")
            << "</I>a<I>1 1 b</I>c" << QStringList{"</I>ac"};
        QTest::newRow("image inside an image leaves its end")
            << "<I>1<I>2</I>3</I>" << QStringList{"3</I>"};
        QTest::newRow("image that a removal makes is removed too")
            << "<I<I>1</I>>2</I>a" << QStringList{"a"};
        QTest::newRow("image in lower case is text")
            << "<i>1 1 a</i>" << QStringList{"<i>1 1 a</i>"};
        QTest::newRow("image and line tag") << "<I>1 1 a</I><X>" << QStringList{""};
        QTest::newRow("line tag and image") << "<X><I>1 1 a</I>" << QStringList{""};
        QTest::newRow("line tag inside an image goes with it")
            << "a<I>1 <X></I>b" << QStringList{"ab"};
        QTest::newRow("marked parts go before images")
            << "a<I>1 <X:>b</I>c<:X>d" << QStringList{"a<I>1 d"};
        QTest::newRow("attributes inside an image are substituted before")
            << "a<I><CLOSE>b</I>" << QStringList{"ab</I>"};
        QTest::newRow("markup tags stay") << "<C><B>a<S>[<#3>]" << QStringList{"<C><B>a<S>[<#3>]"};
        QTest::newRow("QR tag stays") << "a<QR><SUMM>" << QStringList{"a<QR>1250"};
    }
    void templateIsPrepared()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, prepared);
        m_formatter->setTemplate(text);
        const QStringList before = m_formatter->getTemplate();
        const PrinterDocument sale = documentOf({{"SUMM", 1250},
                                                 {"ZERO", 0},
                                                 {"BOTH", "one\ntwo"},
                                                 {"OPEN", "<X:>"},
                                                 {"CLOSE", "</I>"},
                                                 {"LINE", "<X>"}});
        QCOMPARE(m_formatter->prepareDocument(sale), prepared);
        QCOMPARE(m_formatter->getTemplate(), before);
        QCOMPARE(m_formatter->prepareDocument(sale), prepared);
    }

    void stagesActInTheirOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QStringList>("prepared");
        QTest::newRow("copy mark before entries: a number tag in an entry gets none")
            << "<ENTRIES>"
            << "No=<DOCNO>" << QStringList{"No<S>17"};
        QTest::newRow("copy mark before entries: the mark stands behind all of them")
            << "<DOCNO><ENTRIES>"
            << "a\tb" << QStringList{"17a", "b", "<C>CHECK_COPY"};
        QTest::newRow("copy mark before special symbols")
            << "<SPECSYMBOLS=<DOCNO>\na"
            << "" << QStringList{"<C>CHECK_COPY", "a"};
        QTest::newRow("copy mark before marked parts") << "a\n<X:>\n<DOCNO>\n<:X>b"
                                                       << "" << QStringList{"a", "b"};
        QTest::newRow("entries before special symbols") << "<SPECSYM<ENTRIES>BOLS=x>\na"
                                                        << "" << QStringList{"a"};
        QTest::newRow("entries hold no special symbol lines, as their equals sign is gone")
            << "<ENTRIES>"
            << "a\t<SPECSYMBOLS=x>" << QStringList{"a", "x>"};
        QTest::newRow("entries before substitution")
            << "<ENTRIES>"
            << "Sum=<SUMM>\tNone=<ABCD>" << QStringList{"Sum<S>5", "None<S>"};
        QTest::newRow("an entry of an unknown attribute vanishes")
            << "<ENTRIES>"
            << "<ABCD>\tb" << QStringList{"b"};
        QTest::newRow("no entries: the empty line stays") << "a\n<ENTRIES>"
                                                          << "" << QStringList{"a", ""};
        QTest::newRow("a second tag behind one entry is an attribute then")
            << "<ENTRIES>-<ENTRIES>"
            << "a" << QStringList{"a-attribute"};
        QTest::newRow("entries before marked parts") << "<X:><ENTRIES><:X>z"
                                                     << "a\tb" << QStringList{"z"};
        QTest::newRow("entries before images") << "x<I><ENTRIES>y"
                                               << "1\t2</I>" << QStringList{"x<I>1", "2</I>y"};
    }
    void stagesActInTheirOrder()
    {
        QFETCH(QString, text);
        QFETCH(QString, entries);
        QFETCH(QStringList, prepared);
        m_formatter->setTemplate(text);
        const Attributes attributes{{"DOCNO", 17}, {"SUMM", 5}, {"ENTRIES", "attribute"}};
        QCOMPARE(m_formatter->prepareDocument(copyOf(documentOf(attributes, entries))), prepared);
    }

    void formattedTextIsSubstitutionAlone()
    {
        m_formatter->setTemplate(
            "<DOCNO>\n\n<ENTRIES>\n<X>a<:X>\n<ABCD>\n<B>b<I>1 1 c</I>\n[x<ABCD>]");
        const PrinterDocument sale = copyOf(documentOf({{"DOCNO", 17}}, "a=1\tb=2"));
        setCharactersMode(1);
        QCOMPARE(m_formatter->toFormattedText(sale),
                 (QStringList{"17", "", "", "<X>a<:X>", "", "<B>b<I>1 1 c</I>", ""}));
    }

    void preparedLinesAreNotFolded()
    {
        setCharactersMode(1);
        m_formatter->setTemplate("aB <NAME>");
        QCOMPARE(m_formatter->prepareDocument(documentOf({{"NAME", "x"}})), QStringList{"aB x"});
    }

    void templateOfManyLinesComesToAnEnd()
    {
        m_formatter->setTemplate(manyLines("Line <NUMB>\n<ABCD>\n\n<I>1 1 a</I>\n<X>z", 20000));
        const PrinterDocument sale = documentOf({{"NUMB", 7}});
        const QStringList prepared = m_formatter->prepareDocument(sale);
        QCOMPARE(prepared.size(), 60000);
        QCOMPARE(prepared.mid(59997), (QStringList{"Line 7", "", ""}));
        QCOMPARE(m_formatter->toPlainText(sale, 4).size(), 60000);
        QCOMPARE(m_formatter->toHtml(sale, true).count('\n'), 60001);
        const QList<DocumentBlock> blocks = m_formatter->toTextPrinterDocument(sale).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().text(), prepared);
    }

    void manyLinesOfOneKindComeToAnEnd_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lines");
        QTest::newRow("vanishing lines") << manyLines("<ABCD>", 100000) << 1;
        QTest::newRow("images") << manyLines("<I>1 1 a</I>", 100000) << 0;
        QTest::newRow("special symbol lines") << manyLines("<SPECSYMBOLS=none>", 100000) << 1;
        QTest::newRow("marked parts") << manyLines("<X:>a<:X>", 100000) << 100000;
        QTest::newRow("marked parts over line ends") << manyLines("<X:>a\n<:X>", 100000) << 100000;
        QTest::newRow("marked parts without end") << manyLines("<X:>a", 100000) << 100000;
        QTest::newRow("entries on every line") << manyLines("<ENTRIES>", 100000) << 200000;
        QTest::newRow("entries on one line") << QString("<ENTRIES>").repeated(10000) << 10001;
        QTest::newRow("images on one line") << QString("<I>1 1 a</I>").repeated(50000) << 0;
        QTest::newRow("image starts on one line") << QString("<I>").repeated(200000) << 1;
        QTest::newRow("line tags on one line") << QString("<X>").repeated(200000) << 1;
    }
    void manyLinesOfOneKindComeToAnEnd()
    {
        QFETCH(QString, text);
        QFETCH(int, lines);
        const SymbolFolder symbols;
        m_formatter->setSpecCharsPath(symbols.path());
        m_formatter->setTemplate(text);
        QCOMPARE(m_formatter->prepareDocument(documentOf({}, "a=1\tb=2")).size(), lines);
    }

private:
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestPipeline)
#include "tst_pipeline.moc"
