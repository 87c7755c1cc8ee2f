#include <QtTest>

#include "receiptprogram.h"

class TestReceiptFill : public QObject
{
    Q_OBJECT

private:
    /// What the template text prints with the value of attribute NAME, given as JSON.
    static ReceiptRun filled(const QByteArray &templateText, const QByteArray &value)
    {
        const WorkFolder folder;
        return runReceipt(
            {"fill", "-", folder.file("data.json", "{\"attributes\": {\"NAME\": " + value + "}}")},
            templateText);
    }

private Q_SLOTS:
    void linesAreFilledAndOtherTagsStay()
    {
        const WorkFolder folder;
        const QString receipt =
            folder.file("a.cpt", "<C>Bill <DOCNO>\n\n[gone <ZERO>]\n<ENTRIES>\n<X>x<AMOUNT*2>\n");
        const QString data = folder.file("a.json",
                                         "{\"attributes\": {\"DOCNO\": 7, \"ZERO\": 0, "
                                         "\"AMOUNT\": 1.25}, \"entries\": \"a=b\", "
                                         "\"isCopy\": true}");
        const ReceiptRun run = runReceipt({"fill", receipt, data});
        QCOMPARE(run.errors, QString());
        // As many lines as the template has: neither the copy mark nor the entries come in here.
        QCOMPARE(run.output, QString("<C>Bill 7\n\n\n\n<X>x2.50\n"));
        QCOMPARE(run.status, 0);
    }

    void valuesHaveTheTypesOfTheirJson_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("formatted");
        QTest::addColumn<QByteArray>("format");
        const auto row = [](const char *name, const char *value, const QString &plain,
                            const char *format, const QString &formatted) {
            QTest::newRow(name) << QByteArray(value) << plain << formatted << QByteArray(format);
        };
        row("whole number", "7", "7", "000", "007");
        row("negative number", "-7", "-7", "000", "-007");
        row("greatest whole number", "9223372036854775807", "9223372036854775807", "0",
            "9223372036854775807");
        row("whole beyond a double's digits", "9007199254740993", "9007199254740993", "0",
            "9007199254740993");
        row("whole number written with decimals", "100.00", "100", "0000", "0100");
        row("real number", "2.675", "2.68", "0.0", "2.7");
        // Hundredths beyond 64 bits are none, and a whole part beyond 32 bits is 0.
        row("real number beyond 64 bits", "1e20", "0.00", "0.E", "1e+20");
        row("text", "\"tea\"", "tea", "000", "tea");
        row("text of a whole number", "\"007\"", "7", "0000", "0007");
        row("amount as text", "\"100.00\"", "100.00", "0.000", "100.000");
        row("decimal comma", "\"12,50\"", "12.50", "0.0", "12.5");
        row("true", "true", "true", "000", "true");
        row("false", "false", "false", "000", "false");
        row("date", "{\"date\": \"2025-03-04\"}", "04.03.25", "d.m.yyyy", "4.3.2025");
        row("leap day", "{\"date\": \"2024-02-29\"}", "29.02.24", "dd", "29");
        row("time", "{\"time\": \"08:05\"}", "08:05", "hh.nn.ss", "08.05.00");
        row("time with seconds", "{\"time\": \"08:05:09\"}", "08:05", "hh.nn.ss", "08.05.09");
        row("time with milliseconds", "{\"time\": \"08:05:09.250\"}", "08:05", "zzz", "250");
        row("moment", "{\"datetime\": \"2025-03-04T18:05:09\"}", "04.03.25 18:05",
            "yyyy-mm-dd hh:nn:ss", "2025-03-04 18:05:09");
        row("moment with an offset prints as written",
            "{\"datetime\": \"2025-03-04T18:05:09+05:30\"}", "04.03.25 18:05", "ss", "09");
        row("moment in UTC", "{\"datetime\": \"2025-03-04T18:05Z\"}", "04.03.25 18:05", "ss", "00");
        row("text of other letters", "\"\\u0447\\u0430\\u0439\"", QString::fromUtf8("чай"), "0",
            QString::fromUtf8("чай"));
    }
    void valuesHaveTheTypesOfTheirJson()
    {
        QFETCH(QByteArray, value);
        QFETCH(QString, plain);
        QFETCH(QByteArray, format);
        QFETCH(QString, formatted);
        const ReceiptRun run = filled("<NAME>\n<NAME," + format + ">\n", value);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, plain + '\n' + formatted + '\n');
        QCOMPARE(run.status, 0);
    }

    // In a zone whose summer time leaves this hour out, too.
    void momentPrintsAsWrittenInEveryTimeZone()
    {
        qputenv("TZ", "Europe/Berlin");
        const ReceiptRun run = filled("<NAME>\n", "{\"datetime\": \"2025-03-30T02:30:00\"}");
        qputenv("TZ", "UTC");
        QCOMPARE(run.output, QString("30.03.25 02:30\n"));
    }

    void wrongValuesAreNamedByTheirKeyPath_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const char *document, const char *complaint) {
            QTest::newRow(name) << QByteArray(document) << QString(complaint);
        };
        const char *const value =
            "attributes.NAME: a number, a text, true, false, or an object "
            "with \"date\", \"time\" or \"datetime\" is expected";
        const char *const typed =
            "attributes.NAME: an object with one of \"date\", \"time\" and \"datetime\" is "
            "expected";
        row("null value", R"({"attributes": {"NAME": null}})", value);
        row("list value", R"({"attributes": {"NAME": [1]}})", value);
        row("empty object", R"({"attributes": {"NAME": {}}})", typed);
        row("object of another kind", R"({"attributes": {"NAME": {"day": "1"}}})", typed);
        row("object with two keys",
            R"({"attributes": {"NAME": {"date": "2025-01-01", "time": "10:00"}}})", typed);
        row("day that isn't", R"({"attributes": {"NAME": {"date": "2025-02-30"}}})",
            "attributes.NAME.date: \"2025-02-30\" is none; write it like \"2026-03-14\"");
        row("date with a time", R"({"attributes": {"NAME": {"date": "2025-02-03T10:00"}}})",
            "attributes.NAME.date: \"2025-02-03T10:00\" is none; write it like \"2026-03-14\"");
        row("number as date", R"({"attributes": {"NAME": {"date": 20250203}}})",
            "attributes.NAME.date: a text is expected; write it like \"2026-03-14\"");
        row("hour that isn't", R"({"attributes": {"NAME": {"time": "25:00"}}})",
            "attributes.NAME.time: \"25:00\" is none; write it like \"18:05:30\"");
        row("time with something behind it", R"({"attributes": {"NAME": {"time": "10:00 h"}}})",
            "attributes.NAME.time: \"10:00 h\" is none; write it like \"18:05:30\"");
        row("moment without a time", R"({"attributes": {"NAME": {"datetime": "2025-02-03"}}})",
            "attributes.NAME.datetime: \"2025-02-03\" is none; write it like "
            "\"2026-03-14T18:05:30\"");
        row("moment with half a time", R"({"attributes": {"NAME": {"datetime": "2025-02-03T10"}}})",
            "attributes.NAME.datetime: \"2025-02-03T10\" is none; write it like "
            "\"2026-03-14T18:05:30\"");
        row("attributes as a list", R"({"attributes": []})",
            "attributes: an object of names and values is expected");
        row("entries as a list", R"({"entries": ["a=b"]})",
            "entries: a text is expected: \"name=value\", separated by tabs");
        row("copy mark as a number", R"({"isCopy": 1})", "isCopy: true or false is expected");
        row("unknown key", R"({"atributes": {}})",
            "atributes: unknown key; a document has \"attributes\", \"entries\" and \"isCopy\"");
    }
    void wrongValuesAreNamedByTheirKeyPath()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, complaint);
        const WorkFolder folder;
        const QString data = folder.file("data.json", document);
        const ReceiptRun run = runReceipt({"fill", "-", data}, "x\n");
        QCOMPARE(run.errors, QString("receipt: %1: %2\n").arg(data, complaint));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void allWrongValuesAreNamedAtOnce()
    {
        const WorkFolder folder;
        const QString data =
            folder.file("data.json", R"({"attributes": {"AAAA": null, "BBBB": []}, "isCopy": 0})");
        const ReceiptRun run = runReceipt({"fill", "-", data}, "x\n");
        QCOMPARE(run.errors.count('\n'), 3);
        QVERIFY(run.errors.contains("attributes.AAAA"));
        QVERIFY(run.errors.contains("attributes.BBBB"));
        QVERIFY(run.errors.contains("isCopy"));
        QCOMPARE(run.status, 1);
    }

    void emptyDocumentIsADocument()
    {
        const ReceiptRun run = runReceipt({"fill", example("fiscal.cpt"), "-"}, "{}");
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.startsWith("\n<C>\n"));
    }

    void syntaxErrorsAreNamedByTheirPlace_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("line");
        QTest::newRow("missing comma")
            << QByteArray("{\n \"entries\": \"\"\n \"isCopy\": true\n}") << "2:";
        QTest::newRow("cut off") << QByteArray("{\n\"entries\":\n\n") << "2:";
        QTest::newRow("nothing") << QByteArray() << "1:";
        QTest::newRow("no JSON") << QByteArray("tea") << "1:";
    }
    void syntaxErrorsAreNamedByTheirPlace()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, line);
        const WorkFolder folder;
        const QString data = folder.file("data.json", document);
        const ReceiptRun run = runReceipt({"fill", "-", data}, "x\n");
        QVERIFY2(run.errors.startsWith("receipt: " + data + ':' + line), qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.status, 1);
    }

    void listIsNoDocument()
    {
        const ReceiptRun run = runReceipt({"fill", example("cafe.cpt"), "-"}, "[]");
        QCOMPARE(run.errors, QString("receipt: -: the document is no JSON object\n"));
        QCOMPARE(run.status, 1);
    }

    void encodingOfTheTemplateIsRead_data()
    {
        QTest::addColumn<QString>("codec");
        QTest::addColumn<QByteArray>("bytes");
        // The word ITOG in capital Cyrillic letters.
        QTest::newRow("utf-8") << "UTF-8" << QByteArray("\xD0\x98\xD0\xA2\xD0\x9E\xD0\x93");
        QTest::newRow("utf-8 with its mark")
            << "UTF-8" << QByteArray("\xEF\xBB\xBF\xD0\x98\xD0\xA2\xD0\x9E\xD0\x93");
        QTest::newRow("cp866") << "cp866" << QByteArray("\x88\x92\x8E\x83");
        QTest::newRow("windows-1251") << "windows-1251" << QByteArray("\xC8\xD2\xCE\xC3");
        QTest::newRow("name in another case") << "WINDOWS-1251" << QByteArray("\xC8\xD2\xCE\xC3");
    }
    void encodingOfTheTemplateIsRead()
    {
        QFETCH(QString, codec);
        QFETCH(QByteArray, bytes);
        const WorkFolder folder;
        const QString receipt = folder.file("a.cpt", bytes + " <SUM1,0.00>\n");
        const ReceiptRun run = runReceipt({"fill", "--codec", codec, receipt, "-"},
                                          "{\"attributes\": {\"SUM1\": \"2.5\"}}");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString::fromUtf8("ИТОГ 2.50\n"));
        QCOMPARE(run.status, 0);
    }

    void bytesOutsideTheEncodingAreNamedByTheirLine_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("line");
        QTest::newRow("first line") << QByteArray("\xC8\nb\n") << 1;
        QTest::newRow("third line") << QByteArray("a\nb\nc \xC8\xD2 d\ne\n") << 3;
        QTest::newRow("cut off letter before a line end") << QByteArray("a\nb\xD0\nc\n") << 2;
        QTest::newRow("cut off letter at the end") << QByteArray("a\nb\xD0") << 2;
    }
    void bytesOutsideTheEncodingAreNamedByTheirLine()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        const WorkFolder folder;
        const QString receipt = folder.file("a.cpt", bytes);
        const ReceiptRun run = runReceipt({"fill", receipt, "-"}, "{}");
        QCOMPARE(run.errors,
                 QString("receipt: %1:%2: this line isn't UTF-8; --codec names another encoding\n")
                     .arg(receipt)
                     .arg(line));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void lineEndsOfWindowsAreLineEnds()
    {
        const WorkFolder folder;
        const ReceiptRun run =
            runReceipt({"fill", "-", folder.file("a.json", "{}")}, "a\r\n\r\nb\r\n");
        QCOMPARE(run.output, QString("a\n\nb\n"));
    }

    void filesThatCannotBeReadAreBadInput_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("template") << QStringList{"/nowhere/a.cpt", example("cafe.json")}
                                  << "receipt: /nowhere/a.cpt: No such file or directory\n";
        QTest::newRow("document") << QStringList{example("cafe.cpt"), "/nowhere/a.json"}
                                  << "receipt: /nowhere/a.json: No such file or directory\n";
        QTest::newRow("folder") << QStringList{"/", example("cafe.json")}
                                << "receipt: /: file to open is a directory\n";
    }
    void filesThatCannotBeReadAreBadInput()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(QStringList{"fill"} + files);
        QCOMPARE(run.errors, complaint);
        QCOMPARE(run.status, 1);
    }

    void emptyTemplateIsBadInput()
    {
        const ReceiptRun run = runReceipt({"fill", "-", example("cafe.json")});
        QCOMPARE(run.errors, QString("receipt: -: the template is empty\n"));
        QCOMPARE(run.status, 1);
    }

    void valuesThatNeverEndAreRefused_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("fill") << QStringList{"fill", "t.cpt", "d.json"};
        QTest::newRow("render") << QStringList{"render", "t.cpt", "d.json"};
        QTest::newRow("preview") << QStringList{"preview", "t.cpt", "d.json", "--output", "out"};
        QTest::newRow("preview of all models")
            << QStringList{"preview", "t.cpt", "d.json", "--all-models", "out"};
        QTest::newRow("document") << QStringList{"document", "save",   "out",
                                                 "d.json",   "--from", "t.cpt"};
    }
    void valuesThatNeverEndAreRefused()
    {
        QFETCH(QStringList, command);
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<C>Hello\nDear <GUEST>,\n");
        const QString data =
            folder.file("d.json", R"({"attributes": {"GUEST": "x <HOST>", "HOST": "[<NAME>]", )"
                                  R"("NAME": "<NAME>"}, "entries": "a<B>=1"})");
        command.replaceInStrings("t.cpt", file).replaceInStrings("d.json", data);
        command.replaceInStrings(QRegularExpression("^out$"), folder.path("out.png"));
        const ReceiptRun run = runReceipt(command + QStringList("--verbose"));
        QCOMPARE(run.errors,
                 QString("receipt: %1:2:6: the value put in here leads to tags without end, such "
                         "as \"<NAME>\": filling it would hang (values: %2)\n")
                     .arg(file, data));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(folder.path("out.png/AV_268.png")));
        QVERIFY(!QFileInfo(folder.path("out.png")).isFile());
    }

    // Without the entries and the copy mark it never comes to the value that has no end.
    void onlyWhatIsFilledIsRefused()
    {
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<ENTRIES>\n");
        const QString data = folder.file(
            "d.json", R"({"attributes": {"LOOP": "<LOOP>"}, "entries": "a=1\tb=<LOOP>"})");
        QCOMPARE(runReceipt({"fill", file, data}).output, QString("\n"));
        const ReceiptRun run = runReceipt({"render", file, data});
        QVERIFY2(run.errors.contains("t.cpt:1:1: "), qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void valuesWithTagsAreFilled()
    {
        const WorkFolder folder;
        const QString data = folder.file(
            "d.json",
            R"({"attributes": {"LINE": "<NAME>, <NAME>[<ZERO>!] and <SUM1*2>", "NAME": "Tea", )"
            R"("ZERO": 0, "SUM1": 2, "TEXT": "<LINE>", "SELF": "no tag: SELF", "OPEN": "<OPEN"}})");
        const ReceiptRun run = runReceipt({"fill", "-", data}, "<TEXT> <TEXT>\n<SELF>\n<OPEN>\n");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("Tea, Tea and 4.00 Tea, Tea and 4.00\nno tag: SELF\n<OPEN\n"));
    }

    void logLinesComeWithVerboseOnly()
    {
        const QStringList files{example("cafe.cpt"), example("cafe.json")};
        QCOMPARE(runReceipt(QStringList{"fill"} + files).errors, QString());
        const ReceiptRun run = runReceipt(QStringList{"fill", "-v"} + files);
        QVERIFY2(run.errors.contains("\nDOCNO\n"), qPrintable(run.errors.left(500)));
        QCOMPARE(run.status, 0);
        // Values with tags are looked through before, which is no filling.
        const WorkFolder folder;
        const QString data = folder.file("d.json", R"({"attributes": {"NAME": "<X>"}})");
        const ReceiptRun tagged = runReceipt({"fill", "-v", "-", data}, "<NAME>\n");
        QCOMPARE(tagged.errors, QString("NAME\n"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptFill)
#include "tst_receipt_fill.moc"
