// Pictures on the paper, and paper that gets too long.
#include <QtTest>

#include "laiddocuments.h"

using namespace laiddocuments;

namespace {

const char general[] = "GENERAL_EPSON_PROTOCOL";  // 384 dots

DocumentBlock picture(int width, int height, const QByteArray &bytes,
                      ETextAlignment alignment = AlignLeft)
{
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(MonochromeImage(width, height, bytes));
    block.setAlignment(alignment);
    return block;
}

/// All dots of a width with rows of whole bytes.
DocumentBlock blackPicture(int width, int height, ETextAlignment alignment = AlignLeft)
{
    return picture(width, height, QByteArray((width + 7) / 8 * height, '\xFF'), alignment);
}

QString tooLong(int block)
{
    return QStringLiteral("block %1: the paper gets longer than 1000000 dots").arg(block);
}

}  // namespace

class TestPrintLayoutPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureIsARow()
    {
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("a"), blackPicture(16, 3)}), targetOf(general));
        QCOMPARE(textsOf(layout), (QStringList{"a", "[picture]"}));
        const PrintLayout::Row row = layout.rows[1];
        QCOMPARE((QVector<int>{row.block, row.line, row.left, row.height, row.feed, row.first}),
                 (QVector<int>{2, 0, 0, 3, 0, 0}));
        QCOMPARE(layout.pictures.first().size, QSize(16, 3));
        QCOMPARE(layout.pictures.first().rows, QByteArray(6, '\xFF'));
        QCOMPARE(notesOf(layout), QStringList());
    }

    void rowsOfWholeBytesAreThoseOfSymbolFiles()
    {
        const PrintLayout layout =
            layoutOf(picture(9, 2, QByteArray("\x01\xFF\x02\x80", 4)), targetOf(general));
        // What stands behind the last dot isn't printed.
        QCOMPARE(layout.pictures.first().rows, QByteArray("\x01\x80\x02\x80", 4));
    }

    void rowsOfThirtyTwoBitsAreThoseOfBbCode()
    {
        const PrintLayout layout = layoutOf(
            picture(9, 2, QByteArray("\x01\xFF\x55\x55\x02\x80\x55\x55", 8)), targetOf(general));
        QCOMPARE(layout.pictures.first().rows, QByteArray("\x01\x80\x02\x80", 4));
    }

    void whatTheBytesLackIsBlank()
    {
        // 9 x 8 / 8 bytes make it valid, though rows take two.
        const PrintLayout layout =
            layoutOf(picture(9, 8, QByteArray(9, '\xFF')), targetOf(general));
        QCOMPARE(layout.pictures.first().rows,
                 QByteArray("\xFF\x80").repeated(4) + "\xFF" + QByteArray(7, '\0'));
    }

    void placeIsByAlignment_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("left");
        QTest::newRow("left") << 100 << int(AlignLeft) << 0;
        QTest::newRow("centre") << 101 << int(AlignCenter) << 141;
        QTest::newRow("right") << 100 << int(AlignRight) << 284;
        QTest::newRow("justified") << 100 << int(AlignJustify) << 0;
        QTest::newRow("unknown") << 100 << -1 << 0;
        QTest::newRow("full") << 384 << int(AlignRight) << 0;
        QTest::newRow("too wide") << 400 << int(AlignRight) << 0;
    }
    void placeIsByAlignment()
    {
        QFETCH(int, width);
        QFETCH(int, alignment);
        QFETCH(int, left);
        const PrintLayout layout = layoutOf(
            blackPicture(width, 1, static_cast<ETextAlignment>(alignment)), targetOf(general));
        QCOMPARE(layout.rows.front().left, left);
    }

    void whatIsRightOfTheLineIsLost()
    {
        const PrintLayout fits = layoutOf(blackPicture(384, 1), targetOf(general));
        QCOMPARE(notesOf(fits), QStringList());
        const PrintLayout layout =
            layoutOf(documentOf({textBlock(""), blackPicture(385, 2)}), targetOf(general));
        QCOMPARE(layout.pictures.first().size, QSize(384, 2));
        QCOMPARE(layout.pictures.first().rows, QByteArray(96, '\xFF'));
        QCOMPARE(notesOf(layout),
                 QStringList{"block 2: the picture is 385 dots wide; what is right "
                             "of the line's 384 is lost"});
        QVERIFY(layout.notes.first().isLoss);
    }

    /// The line may end within a byte.
    void croppedRowsEndWithTheLine()
    {
        const PrintTarget target = targetOf("CITIZEN_CBM_1000", 1);
        QCOMPARE(target.lineDots(), 422);
        const Paper::Picture cropped = layoutOf(blackPicture(500, 1), target).pictures.first();
        QCOMPARE(cropped.size, QSize(422, 1));
        QCOMPARE(cropped.rows, QByteArray(52, '\xFF') + '\xFC');
    }

    /// What the catalogue says of images isn't what the printer takes.
    void everyModelPrintsPictures()
    {
        const QStringList models = PrinterProfile::modelIds();
        for (const QString &model : models) {
            const PrintLayout layout = layoutOf(blackPicture(8, 1), targetOf(qPrintable(model)));
            QCOMPARE(textsOf(layout), QStringList{"[picture]"});
        }
    }

    void modelWithoutRasterPrintsNone()
    {
        const PrintTarget target = changedTarget(general, R"("rasterCommand": "None")");
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("a"), blackPicture(8, 1)}), target);
        QCOMPARE(textsOf(layout), (QStringList{"a", "[fault]"}));
        QCOMPARE(layout.faults.first().what, QString("Picture"));
        QCOMPARE(notesOf(layout), QStringList{"block 2: Picture: The model prints none"});
        QCOMPARE(layout.pictures.size(), 0);
    }

    void pictureThatIsNotWholeIsNoted()
    {
        const PrintLayout layout =
            layoutOf(picture(16, 8, QByteArray(15, '\xFF')), targetOf(general));
        QCOMPARE(layout.rows.size(), size_t(0));
        QCOMPARE(notesOf(layout),
                 QStringList{"block 1: the block isn't printed: its picture isn't whole"});
    }

    void paperHasALongest_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<bool>("fits");
        QTest::newRow("longest") << PrintLayout::longest - 24 << true;
        QTest::newRow("a dot more") << PrintLayout::longest - 23 << false;
        QTest::newRow("far more") << 2 * PrintLayout::longest << false;
    }
    void paperHasALongest()
    {
        QFETCH(int, height);
        QFETCH(bool, fits);
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("a"), blackPicture(8, height), textBlock("")}),
                     targetOf(general));
        // The empty line behind it needs room, too.
        QCOMPARE(layout.error, fits ? tooLong(3) : tooLong(2));
        QCOMPARE(layout.pictures.size(), fits ? 1 : 0);
        QCOMPARE(layout.rows.size(), size_t(fits ? 2 : 1));
    }

    void textUpToTheLongestPaperFits()
    {
        const int most = PrintLayout::longest / 24;
        const QString lines = QString("a\n").repeated(most - 1) + "a";
        const PrintLayout layout = layoutOf(textBlock(lines), targetOf(general));
        QCOMPARE(layout.error, QString());
        QCOMPARE(layout.rows.size(), size_t(most));
        QCOMPARE(layoutOf(textBlock(lines + "\na"), targetOf(general)).error, tooLong(1));
    }

    /// What is laid out is bounded by the paper, not by the text.
    void endlessLineEndsWithThePaper()
    {
        const PrintLayout layout =
            layoutOf(textBlock(QString(10'000'000, u'a')), targetOf(general));
        QCOMPARE(layout.error, tooLong(1));
        QVERIFY(layout.cells.size() < 33 * PrintLayout::longest / 24);
        const PrintLayout after = layoutOf(documentOf({blackPicture(8, PrintLayout::longest - 1),
                                                       textBlock(QString(99'999, u'a'))}),
                                           targetOf(general));
        QVERIFY(after.cells.size() < 1000);
    }

    void blocksBehindTheLongestPaperAreLeftOut()
    {
        const PrintLayout layout =
            layoutOf(documentOf({blackPicture(8, PrintLayout::longest + 1),
                                 textBlock("a", AlignLeft, 0x02), textBlock("b")}),
                     targetOf(general));
        QCOMPARE(layout.rows.size(), size_t(0));
        QCOMPARE(layout.error, tooLong(1));
        QCOMPARE(notesOf(layout), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestPrintLayoutPictures)
#include "tst_printlayout_pictures.moc"
