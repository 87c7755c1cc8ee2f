#include <QJsonDocument>
#include <QtTest>
#include <limits>

#include "printerdocs/monochromeimage.h"

namespace {

constexpr int maximum = std::numeric_limits<int>::max();
constexpr int minimum = std::numeric_limits<int>::min();

using Map = QMap<QString, QVariant>;

}  // namespace

class TestMonochromeImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultImageIsEmptyAndInvalid()
    {
        const MonochromeImage image;
        QCOMPARE(image.width(), 0);
        QCOMPARE(image.height(), 0);
        QVERIFY(image.image().isNull());
        QVERIFY(image.fileName().isNull());
        QVERIFY(!image.isValid());
    }

    void settersReplaceTheirField()
    {
        MonochromeImage image;
        image.setWidth(3);
        image.setHeight(4);
        image.setImage("ab");
        image.setFileName("logo.png");
        QCOMPARE(image.width(), 3);
        QCOMPARE(image.height(), 4);
        QCOMPARE(image.image(), QByteArray("ab"));
        QCOMPARE(image.fileName(), QString("logo.png"));
    }

    void validityNeedsEnoughBytesWithoutPadding_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("valid");
        QTest::newRow("100 pixels in 12 bytes") << 10 << 10 << 12 << true;
        QTest::newRow("100 pixels in 11 bytes") << 10 << 10 << 11 << false;
        QTest::newRow("7 pixels need no byte") << 7 << 1 << 0 << true;
        QTest::newRow("8 pixels need one byte") << 8 << 1 << 0 << false;
        QTest::newRow("no width") << 0 << 1 << 8 << false;
        QTest::newRow("no height") << 1 << 0 << 8 << false;
        QTest::newRow("both sides negative") << -1 << -1 << 8 << false;
        QTest::newRow("product beyond 32 bits") << 65536 << 65536 << 8 << false;
        QTest::newRow("product wraps to zero in 32 bits") << 1 << maximum << 8 << false;
        QTest::newRow("largest sides") << maximum << maximum << 8 << false;
        QTest::newRow("smallest sides") << minimum << minimum << 8 << false;
    }

    void validityNeedsEnoughBytesWithoutPadding()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, bytes);
        const MonochromeImage image(width, height, QByteArray(bytes, '\0'));
        QTEST(image.isValid(), "valid");
    }

    void mostSignificantBitIsLeftmost()
    {
        const MonochromeImage image(9, 1, QByteArray("\x00\x80", 2));
        QCOMPARE(image.pixel(8, 0, 8), true);
        QCOMPARE(image.pixel(7, 0, 8), false);
        QCOMPARE(image.pixel(9, 0, 8), false);
        const MonochromeImage corners(8, 2, QByteArray("\x81\x01", 2));
        QCOMPARE(corners.pixel(0, 0, 8), true);
        QCOMPARE(corners.pixel(1, 0, 8), false);
        QCOMPARE(corners.pixel(7, 0, 8), true);
        QCOMPARE(corners.pixel(0, 1, 8), false);
        QCOMPARE(corners.pixel(7, 1, 8), true);
    }

    void rowLengthFollowsTheAlignment()
    {
        QByteArray bytes(16, '\0');
        bytes[8] = '\x80';
        const MonochromeImage image(33, 2, bytes);
        QCOMPARE(image.pixel(0, 1, 32), true);
        QCOMPARE(image.pixel(0, 1, 8), false);  // that is byte 5
        bytes[8] = 0;
        bytes[5] = '\x80';
        QCOMPARE(MonochromeImage(33, 2, bytes).pixel(0, 1, 8), true);
    }

    void pixelOutsideIsNotSet()
    {
        const MonochromeImage image(8, 2, QByteArray("\xff\xff", 2));
        QCOMPARE(image.pixel(-1, 0, 8), false);
        QCOMPARE(image.pixel(0, -1, 8), false);
        QCOMPARE(image.pixel(8, 0, 8), false);
        QCOMPARE(image.pixel(0, 2, 8), false);
        QCOMPARE(image.pixel(minimum, minimum, 8), false);
        QCOMPARE(image.pixel(maximum, maximum, 8), false);
    }

    void pixelBehindTheBytesIsNotSet()
    {
        const MonochromeImage image(8, 4, QByteArray("\xff", 1));
        QCOMPARE(image.pixel(0, 0, 8), true);
        QCOMPARE(image.pixel(0, 1, 8), false);  // exactly at the end
        QCOMPARE(image.pixel(0, 2, 8), false);
        const MonochromeImage wild(maximum, maximum, QByteArray("\xff", 1));
        QCOMPARE(wild.pixel(maximum - 1, maximum - 1, 8), false);
        QCOMPARE(wild.pixel(maximum - 1, maximum - 1, maximum), false);
    }

    void setPixelReturnsTheNewValue()
    {
        MonochromeImage image(10, 1, QByteArray(2, '\0'));
        QCOMPARE(image.setPixel(9, 0, true, 8), true);
        QCOMPARE(image.image(), QByteArray("\x00\x40", 2));
        QCOMPARE(image.setPixel(0, 0, true, 8), true);
        QCOMPARE(image.image(), QByteArray("\x80\x40", 2));
        QCOMPARE(image.setPixel(9, 0, false, 8), false);
        QCOMPARE(image.image(), QByteArray("\x80\x00", 2));
    }

    void setPixelLeavesCopiesAlone()
    {
        const MonochromeImage first(8, 1, QByteArray(1, '\0'));
        MonochromeImage second = first;
        second.setPixel(0, 0, true, 8);
        QCOMPARE(first.pixel(0, 0, 8), false);
        QCOMPARE(second.pixel(0, 0, 8), true);
    }

    void setPixelOneBehindTheEndGrowsByOneByte()
    {
        MonochromeImage image(8, 4, QByteArray("\x01", 1));
        QCOMPARE(image.setPixel(0, 2, true, 8), false);
        QCOMPARE(image.image(), QByteArray("\x01", 1));
        QCOMPARE(image.setPixel(2, 1, true, 8), true);
        QCOMPARE(image.image(), QByteArray("\x01\x20", 2));
        QCOMPARE(image.setPixel(2, 2, false, 8), false);
        QCOMPARE(image.image(), QByteArray("\x01\x20\x00", 3));
        MonochromeImage fresh(1, 1, QByteArray());
        QCOMPARE(fresh.setPixel(0, 0, true, 32), true);
        QCOMPARE(fresh.image(), QByteArray("\x80", 1));
    }

    void setPixelOutsideChangesNothing()
    {
        MonochromeImage image(8, 1, QByteArray(1, '\0'));
        QCOMPARE(image.setPixel(-1, 0, true, 8), false);
        QCOMPARE(image.setPixel(8, 0, true, 8), false);
        QCOMPARE(image.setPixel(0, -1, true, 8), false);
        QCOMPARE(image.setPixel(0, 1, true, 8), false);
        QCOMPARE(image.image(), QByteArray(1, '\0'));
    }

    void alignmentOutsideTheContractReadsAndWritesNothing()
    {
        for (const int alignment : {0, -8, minimum}) {
            MonochromeImage image(8, 1, QByteArray("\xff", 1));
            QCOMPARE(image.pixel(0, 0, alignment), false);
            QCOMPARE(image.setPixel(0, 0, false, alignment), false);
            QCOMPARE(image.image(), QByteArray("\xff", 1));
            QVERIFY(MonochromeImage::createEmpty(8, 1, alignment).image().isEmpty());
        }
    }

    void alignedEmptyImageIsZeroFilled_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("bytes");
        QTest::newRow("8 by 2 at 8") << 8 << 2 << 8 << 2;
        QTest::newRow("9 by 2 at 8") << 9 << 2 << 8 << 4;
        QTest::newRow("33 by 2 at 32") << 33 << 2 << 32 << 16;
        QTest::newRow("32 by 2 at 32") << 32 << 2 << 32 << 8;
        QTest::newRow("1 by 1 at 32") << 1 << 1 << 32 << 4;
        QTest::newRow("no width") << 0 << 2 << 8 << 0;
        QTest::newRow("no height") << 8 << 0 << 8 << 0;
        QTest::newRow("negative width") << -8 << 2 << 8 << 0;
        QTest::newRow("negative height") << 8 << -2 << 8 << 0;
        QTest::newRow("both negative") << -800 << -2 << 8 << 0;
        QTest::newRow("largest") << maximum << maximum << 8 << 0;
        QTest::newRow("smallest") << minimum << minimum << 8 << 0;
        QTest::newRow("a gigabyte") << 100000 << 100000 << 32 << 0;
        QTest::newRow("32 MiB") << 16384 << 16384 << 32 << 33554432;
    }

    void alignedEmptyImageIsZeroFilled()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, alignment);
        QFETCH(int, bytes);
        const MonochromeImage image = MonochromeImage::createEmpty(width, height, alignment);
        QCOMPARE(image.width(), width);
        QCOMPARE(image.height(), height);
        QVERIFY(image.image() == QByteArray(bytes, '\0'));
        QVERIFY(image.fileName().isNull());
    }

    void emptySymbolKeepsItsInvertedSizing_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("bytes");
        QTest::newRow("8 by 2") << 8 << 2 << 4;
        QTest::newRow("9 by 2") << 9 << 2 << 2;
        QTest::newRow("12 by 1") << 12 << 1 << 1;
        QTest::newRow("16 by 1") << 16 << 1 << 3;
        QTest::newRow("7 by 3 has no bytes") << 7 << 3 << 0;
        QTest::newRow("0 is a multiple of 8") << 0 << 2 << 2;
        QTest::newRow("no height") << 8 << 0 << 0;
        QTest::newRow("negative width") << -8 << 2 << 0;
        QTest::newRow("negative height") << 8 << -2 << 0;
        QTest::newRow("largest") << maximum << maximum << 0;
        QTest::newRow("smallest") << minimum << minimum << 0;
    }

    void emptySymbolKeepsItsInvertedSizing()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, bytes);
        const MonochromeImage image = MonochromeImage::createEmpty(width, height);
        QCOMPARE(image.width(), width);
        QCOMPARE(image.height(), height);
        QCOMPARE(image.image(), QByteArray(bytes, '\0'));
    }

    void mapHoldsSizeBytesAndName()
    {
        MonochromeImage image(9, 1, QByteArray("\x00\x80", 2));
        QCOMPARE(image.toMap(), (Map{{"w", 9}, {"h", 1}, {"data", "AIA="}}));
        image.setFileName(" a.png ");
        QCOMPARE(image.toMap(), (Map{{"w", 9}, {"h", 1}, {"data", "AIA="}, {"fn", " a.png "}}));
        QCOMPARE(image.toMap().value("w").type(), QVariant::Int);
        QCOMPARE(image.toMap().value("h").type(), QVariant::Int);
        QCOMPARE(image.toMap().value("data").type(), QVariant::String);
        QCOMPARE(image.toMap().value("fn").type(), QVariant::String);
    }

    void blankNameIsNotWritten()
    {
        MonochromeImage image;
        image.setFileName("  \t");
        QCOMPARE(image.toMap(), (Map{{"w", 0}, {"h", 0}, {"data", ""}}));
    }

    void mapWithoutNameKeepsTheOldName()
    {
        MonochromeImage image(9, 1, "ab");
        image.setFileName("old");
        image.setMap({});
        QCOMPARE(image.width(), 0);
        QCOMPARE(image.height(), 0);
        QVERIFY(image.image().isEmpty());
        QCOMPARE(image.fileName(), QString("old"));
        image.setMap({{"fn", ""}});
        QVERIFY(image.fileName().isEmpty());
    }

    void mapSurvivesARoundTripThroughJson()
    {
        MonochromeImage image(9, 2, QByteArray("\x00\x80\xff\x00", 4));
        image.setFileName("/опт/лого.png");
        const QByteArray json =
            QJsonDocument::fromVariant(image.toMap()).toJson(QJsonDocument::Compact);
        const MonochromeImage read(QJsonDocument::fromJson(json).toVariant().toMap());
        QVERIFY(read == image);
    }

    void hostileMapIsReadWithoutHarm()
    {
        MonochromeImage image;
        image.setMap({{"w", QVariantList{1}},
                      {"h", "many"},
                      {"data", QVariantMap{{"x", 1}}},
                      {"fn", QVariantList{}}});
        QVERIFY(image == MonochromeImage());
        image.setMap({{"w", 1e300}, {"h", -1e300}, {"data", "\u0416!!AIA="}});
        QVERIFY(!image.isValid());
        QCOMPARE(image.pixel(0, 0, 8), false);
        image.setMap({{"w", 2147483647.0}, {"h", 2147483647.0}, {"data", "/w=="}});
        QCOMPARE(image.width(), maximum);
        QVERIFY(!image.isValid());
        QCOMPARE(image.pixel(7, 0, 8), true);
        QCOMPARE(image.setPixel(0, maximum - 1, true, 32), false);
        QCOMPARE(image.image().size(), 1);
    }

    void everyFieldTakesPartInTheComparison()
    {
        const MonochromeImage base(8, 1, "a");
        MonochromeImage copy = base;
        QVERIFY(copy == base);
        QVERIFY(!(copy != base));
        copy.setWidth(7);
        QVERIFY(copy != base);
        copy = base;
        copy.setHeight(2);
        QVERIFY(copy != base);
        copy = base;
        copy.setImage("b");
        QVERIFY(copy != base);
        copy = base;
        copy.setFileName("x");
        QVERIFY(copy != base);
        copy.setFileName(QString());
        const MonochromeImage moved = std::move(copy);
        QVERIFY(moved == base);
    }
};

QTEST_APPLESS_MAIN(TestMonochromeImage)
#include "tst_monochromeimage.moc"
