#include <QtTest>

#include "lintrun.h"

using lintrun::addTemplates;
using lintrun::blank;
using lintrun::blankWith;
using lintrun::checkPlaces;
using lintrun::filled;

/// Rules about the template's own tags and brackets.
class TestLintMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shortTag_data()
    {
        addTemplates();
        blank("names, expressions and formats of up to three characters",
              "<ABC><AB><A1><A,0><A*2><tag>",
              "1:1 short-tag 1:6 short-tag 1:10 short-tag 1:14 short-tag 1:19 short-tag "
              "1:24 short-tag");
        blank("a sum, a raw code and a code of no number", "<1+2><1x><#x>",
              "1:1 short-tag 1:6 markup-spelling 1:10 markup-spelling");
        filled("the name of an attribute", "<A1>", "1:1 short-tag");
        blank("comparisons, arrows and other signs", "1 < 2 > 0, <>, <-->, <=>, <!>, a <- b", "");
        filled("in the data of an image", "<I>2 2 <ab></I>x", "");
        filled("with a value, in the data of a code", "<QR>n=<A1>&q=<QTY>&x=<id>",
               "1:7 short-tag 1:14 short-tag");
        blankWith("--model AV_268", "columns are UTF-16 units", "\xF0\x9F\x98\x80<abc>",
                  "1:1 unprintable-character 1:3 short-tag");
    }
    void shortTag() { checkPlaces(); }

    void markupSpelling_data()
    {
        addTemplates();
        blank("numbers, blanks, small letters and HTML's closing tags",
              "<W3><C ><c><ls2><LS8><F0></B><B;>x<w2:><: B>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:12 markup-spelling "
              "1:17 markup-spelling 1:22 markup-spelling 1:26 markup-spelling 1:30 markup-spelling "
              "1:35 markup-spelling 1:40 markup-spelling");
        blank("longer ones that count as attributes", "< W2:>x<SpecSymbols=shop>",
              "1:1 markup-spelling 1:8 markup-spelling");
        blank("a file of symbols inside a line", "x<SPECSYMBOLS=shop>", "1:2 markup-spelling");
        blank("fonts and codes", "<F 1>x<F2><65><#65><L1><:><321>", "");
        blank("colons of tags that have none", "<C:><:C><:S><R:><S:>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:13 markup-spelling "
              "1:17 markup-spelling");
        blank("slashes of HTML, a colon behind QR, a blank between letters", "</C><B/><QR:><x y>",
              "1:1 markup-spelling 1:5 markup-spelling 1:9 markup-spelling 1:14 markup-spelling");
        blank("comparisons and signs", "1 < a > 0<:;>", "");
        blank("an image without an end", "a<I>x", "1:2 markup-spelling");
    }
    void markupSpelling() { checkPlaces(); }

    void unterminatedTag_data()
    {
        addTemplates();
        blank("at the end of the line", "a < b <", "1:7 unterminated-tag");
        blank("in front of a blank it is text", "a < b < ", "");
        blank("behind text", "a<", "1:2 unterminated-tag");
        blank("alone", "<", "1:1 unterminated-tag");
        blank("in front of a tag, text behind", "<<B>b", "1:1 unterminated-tag");
        blank("in a group", "[<]", "1:2 unterminated-tag");
        blank("in front of a group", "a<[b]", "1:2 unterminated-tag");
        blank("in the data of a QR code", "<QR>a<", "");
        blank("in front of a letter", "a <B", "1:3 unterminated-tag");
        blank("in front of a blank and a tag", "a < b <C>", "1:3 unterminated-tag");
        blank("in front of a letter and a tag", "<B<C>x", "1:1 unterminated-tag");
        blank("right in front of an alignment", "<<C>x", "1:1 unterminated-tag");
        blank("in a link of a QR code", "<QR>https://x?a<b", "");
    }
    void unterminatedTag() { checkPlaces(); }

    void unmatchedBracket_data()
    {
        addTemplates();
        blank("one more opened than closed", "[a[b]", "1:1 unmatched-bracket");
        blank("only closed", "a]", "1:2 unmatched-bracket");
        blank("the wrong way round", "]x[", "1:1 unmatched-bracket 1:3 unmatched-bracket");
        blank("closed inside a tag", "[a <QTY]>", "1:1 unmatched-bracket 1:8 unmatched-bracket");
        blank("codes of brackets, and groups in groups", "<#91>a<93>[b [c]]", "");
        blank("closed on the next line", "[x\ny]", "1:1 unmatched-bracket 2:2 unmatched-bracket");
        filled("closed by a value", "[x <GROUP>", "1:4 markup-in-value");
        filled("not closed by a value", "[x <SHOP>", "1:1 unmatched-bracket");
    }
    void unmatchedBracket() { checkPlaces(); }

    void alignWithTab_data()
    {
        addTemplates();
        blank("both alignments behind it", "<S>a<C><R>", "1:5 align-with-tab 1:8 align-with-tab");
        blank("on the next line", "<S>\n<C>a", "");
    }
    void alignWithTab() { checkPlaces(); }

    void repeatedTab_data()
    {
        addTemplates();
        blank("two", "a<S>b<S>c", "1:6 repeated-tab");
        blank("three, side by side", "<S><S><S>a", "1:4 repeated-tab");
        blank("one on each line", "a<S>b\nc<S>d", "");
        blank("one in a part that is removed", "a<S>b<X:><S><:X>c", "");
        filled("one in a group that goes", "a<S>b[<S><ZERO>]", "1:7 repeated-tab");
        filled("from the entries", "<ENTRIES>", "");
        blank("in the data of a code", "a<S>b<QR>c<S>", "1:11 markup-in-qr");
    }
    void repeatedTab() { checkPlaces(); }

    void secondAlignment_data()
    {
        addTemplates();
        blank("the same one twice", "<C>a<C>", "");
    }
    void secondAlignment() { checkPlaces(); }

    void repeatedLineSpacing_data()
    {
        addTemplates();
        blank("the smallest one counts, as often as it stands", "<LS5>a<LS2>b<LS2>",
              "1:1 repeated-line-spacing");
    }
    void repeatedLineSpacing() { checkPlaces(); }

    void openFormat_data()
    {
        addTemplates();
        blank("a whole-line tag on the next line ends it", "<B:>a\n<B>b", "");
        blank("another one is closed", "<B:>a\n<U:>b<:B>", "2:1 open-format");
        blank("opened twice", "<B:>a<B:>b", "1:1 open-format");
        blank("nothing in it", "<B:><:B>a", "");
        filled("closed by a value", "<B:>a<ENDED>", "");
        filled("opened by a value", "a<TAGGED>", "1:2 open-format");
        filled("not closed by a value", "<B:>a<SHOP>", "1:1 open-format");
        blankWith("--fiscal", "over the pieces of a fiscal template", "a<B:><FISCAL_QR>b<:B>",
                  "1:2 open-format");
    }
    void openFormat() { checkPlaces(); }

    void openFont_data()
    {
        addTemplates();
        blank("to the end of the receipt", "a\n<F2>b\nc", "2:1 open-font");
        blank("the last of several", "a\n<F2>b\nc<F3>d\ne", "3:2 open-font");
        blank("switched back", "a\n<F2>b\n<F1>c", "");
        blank("on the last line", "a\n<F2>b", "");
        blank("in front of all text", "<F2>a\nb\nc", "");
        blank("in front of all text but a line of an image", "<I>1 1 x</I>\n<F2>a\nb", "");
        blank("behind text on the first line", "a<F2>b\nc", "1:2 open-font");
        blank("back at the end of the last line", "a\n<F2>b\nc<F1>", "");
        blank("a line of nothing but tags behind it", "a\n<F2>b\n<:>", "");
        blank("no text at all", "<F2>\n<:>", "1:1 lost-markup");
        filled("by a value", "a\n<SHOP><F2><GUEST>\nb", "2:7 open-font 2:11 undrawn-symbol");
        filled("on a line that is gone", "a\n[<F2>b<ZERO>]\nc", "");
        blankWith("--as text", "in text, which has no fonts", "a\n<F2>b\nc<F1>\nd", "");
        blankWith("--fiscal", "each piece begins in font 1", "a\n<F2>b\n<FISCAL_BODY>\nc", "");
    }
    void openFont() { checkPlaces(); }

    void lostFontSwitch_data()
    {
        addTemplates();
        blank("at the end of a line", "<F4>a<F1>\nb\n<F1>c", "1:6 lost-font-switch");
        blank("in front of a group's bracket and an empty tag", "[<F4>a<F1>]<:>\nb\n<F1>c",
              "1:7 lost-font-switch");
        blank("a blank behind it", "<F4>a<F1> \nb", "");
        blank("to the font that there is", "<F2>a\nb<F2>\n<F1>c", "");
        blank("the next line has a font of its own", "<F4>a<F1>\n<F1>b", "");
        blank("the next line has it behind its text", "<F4>a<F1>\nb<F1>c", "1:6 lost-font-switch");
        blank("on the last line", "<F4>a<F1>", "");
        blank("an empty line between", "<F4>a<F1>\n\nb<F1> ", "1:6 lost-font-switch");
        blank("two of them, the last one counts", "a<F2><F3>\nb", "1:6 lost-font-switch");
        blank("two of them, and back again", "a<F2><F1>\nb", "");
        blank("in front of a QR code", "<F2>a\nb<F1><QR>c\nd\n<F1>e", "2:2 lost-font-switch");
        filled("behind a value", "<F4><SHOP><F1>\n<SHOP>\n<F1>x", "1:11 lost-font-switch");
        filled("an empty value behind it", "<F4>a<F1><EMPTY>\nb\n<F1>c", "1:6 lost-font-switch");
        blank("in a part that is removed", "<F4>a<X:><F1><:X>\nb\n<F1>c", "");
    }
    void lostFontSwitch() { checkPlaces(); }

    void unknownFont_data()
    {
        addTemplates();
        blank("beyond the fourth", "<F4>a<F5>b<F12>c<F9>d<F1>e",
              "1:6 unknown-font 1:11 unknown-font 1:17 unknown-font");
        blank("that of no number", "<F0>a", "1:1 markup-spelling");
        blank("in the data of a code and in a part that is removed", "<QR>a<F5>\n<X:><F6><:X>b",
              "1:6 markup-in-qr");
    }
    void unknownFont() { checkPlaces(); }

    void lostMarkup_data()
    {
        addTemplates();
        blank("a spacing, a format, an alignment, a font", "<LS3>\n<B>\n<C>\n<R>\n<F2>\n<W2>\na",
              "1:1 lost-markup 2:1 lost-markup 3:1 lost-markup 4:1 lost-markup 5:1 lost-markup "
              "6:1 lost-markup");
        blank("several of them", "[<C><B>]\na", "1:2 lost-markup");
        blank("tags that count without text", "<B:>\na\n<:B>\n<:>\n<L1>\n<X>", "");
        blank("a tab and a blank are text", "<S>\n<B> \n<U><S>", "");
        blank("a value", "<B><NAME>\n<C>[<SHOP>]", "");
        filled("a value that is empty", "<B><EMPTY>\n[<C><ZERO>]a", "");
        blank("in front of a QR code", "<C><QR>a", "");
        blankWith("--as text", "a QR code that is text", "<C><QR>a", "1:4 qr-in-text");
        blank("a removed part alone beside it", "<B><X:>a<:X>\nb", "1:1 lost-markup");
    }
    void lostMarkup() { checkPlaces(); }

    void tagBehindPair_data()
    {
        addTemplates();
        blank("opened behind itself", "<B:><B:>a<:B>", "1:5 tag-behind-pair");
        blank("opened behind a whole-line tag", "<B><B:>a", "1:4 tag-behind-pair");
        blank("closed where a whole-line tag closes", "<U>a<:U>", "1:1 tag-behind-pair");
    }
    void tagBehindPair() { checkPlaces(); }

    void openRemoval_data()
    {
        addTemplates();
        blank("only closed", "a<:X>", "1:2 open-removal");
        blank("parts don't nest", "<X:>a<X:>b<:X>c<:X>", "1:16 open-removal");
        filled("closed by a value", "<X:>a<REMOVES>b", "");
        blank("a tag without a name at either end of what goes",
              "<,abc><X>a<,abc>\n<I>b</I><,abc>\n<,abc>c", "3:2 bad-expression");
        blank("brought together by the removal in front", "<<X:>a<:X>X:><NOSUCH*><B><zz><:X>", "");
        filled("brought together, over lines", "<<X:>a<:X>X:><NOSUCH>\n<QTY*>[<B>\n<zz><:X>", "");
        blank("brought together by that of an image", "<<I>a</I>I><NOSUCH*><B><zz></I>", "");
        blank("behind those that were brought together", "<<X:>a<:X>X:>b<:X><<I>a</I>I></I><zz>",
              "1:34 short-tag");
    }
    void openRemoval() { checkPlaces(); }

    void entriesInText_data()
    {
        addTemplates();
        blank("on lines of their own, and in a part that is removed",
              "<ENTRIES>\n  <entries> \n<X:><ENTRIES><:X>", "");
        blank("in a group", "[<ENTRIES>]", "1:2 entries-in-text");
        blank("with text around, in capitals or not", "a<ENTRIES>b<Entries>",
              "1:2 entries-in-text 1:12 entries-in-text");
    }
    void entriesInText() { checkPlaces(); }

    // Keywords behind letters that are more in upper case.
    void shiftedCut_data()
    {
        addTemplates();
        blank("entries behind such a letter", "Stra\u00DFe <ENTRIES>",
              "1:8 entries-in-text 1:8 shifted-cut");
        blank("entries in front of such a letter", "<ENTRIES>\u00DF", "1:1 entries-in-text");
        blank("a marker behind such a letter, in a template that isn't split",
              "stra\u00DFe <fiscal_body> x", "1:8 shifted-cut 1:8 fiscal-marker");
        blankWith("--fiscal", "a marker behind such letters on two lines",
                  "Stra\u00DFe\nStra\u00DFe<FISCAL_BODY>", "2:7 unterminated-tag 2:7 shifted-cut");
        blankWith("--fiscal", "a letter in the marker itself", "a<\uFB01scal_body>b",
                  "1:2 shifted-cut");
        blankWith("--fiscal", "two kinds of markers",
                  "\u00DF<FISCAL_BODY>\n\u00DF<FISCAL_QR><FISCAL_QR>",
                  "1:2 unterminated-tag 1:2 shifted-cut 2:2 unterminated-tag 2:2 shifted-cut");
        blankWith("--fiscal", "a second marker that isn't looked for",
                  "<FISCAL_BODY>\u00DF<FISCAL_BODY>", "");
        blank("attributes and the number of the document",
              "Stra\u00DFe <TOTAL>\n<DOCNO>\u00DF<DOCNO>", "");
    }
    void shiftedCut() { checkPlaces(); }

    void fiscalMarker_data()
    {
        addTemplates();
        blank("in text, in capitals or not", "x <fiscal_qr> <FISCAL_QR>",
              "1:3 fiscal-marker 1:15 fiscal-marker");
        blankWith("--fiscal", "a split at the markers finds what stands beside them",
                  "  <abc> <FISCAL_BODY> <xyz>", "1:3 short-tag 1:23 short-tag");
    }
    void fiscalMarker() { checkPlaces(); }
};

QTEST_GUILESS_MAIN(TestLintMarkup)
#include "tst_lint_markup.moc"
