#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include "receiptprogram.h"

namespace {

ReceiptRun runBbCode(const QStringList &arguments, const QByteArray &input = QByteArray())
{
    return runReceipt(QStringList("bbcode") + arguments, input);
}

const QString coupon = PRINTERSLIB_EXAMPLES "/coupon.bbcode";
const QString couponImages = PRINTERSLIB_EXAMPLES "/images";

}  // namespace

class TestReceiptBbCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void couponPrintsItsLines()
    {
        const QStringList lines{
            "              Tea and Spice",
            "              Loyalty coupon",
            "------------------------------------------",
            "                             For our guest",
            "                    Valid until 31.12.2026",
            "Black tea, cup               2        free",
            "Cardamom, 50 g               1  half price",
            "Card                                004711",
            "__________________________________________",
            "       Show this code at the till:",
            QString(21, ' '),  // the blank line behind the barcode, centred as well
            QString(21, ' '),  // and behind the QR code
            "         Monday - Friday   8 - 20",
            "         Saturday          9 - 18",
            "         Sunday           10 - 16",
            "         Closed on holidays      ",  // padded, so that the table is centred as one
            "       Thank you - \"see you soon\"!",
            "",
        };
        const ReceiptRun outcome = runBbCode({coupon, "--images", couponImages});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output.split('\n'), lines);
        QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
    }

    // Its brackets would print as words.
    void textInBbCodeIsNoTemplate_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("render") << QStringList{"render", "TEXT", "DATA"};
        QTest::newRow("preview") << QStringList{"preview", "TEXT", "DATA", "--output", "OUT"};
        QTest::newRow("print") << QStringList{"print",   "TEXT",          "DATA",
                                              "--model", "CUSTOM_VKP_80", "--to=file:OUT"};
        QTest::newRow("document") << QStringList{"document", "save",   "OUT",
                                                 "DATA",     "--from", "TEXT"};
    }
    void textInBbCodeIsNoTemplate()
    {
        QFETCH(QStringList, command);
        const WorkFolder folder;
        const QString text = folder.file("t.bbcode", "[center]<SHOP>[/center]\n");
        command.replaceInStrings("TEXT", text);
        command.replaceInStrings("DATA", folder.file("d.json", "{}"));
        command.replaceInStrings("OUT", folder.path("out.png"));
        const ReceiptRun run = runReceipt(command);
        QCOMPARE(run.errors,
                 QString("receipt: %1: this is a text in BBCode, where a template is expected; "
                         "\"receipt fill\" puts values into it\n")
                     .arg(text));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(folder.path("out.png")));
    }

    void bothMarkupsAreATemplate()
    {
        const WorkFolder folder;
        const ReceiptRun run = runReceipt(
            {"render", folder.file("t.cpt", "<C>[b]x[/b]\n"), folder.file("d.json", "{}")});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void valuesAreFilledInFirst()
    {
        const WorkFolder folder;
        const ReceiptRun run =
            runReceipt({"fill", folder.file("t.bbcode", "[b]<SHOP>[/b]\n"),
                        folder.file("d.json", R"({"attributes": {"SHOP": "Kiosk"}})")});
        QCOMPARE(run.output, QString("[b]Kiosk[/b]\n"));
        QCOMPARE(run.status, 0);
    }

    void templateIsNoTextInBbCode_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("bbcode") << QStringList{"bbcode", "TEXT"};
        QTest::newRow("preview") << QStringList{"preview", "--bbcode", "TEXT", "--output", "OUT"};
        QTest::newRow("print") << QStringList{"print",   "--bbcode",      "TEXT",
                                              "--model", "CUSTOM_VKP_80", "--to=file:OUT"};
    }
    void templateIsNoTextInBbCode()
    {
        QFETCH(QStringList, command);
        const WorkFolder folder;
        const QString text = folder.file("t.cpt", "<C>Kiosk\nTotal<S>5.00\n");
        command.replaceInStrings("TEXT", text);
        command.replaceInStrings("OUT", folder.path("out.png"));
        const ReceiptRun run = runReceipt(command);
        QCOMPARE(run.errors, QString("receipt: %1: this is a template, where a text in BBCode is "
                                     "expected\n")
                                 .arg(text));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(folder.path("out.png")));
    }

    // What "receipt fill" was forgotten for.
    void tagsWithoutTheirValuesAreTold_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("one") << QByteArray("a\n[b]<SHOP>[/b]")
                             << "line 2: \"<SHOP>\" prints as it stands";
        QTest::newRow("a format") << QByteArray("[b]<TOTAL,0.00>[/b]")
                                  << "line 1: \"<TOTAL,0.00>\" prints as it stands";
        QTest::newRow("too short")
            << QByteArray("[b]<PAN>[/b]") << "line 1: \"<PAN>\" prints as it stands";
        QTest::newRow("two") << QByteArray("[b]<SHOP>[/b]\n<CITY>")
                             << "line 1: \"<SHOP>\" and another tag print as they stand";
        QTest::newRow("three, one twice")
            << QByteArray("[b]<SHOP><SHOP>[/b]<A1>\n<CITY>")
            << "line 1: \"<SHOP>\" and 2 other tags print as they stand";
        QTest::newRow("a name in small letters") << QByteArray("[b]Kiosk <Ltd> <3[/b]") << "";
        QTest::newRow("no name") << QByteArray("[b]<> <1> <A B> < SHOP>[/b]") << "";
        QTest::newRow("no text in BBCode") << QByteArray("Kiosk <SHOP>") << "";
    }
    void tagsWithoutTheirValuesAreTold()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, complaint);
        const WorkFolder folder;
        const QString file = folder.file("t.bbcode", text);
        const QString errors = complaint.isEmpty()
                                   ? complaint
                                   : QString("receipt: %1: %2; \"receipt fill\" puts values in\n")
                                         .arg(file, complaint);
        const ReceiptRun shown = runBbCode({file});
        QCOMPARE(shown.errors, errors);
        QCOMPARE(shown.status, 0);
        const QStringList print{"print",   "--bbcode",      file,
                                "--model", "CUSTOM_VKP_80", "--to=file:" + folder.path("out")};
        const ReceiptRun printed = runReceipt(print);
        QCOMPARE(printed.errors, errors);
        QCOMPARE(printed.status, 0);
        const ReceiptRun strict = runReceipt(print + QStringList("--strict"));
        QCOMPARE(strict.status, complaint.isEmpty() ? 0 : 1);
    }

    void couponHoldsItsPictureAndCodes()
    {
        const ReceiptRun outcome = runBbCode({coupon, "--images", couponImages, "--as", "json"});
        QCOMPARE(outcome.status, 0);
        const QJsonObject document = QJsonDocument::fromJson(outcome.output.toUtf8()).object();
        QList<int> types;
        const QJsonArray blocks = document.value("blocks").toArray();
        for (const QJsonValue &block : blocks)
            types.append(block.toObject().value("type").toInt(-1));
        QCOMPARE(types, (QList<int>{1, 0, 0, 0, 0, 0, 0, 2, 0, 3, 0, 0, 0}));

        const QJsonObject image = blocks.at(0).toObject().value("img").toObject();
        QCOMPARE(image.value("w").toInt(), 96);
        QCOMPARE(image.value("h").toInt(), 64);
        QCOMPARE(QByteArray::fromBase64(image.value("data").toString().toLatin1()).size(), 12 * 64);
        QCOMPARE(image.value("fn").toString(),
                 QFileInfo(couponImages + "/logo.png").absoluteFilePath());
        const auto decoded = [&blocks](int index, const char *key) {
            return QByteArray::fromBase64(
                blocks.at(index).toObject().value(QLatin1String(key)).toString().toLatin1());
        };
        QCOMPARE(decoded(7, "bar"), QByteArray("4600000000017"));
        QCOMPARE(blocks.at(7).toObject().value("bt").toInt(), 7);
        QCOMPARE(decoded(9, "qr"), QByteArray("https://tea.example/coupon?card=004711"));
    }

    void jsonIsTheMapForm()
    {
        const ReceiptRun outcome = runBbCode({"-", "--as", "json"}, "A");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output,
                 QString("{\"blocks\":[{\"align\":0,\"fmt\":[\"AA==\"],\"fnt\":[\"AA==\"],"
                         "\"ls\":[0],\"txt\":[\"A\"],\"type\":0}],\"cta\":5,\"loop\":0,"
                         "\"pta\":4}\n"));
        const ReceiptRun pretty = runBbCode({"-", "--as", "json", "--pretty"}, "A");
        QCOMPARE(pretty.status, 0);
        QVERIFY(pretty.output.startsWith("{\n    \"blocks\": [\n"));
        QCOMPARE(QJsonDocument::fromJson(pretty.output.toUtf8()),
                 QJsonDocument::fromJson(outcome.output.toUtf8()));
    }

    void treeShowsTheTagsAsRead()
    {
        const ReceiptRun outcome = runBbCode({"-", "--as", "tree"}, "[size=large]чай[/size]");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output, QString("#document\n"
                                         "|-- [size]\n"
                                         "|   |-- [size]\n"
                                         "|   |   |-- { {size=large} }\n"
                                         "|   |   |-- @\"чай\"\n"
                                         "|   |   |-- [/size]\n"));
    }

    /// As bbcpp::printDocument() would print it, but for what lies deeper than 65 levels.
    void deepTreeIsIndentedToSomeLevel()
    {
        constexpr int depth = 200000;
        const ReceiptRun outcome =
            runBbCode({"-", "--as", "tree"}, QByteArray("[b]").repeated(depth) + "[i a=b c=d]x");
        QCOMPARE(outcome.status, 0);
        const QStringList lines = outcome.output.split('\n');
        QCOMPARE(lines.size(), 1 + depth + 4 + 1);
        QCOMPARE(lines.at(65), QString("|   ").repeated(64) + "|-- [b]");
        const QString indentation = QString("|   ").repeated(64) + "|-- (level %1) ";
        QCOMPARE(lines.at(66), indentation.arg(66) + "[b]");
        QCOMPARE(lines.mid(depth),
                 QStringList({indentation.arg(depth) + "[b]", indentation.arg(depth + 1) + "[i]",
                              indentation.arg(depth + 2) + "[i]",
                              indentation.arg(depth + 3) + "{ {a=b}, {c=d} }",
                              indentation.arg(depth + 3) + "@\"x\"", ""}));
    }

    void htmlIsATable()
    {
        const ReceiptRun outcome = runBbCode({"-", "--as", "html"}, "[center][b]A[/b][/center]");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output,
                 QString("<html><head>\n"
                         "<meta http-equiv=\"Content-Type\" content=\"text/html; "
                         "charset=UTF-8\">\n"
                         "</head><body>\n"
                         "<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n"
                         "<tr><td colspan=\"2\" align = \"center\"> <font size = 1><b>A</b>"
                         "</font> </td></tr>\n"
                         "</table></p>\n"
                         "</body></html>\n"));
    }

    void widthIsThatOfTheReceipt()
    {
        for (const int width : {17, 32, 255}) {
            const ReceiptRun outcome =
                runBbCode({"-", "--width", QString::number(width)}, "[hr /][right]x");
            QCOMPARE(outcome.status, 0);
            QCOMPARE(outcome.output, QString(width, '_') + "\n" + QString(width - 1, ' ') + "x\n");
        }
    }

    void narrowReceiptIndentsItsLines()
    {
        const QString text = "[hr /]x";
        QCOMPARE(runBbCode({"-", "--width", "1"}, text.toUtf8()).output, QString(" _\n x\n"));
        QCOMPARE(runBbCode({"-", "--width", "16"}, text.toUtf8()).output,
                 QString(16, ' ') + QString(16, '_') + "\n" + QString(16, ' ') + "x\n");
    }

    void emptyTextPrintsNothing()
    {
        const ReceiptRun outcome = runBbCode({"-"}, "");
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.output.isEmpty());
    }

    void byteOrderMarkIsNoText()
    {
        QCOMPARE(runBbCode({"-"},
                           "\xEF\xBB\xBF"
                           "A")
                     .output,
                 QString("A\n"));
    }

    void warningsAreShownOnDemand()
    {
        const ReceiptRun quiet = runBbCode({"-"}, "[foo]x");
        QCOMPARE(quiet.status, 0);
        QCOMPARE(quiet.output, QString("x\n"));
        QVERIFY(quiet.errors.isEmpty());
        const ReceiptRun verbose = runBbCode({"-", "--verbose"}, "[foo]x");
        QCOMPARE(verbose.output, QString("x\n"));
        QVERIFY(verbose.errors.contains("foo"));
    }

    void badInputNamesTheFile()
    {
        const ReceiptRun missing = runBbCode({"/nowhere/x.bbcode"});
        QCOMPARE(missing.status, 1);
        QVERIFY(missing.errors.contains("/nowhere/x.bbcode"));
        QVERIFY(missing.output.isEmpty());

        const QTemporaryDir directory;
        QFile file(directory.filePath("latin.bbcode"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("fine\n\xE9t\xE9\n");
        file.close();
        const ReceiptRun latin = runBbCode({file.fileName()});
        QCOMPARE(latin.status, 1);
        QVERIFY2(latin.errors.contains(file.fileName() + ":2:"), qPrintable(latin.errors));
        QVERIFY(latin.output.isEmpty());
        QCOMPARE(runBbCode({"-"}, "cut \xD1").status, 1);
    }

    void wrongUsageIsTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("word");
        QTest::newRow("no file") << QStringList() << "arguments";
        QTest::newRow("two files") << QStringList{"a", "b"} << "arguments";
        QTest::newRow("unknown option") << QStringList{"-", "--colour"} << "colour";
    }

    void wrongUsageIsTold()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, word);
        const ReceiptRun outcome = runBbCode(arguments, "x");
        QCOMPARE(outcome.status, 2);
        QVERIFY(outcome.output.isEmpty());
        QVERIFY2(outcome.errors.contains(word), qPrintable(outcome.errors));
    }

    void helpNamesTheOptions()
    {
        const ReceiptRun outcome = runBbCode({"--help"});
        QCOMPARE(outcome.status, 0);
        for (const char *option : {"--as", "--width", "--images", "--pretty", "FILE"})
            QVERIFY2(outcome.output.contains(option), option);
        QVERIFY(outcome.output.contains("1 to 255"));
        QVERIFY(outcome.output.simplified().contains("1 to 16 act as leading blanks"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptBbCode)
#include "tst_receipt_bbcode.moc"
