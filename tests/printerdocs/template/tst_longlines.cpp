#include <QtTest>

#include "linecase.h"

using namespace linecase;

namespace {

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

}  // namespace

class TestLongLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

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
        const QString difference = differenceOfTheLibrary(told);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
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
        const QString difference = differenceOfTheLibrary(told);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

private:
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
};

QTEST_GUILESS_MAIN(TestLongLines)
#include "tst_longlines.moc"
