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
