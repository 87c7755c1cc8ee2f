#include <QtTest>

#include "lintrun.h"

using lintrun::addTemplates;
using lintrun::blank;
using lintrun::checkPlaces;
using lintrun::filled;

/// Rules about what fills a template: names, expressions, formats, and groups that vanish.
class TestLintValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unknownAttribute_data()
    {
        addTemplates();
        blank("without a document no name is unknown", "<SHOP><UNKNOWN,0.00><QTY*PRICE><(A+B)*2,0>",
              "");
        filled("the last comma alone ends a name",
               "<SHOP><QTY*PRICE><WHEN,dd.mm.yyyy><Номер><SHOP NAME><SHOP NAME,x,y>",
               "1:64 unknown-attribute");
        filled("functions and constants are no names",
               "<QTY*PRICE,0.00><SHOP,><sin QTY><pow(QTY,2),0><pi*1><e + 1>", "");
        filled("a name in an expression that begins with a known one", "<TABLE*1><QTY1*2>",
               "1:11 unknown-attribute");
        filled("a known name in small letters", "<shop>", "1:1 unknown-attribute");
        filled("in a part that is removed", "<X:><NOSUCH><QTY*><:X>x", "");
        filled("behind a part over several lines that is removed", "a<X:>\n<NOSUCH>\n<:X>b<NOSUCH>",
               "3:6 unknown-attribute");
        filled("on a line that is removed", "<X><NOSUCH><abc>", "");
        filled("in front of the tag that removes its line", "<SHPO><X>", "");
        filled("behind the text of a line that is removed", "<X>gone<SHPO>", "");
        filled("on the lines around one that is removed", "<SHPO>\n<SHPO><X><SHPO>\n<SHPO>",
               "1:1 unknown-attribute 3:1 unknown-attribute");
    }
    void unknownAttribute() { checkPlaces(); }

    void missingEntries_data()
    {
        addTemplates();
        const QByteArray none = lintrun::json("{'attributes': {'SHOP': 'Kiosk'}}");
        const auto without = [&none](const char *name, const char *text, const char *places) {
            lintrun::row(name, text, none, "", places);
        };
        without("on a line", "<SHOP>\n<ENTRIES>", "2:1 unknown-attribute");
        without("in small letters", "<entries>", "1:1 unknown-attribute");
        without("removed", "<X:><ENTRIES><:X>a", "");
        without("no tag", "<SHOP>", "");
        lintrun::row("empty ones", "<ENTRIES>", lintrun::json("{'entries': ''}"), "",
                     "1:1 unknown-attribute");
        filled("there", "<ENTRIES>", "");
        blank("not known", "<ENTRIES>", "");
    }
    void missingEntries() { checkPlaces(); }

    void missingEntriesAreAWarning()
    {
        const ReceiptRun run = lintrun::lint("<ENTRIES>", {}, "{}");
        QCOMPARE(run.output, QString("t.cpt:1:1: warning: the document has no \"entries\": a blank "
                                     "line is printed [unknown-attribute]\n"));
        QCOMPARE(run.status, 0);
    }

    void badExpression_data()
    {
        addTemplates();
        filled("a function that there isn't", "<foo(1)>", "1:2 bad-expression");
        filled("nothing in front of the format", "<,0.00>", "1:2 bad-expression");
        blank("nothing but operators", "<====><---->", "1:2 bad-expression 1:12 bad-expression");
        blank("names that look like expressions", "<Amount (EUR)><SHOP-NAME,dd.mm><VAT 20%>", "");
        blank("no end, whatever the values are", "<(1+2,0><QTY*,0>",
              "1:6 bad-expression 1:14 bad-expression");
        filled("an empty value in a group is wanted", "[<EMPTY*2>]x", "");
        filled("an empty value in a group with another in front", "[a[b]<EMPTY*2>c]x", "");
        filled("an empty value in front of a group", "<EMPTY*2>x[a]", "1:7 bad-expression");
        filled("an empty value behind a group", "[a]<EMPTY*2>]x",
               "1:10 bad-expression 1:13 unmatched-bracket");
        filled("a mistake of the author in a group", "[<QTY**PRICE>]x", "1:7 bad-expression");
    }
    void badExpression() { checkPlaces(); }

    void cutExpression_data()
    {
        addTemplates();
        blank("a decimal comma in the format", "<TOTAL,0,00>x<PRICE,0,000>x<SUM*2,0,00>",
              "1:9 cut-expression 1:22 cut-expression 1:36 cut-expression");
        filled("a decimal comma in the format, with values",
               "<TABLE,0,00>x<PRICE,0,000>x<QTY*2,0,00>",
               "1:9 cut-expression 1:22 cut-expression 1:36 cut-expression");
        filled("a decimal comma of an empty and of an unknown value",
               "[<EMPTY,0,00>]x<NOSUCH,0,00>", "1:10 cut-expression 1:17 unknown-attribute");
        blank("a format behind the commas of functions", "<pow(QTY,2),0.00><pow(pow(QTY,2),3),0>",
              "");
        filled("a format behind the commas of functions, with values",
               "<pow(QTY,2),0.00><pow(pow(QTY,2),3),0>", "");
        blank("a decimal comma in a sum of numbers", "<1,5+2><1,500.00><1234,0.00>",
              "1:3 cut-expression 1:11 value-format");
        blank("no format behind the comma of a function",
              "<ncr(5,2)><pow(A,B),0><QTY*PRICE,9.99><QTY*2,000>", "1:7 cut-expression");
        filled("no format behind a function, a comma in a number", "<pow(QTY,2)><PRICE*1,50>",
               "1:9 cut-expression 1:21 cut-expression");
    }
    void cutExpression() { checkPlaces(); }

    void divisionByZero_data()
    {
        addTemplates();
        blank("a zero in all its spellings", "<QTY/0><QTY / 0.00,0><QTY/(0)><QTY%0><1/.0>",
              "1:1 division-by-zero 1:8 division-by-zero 1:31 division-by-zero 1:38 "
              "division-by-zero");
        blank("numbers that begin with a zero",
              "<QTY/0.5><QTY/00.5,0><QTY/0^0><QTY/0 ^ 0><QTY/0e1><QTY/05>", "");
        filled("a value of zero below, not above", "<QTY/ZERO><QTY/(ZERO)><ZERO/QTY><QTY/0.5>",
               "1:1 division-by-zero 1:11 division-by-zero");
        filled("a group goes, unless the format prints no zero", "[a<QTY/ZERO>][b<QTY/ZERO,0.>]",
               "1:16 division-by-zero");
        filled("a decimal comma in a group", "[a<QTY/0,0>]", "1:3 division-by-zero");
        filled("no finite value for another reason", "<ln(ZERO)><2^5000,0><QTY%ZERO,0.0>",
               "1:1 division-by-zero 1:11 division-by-zero 1:21 division-by-zero");
        blank("in a part that is removed", "<X:><QTY/0><:X>", "");
    }
    void divisionByZero() { checkPlaces(); }

    void valueFormat_data()
    {
        addTemplates();
        blank("without a document no kind is known", "<TABLE,0.00><WHEN,hh:nn><SHOP,x>", "");
        blank("wrong for all kinds", "<PRICE,0.00 EUR>x<RATE,20%>x<OWED,+0.00>x<QTY*2,0.00 EUR>",
              "1:8 value-format 1:24 value-format 1:35 value-format 1:49 value-format");
        blank("a width, a currency in front, a colon", "<NAME,20>x<SUM1,$0.00>x<SUM1,00:00>",
              "1:7 value-format 1:17 value-format 1:30 value-format");
        blank("a number of decimals, a width", "<TOTAL,2>x<NAME,25>x<TOTAL,9.99>x<TOTAL,1x>",
              "1:8 value-format 1:17 value-format");
        blank("more decimals than nine", "<RATE,0.0000000000>x<RATE,0.000000000>",
              "1:7 value-format");
        blank("digits in the format of a date", "<WHEN,dd.mm.20yy>", "");
        blank("formats of numbers", "<A123,0.00><A123,#.##><A123,0.E><A123,0.><A123,><A123,#>", "");
        filled("numbers in formats of their kind",
               "<TABLE,0000><PRICE,0.00><PRICE,000><QTY*1,0.00><TABLE,><PRICE,#.##>", "");
        filled("dates and times in formats of their kind",
               "<AT,dd.mm.yy hh:nn><AT,hhnn><WHEN,d.m.yy><CLOSES,h:nn><AT,d/m>", "");
        filled("decimals of a whole number, a date's format for a real one",
               "<QTY,.0>x<PRICE,dd.mm>", "1:6 value-format 1:17 value-format");
        filled("a number's format for a date, hours of a date, days of a time",
               "<AT,0.00><WHEN,dd.mm hh:nn><CLOSES,dd.mm>",
               "1:5 value-format 1:16 value-format 1:36 value-format");
        filled("a text has none", "<SHOP,0.00><SHOP,x><SHOP,dd.mm.yyyy><SHOP,20>",
               "1:7 value-format 1:18 value-format 1:26 value-format 1:43 value-format");
        filled("an empty value, and one in a part that is removed",
               "<EMPTY,dd.mm.yyyy>x<X:><TABLE,0.00><:X>", "");
        filled("units, signs and letters of numbers",
               "<PRICE,0.00 EUR><PRICE,+0.00><TABLE,abc><TABLE,0%>",
               "1:8 value-format 1:24 value-format 1:37 value-format 1:48 value-format");
        filled("more decimals than nine", "<PRICE,0.0000000000>", "1:8 value-format");
        filled("of calculations", "<QTY*2,0.00 EUR><QTY*2,dd.mm><QTY*2,0.E><QTY*2,0.00>",
               "1:8 value-format 1:24 value-format");
        filled("of a zero that takes its group along", "[x <ZERO,0.00>]y\n[<SHOP> <ZERO,0.00>]",
               "");
        filled("of a zero without a group", "<ZERO,0.00>", "1:7 value-format");
        filled("of a value that isn't there", "[<EMPTY*2,0.00 EUR>]x", "");
        const QByteArray document = lintrun::json(
            "{'attributes': {'TRUE': true, 'NONE': 'n/a', 'DASH': '-', 'CARD': "
            "'2200701234567890123'}}");
        lintrun::row("truth has no format", "<TRUE,0>", document, "", "1:7 value-format");
        lintrun::row("a text in the place of a number", "<NONE,0.00><DASH,0.00><CARD,0>", document,
                     "", "");
        lintrun::row("a width of a text in the place of a number", "<NONE,20>", document, "",
                     "1:7 value-format");
    }
    void valueFormat() { checkPlaces(); }

    void dateLetters_data()
    {
        addTemplates();
        filled("capitals", "<AT,DD.MM.YYYY><AT,YYYYMMDD><WHEN,DD.mm.yy><CLOSES,hh:NN:SS>",
               "1:5 date-letters 1:20 date-letters 1:35 date-letters 1:52 date-letters");
        filled("words", "<AT,Day dd><AT,dd. of MM><AT,dd.mm at hh:nn><AT,hh:nn Uhr><AT,um hh>",
               "1:5 date-letters 1:30 date-letters 1:49 date-letters 1:63 date-letters");
        filled("halves of days", "<AT,h:n am/pm><AT,h:n AM><AT,h:nn ap><AT,h:nnAP><AT,h a>",
               "1:5 date-letters 1:19 date-letters");
        filled("years of one and of three letters", "<AT,d.m.y><AT,yyy>",
               "1:5 date-letters 1:15 date-letters");
        filled("months for minutes", "<AT,hh:mm><AT,HHMM><CLOSES,hh.mm>",
               "1:5 date-letters 1:15 date-letters 1:28 date-letters");
        filled("words without a letter of dates", "<AT,dd T><AT,UTC hh><AT,dd.mm.yyyy \u0433.>",
               "");
        filled("parts side by side", "<AT,yyyy-mm-ddThh:nn:ss.zzz><AT,ddMMyy><AT,yyyyMMddThhnnss>",
               "");
        filled("names of days and months", "<AT,dddd, d MMMM yyyy>", "1:5 comma-in-format");
        filled("words of other alphabets beside parts",
               "<AT,yyyy\u5E74mm\u6708dd\u65E5><AT,dd.mm.yyyy\u0433.>", "");
        filled("quoted words", "<AT,'Uhr' hh><AT,'am' hh><AT,dd''><AT,hh'h'nn><AT,dd 'at' hh:nn>",
               "1:18 date-letters");
        filled("a quotation mark without its end", "<AT,dd 'Uhr>", "");
        filled("letters of another alphabet beside those of parts", "<AT,d\u00E4>",
               "1:5 date-letters");
        filled("of a value that is no date", "<SHOP,DD.MM.YYYY><PRICE,hh:mm>",
               "1:7 value-format 1:25 value-format");
        blank("of what can only be a date",
              "<SALE_DT,DD.MM.YYYY><SALE_DT,hh:mm><SALE_DT,Day dd><SALE_DT,h:n am/pm>",
              "1:10 date-letters 1:30 date-letters 1:45 date-letters 1:61 date-letters");
        blank("of what needn't be one", "<SALE_DT,D><SHOP, some name><Name, Vorname><DIST,0 km>",
              "1:50 value-format");
        blank("of dates that are right", "<SALE_DT,dd.mm.yyyy hh:nn><SALE_DT,d. MMM yy><T123,hh>",
              "");
    }
    void dateLetters() { checkPlaces(); }

    void commaInFormat_data()
    {
        addTemplates();
        filled("of an attribute", "<AT,dd.mm.yyyy, hh:nn>", "1:5 comma-in-format");
        filled("of an attribute that there isn't", "<NOPE,dd.mm.yyyy, hh:nn>",
               "1:2 unknown-attribute");
        filled("in a group", "[x <WHEN,dddd, dd.mm>]", "1:10 comma-in-format");
        blank("without a document", "<SALE_DT,dd.mm.yyyy, hh:nn>", "1:10 comma-in-format");
        blank("in other tags", "<pow(QTY,2),0.00><Name, dd><A,B,C>", "1:32 cut-expression");
        blank("two commas", "<SALE_DT,dd, mm, yyyy>", "1:10 comma-in-format");
        blank("in a part that is removed", "<X:><SALE_DT,dd, mm><:X>x", "");
    }
    void commaInFormat() { checkPlaces(); }

    void guessedName_data()
    {
        addTemplates();
        blank("tags of other languages", "<BARCODE><LOGO><HR><CUT><LINE>x<L>y<L2>z<BR>",
              "1:1 guessed-name 1:10 guessed-name 1:16 guessed-name 1:20 guessed-name "
              "1:25 guessed-name 1:32 guessed-name 1:36 guessed-name 1:41 guessed-name");
        blank("with more in the tag, in small letters, closed",
              "<IMG src=a.png><ean13:123><Center></CENTER><IF QTY>",
              "1:1 guessed-name 1:16 guessed-name 1:27 guessed-name 1:35 guessed-name "
              "1:44 guessed-name");
        blank("half of a fiscal marker, and one with a mistake",
              "<FISCAL_HEAD>x<FISCAL_FOTER>x<fiscal_operation>",
              "1:1 guessed-name 1:15 guessed-name 1:30 guessed-name");
        blank("attributes of fiscal receipts",
              "<FISCAL><FISCAL_NO><FISCAL_SIGN><FISCAL_SUM><FISCAL_QR_DATA><FISCAL_DOC>"
              "<FISCAL_DATE><FISCAL_ID><FISCAL_TYPE>",
              "");
        blank("other names", "<BARCODES><CUTTER><HRS,0><IMAGES><CENTER_NAME><LINE1>", "");
        blank("in a part that is removed", "<X:><BARCODE><HR><:X>x", "");
        blank("in the data of a code", "<QR>a<HR>", "");
        const QByteArray codes =
            lintrun::json("{'attributes': {'BARCODE': '4600', 'HR': 1, 'round(2.5)': 3}}");
        lintrun::row("what the document has under the name", "<BARCODE><round(2.5)>", codes, "",
                     "");
        lintrun::row("what has a value and too short a name", "<HR>", codes, "", "1:1 short-tag");
        filled("what the document lacks", "<BARCODE><FISCAL_FOOT>",
               "1:1 guessed-name 1:10 guessed-name");
        filled("a name that may be missing in a group", "[Code <BARCODE>]\n[<CENTER>]",
               "1:7 guessed-name 2:2 guessed-name");
        blank("with a format it is an attribute", "<LEFT,dd.mm.yyyy><LINE,0><LEFT,dd.mm.yy, hh:nn>",
              "1:32 comma-in-format");
        blank("functions", "<round(QTY,2)><max(QTY,PRICE),0><QTY+min(QTY,2),0><Round (QTY)>",
              "1:2 guessed-name 1:16 guessed-name 1:38 guessed-name 1:52 guessed-name");
        filled("functions, with values", "<round(QTY)><2*max(QTY,PRICE),0>",
               "1:2 guessed-name 1:16 guessed-name");
        blank("functions that there are", "<floor(QTY)><ceil(QTY),0><sqrt(QTY)><QTY*(2)>", "");
        blank("a name in front of brackets", "<Amount max (EUR)><ROUND>", "");
        blank("comparisons", "a <SUM1>2>\n[<X:><SUM1>=2.5><:X>x]\n<SUM1,0.00>SUM2>",
              "1:3 guessed-name 2:6 guessed-name 3:1 guessed-name");
        blank("an arrow, a quotation, two brackets, a tag of the markup",
              "<SUM1> -> <SUM2>\n<SUM1> > 2\n<SUM1>>\n<SUM1>kg>\n<B>2>", "");
    }
    void guessedName() { checkPlaces(); }

    /// Each is a little less than it is written, and a format rounds it up all the same.
    void adviceForRoundRoundsAsAFormatDoes_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("printed");
        QTest::newRow("0.285") << "0.285*1"
                               << "0.29";
        QTest::newRow("1.15*0.5") << "1.15*0.5"
                                  << "0.58";
        QTest::newRow("1.005") << "1.005*1"
                               << "1.01";
        QTest::newRow("0.57*0.5") << "0.57*0.5"
                                  << "0.29";
        QTest::newRow("1.45*0.7") << "1.45*0.7"
                                  << "1.02";
        QTest::newRow("below a half") << "1.0049*1"
                                      << "1.00";
        QTest::newRow("whole") << "3*1"
                               << "3.00";
    }
    void adviceForRoundRoundsAsAFormatDoes()
    {
        QFETCH(QString, expression);
        QFETCH(QString, printed);
        const QString message = lintrun::lint("<round(QTY)>", {}).output;
        const QRegularExpression formula("floor\\(x\\*100\\+0.5[0-9]*\\)/100");
        const QString advice =
            formula.match(message).captured().replace('x', '(' + expression + ')');
        QFile page(PRINTERSLIB_EXAMPLES "/../docs/template-authors.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        auto advices = formula.globalMatch(QString::fromUtf8(page.readAll()));
        int count = 0;
        for (; advices.hasNext(); ++count)
            QCOMPARE(advices.next().captured().replace('x', '(' + expression + ')'), advice);
        QVERIFY(count > 1);
        const QString line = QString("<%1,0.00> <%2,0.00>").arg(expression, advice);
        const WorkFolder folder;
        const ReceiptRun run = runReceipt(
            {"render", folder.file("t.cpt", line.toUtf8()), folder.file("d.json", "{}")});
        QCOMPARE(run.output, QString("%1 %1\n").arg(printed));
    }

    void hiddenTag_data()
    {
        addTemplates();
        blank("right behind the group", "[<AAAA>]<BBBB>", "1:9 hidden-tag");
        blank("a blank behind the group", "[<AAAA>] <BBBB>", "");
        blank("nearer than the value is to its bracket", "[ab<AAAA>]x<BBBB>", "1:12 hidden-tag");
        blank("as far as the value is from its bracket", "[ab<AAAA>]xyz<BBBB>", "");
        blank("markup", "[ab<AAAA>]<C>", "");
        blank("tags inside the group", "[<AAAA> <BBBB>] x <CCCC>", "");
        blank("a group inside another", "[a[b<AAAA>]c<BBBB>]", "1:13 hidden-tag");
        filled("by a value of zero", "[<SHOP> <ZERO>] <QTY*1>", "1:17 hidden-tag");
        filled("by a value that this time isn't zero", "[<SHOP> <DOCNO>] <QTY*1>",
               "1:18 hidden-tag");
        filled("on a line that is removed", "<X>[<EMPTY>]<SHOP>", "");
        filled("on a line that is removed, and on the next",
               "<X>[ab<ZERO>]<SHOP>\n[ab<ZERO>]<SHOP>", "2:11 hidden-tag");
    }
    void hiddenTag() { checkPlaces(); }

    void endlessValue_data()
    {
        addTemplates();
        filled("a value that names itself", "a\nb <LOOP>", "2:3 endless-value");
        filled("a value that names itself twice", "<GROWS>", "1:1 endless-value");
    }
    void endlessValue() { checkPlaces(); }
};

QTEST_GUILESS_MAIN(TestLintValues)
#include "tst_lint_values.moc"
