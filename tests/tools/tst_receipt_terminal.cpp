#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "pseudoterminal.h"
#include "receiptprogram.h"

// Texts of customers, templates of others and names of files that want to be more than text: they
// clear the screen, rename the window, write log lines of their own, or turn a line around.

namespace {

// Two lines, with all kinds of characters that a terminal or a reader of lines obeys.
QString attack()
{
    return QString("\x1B]0;owned\x07\x1B[2J\r\nCRITICAL till 3: drawer opened by admin\x7F") +
           QChar(0x9B) + "31m" + QChar(0x202E) + "00.01" + QChar(0x2028) + "x\ty";
}

// As it has to look.
const char shownAttack[] =
    R"(\u001b]0;owned\u0007\u001b[2J\r\nCRITICAL till 3: drawer opened by admin\u007f\u009b31m)"
    R"(\u202e00.01\u2028x\ty)";

// The same without what a file name, a tag or a line of a template can't hold.
QString attackOnOneLine()
{
    return attack().remove('\n').remove('\r');
}

QByteArray jsonOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

/// Whether a text holds, beside line feeds, nothing that a terminal or a reader obeys.
bool isHarmless(const QString &text, bool tabulators = false)
{
    for (const QChar character : text) {
        if (character == '\n' || (tabulators && character == '\t'))
            continue;
        const ushort code = character.unicode();
        if (character.category() == QChar::Other_Control || (code >= 0x202A && code <= 0x202E) ||
            code == 0x2028)
            return false;
    }
    return true;
}

/// No line of a report is the attacker's.
bool hasForgedLine(const QString &text)
{
    const QStringList lines = text.split('\n');
    return std::any_of(lines.cbegin(), lines.cend(),
                       [](const QString &line) { return line.startsWith("CRITICAL"); });
}

/// Runs the tool with standard output on a terminal.
QString runOnTerminal(const QStringList &arguments)
{
    PseudoTerminal terminal;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("TMPDIR");
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(terminal.path());
    process.start(RECEIPT_PROGRAM, arguments);
    QByteArray output;
    while (!process.waitForFinished(10) && process.state() != QProcess::NotRunning)
        output += terminal.read();
    return QString::fromUtf8(output + terminal.read());
}

}  // namespace

class TestReceiptTerminal : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;
    QString m_template;
    QString m_document;

private Q_SLOTS:
    void initTestCase()
    {
        m_template = m_folder.file("name.cpt", "Customer: <NAME>\n");
        m_document =
            m_folder.file("name.json", jsonOf({{"attributes", QJsonObject{{"NAME", attack()}}}}));
    }

    // Messages: on a terminal, in a file and in a journal.

    void messagesShowControls_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("name of a file that isn't there")
            << QStringList{"fill", m_folder.path("no") + attack(), m_document};
        QTest::newRow("command") << QStringList{attack()};
        QTest::newRow("option") << QStringList{"fill", "--" + attack()};
        QTest::newRow("option's value") << QStringList{"split", "a", "--codec", attack()};
        QTest::newRow("form") << QStringList{"render", m_template, m_document, "--as", attack()};
        QTest::newRow("model") << QStringList{"models", attack()};
        QTest::newRow("rule") << QStringList{"lint", "--explain", attack()};
        QTest::newRow("file of an encoding that it isn't in")
            << QStringList{"split", m_folder.file("bytes" + attack(), "\xFF")};
        QTest::newRow("key of a document")
            << QStringList{"fill", m_template, m_folder.file("key.json", jsonOf({{attack(), 1}}))};
        QTest::newRow("item of a list of settings") << QStringList{
            "settings", "import",
            m_folder.file("items.json", QJsonDocument(QJsonArray{QJsonObject{{"group", attack()},
                                                                             {"key", attack()},
                                                                             {"value", attack()}}})
                                            .toJson())};
        QTest::newRow("field of a state")
            << QStringList{"state", m_folder.file("field.json", jsonOf({{attack(), 1}}))};
        QTest::newRow("element of a symbol file")
            << QStringList{"symbols", m_folder.file("symbols" + attack(), "<a/>")};
        QTest::newRow("port") << QStringList{"find", "--port", "/no/" + attack()};
        QTest::newRow("virtual model") << QStringList{"find", "--virtual", attack()};
        QTest::newRow("picture") << QStringList{"preview", m_template, m_document, "--output",
                                                attack()};
        QTest::newRow("destination of a printer's bytes") << QStringList{
            "print", "--plain",        m_template, "--model", "GENERAL_EPSON_PROTOCOL",
            "--to",  "tcp:" + attack()};
        QTest::newRow("document that isn't there")
            << QStringList{"document", "show", m_folder.path("none" + attack())};
    }
    void messagesShowControls()
    {
        QFETCH(QStringList, arguments);
        const ReceiptRun run = runReceipt(arguments);
        QVERIFY2(run.errors.contains(shownAttack), qPrintable(run.errors));
        QVERIFY2(isHarmless(run.errors), qPrintable(run.errors));
        QVERIFY(!hasForgedLine(run.errors));
    }

    void wrongExpressionIsMarkedBelow_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QStringList>("below");
        QTest::newRow("control before the fault")
            << "1+\x1B" << QStringList{"  1+\\u001b", "         ^"};
        QTest::newRow("line feed is a blank") << "1+\n+" << QStringList{"  1+ +", "     ^"};
        QTest::newRow("control behind the fault")
            << "1+)\x1B" << QStringList{"  1+)\\u001b", "    ^"};
    }
    void wrongExpressionIsMarkedBelow()
    {
        QFETCH(QString, expression);
        QFETCH(QStringList, below);
        const ReceiptRun run = runReceipt({"eval", expression});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors.split('\n').mid(1, 2), below);
    }

    void logLinesShowControls_data()
    {
        QTest::addColumn<bool>("verbose");
        QTest::newRow("asked for") << true;
        QTest::newRow("switched on from outside") << false;
    }
    void logLinesShowControls()
    {
        QFETCH(bool, verbose);
        if (!verbose)
            qputenv("QT_LOGGING_RULES", "*=true");
        // Attributes are logged by name as they are looked up.
        const QString file =
            m_folder.file("log.cpt", "<NAME" + attackOnOneLine().remove(',').toUtf8() + ">\n");
        QStringList arguments{"fill", file, m_document};
        if (verbose)
            arguments.append("-v");
        const ReceiptRun run = runReceipt(arguments);
        qunsetenv("QT_LOGGING_RULES");
        QCOMPARE(run.status, 0);
        QVERIFY2(run.errors.contains("CRITICAL TILL 3", Qt::CaseInsensitive),
                 qPrintable(run.errors));
        QVERIFY2(isHarmless(run.errors), qPrintable(run.errors));
    }

    // Reports: whoever reads them goes by lines, so they are shown in files and pipes too.

    void findingsShowControls()
    {
        const QString file =
            m_folder.file("tag" + attack(), "<NO_SUCH" + attackOnOneLine().toUtf8() + ">\n");
        const ReceiptRun run = runReceipt({"lint", file, "--data", m_document});
        QVERIFY2(run.output.contains(shownAttack), qPrintable(run.output));
        QVERIFY2(isHarmless(run.output), qPrintable(run.output));
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        QVERIFY(!lines.isEmpty());
        for (const QString &line : lines)
            QVERIFY2(line.startsWith(m_folder.path("tag")), qPrintable(line));
    }

    void settingsShowControls()
    {
        const QJsonObject item{{"group", "PRINTER"}, {"key", "printerName"}, {"value", attack()}};
        const QString file =
            m_folder.file("name-of-printer.json", QJsonDocument(QJsonArray{item}).toJson());
        const ReceiptRun run = runReceipt({"settings", "show", file});
        QVERIFY2(run.output.contains(QString("PRINTER\tprinterName\t") + shownAttack + '\n'),
                 qPrintable(run.output));
        QVERIFY(isHarmless(run.output, true));
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        for (const QString &line : lines)
            QCOMPARE(line.count('\t'), 2);
    }

    void stateShowsControls()
    {
        const QString file = m_folder.file("state.json", jsonOf({{"deviceErrorMsg", attack()}}));
        const ReceiptRun run = runReceipt({"state", file});
        QVERIFY2(run.output.contains(shownAttack), qPrintable(run.output));
        QVERIFY(isHarmless(run.output));
        QVERIFY(!hasForgedLine(run.output));
    }

    void documentCheckShowsControls()
    {
        const ReceiptRun run = runReceipt({"document", "check", m_folder.path("doc" + attack())});
        QVERIFY2(run.output.contains(QString(shownAttack) + ": bad, "), qPrintable(run.output));
        QVERIFY(isHarmless(run.output));
        QVERIFY(!hasForgedLine(run.output));
    }

    void previewNamesItsFileInOneLine()
    {
        const QString picture = m_folder.path("picture" + attack() + ".png");
        const ReceiptRun run = runReceipt({"preview", m_template, m_document, "--output", picture});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.contains(shownAttack), qPrintable(run.output));
        QVERIFY(isHarmless(run.output));
        QCOMPARE(run.output.count('\n'), 1);
    }

    // What a command makes: byte for byte, but on a terminal.

    void productsAreShownOnTerminalsOnly_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const QString bbcode =
            m_folder.file("a.bbcode", "[b]" + attackOnOneLine().toUtf8() + "[/b]");
        QTest::newRow("fill") << QStringList{"fill", m_template, m_document};
        QTest::newRow("render to text") << QStringList{"render", m_template, m_document};
        QTest::newRow("render to HTML")
            << QStringList{"render", m_template, m_document, "--as", "html"};
        QTest::newRow("render to a piece of HTML")
            << QStringList{"render", m_template, m_document, "--as", "html-fragment"};
        QTest::newRow("split") << QStringList{
            "split", m_folder.file("split.cpt", attackOnOneLine().toUtf8())};
        QTest::newRow("BBCode to text") << QStringList{"bbcode", bbcode, "--width", "200"};
        QTest::newRow("BBCode to HTML") << QStringList{"bbcode", bbcode, "--as", "html"};
        QTest::newRow("BBCode to JSON") << QStringList{"bbcode", bbcode, "--as", "json"};
        QTest::newRow("BBCode as a tree") << QStringList{"bbcode", bbcode, "--as", "tree"};
    }
    void productsAreShownOnTerminalsOnly()
    {
        QFETCH(QStringList, arguments);
        const QString shown = runOnTerminal(arguments);
        QVERIFY2(isHarmless(shown), qPrintable(shown));
        // The library takes brackets out of some forms, and the bell for a symbol in HTML.
        for (const char *part : {"\\u001b", "\\u007f", "\\u009b31m", "\\u202e00.01\\u2028x"})
            QVERIFY2(shown.contains(part, Qt::CaseInsensitive), qPrintable(shown));
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.status, 0);
        for (const char16_t part : {u'\x9B', u'\x202E', u'\x2028'})
            QVERIFY2(run.output.contains(QChar(part)), qPrintable(run.output));
    }

    void linesOfAFilledLineAreShown()
    {
        const QString shown = runOnTerminal({"fill", m_template, m_document});
        QVERIFY2(!hasForgedLine(shown), qPrintable(shown));
        const ReceiptRun run = runReceipt({"fill", m_template, m_document});
        QVERIFY2(hasForgedLine(run.output), qPrintable(run.output));
    }

    // What a printer would print is shown in the printer's own lines.
    void linesOfAReceiptAreThoseOfThePaper()
    {
        const QString shown = runOnTerminal({"render", m_template, m_document});
        QCOMPARE(shown.count('\n'), 2);
        QCOMPARE(runReceipt({"render", m_template, m_document}).output.count('\n'), 2);
    }

    void harmlessReceiptIsTheSameOnATerminal()
    {
        const QStringList arguments{"render", example("kiosk.cpt"), example("kiosk.json")};
        QCOMPARE(runOnTerminal(arguments), runReceipt(arguments).output);
    }

    void helpIsTheSameOnATerminal()
    {
        for (const QStringList &arguments :
             {QStringList{"--help"}, QStringList{"lint", "--help"}, QStringList{"document", "-h"},
              QStringList{"lint", "--explain", "unknown-tag"}})
            QCOMPARE(runOnTerminal(arguments), runReceipt(arguments).output);
    }

    void jsonMeansTheSameOnATerminal()
    {
        const QStringList arguments{"render", m_template, m_document, "--as", "json"};
        const QString shown = runOnTerminal(arguments);
        QVERIFY(isHarmless(shown));
        const QJsonDocument expected =
            QJsonDocument::fromJson(runReceipt(arguments).output.toUtf8());
        QVERIFY(!expected.isNull());
        QCOMPARE(QJsonDocument::fromJson(shown.toUtf8()), expected);
    }

    void outputFileIsByteForByte()
    {
        const QString file = m_folder.path("receipt.txt");
        const QStringList arguments{"render", m_template, m_document};
        const ReceiptRun run = runReceipt(arguments + QStringList{"--output", file});
        QCOMPARE(run.status, 0);
        QCOMPARE(QString::fromUtf8(m_folder.content("receipt.txt")), runReceipt(arguments).output);
    }

    void virtualPrinterShowsControls_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("option") << QStringList{"--" + attack()};
        QTest::newRow("value") << QStringList{"--model", "AV_268", "--fault", attack()};
        QTest::newRow("link") << QStringList{"--model", "AV_268", "--link",
                                             "/no-such-folder/" + attack()};
    }
    void virtualPrinterShowsControls()
    {
        QFETCH(QStringList, arguments);
        QProcess process;
        process.start(VIRTUAL_PRINTER_PROGRAM, arguments);
        QVERIFY(process.waitForFinished());
        const QString errors = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(errors.contains(shownAttack), qPrintable(errors));
        QVERIFY2(isHarmless(errors), qPrintable(errors));
        QVERIFY(process.exitCode() != 0);
    }
};

QTEST_GUILESS_MAIN(TestReceiptTerminal)
#include "tst_receipt_terminal.moc"
