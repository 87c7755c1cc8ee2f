#include <QtTest>

#include "linecase.h"

using namespace linecase;

/// Tags that act from their place on.
class TestInlineTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void symbolCodes_data()
    {
        addLines();
        row("raw") << line("<65>").gives("A").formats("40");
        row("in the current format") << line("<#65>").gives("A");
        row("special symbol") << line("<#3>").gives(QChar(3)).formats("00");
        row("raw code of a special symbol") << line("<3>").gives(QChar(3)).formats("40");
        row("between characters") << line("a<66>b").gives("aBb").formats("00 40 00");
        row("two in a row") << line("<72><105>").gives("Hi").formats("4040");
        row("flags carried in stay") << line("<66>").entering(5, 2).gives("B").formats("45");
        row("flags carried in, current format") << line("<#66>").entering(5, 2).gives("B");
        row("raw flag carried in stays") << line("<#66>x").entering(0x40).gives("Bx");
        row("low 8 bits") << line("<321>").gives("A").formats("40");
        row("256 is 0") << line("<256>").gives(QChar(0)).formats("40");
        row("255") << line("<255>").gives(QChar(255)).formats("40");
        row("long number keeps its low 8 bits") << line("<#65601>").gives("A");
        row("leading zeros") << line("<0065>").gives("A").formats("40");
        row("not a number is 0") << line("<1x>").gives(QChar(0)).formats("40");
        row("not a number in the current format is 0") << line("<#x>").gives(QChar(0));
        row("hash alone is 0") << line("<#>").gives(QChar(0));
        row("two hashes are 0") << line("<##65>").gives(QChar(0));
        row("hash behind a digit is 0, raw") << line("<6#5>").gives(QChar(0)).formats("40");
        row("too great a number is 0") << line("<99999999999>").gives(QChar(0)).formats("40");
        row("negative behind the hash") << line("<#-1>").gives(QChar(255));
        row("negative without hash is text") << line("<-1>").gives("<-1>");
        row("other decimal digits count as digits") << line("<٣>").gives(QChar(0)).formats("40");
        row("superscript two is no digit") << line("<²>").gives("<²>");
        row("opening bracket, raw") << line("<91>").gives("[").formats("40");
        row("made < takes no part in the scan")
            << line("<60>66>").gives("<66>").formats("40 00 00 00");
        row("made > closes a font tag") << line("<F2<62>x").gives("x").fonts("1").leavesFont(1);
        row("made > does not close a code") << line("<6<62>").gives(QChar(0)).formats("40");
        row("made < and made > are an open tag")
            << line("<60>U:<62>x").gives("x").formats("08").leavesFormat(8);
        row("doubled < is text") << line("<<65>").gives("<A").formats("00 40");
        row("no end") << line("<65").gives("<65");
        row("no end behind a code") << line("<65><66").gives("A<66").formats("40 00 00 00");
        row("end taken from a later tag")
            << line("<66 and <B:>x").gives(QString(QChar(0)) + "x").formats("40 00");
        row("only <") << line("<").gives("<");
        row("only >") << line(">").gives(">");
        row("empty brackets") << line("x<>").gives("x<>");
        row("< at the end") << line("x><").gives("x><");
        row("range in front, raw") << line("<B:><66>").gives("B").formats("41").leavesFormat(1);
        row("range in front, current format")
            << line("<B:><#66>").gives("B").formats("01").leavesFormat(1);
        row("whole-line format, raw") << line("<B><66>").gives("B").formats("41");
        row("range behind") << line("<66><B:>x").gives("Bx").formats("40 01").leavesFormat(1);
        row("font in front") << line("<F3><66>").gives("B").formats("40").fonts("2").leavesFont(2);
    }
    void symbolCodes() { checkLine(); }

    void ranges_data()
    {
        addLines();
        const QPair<const char *, int> kinds[] = {{"B", 1}, {"N", 2},   {"Z", 4},
                                                  {"U", 8}, {"W2", 16}, {"H2", 32}};
        for (const auto &kind : kinds) {
            const QString letters = kind.first;
            const QByteArray flag(1, char(kind.second));
            LineCase opened = line("a<" + letters + ":>b").gives("ab").leavesFormat(kind.second);
            opened.outcome.formats = QByteArray(1, '\0') + flag;
            row(qPrintable(letters + " opened")) << opened;
            LineCase closed =
                line("a<:" + letters + ">b").entering(kind.second).gives("ab").leavesFormat(0);
            closed.outcome.formats = flag + QByteArray(1, '\0');
            row(qPrintable(letters + " closed")) << closed;
            row(qPrintable(letters + " closed leaves all others on"))
                << line("<:" + letters + ">b")
                       .entering(0xff)
                       .gives("b")
                       .formats(0xff & ~kind.second, 1)
                       .leavesFormat(0xff & ~kind.second);
            row(qPrintable(letters + " opened alone"))
                << line("<" + letters + ":>").givesNothing().leavesFormat(kind.second);
            row(qPrintable(letters + " closed alone")) << line("<:" + letters + ">")
                                                              .entering(0x7f)
                                                              .givesNothing()
                                                              .leavesFormat(0x7f & ~kind.second);
        }
        row("opened and closed") << line("a<B:>b<:B>c").gives("abc").formats("00 01 00");
        row("twice") << line("a<B:>b<:B>c<B:>d<:B>e").gives("abcde").formats("00 01 00 01 00");
        row("overlapping kinds")
            << line("<B:>a<U:>b<:B>c<:U>d").gives("abcd").formats("01 09 08 00");
        row("different kinds next to each other")
            << line("<B:><U:>a<:B><:U>b").gives("ab").formats("09 00");
        row("opened again while on") << line("<B:>a<B:>b<:B>c").gives("abc").formats("01 01 00");
        row("closed while off") << line("a<:B>b").gives("ab");
        row("opened while carried in") << line("a<B:>b").entering(1).gives("ab");
        row("two bytes of one character")
            << line("a<B:>😀").gives("a😀").formats("00 01 01").leavesFormat(1);
        row("lower case is text") << line("<b:>x<:b>").gives("<b:>x<:b>");
        row("unknown letters are text") << line("<H:>x<:Q>").gives("<H:>x<:Q>");
        row("the empty tag is no range") << line("x<:>y").entering(1).gives("xy");
    }
    void ranges() { checkLine(); }

    void rangeTagRightBehindItsOwnPair_data()
    {
        addLines();
        row("open behind close stays, format goes off")
            << line("<:B><B:>x").entering(1).gives("<B:>x").formats(0, 5).leavesFormat(0);
        row("close behind open is honoured") << line("<B:><:B>x").gives("x");
        row("close behind open is honoured, carried in")
            << line("<B:><:B>x").entering(1).gives("x").formats("00").leavesFormat(0);
        row("open behind open stays")
            << line("<B:><B:>x").gives("<B:>x").formats(1, 5).leavesFormat(1);
        row("close behind close stays")
            << line("<:B><:B>x").entering(1).gives("<:B>x").formats(0, 5).leavesFormat(0);
        row("open behind open behind a character")
            << line("a<U:><U:>b").gives("a<U:>b").formats("00 08 08 08 08 08").leavesFormat(8);
        row("later ones of the passed kind are passed too")
            << line("a<B:><B:>b<B:>c")
                   .gives("a<B:>b<B:>c")
                   .formats("00 01 01 01 01 01 01 01 01 01 01")
                   .leavesFormat(1);
        row("until one of the pair is honoured") << line("a<B:><B:>b<:B>c<B:>d")
                                                        .gives("a<B:>bcd")
                                                        .formats("00 01 01 01 01 01 00 01")
                                                        .leavesFormat(1);
        row("passed close tag, then an open one, then a close one")
            << line("<:Z><:Z>a<Z:>b<:Z>c")
                   .entering(4)
                   .gives("<:Z>abc")
                   .formats("00 00 00 00 00 04 00")
                   .leavesFormat(0);
        row("open, close, open: the last stays")
            << line("<B:><:B><B:>x").gives("<B:>x").formats(0, 5).leavesFormat(0);
        row("another kind that is still there in between makes it honoured")
            << line("<:B><U:><B:>x").entering(1).gives("x").formats("09").leavesFormat(9);
        row("a kind taken out before stands between no more")
            << line("<U:><B:><U:>x").gives("<U:>x").formats(9, 5).leavesFormat(9);
        row("tag inside its own kind") << line("<B:<:B>>x").gives("<B:>x");
    }
    void rangeTagRightBehindItsOwnPair() { checkLine(); }

    void fonts_data()
    {
        addLines();
        const QPair<const char *, int> numbers[] = {
            {"1", 0}, {"2", 1}, {"3", 2}, {"4", 3},   {"5", 1},          {"6", 2},
            {"7", 3}, {"8", 0}, {"9", 1}, {"100", 0}, {"2147483647", 3}, {"03", 2}};
        for (const auto &number : numbers) {
            row(number.first) << line(QString("<F%1>x").arg(number.first))
                                     .entering(0, number.second == 3 ? 1 : 3)
                                     .gives("x")
                                     .fonts(QByteArray::number(number.second))
                                     .leavesFont(number.second);
        }
        for (const char *text : {"<F0>x", "<Fx>x", "<FISCAL>x", "<F-1>x", "<F>x", "<f2>x", "<F2",
                                 "<F2147483648>x", "<F99999999999>x", "<F1.5>x", "F2>x"})
            row(text) << line(text).entering(0, 2).gives(text);
        row("from here on") << line("a<F2>b").gives("ab").fonts("01").leavesFont(1);
        row("twice") << line("<F2>a<F3>b").gives("ab").fonts("12").leavesFont(2);
        row("next to each other: the last wins")
            << line("<F2><F3>b").gives("b").fonts("2").leavesFont(2);
        row("behind the text changes nothing, as no character has it") << line("a<F2>").gives("a");
        row("alone changes nothing") << line("<F2>").entering(0, 3, AlignRight).givesNothing();
        row("inside a tag that is text")
            << line("<Fx<F2>y").gives("<Fxy").fonts("0001").leavesFont(1);
        row("made by taking another out: passed by")
            << line("<<F2>F3>x").gives("<F3>x").fonts("01111").leavesFont(1);
        row("around another one: stays as text")
            << line("<F<F2>3>x").gives("<F3>x").fonts("00111").leavesFont(1);
        row("cut one in front") << line("<F<F2>").gives("<F").fonts("00");
        row("a code inside makes it text")
            << line("<F<65>2>x").gives("<FA2>x").formats("00 00 40 00 00 00");
        row("formats stay with their characters")
            << line("<B:>a<F2>b<:B>c").gives("abc").formats("01 01 00").fonts("011").leavesFont(1);
    }
    void fonts() { checkLine(); }
};

QTEST_GUILESS_MAIN(TestInlineTags)
#include "tst_inlinetags.moc"
