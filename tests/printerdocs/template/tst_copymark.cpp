#include <QTranslator>
#include <QtTest>
#include <memory>

#include "formatterbench.h"

using namespace formatterbench;

namespace {

class CopyTranslator : public QTranslator
{
public:
    CopyTranslator(const QByteArray &context, const QString &word)
        : m_context(context), m_word(word)
    {}
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return m_context == context && qstrcmp(source, "<C>CHECK_COPY") == 0 ? m_word : QString();
    }

private:
    QByteArray m_context;
    QString m_word;
};

}  // namespace

class TestCopyMark : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void copyMarkStandsBehindTheFirstDocumentNumber_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("marked");
        const QString mark = "<C>CHECK_COPY";
        QTest::newRow("alone") << QStringList{"<DOCNO>"} << QStringList{"<DOCNO>", mark};
        QTest::newRow("in the middle of a line, between lines")
            << QStringList{"a", "No <DOCNO>.", "b"} << QStringList{"a", "No <DOCNO>.", mark, "b"};
        QTest::newRow("behind the first only") << QStringList{"<DOCNO>", "x", "<DOCNO>"}
                                               << QStringList{"<DOCNO>", mark, "x", "<DOCNO>"};
        QTest::newRow("twice on a line")
            << QStringList{"<DOCNO><DOCNO>"} << QStringList{"<DOCNO><DOCNO>", mark};
        QTest::newRow("lower case") << QStringList{"<docno>"} << QStringList{"<docno>", mark};
        QTest::newRow("mixed case") << QStringList{"ж<DocNo>"} << QStringList{"ж<DocNo>", mark};
        QTest::newRow("behind letters that are two in upper case")
            << QStringList{"ßß<docno>"} << QStringList{"ßß<docno>", mark};
        QTest::newRow("with a format it is another tag")
            << QStringList{"<DOCNO,000>"} << QStringList{"<DOCNO,000>"};
        QTest::newRow("without brackets it is no tag")
            << QStringList{"DOCNO"} << QStringList{"DOCNO"};
        QTest::newRow("no tag, no mark") << QStringList{"a", ""} << QStringList{"a", ""};
        QTest::newRow("no lines") << QStringList() << QStringList();
    }
    void copyMarkStandsBehindTheFirstDocumentNumber()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, marked);
        QStringList unmarked = lines;
        m_formatter->addCopyInfo(unmarked, documentOf());
        QCOMPARE(unmarked, lines);
        m_formatter->addCopyInfo(lines, copyOf(documentOf()));
        QCOMPARE(lines, marked);
    }

    void copyMarkPrintsCentred()
    {
        m_formatter->setTemplate("No <DOCNO>");
        const PrinterDocument copy = copyOf(documentOf({{"DOCNO", 17}}));
        QCOMPARE(m_formatter->prepareDocument(copy), (QStringList{"No 17", "<C>CHECK_COPY"}));
        QCOMPARE(m_formatter->toPlainText(copy, 20), (QStringList{"No 17", "     CHECK_COPY"}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(copy)),
                 (QStringList{"left: No 17", "center: CHECK_COPY"}));
        QCOMPARE(m_formatter->toPlainText(documentOf({{"DOCNO", 17}}), 20), QStringList{"No 17"});
    }

    void copyMarkStaysWhereTheDocumentNumberVanishes()
    {
        m_formatter->setTemplate("a\n<docno>\nb");
        QCOMPARE(m_formatter->prepareDocument(copyOf(documentOf({{"DOCNO", 17}}))),
                 (QStringList{"a", "<C>CHECK_COPY", "b"}));
    }

    void copyOfATemplateWithoutDocumentNumberHasNoMark()
    {
        m_formatter->setTemplate("a\nb");
        QCOMPARE(m_formatter->prepareDocument(copyOf(documentOf())), (QStringList{"a", "b"}));
    }

    void copyMarkIsTranslated()
    {
        CopyTranslator translator("PrinterDocumentFormatter", "<C>КОПИЯ ЧЕКА");
        QVERIFY(QCoreApplication::installTranslator(&translator));
        m_formatter->setTemplate("<DOCNO>");
        const PrinterDocument copy = copyOf(documentOf({{"DOCNO", 17}}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(copy)),
                 (QStringList{"left: 17", "center: КОПИЯ ЧЕКА"}));
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(m_formatter->prepareDocument(copy), (QStringList{"17", "<C>CHECK_COPY"}));
    }

    void translationOfAnotherContextDoesNotTouchTheCopyMark()
    {
        CopyTranslator translator("TextPrinterDocument", "<C>КОПИЯ");
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QStringList lines{"<DOCNO>"};
        m_formatter->addCopyInfo(lines, copyOf(documentOf()));
        QCOMPARE(lines, (QStringList{"<DOCNO>", "<C>CHECK_COPY"}));
        QCoreApplication::removeTranslator(&translator);
    }

private:
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestCopyMark)
#include "tst_copymark.moc"
