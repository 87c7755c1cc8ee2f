// What a printer makes of a stream, as the tool says it.
#include <QImage>
#include <QJsonArray>
#include <QtTest>

#include "decodebench.h"

using namespace decodebench;

namespace {

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
        const QStringList notes = run.errors.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(notes.size(), 101);
        QVERIFY2(notes.last().endsWith(" notes more"), qPrintable(notes.last()));
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
