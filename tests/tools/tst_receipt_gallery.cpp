#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>
#include <algorithm>

#include "receiptprogram.h"

namespace {

/// A template of the gallery with one of its documents.
struct Receipt
{
    const char *name;
    const char *document;
    const char *options;  ///< of the checker
};

constexpr Receipt receipts[] = {
    {"fiscal", "fiscal", "--fiscal"},   {"fuel", "fuel", ""},   {"pharmacy", "pharmacy", ""},
    {"restaurant", "restaurant", ""},   {"shift", "shift", ""}, {"shift", "shift-copy", ""},
    {"supermarket", "supermarket", ""},
};

QString galleryFile(const QString &name)
{
    return example("gallery/" + name);
}

QString templateOf(const char *name)
{
    return galleryFile(name + QStringLiteral(".cpt"));
}

QString documentOf(const char *name)
{
    return galleryFile(name + QStringLiteral(".json"));
}

QByteArray content(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject json(const QString &fileName)
{
    return QJsonDocument::fromJson(content(fileName)).object();
}

QStringList models()
{
    QStringList ids;
    const QStringList rows = runReceipt({"models"}).output.split('\n', Qt::SkipEmptyParts).mid(1);
    for (const QString &row : rows)
        ids.append(row.section(' ', 0, 0));
    ids.removeDuplicates();
    return ids;
}

/// The amount at the end of a line that begins so, in hundredths; a letter may stand behind it.
qint64 amount(const QString &line)
{
    const QRegularExpression number("(-?)(\\d+)\\.(\\d\\d)( [A-Z])?$");
    const auto match = number.match(line);
    const qint64 hundredths = (match.captured(2) + match.captured(3)).toLongLong();
    return match.captured(1).isEmpty() ? hundredths : -hundredths;
}

QStringList printedBy(const QStringList &arguments)
{
    const ReceiptRun run =
        runReceipt(QStringList("render") + arguments + QStringList("--width=32"));
    QStringList lines = run.output.split('\n');
    for (QString &line : lines)
        line = line.simplified();
    return lines;
}

QStringList printed(const char *name, const char *document)
{
    return printedBy({templateOf(name), documentOf(document)});
}

/// The amount of the line that begins so.
qint64 amountOf(const QStringList &lines, const QString &begin)
{
    const auto line = std::find_if(lines.cbegin(), lines.cend(),
                                   [&begin](const QString &l) { return l.startsWith(begin); });
    return line == lines.cend() ? -1 : amount(*line);
}

qint64 sumOf(const QStringList &lines)
{
    qint64 sum = 0;
    for (const QString &line : lines)
        sum += amount(line);
    return sum;
}

QString parkingTicket(const WorkFolder &folder)
{
    const ReceiptRun run =
        runReceipt({"fill", galleryFile("parking.bbcode"), galleryFile("parking.json")});
    return folder.file("parking.bbcode", run.output.toUtf8());
}

}  // namespace

class TestReceiptGallery : public QObject
{
    Q_OBJECT

private:
    QStringList m_models;

private Q_SLOTS:
    void initTestCase()
    {
        m_models = models();
        QVERIFY(m_models.size() > 4);
    }

    void everyFileIsTried()
    {
        QStringList tried{"event-logo.png", "event.bbcode",        "parking.bbcode",
                          "parking.json",   "pharmacy-names.json", "shift-names.json"};
        for (const Receipt &receipt : receipts)
            tried << receipt.name + QStringLiteral(".cpt")
                  << receipt.document + QStringLiteral(".json");
        tried.removeDuplicates();
        tried.sort();
        QStringList found = QDir(galleryFile("")).entryList(QDir::Files);
        found.sort();
        QCOMPARE(found, tried);
    }

    void everyReceiptIsOnThePageWithItsPictureAndFivePoints()
    {
        const QString page = QString::fromUtf8(content(example("../docs/gallery.md")));
        const QStringList sections = page.split("\n## ").mid(1);
        QCOMPARE(sections.size(), 8);
        for (const QString &section : sections) {
            QCOMPARE(section.count("\n- "), 5);
            QCOMPARE(section.count("<!-- picture: receipt "), 1);
        }
        const QStringList files = QDir(galleryFile("")).entryList(QDir::Files);
        for (const QString &file : files)
            QVERIFY2(page.contains("examples/gallery/" + file), qPrintable(file));
    }

    void templatesAreCleanOnEveryModel_data()
    {
        QTest::addColumn<QStringList>("arguments");
        for (const Receipt &receipt : receipts) {
            QTest::newRow(receipt.document)
                << QStringList{"lint", "--strict", templateOf(receipt.name), "--data",
                               documentOf(receipt.document)} +
                       QString(receipt.options).split(' ', Qt::SkipEmptyParts);
        }
    }
    void templatesAreCleanOnEveryModel()
    {
        QFETCH(QStringList, arguments);
        for (const QString &model : qAsConst(m_models)) {
            const ReceiptRun run = runReceipt(arguments + QStringList{"--model", model});
            QCOMPARE(run.output + run.errors, QString());
            QCOMPARE(run.status, 0);
        }
    }

    void templatesAreCleanWithoutValues_data()
    {
        QTest::addColumn<QStringList>("arguments");
        for (const Receipt &receipt : receipts) {
            QTest::newRow(receipt.document)
                << QStringList{"lint", "--strict", templateOf(receipt.name)} +
                       QString(receipt.options).split(' ', Qt::SkipEmptyParts);
        }
    }
    void templatesAreCleanWithoutValues()
    {
        QFETCH(QStringList, arguments);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.output, QString());
        QVERIFY2(run.errors.endsWith("aren't checked without data: --data DATA.json\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.status, 0);
    }

    void modelsPrintThemAsTheyAre_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("source");
        for (const Receipt &receipt : receipts) {
            QTest::newRow(receipt.document)
                << QString() << QStringList{templateOf(receipt.name), documentOf(receipt.document)};
        }
        QTest::newRow("event") << QString() << QStringList{"--bbcode", galleryFile("event.bbcode")};
        QTest::newRow("parking") << "parking" << QStringList{"--bbcode"};
    }
    void modelsPrintThemAsTheyAre()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, source);
        const WorkFolder folder;
        if (!name.isEmpty())
            source += parkingTicket(folder);
        for (const char *const model : {"AV_268", "CITIZEN_CTS_2000", "CUSTOM_VKP_80",
                                        "GENERAL_EPSON_PROTOCOL", "SWECOIN_TM_20XX", "TSP-TUP"}) {
            const ReceiptRun run =
                runReceipt(QStringList("print") + source +
                           QStringList{"--strict", "--dry-run", "--model", model});
            QCOMPARE(run.errors, QString());
            QCOMPARE(run.status, 0);
        }
    }

    void textsInBbcodeHaveNoTagThatIsUnknown()
    {
        const WorkFolder folder;
        for (const QString &file : {galleryFile("event.bbcode"), parkingTicket(folder)}) {
            const ReceiptRun run = runReceipt({"bbcode", file, "-v"});
            // The parser says this of each size, and then takes it.
            QString log = run.errors;
            log.remove("BBCode: unknown opening tag \"size\"\n");
            QCOMPARE(log, QString());
            QVERIFY(!run.output.contains('['));
        }
    }

    void textsInBbcodeAreCleanOnModelsWithALargerFont()
    {
        const WorkFolder folder;
        for (const QString &file : {galleryFile("event.bbcode"), parkingTicket(folder)}) {
            for (const char *const model :
                 {"AV_268", "CITIZEN_CTS_2000", "CUSTOM_VKP_80", "EPSON_EU_4XX", "WPK_833"}) {
                const ReceiptRun run = runReceipt({"lint", "--strict", file, "--model", model});
                QCOMPARE(run.output + run.errors, QString());
                QCOMPARE(run.status, 0);
            }
        }
    }

    void itemsOfTheSupermarketAddUp()
    {
        const QJsonObject document = json(documentOf("supermarket"));
        const QStringList entries = document.value("entries").toString().split('\t');
        const auto isDiscount = [](const QString &entry) { return entry.startsWith("  "); };
        QCOMPARE(entries.size() - std::count_if(entries.cbegin(), entries.cend(), isDiscount), 40);
        const QStringList lines = printed("supermarket", "supermarket");
        QCOMPARE(amountOf(lines, "40 items") + amountOf(lines, "Saved today"), sumOf(entries));
        QCOMPARE(amountOf(lines, "TOTAL EUR"), sumOf(entries));
        QCOMPARE(amountOf(lines, "Card"), sumOf(entries));
        for (const char rate : {'A', 'B'}) {
            const QStringList taxed = entries.filter(QRegularExpression(QString(" %1$").arg(rate)));
            const QString begin = QString("%1 %2% of ").arg(rate).arg(rate == 'A' ? 20 : 10);
            const QString line = lines.filter(begin).value(0);
            QCOMPARE(amount(line.section(' ', 0, 3)), sumOf(taxed));
            const qint64 percent = rate == 'A' ? 20 : 10;
            const qint64 tax = qRound64(double(sumOf(taxed) * percent) / double(100 + percent));
            QCOMPARE(amount(line), tax);
        }
    }

    void sharesOfTheRestaurantAddUp()
    {
        const QStringList lines = printed("restaurant", "restaurant");
        const qint64 total = amountOf(lines, "TOTAL EUR");
        const QString entries = json(documentOf("restaurant")).value("entries").toString();
        QCOMPARE(amountOf(lines, "Food and drinks"), sumOf(entries.split('\t')));
        QCOMPARE(amountOf(lines, "Food and drinks") + amountOf(lines, "Service 10%") +
                     amountOf(lines, "Tip"),
                 total);
        QCOMPARE(3 * amountOf(lines, "Split by 3") + amountOf(lines, "and still open"), total);
    }

    void shareOfTheRestaurant_data()
    {
        QTest::addColumn<int>("guests");
        QTest::addColumn<QString>("sum");
        QTest::addColumn<QStringList>("shares");
        QTest::newRow("a single guest") << 1 << "126.00" << QStringList();
        QTest::newRow("nothing is left") << 4 << "126.40" << QStringList{"Split by 4, each 36.00"};
        QTest::newRow("a sum that binary numbers haven't")
            << 3 << "109.80" << QStringList{"Split by 3, each 42.46", "and still open 0.02"};
    }
    void shareOfTheRestaurant()
    {
        QFETCH(int, guests);
        QFETCH(QString, sum);
        QFETCH(QStringList, shares);
        QJsonObject document = json(documentOf("restaurant"));
        QJsonObject attributes = document.value("attributes").toObject();
        attributes.insert("GUESTS", guests);
        attributes.insert("SUM", sum);
        document.insert("attributes", attributes);
        const WorkFolder folder;
        const QStringList lines = printedBy(
            {templateOf("restaurant"), folder.file("data.json", QJsonDocument(document).toJson())});
        QCOMPARE(lines.filter(QRegularExpression("Split|still")), shares);
    }

    void totalOfFuelIsTheSumOfWhatIsPrinted()
    {
        const QStringList lines = printed("fuel", "fuel");
        QVERIFY(lines.contains("41.37 l x 1.749 72.36"));
        QVERIFY(lines.contains("8.45 l x 0.899 7.60"));
        QVERIFY(lines.contains("TOTAL 79.96"));
        QVERIFY(lines.contains("Authorisation 007723"));
        QVERIFY(lines.contains("Terminal 00047110"));
    }

    void fuelAlone()
    {
        QJsonObject document = json(documentOf("fuel"));
        QJsonObject attributes = document.value("attributes").toObject();
        attributes.insert("EXTRA", "");
        attributes.insert("EXTRA_LITRES", "0.00");
        attributes.insert("EXTRA_PRICE", "0.00");
        document.insert("attributes", attributes);
        const WorkFolder folder;
        const QStringList lines = printedBy(
            {templateOf("fuel"), folder.file("data.json", QJsonDocument(document).toJson())});
        QVERIFY(lines.contains("TOTAL 72.36"));
        QCOMPARE(lines.filter(" l x ").size(), 1);
    }

    void namesOfThePharmacyAreWhole()
    {
        const QJsonObject whole =
            json(galleryFile("pharmacy-names.json")).value("attributes").toObject();
        const QString lines = printed("pharmacy", "pharmacy").join(' ');
        for (const char *const key : {"NAME1", "NAME2", "NAME3"})
            QVERIFY2(lines.contains(whole.value(key).toString()), key);
        QVERIFY(whole.value("NAME1").toString().size() >= 80);
        QVERIFY(lines.contains("Prescription 0004711"));
    }

    void parkingTicketHoldsItsValues()
    {
        const WorkFolder folder;
        const QString output = runReceipt({"bbcode", parkingTicket(folder), "--as", "tree"}).output;
        for (const char *const text : {"16:30", "09.05.2026", "KX 58 ABE", "0460001234505"})
            QVERIFY2(output.contains(text), text);
    }

    void fiscalReceiptHasAllSections()
    {
        const QString pieces = runReceipt({"split", templateOf("fiscal")}).output;
        for (const char *const section :
             {"== <FISCAL_HEADER>", "== <FISCAL_BODY>", "== <FISCAL_OPERATIONS>",
              "== <FISCAL_SUMMARY>", "== <FISCAL_QR>", "== <FISCAL_FOOTER>"})
            QVERIFY2(pieces.contains(section), qPrintable(pieces));
        QVERIFY(printed("fiscal", "fiscal").contains(QString::fromUtf8("Код авторизации 007723")));
    }

    void sumsOfTheShiftAddUp()
    {
        const QStringList lines = printed("shift", "shift");
        QCOMPARE(amountOf(lines, "Cash") + amountOf(lines, "Cards") + amountOf(lines, "Vouchers"),
                 amountOf(lines, "Sum"));
        QCOMPARE(amountOf(lines, "Sum") + amountOf(lines, "Returns"),
                 amountOf(lines, "A 20%, sold") + amountOf(lines, "B 10%, sold"));
        QCOMPARE(amountOf(lines, "A 20%, tax") + amountOf(lines, "B 10%, tax"),
                 amountOf(lines, "Tax"));
        QVERIFY(lines.contains("Short by 0.05"));
        QVERIFY(lines.contains("Shift 0087 Report 000412"));
        QVERIFY(lines.contains("Receipts 020391 - 020644"));
        QVERIFY(lines.filter("<QR>").value(0).endsWith("fp=0412345678"));
        QVERIFY(!lines.contains("CHECK_COPY"));
    }

    void shiftWithoutCodeAsCopy()
    {
        const QStringList lines = printed("shift", "shift-copy");
        QCOMPARE(lines.indexOf("CHECK_COPY"), lines.indexOf("Shift 0088 Report 000413") + 1);
        QVERIFY(lines.filter(QRegularExpression("<QR>|Short|Over|Returns|Vouchers")).isEmpty());
        QCOMPARE(amountOf(lines, "Sum"),
                 amountOf(lines, "A 20%, sold") + amountOf(lines, "B 10%, sold"));
    }

    void differenceOfTheShift_data()
    {
        QTest::addColumn<QString>("counted");
        QTest::addColumn<QStringList>("difference");
        QTest::newRow("less than one short") << "885.40" << QStringList{"Short by 0.05"};
        QTest::newRow("more than one short") << "80.00" << QStringList{"Short by 805.45"};
        QTest::newRow("over") << "885.46" << QStringList{"Over by 0.01"};
        QTest::newRow("right") << "885.45" << QStringList();
    }
    void differenceOfTheShift()
    {
        QFETCH(QString, counted);
        QFETCH(QStringList, difference);
        QJsonObject document = json(documentOf("shift"));
        QJsonObject attributes = document.value("attributes").toObject();
        attributes.insert("COUNTED", counted);
        document.insert("attributes", attributes);
        const WorkFolder folder;
        const QStringList lines = printedBy(
            {templateOf("shift"), folder.file("data.json", QJsonDocument(document).toJson())});
        QCOMPARE(lines.filter(QRegularExpression("^(Short|Over) by")), difference);
    }

    void conditionsOfThePageForAuthors_data()
    {
        QTest::addColumn<QString>("condition");
        QTest::addColumn<QStringList>("printedFor");
        const auto row = [](const char *condition, const QStringList &printedFor) {
            QTest::newRow(condition) << QString(condition) << printedFor;
        };
        row("<X:><PAID-TOTAL><:X>", {"0 5", "5 0", "885.45 885.40", "5 -5"});
        row("<X:><PAID-TOTAL+abs(PAID-TOTAL)><:X>", {"5 0", "885.45 885.40", "5 -5"});
        row("<X:><PAID><TOTAL><:X>", {"885.45 885.40", "5 5", "5 -5"});
        row("<X:><abs(PAID)+abs(TOTAL)><:X>", {"0 5", "5 0", "885.45 885.40", "5 5", "5 -5"});
        row("<X:><1-ceil(abs(PAID)/(abs(PAID)+1))><:X>", {"0 0", "0 5"});
    }
    void conditionsOfThePageForAuthors()
    {
        QFETCH(QString, condition);
        QFETCH(QStringList, printedFor);
        const QString page = QString::fromUtf8(content(example("../docs/template-authors.md")));
        QVERIFY(page.contains('`' + condition + '`'));
        const WorkFolder folder;
        const QString line = folder.file("t.cpt", ('[' + condition + "yes]").toUtf8());
        QStringList found;
        for (const char *const pair : {"0 0", "0 5", "5 0", "885.45 885.40", "5 5", "5 -5"}) {
            const QStringList values = QString(pair).split(' ');
            const QString document = QString(R"({"attributes": {"PAID": "%1", "TOTAL": "%2"}})")
                                         .arg(values.at(0), values.at(1));
            if (printedBy({line, folder.file("data.json", document.toUtf8())}).contains("yes"))
                found.append(pair);
        }
        QCOMPARE(found, printedFor);
    }
};

QTEST_APPLESS_MAIN(TestReceiptGallery)
#include "tst_receipt_gallery.moc"
