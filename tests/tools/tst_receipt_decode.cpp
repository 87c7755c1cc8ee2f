// What a printer makes of a stream, as the tool says it.
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "receiptprogram.h"

namespace {

constexpr int patience = 30000;
// 576 dots of 12 x 24, 48 columns.
const QStringList model{"--model", "GENERAL_EPSON_PROTOCOL"};

QStringList decode(const QString &file, const QStringList &options = {})
{
    return QStringList{"decode", file} + model + options;
}

/// A run over bytes that come on standard input.
ReceiptRun decoded(const QByteArray &stream, const QStringList &options = {})
{
    return runReceipt(decode("-", options), stream);
}

QJsonObject jsonOf(const QByteArray &stream)
{
    const ReceiptRun run = decoded(stream, {"--as", "json"});
    return QJsonDocument::fromJson(run.output.toUtf8()).object();
}

QJsonObject paperOf(const QByteArray &stream, int index = 0)
{
    return jsonOf(stream)["papers"].toArray().at(index).toObject();
}

// Feeds to the cutter first.
const QByteArray cut("\x1DVB\x00", 4);

QByteArray qrOf(const QByteArray &payload)
{
    const QByteArray k("\x1D(k");
    const int size = payload.size() + 3;
    return k + QByteArray("\x03\x00\x31\x43\x04", 5) + k + static_cast<char>(size % 256) +
           static_cast<char>(size / 256) + "1P0" + payload + k +
           QByteArray("\x03\x00\x31\x51\x30", 5);
}

int pagesOf(const QByteArray &pdf)
{
    return pdf.count("/Type /Page\n");
}

}  // namespace

class TestReceiptDecode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsThatOfThePaper()
    {
        const ReceiptRun run = decoded("Hello\n  world\n" + cut);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QString("Hello\n  world\n[cut]\n"));
    }

    // The cutter is 120 dots from the head, and a QR code higher than that.
    void textIsCutWhereCodesLeaveIt()
    {
        const QByteArray cutAtOnce("\x1DV\x00", 3);
        const QByteArray stream = "above\n" + qrOf(QByteArray(200, 'a')) + cutAtOnce;
        QString expected;
        for (const QJsonValue &paper : jsonOf(stream)["papers"].toArray())
            expected += paper.toObject()["text"].toString();
        QVERIFY2(expected.startsWith("above\n"), qPrintable(expected));
        QVERIFY2(expected.contains("[cut]\n"), qPrintable(expected));
        QCOMPARE(decoded(stream).output, expected);
    }

    void fileIsReadAsStandardInputIs()
    {
        const ReceiptRun run = runReceipt(decode(example("streams/sale.bin")));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.contains("Receipt 1207  09.05.2026 14:30\n"));
        QVERIFY(run.output.contains("[QR: https://kiosk.example/1207]\n"));
        QVERIFY(run.output.endsWith("[cut]\n"));
        QFile file(example("streams/sale.bin"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(decoded(file.readAll()).output, run.output);
    }

    void streamMayHoldAnyByte()
    {
        QByteArray stream;
        for (int i = 0; i < 4 * 256; ++i)
            stream.append(static_cast<char>(i * 7));
        for (const char *form : {"text", "listing", "json"}) {
            const ReceiptRun run = decoded(stream, {"--as", form});
            QVERIFY2(run.status == 0 || run.status == 1, form);
        }
    }

    void listingHasALineForEachCommand()
    {
        const ReceiptRun run = decoded(QByteArray("\x1B@Hi\n", 5) + cut, {"--as", "listing"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, QString());
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 4);
        QVERIFY2(lines.at(0).contains("ESC @"), qPrintable(lines.at(0)));
        QVERIFY2(lines.at(1).contains("Hi"), qPrintable(lines.at(1)));
        QVERIFY2(lines.at(2).contains("LF"), qPrintable(lines.at(2)));
        QVERIFY2(lines.at(3).contains("GS V"), qPrintable(lines.at(3)));
        QVERIFY(!run.output.contains("unknown"));
    }

    void listingTellsWhereTheStreamEnds()
    {
        const QByteArray picture = QByteArray("\x1Dv0\x00\x02\x00\x10\x00", 8) + "abc";
        const ReceiptRun run = decoded(picture, {"--as", "listing"});
        QVERIFY2(run.output.contains("ends inside"), qPrintable(run.output));
    }

    void listingOfNothingButCommandsIsASuccess()
    {
        QCOMPARE(decoded("\x1B@", {"--as", "listing"}).status, 0);
    }

    void jsonTellsCellsAndPlaces()
    {
        const QJsonObject json = jsonOf(
            "\x1B"
            "E\x01"
            "AB"
            "\x1B"
            "E" +
            QByteArray(1, '\0') + "C\n");
        QCOMPARE(json["model"].toString(), QString("GENERAL_EPSON_PROTOCOL"));
        const QJsonObject paper = json["papers"].toArray().at(0).toObject();
        QCOMPARE(paper["width"].toInt(), 576);
        QCOMPARE(paper["isCut"].toBool(true), false);
        QCOMPARE(paper["text"].toString(), QString("ABC\n"));
        const QJsonArray runs = paper["lines"].toArray().at(0).toObject()["cells"].toArray();
        QCOMPARE(runs.size(), 2);
        const QJsonObject bold = runs.at(0).toObject();
        QCOMPARE(bold["text"].toString(), QString("AB"));
        QCOMPARE(bold["left"].toInt(-1), 0);
        QCOMPARE(bold["width"].toInt(), 12);
        QCOMPARE(bold["height"].toInt(), 24);
        QCOMPARE(bold["effects"].toArray(), (QJsonArray{"bold"}));
        QCOMPARE(bold["scale"].toArray(), (QJsonArray{1, 1}));
        QCOMPARE(runs.at(1).toObject()["left"].toInt(), 24);
        QCOMPARE(runs.at(1).toObject()["effects"].toArray(), QJsonArray());
    }

    void jsonTellsCodes()
    {
        const QJsonObject paper = paperOf(qrOf("abc"));
        QJsonObject code;
        for (const QJsonValue &line : paper["lines"].toArray()) {
            if (!line.toObject()["codes"].toArray().isEmpty())
                code = line.toObject()["codes"].toArray().at(0).toObject();
        }
        QCOMPARE(code["symbology"].toString(), QString("qrCode"));
        QCOMPARE(code["text"].toString(), QString("abc"));
        QCOMPARE(code["payload"].toString(), QString("YWJj"));
        QCOMPARE(code["fault"].toString(), QString());
        QCOMPARE(code["module"].toArray(), (QJsonArray{4, 4}));
        QCOMPARE(code["modules"].toArray(), (QJsonArray{21, 21}));
        QCOMPARE(code["width"].toInt(), 84);
        QCOMPARE(QByteArray::fromBase64(code["rows"].toString().toLatin1()).size(), 3 * 21);
    }

    void jsonTellsPictures()
    {
        const QByteArray picture = QByteArray("\x1Dv0\x03\x01\x00\x02\x00\xF0\x0F", 10);
        const QJsonObject line = paperOf(picture)["lines"].toArray().at(0).toObject();
        const QJsonObject shown = line["pictures"].toArray().at(0).toObject();
        QCOMPARE(shown["pixels"].toArray(), (QJsonArray{8, 2}));
        QCOMPARE(shown["dotsPerPixel"].toArray(), (QJsonArray{2, 2}));
        QCOMPARE(shown["rows"].toString(), QString("8A8="));
        QCOMPARE(shown["width"].toInt(), 16);
    }

    void jsonTellsWhatHappens()
    {
        const QJsonArray events =
            paperOf("a\n\x1Bp" + QByteArray("\x00\x19\xFA", 3) + cut)["events"].toArray();
        QStringList kinds;
        for (const QJsonValue &event : events)
            kinds.append(event.toObject()["kind"].toString());
        QVERIFY2(kinds.contains("pulse") && kinds.contains("partialCut"),
                 qPrintable(kinds.join(' ')));
        const QJsonObject pulse = events.at(kinds.indexOf("pulse")).toObject();
        QCOMPARE(pulse["offset"].toInt(), 2);
        QCOMPARE(pulse["pin"].toInt(), 2);
        QCOMPARE(pulse["onMilliseconds"].toInt(), 50);
        QCOMPARE(pulse["offMilliseconds"].toInt(), 500);
    }

    void jsonIsIndentedOnDemand()
    {
        const QByteArray stream = "a\n" + cut + "b\n" + cut;
        const QString plain = decoded(stream, {"--as", "json"}).output;
        QCOMPARE(plain.count('\n'), 4);
        const QString pretty = decoded(stream, {"--as", "json", "--pretty"}).output;
        const QJsonDocument json = QJsonDocument::fromJson(plain.toUtf8());
        QCOMPARE(json.object()["papers"].toArray().size(), 2);
        QCOMPARE(pretty, QString::fromUtf8(json.toJson(QJsonDocument::Indented)));
    }

    void jsonOfNothingPrintedHasNoPapers()
    {
        for (const QStringList &options : {QStringList{}, QStringList{"--pretty"}}) {
            const ReceiptRun run = decoded("\x1B", QStringList{"--as", "json"} + options);
            QCOMPARE(run.status, 0);
            const QJsonDocument json = QJsonDocument::fromJson(run.output.toUtf8());
            QVERIFY(json.isObject());
        }
    }

    void picturesAreDrawn_data()
    {
        QTest::addColumn<QString>("form");
        QTest::newRow("png") << "png";
        QTest::newRow("pdf") << "pdf";
        QTest::newRow("svg") << "svg";
    }
    void picturesAreDrawn()
    {
        QFETCH(QString, form);
        const WorkFolder folder;
        const QString file = folder.path("a." + form);
        const ReceiptRun run =
            runReceipt(decode(example("streams/sale.bin"), {"--as", form, "--output", file}));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.startsWith(file + ": GENERAL_EPSON_PROTOCOL, paper 80 mm, 639 x "),
                 qPrintable(run.output));
        QVERIFY(run.output.endsWith(", pieces: 1\n"));
        QVERIFY(!folder.content("a." + form).isEmpty());
        const QByteArray first = folder.content("a." + form);
        runReceipt(decode(example("streams/sale.bin"), {"--as", form, "--output", file}));
        QVERIFY(folder.content("a." + form) == first);
    }

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

    void twoReceiptsAreTwoPieces()
    {
        const QByteArray stream = "one\n" + cut + "two\n" + cut;
        QCOMPARE(decoded(stream).output, QString("one\n[cut]\ntwo\n[cut]\n"));
        QCOMPARE(jsonOf(stream)["papers"].toArray().size(), 2);
        const WorkFolder folder;
        const auto drawn = [&](const QByteArray &bytes, const QString &form) {
            const ReceiptRun run =
                decoded(bytes, {"--as", form, "--output", folder.path("a." + form)});
            return run.output;
        };
        QVERIFY(drawn(stream, "pdf").endsWith(", pieces: 2\n"));
        QCOMPARE(pagesOf(folder.content("a.pdf")), 2);
        drawn("one\n" + cut, "png");
        const int one = QImage(folder.path("a.png")).height();
        drawn(stream, "png");
        QCOMPARE(QImage(folder.path("a.png")).height(), 2 * one + 40);
    }

    void whatIsNotCutIsTheLastPiece()
    {
        QCOMPARE(decoded("one\n" + cut + "two").output, QString("one\n[cut]\ntwo\n"));
    }

    void blankEndIsNoPiece()
    {
        const QByteArray stream = "one\n" + cut + "\n\n";
        QCOMPARE(decoded(stream).output, QString("one\n[cut]\n"));
        const WorkFolder folder;
        QVERIFY(decoded(stream, {"--as", "svg", "--output", folder.path("a.svg")})
                    .output.endsWith(", pieces: 1\n"));
        QCOMPARE(jsonOf(stream)["papers"].toArray().size(), 2);
        QCOMPARE(decoded("\n\n").status, 1);
    }

    void blankPieceThatIsCutIsOne()
    {
        QCOMPARE(decoded("one\n" + cut + "\n\n" + cut).output, QString("one\n[cut]\n\n\n[cut]\n"));
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

    void nothingToReadIsAFailure_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("empty, text") << QByteArray() << "text"
                                     << "the stream is empty";
        QTest::newRow("empty, listing") << QByteArray() << "listing"
                                        << "the stream is empty";
        QTest::newRow("empty, json") << QByteArray() << "json"
                                     << "the stream is empty";
        QTest::newRow("empty, png") << QByteArray() << "png"
                                    << "the stream is empty";
        QTest::newRow("nothing printed, text") << QByteArray("\x1B@") << "text"
                                               << "nothing is printed by it";
        QTest::newRow("nothing printed, png") << QByteArray("\x1B@") << "png"
                                              << "nothing is printed by it";
    }
    void nothingToReadIsAFailure()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QString, form);
        QFETCH(QString, complaint);
        const WorkFolder folder;
        const ReceiptRun run = decoded(stream, {"--as", form, "--output", folder.path("o")});
        QCOMPARE(run.errors, "receipt: -: " + complaint + '\n');
        QCOMPARE(run.status, 1);
        QVERIFY(folder.content("o").isNull());
    }

    void whatThePrinterDoesNotDoIsToldOnce()
    {
        const QString file = example("streams/mistakes.bin");
        for (const char *form : {"text", "json"}) {
            const ReceiptRun run = runReceipt(decode(file, {"--as", form, "--paper", "0"}));
            QCOMPARE(run.status, 0);
            const QStringList notes = run.errors.split('\n', Qt::SkipEmptyParts);
            QVERIFY(!notes.isEmpty());
            for (const QString &note : notes)
                QVERIFY2(note.startsWith("receipt: " + file + ": byte "), qPrintable(note));
            QVERIFY(notes.contains("receipt: " + file + ": byte 8, 2 times: ESC ~ isn't known"));
            QVERIFY2(notes.last().contains("ends inside GS v 0, 1,200 of 9,216 bytes"),
                     qPrintable(notes.last()));
        }
    }

    void codeThatCannotBePrintedIsNotInTheText()
    {
        const QByteArray ean =
            "\x1DkC\x0C"
            "46000000000A";
        const ReceiptRun run = decoded("a\n" + ean + "b\n");
        QCOMPARE(run.output, QString("a\nb\n"));
        QVERIFY2(run.errors.contains("byte 2: ") && run.errors.contains("12 or 13 digits"),
                 qPrintable(run.errors));
    }

    void manyNotesAreCounted()
    {
        QByteArray stream = "a\n";
        for (int i = 0; i < 120; ++i)
            stream += QByteArray("\x1DV") + static_cast<char>(100 + i);
        const ReceiptRun run = decoded(stream);
        QCOMPARE(run.status, 0);
        QVERIFY(run.errors.count('\n') <= 101);
    }

    void changedFileIsReadAgain()
    {
        const WorkFolder folder;
        const QString file = folder.file("s.bin", "first\n");
        QProcess process;
        process.start(RECEIPT_PROGRAM, decode(file, {"--watch"}));
        QByteArray output;
        const auto says = [&](const QByteArray &text) {
            return QTest::qWaitFor(
                [&] {
                    output += process.readAllStandardOutput() + process.readAllStandardError();
                    return output.contains(text);
                },
                patience);
        };
        QVERIFY(says("first\n"));
        QVERIFY(says("Watching " + file.toUtf8()));
        folder.file("s.bin", "second one\n");
        QVERIFY(says("second one\n"));
        process.kill();
        process.waitForFinished();
    }

    void standardInputIsReadAsItComes()
    {
        QProcess process;
        process.start(RECEIPT_PROGRAM, decode("-", {"--as", "listing"}));
        process.write("\x1B@");
        QVERIFY(QTest::qWaitFor([&] { return process.readAllStandardOutput().contains("ESC @"); },
                                patience));
        process.write("a\n");
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished(patience));
        QVERIFY(process.readAllStandardOutput().contains("\"a\""));
        QCOMPARE(process.exitCode(), 0);
    }

    void longStreamIsReadWhole()
    {
        const QByteArray line = QByteArray(40, 'x') + '\n';
        const ReceiptRun run = decoded((line.repeated(1000) + cut).repeated(10));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output.count('x'), 400000);
        QCOMPARE(run.output.count("[cut]\n"), 10);
    }

    void fileThatIsMissingIsAFailure()
    {
        const ReceiptRun run = runReceipt(decode("/nowhere.bin"));
        QCOMPARE(run.errors, QString("receipt: /nowhere.bin: No such file or directory\n"));
        QCOMPARE(run.status, 1);
        const ReceiptRun folder = runReceipt(decode("/tmp"));
        QCOMPARE(folder.status, 1);
        QVERIFY(folder.errors.startsWith("receipt: /tmp: "));
    }

    void fileThatCannotBeWrittenIsAFailure()
    {
        for (const char *form : {"text", "png"}) {
            const ReceiptRun run = decoded("a\n", {"--as", form, "--output", "/nowhere/o"});
            QCOMPARE(run.status, 1);
            QVERIFY(run.errors.startsWith("receipt: /nowhere/o: "));
        }
    }
};

QTEST_GUILESS_MAIN(TestReceiptDecode)
#include "tst_receipt_decode.moc"
