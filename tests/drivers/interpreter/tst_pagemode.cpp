// Pages: what is put anywhere on them, in four directions, and printed together.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestPageMode : public QObject
{
    Q_OBJECT

    /// An area of 200 x 100 dots at 50, 20.
    static QByteArray area() { return bytes("\x1BL\x1BW\x32\0\x14\0\xC8\0\x64\0"); }

private Q_SLOTS:
    void pageIsPrintedByFormFeed()
    {
        const Paper paper = paperOf(bytes("\x1BLab\ncd\x0Cz\n"));
        QCOMPARE(paper.lines.size(), 2);
        QCOMPARE(paper.lines.first().kind, Paper::Line::Page);
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 0, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'd')), QRect(12, 30, 12, 24));
        QCOMPARE(paper.lines.first().height, 54);
        QCOMPARE(placeOf(cellOf(paper, u'z')), QRect(0, 54, 12, 24));
        QCOMPARE(paper.toText(), QString("ab\ncd\nz\n"));
        QCOMPARE(notesOf(paper), QStringList());
    }

    void codesThatNobodyDrawsStandOnThePage()
    {
        const QByteArray qr = bytes("\x1D(k\x05\0\x31P0hi\x1D(k\x03\0\x31Q0");
        const Paper paper = paperOf(bytes("\x1BLab\n") + qr + bytes("\x0C"));
        QCOMPARE(paper.codes.size(), 1);
        QCOMPARE(notesOf(paper), QStringList());
        QCOMPARE(paper.toText(), QString("ab\n[QR: hi]\n"));
        QCOMPARE(paperOf(bytes("\x1BL") + qr + bytes("\n\x18z\x0C")).toText(), QString("z\n"));
    }

    void escFfPrintsAndStays()
    {
        const Paper paper = paperOf(bytes("\x1BLa\x1B\x0C\x1B\x0C\x1BS"));
        QCOMPARE(paper.lines.size(), 2);
        QCOMPARE(cellOf(paper, u'a').top, 0);
        QCOMPARE(paper.cells.at(1).top, 24);
        QCOMPARE(notesOf(paper), QStringList("ESC S throws away a page that wasn't printed"));
    }

    void leavingThrowsThePageAway()
    {
        const Paper paper = paperOf(bytes("\x1BLa\x1BSz\n"));
        QCOMPARE(paper.toText(), QString("z\n"));
        QCOMPARE(notesOf(paper), QStringList("ESC S throws away a page that wasn't printed"));
        QCOMPARE(textOf(bytes("\x1BLa\x1B@z\n")), QString("z\n"));
        QCOMPARE(notesOf(paperOf(bytes("\x1BL\x1BSz\n"))), QStringList());
    }

    void pageAtTheEndIsShownAndNoted()
    {
        const Paper paper = paperOf(bytes("\x1BLa\nb"));
        QCOMPARE(paper.toText(), QString("a\nb\n"));
        QCOMPARE(notesOf(paper),
                 QStringList("the page isn't printed before a command for that comes"));
    }

    void lineBeforeThePageIsPrinted()
    {
        const Paper paper = paperOf(bytes("a\x1BLb\x0C"));
        QCOMPARE(paper.toText(), QString("a\nb\n"));
        QCOMPARE(cellOf(paper, u'b').top, 30);
    }

    void areaAndItsHeight()
    {
        const Paper paper = paperOf(area() + bytes("a\x0Cz\n"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(50, 20, 12, 24));
        QCOMPARE(paper.lines.first().height, 120);
        QCOMPARE(cellOf(paper, u'z').top, 120);
    }

    void emptyPageOfASetAreaIsFed()
    {
        QCOMPARE(paperOf(area() + bytes("\x0C")).length, 120);
        QVERIFY(papersOf(bytes("\x1BL\x0C")).isEmpty());
    }

    void areaBesideThePaperIsTold()
    {
        QCOMPARE(notesOf(paperOf(bytes("\x1BL\x1BW\xFF\xFF\0\0\x0A\0\x0A\0a\x0C"))),
                 QStringList("ESC W sets an area beside the paper"));
        QCOMPARE(notesOf(paperOf(bytes("\x1BL\x1BW\0\0\0\0\0\0\x0A\0a\x0C"))),
                 QStringList("ESC W sets an area beside the paper"));
        // Too wide: as much as there is.
        const Paper paper =
            paperOf(bytes("\x1BL\x1BW\x14\0\0\0\xFF\xFF\x64\0") + QByteArray(47, 'x') + '\x0C');
        QCOMPARE(paper.cells.last().top, 30);
        QCOMPARE(paper.cells.last().left, 20);
    }

    void linesWrapAtTheArea()
    {
        const Paper paper = paperOf(area() + QByteArray(17, 'x') + '\x0C');
        QCOMPARE(placeOf(paper.cells.at(15)), QRect(230, 20, 12, 24));
        QCOMPARE(placeOf(paper.cells.at(16)), QRect(50, 50, 12, 24));
    }

    void directions_data()
    {
        QTest::addColumn<char>("direction");
        QTest::addColumn<QRect>("first");
        QTest::addColumn<QRect>("second");
        QTest::addColumn<QRect>("nextLine");
        QTest::addColumn<int>("effects");
        QTest::newRow("from the upper left")
            << '\0' << QRect(50, 20, 12, 24) << QRect(62, 20, 12, 24) << QRect(50, 50, 12, 24) << 0;
        QTest::newRow("upwards") << '\x01' << QRect(50, 108, 24, 12) << QRect(50, 96, 24, 12)
                                 << QRect(80, 108, 24, 12)
                                 << int(Paper::Turned | Paper::UpsideDown);
        QTest::newRow("upside down") << '\x02' << QRect(238, 96, 12, 24) << QRect(226, 96, 12, 24)
                                     << QRect(238, 66, 12, 24) << int(Paper::UpsideDown);
        QTest::newRow("downwards") << '3' << QRect(226, 20, 24, 12) << QRect(226, 32, 24, 12)
                                   << QRect(196, 20, 24, 12) << int(Paper::Turned);
    }
    void directions()
    {
        QFETCH(char, direction);
        QFETCH(QRect, first);
        QFETCH(QRect, second);
        QFETCH(QRect, nextLine);
        QFETCH(int, effects);
        const Paper paper = paperOf(area() + bytes("\x1BT") + direction + bytes("ab\nc\x0C"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), first);
        QCOMPARE(placeOf(cellOf(paper, u'b')), second);
        QCOMPARE(placeOf(cellOf(paper, u'c')), nextLine);
        QCOMPARE(int(cellOf(paper, u'a').effects), effects);
        QCOMPARE(paper.toText().simplified(), QString("ab c"));
    }

    void heights()
    {
        const Paper paper =
            paperOf(bytes("\x1BL\x1D$\x64\0a\x1D\\\x32\0b\x1D\\\xCE\xFF"
                          "c\x0C"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 76, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'b')), QRect(12, 126, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'c')), QRect(24, 76, 12, 24));
        QCOMPARE(paper.toText(), QString("a c\n b\n"));
    }

    void textByPlaces()
    {
        // The stream goes up again, readers go down.
        const Paper paper =
            paperOf(bytes("\x1BL\x1D$\x64\0\x1B$\xC8\0second\x1B$\0\0\x1D$\x32\0first\x0C"));
        QCOMPARE(paper.toText(), QString("first\n                 second\n"));
    }

    void directionsDoNotShareRows()
    {
        // In a square the lines of all four directions lie equally far from their edges.
        const Paper paper = paperOf(bytes("\x1BL\x1BW\x10\0\x10\0\x90\x01\x90\x01one two") +
                                    bytes("\x1BT\x01three four") + bytes("\x1BT2five six") +
                                    bytes("\x1BT\x03seven eight\x0C"));
        QStringList lines;
        for (const QString &line : paper.toText().split('\n', Qt::SkipEmptyParts))
            lines.append(line.trimmed());
        lines.sort();
        QCOMPARE(lines, QStringList({"five six", "one two", "seven eight", "three four"}));
    }

    void copiesOfAPageAreBounded()
    {
        // 40,000 characters on each other, asked for with two bytes each time.
        QByteArray stream = bytes("\x1BL\x1BW\0\0\0\0\x40\x02\x18\0");
        for (int i = 0; i < 1000; ++i)
            stream += QByteArray(40, 'x') + bytes("\x1B$\0\0");
        const QByteArray prints = bytes("\x1B\x0C").repeated(2000);
        const Paper paper = paperOf(stream + prints + bytes("\x1BSz\n"));
        const qint64 most = 16 * 1024 * 1024 + 100 * (stream.size() + prints.size());
        QVERIFY(paper.cells.size() > 40'000);
        QVERIFY(qint64(sizeof(Paper::Cell)) * paper.cells.size() <= most);
        QVERIFY(
            notesOf(paper).contains("a page is left out, as the stream asks for too many copies"));
        QVERIFY(paper.toText().endsWith("z\n"));
    }

    void picturesTurnWithThePage()
    {
        const QByteArray raster = bytes("\x1Dv0\0\x01\0\x02\0\xC0\x01");
        const Paper paper = paperOf(area() + bytes("\x1BT\x03\x1D$\x0A\0") + raster + '\x0C');
        QCOMPARE(paper.pictures.first().place, QRect(240, 20, 2, 8));
        QCOMPARE(dotsOf(paper.pictures.first()),
                 QStringList({".#", ".#", "..", "..", "..", "..", "..", "#."}));
    }

    void whatLiesOutsideIsLeftOut()
    {
        const Paper paper = paperOf(area() + bytes("\x1D$\xC8\0a\x1D$\x32\0b\x0C"));
        QCOMPARE(paper.cells.size(), 1);
        QCOMPARE(notesOf(paper), QStringList("what lies outside of the page's area is left out"));
    }

    void cancelClearsWhatCameSince()
    {
        const QByteArray below = bytes("\x1BW\0\0\xC8\0\x64\0\x64\0");
        const QByteArray above = area().mid(2);
        QCOMPARE(textOf(area() + bytes("a\n\x18") + bytes("b\n\x18") + bytes("c\x0C")).trimmed(),
                 QString("c"));
        QCOMPARE(textOf(area() + bytes("a\n") + below + bytes("\x18") + bytes("b\n") + above +
                        bytes("\x18") + bytes("c\n") + above + bytes("\x18\x0C"))
                     .trimmed(),
                 QString("b"));
        // A new page knows nothing of the old one.
        QCOMPARE(textOf(area() + bytes("a\n") + below + bytes("\x18\x0C") + area() + below +
                        bytes("b\n\x18\x0C"))
                     .trimmed(),
                 QString("a"));
    }

    void cancelClearsTheArea()
    {
        const Paper paper = paperOf(area() + bytes("ab\n\x18"
                                                   "c\x0C"));
        QCOMPARE(paper.cells.size(), 1);
        QCOMPARE(paper.cells.first().character, char16_t('c'));
    }

    void commandsOfPagesDoNothingElsewhere()
    {
        const Paper paper = paperOf(
            bytes("\x1BW\0\0\0\0\x0A\0\x0A\0\x1BT\x01\x1D$\x64\0\x1D\\\x64\0\x1B\x0C\x1BSa\n"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 0, 12, 24));
        QCOMPARE(paper.length, 30);
    }

    void pageOfStar()
    {
        const Paper paper =
            paperOf(bytes("\x1B\x1DP0\x1B\x1DP4\x64\0ab\x1B\x1DP7z\n"), model("TSP-TUP"));
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 76, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'z')), QRect(0, 100, 12, 24));
    }
};

QTEST_GUILESS_MAIN(TestPageMode)
#include "tst_pagemode.moc"
