#include <QtTest>

#include "bbbench.h"
#include "logcatcher.h"
#include "printerdocs/bbcodeparser.h"

using namespace bbbench;

/// Text, formats, lines and codes.
class TestBbCodeParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyWithItsDefaults()
    {
        QObject parent;
        auto *parser = new BbCodeParser(&parent);
        QCOMPARE(parser->parent(), &parent);
        QVERIFY(parser->blocks().isEmpty());
        QCOMPARE(int(parser->symbolsPerLine()), 32);
        QVERIFY(parser->imagesPath().isEmpty());
        parser->setSymbolsPerLine(48);
        parser->setImagesPath("/pictures");
        QCOMPARE(int(parser->symbolsPerLine()), 48);
        QCOMPARE(parser->imagesPath(), QString("/pictures"));
    }

    void textBecomesBlocks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("empty text", "", {});
        row("one run", "abc", {"T0L \"abc\" 000 000"});
        row("non-ASCII text counts characters", "чай", {"T0L \"чай\" 000 000"});
        row("character outside the BMP counts as two", "😀", {"T0L \"😀\" 00 00"});
        row("lines", "a\n\nbc", {"T0L \"a||bc\" 0||00 0||00"});
        row("line end behind", "a\n", {"T0L \"a|\" 0| 0|"});
        row("bad tag is text", "[b!]x", {plain("[b!]x")});
        row("tags without text", "[b][/b][center][/center]", {});

        // Formats and fonts
        row("bold", "[b]a[/b]b", {"T0L \"a b\" 000 100"});
        row("italic", "[i]a[/i]b", {"T0L \"a b\" 000 200"});
        row("underlined", "[u]a[/u]b", {"T0L \"a b\" 000 800"});
        row("all three", "[b][i][u]a", {"T0L \"a\" 0 b"});
        row("crossed formats", "[b][i]a[/b]b[/i]c", {"T0L \"a b c\" 00000 32200"});
        row("closing a format that is off", "a[/b][/i][/u]b", {"T0L \"a b\" 000 000"});
        row("upper-case tag", "[B]a[/B]b", {"T0L \"a b\" 000 100"});
        row("size small", "[size=small]a", {"T0L \"a\" 0 0"});
        row("size normal", "[size=normal]a", {"T0L \"a\" 1 0"});
        row("size middle", "[size=middle]a", {"T0L \"a\" 2 0"});
        row("size large", "[SIZE=LARGE]x[/size]y", {"T0L \"x y\" 300 000"});
        row("size in another tag", "[b size=large]x[/b]y", {"T0L \"x y\" 333 100"});
        row("small again", "[size=large]x[size=small]y", {"T0L \"x y\" 300 000"});
        row("unknown size leaves the font", "[size=large]x[size=huge]y", {"T0L \"x y\" 333 000"});
        row("format and font together", "[b][size=normal]x[/size]y", {"T0L \"x y\" 100 111"});

        // Alignment
        row("center", "[center]x[/center]", {plain("x", "T0C")});
        row("right", "[right]x[/right]", {plain("x", "T0R")});
        row("left", "[left]x[/left]", {plain("x")});
        row("text before center joins its block", "x[center]y[/center]z",
            {plain("x y", "T0C"), plain("z")});
        row("center left open", "[center]x", {plain("x", "T0C")});
        row("closed by another alignment", "[right]x[/left]y", {plain("x", "T0R"), plain("y")});
        row("last alignment counts", "[center]x[right]y[/right]", {plain("x y", "T0R")});
        row("left again", "[right]x[left]y", {plain("x y")});
        row("closing alone cuts the block", "x[/center]y", {plain("x"), plain("y")});
        row("closing goes to left", "[right][center]x[/center]y", {plain("x", "T0C"), plain("y")});
        row("column keeps the alignment", "[right]x[column]y[/column]z",
            {plain("x", "T0R"), plain("y", "T0R"), plain("z", "T0R")});
        row("barcode keeps the alignment", "[right]x[barcode]1[/barcode]y",
            {plain("x", "T0R"), "B7R \"MQ==\" 0 0", "T0R \"\"  ", plain("y", "T0R")});
        row("QR code keeps the alignment", "[center]x[qrcode]1[/qrcode]y",
            {plain("x", "T0C"), "Q0C \"MQ==\" 0 0", "T0C \"\"  ", plain("y", "T0C")});
        row("picture keeps the alignment", "[right]x[img]y[/img]z",
            {plain("x", "T0R"), plain("y", "T0R"), plain("z", "T0R")});
        row("line end behind an aligned block", "[center]x[/center]\ny",
            {plain("x", "T0C"), plain("y")});

        // Blanks between pieces
        row("blank before", "a [b]b", {"T0L \"a b\" 000 001"});
        row("blank behind", "a[b] b", {"T0L \"a b\" 000 011"});
        row("line end before", "a\n[b]b", {"T0L \"a|b\" 0|0 0|1"});
        row("line end behind the tag", "a[b]\nb", {"T0L \"a|b\" 0|0 0|1"});
        row("no-break space is whitespace", QString("a\u00A0[b]b"),
            {QString("T0L \"a\u00A0b\" 000 001")});
        row("tab is whitespace", "a\t[b]b", {"T0L \"a\tb\" 000 001"});
        row("three pieces", "a[b]b[/b]c", {"T0L \"a b c\" 00000 01100"});

        // The first line end
        row("line end first", "\nx", {plain("x")});
        row("blank and line end first", " \nx", {plain("x")});
        row("tab and line end first", "\t\nx", {plain("x")});
        row("two blanks and line end first", "  \nx", {plain("x")});
        row("three blanks and line end first", "   \nx", {plain("   |x")});
        row("two tabs and line end first", "\t\t\nx", {"T0L \"\t\t|x\" 00|0 00|0"});
        row("only one line end is dropped", "\n\nx", {"T0L \"|x\" |0 |0"});
        row("carriage return first", "\rx", {plain("x")});
        row("line end alone", "\n", {});
        row("line end in each of two pieces", "[b]\n[/b]\nx", {plain("x")});
        row("line end first in a new block", "[center]x[/center]\n\ny",
            {plain("x", "T0C"), "T0L \"|y\" |0 |0"});

        // Unknown names
        row("unknown tag keeps its text", "[foo]x[/foo]y", {plain("x y")});
        row("unknown key", "[foo bar=1]x", {plain("x")});
    }

    void textBecomesBlocks()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        const QuietLog quiet;
        QCOMPARE(described(parsed(text)), blocks);
    }

    void halvesOfCharactersBecomeQuestionMarks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const QString high(QChar(0xD83D)), low(QChar(0xDE00));
        QTest::newRow("first half") << "a" + high + "b"
                                    << "a?b";
        QTest::newRow("second half") << "a" + low + "b"
                                     << "a?b";
        QTest::newRow("first half at the end") << "a" + high << "a?";
        QTest::newRow("halves the wrong way round") << low + high + "z"
                                                    << "??z";
        QTest::newRow("whole behind a half") << high + high + low + "z"
                                             << "?" + high + low + "z";
        QTest::newRow("half that a tag follows") << high + "[b]" + low << "? ?";
    }

    void halvesOfCharactersBecomeQuestionMarks()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        QCOMPARE(parsed(text).first().text(), QStringList(printed));
    }

    /// Texts come from files, which begin with one.
    void byteOrderMarkBeginsNoText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const QString mark(QChar(QChar::ByteOrderMark));
        QTest::newRow("at the start") << mark + "ab"
                                      << "ab";
        QTest::newRow("behind a tag") << "a[b]" + mark + "b"
                                      << "a b";
        QTest::newRow("one of two") << mark + mark + "b" << mark + "b";
        QTest::newRow("inside") << "a" + mark + "b"
                                << "a" + mark + "b";
    }

    void byteOrderMarkBeginsNoText()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        QCOMPARE(parsed(text).first().text(), QStringList(printed));
    }

    void quotesAndDashesBecomeAscii_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("all") << "«A» — B"
                             << "\"A\" - B";
        QTest::newRow("en dash") << "1–2"
                                 << "1-2";
        QTest::newRow("nested quotation marks") << "««A»»"
                                                << "\"\"A\"\"";
        QTest::newRow("other dashes and marks stay") << "‒―„“”’"
                                                     << "‒―„“”’";
        QTest::newRow("kinds of line ends") << "a\r\nb\rc\nd\n\re"
                                            << "a|b|c|d||e";
        QTest::newRow("two carriage returns and a line end") << "a\r\r\nb"
                                                             << "a||b";
    }

    void quotesAndDashesBecomeAscii()
    {
        QFETCH(QString, text);
        QFETCH(QString, line);
        QCOMPARE(described(parsed(text)), QStringList(plain(line)));
    }

    void linesAreDrawn_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto line = [](QChar character) { return plain(QString(32, character), "T0C"); };
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("pair of tags", "[hr][/hr]", {line('_')});
        row("closing itself", "[hr /]", {line('_')});
        row("dashed", "[hr=dashed][/hr]", {line('-')});
        row("dashed, closing itself", "[hr=dashed /]", {line('-')});
        row("dotted", "[hr=dotted][/hr]", {line('.')});
        row("upper case", "[HR=DOTTED][/HR]", {line('.')});
        row("other kind", "[hr=wavy /]", {line('_')});
        row("other kind after dashed", "[hr=dashed][b hr=wavy][/hr]", {line('_')});
        row("closing alone", "[/hr]", {line('_')});
        row("never closed", "[hr]", {});
        row("kind is forgotten", "[hr=dashed][/hr][/hr]", {line('-'), line('_')});
        row("opening again forgets", "[hr=dashed][hr][/hr]", {line('_')});
        row("key in another tag", "[left hr=dotted][/hr]", {line('.')});
        row("format and font don't count", "[b][size=large][hr][/hr]", {line('_')});
        row("alignment doesn't count and stays", "[right][hr][/hr]x",
            {line('_'), plain("x", "T0R")});
        row("text between the tags", "[hr]x[/hr]", {line('_'), plain("x")});
        row("value ends on the slash", "[hr=dashed/][/hr]", {line('_')});
    }

    void linesAreDrawn()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    void lineComesBeforeTheTextBeingGathered()
    {
        QCOMPARE(described(parsed("text[hr][/hr]")),
                 (QStringList{plain(QString(32, '_'), "T0C"), plain("text")}));
        QCOMPARE(
            described(parsed("[center]text[/center][hr][/hr]more")),
            (QStringList{plain("text", "T0C"), plain(QString(32, '_'), "T0C"), plain("more")}));
    }

    void lineIsAsLongAsTheReceiptIsWide()
    {
        BbCodeParser parser;
        for (const int width : {17, 42, 255}) {
            parser.setSymbolsPerLine(static_cast<unsigned char>(width));
            parser.parseText("[hr /]");
            QCOMPARE(parser.blocks().first().text(), QStringList(QString(width, '_')));
        }
        parser.setSymbolsPerLine(0);
        parser.parseText("[hr /]");
        QCOMPARE(described(parser.blocks()), QStringList("T0C \"\"  "));
    }

    void narrowReceiptIndentsItsBlocks()
    {
        BbCodeParser parser;
        parser.setSymbolsPerLine(3);
        parser.parseText("[b]x\ny[/b][hr /]");
        QCOMPARE(
            described(parser.blocks()),
            (QStringList{"T0C \"   ___\" 000000 000000", "T0L \"   x|   y\" 0000|0000 0001|0001"}));
        parser.setSymbolsPerLine(16);
        parser.parseText("[/b]x");
        QCOMPARE(parser.blocks().first().text(), QStringList(QString(16, ' ') + "x"));
        parser.setSymbolsPerLine(17);
        parser.parseText("x");
        QCOMPARE(parser.blocks().first().text(), QStringList("x"));
    }

    void narrowReceiptIndentsTheCodeToo()
    {
        BbCodeParser parser;
        parser.setSymbolsPerLine(2);
        parser.parseText("[barcode]1[/barcode]");
        QCOMPARE(parser.blocks().size(), 2);
        QCOMPARE(parser.blocks().first().barcode(), QByteArray("  1"));
        QCOMPARE(parser.blocks().last().text(), QStringList("  "));
    }

    void codesBecomeBlocks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        // "MTIz" is the Base64 text of "123".
        row("barcode", "[barcode]123[/barcode]", {"B7L \"MTIz\" 000 000", blankLine});
        row("QR code", "[qrcode]123[/qrcode]", {"Q0L \"MTIz\" 000 000", blankLine});
        row("upper case", "[BARCODE]123[/BARCODE]", {"B7L \"MTIz\" 000 000", blankLine});
        row("empty barcode", "[barcode][/barcode]x", {plain("x")});
        row("empty QR code", "[qrcode][/qrcode]x", {plain("x")});
        row("two lines", "[qrcode]a\nb[/qrcode]", {"Q0L \"YQpi\" 0|0 0|0", blankLine});
        row("first line end goes", "[qrcode]\n123[/qrcode]", {"Q0L \"MTIz\" 000 000", blankLine});
        row("UTF-8 payload", "[qrcode]ж[/qrcode]", {"Q0L \"0LY=\" 0 0", blankLine});
        row("centred", "[center][barcode]123[/barcode][/center]x",
            {"B7C \"MTIz\" 000 000", "T0C \"\"  ", plain("x")});
        row("present font and format", "[b][size=large][barcode]123[/barcode]",
            {"B7L \"MTIz\" 333 111", blankLine});
        row("style at the closing tag counts", "[barcode][b]1[/b]23[/barcode]",
            {"B7L \"MSAyMw==\" 0000 0000", blankLine});
        row("text before and behind", "x[barcode]123[/barcode]y",
            {plain("x"), "B7L \"MTIz\" 000 000", blankLine, plain("y")});
        row("barcode closed as a QR code", "[barcode]123[/qrcode]",
            {"B7L \"123\" 000 000", blankLine});
        row("QR code closed as a barcode", "[qrcode]123[/barcode]",
            {"Q0L \"123\" 000 000", blankLine});
        row("closing alone makes a blank line", "x[/barcode]y",
            {plain("x"), blankLine, plain("y")});
        row("closing alone without text", "[/barcode][/qrcode]", {});
        row("never closed", "[barcode]123", {"B7L \"123\" 000 000"});
        row("QR code in a barcode", "[barcode]1[qrcode]2[/qrcode]3",
            {"B7L \"1\" 0 0", "Q0L \"Mg==\" 0 0", blankLine, plain("3")});
        row("cut by an alignment", "[barcode]1[center]2[/center]3[/barcode]",
            {"B7C \"1 2\" 000 000", "B7L \"Mw==\" 0 0", blankLine});
        row("padded by a field", "[barcode][field zerofill=3]7[/field][/barcode]",
            {"B7L \"MDA3\" 000 000", blankLine});
        row("line in a barcode", "[barcode][hr /]1[/barcode]",
            {plain(QString(32, '_'), "T0C"), "B7L \"MQ==\" 0 0", blankLine});
        row("column in a barcode", "[barcode]1[column]2[/column][/barcode]",
            {"B7L \"1\" 0 0", "B7L \"2\" 0 0"});
    }

    void codesBecomeBlocks()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    void codesHandOutTheirPayload()
    {
        const QList<DocumentBlock> barcode = parsed("[barcode]4600000000017[/barcode]");
        QVERIFY(barcode.first().isBarcode());
        QCOMPARE(barcode.first().barcode(), QByteArray("4600000000017"));
        QVERIFY(barcode.last().isText());
        const QList<DocumentBlock> code = parsed("[qrcode]t=20260101\ns=1[/qrcode]");
        QVERIFY(code.first().isQrCode());
        QCOMPARE(code.first().qrCode(), QByteArray("t=20260101\ns=1"));
    }

    void codeClosedByTheOtherTagHasNoPayload()
    {
        const QList<DocumentBlock> blocks = parsed("[barcode]123[/qrcode]x");
        QCOMPARE(blocks.size(), 3);
        QCOMPARE(blocks.at(0).type(), DocumentBlock::BlockBarcode);
        QCOMPARE(blocks.at(0).text(), QStringList("123"));
        QCOMPARE(blocks.at(2).type(), DocumentBlock::BlockText);
        QCOMPARE(int(blocks.at(2).barCodeType()), 0);
    }

    void whatIsLeftOpenGoesOn_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &first, const QString &second,
                            const QStringList &blocks) {
            QTest::newRow(name) << first << second << blocks;
        };
        row("format", "[b]x", "y", {"T0L \"y\" 0 1"});
        row("font", "[size=large]x", "y", {"T0L \"y\" 3 0"});
        row("alignment doesn't", "[right]x", "y", {plain("y")});
        row("alignment doesn't without text", "[right]", "y", {plain("y")});
        row("barcode", "[barcode]", "1", {"B7L \"1\" 0 0"});
        row("QR code", "[qrcode]", "1[/qrcode]", {"Q0L \"MQ==\" 0 0", blankLine});
        row("field", "[field width=3]", "x", {plain("x  ")});
        row("column", "[column width=3]x", "y\nz", {plain("y  |z  ")});
        row("line", "[hr=dashed]", "[/hr]", {plain(QString(32, '-'), "T0C")});
        row("image", "[img]", "[/img]", {blankLine});
        row("text doesn't", "x", "y", {plain("y")});
        row("blocks don't", "[hr /]x", "", {});
    }

    void whatIsLeftOpenGoesOn()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QStringList, blocks);
        BbCodeParser parser;
        parser.parseText(first);
        parser.parseText(second);
        QCOMPARE(described(parser.blocks()), blocks);
    }

    void documentCarriesTheBlocksAndItsActions()
    {
        BbCodeParser parser;
        parser.parseText("[b]x[/b][barcode]1[/barcode]");
        const TextPrinterDocument document = parser.document();
        QCOMPARE(document.blocks(), parser.blocks());
        QCOMPARE(int(document.currentTicketAction()), 5);
        QCOMPARE(int(document.prevTicketAction()), 4);
        QCOMPARE(int(document.loopPolicy()), 0);
        QCOMPARE(document.doInit(), false);
        QCOMPARE(document.retractionTimeout(), 0);
        QCOMPARE(document.symbolsPerLine(), 0);
        QVERIFY(document.charImages().isEmpty());
    }

    void unknownNamesAreLogged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<QStringList>>("words");
        using Words = QList<QStringList>;
        QTest::newRow("opening tag") << "[Foo]x" << Words{{"foo"}};
        QTest::newRow("closing tag") << "x[/Foo]" << Words{{"foo"}};
        QTest::newRow("both") << "[foo]x[/foo]" << Words{{"foo"}, {"foo"}};
        QTest::newRow("parameter") << "[b Foo=Bar]x" << Words{{"foo", "bar"}};
        QTest::newRow("two parameters") << "[b y=1 x=2]" << Words{{"x", "2"}, {"y", "1"}};
        QTest::newRow("unknown tag with its value") << "[foo=1]" << Words{{"foo"}, {"foo", "1"}};
        QTest::newRow("known key in an unknown tag") << "[foo size=large]x" << Words{{"foo"}};
        QTest::newRow("known tags are quiet")
            << "[center][left][right][b][i][u][hr][img][column][barcode][qrcode][field]"
               "[/field][/qrcode][/barcode][/column][/img][/hr][/u][/i][/b][/right][/left]"
               "[/center][/size]"
            << Words{};
        QTest::newRow("known keys are quiet")
            << "[b size=huge hr=x width=x align=x zerofill=x name=x]" << Words{};
        QTest::newRow("bad tag is quiet") << "[foo!]" << Words{};
    }

    void unknownNamesAreLogged()
    {
        QFETCH(QString, text);
        QFETCH(QList<QStringList>, words);
        const LogCatcher log;
        parsed(text);
        const QStringList lines = log.lines();
        QCOMPARE(lines.size(), words.size());
        for (int i = 0; i < lines.size(); ++i) {
            QVERIFY2(lines.at(i).startsWith("default warning "), qPrintable(lines.at(i)));
            for (const QString &word : words.at(i))
                QVERIFY2(lines.at(i).contains(word), qPrintable(lines.at(i)));
        }
    }

    void openingSizeLogsAWarning()
    {
        const LogCatcher log;
        const QList<DocumentBlock> blocks = parsed("[SIZE=LARGE]x[/size]");
        QCOMPARE(described(blocks), QStringList("T0L \"x\" 3 0"));
        QCOMPARE(log.lines().size(), 1);
        QVERIFY(log.lines().first().contains("size"));
    }

    void greatTextsAreParsed_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("tags left open") << "[b]";
        QTest::newRow("pieces of text") << "[b]x[/b]";
        QTest::newRow("cut-off tags") << "[b a=b ";
        QTest::newRow("parameters that nest") << "[b size=large]x";
        QTest::newRow("brackets") << "[";
        QTest::newRow("blocks") << "[center]x[/center]";
        QTest::newRow("codes") << "[barcode]1[/barcode]";
        QTest::newRow("lines") << "[hr /]x";
        QTest::newRow("fields") << "[field width=255]x[/field]";
    }

    void greatTextsAreParsed()
    {
        QFETCH(QString, unit);
        const QuietLog quiet;
        BbCodeParser parser;
        parser.parseText(unit.repeated(500000 / unit.size()) + "end");
        QVERIFY(!parser.blocks().isEmpty());
        QVERIFY(parser.blocks().last().text().last().endsWith("end"));
    }
};

QTEST_GUILESS_MAIN(TestBbCodeParser)
#include "tst_bbcodeparser.moc"
