// Pictures: in lines, on lines of their own, and kept for later.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestGraphics : public QObject
{
    Q_OBJECT

    static QByteArray graphics(const QByteArray &functionAndData)
    {
        QByteArray command = bytes("\x1D(L");
        command += char(functionAndData.size() & 0xFF);
        command += char(functionAndData.size() >> 8);
        return command + functionAndData;
    }

private Q_SLOTS:
    void bitImagesStandInTheLine_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("dots");
        QTest::newRow("8 dots") << 0 << QSize(2, 8) << QSize(4, 24);
        QTest::newRow("8 dots dense") << 1 << QSize(2, 8) << QSize(2, 24);
        QTest::newRow("24 dots") << 32 << QSize(2, 24) << QSize(4, 24);
        QTest::newRow("24 dots dense") << 33 << QSize(2, 24) << QSize(2, 24);
    }
    void bitImagesStandInTheLine()
    {
        QFETCH(int, mode);
        QFETCH(QSize, size);
        QFETCH(QSize, dots);
        QByteArray data(2 * size.height() / 8, '\0');
        data[0] = '\xC0';
        data[data.size() - 1] = '\x01';
        const Paper paper = paperOf(bytes("ab\x1B*") + char(mode) + bytes("\x02\0") + data + "c\n");
        QCOMPARE(paper.pictures.size(), 1);
        const Paper::Picture picture = paper.pictures.first();
        QCOMPARE(picture.size, size);
        QCOMPARE(picture.place, QRect(QPoint(24, 0), dots));
        QCOMPARE(QSize(size.width() * picture.dotsPerPixel.width(),
                       size.height() * picture.dotsPerPixel.height()),
                 dots);
        const QStringList rows = dotsOf(picture);
        QCOMPARE(rows.at(0), QString("#."));
        QCOMPARE(rows.at(1), QString("#."));
        QCOMPARE(rows.at(2), QString(".."));
        QCOMPARE(rows.last(), QString(".#"));
        QCOMPARE(cellOf(paper, u'c').left, 24 + dots.width());
        QCOMPARE(paper.lines.first().kind, Paper::Line::Text);
        QCOMPARE(paper.length, 30);
    }

    void bitImageOfAnUnknownModeIsTold()
    {
        const Paper paper =
            paperOf(bytes("\x1B*\x05\x01\0\xFF"
                          "a\n"));
        QVERIFY(paper.pictures.isEmpty());
        QCOMPARE(notesOf(paper), QStringList("ESC * has no mode 5"));
        QCOMPARE(paper.toText(), QString("a\n"));
    }

    void bitImagesAreAligned()
    {
        const Paper paper = paperOf(bytes("\x1B\x61\x02\x1B*\x01\x02\0\xFF\xFF\n"));
        QCOMPARE(paper.pictures.first().place, QRect(574, 0, 2, 24));
        QCOMPARE(paper.lines.first().kind, Paper::Line::Graphics);
    }

    void bitImageIsCutAtTheEdge()
    {
        const Paper paper =
            paperOf(bytes("\x1B$\x3C\x02\x1B*\x01\x0A\0") + QByteArray(10, '\xFF') + '\n');
        QCOMPARE(paper.pictures.first().place, QRect(572, 0, 4, 24));
        QCOMPARE(dotsOf(paper.pictures.first()).first(), QString("####"));
        QCOMPARE(notesOf(paper),
                 QStringList("a picture of 10 dots is wider than the 4 that are left"));
    }

    void stripsTouch()
    {
        const QByteArray strip = bytes("\x1B*\x21\x02\0") + QByteArray(6, '\xFF') + '\n';
        const Paper paper = paperOf(bytes("\x1B\x33\x18") + strip + strip + bytes("\x1B\x32z\n"));
        QCOMPARE(paper.pictures.at(0).place, QRect(0, 0, 2, 24));
        QCOMPARE(paper.pictures.at(1).place, QRect(0, 24, 2, 24));
        QCOMPARE(paper.toText(), QString("[picture 2 x 48]\nz\n"));
        QCOMPARE(textOf(strip + strip), QString("[picture 2 x 24]\n[picture 2 x 24]\n"));
    }

    void rasterModes_data()
    {
        QTest::addColumn<char>("mode");
        QTest::addColumn<QSize>("dots");
        QTest::newRow("0") << '\0' << QSize(16, 2);
        QTest::newRow("1") << '\x01' << QSize(32, 2);
        QTest::newRow("2") << '\x02' << QSize(16, 4);
        QTest::newRow("3") << '\x03' << QSize(32, 4);
        QTest::newRow("digit") << '3' << QSize(32, 4);
    }
    void rasterModes()
    {
        QFETCH(char, mode);
        QFETCH(QSize, dots);
        const Paper paper =
            paperOf(bytes("\x1Dv0") + mode + bytes("\x02\0\x02\0\x80\x01\xFF\0z\n"));
        const Paper::Picture picture = paper.pictures.first();
        QCOMPARE(picture.place, QRect(QPoint(0, 0), dots));
        QCOMPARE(dotsOf(picture), QStringList({"#..............#", "########........"}));
        QCOMPARE(paper.lines.first().kind, Paper::Line::Graphics);
        QCOMPARE(paper.lines.first().height, dots.height());
        QCOMPARE(cellOf(paper, u'z').top, dots.height());
    }

    void rasterIsAlignedAndCut()
    {
        const QByteArray raster = bytes("\x1Dv0\0\x01\0\x01\0\xFF");
        QCOMPARE(paperOf(bytes("\x1B\x61\x01") + raster).pictures.first().place,
                 QRect(284, 0, 8, 1));
        QCOMPARE(paperOf(bytes("\x1DL\x0A\0") + raster).pictures.first().place, QRect(10, 0, 8, 1));
        const Paper paper = paperOf(bytes("\x1Dv0\0\x50\0\x02\0") + QByteArray(160, '\xFF'));
        QCOMPARE(paper.pictures.first().place, QRect(0, 0, 576, 2));
        QCOMPARE(paper.pictures.first().rows, QByteArray(144, '\xFF'));
        QCOMPARE(notesOf(paper),
                 QStringList("a picture of 640 dots is wider than the line of 576"));
        QCOMPARE(paperOf(bytes("\x1DW\x05\0") + raster).pictures.first().rows, QByteArray("\xF8"));
    }

    // Its rows are whole bytes.
    void rasterMayBeBlankBehindTheLine()
    {
        const auto notesOnFiveDots = [](const QByteArray &row) {
            const QByteArray raster =
                bytes("\x1Dv0\0") + char(row.size()) + bytes("\0\x01\0") + row;
            return notesOf(paperOf(bytes("\x1DW\x05\0") + raster));
        };
        QCOMPARE(notesOnFiveDots("\xF8"), QStringList());
        QCOMPARE(notesOnFiveDots("\xFC"),
                 QStringList("a picture of 8 dots is wider than the line of 5"));
        QCOMPARE(notesOnFiveDots(bytes("\xF8\0")),
                 QStringList("a picture of 16 dots is wider than the line of 5"));
    }

    void rasterBehindTextGoesBelowIt()
    {
        const Paper paper = paperOf(bytes("a\x1Dv0\0\x01\0\x01\0\xFF"));
        QCOMPARE(paper.pictures.first().place, QRect(0, 30, 8, 1));
        QCOMPARE(notesOf(paper),
                 QStringList("GS v 0 doesn't begin a line; the line before it is printed"));
    }

    void emptyRasterIsNothing()
    {
        QVERIFY(papersOf(bytes("\x1Dv0\0\0\0\0\0")).isEmpty());
        QVERIFY(papersOf(bytes("\x1Dv0\0\0\0\xFF\xFF")).isEmpty());
        QVERIFY(papersOf(bytes("\x1B*\0\0\0\n\x1B@")).value(0).pictures.isEmpty());
    }

    void upsideDownRasterIsTurned()
    {
        const Paper paper = paperOf(bytes("\x1B{\x01\x1Dv0\0\x01\0\x02\0\xC0\x01"));
        QCOMPARE(paper.pictures.first().place, QRect(568, 0, 8, 2));
        QCOMPARE(dotsOf(paper.pictures.first()), QStringList({"#.......", "......##"}));
    }

    void tallBitImage()
    {
        // Three columns of two bytes.
        const Paper paper = paperOf(bytes("\x1DQ0\0\x03\0\x02\0\x80\0\0\x01\xFF\xFF"));
        QCOMPARE(paper.pictures.first().place, QRect(0, 0, 3, 16));
        QCOMPARE(dotsOf(paper.pictures.first()).first(), QString("#.#"));
        QCOMPARE(dotsOf(paper.pictures.first()).last(), QString(".##"));
    }

    void downloadedPicture()
    {
        QByteArray data(8, '\0');
        data[0] = '\x80';
        data[7] = '\x01';
        const QByteArray define = bytes("\x1D*\x01\x01") + data;
        const Paper paper = paperOf(define + bytes("\x1D/\x03\x1D/\0"));
        QCOMPARE(paper.pictures.at(0).place, QRect(0, 0, 16, 16));
        QCOMPARE(paper.pictures.at(1).place, QRect(0, 16, 8, 8));
        QCOMPARE(dotsOf(paper.pictures.at(1)).first(), QString("#......."));
        QCOMPARE(dotsOf(paper.pictures.at(1)).last(), QString(".......#"));
        QCOMPARE(notesOf(paperOf(bytes("\x1D/\0"))), QStringList("GS / finds no picture"));
        QCOMPARE(notesOf(paperOf(define + bytes("\x1B@\x1D/\0"))),
                 QStringList("GS / finds no picture"));
    }

    void nvPicturesStayAfterAReset()
    {
        const QByteArray cell = bytes("\x01\0\x01\0") + QByteArray(8, '\xFF');
        const QByteArray wide = bytes("\x02\0\x01\0") + QByteArray(16, '\x0F');
        const Paper paper =
            paperOf(bytes("\x1Cq\x02") + cell + wide + bytes("\x1B@\x1Cp\x02\0\x1Cp\x01\x01"));
        QCOMPARE(paper.pictures.at(0).place, QRect(0, 0, 16, 8));
        QCOMPARE(paper.pictures.at(1).place, QRect(0, 8, 16, 8));
        QCOMPARE(paper.pictures.at(1).dotsPerPixel, QSize(2, 1));
        QCOMPARE(notesOf(paperOf(bytes("\x1Cp\x01\0"))), QStringList("FS p finds no picture"));
        QCOMPARE(notesOf(paperOf(bytes("\x1Cp\0\0"))), QStringList("FS p finds no picture"));
    }

    void graphicsWaitForTheirPrint()
    {
        const QByteArray store = graphics(bytes("0\x70\x30\x01\x02\x31\x0A\0\x01\0\xFF\xC0"));
        const Paper paper = paperOf(store + "a\n" + graphics(bytes("0\x32")));
        QCOMPARE(paper.pictures.size(), 1);
        QCOMPARE(paper.pictures.first().place, QRect(0, 30, 10, 2));
        QCOMPARE(paper.pictures.first().size, QSize(10, 1));
        QCOMPARE(notesOf(paperOf(graphics(bytes("0\x02")))),
                 QStringList("GS ( L finds no picture"));
        QCOMPARE(
            paperOf(store + graphics(bytes("0\x02")) + graphics(bytes("0\x02"))).pictures.size(),
            1);
    }

    void graphicsWithLongLength()
    {
        const QByteArray data = bytes("0\x70\x30\x01\x01\x31\x08\0\x01\0\xA5");
        const Paper paper = paperOf(bytes("\x1D\x38L\x0B\0\0\0") + data + graphics(bytes("0\x32")));
        QCOMPARE(paper.pictures.first().rows, QByteArray("\xA5"));
    }

    void graphicsOfColumns()
    {
        const QByteArray store = graphics(bytes("0\x71\x30\x01\x01\x31\x02\0\x08\0\x80\x01"));
        const Paper paper = paperOf(store + graphics(bytes("0\x32")));
        QCOMPARE(dotsOf(paper.pictures.first()).first(), QString("#."));
        QCOMPARE(dotsOf(paper.pictures.first()).last(), QString(".#"));
    }

    void keptGraphics_data()
    {
        QTest::addColumn<QByteArray>("define");
        QTest::addColumn<QByteArray>("print");
        QTest::addColumn<QByteArray>("remove");
        QTest::addColumn<QByteArray>("removeAll");
        QTest::addColumn<bool>("staysAfterReset");
        const QByteArray key = "AB";
        const QByteArray head = key + bytes("\x01\x08\0\x01\0\x31");
        const QByteArray rows = head + "\xF0";
        const QByteArray columns = head + bytes("\x80\x80\x80\x80\0\0\0\0");
        const QByteArray twiceAsHigh = key + "\x01\x02";
        const auto addRow = [&](const char *name, const QByteArray &define, bool isStored) {
            const QByteArray functions = isStored ? "EBA" : "URQ";
            QTest::newRow(name) << '0' + define << '0' + functions.mid(0, 1) + twiceAsHigh
                                << '0' + functions.mid(1, 1) + key
                                << '0' + functions.mid(2, 1) + "CLR" << isStored;
        };
        addRow("stored", "C0" + rows, true);
        addRow("stored columns", "D0" + columns, true);
        addRow("downloaded", "S0" + rows, false);
        addRow("downloaded columns", "T0" + columns, false);
    }
    void keptGraphics()
    {
        QFETCH(QByteArray, define);
        QFETCH(QByteArray, print);
        QFETCH(QByteArray, remove);
        QFETCH(QByteArray, removeAll);
        QFETCH(bool, staysAfterReset);
        const auto countAfter = [&](const QByteArray &between) {
            const Paper paper = paperOf(graphics(define) + between + graphics(print));
            if (!paper.pictures.isEmpty()) {
                const Paper::Picture picture = paper.pictures.first();
                return picture.place == QRect(0, 0, 8, 2) &&
                               dotsOf(picture) == QStringList("####....")
                           ? 1
                           : -1;
            }
            return notesOf(paper) == QStringList("GS ( L finds no picture") ? 0 : -2;
        };
        QCOMPARE(countAfter(""), 1);
        QCOMPARE(countAfter(bytes("\x1B@")), staysAfterReset ? 1 : 0);
        QCOMPARE(countAfter(graphics(remove)), 0);
        QCOMPARE(countAfter(graphics(removeAll)), 0);
    }

    void picturesOfMuchSizeAndFewBytesTakeLittle()
    {
        // The stream ends inside, so nothing is made of it.
        const Paper paper = paperOf(bytes("\x1Dv0\0\xFF\xFF\xFF\xFF\x01"));
        QVERIFY(paper.pictures.isEmpty());
        QCOMPARE(notesOf(paper).size(), 1);
        QVERIFY(notesOf(paper).first().startsWith("ends inside GS v 0, 1 of "));
        // A size of its own, that the data doesn't reach.
        const QByteArray lie = graphics(bytes("0\x70\x30\x01\x01\x31\xFF\xFF\xFF\xFF\xA5"));
        const Paper liar = paperOf(lie + graphics(bytes("0\x32")));
        QCOMPARE(liar.pictures.first().place, QRect(0, 0, 576, 1));
    }
};

QTEST_GUILESS_MAIN(TestGraphics)
#include "tst_graphics.moc"
