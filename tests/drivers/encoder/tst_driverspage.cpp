// What docs/drivers.md says of the values of a document.
#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/streaminterpreter.h>

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"

using namespace laiddocuments;
using Event = Paper::Event;
using Symbology = Paper::Symbology;

namespace {

// An Epson printer, which has no presenter, and one of Custom's, which has.
const char plainModel[] = "GENERAL_EPSON_PROTOCOL";
const char presenterModel[] = "CUSTOM_VKP_80";

struct NamedSymbology
{
    const char *name;  ///< at the beginning of the page's
    Symbology symbology;
    Paper::Code::Variant variant;
    const char *payload;
};

// The first that fits is taken.
const NamedSymbology namedSymbologies[] = {
    {"UPC-E", Symbology::UpcE, Paper::Code::Usual, "01234500006"},
    {"UPC-A", Symbology::UpcA, Paper::Code::Usual, "012345678905"},
    {"EAN-8", Symbology::Ean8, Paper::Code::Usual, "96385074"},
    {"EAN-13", Symbology::Ean13, Paper::Code::Usual, "460000000001"},
    {"Code 39", Symbology::Code39, Paper::Code::Usual, "AB 12"},
    {"Interleaved 2 of 5", Symbology::Itf, Paper::Code::Usual, "123"},
    {"Code 128", Symbology::Code128, Paper::Code::Usual, "a1{B"},
    {"Code 93", Symbology::Code93, Paper::Code::Usual, "ab"},
    {"Codabar", Symbology::Codabar, Paper::Code::Usual, "A12-3B"},
    {"GS1-128", Symbology::Gs1_128, Paper::Code::Usual, "(01)04600000000017"},
    {"GS1 DataBar Limited", Symbology::GS1DataBar, Paper::Code::Limited, "0460000000001"},
    {"GS1 DataBar Expanded", Symbology::GS1DataBar, Paper::Code::Expanded, "(01)04600000000017"},
    {"GS1 DataBar", Symbology::GS1DataBar, Paper::Code::Usual, "0460000000001"},
};

const NamedSymbology *symbologyOf(const QString &name)
{
    for (const NamedSymbology &known : namedSymbologies) {
        if (name.startsWith(QLatin1String(known.name)))
            return &known;
    }
    return nullptr;
}

/// The page's rows "| 1, 66 | UPC-E | ... |", by number.
QMap<int, QString> symbologiesOfThePage()
{
    QFile page(PRINTERSLIB_EXAMPLES "/../docs/drivers.md");
    QMap<int, QString> symbologies;
    if (!page.open(QIODevice::ReadOnly))
        return symbologies;
    const QRegularExpression row("^\\| ([0-9, ]+) \\| ([^|;,]+)[|;,]");
    const QStringList lines = QString::fromUtf8(page.readAll()).split('\n');
    for (const QString &line : lines.mid(lines.indexOf("## Codes"))) {
        const auto match = row.match(line);
        for (const QString &number : match.captured(1).split(',', Qt::SkipEmptyParts))
            symbologies.insert(number.toInt(), match.captured(2).trimmed());
    }
    return symbologies;
}

EncodedDocument encoded(const TextPrinterDocument &document, const char *model,
                        const PrintOptions &options = {})
{
    return DocumentEncoder(targetOf(model), options).encode(document);
}

/// What happens at a printer, but for resets.
QVector<Event> eventsOf(const EncodedDocument &job, const char *model)
{
    StreamInterpreter printer(*PrinterProfile::forModel(QString::fromLatin1(model)), {});
    QVector<Event> events;
    for (const QVector<Paper> &papers : {printer.read(job.bytes), printer.finish()}) {
        for (const Paper &paper : papers) {
            for (const Event &event : paper.events) {
                if (event.kind != Event::Reset)
                    events.append(event);
            }
        }
    }
    return events;
}

/// "cut eject"
QString namesOf(const QVector<Event> &events)
{
    QStringList names;
    for (const Event &event : events) {
        switch (event.kind) {
            case Event::Cut:
            case Event::PartialCut:
                names += "cut";
                break;
            case Event::Eject:
                names += "eject";
                break;
            case Event::Retract:
                names += "retract";
                break;
            case Event::Present:
                names += "present";
                break;
            case Event::Pulse:
                names += "pulse";
                break;
            default:
                names += event.text;
        }
    }
    return names.join(' ');
}

TextPrinterDocument wordDocument()
{
    return documentOf({textBlock("word")});
}

}  // namespace

class TestDriversPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersOfBarcodesAreThoseOfThePage_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("name");
        const QMap<int, QString> symbologies = symbologiesOfThePage();
        QVERIFY(symbologies.size() > 25);
        for (auto row = symbologies.begin(); row != symbologies.end(); ++row) {
            if (row.key() != 0)
                QTest::addRow("%d", row.key()) << row.key() << *row;
        }
    }
    void numbersOfBarcodesAreThoseOfThePage()
    {
        QFETCH(int, number);
        QFETCH(QString, name);
        const NamedSymbology *const known = symbologyOf(name);
        QVERIFY2(known != nullptr, qPrintable(name));
        const PrintLayout layout =
            layoutOf(barcodeBlock(number, known->payload), targetOf(plainModel));
        QCOMPARE(layout.error, QString());
        QCOMPARE(notesOf(layout), QStringList());
        QCOMPARE(layout.codes.size(), 1);
        QCOMPARE(layout.codes.at(0).symbology, known->symbology);
        QCOMPARE(layout.codes.at(0).variant, known->variant);
    }

    void payloadsOfThePageAreDrawn_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("payload");
        const auto rows = [](int number, const QList<QByteArray> &payloads) {
            for (const QByteArray &payload : payloads)
                QTest::addRow("%d: %s", number, payload.constData()) << number << payload;
        };
        rows(1, {"123456", "0123456", "01234565", "01234500006", "012345000065"});
        rows(2, {"01234567890", "012345678905"});
        rows(3, {"9638507", "96385074"});
        rows(4, {"460000000001", "4600000000015"});
        rows(5, {"AZ09 -.$/+%", "*AB*"});
        rows(6, {"12", "123"});
        rows(7, {"a", QByteArray(1, '\x7F'), "{A{B{C", "1234567890"});
        rows(8, {"aB1", "$"});
        rows(9, {"A1B", "C12-$:/.+D"});
        rows(10, {"(01)04600000000015", "0104600000000015"});
        rows(11, {"0460000000001", "04600000000015"});
        rows(13, {"0460000000001", "1460000000001"});
        rows(14, {"(01)04600000000015"});
    }
    void payloadsOfThePageAreDrawn()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, payload);
        const PrintLayout layout = layoutOf(barcodeBlock(number, payload), targetOf(plainModel, 2));
        QCOMPARE(layout.error, QString());
        QCOMPARE(notesOf(layout), QStringList());
        QCOMPARE(layout.codes.size(), 1);
    }

    void anyOtherNumberIsAnErrorThatNamesIt()
    {
        const QMap<int, QString> symbologies = symbologiesOfThePage();
        for (const int number : {-1, 15, 64, 80, 255, 256, 1 << 30})
            QVERIFY(!symbologies.contains(number));
        for (int number = 1; number < 300; ++number) {
            const EncodedDocument job = encoded(
                documentOf({textBlock("x"), barcodeBlock(number, "012345678905")}), plainModel);
            QCOMPARE(job.error.isEmpty(), symbologies.contains(number));
            if (job.error.isEmpty())
                continue;
            QVERIFY2(job.error.startsWith("block 2: "), qPrintable(job.error));
            QVERIFY2(job.error.contains(QString::number(number)), qPrintable(job.error));
            QCOMPARE(job.bytes, QByteArray());
        }
    }

    void actionsDoWhatThePageSays_data()
    {
        QTest::addColumn<QByteArray>("model");
        QTest::addColumn<int>("actions");
        QTest::addColumn<QString>("expected");
        const auto rows = [](const char *model, std::initializer_list<const char *> expected) {
            int actions = 0;
            for (const char *events : expected) {
                QTest::addRow("%s: %d", model, actions)
                    << QByteArray(model) << actions << QString(events);
                ++actions;
            }
        };
        // Bit 2 has no meaning.
        rows(plainModel, {"", "cut", "", "cut", "", "cut", "", "cut", "cut", "cut", "cut", "cut",
                          "cut", "cut"});
        rows(presenterModel, {"", "cut", "", "cut", "cut eject", "cut eject", "cut eject",
                              "cut eject", "cut present", "cut present", "cut present",
                              "cut present", "cut eject", "cut eject"});
    }
    void actionsDoWhatThePageSays()
    {
        QFETCH(QByteArray, model);
        QFETCH(int, actions);
        QFETCH(QString, expected);
        TextPrinterDocument document = wordDocument();
        document.setCurrentTicketAction(QFlag(actions));
        const EncodedDocument job = encoded(document, model);
        QCOMPARE(namesOf(eventsOf(job, model)), expected);
        QCOMPARE(job.pieces, expected.contains("cut") ? 1 : 0);
    }

    void actionsOnThePreviousTicketComeFirst_data()
    {
        QTest::addColumn<QByteArray>("model");
        QTest::addColumn<int>("actions");
        QTest::addColumn<QString>("expected");
        QTest::newRow("cut") << QByteArray(plainModel) << 1 << "cut";
        QTest::newRow("nothing to hand out") << QByteArray(plainModel) << 4 << "";
        QTest::newRow("nothing to take back") << QByteArray(plainModel) << 8 << "";
        QTest::newRow("handed out") << QByteArray(presenterModel) << 4 << "eject";
        QTest::newRow("taken back") << QByteArray(presenterModel) << 8 << "retract";
        QTest::newRow("cut and handed out") << QByteArray(presenterModel) << 5 << "cut eject";
    }
    void actionsOnThePreviousTicketComeFirst()
    {
        QFETCH(QByteArray, model);
        QFETCH(int, actions);
        QFETCH(QString, expected);
        TextPrinterDocument document = wordDocument();
        document.setPrevTicketAction(QFlag(actions));
        const EncodedDocument job = encoded(document, model);
        const QVector<Event> events = eventsOf(job, model);
        QCOMPARE(namesOf(events), expected);
        for (const Event &event : events)
            QVERIFY(event.offset < job.bytes.indexOf("word"));
        QCOMPARE(job.pieces, expected.startsWith("cut") ? 1 : 0);
    }

    void heldTicketIsTakenBackByTheCallerWhereThereIsNoClock()
    {
        TextPrinterDocument document = wordDocument();
        document.setCurrentTicketAction(QFlag(9));
        document.setRetractionTimeout(30);
        const EncodedDocument job = encoded(document, presenterModel);
        QCOMPARE(job.retractAfterSeconds, 30);
        EncodedDocument later;
        later.bytes = job.retraction;
        QCOMPARE(namesOf(eventsOf(later, presenterModel)), QString("retract"));
        document.setRetractionTimeout(0);
        QCOMPARE(encoded(document, presenterModel).retraction, QByteArray());
    }

    void drawerOpensOnRequestAlone()
    {
        QCOMPARE(namesOf(eventsOf(encoded(wordDocument(), plainModel), plainModel)), QString());
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::Before;
        options.drawerPin = 5;
        const EncodedDocument job = encoded(wordDocument(), plainModel, options);
        const QVector<Event> events = eventsOf(job, plainModel);
        QCOMPARE(namesOf(events), QString("pulse"));
        QCOMPARE(events.at(0).pin, 5);
        QVERIFY(events.at(0).offset < job.bytes.indexOf("word"));
        const EncodedDocument none = encoded(wordDocument(), presenterModel, options);
        QVERIFY(!none.isFaithful());
    }

    void allowedRawCodeStandsBehindABlankOfItsOwn()
    {
        const TextPrinterDocument document =
            documentOf({textBlock(QString("a") + QChar(7) + 'b', AlignLeft, CharRawCode)});
        PrintOptions options;
        options.allowedRawCodes = QByteArray(1, '\x07');
        const EncodedDocument allowed = encoded(document, plainModel, options);
        QVERIFY2(allowed.bytes.contains("a \x07"
                                        "b"),
                 allowed.bytes.toHex(' ').constData());
        QVERIFY(allowed.isFaithful());
        const EncodedDocument usual = encoded(document, plainModel);
        QVERIFY2(usual.bytes.contains("a b"), usual.bytes.toHex(' ').constData());
        QVERIFY(!usual.isFaithful());
    }

    void operandBelow32OfAnAllowedCodeStandsBehindABlank()
    {
        const TextPrinterDocument document = documentOf({textBlock(QString::fromLatin1("\x1B"
                                                                                       "E1\x1B"
                                                                                       "E\x01"),
                                                                   AlignLeft, CharRawCode)});
        PrintOptions options;
        options.allowedRawCodes = QByteArray("\x01\x1B", 2);
        const EncodedDocument job = encoded(document, plainModel, options);
        QVERIFY2(job.bytes.contains(QByteArray(" \x1B"
                                               "E1 \x1B"
                                               "E \x01")),
                 job.bytes.toHex(' ').constData());
    }

    void rawCodeOfTheUpperHalfIsAByteOfTheFirstPage()
    {
        const TextPrinterDocument document =
            documentOf({textBlock(QString(QChar(219)), AlignLeft, CharRawCode)});
        const EncodedDocument job = encoded(document, plainModel);
        QVERIFY2(job.bytes.contains('\xDB'), job.bytes.toHex(' ').constData());
        QCOMPARE(textOf(layoutOf(document, targetOf(plainModel)),
                        layoutOf(document, targetOf(plainModel)).rows.at(0)),
                 QString(QChar(0x2588)));
    }

    void emptyLinesAreNoLessThanTheWayToTheCutter()
    {
        const auto lengthOf = [](int lines, int actions) {
            TextPrinterDocument document = wordDocument();
            document.setCurrentTicketAction(QFlag(actions));
            PrintOptions options;
            options.emptyLinesAtEnd = lines;
            const EncodedDocument job = encoded(document, plainModel, options);
            StreamInterpreter printer(*PrinterProfile::forModel(plainModel), {});
            const QVector<Paper> cut = printer.read(job.bytes);
            return cut.isEmpty() ? printer.finish().value(0).length : cut.at(0).length;
        };
        const PrintTarget target = targetOf(plainModel);
        const int cell = target.font(0).cell.height();
        const int way = target.profile().dotsToCutter();
        QVERIFY(way > cell);
        QCOMPARE(lengthOf(1, 0), 2 * cell);
        // A piece ends where the cutter is.
        QCOMPARE(lengthOf(0, 1), cell);
        QCOMPARE(lengthOf(1, 1), cell);
        QCOMPARE(lengthOf(20, 1), 21 * cell - way);
    }

    void paperLoopHasNoEffectAndANote()
    {
        TextPrinterDocument document = wordDocument();
        const QByteArray usual = encoded(document, presenterModel).bytes;
        document.setLoopPolicy(PaperLoopFirst);
        const EncodedDocument job = encoded(document, presenterModel);
        QCOMPARE(job.bytes, usual);
        QCOMPARE(job.notes.size(), 1);
        QVERIFY(job.isFaithful());
    }

    void documentForLongerLinesHasANoteWithBothNumbers()
    {
        TextPrinterDocument document = wordDocument();
        document.setSymbolsPerLine(69);
        const EncodedDocument job =
            DocumentEncoder(targetOf("CITIZEN_CBM_1000", 1), {}).encode(document);
        QCOMPARE(job.notes.size(), 1);
        QVERIFY2(job.notes.at(0).text.contains("69"), qPrintable(job.notes.at(0).text));
        const int symbols = targetOf("CITIZEN_CBM_1000", 1).symbolsPerLine();
        QVERIFY2(job.notes.at(0).text.contains(QString::number(symbols)),
                 qPrintable(job.notes.at(0).text));
        QVERIFY(job.isFaithful());
    }
};

QTEST_APPLESS_MAIN(TestDriversPage)
#include "tst_driverspage.moc"
