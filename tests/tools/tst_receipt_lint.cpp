#include <QDirIterator>
#include <QtTest>

#include "receiptprogram.h"
#include "templatelint.h"

class TestReceiptLint : public QObject
{
    Q_OBJECT

private:
    static QByteArray json(const char *text) { return QByteArray(text).replace('\'', '"'); }

    static QByteArray sale()
    {
        return json(
            "{'attributes': {'SHOP': 'Kiosk', 'DOCNO': 7, 'QTY': 2, 'PRICE': 1.5, 'ZERO': 0, "
            "'A1': 5, 'EMPTY': '', 'WHEN': {'date': '2026-03-14'}, 'TAGGED': '<B:>x', "
            "'ENDED': 'x<:B>', 'REMOVES': '<:X>', 'GROUP': 'a]', 'GUEST': 'Maya <#3>', "
            "'AT': {'datetime': '2026-03-14T18:05:30'}, 'CLOSES': {'time': '18:05:30'}, "
            "'Номер': 12, 'SHOP NAME': 'Kiosk', 'LOOP': '<LOOP>', 'GROWS': '<GROWS><GROWS>'}, "
            "'entries': 'Cash=10\\tChange=2.50'} ");
    }

    /// Runs the checker in a folder that has the files of symbols, and a document.
    static ReceiptRun lint(const QByteArray &templateText, const QStringList &options,
                           const QByteArray &document = QByteArray())
    {
        const WorkFolder folder;
        QFile::copy(example("symbols/shop.ssi"), folder.path("shop.ssi"));
        folder.file("damaged.ssi",
                    "<SpecialSymbolImages><Font Width=\"2\" Height=\"1\"><Symbol Code=\"1\">"
                    "<Line>111</Line></Symbol></Font></SpecialSymbolImages>");
        folder.file("broken.ssi", "<SpecialSymbolImages>\n  <Font></Fnt>");
        QStringList arguments{"lint", folder.file("t.cpt", templateText)};
        if (!document.isEmpty())
            arguments += {"--data", folder.file("data.json", document)};
        ReceiptRun run = runReceipt(arguments + options);
        run.output.remove(folder.path("") + '/');
        run.errors.remove(folder.path("") + '/');
        return run;
    }

    /// The findings as "line:column rule".
    static QStringList placesOf(const QString &output)
    {
        QStringList places;
        const QRegularExpression finding("^t\\.cpt:(\\d+:\\d+): .* \\[([a-z-]+)\\]$");
        for (const QString &line : output.split('\n', Qt::SkipEmptyParts)) {
            const auto match = finding.match(line);
            places.append(match.hasMatch() ? match.captured(1) + ' ' + match.captured(2) : line);
        }
        return places;
    }

private Q_SLOTS:
    void everyRuleSpeaksOnItsWrongExampleOnly_data()
    {
        QTest::addColumn<QString>("name");
        for (const templatelint::Rule &rule : templatelint::rules())
            QTest::newRow(rule.name) << QString(rule.name);
    }
    void everyRuleSpeaksOnItsWrongExampleOnly()
    {
        QFETCH(QString, name);
        const templatelint::Rule *rule = templatelint::findRule(name);
        const QStringList options = QString(rule->arguments).split(' ', Qt::SkipEmptyParts);
        const ReceiptRun wrong = lint(rule->wrong, options, rule->document);
        const QStringList places = placesOf(wrong.output);
        QCOMPARE(places.size(), 1);
        QVERIFY2(places.first().endsWith(' ' + name), qPrintable(wrong.output));
        QVERIFY2(wrong.output.contains(": " + templatelint::nameOf(rule->severity) + ": "),
                 qPrintable(wrong.output));
        QCOMPARE(wrong.errors, QString());
        QCOMPARE(wrong.status, rule->severity == templatelint::Severity::Error ? 1 : 0);
        const ReceiptRun strict =
            lint(rule->wrong, options + QStringList("--strict"), rule->document);
        QCOMPARE(strict.status, rule->severity == templatelint::Severity::Note ? 0 : 1);
        const ReceiptRun right =
            lint(rule->right, options + QStringList("--strict"), rule->document);
        QCOMPARE(right.output, QString());
        QCOMPARE(right.status, 0);
    }

    void everyRuleIsExplained_data() { everyRuleSpeaksOnItsWrongExampleOnly_data(); }
    void everyRuleIsExplained()
    {
        QFETCH(QString, name);
        const templatelint::Rule *rule = templatelint::findRule(name);
        const ReceiptRun run = runReceipt({"lint", "--explain", name});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, QString());
        QVERIFY(run.output.startsWith(name + " (" + templatelint::nameOf(rule->severity) + "): "));
        QVERIFY(run.output.contains(rule->why));
        for (const char *sample : {rule->wrong, rule->right}) {
            for (const QString &line : QString::fromUtf8(sample).split('\n'))
                QVERIFY2(run.output.contains("\n    " + line + '\n'), qPrintable(run.output));
        }
        QVERIFY(runReceipt({"lint", "--help"}).output.contains("\n  " + name + ' '));
    }

    void unknownRulesAreWrongUsage()
    {
        const ReceiptRun near = runReceipt({"lint", "--explain", "hiden-tag"});
        QCOMPARE(near.errors, QString("receipt: --explain: there is no rule \"hiden-tag\"; did you "
                                      "mean \"hidden-tag\"?\n"));
        QCOMPARE(near.status, 2);
        const ReceiptRun far = runReceipt({"lint", "--explain", "x"});
        QCOMPARE(far.errors,
                 QString("receipt: --explain: there is no rule \"x\"; see \"receipt lint "
                         "--help\"\n"));
        QCOMPARE(far.status, 2);
    }

    void messages_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("withSale");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("finding");
        const auto row = [](const char *name, const char *text, bool withSale, const char *options,
                            const char *finding) {
            QTest::newRow(name) << QByteArray(text) << withSale
                                << QString(options).split(' ', Qt::SkipEmptyParts)
                                << QString::fromUtf8(finding);
        };
        row("nearest name", "<SHPO>", true, "",
            "1:1: error: the document has no attribute \"SHPO\"; did you mean \"SHOP\"? "
            "[unknown-attribute]");
        row("no near name", "<ADDRESS>", true, "",
            "1:1: error: the document has no attribute \"ADDRESS\" [unknown-attribute]");
        row("Cyrillic letters", "x<SНОР>", true, "",
            "1:2: error: the document has no attribute \"SНОР\"; did you mean \"SHOP\", in Latin "
            "letters? [unknown-attribute]");
        row("unknown name in an expression", "<QTY*PRCE,0.00>", true, "",
            "1:6: error: the document has no attribute \"PRCE\"; did you mean \"PRICE\"? "
            "[unknown-attribute]");
        row("name with another's value in it", "<A10*2>", true, "",
            "1:2: error: the document has no attribute \"A10\"; the value of \"A1\" is put into it "
            "[unknown-attribute]");
        row("expression, its place", "Sum <QTY**PRICE>", true, "",
            "1:10: error: the expression \"QTY**PRICE\" can't be read from \"*\" on; with its "
            "values it is \"2**1.5\" [bad-expression]");
        row("expression without its end", "<QTY*(PRICE,0.00>", true, "",
            "1:12: error: the expression \"QTY*(PRICE\" ends too early; with its values it is "
            "\"2*(1.5\" [bad-expression]");
        row("decimal comma", "<PRICE*1,2>", true, "",
            "1:9: error: the last comma cuts the expression: \"PRICE*1\" is calculated, and \"2\" "
            "is its format [cut-expression]");
        row("decimals of a whole number", "Paid <DOCNO,0.00>", true, "",
            "1:13: warning: the format \"0.00\" is for real numbers, and the value is a whole one: "
            "it prints \"0007\" [value-format]");
        row("division by zero", "Each <PRICE/ZERO>", true, "",
            "1:6: warning: the expression \"PRICE/ZERO\", with its values \"1.5/0\", divides by "
            "zero "
            "or has no finite value for another reason: it prints \"0.00\" [division-by-zero]");
        row("division by zero for any values", "Each <PRICE/0>", false, "",
            "1:6: warning: the expression \"PRICE/0\" divides by zero [division-by-zero]");
        row("markup in a code", "<QR>a<B>", false, "",
            "1:6: warning: \"<B>\" is no markup in the data of a QR code: it goes into the code "
            "[markup-in-qr]");
        row("month for minutes", "<AT,dd.MM.yyyy HH:mm>", true, "",
            "1:5: warning: in \"dd.MM.yyyy HH:mm\" the \"m\" behind the hours is the month, and "
            "minutes are \"n\": it prints \"14.03.2026 18:03\" [value-format]");
        row("HTML habit", "a</b>", false, "",
            "1:2: warning: \"</b>\" prints as it stands; did you mean \"<:B>\"? "
            "[markup-spelling]");
        row("Cyrillic markup", "<С>x", false, "",
            "1:1: warning: \"<С>\" prints as it stands; did you mean \"<C>\"? [markup-spelling]");
        row("line spacing in small letters", "a<ls1>", false, "",
            "1:2: warning: \"<ls1>\" prints as it stands; did you mean \"<LS1>\"? "
            "[markup-spelling]");
        row("line spacing that there isn't", "a<ls8>", false, "",
            "1:2: warning: \"<ls8>\" prints as it stands; did you mean \"<LS0>\"? "
            "[markup-spelling]");
        row("file of symbols in small letters", "<specsymbols=Shop a>", false, "",
            "1:1: warning: \"<specsymbols=Shop a>\" counts as an attribute; did you mean "
            "\"<SPECSYMBOLS=Shop a>\"? [markup-spelling]");
        row("no such tag", "a</C>", false, "",
            "1:2: warning: \"</C>\" prints as it stands: there is no such tag "
            "[markup-spelling]");
        row("alignment with a colon", "a<:C>", false, "",
            "1:2: warning: \"<:C>\" prints as it stands; did you mean \"<C>\"? "
            "[markup-spelling]");
        row("font without drawings", "<SPECSYMBOLS=shop>\n<#1>", false,
            "--model GENERAL_EPSON_PROTOCOL",
            "2:1: warning: the symbol 1 is blank: font 0 of GENERAL_EPSON_PROTOCOL with 60 mm "
            "paper takes no drawings [undrawn-symbol]");
        row("swallowed tag", "Total <SHOP <QTY*1>", true, "",
            "1:7: warning: \"<\" has no \">\" before the next \"<\": \"<SHOP <QTY*1>\" is read as "
            "one tag [unterminated-tag]");
        row("model's paper", "<W2>0123456789012345678901234567890", true, "--model CUSTOM_VKP_80",
            "1:1: warning: the line \"0123456789012345678901234567890\" takes 620 dots, and "
            "CUSTOM_VKP_80 with 80 mm paper has 512 [wide-line]");
        row("symbol too big for the model", "<SPECSYMBOLS=shop>\n<#1>", false, "--model AV_268",
            "2:1: warning: the symbol 1 has no drawing that fits the 8 x 16 dots of a character of "
            "AV_268 with 60 mm paper [undrawn-symbol]");
        row("broken file of symbols", "<SPECSYMBOLS=broken>", false, "",
            "1:1: error: the file \"broken.ssi\" is damaged: 2:15: Opening and ending tag "
            "mismatch.; see \"receipt symbols\" [damaged-symbol-file]");
    }
    void messages()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, withSale);
        QFETCH(QStringList, options);
        QFETCH(QString, finding);
        const ReceiptRun run = lint(text, options, withSale ? sale() : QByteArray());
        QCOMPARE(run.output, "t.cpt:" + finding + '\n');
        QCOMPARE(run.errors, QString());
    }

    void places_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("withSale");
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("places");
        const auto row = [](const char *text, bool withSale, const char *options,
                            const char *places) {
            QTest::newRow(QByteArray(text) + (withSale ? " with values " : " ") + options)
                << QByteArray(text) << withSale << options << places;
        };
        const auto blank = [&row](const char *text, const char *places) {
            row(text, false, "", places);
        };
        const auto filled = [&row](const char *text, const char *places) {
            row(text, true, "", places);
        };
        // Attributes and expressions. "" is silence.
        blank("<SHOP><UNKNOWN,0.00><QTY*PRICE><(A+B)*2,0>", "");
        filled("<SHOP><QTY*PRICE><WHEN,dd.mm.yyyy><Номер><SHOP NAME><SHOP NAME,x,y>",
               "1:64 unknown-attribute");
        filled("<QTY*PRICE,0.00><SHOP,9><sin QTY><pow(QTY,2),0><pi*1><e + 1>", "");
        filled("<DOCNO*1><QTY1*2>", "1:11 unknown-attribute");
        filled("<foo(1)>", "1:2 bad-expression");
        filled("<shop>", "1:1 unknown-attribute");
        filled("<,0.00>", "1:2 bad-expression");
        // A decimal comma in the format.
        blank("<TOTAL,0,00>x<PRICE,0,000>x<SUM*2,0,00>",
              "1:9 cut-expression 1:22 cut-expression 1:36 cut-expression");
        filled("<DOCNO,0,00>x<PRICE,0,000>x<QTY*2,0,00>",
               "1:9 cut-expression 1:22 cut-expression 1:36 cut-expression");
        filled("[<EMPTY,0,00>]x<NOSUCH,0,00>", "1:10 cut-expression 1:17 unknown-attribute");
        filled("<pow(QTY,2),0.00><pow(pow(QTY,2),3),0>", "");
        blank("<pow(QTY,2),0.00><pow(pow(QTY,2),3),0>", "");
        blank("<====><---->", "1:2 bad-expression 1:12 bad-expression");
        blank("<Amount (EUR)><SHOP-NAME,dd.mm><VAT 20%>", "");
        blank("<(1+2,0><QTY*,0>", "1:6 bad-expression 1:14 bad-expression");
        blank("<ncr(5,2)><pow(A,B),0><QTY*PRICE,9.99><QTY*2,000>", "1:7 cut-expression");
        filled("<pow(QTY,2)><PRICE*1,50>", "1:9 cut-expression 1:21 cut-expression");
        filled("<X:><NOSUCH><QTY*><:X>x", "");
        filled("<X><NOSUCH><abc>", "");
        filled("<SHPO><X>", "");
        filled("<X>gone<SHPO>", "");
        filled("<X>[<EMPTY>]<SHOP>", "");
        filled("<X>[ab<ZERO>]<SHOP>\n[ab<ZERO>]<SHOP>", "2:11 hidden-tag");
        filled("<SHPO>\n<SHPO><X><SHPO>\n<SHPO>", "1:1 unknown-attribute 3:1 unknown-attribute");
        filled("<I>2 2 <ab></I>x", "");
        filled("a<X:>\n<NOSUCH>\n<:X>b<NOSUCH>", "3:6 unknown-attribute");
        // An empty value: wanted in a group, and a mistake of the document elsewhere.
        filled("[<EMPTY*2>]x", "");
        filled("[a[b]<EMPTY*2>c]x", "");
        filled("<EMPTY*2>x[a]", "1:7 bad-expression");
        filled("[a]<EMPTY*2>]x", "1:10 bad-expression 1:13 unmatched-bracket");
        filled("[<QTY**PRICE>]x", "1:7 bad-expression");
        // Formats and the kinds of values.
        blank("<DOCNO,0.00><WHEN,hh:mm>", "");
        filled("<DOCNO,0000><PRICE,0.00><PRICE,000><QTY*1,0.00><DOCNO,>", "");
        filled("<AT,dd.mm.yy hh:nn><AT,hhnn><WHEN,d.m.yy><CLOSES,h:nn><AT,d/m>", "");
        filled("<QTY,.0>x<PRICE,dd.mm>", "1:6 value-format 1:17 value-format");
        filled("<AT,hh:mm><AT,HHMM><CLOSES,hh.mm>",
               "1:5 value-format 1:15 value-format 1:28 value-format");
        filled("<AT,0.00><WHEN,dd.mm hh:nn><CLOSES,dd.mm>",
               "1:5 value-format 1:16 value-format 1:36 value-format");
        filled("<SHOP,0.00><SHOP,x><SHOP,dd.mm.yyyy>", "1:26 value-format");
        filled("<EMPTY,dd.mm.yyyy>x<X:><DOCNO,0.00><:X>", "");
        // Short tags and spelling.
        blank("<ABC><AB><A1><A,0><A*2><tag>",
              "1:1 short-tag 1:6 short-tag 1:10 short-tag 1:14 short-tag 1:19 short-tag "
              "1:24 short-tag");
        blank("<1+2><1x><#x>", "1:1 short-tag 1:6 markup-spelling 1:10 markup-spelling");
        filled("<A1>", "1:1 short-tag");
        blank("1 < 2 > 0, <>, <-->, <=>, <!>, a <- b", "");
        blank("<W3><C ><c><ls2><LS8><F0></B><B;>x<w2:><: B>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:12 markup-spelling "
              "1:17 markup-spelling 1:22 markup-spelling 1:26 markup-spelling 1:30 markup-spelling "
              "1:35 markup-spelling 1:40 markup-spelling");
        blank("< W2:>x<SpecSymbols=shop>", "1:1 markup-spelling 1:8 markup-spelling");
        blank("x<SPECSYMBOLS=shop>", "1:2 markup-spelling");
        blank("<F 1>x<F12><65><#65><L1><:><321>", "");
        blank("<C:><:C><:S><R:><S:>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:13 markup-spelling "
              "1:17 markup-spelling");
        blank("</C><B/><QR:><x y>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:14 markup-spelling");
        blank("1 < a > 0<:;>", "");
        blank("a<I>x", "1:2 markup-spelling");
        // Tags without an end.
        blank("a < b <", "1:7 unterminated-tag");
        blank("a < b < ", "");
        blank("a<", "1:2 unterminated-tag");
        blank("<", "1:1 unterminated-tag");
        blank("<<B>b", "1:1 unterminated-tag");
        blank("[<]", "1:2 unterminated-tag");
        blank("a<[b]", "1:2 unterminated-tag");
        blank("<QR>a<", "");
        blank("a <B", "1:3 unterminated-tag");
        blank("a < b <C>", "1:3 unterminated-tag");
        blank("<B<C>x", "1:1 unterminated-tag");
        blank("<<C>x", "1:1 unterminated-tag");
        blank("<QR>https://x?a<b", "");
        // Brackets and groups.
        blank("[a[b]", "1:1 unmatched-bracket");
        blank("a]", "1:2 unmatched-bracket");
        blank("]x[", "1:1 unmatched-bracket 1:3 unmatched-bracket");
        blank("[a <QTY]>", "1:1 unmatched-bracket 1:8 unmatched-bracket");
        blank("<#91>a<93>[b [c]]", "");
        blank("[x\ny]", "1:1 unmatched-bracket 2:2 unmatched-bracket");
        filled("[x <GROUP>", "");
        filled("[x <SHOP>", "1:1 unmatched-bracket");
        blank("[<AAAA>]<BBBB>", "1:9 hidden-tag");
        blank("[<AAAA>] <BBBB>", "");
        blank("[ab<AAAA>]x<BBBB>", "1:12 hidden-tag");
        blank("[ab<AAAA>]xyz<BBBB>", "");
        blank("[ab<AAAA>]<C>", "");
        blank("[<AAAA> <BBBB>] x <CCCC>", "");
        filled("[<SHOP> <ZERO>] <QTY*1>", "1:17 hidden-tag");
        filled("[<SHOP> <DOCNO>] <QTY*1>", "1:18 hidden-tag");
        blank("[a[b<AAAA>]c<BBBB>]", "1:13 hidden-tag");
        // Tags in each other's way.
        blank("<S>a<C><R>", "1:5 align-with-tab 1:8 align-with-tab");
        blank("<C>a<C>", "");
        blank("<S>\n<C>a", "");
        blank("<LS5>a<LS2>b<LS2>", "1:1 repeated-line-spacing");
        blank("<B:>a\n<B>b", "");
        blank("<B:>a\n<U:>b<:B>", "2:1 open-format");
        blank("<B:>a<B:>b", "1:1 open-format");
        filled("<B:>a<ENDED>", "");
        filled("a<TAGGED>", "1:2 open-format");
        filled("<B:>a<SHOP>", "1:1 open-format");
        blank("<B:><:B>a", "");
        blank("<B:><B:>a<:B>", "1:5 tag-behind-pair");
        blank("<B><B:>a", "1:4 tag-behind-pair");
        blank("<U>a<:U>", "1:1 tag-behind-pair");
        blank("a<:X>", "1:2 open-removal");
        blank("<X:>a<X:>b<:X>c<:X>", "1:16 open-removal");
        filled("<X:>a<REMOVES>b", "");
        blank("<ENTRIES>\n  <entries> \n<X:><ENTRIES><:X>", "");
        blank("[<ENTRIES>]", "1:2 entries-in-text");
        blank("a<ENTRIES>b<Entries>", "1:2 entries-in-text 1:12 entries-in-text");
        // Keywords behind letters that are more in upper case.
        blank("Stra\u00DFe <ENTRIES>", "1:8 entries-in-text 1:8 shifted-cut");
        blank("<ENTRIES>\u00DF", "1:1 entries-in-text");
        blank("stra\u00DFe <fiscal_body> x", "1:8 shifted-cut 1:8 fiscal-marker");
        row("Stra\u00DFe\nStra\u00DFe<FISCAL_BODY>", false, "--fiscal",
            "2:7 unterminated-tag 2:7 shifted-cut");
        row("a<\uFB01scal_body>b", false, "--fiscal", "1:2 shifted-cut");
        row("\u00DF<FISCAL_BODY>\n\u00DF<FISCAL_QR><FISCAL_QR>", false, "--fiscal",
            "1:2 unterminated-tag 1:2 shifted-cut 2:2 unterminated-tag 2:2 shifted-cut");
        row("<FISCAL_BODY>\u00DF<FISCAL_BODY>", false, "--fiscal", "");
        blank("Stra\u00DFe <TOTAL>\n<DOCNO>\u00DF<DOCNO>", "");
        // Files of symbols.
        blank(" <SPECSYMBOLS=none> ", "1:2 missing-symbol-file");
        blank("<SPECSYMBOLS=none>\n<SPECSYMBOLS=shop.ssi>\n<SPECSYMBOLS=shop>",
              "2:1 repeated-symbol-file 3:1 repeated-symbol-file");
        blank("<SPECSYMBOLS=none>\n<#1>", "1:1 missing-symbol-file");
        blank("<SPECSYMBOLS=shop>\n<#1><#7><1><#65>", "");
        blank("<#3>", "1:1 undrawn-symbol");
        filled("<GUEST>", "1:1 undrawn-symbol");
        row("<SPECSYMBOLS=shop>\n<#1>", false, "--model TSP-TUP", "");
        row("<SPECSYMBOLS=shop>\n<#1>", false, "--model SWECOIN_TM_20XX", "2:1 undrawn-symbol");
        row("<SPECSYMBOLS=shop>\n<#1>\n<F3><#1>", false, "--model AV_268",
            "2:1 undrawn-symbol 3:5 undrawn-symbol");
        // Forms and fiscal splits.
        row("<QR>a", false, "--as text", "1:1 qr-in-text");
        row("<QR>a", false, "--as html", "1:1 qr-in-text");
        row("<QR>a <b>", false, "--as document", "");
        blank("x <fiscal_qr> <FISCAL_QR>", "1:3 fiscal-marker 1:15 fiscal-marker");
        row("a<B:><FISCAL_QR>b<:B>", false, "--fiscal", "1:2 open-format");
        row("<SPECSYMBOLS=shop>\n<FISCAL_QR>\n<#1>", false, "--fiscal", "3:1 undrawn-symbol");
        row("  <abc> <FISCAL_BODY> <xyz>", false, "--fiscal", "1:3 short-tag 1:23 short-tag");
        // The data of QR codes.
        row("<B:>a<:B><QR>b<:B>c<#1><65><F2>", false, "",
            "1:15 markup-in-qr 1:20 markup-in-qr 1:24 markup-in-qr 1:28 markup-in-qr");
        row("<C><QR>a<QR>b", false, "", "1:9 markup-in-qr");
        row("<QR>{\"a\": [1, 2], \"b\": \"<x> 1 < 2 > 0\"}", false, "", "");
        row("<QR>[a<SHOP>]", true, "", "1:5 markup-in-qr 1:13 markup-in-qr");
        row("[x<QR>a<SHOP>]", true, "", "1:14 markup-in-qr");
        row("[x<SHOP>]<QR>a", true, "", "");
        row("<X:><QR><B>a<:X>", false, "", "");
        filled("<QR>a<TAGGED>", "1:6 markup-in-qr");
        row("<QR><B>a", false, "--as text", "1:1 qr-in-text");
        // Divisions by zero.
        row("<QTY/0><QTY / 0.00,0><QTY/(0)><QTY%0><1/.0>", false, "",
            "1:1 division-by-zero 1:8 division-by-zero 1:31 division-by-zero 1:38 "
            "division-by-zero");
        row("<QTY/0.5><QTY/00.5,0><QTY/0^0><QTY/0 ^ 0><QTY/0e1><QTY/05>", false, "", "");
        filled("<QTY/ZERO><QTY/(ZERO)><ZERO/QTY><QTY/0.5>",
               "1:1 division-by-zero 1:11 division-by-zero");
        filled("[a<QTY/ZERO>][b<QTY/ZERO,0.>]", "1:16 division-by-zero");
        filled("[a<QTY/0,0>]", "1:3 division-by-zero");
        filled("<ln(ZERO)><2^5000,0><QTY%ZERO,0.0>",
               "1:1 division-by-zero 1:11 division-by-zero 1:21 division-by-zero");
        row("<X:><QTY/0><:X>", false, "", "");
        // Paper and characters.
        row("<SHOP>123456", true, "--width 10", "1:1 wide-line");
        row("<SHOP>12345", true, "--width 10", "");
        row("<W2><SHOP>", true, "--width 9", "1:1 wide-line");
        row("<W2><SHOP>", true, "--width 9 --as text", "");
        row("<SHOP>123456", true, "--width 10 --as html", "");
        row("<SHOP>123456", false, "--width 10", "");
        row("a<S>b<S>c", true, "--width 10", "1:1 wide-line");
        row("a<S>b<S>c", true, "--width 5", "");
        row("a<S>b<S>c", true, "--width 4", "1:1 wide-line");
        row("12345678901234567890<S>12345678901234567890123456789", false, "--model CUSTOM_VKP_80",
            "");
        row("12345678901234567890<S>12345678901234567890123456789", true, "--model CUSTOM_VKP_80",
            "");
        row("1234567890123456789<S>1234567890123456789<S>12345678901", true,
            "--model CUSTOM_VKP_80", "");
        row("1234567890123456789<S>1234567890123456789<S>1234567890", true, "--model CUSTOM_VKP_80",
            "1:1 wide-line");
        // 512 dots: 51 characters of font 0, 36 of font 1, 28 of font 3.
        row("<SHOP>1234567890123456789012345678901234567890123456", true, "--model CUSTOM_VKP_80",
            "");
        row("<SHOP>1234567890123456789012345678901", true, "--model CUSTOM_VKP_80 --font 1", "");
        row("<SHOP>12345678901234567890123456789012", true, "--model CUSTOM_VKP_80 --font 1",
            "1:1 wide-line");
        row("<F1><SHOP>12345678901234567890123456789012", true, "--model CUSTOM_VKP_80 --font 1",
            "1:1 wide-line");
        row("<F4><SHOP>12345678901234567890123", true, "--model CUSTOM_VKP_80 --font 1", "");
        row("<F4><SHOP>123456789012345678901234", true, "--model CUSTOM_VKP_80 --font 1",
            "1:1 wide-line");
        row("x\n<ENTRIES>", true, "--width 7", "2:1 wide-line");
        row("a <ZERO>[<ZERO>1234567890]", true, "--width 10", "");
        row("\xE2\x84\x96 \xC2\xAB\xC2\xBB\xC2\xAB", false, "--model AV_268",
            "1:3 unprintable-character 1:4 unprintable-character");
        row("\xE2\x82\xAC", false, "", "");
        row("\xE2\x82\xAC", false, "--code-page windows-1252", "");
        row("\xD0\x96", false, "--code-page windows-1252", "1:1 unprintable-character");
        // Columns are UTF-16 units.
        row("\xF0\x9F\x98\x80<abc>", false, "--model AV_268",
            "1:1 unprintable-character 1:3 short-tag");
        // What never ends.
        filled("a\nb <LOOP>", "2:3 endless-value");
        filled("<GROWS>", "1:1 endless-value");
    }
    void places()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, withSale);
        QFETCH(QString, options);
        QFETCH(QString, places);
        const ReceiptRun run =
            lint(text, options.split(' ', Qt::SkipEmptyParts), withSale ? sale() : QByteArray());
        QCOMPARE(placesOf(run.output).join(' '), places);
        QCOMPARE(run.errors, QString());
    }

    void copyMarks_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("places");
        QTest::newRow("none") << QByteArray("a\nb") << ""
                              << "1:1 no-copy-mark";
        QTest::newRow("any case") << QByteArray("a <docno>") << ""
                                  << "";
        QTest::newRow("removed") << QByteArray("<X:>\n<DOCNO>\n<:X>a") << ""
                                 << "1:1 no-copy-mark";
        QTest::newRow("too wide") << QByteArray("<W2:>a <DOCNO>\nx<:W2>") << "--width 12"
                                  << "1:1 wide-line";
        QTest::newRow("that fits") << QByteArray("<W2:>a <DOCNO>\nx<:W2>") << "--width 20"
                                   << "";
        QTest::newRow("in a piece") << QByteArray("a\n<FISCAL_BODY>\n<DOCNO>") << "--fiscal"
                                    << "";
    }
    void copyMarks()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, options);
        QFETCH(QString, places);
        const QByteArray document =
            json("{'attributes': {'DOCNO': 1, 'docno': 1}, 'isCopy': true}");
        const ReceiptRun run = lint(text, options.split(' ', Qt::SkipEmptyParts), document);
        QCOMPARE(placesOf(run.output).join(' '), places);
    }

    void examplesAreClean_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("options");
        QTest::newRow("authors/code") << "authors/code"
                                      << "authors/code"
                                      << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/entries") << "authors/entries"
                                         << "authors/entries"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/expressions") << "authors/expressions"
                                             << "authors/expressions"
                                             << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/groups") << "authors/groups"
                                        << "authors/groups"
                                        << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/markup") << "authors/markup"
                                        << "authors/nothing"
                                        << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/removal") << "authors/removal"
                                         << "authors/nothing"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/symbols") << "authors/symbols"
                                         << "authors/nothing"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/values") << "authors/values"
                                        << "authors/values"
                                        << "--model CUSTOM_VKP_80";
        QTest::newRow("cafe") << "cafe"
                              << "cafe"
                              << "--model CUSTOM_VKP_80";
        QTest::newRow("cafe, a copy") << "cafe"
                                      << "cafe-copy"
                                      << "--width 42";
        QTest::newRow("fiscal") << "fiscal"
                                << "fiscal"
                                << "--fiscal --model CUSTOM_VKP_80";
        QTest::newRow("grocery") << "grocery"
                                 << "grocery"
                                 << "--model CUSTOM_VKP_80";
        QTest::newRow("kiosk") << "kiosk"
                               << "kiosk"
                               << "--width 30";
        QTest::newRow("tags") << "tags"
                              << "tags"
                              << "--fiscal --width 42";
    }
    void examplesAreClean()
    {
        QFETCH(QString, name);
        QFETCH(QString, document);
        QFETCH(QString, options);
        const ReceiptRun run = runReceipt(QStringList{"lint", "--strict", example(name + ".cpt"),
                                                      "--data", example(document + ".json")} +
                                          options.split(' '));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }
    // The call that the page for authors names finds nothing.
    void pageForAuthorsChecksTheExample()
    {
        QFile page(example("../docs/template-authors.md"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QRegularExpression call("`receipt (lint examples/tags\\.cpt[^`]*)`");
        const auto match = call.match(QString::fromUtf8(page.readAll()).simplified());
        QVERIFY(match.hasMatch());
        const QStringList arguments =
            match.captured(1).replace(QLatin1String("examples/"), example("")).split(' ');
        const ReceiptRun run = runReceipt(arguments + QStringList("--strict"));
        QCOMPARE(run.output + run.errors, QString());
        QCOMPARE(run.status, 0);
    }
    void everyExampleIsInTheTable()
    {
        const QStringList listed{"authors/code",
                                 "authors/entries",
                                 "authors/expressions",
                                 "authors/groups",
                                 "authors/markup",
                                 "authors/removal",
                                 "authors/symbols",
                                 "authors/values",
                                 "cafe",
                                 "fiscal",
                                 "grocery",
                                 "kiosk",
                                 "tags"};
        QStringList found;
        QDirIterator files(example(""), {"*.cpt"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            found.append(QDir(example("")).relativeFilePath(files.next()).chopped(4));
        found.sort();
        QCOMPARE(found, listed);
    }

    void findingsAreSortedInEachFile()
    {
        const WorkFolder folder;
        const QString b = folder.file("b.cpt", "x\n<abc><W3>\n<X:>");
        const QString a = folder.file("a.cpt", "<b>");
        const ReceiptRun run = runReceipt({"lint", b, a});
        QStringList places;
        for (const QString &line : run.output.split('\n', Qt::SkipEmptyParts))
            places.append(line.section(": ", 0, 1).remove(folder.path("") + '/'));
        QCOMPARE(places, (QStringList{"b.cpt:2:1: warning", "b.cpt:2:6: warning",
                                      "b.cpt:3:1: error", "a.cpt:1:1: warning"}));
        QCOMPARE(run.status, 1);
    }

    void findingsAsJson()
    {
        const ReceiptRun run = lint("a<abc>\n<FISCAL_QR>", {"--json"});
        QCOMPARE(run.status, 0);
        const QJsonArray findings = QJsonDocument::fromJson(run.output.toUtf8()).array();
        QCOMPARE(findings.size(), 2);
        const QJsonObject first = findings.at(0).toObject();
        QCOMPARE(first.keys(),
                 (QStringList{"column", "file", "line", "message", "rule", "severity"}));
        QCOMPARE(first["file"].toString(), QString("t.cpt"));
        QCOMPARE(first["line"].toInt(), 1);
        QCOMPARE(first["column"].toInt(), 2);
        QCOMPARE(first["rule"].toString(), QString("short-tag"));
        QCOMPARE(first["severity"].toString(), QString("warning"));
        QVERIFY(first["message"].toString().startsWith("\"<abc>\" prints as it stands"));
        QCOMPARE(findings.at(1).toObject()["severity"].toString(), QString("note"));
        QCOMPARE(lint("<abc>", {"--json", "--strict"}).status, 1);
        QCOMPARE(lint("clean", {"--json", "--strict"}).output, QString("[\n]\n"));
    }

    void standardInputIsATemplateOrTheDocument()
    {
        const ReceiptRun templateRun = runReceipt({"lint", "-"}, "<abc>");
        QVERIFY2(templateRun.output.startsWith("-:1:1: warning: "), qPrintable(templateRun.output));
        const WorkFolder folder;
        const ReceiptRun dataRun =
            runReceipt({"lint", folder.file("t.cpt", "<SHOP>"), "--data", "-"}, "{}");
        QVERIFY(dataRun.output.contains("[unknown-attribute]"));
        QCOMPARE(dataRun.status, 1);
    }

    void encodingOfTheTemplateIsRead()
    {
        const ReceiptRun run = runReceipt({"lint", "-", "--codec", "cp866"}, "\x88\x92<abc>");
        QVERIFY2(run.output.startsWith("-:1:3: "), qPrintable(run.output));
        const ReceiptRun bad = runReceipt({"lint", "-"}, "a\n\x88\x92");
        QCOMPARE(bad.errors, QString("receipt: -:2: this line isn't UTF-8\n"));
        QCOMPARE(bad.status, 1);
    }

    // What can be read is checked all the same.
    void filesThatCannotBeReadAreBadInput()
    {
        const WorkFolder folder;
        const ReceiptRun run = runReceipt({"lint", "/nowhere/a.cpt", folder.file("b.cpt", "<abc>"),
                                           folder.file("empty.cpt", "")});
        QCOMPARE(run.errors, "receipt: /nowhere/a.cpt: No such file or directory\nreceipt: " +
                                 folder.path("empty.cpt") + ": the template is empty\n");
        QVERIFY(run.output.contains("b.cpt:1:1: "));
        QCOMPARE(run.status, 1);
        const ReceiptRun data =
            runReceipt({"lint", folder.file("c.cpt", "x"), "--data", "/nowhere/d.json"});
        QCOMPARE(data.errors, QString("receipt: /nowhere/d.json: No such file or directory\n"));
        QCOMPARE(data.status, 1);
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("standard input twice")
            << QStringList{"--data", "-"} << "standard input can be only one of the files";
        QTest::newRow("document in the place of a template")
            << QStringList{"sale.JSON"}
            << "lint: \"sale.JSON\" is no template; a document is named with --data";
        QTest::newRow("watched standard input")
            << QStringList{"--watch"} << "--watch: standard input can't be watched";
    }
    void wrongUsage()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(QStringList{"lint", "-"} + options, "x");
        QCOMPARE(run.errors, "receipt: " + complaint + '\n');
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QString());
    }

    // What the README shows is what the tool prints.
    void readmeShowsWhatTheToolPrints()
    {
        QFile readme(example("../README.md"));
        QVERIFY(readme.open(QIODevice::ReadOnly));
        const QString shown = QString::fromUtf8(readme.readAll());
        const QRegularExpression sample(
            "```text\n(<C><B><SHPO>\n(?:.*\n)*?)```\n(?:.*\n)*?```text\n"
            "((?:sale\\.cpt.*\n)+)```\n");
        const auto match = sample.match(shown);
        QVERIFY(match.hasMatch());
        const WorkFolder folder;
        ReceiptRun run = runReceipt({"lint", folder.file("sale.cpt", match.captured(1).toUtf8()),
                                     "--data", example("kiosk.json"), "--width", "30"});
        QCOMPARE(run.output.remove(folder.path("") + '/'), match.captured(2));
    }

    void watchingChecksAgain()
    {
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<abc>");
        QProcess process;
        process.start(RECEIPT_PROGRAM, {"lint", file, "--watch"});
        QByteArray output;
        const auto printed = [&process, &output](const char *text) {
            process.waitForReadyRead(100);
            output += process.readAllStandardOutput();
            return output.contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(printed("[short-tag]"), 30000);
        folder.file("t.cpt", "<X:>");
        QTRY_VERIFY_WITH_TIMEOUT(printed("[open-removal]"), 30000);
        folder.file("t.cpt", "clean");
        const auto told = [&process, &output](const char *text) {
            process.waitForReadyRead(100);
            output += process.readAllStandardError();
            return output.contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(told("receipt: findings: 0\n"), 30000);
        process.terminate();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
    }

    void watchingFollowsTheFileOfSymbols()
    {
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<SPECSYMBOLS=shop>\n<#1>");
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(RECEIPT_PROGRAM, {"lint", file, "--watch"});
        QByteArray output;
        const auto says = [&process, &output](const char *text) {
            process.waitForReadyRead(100);
            output += process.readAll();
            return output.contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(says("[missing-symbol-file]"), 30000);
        QTRY_VERIFY_WITH_TIMEOUT(says("/shop.ssi; Ctrl+C ends."), 30000);
        QVERIFY(QFile::copy(example("symbols/shop.ssi"), folder.path("shop.ssi")));
        QTRY_VERIFY_WITH_TIMEOUT(says("findings: 0\n"), 30000);
        output.clear();
        folder.file("shop.ssi", "<SpecialSymbolImages/>");
        QTRY_VERIFY_WITH_TIMEOUT(says("[undrawn-symbol]"), 30000);
        output.clear();
        QVERIFY(QFile::remove(folder.path("shop.ssi")));
        QTRY_VERIFY_WITH_TIMEOUT(says("[missing-symbol-file]"), 30000);
        process.terminate();
        QVERIFY(process.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestReceiptLint)
#include "tst_receipt_lint.moc"
