#include <QtTest>
#include <memory>

#include "formatterbench.h"

using namespace formatterbench;

class TestRemoval : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void markedPartsAreRemoved_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("removed");
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("in a line")
            << QStringList{"a<X:>b<:X>c"} << QStringList{"ac"} << QStringList{"abc"};
        QTest::newRow("over lines joins what is left")
            << QStringList{"a<X:>b", "c", "d<:X>e"} << QStringList{"ae"}
            << QStringList{"ab", "c", "de"};
        QTest::newRow("tags on lines of their own")
            << QStringList{"a", "<X:>", "b", "<:X>", "c"} << QStringList{"a", "", "c"}
            << QStringList{"a", "", "b", "", "c"};
        QTest::newRow("several") << QStringList{"<X:>a<:X>b<X:>c", "d<:X>e"} << QStringList{"be"}
                                 << QStringList{"abc", "de"};
        QTest::newRow("everything")
            << QStringList{"<X:>a", "b<:X>"} << QStringList{""} << QStringList{"a", "b"};
        QTest::newRow("empty part")
            << QStringList{"a<X:><:X>b"} << QStringList{"ab"} << QStringList{"ab"};
        QTest::newRow("no close tag")
            << QStringList{"a<X:>b", "c"} << QStringList{"a<X:>b", "c"} << QStringList{"ab", "c"};
        QTest::newRow("no open tag")
            << QStringList{"a<:X>b"} << QStringList{"a<:X>b"} << QStringList{"ab"};
        QTest::newRow("close tag first")
            << QStringList{"<:X>a<X:>b"} << QStringList{"<:X>a<X:>b"} << QStringList{"ab"};
        QTest::newRow("close tag, then a part")
            << QStringList{"<:X>a<X:>b<:X>c"} << QStringList{"<:X>ac"} << QStringList{"abc"};
        QTest::newRow("parts don't nest")
            << QStringList{"<X:>a<X:>b<:X>c<:X>d"} << QStringList{"c<:X>d"} << QStringList{"abcd"};
        QTest::newRow("open tag that a removal completes, without a close")
            << QStringList{"a<X<X:>q<:X>:>r"} << QStringList{"a<X:>r"} << QStringList{"a<Xq:>r"};
        QTest::newRow("a part that removal makes is removed too")
            << QStringList{"<X<X:>q<:X>:>r<:X>s"} << QStringList{"s"} << QStringList{"<Xq:>rs"};
        QTest::newRow("open tags are taken out before close tags")
            << QStringList{"<:<X:>X>a"} << QStringList{"<:<X:>X>a"} << QStringList{"a"};
        QTest::newRow("an open tag made of the rest stays")
            << QStringList{"<X<:X>:>a"} << QStringList{"<X<:X>:>a"} << QStringList{"<X:>a"};
        QTest::newRow("lower case is text")
            << QStringList{"<x:>a<:x>"} << QStringList{"<x:>a<:x>"} << QStringList{"<x:>a<:x>"};
        QTest::newRow("empty lines stay")
            << QStringList{"", "a", "", ""} << QStringList{"", "a", "", ""}
            << QStringList{"", "a", "", ""};
        QTest::newRow("a line feed in a line parts it, with no tag too")
            << QStringList{"a\nb", "c"} << QStringList{"a", "b", "c"} << QStringList{"a", "b", "c"};
        QTest::newRow("line tags are another matter")
            << QStringList{"<X>a", "b"} << QStringList{"<X>a", "b"} << QStringList{"<X>a", "b"};
    }
    void markedPartsAreRemoved()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, removed);
        QFETCH(QStringList, kept);
        QStringList others = lines;
        m_formatter->removeXParts(lines, true);
        QCOMPARE(lines, removed);
        m_formatter->removeXParts(others, false);
        QCOMPARE(others, kept);
    }

    void noLinesAreOneBlankLine()
    {
        for (const bool remove : {false, true}) {
            QStringList lines;
            m_formatter->removeXParts(lines, remove);
            QCOMPARE(lines, QStringList{""});
        }
    }

    void markedLineIsEmptied_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("in front") << "<X>text"
                                  << ""
                                  << "text";
        QTest::newRow("in the middle, twice") << "a<X>b<X>c"
                                              << ""
                                              << "abc";
        QTest::newRow("alone") << "<X>"
                               << ""
                               << "";
        QTest::newRow("no tag") << "text"
                                << "text"
                                << "text";
        QTest::newRow("lower case") << "<x>text"
                                    << "<x>text"
                                    << "<x>text";
        QTest::newRow("tags of parts") << "<X:>a<:X>"
                                       << "<X:>a<:X>"
                                       << "<X:>a<:X>";
        QTest::newRow("empty") << ""
                               << ""
                               << "";
    }
    void markedLineIsEmptied()
    {
        QFETCH(QString, line);
        QFETCH(QString, removed);
        QFETCH(QString, kept);
        QString other = line;
        m_formatter->removeXParts(line, true);
        QCOMPARE(line, removed);
        m_formatter->removeXParts(other, false);
        QCOMPARE(other, kept);
    }

    void unfinishedMarkedPartPrintsItsTag()
    {
        m_formatter->setTemplate("<X:>a\nb");
        QCOMPARE(m_formatter->toPlainText(documentOf(), 9), (QStringList{"<X:>a", "b"}));
    }

private:
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestRemoval)
#include "tst_removal.moc"
