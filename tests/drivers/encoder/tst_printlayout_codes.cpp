// Barcodes and QR codes on the paper: symbologies, sizes, places, and those that can't be printed.
#include <QtTest>

#include "encoder/drawncodes_p.h"
#include "laiddocuments.h"

using namespace laiddocuments;

using Symbology = Paper::Symbology;

namespace {

const char general[] = "GENERAL_EPSON_PROTOCOL";  // 384 and 576 dots

DocumentBlock barcode(const QByteArray &payload, int type = 7, ETextAlignment alignment = AlignLeft)
{
    return barcodeBlock(type, payload, alignment);
}

/// What can be printed in each symbology.
QByteArray payloadOf(Symbology symbology, Paper::Code::Variant variant)
{
    switch (symbology) {
        case Symbology::Ean8:
            return "1234567";
        case Symbology::Codabar:
            return "A123B";
        case Symbology::Gs1_128:
            return "0104012345678901";
        case Symbology::GS1DataBar:
            return variant == Paper::Code::Expanded ? "0104012345678901" : "0401234567890";
        case Symbology::Ean13:
            return "401234567890";
        case Symbology::UpcA:
            return "01234567890";
        default:
            return "123456";
    }
}

}  // namespace

class TestPrintLayoutCodes : public QObject
{
    Q_OBJECT

    /// The row of the one code.
    static PrintLayout::Row rowOf(const PrintLayout &layout)
    {
        for (const PrintLayout::Row &row : layout.rows) {
            if (row.kind == PrintLayout::Row::Code)
                return row;
        }
        return {};
    }

private Q_SLOTS:
    void barcodeStandsBetweenFeeds()
    {
        const PrintLayout layout = layoutOf(barcode("12"), targetOf(general));
        QCOMPARE(textsOf(layout), (QStringList{"[feed 8]", "[code]", "[feed 8]"}));
        const Paper::Code code = layout.codes.first();
        QCOMPARE(code.symbology, Symbology::Code128);
        QCOMPARE(code.payload, QByteArray("12"));
        QCOMPARE(code.module, QSize(3, 80));
        QCOMPARE(code.modules.height(), 1);
        QVERIFY(code.modules.width() > 40);
        const PrintLayout::Row row = rowOf(layout);
        QCOMPARE(row.height, 80);
        QCOMPARE(row.block, 1);
        QCOMPARE(row.line, 0);
    }

    void qrCodeStandsInItsQuietZone()
    {
        const PrintLayout layout = layoutOf(qrBlock("abc"), targetOf(general));
        QCOMPARE(textsOf(layout), (QStringList{"[feed 24]", "[code]", "[feed 24]"}));
        const Paper::Code code = layout.codes.first();
        QCOMPARE(code.symbology, Symbology::QrCode);
        QCOMPARE(code.modules, QSize(21, 21));
        QCOMPARE(code.module, QSize(6, 6));
        QCOMPARE(rowOf(layout).height, 126);
    }

    void symbologiesOfNumbers_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("symbology");
        QTest::addColumn<int>("variant");
        const auto add = [](int number, Symbology symbology,
                            Paper::Code::Variant variant = Paper::Code::Usual) {
            QTest::addRow("%d", number) << number << int(symbology) << int(variant);
        };
        add(1, Symbology::UpcE);
        add(2, Symbology::UpcA);
        add(3, Symbology::Ean8);
        add(4, Symbology::Ean13);
        add(5, Symbology::Code39);
        add(6, Symbology::Itf);
        add(7, Symbology::Code128);
        add(8, Symbology::Code93);
        add(9, Symbology::Codabar);
        add(10, Symbology::Gs1_128);
        add(11, Symbology::GS1DataBar);
        add(12, Symbology::GS1DataBar);
        add(13, Symbology::GS1DataBar, Paper::Code::Limited);
        add(14, Symbology::GS1DataBar, Paper::Code::Expanded);
        add(65, Symbology::UpcA);
        add(66, Symbology::UpcE);
        add(67, Symbology::Ean13);
        add(68, Symbology::Ean8);
        add(69, Symbology::Code39);
        add(70, Symbology::Itf);
        add(71, Symbology::Codabar);
        add(72, Symbology::Code93);
        add(73, Symbology::Code128);
        add(74, Symbology::Gs1_128);
        add(75, Symbology::GS1DataBar);
        add(76, Symbology::GS1DataBar);
        add(77, Symbology::GS1DataBar, Paper::Code::Limited);
        add(78, Symbology::GS1DataBar, Paper::Code::Expanded);
        add(79, Symbology::Code128);
    }
    void symbologiesOfNumbers()
    {
        QFETCH(int, number);
        QFETCH(int, symbology);
        QFETCH(int, variant);
        const QByteArray payload = payloadOf(static_cast<Symbology>(symbology),
                                             static_cast<Paper::Code::Variant>(variant));
        const PrintLayout layout = layoutOf(barcode(payload, number), targetOf(general, 1));
        QCOMPARE(notesOf(layout), QStringList());
        QCOMPARE(layout.codes.size(), 1);
        QCOMPARE(int(layout.codes.first().symbology), symbology);
        QCOMPARE(int(layout.codes.first().variant), variant);
    }

    void anyOtherNumberIsAnError()
    {
        const PrintTarget target = targetOf(general);
        int known = 0;
        for (int number = -1; number <= 300; ++number) {
            if (number == 0)
                continue;
            const bool isKnown = (number >= 1 && number <= 14) || (number >= 65 && number <= 79);
            known += isKnown ? 1 : 0;
            const PrintLayout layout =
                layoutOf(documentOf({textBlock("a"), barcode("1", number)}), target);
            QCOMPARE(
                layout.error,
                isKnown
                    ? QString()
                    : QString("block 2: the symbology %1 of a barcode isn't known").arg(number));
        }
        QCOMPARE(known, 29);
    }

    void whatIsLaidOutBesidesAnErrorIsThere()
    {
        const PrintLayout layout = layoutOf(
            documentOf({textBlock("a"), barcode("1", 99), barcode("1", 98), textBlock("b")}),
            targetOf(general));
        QCOMPARE(textsOf(layout), (QStringList{"a", "[fault]", "[fault]", "b"}));
        QCOMPARE(layout.error, QString("block 2: the symbology 99 of a barcode isn't known"));
        QCOMPARE(layout.faults.at(0).cause, QString("The symbology 99 isn't known"));
        QCOMPARE(layout.faults.at(1).cause, QString("The symbology 98 isn't known"));
    }

    void numberNullIsNone()
    {
        const PrintLayout layout = layoutOf(barcode("1", 0), targetOf(general));
        QCOMPARE(layout.error, QString());
        QCOMPARE(layout.rows.size(), size_t(0));
        QCOMPARE(notesOf(layout),
                 QStringList{"block 1: the block isn't printed: its symbology isn't set"});
    }

    void faultsAreRowsAndNotes_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("cause");
        QTest::newRow("beyond ASCII")
            << QByteArray("\xD0\x96") << 7 << "Code 128 holds ASCII characters only";
        QTest::newRow("empty") << QByteArray() << 7 << "The payload is empty";
        QTest::newRow("no number") << QByteArray("abc") << 4 << "It needs 12 or 13 digits";
        QTest::newRow("too wide") << QByteArray(15, 'a') << 7 << "It doesn't fit the paper";
        QTest::newRow("too long") << QByteArray(99, 'a') << 7
                                  << "Input too long (60 symbol character maximum)";
    }
    void faultsAreRowsAndNotes()
    {
        QFETCH(QByteArray, payload);
        QFETCH(int, type);
        QFETCH(QString, cause);
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("a"), barcode(payload, type), textBlock("b")}),
                     targetOf(general));
        QCOMPARE(textsOf(layout), (QStringList{"a", "[fault]", "b"}));
        const PrintLayout::Fault fault = layout.faults.first();
        QCOMPARE(fault.what, QString("Barcode"));
        QCOMPARE(fault.cause, cause);
        QCOMPARE(fault.payload, payload);
        QCOMPARE(layout.rows[1].height + layout.rows[1].feed, 0);
        QCOMPARE(notesOf(layout), QStringList{"block 2: Barcode: " + cause});
        QVERIFY(layout.notes.first().isLoss);
        QCOMPARE(layout.error, QString());
    }

    void qrCodeThatIsTooLargeIsAFault()
    {
        const PrintLayout empty = layoutOf(qrBlock(""), targetOf(general));
        QCOMPARE(notesOf(empty), QStringList{"block 1: QR code: The payload is empty"});
        const PrintLayout layout = layoutOf(qrBlock(QByteArray(2954, '\xFF')), targetOf(general));
        QCOMPARE(textsOf(layout), QStringList{"[fault]"});
        QCOMPARE(layout.faults.first().what, QString("QR code"));
        QCOMPARE(layout.notes.size(), 1);
        // The largest code is 177 modules; two dots each are 354.
        const PrintLayout largest = layoutOf(qrBlock(QByteArray(2953, '\xFF')), targetOf(general));
        QCOMPARE(largest.codes.first().module, QSize(2, 2));
        QCOMPARE(notesOf(largest), QStringList());
    }

    /// 11 modules for each character, with start, check and stop 35 more; 10 on both sides.
    void moduleIsTheLargestThatFits_data()
    {
        QTest::addColumn<int>("characters");
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("dots");
        // Paper of 60 mm is 480 dots, the line 384.
        QTest::newRow("three dots") << 8 << 0 << 3;      // 123: 369 and 429
        QTest::newRow("just not three") << 9 << 0 << 2;  // 134: 402
        QTest::newRow("two dots") << 14 << 0 << 2;       // 189: 378 and 418
        QTest::newRow("just not two") << 15 << 0 << 0;   // 200: 400
        // Paper of 80 mm is 639 dots, the line 576.
        QTest::newRow("wide, three dots") << 14 << 1 << 3;      // 189: 567 and 627
        QTest::newRow("wide, just not three") << 15 << 1 << 2;  // 200: 600
        QTest::newRow("wide, two dots") << 23 << 1 << 2;        // 288: 576 and 616
        QTest::newRow("wide, just not two") << 24 << 1 << 0;    // 299: 598
    }
    void moduleIsTheLargestThatFits()
    {
        QFETCH(int, characters);
        QFETCH(int, paper);
        QFETCH(int, dots);
        const PrintLayout layout =
            layoutOf(barcode(QByteArray(characters, 'a')), targetOf(general, paper));
        QCOMPARE(layout.codes.isEmpty() ? 0 : layout.codes.first().module.width(), dots);
        if (dots > 0)
            QCOMPARE(layout.codes.first().modules.width(), 35 + 11 * characters);
    }

    void modulesOfQrCodes_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::addColumn<int>("modules");
        QTest::addColumn<int>("dots");
        // 384 dots.
        QTest::newRow("four") << 500 << 77 << 4;
        QTest::newRow("six") << 10 << 21 << 6;
        QTest::newRow("three") << 900 << 101 << 3;
        QTest::newRow("two") << 2000 << 149 << 2;
    }
    void modulesOfQrCodes()
    {
        QFETCH(int, bytes);
        QFETCH(int, modules);
        QFETCH(int, dots);
        const PrintLayout layout = layoutOf(qrBlock(QByteArray(bytes, '\xFE')), targetOf(general));
        QCOMPARE(layout.codes.first().modules.width(), modules);
        QCOMPARE(layout.codes.first().module, QSize(dots, dots));
        QCOMPARE(layout.rows.front().height, 4 * dots);
    }

    /// As much correction as costs no larger code. The printer is told it, so that it draws the
    /// same.
    void correctionLevelIsTold()
    {
        const SymbologyDrawer drawer;
        QSet<char> levels;
        for (int size = 1; size < 200; size += 3) {
            const PrintLayout layout =
                layoutOf(qrBlock(QByteArray(size, '\xFE')), targetOf(general));
            const Paper::Code code = layout.codes.first();
            Paper::Code again = code;
            drawer.draw(again);
            QCOMPARE(again.fault, QString());
            QCOMPARE(again.modules, code.modules);
            QCOMPARE(again.rows, code.rows);
            levels.insert(code.correctionLevel);
        }
        QCOMPARE(levels, (QSet<char>{'L', 'M', 'Q', 'H'}));
    }

    void placeHasTheQuietZoneOnTheLine_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("left");
        // 57 modules of 3 dots are 171, with 10 modules on both sides 231, of 384.
        QTest::newRow("left") << int(AlignLeft) << 30;
        QTest::newRow("centre") << int(AlignCenter) << 76 + 30;
        QTest::newRow("right") << int(AlignRight) << 153 + 30;
        QTest::newRow("justified") << int(AlignJustify) << 30;
        QTest::newRow("unknown") << 9 << 30;
    }
    void placeHasTheQuietZoneOnTheLine()
    {
        QFETCH(int, alignment);
        QFETCH(int, left);
        const PrintLayout layout =
            layoutOf(barcode("ab", 7, static_cast<ETextAlignment>(alignment)), targetOf(general));
        QCOMPARE(layout.codes.first().modules.width(), 57);
        QCOMPARE(rowOf(layout).left, left);
    }

    /// The quiet zone ends at the paper's edge, not at the line's.
    void placeOfACodeAsWideAsTheLine()
    {
        const PrintLayout layout = layoutOf(barcode(QByteArray(8, 'a')), targetOf(general));
        QCOMPARE(rowOf(layout).left, (384 - 369) / 2);
    }

    void placeOnStarIsThatOfItsAlignment_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("left");
        // 171 of 576 dots.
        QTest::newRow("left") << int(AlignLeft) << 0;
        QTest::newRow("centre") << int(AlignCenter) << 202;
        QTest::newRow("right") << int(AlignRight) << 405;
    }
    void placeOnStarIsThatOfItsAlignment()
    {
        QFETCH(int, alignment);
        QFETCH(int, left);
        const auto align = static_cast<ETextAlignment>(alignment);
        const PrintTarget star = targetOf("TSP-TUP");
        const PrintLayout layout = layoutOf(barcode("ab", 7, align), star);
        QVERIFY(isDrawnByPrinter(star.profile(), layout.codes.first()));
        QCOMPARE(rowOf(layout).left, left);
        // One that it gets as a picture stands as everywhere else.
        const PrintTarget plain = changedTarget("TSP-TUP", R"("drawnCodes": {})");
        const PrintLayout picture = layoutOf(barcode("ab", 7, align), plain);
        QVERIFY(!isDrawnByPrinter(plain.profile(), picture.codes.first()));
        const int margin = rowOf(picture).left;
        QCOMPARE(margin, alignment == AlignLeft ? 30 : alignment == AlignCenter ? 202 : 375);
    }

    void printerDrawsWhatItKnows_data()
    {
        QTest::addColumn<QString>("facts");
        QTest::addColumn<bool>("isDrawn");
        QTest::newRow("any") << R"("drawnCodes": {"code128": 255})" << true;
        QTest::newRow("as long") << R"("drawnCodes": {"code128": 2})" << true;
        QTest::newRow("too long") << R"("drawnCodes": {"code128": 1})" << false;
        QTest::newRow("another") << R"("drawnCodes": {"code39": 255})" << false;
        QTest::newRow("none") << R"("drawnCodes": {})" << false;
    }
    void printerDrawsWhatItKnows()
    {
        QFETCH(QString, facts);
        QFETCH(bool, isDrawn);
        const PrintTarget target = changedTarget(general, qPrintable(facts));
        const PrintLayout layout = layoutOf(barcode("ab"), target);
        QCOMPARE(isDrawnByPrinter(target.profile(), layout.codes.first()), isDrawn);
        QCOMPARE(notesOf(layout), QStringList());
    }

    // The printer would obey 10 04 and 10 05, and Star's 1B 06 01, even where they are counts.
    void countsThatAreCommandsArentSent_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("size");
        QTest::addColumn<char>("first");
        QTest::addColumn<bool>("isDrawn");
        QTest::newRow("10 04") << QString(general) << 0x0410 - 3 << '7' << false;
        QTest::newRow("10 05") << QString(general) << 0x0510 - 3 << '7' << false;
        QTest::newRow("0F 04") << QString(general) << 0x040F - 3 << '7' << true;
        QTest::newRow("11 04") << QString(general) << 0x0411 - 3 << '7' << true;
        QTest::newRow("1B 06 01") << QString("TSP-TUP") << 0x061B << '\x01' << false;
        QTest::newRow("1B 06 37") << QString("TSP-TUP") << 0x061B << '7' << true;
    }
    void countsThatAreCommandsArentSent()
    {
        QFETCH(QString, model);
        QFETCH(int, size);
        QFETCH(char, first);
        QFETCH(bool, isDrawn);
        const QString facts = R"("drawnCodes": {"qrCode": 2953}, "mostModule": 6)";
        const PrintTarget target = changedTarget(qPrintable(model), qPrintable(facts));
        const PrintLayout layout = layoutOf(qrBlock(first + QByteArray(size - 1, '7')), target);
        QCOMPARE(isDrawnByPrinter(target.profile(), layout.codes.first()), isDrawn);
    }

    void moduleIsOneThatThePrinterDraws()
    {
        const PrintTarget small = changedTarget(general, R"("leastModule": 1, "mostModule": 2)");
        QCOMPARE(layoutOf(barcode("ab"), small).codes.first().module.width(), 2);
        QCOMPARE(layoutOf(qrBlock("ab"), small).codes.first().module.width(), 2);
        // What it can't draw in any of these goes as a picture.
        const PrintTarget large = changedTarget(general, R"("leastModule": 7, "mostModule": 8)");
        const PrintLayout layout = layoutOf(qrBlock("ab"), large);
        QCOMPARE(layout.codes.first().module.width(), 6);
        QVERIFY(!isDrawnByPrinter(large.profile(), layout.codes.first()));
    }

    void codeNeedsThePrinterOrPictures()
    {
        const PrintTarget drawing = changedTarget(general, R"("rasterCommand": "None")");
        QCOMPARE(notesOf(layoutOf(barcode("ab"), drawing)), QStringList());
        const PrintTarget none =
            changedTarget(general, R"("rasterCommand": "None", "drawnCodes": {})");
        const PrintLayout layout = layoutOf(barcode("ab"), none);
        QCOMPARE(textsOf(layout), QStringList{"[fault]"});
        QCOMPARE(notesOf(layout), QStringList{"block 1: Barcode: The model prints none"});
    }

    void digitsOfItfGoInPairs()
    {
        const PrintLayout layout = layoutOf(barcode("12345", 6), targetOf(general));
        QCOMPARE(layout.codes.first().payload, QByteArray("012345"));
        QCOMPARE(layoutOf(barcode("1234", 6), targetOf(general)).codes.first().payload,
                 QByteArray("1234"));
    }

    void payloadOfABlockIsDecoded()
    {
        const QByteArray bytes("\x01\x00\xFFq", 4);
        QCOMPARE(layoutOf(qrBlock(bytes), targetOf(general)).codes.first().payload, bytes);
    }
};

QTEST_GUILESS_MAIN(TestPrintLayoutCodes)
#include "tst_printlayout_codes.moc"
