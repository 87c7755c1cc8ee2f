// The codes that printers draw by themselves: what stands in a picture of them is read by a program
// of others, which shares nothing with the library that draws them.
#include <zbar.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <thread>

#include "printerslib/drivers/symbologydrawer.h"

using printerslib::drivers::CodeDrawer;
using printerslib::drivers::Paper;
using printerslib::drivers::SymbologyDrawer;
using Symbology = Paper::Symbology;
using Code = Paper::Code;

Q_DECLARE_METATYPE(Symbology)
Q_DECLARE_METATYPE(Code::Variant)

namespace {

const CodeDrawer &drawer()
{
    static const SymbologyDrawer theDrawer;
    return theDrawer;
}

Code codeOf(Symbology symbology, const QByteArray &payload, Code::Variant variant = Code::Usual,
            char level = 0)
{
    Code code;
    code.symbology = symbology;
    code.payload = payload;
    code.variant = variant;
    code.correctionLevel = level;
    return code;
}

Code drawn(Code code)
{
    drawer().draw(code);
    return code;
}

bool isSet(const Code &code, int x, int y)
{
    const int bytesPerRow = (code.modules.width() + 7) / 8;
    return (code.rows.at(y * bytesPerRow + x / 8) >> (7 - x % 8) & 1) != 0;
}

QImage pictureOf(const Code &code, const QSize &module)
{
    constexpr int quiet = 40;
    const QSize size(code.modules.width() * module.width() + 2 * quiet,
                     code.modules.height() * module.height() + 2 * quiet);
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int y = 0; y < code.modules.height(); ++y) {
        for (int x = 0; x < code.modules.width(); ++x) {
            if (isSet(code, x, y))
                painter.fillRect(quiet + x * module.width(), quiet + y * module.height(),
                                 module.width(), module.height(), Qt::black);
        }
    }
    return image;
}

QSize moduleOf(const Code &code)
{
    if (code.symbology == Symbology::MaxiCode)
        return {1, 1};
    if (code.symbology == Symbology::Pdf417)
        return {3, 9};
    return {3, code.modules.height() == 1 ? 80 : 3};
}

/// Format and text as the reader gives them.
QString readBack(const Code &code)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("code.png");
    pictureOf(code, moduleOf(code)).save(file);
    QProcess reader;
    reader.start(ZXINGREADER_PROGRAM, {"-1", file});
    reader.waitForFinished();
    // "FILE FORMAT "TEXT""
    return QString::fromUtf8(reader.readAllStandardOutput()).mid(file.size()).trimmed();
}

/// The same by the other reader; ZXingReader 1.4 ends with an assertion of its own on stacked
/// codes.
QString readByZbar(const Code &code)
{
    const QImage picture = pictureOf(code, moduleOf(code));
    QByteArray bytes;
    for (int y = 0; y < picture.height(); ++y)
        bytes.append(reinterpret_cast<const char *>(picture.constScanLine(y)), picture.width());
    zbar::Image image(static_cast<unsigned>(picture.width()),
                      static_cast<unsigned>(picture.height()), "Y800", bytes.constData(),
                      static_cast<unsigned long>(bytes.size()));
    zbar::ImageScanner scanner;
    scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 1);
    scanner.scan(image);
    QString result;
    for (auto symbol = image.symbol_begin(); symbol != image.symbol_end(); ++symbol)
        result += QString::fromStdString(symbol->get_type_name() + ' ' + symbol->get_data());
    return result;
}

constexpr Symbology allSymbologies[] = {
    Symbology::UpcA,        Symbology::UpcE,    Symbology::Ean13,      Symbology::Ean8,
    Symbology::Code39,      Symbology::Itf,     Symbology::Codabar,    Symbology::Code93,
    Symbology::Code128,     Symbology::Gs1_128, Symbology::GS1DataBar, Symbology::QrCode,
    Symbology::MicroQrCode, Symbology::Pdf417,  Symbology::DataMatrix, Symbology::Aztec,
    Symbology::MaxiCode,    Symbology::Other,
};

constexpr Code::Variant allVariants[] = {
    Code::Usual,           Code::Limited, Code::Expanded, Code::Stacked,     Code::StackedOmni,
    Code::ExpandedStacked, Code::Compact, Code::ModelOne, Code::Rectangular, Code::OnlySetB,
};

/// Whether the rows are what the modules say, or there are none and a fault.
bool isWhole(const Code &code)
{
    const int bytesPerRow = (code.modules.width() + 7) / 8;
    if (code.fault.isEmpty())
        return !code.modules.isEmpty() && code.rows.size() == bytesPerRow * code.modules.height();
    return code.modules == QSize() && code.rows.isEmpty();
}

}  // namespace

class TestSymbologyDrawer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void payloadIsReadBack_data()
    {
        QTest::addColumn<Symbology>("symbology");
        QTest::addColumn<Code::Variant>("variant");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("read");
        const auto row = [](const char *name, Symbology symbology, const QByteArray &payload,
                            const QString &read, Code::Variant variant = Code::Usual) {
            QTest::newRow(name) << symbology << variant << payload << read;
        };
        row("UPC-A without check digit", Symbology::UpcA, "04210000526", "UPC-A \"042100005264\"");
        row("UPC-A with check digit", Symbology::UpcA, "042100005264", "UPC-A \"042100005264\"");
        row("UPC-E of a UPC-A", Symbology::UpcE, "04210000526", "UPC-E \"04252614\"");
        row("UPC-E of a UPC-A with check digit", Symbology::UpcE, "042100005264",
            "UPC-E \"04252614\"");
        row("UPC-E of 6 digits", Symbology::UpcE, "425261", "UPC-E \"04252614\"");
        row("UPC-E of 7 digits", Symbology::UpcE, "0425261", "UPC-E \"04252614\"");
        row("UPC-E of 8 digits", Symbology::UpcE, "04252614", "UPC-E \"04252614\"");
        row("EAN-13 without check digit", Symbology::Ean13, "460000000001",
            "EAN-13 \"4600000000015\"");
        row("EAN-13 with check digit", Symbology::Ean13, "4600000000015",
            "EAN-13 \"4600000000015\"");
        row("EAN-8 without check digit", Symbology::Ean8, "9031101", "EAN-8 \"90311017\"");
        row("EAN-8 with check digit", Symbology::Ean8, "90311017", "EAN-8 \"90311017\"");
        row("Code 39", Symbology::Code39, "ABC-123 $", "Code39 \"ABC-123 $\"");
        row("Code 39 with its stars", Symbology::Code39, "*ABC*", "Code39 \"ABC\"");
        row("ITF", Symbology::Itf, "12345678901234", "ITF \"12345678901234\"");
        row("Codabar", Symbology::Codabar, "A40156B", "Codabar \"40156\"");
        row("Code 93", Symbology::Code93, "CODE-93", "Code93 \"CODE-93\"");
        row("Code 128", Symbology::Code128, "aB-~ 1#z", "Code128 \"aB-~ 1#z\"");
        row("Code 128 of digits", Symbology::Code128, "1234567890", "Code128 \"1234567890\"");
        row("Code 128 of digits in set B", Symbology::Code128, "1234567890",
            "Code128 \"1234567890\"", Code::OnlySetB);
        row("Code 128 with a control character", Symbology::Code128, "A\tB", "Code128 \"A<HT>B\"");
        row("GS1-128 as it stands", Symbology::Gs1_128, "0104012345678901",
            "Code128 \"0104012345678901\"");
        row("GS1-128 in parentheses", Symbology::Gs1_128, "(01)04012345678901(10)AB1",
            "Code128 \"010401234567890110AB1\"");
        row("GS1-128 with FNC1", Symbology::Gs1_128,
            "\x1D"
            "10AB1\x1D"
            "0104012345678901",
            "Code128 \"10AB1<GS>0104012345678901\"");
        row("QR code", Symbology::QrCode, "https://example.org/?a=1",
            "QRCode \"https://example.org/?a=1\"");
        row("QR code of model 1", Symbology::QrCode, "abc", "QRCode \"abc\"", Code::ModelOne);
        row("Micro QR code", Symbology::MicroQrCode, "12345", "MicroQRCode \"12345\"");
        row("PDF417", Symbology::Pdf417, "receipt 1207", "PDF417 \"receipt 1207\"");
        row("compact PDF417", Symbology::Pdf417, "receipt 1207", "PDF417 \"receipt 1207\"",
            Code::Compact);
        row("Data Matrix", Symbology::DataMatrix, "receipt 1207", "DataMatrix \"receipt 1207\"");
        row("rectangular Data Matrix", Symbology::DataMatrix, "receipt 1207",
            "DataMatrix \"receipt 1207\"", Code::Rectangular);
        row("Aztec", Symbology::Aztec, "receipt 1207", "Aztec \"receipt 1207\"");
        row("MaxiCode", Symbology::MaxiCode, "receipt 1207", "MaxiCode \"receipt 1207\"");
        row("GS1 DataBar", Symbology::GS1DataBar, "0950110153000", "DataBar \"09501101530003\"");
        row("GS1 DataBar expanded", Symbology::GS1DataBar, "(01)09501101530003(10)AB",
            "DataBarExpanded \"(01)09501101530003(10)AB\"", Code::Expanded);
    }
    void payloadIsReadBack()
    {
        QFETCH(Symbology, symbology);
        QFETCH(Code::Variant, variant);
        QFETCH(QByteArray, payload);
        const Code code = drawn(codeOf(symbology, payload, variant));
        QCOMPARE(code.fault, QString());
        QVERIFY(!code.modules.isEmpty());
        QTEST(readBack(code), "read");
    }

    void stackedCodeIsReadBack_data()
    {
        QTest::addColumn<Code::Variant>("variant");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("read");
        QTest::newRow("stacked") << Code::Stacked << QByteArray("0950110153000")
                                 << "DataBar 0109501101530003";
        QTest::newRow("omnidirectional")
            << Code::StackedOmni << QByteArray("0950110153000") << "DataBar 0109501101530003";
        QTest::newRow("expanded") << Code::ExpandedStacked << QByteArray("(01)09501101530003(10)AB")
                                  << "DataBar-Exp 010950110153000310AB";
    }
    void stackedCodeIsReadBack()
    {
        QFETCH(Code::Variant, variant);
        QFETCH(QByteArray, payload);
        const Code code = drawn(codeOf(Symbology::GS1DataBar, payload, variant));
        QCOMPARE(code.fault, QString());
        QTEST(readByZbar(code), "read");
    }

    // No reader here knows it; its 79 modules are the symbology's.
    void limitedDataBarHasItsModules()
    {
        const Code code = drawn(codeOf(Symbology::GS1DataBar, "0950110153000", Code::Limited));
        QCOMPARE(code.fault, QString());
        QCOMPARE(code.modules, QSize(79, 1));
    }

    void everyByteOfAQrCodeIsReadBack()
    {
        QByteArray payload;
        for (int byte = 0xC0; byte <= 0xFF; ++byte)
            payload.append(static_cast<char>(byte));
        const QString text = QStringLiteral("Чек № 1482 на 1154,61 ₽");
        QCOMPARE(readByZbar(drawn(codeOf(Symbology::QrCode, text.toUtf8()))), "QR-Code " + text);
        QVERIFY(drawn(codeOf(Symbology::QrCode, payload)).fault.isEmpty());
        QVERIFY(drawn(codeOf(Symbology::QrCode, QByteArray(3, '\0'))).fault.isEmpty());
    }

    void moreCorrectionTakesMoreModules()
    {
        const QByteArray payload(100, 'a');
        int before = 0;
        for (const char level : {'L', 'M', 'Q', 'H'}) {
            const Code code = drawn(codeOf(Symbology::QrCode, payload, Code::Usual, level));
            QVERIFY(code.modules.width() > before);
            before = code.modules.width();
        }
        QVERIFY(drawn(codeOf(Symbology::Pdf417, payload, Code::Usual, '8')).modules.height() >
                drawn(codeOf(Symbology::Pdf417, payload, Code::Usual, '0')).modules.height());
    }

    void unknownLevelIsNone()
    {
        QCOMPARE(drawn(codeOf(Symbology::QrCode, "abc", Code::Usual, 'x')).rows,
                 drawn(codeOf(Symbology::QrCode, "abc")).rows);
        QVERIFY(isWhole(drawn(codeOf(Symbology::Pdf417, "abc", Code::Usual, 'x'))));
    }

    void pdf417HasTheColumnsThatAreAskedFor()
    {
        Code code = codeOf(Symbology::Pdf417, QByteArray(40, 'a'));
        code.grid = QSize(4, 0);
        drawer().draw(code);
        // Of 17 modules each: start, left indicator, columns, right indicator; and a stop of 18.
        QCOMPARE(code.modules.width(), (3 + 4) * 17 + 18);
    }

    void compactPdf417LacksItsRightSide()
    {
        Code code = codeOf(Symbology::Pdf417, QByteArray(40, 'a'), Code::Compact);
        code.grid = QSize(4, 0);
        drawer().draw(code);
        QCOMPARE(code.modules.width(), (2 + 4) * 17 + 1);
    }

    void dataMatrixIsSquareUnlessToldOtherwise()
    {
        const Code square = drawn(codeOf(Symbology::DataMatrix, "receipt"));
        QCOMPARE(square.modules.width(), square.modules.height());
        const Code oblong = drawn(codeOf(Symbology::DataMatrix, "receipt", Code::Rectangular));
        QCOMPARE(oblong.modules, QSize(32, 8));
        const Code longer =
            drawn(codeOf(Symbology::DataMatrix, "receipt 1207 of a kiosk", Code::Rectangular));
        QCOMPARE(longer.modules, QSize(36, 12));
        QVERIFY(!drawn(codeOf(Symbology::DataMatrix, QByteArray(200, 'a'), Code::Rectangular))
                     .fault.isEmpty());
    }

    void digitsInSetBAreWider()
    {
        const auto width = [](Code::Variant variant) {
            return drawn(codeOf(Symbology::Code128, "1234567890", variant)).modules.width();
        };
        // Start, check character and stop, and one character for each digit, or for two of them.
        QCOMPARE(width(Code::OnlySetB), 11 * 12 + 13);
        QCOMPARE(width(Code::Usual), 11 * 7 + 13);
    }

    void maxiCodeHasTheSizeOfItsStandard()
    {
        const Code code = drawn(codeOf(Symbology::MaxiCode, "receipt"));
        const double millimetres = code.modules.width() * 25.4 / 203;
        QVERIFY2(millimetres > 25.3 && millimetres < 30, qPrintable(QString::number(millimetres)));
    }

    void whatCannotBeDrawnSaysWhy_data()
    {
        QTest::addColumn<Symbology>("symbology");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char *name, Symbology symbology, const QByteArray &payload,
                            const QString &fault) {
            QTest::newRow(name) << symbology << payload << fault;
        };
        row("empty", Symbology::QrCode, "", "The payload is empty");
        row("unknown symbology", Symbology::Other, "a", "The symbology isn't known");
        row("EAN-13 of letters", Symbology::Ean13, "46000000000A", "It needs 12 or 13 digits");
        row("EAN-13 too short", Symbology::Ean13, "46000000000", "It needs 12 or 13 digits");
        row("EAN-8 too long", Symbology::Ean8, "460000000", "It needs 7 or 8 digits");
        row("UPC-A too long", Symbology::UpcA, "0421000052640", "It needs 11 or 12 digits");
        row("UPC-E that is none", Symbology::UpcE, "01234567890", "These digits have no UPC-E");
        row("UPC-E of a number system that has none", Symbology::UpcE, "21234565",
            "A UPC-E begins with 0 or 1");
        row("UPC-E of it without a check digit", Symbology::UpcE, "9123456",
            "A UPC-E begins with 0 or 1");
        row("DataBar of fewer digits than an article's", Symbology::GS1DataBar, "96385074",
            "It needs 13 or 14 digits");
        row("Code 39 of small letters", Symbology::Code39, "AB c",
            "Code 39 holds no small letters");
        row("UPC-E of letters", Symbology::UpcE, "abcdef", "It needs 7 or 8 digits");
        row("Code 128 beyond ASCII", Symbology::Code128, "\xD0\x96",
            "Code 128 holds ASCII characters only");
        row("GS1-128 of FNC1", Symbology::Gs1_128, "\x1D", "It has no elements");
    }
    void whatCannotBeDrawnSaysWhy()
    {
        QFETCH(Symbology, symbology);
        QFETCH(QByteArray, payload);
        const Code code = drawn(codeOf(symbology, payload));
        QTEST(code.fault, "fault");
        QVERIFY(isWhole(code));
    }

    // The words are zint's.
    void wrongCheckDigitIsAFault()
    {
        for (const auto &[symbology, payload] : {std::pair(Symbology::Ean13, "4600000000016"),
                                                 {Symbology::Ean8, "90311018"},
                                                 {Symbology::UpcA, "042100005265"},
                                                 {Symbology::UpcE, "04252615"}}) {
            const Code code = drawn(codeOf(symbology, payload));
            QVERIFY2(code.fault.contains("check digit", Qt::CaseInsensitive),
                     qPrintable(code.fault));
        }
    }

    void whatNoLongerCanBeDrawnLosesItsModules()
    {
        Code code = drawn(codeOf(Symbology::QrCode, "abc"));
        code.payload.clear();
        drawer().draw(code);
        QVERIFY(!code.fault.isEmpty());
        QVERIFY(isWhole(code));
    }

    void lastCodeIsDrawnTheSameAgain()
    {
        const Code first = drawn(codeOf(Symbology::QrCode, "abc"));
        QCOMPARE(drawn(codeOf(Symbology::QrCode, "abc")).rows, first.rows);
        QVERIFY(drawn(codeOf(Symbology::QrCode, "abd")).rows != first.rows);
        QVERIFY(drawn(codeOf(Symbology::QrCode, "abc", Code::Usual, 'L')).rows != first.rows);
        QVERIFY(drawn(codeOf(Symbology::Aztec, "abc")).rows != first.rows);
        const Code empty = drawn(codeOf(Symbology::QrCode, ""));
        QCOMPARE(drawn(codeOf(Symbology::QrCode, "")).fault, empty.fault);
    }

    void anyPayloadIsDrawnOrAFault()
    {
        QRandomGenerator random(7);
        for (const Symbology symbology : allSymbologies) {
            for (const Code::Variant variant : allVariants) {
                for (const int size : {1, 2, 7, 13, 50, 300, 3000}) {
                    QByteArray payload(size, '\0');
                    const quint32 most = random.bounded(3U) == 0 ? 10 : 256;
                    for (char &byte : payload)
                        byte = static_cast<char>((most == 10 ? '0' : 0) + random.bounded(most));
                    Code code =
                        codeOf(symbology, payload, variant, static_cast<char>(random.bounded(256)));
                    code.grid = QSize(random.generate() & 0xFF, random.generate() & 0xFF);
                    drawer().draw(code);
                    QVERIFY(isWhole(code));
                }
            }
        }
    }

    void threadsDrawTheirOwn()
    {
        const QByteArray expected[] = {drawn(codeOf(Symbology::QrCode, "a")).rows,
                                       drawn(codeOf(Symbology::QrCode, "b")).rows};
        std::atomic<int> wrong{0};
        const auto draw = [&](int which) {
            for (int i = 0; i < 50; ++i) {
                const Code code = drawn(codeOf(Symbology::QrCode, which == 0 ? "a" : "b"));
                wrong += code.rows == expected[which] ? 0 : 1;
            }
        };
        std::thread one(draw, 0);
        std::thread other(draw, 1);
        one.join();
        other.join();
        QCOMPARE(wrong.load(), 0);
    }
};

QTEST_MAIN(TestSymbologyDrawer)
#include "tst_symbologydrawer.moc"
