#include <QtTest>

#include "lintrun.h"
#include "templatelint.h"

using lintrun::addTemplates;
using lintrun::blank;
using lintrun::blankWith;
using lintrun::checkPlaces;
using lintrun::filled;
using lintrun::filledWith;

/// Texts in BBCode that are given to the checker of templates.
class TestLintBbCode : public QObject
{
    Q_OBJECT

    static QString repeated(const char *text, int count) { return QString(text).repeated(count); }

private Q_SLOTS:
    void isRecognised_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isBbCode");
        const auto row = [](const char *text, bool is) {
            QTest::newRow(text) << QString(text) << is;
        };
        row("[b]Total[/b]", true);
        row("[CENTER]Total", true);
        row("[hr /]", true);
        row("[img name=logo][/img]", true);
        row("[b]<SHOP>[/b]", true);
        row("[qr]https://a.b[/qr]", true);
        row("[Foo=1]x[/foo]", true);
        row("[kg]x[/g]", false);
        row("[b]Total", false);
        row("[Discount <DISCOUNT>]", false);
        row("<C>[u]Total[/u]", false);
        row("[/b]\n<ENTRIES>", false);
        row("[/b]\n<FISCAL_QR>", false);
        row("Cola [0.5 l]", false);
        row("", false);
    }
    void isRecognised()
    {
        QFETCH(QString, text);
        QFETCH(bool, isBbCode);
        QCOMPARE(templatelint::isBbCode(text.split('\n')), isBbCode);
    }

    void tagsInTemplates_data()
    {
        addTemplates();
        blank("each", "<C>[center]a[/center]", "1:4 bbcode-in-template 1:13 bbcode-in-template");
        blank("with a key", "<B>[size=large]a", "1:4 bbcode-in-template");
        blank("a group's own letters", "<C>[b <SHOP>]", "");
        blank("removed", "<C>a<X:>[/b]<:X>", "");
        blank("in a code", "<QR>[/b]", "");
        blank("hardly a template", "[hr /]\n[center]a[/center][center]b[/center]\n<Entries>",
              "3:1 bbcode-in-template");
        blank("hardly a template, with values", "[center]<SHOP>[/center]\n[hr /][hr /][hr /]<B>x",
              "2:19 bbcode-in-template");
        blank("as much a template", "[hr /][hr /][hr /][hr /]<C>x",
              "1:1 bbcode-in-template 1:7 bbcode-in-template 1:13 bbcode-in-template "
              "1:19 bbcode-in-template");
    }
    void tagsInTemplates() { checkPlaces(); }

    void aTextInBbCodeThatCountsAsATemplateSaysWhy()
    {
        QCOMPARE(
            lintrun::lint("[hr /][hr /][hr /][hr /][hr /]\n<ENTRIES>", {}).output,
            QString("t.cpt:2:1: warning: \"<ENTRIES>\" is markup of templates: with it the text "
                    "counts as a template, and its tags of BBCode print without their brackets "
                    "[bbcode-in-template]\n"));
    }

    void names_data()
    {
        addTemplates();
        blank("a tag, opened and closed", "[b]x[/b]\n[bold]y[/bold]",
              "2:1 bbcode-name 2:8 bbcode-name");
        blank("capitals", "[B]x[/B][SIZE=LARGE]y[/SIZE]", "");
        blank("a key", "[img src=logo][/img]", "1:1 bbcode-name 1:1 missing-picture");
        blank("a size", "[size=huge]x[/size]", "1:1 bbcode-name");
        blank("a line", "[hr=double /]", "1:1 bbcode-name");
        blank("an alignment", "[field width=3 align=middle]x[/field]", "1:1 bbcode-name");
        blank("a width", "[field width=300]x[/field]", "1:1 bbcode-name");
        blank("the widest", "[field width=255]x[/field]", "");
        blank("no number", "[field width=wide]x[/field]", "1:1 bbcode-name");
        blank("two in a tag", "[field width=a zerofill=b]x[/field]",
              "1:1 bbcode-name 1:1 bbcode-name");
        blank("a width of nothing", "[b width=3]x[/b]", "1:1 bbcode-name");
        blank("digits of a column", "[column zerofill=3]x[/column]", "1:1 bbcode-name");
        blank("a key in an open field", "[field][b width=3]x[/b][/field]", "");
        blank("a name outside of a picture", "[b name=x]y[/b]", "1:1 bbcode-name");
        blank("a closing tag with a key", "[b]x[/b][/b=x]", "1:9 bbcode-name 1:9 bbcode-open");
        blank("brackets of a text", "[b]x[/b] ][ [] [ 0.5 l]", "");
    }
    void names() { checkPlaces(); }

    void beginningOfANameIsCompleted()
    {
        const QString output = lintrun::lint("[qr]x[/qr]", {}).output;
        QVERIFY2(output.contains("no tag \"qr\"; did you mean \"qrcode\"?"), qPrintable(output));
    }

    void malformed_data()
    {
        addTemplates();
        blank("quotation marks", "[hr /][img name=\"logo\"][/img]",
              "1:7 bbcode-as-text 1:24 bbcode-open");
        blank("no end", "[hr /][b", "1:7 bbcode-as-text");
        blank("a blank in front", "[hr /][ b]", "1:7 bbcode-as-text");
        blank("a blank behind the slash", "[hr /][b]x[/ b]", "1:7 bbcode-open 1:11 bbcode-as-text");
        blank("no name of a tag", "[hr /][x!]", "");
        blank("behind letters of two units", "[hr /]\xF0\x9F\x99\x82\xD0\x96[b!",
              "1:10 bbcode-as-text");
    }
    void malformed() { checkPlaces(); }

    void open_data()
    {
        addTemplates();
        blank("a format", "[hr /]\n [b]x", "2:2 bbcode-open");
        blank("a format that opens twice", "[b]x[b]y[/b]", "1:1 bbcode-open");
        blank("what isn't open", "x[/center]", "1:2 bbcode-open");
        blank("a line", "[hr=dashed]x", "1:1 bbcode-open");
        blank("a picture", "[img name=logo]x", "1:1 bbcode-open");
        blank("a code that the other closes", "[barcode]1[/qrcode]",
              "1:1 bbcode-open 1:11 bbcode-open");
        blank("over lines", "[center]a\nb\n[/center]", "");
    }
    void open() { checkPlaces(); }

    void lostTagsAreErrors()
    {
        QCOMPARE(lintrun::lint("[hr]", {}).status, 1);
        QCOMPARE(lintrun::lint("[qrcode]x", {}).status, 1);
        QCOMPARE(lintrun::lint("[img name=logo]", {}).status, 1);
        QCOMPARE(lintrun::lint("[center]x", {}).status, 0);
    }

    void crossed_data()
    {
        addTemplates();
        blank("formats", "[b][i]x[/b][/i]", "1:8 bbcode-crossed");
        blank("nested", "[b][i]x[/i][/b]", "");
        blank("the same in itself", "[b][b]x[/b][/b]", "");
        blank("three", "[b][i][u]x[/b][/i][/u]", "1:11 bbcode-crossed 1:15 bbcode-crossed");
        blank("one that is never closed crosses none", "[center][b]x[/center]", "1:9 bbcode-open");
        blank("behind one another", "[b]x[/b][i]y[/i]", "");
    }
    void crossed() { checkPlaces(); }

    // What the document holds is another's text, and no tag.
    void markupInValues_data()
    {
        addTemplates();
        const auto valued = [](const char *name, const char *text, const char *value,
                               const char *places) {
            lintrun::row(name, QByteArray("[hr /]") + text,
                         lintrun::json("{'attributes': {'CODE': '") + value +
                             lintrun::json("', 'SHOP': 'Kiosk', 'EMPTY': ''}}"),
                         "", places);
        };
        valued("a tag that opens", "[b]<CODE>[/b]", "Sale [b]!",
               "1:7 bbcode-open 1:10 markup-in-value");
        valued("a tag that closes", "[b]<CODE>[/b]", "Sale [/b]!",
               "1:10 markup-in-value 1:16 bbcode-open");
        valued("a line", "<CODE>", "Sale [hr /]!", "1:7 markup-in-value");
        valued("a line alone", "<CODE>", "[hr /]", "1:7 markup-in-value");
        valued("a tag that there isn't, which vanishes", "<CODE>", "Gift [card]",
               "1:7 markup-in-value");
        valued("tags that there aren't, which vanish", "<CODE>", "[x]Gift[/x]",
               "1:7 markup-in-value");
        valued("tags that a program writes", "<CODE>", "[center][b]Open[/b][/center]", "");
        valued("one that a program writes, and one that it doesn't", "<CODE>", "[b]Open[/b] [i]",
               "1:7 markup-in-value");
        valued("two that meet", "<CODE>x<CODE>", "[b]a[/i]",
               "1:7 markup-in-value 1:14 markup-in-value");
        valued("brackets that are no tag", "<CODE>", "Cola [0.5 l] ][", "");
        valued("a tag that prints as it stands", "<CODE>", "Cola [b!", "");
        valued("the end of a tag of the text", "[field width=<CODE>]x[/field]", "3]5",
               "1:20 markup-in-value");
        valued("in a tag", "[field width=<CODE>]x[/field]", "3", "");
        valued("a tag of a template that there isn't", "<CODE>", "Gift <Special> card",
               "1:7 markup-in-value");
        valued("a tag of a value that there is", "<CODE>", "Come to <SHOP>", "");
        valued("a short tag of a template, which prints", "<CODE>", "Sale <B> 3 < 5", "");
        valued("a bracket behind letters of two units", "<CODE>", "\xF0\x9F\x99\x82 [b]",
               "1:7 markup-in-value");
        valued("an empty one", "<CODE><EMPTY>", "", "");
        blank("without a document", "[hr /]<CODE>", "");
    }
    void markupInValues() { checkPlaces(); }

    void messageOfMarkupInAValue()
    {
        const ReceiptRun run = lintrun::lint(
            "[hr /]<SHOP>", {}, lintrun::json("{'attributes': {'SHOP': 'Sale [b]!'}}"));
        QCOMPARE(
            run.output,
            QString("t.cpt:1:7: error: SHOP is given as \"Sale [b]!\": \"[b]\" acts as a tag of "
                    "BBCode; \"--clean brackets\" makes \"(\" and \")\" of its brackets "
                    "[markup-in-value]\n"));
        QCOMPARE(run.status, 1);
    }

    // What a message says to do leaves the text as it is given.
    void cleanedValuesAreFine()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.bbcode", "[hr /]<SHOP>");
        const QString data = folder.file(
            "data.json", lintrun::json("{'attributes': {'SHOP': 'Sale [b] <Special>!'}}"));
        const ReceiptRun filled = runReceipt({"fill", text, data, "--clean", "tags,brackets"});
        QCOMPARE(filled.output, QString("[hr /]Sale (b)  Special>!\n"));
        QCOMPARE(lintrun::lint("[hr /]<SHOP>", {"--strict"},
                               lintrun::json("{'attributes': {'SHOP': 'Sale (b)  Special>!'}}"))
                     .output,
                 QString());
    }

    void severityOfCrossing()
    {
        QVERIFY(lintrun::lint("[b][i]x[/b][/i]", {}).output.contains(": note: "));
        QVERIFY(lintrun::lint("[b][center]x[/b][/center]", {}).output.contains(": warning: "));
    }

    void pictures_data()
    {
        addTemplates();
        blank("there", "[img name=logo][/img]", "");
        blank("in capitals", "[IMG NAME=LOGO][/IMG]", "");
        blank("missing, each", "[img name=none][/img]\n[img name=none][/img]",
              "1:1 missing-picture 2:1 missing-picture");
        blank("no picture", "[img name=plain.json][/img]", "1:1 missing-picture");
        blank("no name", "[img][/img]", "1:1 missing-picture");
        blank("two fit", "[img name=tw][/img]", "1:1 ambiguous-picture");
        blank("another comes in front", "[img name=twin][/img]", "1:1 ambiguous-picture");
        blank("by its ending", "[img name=twin.png][/img]", "");
        blank("wildcards are meant", "[img name=tw*][/img]", "");
        blankWith("--images FOLDER/none", "no folder", "[img name=logo][/img]", "");
        filled("a name of a value", "[img name=<SHOP>][/img]", "1:1 missing-picture");
        blank("a name of no known value", "[img name=<SHOP>][/img][field width=<DOCNO>]x[/field]",
              "");
    }
    void pictures()
    {
        QFETCH(QString, options);
        if (options.isEmpty()) {
            checkPlaces();
            return;
        }
        const ReceiptRun run = lintrun::lint("[hr /]", options.split(' '));
        QCOMPARE(run.status, 2);
        QVERIFY(run.errors.contains("--images"));
    }

    void codes_data()
    {
        addTemplates();
        blank("ASCII", "[barcode]Ab 12[/barcode][qrcode]Straße[/qrcode]", "");
        blank("no ASCII", "[barcode]\xD0\x96[/barcode]", "1:1 unencodable-code");
        blank("none", "[barcode][/barcode]\n[qrcode][/qrcode]",
              "1:1 unencodable-code 2:1 unencodable-code");
        blank("of values", "[barcode]<SHOP>[/barcode]", "");
        filled("of a value that is empty", "[qrcode]<EMPTY>[/qrcode]", "1:1 unencodable-code");
        filled("of a value", "[qrcode]<SHOP>[/qrcode]", "");
        filled("of a template, without data", "<QR><EMPTY>", "1:1 unencodable-code");
        filled("of a template", "<QR><SHOP>", "");
        filledWith("--as text", "no codes in text", "a<EMPTY>", "");
        blankWith("--model NP_F209_2D", "too wide for the paper",
                  "[barcode]0A1B2C3D4E5F6G7H8I9J0A1B2C3D4E5F6G7H8I9J[/barcode]",
                  "1:1 unencodable-code");
    }
    void codes() { checkPlaces(); }

    void qrCodesEndAt2953Bytes()
    {
        const QByteArray most(2953, 'x');
        QCOMPARE(lintrun::lint("[qrcode]" + most + "[/qrcode]", {}).output, QString());
        QVERIFY(lintrun::lint("[qrcode]" + most + "x[/qrcode]", {})
                    .output.contains("[unencodable-code]"));
    }

    void largeText_data()
    {
        addTemplates();
        blankWith("--model TSP-TUP", "no larger font", "[size=large]x[/size][size=middle]y[/size]",
                  "1:1 small-large-text 1:21 small-large-text");
        blankWith("--model TSP-TUP", "normal text", "[size=normal]x[/size][size=small]y[/size]",
                  "");
        blankWith("--model CUSTOM_VKP_80", "a larger font", "[size=large]x[/size]", "");
        blankWith("--model CUSTOM_VKP_80 --font 3", "as large as the base font",
                  "[size=large]x[/size]", "1:1 small-large-text");
        blankWith("--width 30", "no model", "[size=large]x[/size]", "");
    }
    void largeText() { checkPlaces(); }

    void lines_data()
    {
        addTemplates();
        blankWith("--width 20", "too wide", "[b]x[/b]\n=====================", "2:1 wide-line");
        blankWith("--width 20", "as wide as the paper", "[b]x[/b]\n====================", "");
        blankWith("--width 20", "a rule", "[hr /]", "");
        blankWith("--width 20", "a broken number", "[b]x[/b]\n12345 12345 12345 12345",
                  "2:1 broken-word");
        blankWith("--model CUSTOM_VKP_80", "large text",
                  "a\n[size=large]=============================[/size]", "2:1 wide-line");
        blankWith("--width 20", "a column", "[column width=21]x[/column]", "1:1 wide-line");
        blankWith("--width 20 --as html", "HTML", "[b]x[/b]=====================", "");
        blankWith("--width 20", "a value without data", "[b]<SHOP>[/b]", "");
        filledWith("--width 18", "a value", "[b]== == == == == == <SHOP>[/b]", "1:1 wide-line");
    }
    void lines() { checkPlaces(); }

    void characters_data()
    {
        addTemplates();
        blankWith("--code-page cp866", "in the text", "[b]5 \xE2\x82\xAC[/b]",
                  "1:6 unprintable-character");
        blankWith("--code-page cp866", "printed as others",
                  "[b]\xC2\xAB"
                  "a\xC2\xBB \xE2\x80\x93[/b]",
                  "");
        blankWith("--code-page cp866", "in a code", "[qrcode]\xE2\x82\xAC[/qrcode]", "");
    }
    void characters() { checkPlaces(); }

    void valuesAreCheckedAsInTemplates_data()
    {
        addTemplates();
        filled("unknown", "[b]<SHPO>[/b]", "1:4 unknown-attribute");
        filled("known", "[b]<SHOP>[/b]", "");
        blank("a comma", "[b]<SALE_DT,dd.mm.yyyy, hh:nn>[/b]", "1:13 comma-in-format");
    }
    void valuesAreCheckedAsInTemplates() { checkPlaces(); }

    void shortTags_data()
    {
        addTemplates();
        blank("of a name", "[b]<PAN>[/b]", "1:4 short-tag");
        blank("in a code", "[qrcode]<ID>[/qrcode]", "1:9 short-tag");
        blank("of a field with a width", "[field width=16]\n<PAN>[/field]", "2:1 short-tag");
        blank("long enough", "[b]<PAN,>[/b]", "");
        blank("a comparison", "[b]1 < a > 0[/b]", "");
        filled("with a value", "[b]<A1>[/b]", "1:4 short-tag");
    }
    void shortTags() { checkPlaces(); }

    void aValueThatIsNeverPutInIsAnError()
    {
        for (const char *text : {"[b]<A1>[/b]", "a <A1>"}) {
            QCOMPARE(lintrun::lint(text, {}, lintrun::sale()).status, 1);
            QCOMPARE(lintrun::lint(text, {}).status, 0);
        }
        QCOMPARE(lintrun::lint("a <B2>", {}, lintrun::sale()).status, 0);
    }

    void zerofill_data()
    {
        addTemplates();
        blank("a number", "[field zerofill=4]7[/field]", "");
        blank("a number between blanks", "[field zerofill=4] 7 [/field]", "");
        blank("zeros in front", "[field zerofill=4]007[/field]", "");
        blank("less than zero", "[field zerofill=4]-7[/field]", "");
        blank("as long as the digits", "[field zerofill=4]47114711[/field]", "");
        blank("of 32 bits and more", "[field zerofill=4]4711471147[/field]", "");
        blank("nothing", "[field zerofill=4][/field]", "");
        blank("a code with a letter", "[field zerofill=4]A12[/field]", "1:19 changed-figure");
        blank("an amount", "[field zerofill=4]1.5[/field]", "1:19 changed-figure");
        blank("a plus", "[field zerofill=4]+7[/field]", "1:19 changed-figure");
        blank("with a width", "[field width=9 align=right zerofill=6]x[/field]",
              "1:39 changed-figure");
        blank("in a format", "[field zerofill=4][b]x[/b][/field]", "1:22 changed-figure");
        blank("two lines", "[field zerofill=4]1\nx[/field]", "1:19 changed-figure");
        blank("without digits to fill", "[field zerofill=0]x[/field][field width=4]x[/field]", "");
        blank("behind the field", "[field zerofill=4]1[/field]x", "");
        blank("a value that isn't known", "[field zerofill=4]<SHOP>[/field]", "");
        filled("a value", "[field zerofill=4]<SHOP>[/field]", "1:19 changed-figure");
        filled("a value that is a number", "[field zerofill=4]<DOCNO>[/field]", "");
    }
    void zerofill() { checkPlaces(); }

    void zerofillSaysWhatIsPrinted()
    {
        QCOMPARE(lintrun::lint("[field zerofill=6]A12[/field]", {}).output,
                 QString("t.cpt:1:19: error: \"zerofill\" takes whole numbers alone, and prints "
                         "\"000000\" for \"A12\" [changed-figure]\n"));
    }

    // What the field fills up again isn't lost.
    void zerosOfAField_data()
    {
        addTemplates();
        const QByteArray code = lintrun::json("{'attributes': {'CODE': '000042'}}");
        const auto filledUp = [&code](const char *name, const char *text, const char *places) {
            lintrun::row(name, text, code, "", places);
        };
        filledUp("all", "[field zerofill=6]<CODE>[/field]", "");
        filledUp("more", "[field zerofill=7]<CODE>[/field]", "");
        filledUp("not all", "[field zerofill=5]<CODE>[/field]", "1:19 text-as-number");
        filledUp("beside it", "[field zerofill=6]1[/field]<CODE>", "1:28 text-as-number");
        lintrun::row("no digits", "[field zerofill=9]<CODE>[/field]",
                     lintrun::json("{'attributes': {'CODE': '12E4'}}"), "", "1:19 changed-figure");
    }
    void zerosOfAField() { checkPlaces(); }

    // "<:>" is text in BBCode.
    void aTextThatIsNoNumberIsKeptByATagOfBbCode()
    {
        const QByteArray document = lintrun::json("{'attributes': {'CODE': '12E4'}}");
        QVERIFY(lintrun::lint("[b]<CODE>[/b]", {}, document)
                    .output.contains("\"12E4[b][/b]\" stays as it stands"));
        QVERIFY(lintrun::lint("<CODE>", {}, document)
                    .output.contains("\"12E4<:>\" stays as it stands"));
    }

    void wideFields_data()
    {
        addTemplates();
        blank("text behind it", "[field width=4]abcde[/field]x", "1:16 wide-field");
        blank("another field behind it", "a\n[field width=4]abcde[/field][field width=2]x[/field]",
              "2:16 wide-field");
        blank("a format between", "[field width=4]abcde[/field][b]x[/b]", "1:16 wide-field");
        blank("a format in it", "[field width=4][b]abcde[/b][/field]x", "1:19 wide-field");
        blank("as wide as its text", "[field width=5]abcde[/field]x", "");
        blank("with blanks around", "[field width=5] abcd [/field]x", "1:16 wide-field");
        blank("each piece is padded", "[field width=4]abc[b]abc[/b][/field]x", "");
        blank("a piece in front of another", "[field width=4]abcde[b]x[/b][/field]",
              "1:16 wide-field");
        blank("two lines", "[field width=4]abcde\nx[/field]x", "");
        blank("the last of the line", "[field width=4]abcde[/field] \nx", "");
        blank("the last of the text", "[field width=4]abcde[/field]", "");
        blank("the last of the block", "[left][field width=4]abcde[/field][/left]x", "");
        blank("no width", "[field align=right]abcde[/field]x", "");
        blank("a width of nothing", "[field width=0]abcde[/field]x", "");
        blank("a value that isn't known", "[field width=4]<SHOP>[/field]x", "");
        blank("too much beside such a value", "[field width=4]abcde<SHOP>[/field]x",
              "1:16 wide-field");
        filled("a value", "[field width=4]<SHOP>[/field]x", "1:16 wide-field");
        filled("a value that fits", "[field width=5]<SHOP>[/field]x", "");
    }
    void wideFields() { checkPlaces(); }

    void wideFieldsAreToldWithTheirWidth()
    {
        QCOMPARE(lintrun::lint("[field width=4]abcde[/field]x", {}).output,
                 QString("t.cpt:1:16: warning: \"abcde\" takes 5 characters, and the field has 4: "
                         "what stands behind it is moved [wide-field]\n"));
    }

    void copies_data()
    {
        addTemplates();
        const QByteArray copy = lintrun::json("{'attributes': {'DOCNO': 7}, 'isCopy': true}");
        lintrun::row("a copy", "[b]x[/b]", copy, "", "1:1 no-copy-mark");
        lintrun::row("with its number", "[b]<DOCNO>[/b]", copy, "", "1:1 no-copy-mark");
        const QByteArray marked =
            lintrun::json("{'attributes': {'COPY_MARK': 'COPY', 'NO_COPY': ''}, 'isCopy': true}");
        lintrun::row("that a value tells", "[b]<COPY_MARK>[/b]", marked, "", "");
        lintrun::row("that no value tells", "[b]x[/b]", marked, "", "1:1 no-copy-mark");
        lintrun::row("that an empty value tells", "[b]<NO_COPY>[/b]", marked, "",
                     "1:1 no-copy-mark");
        filled("an original", "[b]<DOCNO>[/b]", "");
        blank("nothing is known", "[b]<DOCNO>[/b]", "");
    }
    void copies() { checkPlaces(); }

    void doubleSigns_data()
    {
        addTemplates();
        const QByteArray sold = lintrun::json("{'attributes': {'FEE1': '-1.20', 'PAID': '3.00'}}");
        lintrun::row("two", "[b]-<FEE1,0.00>[/b]", sold, "", "1:5 double-sign");
        lintrun::row("one", "[b]-<PAID,0.00><FEE1>[/b]", sold, "", "");
        lintrun::row("in a code", "[qrcode]-<FEE1>[/qrcode]", sold, "", "");
    }
    void doubleSigns() { checkPlaces(); }

    void examplesAreClean_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("coupon") << QStringList{example("coupon.bbcode"), "--images",
                                               example("images")};
        QTest::newRow("event") << QStringList{example("gallery/event.bbcode")};
        QTest::newRow("parking") << QStringList{example("gallery/parking.bbcode")};
        QTest::newRow("parking, filled") << QStringList{example("gallery/parking.bbcode"), "--data",
                                                        example("gallery/parking.json")};
    }
    void examplesAreClean()
    {
        QFETCH(QStringList, arguments);
        const ReceiptRun run =
            runReceipt(QStringList{"lint", "--strict", "--model", "CUSTOM_VKP_80"} + arguments);
        QCOMPARE(run.output, QString());
        const bool lacksData = arguments == QStringList(example("gallery/parking.bbcode"));
        QCOMPARE(run.errors, lacksData ? lintrun::lackOfData() : QString());
        QCOMPARE(run.status, 0);
    }

    // What is deep or long is read to its end.
    void hugeTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nested") << repeated("[b]", 20000) + repeated("[/b]", 20000);
        QTest::newRow("crossed") << repeated("[b]", 5000) + repeated("[i]", 5000) +
                                        repeated("[/b]", 5000) + repeated("[/i]", 5000);
        QTest::newRow("codes") << repeated("[qrcode]", 20000) + repeated("[/qrcode]", 20000);
        QTest::newRow("open") << repeated("[", 200000) + "[hr /]";
        QTest::newRow("keys") << "[hr" + repeated(" a=b", 50000) + " /]";
    }
    void hugeTexts()
    {
        QFETCH(QString, text);
        templatelint::Options options;
        options.paper = templatelint::Paper{32, {}, QString(), true};
        const auto findings = templatelint::lint({text, "[/center]"}, options);
        QVERIFY(!findings.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLintBbCode)
#include "tst_lint_bbcode.moc"
