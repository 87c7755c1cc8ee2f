#include <malloc.h>
#include <unistd.h>

#include <QImage>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include "logcatcher.h"
#include "peakmemory.h"
#include "picturebench.h"
#include "printerdocs/bbcodeparser.h"

using namespace picturebench;

namespace {

/// A GIF of 8 by 8 pixels whose codes stand for 8,370,186 pixels, and for 4091 more each time.
QByteArray gifOfLongCodes(int more, const QByteArray &extension)
{
    constexpr int clear = 4;
    constexpr int first = 6;
    constexpr int last = 4095;
    QByteArray bytes;
    uint bits = 0;
    int count = 0;
    const auto add = [&](int code, int size) {
        bits |= uint(code) << count;
        for (count += size; count >= 8; count -= 8, bits >>= 8)
            bytes.append(char(bits));
    };
    add(clear, 3);
    add(0, 3);
    int size = 3;
    for (int code = first; code <= last; ++code) {
        add(code, size);
        if (code + 1 == 1 << size && size < 12)
            ++size;
    }
    for (int i = 0; i < more; ++i)
        add(last, 12);
    add(clear + 1, 12);
    add(0, 8);
    QByteArray gif = QByteArray::fromHex("474946383961 0800 0800 80 00 00 000000 ffffff") +
                     extension + QByteArray::fromHex("2c 0000 0000 0800 0800 00 02");
    for (int at = 0; at < bytes.size(); at += 255)
        gif += char(qMin(255, bytes.size() - at)) + bytes.mid(at, 255);
    return gif + QByteArray("\0;", 2);
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A chunk of a PNG.
QByteArray chunk(const QByteArray &name, const QByteArray &content)
{
    quint32 checksum = ~0U;
    for (const char byte : name + content) {
        checksum ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum >> 1) ^ ((checksum & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return bigEndian(static_cast<quint32>(content.size())) + name + content + bigEndian(~checksum);
}

/// From now on memory that is taken or given back holds this byte, or its complement.
void fillHeap(int byte)
{
    mallopt(M_PERTURB, byte);
}

}  // namespace

/// Pictures that are cut, too great or of no known format.
class TestBadPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// One-bit pictures, for which 16 Mi pixels take 2 MiB.
    void picturesHaveAtMost16MiPixels_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("result");
        QTest::newRow("just as many") << QSize(16384, 1024) << QSize(384, 24);
        QTest::newRow("one row more") << QSize(16384, 1025) << QSize(0, 0);
        QTest::newRow("far more") << QSize(16384, 8193) << QSize(0, 0);
        QTest::newRow("just as many when scaled") << QSize(4, 455) << QSize(384, 43680);
        QTest::newRow("more when scaled") << QSize(4, 456) << QSize(0, 0);
        QTest::newRow("far more when scaled") << QSize(1, 32767) << QSize(0, 0);
    }

    void picturesHaveAtMost16MiPixels()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, result);
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("wild.pbm");
        const QByteArray head =
            QString("P4\n%1 %2\n").arg(size.width()).arg(size.height()).toLatin1();
        writeFile(fileName, head);
        QVERIFY(
            QFile::resize(fileName, head.size() + qint64(size.width() + 7) / 8 * size.height()));
        const MonochromeImage image = loaded(directory.path(), "wild");
        QCOMPARE(QSize(image.width(), image.height()), result);
    }

    /// A head alone, of few bytes, makes its reader ask for the memory of all pixels.
    void gifOfTooManyPixelsIsNotRead_data()
    {
        QTest::addColumn<QByteArray>("size");
        QTest::newRow("11585 by 11585") << QByteArray("412d 412d");
        QTest::newRow("left to its pictures") << QByteArray("0000 0000");
        QTest::newRow("without a width") << QByteArray("0000 0100");
    }

    void gifOfTooManyPixelsIsNotRead()
    {
        QFETCH(QByteArray, size);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.gif"),
                  QByteArray::fromHex("474946383961" + size +
                                      "80 00 00 000000 ffffff"
                                      "2c 0000 0000 412d 412d 00 02 02 440a 00 3b"));
        const auto load = [&] { loaded(directory.path(), "logo"); };
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        if (memoryCanBeMeasured) {
            const qint64 peak = peakMemoryOf(load);
            QVERIFY2(peak >= 0 && peak < (8 << 20), qPrintable(QString::number(peak)));
        }
    }

    /// A thousand of these would take 8 GB.
    void compressedTextsOfAPngAreNotRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.png");
        QVERIFY(striped(20, 10).save(fileName));
        const MonochromeImage expected = expectedImage(fileName);
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        constexpr int behindTheHead = 8 + 25;
        const QByteArray text =
            "k\0" + QByteArray(1, '\0') + qCompress(QByteArray(7900000, 'x')).mid(4);
        bytes.insert(behindTheHead, chunk("zTXt", text).repeated(40));
        writeFile(fileName, bytes);
        QCOMPARE(loaded(directory.path(), "logo"), expected);
        if (memoryCanBeMeasured) {
            const qint64 peak = peakMemoryOf([&] { loaded(directory.path(), "logo"); });
            QVERIFY2(peak >= 0 && peak < (8 << 20), qPrintable(QString::number(peak)));
        }
    }

    /// Some programs write such files.
    void pngWithoutItsLastChecksumIsRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.png");
        QVERIFY(striped(20, 10).save(fileName));
        const MonochromeImage expected = expectedImage(fileName);
        for (int missing = 1; missing <= 4; ++missing) {
            QVERIFY(QFile::resize(fileName, QFileInfo(fileName).size() - 1));
            QCOMPARE(loaded(directory.path(), "logo"), expected);
        }
        QVERIFY(QFile::resize(fileName, QFileInfo(fileName).size() - 1));
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
    }

    void jpegOfTooManyScansIsNotRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.jpg");
        QImageWriter writer(fileName);
        writer.setProgressiveScanWrite(true);
        if (!writer.write(striped(50, 20)))
            QSKIP("this Qt writes no JPEG");
        QCOMPARE(loaded(directory.path(), "logo").width(), 50);
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        file.close();
        const int end = bytes.lastIndexOf("\xFF\xD9");
        const int lastScan = bytes.lastIndexOf("\xFF\xDA");
        bytes.insert(end, bytes.mid(lastScan, end - lastScan).repeated(100));
        writeFile(fileName, bytes);
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
    }

    /// A reader of SVG opens other files, hangs on pipes and takes whatever memory the text asks
    /// for.
    void formatsBeyondTheListAreNotRead_data()
    {
        QTest::addColumn<QByteArray>("format");
        const QList<QByteArray> formats{"bmp", "gif", "jpeg", "jpg", "pbm",
                                        "pgm", "png", "ppm",  "xbm", "xpm"};
        const QList<QByteArray> writable = QImageWriter::supportedImageFormats();
        for (const QByteArray &format : writable) {
            if (!formats.contains(format))
                QTest::newRow(format) << format;
        }
        QTest::newRow("svg") << QByteArray("svg");
    }

    void formatsBeyondTheListAreNotRead()
    {
        QFETCH(QByteArray, format);
        QByteArray content =
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\">"
            "<rect width=\"9\" height=\"9\"/></svg>";
        if (format != "svg") {
            QBuffer buffer(&content);
            QVERIFY(striped(9, 9).save(&buffer, format));
        }
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo." + format), content);
        writeFile(directory.filePath("mark.png"), content);
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        QCOMPARE(loaded(directory.path(), "mark").width(), 0);
    }

    void contentAndNotTheNameSaysTheFormat()
    {
        const QTemporaryDir directory;
        for (const char *format : {"png", "bmp", "pbm", "pgm", "ppm", "xbm", "xpm"}) {
            const QString fileName = directory.filePath("logo.svg");
            QVERIFY(striped(21, 8).save(fileName, format));
            QVERIFY2(loaded(directory.path(), "logo").width() == 21, format);
        }
    }

    /// The last pixels of a file that breaks off are white, whatever was in memory before.
    void whatACutPictureLacksIsBlank_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
        const QList<QImage::Format> kinds{QImage::Format_Mono, QImage::Format_Indexed8,
                                          QImage::Format_RGB32, QImage::Format_ARGB32};
        for (const QByteArray &format : formats) {
            for (const QImage::Format kind : kinds) {
                QByteArray content;
                QBuffer buffer(&content);
                if (striped(61, 40, kind).save(&buffer, format))
                    QTest::newRow(qPrintable(QString("%1, %2").arg(QString(format)).arg(kind)))
                        << content;
            }
        }
        QTest::newRow("gif") << QByteArray::fromHex(
            "474946383961 0200 0300 80 00 00 000000 ffffff"
            "2c 0000 0000 0200 0100 00 02 02 440a 00 3b");
        // Of 8 by 2, of which run lengths give three pixels.
        QTest::newRow("bmp in run lengths")
            << QByteArray::fromHex(
                   "424d 00000000 0000 0000 3e000000"
                   "28000000 08000000 02000000 0100 0800 01000000 00000000"
                   "00000000 00000000 02000000 00000000 00000000 ffffff00") +
                   QByteArray::fromHex("0300 0001");
    }

    void whatACutPictureLacksIsBlank()
    {
        QFETCH(QByteArray, content);
        const QuietLog quiet;
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo");
        const auto loadedOver = [&](int byte) {
            fillHeap(byte);
            return loaded(directory.path(), "logo");
        };
        const int step = qMax(1, content.size() / 25);
        for (int size = 1; size < content.size() + step; size += step) {
            // A new file each time: to write over one may wait for the disk.
            QVERIFY(QFile::remove(fileName) || size == 1);
            writeFile(fileName, content.left(size));
            const MonochromeImage image = loadedOver(0x5A);
            QVERIFY2(loadedOver(0xA5) == image, qPrintable(QString("%1 bytes").arg(size)));
        }
        fillHeap(0);
    }

    void rowsThatACutBmpLacksAreWhite_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<QRgb>("first");
        QTest::addColumn<int>("colours");
        QTest::addColumn<int>("bits");
        const QRgb black = qRgb(0, 0, 0);
        const QRgb white = qRgb(255, 255, 255);
        QTest::newRow("1 bit, black is 0") << QImage::Format_Mono << black << 2 << 1;
        QTest::newRow("1 bit, black is 1") << QImage::Format_Mono << white << 2 << 1;
        QTest::newRow("4 bits, black is 0") << QImage::Format_Indexed8 << black << 16 << 4;
        QTest::newRow("4 bits, black is 1") << QImage::Format_Indexed8 << white << 16 << 4;
        QTest::newRow("8 bits, black is 0") << QImage::Format_Indexed8 << black << 256 << 8;
        QTest::newRow("8 bits, black is 1") << QImage::Format_Indexed8 << white << 256 << 8;
        QTest::newRow("24 bits") << QImage::Format_RGB32 << black << 0 << 24;
    }

    void rowsThatACutBmpLacksAreWhite()
    {
        QFETCH(QImage::Format, format);
        QFETCH(QRgb, first);
        QFETCH(int, colours);
        QImage black(64, 20, format);
        QVector<QRgb> table(colours, first ^ RGB_MASK);
        if (colours > 0)
            table[0] = first;
        black.setColorTable(table);
        black.fill(colours > 0 && first != qRgb(0, 0, 0) ? 1U : 0U);
        QByteArray content;
        QBuffer buffer(&content);
        QVERIFY(black.save(&buffer, "bmp"));
        QFETCH(int, bits);
        const int rowBytes = 64 * bits / 8;
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content.chopped(5 * rowBytes));
        fillHeap(0xFF);
        const MonochromeImage image = loaded(directory.path(), "logo");
        fillHeap(0);
        // The rows of a BMP begin at the bottom.
        QCOMPARE(image.image(), QByteArray(8 * 5, '\0') + QByteArray(8 * 15, '\xFF'));
    }

    void bmpWhosePixelsBeginBehindItsEndIsWhite_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<quint32>("begin");
        for (const int bits : {1, 4, 8, 24, 32}) {
            for (const quint32 begin : {0x500U, 0x00040036U, 0x7FFFFFFFU})
                QTest::addRow("%d bits, at %u", bits, begin) << bits << begin;
        }
    }

    void bmpWhosePixelsBeginBehindItsEndIsWhite()
    {
        QFETCH(int, bits);
        QFETCH(quint32, begin);
        // Of 8 by 2, the first colour is black, and a byte is left behind the colours.
        QByteArray content = QByteArray::fromHex(
            "424d 00000000 0000 0000 00000000"
            "28000000 08000000 02000000 0100 0000 00000000 00000000"
            "00000000 00000000 02000000 00000000 00000000 ffffff00 00");
        constexpr int placeOfBegin = 10;
        constexpr int placeOfBits = 28;
        qToLittleEndian(begin, content.data() + placeOfBegin);
        content[placeOfBits] = static_cast<char>(bits);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content);
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(8, 2));
        QCOMPARE(image.image(), QByteArray(8, '\0'));
    }

    /// Whatever the stack holds where Qt looks their colours up.
    void coloursThatABmpLacksAreWhite()
    {
        // Of 8 by 1 and two colours, black and white; the pixels name others, too.
        const QByteArray content = QByteArray::fromHex(
            "424d 00000000 0000 0000 3e000000"
            "28000000 08000000 01000000 0100 0800 00000000 00000000"
            "00000000 00000000 02000000 00000000 00000000 ffffff00"
            "00 02 7f 01 ff 00 80 03");
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content);
        QCOMPARE(loaded(directory.path(), "logo").image(), QByteArray::fromHex("84000000"));
        // One that is cut off before its last pixel, and so read in another way.
        writeFile(directory.filePath("logo.bmp"), content.chopped(1));
        QCOMPARE(loaded(directory.path(), "logo").image().left(1), QByteArray::fromHex("84"));
    }

    /// Qt's reader of GIF goes over all pixels that codes stand for, also behind the last one.
    void gifOfLongCodesCountsAsUnreadable_data()
    {
        QTest::addColumn<int>("codes");
        QTest::addColumn<QByteArray>("extension");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("as many as 16 Mi pixels") << 2055 << QByteArray() << true;
        QTest::newRow("more") << 2056 << QByteArray() << false;
        QTest::newRow("more, behind a comment") << 2100
                                                << QByteArray(
                                                       "!\xFE\x03"
                                                       "abc\x01"
                                                       "d\0",
                                                       9)
                                                << false;
        // A picture for who takes the first 0 for the end; Qt takes it for the size of one.
        const QByteArray hidden = QByteArray(",\0\0\0\0\x08\0\x08\0\0\x02\0", 12);
        QTest::newRow("more, behind a picture that is none")
            << 2100
            << QByteArray("!\xF9\0", 3) + hidden + QByteArray(44 + 1 - 12, '\0') +
                   QByteArray(1, '\0')
            << false;
    }

    void gifOfLongCodesCountsAsUnreadable()
    {
        QFETCH(const int, codes);
        QFETCH(const QByteArray, extension);
        QFETCH(const bool, isRead);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.gif"), gifOfLongCodes(codes, extension));
        QCOMPARE(loaded(directory.path(), "logo").width(), isRead ? 8 : 0);
    }

    void pictureOfAbsurdSizeCountsAsUnreadable()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("vast.pbm"), "P4\n200000 200000\n");
        QVERIFY(withPalette(1, 3000, qRgb(0, 0, 0), qRgb(255, 255, 255))
                    .save(directory.filePath("needle.png")));
        QCOMPARE(loaded(directory.path(), "vast").width(), 0);
        QCOMPARE(loaded(directory.path(), "needle").width(), 0);
    }
};

QTEST_GUILESS_MAIN(TestBadPictures)
#include "tst_badpictures.moc"
