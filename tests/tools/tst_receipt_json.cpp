#include <QtTest>

#include "receiptprogram.h"

/// What stands wrong in JSON that people write is told in their words, at its place.
class TestReceiptJson : public QObject
{
    Q_OBJECT

private:
    static ReceiptRun filled(const QByteArray &json)
    {
        const WorkFolder folder;
        return runReceipt({"fill", folder.file("a.cpt", "x\n"), "-"}, json);
    }

    static void addTextColumns()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("what");
    }

private Q_SLOTS:
    void mistakesAreToldAtTheirPlace_data()
    {
        addTextColumns();
        const auto row = [](const char *name, const char *json, const char *place,
                            const QString &what) {
            QTest::newRow(name) << QByteArray(json) << QString(place) << what;
        };
        row("comma behind a line",
            "{\"attributes\": {\n  \"A\": 1,\n  \"B\": \"2\"\n  \"C\": 3\n}}\n", "3:11",
            "a comma is missing behind line 3");
        row("comma behind a brace", "{\"attributes\": {\n}\n\n\"entries\": \"\"}", "2:2",
            "a comma is missing behind line 2");
        row("comma within a line", "{\"attributes\": {\"A\": 1 \"B\": 2}}", "1:23",
            "a comma is missing in front of \"B\"");
        row("comma in an array", "{\"attributes\": [1 2]}", "1:18",
            "a comma is missing in front of \"2\"");
        row("comma too many", "{\"attributes\": {\"A\": 1,\n}}", "1:23",
            "this comma is one too many: \"}\" follows");
        row("comma too many in an array", "{\"a\": [1,]}", "1:9",
            "this comma is one too many: \"]\" follows");
        row("two commas", "{\"a\": [1,,2]}", "1:10", "a value is missing in front of \",\"");
        row("two commas between names", "{\"a\": 1,,\"b\": 2}", "1:9",
            "a name in double quotes is expected in place of \",\"");
        row("colon", "{\"isCopy\" true}", "1:10", "a colon is missing behind the name \"isCopy\"");
        row("name without a value", "{\"isCopy\"}", "1:10",
            "a colon is missing behind the name \"isCopy\"");
        row("value", "{\"isCopy\": }", "1:11", "the value of \"isCopy\" is missing");
        row("value before a comma", "{\"isCopy\":, \"entries\": \"\"}", "1:11",
            "the value of \"isCopy\" is missing");
        row("name without quotes", "{attributes: {}}", "1:2",
            "a name stands in double quotes: write \"attributes\"");
        row("text without quotes", "{\"entries\": tea}", "1:13",
            "a text stands in double quotes: write \"tea\"");
        row("text in single quotes", "{\"entries\": 'tea'}", "1:13",
            "names and texts stand in double quotes, not in single ones");
        row("name in single quotes", "{'entries': \"tea\"}", "1:2",
            "names and texts stand in double quotes, not in single ones");
        row("typographic quotes", "{\"entries\": \xE2\x80\x9Ctea\xE2\x80\x9D}", "1:13",
            QString::fromUtf8("\xE2\x80\x9C isn't the double quote of JSON"));
        row("guillemets",
            "{\xC2\xAB"
            "entries\xC2\xBB: 1}",
            "1:2", QString::fromUtf8("\xC2\xAB isn't the double quote of JSON"));
        row("text without an end", "{\"entries\": \"tea}", "1:13",
            "the double quote that ends this text is missing");
        row("text without an end on its line", "{\"entries\": \"tea,\n\"isCopy\": true}", "1:13",
            "the double quote that ends this text is missing on its line");
        row("backslash", "{\"entries\": \"C:\\x\" 1}", "1:16",
            "a backslash in a text is written \\\\");
        row("text over two lines, and a comma further on",
            "{\"entries\": \"tea\nmilk\",\n\"isCopy\": true \"codec\": 1}", "3:15",
            "a comma is missing in front of \"codec\"");
        row("text over two lines, and a word further on",
            "{\"entries\": \"tea\nmilk\",\n\"isCopy\": True}", "3:11", "True is written true");
        row("text over two lines, and no end", "{\"entries\": \"tea\nmilk\", \"codec\": \"a}",
            "2:17", "the double quote that ends this text is missing");
        row("name over two lines", "{\"entries: 1,\n\"isCopy\": true}", "1:2",
            "the double quote that ends this text is missing on its line");
        row("backslash, and a comma further on",
            "{\"entries\": \"C:\\x\",\n\"isCopy\": true \"codec\": 1}", "2:15",
            "a comma is missing in front of \"codec\"");
        row("backslash at the end of a text", "{\"entries\": \"C:\\dir\\\"}", "1:16",
            "a backslash in a text is written \\\\");
        row("end of the object", "{\"attributes\": {\n\"A\": 1\n}\n", "3:2",
            "\"}\" is missing at the end, as line 1 has \"{\"");
        row("end of the inner object", "{\"attributes\":\n{\"A\": 1\n", "2:8",
            "\"}\" is missing at the end, as line 2 has \"{\"");
        row("end of an array", "{\"a\": [1", "1:9",
            "\"]\" is missing at the end, as line 1 has \"[\"");
        row("end of another kind", "{\"a\":\n[1}}", "2:3",
            "\"]\" is expected, as line 2 has \"[\"");
        row("brace too many", "{}}", "1:3", "\"}\" stands behind the end of the JSON text");
        row("text behind the end", "{}\nmore", "2:1",
            "\"more\" stands behind the end of the JSON text");
        row("comment", "{\n  // amounts\n\"a\": 1}", "2:3", "JSON has no comments");
        row("comment at the beginning", "# amounts\n{}", "1:1", "JSON has no comments");
        row("leading zeros", "{\"attributes\": {\"A\": 007}}", "1:22",
            "007 is no number of JSON; write it as a text: \"007\"");
        row("sign", "{\"attributes\": {\"A\": +49}}", "1:22",
            "+49 is no number of JSON; write it as a text: \"+49\"");
        row("number with two points", "{\"attributes\": {\"A\": 1.2.3}}", "1:22",
            "1.2.3 is no number of JSON; write it as a text: \"1.2.3\"");
        row("decimal comma", "{\"attributes\": {\"A\": 12,50}}", "1:22",
            "a number has a decimal point, not a comma: write 12.50");
        row("decimal comma before a name", "{\"attributes\": {\"A\": 12,50, \"B\": 1}}", "1:22",
            "a number has a decimal point, not a comma: write 12.50");
        row("number for a name", "{\"A\": 12, 50}", "1:11",
            "a name stands in double quotes: write \"50\"");
        row("word of another language", "{\"isCopy\": True}", "1:12", "True is written true");
        row("object for a name", "{{}}", "1:2",
            "a name in double quotes is expected in place of \"{\"");
        row("nothing", "", "1:1", "there is nothing in it; JSON begins with \"{\"");
        row("blanks", " \n", "1:1", "there is nothing in it; JSON begins with \"{\"");
        row("other text", "\n hello", "2:2", "this is no JSON, which begins with \"{\"");
        row("letters of two bytes in front", "{\"\xD0\xB0\xD0\xB1\": 1 2}", "1:9",
            "a comma is missing in front of \"2\"");
        row("line ends of Windows", "{\"a\": 1\r\n\"b\": 2}", "1:8",
            "a comma is missing behind line 1");
    }
    void mistakesAreToldAtTheirPlace()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, place);
        QFETCH(QString, what);
        const ReceiptRun run = filled(json);
        QCOMPARE(run.errors, QString("receipt: -:%1: %2\n").arg(place, what));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    /// A long word is told by its beginning.
    void longWordsAreCut()
    {
        const ReceiptRun run = filled("{\"a\": 1 " + QByteArray(5000, 'x') + "}");
        QCOMPARE(run.errors, QString("receipt: -:1:8: a comma is missing in front of \"%1...\"\n")
                                 .arg(QString(30, 'x')));
    }

    void depthWithoutEndIsAnError()
    {
        const ReceiptRun run = filled("{\"a\": " + QByteArray(200000, '['));
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.startsWith("receipt: -:1:"), qPrintable(run.errors));
    }

    void everyCutOfADocumentIsExplained()
    {
        const QByteArray whole = "{\"attributes\": {\"A\": \"1\"}, \"isCopy\": true}";
        for (int size = 0; size < whole.size(); ++size) {
            const ReceiptRun run = filled(whole.left(size));
            QCOMPARE(run.status, 1);
            const QStringList causes{"there is nothing in it", "is missing", "a text stands in",
                                     "a name stands in"};
            const bool isExplained =
                std::any_of(causes.begin(), causes.end(),
                            [&](const QString &cause) { return run.errors.contains(cause); });
            QVERIFY2(isExplained, qPrintable(QString::number(size) + ' ' + run.errors));
        }
    }

    void nameGivenTwiceIsAnError_data()
    {
        addTextColumns();
        const auto row = [](const char *name, const char *json, const char *place, const char *key,
                            int line) {
            QTest::newRow(name) << QByteArray(json) << QString(place)
                                << QString("the name \"%1\" stands on line %2 already")
                                       .arg(QString::fromUtf8(key))
                                       .arg(line);
        };
        row("attribute", "{\"attributes\": {\n\"SUM\": 1,\n\"X\": 2,\n \"SUM\": 3}}", "4:2", "SUM",
            2);
        row("same value", "{\"attributes\": {\"SUM\": 1, \"SUM\": 1}}", "1:27", "SUM", 1);
        row("on the outside", "{\"isCopy\": true, \"entries\": \"\",\n\"isCopy\": false}", "2:1",
            "isCopy", 1);
        row("of a date",
            "{\"attributes\": {\"D\": {\"date\": \"2026-01-01\", \"date\": "
            "\"2026-01-02\"}}}",
            "1:45", "date", 1);
        row("written by an escape", "{\"attributes\": {\"SUM\": 1, \"S\\u0055M\": 1}}", "1:27",
            "SUM", 1);
        row("letters of two bytes", "{\"attributes\": {\"\xD0\xB0\": 1, \"\xD0\xB0\": 1}}", "1:25",
            "\xD0\xB0", 1);
        row("empty", "{\"attributes\": {\"\": 1, \"\": 1}}", "1:24", "", 1);
        row("behind a text of two lines",
            "{\"entries\": \"a\nb\", \"isCopy\": true, \"isCopy\": true}", "2:21", "isCopy", 2);
    }
    void nameGivenTwiceIsAnError() { mistakesAreToldAtTheirPlace(); }

    // QJsonDocument takes them, and drops the backslash.
    void lostBackslashIsAnError_data()
    {
        addTextColumns();
        const QString what = "a backslash in a text is written \\\\";
        QTest::newRow("of a folder")
            << QByteArray("{\"entries\": \"C:\\Users\"}") << QString("1:16") << what;
        QTest::newRow("of a name")
            << QByteArray("{\"attributes\": {\n\"A\\B\": 1}}") << QString("2:3") << what;
    }
    void lostBackslashIsAnError() { mistakesAreToldAtTheirPlace(); }

    void escapesAreTaken()
    {
        const ReceiptRun run = filled("{\"entries\": \"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0041\"}");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void documentIsNoSchema()
    {
        const WorkFolder folder;
        const QString data = folder.file("d.json", "{\"attributes\": {}}");
        const ReceiptRun run =
            runReceipt({"render", folder.file("t.cpt", "Kiosk"), data, "--data-schema", data});
        QCOMPARE(run.errors, QString("receipt: %1: this is the JSON of a document, where a schema "
                                     "is expected\n")
                                 .arg(data));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void schemaIsNoDocument()
    {
        const WorkFolder folder;
        const QString schema =
            folder.file("s.json", runReceipt({"data", "-", "--schema"}, "<SHOP>").output.toUtf8());
        const ReceiptRun run = runReceipt({"render", folder.file("t.cpt", "Kiosk"), schema});
        QCOMPARE(run.errors, QString("receipt: %1: this is a JSON Schema, where the JSON of a "
                                     "document is expected\n")
                                 .arg(schema));
        QCOMPARE(run.status, 1);
    }

    void sameNameInOtherObjectsIsNone()
    {
        const ReceiptRun run = filled(
            "{\"attributes\": {\"A\": {\"date\": \"2026-01-01\"}, \"B\": {\"date\": "
            "\"2026-01-01\"}, \"a\": 1, \"C\": \"\\\"A\\\": 1, \\\"A\\\": 2\", "
            "\"isCopy\": \"\\\\\"}, \"isCopy\": true}");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void eachNameGivenTwiceIsTold()
    {
        QByteArray json = "{\"attributes\": {\"X\": 0";
        for (int i = 0; i < 30; ++i)
            json += ",\n\"X\": 1";
        const ReceiptRun run = filled(json + "}}");
        QCOMPARE(run.errors.count("the name \"X\" stands on line 1 already"), 10);
        QVERIFY(run.errors.startsWith("receipt: -:2:1: "));
        QCOMPARE(run.status, 1);
    }

    void byteOrderMarkIsTaken()
    {
        QCOMPARE(filled("\xEF\xBB\xBF{\"isCopy\": true}").errors, QString());
        QVERIFY(filled("\xEF\xBB\xBF{\"isCopy\": tru}").errors.contains("write \"tru\""));
    }

    void bytesOfAnotherEncodingAreNamedByTheirLine()
    {
        const ReceiptRun run = filled("{\"attributes\":\n{\"A\": \"\xC8\"}}");
        QCOMPARE(run.errors,
                 QString("receipt: -:2:1: this line isn't UTF-8, which JSON is written in\n"));
        QCOMPARE(run.status, 1);
    }

    void settingsHaveTheSameWords()
    {
        const WorkFolder folder;
        const QString file = folder.file("s.json", "{\"baud\": 9600,\n \"baud\": 19200}");
        const ReceiptRun run = runReceipt({"settings", "show", file});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains(":2:2: the name \"baud\" stands on line 1 already"),
                 qPrintable(run.errors));
    }

    void filesOfModelsHaveTheSameWords()
    {
        const WorkFolder folder;
        const QString comma = folder.file("comma.json", "[{\"id\": \"OWN\"\n\"headDots\": 576}]");
        const ReceiptRun run = runReceipt({"models", "--models", comma});
        QCOMPARE(run.errors,
                 QString("receipt: %1:1:14: a comma is missing behind line 1\n").arg(comma));
        QCOMPARE(run.status, 1);
        const QString twice =
            folder.file("twice.json", "[{\"id\": \"OWN\", \"headDots\": 576, \"headDots\": 1}]");
        QCOMPARE(runReceipt({"models", "--models", twice}).errors,
                 QString("receipt: %1:1:33: the name \"headDots\" stands on line 1 already\n")
                     .arg(twice));
    }

    void templateAndDocumentSwappedAreRecognised_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("data") << QStringList{"data", "d.json", "--from", "t.cpt"};
        QTest::newRow("fill") << QStringList{"fill", "d.json", "t.cpt"};
        QTest::newRow("render") << QStringList{"render", "d.json", "t.cpt"};
        QTest::newRow("preview") << QStringList{"preview", "d.json", "t.cpt", "--output",
                                                "out.png"};
        QTest::newRow("print") << QStringList{"print",         "d.json", "t.cpt", "--model",
                                              "CUSTOM_VKP_80", "--to",   "-"};
        QTest::newRow("document") << QStringList{"document", "save",   "out",
                                                 "t.cpt",    "--from", "d.json"};
    }
    void templateAndDocumentSwappedAreRecognised()
    {
        QFETCH(QStringList, command);
        const WorkFolder folder;
        const QString receipt = folder.file("t.cpt", "[<X:>Bill] <DOCNO>\n");
        const QString data = folder.file("d.json", "{\n \"attributes\": {\"DOCNO\": 7}\n}\n");
        command.replaceInStrings(QRegularExpression("^t.cpt$"), receipt);
        command.replaceInStrings(QRegularExpression("^d.json$"), data);
        command.replaceInStrings(QRegularExpression("^out"), folder.path("out"));
        const ReceiptRun run = runReceipt(command);
        QCOMPARE(
            run.errors,
            QString("receipt: %1: this is the JSON of a document, where a template is expected\n"
                    "receipt: %2: this is a template, where the JSON of a document is "
                    "expected\n")
                .arg(data, receipt));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(folder.path("out")) && !QFile::exists(folder.path("out.png")));
    }

    void documentIsNoTemplate_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("split") << QStringList{"split", "-"};
        QTest::newRow("lint") << QStringList{"lint", "-"};
    }
    void documentIsNoTemplate()
    {
        QFETCH(QStringList, command);
        const ReceiptRun run = runReceipt(command, "{\"entries\": \"\", \"attributes\": {}}");
        QCOMPARE(run.errors,
                 QString("receipt: -: this is the JSON of a document, where a template is "
                         "expected\n"));
        QCOMPARE(run.status, 1);
    }

    void templateIsNoDocumentOfTheChecker()
    {
        const WorkFolder folder;
        const QString receipt = folder.file("t.cpt", "Bill <DOCNO>\n");
        const ReceiptRun run = runReceipt({"lint", "--data", receipt, receipt});
        QCOMPARE(run.errors,
                 QString("receipt: %1: this is a template, where the JSON of a document "
                         "is expected\n")
                     .arg(receipt));
        QCOMPARE(run.status, 1);
    }

    void bbCodeIsNoDocument()
    {
        const WorkFolder folder;
        const QString text = folder.file("c.bbcode", "[center]Kiosk <SHOP>[/center]\n");
        QCOMPARE(runReceipt({"render", example("kiosk.cpt"), text}).errors,
                 QString("receipt: %1: this is a text in BBCode, where the JSON of a document is "
                         "expected\n")
                     .arg(text));
        const QString json = folder.file("d.json", R"({"entries": "[b]x[/b]", })");
        QVERIFY(!runReceipt({"render", example("kiosk.cpt"), json}).errors.contains("BBCode"));
    }

    void bbCodeIsFilledBeforeItIsPrinted()
    {
        const ReceiptRun run =
            runReceipt({"preview", "--bbcode", example("coupon.bbcode"), example("kiosk.json")});
        QCOMPARE(run.errors,
                 QString("receipt: a text in BBCode is taken as it stands; \"receipt fill\" puts "
                         "the values of a document in\n"));
        QCOMPARE(run.status, 2);
    }

    void templateWithNamesInOtherLettersIsRecognised_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("Cyrillic") << QByteArray("\xD0\x98\xD1\x82\xD0\xBE\xD0\xB3 <\xD0\x98>\n");
        QTest::newRow("Cyrillic in a code page") << QByteArray("\x88\xE2\xAE\xA3 <\x88>\n");
        QTest::newRow("accent") << QByteArray("<\xC3\x89T\xC3\x89>\n");
    }
    void templateWithNamesInOtherLettersIsRecognised()
    {
        QFETCH(QByteArray, text);
        const WorkFolder folder;
        const QString receipt = folder.file("t.cpt", text);
        QCOMPARE(runReceipt({"lint", example("kiosk.cpt"), "--data", receipt}).errors,
                 QString("receipt: %1: this is a template, where the JSON of a document is "
                         "expected\n")
                     .arg(receipt));
    }

    void documentIsNoBbCode_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("preview") << QStringList{"preview", "--bbcode", "d.json", "--output", "out"};
        QTest::newRow("print") << QStringList{"print",   "--bbcode",      "d.json",
                                              "--model", "CUSTOM_VKP_80", "--dry-run"};
        QTest::newRow("bbcode") << QStringList{"bbcode", "d.json"};
    }
    void documentIsNoBbCode()
    {
        QFETCH(QStringList, command);
        const WorkFolder folder;
        const QString data = folder.file("d.json", "{\"attributes\": {\"DOCNO\": 7}}");
        command.replaceInStrings("d.json", data);
        command.replaceInStrings(QRegularExpression("^out$"), folder.path("out.png"));
        const ReceiptRun run = runReceipt(command);
        QCOMPARE(run.errors, QString("receipt: %1: this is the JSON of a document, where a text in "
                                     "BBCode is expected\n")
                                 .arg(data));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(folder.path("out.png")));
    }

    /// Braces and the words of documents don't make a template a document.
    void templatesWithBracesAreTemplates()
    {
        const QByteArray lines = "{ \"entries\" }\n{\"attributes\" <DOCNO>: 1}\n";
        const ReceiptRun run = runReceipt({"split", "-"}, lines);
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.contains(lines));
    }
};

QTEST_APPLESS_MAIN(TestReceiptJson)
#include "tst_receipt_json.moc"
