#include <QtTest>
#include <memory>

#include "formatterbench.h"

using namespace formatterbench;

class TestBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void cleanup() { clearSettings(); }

    void documentOfOneLine()
    {
        m_formatter->setTemplate("<F2>A");
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(documentOf());
        TextPrinterDocument told;
        told.setBlocks({DocumentBlock::createSimpleBlock(QStringList{"A"}, AlignLeft, 1, 0, 0, 0)});
        told.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(made == told);
        QCOMPARE(QJsonDocument::fromVariant(made.toMap()).toJson(QJsonDocument::Compact),
                 QByteArray(R"({"blocks":[{"align":0,"fmt":["AA=="],"fnt":["AQ=="],"ls":[0],)"
                            R"("txt":["A"],"type":0}],"cta":9,"init":true,"loop":0,"pta":0})"));
    }

    void blocksAreMade_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        QTest::newRow("one empty line") << "" << QStringList{"left: "};
        QTest::newRow("neighbours of one alignment merge")
            << "a\nb\nc" << QStringList{"left: a|b|c"};
        QTest::newRow("other alignments don't merge")
            << "a\n<C>b\nc" << QStringList{"left: a", "center: b", "left: c"};
        QTest::newRow("each alignment merges with its like")
            << "<C>a\n<C>b\n<R>c\n<R>d\n<S>e\n<S>f"
            << QStringList{"center: a|b", "right: c|d", "justify: \te|\tf"};
        QTest::newRow("empty lines take the last alignment")
            << "\n<C>a\n\n\nb\n"
            << QStringList{"left: ", "center: a||", "left: b|"};
        QTest::newRow("a line of nothing but tags keeps the last alignment")
            << "<R>a\n<C>\n\nb" << QStringList{"right: a|", "left: b"};
        QTest::newRow("a line of nothing but tags parts no block")
            << "a\n<C><B>\nb" << QStringList{"left: a|b"};
        QTest::newRow("format is carried over lines")
            << "a<B:>b\n\nc<:B>d\ne" << QStringList{"left: ab||cd|e formats 0001||0100|00"};
        QTest::newRow("format is carried over other alignments")
            << "a<U:>b\n<C>c" << QStringList{"left: ab formats 0008", "center: c formats 08"};
        QTest::newRow("font is carried over lines")
            << "a<F2>b\n\nc\n<F1>d" << QStringList{"left: ab||c|d fonts 0001||01|00"};
        QTest::newRow("whole-line format is not carried")
            << "<B>a\nb" << QStringList{"left: a|b formats 01|00"};
        QTest::newRow("spacing is each line's own")
            << "<LS2>a\nb" << QStringList{"left: a|b spacing 2"};
        QTest::newRow("blanks are text") << "  \na" << QStringList{"left:   |a"};
    }
    void blocksAreMade()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        m_formatter->setTemplate(text);
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())), blocks);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
    }

    void valuesMayHoldMarkup()
    {
        m_formatter->setTemplate("a<NAME>b");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf({{"NAME", "<U:>x<:U>"}}))),
                 QStringList{"left: axb formats 000800"});
    }

    void shortCodesReachTheMarkupAndLongOnesAreAttributes()
    {
        m_formatter->setTemplate("<123><#12>|<1234><#123>");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())),
                 QStringList{QString("left: {%1|1234.00 formats 40").arg(QChar(12)) +
                             QString("00").repeated(9)});
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument("<1234><#123>")),
                 QStringList{QString("left: %1{ formats 4000").arg(QChar(1234 & 255))});
    }

    void qrCodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto qr = [](const QByteArray &data) {
            return "qr center: " + QString::fromLatin1(data.toBase64());
        };
        QTest::newRow("text in front") << "text<QR>data" << QStringList{"left: text", qr("data")};
        QTest::newRow("alone") << "<QR>data" << QStringList{qr("data")};
        QTest::newRow("blanks in front are no text") << "  \t<QR>data" << QStringList{qr("data")};
        QTest::newRow("blanks around the text in front stay")
            << "  ab  <QR>x" << QStringList{"left:   ab  ", qr("x")};
        QTest::newRow("blanks around the data go") << "<QR>  da ta \t" << QStringList{qr("da ta")};
        QTest::newRow("data in UTF-8") << "<QR>Чек №1" << QStringList{qr("Чек №1")};
        QTest::newRow("no data") << "a<QR>" << QStringList{"left: a", "qr center: "};
        QTest::newRow("blank data") << "<QR>  " << QStringList{"qr center: "};
        QTest::newRow("second tag is data")
            << "a<QR>b<QR>c" << QStringList{"left: a", qr("b<QR>c")};
        QTest::newRow("markup in the data is data")
            << "<QR>[a]<B><65>" << QStringList{qr("[a]<B><65>")};
        QTest::newRow("nothing but tags in front") << "<B><C><QR>x" << QStringList{qr("x")};
        QTest::newRow("markup in front")
            << "<R><B>a<QR>x" << QStringList{"right: a formats 01", qr("x")};
        QTest::newRow("text in front merges with the lines before")
            << "a\nb<QR>x\nc" << QStringList{"left: a|b", qr("x"), "left: c"};
        QTest::newRow("codes don't merge") << "<QR>x\n<QR>y" << QStringList{qr("x"), qr("y")};
        QTest::newRow("centred text doesn't merge with a code")
            << "<C>a\n<QR>x\n<C>b" << QStringList{"center: a", qr("x"), "center: b"};
        QTest::newRow("empty line behind takes the text's alignment, not the code's")
            << "<R>a<QR>x\n"
            << QStringList{"right: a", qr("x"), "right: "};
        QTest::newRow("empty line behind a code alone takes the last text's alignment")
            << "a\n<QR>x\n"
            << QStringList{"left: a", qr("x"), "left: "};
        QTest::newRow("format of the text in front is carried on")
            << "<B:>a<QR>x\nb" << QStringList{"left: a formats 01", qr("x"), "left: b formats 01"};
        QTest::newRow("font of the text in front is carried on")
            << "<F2>a<QR>x\nb" << QStringList{"left: a fonts 01", qr("x"), "left: b fonts 01"};
        QTest::newRow("format of tags alone in front is carried on")
            << "<B:><QR>x\nb" << QStringList{qr("x"), "left: b formats 01"};
        QTest::newRow("lower case is text") << "a<qr>b" << QStringList{"left: a<qr>b"};
        QTest::newRow("data from an attribute") << "<QR><LINK>" << QStringList{qr("t=1&s=2")};
        QTest::newRow("tag from an attribute") << "a<CODE>b" << QStringList{"left: a", qr("xb")};
        QTest::newRow("in a marked part") << "a<X:><QR>b<:X>c" << QStringList{"left: ac"};
        QTest::newRow("on a marked line") << "a<X><QR>b" << QStringList{"left: "};
    }
    void qrCodes()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        m_formatter->setTemplate(text);
        const PrinterDocument sale = documentOf({{"LINK", "t=1&s=2"}, {"CODE", "<QR>x"}});
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(sale)), blocks);
    }

    void qrPayloadReadsBack()
    {
        m_formatter->setTemplate("<QR>Чек");
        const QList<DocumentBlock> blocks =
            m_formatter->toTextPrinterDocument(documentOf()).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().qrCode(), QByteArray("Чек"));
    }

    // Clients depend on the untouched text in front of a code and on the folded payload.
    void textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("blocks");
        QTest::newRow("as written")
            << 0 << QStringList{"left: Before|Text", "qr center: YWJj", "left: After"};
        QTest::newRow("upper") << 1
                               << QStringList{"left: BEFORE|Text", "qr center: YWJJ",
                                              "left: AFTER"};
        QTest::newRow("lower") << 2
                               << QStringList{"left: before|Text", "qr center: ywjj",
                                              "left: after"};
    }
    void textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, blocks);
        setCharactersMode(mode);
        m_formatter->setTemplate("Before\nText<QR>abc\nAfter");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(documentOf())), blocks);
    }

    void manyCodesComeToAnEnd()
    {
        m_formatter->setTemplate(manyLines("a<QR>b", 50000));
        QCOMPARE(m_formatter->toTextPrinterDocument(documentOf()).blocks().size(), 100000);
    }

private:
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestBlocks)
#include "tst_blocks.moc"
