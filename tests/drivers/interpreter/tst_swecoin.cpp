// Swecoin's dialect on paper.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestSwecoin : public QObject
{
    Q_OBJECT

    static QVector<Paper> printed(const QByteArray &stream)
    {
        return papersOf(stream, model("SWECOIN_TM_20XX"));
    }

private Q_SLOTS:
    void textAndLooks_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("effects");
        const auto row = [](const char *name, const QByteArray &stream, QSize size,
                            int effects = 0) { QTest::newRow(name) << stream << size << effects; };
        row("usual", "x", {18, 24});
        row("ESC B", bytes("\x1B\x42\x01x"), {18, 24}, Paper::Bold);
        row("ESC i", bytes("\x1Bi\x01x"), {18, 24}, Paper::Italic);
        row("ESC T", bytes("\x1BT\x01x"), {18, 24}, Paper::Inverse);
        row("ESC u", bytes("\x1Bu\x01x"), {18, 24}, Paper::Underline);
        row("ESC u thick", bytes("\x1Bu\x03x"), {18, 24}, Paper::ThickUnderline);
        row("ESC h", bytes("\x1Bh\x01x"), {18, 48});
        row("ESC w", bytes("\x1Bw\x01x"), {36, 24});
        row("ESC ?", bytes("\x1Bw\x01\x1B\x42\x01\x1B?x"), {18, 24});
    }
    void textAndLooks()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QSize, size);
        QFETCH(int, effects);
        const Paper::Cell cell = cellOf(printed(stream + '\n').value(0), u'x');
        QCOMPARE(QSize(cell.width, cell.height), size);
        QCOMPARE(int(cell.effects), effects);
    }

    void fontThatNobodyKnowsIsTold()
    {
        const Paper paper = printed(bytes("\x1B!\x05x\n")).first();
        QCOMPARE(placeOf(cellOf(paper, u'x')), QRect(0, 0, 18, 24));
        QCOMPARE(notesOf(paper),
                 QStringList("ESC ! asks for font 5, of which the model's data knows nothing"));
    }

    void parametersLeaveNoMark()
    {
        const Paper paper = printed(bytes("\x1B&P\x01\x13\x1B&\x04x\n")).first();
        QCOMPARE(paper.toText(), QString("x\n"));
        QCOMPARE(eventsOf(paper), QStringList());
        QCOMPARE(eventsOf(printed(bytes("\x1B\x05P\x01")).first()),
                 QStringList("status: ESC ENQ asks for a parameter"));
    }

    void cancelClearsTheLine() { QCOMPARE(printed("ab\x18x\n").first().toText(), QString("x\n")); }

    void backspace()
    {
        const Paper paper = printed("ab\bx\n").first();
        QCOMPARE(cellOf(paper, u'x').left, 18);
        QCOMPARE(cellOf(printed("\bx\n").first(), u'x').left, 0);
    }

    void cutAndEject_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QStringList>("events");
        QTest::newRow("RS") << bytes("\x1E") << QStringList("eject: ejects the ticket");
        QTest::newRow("FF") << bytes("\x0C") << QStringList("eject: ejects the ticket");
        QTest::newRow("ESC RS") << bytes("\x1B\x1E") << QStringList();
        QTest::newRow("ESC FF") << bytes("\x1B\x1E\x1B\x0C\x32")
                                << QStringList("present: presents 50 mm of the ticket");
        QTest::newRow("EM below 100")
            << bytes("\x1B\x1E\x19\x63") << QStringList("eject: ejects the ticket");
        QTest::newRow("EM from 100 on")
            << bytes("\x1B\x1E\x19\x64") << QStringList("retract: takes the ticket back");
        QTest::newRow("ENQ") << bytes("\x1B\x1E\x05") << QStringList("eject: ejects the ticket");
    }
    void cutAndEject()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QStringList, events);
        const QVector<Paper> papers = printed(bytes("a\n\x1BJ\x58") + stream);
        QCOMPARE(papers.first().toText(), QString("a\n[cut]\n"));
        QCOMPARE(eventsOf(papers.first()), QStringList("cut: cut"));
        QCOMPARE(papers.first().length, 34);
        QCOMPARE(papers.size(), events.isEmpty() ? 1 : 2);
        QCOMPARE(eventsOf(papers.value(1)), events);
    }

    void cutsWhereThePaperIs()
    {
        const QVector<Paper> papers = printed(bytes("a\n\x1B\x1E"));
        QCOMPARE(papers.size(), 1);
        QVERIFY(!papers.first().isCut);
        QCOMPARE(notesOf(papers.first()),
                 QStringList("the paper is cut 78 dots above the end of what is printed"));
    }

    void questionsAreEvents()
    {
        const QVector<Paper> papers = printed(bytes("\x1B\x05\x06\x1B\x05\x01\x1B\x06\x11"));
        QCOMPARE(papers.first().events.size(), 3);
        for (const Paper::Event &event : papers.first().events)
            QCOMPARE(event.kind, Paper::Event::Status);
    }

    void rowsOfDots()
    {
        const Paper paper = printed(bytes("\x1Bs\x02\xF0\x0F\x1Bl\0\x02\xFF\xFF"
                                          "a\n"))
                                .first();
        QCOMPARE(paper.toText(), QString("[picture 16 x 2]\na\n"));
        QCOMPARE(dotsOf(paper.pictures.first()), QStringList("####........####"));
        QCOMPARE(notesOf(printed(bytes("\x1Bs\0\x01\x1Bs\x01\xF0")).first()),
                 QStringList("ESC s is packed, and isn't carried out"));
    }

    void placedTextKeepsItsPlaceAcross()
    {
        const Paper paper = printed(bytes("\x1Bt\0\x64\0\x0A\0ab\0")).first();
        QCOMPARE(cellOf(paper, u'a').left, 100);
        QCOMPARE(notesOf(paper), QStringList("ESC t isn't placed along the paper"));
    }

    void tabStopsInMillimetres()
    {
        QCOMPARE(cellOf(printed(bytes("\x1B\x46\x02\x05\0\tx\n")).first(), u'x').left, 40);
    }

    void feeds()
    {
        QCOMPARE(printed("a\n").first().length, 34);
        QCOMPARE(printed(bytes("\x1BJ\x64")).first().length, 100);
        QCOMPARE(printed(bytes("\x1B\x33\x50"
                               "a\n"))
                     .first()
                     .length,
                 80);
        QCOMPARE(printed(bytes("\x1BJ\x64\x1Bj\x32"
                               "a\n"))
                     .first()
                     .cells.first()
                     .top,
                 50);
        QCOMPARE(printed(bytes("\x1BQ\x01\x02")).first().length, 258);
        QCOMPARE(printed(bytes("a\x1Bpb\n")).first().toText(), QString("a\nb\n"));
    }
};

QTEST_GUILESS_MAIN(TestSwecoin)
#include "tst_swecoin.moc"
