#include <QtTest>
#include <limits>

#include "htmlbench.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"

using namespace htmlbench;

/// Lines with a tab: cells at both edges, or a tab that is widened.
class TestDocumentHtmlTabs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TMPDIR", "/tmp"); }

    void justifiedLineHasTwoCells_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("equal parts")
            << "ab\tcd"
            << " width=\"50%\"> " + plain("ab") << " width=\"50%\"> " + plain("cd");
        QTest::newRow("percents are truncated") << QString(10, 'a') + "\t" + QString(22, 'b')
                                                << " width=\"31%\"> " + plain(QString(10, 'a'))
                                                << " width=\"68%\"> " + plain(QString(22, 'b'));
        QTest::newRow("empty first part") << "\tcd"
                                          << " width=\"0%\"> "
                                          << " width=\"100%\"> " + plain("cd");
        QTest::newRow("empty second part")
            << "ab\t"
            << " width=\"100%\"> " + plain("ab") << " width=\"0%\"> ";
        QTest::newRow("both empty") << "\t"
                                    << "> "
                                    << "> ";
        QTest::newRow("both empty around a middle") << "\tx\t"
                                                    << "> "
                                                    << "> ";
        QTest::newRow("the middle is dropped")
            << "a\tb\tc"
            << " width=\"50%\"> " + plain("a") << " width=\"50%\"> " + plain("c");
    }

    void justifiedLineHasTwoCells()
    {
        QFETCH(QString, line);
        QFETCH(QString, first);
        QFETCH(QString, second);
        const Block block = blockOf({line}, AlignJustify);
        const QString cells = "<tr><td align = \"left\"" + first + " </td><td align = \"%1\"";
        const QString end = second + " </td></tr>";
        QCOMPARE(block.toHtml(0, false, noSymbols, true, 0),
                 QString(cells).replace("%1", "left") + end);
        QCOMPARE(block.toHtml(0, true, noSymbols, true, 0),
                 QString(cells).replace("%1", "right") + end);
    }

    void middlePartsAreDroppedButTheirBytesAreUsed()
    {
        const Block block = lineOf("a\tb\tc", "\x01\x02\x03\x04\x05", "", AlignJustify);
        QCOMPARE(block.toHtml(false, noSymbols, true, 0),
                 QString("<tr><td align = \"left\" width=\"50%\"> <font size = 2>a</font> </td>"
                         "<td align = \"left\" width=\"50%\"> <font size = 4>c</font> </td></tr>"));
    }

    void byteOfTheTabIsSkipped()
    {
        const Block block =
            lineOf("ab\tcd", "\x01\x01\x07\x02\x03", QByteArray("\0\0\1\0\0", 5), AlignJustify);
        QCOMPARE(block.toHtml(false, noSymbols, true, 0),
                 QString("<tr><td align = \"left\" width=\"50%\"> <font size = 2>ab</font> </td>"
                         "<td align = \"left\" width=\"50%\"> <font size = 3>c</font>"
                         "<font size = 4>d</font> </td></tr>"));
    }

    void tabStaysInALineThatIsNotJustified()
    {
        QCOMPARE(blockOf({"ab\tcd"}).toHtml(false, noSymbols, true, 0), row(plain("ab\tcd")));
    }

    void tabIsWidenedToTheLineWidth_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("html");
        QTest::newRow("width 10") << "ab\tcd" << 10 << "ab      cd";
        QTest::newRow("width 6") << "ab\tcd" << 6 << "ab  cd";
        QTest::newRow("one space keeps the tab") << "ab\tcd" << 5 << "ab\tcd";
        QTest::newRow("full width keeps the tab") << "ab\tcd" << 4 << "ab\tcd";
        QTest::newRow("no width keeps the tab") << "ab\tcd" << 0 << "ab\tcd";
        QTest::newRow("negative width") << "ab\tcd" << -10 << "ab\tcd";
        QTest::newRow("smallest width") << "ab\tcd" << std::numeric_limits<int>::min() << "ab\tcd";
        QTest::newRow("wild width") << "ab\tcd" << std::numeric_limits<int>::max() << "ab\tcd";
        QTest::newRow("two tabs stay") << "a\tb\tc" << 10 << "a\tb\tc";
        QTest::newRow("empty first part") << "\tcd" << 5 << "   cd";
        QTest::newRow("empty second part") << "ab\t" << 5 << "ab   ";
        QTest::newRow("no tab") << "ab" << 10 << "ab";
    }

    void tabIsWidenedToTheLineWidth()
    {
        QFETCH(QString, line);
        QFETCH(int, width);
        QFETCH(QString, html);
        const QString division = "<div align=\"left\"><font size = 1>" + html + "</font></div>";
        QCOMPARE(lineOf(line, "", "").toHtml(0, false, noSymbols, false, width), division);
        QCOMPARE(lineOf(line, "", "").toHtml(false, noSymbols, false, width),
                 "<pre>\n" + division + "\n</pre>");
    }

    void tabAloneIsWidenedWhenAskedForByItself()
    {
        QCOMPARE(lineOf("\t", "\x01", "").toHtml(0, false, noSymbols, false, 3),
                 QString("<div align=\"left\"><font size = 1>  </font>"
                         "<font size = 2> </font></div>"));
    }

    void widenedTabMovesTheBytes_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QByteArray>("font");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("html");
        // The zero bytes stand in front of the tab's own byte.
        QTest::newRow("between the parts")
            << "a\tb" << QByteArray("\x01\x02\x03") << 5
            << "<font size = 2>a</font><font size = 1>  </font><font size = 3> </font>"
               "<font size = 4>b</font>";
        QTest::newRow("in front") << "\tb" << QByteArray("\x02\x03") << 4
                                  << "<font size = 1>  </font><font size = 3> </font>"
                                     "<font size = 4>b</font>";
        QTest::newRow("at the end") << "a\t" << QByteArray("\x01\x02") << 4
                                    << "<font size = 2>a</font><font size = 3> </font>"
                                       "<font size = 1>  </font>";
        QTest::newRow("no bytes") << "a\tb" << QByteArray() << 5 << "<font size = 1>a   b</font>";
        QTest::newRow("bytes for the first part alone go on as zero bytes")
            << "ab\tcd" << QByteArray("\x01\x01") << 7
            << "<font size = 2>ab</font><font size = 1>   cd</font>";
        QTest::newRow("bytes for a piece of the first part fill it")
            << "ab\tcd" << QByteArray("\x01") << 7
            << "<font size = 2>ab</font><font size = 1>   cd</font>";
        QTest::newRow("bytes as far as the tab go on with its byte")
            << "ab\tcd" << QByteArray("\x01\x01\x02") << 7
            << "<font size = 2>ab</font><font size = 1>  </font><font size = 3> cd</font>";
        QTest::newRow("one byte, in front") << "\tb" << QByteArray("\x02") << 4
                                            << "<font size = 1>  </font><font size = 3> b</font>";
        QTest::newRow("one byte, at the end") << "ab\t" << QByteArray("\x01") << 5
                                              << "<font size = 2>a</font>"
                                                 "<font size = 1>b   </font>";
    }

    void widenedTabMovesTheBytes()
    {
        QFETCH(QString, line);
        QFETCH(QByteArray, font);
        QFETCH(int, width);
        QFETCH(QString, html);
        QCOMPARE(lineOf(line, font, "").toHtml(0, false, noSymbols, false, width),
                 "<div align=\"left\">" + html + "</div>");
    }

    /// The format bytes move along with the font bytes.
    void widenedTabMovesTheFormats()
    {
        // "a" bold, then two zero bytes, the tab's own byte (underlined) and "b" in italics.
        const Block block = lineOf("a\tb", QByteArray("\x01\x01\x01"), QByteArray("\x01\x08\x02"));
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 5),
                 QString("<div align=\"left\"><font size = 2><b>a</b></font>"
                         "<font size = 1>  </font>"
                         "<font size = 2><u> </u></font>"
                         "<font size = 2><i></i>b</font></div>"));
    }

    void tabIsWidenedWhateverTheAlignment_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QString>("div");
        QTest::newRow("left") << int(AlignLeft) << "left";
        QTest::newRow("right") << int(AlignRight) << "right";
        QTest::newRow("center") << int(AlignCenter) << "center";
        QTest::newRow("justify") << int(AlignJustify) << "left";
    }

    void tabIsWidenedWhateverTheAlignment()
    {
        QFETCH(int, alignment);
        QFETCH(QString, div);
        const Block block = lineOf("a\tb", "", "", ETextAlignment(alignment));
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 5),
                 "<div align=\"" + div + "\"><font size = 1>a   b</font></div>");
    }

    void shortBytesAreExtendedInThePlainLayout()
    {
        const QByteArray formats("\x00\x01", 2);
        const Block block = lineOf("abc", QByteArray("\x01"), formats);
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 0),
                 QString("<div align=\"left\"><font size = 2>a</font>"
                         "<font size = 2><b>bc</b></font></div>"));
    }

    void symbolInTheSecondCell()
    {
        const Block block = lineOf(QString("ab\tc") + QChar(3), "", "", AlignJustify);
        QCOMPARE(block.toHtml(0, true, noSymbols, true, 0),
                 "<tr><td align = \"left\" width=\"50%\"> <font size = 1>ab</font> </td>"
                 "<td align = \"right\" width=\"50%\"> <font size = 1>c</font>" +
                     symbolTag + " </td></tr>");
    }

    void symbolBehindAWidenedTab()
    {
        const Block block = lineOf(QString("a\t") + QChar(1), "", "");
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 5),
                 "<div align=\"left\"><font size = 1>a   </font>" + symbolTag + "</div>");
    }
};

QTEST_APPLESS_MAIN(TestDocumentHtmlTabs)
#include "tst_document_html_tabs.moc"
