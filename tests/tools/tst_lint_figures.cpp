#include <QtTest>

#include "lintrun.h"

using lintrun::addTemplates;
using lintrun::blank;
using lintrun::checkPlaces;
using lintrun::json;
using lintrun::lint;
using lintrun::row;

namespace {

/// Checked with one value, as JSON has it.
void valued(const char *name, const char *text, const char *value, const char *places)
{
    row(name, text, json("{'attributes': {'CODE': ") + json(value) + json(", 'ZERO': 0}}"), "",
        places);
}

/// Checked with two values.
void calculated(const char *name, const char *text, const char *first, const char *second,
                const char *places)
{
    row(name, text,
        json("{'attributes': {'COUNTED': ") + json(first) + json(", 'EXPECTED': ") + json(second) +
            json("}}"),
        "", places);
}

}  // namespace

/// Rules about figures that are others on paper than in the document.
class TestLintFigures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doubleSign_data()
    {
        addTemplates();
        valued("a minus and a minus", "Off<S>-<CODE,0.00>", "'-1.43'", "1:8 double-sign");
        valued("a plus and a minus", "Points<S>+<CODE>", "-5", "1:11 double-sign");
        valued("in a group", "[Off<S>-<CODE,0.00>]", "'-1.43'", "1:9 double-sign");
        valued("at the line's begin", "-<CODE,0>", "-5", "1:2 double-sign");
        valued("behind a bracket", "(-<CODE,0>)", "-5", "1:3 double-sign");
        valued("the typesetter's minus", "Off \xE2\x88\x92<CODE,0.00>", "'-1.43'",
               "1:6 double-sign");
        valued("a result", "Off -<CODE*2,0.00>", "'-1.43'", "1:6 double-sign");
        valued("of a text", "Off -<CODE>", "'-10 %'", "1:6 double-sign");
        valued("one sign", "Off<S>-<CODE,0.00>", "'1.43'", "");
        valued("that of the value", "Off<S><CODE,0.00>", "'-1.43'", "");
        valued("the sign is lost", "Off<S>-<abs(CODE),0.00>", "'-0.43'", "");
        valued("apart", "Off - <CODE,0.00>", "'-1.43'", "");
        valued("a hyphen of a word", "T-<CODE>", "-5", "");
        valued("from one number to another", "<ZERO>-<CODE>", "-5", "");
        valued("a rule", "---<CODE>", "-5", "");
        valued("a text", "-<CODE>", "'-x'", "");
        valued("both of the value", "<CODE>", "'--5'", "");
        valued("gone with its group", "[Off<S>-<CODE,0.00><ZERO>]", "'-1.43'", "");
    }
    void doubleSign() { checkPlaces(); }

    void doubleSignSaysHowThereIsOne()
    {
        const auto messageOf = [](const char *text, const char *value) {
            return lintrun::lint(text, {},
                                 json("{'attributes': {'CODE': ") + json(value) + json("}}"))
                .output;
        };
        QCOMPARE(
            messageOf("Off<S>-<CODE,0.00>", "'-1.43'"),
            QString("t.cpt:1:8: error: \"--1.43\" has two signs, as CODE brings one of its own; "
                    "\"<abs(CODE),0.00>\" prints none [double-sign]\n"));
        QCOMPARE(messageOf("Points +<CODE>", "-5"),
                 QString("t.cpt:1:9: error: \"+-5\" has two signs, as CODE brings one of its own; "
                         "\"<abs(CODE),0>\" prints none [double-sign]\n"));
        QCOMPARE(
            messageOf("Off -<CODE>", "'-10 %'"),
            QString("t.cpt:1:6: error: \"--10 %\" has two signs, as CODE brings one of its own "
                    "[double-sign]\n"));
    }

    void lostSign_data()
    {
        addTemplates();
        calculated("of a difference", "Difference<S><COUNTED-EXPECTED>", "'885.40'", "'885.45'",
                   "1:14 lost-sign");
        calculated("of a difference in a format", "<COUNTED-EXPECTED,00.000>", "1", "1.25",
                   "1:1 lost-sign");
        calculated("kept by six digits", "<COUNTED-EXPECTED,0.E><COUNTED-EXPECTED,0.>", "'885.40'",
                   "'885.45'", "");
        calculated("from -1 on there is none to lose", "<COUNTED-EXPECTED>", "1", "2", "");
        calculated("of what is rounded to nothing", "<COUNTED-EXPECTED>", "'1.001'", "'1.002'", "");
        calculated("of what is rounded to something", "<COUNTED-EXPECTED>", "'1.001'", "'1.007'",
                   "1:1 lost-sign");
        calculated("of a positive difference", "<EXPECTED-COUNTED>", "1", "1.25", "");
        valued("of a text", "a <CODE>", "'-0.05'", "1:3 lost-sign");
        valued("of a text with a comma", "a <CODE,0.00>", "'-0,05'", "1:3 lost-sign");
        valued("of a number", "a <CODE,0.0>", "-0.5", "1:3 lost-sign");
        valued("of a number in a format without decimals", "a <CODE,0>", "-0.7", "");
        valued("in a code", "<QR>t=<CODE>", "'-0.05'", "1:7 lost-sign");
        valued("in a group that stays and in one that goes", "[<CODE>]x[<CODE><ZERO>]", "-0.5",
               "1:2 lost-sign");
        valued("in a part that is removed", "<X:><CODE><:X>", "-0.5", "");
        row("without a document", "<COUNTED-EXPECTED>x<1-2,0.00><0-1/2,0.00>", QByteArray(), "",
            "");
    }
    void lostSign() { checkPlaces(); }

    void textAsNumber_data()
    {
        addTemplates();
        valued("zeros in front", "No. <CODE>", "'007723'", "1:5 text-as-number");
        valued("zeros in front of 13 digits", "No. <CODE>", "'0093417752006'",
               "1:5 text-as-number");
        valued("zeros in front, kept by a format", "No. <CODE,000000>", "'007723'", "");
        valued("zeros in front, kept by a longer format", "No. <CODE,00000000>", "'007723'", "");
        valued("zeros in front, too few in the format", "No. <CODE,00000>", "'007723'",
               "1:5 text-as-number");
        row("zeros in front, taken off on purpose", "No. <COUNT,0>",
            json("{'attributes': {'COUNT': '007723'}}"), "", "");
        valued("zeros in front of a code, taken off", "No. <CODE,0>", "'007723'",
               "1:5 text-as-number");
        valued("no zeros to take off", "No. <CODE,0>", "'7723'", "");
        valued("zeros in front, in a code", "<QR>fp=<CODE>", "'0412345678'", "1:8 text-as-number");
        valued("zeros in front of decimals", "<CODE>x<CODE,0.00>", "'007.50'",
               "1:1 text-as-number");
        valued("nothing but zeros, which take their group along", "[No. <CODE>]", "'000'",
               "1:6 text-as-number");
        valued("nothing but zeros, in a group that goes anyway", "[No. <CODE><ZERO>]", "'000'", "");
        valued("zeros of a text that is no number", "<CODE>", "'00A7'", "");
        valued("zeros of so many digits that they stay", "<CODE>", "'0022007012345678901'", "");
        valued("a zero, and zeros behind the point", "<CODE>", "'0'", "");
        valued("zeros behind the point", "<CODE>x<CODE,0.0>", "'0.00'", "");
        valued("a whole number, with the sign of its own", "<CODE>", "'-12'", "");
        valued("decimals that are filled up", "<CODE>", "'12.5'", "");
        valued("an exponent", "<CODE>x<CODE,0.00>", "'1e5'",
               "1:1 text-as-number 1:8 text-as-number");
        valued("a code that is an exponent", "<CODE>", "'12E4'", "1:1 text-as-number");
        valued("a name that is none", "Dear <CODE>", "'Nan'", "1:6 text-as-number");
        valued("a name that takes its group along", "[Dear <CODE>]", "'nan'", "1:7 text-as-number");
        valued("infinity", "<CODE>", "'INF'", "1:1 text-as-number");
        valued("a plus", "<CODE>", "'+49'", "1:1 text-as-number");
        valued("a comma", "<CODE>", "'12,50'", "1:1 text-as-number");
        valued("a comma in a format", "<CODE,0.00>x<CODE,0.000>", "'12,50'", "");
        valued("a comma for thousands", "<CODE,0.00>", "'1,234'", "1:1 text-as-number");
        valued("a comma in a format that rounds", "<CODE,0>x<CODE,0.0>x<CODE,0.00>", "'12,50'", "");
        valued("a comma and three decimals that can be no thousands", "<CODE,0.00>x<CODE,0>",
               "'0,505'", "");
        valued("a comma and three decimals of a larger number", "<CODE,0.00>", "'1234,505'", "");
        valued("a comma and more decimals", "<CODE,0.00>", "'12,5051'", "");
        valued("a comma for thousands of a negative number", "<CODE,0>", "'-12,505'",
               "1:1 text-as-number");
        valued("a comma and a sign that is lost", "<CODE,0.0>", "'-0,75'", "1:1 lost-sign");
        valued("a comma and more than 32 bits", "<CODE,0.0>", "'3000000000,25'",
               "1:1 changed-figure");
        valued("several commas", "<CODE>", "'1,2,3'", "");
        valued("kept as it stands", "<CODE>", "'12E4<:>'", "");
        valued("in an expression", "<CODE*1,000000.>", "'007723'", "");
        valued("without a value", "<CODE>x", "''", "");
        row("without a document", "<CODE>", QByteArray(), "", "");
    }
    void textAsNumber() { checkPlaces(); }

    void textAsNumberWithoutAValue_data()
    {
        addTemplates();
        blank("whole number", "No. <AUTH,0>", "1:5 text-as-number");
        blank("decimals", "No. <AUTH,0.00>", "1:5 text-as-number");
        blank("decimals with many digits in front", "No. <AUTH,000000.00>", "1:5 text-as-number");
        blank("no digit that has to be", "No. <AUTH,#>", "1:5 text-as-number");
        blank("last part of a name", "<CARD_CODE,0><SHOP_INN,0>",
              "1:1 text-as-number 1:14 text-as-number");
        blank("small letters", "<Rrn_,0><shop_inn,0>", "1:9 text-as-number");
        blank("Cyrillic", "<ИНН,0>", "1:1 text-as-number");
        blank("in a group and in a code", "[No. <CODE,0>]x\n<QR>fp=<SIGN,0>",
              "1:6 text-as-number 2:8 text-as-number");
        blank("as many digits as it has", "<AUTH,000000><SHOP_INN,0000000000>", "");
        blank("without a format", "<AUTH><CODE><SIGN,>", "");
        blank("an amount, or a count", "<CARDS,0.00><TICKET,0.00><CODE_OFF,0><INNER,0>", "");
        blank("in an expression", "<CODE*1,0>", "");
        blank("a format of something else", "<CODE,dd.mm.yyyy>", "");
        blank("in a part that is removed", "<X:><CODE,0><:X>", "");
    }
    void textAsNumberWithoutAValue() { checkPlaces(); }

    void textAsNumberWithoutAValueIsAWarning()
    {
        QCOMPARE(
            lint("No. <AUTH,0>", {}).output,
            QString("t.cpt:1:5: warning: AUTH is a code by its name, and the format \"0\" takes "
                    "zeros off its front; one of as many zeros as it has digits, such as "
                    "\"<AUTH,000000>\", prints all of them [text-as-number]\n"));
    }

    void changedFigure_data()
    {
        addTemplates();
        valued("decimals of a text", "<CODE>", "'1.749'", "1:1 changed-figure");
        valued("decimals of a number", "<CODE>", "1.749", "1:1 changed-figure");
        valued("decimals that a program has worked out", "<CODE>", "5.33333333333", "");
        valued("decimals in a format, which rounds on purpose", "<CODE,0.00>x<CODE,0.0>x<CODE,0>",
               "'1.749'", "");
        valued("decimals that are zeros", "<CODE>", "'1.740'", "");
        valued("an expression, which is rounded", "<CODE*1>", "1.749", "");
        valued("more than 32 bits", "<CODE>x<CODE,0.0>x<CODE*1>", "'3000000000.10'",
               "1:1 changed-figure 1:8 changed-figure 1:19 changed-figure");
        valued("more than 32 bits of a number", "<CODE,0.00>", "2500000000.5",
               "1:1 changed-figure");
        valued("less than 32 bits", "<CODE>", "'2147483647.99'", "");
        valued("more than 32 bits without decimals", "<CODE,0><CODE,0.><CODE,0000>",
               "'3000000000.10'", "");
        valued("a whole number of more than 32 bits", "<CODE>", "'3000000000'", "");
        valued("more than 64 bits", "<CODE*1000>x<CODE*1000,0>", "'1000000000000000'",
               "1:1 changed-figure");
        valued("six digits", "<CODE,0.E>", "'1234567.89'", "1:1 changed-figure");
        valued("six digits that are enough", "<CODE,0.E>", "'1234.56'", "");
        valued("what has no end", "<CODE/3>x<CODE/3,0.E>", "1", "");
        row("without a document", "<CODE>x<CODE,0.E>x<CODE*1000000000000>", QByteArray(), "", "");
    }
    void changedFigure() { checkPlaces(); }

    void markupInValue_data()
    {
        addTemplates();
        valued("a tag that makes its line blank", "a <CODE>", "'Gift <X> card'",
               "1:3 markup-in-value");
        valued("a tag that makes its line bold", "a <CODE>", "'Sale <B>!'", "1:3 markup-in-value");
        valued("a column", "a <CODE>", "'T-shirt <S>'", "1:3 markup-in-value");
        valued("a character by its code", "a <CODE>", "'Bad <65> x'", "1:3 markup-in-value");
        valued("a tag that no value has", "a <CODE>", "'Gift <Special> card'",
               "1:3 markup-in-value");
        valued("brackets", "a <CODE>", "'Cola [0.5 l]'", "1:3 markup-in-value");
        valued("a bracket alone", "a <CODE>", "'Cola]'", "1:3 markup-in-value");
        valued("a tab", "a <CODE>", "'Cola\\t0.5 l'", "1:3 markup-in-value");
        valued("in a group", "[a <CODE>]", "'Cola [0.5 l]'", "1:4 markup-in-value");
        valued("in a group that goes", "[a <CODE> <ZERO>]", "'Cola [0.5 l]'", "");
        valued("a tag that leaves nothing", "a <CODE>", "'<script>'", "1:3 markup-in-value");
        valued("a tag that takes its group along", "[a <CODE>]", "'<script>'",
               "1:4 markup-in-value");
        valued("such a tag in a group that goes anyway", "[a <CODE> <ZERO>]", "'<script>'", "");
        valued("in a part and on a line that are removed", "<X:><CODE><:X>a\n<X><CODE>",
               "'Cola [0.5 l]'", "");
        valued("what is less than something", "a <CODE>", "'3 < 5'", "");
        valued("what is less than something, on two lines", "a <CODE>", "'3 < 5\\nmore'", "");
        valued("brackets on two lines", "a <CODE>", "'Cola\\n[0.5 l]'", "1:3 markup-in-value");
        valued("what is less and more than something, and so a tag", "a <CODE>",
               "'3 < 5 and 7 > 6'", "1:3 markup-in-value");
        valued("what opens no tag", "a <CODE>", "'a > b <'", "");
        valued("an equals sign outside of the entries", "a <CODE>", "'A=B=3.00'", "");
        valued("tags in front, which a program writes", "<CODE>", "'<C><B>Open on Sunday'", "");
        valued("formats, which a program writes", "<CODE>", "'Open <B:>on Sunday<:B><:>'", "");
        valued("symbols, which a program writes", "<SPECSYMBOLS=shop>\n<CODE>",
               "'Maya <#1> <#91>a<#93>'", "");
        valued("tags of values, which a program writes", "a <CODE>", "'b [<ZERO>] [c <ZERO,0>]'",
               "");
        valued("in the data of a code", "<QR>a <CODE>", "'Cola [0.5 l] <'", "");
        valued("a code, which a program writes", "<CODE>", "'<QR>https://example.org'", "");
        row("without a document", "<CODE>", QByteArray(), "", "");
    }
    void markupInValue() { checkPlaces(); }

    void markupInEntry_data()
    {
        QTest::addColumn<QByteArray>("entries");
        QTest::addColumn<QStringList>("messages");
        const auto row = [](const char *name, const char *entries, const QStringList &messages) {
            QTest::newRow(name) << QByteArray(entries) << messages;
        };
        const QString equals =
            "the entry \"A=B=3.00\" has 3 columns: each \"=\" begins one; \"--clean equals\" makes "
            "blanks of those behind the first";
        const QString separator =
            "the entry \"A=1.00%1B=3.00\" has 3 columns: each \"=\" begins one; a tab stands "
            "between two entries, and not \"%1\"";
        row("separated by line feeds", "A=1.00\\nB=3.00", {separator.arg("\\n")});
        row("separated by semicolons", "A=1.00;B=3.00", {separator.arg(";")});
        const QString brackets =
            "the entry is given as \"Cola [0.5 l]=1.00\" and prints \"Cola 0.5 l<S>1.00\": \"[\" "
            "and \"]\" make a group; \"--clean brackets\" makes \"(\" and \")\" of them";
        const QString tag =
            "the entry is given as \"Sale <B>!=2.00\" and prints \"Sale !<S>2.00\": \"<B>\" acts "
            "as in a template; \"--clean tags\" makes a blank of the \"<\"";
        row("nothing", "Tea=1.00\\tCardamom bun=2.00\\t\\tThank you", {});
        row("an equals sign", "Tea=1.00\\tA=B=3.00", {equals});
        row("brackets", "Cola [0.5 l]=1.00", {brackets});
        row("a tag", "Sale <B>!=2.00", {tag});
        row("all of them", "Sale <B>!=2.00\\tCola [0.5 l]=1.00\\tA=B=3.00",
            {tag, brackets, equals});
        row("what a program writes", "<B>Total=5.00\\t<B:>a<:B>=1.00\\t<SHOP>=2", {});
        row("the tag of the column, which the engine makes of the equals sign", "Milk<S>1.20", {});
        row("two tags of columns", "Milk<S>3<S>1.20",
            {"the entry is given as \"Milk<S>3<S>1.20\" and prints \"Milk<S>3<S>1.20\": \"<S>\" "
             "acts as in a template; \"--clean tags\" makes a blank of the \"<\""});
        row("an equals sign and the tag of a column", "Milk=3<S>1.20",
            {"the entry is given as \"Milk=3<S>1.20\" and prints \"Milk<S>3<S>1.20\": \"<S>\" "
             "acts as in a template; \"--clean tags\" makes a blank of the \"<\""});
        row("a group and the tag of a column", "Milk [1 l]<S>1.20",
            {"the entry is given as \"Milk [1 l]<S>1.20\" and prints \"Milk 1 l<S>1.20\": \"<S>\" "
             "acts as in a template; \"--clean tags\" makes a blank of the \"<\""});
        row("less than", "1 < 2", {});
        row("less than, and the tag of the column ends it", "1 < 2=yes",
            {"the entry is given as \"1 < 2=yes\" and prints \"1 yes\": \"< 2=yes\" acts as in a "
             "template; \"--clean tags\" makes a blank of the \"<\""});
    }
    void markupInEntry()
    {
        QFETCH(QByteArray, entries);
        QFETCH(QStringList, messages);
        const QByteArray document =
            json("{'attributes': {'SHOP': 'Kiosk'}, 'entries': '") + entries + json("'}");
        QStringList expected;
        for (const QString &message : messages)
            expected.append("t.cpt:2:1: error: " + message + " [markup-in-value]");
        const ReceiptRun run = lintrun::lint("a\n<ENTRIES>", {}, document);
        QCOMPARE(run.output.split('\n', Qt::SkipEmptyParts), expected);
        QCOMPARE(lintrun::lint("<X:><ENTRIES><:X>a", {}, document).output.count("markup-in-value"),
                 0);
    }

    void wrongSum_data()
    {
        addTemplates();
        const auto fuel = [](const char *name, const char *text, const char *places) {
            row(name, text,
                json("{'attributes': {'LITRES': '47.83', 'PRICE': '1.749', 'OFF': '0.02', "
                     "'TOTAL': '82.70', 'PAID': '82.70', 'FUEL': '83.65', 'LESS': '0.96', 'ROUND': "
                     "'82.69'}}"),
                "", places);
        };
        fuel("products that are summed without rounding",
             "Fuel<S><LITRES*PRICE>\nOff<S>-<LITRES*OFF>\nTotal<S><LITRES*PRICE-LITRES*OFF>",
             "3:9 wrong-sum");
        fuel("the same under another name, and on lines without columns",
             "Fuel <LITRES*PRICE>\nOff <LITRES*OFF>\n<R><LITRES*PRICE - LITRES*OFF>",
             "3:4 wrong-sum");
        fuel("the same of other expressions, by what is printed",
             "Fuel<S><LITRES*PRICE>\nOff<S>-<LITRES*OFF>\nTotal<S><LITRES*(PRICE-OFF)>",
             "3:9 wrong-sum");
        fuel("a total of the program's", "Fuel<S><FUEL>\nOff<S>-<LESS>\nTotal: <TOTAL>",
             "3:8 wrong-sum");
        fuel("a total of the program's by its name", "A<S><FUEL>\nB<S>-<LESS>\nC<S>=<TOTAL> EUR",
             "3:6 wrong-sum");
        fuel("a total that is right", "Fuel<S><FUEL>\nOff<S>-<LESS>\nTotal<S><ROUND>", "");
        fuel("parts that are rounded",
             "Fuel<S><LITRES*PRICE>\nOff<S>-<LITRES*OFF>\n"
             "Total<S><floor(LITRES*PRICE*100+0.500001)/100-floor(LITRES*OFF*100+0.500001)/100>",
             "");
        fuel("parts that aren't printed", "Fuel<S><LITRES*PRICE>\n<LITRES*PRICE-LITRES*OFF>", "");
        fuel("another figure than a total", "Fuel<S><FUEL>\nOff<S>-<LESS>\nPaid<S><PAID>", "");
        fuel("what isn't nearly the sum", "Fuel<S><FUEL>\nOff<S><LESS>\nTotal<S><TOTAL>", "");
        fuel("in a part that is removed", "Fuel<S><FUEL>\nOff<S>-<LESS>\n<X:>Total<S><TOTAL><:X>x",
             "");
        const auto listed = [](const char *name, const char *text, const char *entries,
                               const char *total, const char *places) {
            row(name, text,
                json("{'attributes': {'TOTAL': ") + json(total) + json("}, 'entries': ") +
                    json(entries) + "}",
                "", places);
        };
        listed("entries that are more", "<ENTRIES>\n---\nTotal<S><TOTAL>",
               "'Tea=3.15\\tBun=2.80\\tMilk=0.40'", "'6.02'", "3:9 wrong-sum");
        listed("entries that are the total", "<ENTRIES>\n---\nTotal<S><TOTAL>",
               "'Tea=3,15\\tBun=2,80 A\\tOffer=-0,40'", "'5.55'", "");
        listed("entries with what is no part of the sum", "<ENTRIES>\nTotal<S><TOTAL>",
               "'Tea=3.15\\tBun=2.80\\tMilk=0.40\\tVAT 20%=1.06'", "'6.35'", "");
        listed("entries with one that is taken off", "<ENTRIES>\nTotal<S><TOTAL>",
               "'Tea=3.15\\tBun=2.80\\tOffer=0.40'", "'5.55'", "");
        listed("one entry", "<ENTRIES>\nTotal<S><TOTAL>", "'Tea=3.15'", "'3.16'", "");
        listed("a sum of all above, whatever it is called",
               "<ENTRIES>\nA<S><TOTAL>\nTip<S><TOTAL/10>\nTotal<S><TOTAL*1.1+0.01>",
               "'Tea=3.00\\tBun=2.00'", "'5.00'", "4:9 wrong-sum");
        listed("figures that are no amounts", "Tea<S>3\nBun<S>2.5\nTotal<S><TOTAL>", "''", "'5.51'",
               "");
        row("without a document", "<ENTRIES>\nTotal<S><TOTAL>", QByteArray(), "", "");
        const auto entered = [&listed](const char *name, const char *entries, const char *total,
                                       const char *places) {
            listed(name, "<ENTRIES>\nTotal<S><TOTAL>", entries, total, places);
        };
        entered("a blank for thousands, which may be a column",
                "'TV=1 299,00\\tCable=10,00\\tBag=0,10'", "'1309.10'", "");
        entered("points for thousands", "'TV=1.299,00\\tCable=10,00\\tBag=0,10'", "'1309.10'", "");
        entered("points for thousands in another sum", "'TV=1.299,00\\tCable=10,00\\tBag=0,10'",
                "'1409.20'", "2:9 wrong-sum");
        entered("a minus and a blank", "'Tea=5.00\\tBun=4.00\\tOff=- 3.00'", "'6.00'", "");
        entered("a minus and a blank in another sum", "'Tea=5.00\\tBun=4.00\\tOff=- 3.00'",
                "'6.50'", "2:9 wrong-sum");
        entered("a minus behind a currency", "'Tea=5.00\\tBun=4.00\\tOff=EUR -3.00'", "'6.00'", "");
        entered("a minus in front of a currency", "'Tea=5.00\\tBun=4.00\\tOff=-$3.00'", "'6.00'",
                "");
        entered("two signs", "'Tea=5.00\\tBun=4.00\\tOff=-EUR -3.00'", "'6.50'", "");
        entered("brackets", "'Tea=5.00\\tBun=4.00\\tOff=(3.00)'", "'6.00'", "");
        entered("an open bracket behind the amount", "'Tea=5.00\\tBun=4.00\\tOff=3.00)'", "'1.00'",
                "");
        entered("brackets around what looks like rounding", "'Tea=3.15\\tBun=2.80\\tOff=(0.01)'",
                "'5.94'", "");
        entered("a minus behind", "'Tea=5,00\\tBun=4,00\\tOff=1,00-\\tOff=1,00 -'", "'7.00'", "");
        entered("a minus behind in another sum", "'Tea=5,00\\tBun=4,00\\tOff=1,00-'", "'8.50'",
                "2:9 wrong-sum");
        entered("two figures in a column", "' 2 Tea=3.15    6.30\\tBun=2.80\\tMilk=1.00'",
                "'10.10'", "");
        entered("an amount without decimals", "'Tea=3.15\\tBun=2.80\\tBag=1'", "'6.95'", "");
        entered("an amount without a column", "'Tea=3.15\\tBun=2.80\\t2 bags (0.50)'", "'6.45'",
                "");
        entered("an amount behind a dash", "'Tea=3.15\\tBun=2.80\\tOff - 0.50'", "'5.45'", "");
        entered("goods that sound like payment",
                "'Chocolate bar=1.00\\tCashew=3.00\\tPostcard=1.00\\tGift card=20.00'", "'26.00'",
                "2:9 wrong-sum");
        entered("two discounts without a sign", "'Tea=3.15\\tBun=2.80\\tOffer=0.40\\tOffer=0.40'",
                "'5.15'", "");
        entered("two discounts of other names", "'Tea=3.15\\tBun=2.80\\tСкидка=0.40\\tRabatt=0.10'",
                "'5.45'", "");
        entered("prices of a kilogram",
                "'Pears=1.99\\tPrice per kg=3.98\\tPlums=2.50\\tPrice/kg=5.00'", "'4.49'", "");
        entered("weights", "'Pears=1.99\\tScale=0.50 kg\\tPlums=2.50\\tScale=0.25 kg'", "'4.49'",
                "");
        entered("quantities", "'Pears=1.99\\tHalf=0.50\u00a0kg\\tPlums=2.50\\tCream=0.25 л'",
                "'4.49'", "");
        entered("letters of taxes and currencies",
                "'Pears=1.99 A\\tTea=€ 0.50 B\\tPlums=2.50 руб. Б\\tJam=EUR 1.00 *'", "'5.99'", "");
        entered("letters of taxes and currencies of another sum",
                "'Pears=1.99 A\\tTea=€ 0.50 B\\tPlums=2.50 руб. Б\\tJam=EUR 1.00 *'", "'6.13'",
                "2:9 wrong-sum");
        entered("discounts of another total", "'Tea=3.15\\tBun=2.80\\tOffer=0.40\\tOffer=0.40'",
                "'5.85'", "2:9 wrong-sum");
        entered("what is contained in the sum", "'Tea=3.15\\tBun=2.80\\tenthält=0.40\\tdarin=0.10'",
                "'5.95'", "");
        entered("an entry that is the sum of those above by chance",
                "'Tea=3.00\\tBun=2.00\\tCake=5.00\\tPie=1.00'", "'11.00'", "");
        entered("a sum among the entries, and what is added to it",
                "'Tea=3.15\\tBun=2.80\\tSubtotal=5.95\\tTip=1.00'", "'6.95'", "");
        entered("a sum among the entries, and another total",
                "'Tea=3.15\\tBun=2.80\\tSubtotal=5.95\\tTip=1.00'", "'7.35'", "2:9 wrong-sum");
        entered("more of them aside than can be tried",
                "'Tea=1.00\\tBun=1.00\\tOffer=0.01\\tOffer=0.02\\tOffer=0.04\\tOffer=0.08\\t"
                "Offer=0.16\\tOffer=0.32\\tOffer=0.64\\tOffer=1.28\\tOffer=2.56\\tOffer=5.12\\t"
                "Offer=10.24\\tOffer=20.48\\tOffer=40.96'",
                "'777.77'", "");
        entered("a day and a time", "'Tea=3.15\\tBun=2.80\\tParked=14.03.2026 18:05'", "'7.45'",
                "");
        entered("a long line of figures",
                ("'Tea=3.15\\tBun=2.80\\t" + QByteArray(300, '1') + "'").constData(), "'7.45'", "");
        entered("amounts of more digits than there are",
                "'Tea=12345678901234567890.00\\tBun=2.80\\tMilk=1.00'", "'7.45'", "");
        entered("digits of another script", "'Tea=3.15\\tBun=2.80\\tMilk=٣٫٠٠'", "'8.95'", "");
        entered("digits of another script with a point", "'Tea=3.15\\tBun=2.80\\tMilk=٣.٠٠'",
                "'8.95'", "");
        entered("an apostrophe for thousands", "'TV=1’299.00\\tCable=10.00\\tBag=0.10'",
                "'1309.10'", "");
        row("a line between the entries and the total",
            "<ENTRIES>\nDelivery of 500 m 2.50\nTotal<S><TOTAL>",
            json("{'attributes': {'TOTAL': '8.45'}, 'entries': 'Tea=3.15\\tBun=2.80'}"), "", "");
        row("a number in front of the entries", "Table<S>12\n<ENTRIES>\nTotal<S><TOTAL>",
            json("{'attributes': {'TOTAL': '8.45'}, 'entries': 'Tea=3.15\\tBun=2.80'}"), "",
            "3:9 wrong-sum");
    }
    void wrongSum() { checkPlaces(); }

    // Of currencies that have other decimals, and of coins that there are not.
    void sumsOfCurrencies_data()
    {
        addTemplates();
        const auto entered = [](const char *name, const char *entries, const char *tag,
                                const char *total, const char *places) {
            row(name, QByteArray("<ENTRIES>\nTotal<S>") + tag,
                json("{'attributes': {'TOTAL': ") + json(total) +
                    json(", 'PART': 2.5}, 'entries': '") + json(entries) + json("'}"),
                "", places);
        };
        entered("whole amounts", "Tea=315\\tBun=280\\tMilk=40", "<TOTAL,0>", "735", "");
        entered("whole amounts of another sum", "Tea=315\\tBun=280\\tMilk=40", "<TOTAL,0>", "799",
                "");
        entered("whole amounts and a total with decimals", "Tea=315\\tBun=280\\tMilk=40",
                "<TOTAL,0.00>", "'799.00'", "");
        entered("a whole total", "Tea=3.15\\tBun=2.80\\tMilk=0.45", "<TOTAL,0>", "6", "");
        entered("a total without coins", "Tea=3.15\\tBun=2.80\\tMilk=0.45", "<TOTAL,0.00>",
                "'6.00'", "");
        entered("a total without coins, upwards", "Tea=3.15\\tBun=2.80\\tMilk=0.45", "<TOTAL,0.00>",
                "'7.00'", "");
        entered("a total of other whole amounts", "Tea=3.15\\tBun=2.80\\tMilk=0.45", "<TOTAL,0.00>",
                "'8.00'", "2:9 wrong-sum");
        entered("a total to five hundredths", "Tea=3.15\\tBun=2.82", "<TOTAL>", "'5.95'", "");
        entered("a total to fifty hundredths", "Tea=3.15\\tBun=2.60", "<TOTAL>", "'5.50'", "");
        entered("no rounding", "Tea=3.15\\tBun=2.82", "<TOTAL>", "'6.15'", "2:9 wrong-sum");
        entered("an expression that rounds to five hundredths", "Tea=1.15\\tBun=1.36",
                "<floor(PART*20+0.500001)/20,0.00>", "0", "");
        entered("an expression that doesn't", "Tea=1.15\\tBun=1.36",
                "<floor(PART*100+0.500001)/100,0.00>", "0", "2:9 wrong-sum");
        entered("thousandths", "Tea=3.150\\tBun=2.800", "<TOTAL,0.000>", "'5.950'", "");
        entered("thousandths of another sum", "Tea=3.150\\tBun=2.800", "<TOTAL,0.000>", "'6.157'",
                "2:9 wrong-sum");
        entered("thousandths that are nearly the sum", "Tea=3.151\\tBun=2.802", "<TOTAL,0.000>",
                "'5.954'", "2:9 wrong-sum");
        entered("hundredths among thousandths", "Tea=3.150\\tBun=2.800\\tMilk=0.50",
                "<TOTAL,0.000>", "'6.451'", "");
        entered("thousandths among hundredths", "Tea=3.15\\tBun=2.80\\tMilk=0.500", "<TOTAL,0.00>",
                "'6.47'", "");
        entered("whole amounts among hundredths", "Tea=3.15\\tBun=2.80\\tMilk=1", "<TOTAL,0.00>",
                "'6.95'", "");
        entered("a number of pieces among thousandths", "Pieces=1\\tTV=1.299\\tPC=2.000",
                "<TOTAL,0.000>", "'3.300'", "");
        row("a number of pieces in front of thousandths",
            "Pieces<S>1\nTV<S>1.299\nPC<S>2.000\nTotal<S><TOTAL,0.000>",
            json("{'attributes': {'TOTAL': '3.300'}}"), "", "");
        const auto terms = [](const char *name, const char *text, const char *places) {
            row(name, text, json("{'attributes': {'AMOUNT': 1.4504, 'OTHER': 2.4504}}"), "",
                places);
        };
        terms("terms of whole amounts", "<AMOUNT,0>\n<OTHER,0>\n<AMOUNT+OTHER,0>", "3:1 wrong-sum");
        terms("terms of hundredths", "<AMOUNT,0.00>\n<OTHER,0.00>\n<AMOUNT+OTHER,0.00>", "");
        terms("terms of thousandths", "<AMOUNT,0.000>\n<OTHER,0.000>\n<AMOUNT+OTHER,0.000>",
              "3:1 wrong-sum");
        terms("terms of other decimals", "<AMOUNT,0>\n<OTHER,0.000>\n<AMOUNT+OTHER,0.000>", "");
    }
    void sumsOfCurrencies() { checkPlaces(); }

    // The cure of a message is one for its own currency.
    void curesOfSums()
    {
        const auto lint = [](const char *format) {
            return lintrun::lint(
                       QByteArray("<AMOUNT,0>\n<OTHER,0>\n<AMOUNT+OTHER,0>").replace(",0", format),
                       {}, json("{'attributes': {'AMOUNT': 1.4504, 'OTHER': 2.4504}}"))
                .output;
        };
        QVERIFY2(
            lint(",0").contains("4 is printed, and the parts of the sum are printed as 3 together"),
            qPrintable(lint(",0")));
        QVERIFY(lint(",0").contains("as in floor(A+0.500001) ["));
        QVERIFY2(lint(",0.000").contains(
                     "3.901 is printed, and the parts of the sum are printed as 3.900"),
                 qPrintable(lint(",0.000")));
        QVERIFY(lint(",0.000").contains("as in floor(A*1000+0.500001)/1000 ["));
    }

    // What may have been rounded to coins is a guess, and what the template adds up isn't.
    void severityOfWhatIsNearlyTheSum_data()
    {
        QTest::addColumn<QByteArray>("tag");
        QTest::addColumn<QString>("severity");
        QTest::newRow("of the program's") << QByteArray("<TOTAL>") << QString("warning");
        QTest::newRow("of the program's, to no coin") << QByteArray("<ODDSUM>") << QString("error");
        QTest::newRow("of an expression") << QByteArray("<TOTAL*1,0.00>") << QString("error");
    }
    void severityOfWhatIsNearlyTheSum()
    {
        QFETCH(QByteArray, tag);
        QFETCH(QString, severity);
        const ReceiptRun run = lintrun::lint(
            "Fuel<S><FUEL>\nOff<S>-0.96\nTotal<S>" + tag, {},
            json("{'attributes': {'FUEL': '83.65', 'TOTAL': '82.70', 'ODDSUM': '82.68'}}"));
        QVERIFY2(run.output.startsWith("t.cpt:3:9: " + severity), qPrintable(run.output));
        QCOMPARE(run.status, severity == "error" ? 1 : 0);
    }

    // Of amounts that are no parts of the sum, and of those that have all been understood.
    void totalsOfOtherThings_data()
    {
        addTemplates();
        for (const char *label : {"Total VAT", "Total weight", "Total savings", "Total discount",
                                  "Сумма НДС", "Сумма скидки", "Итого вес", "Summe MwSt",
                                  "Gesamtrabatt", "Total qty", "Всего кол-во", "Tax total"}) {
            const QByteArray text =
                QByteArray("<ENTRIES>\n") + label + "<S><OTHER,0.00>\nTotal<S><TOTAL,0.00>";
            const auto document = [](const char *total) {
                return json("{'attributes': {'OTHER': '1.20', 'TOTAL': '") + total +
                       json("'}, 'entries': 'Tea=3.15\\tBun=2.80\\tMilk=1.05'}");
            };
            row(label, text, document("7.00"), "", "");
            row(qPrintable(QString(label) + " of a wrong total"), text, document("7.50"), "",
                "3:9 wrong-sum");
        }
        for (const char *label : {"Total incl. VAT", "Total (incl. 20% VAT)", "Total (VAT incl.)",
                                  "Итого с НДС", "Summe inkl. MwSt", "Total including tax"})
            row(label, QByteArray("<ENTRIES>\n") + label + "<S><TOTAL,0.00>",
                json("{'attributes': {'TOTAL': '7.50'}, 'entries': "
                     "'Tea=3.15\\tBun=2.80\\tMilk=1.05'}"),
                "", "2:" + QByteArray::number(QString(label).size() + 4) + " wrong-sum");
    }
    void totalsOfOtherThings() { checkPlaces(); }

    // What the lines above are is guessed by their words.
    void wrongTotalOfEntriesIsAWarning()
    {
        const ReceiptRun run = lintrun::lint(
            "<ENTRIES>\nTotal<S><TOTAL>", {},
            json("{'attributes': {'TOTAL': '7.50'}, 'entries': 'Tea=3.15\\tBun=2.80'}"));
        QCOMPARE(run.output, QString("t.cpt:2:9: warning: 7.50 is printed, and the entries above "
                                     "add up to 5.95 [wrong-sum]\n"));
        QCOMPARE(run.status, 0);
    }

    void messageOfAWrongSum()
    {
        const QByteArray document = json(
            "{'attributes': {'LITRES': '47.83', 'PRICE': '1.749', 'TOTAL': '5.54'}, "
            "'entries': 'Tea=3.15\\tBun=2.40'}");
        QCOMPARE(
            lintrun::lint("<LITRES*PRICE>\n<LITRES/50>\n<LITRES*PRICE-LITRES/50>", {}, document)
                .output,
            QString("t.cpt:3:1: error: 82.70 is printed, and the parts of the sum are printed "
                    "as 82.69 together: each is rounded by itself, and so is the sum; round "
                    "the parts in it too, as in floor(A*100+0.500001)/100 [wrong-sum]\n"));
        QCOMPARE(lintrun::lint("<ENTRIES>\nTotal<S><TOTAL>", {}, document).output,
                 QString("t.cpt:2:9: error: 5.54 is printed, and the amounts above add up to 5.55: "
                         "where each is rounded by itself, so are the parts of the sum, as in "
                         "floor(A*100+0.500001)/100+floor(B*100+0.500001)/100 [wrong-sum]\n"));
    }

    // What --clean makes of a value or an entry, the checker has nothing to say about.
    void cleanedTextsAreFine()
    {
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<CODE>\n<ENTRIES>");
        const auto render = [&folder, &file](const QByteArray &document,
                                             const QStringList &options) {
            return runReceipt(QStringList{"render", file, folder.file("data.json", document),
                                          "--width", "30"} +
                              options)
                .output;
        };
        const auto document = [](const char *code, const char *entry) {
            return json("{'attributes': {'CODE': '") + code + json("'}, 'entries': '") + entry +
                   json("'}");
        };
        const QByteArray given = document("Gift <X> card [1]\\t", "A=[B]<B>=1.00");
        const QByteArray cleaned = document("Gift  X> card (1) ", "A=(B) B> 1.00");
        QCOMPARE(render(given, {"--clean", "all"}), render(cleaned, {}));
        QVERIFY(render(cleaned, {}).startsWith("Gift  X> card (1)"));
        QVERIFY(!lintrun::lint("<CODE>\n<ENTRIES>", {"--strict"}, given).output.isEmpty());
        QCOMPARE(lintrun::lint("<CODE>\n<ENTRIES>", {"--strict"}, cleaned).output, QString());
    }

    // With values the zero is on paper, and without them it may be.
    void zeroOfAnError()
    {
        const QByteArray document = json("{'attributes': {'PRICE': 1.5, 'COUNT': 0}}");
        const ReceiptRun filled = lintrun::lint("<PRICE/COUNT>", {}, document);
        QVERIFY2(filled.output.startsWith("t.cpt:1:1: error: "), qPrintable(filled.output));
        QCOMPARE(filled.status, 1);
        const ReceiptRun blank = lintrun::lint("<PRICE/0>", {});
        QVERIFY2(blank.output.startsWith("t.cpt:1:1: warning: "), qPrintable(blank.output));
        QCOMPARE(blank.status, 0);
    }

    void missingInAGroupIsANote_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("finding");
        const auto row = [](const char *name, const char *text, const char *finding) {
            QTest::newRow(name) << QByteArray(text) << QString(finding);
        };
        row("a name", "[Voucher <VOUCHER>]",
            "1:10: note: the document has no attribute \"VOUCHER\": with it the group goes "
            "[unknown-attribute]");
        row("a name with a format", "x[<BONUS,0.00>]",
            "1:3: note: the document has no attribute \"BONUS\": with it the group goes "
            "[unknown-attribute]");
        row("one of a row", "[<QTY3> x]",
            "1:2: note: the document has no attribute \"QTY3\": with it the group goes "
            "[unknown-attribute]");
        row("in an expression", "[<QTY1*PRICE3>]",
            "1:8: note: the document has no attribute \"PRICE3\": with it the group goes "
            "[unknown-attribute]");
        row("with its letters the wrong way round", "[<DISCUONT>]",
            "1:2: note: the document has no attribute \"DISCUONT\": with it the group goes; did "
            "you mean \"DISCOUNT\"? [unknown-attribute]");
        row("in the outer of two groups", "[a [b] <VOUCHER> c]",
            "1:8: note: the document has no attribute \"VOUCHER\": with it the group goes "
            "[unknown-attribute]");
        row("outside", "[x] <VOUCHER>",
            "1:5: error: the document has no attribute \"VOUCHER\" [unknown-attribute]");
        row("with another's value in it, which prints", "[<PRICE10*2>]",
            "1:3: error: the document has no attribute \"PRICE10\"; the value of \"PRICE1\" is put "
            "into it [unknown-attribute]");
    }
    void missingInAGroupIsANote()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, finding);
        const ReceiptRun run = lintrun::lint(
            text, {},
            json("{'attributes': {'QTY1': 2, 'PRICE1': '1.50', 'DISCOUNT': 1, 'QTY2': 1}}"));
        QCOMPARE(run.output, "t.cpt:" + finding + '\n');
        QCOMPARE(run.status, finding.contains(": error: ") ? 1 : 0);
    }

    // It goes with no group, and is missed.
    void missingNextToALonelyBracketIsAnError_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("behind one that opens none") << QByteArray("[a <VOUCHER> [b]");
        QTest::newRow("in front of one that closes none") << QByteArray("[b] <VOUCHER> c]");
    }
    void missingNextToALonelyBracketIsAnError()
    {
        QFETCH(QByteArray, text);
        const ReceiptRun run = lintrun::lint(text, {}, json("{'attributes': {'QTY': 2}}"));
        QVERIFY2(run.output.contains(
                     "error: the document has no attribute \"VOUCHER\" [unknown-attribute]"),
                 qPrintable(run.output));
        QCOMPARE(run.status, 1);
    }

    // The tag for the entries is one, and the lines that it becomes are many.
    void allThatIsWrongInTheEntriesIsTold()
    {
        const QByteArray document = json(
            "{'entries': 'A name that is far too long=1.00\\tshort=2.00\\tAnother name that is too "
            "long=3.00\\tA name that is far too long=1.00', 'attributes': {}}");
        const ReceiptRun wide = lintrun::lint("x\n<ENTRIES>", {"--width", "20"}, document);
        QCOMPARE(lintrun::placesOf(wide.output).join(' '),
                 QString("2:1 wide-line 2:1 broken-word"));
        QVERIFY(wide.output.contains("A name that is far too long 1.00"));
        QVERIFY(wide.output.contains("Another name that is too long 3.00"));
        const ReceiptRun letters =
            lintrun::lint("<ENTRIES>", {"--code-page", "cp866"},
                          QString(R"({"entries": "10 €=1.00\tMüller=2.00\t5 €=3.00"})").toUtf8());
        QCOMPARE(lintrun::placesOf(letters.output).join(' '),
                 QString("1:1 unprintable-character 1:1 unprintable-character"));
    }

    void messages_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const char *text, const char *value,
                            const char *message) {
            QTest::newRow(name) << QByteArray(text) << json(value) << QString(message);
        };
        row("zeros", "<CODE>", "'007723'",
            "CODE is given as \"007723\" and prints \"7723\": the text reads as a number, which "
            "has no zeros in front; \"<CODE,000000>\" prints all digits [text-as-number]");
        row("zeros alone", "<CODE>", "'000'",
            "CODE is given as \"000\" and prints \"0\": the text reads as a number; \"000<:>\" "
            "stays as it stands [text-as-number]");
        row("name", "<CODE>", "'Nan'",
            "CODE is given as \"Nan\" and prints \"0.00\": the text reads as a number; \"Nan<:>\" "
            "stays as it stands [text-as-number]");
        row("comma", "<CODE>", "'12,50'",
            "CODE is given as \"12,50\" and prints \"12.50\": the comma is read as a decimal "
            "point; a format, such as \"<CODE,0.00>\", says that a number is meant "
            "[text-as-number]");
        row("comma and a blank", "<CODE>", "'12,50 '",
            "CODE is given as \"12,50 \" and prints \"12.50\": the comma is read as a decimal "
            "point; a format, such as \"<CODE,0.00>\", says that a number is meant "
            "[text-as-number]");
        row("decimals", "<CODE>", "1.749",
            "CODE is 1.749 and prints \"1.75\": without a format there are two decimals; "
            "\"<CODE,0.000>\" prints all of them [changed-figure]");
        row("32 bits", "<CODE>", "'3000000000.10'",
            "CODE is given as \"3000000000.10\" and prints \"0.10\": with decimals in the format "
            "the part in front of the point has 32 bits; \"<CODE,0>\" prints it without decimals "
            "[changed-figure]");
        row("sign", "<CODE-1>", "'0.95'",
            "\"CODE-1\" is -0.05 and prints \"0.05\": in a format with decimals a number between "
            "-1 and 0 loses its sign; \"<CODE-1,0.E>\" keeps it [lost-sign]");
        row("sign of a difference that isn't exact", "<CODE-885.45>", "'885.40'",
            "\"CODE-885.45\" is -0.05 and prints \"0.05\": in a format with decimals a number "
            "between -1 and 0 loses its sign; \"<CODE-885.45,0.E>\" keeps it [lost-sign]");
        row("six digits", "<CODE,0.E>", "'1234567.89'",
            "CODE is given as \"1234567.89\" and prints \"1.23457e+06\": an \"E\" in the format "
            "gives six digits [changed-figure]");
    }
    void messages()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, value);
        QFETCH(QString, message);
        const ReceiptRun run =
            lintrun::lint(text, {}, json("{'attributes': {'CODE': ") + value + "}}");
        QCOMPARE(run.output, "t.cpt:1:1: error: " + message + '\n');
        QCOMPARE(run.status, 1);
    }

    // What a message says to write does what it says.
    void curesCure_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("printed");
        QTest::newRow("zeros") << QByteArray("<CODE,000000>") << json("'007723'") << "007723";
        QTest::newRow("text") << QByteArray("<CODE>") << json("'Nan<:>'") << "Nan";
        QTest::newRow("text in a group") << QByteArray("[<CODE>]") << json("'000<:>'") << "000";
        QTest::newRow("sign") << QByteArray("<CODE,0.E>") << json("-0.05") << "-0.05";
        QTest::newRow("decimals") << QByteArray("<CODE,0.000>") << json("'1.749'") << "1.749";
        QTest::newRow("32 bits") << QByteArray("<CODE,0>") << json("'3000000000.10'")
                                 << "3000000000";
    }
    void curesCure()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, value);
        QFETCH(QString, printed);
        const WorkFolder folder;
        const QByteArray document = json("{'attributes': {'CODE': ") + value + "}}";
        const ReceiptRun run = runReceipt({"render", folder.file("t.cpt", text),
                                           folder.file("data.json", document), "--width", "20"});
        QCOMPARE(run.output.trimmed(), printed);
        QCOMPARE(lintrun::lint(text, {"--strict"}, document).output, QString());
    }
};

QTEST_GUILESS_MAIN(TestLintFigures)
#include "tst_lint_figures.moc"
