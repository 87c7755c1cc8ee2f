// A receipt as the bytes of a printer, made by the tool.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "pseudoterminal.h"
#include "receiptprogram.h"

namespace {

const QString general = "GENERAL_EPSON_PROTOCOL";

/// A call that prints the kiosk's receipt.
QStringList kiosk(const QStringList &options = {}, const QString &model = general)
{
    return QStringList{"print", example("kiosk.cpt"), example("kiosk.json"), "--model", model} +
           options;
}

/// What goes to standard output.
QByteArray bytesOf(const QStringList &arguments, const QByteArray &input = QByteArray())
{
    QProcess process;
    process.start(RECEIPT_PROGRAM, arguments + QStringList{"--to", "-"});
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(60000);
    return process.readAllStandardOutput();
}

/// The same with what else is known of the run.
ReceiptRun runOn(PseudoTerminal &terminal, const QStringList &arguments, bool isUsers)
{
    QProcess process;
    process.setStandardOutputFile(terminal.path());
    if (isUsers)
        process.setStandardErrorFile(terminal.path());
    process.start(RECEIPT_PROGRAM, arguments);
    return finished(process);
}

QString textOf(const QByteArray &bytes, const QString &model = general)
{
    return runReceipt({"decode", "-", "--model", model}, bytes).output;
}

QString listingOf(const QByteArray &bytes, const QString &model = general)
{
    return runReceipt({"decode", "-", "--model", model, "--as", "listing"}, bytes).output;
}

/// Settings as the print service keeps them.
QByteArray settingsOf(const QList<QPair<QString, QVariant>> &shared,
                      const QList<QPair<QString, QVariant>> &own = {},
                      const QString &model = "CUSTOM_VKP_80", int type = 1)
{
    QJsonArray items;
    const auto add = [&items](const QString &group, const QString &key, const QVariant &value) {
        items.append(
            QJsonObject{{"group", group}, {"key", key}, {"value", QJsonValue::fromVariant(value)}});
    };
    add("PRINTER", "printerType", type);
    add("PRINTER", "printerName", model);
    for (const auto &item : shared)
        add("PRINTER", item.first, item.second);
    for (const auto &item : own)
        add(model, item.first, item.second);
    return QJsonDocument(items).toJson();
}

void makeCooked(const PseudoTerminal &terminal)
{
    const int line = ::open(terminal.path().toLocal8Bit(), O_RDWR | O_NOCTTY);
    termios settings{};
    ::tcgetattr(line, &settings);
    settings.c_oflag |= OPOST | ONLCR;
    ::tcsetattr(line, TCSANOW, &settings);
    ::close(line);
}

}  // namespace

class TestReceiptPrint : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    QString textFile(const QByteArray &text) const { return m_folder.file("text.txt", text); }

    QStringList plain(const QByteArray &text, const QStringList &options = {}) const
    {
        return QStringList{"print", "--plain", textFile(text), "--model", general} + options;
    }

private Q_SLOTS:
    void templateAndDocumentBecomeBytes()
    {
        const QString text = textOf(bytesOf(kiosk()));
        QVERIFY2(text.contains("Harbour Kiosk\n"), qPrintable(text));
        QVERIFY2(text.contains("Receipt 1207"), qPrintable(text));
        QVERIFY2(text.endsWith("[cut]\n"), qPrintable(text));
    }

    void everySourceBecomesBytes_data()
    {
        QTest::addColumn<QStringList>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("BBCode") << QStringList{"--bbcode", m_folder.file("a.bb", "[b]bold[/b]")}
                                << "bold\n";
        QTest::newRow("text") << QStringList{"--plain", m_folder.file("a.txt", "plain\n")}
                              << "plain\n";
        const QString saved = m_folder.path("saved");
        runReceipt(
            {"document", "save", saved, example("kiosk.json"), "--from", example("kiosk.cpt")});
        QTest::newRow("saved document") << QStringList{"--document", saved} << "Harbour Kiosk\n";
    }
    void everySourceBecomesBytes()
    {
        QFETCH(QStringList, source);
        QFETCH(QString, expected);
        const QString text = textOf(bytesOf(QStringList{"print", "--model", general} + source));
        QVERIFY2(text.contains(expected), qPrintable(text));
    }

    void standardInputIsASource()
    {
        const QString text =
            textOf(bytesOf({"print", "--plain", "-", "--model", general}, "from a pipe\n"));
        QVERIFY2(text.contains("from a pipe\n"), qPrintable(text));
    }

    void fileHoldsWhatStandardOutputGets()
    {
        const QString file = m_folder.path("sale.bin");
        const ReceiptRun run = runReceipt(kiosk({"--to", "file:" + file}));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        const QByteArray bytes = m_folder.content("sale.bin");
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(bytesOf(kiosk()), bytes);
        QVERIFY2(run.output.startsWith(QString("%1: %2, paper ").arg(file, general)),
                 qPrintable(run.output));
        QVERIFY2(run.output.contains(QString(": %1 bytes, 1 piece of paper, ").arg(bytes.size())),
                 qPrintable(run.output));
    }

    void sameInputGivesTheSameBytes() { QCOMPARE(bytesOf(kiosk()), bytesOf(kiosk())); }

    void fileThatCantBeWrittenIsLeftAsItWas()
    {
        const QString folder = m_folder.path("not-there/sale.bin");
        const ReceiptRun run = runReceipt(kiosk({"--to", "file:" + folder}));
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.startsWith("receipt: " + folder + ": "), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
    }

    void pathOfAFileIsWrittenAsInOtherAddresses()
    {
        const ReceiptRun run =
            runReceipt(kiosk({"--to", "file:" + m_folder.path("5%25%20off%3F")}));
        QCOMPARE(run.errors, QString());
        QVERIFY(!m_folder.content("5% off?").isEmpty());
    }

    void receiptsOwnFilesAreNotReplaced()
    {
        const QString text = m_folder.file("own.cpt", "word\n");
        const QString data = m_folder.file("own.json", "{}");
        QVERIFY(QFile::link(text, m_folder.path("link.cpt")));
        const QStringList call{"print", text, data, "--model", general, "--to"};
        for (const QString &file :
             {text, data, m_folder.path("./own.cpt"), m_folder.path("link.cpt")}) {
            const ReceiptRun run = runReceipt(call + QStringList("file:" + file));
            QCOMPARE(run.errors, "receipt: " + file +
                                     ": what is written is made of this file; choose another "
                                     "name\n");
            QCOMPARE(run.status, 1);
        }
        QCOMPARE(m_folder.content("own.cpt"), QByteArray("word\n"));
        QCOMPARE(m_folder.content("own.json"), QByteArray("{}"));
        const QString file = m_folder.path("own.bin");
        const ReceiptRun run = runReceipt(
            {"print", "--plain", "-", "--model", general, "--to", "file:" + file}, "word\n");
        QCOMPARE(run.errors, QString());
        QVERIFY(QFile::exists(file));
    }

    // "logo.bin" would be the first file whose name begins with "logo".
    void pictureOfTheReceiptIsNotReplaced()
    {
        const QString text = m_folder.file("ad.bb", "[img name=logo][/img]");
        QVERIFY(QFile::copy(example("images/logo.png"), m_folder.path("logo.png")));
        const QString file = m_folder.path("logo.bin");
        const ReceiptRun run =
            runReceipt({"print", "--bbcode", text, "--model", general, "--to", "file:" + file});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.startsWith("receipt: " + file + ": the receipt takes "),
                 qPrintable(run.errors));
        QVERIFY(!QFile::exists(file));
    }

    void fullStandardOutputIsAnError()
    {
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(RECEIPT_PROGRAM, kiosk({"--to", "-"}));
        const ReceiptRun run = finished(process);
        QCOMPARE(run.errors, QString("receipt: standard output: No space left on device\n"));
        QCOMPARE(run.status, 1);
    }

    // What would be obeyed there.
    void usersTerminalGetsNoBytes()
    {
        PseudoTerminal terminal;
        const ReceiptRun run = runOn(terminal, kiosk({"--to", "-"}), true);
        QCOMPARE(run.status, 2);
        QCOMPARE(terminal.read(),
                 QByteArray("receipt: standard output is a terminal, which would obey a printer's "
                            "bytes; lead it elsewhere, or name a file by --to file:PATH\n"));
    }

    void lineThatChangesBytesGetsNone()
    {
        PseudoTerminal terminal;
        makeCooked(terminal);
        const ReceiptRun run = runOn(terminal, kiosk({"--to", "-"}), false);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors, QString("receipt: standard output is a line that changes bytes; "
                                     "\"stty -F %1 raw\" ends that\n")
                                 .arg(terminal.path()));
        QCOMPARE(terminal.read(), QByteArray());
    }

    void rawLineGetsTheBytes()
    {
        PseudoTerminal terminal;
        const ReceiptRun run = runOn(terminal, plain("x\n", {"--to", "-"}), false);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(terminal.read(), bytesOf(plain("x\n")));
    }

    void dryRunTellsAndWritesNothing()
    {
        const QByteArray bytes = bytesOf(kiosk());
        const QString file = m_folder.path("dry.bin");
        for (const QStringList &destination :
             {QStringList(), QStringList{"--to", "-"}, QStringList{"--to", "file:" + file}}) {
            const ReceiptRun run = runReceipt(kiosk(QStringList("--dry-run") + destination));
            QCOMPARE(run.errors, QString());
            QCOMPARE(run.status, 0);
            const QString seconds = QString::number(bytes.size() * 10 / 19200.0, 'f', 2);
            QVERIFY2(
                run.output.endsWith(QString(": %1 bytes, 1 piece of paper, %2 s at 19200 baud\n")
                                        .arg(bytes.size())
                                        .arg(seconds)),
                qPrintable(run.output));
        }
        QVERIFY(!QFile::exists(file));
    }

    void dryRunCountsBytesOnTheLineThatIsTold()
    {
        const int bytes = bytesOf(kiosk()).size();
        const ReceiptRun run = runReceipt(kiosk({"--dry-run", "--baud", "1200"}));
        QVERIFY2(run.output.endsWith(QString("%1 s at 1200 baud\n").arg(bytes / 120.0, 0, 'f', 2)),
                 qPrintable(run.output));
    }

    // A BBCode ticket ejects what still hangs there, and is one piece itself.
    void dryRunCountsPiecesOfPaper()
    {
        const QString file = m_folder.file("a.bb", "x");
        const ReceiptRun run =
            runReceipt({"print", "--bbcode", file, "--model", general, "--dry-run"});
        QVERIFY2(run.output.contains(" bytes, 1 piece of paper, "), qPrintable(run.output));
    }

    void notesNameTheLineOfTheText()
    {
        const ReceiptRun run = runReceipt(plain("good\n<27>bad\n", {"--dry-run"}));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, "receipt: " + m_folder.path("text.txt") +
                                 ": line 2: the code 27 (0x1B) isn't printed\n");
    }

    void notesNameTheLineOfABbCodeText()
    {
        const QString file =
            m_folder.file("notes.bb",
                          "[center]Shop[/center]\n\n[b]Tea[/b]  [i]x[/i]\n[hr][/hr]\n[barcode]"
                          "\xD0\x96[/barcode]\nEnd\n[img name=gone][/img]");
        const ReceiptRun run =
            runReceipt({"print", "--bbcode", file, "--model", general, "--dry-run"});
        const QString where = "receipt: " + file + ": line ";
        QVERIFY2(run.errors.contains(where + "3: the model prints no text that is italic"),
                 qPrintable(run.errors));
        QVERIFY2(run.errors.contains(where + "5: Barcode: "), qPrintable(run.errors));
        QVERIFY2(run.errors.contains(where + "7: there is no picture \"gone\""),
                 qPrintable(run.errors));
        QVERIFY2(!run.errors.contains("block"), qPrintable(run.errors));
    }

    /// It has no lines of its own, so those on paper are counted.
    void notesNameThePrintedLineOfASavedDocument()
    {
        const QString text =
            m_folder.file("saved.bb",
                          "[barcode]\xD0\x96[/barcode][center]Shop\nTown[/center][i]x[/i]"
                          "[barcode]\xD0\x96[/barcode]");
        const QByteArray json =
            runReceipt({"bbcode", text, "--as", "json"}).output.trimmed().toUtf8();
        const QString file = m_folder.file("saved", json);
        m_folder.file(
            "saved.sha1",
            QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex() + "  saved\n");
        const ReceiptRun run =
            runReceipt({"print", "--document", file, "--model", general, "--dry-run"});
        const QString where = "receipt: " + file + ": ";
        QCOMPARE(run.errors.count("Barcode: "), 2);
        QVERIFY2(run.errors.contains(where + "at the beginning: Barcode: "),
                 qPrintable(run.errors));
        QVERIFY2(run.errors.contains(where + "printed line 4: the model prints no text that is "
                                             "italic"),
                 qPrintable(run.errors));
        QVERIFY2(run.errors.contains(where + "behind printed line 4: Barcode: "),
                 qPrintable(run.errors));
        QVERIFY2(!run.errors.contains("block"), qPrintable(run.errors));
    }

    void strictTakesLinesThatGoOnBelow()
    {
        const ReceiptRun run = runReceipt(plain(QByteArray(200, 'x'), {"--strict", "--dry-run"}));
        QVERIFY2(run.errors.contains(": line 1: "), qPrintable(run.errors));
        QCOMPARE(run.status, 0);
    }

    void strictRefusesWhatIsntPrinted()
    {
        const QString file = m_folder.path("strict.bin");
        const QStringList options{"--strict", "--to", "file:" + file};
        const QString name = m_folder.path("text.txt");
        const ReceiptRun bad = runReceipt(plain("good\n<27>bad\n", options));
        QCOMPARE(bad.status, 1);
        QVERIFY2(bad.errors.contains(": line 2: "), qPrintable(bad.errors));
        QVERIFY2(
            bad.errors.endsWith("receipt: " + name + ": not printed, as that isn't all of it\n"),
            qPrintable(bad.errors));
        QCOMPARE(bad.output, QString());
        QVERIFY(!QFile::exists(file));
        const ReceiptRun good = runReceipt(plain("good\n", options));
        QCOMPARE(good.errors, QString());
        QCOMPARE(good.status, 0);
        QVERIFY(QFile::exists(file));
    }

    void strictRefusesWhatCantBeRead()
    {
        const QString file = m_folder.file("picture.bb", "a[img name=nowhere]b");
        const QStringList call{"print", "--bbcode", file, "--model", general, "--dry-run"};
        QCOMPARE(runReceipt(call).status, 0);
        const ReceiptRun run = runReceipt(call + QStringList("--strict"));
        QVERIFY2(run.errors.contains("not printed, as that isn't all of it"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 1);
    }

    void codePageIsTheOneThatIsTold()
    {
        const QByteArray cyrillic = QString::fromUtf8("Чек\n").toUtf8();
        const QByteArray bytes = bytesOf(plain(cyrillic, {"--code-page", "cp866"}));
        QVERIFY2(bytes.contains("\x97\xA5\xAA"), bytes.toHex(' ').constData());
        QVERIFY(textOf(bytes).contains(QString::fromUtf8("Чек\n")));
        const ReceiptRun run = runReceipt(plain("x\n", {"--code-page", "200", "--dry-run"}));
        QCOMPARE(run.status, 2);
        QVERIFY2(run.errors.startsWith("receipt: --code-page: the model has no character set 200"),
                 qPrintable(run.errors));
    }

    void textGoesAsDotsIfToldSo()
    {
        const QByteArray bytes = bytesOf(plain("word\n", {"--as-picture"}));
        QVERIFY(!bytes.contains("word"));
        QVERIFY2(textOf(bytes).contains("[picture "), qPrintable(textOf(bytes)));
    }

    void drawerOpensOnRequestOnly_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("pulse");
        QTest::addColumn<bool>("isFirst");
        QTest::newRow("not at all") << QStringList() << QByteArray() << false;
        QTest::newRow("before") << QStringList{"--drawer", "before"} << QByteArray("\x1Bp\0", 3)
                                << true;
        QTest::newRow("after") << QStringList{"--drawer", "after"} << QByteArray("\x1Bp\0", 3)
                               << false;
        QTest::newRow("the second one") << QStringList{"--drawer", "after", "--drawer-pin", "5"}
                                        << QByteArray("\x1Bp\1", 3) << false;
    }
    void drawerOpensOnRequestOnly()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, pulse);
        QFETCH(bool, isFirst);
        const QByteArray bytes = bytesOf(plain("word\n", options));
        QCOMPARE(bytes.count("\x1Bp"), pulse.isEmpty() ? 0 : 1);
        if (pulse.isEmpty())
            return;
        QVERIFY2(bytes.contains(pulse), bytes.toHex(' ').constData());
        QCOMPARE(bytes.indexOf(pulse) < bytes.indexOf("word"), isFirst);
    }

    void emptyLinesAreFedAtTheEnd()
    {
        const auto lengthOf = [](const QByteArray &bytes) {
            const QString json =
                runReceipt({"decode", "-", "--model", general, "--as", "json"}, bytes).output;
            return QJsonDocument::fromJson(json.toUtf8())["papers"][0]["length"].toInt();
        };
        const int none = lengthOf(bytesOf(kiosk()));
        const int some = lengthOf(bytesOf(kiosk({"--empty-lines", "20"})));
        QVERIFY2(some > none, qPrintable(QString("%1, %2").arg(none).arg(some)));
    }

    void settingsSayWhichPrinterAndHow()
    {
        const QString settings = m_folder.file(
            "settings.json", settingsOf({{"emptyStringsAtEnd", 3}, {"spacesBeforeString", 2}},
                                        {{"baudRate", 57600}, {"paperTypeId", 1}}));
        const QString text = textFile("word\n");
        const QStringList call{"print", "--plain", text, "--settings", settings};
        const ReceiptRun run = runReceipt(call + QStringList("--dry-run"));
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith("CUSTOM_VKP_80, paper "), qPrintable(run.output));
        QVERIFY2(run.output.endsWith(" at 57600 baud\n"), qPrintable(run.output));
        const QString printed = textOf(bytesOf(call), "CUSTOM_VKP_80");
        QVERIFY2(printed.startsWith("  word\n"), qPrintable(printed));
    }

    void lettersThatTheModelLacksAreReadBack()
    {
        const QString text = textFile("Чек № 1: \"Ёж\"\n12,50 €\n");
        const QByteArray bytes = bytesOf({"print", "--plain", text, "--model", "CUSTOM_VKP_80"});
        QVERIFY(bytes.contains("\x1B&"));
        const QString printed = textOf(bytes, "CUSTOM_VKP_80");
        QVERIFY2(printed.startsWith(QString::fromUtf8("Чек № 1: \"Ёж\"\n12,50 €\n")),
                 qPrintable(printed));
    }

    void optionsPrevailOverSettings()
    {
        const QString settings =
            m_folder.file("settings.json", settingsOf({}, {{"baudRate", 57600}}));
        const ReceiptRun run =
            runReceipt({"print", "--plain", textFile("x\n"), "--settings", settings, "--paper", "2",
                        "--baud", "9600", "--dry-run"});
        QVERIFY2(run.output.endsWith(" at 9600 baud\n"), qPrintable(run.output));
        const QString models = runReceipt({"models", "CUSTOM_VKP_80"}).output;
        const QString caption = models.mid(models.indexOf("paper 2: ") + 9).section(',', 0, 0);
        QVERIFY2(run.output.startsWith("CUSTOM_VKP_80, paper " + caption + ": "),
                 qPrintable(run.output));
    }

    void characterSetPrevailsOverOneThatTheModelLacks()
    {
        const QString settings = m_folder.file("settings.json", settingsOf({}, {{"cpage", 250}}));
        const ReceiptRun run = runReceipt({"print", "--plain", textFile("x\n"), "--settings",
                                           settings, "--code-page", "cp850", "--dry-run"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void caseOfTheSettingsIsPrinted()
    {
        const QString settings = m_folder.file("settings.json", settingsOf({{"characterMode", 1}}));
        const QString printed =
            textOf(bytesOf({"print", "--plain", textFile("word\n"), "--settings", settings}),
                   "CUSTOM_VKP_80");
        QVERIFY2(printed.contains("WORD\n"), qPrintable(printed));
    }

    void modelsOfAFileArePrintedOn()
    {
        const QString models =
            m_folder.file("models.json",
                          "[{\"id\": \"OURS\", \"like\": \"GENERAL_EPSON_PROTOCOL\", "
                          "\"cutCommand\": \"None\"}]");
        const ReceiptRun run = runReceipt({"print", "--plain", textFile("x\n"), "--models", models,
                                           "--model", "OURS", "--dry-run"});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.startsWith("OURS, paper "), qPrintable(run.output));
        QVERIFY2(run.output.contains(" bytes, 0 pieces of paper, "), qPrintable(run.output));
        const QString bad = m_folder.file("bad.json", "[{\"id\": \"OURS\"}]");
        const ReceiptRun refused = runReceipt(
            {"print", "--plain", textFile("x\n"), "--models", bad, "--model", "OURS", "--dry-run"});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.errors.contains(bad), qPrintable(refused.errors));
    }

    // Custom's presenter has no clock.
    void retractionOfAHeldTicketIsTold()
    {
        const QByteArray json =
            "{\"blocks\":[{\"align\":0,\"fmt\":[\"AA==\"],\"fnt\":[\"AA==\"],\"ls\":[0],"
            "\"txt\":[\"x\"],\"type\":0}],\"cta\":9,\"init\":true,\"loop\":0,\"pta\":0,"
            "\"rtout\":30}";
        const QString file = m_folder.file("held", json);
        m_folder.file(
            "held.sha1",
            QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex() + "  held\n");
        const ReceiptRun run = runReceipt(
            {"print", "--document", file, "--model", "CUSTOM_VKP_80", "--strict", "--dry-run"});
        QCOMPARE(run.errors, "receipt: " + file +
                                 ": the ticket stays held out until 1D 65 02 is sent, which the "
                                 "document wants after 30 s\n");
        QCOMPARE(run.status, 0);
    }

    void settingsThatTheToolWritesAreTaken()
    {
        for (const QString &model : {QString("CUSTOM_VKP_80"), QString("AV_268"), general}) {
            const QString settings = m_folder.path("exported.json");
            QCOMPARE(runReceipt({"settings", "export", settings, "--printer", model}).status, 0);
            const ReceiptRun run = runReceipt(
                {"print", "--plain", textFile("x\n"), "--settings", settings, "--dry-run"});
            QCOMPARE(run.status, 0);
            QVERIFY2(run.output.startsWith(model + ", paper "), qPrintable(run.output));
        }
    }

    void settingsThatArentTakenAreAnError_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("no JSON") << QByteArray("{") << "\"}\" is missing at the end";
        QTest::newRow("no list") << QByteArray("{}") << "an item list is a JSON array";
        QTest::newRow("unknown key") << settingsOf({{"none", 1}}) << "key \"none\": not taken";
        QTest::newRow("unknown model")
            << settingsOf({}, {}, "NONE")
            << "settings.json: the item \"printerName\": there is no model \"NONE\"; see \"receipt "
               "models\"";
        QTest::newRow("character set that the model lacks")
            << settingsOf({}, {{"cpage", 250}})
            << "settings.json: the item \"cpage\": the model has no character set 250; it has: 0 (";
        QTest::newRow("of a system printer")
            << settingsOf({}, {}, "office", 2) << "these aren't the settings of a text printer";
    }
    void settingsThatArentTakenAreAnError()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt({"print", "--plain", textFile("x\n"), "--settings",
                                           m_folder.file("settings.json", settings), "--dry-run"});
        QVERIFY2(run.errors.contains(complaint), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void wrongCallsAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QStringList &arguments,
                            const QString &complaint) {
            QTest::newRow(name) << QStringList("print") + arguments << complaint;
        };
        const QStringList source{"--plain", textFile("x\n")};
        const QStringList call = source + QStringList{"--model", general};
        row("no source", {"--model", general, "--dry-run"},
            "a template and a document are expected, or one of --bbcode, --document and --plain");
        row("no printer", source + QStringList("--dry-run"),
            "--model or --settings is needed: bytes depend on the printer");
        const QString settings = m_folder.file("good.json", settingsOf({}));
        row("two printers", call + QStringList{"--settings", settings, "--dry-run"},
            "--model and --settings exclude each other");
        row("unknown printer", source + QStringList{"--model", "X", "--dry-run"},
            "there is no model \"X\"; see \"receipt models\"");
        row("no destination", call, "--to is needed, or --dry-run");
        for (const QString &to : QStringList{"", "sale.bin", "--"})
            row(qPrintable("destination \"" + to + '"'), call + QStringList("--to=" + to),
                "--to: \"" + to +
                    "\" is no printer's address: expected serial, device, usb, tcp or file, a "
                    "colon, and where it is, such as tcp:192.168.0.5 or device:/dev/usb/lp0");
        row("destination without a path", call + QStringList("--to=file:"),
            "--to: there is no path behind \"file:\"");
        row("drawer", call + QStringList{"--drawer", "now", "--dry-run"},
            "--drawer: \"now\" is none of before, after");
        row("pin", call + QStringList{"--drawer", "after", "--drawer-pin", "3", "--dry-run"},
            "--drawer-pin: \"3\" is none of 2, 5");
        row("pin of nothing", call + QStringList{"--drawer-pin", "2", "--dry-run"},
            "--drawer-pin needs --drawer");
        row("empty lines", call + QStringList{"--empty-lines", "256", "--dry-run"},
            "--empty-lines: \"256\" is no number from 0 to 255");
        row("speed", call + QStringList{"--baud", "0", "--dry-run"},
            "--baud: \"0\" is no number from 1 to 4000000");
    }
    void wrongCallsAreRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.errors, "receipt: " + complaint + '\n');
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void badInputIsAnError()
    {
        const ReceiptRun run = runReceipt(
            {"print", "--plain", m_folder.path("none"), "--model", general, "--dry-run"});
        QCOMPARE(run.status, 1);
        QVERIFY(!run.errors.isEmpty());
        QCOMPARE(run.output, QString());
    }

    void valuesOfADocumentDontActOnThePrinter()
    {
        const QString source = m_folder.file("name.cpt", "<SHOP>\n<NAME>\n");
        const QString data =
            m_folder.file("name.json",
                          "{\"attributes\": {\"SHOP\": \"a\\u001Bp\\u0000\\u0019b\", "
                          "\"NAME\": \"<#27>@ <27>p\"}}");
        const QByteArray bytes = bytesOf({"print", source, data, "--model", general});
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(bytes.count("\x1Bp"), 0);
        QCOMPARE(bytes.count("\x1B@"), 1);
        const ReceiptRun run = runReceipt({"print", source, data, "--model", general, "--dry-run"});
        QVERIFY2(run.errors.contains(": line 1: the code 27"), qPrintable(run.errors));
    }

    void everyModelPrints_data()
    {
        QTest::addColumn<QString>("model");
        const QString json = runReceipt({"models", "--json"}).output;
        const QJsonArray models = QJsonDocument::fromJson(json.toUtf8()).array();
        QVERIFY(models.size() > 15);
        for (const QJsonValue &model : models) {
            const QString id = model["id"].toString();
            QTest::newRow(qPrintable(id)) << id;
        }
    }
    void everyModelPrints()
    {
        QFETCH(QString, model);
        const QByteArray bytes = bytesOf(kiosk({}, model));
        const QString text = textOf(bytes, model);
        QVERIFY2(text.contains("Harbour Kiosk\n"), qPrintable(text));
        QVERIFY2(text.contains("6.65\n"), qPrintable(text));
        QVERIFY(!listingOf(bytes, model).contains("unknown"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptPrint)
#include "tst_receipt_print.moc"
