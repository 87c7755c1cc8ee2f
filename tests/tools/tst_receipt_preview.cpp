#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QRegularExpression>
#include <QtTest>

#include "cataloguemodels.h"
#include "previewbench.h"
#include "receiptprogram.h"

using namespace previewbench;

namespace {

QStringList grocery()
{
    return {"preview", example("grocery.cpt"), example("grocery.json")};
}

}  // namespace

class TestReceiptPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void receiptIsDrawnAndNamed()
    {
        const WorkFolder folder;
        const QString file = folder.path("receipt.png");
        const ReceiptRun run = runReceipt(grocery() + QStringList{"--output", file});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, file + ": CUSTOM_VKP_80, paper 80 mm, 643 x 866 dots\n");
        const QImage picture(file);
        QCOMPARE(picture.size(), QSize(643, 866));
        QVERIFY(inked(picture, picture.rect()) > 5000);
    }

    void defaultIsReceiptPngInTheCurrentFolder()
    {
        const QTemporaryDir folder;
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(RECEIPT_PROGRAM, grocery());
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().startsWith("receipt.png: "));
        QCOMPARE(QImage(folder.filePath("receipt.png")).width(), 643);
    }

    void scaleMultipliesThePixels()
    {
        const WorkFolder folder;
        const QString file = folder.path("r.png");
        QCOMPARE(runReceipt(grocery() + QStringList{"--output", file, "--scale", "2"}).status, 0);
        QCOMPARE(QImage(file).size(), QSize(1286, 1732));
    }

    void everyRunGivesTheSameBytes_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("png") << "png";
        QTest::newRow("pdf") << "pdf";
        QTest::newRow("svg") << "svg";
    }
    void everyRunGivesTheSameBytes()
    {
        QFETCH(QString, suffix);
        const WorkFolder folder;
        for (const char *name : {"1.", "2."}) {
            const ReceiptRun run =
                runReceipt(grocery() + QStringList{"--output", folder.path(name + suffix)});
            QCOMPARE(run.status, 0);
            QTest::qSleep(1100);  // a time of writing would have whole seconds
        }
        QVERIFY(!folder.content("1." + suffix).isEmpty());
        QVERIFY(folder.content("1." + suffix) == folder.content("2." + suffix));
    }

    void everySourceIsDrawn_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("template") << QStringList{example("cafe.cpt"), example("cafe.json")};
        QTest::newRow("BBCode") << QStringList{"--bbcode", example("coupon.bbcode"), "--images",
                                               example("images")};
        QTest::newRow("plain") << QStringList{"--plain", example("tags.cpt")};
        QTest::newRow("symbols") << QStringList{example("tags.cpt"), example("tags.json")};
    }
    void everySourceIsDrawn()
    {
        QFETCH(QStringList, arguments);
        const WorkFolder folder;
        const QString file = folder.path("r.png");
        const ReceiptRun run =
            runReceipt(QStringList("preview") + arguments + QStringList{"--output", file});
        QCOMPARE(run.status, 0);
        QVERIFY(inked(QImage(file), QImage(file).rect()) > 1000);
    }

    void savedDocumentIsDrawnAsItsTemplate()
    {
        const WorkFolder folder;
        const QString saved = folder.path("saved.doc");
        QCOMPARE(runReceipt({"document", "save", saved, example("grocery.json"), "--from",
                             example("grocery.cpt")})
                     .status,
                 0);
        const ReceiptRun run =
            runReceipt({"preview", "--document", saved, "--output", folder.path("d.png")});
        QCOMPARE(run.errors, QString());
        QCOMPARE(runReceipt(grocery() + QStringList{"--output", folder.path("t.png")}).status, 0);
        QVERIFY(!folder.content("d.png").isEmpty());
        QVERIFY(folder.content("d.png") == folder.content("t.png"));
    }

    // A character of the model is 10 dots wide; below the line is what doesn't move.
    void marginMovesTheLines_data()
    {
        QTest::addColumn<QStringList>("source");
        QTest::newRow("template") << QStringList{"t.cpt", "d.json"};
        QTest::newRow("plain") << QStringList{"--plain", "t.cpt"};
    }
    void marginMovesTheLines()
    {
        QFETCH(QStringList, source);
        const WorkFolder folder;
        source.replaceInStrings("t.cpt", folder.file("t.cpt", "HH"));
        source.replaceInStrings("d.json", folder.file("d.json", "{}"));
        const QStringList output{"--output", folder.path("r.png")};
        const auto drawn = [&](const QStringList &options) {
            runReceipt(QStringList("preview") + source + options + output);
            return QImage(folder.path("r.png"));
        };
        const QImage plain = drawn({});
        QVERIFY(!plain.isNull());
        const QImage moved = drawn({"--margin", "3"});
        const int shift = 3 * 10;
        QCOMPARE(moved.size(), plain.size());
        const QRect line(0, 0, plain.width() - shift, 48);
        QVERIFY(inked(plain, line) > 0);
        QVERIFY(moved.copy(line.translated(shift, 0)) == plain.copy(line));
        QVERIFY(drawn({"--margin", "0"}) == plain);
    }

    void plainTextComesFromStandardInputToo()
    {
        const WorkFolder folder;
        const QString file = folder.path("r.png");
        const ReceiptRun run =
            runReceipt({"preview", "--plain", "-", "--output", file, "--model", "AV_268"}, "abc");
        QCOMPARE(run.status, 0);
        QCOMPARE(QImage(file).width(), 480);
    }

    void emptyTextIsAnEmptyPaper()
    {
        const WorkFolder folder;
        const QString file = folder.path("r.png");
        const ReceiptRun run = runReceipt({"preview", "--bbcode", "-", "--output", file}, "");
        QCOMPARE(run.errors, QString());
        QCOMPARE(QImage(file).size(), QSize(643, 24 + 24 + 2 + 24));
    }

    void unprintableCodesAreNamedByTheirLine()
    {
        const WorkFolder folder;
        const QString text = folder.file("c.bbcode", "a[barcode]Ж[/barcode]");
        const QString file = folder.path("r.png");
        const ReceiptRun run = runReceipt({"preview", "--bbcode", text, "--output", file});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors,
                 "receipt: " + text + ": line 1: Barcode: Code 128 holds ASCII characters only\n");
        QVERIFY(!QImage(file).isNull());
    }

    void missingSymbolFilesAreNamed_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("missing") << QByteArray() << "there is no file \"%1\"";
        QTest::newRow("damaged") << QByteArray("<SpecialSymbolImages>\n</Fnt>")
                                 << "the file \"%1\" is damaged: 2:";
    }
    void missingSymbolFilesAreNamed()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, complaint);
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "a\n  <SPECSYMBOLS=shop>\nb");
        if (!content.isEmpty())
            folder.file("shop.ssi", content);
        const QStringList arguments{"preview", file, folder.file("d.json", "{}")};
        const QStringList output{"--output", folder.path("r.png")};
        const ReceiptRun run = runReceipt(arguments + output);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors.count('\n'), 1);
        QVERIFY2(run.errors.startsWith("receipt: " + file +
                                       ":2:3: " + complaint.arg(folder.path("shop.ssi"))),
                 qPrintable(run.errors));
        // One line for all models, too, and none with the folder that has the file.
        QCOMPARE(runReceipt(arguments + QStringList{"--all-models", folder.path("all")}).errors,
                 run.errors);
        QCOMPARE(
            runReceipt(arguments + output + QStringList{"--symbols", example("symbols")}).errors,
            QString());
    }

    void missingPicturesAreNamed()
    {
        const WorkFolder folder;
        folder.file("bad.png", "no picture");
        QVERIFY(QFile::copy(example("images/logo.png"), folder.path("logo.png")));
        const QString text =
            folder.file("c.bbcode",
                        "[img name=gone][/img][IMG NAME=bad][/IMG][img name=Logo][/img]\n"
                        "[img name=gone][/img][img name=GONE][/img] [b name=x]y[/b] [img][/img]");
        const QString where = "receipt: " + text + ": ";
        const ReceiptRun run =
            runReceipt({"preview", "--bbcode", text, "--output", folder.path("r.png")});
        QCOMPARE(run.errors, where + "line 1: there is no picture \"gone\" in the folder \"" +
                                 folder.path("") + "\"\n" + where + "line 1: the picture \"" +
                                 folder.path("bad.png") +
                                 "\" can't be read: Unsupported image format\n");
        QCOMPARE(run.status, 0);
        const ReceiptRun elsewhere = runReceipt(
            {"preview", "--bbcode", example("coupon.bbcode"), "--output", folder.path("r.png")});
        QVERIFY(elsewhere.errors.contains("there is no picture \"logo\""));
    }

    void transparentPicturesAreLaidOnWhite_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("alpha");
        QTest::newRow("transparent") << QSize(40, 20) << 0;
        QTest::newRow("half transparent") << QSize(40, 20) << 100;
        QTest::newRow("opaque") << QSize(40, 20) << 255;
        QTest::newRow("tall") << QSize(40, 500) << 0;
    }
    /// On every way to the paper.
    void transparentPicturesAreLaidOnWhite()
    {
        QFETCH(QSize, size);
        QFETCH(int, alpha);
        QImage logo(size, QImage::Format_ARGB32);
        logo.fill(qRgba(0, 0, 0, alpha));
        QImage onWhite(size, QImage::Format_RGB32);
        onWhite.fill(Qt::white);
        for (QImage *const image : {&logo, &onWhite}) {
            QPainter painter(image);
            painter.fillRect(4, 4, 10, 8, Qt::black);
            if (image == &onWhite)
                painter.drawImage(0, 0, logo);
        }
        const auto outputsOf = [](const QImage &picture) {
            const WorkFolder folder;
            const QString text = folder.file("c.bbcode", "[img name=logo][/img]");
            const QString images = folder.path("images");
            if (!QDir().mkpath(images) || !picture.save(images + "/logo.png"))
                qFatal("no picture");
            const QStringList source{"--bbcode", text, "--images", images};
            const QStringList model{"--model", "CUSTOM_VKP_80"};
            runReceipt(QStringList("preview") + source + model +
                       QStringList{"--output", folder.path("r.png")});
            runReceipt(QStringList("print") + source + model +
                       QStringList{"--to", "file:" + folder.path("r.bin")});
            QString json = runReceipt({"bbcode", text, "--images", images, "--as", "json"}).output;
            return QVector<QByteArray>{folder.content("r.png"), folder.content("r.bin"),
                                       json.remove(images).toUtf8()};
        };
        const QVector<QByteArray> outputs = outputsOf(logo);
        QCOMPARE(outputs, outputsOf(onWhite));
        QVERIFY(!outputs.contains(QByteArray()));
    }

    void transparentPicturesAreBlackWithoutAFolderForThem()
    {
        const WorkFolder folder;
        QImage logo(40, 20, QImage::Format_ARGB32);
        logo.fill(Qt::transparent);
        QVERIFY(logo.save(folder.path("logo.png")));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", folder.file("file", "no folder"));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(RECEIPT_PROGRAM,
                      {"preview", "--bbcode",
                       folder.file("c.bbcode", "[img name=logo][/img]\n[img name=logo][/img]"),
                       "--output", folder.path("r.png")});
        const ReceiptRun run = finished(process);
        const QString start = "receipt: " + folder.path("logo.png") +
                              ": what is transparent prints black, as there is no folder for a "
                              "picture of it on white: ";
        QVERIFY2(run.errors.startsWith(start), qPrintable(run.errors));
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.status, 0);
        const QImage paper(folder.path("r.png"));
        int black = 0;
        for (int y = 0; y < paper.height(); ++y) {
            for (int x = 0; x < paper.width(); ++x)
                black += qGray(paper.pixel(x, y)) == 0 ? 1 : 0;
        }
        QVERIFY(black >= 2 * 40 * 20);
    }

    void picturesThatAreNotPrintedAreNamed()
    {
        const WorkFolder folder;
        folder.file("mark.svg",
                    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" "
                    "height=\"9\"><rect width=\"9\" height=\"9\"/></svg>");
        const QString text = folder.file("c.bbcode", "[img name=mark][/img]\n[img name=*a*][/img]");
        const QString where = "receipt: " + text + ": ";
        const ReceiptRun run =
            runReceipt({"preview", "--bbcode", text, "--output", folder.path("r.png")});
        QCOMPARE(run.errors, where + "line 1: the picture \"" + folder.path("mark.svg") +
                                 "\" can't be read: it is damaged, too large, or of a format that "
                                 "isn't printed\n" +
                                 where + "line 2: the folder \"" + folder.path("") +
                                 "\" has no picture \"*a*\" that can be read\n");
        QCOMPARE(run.status, 0);
    }

    // What the printer has no letter for is drawn; what nobody can draw is a box.
    void charactersWithoutADrawingAreNamed()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "5 \xE2\x82\xAC \xD0\x96\n\xF0\x9F\x98\x80\n");
        const ReceiptRun run =
            runReceipt({"preview", "--plain", text, "--output", folder.path("r.png")});
        QCOMPARE(run.errors, "receipt: " + text +
                                 QString::fromUtf8(": line 2: the character \"😀\" "
                                                   "(U+1F600) is printed as a box: it has no "
                                                   "drawing\n"));
        QCOMPARE(run.status, 0);
    }

    void messagesNameTheLinesOfTheTemplate()
    {
        const WorkFolder folder;
        const QString text =
            folder.file("t.cpt", "<C>Shop\n[<NONE>]\n<ENTRIES>\n<N>leaning\n\n<QR>" +
                                     QByteArray(3000, 'x') + "\n<NAME>\n");
        const QString data =
            folder.file("d.json", "{\"attributes\": {\"NAME\": \"" + QByteArray(60, 'y') +
                                      "\"}, \"entries\": \"a=1\\t" + QByteArray(70, 'z') + "=2\"}");
        const QStringList words{
            "line 3: \"" + QString(40, 'z') +
                "...\" is too long for the paper: its 72 characters take 2 rows",
            "line 4: the model prints no text that is italic",
            "line 6: QR code: Input too long for selected error correction level",
            "line 7: \"" + QString(40, 'y') +
                "...\" is too long for the paper: its 60 characters take 2 rows"};
        const QString start = "receipt: " + text + ": ";
        const QString expected = start + words.join('\n' + start) + '\n';
        const QStringList source{text, data, "--model", "CUSTOM_VKP_80"};
        QCOMPARE(runReceipt(QStringList("preview") + source +
                            QStringList{"--output", folder.path("r.png")})
                     .errors,
                 expected);
        QCOMPARE(runReceipt(QStringList("print") + source + QStringList{"--dry-run"}).errors,
                 expected);
    }

    /// No more than a reader may want.
    void longLinesAreCountedBeyondAHundred()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", (QByteArray(60, 'x') + "\n").repeated(103));
        const ReceiptRun run =
            runReceipt({"preview", "--plain", text, "--output", folder.path("r.png")});
        QCOMPARE(run.errors.count(" is too long for the paper: its 60 characters"), 100);
        QVERIFY(run.errors.endsWith(": and 3 more lines are too long for the paper\n"));
        QCOMPARE(run.status, 0);
    }

    void charactersThatCannotBePrintedAreCounted()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "a<#3>b<#3>\n<#4>\n");
        const ReceiptRun run = runReceipt({"preview", "--plain", text, "--model", "CUSTOM_VKP_80",
                                           "--output", folder.path("r.png")});
        const QString start = "receipt: " + text + ": ";
        QVERIFY2(run.errors.endsWith(
                     start + "characters that can't be printed, with a crossed box for each: 3\n"),
                 qPrintable(run.errors));
        QVERIFY(run.errors.contains(start + "line 1: the symbol 3 is blank: "));
        QVERIFY(run.errors.contains(start + "line 2: the symbol 4 is blank: "));
        QCOMPARE(run.status, 0);
    }

    void fiscalSectionsAreFramed()
    {
        const WorkFolder folder;
        const QString receipt = folder.file(
            "a.cpt", "<C>Shop\n<FISCAL_BODY>\n" + QByteArray(60, 'x') + "\n<FISCAL_FOOTER>\n");
        const QString data = folder.file("d.json", "{}");
        const QStringList source{
            "preview", receipt, data, "--model", "CUSTOM_VKP_80", "--output", folder.path("r.png")};
        const ReceiptRun run = runReceipt(source + QStringList{"--fiscal"});
        QCOMPARE(run.errors,
                 "receipt: " + receipt + ": line 3: \"" + QString(40, 'x') +
                     "...\" is too long for the paper: its 60 characters take 2 rows\n");
        QCOMPARE(run.status, 0);
        const QImage framed(folder.path("r.png"));
        // Two frames of a line, three lines of text, and a cut.
        QCOMPARE(framed.height(), 24 + 3 * 24 + 2 * (8 + 24 + 8) + 24 + 2 + 24);
        QCOMPARE(framed.pixelColor(200, 24 + 24), QColor(0xC0, 0, 0));
        const ReceiptRun plain = runReceipt({"preview", "--plain", receipt, "--fiscal"});
        QCOMPARE(plain.errors, QString("receipt: --fiscal needs a template and a document\n"));
        QCOMPARE(plain.status, 2);
    }

    void inverseTextIsDrawnOrTold()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "<Z>x\n");
        const QString file = folder.path("r.png");
        const auto errorsOn = [&](const char *model) {
            return runReceipt({"preview", "--plain", text, "--model", model, "--output", file})
                .errors;
        };
        // The first dots of the cell, at the left edge of the line.
        QCOMPARE(errorsOn("CUSTOM_VKP_80"), QString());
        QCOMPARE(QImage(file).pixelColor(65, 24), QColor(Qt::black));
        QCOMPARE(errorsOn("GENERAL_EPSON_PROTOCOL"),
                 "receipt: " + text + ": line 1: the model prints no text that is inverse\n");
        QCOMPARE(QImage(file).pixelColor(48, 24), QColor(Qt::white));
    }

    void linesThatFitAreNotTold()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", QByteArray(51, 'x') + "\n");
        const ReceiptRun run =
            runReceipt({"preview", "--plain", text, "--output", folder.path("r.png")});
        QCOMPARE(run.errors, QString());
    }

    void codePageIsThatOfTheModel_data()
    {
        QTest::addColumn<QString>("codePage");
        QTest::addColumn<QString>("sameAs");
        QTest::newRow("number") << "2"
                                << "cp850";
        QTest::newRow("another name of it") << "IBM850"
                                            << "CP850";
        QTest::newRow("none") << "0"
                              << "cp437";
    }
    void codePageIsThatOfTheModel()
    {
        QFETCH(QString, codePage);
        QFETCH(QString, sameAs);
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "<189><208>");
        const auto drawn = [&](const QStringList &options) {
            const QString picture = folder.path("r.png");
            const ReceiptRun run =
                runReceipt(QStringList{"preview", "--plain", text, "--output", picture} + options);
            return run.errors.isEmpty() ? QImage(picture) : QImage();
        };
        const QImage picture = drawn({"--code-page", codePage});
        QVERIFY(!picture.isNull());
        QVERIFY(picture == drawn({"--code-page", sameAs}));
        QCOMPARE(picture == drawn({}), codePage == "0");
    }

    void codePageThatTheModelLacksIsRefused_data()
    {
        QTest::addColumn<QString>("codePage");
        QTest::newRow("number") << "17";
        QTest::newRow("name") << "cp866";
    }
    void codePageThatTheModelLacksIsRefused()
    {
        QFETCH(QString, codePage);
        const ReceiptRun run = runReceipt(grocery() + QStringList{"--code-page", codePage});
        QCOMPARE(run.errors, "receipt: --code-page: the model has no character set " + codePage +
                                 "; it has: 0 (CP437), 2 (CP850), 3 (CP860), 4 (CP863), 5 "
                                 "(CP865), 19 (CP858)\n");
        QCOMPARE(run.status, 2);
        // Of all models those that have it begin with it.
        const WorkFolder folder;
        const ReceiptRun all = runReceipt(
            grocery() + QStringList{"--code-page", codePage, "--all-models", folder.path("all")});
        QVERIFY2(!all.errors.contains("character set"), qPrintable(all.errors));
        QCOMPARE(all.status, 0);
    }

    void pictureOfTheTextHasTheSameSize()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "abc <W2>def\n<B>g");
        const auto drawn = [&](const QStringList &options) {
            const QString picture = folder.path("r.png");
            runReceipt(QStringList{"preview", "--plain", text, "--output", picture} + options);
            return QImage(picture);
        };
        const QImage letters = drawn({});
        const QImage dots = drawn({"--as-picture"});
        QCOMPARE(dots.size(), letters.size());
        QVERIFY(inked(dots, dots.rect()) > 100);
        QVERIFY(dots != letters);
    }

    void modelsOfAFileAreDrawn()
    {
        const WorkFolder folder;
        const QString models = folder.file(
            "models.json", R"([{"id": "NARROW", "like": "CITIZEN_CBM_1000", "headDots": 432}])");
        const QString text = folder.file("t.txt", QByteArray(49, 'x'));
        const QString picture = folder.path("r.png");
        const ReceiptRun run = runReceipt({"preview", "--plain", text, "--models", models,
                                           "--model", "NARROW", "--output", picture});
        QCOMPARE(run.errors,
                 QString("receipt: %1: line 1: \"%2...\" is too long for the paper: its 49 "
                         "characters take 2 rows\n")
                     .arg(text, QString(40, 'x')));
        QCOMPARE(run.output, picture + ": NARROW, paper 80 mm, 639 x 122 dots\n");
        const ReceiptRun all = runReceipt(
            {"preview", "--plain", text, "--models", models, "--all-models", folder.path("all")});
        QCOMPARE(all.status, 0);
        QVERIFY(QImage(folder.path("all/NARROW.png")) == QImage(picture));
        const ReceiptRun unknown = runReceipt(
            {"preview", "--plain", text, "--models", folder.path("none"), "--model", "NARROW"});
        QCOMPARE(unknown.status, 1);
        QVERIFY2(unknown.errors.contains(folder.path("none")), qPrintable(unknown.errors));
    }

    void settingsSayWhichPrinterAndHow()
    {
        const WorkFolder folder;
        const QString settings = folder.file("settings.json", R"([
            {"group": "PRINTER", "key": "printerType", "value": 1},
            {"group": "PRINTER", "key": "printerName", "value": "AV_268"},
            {"group": "PRINTER", "key": "spacesBeforeString", "value": 2}])");
        const QString text = folder.file("t.txt", "x");
        const QString picture = folder.path("r.png");
        const QStringList call{"preview", "--plain", text, "--output", picture};
        const ReceiptRun run = runReceipt(call + QStringList{"--settings", settings});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, picture + ": AV_268, paper 60 mm, 480 x 90 dots\n");
        const int cell = 8;
        const QRect blanks(48, 24, 2 * cell, 16);
        QCOMPARE(inked(QImage(picture), blanks), 0);
        QVERIFY(inked(QImage(picture), blanks.translated(2 * cell, 0)) > 0);
        const ReceiptRun both =
            runReceipt(call + QStringList{"--settings", settings, "--model", "AV_268"});
        QCOMPARE(both.errors, QString("receipt: --model and --settings exclude each other\n"));
        QCOMPARE(both.status, 2);
    }

    // What is the same on all models is said once, without them.
    void messagesOfAllModelsNameThem()
    {
        const WorkFolder folder;
        const QString text =
            folder.file("c.bbcode", "[i]x[/i]\xE2\x82\xAC[barcode]\xD0\x96[/barcode]");
        const ReceiptRun run =
            runReceipt({"preview", "--bbcode", text, "--all-models", folder.path("all")});
        QCOMPARE(run.status, 0);
        const QStringList lines = run.errors.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        const QString where = "receipt: " + text + ": ";
        const QRegularExpression named(
            "^([A-Z0-9_-]+, )+[A-Z0-9_-]+: line 1: the model prints no text that is "
            "italic$");
        const QString first = QStringList(lines).filter("italic").value(0).mid(where.size());
        QVERIFY2(named.match(first).hasMatch(), qPrintable(first));
        QVERIFY(first.contains("AV_268") && !first.contains("SWECOIN_TM_20XX"));
        QVERIFY(lines.contains(where + "line 1: Barcode: Code 128 holds ASCII characters only"));
    }

    void allModelsGetAPictureAndASheet()
    {
        const WorkFolder folder;
        const QString place = folder.path("new/models");
        const ReceiptRun run = runReceipt(grocery() + QStringList{"--all-models", place});
        const QStringList errors = run.errors.split('\n', Qt::SkipEmptyParts);
        QVERIFY(!errors.isEmpty());
        // On narrow paper its rules are too long.
        for (const QString &error : errors)
            QVERIFY2(error.contains("GENERAL_EPSON_PROTOCOL, SWECOIN_TM_20XX, NP_F209_2D: line ") &&
                         error.contains(" is too long for the paper: its "),
                     qPrintable(error));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString("%1: %2 models; all of them small: %1/contact-sheet.png\n")
                                 .arg(place)
                                 .arg(cataloguemodels::modelCount));
        const QStringList names = QDir(place).entryList(QDir::Files);
        QCOMPARE(names.size(), cataloguemodels::modelCount + 1);
        for (const QString &name : names)
            QVERIFY2(!QImage(place + "/" + name).isNull(), qPrintable(name));
        QCOMPARE(QImage(place + "/TSP-TUP.png").width(), 639);
    }

    void wrongCommandLinesAreWrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QStringList files{"a.cpt", "b.json"};
        const QString sources =
            "a template and a document are expected, or one of --bbcode, --document and --plain";
        QTest::newRow("nothing") << QStringList() << sources;
        QTest::newRow("one file") << QStringList{"a.cpt"} << sources;
        QTest::newRow("two sources") << QStringList{"--plain", "a", "--bbcode", "b"} << sources;
        QTest::newRow("a source and files") << files + QStringList{"--plain", "a"} << sources;
        QTest::newRow("twice the same") << QStringList{"--plain", "a", "--plain", "b"} << sources;
        QTest::newRow("scale") << files + QStringList{"--scale", "0"}
                               << "--scale: \"0\" is no number from 1 to 8";
        QTest::newRow("suffix") << files + QStringList{"--output", "a.gif"}
                                << "--output: \"a.gif\" ends in none of .png, .pdf, .svg";
        QTest::newRow("all models and one")
            << files + QStringList{"--all-models", "d", "--model", "AV_268"}
            << "--all-models excludes --model, --settings and --output";
        QTest::newRow("watching standard input")
            << QStringList{"--plain", "-", "--watch"} << "--watch: standard input can't be watched";
    }
    void wrongCommandLinesAreWrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(QStringList("preview") + arguments);
        QCOMPARE(run.errors, "receipt: " + complaint + "\n");
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QString());
    }

    void badInputIsNamedAndLeavesThePictureAlone()
    {
        const WorkFolder folder;
        const QString old = folder.file("r.png", "old");
        const QString data = folder.file("d.json", "{");
        const ReceiptRun bad = runReceipt({"preview", example("kiosk.cpt"), data, "--output", old});
        QCOMPARE(bad.status, 1);
        QVERIFY(bad.errors.startsWith("receipt: " + data + ":1:"));
        QCOMPARE(folder.content("r.png"), QByteArray("old"));
        const ReceiptRun nowhere =
            runReceipt(grocery() + QStringList{"--output", folder.path("no/such/folder.png")});
        QCOMPARE(nowhere.status, 1);
        QVERIFY(nowhere.errors.contains("folder.png: No such file or directory"));
        const ReceiptRun unsaved = runReceipt({"preview", "--document", data});
        QCOMPARE(unsaved.status, 1);
        QVERIFY(unsaved.errors.contains("no copy can be loaded"));
    }

    void receiptLongerThanARollIsRefused()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", QByteArray("x\n").repeated(50000));
        const ReceiptRun run =
            runReceipt({"preview", "--plain", text, "--output", folder.path("r.png")});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, "receipt: " + text +
                                 ": lines 1 to 50000: the paper gets longer than 1000000 dots\n");
        QVERIFY(!QFile::exists(folder.path("r.png")));
    }

    void outputThatTheReceiptWouldTakeForAPicture_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<bool>("refused");
        QTest::newRow("the picture") << "logo_m.png" << true;
        QTest::newRow("in front of the picture") << "logo_a.png" << true;
        QTest::newRow("behind the picture") << "logo_z.png" << false;
        QTest::newRow("another name") << "alogo.png" << false;
        QTest::newRow("a missing picture") << "gone.png" << true;
        QTest::newRow("a missing picture, any case") << "Gone-2.PNG" << true;
        QTest::newRow("another folder") << "sub/logo_a.png" << false;
    }

    void outputThatTheReceiptWouldTakeForAPicture()
    {
        QFETCH(QString, output);
        QFETCH(bool, refused);
        const WorkFolder folder;
        QVERIFY(QDir(folder.path("")).mkpath("sub"));
        const QString picture = folder.path("logo_m.png");
        QVERIFY(QFile::copy(example("images/logo.png"), picture));
        const QString text = folder.file("c.bbcode", "[img name=logo][/img][img name=gone][/img]");
        const QString file = folder.path(output);
        const ReceiptRun run = runReceipt({"preview", "--bbcode", text, "--output", file});
        QCOMPARE(run.status, refused ? 1 : 0);
        QCOMPARE(run.errors.contains("receipt: " + file + ": the receipt takes \""), refused);
        QCOMPARE(QFileInfo::exists(file), !refused || file == picture);
        QCOMPARE(QImage(picture).size(), QImage(example("images/logo.png")).size());
    }

    void textUnderAPicturesNameIsKept()
    {
        const WorkFolder folder;
        const QString text = folder.file("text.svg", "word\n");
        const ReceiptRun run = runReceipt({"preview", "--plain", text, "--output", text});
        QCOMPARE(run.errors, "receipt: " + text +
                                 ": what is written is made of this file; choose another name\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.content("text.svg"), QByteArray("word\n"));
    }

    void picturesOfAllModelsStayInTheirFolder()
    {
        const WorkFolder folder;
        for (const QString &id : {QString("../up"), QString("/up"), QString("contact-sheet")}) {
            const QJsonArray models{QJsonObject{{"id", id}, {"like", "CUSTOM_VKP_80"}}};
            const QString file = folder.file("models.json", QJsonDocument(models).toJson());
            const ReceiptRun run = runReceipt(
                grocery() + QStringList{"--models", file, "--all-models", folder.path("all")});
            QCOMPARE(run.errors,
                     "receipt: --all-models: \"" + id + "\" is no name for a model's picture\n");
            QCOMPARE(run.status, 2);
            QVERIFY(!QFile::exists(folder.path("up.png")));
        }
    }

    void allModelsKeepThePictures()
    {
        const WorkFolder folder;
        const QString text = folder.file("c.bbcode", "[img name=contact][/img]");
        const ReceiptRun run =
            runReceipt({"preview", "--bbcode", text, "--all-models", folder.path("")});
        QCOMPARE(run.status, 1);
        QVERIFY(run.errors.contains("contact-sheet.png: the receipt takes \""));
        QCOMPARE(QDir(folder.path("")).entryList(QDir::Files), QStringList("c.bbcode"));
    }

    void pictureOfTheReadmeIsNotStale()
    {
        QFile readme(PRINTERSLIB_EXAMPLES "/../README.md");
        QVERIFY(readme.open(QIODevice::ReadOnly));
        static const QRegularExpression line("receipt (preview [^`\\n]*) --output ([^`\\n]+)");
        const auto match = line.match(QString::fromUtf8(readme.readAll()).simplified());
        QVERIFY(match.hasMatch());
        QStringList arguments = match.captured(1).split(' ');
        const QString shown = match.captured(2).section('`', 0, 0).trimmed();
        const WorkFolder folder;
        for (QString &argument : arguments)
            argument.replace("examples/", PRINTERSLIB_EXAMPLES "/");
        const ReceiptRun run =
            runReceipt(arguments + QStringList{"--output", folder.path("r.png")});
        QCOMPARE(run.errors, QString());
        const QImage drawn(folder.path("r.png"));
        const QImage committed(QString(PRINTERSLIB_EXAMPLES "/../") + shown);
        QCOMPARE(committed.size(), drawn.size());
        int differing = 0;  // a few pixels at the edges of letters are another FreeType's
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x)
                differing +=
                    qAbs(qGray(drawn.pixel(x, y)) - qGray(committed.pixel(x, y))) > 64 ? 1 : 0;
        }
        QVERIFY2(differing < 40, qPrintable(QString::number(differing)));
    }
};

QTEST_GUILESS_MAIN(TestReceiptPreview)
#include "tst_receipt_preview.moc"
