#include <QDirIterator>
#include <QtTest>

#include "lintrun.h"
#include "templatelint.h"

using lintrun::lint;
using lintrun::placesOf;
using lintrun::sale;

/// The command: its rules and their words, its forms of output, its files.
class TestReceiptLint : public QObject
{
    Q_OBJECT

    static QString indented(const char *sample)
    {
        return "    " + QString::fromUtf8(sample).replace('\n', "\n    ") + '\n';
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

    void everyRuleIsExplainedInEachLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("wrong");
        QTest::addColumn<QString>("error");
        QTest::newRow("German") << "de"
                                << "\nFalsch"
                                << "(Fehler): ";
        QTest::newRow("Russian") << "ru"
                                 << "\nНеверно"
                                 << "(ошибка): ";
        QTest::newRow("English") << "en"
                                 << "\nWrong"
                                 << "(error): ";
    }
    void everyRuleIsExplainedInEachLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QString, wrong);
        QFETCH(QString, error);
        for (const templatelint::Rule &rule : templatelint::rules()) {
            const ReceiptRun run =
                runReceipt({"lint", "--explain", rule.name, "--language", language});
            QCOMPARE(run.status, 0);
            QCOMPARE(run.errors, QString());
            QVERIFY2(run.output.contains(wrong), qPrintable(run.output));
            QCOMPARE(run.output.contains(rule.summary), language == "en");
            QCOMPARE(run.output.contains(rule.why), language == "en");
            QCOMPARE(run.output.contains(error), rule.severity == templatelint::Severity::Error);
            QVERIFY(run.output.endsWith(indented(rule.right)));
        }
    }

    void rulesAreListedInEachLanguage_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<bool>("isEnglish");
        QTest::newRow("German") << QStringList{"--language", "de"} << false;
        QTest::newRow("Russian") << QStringList{"--language=ru"} << false;
        QTest::newRow("English") << QStringList{"--language", "en"} << true;
        QTest::newRow("none") << QStringList() << true;
        QTest::newRow("unknown") << QStringList{"--language", "xx"} << true;
    }
    void rulesAreListedInEachLanguage()
    {
        QFETCH(QStringList, options);
        QFETCH(bool, isEnglish);
        const ReceiptRun run = runReceipt(QStringList{"lint", "--help"} + options);
        QCOMPARE(run.status, 0);
        for (const templatelint::Rule &rule : templatelint::rules()) {
            QVERIFY(run.output.contains(QString("\n  %1 ").arg(rule.name)));
            QCOMPARE(run.output.contains(rule.summary), isEnglish);
        }
    }

    void unknownLanguageOfAnExplanationIsWrongUsage()
    {
        const ReceiptRun run = runReceipt({"lint", "--explain", "short-tag", "--language", "xx"});
        QVERIFY(run.errors.startsWith("receipt: --language: there is no translation to \"xx\""));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
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
        row("name of three letters", "<ODO>", false, "",
            "1:1: warning: \"<ODO>\" prints as it stands: an attribute or expression has at least "
            "four characters, such as \"<ODO,>\" with an empty format [short-tag]");
        row("name of two letters", "<TO>", false, "",
            "1:1: warning: \"<TO>\" prints as it stands: an attribute or expression has at least "
            "four characters [short-tag]");
        row("short sum", "<A+B>", false, "",
            "1:1: warning: \"<A+B>\" prints as it stands: an attribute or expression has at least "
            "four characters, such as \"< A+B >\" [short-tag]");
        row("two tabs", "a<S>b<S>c", false, "",
            "1:6: warning: two <S> on the line: each takes all the room that the text leaves, and "
            "the line gets wider than the paper [repeated-tab]");
        row("four tabs", "<S><S><S><S>x", false, "",
            "1:4: warning: 4 <S> on the line: each takes all the room that the text leaves, and "
            "the line gets wider than the paper [repeated-tab]");
        row("open group", "x [a", false, "",
            "1:3: warning: the group is left open at the line's end: \"[\" has no \"]\" on the "
            "line [unmatched-bracket]");
        row("tag of other languages", "<HR>", false, "",
            "1:1: warning: \"<HR>\" prints as it stands, as there is no such tag: a rule is a line "
            "of \"-\", or \"<U> <S> \" across the paper, whatever its width [guessed-name]");
        row("tag of other languages that is read as an attribute", "<LOGO>", true, "",
            "1:1: error: \"<LOGO>\" is read as an attribute, which the document lacks: a template "
            "has no pictures; \"<SPECSYMBOLS=\" names drawings of single characters, and a BBCode "
            "text has [img] [guessed-name]");
        row("tag of other languages in a group", "[x <BARCODE>]y", true, "",
            "1:4: note: \"<BARCODE>\" is read as an attribute, which the document lacks: a "
            "template "
            "has no barcode; \"<QR>\" with the data behind it is a QR code, and a BBCode text has "
            "[barcode] [guessed-name]");
        row("half of a fiscal marker", "<FISCAL_HEAD>", false, "",
            "1:1: warning: \"<FISCAL_HEAD>\" is read as an attribute: the fiscal marker is "
            "\"<FISCAL_HEADER>\" [guessed-name]");
        row("function of other languages", "<max(QTY,PRICE),0>", true, "",
            "1:2: error: there is no function \"max\": the greater of two is (a+b+abs(a-b))/2 "
            "[guessed-name]");
        row("font beyond the fourth", "<F9>a", false, "",
            "1:1: warning: there is no font of \"<F9>\": it counts as \"<F2>\" [unknown-font]");
        row("font at the end of a line", "<F4>a<F1>\nb<F1>c", false, "",
            "1:6: warning: \"<F1>\" has no character behind it on the line and is lost: the next "
            "line stays in font 4 [lost-font-switch]");
        row("copy mark of an original", "<DOCNO,000>", true, "",
            "1:1: warning: a copy will print without a mark: \"<DOCNO>\" doesn't count with a "
            "format or in an expression [no-copy-mark]");
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
        row("decimals of a whole number", "Paid <TABLE,0.00>", true, "",
            "1:13: error: the format \"0.00\" is for real numbers, and the value is a whole one: "
            "it prints \"0007\"; hand it over as the text \"7.00\" [value-format]");
        row("division by zero", "Each <PRICE/ZERO>", true, "",
            "1:6: error: the expression \"PRICE/ZERO\", with its values \"1.5/0\", divides by "
            "zero "
            "or has no finite value for another reason: it prints \"0.00\" [division-by-zero]");
        row("division by zero for any values", "Each <PRICE/0>", false, "",
            "1:6: warning: the expression \"PRICE/0\" divides by zero [division-by-zero]");
        row("markup in a code", "<QR>a<B>", false, "",
            "1:6: warning: \"<B>\" is no markup in the data of a QR code: it goes into the code "
            "[markup-in-qr]");
        row("month for minutes", "<AT,dd.MM.yyyy HH:mm>", true, "",
            "1:5: error: in \"dd.MM.yyyy HH:mm\" the \"m\" behind the hours is the month, and "
            "minutes are \"n\": it prints \"14.03.2026 18:03\" [date-letters]");
        row("capitals in a date", "<AT,DD.MM.YYYY>", true, "",
            "1:5: error: in \"DD.MM.YYYY\" the letters of \"DD\", \"YYYY\" mean something else: "
            "days are \"dd\", months \"mm\", years \"yy\" or \"yyyy\", hours \"hh\", minutes "
            "\"nn\", seconds \"ss\"; other words stand outside of the tag: it prints "
            "\"DD.03.YYYY\" [date-letters]");
        row("capitals and a month for minutes", "<AT,DD hh:mm>", true, "",
            "1:5: error: in \"DD hh:mm\" the letters of \"DD\" mean something else: days are "
            "\"dd\", months \"mm\", years \"yy\" or \"yyyy\", hours \"hh\", minutes \"nn\", "
            "seconds \"ss\", and the \"m\" behind the hours is the month: it prints \"DD 18:03\" "
            "[date-letters]");
        row("half a day, without a document", "<SALE,h:n am/pm>", false, "",
            "1:7: warning: in \"h:n am/pm\" the letters of \"am\", \"pm\" mean something else: "
            "days are \"dd\", months \"mm\", years \"yy\" or \"yyyy\", hours \"hh\", minutes "
            "\"nn\", seconds \"ss\", and \"am\" or \"pm\" is \"ap\" [date-letters]");
        row("comma in a date", "<AT,dd.mm.yyyy, hh:nn>", true, "",
            "1:5: error: the format begins behind the last comma, and \"AT,dd.mm.yyyy\" is no "
            "attribute: instead of a comma in the format write \"<AT,dd.mm.yyyy>, <AT,hh:nn>\" "
            "[comma-in-format]");
        row("unit of a number that is cut", "<QTY*PRICE*411.523,0.0 EUR>", true, "",
            "1:20: error: of the format \"0.0 EUR\" only \"0\", \"#\" and the point are for "
            "numbers: what else is to be printed stands outside of the tag: it prints \"1234.57\" "
            "[value-format]");
        row("format in a group that goes", "[x <TABLE,0.00><EMPTY>]y", true, "",
            "1:11: warning: the format \"0.00\" is for real numbers, and the value is a whole one: "
            "it prints \"0007\"; hand it over as the text \"7.00\" [value-format]");
        row("format without effect", "<SHOP,20>", true, "",
            "1:7: warning: the format \"20\" has no effect, as the value is a text: it prints "
            "\"Kiosk\" [value-format]");
        row("decimals of a whole number that print the same", "<TABLE,.>", true, "",
            "1:8: warning: the format \".\" is for real numbers, and the value is a whole one: it "
            "prints \"7\" [value-format]");
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
            "--model PLAIN --models FOLDER/plain.json",
            "2:1: warning: the symbol 1 is blank: font 0 of PLAIN with 60 mm paper takes no "
            "drawings [undrawn-symbol]");
        row("swallowed tag", "Total <SHOP <QTY*1>", true, "",
            "1:7: warning: \"<\" has no \">\" before the next \"<\": \"<SHOP <QTY*1>\" is read as "
            "one tag [unterminated-tag]");
        row("model's paper", "<W2>==========================", true, "--model CUSTOM_VKP_80",
            "1:1: warning: the line \"==========================\" takes 52 characters, and "
            "CUSTOM_VKP_80 with 80 mm paper has 51 [wide-line]");
        row("model's paper, another font", "<F4>=============================", true,
            "--model CUSTOM_VKP_80",
            "1:1: warning: the line \"=============================\" takes 29 characters, and "
            "CUSTOM_VKP_80 with 80 mm paper has 28 in its font 3 [wide-line]");
        row("constant line", "=====", false, "--width 4",
            "1:1: warning: the line \"=====\" takes 5 characters of 4 [wide-line]");
        row("constant part of a line", "==<SHOP>===", false, "--width 4",
            "1:1: warning: the line \"==...===\" takes at least 5 characters of 4 [wide-line]");
        row("number that breaks", "Vitamin 1000 IU", true, "--width 11",
            "1:12: error: the paper ends inside \"1000\": \"100\" stands on one row and \"0\" on "
            "the next; the line \"Vitamin 1000 IU\" takes 15 characters of 11 [broken-word]");
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

    void examplesAreClean_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("options");
        QTest::newRow("authors/code") << "authors/code"
                                      << "authors/code"
                                      << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/codes") << "authors/codes"
                                       << "authors/codes"
                                       << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/columns") << "authors/columns"
                                         << "authors/columns"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/conditions") << "authors/conditions"
                                            << "authors/conditions"
                                            << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/dates") << "authors/dates"
                                       << "authors/dates"
                                       << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/entries") << "authors/entries"
                                         << "authors/entries"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/expressions") << "authors/expressions"
                                             << "authors/expressions"
                                             << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/fiscal") << "authors/fiscal"
                                        << "authors/fiscal"
                                        << "--fiscal --model CUSTOM_VKP_80";
        QTest::newRow("authors/groups") << "authors/groups"
                                        << "authors/groups"
                                        << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/inverse") << "authors/inverse"
                                         << "authors/nothing"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/longnames") << "authors/longnames"
                                           << "authors/longnames"
                                           << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/markup") << "authors/markup"
                                        << "authors/nothing"
                                        << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/removal") << "authors/removal"
                                         << "authors/nothing"
                                         << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/rounding") << "authors/rounding"
                                          << "authors/rounding"
                                          << "--model CUSTOM_VKP_80";
        QTest::newRow("authors/signs") << "authors/signs"
                                       << "authors/signs"
                                       << "--width 30";
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
        QTest::newRow("gallery/fiscal") << "gallery/fiscal"
                                        << "gallery/fiscal"
                                        << "--fiscal --model SWECOIN_TM_20XX";
        QTest::newRow("gallery/fuel") << "gallery/fuel"
                                      << "gallery/fuel"
                                      << "--model SWECOIN_TM_20XX";
        QTest::newRow("gallery/pharmacy") << "gallery/pharmacy"
                                          << "gallery/pharmacy"
                                          << "--model SWECOIN_TM_20XX";
        QTest::newRow("gallery/restaurant") << "gallery/restaurant"
                                            << "gallery/restaurant"
                                            << "--model SWECOIN_TM_20XX";
        QTest::newRow("gallery/shift") << "gallery/shift"
                                       << "gallery/shift"
                                       << "--model SWECOIN_TM_20XX";
        QTest::newRow("gallery/supermarket") << "gallery/supermarket"
                                             << "gallery/supermarket"
                                             << "--model SWECOIN_TM_20XX";
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

    /// Nothing but a sentence about the values, on those that have any.
    void noExampleHasFindingsWithoutData()
    {
        QDirIterator files(example(""), {"*.cpt"}, QDir::Files, QDirIterator::Subdirectories);
        int withValues = 0;
        while (files.hasNext()) {
            const QString file = files.next();
            const QStringList fiscal = file.contains("fiscal") || file.endsWith("/tags.cpt")
                                           ? QStringList("--fiscal")
                                           : QStringList();
            const ReceiptRun run = runReceipt(QStringList{"lint", "--strict", file} + fiscal);
            QVERIFY2(run.output.isEmpty(), qPrintable(run.output));
            QVERIFY2(run.errors.isEmpty() || run.errors == lintrun::lackOfData(),
                     qPrintable(run.errors));
            withValues += run.errors.isEmpty() ? 0 : 1;
            QCOMPARE(run.status, 0);
        }
        QVERIFY(withValues > 20);
    }

    void lackOfDataIsToldOnce_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isTold");
        QTest::newRow("attribute") << QByteArray("Total <SUM,0.00>") << true;
        QTest::newRow("expression") << QByteArray("<QTY*PRICE>") << true;
        QTest::newRow("entries") << QByteArray("<ENTRIES>") << true;
        QTest::newRow("two lines") << QByteArray("<SUM1>\n<SUM2>") << true;
        QTest::newRow("BBCode") << QByteArray("[center]<SUM1>[/center]") << true;
        QTest::newRow("beside a finding") << QByteArray("<SUM1>\n<b>") << true;
        QTest::newRow("text") << QByteArray("Thank you") << false;
        QTest::newRow("markup") << QByteArray("<C><B>Thank<F2> you<B:>x<:B>") << false;
        QTest::newRow("calculation of constants") << QByteArray("<12*5,0>") << false;
    }
    void lackOfDataIsToldOnce()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isTold);
        const ReceiptRun run = runReceipt({"lint", "-"}, text);
        QCOMPARE(run.errors, isTold ? lintrun::lackOfData() : QString());
        QCOMPARE(run.status, 0);
        QVERIFY(!run.output.contains("data"));
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", text);
        QCOMPARE(runReceipt({"lint", file, file}).errors, run.errors);
        QCOMPARE(runReceipt({"lint", file, "--json"}).errors, QString());
        QCOMPARE(runReceipt({"lint", file, "--all-models"}).errors, QString());
        const QString german = runReceipt({"lint", file, "--language", "de"}).errors;
        QCOMPARE(german.contains("ohne Daten"), isTold);
        const QString data = folder.file("d.json", "{}");
        QCOMPARE(runReceipt({"lint", file, "--data", data}).errors, QString());
    }

    void everyExampleIsInTheTable()
    {
        const QStringList listed{"authors/code",
                                 "authors/codes",
                                 "authors/columns",
                                 "authors/conditions",
                                 "authors/dates",
                                 "authors/entries",
                                 "authors/expressions",
                                 "authors/fiscal",
                                 "authors/groups",
                                 "authors/inverse",
                                 "authors/longnames",
                                 "authors/markup",
                                 "authors/removal",
                                 "authors/rounding",
                                 "authors/signs",
                                 "authors/symbols",
                                 "authors/values",
                                 "cafe",
                                 "fiscal",
                                 "gallery/fiscal",
                                 "gallery/fuel",
                                 "gallery/pharmacy",
                                 "gallery/restaurant",
                                 "gallery/shift",
                                 "gallery/supermarket",
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
        QCOMPARE(bad.errors,
                 QString("receipt: -:2: this line isn't UTF-8; --codec names another encoding\n"));
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

    void watchingFollowsTheSchema()
    {
        const WorkFolder folder;
        const QString schema = folder.file("s.json", "{\"required\": [\"entries\"]}");
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(RECEIPT_PROGRAM,
                      {"lint", folder.file("t.cpt", "Total"), "--data", folder.file("d.json", "{}"),
                       "--data-schema", schema, "--watch"});
        QByteArray output;
        const auto says = [&process, &output](const char *text) {
            process.waitForReadyRead(100);
            output += process.readAll();
            return output.contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(says("entries: is missing"), 30000);
        QTRY_VERIFY_WITH_TIMEOUT(says("/s.json; Ctrl+C ends."), 30000);
        folder.file("s.json", "{}");
        QTRY_VERIFY_WITH_TIMEOUT(says("findings: 0\n"), 30000);
        process.terminate();
        QVERIFY(process.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestReceiptLint)
#include "tst_receipt_lint.moc"
