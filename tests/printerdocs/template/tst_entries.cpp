#include <QtTest>
#include <memory>

#include "formatterbench.h"

using namespace formatterbench;

class TestEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void entriesAreUnpacked_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QStringList>("unpacked");
        const QString two = "Total=10\tTax=2";
        QTest::newRow("two entries")
            << QStringList{"<ENTRIES>"} << two << QStringList{"Total<S>10", "Tax<S>2"};
        QTest::newRow("every equals sign")
            << QStringList{"<ENTRIES>"} << "a=b=c" << QStringList{"a<S>b<S>c"};
        QTest::newRow("text before and behind")
            << QStringList{"x <ENTRIES> y"} << two << QStringList{"x Total<S>10", "Tax<S>2 y"};
        QTest::newRow("text before and behind one entry")
            << QStringList{"x <ENTRIES> y"} << "a=1" << QStringList{"x a<S>1 y"};
        QTest::newRow("lower case") << QStringList{"x<entries>y"} << "a" << QStringList{"xay"};
        QTest::newRow("mixed case, non-ASCII in front")
            << QStringList{"Итог<EntRies>!"} << "a\tb" << QStringList{"Итогa", "b!"};
        QTest::newRow("equals signs of the template stay")
            << QStringList{"p=q", "k=<ENTRIES>=k"} << "a=1" << QStringList{"p=q", "k=a<S>1=k"};
        QTest::newRow("letter that is two in upper case in front")
            << QStringList{"ß<entries>z"} << "e\tf" << QStringList{"ß<e", "f"};
        QTest::newRow("such a letter in front, one entry")
            << QStringList{"ß<ENTRIES>x"} << "a=1" << QStringList{"ß<a<S>1"};
        QTest::newRow("such a letter behind")
            << QStringList{"x<ENTRIES>ß"} << "a\tb" << QStringList{"xa", "bß"};
        QTest::newRow("three letters of one")
            << QStringList{"ΐ<ENTRIES>1234"} << "a\tb" << QStringList{"ΐ<Ea", "b34"};
        QTest::newRow("more letters of upper case than the line has")
            << QStringList{QString(20, L'ß') + "<ENTRIES>"} << "a\tb"
            << QStringList{QString(20, L'ß') + "<ENTRIES>a", "b"};
        QTest::newRow("such letters between two tags")
            << QStringList{"<ENTRIES>ßß<ENTRIES>1234"} << "a\tb"
            << QStringList{"a", "bßß<Ea", "b34"};
        QTest::newRow("such a letter in front of two tags")
            << QStringList{"ß<ENTRIES>-<ENTRIES>1234"} << "a\tb"
            << QStringList{"ß<a", "ba", "b1234"};
        QTest::newRow("letter beyond 16 bits in front")
            << QStringList{"𐐨<entries>z"} << "a\tb" << QStringList{"𐐨a", "bz"};
        QTest::newRow("long s and dotless i")
            << QStringList{"<entrıeſ>"} << "a" << QStringList{"a"};
        QTest::newRow("such a letter in the last entry, and a tag behind it")
            << QStringList{"<ENTRIES>-<ENTRIES>ABC"} << "a\tß" << QStringList{"a", "ß-<a", "ßBC"};
        QTest::newRow("no entries") << QStringList{"x<ENTRIES>y"} << "" << QStringList{"xy"};
        QTest::newRow("no entries, null")
            << QStringList{"x<ENTRIES>y"} << QString() << QStringList{"xy"};
        QTest::newRow("no entries and nothing else leave an empty line")
            << QStringList{"a", "<ENTRIES>", "b"} << "" << QStringList{"a", "", "b"};
        QTest::newRow("empty entries are kept")
            << QStringList{"<ENTRIES>"} << "\ta=1\t\t" << QStringList{"", "a<S>1", "", ""};
        QTest::newRow("no tag") << QStringList{"a", "ENTRIES", "<ENTRIES"} << two
                                << QStringList{"a", "ENTRIES", "<ENTRIES"};
        QTest::newRow("with a format it is another tag")
            << QStringList{"<ENTRIES,0>"} << two << QStringList{"<ENTRIES,0>"};
        QTest::newRow("on several lines") << QStringList{"<ENTRIES>", "-", "<ENTRIES>"} << "a\tb"
                                          << QStringList{"a", "b", "-", "a", "b"};
        QTest::newRow("on neighbouring lines, one entry")
            << QStringList{"<ENTRIES>", "<ENTRIES>"} << "a" << QStringList{"a", "a"};
        QTest::newRow("twice on a line")
            << QStringList{"<ENTRIES>|<ENTRIES>"} << "a\tb" << QStringList{"a", "b|a", "b"};
        QTest::newRow("three times on a line") << QStringList{"1<ENTRIES>2<ENTRIES>3<ENTRIES>4"}
                                               << "a\tb" << QStringList{"1a", "b2a", "b3a", "b4"};
        QTest::newRow("twice on a line, one entry: the first new line isn't looked at again")
            << QStringList{"<ENTRIES>|<ENTRIES>", "<ENTRIES>"} << "a"
            << QStringList{"a|<ENTRIES>", "a"};
        QTest::newRow("twice on a line, no entries")
            << QStringList{"<ENTRIES><ENTRIES>"} << "" << QStringList{"<ENTRIES>"};
        QTest::newRow("a tag in the first entry isn't looked at")
            << QStringList{"x<ENTRIES>"} << "<ENTRIES>\tb" << QStringList{"x<ENTRIES>", "b"};
        QTest::newRow("a tag in another entry stays as text, since unpacking it would never end")
            << QStringList{"<ENTRIES>"} << "a\t<ENTRIES>" << QStringList{"a", "<ENTRIES>"};
        QTest::newRow("a tag in lower case in another entry stays as text")
            << QStringList{"x<ENTRIES>y"} << "a\t<entries>\tb"
            << QStringList{"xa", "<entries>", "by"};
        QTest::newRow("a tag made of the last entry and the text behind")
            << QStringList{"<ENTRIES>IES>"} << "a\t<ENTR" << QStringList{"a", "a", "<ENTR"};
        QTest::newRow("no lines") << QStringList() << two << QStringList();
    }
    void entriesAreUnpacked()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, entries);
        QFETCH(QStringList, unpacked);
        m_formatter->unpackEntries(lines, documentOf({}, entries));
        QCOMPARE(lines, unpacked);
    }

    void entryHoldingTheTagIsUnpackedOnce()
    {
        QStringList lines{"x<ENTRIES>y"};
        m_formatter->unpackEntries(lines, documentOf({}, "a\t<entries>\tb"));
        QCOMPARE(lines, (QStringList{"xa", "<entries>", "by"}));
    }

    void entryHoldingTheTagPrintsNothing()
    {
        m_formatter->setTemplate("x<ENTRIES>y");
        QCOMPARE(m_formatter->prepareDocument(documentOf({}, "a\tb<entries>\t<ENTRIES>\tc")),
                 (QStringList{"xa", "b", "cy"}));
        QCOMPARE(m_formatter->prepareDocument(documentOf({{"ENTRIES", 5}}, "a\t<ENTRIES>")),
                 (QStringList{"xa", "5y"}));
    }

    void entriesPrintAtBothEdges()
    {
        m_formatter->setTemplate("<ENTRIES>");
        const PrinterDocument sale = documentOf({}, "Total=10\tTax=2");
        QCOMPARE(m_formatter->toPlainText(sale, 10), (QStringList{"Total   10", "Tax      2"}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(sale)),
                 QStringList{"justify: Total\t10|Tax\t2"});
    }

    void entriesOnOneLineKeepTheirOrder()
    {
        QStringList lines{QString("<ENTRIES>").repeated(3000)};
        m_formatter->unpackEntries(lines, documentOf({}, "a\tb"));
        QCOMPARE(lines.size(), 3001);
        QCOMPARE(lines.first(), QString("a"));
        QCOMPARE(lines.last(), QString("b"));
        QCOMPARE(lines.count("ba"), 2999);
    }

    void manyEntriesTagsOnALineBeforeAnotherScript()
    {
        QStringList lines{QString("<ENTRIES>").repeated(50000) + "ß"};
        m_formatter->unpackEntries(lines, documentOf({}, "a\tb"));
        QCOMPARE(lines.size(), 50001);
        QCOMPARE(lines.first(), QString("a"));
        QCOMPARE(lines.at(1), QString("ba"));
        QCOMPARE(lines.last(), QString("bß"));
    }

private:
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestEntries)
#include "tst_entries.moc"
