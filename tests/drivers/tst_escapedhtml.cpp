// HTML of receipts that hold texts of others: what an attacker's name makes of the page.
#include <QLoggingCategory>
#include <QtTest>

#include "arbitrary.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/specialcharacters.h"
#include "printerslib/drivers/escapedhtml.h"
#include "settings/iprintdevicesettings.h"
#include "settings/systemprintersettings.h"

using printerslib::drivers::EscapedHtml;

namespace {

constexpr char attack[] = "<img src=x onerror=alert(1) \"&\" ";

PrinterDocument documentOf(const QString &name)
{
    PrinterDocument document;
    document.setAttributes({{"NAME", name}, {"PRICE", 2.4}});
    return document;
}

/// As a browser reads it.
QString unescaped(QString html)
{
    return html.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&amp;", "&");
}

DocumentBlock blockOf(const QString &text, const QByteArray &formats,
                      ETextAlignment alignment = AlignLeft)
{
    return DocumentBlock::createSimpleBlock(text, alignment, QByteArray(), formats, 0, 0);
}

QString row(const QString &content)
{
    return "<tr><td colspan=\"2\" align = \"left\"> " + content + " </td></tr>";
}

/// A template: tags, what looks like them, and what HTML doesn't take as text.
rc::Gen<QString> hostileMarkup()
{
    const auto piece = rc::gen::element<std::string>(
        "<S>", "<C>", "<B>", "<B:>", "<:B>", "<W2>", "<H2>", "<F2>", "<#3>", "<60>", "<38>", "<QR>",
        "<NAME>", "<PRICE>", "<GONE>", "[", "]", "a", " ", "Ж", "<", ">", "&", "\"", "&lt;",
        "&amp;", "<script>", "\n", "\3");
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string> &pieces) {
                            QString text;
                            for (const std::string &each : pieces)
                                text += QString::fromStdString(each);
                            return text;
                        });
}

/// What the four stand-ins would be confused with.
QString withoutNoncharacters(QString text)
{
    for (QChar &character : text) {
        if (character >= QChar(0xFDD0) && character <= QChar(0xFDEF))
            character = 'x';
    }
    return text;
}

}  // namespace

class TestEscapedHtml : public QObject
{
    Q_OBJECT

private:
    static void foldCase(IPrintDeviceSettings::ECharactersMode mode)
    {
        const auto settings = QSharedPointer<SystemPrinterSettings>::create();
        settings->setCharactersMode(mode);
        IPrintDeviceSettings::setPrintDeviceSettings(settings);
    }

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.warning=false"); }
    void cleanup() { IPrintDeviceSettings::setPrintDeviceSettings({}); }

    void pictureWithoutEndIsText()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("<NAME>");
        const PrinterDocument document = documentOf(attack);
        const QString text = "&lt;img src=x onerror=alert(1) &quot;&amp;&quot; ";
        // Unescaped, the attack works.
        QVERIFY(formatter.toHtmlDocument(document, true).contains(attack));
        for (const QString &html : {EscapedHtml::toHtml(formatter, document, true),
                                    EscapedHtml::toHtmlDocument(formatter, document, true),
                                    EscapedHtml::plainTextToHtml(formatter, attack, true),
                                    EscapedHtml::plainTextToHtmlDocument(formatter, attack, true)})
            QVERIFY2(html.contains("<font size = 1>" + text + "</font>"), qPrintable(html));
    }

    void scriptOfABbCodeTextIsText()
    {
        BbCodeParser parser;
        parser.parseText("[b]</b><script>x</script>[/b]");
        const QString html = EscapedHtml::toHtml(parser.document(), true, SpecialCharacters());
        QVERIFY(!html.contains("<script"));
        QVERIFY(html.contains("<b>&lt;/b&gt;&lt;script&gt;x&lt;/script&gt;"));
    }

    void formatsStayWithTheirCharacters()
    {
        // Bold are the second and the last character.
        const DocumentBlock block = blockOf("&<a>", QByteArray::fromHex("00010001"));
        QCOMPARE(EscapedHtml::toHtml(block, false, SpecialCharacters(), true, 0),
                 row("<font size = 1>&amp;</font><font size = 1><b>&lt;</b></font>"
                     "<font size = 1>a</font><font size = 1><b>&gt;</b></font>"));
    }

    void cellsKeepTheirWidths()
    {
        const DocumentBlock block = blockOf("<<<<<\tabcde", QByteArray(), AlignJustify);
        const QString html = EscapedHtml::toHtml(block, true, SpecialCharacters(), true, 0);
        QCOMPARE(html.count("width=\"50%\""), 2);
    }

    void linesAreFilledToTheirWidth()
    {
        const DocumentBlock block = blockOf("<\t>", QByteArray());
        QCOMPARE(EscapedHtml::toHtml(block, false, SpecialCharacters(), false, 6),
                 QString("<pre>\n<div align=\"left\"><font size = 1>&lt;    &gt;</font></div>\n"
                         "</pre>"));
    }

    void symbolsStayPicturesAndRawCodesAreText()
    {
        const DocumentBlock block = blockOf(QString("\3\3<"), QByteArray::fromHex("004040"));
        const QString html = EscapedHtml::toHtml(block, false, SpecialCharacters(), true, 0);
        QCOMPARE(html.count("<img src=\"file:///"), 1);
        QVERIFY(
            html.contains("/tempimg\" width=\"10\" height=\"10\"><font size = 1>\3&lt;</font>"));
    }

    // The page for callers shows how.
    void symbolsCanBeGivenAnAddress()
    {
        const QString address =
            '"' + QUrl::fromLocalFile(QDir::tempPath() + "/tempimg").toString() + '"';
        QString html = EscapedHtml::toHtml(blockOf("\3" + address, QByteArray()), false,
                                           SpecialCharacters(), true, 0);
        QCOMPARE(html.count(address), 1);
        html.replace(address, "\"data:x\"");
        QCOMPARE(html.count("<img src=\"data:x\""), 1);
        QVERIFY(html.contains("tempimg&quot;"));
    }

    void noncharactersAreReplaced()
    {
        QString text;
        for (ushort code = 0xFDCF; code <= 0xFDD4; ++code)
            text += QChar(code);
        const QString shown = QString(QChar(0xFDCF)) + QString(4, QChar(0xFFFD)) + QChar(0xFDD4);
        QCOMPARE(
            EscapedHtml::toHtml(blockOf(text, QByteArray()), false, SpecialCharacters(), true, 0),
            row("<font size = 1>" + shown + "</font>"));
    }

    void blocksWithoutTextGiveNothing()
    {
        DocumentBlock code;
        code.setQrCode("<a>");
        QCOMPARE(EscapedHtml::toHtml(code, true, SpecialCharacters(), true, 0), QString());
        QCOMPARE(EscapedHtml::toHtml(DocumentBlock(), true, SpecialCharacters(), true, 0),
                 QString());
    }

    void entitiesKeepTheirCaseWhereTextIsFolded()
    {
        foldCase(IPrintDeviceSettings::CharactersUpperCase);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("a & b");
        const QString html = EscapedHtml::toHtml(formatter, PrinterDocument(), true);
        QVERIFY2(html.contains(">A &amp; B<"), qPrintable(html));
    }

    void nothingGivesHeadAndTail()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        const PrinterDocument document;
        QCOMPARE(EscapedHtml::toHtml(formatter, document, true), formatter.toHtml(document, true));
        QCOMPARE(EscapedHtml::toHtmlDocument(formatter, document, true),
                 formatter.toHtmlDocument(document, true));
        QCOMPARE(EscapedHtml::plainTextToHtml(formatter, QString(), true),
                 formatter.plainTextToHtml(QString(), true));
        QCOMPARE(EscapedHtml::plainTextToHtmlDocument(formatter, QString(), true),
                 formatter.plainTextToHtmlDocument(QString(), true));
    }

    void blocksGiveTheLibrarysHtmlWithEscapedText()
    {
        VERIFY_LAW([](const TextPrinterDocument &any, bool useTable, bool rightAlign) {
            QList<DocumentBlock> blocks = any.blocks();
            for (DocumentBlock &block : blocks) {
                QStringList lines = block.text();
                for (QString &line : lines)
                    line = withoutNoncharacters(line.replace('a', '<').replace('b', "&"));
                block.setText(lines);
            }
            TextPrinterDocument document = any;
            document.setBlocks(blocks);
            const SpecialCharacters symbols;
            RC_ASSERT(unescaped(EscapedHtml::toHtml(document, useTable, symbols)) ==
                      document.toHtml(useTable, symbols));
            const int width = *rc::gen::inRange(-1, 60);
            for (const DocumentBlock &block : blocks)
                RC_ASSERT(
                    unescaped(EscapedHtml::toHtml(block, rightAlign, symbols, useTable, width)) ==
                    block.toHtml(rightAlign, symbols, useTable, width));
        });
    }

    void templatesGiveTheLibrarysHtmlWithEscapedText()
    {
        VERIFY_LAW([](bool rightAlign) {
            const auto mode = *rc::gen::element(IPrintDeviceSettings::CharactersAsWritten,
                                                IPrintDeviceSettings::CharactersUpperCase,
                                                IPrintDeviceSettings::CharactersLowerCase);
            foldCase(mode);
            PrinterDocumentFormatter formatter(*rc::gen::inRange(0, 3), nullptr);
            const QString text = *hostileMarkup();
            formatter.setTemplate(text);
            const PrinterDocument document = documentOf("Tea & <C>\"");
            RC_ASSERT(unescaped(EscapedHtml::toHtml(formatter, document, rightAlign)) ==
                      formatter.toHtml(document, rightAlign));
            RC_ASSERT(unescaped(EscapedHtml::toHtmlDocument(formatter, document, rightAlign)) ==
                      formatter.toHtmlDocument(document, rightAlign));
            RC_ASSERT(unescaped(EscapedHtml::plainTextToHtml(formatter, text, rightAlign)) ==
                      formatter.plainTextToHtml(text, rightAlign));
            RC_ASSERT(
                unescaped(EscapedHtml::plainTextToHtmlDocument(formatter, text, rightAlign)) ==
                formatter.plainTextToHtmlDocument(text, rightAlign));
        });
    }

    void noTextMakesATag()
    {
        VERIFY_LAW([] {
            PrinterDocumentFormatter formatter(0, nullptr);
            const QString text = *hostileMarkup();
            QString html = EscapedHtml::plainTextToHtmlDocument(formatter, text, true);
            static const QRegularExpression own(
                "</?(html|head|body|table|tr|td|p|b|i|u|font|br)( [^<>]*)?>|<meta [^<>]*>|"
                "<img src=\"file:[^<>\"]*\" width=\"10\" height=\"10\">");
            html.remove(own);
            RC_ASSERT(!html.contains('<'));
            RC_ASSERT(!html.contains('>'));
            RC_ASSERT(!html.contains('"'));
        });
    }
};

QTEST_GUILESS_MAIN(TestEscapedHtml)
#include "tst_escapedhtml.moc"
