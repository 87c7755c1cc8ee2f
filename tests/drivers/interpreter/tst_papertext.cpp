// What is read on a paper, line by line.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestPaperText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void text_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QByteArray &stream, const char *text) {
            QTest::newRow(name) << stream << QString::fromUtf8(text);
        };
        row("nothing", "", "");
        row("a line", "abc\n", "abc\n");
        row("blanks in front stay", "  a\n", "  a\n");
        row("blanks at the end don't", "a  \n", "a\n");
        row("line of blanks", "   \na\n", "\na\n");
        row("blank lines", "a\n\n\nb\n", "a\n\n\nb\n");
        row("in the middle",
            bytes("\x1B\x61\x01"
                  "abcd\n"),
            "                      abcd\n");
        row("at the right",
            bytes("\x1B\x61\x02"
                  "a\n"),
            "                                               a\n");
        row("double width is one word",
            bytes("\x1D!\x10"
                  "abc\n"),
            "abc\n");
        row("double width, then a column",
            bytes("\x1D!\x10"
                  "abc\x1D!\0\x1B$\x78\0d\n"),
            "abc       d\n");
        row("small font is one word",
            bytes("\x1BM\x01"
                  "abcdefgh\n"),
            "abcdefgh\n");
        row("tabs", "a\tb\n", "a       b\n");
        row("gap of less than half a column", bytes("a\x1B\\\x05\0b\n"), "ab\n");
        row("gap of half a column", bytes("a\x1B\\\x06\0b\n"), "a b\n");
        row("backwards", bytes("ab\x1B$\0\0c\n"), "acb\n");
        row("wrapped", QByteArray(50, 'a') + '\n',
            "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\naa\n");
        row("turned characters of a line",
            bytes("\x1BV\x01"
                  "abc\n"),
            "abc\n");
        row("upside down",
            bytes("\x1B{\x01"
                  "ab  cd\n"),
            "ab  cd\n");
        row("upside down, aligned",
            bytes("\x1B{\x01\x1B\x61\x02"
                  "ab\n"),
            "                                              ab\n");
        row("picture",
            bytes("\x1Dv0\0\x02\0\x01\0\xFF\xFF"
                  "a\n"),
            "[picture 16 x 1]\na\n");
        row("picture in the middle", bytes("\x1B\x61\x01\x1Dv0\0\x02\0\x01\0\xFF\xFF"),
            "                       [picture 16 x 1]\n");
        row("strips of a picture",
            bytes("\x1Dv0\0\x02\0\x01\0\xFF\xFF\x1Dv0\0\x02\0\x01\0\xFF\xFF"),
            "[picture 16 x 2]\n");
        row("strips apart", bytes("\x1Dv0\0\x01\0\x01\0\xFF\n\x1Dv0\0\x01\0\x01\0\xFF"),
            "[picture 8 x 1]\n\n[picture 8 x 1]\n");
        row("picture between words",
            bytes("a\x1B*\x01\x02\0\xFF\xFF"
                  "b\n"),
            "a[picture 2 x 24]b\n");
        row("pictures side by side", bytes("\x1B*\x01\x02\0\xFF\xFF\x1B*\x01\x02\0\xFF\xFF\n"),
            "[picture 4 x 24]\n");
        row("cut", bytes("a\n\x1DV\x42\0"), "a\n[cut]\n");
        row("partial cut", bytes("a\n\x1DV\x41\0"), "a\n[cut]\n");
        row("feed before the cut", bytes("a\n\n\x1DV\x42\0"), "a\n\n[cut]\n");
        row("feed that the cutter takes", bytes("a\n\n\n\n\n\n\x1DV\0"), "a\n\n[cut]\n");
        row("pulse",
            bytes("a\n\x1Bp\0\x32\x32"
                  "b\n"),
            "a\nb\n");
    }
    void text()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QString, text);
        QCOMPARE(textOf(stream), text);
    }

    void papersByHand()
    {
        Paper paper;
        QVERIFY(paper.isEmpty());
        QCOMPARE(paper.toText(), QString());
        paper.isCut = true;
        QCOMPARE(paper.toText(), QString("[cut]\n"));
        Paper::Line line;
        line.cellCount = 1;
        paper.lines.append(line);
        Paper::Cell cell;
        cell.character = u'x';
        paper.cells.append(cell);
        QVERIFY(!paper.isEmpty());
        // Without a cell's size there are no columns.
        QCOMPARE(paper.toText(), QString("x\n[cut]\n"));
    }

    void textOfAReceipt()
    {
        const QByteArray stream = bytes(
            "\x1B@\x1B\x61\x01\x1D!\x11Shop\x1D!\0\n12 Quay\n\x1B\x61\0"
            "Apples\x1B$\xEC\x01"
            "1.25\n\x1B\x45\x01TOTAL\x1B\x45\0\x1B$\xEC\x01"
            "1.25\n"
            "\x1B\x64\x02\x1DV\x42\0");
        QCOMPARE(textOf(stream), QString("                    Shop\n"
                                         "                     12 Quay\n"
                                         "Apples                                   1.25\n"
                                         "TOTAL                                    1.25\n"
                                         "\n\n[cut]\n"));
    }
};

QTEST_GUILESS_MAIN(TestPaperText)
#include "tst_papertext.moc"
