// What a site names in PRINTERSLIB_MORE_PICTURE_FORMATS; this program is built with "ico;cur".
#include <QTemporaryDir>
#include <QtTest>

#include "printerdocs/bbcode/picturefile_p.h"

class TestMorePictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namedFormatsAreReadBesideTheUsual_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("first") << QByteArray("ico") << true;
        QTest::newRow("second") << QByteArray("cur") << true;
        QTest::newRow("usual") << QByteArray("png") << true;
        QTest::newRow("neither") << QByteArray("svg") << false;
    }

    void namedFormatsAreReadBesideTheUsual()
    {
        QFETCH(const QByteArray, format);
        QFETCH(const bool, isRead);
        const QTemporaryDir directory;
        QFile file(directory.filePath("picture"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write(contentOf(format));
        file.seek(0);
        const QImage picture = picturefile::read(file, [](const QSize &size) { return size; });
        QCOMPARE(picture.isNull(), !isRead);
        if (isRead) {
            QCOMPARE(picture.size(), QSize(16, 8));
            QCOMPARE(picture.pixel(3, 3), qRgb(0, 0, 0));
        }
    }

private:
    static QByteArray contentOf(const QByteArray &format)
    {
        if (format == "svg")
            return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"8\"/>";
        QImage black(16, 8, QImage::Format_ARGB32);
        black.fill(Qt::black);
        QBuffer buffer;
        black.save(&buffer, format == "cur" ? "ico" : format.constData());
        QByteArray content = buffer.data();
        if (format == "cur")
            content[2] = 2;  // what tells a cursor from an icon
        return content;
    }
};

QTEST_MAIN(TestMorePictures)
#include "tst_morepictures.moc"
