#include <QImageWriter>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>
#include <functional>
#include <memory>

#include "peakmemory.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"
#include "printers/printerinfo.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "settings/textprintersettings.h"

namespace {

// What docs/robustness.md promises: bytes of memory for each byte of input.
constexpr int ceilingOfBbCode = 400;
constexpr int ceilingOfMarkup = 350;
constexpr int ceilingOfExpression = 128;
constexpr int ceilingOfMapForm = 200;
// And, whatever the input, what padding may add to a BBCode text.
constexpr qint64 ceilingOfPadding = qint64(384) << 20;

// For each character that is printed, the blanks of a margin among them.
constexpr int ceilingOfOutput = 8;
// For each byte of a picture, once for each tag that names it.
constexpr int ceilingOfPictures = 2;
// While one is read, whatever its format.
constexpr qint64 ceilingOfReading = qint64(256) << 20;
constexpr int ceilingOfSymbols = 16;
// For the values of one expression, whatever they are.
constexpr qint64 ceilingOfValues = qint64(4) << 20;

constexpr int inputSize = 1 << 18;

using Work = std::function<void(const QByteArray &text)>;

void parse(const QByteArray &text, unsigned char width)
{
    BbCodeParser parser;
    parser.setSymbolsPerLine(width);
    parser.parseText(QString::fromUtf8(text));
}

void bbcode(const QByteArray &text)
{
    parse(text, 255);
}

/// The most blanks that a width puts in front of each line.
void indentedBbcode(const QByteArray &text)
{
    parse(text, 16);
}

void symbols(const QByteArray &text)
{
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        qFatal("cannot write");
    SpecialCharacters().load(file.fileName());
}

void markupToBlocks(const QByteArray &text)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    formatter.plainTextToTextPrinterDocument(QString::fromUtf8(text));
}

void markupToText(const QByteArray &text)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    formatter.plainTextToFormattedPlainText(QString::fromUtf8(text), 0);
}

void markupToHtml(const QByteArray &text)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    formatter.plainTextToHtml(QString::fromUtf8(text), false);
}

void interpretation(const QByteArray &text)
{
    te_interp(text.constData(), nullptr);
}

void compilation(const QByteArray &text)
{
    double a = 1;
    const te_variable variable{"a", &a, TE_VARIABLE, nullptr};
    te_expr *const tree = te_compile(text.constData(), &variable, 1, nullptr);
    te_eval(tree);
    te_free(tree);
}

void mapForm(const QByteArray &json)
{
    TextPrinterDocument document;
    document.setMap(QJsonDocument::fromJson(json).toVariant().toMap());
    document.toMap();
}

/// As many pieces as a text of a length holds, between a beginning and an end.
QByteArray filled(const char *begin, const char *piece, const char *end, int size)
{
    const int room = size - int(qstrlen(begin)) - int(qstrlen(end));
    QByteArray text = begin + QByteArray(piece).repeated(room / int(qstrlen(piece)));
    while (text.endsWith(','))
        text.chop(1);
    return text + end;
}

/// As deep as Qt's parser goes.
QByteArray nested(const char *open, const char *close)
{
    constexpr int depth = 1024;
    return QByteArray(open).repeated(depth) + QByteArray("0") + QByteArray(close).repeated(depth);
}

/// A picture of 4096 by 4096 in a format that Qt doesn't write, or not so.
QByteArray rarePicture(const QByteArray &format)
{
    constexpr int side = 4096;
    if (format == "bmp")
        return QByteArray::fromHex(
                   "424d 00000000 0000 0000 36000000"
                   "28000000 00100000 00100000 0100 1800 00000000 00000000"
                   "00000000 00000000 00000000 00000000") +
               QByteArray(3 * side, '\x55');
    if (format == "gif")
        return QByteArray::fromHex(
            "474946383961 0010 0010 80 00 00 000000 ffffff"
            "2c 0000 0000 0100 0100 00 02 02 440a 00 3b");
    if (format == "xbm")
        return "#define a_width 4096\n#define a_height 4096\nstatic char a[]={\n" +
               QByteArray("0x55,0x55,0x55,0x55,0x55,0x55,0x55,0x55,\n").repeated(side * side / 64) +
               "};";
    return "/* XPM */\nstatic char *a[]={\n\"4096 4096 2 1\",\n\"a c #000\",\n\"b c #fff\",\n" +
           ('"' + QByteArray("ab").repeated(side / 2) + "\",\n").repeated(side) + "};";
}

bool writePicture(const QString &fileName, const QByteArray &format, QImage::Format kind)
{
    if (kind != QImage::Format_Invalid) {
        QImage picture(4096, 4096, kind);
        picture.fill(Qt::gray);
        QImageWriter writer(fileName, format);
        writer.setProgressiveScanWrite(true);
        return writer.write(picture);
    }
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(rarePicture(format)) > 0;
}

/// Runs a function on a thread with less stack than clients' threads have.
template <class Function>
void runOnSmallStack(Function function)
{
    std::unique_ptr<QThread> thread(QThread::create(function));
    thread->setStackSize(1024 * 1024);
    thread->start();
    QVERIFY(thread->wait());
}

}  // namespace

Q_DECLARE_METATYPE(Work)

class TestBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.warning=false"); }

    void memoryStaysBelowItsCeiling_data()
    {
        QTest::addColumn<Work>("work");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("ceiling");

        const auto row = [](const char *name, const Work &work, const char *begin,
                            const char *piece, const char *end, int ceiling) {
            QTest::newRow(name) << work << filled(begin, piece, end, inputSize) << ceiling;
        };
        row("BBCode: plain text", bbcode, "", "text ", "", ceilingOfBbCode);
        row("BBCode: lines", bbcode, "", "\n", "", ceilingOfBbCode);
        row("BBCode: open tags", bbcode, "", "[b]", "", ceilingOfBbCode);
        row("BBCode: closing tags", bbcode, "", "[/b]", "", ceilingOfBbCode);
        row("BBCode: parameters", bbcode, "", "[b a=b]", "", ceilingOfBbCode);
        row("BBCode: many parameters", bbcode, "[b ", "a=b ", "]", ceilingOfBbCode);
        row("BBCode: ruled lines", bbcode, "", "[/hr]", "", ceilingOfBbCode);
        row("BBCode: blocks", bbcode, "", "x[/left]", "", ceilingOfBbCode);
        row("BBCode: codes", bbcode, "", "[barcode]1[/barcode]", "", ceilingOfBbCode);
        row("BBCode: indented lines", indentedBbcode, "", "\n", "", ceilingOfBbCode);
        row("BBCode: indented ruled lines", indentedBbcode, "", "[/hr]", "", ceilingOfBbCode);
        row("blocks: plain text", markupToBlocks, "", "text ", "", ceilingOfMarkup);
        row("blocks: short lines", markupToBlocks, "", "a\n", "", ceilingOfMarkup);
        row("blocks: empty lines", markupToBlocks, "", "\n", "", ceilingOfMarkup);
        row("blocks: fonts", markupToBlocks, "", "<F1>a", "", ceilingOfMarkup);
        row("blocks: ranges", markupToBlocks, "", "<B:>a<:B>b", "", ceilingOfMarkup);
        row("blocks: codes", markupToBlocks, "", "<#1>", "", ceilingOfMarkup);
        row("blocks: alternating", markupToBlocks, "", "<C>a\n<R>b\n", "", ceilingOfMarkup);
        row("text: short lines", markupToText, "", "a\n", "", ceilingOfMarkup);
        row("text: empty lines", markupToText, "", "\n", "", ceilingOfMarkup);
        row("HTML: short lines", markupToHtml, "", "a\n", "", ceilingOfMarkup);
        row("HTML: empty lines", markupToHtml, "", "\n", "", ceilingOfMarkup);
        row("HTML: two columns", markupToHtml, "", "<S>a\n", "", ceilingOfMarkup);
        row("HTML: fonts", markupToHtml, "", "<F1>a<F2>b", "", ceilingOfMarkup);
        row("HTML: symbols", markupToHtml, "", "<#1>", "", ceilingOfMarkup);
        row("value: brackets", interpretation, "", "(", "", ceilingOfExpression);
        row("value: sums", interpretation, "", "1+", "1", ceilingOfExpression);
        row("tree: sums", compilation, "", "a+", "a", ceilingOfExpression);
        row("tree: constants", compilation, "", "1+", "1", ceilingOfExpression);
        row("tree: signs", compilation, "", "a*-", "a", ceilingOfExpression);
        row("map form: empty blocks", mapForm, R"({"blocks":[)", "{},", "]}", ceilingOfMapForm);
        row("map form: numbers", mapForm, R"({"blocks":[)", "0,", "]}", ceilingOfMapForm);
        row("map form: image blocks", mapForm, R"({"blocks":[)", R"({"type":1},)", "]}",
            ceilingOfMapForm);
        row("map form: codes", mapForm, R"({"blocks":[)", R"({"type":3},)", "]}", ceilingOfMapForm);
        row("map form: lines", mapForm, R"({"blocks":[)",
            R"({"txt":["a"],"fmt":[""],"fnt":[""],"ls":[0]},)", "]}", ceilingOfMapForm);
        // Qt's codecs take some megabytes, whatever the text.
        const auto symbolRow = [](const char *name, const char *begin, const char *piece,
                                  const char *end) {
            QTest::newRow(name) << Work(symbols) << filled(begin, piece, end, 16 * inputSize)
                                << ceilingOfSymbols;
        };
        const char *const images = "<SpecialSymbolImages>";
        const char *const imagesEnd = "</SpecialSymbolImages>";
        symbolRow("symbols: symbols", "<SpecialSymbolImages><Font Width=\"1\" Height=\"1\">",
                  "<Symbol><Line>1</Line></Symbol>", "</Font></SpecialSymbolImages>");
        symbolRow("symbols: lines", "<SpecialSymbolImages><Font><Symbol>", "<Line/>", "");
        symbolRow("symbols: one line", "<SpecialSymbolImages><Font><Symbol><Line>", "1", "");
        symbolRow("symbols: elements", images, "<a/>", imagesEnd);
        symbolRow("symbols: nested elements", images, "<a>", "");
        symbolRow("symbols: attributes", "<a", " b=\"\"", "/>");
        symbolRow("symbols: entities",
                  "<!DOCTYPE a [<!ENTITY e \"0123456789012345678901234567890123456789\">]><a>",
                  "&e;", "</a>");
        symbolRow("symbols: notations", "<!DOCTYPE a [", "<!NOTATION n SYSTEM \"x\">", "]><a/>");
    }

    void memoryStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        QFETCH(Work, work);
        QFETCH(QByteArray, text);
        QFETCH(int, ceiling);
        const qint64 peak = peakMemoryOf([&] { work(text); });
        QVERIFY(peak >= 0);
        QVERIFY2(peak <= qint64(text.size()) * ceiling,
                 qPrintable(QString("%1 bytes for each byte").arg(double(peak) / text.size())));
    }

    void memoryOfPaddingStaysBelowItsCeiling_data()
    {
        QTest::addColumn<Work>("work");
        QTest::addColumn<QByteArray>("text");
        constexpr int longestLine = 255;
        const auto row = [](const char *name, const Work &work, const char *open, int lines,
                            const char *close) {
            QTest::newRow(name) << work << open + QByteArray("x\n").repeated(lines) + close;
        };
        constexpr int mostLines = (1 << 24) / longestLine - 2;
        row("just what may be padded", bbcode, "[column width=255]", mostLines, "[/column]");
        row("far more", bbcode, "[column width=255]", 1 << 20, "[/column]");
        row("indented", indentedBbcode, "[column width=255]", mostLines, "[/column]");
        row("in a code", bbcode, "[barcode][column width=255]", mostLines, "[/barcode]");
        row("indented, in a code", indentedBbcode, "[barcode][column width=255]", mostLines,
            "[/barcode]");
    }

    void memoryOfPaddingStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        QFETCH(Work, work);
        QFETCH(QByteArray, text);
        const qint64 peak = peakMemoryOf([&] { work(text); });
        QVERIFY(peak >= 0);
        const qint64 ceiling = ceilingOfPadding + qint64(text.size()) * ceilingOfBbCode;
        QVERIFY2(peak <= ceiling, qPrintable(QString("%1 bytes").arg(peak)));
    }

    /// A value stands in the text as often as the template names it, and a margin before each line.
    void memoryOfWhatIsPrintedStaysBelowItsCeiling_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("margin");
        QTest::newRow("values, in one line")
            << QString("<NAME>").repeated(2000) << 1 << QString(2000, 'x') << 0;
        QTest::newRow("values, in many lines") << "<NAME>" << 2000 << QString(2000, 'x') << 0;
        QTest::newRow("margins") << "<NAME>" << 20000 << "x" << 200;
    }

    void memoryOfWhatIsPrintedStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        QFETCH(QString, line);
        QFETCH(int, lines);
        QFETCH(QString, value);
        QFETCH(int, margin);
        PrinterDocument document;
        document.setAttributes({{"NAME", value}});
        PrinterDocumentFormatter formatter(margin, nullptr);
        formatter.setTemplate(QStringList(QVector<QString>(lines, line).toList()).join('\n'));
        const QStringList printed = formatter.toPlainText(document, 0);
        qint64 characters = 0;
        for (const QString &text : printed)
            characters += text.size();
        QVERIFY(characters >= 4000000);
        const auto check = [&](const char *form, const std::function<void()> &work) {
            const qint64 peak = peakMemoryOf(work);
            QVERIFY(peak >= 0);
            QVERIFY2(peak <= characters * ceilingOfOutput,
                     qPrintable(QString("%1: %2 bytes for each character")
                                    .arg(form)
                                    .arg(double(peak) / double(characters))));
        };
        check("text", [&] { formatter.toPlainText(document, 0); });
        check("HTML", [&] { formatter.toHtml(document, false); });
        check("blocks", [&] { formatter.toTextPrinterDocument(document); });
    }

    void memoryOfPicturesStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        const QTemporaryDir directory;
        QFile file(directory.filePath("logo.pbm"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray head = "P4\n576 384\n";
        const QByteArray pixels(576 / 8 * 384, '\x55');
        file.write(head + pixels);
        file.close();
        const auto parse = [&directory](const QString &text) {
            BbCodeParser parser;
            parser.setImagesPath(directory.path());
            parser.parseText(text);
            return parser.blocks();
        };
        const QString tag = "[img name=logo][/img]";
        QCOMPARE(parse(tag).first().img().image().size(), pixels.size());
        const QString text = tag.repeated(500);
        const qint64 peak = peakMemoryOf([&] { parse(text); });
        QVERIFY(peak >= 0);
        const qint64 ceiling =
            qint64(text.size()) * ceilingOfBbCode + qint64(pixels.size()) * 500 * ceilingOfPictures;
        QVERIFY2(peak <= ceiling, qPrintable(QString("%1 bytes").arg(peak)));
    }

    /// The worst of each format, of as many pixels as may be.
    void memoryOfReadingAPictureStaysBelowItsCeiling_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QImage::Format>("kind");
        for (const char *format : {"png", "bmp", "jpeg", "pbm", "pgm", "ppm"})
            QTest::newRow(format) << QByteArray(format) << QImage::Format_RGB32;
        QTest::newRow("png of 16 bits") << QByteArray("png") << QImage::Format_RGBA64;
        QTest::newRow("bmp, cut") << QByteArray("bmp") << QImage::Format_Invalid;
        QTest::newRow("gif") << QByteArray("gif") << QImage::Format_Invalid;
        QTest::newRow("xbm") << QByteArray("xbm") << QImage::Format_Invalid;
        QTest::newRow("xpm") << QByteArray("xpm") << QImage::Format_Invalid;
    }

    void memoryOfReadingAPictureStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        QFETCH(QByteArray, format);
        QFETCH(QImage::Format, kind);
        const QTemporaryDir directory;
        // By a process of its own: Qt's threads would be missing in those that are measured.
        QVERIFY(peakOfProcess([&] {
                    if (!writePicture(directory.filePath("logo"), format, kind))
                        _exit(1);
                }) >= 0);
        const auto load = [&directory] {
            BbCodeParser parser;
            parser.setImagesPath(directory.path());
            parser.parseText("[img name=logo][/img]");
            if (parser.blocks().value(0).img().width() == 0)
                qFatal("the picture isn't read");
        };
        const qint64 peak = peakMemoryOf(load);
        QVERIFY(peak >= 0);
        QVERIFY2(peak <= ceilingOfReading, qPrintable(QString("%1 bytes").arg(peak)));
    }

    /// Values that name others, each many times, stop at a length.
    void valuesOfAnExpressionTakeLittleMemory()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        PrinterDocument document;
        document.setAttributes({{"ABCDEF", QString("VWXYZ+").repeated(300)},
                                {"VWXYZ", QString("PQRS+").repeated(300)},
                                {"PQRS", QString("KLM+").repeated(300)},
                                {"KLM", QString("7+").repeated(300)}});
        const PrinterDocumentFormatter formatter(0, nullptr);
        const qint64 peak =
            peakMemoryOf([&] { formatter.processDocAttributes("<ABCDEF+1>", document); });
        QVERIFY(peak >= 0);
        QVERIFY2(peak <= ceilingOfValues, qPrintable(QString("%1 bytes").arg(peak)));
    }

    /// Interpreting takes no memory that grows with the text.
    void interpretingTakesTheSameForAnyLength()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        constexpr qint64 ceiling = 1 << 20;
        for (const char *piece : {"1+", "(", "sin ", "-", "1,"}) {
            const QByteArray text = QByteArray(piece).repeated(1 << 20);
            const qint64 peak = peakMemoryOf([&] { te_interp(text.constData(), nullptr); });
            QVERIFY2(peak >= 0 && peak <= ceiling, piece);
        }
    }

    /// JSON as deep as Qt's parser takes it, where a flat document is expected.
    void deepJsonTakesLittleStack_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("lists") << nested("[", "]");
        QTest::newRow("maps") << nested("{\"blocks\":", "}");
        QTest::newRow("lists that don't end") << nested("[", "");
        QTest::newRow("both") << "{\"blocks\":[{\"txt\":" + nested("[", "]").mid(3).chopped(3) +
                                     "}]}";
    }

    void deepJsonTakesLittleStack()
    {
        QFETCH(QByteArray, json);
        runOnSmallStack([&json] {
            TextPrinterDocument document;
            document.setMap(QJsonDocument::fromJson(json).toVariant().toMap());
            document.setMap(document.toMap());
            PrinterInfo::fromJson(json);
            corvid::ClientState record;
            record.setState(QString::fromUtf8(json));
            PrintServiceStateCorvidWrapper().setClientState(record);
            TextPrinterSettings().setList(QJsonDocument::fromJson(json).toVariant().toList());
        });
    }

    /// A map form that doesn't come from JSON may be of any depth.
    void deepMapsTakeLittleStack()
    {
        runOnSmallStack([] {
            // Qt itself calls itself to copy and to free such a value.
            constexpr int depth = 1000;
            QVariant value = 1;
            for (int level = 0; level < depth; ++level)
                value = QVariantMap{{"blocks", QVariantList{value}}, {"img", value}};
            TextPrinterDocument document;
            document.setMap(value.toMap());
            QCOMPARE(document.blocks().size(), 1);
        });
    }

    void deepBbCodeTakesLittleStack()
    {
        runOnSmallStack([] {
            BbCodeParser parser;
            parser.parseText(QString("[b]").repeated(300000) + "x");
            QCOMPARE(parser.blocks().size(), 1);
        });
    }

    void deepMarkupTakesLittleStack()
    {
        runOnSmallStack([] {
            constexpr int depth = 300000;
            const PrinterDocumentFormatter formatter(0, nullptr);
            PrinterDocument document;
            document.setAttributes({{"ABCD", "<EFGH>"}, {"EFGH", "0"}});
            const QString open = QString("[").repeated(depth);
            const QString close = QString("]").repeated(depth);
            QCOMPARE(formatter.processDocAttributes(open + "<ABCD>" + close, document),
                     open.chopped(1) + close.chopped(1));
            formatter.plainTextToHtml(QString("<B:>").repeated(depth) + "x", false);
        });
    }
};

QTEST_GUILESS_MAIN(TestBounds)
#include "tst_bounds.moc"
