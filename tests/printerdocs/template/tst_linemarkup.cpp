#include <QtTest>
#include <map>
#include <memory>
#include <random>

#include "markupmodel.h"
#include "printerdocs/printerdocumentformatter.h"

namespace {

/// One line, what is carried into it, and what it has to become. Unless told otherwise every
/// character has the format and the font carried in, and nothing is carried out but AlignLeft.
struct LineCase
{
    QString line;
    MarkupCarry before;
    int defaultSpacing = 0;
    int margin = 0;
    MarkupOutcome outcome;
    MarkupCarry after;

    LineCase &entering(int format, int font = 0, ETextAlignment alignment = AlignLeft)
    {
        before.format = static_cast<unsigned char>(format);
        before.font = static_cast<unsigned char>(font);
        before.alignment = alignment;
        return *this;
    }
    LineCase &spacing(int value)
    {
        defaultSpacing = value;
        return *this;
    }
    LineCase &leftMargin(int value)
    {
        margin = value;
        return *this;
    }

    LineCase &gives(const QString &text)
    {
        outcome.valid = true;
        outcome.text = text;
        outcome.formats = QByteArray(text.length(), char(before.format));
        outcome.fonts = QByteArray(text.length(), char(before.font));
        outcome.lineSpacing = defaultSpacing;
        after = before;
        after.alignment = AlignLeft;
        return *this;
    }
    /// A line of nothing but tags.
    LineCase &givesNothing()
    {
        outcome = MarkupOutcome();
        after = before;
        return *this;
    }
    /// One pair of hexadecimal digits for each byte.
    LineCase &formats(const char *hex)
    {
        outcome.formats = QByteArray::fromHex(hex);
        return *this;
    }
    LineCase &formats(int format, int count)
    {
        outcome.formats = QByteArray(count, char(format));
        return *this;
    }
    /// One digit for each byte.
    LineCase &fonts(const QByteArray &digits)
    {
        outcome.fonts = digits;
        for (char &font : outcome.fonts)
            font = char(font - '0');
        return *this;
    }
    LineCase &aligned(ETextAlignment alignment)
    {
        outcome.alignment = alignment;
        after.alignment = alignment;
        return *this;
    }
    LineCase &spaced(int value)
    {
        outcome.lineSpacing = value;
        return *this;
    }
    LineCase &leavesFormat(int format)
    {
        after.format = static_cast<unsigned char>(format);
        return *this;
    }
    LineCase &leavesFont(int font)
    {
        after.font = static_cast<unsigned char>(font);
        return *this;
    }
};

LineCase line(const QString &text)
{
    LineCase made;
    made.line = text;
    return made;
}

QString shown(const MarkupOutcome &outcome, const MarkupCarry &carry)
{
    const QString carried = QString("carries format %1 font %2 alignment %3")
                                .arg(int(carry.format), 2, 16, QChar('0'))
                                .arg(int(carry.font))
                                .arg(int(carry.alignment));
    if (!outcome.valid)
        return "nothing; " + carried;
    QString text = outcome.text;
    for (int code = 0; code < 32; ++code)
        text.replace(QChar(code), QString("{%1}").arg(code));
    return QString("\"%1\" formats %2 fonts %3 alignment %4 spacing %5; %6")
        .arg(text, QString::fromLatin1(outcome.formats.toHex()),
             QString::fromLatin1(outcome.fonts.toHex()))
        .arg(int(outcome.alignment))
        .arg(outcome.lineSpacing)
        .arg(carried);
}

bool same(const MarkupOutcome &a, const MarkupOutcome &b)
{
    return a.valid == b.valid && a.text == b.text && a.formats == b.formats && a.fonts == b.fonts &&
           a.alignment == b.alignment && a.lineSpacing == b.lineSpacing;
}

bool same(const MarkupCarry &a, const MarkupCarry &b)
{
    return a.format == b.format && a.font == b.font && a.alignment == b.alignment;
}

/// A block of one line in the model's terms. A block of any other shape comes out as a text that no
/// line gives.
MarkupOutcome outcomeOf(const DocumentBlock &block)
{
    if (block == DocumentBlock())
        return {};
    MarkupOutcome outcome;
    outcome.valid = true;
    if (!block.isText() || block.text().size() != 1) {
        outcome.text = "a block that is not one line of text";
        return outcome;
    }
    outcome.alignment = block.alignment();
    outcome.lineSpacing = block.lineSpacing().first();
    outcome.text = block.text().first();
    outcome.formats = block.format().first();
    outcome.fonts = block.font().first();
    return outcome;
}

MarkupOutcome readByLibrary(const PrinterDocumentFormatter &formatter, const QString &line,
                            MarkupCarry &carry, int lineSpacing)
{
    return outcomeOf(
        formatter.formatPrintStr(line, carry.format, carry.font, carry.alignment, lineSpacing));
}

/// Bytes that are left of `size` when hits `first`, `first` + `step` ... of a tag each take `taken`
/// bytes at their place in the text before the replacement, or what lies behind that place.
int bytesLeft(int size, int first, int step, int hits, int taken)
{
    for (int hit = 0; hit < hits; ++hit)
        size -= qBound(0, size - (first + hit * step), taken);
    return size;
}

QString repeated(const QString &unit, int count)
{
    return unit.repeated(count);
}

/// Lines for the comparison with the model: tags whole, cut and repeated, codes, fonts and text.
class LineMaker
{
public:
    explicit LineMaker(unsigned seed) : m_random(seed) {}

    int below(int limit) { return int(m_random() % unsigned(limit)); }

    QString taggedLine()
    {
        QString line;
        QString piece;
        for (int left = below(26); left > 0; --left) {
            if (below(6) != 0)
                piece = nextPiece();
            line += piece;
        }
        return line;
    }

    QString scribbledLine()
    {
        static const QString letters("<<<>>>::[]##FFBZNUHW221SCRL0 xЖ");
        QString line;
        for (int left = below(60); left > 0; --left)
            line += letters.at(below(letters.length()));
        return line;
    }

private:
    template <size_t n>
    QString anyOf(const char *const (&rows)[n])
    {
        return rows[below(int(n))];
    }

    QString wholeTag()
    {
        static const char *const tags[] = {
            "<S>",   "<C>",   "<R>",   "<L1>",  "<Z>",   "<B>",   "<H2>",  "<W2>",  "<N>",
            "<U>",   "<LS0>", "<LS1>", "<LS2>", "<LS3>", "<LS4>", "<LS5>", "<LS6>", "<LS7>",
            "<LS8>", "[",     "]",     "<:>",   "<X>",   "<I>",   "<QR>",  "<ABCD>"};
        return anyOf(tags);
    }

    QString rangeTag()
    {
        static const char *const tags[] = {"<Z:>", "<B:>", "<H2:>", "<W2:>", "<N:>", "<U:>",
                                           "<:Z>", "<:B>", "<:H2>", "<:W2>", "<:N>", "<:U>"};
        return anyOf(tags);
    }

    QString codeTag()
    {
        static const char *const tags[] = {
            "<60>",  "<62>", "<#60>", "<#62>", "<91>", "<#93>", "<1x>",  "<#>",  "<-1>",
            "<#-3>", "<5 >", "<# 5>", "<#٣>",  "<٣>",  "<²>",   "<#58>", "<+7>", "<99999999999>"};
        if (below(2) == 0)
            return anyOf(tags);
        return QString(below(2) == 0 ? "<%1>" : "<#%1>").arg(below(400));
    }

    QString fontTag()
    {
        static const char *const tags[] = {
            "<F",    "<F>",   "<Fx>",          "<FISCAL>",       "<F 2>",
            "<F3 >", "<F+2>", "<F2147483647>", "<F99999999999>", "<f1>"};
        if (below(4) == 0)
            return anyOf(tags);
        return QString("<F%1>").arg(below(12) - 1);
    }

    QString text()
    {
        static const char *const texts[] = {"a", "bc", " ", "\t", "Чек", "Итог 7", "😀",  "x=1",
                                            "<", ">",  ":", "<:", ":>",  "#",      "F2", "B"};
        return anyOf(texts);
    }

    QString nextPiece()
    {
        switch (below(8)) {
            case 0:
                return wholeTag();
            case 1:
            case 2:
                return rangeTag();
            case 3:
                return codeTag();
            case 4:
                return fontTag();
            case 5:
                return cut(below(2) == 0 ? rangeTag() : wholeTag());
            default:
                return text();
        }
    }

    QString cut(const QString &tag)
    {
        const int at = below(tag.length() + 1);
        return below(2) == 0 ? tag.left(at) : tag.mid(at);
    }

    std::mt19937 m_random;
};

}  // namespace

Q_DECLARE_METATYPE(LineCase)

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

    // A tag that appears because an earlier step took away what stood inside it is honoured only
    // if its own step is still to come, so these rows fix the order of the steps.
    void orderOfTheSteps_data()
    {
        addLines();
        row("whole line Z before B") << line("<B<Z>>x").gives("x").formats("05");
        row("whole line B before H2") << line("<H2<B>>x").gives("x").formats("21");
        row("whole line H2 before W2") << line("<W2<H2>>x").gives("x").formats("30");
        row("whole line W2 before N") << line("<N<W2>>x").gives("x").formats("12");
        row("whole line N before U") << line("<U<N>>x").gives("x").formats("0a");
        row("whole line U before spacing") << line("<LS1<U>>x").gives("x").formats("08").spaced(1);
        row("whole line B not after Z's removal alone")
            << line("<Z<B>>x").gives("<Z>x").formats(1, 4);
        row("spacing before brackets") << line("<[LS1>x").spacing(6).gives("<LS1>x");
        row("whole line before brackets") << line("<[B>x").gives("<B>x");
        row("brackets before the empty tag") << line("<[:>x").gives("x");
        row("brackets before ranges") << line("<[B:>x").gives("x").formats("01").leavesFormat(1);
        row("empty tag before ranges") << line("<<:>B:>x").gives("x").formats("01").leavesFormat(1);
        row("empty tag makes a close tag alone on its line")
            << line("<:<:>B>").entering(1).givesNothing().leavesFormat(0);
        row("brackets before codes") << line("<6[5>").gives("A").formats("40");
        row("brackets before fonts") << line("<F[2>x").gives("x").fonts("1").leavesFont(1);
        row("codes after brackets: an opening bracket can be printed") << line("<#91>").gives("[");
        row("a closing bracket too") << line("[<#93>").gives("]");
        row("codes before ranges") << line("<60>B:>x").gives("x").formats("01").leavesFormat(1);
        row("codes before fonts") << line("<#60>F2>x").gives("x").fonts("1").leavesFont(1);
        row("range B before Z") << line("<Z<B:>:>x").gives("x").formats("05").leavesFormat(0x05);
        row("range Z before U") << line("<U<Z:>:>x").gives("x").formats("0c").leavesFormat(0x0c);
        row("range U before N") << line("<N<U:>:>x").gives("x").formats("0a").leavesFormat(0x0a);
        row("range N before H2") << line("<H2<N:>:>x").gives("x").formats("22").leavesFormat(0x22);
        row("range H2 before W2")
            << line("<W2<H2:>:>x").gives("x").formats("30").leavesFormat(0x30);
        row("range B not after U")
            << line("<B<U:>:>x").gives("<B:>x").formats("00 00 08 08 08").leavesFormat(8);
        row("range H2 not after W2")
            << line("<H2<W2:>:>x").gives("<H2:>x").formats("00 00 00 10 10 10").leavesFormat(16);
        row("ranges before fonts")
            << line("<F<B:>2>x").gives("x").formats("01").fonts("1").leavesFormat(1).leavesFont(1);
        row("ranges not after fonts")
            << line("<<F2>B:>x").gives("<B:>x").fonts("01111").leavesFont(1);
    }
    void orderOfTheSteps() { checkLine(); }

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

    void formatFontAndAlignmentAreCarriedFromLineToLine()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        const LineCase lines[] = {
            line("a<B:>b").gives("ab").formats("00 01").leavesFormat(1),
            line("<C>cd").entering(1).gives("cd").aligned(AlignCenter),
            line("").entering(1, 0, AlignCenter).gives("").aligned(AlignCenter).formats(0, 0),
            line("<F3>").entering(1, 0, AlignCenter).givesNothing(),
            line("<U:>").entering(1, 0, AlignCenter).givesNothing().leavesFormat(9),
            line("<F3>e").entering(9, 0, AlignCenter).gives("e").fonts("2").leavesFont(2),
            line("<B>f").entering(9, 2).gives("f").leavesFormat(8),
            line("<R>g<:U>h")
                .entering(8, 2)
                .gives("gh")
                .formats("08 00")
                .leavesFormat(0)
                .aligned(AlignRight),
            line("i").entering(0, 2, AlignRight).gives("i"),
        };
        MarkupCarry carry;
        for (const LineCase &told : lines) {
            QVERIFY2(same(carry, told.before), qPrintable(told.line));
            const MarkupOutcome outcome =
                readByLibrary(formatter, told.line, carry, told.defaultSpacing);
            QCOMPARE(shown(outcome, carry), shown(told.outcome, told.after));
        }
    }

    void lineItselfIsNotChanged()
    {
        const PrinterDocumentFormatter formatter(2, nullptr);
        const QString text("<B:>x<65>[y]");
        MarkupCarry carry;
        readByLibrary(formatter, text, carry, 0);
        QCOMPARE(text, QString("<B:>x<65>[y]"));
    }

    void randomLinesReadAsTheModelReadsThem_data()
    {
        QTest::addColumn<bool>("tagged");
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("count");
        QTest::newRow("tags and text") << true << 20261121 << 110000;
        QTest::newRow("tags and text, another seed") << true << 7 << 40000;
        QTest::newRow("single characters of tags") << false << 4711 << 60000;
    }
    void randomLinesReadAsTheModelReadsThem()
    {
        QFETCH(bool, tagged);
        QFETCH(int, seed);
        QFETCH(int, count);
        LineMaker maker{unsigned(seed)};
        MarkupCarry carry;
        for (int i = 0; i < count; ++i) {
            if (maker.below(12) == 0) {
                carry.format = static_cast<unsigned char>(maker.below(256));
                carry.font = static_cast<unsigned char>(maker.below(4));
                carry.alignment = ETextAlignment(maker.below(4));
            }
            const int margin = QList<int>{0, 0, 0, 1, 3, 7, -1}.at(maker.below(7));
            const int spacing = maker.below(4) - 1;
            const QString text = tagged ? maker.taggedLine() : maker.scribbledLine();
            compareWithModel(text, carry, margin, spacing);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void longLinesOfManyTagsAreRead_data()
    {
        addLines();
        for (const char *tag : {"<C>", "<R>", "<L1>", "<Z>", "<B>", "<H2>", "<W2>", "<N>", "<U>",
                                "<LS0>", "<LS7>", "[", "]", "<:>"})
            row(tag) << manyTakenAway(tag);
        row("<S>") << manyJustifyTags();
        for (const char *letters : {"B", "N", "Z", "U", "W2", "H2"})
            row(letters) << manyRanges(letters);
        row("codes") << line(manyUnits("<65>"))
                            .gives(repeated("A" + repeated("x", 16), tagCount))
                            .formats(repeatedBytes("40" + QByteArray("00").repeated(16)));
        row("codes in the current format")
            << line(manyUnits("<#3>")).gives(repeated(QChar(3) + repeated("x", 16), tagCount));
        row("fonts") << line(manyUnits("<F4>"))
                            .gives(repeated("x", 16 * tagCount))
                            .fonts(QByteArray(16 * tagCount, '3'))
                            .leavesFont(3);
        row("many kinds") << manyKinds();
    }
    void longLinesOfManyTagsAreRead()
    {
        QFETCH(LineCase, told);
        checkLibrary(told);
    }

    void pathologicalLinesComeToAnEnd_data()
    {
        addLines();
        row("opening angle brackets") << sameText(repeated("<", 1000000));
        row("closing angle brackets") << sameText(repeated(">", 1000000));
        row("pairs of angle brackets") << sameText(repeated("<>", 500000));
        row("opening angle brackets and one closing") << sameText(repeated("<", 999999) + ">");
        row("font tags without end") << sameText(repeated("<F", 500000));
        row("font tags with one end") << sameText(repeated("<F", 500000) + ">");
        row("font tags that are no numbers") << sameText(repeated("<F0>", 250000));
        row("code tags without end") << sameText(repeated("<#", 500000));
        row("raw code tags without end") << sameText(repeated("<1", 500000));
        row("code tags with one end") << line(repeated("<#", 500000) + ">").gives(QChar(0));
        row("raw code tags with one end")
            << line(repeated("<1", 500000) + ">").gives(QChar(0)).formats("40");
        row("codes")
            << line(repeated("<65>", 250000)).gives(repeated("A", 250000)).formats(0x40, 250000);
        row("codes of tag ends") << line(repeated("<#60>", 200000)).gives(repeated("<", 200000));
        row("open tags next to each other") << line(repeated("<B:>", 250000))
                                                   .gives(repeated("<B:>", 249999))
                                                   .formats(1, 999996)
                                                   .leavesFormat(1);
        row("close tags next to each other") << line(repeated("<:U>", 250000))
                                                    .entering(8)
                                                    .gives(repeated("<:U>", 249999))
                                                    .formats(0, 999996)
                                                    .leavesFormat(0);
        // The first pair goes. Every other open tag stands right behind a close tag that has just
        // gone, and stays.
        row("pairs next to each other")
            << line(repeated("<B:><:B>", 100000)).gives(repeated("<B:>", 99999));
        row("cut open tags") << sameText(repeated("<B:", 333333));
        row("opening brackets") << line(repeated("[", 1000000)).entering(3, 1).givesNothing();
        row("closing brackets") << line(repeated("]", 1000000)).entering(3, 1).givesNothing();
        row("empty tags") << line(repeated("<:>", 333333)).entering(3, 1).givesNothing();
        row("fonts next to each other") << line(repeated("<F2>", 250000)).givesNothing();
        row("a character for each font") << line(repeated("<F2>x", 200000))
                                                .gives(repeated("x", 200000))
                                                .fonts(QByteArray(200000, '1'))
                                                .leavesFont(1);
        LineCase tabs =
            line(repeated("<S>", 333333)).gives(repeated("\t", 333333)).aligned(AlignJustify);
        const int left = bytesLeft(999999, 0, 3, 333333, 2);
        QCOMPARE(left, 599999);
        tabs.outcome.formats = QByteArray(left - 1, '\0');
        tabs.outcome.fonts = QByteArray(left, '\0');
        row("tabs") << tabs;
        row("blanks and a tag")
            << line(repeated(" ", 999997) + "<B>").gives(repeated(" ", 999997)).formats(1, 999997);
    }
    void pathologicalLinesComeToAnEnd()
    {
        QFETCH(LineCase, told);
        checkLibrary(told);
    }

private:
    static void addLines() { QTest::addColumn<LineCase>("told"); }
    static QTestData &row(const char *name) { return QTest::newRow(name); }
    static LineCase sameText(const QString &text) { return line(text).gives(text); }

    static constexpr int tagCount = 50000;
    static constexpr int unitLength = 20;

    /// A million characters: the tag at the beginning of every twenty.
    static QString manyUnits(const QString &tag)
    {
        return repeated(tag + repeated("x", unitLength - tag.length()), tagCount);
    }

    static QByteArray repeatedBytes(const QByteArray &hex) { return hex.repeated(tagCount); }

    /// So many hits leave surplus bytes, and those keep the whole-line tags from formatting.
    static LineCase manyTakenAway(const QString &tag)
    {
        const int textLength = (unitLength - tag.length()) * tagCount;
        const int bytes = bytesLeft(unitLength * tagCount, 0, unitLength, tagCount, tag.length());
        LineCase made = line(manyUnits(tag)).gives(repeated("x", textLength));
        made.outcome.formats = QByteArray(bytes > textLength ? bytes - 1 : bytes, '\0');
        made.outcome.fonts = QByteArray(bytes, '\0');
        if (tag == "<C>" || tag == "<R>")
            made.aligned(tag == "<C>" ? AlignCenter : AlignRight);
        if (tag.startsWith("<LS"))
            made.spaced(tag.at(3).digitValue());
        return made;
    }

    static LineCase manyJustifyTags()
    {
        const int bytes = bytesLeft(unitLength * tagCount, 0, unitLength, tagCount, 2);
        LineCase made = line(manyUnits("<S>"))
                            .gives(repeated("\t" + repeated("x", 17), tagCount))
                            .aligned(AlignJustify);
        made.outcome.formats = QByteArray(bytes - 1, '\0');
        made.outcome.fonts = QByteArray(bytes, '\0');
        return made;
    }

    static LineCase manyRanges(const QString &letters)
    {
        static const QMap<QString, QByteArray> flags{{"B", "01"}, {"N", "02"},  {"Z", "04"},
                                                     {"U", "08"}, {"W2", "10"}, {"H2", "20"}};
        const QString unit = "x<" + letters + ":>xxxx<:" + letters + ">xxxxxxx";
        return line(repeated(unit, tagCount))
            .gives(repeated(repeated("x", 12), tagCount))
            .formats(repeatedBytes("00" + flags.value(letters).repeated(4) +
                                   QByteArray("00").repeated(7)));
    }

    static LineCase manyKinds()
    {
        QString unit("a<B:>b<:B>c<F2>d<65>e<#66>f<:>g[h]");
        LineCase made = line(repeated(unit, tagCount)).gives(repeated("abcdAeBfgh", tagCount));
        int bytes = unit.length() * tagCount;
        for (const char *tag : {"[", "]", "<:>"}) {
            bytes =
                bytesLeft(bytes, unit.indexOf(tag), unit.length(), tagCount, QString(tag).length());
            unit.remove(tag);
        }
        const int surplus = bytes - unit.length() * tagCount;
        made.outcome.formats = QByteArray::fromHex(repeatedBytes("00010000400000000000")) +
                               QByteArray(surplus - 1, '\0');
        made.outcome.fonts = QByteArray(3, '\0') + QByteArray(10 * tagCount + surplus - 3, '\1');
        return made.leavesFont(1);
    }

    void checkLine()
    {
        QFETCH(LineCase, told);
        MarkupCarry carry = told.before;
        const MarkupOutcome modelled =
            MarkupModel(told.margin).read(told.line, carry, told.defaultSpacing);
        QVERIFY2(same(modelled, told.outcome) && same(carry, told.after),
                 qPrintable("model: " + shown(modelled, carry) +
                            "\ntold:  " + shown(told.outcome, told.after)));
        checkLibrary(told);
    }

    void checkLibrary(const LineCase &told)
    {
        MarkupCarry carry = told.before;
        const PrinterDocumentFormatter formatter(told.margin, nullptr);
        const MarkupOutcome read = readByLibrary(formatter, told.line, carry, told.defaultSpacing);
        if (same(read, told.outcome) && same(carry, told.after))
            return;
        QFAIL(qPrintable("read: " + shown(read, carry).left(2000) +
                         "\ntold: " + shown(told.outcome, told.after).left(2000)));
    }

    const PrinterDocumentFormatter &formatterFor(int margin)
    {
        auto &formatter = m_formatters[margin];
        if (!formatter)
            formatter = std::make_unique<PrinterDocumentFormatter>(margin, nullptr);
        return *formatter;
    }

    void compareWithModel(const QString &text, MarkupCarry &carry, int margin, int spacing)
    {
        MarkupCarry modelCarry = carry;
        const MarkupCarry before = carry;
        const MarkupOutcome read = readByLibrary(formatterFor(margin), text, carry, spacing);
        const MarkupOutcome modelled = MarkupModel(margin).read(text, modelCarry, spacing);
        if (same(read, modelled) && same(carry, modelCarry))
            return;
        QFAIL(qPrintable(QString("line \"%1\", carried in: format %2 font %3, margin %4"
                                 "\nread:  %5\nmodel: %6")
                             .arg(text)
                             .arg(int(before.format))
                             .arg(int(before.font))
                             .arg(margin)
                             .arg(shown(read, carry), shown(modelled, modelCarry))));
    }

    std::map<int, std::unique_ptr<PrinterDocumentFormatter>> m_formatters;
};

QTEST_GUILESS_MAIN(TestLineMarkup)
#include "tst_linemarkup.moc"
