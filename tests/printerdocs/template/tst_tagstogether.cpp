#include <QtTest>
#include <map>
#include <memory>
#include <random>

#include "linecase.h"

using namespace linecase;

namespace {

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

/// Tags of all kinds together, and what is carried from line to line.
class TestTagsTogether : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

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

private:
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

QTEST_GUILESS_MAIN(TestTagsTogether)
#include "tst_tagstogether.moc"
