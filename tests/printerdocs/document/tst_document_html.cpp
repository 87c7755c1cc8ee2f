#include <QtTest>
#include <limits>

#include "htmlbench.h"
#include "printerdocs/echarformat.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"

using namespace htmlbench;

namespace {

QString run(const QString &text, const QByteArray &font, const QByteArray &format)
{
    return Block().toHtml(text, font, format, "", 0, noSymbols, false, "");
}

}  // namespace

class TestDocumentHtml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TMPDIR", "/tmp"); }

    void documentIsATableOrASequence()
    {
        TextPrinterDocument document;
        document.appendBlock(blockOf({"a"}));
        document.appendBlock(blockOf({"b", "c"}));
        QCOMPARE(document.toHtml(true, noSymbols),
                 "<html><head>\n"
                 "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                 "</head><body>\n"
                 "<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n" +
                     row(plain("a")) + "\n" + row(plain("b")) + "\n" + row(plain("c")) +
                     "\n"
                     "</table></p>\n"
                     "</body></html>");
        QCOMPARE(document.toHtml(false, noSymbols),
                 QString("<html><head>\n"
                         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                         "</head><body>\n"
                         "<pre>\n<div align=\"left\"><font size = 2>a</font></div>\n</pre>\n"
                         "<pre>\n<div align=\"left\"><font size = 2>b</font></div>\n</pre>\n"
                         "<pre>\n<div align=\"left\"><font size = 2>c</font></div>\n</pre>\n"
                         "</body></html>"));
    }

    void emptyDocumentIsAnEmptyPage()
    {
        QCOMPARE(TextPrinterDocument().toHtml(true, noSymbols),
                 QString("<html><head>\n"
                         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                         "</head><body>\n"
                         "<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n"
                         "</table></p>\n"
                         "</body></html>"));
        QCOMPARE(TextPrinterDocument().toHtml(false, noSymbols),
                 QString("<html><head>\n"
                         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                         "</head><body>\n"
                         "</body></html>"));
    }

    void blocksOtherThanTextLeaveAnEmptyLine()
    {
        Block image;
        image.setType(Block::BlockImage);
        image.setImg(MonochromeImage(1, 1, "\x80"));
        QVERIFY(image.isValid());
        TextPrinterDocument document;
        document.appendBlock(image);
        QCOMPARE(document.toHtml(true, noSymbols),
                 QString("<html><head>\n"
                         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                         "</head><body>\n"
                         "<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n"
                         "\n"
                         "</table></p>\n"
                         "</body></html>"));
        Block outOfStep = blockOf({"a", "b"});
        outOfStep.setFont(Bytes{"\x01"});
        for (const Block &block : {image, outOfStep, Block()}) {
            QVERIFY(block.toHtml(false, noSymbols, true, 0).isEmpty());
            QVERIFY(block.toHtml(false, noSymbols, false, 0).isEmpty());
        }
    }

    void blankLinesAreLineBreaks()
    {
        QCOMPARE(blockOf({"a", "   ", "b", "", "\t"}).toHtml(false, noSymbols, true, 0),
                 row(plain("a")) + "\n<br>\n" + row(plain("b")) + "\n<br>\n<br>");
        QCOMPARE(blockOf({"   ", ""}).toHtml(false, noSymbols, false, 0),
                 QString("<pre>\n<br>\n</pre>\n<pre>\n<br>\n</pre>"));
    }

    void emptyLineAskedForByItself()
    {
        const Block block = blockOf({"", "a"});
        QCOMPARE(block.toHtml(0, false, noSymbols, true, 0), QString("<tr><td></td></tr>"));
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 0), QString("<p></p>"));
        QCOMPARE(block.toHtml(1, false, noSymbols, true, 0), row(plain("a")));
    }

    void lineThatIsNotThereIsEmpty()
    {
        const Block block = blockOf({"a"});
        for (const int line :
             {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            QVERIFY(block.toHtml(line, false, noSymbols, true, 0).isEmpty());
            QVERIFY(block.toHtml(line, false, noSymbols, false, 0).isEmpty());
        }
        QVERIFY(Block().toHtml(0, false, noSymbols, true, 0).isEmpty());
    }

    void lineOfListsOutOfStepHasZeroBytes()
    {
        Block block;
        block.setText({"ab"});
        QCOMPARE(block.toHtml(0, false, noSymbols, true, 0), row("<font size = 1>ab</font>"));
        QCOMPARE(block.toHtml(0, false, noSymbols, false, 0),
                 QString("<div align=\"left\"><font size = 1>ab</font></div>"));
    }

    void cellIsAlignedLikeTheBlock()
    {
        const auto html = [](ETextAlignment alignment) {
            return blockOf({"a"}, alignment).toHtml(true, noSymbols, true, 0);
        };
        QCOMPARE(html(AlignLeft), row(plain("a"), "left"));
        QCOMPARE(html(AlignRight), row(plain("a"), "right"));
        QCOMPARE(html(AlignCenter), row(plain("a"), "center"));
        QCOMPARE(html(AlignJustify), row(plain("a"), "left"));
        QCOMPARE(html(static_cast<ETextAlignment>(-2)), row(plain("a"), "left"));
    }

    void divisionIsAlignedLikeTheBlock()
    {
        const auto html = [](ETextAlignment alignment) {
            return blockOf({"a"}, alignment).toHtml(0, true, noSymbols, false, 0);
        };
        const QString division("<div align=\"%1\"><font size = 2>a</font></div>");
        QCOMPARE(html(AlignLeft), division.arg("left"));
        QCOMPARE(html(AlignRight), division.arg("right"));
        QCOMPARE(html(AlignCenter), division.arg("center"));
        QCOMPARE(html(AlignJustify), division.arg("left"));
        QCOMPARE(html(static_cast<ETextAlignment>(-2)), division.arg("left"));
    }

    void shortBytesGoOnWithTheirLast()
    {
        QCOMPARE(lineOf("abc", "\x01", "").toHtml(false, noSymbols, true, 0), row(plain("abc")));
        QCOMPARE(lineOf("abc", "", "").toHtml(false, noSymbols, true, 0),
                 row("<font size = 1>abc</font>"));
        QCOMPARE(
            lineOf("abc", "\x01\x01\x01", QByteArray("\0\1", 2)).toHtml(false, noSymbols, true, 0),
            row("<font size = 2>a</font><font size = 2><b>bc</b></font>"));
        QCOMPARE(lineOf("a\tbc", "\x01", "\x01", AlignJustify).toHtml(false, noSymbols, true, 0),
                 QString("<tr><td align = \"left\" width=\"33%\"> "
                         "<font size = 2><b>a</b></font> </td>"
                         "<td align = \"left\" width=\"66%\"> "
                         "<font size = 2><b>bc</b></font> </td></tr>"));
    }

    void longBytesAreIgnoredBehindTheLine()
    {
        QCOMPARE(
            lineOf("a", "\x01\x02\x03", QByteArray("\0\1\1", 3)).toHtml(false, noSymbols, true, 0),
            row(plain("a")));
    }

    void tagsOfARunStandInTheirOrder_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<QString>("html");
        QTest::newRow("plain") << 0x00 << "<font size = 2>x</font>";
        QTest::newRow("bold") << 0x01 << "<font size = 2><b>x</b></font>";
        QTest::newRow("italic shows nothing") << 0x02 << "<font size = 2><i></i>x</font>";
        QTest::newRow("mark has no effect") << 0x04 << "<font size = 2>x</font>";
        QTest::newRow("underline") << 0x08 << "<font size = 2><u>x</u></font>";
        QTest::newRow("bold italic") << 0x03 << "<font size = 2><b><i></i>x</b></font>";
        QTest::newRow("bold underline") << 0x09 << "<font size = 2><b><u>x</u></b></font>";
        QTest::newRow("italic underline") << 0x0a << "<font size = 2><i><u></i>x</u></font>";
        QTest::newRow("all three") << 0x0b << "<font size = 2><b><i><u></i>x</u></b></font>";
        QTest::newRow("double width alone") << 0x10 << "<font size = 2>x</font>";
        QTest::newRow("double height alone") << 0x20 << "<font size = 2>x</font>";
        QTest::newRow("double both ways") << 0x30 << "<font size = 4>x</font>";
        QTest::newRow("raw code") << 0x40 << "<font size = 2>x</font>";
        QTest::newRow("highest bit") << 0x80 << "<font size = 2>x</font>";
        QTest::newRow("all bits") << 0xff << "<font size = 4><b><i><u></i>x</u></b></font>";
    }

    void tagsOfARunStandInTheirOrder()
    {
        QFETCH(int, format);
        QTEST(run("x", "\x01", QByteArray(1, char(format))), "html");
    }

    void fontIsASignedNumber()
    {
        QCOMPARE(run("x", "\x7f", "\x30"), QString("<font size = 256>x</font>"));
        QCOMPARE(run("x", "\x80", "\x30"), QString("<font size = -254>x</font>"));
        QCOMPARE(run("x", "\xff", ""), QString("<font size = 0>x</font>"));
    }

    void runsEndWhereFontOrFormatChanges()
    {
        QCOMPARE(run("abcdef", "\x01\x01\x02\x02\x02\x02", QByteArray("\0\0\0\0\1\1", 6)),
                 QString("<font size = 2>ab</font><font size = 3>cd</font>"
                         "<font size = 3><b>ef</b></font>"));
        // A change of a bit without any tag still ends the run.
        QCOMPARE(run("ab", "\x01\x01", QByteArray("\0\4", 2)), plain("a") + plain("b"));
    }

    void longRunsStandInTheirOrder_data()
    {
        QTest::addColumn<int>("size");
        for (int size : {4095, 4096, 4097, 100000})
            QTest::addRow("%d", size) << size;
    }

    void longRunsStandInTheirOrder()
    {
        QFETCH(int, size);
        const QString first(size, 'x');
        const QString second(size + 1, 'y');
        const QByteArray formats =
            QByteArray(size, '\1') + '\0' + QByteArray(second.size(), '\1') + '\0';
        QCOMPARE(run(first + "a" + second + "b", QByteArray(formats.size(), '\1'), formats),
                 "<font size = 2><b>" + first + "</b></font>" + plain("a") + "<font size = 2><b>" +
                     second + "</b></font>" + plain("b"));
    }

    void specialSymbolsArePictures()
    {
        QCOMPARE(run(QString("a\x03"
                             "b"),
                     "\x01\x01\x01", ""),
                 plain("a") + symbolTag + plain("b"));
        QCOMPARE(run(QString("\x01\x07"), "\x01\x02", ""), symbolTag + symbolTag);
        QCOMPARE(run(QString("\x03"), "\x01", "\xbf"), symbolTag);
        QCOMPARE(lineOf(QString("\x02"), "\x01", "").toHtml(false, noSymbols, true, 0),
                 row(symbolTag));
        QCOMPARE(lineOf(QString("\x02"), "\x01", "").toHtml(0, false, noSymbols, false, 0),
                 "<div align=\"left\">" + symbolTag + "</div>");
    }

    void rawCodesAndOtherCodesAreText()
    {
        QCOMPARE(run(QString("a\x03"
                             "b"),
                     "\x01\x01\x01", "\x40\x40\x40"),
                 plain("a\x03"
                       "b"));
        QCOMPARE(run(QString(QChar(0)), "\x01", ""), plain(QString(QChar(0))));
        QCOMPARE(run(QString(QChar(8)), "\x01", ""), plain(QString(QChar(8))));
        QCOMPARE(run(QString(QChar(0x103)), "\x01", ""), plain(QString(QChar(0x103))));
        // The format changes at the symbol, which is one only without the bit.
        QCOMPARE(run(QString("\x03\x03"), "\x01\x01", QByteArray("\x40\x00", 2)),
                 plain("\x03") + symbolTag);
    }

    void pictureLiesInTheFolderForTemporaryFiles()
    {
        qputenv("TMPDIR", "/var/tmp");
        QCOMPARE(run(QString("\x03"), "", ""),
                 QString("<img src=\"file:///var/tmp/tempimg\" width=\"10\" height=\"10\">"));
        qputenv("TMPDIR", "/tmp");
    }

    void runIsWrappedInACell()
    {
        const auto cell = [](const QString &text, const QString &attributes, const QString &width) {
            return Block().toHtml(text, "\x01", "", attributes, 5, noSymbols, true, width);
        };
        QCOMPARE(cell("x", "align = \"left\"", "31%"),
                 "<td align = \"left\" width=\"31%\"> " + plain("x") + " </td>");
        QCOMPARE(cell("x", "align = \"left\"", ""),
                 "<td align = \"left\"> " + plain("x") + " </td>");
        QCOMPARE(cell("", "a", "b"), QString("<td a width=\"b\">  </td>"));
        QCOMPARE(cell("", "a", ""), QString("<td a>  </td>"));
        QCOMPARE(cell("", "", ""), QString("<td >  </td>"));
        QCOMPARE(run("", "", ""), QString());
        QCOMPARE(Block().toHtml("x", "\x01", "", "a", 0, noSymbols, false, "b"), plain("x"));
    }

    void markersInTheTextAreText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("percent and one") << "100%1";
        QTest::newRow("all markers") << "%1%2%3";
        QTest::newRow("with L") << "%L1 %99";
        QTest::newRow("percent alone") << "50% %";
        QTest::newRow("markup") << "<b>&amp;\"</td>";
    }

    void markersInTheTextAreText()
    {
        QFETCH(QString, text);
        QCOMPARE(blockOf({text}).toHtml(false, noSymbols, true, 0), row(plain(text)));
        QCOMPARE(blockOf({text}, AlignRight).toHtml(0, false, noSymbols, false, 0),
                 "<div align=\"right\">" + plain(text) + "</div>");
        QCOMPARE(blockOf({text + "\t" + text}, AlignJustify).toHtml(false, noSymbols, true, 0),
                 "<tr><td align = \"left\" width=\"50%\"> " + plain(text) +
                     " </td><td align = \"left\" width=\"50%\"> " + plain(text) + " </td></tr>");
        QCOMPARE(Block().toHtml(text, "\x01", "", text, 0, noSymbols, true, text),
                 "<td " + text + " width=\"" + text + "\"> " + plain(text) + " </td>");
        TextPrinterDocument document;
        document.appendBlock(blockOf({text}));
        QVERIFY(document.toHtml(true, noSymbols).contains(row(plain(text))));
    }

    void symbolTableAndLineSpacingDoNotMatter()
    {
        SpecialCharacters symbols;
        symbols.insert(3, MonochromeImage(8, 8, QByteArray(8, '\xff')));
        const QString text("a\x03");
        QCOMPARE(Block().toHtml(text, "\x01", "", "", 99, symbols, false, ""),
                 run(text, "\x01", ""));
        Block block = blockOf({text});
        const QString html = block.toHtml(false, noSymbols, true, 0);
        block.setLineSpacing(50);
        QCOMPARE(block.toHtml(false, symbols, true, 0), html);
    }

    // Clients rely on it, and are told what it means for texts of others.
    void textIsNotEscaped()
    {
        const QString name = "<img src=x onerror=alert(1) \"&\"";
        QVERIFY(blockOf({name}).toHtml(false, noSymbols, true, 0).contains(plain(name)));
        TextPrinterDocument document;
        document.setBlocks({blockOf({name})});
        QVERIFY(document.toHtml(true, noSymbols).contains(plain(name)));
        QVERIFY(document.toHtml(false, noSymbols).contains(plain(name)));
    }

    void nonAsciiTextIsKept()
    {
        QCOMPARE(blockOf({"Чай\t10 ₽"}, AlignJustify).toHtml(false, noSymbols, true, 0),
                 "<tr><td align = \"left\" width=\"42%\"> " + plain("Чай") +
                     " </td><td align = \"left\" width=\"57%\"> " + plain("10 ₽") +
                     " </td></tr>");
    }

    void hugeDocumentIsRendered()
    {
        QStringList lines;
        for (int line = 0; line < 100000; ++line)
            lines.append("товар\t10.00");
        TextPrinterDocument document;
        document.appendBlock(blockOf(lines, AlignJustify));
        const QString html = document.toHtml(true, noSymbols);
        QCOMPARE(html.count("<tr>"), 100000);
        QVERIFY(html.endsWith("</tr>\n</table></p>\n</body></html>"));
    }
};

QTEST_APPLESS_MAIN(TestDocumentHtml)
#include "tst_document_html.moc"
