#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include "receiptprogram.h"
#include "settingsitems.h"

namespace {

ReceiptRun runSettings(const QStringList &arguments, const QByteArray &input = QByteArray())
{
    return runReceipt(QStringList("settings") + arguments, input);
}

QByteArray jsonOf(const QList<QVariant> &items)
{
    return QJsonDocument(QJsonArray::fromVariantList(items)).toJson();
}

// A text printer of that name, and one more item.
QByteArray textPrinter(const QString &name, const QMap<QString, QVariant> &more)
{
    return jsonOf({item("PRINTER", "printerType", 1), item("PRINTER", "printerName", name), more});
}

/// Items of a list: those that all printers have, those that a kind of printer adds, and two of the
/// templates.
int itemsWith(int added)
{
    return sectionItems().size() + portItems(QString()).size() + added + 2;
}

}  // namespace

class TestReceiptSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showPrintsAllSettingsOfTheList()
    {
        const ReceiptRun outcome = runSettings(
            {"show", "-"}, textPrinter("GENERAL_EPSON_PROTOCOL",
                                       item("GENERAL_EPSON_PROTOCOL", "codec", "koi8-r")));
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
        const QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), itemsWith(3));
        QCOMPARE(lines.at(0), QString("PRINTER\tprinterType\t1"));
        QVERIFY(lines.contains("GENERAL_EPSON_PROTOCOL\tcodec\tkoi8-r"));
        QVERIFY(lines.contains("CHECK_TEMPLATES\tdefaultCheckTemplate\tdefault.cpt"));
    }

    void exportedListIsTaken_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("added");

        QTest::newRow("codec") << QStringList{"--printer", "GENERAL_EPSON_PROTOCOL"} << 3;
        QTest::newRow("images") << QStringList{"--printer", "CUSTOM_VKP_80"} << 3;
        QTest::newRow("neither") << QStringList{"--printer", "AV_268"} << 2;
        QTest::newRow("unknown model") << QStringList{"--printer", "Касса"} << 2;
        QTest::newRow("no name") << QStringList{} << 2;
        QTest::newRow("system printer") << QStringList{"--type", "2", "--printer", "laser"} << 13;
        QTest::newRow("no printer") << QStringList{"--type", "0"} << 0;
    }

    void exportedListIsTaken()
    {
        QFETCH(QStringList, options);
        QFETCH(int, added);
        QTemporaryDir folder;
        const QString file = folder.filePath("list.json");
        const ReceiptRun exported = runSettings(QStringList{"export", file} + options);
        QCOMPARE(exported.status, 0);
        const ReceiptRun imported = runSettings({"import", file});
        QVERIFY2(imported.errors.isEmpty(), qPrintable(imported.errors));
        QCOMPARE(imported.status, 0);
        QCOMPARE(imported.output, QString("%1 items taken\n").arg(itemsWith(added)));
    }

    void itemThatIsNotTakenIsNamed_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("refused");
        QTest::addColumn<QString>("words");

        QTest::newRow("unknown key") << item("PRINTER", "colour", 1)
                                     << "group \"PRINTER\", key \"colour\": not taken: unknown";
        QTest::newRow("other printer") << item("TSP-TUP", "codec", "x")
                                       << "group \"TSP-TUP\", key \"codec\": not taken: unknown";
        QTest::newRow("bad speed")
            << item("AV_268", "baudRate", -1)
            << "group \"AV_268\", key \"baudRate\": not taken: the value \"-1\" became \"9600\"";
        QTest::newRow("codec of a model without")
            << item("AV_268", "codec", "x")
            << "group \"AV_268\", key \"codec\": not taken: this printer has no such setting";
        QTest::newRow("code page of a model without images")
            << item("AV_268", "cpage", 17)
            << "group \"AV_268\", key \"cpage\": not taken: the value \"17\" became \"0\"";
    }

    void itemThatIsNotTakenIsNamed()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, refused);
        QFETCH(QString, words);
        for (const char *action : {"import", "show"}) {
            const ReceiptRun outcome = runSettings({action, "-"}, textPrinter("AV_268", refused));
            QCOMPARE(outcome.status, 1);
            QVERIFY2(outcome.errors.startsWith("receipt: -: " + words), qPrintable(outcome.errors));
            QCOMPARE(outcome.errors.count('\n'), 1);
        }
    }

    void itemThatIsKeptByItsMeaningIsTaken_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QMap<QString, QVariant>>("taken");
        QTest::addColumn<QString>("shown");

        const QString text = "CUSTOM_VKP_80";
        QTest::newRow("number as a text")
            << 2 << item(text, "leftMargin", "12.50") << text + "\tleftMargin\t12.5";
        QTest::newRow("whole number as a text")
            << 1 << item("PRINTER", "emptyStringsAtEnd", "07") << "PRINTER\temptyStringsAtEnd\t7";
        QTest::newRow("switch as a number")
            << 2 << item(text, "autoPageHeight", 1) << text + "\tautoPageHeight\ttrue";
        QTest::newRow("switch as a text")
            << 2 << item(text, "autoPageHeight", "false") << text + "\tautoPageHeight\tfalse";
        QTest::newRow("justification by any number")
            << 2 << item(text, "fullJustifyAlignment", 5) << text + "\tfullJustifyAlignment\t1";
        QTest::newRow("justification as a truth value")
            << 2 << item(text, "fullJustifyAlignment", true) << text + "\tfullJustifyAlignment\t1";
        QTest::newRow("port logging by any number")
            << 1 << item("PRINTER", "enablePortLogging", 5) << "PRINTER\tenablePortLogging\t1";
        QTest::newRow("images by any number")
            << 1 << item(text, "printAsImage", 5) << text + "\tprintAsImage\t1";
        QTest::newRow("unknown paper loop")
            << 1 << item("PRINTER", "paperLoopFlag", 7) << "PRINTER\tpaperLoopFlag\t0";
        QTest::newRow("unknown case of letters")
            << 1 << item("PRINTER", "characterMode", 3) << "PRINTER\tcharacterMode\t0";
        // 300 - 256; both are kept in eight bits.
        QTest::newRow("movement of more than eight bits")
            << 1 << item("PRINTER", "moveCheckTo", 300) << "PRINTER\tmoveCheckTo\t44";
        QTest::newRow("code page of more than eight bits")
            << 1 << item(text, "cpage", 300) << text + "\tcpage\t44";
        QTest::newRow("font that the list leaves out")
            << 1 << item(text, "defaultFont", "Serif,9") << text + "\tprintAsImage\t0";
        QTest::newRow("unknown quality")
            << 2 << item(text, "printerMode", 9) << text + "\tprinterMode\t9";
    }

    void itemThatIsKeptByItsMeaningIsTaken()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(int, type);
        QFETCH(Item, taken);
        QFETCH(QString, shown);
        const QByteArray list = jsonOf({item("PRINTER", "printerType", type),
                                        item("PRINTER", "printerName", "CUSTOM_VKP_80"), taken});
        const ReceiptRun imported = runSettings({"import", "-"}, list);
        QCOMPARE(imported.errors, QString());
        QCOMPARE(imported.status, 0);
        const ReceiptRun outcome = runSettings({"show", "-"}, list);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.output.split('\n').contains(shown), qPrintable(outcome.output));
    }

    void valueThatIsLostIsNamed_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("lost");
        QTest::addColumn<QString>("words");

        const QString name = "CUSTOM_VKP_80";
        // These are read as texts of whole numbers.
        QTest::newRow("truth value for port logging")
            << item("PRINTER", "enablePortLogging", true) << "the value \"true\" became \"0\"";
        QTest::newRow("truth value for images")
            << item(name, "printAsImage", true) << "the value \"true\" became \"0\"";
        QTest::newRow("fraction") << item("PRINTER", "emptyStringsAtEnd", 2.5)
                                  << "the value \"2.5\" became \"0\"";
        QTest::newRow("word") << item("PRINTER", "emptyStringsAtEnd", "two")
                              << "the value \"two\" became \"0\"";
        QTest::newRow("negative code page")
            << item(name, "cpage", -1) << "the value \"-1\" became \"0\"";
        QTest::newRow("paper loop in words")
            << item("PRINTER", "paperLoopFlag", "long") << "the value \"long\" became \"0\"";
    }

    void valueThatIsLostIsNamed()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, lost);
        QFETCH(QString, words);
        const ReceiptRun outcome = runSettings({"import", "-"}, textPrinter("CUSTOM_VKP_80", lost));
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.errors.endsWith("not taken: " + words + "\n"), qPrintable(outcome.errors));
        QCOMPARE(outcome.errors.count('\n'), 1);
    }

    void fontOfAModelWithoutImagesIsNotTaken()
    {
        const ReceiptRun outcome =
            runSettings({"import", "-"}, textPrinter("AV_268", item("AV_268", "defaultFont", "x")));
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.errors.endsWith("not taken: this printer has no such setting\n"),
                 qPrintable(outcome.errors));
    }

    void laterItemOfTheSameKeyHolds()
    {
        const ReceiptRun outcome = runSettings(
            {"import", "-"}, jsonOf({item("PRINTER", "emptyStringsAtEnd", 1),
                                     item("PRINTER", "emptyStringsAtEnd", 2),
                                     item("CHECK_TEMPLATES", "checkTemplatesPath", "/a")}));
        QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
        QCOMPARE(outcome.output, QString("3 items taken\n"));
    }

    void badFilesAreNamed_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("words");

        QTest::newRow("no JSON") << QByteArray("[\n  1 2]") << "receipt: -:2:";
        QTest::newRow("no array") << QByteArray("{}") << "receipt: -: an item list is a JSON array";
        QTest::newRow("no object") << QByteArray("[5]") << "receipt: -: item 1 has no \"group\"";
        QTest::newRow("no value") << QByteArray(R"([{"group":"PRINTER","key":"printerType"}])")
                                  << "receipt: -: item 1 has no \"value\"";
    }

    void badFilesAreNamed()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, words);
        const ReceiptRun outcome = runSettings({"import", "-"}, input);
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.output.isEmpty());
        QVERIFY2(outcome.errors.startsWith(words), qPrintable(outcome.errors));
    }

    void missingFileIsBadInput()
    {
        const ReceiptRun outcome = runSettings({"import", "/nonexistent/list.json"});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("/nonexistent/list.json"));
    }

    void wrongUsage()
    {
        QCOMPARE(runSettings({}).status, 2);
        QCOMPARE(runSettings({"import"}).status, 2);
        QCOMPARE(runSettings({"forget", "-"}).status, 2);
        QCOMPARE(runSettings({"export", "-", "--type", "3"}).status, 2);
        QCOMPARE(runSettings({"--help"}).status, 0);
    }
};

QTEST_APPLESS_MAIN(TestReceiptSettings)
#include "tst_receipt_settings.moc"
