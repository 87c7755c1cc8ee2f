#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <memory>

#include "peakmemory.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
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
constexpr qint64 ceilingOfPadding = qint64(256) << 20;

// For each character that is printed, the blanks of a margin among them.
constexpr int ceilingOfOutput = 8;
// For each byte of a picture, once for each tag that names it.
constexpr int ceilingOfPictures = 2;
// For the values of one expression, whatever they are.
constexpr qint64 ceilingOfValues = qint64(4) << 20;

constexpr int inputSize = 1 << 18;

using Work = std::function<void(const QByteArray &text)>;

void bbcode(const QByteArray &text)
{
    BbCodeParser parser;
    parser.setSymbolsPerLine(255);
    parser.parseText(QString::fromUtf8(text));
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
        QTest::addColumn<QByteArray>("text");
        constexpr int longestLine = 255;
        // Just what may be padded, and far more.
        for (const int lines : {(1 << 24) / longestLine, (1 << 20)})
            QTest::newRow(qPrintable(QString("%1 lines").arg(lines)))
                << "[column width=255]" + QByteArray("x\n").repeated(lines) + "[/column]";
    }

    void memoryOfPaddingStaysBelowItsCeiling()
    {
        if (!memoryCanBeMeasured)
            QSKIP("a sanitizer takes more memory than the code");
        QFETCH(QByteArray, text);
        const qint64 peak = peakMemoryOf([&] { bbcode(text); });
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
