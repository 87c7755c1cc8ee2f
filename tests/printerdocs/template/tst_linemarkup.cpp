#include <QtTest>

#include "linecase.h"

using namespace linecase;

/// Tags that hold for their line, wherever they stand in it.
class TestLineMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void emptyLineTakesTheLastAlignmentAndChangesNothing_data()
    {
        addLines();
        row("at the start") << line("").gives("");
        row("all carried values stay")
            << line("").entering(5, 2, AlignRight).spacing(3).gives("").aligned(AlignRight);
        row("no margin")
            << line("").entering(0, 0, AlignCenter).leftMargin(4).gives("").aligned(AlignCenter);
        row("null text")
            << line(QString()).entering(64, 3, AlignJustify).gives("").aligned(AlignJustify);
    }
    void emptyLineTakesTheLastAlignmentAndChangesNothing() { checkLine(); }

    void alignmentTags_data()
    {
        addLines();
        row("text without a tag is left-aligned whatever came before")
            << line("abc").entering(0, 0, AlignCenter).gives("abc");
        row("centre") << line("<C>abc").gives("abc").aligned(AlignCenter);
        row("centre in the middle of the text") << line("a<C>bc").gives("abc").aligned(AlignCenter);
        row("right") << line("<R>abc").gives("abc").aligned(AlignRight);
        row("justify leaves a tab") << line("a<S>b").gives("a\tb").aligned(AlignJustify);
        row("two justify tags are two tabs")
            << line("a<S>b<S>c").gives("a\tb\tc").aligned(AlignJustify);
        row("justify alone is a line of one tab") << line("<S>").gives("\t").aligned(AlignJustify);
        row("a tab in the text doesn't justify") << line("a\tb").gives("a\tb");
        row("justify goes before centre")
            << line("<C>a<S>b").gives("<C>a\tb").aligned(AlignJustify);
        row("justify goes before right") << line("<R>a<S>b").gives("<R>a\tb").aligned(AlignJustify);
        row("centre goes before right") << line("<R><C>x").gives("<R>x").aligned(AlignCenter);
        row("centre before right, right behind")
            << line("<C>a<R>").gives("a<R>").aligned(AlignCenter);
        row("lower case is text") << line("<c>a<s>b<r>").gives("<c>a<s>b<r>");
        row("cut tags are text") << line("<Ca C>").gives("<Ca C>");
        row("centre alone keeps the last alignment")
            << line("<C>").entering(0, 0, AlignRight).givesNothing();
        row("right twice and nothing else")
            << line("<R><R>").entering(1, 2, AlignCenter).givesNothing();
        row("a tag made by taking another away is too late for alignment")
            << line("<C<L1>>x").gives("<C>x");
    }
    void alignmentTags() { checkLine(); }

    void leftOneTagIsOnlyTakenAway_data()
    {
        addLines();
        row("alone with text") << line("<L1>x").gives("x");
        row("alignment of another tag stays") << line("<L1><C>x").gives("x").aligned(AlignCenter);
        row("found after alignment") << line("<L1<C>>x").gives("x").aligned(AlignCenter);
        row("before the whole-line formats") << line("<B<L1>>x").gives("x").formats("01");
        row("another number is text") << line("<L2>x").gives("<L2>x");
        row("nothing else on the line") << line("<L1>").entering(3, 1, AlignCenter).givesNothing();
    }
    void leftOneTagIsOnlyTakenAway() { checkLine(); }

    void wholeLineFormats_data()
    {
        addLines();
        row("bold") << line("<B>x").gives("x").formats("01");
        row("italic") << line("<N>x").gives("x").formats("02");
        row("mark Z") << line("<Z>x").gives("x").formats("04");
        row("underline") << line("<U>x").gives("x").formats("08");
        row("double width") << line("<W2>x").gives("x").formats("10");
        row("double height") << line("<H2>x").gives("x").formats("20");
        row("anywhere in the line") << line("ab<B>c").gives("abc").formats("010101");
        row("at the end") << line("ab<U>").gives("ab").formats("0808");
        row("all six") << line("<Z><B><H2><W2><N><U>xy").gives("xy").formats("3f3f");
        row("all six, the other way round")
            << line("xy<U><N><W2><H2><B><Z>").gives("xy").formats("3f3f");
        row("Cyrillic") << line("<B>Чек").gives("Чек").formats("010101");
        row("nothing but the tag leaves the format on")
            << line("<B>").entering(1, 0, AlignRight).givesNothing();
        row("nothing but tags, centred")
            << line("<C><B>").entering(0, 0, AlignRight).givesNothing();
        row("closing ends a range left open before")
            << line("<B>x").entering(1).gives("x").formats("01").leavesFormat(0);
        row("closing touches its own flag alone")
            << line("<B>x").entering(9).gives("x").formats("09").leavesFormat(8);
        row("other flags carried in stay")
            << line("<B>x").entering(8).gives("x").formats("09").leavesFormat(8);
        row("own close tag behind the text stays as text")
            << line("<B>x<:B>").gives("x<:B>").formats("01 00 00 00 00");
        row("own open tag in front stays as text, and all of it is bold")
            << line("<B:><B>x").gives("<B:>x").formats(1, 5).leavesFormat(0);
        row("own close tag in the middle ends the format")
            << line("<B>a<:B>b").gives("ab").formats("01 00");
        row("brackets inside") << line("<B>[x]").gives("x").formats("01");
        row("lower case is text") << line("<b>x").gives("<b>x");
        row("blank inside is text") << line("<B >x").gives("<B >x");
        row("other numbers are text") << line("<H1>x<W>y<H3>z").gives("<H1>x<W>y<H3>z");
        row("the margin is not formatted")
            << line("<U>x").leftMargin(2).gives("  x").formats("00 00 08");
    }
    void wholeLineFormats() { checkLine(); }

    void lineSpacingTags_data()
    {
        addLines();
        row("default") << line("x").spacing(4).gives("x");
        row("negative default") << line("x").spacing(-3).gives("x");
        for (int spacing = 0; spacing <= 7; ++spacing) {
            row(qPrintable(QString("spacing %1").arg(spacing)))
                << line(QString("<LS%1>x").arg(spacing)).spacing(9).gives("x").spaced(spacing);
        }
        row("behind the text") << line("x<LS6>").gives("x").spaced(6);
        row("8 is text") << line("<LS8>x").spacing(2).gives("<LS8>x");
        row("no number is text") << line("<LS>x").gives("<LS>x");
        row("lower case is text") << line("<ls1>x").gives("<ls1>x");
        row("the lowest wins") << line("<LS2>x<LS5>").gives("x<LS5>").spaced(2);
        row("the lowest wins from behind too") << line("<LS5>x<LS2>").gives("<LS5>x").spaced(2);
        row("with a whole-line format")
            << line("<LS1><B>x").spacing(5).gives("x").formats("01").spaced(1);
        row("alone it is lost")
            << line("<LS3>").spacing(5).entering(0, 0, AlignCenter).givesNothing();
    }
    void lineSpacingTags() { checkLine(); }

    void bracketsAndEmptyTagsVanish_data()
    {
        addLines();
        row("a group") << line("[a]").gives("a");
        row("one bracket") << line("a[b").gives("ab");
        row("the wrong way round") << line("]a[").gives("a");
        row("brackets alone") << line("[]").entering(7, 1, AlignRight).givesNothing();
        row("empty tag") << line("a<:>b").gives("ab");
        row("empty tag alone") << line("<:>").entering(7, 1, AlignRight).givesNothing();
        row("a bracketed word is no tag") << line("[F2]").gives("F2");
    }
    void bracketsAndEmptyTagsVanish() { checkLine(); }

    // Each hit takes its bytes at its place in the unchanged text, and hits beyond the end of the
    // shortened arrays take none. One surplus format byte goes at the end, surplus font bytes stay.
    void repeatedTagsLeaveSurplusBytes_data()
    {
        addLines();
        row("two centre tags")
            << line("<C>a<C>b").gives("ab").formats(0, 3).fonts("0000").aligned(AlignCenter);
        row("two centre tags around a character")
            << line("<C>a<C>").entering(9, 2).gives("a").formats(9, 3).fonts("2222").aligned(
                   AlignCenter);
        row("two groups") << line("[a][b]").gives("ab").formats(0, 2).fonts("000");
        row("nested groups") << line("[[x]]").gives("x").formats(0, 1).fonts("00");
        row("groups with a margin go behind the margin's bytes") << line("[a][b]")
                                                                        .entering(1, 3)
                                                                        .leftMargin(1)
                                                                        .gives(" ab")
                                                                        .formats("00 01 01")
                                                                        .fonts("0333");
        row("empty tags") << line("<:>a<:>").gives("a").formats(0, 3).fonts("0000");
        row("left-one tags") << line("<L1>a<L1>").gives("a").formats(0, 4).fonts("00000");
        row("spacing tags")
            << line("<LS3>x<LS3>").gives("x").formats(0, 5).fonts("000000").spaced(3);
        row("a repeated whole-line tag around a short text formats nothing")
            << line("<B>a<B>").gives("a").formats(0, 3).fonts("0000");
        row("a repeated whole-line tag in front of a short text formats nothing")
            << line("<B><B>a").gives("a").formats(0, 2).fonts("000");
        row("a repeated whole-line tag in front of a long text formats it")
            << line("<B><B>abcd").gives("abcd").formats("01010101");
        row("surplus of an earlier tag keeps later ones from formatting")
            << line("<B><C>a<C>").gives("a").formats(0, 3).fonts("0000").aligned(AlignCenter);
        row("surplus bytes take part in ranges") << line("<B:><C>a<C>")
                                                        .gives("a")
                                                        .formats(1, 3)
                                                        .fonts("0000")
                                                        .leavesFormat(1)
                                                        .aligned(AlignCenter);
        row("nothing left of text and fonts")
            << line("<C><C><F2>").entering(0, 0, AlignRight).givesNothing();
        row("surplus font bytes alone carry the font out")
            << line("<F2><C><C>").entering(0, 0, AlignRight).givesNothing().leavesFont(1);
    }
    void repeatedTagsLeaveSurplusBytes() { checkLine(); }

    void leftMargin_data()
    {
        addLines();
        row("blanks of format and font 0") << line("x")
                                                  .entering(1, 2)
                                                  .leftMargin(3)
                                                  .gives("   x")
                                                  .formats("00 00 00 01")
                                                  .fonts("0002");
        row("zero") << line("x").leftMargin(0).gives("x");
        row("negative") << line("x").leftMargin(-5).gives("x");
        row("in front of the tab")
            << line("<S>a").leftMargin(2).gives("  \ta").aligned(AlignJustify);
        row("centred") << line("<C>a").leftMargin(1).gives(" a").aligned(AlignCenter);
        row("not in front of nothing") << line("<B:>").leftMargin(4).givesNothing().leavesFormat(1);
        row("does not read tags across the margin") << line("B:>x").leftMargin(2).gives("  B:>x");
    }
    void leftMargin() { checkLine(); }

    void unknownTagsStayAsText_data()
    {
        addLines();
        for (const char *text :
             {"<ABC>", "<ABCD>x", "<X>", "<X:>a<:X>", "<I>1 1 a</I>", "<QR>data", "<ENTRIES>",
              "< B>", "<B:", ":B>", "<B::>", "<::B>", "a < b > c", "Итог: 5 < 6"})
            row(text) << line(text).gives(text);
    }
    void unknownTagsStayAsText() { checkLine(); }
};

QTEST_GUILESS_MAIN(TestLineMarkup)
#include "tst_linemarkup.moc"
