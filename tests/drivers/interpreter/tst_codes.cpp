// Barcodes and two-dimensional codes: what they hold and where they stand.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;
using printerslib::drivers::CodeDrawer;
using Symbology = Paper::Symbology;

namespace {

/// Draws codes of a size that tests know, without a library for that.
class FakeDrawer : public CodeDrawer
{
public:
    explicit FakeDrawer(QSize modules) : m_modules(modules) {}
    void draw(Paper::Code &code) const override
    {
        if (code.payload == "bad") {
            code.fault = "It is bad";
            return;
        }
        code.modules = m_modules;
        code.rows = QByteArray((m_modules.width() + 7) / 8 * m_modules.height(), '\xFF');
    }

private:
    const QSize m_modules;
};

StreamInterpreter::Options drawnBy(const FakeDrawer &drawer)
{
    StreamInterpreter::Options options;
    options.codes = &drawer;
    return options;
}

QByteArray symbol(char family, char function, const QByteArray &data)
{
    const QByteArray rest = QByteArray(1, family) + function + data;
    QByteArray command = bytes("\x1D(k");
    command += char(rest.size() & 0xFF);
    command += char(rest.size() >> 8);
    return command + rest;
}

QByteArray qrCode(const QByteArray &data)
{
    return symbol('1', 'P', '0' + data) + symbol('1', 'Q', "0");
}

}  // namespace

class TestCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barcodes_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("symbology");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QByteArray &stream, Symbology symbology,
                            const QByteArray &payload, const char *text) {
            QTest::newRow(name) << bytes("\x1Dk") + stream << int(symbology) << payload
                                << QString(text);
        };
        row("UPC-A",
            bytes("\0"
                  "01234567890\0"),
            Symbology::UpcA, "012345678905", "[UPC-A: 012345678905]");
        row("UPC-E",
            bytes("\x01"
                  "0123456\0"),
            Symbology::UpcE, "0123456", "[UPC-E: 0123456]");
        row("EAN-13",
            bytes("\x02"
                  "590123412345\0"),
            Symbology::Ean13, "5901234123457", "[EAN-13: 5901234123457]");
        row("EAN-13 with its check digit",
            bytes("\x43\x0D"
                  "5901234123457"),
            Symbology::Ean13, "5901234123457", "[EAN-13: 5901234123457]");
        row("EAN-8",
            bytes("\x44\x07"
                  "9638507"),
            Symbology::Ean8, "96385074", "[EAN-8: 96385074]");
        row("EAN-8 of letters",
            bytes("\x44\x07"
                  "96385ab"),
            Symbology::Ean8, "96385ab", "[EAN-8: 96385ab]");
        row("Code 39", bytes("\x45\x05*AB1*"), Symbology::Code39, "*AB1*", "[Code 39: *AB1*]");
        row("ITF",
            bytes("\x05"
                  "1234\0"),
            Symbology::Itf, "1234", "[ITF: 1234]");
        row("Codabar",
            bytes("\x47\x04"
                  "A12B"),
            Symbology::Codabar, "A12B", "[Codabar: A12B]");
        row("Code 93",
            bytes("\x48\x02"
                  "AB"),
            Symbology::Code93, "AB", "[Code 93: AB]");
        row("Code 128, set B", bytes("\x49\x05{BNo."), Symbology::Code128, "No.",
            "[Code 128: No.]");
        row("Code 128, set C", bytes("\x49\x05{C\x0C\x22\x05"), Symbology::Code128, "123405",
            "[Code 128: 123405]");
        row("Code 128, sets in turn", bytes("\x49\x0A{BNo{C\x0C{Bz"), Symbology::Code128, "No12z",
            "[Code 128: No12z]");
        row("Code 128, brace", bytes("\x49\x05{Ba{{"), Symbology::Code128, "a{", "[Code 128: a{]");
        row("Code 128, open brace", bytes("\x49\x04{Ba{"), Symbology::Code128, "a{",
            "[Code 128: a{]");
        row("Code 128, FNC1 inside", bytes("\x49\x06{Ba{1b"), Symbology::Code128,
            "a\x1D"
            "b",
            "[Code 128: a\\x1Db]");
        row("Code 128, GS in front", bytes("\x49\x04{A\x1D\x42"), Symbology::Code128, "\x1D\x42",
            "[Code 128: \\x1DB]");
        row("Code 128, FNC1 in front", bytes("\x49\x05{B{1b"), Symbology::Code128, "b",
            "[Code 128: b]");
        row("Code 128, sets by itself", bytes("\x4F\x02{B"), Symbology::Code128, "{B",
            "[Code 128: {B]");
        row("GS1-128", bytes("\x4A\x08(01)1234"), Symbology::Gs1_128, "(01)1234",
            "[GS1-128: (01)1234]");
        row("GS1 DataBar",
            bytes("\x4B\x02"
                  "12"),
            Symbology::GS1DataBar, "12", "[GS1 DataBar: 12]");
    }
    void barcodes()
    {
        QFETCH(QByteArray, stream);
        QFETCH(int, symbology);
        QFETCH(QByteArray, payload);
        QFETCH(QString, text);
        const Paper paper = paperOf(stream);
        QCOMPARE(paper.codes.size(), 1);
        QCOMPARE(int(paper.codes.first().symbology), symbology);
        QCOMPARE(paper.codes.first().payload, payload);
        QCOMPARE(paper.toText(), text + '\n');
        QCOMPARE(notesOf(paper), QStringList());
    }

    void everyNumberOfGsK_data()
    {
        using Variant = Paper::Code::Variant;
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("symbology");
        QTest::addColumn<int>("variant");
        const auto row = [](int number, Symbology symbology, Variant variant = Paper::Code::Usual) {
            QTest::addRow("%d", number) << number << int(symbology) << int(variant);
        };
        const Symbology bothForms[] = {Symbology::UpcA,   Symbology::UpcE,   Symbology::Ean13,
                                       Symbology::Ean8,   Symbology::Code39, Symbology::Itf,
                                       Symbology::Codabar};
        int number = 0;
        for (const Symbology symbology : bothForms) {
            row(number, symbology);
            row(65 + number++, symbology);
        }
        row(72, Symbology::Code93);
        row(73, Symbology::Code128);
        row(74, Symbology::Gs1_128);
        row(75, Symbology::GS1DataBar);
        row(76, Symbology::GS1DataBar);
        row(77, Symbology::GS1DataBar, Paper::Code::Limited);
        row(78, Symbology::GS1DataBar, Paper::Code::Expanded);
        row(79, Symbology::Code128);
    }
    void everyNumberOfGsK()
    {
        QFETCH(int, number);
        const QByteArray data = "1234";
        const QByteArray rest = number < 65 ? data + '\0' : char(data.size()) + data;
        const Paper paper = paperOf(bytes("\x1Dk") + char(number) + rest + "z\n");
        QCOMPARE(paper.codes.size(), 1);
        QTEST(int(paper.codes.first().symbology), "symbology");
        QTEST(int(paper.codes.first().variant), "variant");
        QCOMPARE(paper.codes.first().sent, data);
        QVERIFY(paper.toText().endsWith(": 1234]\nz\n"));
    }

    void withoutADrawerCodesTakeNoPlace()
    {
        const Paper paper =
            paperOf(bytes("\x1DH\x02\x1Dk\x05"
                          "12\0z\n"));
        QVERIFY(paper.codes.first().place.isEmpty());
        QVERIFY(paper.codes.first().modules.isEmpty());
        QCOMPARE(cellOf(paper, u'z').top, 0);
        QCOMPARE(paper.cells.size(), 1);
        QCOMPARE(paper.toText(), QString("[ITF: 12]\nz\n"));
    }

    void codeIsNotPrintedInPartAtThePapersEnd()
    {
        const FakeDrawer drawer({95, 1});
        const QByteArray feeds = bytes("\x1BJ\xC8").repeated(Paper::longest / 200 - 1);
        const Paper paper = paperOf(feeds + bytes("\x1BJ\x64\x1DkI\x06"
                                                  "{B1234"),
                                    {}, drawnBy(drawer));
        QVERIFY(paper.isTooLong);
        QVERIFY(paper.codes.isEmpty());
        QCOMPARE(notesOf(paper),
                 QStringList("the paper is longer than 80000 dots; what comes is left out"));
    }

    void placeOfABarcode()
    {
        const FakeDrawer drawer({95, 1});
        const auto codeOf = [&drawer](const QByteArray &settings) {
            const Paper paper = paperOf(settings + bytes("\x1Dk\x05"
                                                         "12\0"),
                                        {}, drawnBy(drawer));
            return paper.codes.first();
        };
        QCOMPARE(codeOf("").place, QRect(0, 0, 285, 162));
        QCOMPARE(codeOf("").module, QSize(3, 162));
        QCOMPARE(codeOf(bytes("\x1Dw\x02\x1Dh\x50")).place, QRect(0, 0, 190, 80));
        QCOMPARE(codeOf(bytes("\x1Dw\x02\x1Dh\x50\x1B@")).place, QRect(0, 0, 285, 162));
        QCOMPARE(codeOf(bytes("\x1Dw\x02\x1B\x61\x01")).place, QRect(193, 0, 190, 162));
        QCOMPARE(codeOf(bytes("\x1Dw\x02\x1B\x61\x02")).place, QRect(386, 0, 190, 162));
        QCOMPARE(codeOf(bytes("\x1Dw\x02\x1DL\x0A\0")).place, QRect(10, 0, 190, 162));
        QCOMPARE(int(codeOf("").quarterTurns), 0);
        QCOMPARE(int(codeOf(bytes("\x1B{\x01")).quarterTurns), 2);
        QCOMPARE(codeOf(bytes("\x1B{\x01\x1Dw\x02")).place, QRect(386, 0, 190, 162));
    }

    void settingsOutsideTheirRange()
    {
        const FakeDrawer drawer({10, 1});
        const Paper paper = paperOf(bytes("\x1Dw\x09\x1Dw\0\x1Dh\0\x1Dk\x05"
                                          "12\0"),
                                    {}, drawnBy(drawer));
        QCOMPARE(paper.codes.first().module, QSize(3, 162));
        QCOMPARE(notesOf(paper), QStringList({"GS w has no width 9", "GS w has no width 0"}));
    }

    void digitsOfABarcode_data()
    {
        QTest::addColumn<char>("position");
        QTest::addColumn<QVector<int>>("tops");
        QTest::addColumn<int>("barsTop");
        QTest::addColumn<int>("length");
        QTest::newRow("none") << '\0' << QVector<int>() << 0 << 162;
        QTest::newRow("above") << '\x01' << QVector<int>({0, 0}) << 24 << 186;
        QTest::newRow("below") << '2' << QVector<int>({162, 162}) << 0 << 186;
        QTest::newRow("both") << '\x03' << QVector<int>({0, 0, 186, 186}) << 24 << 210;
    }
    void digitsOfABarcode()
    {
        QFETCH(char, position);
        QFETCH(QVector<int>, tops);
        QFETCH(int, barsTop);
        QFETCH(int, length);
        const FakeDrawer drawer({100, 1});
        const Paper paper = paperOf(bytes("\x1DH") + position +
                                        bytes("\x1Dk\x05"
                                              "12\0"),
                                    {}, drawnBy(drawer));
        QVector<int> found;
        for (const Paper::Cell &cell : paper.cells)
            found.append(cell.top);
        QCOMPARE(found, tops);
        QCOMPARE(paper.codes.first().place.top(), barsTop);
        QCOMPARE(paper.length, length);
        if (!found.isEmpty())
            QCOMPARE(paper.cells.first().left, 138);
        // The digits are part of the code, and not said twice.
        QCOMPARE(paper.toText(), QString("[ITF: 12]\n"));
    }

    void fontOfTheDigits()
    {
        const FakeDrawer drawer({100, 1});
        const Paper paper = paperOf(bytes("\x1DH\x02\x1D\x66\x01\x1B!\x38\x1Dk\x05"
                                          "12\0"),
                                    {}, drawnBy(drawer));
        QCOMPARE(placeOf(paper.cells.first()), QRect(141, 162, 9, 17));
        QCOMPARE(int(paper.cells.first().effects), 0);
    }

    void codeThatIsTooWideIsNotPrinted()
    {
        const FakeDrawer drawer({193, 1});
        const Paper paper = paperOf(bytes("\x1Dk\x05"
                                          "12\0z\n"),
                                    {}, drawnBy(drawer));
        QCOMPARE(paper.codes.first().fault, QString("579 dots are wider than the line of 576"));
        QCOMPARE(notesOf(paper), QStringList("a code isn't printed: 579 dots are wider than the "
                                             "line of 576"));
        QVERIFY(paper.codes.first().place.isEmpty());
        QCOMPARE(cellOf(paper, u'z').top, 0);
        QCOMPARE(paper.toText(), QString("z\n"));
    }

    void faultOfTheDrawerIsNoted()
    {
        const FakeDrawer drawer({10, 1});
        const Paper paper = paperOf(bytes("\x1Dk\x45\x03"
                                          "bad"),
                                    {}, drawnBy(drawer));
        QCOMPARE(notesOf(paper), QStringList("a code isn't printed: It is bad"));
        QCOMPARE(paper.codes.first().fault, QString("It is bad"));
        QCOMPARE(paper.length, 0);
    }

    void codeBehindTextGoesBelowIt()
    {
        const Paper paper =
            paperOf(bytes("a\x1Dk\x05"
                          "12\0"));
        QCOMPARE(paper.toText(), QString("a\n[ITF: 12]\n"));
        QCOMPARE(notesOf(paper),
                 QStringList("GS k doesn't begin a line; the line before it is printed"));
    }

    void qrCodes()
    {
        const FakeDrawer drawer({21, 21});
        const Paper paper = paperOf(qrCode("hello"), {}, drawnBy(drawer));
        const Paper::Code code = paper.codes.first();
        QCOMPARE(code.symbology, Symbology::QrCode);
        QCOMPARE(code.payload, QByteArray("hello"));
        QCOMPARE(code.sent, QByteArray("hello"));
        QCOMPARE(code.module, QSize(3, 3));
        QCOMPARE(code.correctionLevel, 'L');
        QCOMPARE(code.place, QRect(0, 0, 63, 63));
        QCOMPARE(paper.length, 63);
        QCOMPARE(paper.toText(), QString("[QR: hello]\n"));
    }

    void propertiesOfQrCodes()
    {
        const QByteArray settings =
            symbol('1', 'A', bytes("1\0")) + symbol('1', 'C', "\x06") + symbol('1', 'E', "3");
        const Paper::Code code = paperOf(settings + qrCode("a")).codes.first();
        QCOMPARE(code.variant, Paper::Code::ModelOne);
        QCOMPARE(code.module, QSize(6, 6));
        QCOMPARE(code.correctionLevel, 'H');
        const Paper::Code micro =
            paperOf(symbol('1', 'A', bytes("3\0")) + qrCode("a")).codes.first();
        QCOMPARE(micro.symbology, Symbology::MicroQrCode);
        const Paper::Code reset = paperOf(settings + bytes("\x1B@") + qrCode("a")).codes.first();
        QCOMPARE(reset.module, QSize(3, 3));
        QCOMPARE(notesOf(paperOf(symbol('1', 'C', bytes("\0")) + qrCode("a"))),
                 QStringList("GS ( k has no module of 0 dots"));
    }

    void correctionOfQrCodes()
    {
        QByteArray levels;
        for (const char *level : {"0", "1", "2", "3", "4"})
            levels += paperOf(symbol('1', 'E', level) + qrCode("a")).codes.first().correctionLevel;
        QCOMPARE(levels, QByteArray("LMQHL"));
    }

    void qrCodeIsPrintedAsOftenAsItIsAsked()
    {
        const QByteArray print = symbol('1', 'Q', "0");
        QCOMPARE(textOf(qrCode("a") + print), QString("[QR: a]\n[QR: a]\n"));
        QCOMPARE(notesOf(paperOf(print)), QStringList("GS ( k finds no data"));
        QCOMPARE(notesOf(paperOf(qrCode("a") + bytes("\x1B@") + print)).size(), 1);
        QCOMPARE(textOf(qrCode("a") + qrCode("b")), QString("[QR: a]\n[QR: b]\n"));
    }

    void payloadsAsText()
    {
        QCOMPARE(textOf(qrCode(QByteArray("Жук"))), QString::fromUtf8("[QR: Жук]\n"));
        QCOMPARE(textOf(qrCode("\xC6\xFF")), QString::fromUtf8("[QR: Æÿ]\n"));
        QCOMPARE(textOf(qrCode(bytes("a\nb\0"))), QString("[QR: a\\x0Ab\\x00]\n"));
        // A terminal obeys these, too: U+009B begins a command as ESC [ does.
        QCOMPARE(textOf(qrCode(bytes("a\x7F\x9B\xE9"))), QString("[QR: a\\x7F\\x9B\u00E9]\n"));
        QCOMPARE(textOf(qrCode(bytes("\xC2\x9B\xC2\x85"))), QString("[QR: \\x9B\\x85]\n"));
    }

    void pdf417()
    {
        const FakeDrawer drawer({103, 9});
        const QByteArray settings = symbol('0', 'A', "\x02") + symbol('0', 'B', "\x09") +
                                    symbol('0', 'C', "\x02") + symbol('0', 'D', "\x04") +
                                    symbol('0', 'E', "05") + symbol('0', 'F', "\x01");
        const QByteArray print = symbol('0', 'P', "0text") + symbol('0', 'Q', "0");
        const Paper paper = paperOf(settings + print, {}, drawnBy(drawer));
        const Paper::Code code = paper.codes.first();
        QCOMPARE(code.symbology, Symbology::Pdf417);
        QCOMPARE(code.grid, QSize(2, 9));
        QCOMPARE(code.module, QSize(2, 8));
        QCOMPARE(code.correctionLevel, '5');
        QCOMPARE(code.variant, Paper::Code::Compact);
        QCOMPARE(code.place, QRect(0, 0, 206, 72));
        QCOMPARE(paper.toText(), QString("[PDF417: text]\n"));
        QCOMPARE(paperOf(print).codes.first().grid, QSize(0, 0));
        QCOMPARE(paperOf(symbol('0', 'E', "1\x05") + print).codes.first().correctionLevel, '\0');
    }

    void otherSymbols_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("variant");
        QTest::newRow("MaxiCode") << symbol('2', 'P', "0abc") + symbol('2', 'Q', "0")
                                  << "[MaxiCode: abc]" << int(Paper::Code::Usual);
        QTest::newRow("DataBar stacked") << symbol('3', 'P', "0H123") + symbol('3', 'Q', "0")
                                         << "[GS1 DataBar: 123]" << int(Paper::Code::Stacked);
        QTest::newRow("DataBar stacked omni")
            << symbol('3', 'P', "0I123") + symbol('3', 'Q', "0") << "[GS1 DataBar: 123]"
            << int(Paper::Code::StackedOmni);
        QTest::newRow("DataBar expanded")
            << symbol('3', 'P', "0L123") + symbol('3', 'Q', "0") << "[GS1 DataBar: 123]"
            << int(Paper::Code::ExpandedStacked);
        QTest::newRow("Aztec") << symbol('5', 'B', bytes("\x01\0")) + symbol('5', 'P', "0abc") +
                                      symbol('5', 'Q', "0")
                               << "[Aztec: abc]" << int(Paper::Code::Compact);
        QTest::newRow("Data Matrix") << symbol('6', 'B', bytes("\x01\0\0")) +
                                            symbol('6', 'P', "0abc") + symbol('6', 'Q', "0")
                                     << "[Data Matrix: abc]" << int(Paper::Code::Rectangular);
    }
    void otherSymbols()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QString, text);
        QFETCH(int, variant);
        const Paper paper = paperOf(stream);
        QCOMPARE(paper.toText(), text + '\n');
        QCOMPARE(int(paper.codes.first().variant), variant);
    }

    void compositeSymbolsAreTold()
    {
        const Paper paper = paperOf(symbol('4', 'P', "0AAabc") + symbol('4', 'Q', "0"));
        QCOMPARE(notesOf(paper),
                 QStringList("a code isn't printed: composite symbols aren't drawn here"));
        QCOMPARE(paper.codes.size(), 1);
        QCOMPARE(paper.toText(), QString());
    }

    void codesInPageMode()
    {
        const FakeDrawer drawer({10, 10});
        const Paper paper = paperOf(bytes("\x1BL\x1D$\x32\0\x1B$\x14\0") + qrCode("a") + '\x0C', {},
                                    drawnBy(drawer));
        QCOMPARE(paper.codes.first().place, QRect(20, 20, 30, 30));
        const Paper upwards = paperOf(
            bytes("\x1BL\x1BW\0\0\0\0\x64\0\xC8\0\x1BT\x01\x1D$\x32\0") + qrCode("a") + '\x0C', {},
            drawnBy(drawer));
        QCOMPARE(upwards.codes.first().place, QRect(20, 170, 30, 30));
        QCOMPARE(int(upwards.codes.first().quarterTurns), 3);
    }

    void barcodesTurnWithThePage()
    {
        const FakeDrawer drawer({9, 1});
        const auto printed = [&drawer](char direction) {
            return paperOf(bytes("\x1BL\x1BW\0\0\0\0\x64\0\xC8\0\x1BT") + direction +
                               bytes("\x1D$\x32\0\x1Dw\x02\x1Dh\x14\x1Dk\x05"
                                     "12\0\x0C"),
                           {}, drawnBy(drawer))
                .codes.first();
        };
        QCOMPARE(printed('0').place, QRect(0, 30, 18, 20));
        QCOMPARE(printed('0').modules, QSize(9, 1));
        const Paper::Code down = printed('3');
        QCOMPARE(down.place, QRect(50, 0, 20, 18));
        QCOMPARE(down.modules, QSize(1, 9));
        QCOMPARE(down.module, QSize(20, 2));
        QCOMPARE(down.rows.size(), 9);
        QCOMPARE(int(down.quarterTurns), 1);
    }
};

QTEST_GUILESS_MAIN(TestCodes)
#include "tst_codes.moc"
