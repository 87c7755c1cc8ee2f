// Characters in lines: where they stand, how large, and where lines end.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestTextLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersStandSideBySide()
    {
        const Paper paper = paperOf("AB\n");
        QCOMPARE(paper.width, 576);
        QCOMPARE(paper.cell, QSize(12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'A')), QRect(0, 0, 12, 24));
        QCOMPARE(placeOf(cellOf(paper, u'B')), QRect(12, 0, 12, 24));
        QCOMPARE(paper.lines.size(), 1);
        QCOMPARE(paper.lines.first().height, 30);
        QCOMPARE(paper.length, 30);
        QVERIFY(!paper.isCut);
        QCOMPARE(paper.toText(), QString("AB\n"));
        QCOMPARE(eventsOf(paper), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestTextLines)
#include "tst_textlines.moc"
