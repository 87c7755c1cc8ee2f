// Star's dialect on paper.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;
using Symbology = Paper::Symbology;

class TestStarLine : public QObject
{
    Q_OBJECT

    static PrinterProfile star() { return model("TSP-TUP"); }

    static Paper printed(const QByteArray &stream) { return paperOf(stream, star()); }

private Q_SLOTS:
    void cellOfACharacter_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("effects");
        const auto row = [](const char *name, const QByteArray &stream, QSize size,
                            int effects = 0) { QTest::newRow(name) << stream << size << effects; };
        row("usual", "x", {12, 24});
        row("ESC i", bytes("\x1Bi\x01\x02x"), {36, 48});
        row("ESC i digits", bytes("\x1Bi10x"), {12, 48});
        row("ESC i too large", bytes("\x1Bi\x06\x06x"), {12, 24});
        row("ESC W", bytes("\x1BW\x05x"), {72, 24});
        row("ESC h", bytes("\x1Bh1x"), {12, 48});
        row("SO", bytes("\x0Ex"), {24, 24});
        row("DC4", bytes("\x0E\x14x"), {12, 24});
        row("ESC SO", bytes("\x1B\x0Ex"), {12, 48});
        row("ESC DC4", bytes("\x1B\x0E\x1B\x14x"), {12, 24});
        row("ESC E", bytes("\x1B\x45x"), {12, 24}, Paper::Bold);
        row("ESC F", bytes("\x1B\x45\x1B\x46x"), {12, 24});
        row("ESC -", bytes("\x1B-1x"), {12, 24}, Paper::ThickUnderline);
        row("ESC - 0", bytes("\x1B-1\x1B-0x"), {12, 24});
        row("ESC 4", bytes("\x1B\x34x"), {12, 24}, Paper::Inverse);
        row("ESC 5", bytes("\x1B\x34\x1B\x35x"), {12, 24});
        row("SI", bytes("\x0Fx"), {12, 24}, Paper::UpsideDown);
        row("DC2", bytes("\x0F\x12x"), {12, 24});
        row("ESC RS F 1", bytes("\x1B\x1E\x46\x01x"), {9, 24});
        row("ESC RS i 1", bytes("\x1B\x1Ei\x01x"), {24, 12}, Paper::Turned);
        row("ESC RS i too large", bytes("\x1B\x1Ei\x04x"), {12, 24});
        row("ESC @", bytes("\x1Bi\x01\x02\x1B\x45\x1B@x"), {12, 24});
    }
    void cellOfACharacter()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QSize, size);
        QFETCH(int, effects);
        const Paper::Cell cell = cellOf(printed(stream + '\n'), u'x');
        QCOMPARE(QSize(cell.width, cell.height), size);
        QCOMPARE(int(cell.effects), effects);
    }

    void lineAboveIsTold()
    {
        const Paper paper = printed(bytes("\x1B_1x\x1B_0y\n"));
        QCOMPARE(paper.toText(), QString("xy\n"));
        QCOMPARE(notesOf(paper), QStringList("ESC _ asks for a line above, which isn't drawn"));
    }

    void ownCharacters()
    {
        // Sixteen columns of three bytes, of which the font has twelve.
        const QByteArray define =
            bytes("\x1B&\x01\x01x") + QByteArray(48, '\xFF') + bytes("\x1B%\x01");
        const Paper paper = printed(define + bytes("xy\x1B%\0x\n"));
        QCOMPARE(paper.toText(), QString::fromUtf8("\uFFFDyx\n"));
        QCOMPARE(paper.cells.at(0).drawing, 0);
        QCOMPARE(paper.pictures.at(0).size, QSize(12, 24));
        QCOMPARE(paper.cells.at(1).drawing, -1);
        QCOMPARE(paper.cells.at(2).drawing, -1);
        QCOMPARE(printed(define + bytes("\x1B&\x01\0xx\n")).cells.first().drawing, -1);
    }

    void pitchesAndSpacing()
    {
        const auto secondLeft = [](const QByteArray &stream) {
            return printed(stream + "ax\n").cells.at(1).left;
        };
        QCOMPARE(secondLeft(bytes("\x1BM")), 12);
        QCOMPARE(secondLeft(bytes("\x1Bg")), 14);
        QCOMPARE(secondLeft(bytes("\x1BP")), 15);
        QCOMPARE(secondLeft(bytes("\x1B:")), 16);
        QCOMPARE(secondLeft(bytes("\x1BP\x1B\x1E\x46\0")), 12);
        QCOMPARE(secondLeft(bytes("\x1B \x03")), 15);
        QCOMPARE(secondLeft(bytes("\x1B 3")), 15);
        QCOMPARE(secondLeft(bytes("\x1B 0")), 12);
    }

    void lineSpacings()
    {
        QCOMPARE(printed("a\n").length, 32);
        QCOMPARE(printed(bytes("\x1Bz\0a\n")).length, 24);
        QCOMPARE(printed(bytes("\x1Bz\0\x1Bz1a\n")).length, 32);
        QCOMPARE(printed(bytes("\x1B\x30"
                               "a\n"))
                     .length,
                 24);
        QCOMPARE(printed(bytes("\x1B\x31\n")).length, 20);
        QCOMPARE(printed(bytes("\x1B\x41\x0C\x1B\x32\n")).length, 34);
        QCOMPARE(printed(bytes("\x1By\x1C\n")).length, 39);
        QCOMPARE(printed(bytes("\x1B\x33\x36\n")).length, 51);
        QCOMPARE(printed(bytes("\x1BJ\x0C")).length, 24);
        QCOMPARE(printed(bytes("\x1BI\x0C")).length, 12);
        QCOMPARE(printed(bytes("a\x1B\x61\x03")).length, 96);
        QCOMPARE(printed(bytes("a\x0B\x0B")).length, 64);
    }

    void placesInTheLine()
    {
        QCOMPARE(cellOf(printed(bytes("\x1B\x1D\x61\x01x\n")), u'x').left, 282);
        QCOMPARE(cellOf(printed(bytes("\x1B\x1D\x41\x64\0x\n")), u'x').left, 100);
        QCOMPARE(cellOf(printed(bytes("a\x1B\x1DR\x0A\0x\n")), u'x').left, 22);
        QCOMPARE(cellOf(printed(bytes("\x1Bl\x04x\n")), u'x').left, 48);
        QCOMPARE(printed(bytes("\x1BQ\x04") + QByteArray(5, 'x') + '\n').lines.size(), 2);
        QCOMPARE(printed(bytes("\x1Bl\x02\x1BQ\x04") + QByteArray(3, 'x') + '\n').lines.size(), 2);
        QCOMPARE(cellOf(printed(bytes("\x1B\x44\x04\0\tx\n")), u'x').left, 48);
    }

    void cuts_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("event");
        QTest::newRow("at the cutter") << bytes("a\n\n\n\n\n\x1B\x64\0") << 40 << "cut: cut";
        QTest::newRow("at the cutter, a bridge left") << bytes(
                                                             "a\n\n\n\n\n\x1B\x64"
                                                             "1")
                                                      << 40 << "partial: cut, a bridge left";
        QTest::newRow("fed") << bytes("a\n\x1B\x64\x02") << 32 << "cut: cut";
        QTest::newRow("fed, a bridge left")
            << bytes("a\n\x1B\x64\x33") << 32 << "partial: cut, a bridge left";
    }
    void cuts()
    {
        QFETCH(QByteArray, stream);
        QFETCH(int, length);
        QFETCH(QString, event);
        const Paper paper = printed(stream);
        QVERIFY(paper.isCut);
        QCOMPARE(paper.length, length);
        QCOMPARE(eventsOf(paper).last(), event);
    }

    void drawersAndBuzzer()
    {
        QCOMPARE(
            eventsOf(printed(bytes("\x07\x1C\x19\x1A"))),
            QStringList({"pulse: pulse of 200 ms to pin 2", "pulse: pulse of 200 ms to pin 2",
                         "pulse: pulse of 200 ms to pin 5", "pulse: pulse of 200 ms to pin 5"}));
        const Paper paper = printed(bytes("\x1B\x07\x0A\x14\x07"));
        QCOMPARE(paper.events.first().onMilliseconds, 100);
        QCOMPARE(paper.events.first().offMilliseconds, 200);
        const Paper raster = printed(bytes("\x1B\x07\x0A\x14\x1B*rA\x1B*rD1\0\x1B*rD2\0\x1B*rB"));
        QCOMPARE(eventsOf(raster), QStringList({"pulse: pulse of 100 ms to pin 2",
                                                "pulse: pulse of 200 ms to pin 5"}));
        QCOMPARE(eventsOf(printed(bytes("\x1B\x1D\x07\x01\x01\x01"))), QStringList("beep: beep"));
        QCOMPARE(eventsOf(printed(bytes("\x05"))).size(), 1);
        QCOMPARE(printed(bytes("\x1B\x06\x01")).events.first().kind, Paper::Event::Status);
        // 1 sets the time after which a ticket is taken back, and moves nothing.
        for (const QByteArray &stream : {bytes("\x1B\x16\0\0"), bytes("\x1B\x16\x30\0")})
            QCOMPARE(eventsOf(printed(stream)), QStringList("retract: takes the ticket back"));
        QVERIFY(eventsOf(printed(bytes("\x1B\x16\x01\x14\x1B\x16\x31\x14"))).isEmpty());
    }

    void barcodes()
    {
        const Paper paper =
            printed(bytes("\x1B\x62\x36\x32\x31\x50"
                          "AB\x1E"
                          "z\n"));
        const Paper::Code code = paper.codes.first();
        QCOMPARE(code.symbology, Symbology::Code128);
        QCOMPARE(code.payload, QByteArray("AB"));
        QCOMPARE(code.module, QSize(2, 80));
        QCOMPARE(paper.toText(), QString("[Code 128: AB]\n\nz\n"));
        // Without a line feed of its own.
        QCOMPARE(printed(bytes("\x1B\x62\x03\x03\x03\x50"
                               "590123412345\x1Ez\n"))
                     .toText(),
                 QString("[EAN-13: 5901234123457]\nz\n"));
        QCOMPARE(notesOf(printed(bytes("\x1B\x62\x50\x31\x31\x50"
                                       "AB\x1E"))),
                 QStringList("ESC b has no such kind, digits or width"));
        QCOMPARE(printed(bytes("\x1B\x62\x35\x31\x33\x50"
                               "12\x1E"))
                     .codes.first()
                     .module,
                 QSize(6, 80));
    }

    void correctionOfQrCodes()
    {
        QByteArray levels;
        for (int level = 0; level < 4; ++level)
            levels += printed(bytes("\x1B\x1DyS1") + char(level) +
                              bytes("\x1B\x1DyD1\0\x01\0a\x1B\x1DyP"))
                          .codes.first()
                          .correctionLevel;
        QCOMPARE(levels, QByteArray("LMQH"));
    }

    void twoDimensionalCodes()
    {
        const QByteArray qr =
            bytes("\x1B\x1DyS0\x02\x1B\x1DyS1\x03\x1B\x1DyS2\x05\x1B\x1DyD1\0\x02\0hi\x1B\x1DyP");
        const Paper::Code code = printed(qr).codes.first();
        QCOMPARE(code.symbology, Symbology::QrCode);
        QCOMPARE(code.payload, QByteArray("hi"));
        QCOMPARE(code.correctionLevel, 'H');
        QCOMPARE(code.module, QSize(5, 5));
        QCOMPARE(printed(bytes("\x1B\x1DyD2\x02\x01\x02\0ab\x02\x01\0c\x1B\x1DyP"))
                     .codes.first()
                     .payload,
                 QByteArray("abc"));
        const Paper::Code pdf =
            printed(bytes("\x1B\x1DxS0\x01\x09\x02\x1B\x1DxS1\x05\x1B\x1DxS2\x02\x1B\x1DxS3\x03"
                          "\x1B\x1DxD\x02\0hi\x1B\x1DxP"))
                .codes.first();
        QCOMPARE(pdf.symbology, Symbology::Pdf417);
        QCOMPARE(pdf.grid, QSize(2, 9));
        QCOMPARE(pdf.module, QSize(2, 6));
        QCOMPARE(pdf.correctionLevel, '5');
    }

    void bitImages()
    {
        const Paper fine = printed(bytes("\x1BX\x02\0") + QByteArray(6, '\xFF') + '\n');
        QCOMPARE(fine.pictures.first().place, QRect(0, 0, 2, 24));
        const Paper coarse = printed(bytes("\x1BK\x02\0\xFF\xFF\n"));
        QCOMPARE(coarse.pictures.first().place, QRect(0, 0, 6, 24));
        const Paper wide = printed(bytes("\x1BL\x02\0\xFF\xFF\n"));
        QCOMPARE(wide.pictures.first().place, QRect(0, 0, 2, 24));
        const QByteArray strip = bytes("\x1Bk\x01\0") + QByteArray(24, '\xF0') + '\n';
        const Paper raster = printed(bytes("\x1B\x30") + strip + strip);
        QCOMPARE(raster.pictures.at(1).place, QRect(0, 24, 8, 24));
        QCOMPARE(raster.toText(), QString("[picture 8 x 48]\n"));
        QCOMPARE(printed(bytes("\x1B\x1DS\x01\x01\0\x01\0\0\xF0")).pictures.first().place,
                 QRect(0, 0, 8, 1));
    }

    void rasterModeJoinsItsRows()
    {
        const Paper paper =
            printed(bytes("\x1B*rA\x62\x01\0\xF0k\x01\0\x0F\x62\x01\0\xFF\x1B*"
                          "rY3\0\x62\x02\0\xFF\xFF\x1B*rBz\n"));
        QCOMPARE(paper.pictures.size(), 2);
        QCOMPARE(paper.pictures.at(0).place, QRect(0, 0, 8, 3));
        QCOMPARE(dotsOf(paper.pictures.at(0)), QStringList({"####....", "....####", "########"}));
        QCOMPARE(paper.pictures.at(1).place, QRect(0, 6, 16, 1));
        QCOMPARE(cellOf(paper, u'z').top, 7);
    }

    void rasterPagesAreCutAsSet()
    {
        const QByteArray row = bytes("\x62\x01\0\xF0");
        const auto eventsAfter = [&row](const QByteArray &mode) {
            return eventsOf(printed(bytes("\x1B*rA") + mode + row + bytes("\x1B\x0C\x04")));
        };
        QCOMPARE(eventsAfter(""), QStringList("partial: cut, a bridge left"));
        QCOMPARE(eventsAfter(bytes("\x1B*rE9\0")), QStringList("cut: cut"));
        QCOMPARE(eventsAfter(bytes("\x1B*rE13\0")), QStringList("partial: cut, a bridge left"));
        QCOMPARE(eventsAfter(bytes("\x1B*rE1\0")), QStringList());
        const Paper cut = printed(bytes("\x1B*rA\x1B*rF9\0") + row + bytes("\x1B\x0C\0"));
        QVERIFY(cut.isCut);
        QCOMPARE(cut.length, 1);
    }

    void rasterRowsStandAboveWhatFollows()
    {
        const QByteArray rows = bytes("\x1B*rAb\x01\0\xFF") + bytes("b\x01\0\xFF");
        const QVector<Paper> cut = papersOf(rows + bytes("\x1B\x64\x02"), star());
        QCOMPARE(cut.size(), 1);
        QCOMPARE(cut.first().toText(), QString("[picture 8 x 2]\n[cut]\n"));
        QCOMPARE(printed(rows + bytes("\n\x1B@z\n")).toText(), QString("[picture 8 x 2]\n\nz\n"));
        QCOMPARE(printed(rows + bytes("\x1B@z\n")).toText(), QString("[picture 8 x 2]\nz\n"));
        // A question doesn't part them.
        QCOMPARE(printed(rows + bytes("\x1B\x06\x01") + bytes("b\x01\0\xFF")).pictures.size(), 1);
    }

    void copiesOfAllPicturesAreBounded()
    {
        const QByteArray define =
            bytes("\x1B\x1Cq\xFF") + (bytes("\x01\0\x01\0") + QByteArray(8, '\xFF')).repeated(255);
        const QByteArray prints =
            (bytes("\x1B\x1EL\0").repeated(30) + bytes("\x1B\x64\x02")).repeated(200);
        qint64 size = 0;
        QStringList notes;
        for (const Paper &paper : papersOf(define + prints, star())) {
            size += qint64(sizeof(Paper::Picture) + sizeof(Paper::Line)) * paper.pictures.size();
            notes += notesOf(paper);
        }
        QVERIFY(size > 0);
        QVERIFY(size <= 16 * 1024 * 1024 + 100 * (define.size() + prints.size()));
        QVERIFY(notes.contains("a picture is left out, as the stream asks for too many copies"));
    }

    void canResets()
    {
        const Paper paper =
            printed(bytes("\x0E\x1B\x45\x1B\x1D\x61\x02"
                          "abc\x18z\n"));
        QCOMPARE(paper.toText(), QString("z\n"));
        QCOMPARE(placeOf(cellOf(paper, u'z')), QRect(0, 0, 12, 24));
        QCOMPARE(int(cellOf(paper, u'z').effects), 0);
    }

    void drawersAndBuzzerOfTheRasterMode()
    {
        QCOMPARE(eventsOf(printed(bytes("\x1B*rA\x1B*rD1\0\x1B*rD2\0\x1B*rV1\0\x1B*rB"))),
                 QStringList({"pulse: pulse of 200 ms to pin 2", "pulse: pulse of 200 ms to pin 5",
                              "beep: beep"}));
    }

    void rasterMargin()
    {
        const Paper paper = printed(bytes("\x1B*rA\x1B*rml2\0\x62\x01\0\xF0\x1B*rB"));
        QCOMPARE(paper.pictures.first().place, QRect(16, 0, 8, 1));
        QCOMPARE(printed(bytes("\x1B*rA\x62\x01\0\xF0\x1B*rC\x1B*rB")).pictures.size(), 0);
    }

    void whatADeselectedPrinterGetsIsNotPrintedButTold()
    {
        const Paper paper =
            printed(bytes("a\n\x13"
                          "b\n\x1B@\x0E\x13\x07\x1B\x64\x02\x1B~\x05"
                          "\x1B\x06\x01\x11"
                          "c\n\x11"
                          "d\n"));
        QCOMPARE(paper.toText(), QString("a\nc\nd\n"));
        QCOMPARE(cellOf(paper, u'c').width, quint16(12));
        QCOMPARE(eventsOf(paper),
                 QStringList({"note: DC3 deselects the printer; what follows isn't printed",
                              "status: ESC ACK SOH asks for the status at once"}));
        QCOMPARE(paper.events.first().offset, 2LL);
    }

    void lineBeforeTheDeselectionStays()
    {
        QCOMPARE(printed(bytes("a\x13"
                               "b\n\x11"
                               "c\n"))
                     .toText(),
                 QString("ac\n"));
    }

    void rasterRowsOfADeselectedPrinterAreNotPrinted()
    {
        const Paper paper =
            printed(bytes("\x1B*rA\x62\x01\0\xF0\x13\x62\x01\0\x0F\x11\x62\x01\0\xFF\x1B*rB"));
        QCOMPARE(paper.pictures.size(), 2);
        QCOMPARE(dotsOf(paper.pictures.at(0)), QStringList("####...."));
        QCOMPARE(dotsOf(paper.pictures.at(1)), QStringList("########"));
    }

    void deselectedPrinterNeitherBeginsNorEndsTheRasterMode()
    {
        QCOMPARE(printed(bytes("\x13\x1B*rA\x11"
                               "bold\n"))
                     .toText(),
                 QString("bold\n"));
        const Paper paper = printed(bytes("\x1B*rA\x13\x1B*rB\x1B@\x11\x62\x01\0\xF0\x1B*rBz\n"));
        QCOMPARE(paper.pictures.size(), 1);
        QCOMPARE(paper.cells.size(), 1);
    }

    void endlessRasterRowsArePrintedAsFarAsPaperGoes()
    {
        const QByteArray rows = bytes("\x62\x02\0\xF0\x01").repeated(Paper::longest + 10);
        const Paper paper = printed("a\n" + bytes("\x1B*rA") + rows + bytes("\x1B*rB"));
        QVERIFY(paper.isTooLong);
        QCOMPARE(paper.length, Paper::longest);
        QCOMPARE(paper.pictures.size(), 1);
        const int top = paper.lines.at(1).top;
        QVERIFY(top > 0);
        QCOMPARE(paper.pictures.first().place, QRect(0, top, 16, Paper::longest - top));
        QCOMPARE(notesOf(paper),
                 QStringList({QString("a picture of 80010 dots is taller than the %1 that are left")
                                  .arg(Paper::longest - top),
                              "the paper is longer than 80000 dots; what comes is left out"}));
    }

    void wideRasterRowsAreNotKeptForever()
    {
        // 70 MB of rows, of which no more than the paper's width can be printed.
        const int rowBytes = 0xFFFF;
        const int rows = 1100;
        const QByteArray row = bytes("\x62\xFF\xFF") + QByteArray(rowBytes, '\xFF');
        StreamInterpreter interpreter(star());
        for (int i = 0; i < rows; ++i)
            interpreter.read(i == 0 ? bytes("\x1B*rA") + row : row);
        const QVector<Paper> papers = interpreter.finish();
        QCOMPARE(papers.size(), 1);
        QCOMPARE(papers.first().length, rows);
        QVERIFY(papers.first().pictures.size() > 1);
        QCOMPARE(papers.first().toText().count("[picture"), 1);
    }

    void rasterAtTheEndIsShown()
    {
        QCOMPARE(printed(bytes("\x1B*rA\x62\x01\0\xF0")).pictures.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestStarLine)
#include "tst_starline.moc"
