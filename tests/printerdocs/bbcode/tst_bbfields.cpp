#include <QtTest>
#include <algorithm>

#include "bbbench.h"
#include "printerdocs/bbcodeparser.h"

using namespace bbbench;

/// Fields and columns, and how far they are padded.
class TestBbFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsPadTheirText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("width of its own") << "[field]x[/field]"
                                          << "x";
        QTest::newRow("padded behind") << "[field width=3]x[/field]"
                                       << "x  ";
        QTest::newRow("right") << "[field width=3 align=right]x[/field]"
                               << "  x";
        QTest::newRow("center, odd rest behind") << "[field width=6 align=center]abc[/field]"
                                                 << " abc  ";
        QTest::newRow("center, even rest") << "[field width=5 align=center]abc[/field]"
                                           << " abc ";
        QTest::newRow("left again") << "[field align=right][left align=left width=3]x"
                                    << "x  ";
        QTest::newRow("other alignment is left") << "[field width=3 align=justify]x"
                                                 << "x  ";
        QTest::newRow("upper-case value") << "[field WIDTH=3 ALIGN=RIGHT]x"
                                          << "  x";
        QTest::newRow("zeros and blanks") << "[field width=5 align=right zerofill=3]7[/field]"
                                          << "  007";
        QTest::newRow("nothing is cut") << "[field width=3]12345[/field]"
                                        << "12345";
        QTest::newRow("just as wide") << "[field width=3]123[/field]"
                                      << "123";
        QTest::newRow("zeros behind the sign") << "[field zerofill=3]-5[/field]"
                                               << "-005";
        QTest::newRow("sign and width") << "[field zerofill=3 width=6 align=right]-5"
                                        << "  -005";
        QTest::newRow("enough digits") << "[field zerofill=2]123[/field]"
                                       << "123";
        QTest::newRow("leading zeros go") << "[field zerofill=2]00007[/field]"
                                          << "07";
        QTest::newRow("plus sign goes") << "[field zerofill=3]+7[/field]"
                                        << "007";
        QTest::newRow("blanks around") << "[field zerofill=3] 7 [/field]"
                                       << "007";
        QTest::newRow("no number") << "[field zerofill=4]abc[/field]"
                                   << "0000";
        QTest::newRow("fraction is no number") << "[field zerofill=2]1.5[/field]"
                                               << "00";
        QTest::newRow("zerofill 0") << "[field zerofill=0]abc[/field]"
                                    << "abc";
        QTest::newRow("zerofill 0 again") << "[field zerofill=3][left zerofill=0]7"
                                          << "7";
        QTest::newRow("greatest number") << "[field zerofill=20]9223372036854775807"
                                         << "09223372036854775807";
        QTest::newRow("least number") << "[field zerofill=20]-9223372036854775808"
                                      << "-09223372036854775808";
        QTest::newRow("beyond 64 bits") << "[field zerofill=3]9223372036854775808"
                                        << "000";
        QTest::newRow("width above 8 bits") << "[field width=300]x"
                                            << "x" + QString(43, ' ');
        QTest::newRow("width 256") << "[field width=256]x"
                                   << "x";
        QTest::newRow("width 255") << "[field width=255]x"
                                   << "x" + QString(254, ' ');
        QTest::newRow("width is no number") << "[field width=wide]x"
                                            << "x";
        QTest::newRow("negative width") << "[field width=-3]x"
                                        << "x";
        QTest::newRow("fractional width") << "[field width=3.5]x"
                                          << "x";
        QTest::newRow("zerofill above 8 bits") << "[field zerofill=300]7" << QString(43, '0') + "7";
        QTest::newRow("without field") << "[b width=9 align=right zerofill=9]7[/b]"
                                       << "";
        QTest::newRow("blanks part from the next piece") << "[field width=3]a[/field]b"
                                                         << "a  b";
        QTest::newRow("blanks part from the piece before")
            << "x[field width=3 align=right]7[/field]"
            << "x  7";
        QTest::newRow("full field is parted") << "x[field width=1]7[/field]y"
                                              << "x 7 y";
        QTest::newRow("opening again forgets") << "[field width=9][field]x"
                                               << "x";
        QTest::newRow("closing forgets") << "[field width=9][/field]x"
                                         << "x";
        QTest::newRow("line end counts in a field") << "x[field width=4]a\nb[/field]"
                                                    << "x a|b ";
        QTest::newRow("keys are read in their order") << "[field width=5 WIDTH=3]x"
                                                      << "x    ";
        QTest::newRow("keys are read in their order, not in that of the text")
            << "[field WIDTH=3 width=5]x"
            << "x    ";
        QTest::newRow("quotation marks count once") << "[field width=4]«a»[/field]"
                                                    << "\"a\" ";
    }

    void fieldsPadTheirText()
    {
        QFETCH(QString, text);
        QFETCH(QString, line);
        const QList<DocumentBlock> blocks = parsed(text);
        QCOMPARE(blocks.size(), 1);
        if (line.isEmpty())
            QCOMPARE(described(blocks.first()), QString("T0L \"7\" 0 1"));
        else
            QCOMPARE(described(blocks.first()), plain(line));
    }

    void characterOutsideTheBmpCountsAsTwoInAField()
    {
        QCOMPARE(described(parsed("[field width=4]😀[/field]")),
                 QStringList("T0L \"😀  \" 0000 0000"));
    }

    void everyPieceOfAFieldIsPadded()
    {
        QCOMPARE(described(parsed("[field width=3]a[b]b[/b]c[/field]")),
                 QStringList("T0L \"a  b  c  \" 000000000 000111000"));
    }

    void columnsPadTheirLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &lines) {
            QStringList blocks;
            for (const QString &line : lines)
                blocks.append(plain(line));
            QTest::newRow(name) << text << blocks;
        };
        row("two lines", "[column width=4]a\nbc[/column]", {"a   |bc  "});
        row("right", "[column width=4 align=right]a\nbc[/column]", {"   a|  bc"});
        row("center", "[column width=4 align=center]a\nbc[/column]", {" a  | bc "});
        row("width of its own", "[column]a\n[/column]", {"a| "});
        row("wide line stays", "[column width=2]abc\nd[/column]", {"abc|d "});
        row("empty line is kept", "[column width=2]a\n\nb[/column]", {"a |  |b "});
        row("carriage returns end lines before the padding", "[column width=3]a\rb\r\nc\r[/column]",
            {"a  |b  |c  |   "});
        row("width above 8 bits", "[column width=300]a[/column]", {"a" + QString(43, ' ')});
        row("zerofill goes nowhere", "[column width=3 zerofill=3]7[/column]", {"7  "});
        row("block on both sides", "x[column]y[/column]z", {"x", "y", "z"});
        row("not closed", "[column width=2]a", {"a "});
        row("opening again forgets", "[column width=9][column]a", {"a"});
        row("first line is three blanks", "[column width=3]\na[/column]", {"   |a  "});
        row("first line is two blanks and goes", "[column width=2]\na[/column]", {"a "});
        row("first line is a blank and goes", "[column width=1]\na[/column]", {"a"});
        row("field in a column", "[column width=6][field width=3 align=right]7[/field][/column]",
            {"  7   "});
        row("keys go to the field", "[column width=5][field][b width=3][/b]a[/field][/column]",
            {"a    "});
        row("keys go to the column again",
            "[column][field][/field][left width=3 align=right]a[/column]", {"  a"});
    }

    void columnsPadTheirLines()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    // 65793 lines of 255 blanks are one character less than the 16 Mi that padding may add.
    void paddingOfOneTextIsLimited()
    {
        const QString lines = QString(65792, '\n');
        const QString column = "[column width=255]%1[/column]";
        BbCodeParser parser;
        parser.parseText(column.arg(lines) + "[field width=2]a[/field]");
        QCOMPARE(parser.blocks().size(), 2);
        QCOMPARE(parser.blocks().first().text().size(), 65793);
        for (const QString &line : parser.blocks().first().text())
            QCOMPARE(line.size(), 255);
        QCOMPARE(described(parser.blocks().last()), plain("a "));

        parser.parseText(column.arg(lines) + "[field width=3]a[/field][field zerofill=2]5[/field]" +
                         "[field width=2]c[/field][field zerofill=2]07[/field]" +
                         "[column width=2]d\ne[/column]");
        QCOMPARE(described(parser.blocks().mid(1)), QStringList({plain("a 05 c 7"), plain("d|e")}));

        // The first line end goes, as it isn't padded.
        parser.parseText(column.arg(lines + "\n"));
        QCOMPARE(parser.blocks().first().text().size(), 65793);
        for (const QString &line : parser.blocks().first().text())
            QVERIFY(line.isEmpty());

        // The next text has a limit of its own.
        parser.parseText("[field width=255]x");
        QCOMPARE(described(parser.blocks()), QStringList(plain("x" + QString(254, ' '))));
    }

    void columnOfMillionsOfLineEndsIsNotPadded()
    {
        const QList<DocumentBlock> blocks =
            parsed("[column width=255]" + QString(5000000, '\n') + "[/column]x");
        QCOMPARE(blocks.size(), 2);
        const QStringList lines = blocks.first().text();
        QCOMPARE(lines.size(), 5000000);
        QVERIFY(std::all_of(lines.begin(), lines.end(),
                            [](const QString &line) { return line.isEmpty(); }));
        QCOMPARE(described(blocks.last()), plain("x"));
    }

    // 66052 fields of 254 blanks are within 16 Mi characters, the next isn't.
    void paddingOfManyFieldsIsLimited_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QChar>("padding");
        QTest::addColumn<int>("blanksBetween");
        // Padded fields end in blanks; the others are parted from the next piece.
        QTest::newRow("blanks") << "[field width=255]7[/field]" << QChar(' ') << 33947;
        QTest::newRow("zeros") << "[field zerofill=255]7[/field]" << QChar('0') << 99999;
    }

    void paddingOfManyFieldsIsLimited()
    {
        QFETCH(QString, field);
        QFETCH(QChar, padding);
        QFETCH(int, blanksBetween);
        const QList<DocumentBlock> blocks = parsed(field.repeated(100000));
        QCOMPARE(blocks.size(), 1);
        const QString text = blocks.first().text().first();
        QCOMPARE(text.size(), 100000 + 66052 * 254 + blanksBetween);
        QCOMPARE(text.count('7'), 100000);
        QCOMPARE(text.count(padding), 66052 * 254 + (padding == QChar(' ') ? blanksBetween : 0));
        QVERIFY(text.endsWith("7 7 7"));
    }
};

QTEST_GUILESS_MAIN(TestBbFields)
#include "tst_bbfields.moc"
