#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "printerdocs/specialcharacters.h"
#include "receiptprogram.h"

namespace {

ReceiptRun run(const QStringList &arguments, const QByteArray &input = QByteArray())
{
    return runReceipt(QStringList("symbols") + arguments, input);
}

}  // namespace

class TestReceiptSymbols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void symbolsAreDrawnWithCodeAndSize()
    {
        const ReceiptRun result =
            run({"-"},
                "<SpecialSymbolImages>\n"
                "<Font Width=\"3\" Height=\"2\">\n"
                "<Symbol Code=\"3\"><Line>101</Line><Line>010</Line></Symbol>\n"
                "<Symbol Code=\"8\"><Line>000</Line><Line>111</Line></Symbol>\n"
                "</Font>\n"
                "<Font Width=\"9\" Height=\"1\">\n"
                "<Symbol Code=\"3\"><Line>100000001</Line></Symbol>\n"
                "</Font>\n"
                "</SpecialSymbolImages>\n");
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.output,
                 QString("code 3, 9 x 1\n#.......#\n\n"
                         "code 3, 3 x 2\n#.#\n.#.\n\n"
                         "code 8, 3 x 2 (never printed: symbols have the codes 1 to 7)\n"
                         "...\n###\n\n"));
        QCOMPARE(result.status, 0);
    }

    void fileOutOfBoundsIsRefused()
    {
        const ReceiptRun result =
            run({"-"}, "<!DOCTYPE a [\n<!ENTITY e \"x\">]>\n<SpecialSymbolImages/>\n");
        QCOMPARE(result.errors, QString("receipt: -: line 1: a document type declaration with "
                                        "entities or attribute lists\n"));
        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 1);
    }

    void exampleFileIsGood()
    {
        const QString name = PRINTERSLIB_EXAMPLES "/symbols/shop.ssi";
        const ReceiptRun result = run({name});
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, 0);
        SpecialCharacters symbols;
        QVERIFY(symbols.load(name));
        QCOMPARE(symbols.size(), 14);
        for (int code = 1; code <= 7; ++code) {
            QCOMPARE(symbols.getImage(code, 12, 24).width(), 12);
            QCOMPARE(symbols.getImage(code, 12, 24).height(), 24);
            QCOMPARE(symbols.getImage(code, 9, 17).height(), 17);
            QVERIFY(result.output.contains(QString("code %1, 12 x 24\n").arg(code)));
            QVERIFY(result.output.contains(QString("code %1, 9 x 17\n").arg(code)));
        }
    }

    void faultsAreReportedWithTheirPlace_data()
    {
        QTest::addColumn<QByteArray>("font");  // stands in line 2
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const char *font, const char *message) {
            QTest::newRow(name) << QByteArray(font) << QString(message);
        };
        row("short line",
            "<Font Width=\"2\" Height=\"1\">\n"
            "  <Symbol Code=\"1\">\n"
            "    <Line>1</Line></Symbol></Font>",
            ":4:5: the line has 1 characters instead of 2");
        row("long line behind a good symbol",
            "<Font Width=\"1\" Height=\"1\">\n"
            "<Symbol Code=\"1\"><Line>1</Line></Symbol>\n"
            "<Symbol Code=\"2\"><Line>11</Line></Symbol></Font>",
            ":4:18: the line has 2 characters instead of 1");
        row("white space counts",
            "<Font Width=\"1\" Height=\"1\"><Symbol Code=\"1\"><Line>1\n"
            "</Line></Symbol></Font>",
            ":2:45: the line has 2 characters instead of 1");
        row("missing line",
            "<Font Width=\"1\" Height=\"2\">\n"
            "\t<Symbol Code=\"1\"><Line>1</Line></Symbol></Font>",
            ":3:2: the symbol has 1 lines instead of 2");
        row("a line too many",
            "<Font Width=\"1\" Height=\"1\">\n"
            "<Symbol Code=\"1\"><Line>1</Line><Line>1</Line></Symbol></Font>",
            ":3:1: the symbol has 2 lines instead of 1");
        row("no width", "<Font Height=\"1\"/>", ":2:1: the attribute \"Width\" is missing");
        row("no height", "<Font Width=\"1\"/>", ":2:1: the attribute \"Height\" is missing");
        row("no code",
            "<Font Width=\"1\" Height=\"1\">\n"
            "<Symbol><Line>1</Line></Symbol></Font>",
            ":3:1: the attribute \"Code\" is missing");
        row("width is no number", "<Font Width=\"12px\" Height=\"1\"/>",
            ":2:1: Width=\"12px\" is no whole number from 1 to 2147483647");
        row("height of zero", "<Font Width=\"1\" Height=\"0\"/>",
            ":2:1: Height=\"0\" is no whole number from 1 to 2147483647");
        row("wild width", "<Font Width=\"99999999999\" Height=\"1\"/>",
            ":2:1: Width=\"99999999999\" is no whole number from 1 to 2147483647");
        row("code beyond a byte",
            "<Font Width=\"1\" Height=\"1\"><Symbol Code=\"256\"><Line>1</Line></Symbol></Font>",
            ":2:28: Code=\"256\" is no whole number from -128 to 255");
        row("markers in a value", "<Font Width=\"%4%3\" Height=\"1\"/>",
            ":2:1: Width=\"%4%3\" is no whole number from 1 to 2147483647");
        row("drawn twice",
            "<Font Width=\"1\" Height=\"1\"><Symbol Code=\"1\"><Line>1</Line></Symbol></Font>\n"
            "<Font Width=\"1\" Height=\"1\">\n"
            "<Symbol Code=\"1\"><Line>0</Line></Symbol></Font>",
            ":4:1: code 1 at 1 x 1 is drawn already at -:2:28");
        row("drawn twice, as the library counts codes",
            "<Font Width=\"1\" Height=\"1\"><Symbol Code=\"200\"><Line>1</Line></Symbol>\n"
            "<Symbol Code=\"-56\"><Line>0</Line></Symbol></Font>",
            ":3:1: code -56 at 1 x 1 is drawn already at -:2:28");
    }

    void faultsAreReportedWithTheirPlace()
    {
        QFETCH(QByteArray, font);
        QFETCH(QString, message);
        const ReceiptRun result =
            run({"-"}, "<SpecialSymbolImages>\n" + font + "\n</SpecialSymbolImages>\n");
        QCOMPARE(result.errors, "receipt: -" + message + "\n");
        QCOMPARE(result.status, 1);
    }

    void allFaultsAreReported()
    {
        const ReceiptRun result = run({"-"},
                                      "<SpecialSymbolImages>\n"
                                      "<Font Width=\"2\" Height=\"1\">\n"
                                      "<Symbol Code=\"1\"><Line>11</Line></Symbol>\n"
                                      "<Symbol Code=\"2\"><Line>1</Line><Line>111</Line></Symbol>\n"
                                      "</Font></SpecialSymbolImages>\n");
        QCOMPARE(result.errors, QString("receipt: -:4:18: the line has 1 characters instead of 2\n"
                                        "receipt: -:4:32: the line has 3 characters instead of 2\n"
                                        "receipt: -:4:1: the symbol has 2 lines instead of 1\n"));
        QCOMPARE(result.output, QString("code 1, 2 x 1\n##\n\n"));
        QCOMPARE(result.status, 1);
    }

    void otherRootIsReported()
    {
        const ReceiptRun result = run({"-"}, "<?xml version=\"1.0\"?>\n<Images><Font/></Images>\n");
        QCOMPARE(result.errors, QString("receipt: -:2:1: the root element is \"Images\", not "
                                        "\"SpecialSymbolImages\"\n"));
        QCOMPARE(result.status, 1);
    }

    void xmlFaultsAreReported_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("place");
        QTest::newRow("wrong end tag")
            << QByteArray(
                   "<SpecialSymbolImages>\n<Font Width=\"1\" Height=\"1\">\n"
                   "<Symbol Code=\"1\"><Line>1</Line></Symbol>\n</Wrong>\n")
            << "-:4:";
        QTest::newRow("cut inside a symbol")
            << QByteArray(
                   "<SpecialSymbolImages>\n<Font Width=\"1\" Height=\"3\">\n"
                   "<Symbol Code=\"1\"><Line>1</Line>")
            << "-:3:";
        QTest::newRow("element inside a line")
            << QByteArray(
                   "<SpecialSymbolImages><Font Width=\"1\" Height=\"1\">\n"
                   "<Symbol Code=\"1\"><Line><b>1</b></Line></Symbol>")
            << "-:2:";
        QTest::newRow("no XML") << QByteArray("12x24") << "-:1:";
        QTest::newRow("empty file") << QByteArray() << "-:1:1:";
        QTest::newRow("zero byte") << QByteArray("<SpecialSymbolImages>\0", 22) << "-:1:";
        QTest::newRow("text behind the root") << QByteArray("<SpecialSymbolImages/>\nx") << "-:2:";
    }

    void xmlFaultsAreReported()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, place);
        const ReceiptRun result = run({"-"}, content);
        QVERIFY2(result.errors.startsWith("receipt: " + place), qPrintable(result.errors));
        QCOMPARE(result.errors.count('\n'), 1);
        QCOMPARE(result.status, 1);
    }

    void skippedElementsAreNotedOnly()
    {
        const ReceiptRun result = run({"-"},
                                      "<SpecialSymbolImages>\n<font/>\n"
                                      "<Font Width=\"1\" Height=\"1\">\n"
                                      " <Symbol Code=\"1\"><Line>1</Line></Symbol></Font>\n"
                                      "</SpecialSymbolImages>\n");
        QCOMPARE(result.errors, QString("receipt: -:2:1: note: \"font\" is skipped\n"));
        QCOMPARE(result.status, 0);
    }

    void fileThatCannotBeReadIsNamed()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath("missing.ssi");
        const ReceiptRun result = run({name});
        QVERIFY(result.errors.startsWith("receipt: " + name + ": "));
        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 1);
    }

    void wrongUsageIsStatusTwo()
    {
        QCOMPARE(run({}).status, 2);
        QCOMPARE(run({"a", "b"}).status, 2);
        QCOMPARE(run({"--unknown"}).status, 2);
        const ReceiptRun help = run({"--help"});
        QCOMPARE(help.status, 0);
        QVERIFY(help.output.startsWith("Usage: receipt symbols "));
    }
};

QTEST_GUILESS_MAIN(TestReceiptSymbols)
#include "tst_receipt_symbols.moc"
