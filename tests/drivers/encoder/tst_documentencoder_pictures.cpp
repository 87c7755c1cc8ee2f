#include <QtTest>

#include "printedpaper.h"
#include "printerslib/drivers/printermodels.h"

using namespace printedpaper;

namespace {

MonochromeImage imageOf(int width, int height, const QByteArray &rows)
{
    MonochromeImage image;
    image.setWidth(width);
    image.setHeight(height);
    image.setImage(rows);
    return image;
}

DocumentBlock pictureBlock(int width, const QByteArray &rows, ETextAlignment alignment = AlignLeft)
{
    // Rows of whole 32 bits.
    const int bytes = (width + 31) / 32 * 4;
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setAlignment(alignment);
    block.setImg(imageOf(width, rows.size() / bytes, rows));
    return block;
}

/// Rows of so many bytes, of which each begins with a pattern that goes on through all.
QByteArray patternRows(const QByteArray &pattern, int bytesPerRow, int rows)
{
    QByteArray bytes;
    while (bytes.size() < bytesPerRow * rows)
        bytes += pattern;
    return bytes.left(bytesPerRow * rows);
}

bool isObeyed(const PrinterProfile &profile, const QByteArray &bytes)
{
    for (const StreamCommand &command : StreamReader::commandsOf(bytes, profile)) {
        if (!command.realTime.isEmpty())
            return true;
    }
    return false;
}

}  // namespace

class TestDocumentEncoderPictures : public QObject
{
    Q_OBJECT

private:
    /// Prints a picture with text behind it, and compares.
    static QString differenceWith(const QString &model, int width, const QByteArray &rows,
                                  ETextAlignment alignment = AlignLeft)
    {
        return differenceOf(documentOf({pictureBlock(width, rows, alignment), textBlock("behind")}),
                            target(model));
    }

private Q_SLOTS:
    void dotsArriveAtEachAlignment_data() { addModels(); }
    void dotsArriveAtEachAlignment()
    {
        QFETCH(QString, model);
        const QByteArray rows = patternRows("\xA1\x3C\x55\x81\x0F", 16, 100);
        for (const int width : {1, 7, 8, 9, 100, 101, 127, 128}) {
            for (const ETextAlignment alignment : {AlignLeft, AlignCenter, AlignRight}) {
                const int bytes = (width + 31) / 32 * 4;
                QCOMPARE(differenceWith(model, width, rows.left(bytes * 100), alignment),
                         QString());
            }
        }
    }

    void bytesOfAPulseArePrinted_data() { addModels(); }
    void bytesOfAPulseArePrinted()
    {
        QFETCH(QString, model);
        const QByteArray logo("\x10\x14\x01\x00\x01", 5);
        const int line = target(model).lineDots();
        for (const int width : {40, 160, line / 32 * 32, line}) {
            const int bytes = (width + 31) / 32 * 4;
            for (const int rows : {1, 5, 24, 25, 47, 100, 300})
                QCOMPARE(differenceWith(model, width, patternRows(logo, bytes, rows)), QString());
        }
    }

    void noPairOfBytesIsObeyedWhereverItStands_data() { addModels(); }
    void noPairOfBytesIsObeyedWhereverItStands()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        const QByteArray pairs[] = {QByteArray("\x10\x04\x01", 3), QByteArray("\x10\x05\x01", 3),
                                    QByteArray("\x10\x14\x01\x00\x01", 5),
                                    QByteArray("\x10\x14\x08\x01\x03\x14\x01\x06\x02\x08", 10),
                                    QByteArray("\x1B\x06\x01", 3)};
        for (const QByteArray &pair : pairs) {
            for (int place = 0; place + pair.size() <= 32; ++place) {
                // 4 bytes a row: the pair stands in a row, or from one to the next.
                QByteArray rows(32, '\0');
                rows.replace(place, pair.size(), pair);
                const auto document = documentOf({pictureBlock(32, rows), textBlock("x")});
                QCOMPARE(differenceOf(document, to), QString());
                QVERIFY(!isObeyed(to.profile(), encoded(document, to).bytes));
            }
        }
    }

    void pairsAcrossAndDownAtOnceArePrinted_data() { addModels(); }
    void pairsAcrossAndDownAtOnceArePrinted()
    {
        // Slanting lines, ten dots apart, hold the pairs in their rows and in their columns.
        QFETCH(QString, model);
        const int width = 320;
        QByteArray rows(width / 8 * 96, '\0');
        for (int y = 0; y < 96; ++y) {
            for (int x = 0; x < width; ++x) {
                if ((x + y) % 10 == 3)
                    rows[y * width / 8 + x / 8] =
                        static_cast<char>(rows[y * width / 8 + x / 8] | (0x80 >> (x % 8)));
            }
        }
        QCOMPARE(differenceWith(model, width, rows), QString());
        const auto document = documentOf({pictureBlock(width, rows)});
        QVERIFY(!isObeyed(target(model).profile(), encoded(document, target(model)).bytes));
    }

    void noCommandIsLargerThanTwoKilobytes_data() { addModels(); }
    void noCommandIsLargerThanTwoKilobytes()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        // Rows of 32 bytes would fill the 2 KB without what stands in front of them.
        for (const int width : {8, 256, to.lineDots()}) {
            const int bytes = (width + 31) / 32 * 4;
            for (const QByteArray &pattern :
                 {QByteArray("\xFF"), QByteArray("\x10\x14\x01\x00\x01", 5)}) {
                const auto document =
                    documentOf({pictureBlock(width, patternRows(pattern, bytes, 500))});
                const QByteArray stream = encoded(document, to).bytes;
                for (const StreamCommand &command : StreamReader::commandsOf(stream, to.profile()))
                    QVERIFY(command.bytes.size() <= 2048);
            }
        }
    }

    void whatIsBlankAtTheRightIsNotSent()
    {
        const PrintTarget to = targetOf("GENERAL_EPSON_PROTOCOL");
        QByteArray rows(64, '\0');
        rows[1] = '\x80';
        const QByteArray stream = encoded(documentOf({pictureBlock(256, rows)}), to).bytes;
        QVERIFY(
            stream.contains(QByteArray("\x1D\x76\x30\x00\x02\x00\x02\x00\x00\x80\x00\x00", 12)));
    }

    void aBlankPictureIsFed_data() { addModels(); }
    void aBlankPictureIsFed()
    {
        QFETCH(QString, model);
        QCOMPARE(differenceWith(model, 64, QByteArray(8 * 300, '\0')), QString());
    }

    void printersThatSwitchTheirPulsesOffGetThePictureWhole()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "WPK_833", "switchesRealTime": true}])", "test"),
                 QStringList());
        const PrintTarget to(*models.profile("WPK_833"), targetOf("WPK_833").record(), 0);
        const auto logoOf = [](const QByteArray &pattern) {
            return documentOf({pictureBlock(160, patternRows(pattern, 20, 10)), textBlock("x")});
        };
        const auto bytesOf = [&](const QByteArray &pattern) {
            return encoded(logoOf(pattern), to).bytes;
        };
        const QByteArray off("\x1D\x28\x44\x05\x00\x14\x01\x00\x02\x00\x1D\x76\x30", 13);
        const QByteArray on("\x1D\x28\x44\x05\x00\x14\x01\x01\x02\x00", 10);
        const QByteArray pulse("\x10\x14\x01\x00\x01", 5);
        QVERIFY(bytesOf(pulse).contains(off));
        QVERIFY(bytesOf(pulse).indexOf(on) > bytesOf(pulse).indexOf(off));
        QVERIFY(!bytesOf(pulse).contains("\x1B*"));
        for (const Paper &paper : papersOf(bytesOf(pulse), to.profile())) {
            for (const Paper::Event &event : paper.events)
                QVERIFY(event.kind != Paper::Event::Pulse && event.kind != Paper::Event::Status);
        }
        // What it doesn't switch off is parted all the same, and what is no hazard goes as it is.
        for (const QByteArray &lasting :
             {QByteArray("\x10\x04\x01\x00\x01", 5), QByteArray("\x10\x14\x07\x01\x01", 5)}) {
            QVERIFY(bytesOf(lasting).contains("\x1B*"));
            QCOMPARE(differenceOf(logoOf(lasting), to), QString());
        }
        QVERIFY(!bytesOf("\xFF").contains("\x1D\x28\x44"));
        QVERIFY(!encoded(logoOf(pulse), targetOf("WPK_833")).bytes.contains("\x1D\x28\x44"));
    }
};

QTEST_APPLESS_MAIN(TestDocumentEncoderPictures)
#include "tst_documentencoder_pictures.moc"
