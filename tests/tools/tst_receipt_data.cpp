#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "receiptprogram.h"

namespace {

QJsonObject jsonOf(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

QJsonObject fileJson(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

/// The lines of the attributes in a document that was written.
QStringList attributeLines(const QString &output)
{
    QStringList lines;
    const QStringList all = output.split('\n');
    for (const QString &line : all) {
        if (line.startsWith("    "))
            lines.append(line.trimmed());
    }
    return lines;
}

ReceiptRun dataOf(const QByteArray &templateText, const QStringList &options = {})
{
    return runReceipt(QStringList{"data", "-"} + options, templateText);
}

/// What a run makes of a template and a document with this attribute, among others.
ReceiptRun wrapped(const QByteArray &templateText, const QByteArray &attributes,
                   const QStringList &wishes)
{
    const WorkFolder folder;
    QStringList options{"--from",
                        folder.file("old.json", "{\"attributes\": {" + attributes + "}}")};
    for (const QString &wish : wishes)
        options += {"--wrap", wish};
    ReceiptRun run = dataOf(templateText, options);
    run.errors.remove(folder.path("") + '/');
    return run;
}

constexpr char threePieces[] = "<NAME_1>\n[<NAME_2>]\n[<NAME_3>]\n";

QStringList galleryTemplates()
{
    return {"fiscal", "fuel", "pharmacy", "restaurant", "shift", "supermarket"};
}

/// moc takes no number sign in a raw string.
QByteArray withReferences(QByteArray schema)
{
    return schema.replace('@', '#');
}

}  // namespace

class TestReceiptData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachNameStandsOnceInTheOrderOfTheTemplate()
    {
        const ReceiptRun run =
            dataOf("<SHOP> <DOCNO,000>\n[<QTY1> x <PRICE,0.00><S><QTY1*PRICE,0.00>]\n<SHOP>\n");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("{\n"
                                     "  \"attributes\": {\n"
                                     "    \"SHOP\": \"SHOP\",\n"
                                     "    \"DOCNO\": 10,\n"
                                     "    \"QTY1\": 10,\n"
                                     "    \"PRICE\": \"10.00\"\n"
                                     "  }\n"
                                     "}\n"));
        QCOMPARE(run.status, 0);
    }

    void valueIsOfTheKindThatTheFormatsAskFor_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("value");
        const auto row = [](const char *name, const char *text, const char *value) {
            QTest::newRow(name) << QByteArray(text) << QString(value);
        };
        const char *const moment = "{\"datetime\": \"2026-03-14T18:05:30\"}";
        const char *const date = "{\"date\": \"2026-03-14\"}";
        row("no format", "<NAME>", "\"NAME\"");
        row("zeros in front", "<NAME,000000>", "10");
        row("no decimals", "<NAME,0>", "\"10.00\"");
        row("no decimals, and plain", "<NAME,0> <NAME>", "10");
        row("decimals", "<NAME,0.00>", "\"10.00\"");
        row("one decimal", "<NAME,0.0>", "\"10.0\"");
        row("most decimals of several", "<NAME,0.0> <NAME,0.0000> <NAME,0.00>", "\"10.0000\"");
        row("decimals with a unit", "<NAME,0.00 EUR>", "\"10.00\"");
        row("significant digits", "<NAME,0.E>", "\"10.00\"");
        row("six decimals", "<NAME,0.>", "\"10.00\"");
        row("decimals and zeros", "<NAME,000> <NAME,0.000>", "\"10.000\"");
        row("calculated", "<NAME*2>", "\"10.00\"");
        row("calculated, and printed plain", "<NAME*2> <NAME>", "10");
        row("calculated, and with zeros", "<NAME*2> <NAME,000>", "10");
        row("in a function", "<floor(NAME),0>", "\"10.00\"");
        row("format of a result", "<NAME*2,0.000>", "\"10.00\"");
        row("date", "<NAME,dd.mm.yyyy>", date);
        row("month alone", "<NAME,mm>", date);
        row("capital months", "<NAME,MM>", date);
        row("time", "<NAME,hh:nn>", "{\"time\": \"18:05:30\"}");
        row("seconds", "<NAME,ss>", "{\"time\": \"18:05:30\"}");
        row("date and time", "<NAME,dd.mm.yyyy hh:nn>", moment);
        row("date here and time there", "<NAME,dd.mm.yyyy> <NAME,hh:nn>", moment);
        row("letters between apostrophes", "<NAME,dd.mm. 'hs'>", date);
        row("apostrophe without its partner", "<NAME,hh'dm>", "{\"time\": \"18:05:30\"}");
        row("date and amount", "<NAME,dd.mm.yyyy> <NAME,0.00>", "\"NAME\"");
        row("format of nothing", "<NAME,abc>", "\"NAME\"");
        row("in lower case", "<name>", nullptr);
        row("of other letters", "<\xD0\xA7\xD0\xB5\xD0\xBA\xD0\xB8>", nullptr);
    }
    void valueIsOfTheKindThatTheFormatsAskFor()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, value);
        const ReceiptRun run = dataOf(text);
        const QString name =
            value.isEmpty() ? QString::fromUtf8(text.mid(1, text.size() - 2)) : QString("NAME");
        QCOMPARE(attributeLines(run.output),
                 QStringList(QString("\"%1\": ").arg(name) +
                             (value.isEmpty() ? '"' + name + '"' : value)));
        QCOMPARE(run.errors, QString());
    }

    void whatIsNoAttributeIsLeftOut()
    {
        const ReceiptRun run = dataOf(
            "<SPECSYMBOLS=shop>\n<B>bold<:B> <H2> <W2:> <LS3> <F2> <ABC> <123> <#12>\n"
            "<FISCAL_BODY>\n<fiscal_qr>\n<b:> <12+5> <2*pi*1> <sqrt(16),0> <ncr(5,2),0>\n"
            "<QR>https://example.org\n<I>8 1 data</I>\n<unfinished\n<X:> never <:X>\n");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("{\n  \"attributes\": {}\n}\n"));
    }

    void namesOfAnExpressionAreItsWords()
    {
        const ReceiptRun run = dataOf(
            "<floor((SUM1+SUM_2)*100/3)/100-e*pi+maximum(PAID),0.00> <\xD0\xA7\xD0\xB5\xD0\xBA+1>");
        QStringList names;
        for (const QString &line : attributeLines(run.output))
            names.append(line.section('"', 1, 1));
        QCOMPARE(names, (QStringList{"SUM1", "SUM_2", "PAID", QString::fromUtf8("Чек")}));
    }

    void entriesAndCopyMarkAreThereWhereTheTemplateHasThem()
    {
        const QJsonObject both = jsonOf(dataOf("No. <docno>\n<Entries>\n").output);
        QCOMPARE(both.value("entries"), QJsonValue("First=10.00\tSecond=20.00"));
        QCOMPARE(both.value("isCopy"), QJsonValue(false));
        QCOMPARE(both.value("attributes").toObject().keys(), QStringList("docno"));
        // A tag with a format has no mark behind it.
        QCOMPARE(jsonOf(dataOf("No. <DOCNO,000>\n").output).keys(), QStringList("attributes"));
    }

    void nameThatReadsAsANumberIsNoSample()
    {
        QCOMPARE(attributeLines(dataOf("<INFX> <INF > <infinity>").output).size(), 3);
        const QJsonObject attributes =
            jsonOf(dataOf("<infinity>").output).value("attributes").toObject();
        const WorkFolder folder;
        const QString data = folder.file("d.json", dataOf("<infinity>").output.toUtf8());
        const ReceiptRun run = runReceipt({"render", "-", data}, "<infinity>");
        QCOMPARE(run.output, attributes.value("infinity").toString() + '\n');
    }

    void skeletonFillsItsTemplate()
    {
        QStringList templates{"kiosk.cpt", "cafe.cpt", "grocery.cpt", "gallery/parking.bbcode"};
        for (const QString &name : galleryTemplates())
            templates.append("gallery/" + name + ".cpt");
        const WorkFolder folder;
        for (const QString &name : templates) {
            const QString data = folder.path("data.json");
            const ReceiptRun made = runReceipt({"data", example(name), "--output", data});
            QCOMPARE(made.errors + made.output, QString());
            const ReceiptRun run = runReceipt({"fill", example(name), data});
            QCOMPARE(run.errors, QString());
            const QString findings =
                runReceipt({"lint", example(name), "--data", data, "--fiscal"}).output;
            for (const char *const rule : {"unknown-attribute", "bad-expression", "value-format"})
                QVERIFY2(!findings.contains(rule), qPrintable(findings));
        }
    }

    void commentsAreASecondFile()
    {
        const WorkFolder folder;
        const ReceiptRun run =
            dataOf("<SHOP>\n[Paid <PAID,0.00>]<S><PAID*2> <DOCNO>\n<ENTRIES>\n",
                   {"--comments", folder.path("about.txt"), "--output", folder.path("data.json")});
        QCOMPARE(run.errors + run.output, QString());
        QVERIFY(!folder.content("data.json").isEmpty());
        QCOMPARE(QString::fromUtf8(folder.content("about.txt")),
                 QString("SHOP: a text, or a value of any kind\n"
                         "  1:1: <SHOP>\n"
                         "PAID: a text with decimals, such as \"10.00\"\n"
                         "  2:7: <PAID,0.00>\n"
                         "  2:22: <PAID*2>\n"
                         "DOCNO: a text, or a value of any kind\n"
                         "  2:31: <DOCNO>\n"
                         "entries: a line each, name and value with \"=\" between them; the "
                         "entries with tabulators between them\n"
                         "isCopy: true for a receipt that is printed again\n"));
    }

    void commentSaysThatAValueMayBeEmpty()
    {
        const WorkFolder folder;
        const QString about = folder.path("about.txt");
        QCOMPARE(dataOf("[Card <CARD>]\n", {"--comments", about}).status, 0);
        QVERIFY(folder.content("about.txt").contains("if it is empty or zero"));
    }

    void valuesOfTheOldDocumentAreTakenOver()
    {
        const WorkFolder folder;
        const QString old =
            folder.file("old.json",
                        "{\"attributes\": {\"SHOP\": \"Kiosk\", \"CARD\": 2200701234567890123, "
                        "\"WHEN\": {\"date\": \"2025-01-02\"}, \"OTHER\": true, \"AND_THIS\": "
                        "\"\\u00e9\"}, \"entries\": \"a=b\", \"isCopy\": true}");
        const ReceiptRun run = dataOf("<CARD> <SHOP> <NEWS> <WHEN>\n", {"--from", old});
        QCOMPARE(run.output, QString("{\n"
                                     "  \"attributes\": {\n"
                                     "    \"CARD\": 2200701234567890123,\n"
                                     "    \"SHOP\": \"Kiosk\",\n"
                                     "    \"NEWS\": \"NEWS\",\n"
                                     "    \"WHEN\": {\"date\": \"2025-01-02\"},\n"
                                     "    \"AND_THIS\": \"é\",\n"
                                     "    \"OTHER\": true\n"
                                     "  },\n"
                                     "  \"entries\": \"a=b\",\n"
                                     "  \"isCopy\": true\n"
                                     "}\n"));
        QCOMPARE(run.errors,
                 QString("receipt: %1: not there, and made up: NEWS\n"
                         "receipt: %1: not in the template, and kept: AND_THIS, OTHER\n")
                     .arg(old));
        QCOMPARE(run.status, 0);
        // Done again, nothing changes and nothing is told but what isn't needed.
        const QString next = folder.file("next.json", run.output.toUtf8());
        QCOMPARE(dataOf("<CARD> <SHOP> <NEWS> <WHEN>\n", {"--from", next}).output, run.output);
    }

    void nameLikeAnExpressionIsKnownFromTheOldDocument()
    {
        const WorkFolder folder;
        const QString old = folder.file("old.json", "{\"attributes\": {\"SHOP-NAME\": \"Kiosk\"}}");
        const ReceiptRun run = dataOf("<SHOP-NAME>\n", {"--from", old});
        QCOMPARE(attributeLines(run.output), QStringList("\"SHOP-NAME\": \"Kiosk\""));
        QCOMPARE(run.errors, QString());
    }

    void mistakesOfTheOldDocumentAreTold()
    {
        const WorkFolder folder;
        const QString old = folder.file("old.json", "{\"attributes\": {\"SHOP\": null}, \"x\": 1}");
        const ReceiptRun run = dataOf("<SHOP>\n", {"--from", old});
        QVERIFY(run.errors.contains("old.json: attributes.SHOP: "));
        QVERIFY(run.errors.contains("old.json: x: unknown key"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        const QString other = folder.file("t.cpt", "Receipt <DOCNO>\n");
        QVERIFY(dataOf("<SHOP>\n", {"--from", other}).errors.contains("this is a template"));
        QVERIFY(runReceipt({"data", example("kiosk.json")}).errors.contains("kiosk.json: "));
        QCOMPARE(dataOf("<SHOP>\n", {"--from", folder.path("none.json")}).status, 1);
        QCOMPARE(dataOf("<SHOP>\n", {"--from", folder.file("list.json", "[]")}).status, 1);
    }

    void textIsCutAtWordEnds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QStringList>("pieces");
        const auto row = [](const char *name, const QString &text, int width,
                            const QStringList &pieces) {
            QTest::newRow(name) << text << width << pieces;
        };
        row("fits", "Nasal spray", 11, {"Nasal spray"});
        row("one too narrow", "Nasal spray", 10, {"Nasal", "spray"});
        row("three", "Vitamin D3 1000 IU", 10, {"Vitamin D3", "1000 IU"});
        row("empty", "", 10, {});
        row("blanks alone", "   ", 10, {});
        row("blanks around and between", "  a   b  ", 10, {"a b"});
        row("line feed and tabulator", "one\\ntwo\\tthree", 9, {"one two", "three"});
        row("word as long as the width", "abcdef gh", 6, {"abcdef", "gh"});
        row("longer word is cut", "ab cdefghi", 5, {"ab", "cdefg", "hi"});
        row("rest of a long word gets company", "cdefghi jk", 5, {"cdefg", "hi jk"});
        row("letters of two characters stay whole", QString::fromUtf8("e\u0301e\u0301e\u0301"), 3,
            {QString::fromUtf8("e\u0301"), QString::fromUtf8("e\u0301"),
             QString::fromUtf8("e\u0301")});
        row("letter wider than the width", QString::fromUtf8("e\u0301x"), 1,
            {QString::fromUtf8("e\u0301"), "x"});
        row("blank that doesn't break", QString::fromUtf8("500\u00a0mg tablets"), 9,
            {QString::fromUtf8("500\u00a0mg"), "tablets"});
        row("a number at the end gets a word", "pack of two 007", 12, {"pack of", "two 007"});
        row("a number in the middle gets a word", "a b 12,50 tablets", 7,
            {"a", "b 12,50", "tablets"});
        row("Cyrillic", QString::fromUtf8("Тёплый хлеб"), 6,
            {QString::fromUtf8("Тёплый"), QString::fromUtf8("хлеб")});
    }
    void textIsCutAtWordEnds()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(QStringList, pieces);
        const ReceiptRun run = wrapped(threePieces, ("\"NAME\": \"" + text + '"').toUtf8(),
                                       {QString("NAME=%1").arg(width)});
        QCOMPARE(run.errors, QString());
        const QJsonObject attributes = jsonOf(run.output).value("attributes").toObject();
        // What the text doesn't fill is empty, and the whole is gone.
        while (pieces.size() < 3)
            pieces.append(QString());
        QCOMPARE(attributes, (QJsonObject{{"NAME_1", pieces.at(0)},
                                          {"NAME_2", pieces.at(1)},
                                          {"NAME_3", pieces.at(2)}}));
    }

    void textThatCannotBeCutIsAnError_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("complaint");
        const auto row =
            [](const char *name, const char *attributes, const char *text, const char *complaint) {
                QTest::newRow(name)
                    << QByteArray(attributes) << QByteArray(text)
                    << QString("receipt: old.json: attributes.NAME: %1\n").arg(complaint);
            };
        const char *const text = "\"NAME\": \"one two\"";
        row("name that exists", "\"NAME\": \"a b\", \"NAME_1\": \"x\"", threePieces,
            "can't be cut, as there is \"NAME_1\"");
        row("name behind the last piece that exists", "\"NAME\": \"a b\", \"NAME_17\": 1",
            threePieces, "can't be cut, as there is \"NAME_17\"");
        row("missing", "\"OTHER\": \"a\"", threePieces, "is missing, and can't be cut");
        row("number", "\"NAME\": 12", threePieces, "is no text, and can't be cut");
        row("template without pieces", text, "<NAME>\n",
            "makes 2 pieces of up to 5 characters, and the template has no <NAME_1>");
        row("template with the second piece alone", text, "<NAME_2>\n",
            "makes 2 pieces of up to 5 characters, and the template has no <NAME_1>");
        row("template with one piece", text, "<NAME_1>\n<NAME_3>\n",
            "makes 2 pieces of up to 5 characters, and the template has <NAME_1> only");
        row("long words", "\"NAME\": \"abcdefghijk lmnop q\"", threePieces,
            "makes 5 pieces of up to 5 characters, and the template has <NAME_1> to <NAME_3> "
            "only");
        row("piece that is a number", "\"NAME\": \"abcde 007 abcde\"", threePieces,
            "the piece \"007\" would be read as a number; another width is needed");
    }
    void textThatCannotBeCutIsAnError()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QByteArray, text);
        QFETCH(QString, complaint);
        const ReceiptRun run = wrapped(text, attributes, {"NAME=5"});
        QCOMPARE(run.errors, complaint);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void namesLikePiecesOfOthersStay()
    {
        const ReceiptRun run =
            wrapped("<NAME_1> <NAME_X> <NAMES_1> <NAME_01>",
                    "\"NAME\": \"a\", \"NAME_X\": \"b\", \"NAMES_1\": \"c\", \"NAME_01\": \"d\"",
                    {"NAME=5"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(attributeLines(run.output),
                 (QStringList{"\"NAME_1\": \"a\",", "\"NAME_X\": \"b\",", "\"NAMES_1\": \"c\",",
                              "\"NAME_01\": \"d\""}));
    }

    void wholeTextStaysWhereTheTemplateHasIt()
    {
        const ReceiptRun run = wrapped("<NAME>\n<NAME_1>\n", "\"NAME\": \"one\"", {"NAME=5"});
        QCOMPARE(attributeLines(run.output),
                 (QStringList{"\"NAME\": \"one\",", "\"NAME_1\": \"one\""}));
    }

    void severalTextsAreCut()
    {
        const ReceiptRun run = wrapped("<NAME_1><NAME_2> <OTHER_1><OTHER_2>",
                                       "\"NAME\": \"one two\", \"OTHER\": \"three four five\"",
                                       {"NAME=3", "OTHER=10"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(attributeLines(run.output),
                 (QStringList{"\"NAME_1\": \"one\",", "\"NAME_2\": \"two\",",
                              "\"OTHER_1\": \"three four\",", "\"OTHER_2\": \"five\""}));
    }

    void galleryIsCutByTheCommand_data()
    {
        QTest::addColumn<QStringList>("wishes");
        QTest::newRow("pharmacy") << QStringList{"NAME1=32", "NAME2=32", "NAME3=32"};
        QTest::newRow("shift") << QStringList{"SHOP=32"};
    }
    void galleryIsCutByTheCommand()
    {
        QFETCH(QStringList, wishes);
        const QString name = QString("gallery/") + QTest::currentDataTag();
        QStringList arguments{"data", example(name + ".cpt"), "--from",
                              example(name + "-names.json")};
        for (const QString &wish : wishes)
            arguments += {"--wrap", wish};
        QCOMPARE(jsonOf(runReceipt(arguments).output).value("attributes"),
                 fileJson(example(name + ".json")).value("attributes"));
    }

    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QStringList &options, const char *complaint) {
            QTest::newRow(name) << options << QString("receipt: ") + complaint + '\n';
        };
        const QString old = example("kiosk.json");
        for (const char *const wish : {"NAME", "NAME=", "=5", "NAME=0", "NAME=1001", "NAME=x"})
            row(wish, {"--from", old, "--wrap", wish},
                qPrintable(QString("--wrap: \"%1\" is no NAME=WIDTH with a width from 1 to 1000")
                               .arg(wish)));
        row("twice", {"--from", old, "--wrap", "A=5", "--wrap", "A=6"},
            "--wrap: \"A\" is given twice");
        row("cut without a document", {"--wrap", "A=5"}, "--wrap needs --from");
        row("schema of a document", {"--schema", "--from", old},
            "--schema and --from exclude each other");
        row("unknown encoding", {"--codec", "none"}, "--codec: there is no encoding \"none\"");
        row("both from standard input", {"--from", "-"},
            "standard input can be only one of the files");
    }
    void wrongUsage()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, complaint);
        const ReceiptRun run = dataOf("<NAME>", options);
        QCOMPARE(run.errors, complaint);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void filesThatAreReadArentWritten()
    {
        const WorkFolder folder;
        const QString old = folder.file("old.json", "{\"attributes\": {\"NAME\": \"x\"}}");
        const QString text = folder.file("t.cpt", "<NAME>\n");
        for (const QStringList &options : {QStringList{"--from", old, "--output", old},
                                           {"--output", text},
                                           {"--comments", text},
                                           {"--from", old, "--comments", old}}) {
            const ReceiptRun run = runReceipt(QStringList{"data", text} + options);
            QCOMPARE(run.status, 1);
            QVERIFY(!run.errors.isEmpty());
        }
        QCOMPARE(folder.content("t.cpt"), QByteArray("<NAME>\n"));
        QCOMPARE(folder.content("old.json"), QByteArray("{\"attributes\": {\"NAME\": \"x\"}}"));
    }

    void templateOfAnotherEncoding()
    {
        const ReceiptRun run = dataOf("<\x97\xA5\xAA\xA8>\n", {"--codec", "cp866"});
        QCOMPARE(attributeLines(run.output), QStringList(QString::fromUtf8("\"Чеки\": \"Чеки\"")));
        QCOMPARE(dataOf("\x97\n").status, 1);
    }

    void schemaIsThatOfTheTemplate()
    {
        const ReceiptRun run = dataOf("<SHOP>\n[<PAID,0.00>]\n<ENTRIES>\n", {"--schema"});
        QCOMPARE(run.errors, QString());
        const QJsonObject schema = jsonOf(run.output);
        QCOMPARE(schema.value("$schema"), QJsonValue("http://json-schema.org/draft-07/schema#"));
        QCOMPARE(schema.value("title"), QJsonValue("-"));
        QCOMPARE(schema.value("required"), QJsonValue(QJsonArray{"attributes", "entries"}));
        const QJsonObject attributes =
            schema.value("properties").toObject().value("attributes").toObject();
        // What stands in groups alone may be missing.
        QCOMPARE(attributes.value("required"), QJsonValue(QJsonArray{"SHOP"}));
        QCOMPARE(attributes.value("properties").toObject().keys(), (QStringList{"PAID", "SHOP"}));
        QCOMPARE(
            attributes.value("properties").toObject().value("PAID").toObject().value("description"),
            QJsonValue("a text with decimals, such as \"10.00\""));
    }

    void schemaOnThePageForAuthorsIsThatOfItsTemplate()
    {
        QCOMPARE(fileJson(example("authors/kiosk.schema.json")),
                 jsonOf(runReceipt({"data", example("kiosk.cpt"), "--schema"}).output));
    }

    void documentsOfTheExamplesFitTheirSchemas()
    {
        QStringList names{"kiosk", "cafe", "authors/values", "authors/groups", "authors/dates"};
        for (const QString &name : galleryTemplates())
            names.append("gallery/" + name);
        const WorkFolder folder;
        for (const QString &name : names) {
            const QString schema = folder.path("schema.json");
            const QString text = example(name + ".cpt");
            QCOMPARE(runReceipt({"data", text, "--schema", "--output", schema}).status, 0);
            const QString skeleton =
                folder.file("data.json", runReceipt({"data", text}).output.toUtf8());
            for (const QString &data : {example(name + ".json"), skeleton}) {
                const ReceiptRun run = runReceipt({"render", text, data, "--data-schema", schema});
                QCOMPARE(run.errors, QString());
                QCOMPARE(run.status, 0);
            }
        }
    }

    void documentThatDoesntFitIsAnError_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QString>("fault");  ///< empty: it fits
        const auto row = [](const char *name, const char *text, const char *attributes,
                            const char *fault) {
            QTest::newRow(name) << QByteArray(text) << QByteArray(attributes) << QString(fault);
        };
        const char *const real = "NAME: a text with decimals, such as \"10.00\" is expected";
        const char *const number = "NAME: a number, such as 10 or \"10.00\" is expected";
        const char *const whole =
            "NAME: a whole number, such as 10, or a text of digits, such as "
            "\"007723\" is expected";
        row("missing", "<NAME>", "",
            "NAME: is missing; a text, or a value of any kind is expected");
        row("missing in a group", "[<NAME>]", "", "");
        row("missing in a group and outside", "[<NAME>] <NAME>", "",
            "NAME: is missing; a text, or a value of any kind is expected");
        row("another one", "<NAME>", "\"NAME\": \"x\", \"MORE\": 1", "");
        row("amount", "<NAME,0.00>", "\"NAME\": \"-12.50\"", "");
        row("real number", "<NAME,0.00>", "\"NAME\": 12.5", "");
        row("whole number for an amount", "<NAME,0.00>", "\"NAME\": 100.00", real);
        row("text of a whole number for an amount", "<NAME,0.00>", "\"NAME\": \"100\"", real);
        row("decimal comma", "<NAME,0.00>", "\"NAME\": \"12,50\"", real);
        row("word for an amount", "<NAME,0.00>", "\"NAME\": \"free\"", real);
        row("empty amount", "<NAME,0.00>", "\"NAME\": \"\"", real);
        row("empty amount in a group", "[<NAME,0.00>]", "\"NAME\": \"\"", "");
        row("no amount in a group", "[<NAME,0.00>]", "\"NAME\": 0", "");
        row("word in a group", "[<NAME,0.00>]", "\"NAME\": \"free\"", real);
        row("number to calculate with", "<NAME*2>", "\"NAME\": 3", "");
        row("text to calculate with", "<NAME*2>", "\"NAME\": \"3\"", "");
        row("amount to calculate with", "<NAME*2>", "\"NAME\": \"3.50\"", "");
        row("word to calculate with", "<NAME*2>", "\"NAME\": \"2*0\"", number);
        row("exponent to calculate with", "<NAME*2>", "\"NAME\": \"1e5\"", number);
        row("code", "<NAME,000000>", "\"NAME\": \"007723\"", "");
        row("whole number as a code", "<NAME,000000>", "\"NAME\": 7723", "");
        row("letters in a code", "<NAME,000000>", "\"NAME\": \"A07723\"", whole);
        row("broken number as a code", "<NAME,000000>", "\"NAME\": 7.5", whole);
        row("date", "<NAME,dd.mm.yyyy>", "\"NAME\": {\"date\": \"2026-05-09\"}", "");
        row("date of a moment", "<NAME,dd.mm.yyyy>",
            "\"NAME\": {\"datetime\": \"2026-05-09T10:00\"}", "");
        row("text as a date", "<NAME,dd.mm.yyyy>", "\"NAME\": \"2026-05-09\"",
            "NAME: a date, such as {\"date\": \"2026-03-14\"} is expected");
        row("time as a date", "<NAME,dd.mm.yyyy>", "\"NAME\": {\"time\": \"10:00\"}",
            "NAME: a date, such as {\"date\": \"2026-03-14\"} is expected");
        row("date as a moment", "<NAME,dd.mm hh:nn>", "\"NAME\": {\"date\": \"2026-05-09\"}",
            "NAME: a date with a time, such as {\"datetime\": \"2026-03-14T18:05:30\"} is "
            "expected");
        row("time", "<NAME,hh:nn>", "\"NAME\": {\"time\": \"10:00\"}", "");
    }
    void documentThatDoesntFitIsAnError()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, attributes);
        QFETCH(QString, fault);
        const WorkFolder folder;
        const QString schema =
            folder.file("schema.json", dataOf(text, {"--schema"}).output.toUtf8());
        const QString data = folder.file("data.json", "{\"attributes\": {" + attributes + "}}");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", schema}, text);
        QCOMPARE(run.errors,
                 fault.isEmpty()
                     ? QString()
                     : QString("receipt: %1: attributes.%2 (%3)\n").arg(data, fault, schema));
        QCOMPARE(run.status, fault.isEmpty() ? 0 : 1);
        QCOMPARE(run.output.isEmpty(), !fault.isEmpty());
    }

    void entriesAreMissed()
    {
        const WorkFolder folder;
        const QString schema =
            folder.file("s.json", dataOf("<ENTRIES>", {"--schema"}).output.toUtf8());
        const QString data = folder.file("data.json", "{}");
        const ReceiptRun run =
            runReceipt({"render", "-", data, "--data-schema", schema}, "<ENTRIES>");
        QCOMPARE(run.errors.count("is missing"), 2);
        QVERIFY(run.errors.contains("data.json: entries: is missing (" + schema + ')'));
    }

    void everyCommandThatReadsADocumentChecksIt_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const QString text = example("kiosk.cpt");
        const QString data = example("kiosk.json");
        QTest::newRow("data") << QStringList{"data", text, "--from", data};
        QTest::newRow("fill") << QStringList{"fill", text, data};
        QTest::newRow("lint") << QStringList{"lint", text, "--data", data};
        QTest::newRow("preview") << QStringList{"preview", text, data, "--output", "FOLDER/a.png"};
        QTest::newRow("print") << QStringList{"print",         text,       data, "--model",
                                              "CUSTOM_VKP_80", "--dry-run"};
        QTest::newRow("render") << QStringList{"render", text, data};
        QTest::newRow("document save")
            << QStringList{"document", "save", "FOLDER/saved", data, "--from", text};
    }
    void everyCommandThatReadsADocumentChecksIt()
    {
        QFETCH(QStringList, arguments);
        const WorkFolder folder;
        arguments.replaceInStrings("FOLDER", folder.path(""));
        const QString fine = folder.file(
            "fine.json", runReceipt({"data", example("kiosk.cpt"), "--schema"}).output.toUtf8());
        const QString other = folder.file(
            "other.json", "{\"properties\": {\"attributes\": {\"required\": [\"TABLE\"]}}}");
        QCOMPARE(runReceipt(arguments + QStringList{"--data-schema", fine}).status, 0);
        const ReceiptRun run = runReceipt(arguments + QStringList{"--data-schema", other});
        QCOMPARE(run.errors, QString("receipt: %1: attributes.TABLE: is missing (%2)\n")
                                 .arg(example("kiosk.json"), other));
        QCOMPARE(run.status, 1);
    }

    void schemaOfSomebodyElse_data()
    {
        QTest::addColumn<QByteArray>("schema");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const char *schema, const char *complaint) {
            QTest::newRow(name) << QByteArray(schema) << QString(complaint);
        };
        row("no JSON", "{", "s.json:1:2: ");
        row("unknown type", "{\"type\": \"frob\"}", "s.json: the schema can't be used: ");
        row("pattern that is none", "{\"properties\": {\"entries\": {\"pattern\": \"((\"}}}",
            "s.json: the schema can't be used: ");
        row("another file is needed",
            "{\"properties\": {\"entries\": {\"$ref\": \"http://x.y/z\"}}}",
            "s.json: the schema can't be used: ");
        row("another file is needed for all", "{\"$ref\": \"http://x.y/z\"}",
            "s.json: the schema can't be used: Fetching of remote JSON References not enabled.\n");
        row("a reference that is none", "{\"$ref\": 5}", "s.json: the schema can't be used: ");
        row("names that aren't checked", "{\"propertyNames\": {\"maxLength\": 1}}",
            "s.json: the schema can't be used: nothing is checked by \"propertyNames\"\n");
        row("a word of younger schemas, further inside",
            "{\"allOf\": [{\"dependentRequired\": {\"entries\": [\"x\"]}}]}",
            "s.json: the schema can't be used: nothing is checked by \"dependentRequired\"\n");
        row("a value of that name", "{\"properties\": {\"prefixItems\": {}}}", "");
        row("multiples of nothing",
            "{\"properties\": {\"attributes\": {\"additionalProperties\": {\"multipleOf\": 0}}}}",
            "s.json: the schema can't be used: \"multipleOf\" is a number above 0\n");
        row("multiples of a number below nothing", "{\"multipleOf\": -1}",
            "s.json: the schema can't be used: \"multipleOf\" is a number above 0\n");
        row("key that isn't allowed",
            "{\"properties\": {\"isCopy\": {}}, \"additionalProperties\": false}",
            "d.json: attributes: isn't allowed there (s.json)\n");
        row("places without a description",
            "{\"properties\": {\"entries\": {\"type\": \"string\", \"maxLength\": 2}}}",
            "d.json: entries: String should be no more than 2 characters in length. (s.json)\n");
        row("everything", "{\"type\": \"array\"}",
            "d.json: Value type not permitted by 'type' constraint. (s.json)\n");
        row("fits", "{\"title\": \"x\", \"properties\": {\"entries\": {\"maxLength\": 9}}}", "");
    }
    void schemaOfSomebodyElse()
    {
        QFETCH(QByteArray, schema);
        QFETCH(QString, complaint);
        const WorkFolder folder;
        const QString data =
            folder.file("d.json", "{\"attributes\": {\"A\": 1}, \"entries\": \"a=b\"}");
        ReceiptRun run = runReceipt(
            {"render", "-", data, "--data-schema", folder.file("s.json", schema)}, "x\n");
        run.errors.remove(folder.path("") + '/');
        if (complaint.isEmpty() || complaint.endsWith('\n'))
            QCOMPARE(run.errors, complaint.isEmpty() ? complaint : "receipt: " + complaint);
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.status, complaint.isEmpty() ? 0 : 1);
    }

    /// Such a schema would be followed until the stack is used up, or for ever.
    void schemaWithoutAnEndIsAnError_data()
    {
        QTest::addColumn<QByteArray>("schema");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char *name, const QByteArray &schema, const QString &fault) {
            QTest::newRow(name) << withReferences(schema) << fault;
        };
        row("root", R"({"$ref": "@"})", "\"#\" refers to itself");
        row("root with a slash", R"({"$ref": "@/"})", "\"#\" refers to itself");
        row("part of the root", R"({"allOf": [{"$ref": "@"}]})", "\"#\" refers to itself");
        row("condition", R"({"if": {"$ref": "@"}, "then": {}})", "\"#\" refers to itself");
        row("list by its number", R"({"not": {"anyOf": [{}, {"$ref": "@/not/anyOf/01"}]}})",
            "\"#/not/anyOf/1\" refers to itself");
        row("dependency", R"({"dependencies": {"entries": {"$ref": "@"}}})",
            "\"#\" refers to itself");
        row("definition",
            R"({"properties": {"entries": {"$ref": "@/definitions/a~1%62"}},
                "definitions": {"a/b": {"oneOf": [{"$ref": "@/definitions/a~1b"}]}}})",
            "\"#/definitions/a~1b\" refers to itself");
        row("each other",
            R"({"properties": {"isCopy": {"$ref": "@/definitions/a"}},
                "definitions": {"a": {"$ref": "@/definitions/b"},
                                "b": {"$ref": "@/definitions/a"}}})",
            "\"#/definitions/a\" refers to itself");
        row("address of its own", R"({"id": "http://x.y/z", "allOf": [{"$ref": "http://x.y/z@"}]})",
            "\"#\" refers to itself");
        QByteArray chain = R"({"$ref": "@/definitions/0", "definitions": {)";
        QByteArray doubling = R"({"$ref": "@/definitions/0", "definitions": {)";
        for (int i = 0; i < 5000; ++i)
            chain += QString(R"("%1": {"$ref": "@/definitions/%2"}, )").arg(i).arg(i + 1).toUtf8();
        for (int i = 0; i < 40; ++i)
            doubling += QString(R"("%1": {"allOf": [{"$ref": "@/definitions/%2"},
                                            {"not": {"$ref": "@/definitions/%2"}}]}, )")
                            .arg(i)
                            .arg(i + 1)
                            .toUtf8();
        row("long chain", chain + R"("5000": {}}})", "its schemas lie or refer more than 500 deep");
        row("schemas inside of each other",
            QByteArray(600, 'x').replace("x", R"({"not": )") + "{}" + QByteArray(600, '}'),
            "its schemas lie or refer more than 500 deep");
        row("twice as many by each", doubling + R"("40": {}}})",
            "\"#\" is more than 100000 schemas");
    }
    void schemaWithoutAnEndIsAnError()
    {
        QFETCH(QByteArray, schema);
        QFETCH(QString, fault);
        const WorkFolder folder;
        const QString file = folder.file("s.json", schema);
        const QString data = folder.file("d.json", R"({"entries": "a=b", "isCopy": true})");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.errors,
                 QString("receipt: %1: the schema can't be used: %2\n").arg(file, fault));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void schemaThatRefersToItselfFurtherInsideIsUsed()
    {
        const WorkFolder folder;
        const QString file =
            folder.file("s.json", withReferences(R"({"properties": {"attributes": {"$ref": "@"},
                                                       "A": {"$ref": "@/definitions/a"}},
                                         "definitions": {"a": {"type": "string",
                                                "items": {"$ref": "@/definitions/a"}}}})"));
        const QString data = folder.file("d.json", R"({"attributes": {"A": 1}})");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.errors, QString("receipt: %1: attributes.A: Value type not permitted by "
                                     "'type' constraint. (%2)\n")
                                 .arg(data, file));
        const QByteArray deep = QByteArray(490, 'x').replace("x", R"({"allOf": [)") + "{}" +
                                QByteArray(490, 'x').replace("x", "]}");
        const ReceiptRun deepRun = runReceipt(
            {"render", "-", data, "--data-schema", folder.file("deep.json", deep)}, "x\n");
        QCOMPARE(deepRun.errors, QString());
        QCOMPARE(deepRun.status, 0);
        QCOMPARE(deepRun.output, QString("x\n"));
    }

    void patternsAreForTextsOfAnyLength_data()
    {
        QTest::addColumn<QString>("schema");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fits");
        const auto row = [](const char *name, const char *schema, const QString &text, bool fits) {
            QTest::newRow(name) << QString(schema) << text << fits;
        };
        const QString longText(200000, 'x');
        row("long text", R"("pattern": "^[ -~]*$")", longText, true);
        row("long text that doesn't fit", R"("pattern": "^[ -~]*$")", longText + QChar(0xE9),
            false);
        row("groups", R"("pattern": "^((a|x)|[ -~])*$")", QString(1000, 'x'), true);
        row("long text for a date", R"("format": "date")", QString(200000, '1'), false);
        row("date", R"("format": "date")", "2026-11-22", true);
        row("no date", R"("format": "date")", "today", false);
        row("long text of another format", R"("format": "email")", longText, true);
        row("anywhere", R"("pattern": "b")", "abc", true);
        row("line feed at the end", R"("pattern": "^[0-9]+$")", "12\\n", false);
        row("dollar in a class", R"("pattern": "^[$]$")", "$", true);
        row("escaped dollar", R"("pattern": "^\\$$")", "$", true);
        row("number of a character", "\"pattern\": \"^\\\\u0416$\"", QString(QChar(0x416)), true);
        row("letter of two bytes", R"("pattern": "^.$")", QString(QChar(0x416)), true);
        row("inside of others", R"("anyOf": [{"pattern": "^a"}, {"not": {"pattern": "b"}}])", "cb",
            false);
        row("beside others", R"("allOf": [{"maxLength": 3}], "pattern": "^a")", "abcd", false);
        row("default that looks like one", "\"default\": {\"pattern\": \"((\"}", "a", true);
    }
    void patternsAreForTextsOfAnyLength()
    {
        QFETCH(QString, schema);
        QFETCH(QString, text);
        QFETCH(bool, fits);
        const WorkFolder folder;
        const QString file = folder.file(
            "s.json",
            QString(R"({"properties": {"attributes": {"properties": {"pattern": {%1}}}}})")
                .arg(schema)
                .toUtf8());
        const QString data = folder.file(
            "d.json", QString(R"({"attributes": {"pattern": "%1"}})").arg(text).toUtf8());
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.status, fits ? 0 : 1);
        QCOMPARE(run.output, QString(fits ? "x\n" : ""));
        QCOMPARE(run.errors.contains("d.json: attributes.pattern: "), !fits);
    }

    /// There is nothing to tell of a pattern but that it fails.
    void patternIsToldOnce()
    {
        const WorkFolder folder;
        const QString file =
            folder.file("s.json", R"({"properties": {"entries": {"pattern": "^x"}}})");
        const QString data = folder.file("d.json", R"({"entries": "a=b"})");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.errors, QString("receipt: %1: entries: Failed to match regex specified by "
                                     "'pattern' constraint. (%2)\n")
                                 .arg(data, file));
    }

    void patternsAreForNamesOfAnyLength_data()
    {
        QTest::addColumn<QString>("schema");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char *name, const char *schema, const QString &given,
                            const QString &fault) {
            QTest::newRow(name) << QString(schema) << given << fault;
        };
        const QString type = "Value type not permitted by 'type' constraint.";
        const QString longName(200000, 'x');
        row("long", R"("patternProperties": {"^[ -~]*$": {"type": "number"}})", longName, "");
        row("long, and another value", R"("patternProperties": {"^[ -~]*$": {"type": "string"}})",
            longName, type);
        row("no such name", R"("patternProperties": {"^x": {"type": "string"}})", "y", "");
        row("named, too",
            R"("properties": {"x": {"maximum": 5}}, "patternProperties": {"^x": {"minimum": 1}})",
            "x", "");
        row("named with another value",
            R"("properties": {"x": {"minimum": 5}}, "patternProperties": {"^x": {"maximum": 9}})",
            "x", "Expected number greater than or equal to 5.000000");
        row("named with a value, and another by its pattern",
            R"("properties": {"x": {"maximum": 5}}, "patternProperties": {"^x": {"minimum": 2}})",
            "x", "Expected number greater than or equal to 2.000000");
        row("two patterns",
            R"("patternProperties": {"^x": {"maximum": 5}, "y$": {"type": "string"}})", "xy", type);
        row("others aren't allowed",
            R"("patternProperties": {"^x": {}}, "additionalProperties": false)", "y",
            "isn't allowed there");
        row("others aren't allowed, but this is",
            R"("patternProperties": {"^x": {}}, "additionalProperties": false)", "x", "");
        row("others are of another kind",
            R"("patternProperties": {"^x": {}}, "additionalProperties": {"type": "string"})", "y",
            type);
    }
    void patternsAreForNamesOfAnyLength()
    {
        QFETCH(QString, schema);
        QFETCH(QString, name);
        QFETCH(QString, fault);
        const WorkFolder folder;
        const QString file = folder.file(
            "s.json", QString(R"({"properties": {"attributes": {%1}}})").arg(schema).toUtf8());
        const QString data =
            folder.file("d.json", QString(R"({"attributes": {"%1": 1}})").arg(name).toUtf8());
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(
            run.errors,
            fault.isEmpty()
                ? QString()
                : QString("receipt: %1: attributes.%2: %3 (%4)\n").arg(data, name, fault, file));
        QCOMPARE(run.status, fault.isEmpty() ? 0 : 1);
    }

    void patternsOfNamesAreForSoManyNames()
    {
        const WorkFolder folder;
        QStringList patterns;
        QStringList names;
        for (int i = 0; i < 400; ++i) {
            patterns.append(QString(R"("%1|x": {})").arg(i));
            names.append(QString(R"("x%1": 1)").arg(i));
        }
        const QString file =
            folder.file("s.json", QString(R"({"properties": {"attributes": {"patternProperties":
                                              {%1}}}})")
                                      .arg(patterns.join(", "))
                                      .toUtf8());
        const QString data = folder.file(
            "d.json", QString(R"({"attributes": {%1}})").arg(names.join(", ")).toUtf8());
        QCOMPARE(runReceipt({"render", "-", data, "--data-schema", file}, "x\n").errors,
                 QString("receipt: %1: the schema can't be used: its patterns are for more than "
                         "100000 names\n")
                     .arg(file));
    }

    /// What isn't known to fit is never taken as if it did.
    void patternThatTakesTooMuchIsAnError_data()
    {
        QTest::addColumn<QString>("schema");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        const QString groups = "^((a|x)|[ -~])*$";
        const QString ways = "^(x+)+$";
        const QString longText(2000000, 'x');
        const QString manyWays = QString(50, 'x') + 'y';
        QTest::newRow("long text") << R"({"pattern": "%1"})" << groups << longText;
        QTest::newRow("many ways") << R"({"not": {"pattern": "%1"}})" << ways << manyWays;
        QTest::newRow("long name") << R"({"patternProperties": {"%1": {}}})" << groups << longText;
        QTest::newRow("many ways in a name")
            << R"({"patternProperties": {"%1": {}}})" << ways << manyWays;
    }
    void patternThatTakesTooMuchIsAnError()
    {
        QFETCH(QString, schema);
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        const WorkFolder folder;
        const QString file = folder.file("s.json", schema.arg(pattern).toUtf8());
        const QString data =
            folder.file("d.json", QString(R"({"attributes": {"%1": "%1"}})").arg(text).toUtf8());
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.errors, QString("receipt: %1: the schema can't be used: the pattern \"%2\" "
                                     "takes too much for the text \"%3...\"\n")
                                 .arg(file, pattern, text.left(30)));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void patternThatIsNoneIsAnError_data()
    {
        QTest::addColumn<QByteArray>("schema");
        QTest::newRow("text") << QByteArray(R"({"properties": {"x": {"pattern": "+a"}}})");
        QTest::newRow("name") << QByteArray(R"({"patternProperties": {"+a": {}}})");
    }
    void patternThatIsNoneIsAnError()
    {
        QFETCH(QByteArray, schema);
        const WorkFolder folder;
        const QString file = folder.file("s.json", schema);
        const QString data = folder.file("d.json", R"({"entries": "a=b"})");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(
            run.errors,
            QString("receipt: %1: the schema can't be used: the pattern \"+a\": quantifier does "
                    "not follow a repeatable item\n")
                .arg(file));
        QCOMPARE(run.status, 1);
    }

    void schemaThatIsNoObjectIsAnError()
    {
        const WorkFolder folder;
        const QString file = folder.file("s.json", "[]");
        const QString data = folder.file("d.json", R"({"entries": "a=b"})");
        const ReceiptRun run = runReceipt({"render", "-", data, "--data-schema", file}, "x\n");
        QCOMPARE(run.errors, QString("receipt: %1: the schema is no JSON object\n").arg(file));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void schemaNeedsAFileAndADocument_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QString text = example("kiosk.cpt");
        const QString data = example("kiosk.json");
        QTest::newRow("no document to check") << QStringList{"lint", text, "--data-schema", data}
                                              << "receipt: --data-schema needs a document\n";
        QTest::newRow("plain text") << QStringList{"render", "--plain", text, "--data-schema", data}
                                    << "receipt: --data-schema needs a document\n";
        QTest::newRow("drawn plain text")
            << QStringList{"preview", "--plain", text, "--data-schema", data}
            << "receipt: --data-schema needs a document\n";
        QTest::newRow("standard input") << QStringList{"render", text, data, "--data-schema", "-"}
                                        << "receipt: --data-schema: \"-\" is no file\n";
        QTest::newRow("no name") << QStringList{"fill", text, data, "--data-schema", ""}
                                 << "receipt: --data-schema: \"\" is no file\n";
    }
    void schemaNeedsAFileAndADocument()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.errors, complaint);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void valueIsOptionalInItsGroupAlone_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isRequired");
        const auto row = [](const char *text, bool isRequired) {
            QTest::newRow(text) << QByteArray(text) << isRequired;
        };
        row("<NAME>", true);
        row("[<NAME>]", false);
        row("[a [b] <NAME> [c] d]", false);
        row("[a] <NAME> [b]", true);
        row("] <NAME> [", true);
        row("[<NAME>", true);
        row("<NAME>]", true);
        row("[[<NAME>]", false);
        row("[<NAME>] <NAME>", true);
        row("[<NAME>]\n[<NAME*2>]", false);
        row("[\n<NAME>\n]", true);
        row("[b]<NAME>[/b]", true);
    }
    void valueIsOptionalInItsGroupAlone()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isRequired);
        const QJsonObject schema = jsonOf(dataOf(text, {"--schema"}).output);
        const QJsonObject attributes =
            schema.value("properties").toObject().value("attributes").toObject();
        QCOMPARE(attributes.value("required").toArray().contains("NAME"), isRequired);
    }

    void greatTemplateHasItsDocument()
    {
        QByteArray text;
        for (int i = 0; i < 20000; ++i)
            text += "[<NAME" + QByteArray::number(i) + ">]";
        const WorkFolder folder;
        const ReceiptRun run = dataOf(text);
        QCOMPARE(attributeLines(run.output).size(), 20000);
        const QString old = folder.file("old.json", run.output.toUtf8());
        QCOMPARE(dataOf(text, {"--from", old}).output, run.output);
    }

    void greatTextsAreCheckedAndCut()
    {
        const WorkFolder folder;
        const QByteArray digits(1000000, '7');
        const QString data =
            folder.file("d.json", "{\"attributes\": {\"NAME\": \"" + digits + "\"}}");
        for (const char *const text : {"<NAME,0.00>", "<NAME,000>", "<NAME*2>"}) {
            const QString schema =
                folder.file("s.json", dataOf(text, {"--schema"}).output.toUtf8());
            QCOMPARE(runReceipt({"render", "-", data, "--data-schema", schema}, text).status, 1);
        }
        const ReceiptRun run = dataOf("<NAME_1>", {"--from", data, "--wrap", "NAME=1000"});
        QVERIFY(run.errors.contains("makes 1000 pieces"));
        QCOMPARE(run.status, 1);
    }

    void emptyTemplateIsAnError()
    {
        const ReceiptRun run = dataOf("");
        QCOMPARE(run.errors, QString("receipt: -: the template is empty\n"));
        QCOMPARE(run.status, 1);
    }
};

QTEST_APPLESS_MAIN(TestReceiptData)
#include "tst_receipt_data.moc"
