#include <QtTest>

#include "lintrun.h"

using lintrun::addTemplates;
using lintrun::blank;
using lintrun::blankWith;
using lintrun::checkPlaces;
using lintrun::filled;
using lintrun::filledWith;

/// Rules about what comes to the paper: copies, drawings, codes, widths and characters.
class TestLintPaper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noCopyMark_data()
    {
        addTemplates();
        const auto copied = [](const char *options, const char *name, const char *text,
                               const char *places) {
            lintrun::row(name, text,
                         lintrun::json("{'attributes': {'DOCNO': 1, 'docno': 1}, 'isCopy': true}"),
                         options, places);
        };
        copied("", "none", "a\nb", "1:1 no-copy-mark");
        copied("", "any case", "a <docno>", "");
        copied("", "removed", "<X:>\n<DOCNO>\n<:X>a", "1:1 no-copy-mark");
        copied("--width 12", "too wide", "<W2:>a <DOCNO>\nx<:W2>", "1:1 wide-line");
        copied("--width 20", "that fits", "<W2:>a <DOCNO>\nx<:W2>", "");
        copied("--fiscal", "in a piece", "a\n<FISCAL_BODY>\n<DOCNO>", "");
        copied("", "with a format", "a <DOCNO,000>", "1:3 no-copy-mark");
        copied("", "with a format, and without one in a part that is removed",
               "a <DOCNO,000><X:><DOCNO><:X>", "");
        blank("with a format, without a document", "x\na <DOCNO,000>", "2:3 no-copy-mark");
        filled("with a format, of an original", "a <DOCNO,000>", "1:3 no-copy-mark");
        filled("with a format and elsewhere without one", "<DOCNO,000>\n<X:><docno><:X>x", "");
        blank("with a format in small letters", "<docno,000>", "1:1 no-copy-mark");
        filled("calculated with, of an original", "a <DOCNO*1,0>", "1:3 no-copy-mark");
        filled("with a blank in front", "a < DOCNO>", "1:3 no-copy-mark");
        filled("calculated with, and elsewhere alone", "<DOCNO%100,00>\n<DOCNO>", "");
        filled("a longer name", "<DOCNO2*1,0>", "1:2 unknown-attribute");
        blank("with a format in a part that is removed", "<X:><DOCNO,000><:X>a", "");
        blank("no number, not a copy", "a\nb", "");
        blankWith("--fiscal", "with a format in one piece, without one in another",
                  "<DOCNO,000>\n<FISCAL_BODY>\n<DOCNO>", "");
        filled("with a format, beside a value without end", "<DOCNO,000><LOOP>",
               "1:12 endless-value");
    }
    void noCopyMark() { checkPlaces(); }

    void missingSymbolFile_data()
    {
        addTemplates();
        blank("blanks around the line", " <SPECSYMBOLS=none> ", "1:2 missing-symbol-file");
        blank("its symbols get no second finding", "<SPECSYMBOLS=none>\n<#1>",
              "1:1 missing-symbol-file");
    }
    void missingSymbolFile() { checkPlaces(); }

    void repeatedSymbolFile_data()
    {
        addTemplates();
        blank("the same file under two names, below one that is missing",
              "<SPECSYMBOLS=none>\n<SPECSYMBOLS=shop.ssi>\n<SPECSYMBOLS=shop>",
              "2:1 repeated-symbol-file 3:1 repeated-symbol-file");
    }
    void repeatedSymbolFile() { checkPlaces(); }

    void undrawnSymbol_data()
    {
        addTemplates();
        blank("the file draws all of them", "<SPECSYMBOLS=shop>\n<#1><#7><1><#65>", "");
        blank("no file", "<#3>", "1:1 undrawn-symbol");
        filled("in a value", "<GUEST>", "1:1 undrawn-symbol");
        blankWith("--model TSP-TUP", "the model draws them", "<SPECSYMBOLS=shop>\n<#1>", "");
        blankWith("--model SWECOIN_TM_20XX", "the model draws them as dots",
                  "<SPECSYMBOLS=shop>\n<#1>", "");
        blankWith("--model AV_268", "no drawing of the sizes of two fonts",
                  "<SPECSYMBOLS=shop>\n<#1>\n<F3><#1>", "2:1 undrawn-symbol 3:5 undrawn-symbol");
        blankWith("--fiscal", "a piece doesn't know the file of another",
                  "<SPECSYMBOLS=shop>\n<FISCAL_QR>\n<#1>", "3:1 undrawn-symbol");
    }
    void undrawnSymbol() { checkPlaces(); }

    void qrInText_data()
    {
        addTemplates();
        blankWith("--as text", "as text", "<QR>a", "1:1 qr-in-text");
        blankWith("--as html", "as HTML", "<QR>a", "1:1 qr-in-text");
        blankWith("--as document", "as a document", "<QR>a <b>", "");
        blankWith("--as text", "markup behind it", "<QR><B>a", "1:1 qr-in-text");
    }
    void qrInText() { checkPlaces(); }

    void markupInQr_data()
    {
        addTemplates();
        blank("formats, codes and fonts", "<B:>a<:B><QR>b<:B>c<#1><65><F2>",
              "1:15 markup-in-qr 1:20 markup-in-qr 1:24 markup-in-qr 1:28 markup-in-qr");
        blank("a second QR tag", "<C><QR>a<QR>b", "1:9 markup-in-qr");
        blank("JSON with brackets and comparisons", "<QR>{\"a\": [1, 2], \"b\": \"<x> 1 < 2 > 0\"}",
              "");
        filled("a group of the data", "<QR>[a<SHOP>]", "1:5 markup-in-qr 1:13 markup-in-qr");
        filled("a group that begins in front", "[x<QR>a<SHOP>]", "1:14 markup-in-qr");
        filled("a group in front", "[x<SHOP>]<QR>a", "");
        blank("in a part that is removed", "<X:><QR><B>a<:X>", "");
        filled("in a value", "<QR>a<TAGGED>", "1:6 markup-in-qr");
        const auto valued = [](const char *name, const char *text, const char *value,
                               const char *places) {
            lintrun::row(name, text, QByteArray("{\"attributes\": {\"CODE\": \"") + value + "\"}}",
                         "", places);
        };
        valued("a group around a value that is a code", "[<CODE>]", "<QR>https://a.b/?c=1",
               "1:8 markup-in-qr");
        valued("a group around such a value with brackets", "[[<CODE>]]", "<QR>a[1]",
               "1:9 markup-in-qr 1:10 markup-in-qr");
        valued("a value that is a code, and no group", "<CODE>", "<QR>a]", "");
        valued("a group around another value", "[<CODE>]", "a", "");
    }
    void markupInQr() { checkPlaces(); }

    void wideLine_data()
    {
        addTemplates();
        filledWith("--width 10", "one character too many", "<SHOP>======", "1:1 wide-line");
        filledWith("--width 10", "as wide as the paper", "<SHOP>=====", "");
        filledWith("--width 9", "double width", "<W2>====<DOCNO>", "1:1 wide-line");
        filledWith("--width 9 --as text", "text has no double width", "<W2>====<DOCNO>", "");
        filledWith("--width 10 --as html", "HTML has no width", "<SHOP>======", "");
        blankWith("--width 10", "without a document no value is known", "<SHOP>======", "");
        blankWith("--width 10", "a constant line", "===========", "1:1 wide-line");
        blankWith("--width 10", "a constant line that fits", "==========", "");
        blankWith("--width 10", "what is constant about a line",
                  "<SHOP>===========", "1:1 wide-line");
        blankWith("--width 10", "what is constant about entries", "===========<ENTRIES>",
                  "1:1 wide-line 1:12 entries-in-text");
        blankWith("--width 10", "a group may go", "[<SHOP>===========]", "");
        blankWith("--width 10", "brackets without a value don't", "[===========]", "1:1 wide-line");
        blankWith("--width 10", "removed text", "<X:>===========<:X>", "");
        blankWith("--width 10", "data of a code", "<QR>===========", "");
        blankWith("--width 10", "each constant line",
                  "===========\nx\n============", "1:1 wide-line 3:1 wide-line");
        blankWith("--width 10 --as html", "constant lines in HTML", "===========", "");
        blankWith("--width 8 --fiscal", "a constant line of a piece",
                  "=\n<FISCAL_BODY>\n<W2>=====", "3:1 wide-line");
        filledWith("--width 10", "several tabs have a finding of their own", "a<S>b<S>c",
                   "1:6 repeated-tab");
        filledWith("--width 4", "several tabs, a character too many", "a<S>b<S>c",
                   "1:1 wide-line 1:6 repeated-tab");
        filledWith("--width 7", "the entries", "x\n<ENTRIES>", "2:1 wide-line");
        filledWith("--width 10", "a group of zero takes nothing", "a <ZERO>[<ZERO>==========]", "");
    }
    void wideLine() { checkPlaces(); }

    void brokenWord_data()
    {
        addTemplates();
        filledWith("--width 7", "a number", "<SHOP> 0000", "1:9 broken-word");
        filledWith("--width 7", "a number of the width of a row", "<SHOP> 0000000",
                   "1:9 broken-word");
        filledWith("--width 3", "a value", "<SHOP>", "1:1 broken-word");
        filledWith("--width 5", "at a blank", "<SHOP> ab", "1:1 wide-line");
        filledWith("--width 6", "behind a blank", "<SHOP> ab", "1:1 wide-line");
        filledWith("--width 7", "inside the second word", "<SHOP> ab", "1:9 broken-word");
        filledWith("--width 7", "in front of a point", "<SHOP> 1.50", "1:9 broken-word");
        filledWith("--width 8", "behind a point", "<SHOP> 1.50", "1:10 broken-word");
        filledWith("--width 8", "behind a point at a word's end", "<SHOP> a. b", "1:1 wide-line");
        filledWith("--width 7", "behind a sign", "<SHOP> -1", "1:9 broken-word");
        filledWith("--width 9", "behind a dash in a word", "<SHOP> ab-cd", "1:1 wide-line");
        filledWith("--width 9", "behind a dash in front of figures", "<SHOP> ab-12",
                   "1:1 wide-line");
        filledWith("--width 8", "letters that aren't Latin", "<SHOP> \xD0\x96\xD0\x96\xD0\x96",
                   "1:10 broken-word");
        filledWith("--width 8", "a rule of dashes", "----------", "1:1 wide-line");
        filledWith("--width 5", "at blanks on each row", "<SHOP> cdef gh", "1:1 wide-line");
        filledWith("--width 4", "twice in a word", "<SHOP>bcde",
                   "1:1 broken-word 1:10 broken-word");
        filledWith("--width 8", "double width", "<W2>ab cdef", "1:9 broken-word");
        filledWith("--width 8 --as text", "no double width in text", "<W2>ab cdef", "");
        filledWith("--width 8 --as html", "HTML has no rows", "abcdefghijkl", "");
        filledWith("--width 7", "an entry", "x\n<ENTRIES>", "2:1 wide-line");
        filledWith("--width 3", "each entry", "x\n<ENTRIES>",
                   "2:1 broken-word 2:1 broken-word 2:1 broken-word 2:1 broken-word");
        blankWith("--width 8", "a constant line without a document", "abcdefghi",
                  "1:9 broken-word");
        blankWith("--width 8", "not where a value stands", "abcdefghi<SHOP>", "1:1 wide-line");
        filledWith("--model CUSTOM_VKP_80", "a model's row",
                   "<SHOP>xxx 1000 2000 3000 4000 5000 6000 7000 8000 9000 1000 IU",
                   "1:53 broken-word");
    }
    void brokenWord() { checkPlaces(); }

    void brokenNumbersAreErrorsWithData_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("hasData");
        QTest::addColumn<QString>("severity");
        QTest::newRow("a number with data") << QByteArray("ab 1234") << true << "error";
        QTest::newRow("a number without") << QByteArray("ab 1234") << false << "warning";
        QTest::newRow("a word") << QByteArray("ab cdef") << true << "warning";
        QTest::newRow("letters behind digits") << QByteArray("ab 12kg") << true << "warning";
        QTest::newRow("a number longer than a row") << QByteArray("ab 123456") << true << "warning";
    }
    void brokenNumbersAreErrorsWithData()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, hasData);
        QFETCH(QString, severity);
        const ReceiptRun run =
            lintrun::lint(text, {"--width", "5"}, hasData ? lintrun::sale() : QByteArray());
        QVERIFY2(run.output.contains(": " + severity + ": the paper ends inside"),
                 qPrintable(run.output));
        QCOMPARE(run.status, severity == "error" ? 1 : 0);
    }

    // 512 dots: 51 characters of font 0, 36 of font 1, 28 of font 3.
    void wideLineOfAModel_data()
    {
        addTemplates();
        const char *const font0 = "--model CUSTOM_VKP_80";
        const char *const font1 = "--model CUSTOM_VKP_80 --font 1";
        blankWith(font0, "a tab, without a document",
                  "====================<S>=============================", "");
        filledWith(font0, "a tab", "====================<S>=============================", "");
        filledWith(font0, "two tabs",
                   "===================<S>===================<S>==========", "1:42 repeated-tab");
        filledWith(font0, "font 0 fits",
                   "<SHOP>==============================================", "");
        filledWith(font1, "the chosen font fits", "<SHOP>===============================", "");
        filledWith(font1, "the chosen font, a character too many",
                   "<SHOP>================================", "1:1 wide-line");
        filledWith(font1, "the first font tag is the chosen font",
                   "<F1><SHOP>================================", "1:1 wide-line");
        filledWith(font1, "another font tag fits", "<F4><SHOP>=======================", "");
        filledWith(font1, "another font tag, a character too many",
                   "<F4><SHOP>========================", "1:1 wide-line");
    }
    void wideLineOfAModel() { checkPlaces(); }

    // 48 characters on the 576 dots of the head, and not 53 on the catalogue's 640.
    void wideLineOfAHead_data()
    {
        addTemplates();
        const QByteArray line = "<SHOP>" + QByteArray(43, '=');
        filledWith("--model TSP-TUP", "as wide as the head", line.constData(), "");
        filledWith("--model TSP-TUP", "wider than the head", (line + '=').constData(),
                   "1:1 wide-line");
    }
    void wideLineOfAHead() { checkPlaces(); }

    void unprintableCharacter_data()
    {
        addTemplates();
        blankWith("--model AV_268", "each one once", "\xE2\x84\x96 \xC2\xAB\xC2\xBB\xC2\xAB",
                  "1:3 unprintable-character");
        blank("without a model or code page none is known", "\xE2\x82\xAC", "");
        blankWith("--code-page windows-1252", "in the code page", "\xE2\x82\xAC", "");
        blankWith("--code-page windows-1252", "not in the code page", "\xD0\x96",
                  "1:1 unprintable-character");
    }
    void unprintableCharacter() { checkPlaces(); }

    // A text in another script has one finding for each of its values and one for the rest.
    void unprintableCharactersAreToldTogether()
    {
        const QByteArray document =
            QByteArray(R"({"attributes": {"NAME": "Άννα", "CITY": "Αθήνα"}})");
        const ReceiptRun run =
            lintrun::lint("Σ <NAME> ά <CITY> \u03A3\u03A9", {"--model", "AV_268"}, document);
        QCOMPARE(
            run.output,
            QString("t.cpt:1:1: warning: \"Σ\", \"ά\", \"Ω\" are not in the printer's character "
                    "set, IBM866 [unprintable-character]\n"
                    "t.cpt:1:3: warning: \"Ά\", \"ν\", \"α\" are not in the printer's character "
                    "set, IBM866 [unprintable-character]\n"
                    "t.cpt:1:12: warning: \"Α\", \"θ\", \"ή\", \"ν\", \"α\" are not in the "
                    "printer's character set, IBM866 [unprintable-character]\n"));
    }
};

QTEST_GUILESS_MAIN(TestLintPaper)
#include "tst_lint_paper.moc"
