// Where paper ends, and what happens at places of it.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestCutting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void feedAndCutEndsBelowWhatIsPrinted_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("event");
        const QString full = "cut: cut";
        const QString partial = "partial: cut, a bridge left";
        QTest::newRow("GS V 65") << bytes("a\n\x1DV\x41\0") << 30 << full;
        QTest::newRow("GS V 66") << bytes("a\n\x1DV\x42\0") << 30 << partial;
        QTest::newRow("GS V 66 and more") << bytes("a\n\x1DV\x42\x64") << 130 << partial;
        QTest::newRow("GS V 97") << bytes("a\n\x1DVa\x0A") << 40 << full;
        QTest::newRow("GS V 98") << bytes("a\n\x1DV\x62\x0A") << 40 << partial;
        QTest::newRow("GS V 103") << bytes("a\n\x1DVg\x0A") << 40 << full;
        QTest::newRow("GS V 104") << bytes("a\n\x1DVh\x0A") << 40 << partial;
        QTest::newRow("GS V 0, fed far enough") << bytes("a\n\n\n\n\n\n\x1DV\0") << 84 << full;
        QTest::newRow("GS V digit") << bytes("a\n\n\n\n\n\n\x1DV1") << 84 << partial;
        QTest::newRow("ESC i") << bytes("a\n\n\n\n\n\n\x1Bi") << 84 << partial;
        QTest::newRow("ESC m") << bytes("a\n\n\n\n\n\n\x1Bm") << 84 << partial;
    }
    void feedAndCutEndsBelowWhatIsPrinted()
    {
        QFETCH(QByteArray, stream);
        QFETCH(int, length);
        QFETCH(QString, event);
        const QVector<Paper> papers = papersOf(stream + "b\n", printerCuttingAt96());
        QCOMPARE(papers.size(), 2);
        QCOMPARE(papers.at(0).length, length);
        QVERIFY(papers.at(0).isCut);
        QCOMPARE(eventsOf(papers.at(0)), QStringList(event));
        QCOMPARE(papers.at(0).firstByte, 0LL);
        QCOMPARE(papers.at(1).firstByte, qint64(stream.size()));
        QCOMPARE(cellOf(papers.at(1), u'b').top, 0);
        QVERIFY(!papers.at(1).isCut);
        QVERIFY(papers.at(0).toText().endsWith("[cut]\n"));
        QCOMPARE(papers.at(1).toText(), QString("b\n"));
    }

    void unitsOfTheCutAreTheModels()
    {
        QCOMPARE(papersOf(bytes("a\n\x1DV\x42\x64"), model("CITIZEN_CTS_2000")).at(0).length,
                 34 + 56);
        QCOMPARE(papersOf(bytes("\x1D\x50\0\x66\x61\n\x1DV\x42\x0A")).at(0).length, 30 + 20);
    }

    void fullCutOfEscI()
    {
        const QByteArray stream = bytes("a\n\n\n\n\n\n\x1Bi");
        QCOMPARE(eventsOf(paperOf(stream, model("CUSTOM_VKP_80"))), QStringList("cut: cut"));
        QCOMPARE(eventsOf(paperOf(stream, model("CITIZEN_CBM_1000"))), QStringList("cut: cut"));
    }

    // Who doesn't feed cuts into the text.
    void cutWithoutFeedSplitsWhatIsPrinted()
    {
        const QVector<Paper> papers =
            papersOf(bytes("a\nb\nc\nd\n\x1DV\0\n"), printerCuttingAt96());
        QCOMPARE(papers.size(), 2);
        // Cut at dot 24: the first line alone.
        QCOMPARE(papers.at(0).toText(), QString("a\n[cut]\n"));
        QCOMPARE(papers.at(0).length, 24);
        QCOMPARE(papers.at(0).lines.size(), 1);
        QCOMPARE(papers.at(0).cells.size(), 1);
        QCOMPARE(notesOf(papers.at(0)),
                 QStringList("the paper is cut 90 dots above the end of what is printed"));
        QCOMPARE(papers.at(1).toText(), QString("b\nc\nd\n\n"));
        QCOMPARE(cellOf(papers.at(1), u'b').top, 6);
        QCOMPARE(papers.at(1).lines.at(0).top, 6);
        QCOMPARE(papers.at(1).lines.at(0).firstCell, 0);
        QCOMPARE(papers.at(1).length, 126);
    }

    void whatGoesOnKeepsPicturesAndDrawings()
    {
        const QByteArray define = bytes("\x1B&\x03xx\x01\xFF\xFF\xFF\x1B%\x01");
        const QByteArray raster = bytes("\x1Dv0\0\x01\0\x08\0") + QByteArray(8, '\xFF');
        const QVector<Paper> papers =
            papersOf(define + "x\n" + raster + "x\n" + raster + "x\n" + bytes("\x1DV\0"),
                     printerCuttingAt96());
        QCOMPARE(papers.size(), 2);
        QCOMPARE(papers.at(0).length, 10);
        QCOMPARE(papers.at(0).pictures.size(), 1);
        QCOMPARE(papers.at(0).cells.first().drawing, 0);
        const Paper &rest = papers.at(1);
        QCOMPARE(rest.pictures.size(), 4);
        QCOMPARE(rest.lines.size(), 4);
        QCOMPARE(rest.lines.at(0).firstPicture, 0);
        QCOMPARE(rest.pictures.at(0).place, QRect(0, 20, 8, 8));
        QCOMPARE(rest.pictures.at(rest.cells.at(0).drawing).size, QSize(1, 24));
        QCOMPARE(rest.pictures.at(rest.lines.at(2).firstPicture).place, QRect(0, 58, 8, 8));
        QCOMPARE(rest.toText(),
                 QString::fromUtf8("[picture 8 x 8]\n\uFFFD\n[picture 8 x 8]\n\uFFFD\n"));
    }

    void codeThatNobodyDrawsIsAboveTheCutBehindIt()
    {
        const QVector<Paper> papers =
            papersOf(bytes("a\n\x1Dk\x04"
                           "B\0\x1DV\x42\0"
                           "c\n"));
        QCOMPARE(papers.size(), 2);
        QCOMPARE(papers.at(0).toText(), QString("a\n[Code 39: B]\n[cut]\n"));
        QCOMPARE(papers.at(1).toText(), QString("c\n"));
    }

    void cutAboveAllThatIsPrintedIsAnEvent()
    {
        const QVector<Paper> papers =
            papersOf(bytes("a\n\x1DV\0"
                           "b\n"));
        QCOMPARE(papers.size(), 1);
        QCOMPARE(papers.first().toText(), QString("a\nb\n"));
        QVERIFY(eventsOf(papers.first()).contains("cut: cut"));
    }

    void cutTwiceGivesOnePiece()
    {
        const QVector<Paper> papers = papersOf(bytes("a\n\x1DV\x42\0\x1DV\x42\0\x1DV\0"));
        QCOMPARE(papers.size(), 2);
        QCOMPARE(papers.at(1).lines.size(), 0);
        QCOMPARE(papers.at(1).length, 0);
        QCOMPARE(eventsOf(papers.at(1)), QStringList({"partial: cut, a bridge left", "cut: cut"}));
        QCOMPARE(papers.at(1).toText(), QString());
    }

    void blankPaperIsAPieceWhenItIsCut()
    {
        const QVector<Paper> papers = papersOf(bytes("\n\n\x1DV\x42\0"));
        QCOMPARE(papers.size(), 1);
        QCOMPARE(papers.first().length, 60);
        QCOMPARE(papers.first().toText(), QString("\n\n[cut]\n"));
    }

    void cutBehindTextPrintsItFirst()
    {
        const Paper paper = papersOf(bytes("a\x1DV\x42\0")).first();
        QCOMPARE(paper.toText(), QString("a\n[cut]\n"));
        QCOMPARE(notesOf(paper),
                 QStringList("GS V doesn't begin a line; the line before it is printed"));
    }

    void cutOfNoModeIsTold()
    {
        QCOMPARE(notesOf(paperOf(bytes("a\n\x1DV\x05"))), QStringList("GS V has no mode 5"));
    }

    void pulses_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("pin");
        QTest::addColumn<int>("on");
        QTest::addColumn<int>("off");
        QTest::newRow("ESC p 0") << bytes("\x1Bp\0\x32\xC8") << 2 << 100 << 400;
        QTest::newRow("ESC p 1") << bytes("\x1Bp1\x19\x19") << 5 << 50 << 50;
        QTest::newRow("off is at least on") << bytes("\x1Bp\0\x32\x01") << 2 << 100 << 100;
        QTest::newRow("DLE DC4") << bytes("\x10\x14\x01\x01\x02") << 5 << 200 << 200;
    }
    void pulses()
    {
        QFETCH(QByteArray, stream);
        QFETCH(int, pin);
        QFETCH(int, on);
        QFETCH(int, off);
        const Paper paper = paperOf("a\n" + stream);
        QCOMPARE(paper.events.size(), 1);
        const Paper::Event event = paper.events.first();
        QCOMPARE(event.kind, Paper::Event::Pulse);
        QCOMPARE(event.pin, pin);
        QCOMPARE(event.onMilliseconds, on);
        QCOMPARE(event.offMilliseconds, off);
        QCOMPARE(event.offset, 2LL);
        QCOMPARE(event.top, 30);
    }

    void drawerThatThereIsNot()
    {
        QCOMPARE(notesOf(paperOf(bytes("\x1Bp\x02\x32\x32"))),
                 QStringList("ESC p has no drawer 2"));
    }

    void ejectorOfCustom()
    {
        const QVector<Paper> papers =
            papersOf(bytes("a\n\x1DV\x42\0\x1D\x65\x03\x0C\x1D\x65\x05\x1D\x65\x02"),
                     model("CUSTOM_VKP_80"));
        QCOMPARE(papers.size(), 2);
        QCOMPARE(eventsOf(papers.at(1)),
                 QStringList({"present: presents the ticket", "eject: ejects the ticket",
                              "retract: takes the ticket back"}));
        QCOMPARE(papers.at(1).firstByte, 6LL);
    }

    void functionsOfTheEjector_data()
    {
        QTest::addColumn<QByteArray>("operands");
        QTest::addColumn<QStringList>("events");
        QTest::newRow("0") << bytes("\0") << QStringList("present: presents the ticket");
        QTest::newRow("1") << bytes("\x01") << QStringList();
        QTest::newRow("2") << bytes("\x02") << QStringList("retract: takes the ticket back");
        QTest::newRow("3") << bytes("\x03\x0C") << QStringList("present: presents the ticket");
        QTest::newRow("4") << bytes("\x04") << QStringList("present: presents the ticket");
        QTest::newRow("5") << bytes("\x05") << QStringList("eject: ejects the ticket");
        QTest::newRow("6") << bytes("\x06")
                           << QStringList("status: GS e asks for the ejector's status");
    }
    void functionsOfTheEjector()
    {
        QFETCH(QByteArray, operands);
        const Paper paper =
            paperOf("a\n" + bytes("\x1D\x65") + operands + "b\n", model("CUSTOM_VKP_80"));
        QTEST(eventsOf(paper), "events");
        QCOMPARE(paper.toText(), QString("a\nb\n"));
    }

    void presenterOfCitizen()
    {
        QCOMPARE(eventsOf(paperOf(bytes("\x1DR0"), model("CITIZEN_PPU_700"))),
                 QStringList("retract: takes the ticket back"));
        QVERIFY(papersOf(bytes("\x1DR1\x1E"), model("CITIZEN_PPU_700")).isEmpty());
    }

    void buzzersBeep_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::newRow("ESC B") << bytes("\x1B\x42\x02\x03");
        QTest::newRow("ESC ( A") << bytes("\x1B(A\x04\0\x30\x33\x02\x03");
        QTest::newRow("DLE DC4 3") << bytes("\x10\x14\x03\x01\x02\x03\x04\x05");
    }
    void buzzersBeep()
    {
        QFETCH(QByteArray, stream);
        const Paper paper = paperOf(stream + "a\n");
        QCOMPARE(eventsOf(paper), QStringList("beep: beep"));
        QCOMPARE(paper.toText(), QString("a\n"));
    }

    void buffersAreClearedAtOnce()
    {
        const QByteArray clear = bytes("\x10\x14\x08\x01\x03\x14\x01\x06\x02\x08");
        const Paper line = paperOf("a\nbc" + clear + "d\n");
        QCOMPARE(line.toText(), QString("a\nd\n"));
        QCOMPARE(notesOf(line),
                 QStringList("DLE DC4 clears 2 characters that weren't printed yet"));
        QCOMPARE(textOf(bytes("\x1BLpage\n") + clear + "a\n"), QString("a\n"));
    }

    void everyQuestionIsAnEvent_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QString>("event");
        const auto row = [](const QByteArray &stream, const char *event) {
            QTest::newRow(event) << stream << QString(event);
        };
        row(bytes("\x1Bu\0"), "ESC u asks for the drawer");
        row(bytes("\x1Bv"), "ESC v asks for the paper");
        row(bytes("\x10\x04\x04"), "DLE EOT asks for the paper's sensors");
        row(bytes("\x10\x14\x07\x01"), "DLE DC4 asks for a status");
        row(bytes("\x1D(H\x06\0"
                  "001234"),
            "GS ( H asks for an answer with the job's number");
        row(bytes("\x1D(L\x02\0\x30\x30"), "GS ( L asks for the memory's size");
        row(bytes("\x1D(L\x04\0\x30\x40KC"), "GS ( L asks for the stored keys");
        row(bytes("\x1D(k\x03\0"
                  "1R0"),
            "GS ( k asks for the QR code's size");
        row(bytes("\x1Dg2\0\x14\0"), "GS g 2 asks for a maintenance counter");
        row(bytes("\x1C"
                  "g2\0\0\0\0\0\x01\0"),
            "FS g 2 asks for the user's data");
    }
    void everyQuestionIsAnEvent()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QString, event);
        const Paper paper = paperOf(stream + "a\n");
        QCOMPARE(eventsOf(paper), QStringList("status: " + event));
        QCOMPARE(paper.toText(), QString("a\n"));
    }

    void whatShowsNowhereLeavesNoMark_data()
    {
        QTest::addColumn<QByteArray>("stream");
        const auto row = [](const char *name, const QByteArray &stream) {
            QTest::newRow(name) << stream;
        };
        row("ESC c 3", bytes("\x1B\x63\x33\x01"));
        row("ESC c 4", bytes("\x1B\x63\x34\x01"));
        row("ESC c 5", bytes("\x1B\x63\x35\x01"));
        row("ESC U", bytes("\x1BU\x01"));
        row("DLE ENQ", bytes("\x10\x05\x02"));
        row("GS b", bytes("\x1D\x62\x01"));
        row("GS E", bytes("\x1D\x45\x11"));
        row("GS ( D", bytes("\x1D(D\x03\0\x14\x01\0"));
        row("GS ( E", bytes("\x1D(E\x03\0\x01IN"));
        row("GS ( H", bytes("\x1D(H\x03\0\x31\x30\x01"));
        row("GS ( K", bytes("\x1D(K\x02\0\x31\x01"));
        row("GS ( M", bytes("\x1D(M\x02\0\x01\x01"));
        row("FS ( A", bytes("\x1C(A\x02\0\x30\x01"));
    }
    void whatShowsNowhereLeavesNoMark()
    {
        QFETCH(QByteArray, stream);
        const Paper paper = paperOf(stream + "a\n");
        QCOMPARE(eventsOf(paper), QStringList());
        QCOMPARE(paper.cells.size(), 1);
        QCOMPARE(placeOf(cellOf(paper, u'a')), QRect(0, 0, 12, 24));
    }

    void questionsAreEvents()
    {
        const Paper paper = paperOf(bytes("\x10\x04\x01\x1DI\x01\x1Dr\x01\x1Bv\x1D\x61\xFF"));
        QCOMPARE(paper.events.size(), 5);
        for (const Paper::Event &event : paper.events)
            QCOMPARE(event.kind, Paper::Event::Status);
        QCOMPARE(paper.events.at(0).text, QString("DLE EOT asks for the printer's status"));
        QCOMPARE(paper.events.at(1).offset, 3LL);
    }

    void paperEndsAtItsLongest()
    {
        QByteArray feeds;
        for (int i = 0; i < 400; ++i)
            feeds += bytes("\x1BJ\xC8");
        const Paper full = paperOf(feeds);
        QCOMPARE(full.length, Paper::longest);
        QVERIFY(!full.isTooLong);
        const QVector<Paper> papers = papersOf(feeds + bytes("a\nb\n\x1DV\x42\0"
                                                             "c\n"));
        QCOMPARE(papers.size(), 2);
        QVERIFY(papers.at(0).isTooLong);
        QCOMPARE(papers.at(0).length, Paper::longest);
        QVERIFY(papers.at(0).cells.isEmpty());
        QCOMPARE(notesOf(papers.at(0)),
                 QStringList("the paper is longer than 80000 dots; what comes is left out"));
        QCOMPARE(papers.at(0).events.first().offset, qint64(feeds.size() + 1));
        QCOMPARE(papers.at(1).toText(), QString("c\n"));
        QVERIFY(!papers.at(1).isTooLong);
    }

    /// A column of dots that is printed at a scale, by GS v 0.
    static QByteArray columnOf(int height, char scale = 0)
    {
        QByteArray stream = bytes("\x1Dv0") + scale + bytes("\x01\0");
        stream += char(height % 256);
        stream += char(height / 256);
        for (int i = 0; i < height; ++i)
            stream += char(i % 251);
        return stream;
    }

    void pictureThatIsTallerThanThePaperIsPrintedAsFarAsItGoes()
    {
        const int height = Paper::longest / 2 + 3;
        const QVector<Paper> papers = papersOf(columnOf(height, 2) + bytes("a\n\x1DV\x42\0"
                                                                           "b\n"));
        QCOMPARE(papers.size(), 2);
        const Paper &paper = papers.first();
        QVERIFY(paper.isTooLong);
        QCOMPARE(paper.length, Paper::longest);
        QCOMPARE(paper.pictures.size(), 1);
        const Paper::Picture &picture = paper.pictures.first();
        QCOMPARE(picture.place, QRect(0, 0, 8, Paper::longest));
        QCOMPARE(picture.size, QSize(8, Paper::longest / 2));
        QCOMPARE(picture.rows, columnOf(height).mid(8, Paper::longest / 2));
        QVERIFY(paper.cells.isEmpty());
        QCOMPARE(notesOf(paper),
                 QStringList({"a picture of 80006 dots is taller than the 80000 that are left",
                              "the paper is longer than 80000 dots; what comes is left out"}));
        QCOMPARE(papers.at(1).toText(), QString("b\n"));
    }

    void pictureThatFitsExactlyIsWhole()
    {
        const Paper paper = paperOf(columnOf(Paper::longest / 2, 2));
        QVERIFY(!paper.isTooLong);
        QCOMPARE(paper.length, Paper::longest);
        QCOMPARE(paper.pictures.first().place, QRect(0, 0, 8, Paper::longest));
        QCOMPARE(notesOf(paper), QStringList());
    }

    void onlyWholeRowsOfAPictureArePrinted()
    {
        // One dot is left behind the first, which isn't enough for a row of two.
        const QByteArray first = columnOf(Paper::longest / 2 - 1, 2) + columnOf(1);
        const Paper none = paperOf(first + columnOf(1, 2));
        QVERIFY(none.isTooLong);
        QCOMPARE(none.pictures.size(), 2);
        const Paper some = paperOf(columnOf(Paper::longest / 2 - 2, 2) + columnOf(1) +
                                   columnOf(7, 2) + columnOf(7, 2));
        QCOMPARE(some.pictures.size(), 3);
        QCOMPARE(some.pictures.last().place, QRect(0, Paper::longest - 3, 8, 2));
        QCOMPARE(notesOf(some).size(), 2);
    }

    void pictureIsWholeIfOnlyTheSpacingBelowItIsTooMuch()
    {
        // 24 rows of dots in a line of 30.
        const QByteArray line = bytes("\x1B*\x21\x01\0\xFF\xFF\xFF\n");
        const Paper paper = paperOf(columnOf(Paper::longest / 2 - 13, 2) + line);
        QCOMPARE(paper.pictures.size(), 2);
        QCOMPARE(paper.pictures.last().place, QRect(0, Paper::longest - 26, 1, 24));
        QCOMPARE(paper.length, Paper::longest);
        QCOMPARE(notesOf(paper),
                 QStringList("the paper is longer than 80000 dots; what comes is left out"));
    }

    void pictureUpsideDownShowsItsBottomFirst()
    {
        const int height = Paper::longest / 2 + 1;
        const Paper paper = paperOf(bytes("\x1B{\x01") + columnOf(height, 2));
        QCOMPARE(paper.pictures.size(), 1);
        QCOMPARE(paper.pictures.first().size.height(), Paper::longest / 2);
        // 40,000 modulo 251 is 91, mirrored.
        QCOMPARE(paper.pictures.first().rows.at(0), '\xDA');
    }
};

QTEST_GUILESS_MAIN(TestCutting)
#include "tst_cutting.moc"
