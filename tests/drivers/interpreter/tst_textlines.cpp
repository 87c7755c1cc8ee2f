// Where characters stand in lines, and where lines end.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestTextLines : public QObject
{
    Q_OBJECT

    static QVector<int> topsOf(const Paper &paper)
    {
        QVector<int> tops;
        for (const Paper::Line &line : paper.lines)
            tops.append(line.top);
        return tops;
    }

    static int leftOf(const QByteArray &stream, const PrinterProfile &profile = {})
    {
        return cellOf(paperOf(stream + '\n', profile), u'x').left;
    }

private Q_SLOTS:
    void charactersStandSideBySide()
    {
        const Paper paper = paperOf("AB\n");
        QCOMPARE(paper.width, 576);
        QCOMPARE(paper.dotsPerInch, 203);
        QCOMPARE(paper.cell, QSize(12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'A')), QRect(0, 0, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'B')), QRect(12, 0, 12, 24));
        QCOMPARE(paper.lines.size(), 1);
        QCOMPARE(paper.lines.first().kind, Paper::Line::Text);
        QCOMPARE(paper.lines.first().height, 30);
        QCOMPARE(paper.length, 30);
        QVERIFY(!paper.isCut);
        QCOMPARE(paper.toText(), QString("AB\n"));
        QCOMPARE(eventsOf(paper), QStringList());
    }

    void linesAreFed()
    {
        const Paper paper = paperOf("a\nb\n\n\nc\n");
        QCOMPARE(topsOf(paper), QVector<int>({0, 30, 60, 120}));
        QCOMPARE(paper.lines.at(2).kind, Paper::Line::Feed);
        QCOMPARE(paper.lines.at(2).blankLines, 2);
        QCOMPARE(paper.lines.at(2).height, 60);
        QCOMPARE(paper.toText(), QString("a\nb\n\n\nc\n"));
    }

    void emptyStreamIsNoPaper()
    {
        QVERIFY(papersOf("").isEmpty());
        const Paper blank = paperOf("\n");
        QCOMPARE(blank.length, 30);
        QCOMPARE(blank.toText(), QString("\n"));
    }

    void lineThatIsExactlyFullDoesNotWrap()
    {
        const Paper paper = paperOf(QByteArray(48, 'x') + '\n');
        QCOMPARE(paper.lines.size(), 1);
        QCOMPARE(placeOf(paper.cells.last()), QRect(564, 0, 12, 24));
        QCOMPARE(paper.length, 30);
    }

    void oneCharacterMoreWraps()
    {
        const Paper paper = paperOf(QByteArray(49, 'x') + '\n');
        QCOMPARE(paper.lines.size(), 2);
        QVERIFY(!paper.lines.at(0).isWrapped);
        QVERIFY(paper.lines.at(1).isWrapped);
        QCOMPARE(placeOf(paper.cells.last()), QRect(0, 30, 12, 24));
        QCOMPARE(paper.lines.at(1).firstCell, 48);
        QCOMPARE(paper.lines.at(1).cellCount, 1);
        QVERIFY(!paperOf(QByteArray(49, 'x') + "\ny\n").lines.at(2).isWrapped);
    }

    void doubleWidthAtTheEdgeWraps()
    {
        const Paper paper = paperOf(QByteArray(47, 'a') + bytes("\x1D!\x10x\n"));
        QCOMPARE(paper.lines.size(), 2);
        QCOMPARE(placeOf(cellOf(paper, u'x')), QRect(0, 30, 24, 24));
        QCOMPARE(paperOf(QByteArray(46, 'a') + bytes("\x1D!\x10x\n")).lines.size(), 1);
    }

    void mixedHeightsStandOnOneLine()
    {
        const Paper paper =
            paperOf(bytes("a\x1D!\x01"
                          "b\x1D!\0\x1BM\x01"
                          "c\n"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 24, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'b')), QRect(12, 0, 12, 48));
        QCOMPARE(placeOf(cellOf(paper, u'c')), QRect(24, 31, 9, 17));
        QCOMPARE(paper.length, 48);
        QCOMPARE(paper.toText(), QString("abc\n"));
    }

    void tallLinesPushTheNextOneDown()
    {
        QCOMPARE(topsOf(paperOf(bytes("\x1D!\x01"
                                      "a\nb\n"))),
                 QVector<int>({0, 48}));
        QCOMPARE(topsOf(paperOf(bytes("\x1B\x33\x10"
                                      "a\nb\n"))),
                 QVector<int>({0, 24}));
        QCOMPARE(topsOf(paperOf(bytes("\x1B\x33\x3C"
                                      "a\nb\n"))),
                 QVector<int>({0, 60}));
    }

    void alignment()
    {
        QCOMPARE(leftOf(bytes("\x1B\x61\x01x")), 282);
        QCOMPARE(leftOf(bytes("\x1B\x61\x02x")), 564);
        QCOMPARE(leftOf(bytes("\x1B\x61\x32x")), 564);
        QCOMPARE(leftOf(bytes("\x1B\x61\x02\x1B\x61\0x")), 0);
        QCOMPARE(leftOf(bytes("\x1B\x61\x02\x1B\x61\x09x")), 564);
        QCOMPARE(leftOf(bytes("\x1B\x61\x01\x1D!\x10x\x1D!\0yy")), 264);
        QCOMPARE(leftOf(bytes("\x1B\x61\x02\x1B@x")), 0);
    }

    void alignmentInsideALineIsIgnored()
    {
        const Paper paper = paperOf(bytes("x\x1B\x61\x02y\nz\n"));
        QCOMPARE(cellOf(paper, u'x').left, 0);
        QCOMPARE(cellOf(paper, u'z').left, 0);
        QCOMPARE(notesOf(paper), QStringList("ESC a counts at the beginning of a line only"));
        // What is so already needs no line's beginning.
        QCOMPARE(notesOf(paperOf(bytes("x\x1B\x61\0y\n"))), QStringList());
    }

    void absolutePosition()
    {
        QCOMPARE(leftOf(bytes("\x1B$\x64\0x")), 100);
        QCOMPARE(leftOf(bytes("ab\x1B$\0\x01x")), 256);
        QCOMPARE(leftOf(bytes("\x1D\x50\x66\0\x1B$\x32\0x")), 100);  // units of 1/102 inch
        QCOMPARE(leftOf(bytes("\x1B$\x32\0x"), model("CUSTOM_VKP_80")), 50);
    }

    void positionBehindTheEdgeIsIgnored()
    {
        const Paper paper = paperOf(bytes("\x1B$\x41\x02x\n"));
        QCOMPARE(cellOf(paper, u'x').left, 0);
        QCOMPARE(notesOf(paper), QStringList("ESC $ goes to dot 577, behind the line's 576"));
        // The edge itself is allowed; the next character goes to the next line.
        const Paper edge = paperOf(bytes("a\x1B$\x40\x02x\n"));
        QCOMPARE(placeOf(cellOf(edge, u'x')), QRect(0, 30, 12, 24));
    }

    void relativePosition()
    {
        QCOMPARE(leftOf(bytes("a\x1B\\\x0A\0x")), 22);
        QCOMPARE(leftOf(bytes("aa\x1B\\\xF4\xFFx")), 12);
        const Paper paper = paperOf(bytes("a\x1B\\\xF0\xFFx\n"));
        QCOMPARE(cellOf(paper, u'x').left, 12);
        QCOMPARE(notesOf(paper), QStringList("ESC \\ leaves the line"));
    }

    void tabStops()
    {
        QCOMPARE(leftOf("\tx"), 96);
        QCOMPARE(leftOf("aaaaaaaa\tx"), 192);
        QCOMPARE(leftOf("aaaaaaa\tx"), 96);
        QCOMPARE(leftOf(bytes("\x1B\x44\x03\x05\0\t\tx")), 60);
        QCOMPARE(leftOf(bytes("\x1B\x44\x03\x05\0\t\t\tx")), 60);  // no more: ignored
        QCOMPARE(leftOf(bytes("\x1B\x44\0\tx")), 0);
        QCOMPARE(leftOf(bytes("\x1D!\x10\x1B\x44\x03\0\tx")), 72);
        QCOMPARE(leftOf(bytes("\x1B\x44\x03\0\x1D!\x10\tx")), 36);  // stays where it was set
        QCOMPARE(leftOf(bytes("\x1B\x44\x03\0\x1B@\tx")), 96);
        QCOMPARE(leftOf(bytes("\x1B\x44\xFF\0\tx")), 0);  // behind the edge: wraps
    }

    void spacingRightOfCharacters()
    {
        QCOMPARE(leftOf(bytes("\x1B \x04"
                              "ax")),
                 16);
        QCOMPARE(leftOf(bytes("\x1B \x04\x1D!\x10"
                              "ax")),
                 32);
        QCOMPARE(paperOf(bytes("\x1B \x04") + QByteArray(36, 'a') + '\n').lines.size(), 1);
        QCOMPARE(paperOf(bytes("\x1B \x04") + QByteArray(37, 'a') + '\n').lines.size(), 2);
        QCOMPARE(leftOf(bytes("\x1B \x04\x1B@"
                              "ax")),
                 12);
    }

    void marginAndArea()
    {
        QCOMPARE(leftOf(bytes("\x1DL\x64\0x")), 100);
        QCOMPARE(leftOf(bytes("\x1DL\x64\0\x1B$\x0A\0x")), 110);
        QCOMPARE(leftOf(bytes("\x1DL\x64\0\x1B\x61\x02x")), 564);
        QCOMPARE(leftOf(bytes("\x1DL\x64\0\x1DW\x64\0\x1B\x61\x02x")), 188);
        QCOMPARE(leftOf(bytes("\x1DW\x64\0\x1B\x61\x01x")), 44);
        QCOMPARE(leftOf(bytes("\x1DW\x64\0\x1B@\x1B\x61\x02x")), 564);
        // Beyond the paper: as much as there is.
        QCOMPARE(leftOf(bytes("\x1DW\xFF\xFF\x1B\x61\x02x")), 564);
        QCOMPARE(leftOf(bytes("\x1DL\x64\0\x1DW\xFF\xFF\x1B\x61\x02x")), 564);
    }

    void areaKeepsItsWidthWhenTheMarginMoves()
    {
        QCOMPARE(leftOf(bytes("\x1DW\x64\0\x1DL\x64\0\x1B\x61\x02x")), 188);
        QCOMPARE(leftOf(bytes("\x1DL\x64\0\x1DL\0\0\x1B\x61\x02x")), 564);
    }

    void narrowAreaHoldsACharacterALine()
    {
        const Paper paper =
            paperOf(bytes("\x1DW\x05\0"
                          "abc\n"));
        QCOMPARE(paper.lines.size(), 3);
        QCOMPARE(paper.toText(), QString("a\nb\nc\n"));
        QCOMPARE(textOf(bytes("\x1DW\0\0"
                              "ab\n")),
                 QString("a\nb\n"));
        QCOMPARE(paperOf(bytes("\x1DL\xFF\xFFx\n")).cells.first().left, 576);
    }

    void marginInsideALineIsIgnored()
    {
        const Paper paper = paperOf(bytes("x\x1DL\x64\0y\x1DW\x64\0\nz\n"));
        QCOMPARE(cellOf(paper, u'z').left, 0);
        QCOMPARE(notesOf(paper), QStringList({"GS L counts at the beginning of a line only",
                                              "GS W counts at the beginning of a line only"}));
    }

    void upsideDownLinesAreTurnedAsAWhole()
    {
        const Paper paper = paperOf(bytes("\x1B{\x01xy\n\x1B{\0z\n"));
        QCOMPARE(placeOf(cellOf(paper, u'x')), QRect(564, 0, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'y')), QRect(552, 0, 12, 24));
        QCOMPARE(cellOf(paper, u'z').left, 0);
        QCOMPARE(paper.toText(), QString("xy\nz\n"));
        QCOMPARE(notesOf(paperOf(bytes("x\x1B{\x01y\n"))),
                 QStringList("ESC { counts at the beginning of a line only"));
        QCOMPARE(leftOf(bytes("\x1B{\x01\x1B\x61\x02x")), 0);
    }

    void lineSpacing_data()
    {
        QTest::addColumn<QByteArray>("id");
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("dots");
        const auto row = [](const char *name, const char *id, const QByteArray &stream, int dots) {
            QTest::newRow(name) << QByteArray(id) << stream << dots;
        };
        row("usual", "GENERAL_EPSON_PROTOCOL", "", 30);
        row("ESC 3", "GENERAL_EPSON_PROTOCOL", bytes("\x1B\x33\x50"), 80);
        row("ESC 3 with units", "GENERAL_EPSON_PROTOCOL", bytes("\x1D\x50\0\x66\x1B\x33\x50"), 159);
        row("units don't change what was set", "GENERAL_EPSON_PROTOCOL",
            bytes("\x1B\x33\x50\x1D\x50\0\x66"), 80);
        row("units 0 are the usual ones", "GENERAL_EPSON_PROTOCOL",
            bytes("\x1D\x50\x66\x66\x1D\x50\0\0\x1B\x33\x50"), 80);
        row("ESC 2", "GENERAL_EPSON_PROTOCOL", bytes("\x1B\x33\x50\x1B\x32"), 30);
        row("ESC @", "GENERAL_EPSON_PROTOCOL", bytes("\x1B\x33\x50\x1B@"), 30);
        row("Citizen usual", "CITIZEN_CBM_1000", "", 34);
        row("Citizen ESC 3", "CITIZEN_CBM_1000", bytes("\x1B\x33\x3C"), 34);
        row("Citizen ESC 3 80", "CITIZEN_CBM_1000", bytes("\x1B\x33\x50"), 45);
        row("Custom ESC 3", "CUSTOM_VKP_80", bytes("\x1B\x33\x50"), 40);
        row("Custom ESC 0", "CUSTOM_VKP_80", bytes("\x1B\x30"), 26);
    }
    void lineSpacing()
    {
        QFETCH(QByteArray, id);
        QFETCH(QByteArray, stream);
        QFETCH(int, dots);
        const Paper paper = paperOf(stream + "a\n", model(id.constData()));
        QCOMPARE(paper.length, dots);
        QCOMPARE(paperOf(stream + "\n\n", model(id.constData())).length, 2 * dots);
    }

    void feedsByUnitsAndLines()
    {
        QCOMPARE(paperOf(bytes("\x1BJ\x64")).length, 100);
        QCOMPARE(paperOf(bytes("a\x1BJ\x64")).length, 100);
        QCOMPARE(paperOf(bytes("a\x1BJ\x05")).length, 24);
        QCOMPARE(paperOf(bytes("\x1B\x64\x03")).length, 90);
        QCOMPARE(paperOf(bytes("a\x1B\x64\x03")).length, 90);
        QCOMPARE(paperOf(bytes("\x1BJ\x64"), model("CITIZEN_CBM_1000")).length, 56);
        QCOMPARE(textOf(bytes("a\x1B\x64\x03"
                              "b\n")),
                 QString("a\n\n\nb\n"));
        QCOMPARE(textOf(bytes("a\n\x1BJ\x3C"
                              "b\n")),
                 QString("a\n\n\nb\n"));
        QCOMPARE(textOf(bytes("a\n\x1BJ\x1D\x1BJ\x1D"
                              "b\n")),
                 QString("a\n\nb\n"));
    }

    void feedOfNothing()
    {
        QVERIFY(papersOf(bytes("\x1B\x64\0")).isEmpty());
        QVERIFY(papersOf(bytes("\x1BJ\0")).isEmpty());
        const Paper paper =
            paperOf(bytes("a\x1B\x64\0"
                          "b\n"));
        QCOMPARE(topsOf(paper), QVector<int>({0, 24}));
        QCOMPARE(textOf(bytes("\x1B\x33\0\n\na\n")), QString("a\n"));
    }

    void feedsBack()
    {
        const Paper paper =
            paperOf(bytes("a\n\n\x1BK\x1E"
                          "b\n\x1B\x65\x01"
                          "c\n\x1BK\xFF"
                          "d\n"));
        QCOMPARE(cellOf(paper, u'b').top, 30);
        QCOMPARE(cellOf(paper, u'c').top, 30);
        QCOMPARE(cellOf(paper, u'd').top, 0);
        QCOMPARE(paper.length, 60);
    }

    void carriageReturnDoesNothing() { QCOMPARE(textOf("a\r\nb\rc\n"), QString("a\nbc\n")); }

    void formFeedPrintsTheLine()
    {
        QCOMPARE(textOf(bytes("a\x0C"
                              "b\n")),
                 QString("a\nb\n"));
    }

    void lineStart()
    {
        QCOMPARE(textOf(bytes("a\x1DT\x01"
                              "b\n")),
                 QString("a\nb\n"));
        const Paper paper =
            paperOf(bytes("a\x1DT\0"
                          "b\n"));
        QCOMPARE(paper.toText(), QString("b\n"));
        QCOMPARE(notesOf(paper), QStringList("GS T clears 1 characters that weren't printed yet"));
        // Of a line in which nothing stands, too.
        QCOMPARE(textOf(bytes("\x1B$\x64\0\x1DT\x01"
                              "a\n")),
                 QString("a\n"));
    }

    void resetClearsTheLine()
    {
        const Paper paper = paperOf(bytes("abc\x1B@x\n"));
        QCOMPARE(paper.toText(), QString("x\n"));
        QCOMPARE(eventsOf(paper), QStringList({"note: ESC @ clears 3 characters that weren't "
                                               "printed yet",
                                               "reset: reset"}));
        QCOMPARE(paper.events.last().offset, 3LL);
    }

    void cancelClearsTheLineOfCustom()
    {
        QCOMPARE(textOf(bytes("abc\x18x\n"), model("CUSTOM_VKP_80")), QString("x\n"));
    }

    void cancelOutsideOfPagesChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("id");
        for (const char *id :
             {"GENERAL_EPSON_PROTOCOL", "EPSON_EU_4XX", "CITIZEN_PPU_700", "AV_268"})
            QTest::newRow(id) << QByteArray(id);
    }
    void cancelOutsideOfPagesChangesNothing()
    {
        QFETCH(QByteArray, id);
        const Paper paper = paperOf(bytes("abc\x18x\n"), model(id.constData()));
        QCOMPARE(paper.toText(), QString("abcx\n"));
        QCOMPARE(notesOf(paper), QStringList());
    }

    void lastLineWithoutLineFeedIsShownAndNoted()
    {
        const Paper paper = paperOf("a\nb");
        QCOMPARE(paper.toText(), QString("a\nb\n"));
        QCOMPARE(notesOf(paper),
                 QStringList("the last line isn't printed before its line feed comes"));
    }

    void paperOfTheOptions()
    {
        StreamInterpreter::Options options;
        options.paperDots = 384;
        QCOMPARE(paperOf("x", {}, options).width, 384);
        QCOMPARE(paperOf(QByteArray(33, 'x') + '\n', {}, options).lines.size(), 2);
        options.paperDots = 5000;
        QCOMPARE(paperOf("x", {}, options).width, 576);
        options.columns = 42;
        QCOMPARE(paperOf("x", {}, options).width, 504);
        options.columns = 100;
        QCOMPARE(paperOf("x", {}, options).width, 576);
        options.paperDots = 384;
        options.columns = 20;
        QCOMPARE(paperOf("x", {}, options).width, 240);
    }
};

QTEST_GUILESS_MAIN(TestTextLines)
#include "tst_textlines.moc"
