#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include "printerdocs/specialcharacters.h"
#include "symbolfiles.h"

using namespace symbolfiles;

/// The table of symbols, and the steps that read it.
class TestSpecialCharacters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsReadTheirElements()
    {
        SpecialCharacters table;
        QXmlStreamReader images(file(font(4, 1, symbol(1, 4, 1))));
        QVERIFY(images.readNextStartElement());
        QCOMPARE(table.parseImages(&images), true);
        QVERIFY(table == tableOf(1, filled(4, 1)));
        QVERIFY(images.isEndElement() && images.name() == QString("SpecialSymbolImages"));

        table.clear();
        QXmlStreamReader fonts(font(4, 1, symbol(2, 4, 1) + "<Note/>"));
        QVERIFY(fonts.readNextStartElement());
        QCOMPARE(table.parseFonts(&fonts), true);
        QVERIFY(table == tableOf(2, filled(4, 1)));
        QVERIFY(fonts.isEndElement() && fonts.name() == QString("Font"));

        table.clear();
        QXmlStreamReader symbols(symbol(3, 4, 2));
        QVERIFY(symbols.readNextStartElement());
        QCOMPARE(table.parseSymbols(&symbols, 4, 2), true);
        QVERIFY(table == tableOf(3, filled(4, 2)));
        QVERIFY(symbols.isEndElement() && symbols.name() == QString("Symbol"));
    }

    void imageIsMadeOfItsLines()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101", "010"}, 3, 2), true);
        QVERIFY(table == tableOf(3, MonochromeImage(3, 2, "\xa0\x40")));
        QVERIFY(table.value(3).fileName().isNull());
    }

    void linesBeyondTheHeightAreConvertedToo()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101", "010"}, 3, 1), true);
        QVERIFY(table == tableOf(3, MonochromeImage(3, 1, "\xa0\x40")));
        QCOMPARE(table.createImage(3, {"101", "1"}, 3, 1), false);
        QCOMPARE(table.size(), 1);
    }

    void imageOfWrongLinesIsRefused()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101"}, 3, 0), false);
        QCOMPARE(table.createImage(3, {"101"}, 3, -1), false);
        QCOMPARE(table.createImage(3, {"101"}, 3, 2), false);
        QCOMPARE(table.createImage(3, {"101", "10"}, 3, 2), false);
        QCOMPARE(table.createImage(3, {"101"}, 0, 1), false);
        QCOMPARE(table.createImage(3, {}, 3, 0), false);
        QVERIFY(table.isEmpty());
    }

    void newerImagesStandInFront()
    {
        SpecialCharacters table;
        table.createImage(3, {"1"}, 1, 1);
        table.createImage(3, {"11"}, 2, 1);
        QCOMPARE(table.values(3).at(0).width(), 2);
        QCOMPARE(table.values(3).at(1).width(), 1);
    }

    void stepsRefuseAReaderThatStandsAtNoElement()
    {
        SpecialCharacters table;
        QString line("old");
        QCOMPARE(table.parseImages(nullptr), false);
        QCOMPARE(table.parseFonts(nullptr), false);
        QCOMPARE(table.parseSymbols(nullptr, 1, 1), false);
        QCOMPARE(table.parseLines(nullptr, line), false);
        QXmlStreamReader reader(QString("<Line>101</Line>"));
        QCOMPARE(table.parseImages(&reader), false);
        QCOMPARE(table.parseFonts(&reader), false);
        QCOMPARE(table.parseSymbols(&reader, 1, 1), false);
        QCOMPARE(table.parseLines(&reader, line), false);
        QCOMPARE(line, QString("old"));
        QVERIFY(reader.readNextStartElement());
        QCOMPARE(table.parseLines(&reader, line), true);
        QCOMPARE(line, QString("101"));
    }

    void largestImageThatFitsTheCellIsTaken_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("found");  // 0: blank
        QTest::newRow("larger cell") << 20 << 20 << 16;
        QTest::newRow("exactly the large one") << 16 << 16 << 16;
        QTest::newRow("one too narrow") << 15 << 16 << 8;
        QTest::newRow("one too low") << 16 << 15 << 8;
        QTest::newRow("between") << 10 << 10 << 8;
        QTest::newRow("smaller cell") << 4 << 4 << 0;
        QTest::newRow("wild cell") << maximum << maximum << 16;
        QTest::newRow("no cell") << 0 << 0 << 0;
        QTest::newRow("negative cell") << minimum << minimum << 0;
    }

    void largestImageThatFitsTheCellIsTaken()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, found);
        SpecialCharacters table;
        QVERIFY(
            table.load(write(file(font(16, 16, symbol(3, 16, 16)) + font(8, 8, symbol(3, 8, 8))))));
        const MonochromeImage image = table.getImage(3, width, height);
        QVERIFY(image ==
                (found ? filled(found, found) : MonochromeImage::createEmpty(width, height)));
        QCOMPARE(table.size(), 2);
    }

    void areaDecidesAmongTheFitting()
    {
        SpecialCharacters table = tableOf(1, filled(10, 10));
        table.insert(1, filled(50, 1));
        QVERIFY(table.getImage(1, 60, 60) == filled(10, 10));
    }

    void imageThatIsNotValidIsPassedOver()
    {
        SpecialCharacters table = tableOf(1, filled(8, 8));
        table.insert(1, MonochromeImage(16, 16, "short"));
        table.insert(1, MonochromeImage(-4, -4, "negative"));
        QVERIFY(table.getImage(1, 20, 20) == filled(8, 8));
    }

    void unknownCodeIsABlankImage()
    {
        SpecialCharacters table;
        const MonochromeImage image = table.getImage(5, 12, 2);
        QCOMPARE(image.width(), 12);
        QCOMPARE(image.height(), 2);
        QCOMPARE(image.image(), QByteArray(2, '\0'));
        QVERIFY(table.getImage(5, 16, 2).isValid());
        QVERIFY(!table.getImage(5, maximum, maximum).isValid());
        QVERIFY(!table.getImage(5, minimum, maximum).isValid());
    }

    void codesAreNarrowedToASignedByte()
    {
        SpecialCharacters table;
        QVERIFY(table.load(write(file(font(8, 1, symbol(200, 8, 1))))));
        QVERIFY(table.contains(-56));
        QVERIFY(table.getImage(200, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(-56, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(456, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(100, 8, 1) != filled(8, 1));
    }

    void pictureIsMirroredInGroupsOfEight()
    {
        // Three rows of 10 pixels: leftmost, 8th and 10th pixel set; all set; (not painted).
        SpecialCharacters table =
            tableOf(1, MonochromeImage(10, 3, QByteArray("\x81\x40\xff\xc0\xff\xc0", 6)));
        const QImage picture = table.getPngImage(1, 10, 3);
        QCOMPARE(picture.size(), QSize(10, 3));
        QCOMPARE(picture.format(), QImage::Format_RGB32);
        const QStringList rows{"X......X..", "XXXXXXXX..", ".........."};
        for (int y = 0; y < 3; ++y) {
            QString row;
            for (int x = 0; x < 10; ++x)
                row += (picture.pixel(x, y) & 0xffffffU) == 0 ? 'X' : '.';
            QCOMPARE(row, rows.at(y));
        }
        QCOMPARE(picture.pixel(1, 0), 0xffffffffU);
    }

    void lowBitsArePaintedFirst()
    {
        SpecialCharacters table = tableOf(1, MonochromeImage(8, 2, QByteArray("\x80\x00", 2)));
        const QImage picture = table.getPngImage(1, 8, 2);
        QCOMPARE(picture.pixel(7, 0) & 0xffffffU, 0U);
        QCOMPARE(picture.pixel(0, 0), 0xffffffffU);
    }

    // QImage::pixel() makes every pixel of such a picture opaque, so the memory is looked at.
    void blackIsZero()
    {
        SpecialCharacters table = tableOf(1, MonochromeImage(8, 2, QByteArray("\x01\x00", 2)));
        const QImage picture = table.getPngImage(1, 8, 2);
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(0));
        QCOMPARE(row[0], 0U);
        QCOMPARE(row[1], 0xffffffffU);
    }

    void onlyRowStaysWhite()
    {
        SpecialCharacters table = tableOf(1, filled(8, 1));
        const QImage picture = table.getPngImage(1, 8, 1);
        for (int x = 0; x < 8; ++x)
            QCOMPARE(picture.pixel(x, 0), 0xffffffffU);
    }

    void rowsBehindTheDataStayWhite()
    {
        // Valid with 2 bytes, as the padding doesn't count: 9 * 2 / 8 is 2.
        SpecialCharacters table = tableOf(1, MonochromeImage(9, 2, QByteArray("\xff\xff", 2)));
        const QImage picture = table.getPngImage(1, 9, 2);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 9; ++x)
                QCOMPARE(picture.pixel(x, y), 0xffffffffU);
        }
        table = tableOf(1, MonochromeImage(8, 1, QByteArray(1000, '\xff')));
        QCOMPARE(table.getPngImage(1, 8, 1).pixel(0, 0) & 0xffffffU, 0U);
    }

    void blankPictureIsWhite()
    {
        SpecialCharacters table;
        const QImage picture = table.getPngImage(1, 16, 2);
        QCOMPARE(picture.size(), QSize(16, 2));
        QCOMPARE(picture.pixel(15, 1), 0xffffffffU);
    }

    void pictureOfNoOrAWildCellIsNull()
    {
        SpecialCharacters table;
        QVERIFY(table.getPngImage(1, 0, 0).isNull());
        QVERIFY(table.getPngImage(1, -1, 5).isNull());
        QVERIFY(table.getPngImage(1, 5, -1).isNull());
        QVERIFY(table.getPngImage(1, maximum, maximum).isNull());
        QVERIFY(table.getPngImage(1, minimum, minimum).isNull());
        QVERIFY(table.getPngImage(1, maximum, 1).isNull());
        QVERIFY(table.getPngImage(1, 1, maximum).isNull());
        QVERIFY(table.getPngImage(1, 65536, 65536).isNull());
    }

    void clearEmptiesTheTable()
    {
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const SpecialCharacters copy = table;
        table.clear();
        QVERIFY(table.isEmpty());
        QVERIFY(table == SpecialCharacters());
        QVERIFY(table != copy);
        QVERIFY(copy == tableOf(1, filled(8, 8)));
        const SpecialCharacters moved = std::move(table);
        QVERIFY(moved.isEmpty());
    }

    void tableIsPassedWhereTheMapIsExpected()
    {
        const QMultiMap<signed char, MonochromeImage> &map = tableOf(1, filled(8, 8));
        QCOMPARE(map.size(), 1);
        QVERIFY(tableOf(1, filled(8, 8)) != tableOf(2, filled(8, 8)));
        QVERIFY(tableOf(1, filled(8, 8)) != tableOf(1, filled(8, 9)));
    }

private:
    QTemporaryDir m_folder;
    QString write(const QByteArray &content) const
    {
        return symbolfiles::writeTo(m_folder, content);
    }
};

QTEST_GUILESS_MAIN(TestSpecialCharacters)
#include "tst_specialcharacters.moc"
