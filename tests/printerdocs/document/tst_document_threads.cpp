// Documents in many threads at once, each with formatters, parsers and files of its own, while the
// values that they work on are shared. What the threads get is compared with what one thread gets
// afterwards, so that they also meet at whatever is made at the first use.
#include <QTemporaryDir>
#include <QtTest>
#include <optional>

#include "documentfiles.h"
#include "logcatcher.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/printersettings.h"
#include "threads.h"

namespace {

constexpr int threads = 4;
constexpr int width = 42;

QString example(const QString &name)
{
    return QString(PRINTERSLIB_EXAMPLES) + '/' + name;
}

PrinterDocument sale()
{
    PrinterDocument document;
    document.setAttributes({{"DOCNO", 1207},
                            {"WHOLE", 42},
                            {"MINUS", -7},
                            {"ZERO", 0},
                            {"REAL", 12.345},
                            {"BOUGHT", QDate(2026, 3, 14)},
                            {"OPENS", QTime(8, 5, 30)},
                            {"SALE", QDateTime(QDate(2026, 3, 14), QTime(18, 5, 30))},
                            {"TEXT", QString::fromUtf8("Чай «Ассам»")},
                            {"TRUTH", true},
                            {"COMMA", "12,50"},
                            {"NESTED", "<TEXT> <REAL>"}});
    document.setEntries("Cash=20.00\tChange=7.65");
    document.setIsCopy(true);
    return document;
}

/// All that a formatter makes of a document.
struct Receipt
{
    QStringList formatted;
    QStringList lines;
    QString html;
    TextPrinterDocument document;

    bool operator==(const Receipt &other) const
    {
        return formatted == other.formatted && lines == other.lines && html == other.html &&
               document == other.document;
    }
};

/// Empty if the template can't be read.
Receipt receiptOf(const PrinterDocument &document)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setSpecCharsPath(example(""));
    if (!formatter.loadTemplate(example("tags.cpt"), "UTF-8"))
        return {};
    return {formatter.toFormattedText(document), formatter.toPlainText(document, width),
            formatter.toHtmlDocument(document, true), formatter.toTextPrinterDocument(document)};
}

/// A change of a copy, which must not reach what it was copied from.
PrinterDocument changed(PrinterDocument document, int thread)
{
    QMap<QString, QVariant> attributes = document.attributes();
    attributes["TEXT"] = QString("thread %1").arg(thread);
    attributes.remove("REAL");
    document.setAttributes(attributes);
    document.setEntries(document.entries() + "\tmore=1");
    return document;
}

QByteArray contentOfExample(const QString &name)
{
    return documentfiles::contentOf(example(name));
}

}  // namespace

class TestDocumentThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanupTestCase() { m_quiet.reset(); }

    // The first test, as what is made at the first use is made but once in a process.
    void formattersShareADocument()
    {
        constexpr int rounds = 10;
        const PrinterDocument document = sale();
        std::atomic<int> wrong{0};
        std::vector<Receipt> receipts(threads);
        runOnThreads(threads, [&](int thread) {
            Receipt &receipt = receipts[std::size_t(thread)];
            receipt = receiptOf(document);
            for (int round = 0; round < rounds; ++round) {
                if (receiptOf(changed(document, thread)) == receipt ||
                    !(receiptOf(document) == receipt))
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
        QCOMPARE(document, sale());
        const Receipt expected = receiptOf(document);
        QVERIFY(expected.lines.size() > 40);
        QVERIFY(!expected.document.charImages().isEmpty());
        for (const Receipt &receipt : receipts)
            QVERIFY(receipt == expected);
    }

    void formattersFollowTheCaseOfTheSettings()
    {
        constexpr int rounds = 30;
        const PrinterDocument document = sale();
        const QStringList expected = receiptOf(document).lines;
        std::atomic<int> wrong{0};
        std::atomic<int> formatting{threads - 1};
        runOnThreads(threads, [&](int thread) {
            if (thread == 0) {
                for (int round = 0; formatting > 0; ++round)
                    installCase(round);
                return;
            }
            for (int round = 0; round < rounds; ++round)
                wrong += countOtherwiseThanInCase(receiptOf(document).lines, expected);
            --formatting;
        });
        installCase(0);
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QCOMPARE(wrong.load(), 0);
    }

    void resultsAreReadAndCopied()
    {
        constexpr int rounds = 20;
        const TextPrinterDocument document = receiptOf(sale()).document;
        const QString page = document.toHtml(true, {});
        const QMap<QString, QVariant> map = document.toMap();
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&](int) {
            for (int round = 0; round < rounds; ++round) {
                TextPrinterDocument copy = document;
                if (copy.toHtml(true, {}) != page || copy.toMap() != map)
                    ++wrong;
                copy.toUpper();
                copy.appendBlock(document.blocks().first());
                if (copy == document || document.toMap() != map)
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

    void parsersReadOneText()
    {
        constexpr int rounds = 20;
        const QString text = QString::fromUtf8(contentOfExample("coupon.bbcode"));
        std::vector<TextPrinterDocument> documents(threads);
        runOnThreads(threads, [&](int thread) {
            for (int round = 0; round < rounds; ++round)
                documents[std::size_t(thread)] = parsed(text);
        });
        const TextPrinterDocument expected = parsed(text);
        QVERIFY(expected.blocks().size() > 10);
        for (const TextPrinterDocument &document : documents)
            QCOMPARE(document, expected);
    }

    void documentsGoToDifferentFiles()
    {
        constexpr int rounds = 4;
        const documentfiles::Programs programs;
        const QTemporaryDir folder;
        const TextPrinterDocument document = receiptOf(sale()).document;
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&](int thread) {
            const QString path = folder.filePath(QString("document%1").arg(thread));
            TextPrinterDocument own = document;
            for (int round = 0; round < rounds; ++round) {
                own.setRetractionTimeout(100 * thread + round + 1);
                TextPrinterDocument loaded;
                if (!own.saveToFile(path) || !loaded.loadFromFile(path) ||
                    loaded.retractionTimeout() != own.retractionTimeout() ||
                    loaded.toMap() != own.toMap())
                    ++wrong;
            }
            if (thread == 0)
                own.removeFile(path);
        });
        QCOMPARE(wrong.load(), 0);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 4 * (threads - 1));
    }

    void symbolsAreReadFromOneFile()
    {
        constexpr int rounds = 20;
        std::vector<SpecialCharacters> tables(threads);
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&](int thread) {
            SpecialCharacters &table = tables[std::size_t(thread)];
            for (int round = 0; round < rounds; ++round) {
                if (!table.load(example("symbols/shop.ssi")) ||
                    table.getPngImage(1, 100, 100).isNull())
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
        SpecialCharacters expected;
        QVERIFY(expected.load(example("symbols/shop.ssi")));
        QVERIFY(!expected.isEmpty());
        for (const SpecialCharacters &table : tables)
            QCOMPARE(table, expected);
    }

    void expressionsAreEvaluated()
    {
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&wrong](int thread) {
            for (int round = 0; round < 200; ++round) {
                int error = 0;
                const QByteArray text = QByteArray::number(thread) + "+pow(2,10)*sqrt(16)+fac(5)";
                if (te_interp(text.constData(), &error) != thread + 4216 || error != 0)
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    /// Puts settings with another case in the place of those that there are.
    static void installCase(int round)
    {
        const QSharedPointer<PrinterSettings> settings(new PrinterSettings);
        settings->setCharactersMode(IPrintDeviceSettings::ECharactersMode(round % 3));
        IPrintDeviceSettings::setPrintDeviceSettings(settings);
    }

    /// Lines that are neither as expected nor that in capital or small letters.
    static int countOtherwiseThanInCase(const QStringList &lines, const QStringList &expected)
    {
        if (lines.size() != expected.size())
            return 1;
        int count = 0;
        for (int i = 0; i < lines.size(); ++i) {
            const QString &line = expected.at(i);
            if (lines.at(i) != line && lines.at(i) != line.toUpper() &&
                lines.at(i) != line.toLower())
                ++count;
        }
        return count;
    }

    static TextPrinterDocument parsed(const QString &text)
    {
        BbCodeParser parser(nullptr);
        parser.setImagesPath(example("images"));
        parser.setSymbolsPerLine(width);
        parser.parseText(text);
        return parser.document();
    }

    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestDocumentThreads)
#include "tst_document_threads.moc"
