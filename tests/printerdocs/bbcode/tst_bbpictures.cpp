#include <sys/stat.h>
#include <unistd.h>

#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtTest>

#include "bbbench.h"
#include "picturebench.h"
#include "printerdocs/bbcodeparser.h"

using namespace bbbench;
using namespace picturebench;

/// Which file a name is, when it is read, and what becomes of the picture.
class TestBbPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingPictureLeavesAnEmptyBlock_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("absent", "[img name=absent][/img]", {blankLine});
        row("without a name", "[img][/img]", {blankLine});
        row("closing itself", "[img /]", {blankLine});
        row("text between the tags", "x[img name=absent]y[/img]z",
            {plain("x"), plain("y"), plain("z")});
        row("closing alone", "x[/img]y", {plain("x y")});
        row("in an aligned block", "[right][img][/img]x[/right]",
            {"T0R \"\"  ", plain("x", "T0R")});
        row("in a barcode", "[barcode][img][/img]", {"B7L \"\"  "});
        row("name outside an image", "[b name=absent]x[/b]", {"T0L \"x\" 0 1"});
        row("closed twice", "[img][/img][/img]", {blankLine});
        row("opened twice", "[img]x[img]", {plain("x")});
    }

    void missingPictureLeavesAnEmptyBlock()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        const QTemporaryDir directory;
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText(text);
        QCOMPARE(described(parser.blocks()), blocks);
    }

    /// Images of one reading share their bytes.
    void pictureOfSeveralTagsIsReadOnce()
    {
        const QTemporaryDir directory;
        QVERIFY(striped(20, 10).save(directory.filePath("logo.png")));
        writeFile(directory.filePath("torn.png"), "none");
        QTest::qSleep(2100);
        QVERIFY(loaded(directory.path(), "logo").image().constData() ==
                loaded(directory.path(), "logo").image().constData());
        QCOMPARE(loaded(directory.path(), "logo"), expectedImage(directory.filePath("logo.png")));
        QCOMPARE(loaded(directory.path(), "torn").width(), 0);
        QCOMPARE(loaded(directory.path(), "torn").width(), 0);
    }

    /// Even if a file of the same size takes its place and its time.
    void pictureThatWasWrittenAnewIsReadAnew()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.pbm");
        writeFile(fileName, "P1\n2 1\n1 0\n");
        QTest::qSleep(2100);
        QCOMPARE(loaded(directory.path(), "logo").image().toHex(), QByteArray("80000000"));
        const QDateTime written = QFileInfo(fileName).lastModified();
        for (int i = 0; i < 20; ++i) {
            const bool isLeft = i % 2 == 1;
            writeFile(fileName, isLeft ? "P1\n2 1\n1 0\n" : "P1\n2 1\n0 1\n");
            QFile file(fileName);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(written, QFileDevice::FileModificationTime));
            file.close();
            QCOMPARE(loaded(directory.path(), "logo").image().toHex(),
                     QByteArray(isLeft ? "80000000" : "40000000"));
        }
    }

    void linkThatLeadsElsewhereIsReadAnew()
    {
        const QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir("pictures"));
        writeFile(directory.filePath("pictures/one.pbm"), "P1\n2 1\n1 0\n");
        writeFile(directory.filePath("pictures/two.pbm"), "P1\n2 1\n0 1\n");
        QTest::qSleep(2100);
        const QString link = directory.filePath("logo.pbm");
        for (const char *target : {"one", "two", "one"}) {
            QFile::remove(link);
            QVERIFY(QFile::link(directory.filePath(QString("pictures/%1.pbm").arg(target)), link));
            QCOMPARE(loaded(directory.path(), "logo").image().toHex(),
                     QByteArray(qstrcmp(target, "one") == 0 ? "80000000" : "40000000"));
            QCOMPARE(loaded(directory.path(), "logo").fileName(), link);
        }
    }

    /// With files of the same size and times, as they are unpacked side by side.
    void foldersThatChangePlacesAreReadAnew()
    {
        const QTemporaryDir directory;
        QDir folder(directory.path());
        const auto changed = [&](const QString &name) {
            return QFileInfo(directory.filePath(name)).metadataChangeTime();
        };
        QVERIFY(folder.mkdir("one"));
        QVERIFY(folder.mkdir("two"));
        do {
            writeFile(directory.filePath("one/logo.pbm"), "P1\n2 1\n1 0\n");
            writeFile(directory.filePath("two/logo.pbm"), "P1\n2 1\n0 1\n");
        } while (changed("one/logo.pbm") != changed("two/logo.pbm"));
        QTest::qSleep(2100);
        QCOMPARE(loaded(folder.filePath("one"), "logo").image().toHex(), QByteArray("80000000"));
        QVERIFY(folder.rename("one", "old"));
        QVERIFY(folder.rename("two", "one"));
        QCOMPARE(loaded(folder.filePath("one"), "logo").image().toHex(), QByteArray("40000000"));
    }

    void pictureThatCouldNotBeOpenedIsTriedAgain()
    {
        if (::geteuid() != 0)
            QSKIP("only root changes its user");
        constexpr uid_t nobody = 65534;
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n2 1\n1 0\n");
        QVERIFY(QFile::setPermissions(directory.path(), QFile::Permissions(0x7555)));
        QVERIFY(QFile::setPermissions(directory.filePath("logo.pbm"), QFile::ReadOwner));
        QTest::qSleep(2100);
        QCOMPARE(::seteuid(nobody), 0);
        const int width = loaded(directory.path(), "logo").width();
        QCOMPARE(::seteuid(0), 0);
        QCOMPARE(width, 0);
        QCOMPARE(loaded(directory.path(), "logo").width(), 2);
    }

    /// Nobody writes to the FIFO: whoever opens it waits.
    void fifoIsNoPicture()
    {
        const QTemporaryDir directory;
        const QString fifo = directory.filePath("logo.png");
        QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        QVERIFY(QFile::link(fifo, directory.filePath("mark.png")));
        QVERIFY(QFile::link("/dev/zero", directory.filePath("zero.png")));
        for (const char *name : {"logo", "mark", "zero"})
            QCOMPARE(loaded(directory.path(), name).width(), 0);
    }

    /// Where trying every way to share a name between the wildcards would never end.
    void manyWildcardsAreTriedInBoundedTime()
    {
        const QTemporaryDir directory;
        const QString name = QString("ab").repeated(120);
        for (int i = 0; i < 300; ++i)
            writeFile(directory.filePath(name + QString::number(i)), "P1\n1 1\n1\n");
        writeFile(directory.filePath(name + "0c"), "P1\n2 1\n1 1\n");
        const QString stars = QString("*a").repeated(100);
        QCOMPARE(loaded(directory.path(), stars + "*d").width(), 0);
        QCOMPARE(loaded(directory.path(), stars + "*c").width(), 2);
    }

    void wildcardsMatchAsInAFolder_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"*",     "**",  "a",   "a*", "*a",  "*b*", "?",  "??",  "b?", "*?", "?*b", "ab*ab",
              "*ab*b", "a?b", "*.p", "*.", "?.?", "(a)", "a+", "a.c", "$",  "#",  "&"})
            QTest::newRow(name) << QString(name);
    }

    void wildcardsMatchAsInAFolder()
    {
        QFETCH(QString, name);
        const QTemporaryDir directory;
        QDir folder(directory.path());
        for (const char *file : {"a", "AB", "abab", "aab", "b", "bab.pbm", "(a)b", "a+b", "a.c",
                                 "x.p", "Ab.Png", "$", "#1", "&", "ч", "чa"})
            writeFile(directory.filePath(file), "P1\n1 1\n1\n");
        const QStringList files = folder.entryList({name + '*'}, QDir::Files, QDir::Name);
        QCOMPARE(loaded(directory.path(), name).fileName(),
                 files.isEmpty() ? QString() : folder.absoluteFilePath(files.first()));
    }

    void pictureBecomesABitmap()
    {
        const QTemporaryDir directory;
        // 10 by 2: the corners and the middle are black.
        writeFile(directory.filePath("logo.pbm"),
                  "P1\n10 2\n1 0 0 0 1 1 0 0 0 1\n0 0 0 0 0 0 0 0 0 1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[right]x[img name=Logo]alt[/img]y");
        QCOMPARE(parser.blocks().size(), 3);
        const DocumentBlock block = parser.blocks().at(1);
        QVERIFY(block.isImage());
        QCOMPARE(described(block), QString("I0C \"alt\" 000 000"));
        QCOMPARE(block.img().width(), 10);
        QCOMPARE(block.img().height(), 2);
        QCOMPARE(block.img().image().toHex(' '), QByteArray("8c 40 00 00 00 40 00 00"));
        QCOMPARE(block.img().fileName(), directory.filePath("logo.pbm"));
        QCOMPARE(described(parser.blocks().at(2)), plain("y", "T0R"));
    }

    void openingAgainForgetsThePicture()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[img name=logo][img][/img]");
        QCOMPARE(described(parser.blocks()), QStringList(blankLine));
    }

    void pictureInABarcodeHasNoBarcodeType()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[barcode][img name=logo][/img]");
        QCOMPARE(described(parser.blocks()), QStringList("I0C \"\"  "));
    }

    void everyFormatAndSizeIsConverted_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QSize>("size");
        const auto row = [](const char *name, const QString &fileName, const QImage &picture,
                            QSize size = QSize()) {
            QTest::newRow(name) << fileName << picture << (size.isValid() ? size : picture.size());
        };
        row("grey PNG", "logo.png", striped(61, 40));
        row("PNG with 8 bits", "logo.png", striped(64, 9, QImage::Format_Indexed8));
        row("PNG with transparency", "logo.png", striped(33, 12, QImage::Format_ARGB32));
        row("one-bit PNG", "logo.png", striped(31, 12, QImage::Format_Mono));
        row("one-bit PNG, black and white", "logo.png",
            withPalette(35, 5, qRgb(0, 0, 0), qRgb(255, 255, 255)));
        row("one-bit PNG, white and black", "logo.png",
            withPalette(35, 5, qRgb(255, 255, 255), qRgb(0, 0, 0)));
        row("one-bit PNG without black", "logo.png",
            withPalette(9, 5, qRgb(255, 0, 0), qRgb(0, 0, 255)));
        row("one-bit PNG with black alone", "logo.png",
            withPalette(9, 5, qRgb(0, 0, 0), qRgb(0, 0, 0)));
        row("BMP", "logo.bmp", striped(17, 30));
        row("one-bit BMP", "logo.bmp", striped(17, 30, QImage::Format_Mono));
        row("PBM", "logo.pbm", striped(40, 8, QImage::Format_Mono));
        row("XBM", "logo.xbm", striped(21, 8, QImage::Format_MonoLSB));
        row("XPM", "logo.xpm", striped(21, 8));
        if (QImageWriter::supportedImageFormats().contains("jpg")) {
            row("JPEG", "logo.jpg", striped(50, 20));
            row("tall JPEG", "logo.jpg", striped(50, 400), QSize(384, 3072));
        }
        row("one pixel", "logo.png", striped(1, 1));
        row("32 pixels wide", "logo.png", striped(32, 3));
        row("384 high", "logo.png", striped(20, 384));
        row("wide", "logo.png", striped(900, 30));
        row("385 high", "logo.png", striped(300, 385), QSize(384, 493));
        row("tall and narrow", "logo.png", striped(100, 400), QSize(384, 1536));
        row("tall and wide", "logo.png", striped(800, 600), QSize(384, 288));
        row("tall, one bit, no black", "logo.png",
            withPalette(96, 400, qRgb(255, 0, 0), qRgb(0, 0, 255)), QSize(384, 1600));
    }

    void everyFormatAndSizeIsConverted()
    {
        QFETCH(QString, fileName);
        QFETCH(QImage, picture);
        QFETCH(QSize, size);
        const QTemporaryDir directory;
        const QString path = directory.filePath(fileName);
        QVERIFY(picture.save(path));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QVERIFY(image.isValid());
        QCOMPARE(QSize(image.width(), image.height()), size);
        QCOMPARE(image.image().size(), (size.width() + 31) / 32 * 4 * size.height());
        QCOMPARE(image, expectedImage(path));
    }

    void gifIsConverted()
    {
        if (!QImageReader::supportedImageFormats().contains("gif"))
            QSKIP("this Qt reads no GIF");
        const QTemporaryDir directory;
        // 2 by 1 of the colours black and white: a black pixel and a white one.
        writeFile(directory.filePath("logo.gif"),
                  QByteArray::fromHex("474946383961 0200 0100 80 00 00 000000 ffffff"
                                      "2c 0000 0000 0200 0100 00 02 02 440a 00 3b"));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(2, 1));
        QCOMPARE(image.image().toHex(' '), QByteArray("80 00 00 00"));
    }

    void colourMissingInTheTableIsNotBlack_data()
    {
        QTest::addColumn<QByteArray>("colour");
        QTest::addColumn<QByteArray>("row");
        QTest::newRow("black alone") << QByteArray("00000000") << QByteArray("50 00 00 00");
        QTest::newRow("white alone") << QByteArray("ffffff00") << QByteArray("00 00 00 00");
    }

    void colourMissingInTheTableIsNotBlack()
    {
        QFETCH(QByteArray, colour);
        QFETCH(QByteArray, row);
        const QTemporaryDir directory;
        // A one-bit BMP of 4 by 1 whose table has one entry; its pixels are 1, 0, 1, 0.
        const QByteArray fileHeader = "424d 3e000000 0000 0000 3a000000";
        const QByteArray header =
            "28000000 04000000 01000000 0100 0100 00000000 04000000"
            "00000000 00000000 01000000 01000000";
        writeFile(directory.filePath("logo.bmp"),
                  QByteArray::fromHex(fileHeader + header + colour + "a0000000"));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(4, 1));
        QCOMPARE(image.image().toHex(' '), row);
    }

    void tallPictureIsScaledToTheWidthOfThePaper()
    {
        const QTemporaryDir directory;
        QImage black(192, 400, QImage::Format_Mono);
        black.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
        black.fill(1);
        QVERIFY(black.save(directory.filePath("logo.png")));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(image.width(), 384);
        QCOMPARE(image.height(), 800);
        QCOMPARE(image.image(), QByteArray(48 * 800, '\xFF'));
    }

    void firstFileByNameIsTaken()
    {
        const QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir("logo0"));
        writeFile(directory.filePath("logo2.pbm"), "P1\n2 1\n1 1\n");
        writeFile(directory.filePath("logo1.pbm"), "P1\n1 1\n1\n");
        writeFile(directory.filePath("logo.txt.pbm"), "P1\n3 1\n1 1 1\n");
        writeFile(directory.filePath("a-logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "logo").width(), 3);
        QCOMPARE(loaded(directory.path(), "logo1").width(), 1);
        QCOMPARE(loaded(directory.path(), "logo2.pbm").width(), 2);
        QCOMPARE(loaded(directory.path(), "a-").width(), 4);
        QCOMPARE(loaded(directory.path(), "logo0").width(), 0);
        QCOMPARE(loaded(directory.path(), "ogo").width(), 0);
    }

    void nameMayHoldWildcards()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("a-logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        writeFile(directory.filePath("b-logo.pbm"), "P1\n5 1\n1 1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "*").width(), 4);
        QCOMPARE(loaded(directory.path(), "?-logo").width(), 4);
        QCOMPARE(loaded(directory.path(), "b*pbm").width(), 5);
        QCOMPARE(loaded(directory.path(), "../*").width(), 0);
        QCOMPARE(loaded(directory.path(), "??????????????").width(), 0);
    }

    void fileNameInCapitalsIsFound()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("LOGO.PBM"), "P1\n4 1\n1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "Logo").width(), 4);
    }

    void unreadableFirstFileLeavesTheImageEmpty()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo1.png"), "no picture");
        writeFile(directory.filePath("logo2.pbm"), "P1\n4 1\n1 1 1 1\n");
        writeFile(directory.filePath("empty.png"), "");
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        QCOMPARE(loaded(directory.path(), "logo2").width(), 4);
        QCOMPARE(loaded(directory.path(), "empty").width(), 0);
        QCOMPARE(loaded(directory.filePath("nowhere"), "logo").width(), 0);
    }

    void failedSecondNameKeepsTheFirstPicture()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[img name=logo][b name=absent][/img]");
        QCOMPARE(parser.blocks().first().img().width(), 4);
    }

    void emptyPathIsTheCurrentDirectory()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        const QString usual = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        const MonochromeImage image = loaded(QString(), "logo");
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(usual));
        QCOMPARE(image.width(), 4);
        QCOMPARE(image.fileName(), current + "/logo.pbm");
    }

    void narrowReceiptIndentsThePictureToo()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.setSymbolsPerLine(3);
        parser.parseText("x[img]y[/img][img][/img][img name=logo]alt[/img]");
        QCOMPARE(described(parser.blocks()),
                 (QStringList{"T0L \"   x\" 0000 0000", "T0L \"   y\" 0000 0000",
                              "T0L \"   \" 000 000", "I0C \"   alt\" 000000 000000"}));
        parser.setSymbolsPerLine(16);
        parser.parseText("[img]y[/img]");
        QCOMPARE(parser.blocks().first().text(), QStringList(QString(16, ' ') + "y"));
    }
};

QTEST_GUILESS_MAIN(TestBbPictures)
#include "tst_bbpictures.moc"
