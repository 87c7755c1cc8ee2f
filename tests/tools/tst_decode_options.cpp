// What the tool is asked for: forms, papers, columns, character sets, and what contradicts.
#include <QImage>
#include <QtTest>

#include "decodebench.h"

using namespace decodebench;

class TestDecodeOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureHasAName()
    {
        const QTemporaryDir folder;
        for (const char *form : {"png", "pdf", "svg"}) {
            QProcess process;
            process.setWorkingDirectory(folder.path());
            process.start(RECEIPT_PROGRAM, decode(example("streams/sale.bin"), {"--as", form}));
            QVERIFY(process.waitForFinished(patience));
            QCOMPARE(process.exitCode(), 0);
            QVERIFY(QFile::exists(folder.filePath(QString("paper.") + form)));
        }
    }

    void scaleMultipliesThePixels()
    {
        const WorkFolder folder;
        const QString file = folder.path("a.png");
        decoded("a\n", {"--as", "png", "--output", file});
        const QSize size = QImage(file).size();
        decoded("a\n", {"--as", "png", "--output", file, "--scale", "3"});
        QCOMPARE(QImage(file).size(), 3 * size);
    }

    void formFollowsTheSuffixOfTheOutput_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("beginning");
        const auto row = [](const char *name, const QByteArray &beginning) {
            QTest::newRow(name) << QString(name) << beginning;
        };
        row("sale.txt", "a\n");
        row("sale.json", "{\"model\":");
        row("sale.png", "\x89PNG");
        row("sale.pdf", "%PDF-");
        row("sale.svg", "<?xml");
        row("sale.PNG", "\x89PNG");
        row("sale.json.png", "\x89PNG");
        row("sale", "a\n");
        row("png", "a\n");
        row("sale.bin", "a\n");
        row("sale.png.", "a\n");
    }
    void formFollowsTheSuffixOfTheOutput()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, beginning);
        const WorkFolder folder;
        const QString file = folder.path(name);
        for (const QStringList &options :
             {QStringList{"--output", file}, QStringList{"--output=" + file}}) {
            const ReceiptRun run = decoded("a\n", options);
            QCOMPARE(run.errors, QString());
            QCOMPARE(run.status, 0);
            QCOMPARE(folder.content(name).left(beginning.size()), beginning);
            QVERIFY(QFile::remove(file));
        }
    }

    void suffixServesTheOptionsOfItsForm()
    {
        const WorkFolder folder;
        decoded("a\n", {"--output", folder.path("a.png")});
        const ReceiptRun large = decoded("a\n", {"--output", folder.path("b.png"), "--scale", "2"});
        QCOMPARE(large.errors, QString());
        QCOMPARE(QImage(folder.path("b.png")).size(), 2 * QImage(folder.path("a.png")).size());
        const ReceiptRun json = decoded("a\n", {"--output", folder.path("a.json"), "--pretty"});
        QCOMPARE(json.errors, QString());
        QVERIFY(folder.content("a.json").startsWith("{\n    \"model\""));
    }

    void chosenFormGoesIntoAnyFileButAPicturesOfAnother()
    {
        const WorkFolder folder;
        QCOMPARE(decoded("a\n", {"--as", "listing", "--output", folder.path("a.txt")}).status, 0);
        QVERIFY(folder.content("a.txt").startsWith("00000000  61"));
        QCOMPARE(decoded("a\n", {"--as", "json", "--output", folder.path("b.txt")}).status, 0);
        QVERIFY(folder.content("b.txt").startsWith("{"));
        QCOMPARE(decoded("a\n", {"--as", "png", "--output", folder.path("c.PNG")}).status, 0);
        QVERIFY(folder.content("c.PNG").startsWith("\x89PNG"));
    }

    void fileIsKeptWhereTheFormContradictsItsSuffix()
    {
        const WorkFolder folder;
        const QString file = folder.file("a.png", "kept");
        QCOMPARE(decoded("a\n", {"--as", "text", "--output", file}).status, 2);
        QCOMPARE(folder.content("a.png"), QByteArray("kept"));
    }

    void helpSaysThatTheModelIsNeeded()
    {
        const QString help = runReceipt({"decode", "--help"}).output.simplified();
        QVERIFY2(help.contains("; default: none, so it has to be given."), qPrintable(help));
    }

    void streamIsNotReplaced()
    {
        const WorkFolder folder;
        const QString file = folder.file("sale.txt", "a\n" + cut);
        const ReceiptRun run = runReceipt(decode(file, {"--output", file}));
        QCOMPARE(run.errors, "receipt: " + file +
                                 ": what is written is made of this file; choose another name\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.content("sale.txt"), "a\n" + cut);
    }

    void outputIsWrittenToTheFile_data()
    {
        QTest::addColumn<QString>("form");
        QTest::newRow("text") << "text";
        QTest::newRow("listing") << "listing";
        QTest::newRow("json") << "json";
    }
    void outputIsWrittenToTheFile()
    {
        QFETCH(QString, form);
        const WorkFolder folder;
        const ReceiptRun run = decoded("a\n" + cut, {"--as", form, "--output", folder.path("o")});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString());
        QCOMPARE(QString::fromUtf8(folder.content("o")),
                 decoded("a\n" + cut, {"--as", form}).output);
    }

    void paperIsTheWidestUnlessChosen()
    {
        const QByteArray line(60, 'x');
        QCOMPARE(decoded(line).output, QString(48, 'x') + '\n' + QString(12, 'x') + '\n');
        QCOMPARE(decoded(line, {"--paper", "0"}).output,
                 QString(32, 'x') + '\n' + QString(28, 'x') + '\n');
        // The widest is the first of this one's, 640 dots.
        const ReceiptRun run = runReceipt({"decode", "-", "--model", "EPSON_EU_4XX"}, line);
        QCOMPARE(run.output, QString(53, 'x') + '\n' + QString(7, 'x') + '\n');
    }

    void columnsAreObeyed()
    {
        QCOMPARE(decoded(QByteArray(25, 'x'), {"--columns", "20"}).output,
                 QString(20, 'x') + '\n' + "xxxxx\n");
        QCOMPARE(decoded(QByteArray(49, 'x'), {"--columns", "48"}).output,
                 QString(48, 'x') + '\n' + "x\n");
    }

    void codePageIsTheOneInForceAtTheStart()
    {
        const QByteArray word = "\x1B@\x8F\xE0\xA8\xA2\xA5\xE2\n";
        QCOMPARE(decoded(word, {"--code-page", "17"}).output, QStringLiteral("Привет\n"));
        QVERIFY(decoded(word).output != QStringLiteral("Привет\n"));
        const ReceiptRun listed = decoded(word, {"--code-page", "17", "--as", "listing"});
        QVERIFY(listed.output.contains(QStringLiteral("Привет")));
    }

    void modelsOfAFileAreRead()
    {
        const WorkFolder folder;
        const QString file = folder.file("own.json", R"([{"id": "SHOP_80", "like": "CUSTOM_VKP_80",
                                         "codePages": {"0": "CP437", "9": "CP866"}}])");
        const QByteArray stream = "\x1Bt\x09\x8F\n";
        const ReceiptRun run =
            runReceipt({"decode", "-", "--model", "SHOP_80", "--models", file}, stream);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("П\n"));
        // Its paper is that of the model which it is like.
        const ReceiptRun json = runReceipt(
            {"decode", "-", "--model", "SHOP_80", "--models", file, "--as", "json"}, stream);
        QVERIFY(json.output.startsWith("{\"model\":\"SHOP_80\""));
        QVERIFY(json.output.contains("\"width\":512"));
        QCOMPARE(runReceipt({"decode", "-", "--model", "SHOP_80"}, stream).status, 2);
    }

    void faultyFileOfModelsIsRefused()
    {
        const WorkFolder folder;
        const QString file = folder.file("own.json", "{}");
        const ReceiptRun run = decoded("a\n", {"--models", file});
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.errors, "receipt: " + file + ": not an array of models\n");
    }

    void wrongUsageIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QString file = example("streams/sale.bin");
        const auto row = [](const char *name, const QStringList &arguments,
                            const QString &complaint) {
            QTest::newRow(name) << arguments << complaint;
        };
        row("no model", {"decode", file},
            "--model is needed: what bytes mean depends on the printer");
        row("unknown model", {"decode", file, "--model", "NONE"},
            "there is no model \"NONE\"; see \"receipt models\"");
        row("no file", QStringList("decode") + model,
            "receipt decode: wrong number of arguments; see \"receipt decode --help\"");
        row("two files", decode(file, {file}),
            "receipt decode: wrong number of arguments; see \"receipt decode --help\"");
        row("paper", decode(file, {"--paper", "2"}), "--paper: \"2\" is no number from 0 to 1");
        row("columns", decode(file, {"--columns", "0"}),
            "--columns: \"0\" is no number from 1 to 48");
        row("more columns than fit", decode(file, {"--columns", "49"}),
            "--columns: \"49\" is no number from 1 to 48");
        row("more columns than fit on the paper", decode(file, {"--paper", "0", "--columns", "33"}),
            "--columns: \"33\" is no number from 1 to 32");
        row("scale", decode(file, {"--scale", "9"}), "--scale: \"9\" is no number from 1 to 8");
        row("form", decode(file, {"--as", "html"}),
            "--as: \"html\" is none of text, listing, json, png, pdf, svg");
        const QStringList toSale{"--output", "sale.png"};
        row("no form", decode(file, toSale + QStringList{"--as", ""}),
            "--as: \"\" is none of text, listing, json, png, pdf, svg");
        for (const char *form : {"text", "listing", "json", "pdf", "svg"})
            row(qPrintable(QString("%1 into a png").arg(form)),
                decode(file, toSale + QStringList{"--as", form}),
                QString("--as %1 contradicts the name \"sale.png\", which is that of a PNG picture")
                    .arg(form));
        row("png into a pdf", decode(file, {"--as", "png", "--output", "a/sale.PDF"}),
            "--as png contradicts the name \"a/sale.PDF\", which is that of a PDF picture");
        const QStringList scaled{"--scale", "1"};
        for (const char *form : {"text", "listing", "json"})
            row(qPrintable(QString("scale of %1").arg(form)),
                decode(file, scaled + QStringList{"--as", form}),
                "--scale needs a picture, see --as");
        row("scale of what is a text by default", decode(file, scaled),
            "--scale needs a picture, see --as");
        row("scale of a text by its suffix",
            decode(file, scaled + QStringList{"--output", "a.txt"}),
            "--scale needs a picture, see --as");
        for (const char *form : {"text", "listing", "png", "pdf", "svg"})
            row(qPrintable(QString("indented %1").arg(form)),
                decode(file, {"--pretty", "--as", form}), "--pretty needs JSON, see --as");
        row("indented by default", decode(file, {"--pretty"}), "--pretty needs JSON, see --as");
        row("indented picture by its suffix", decode(file, toSale + QStringList{"--pretty"}),
            "--pretty needs JSON, see --as");
        row("watched input", decode("-", {"--watch"}), "--watch: standard input can't be watched");
    }
    void wrongUsageIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.errors, "receipt: " + complaint + '\n');
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QString());
    }

    void codePageThatTheModelLacksIsRefused()
    {
        const ReceiptRun run = decoded("a", {"--code-page", "200"});
        QCOMPARE(run.status, 2);
        QVERIFY2(
            run.errors.startsWith(
                "receipt: --code-page: the model has no character set 200; it has: 0 (CP437), "),
            qPrintable(run.errors));
    }
};

QTEST_GUILESS_MAIN(TestDecodeOptions)
#include "tst_decode_options.moc"
