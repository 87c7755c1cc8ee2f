// Texts of strangers in what the tool makes: names that forge lines, and names that are markup of a
// page.
#include <QtTest>

#include "receiptprogram.h"

class TestReceiptStrangers : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    /// The options of a command behind its name, with which it fills the template "a.cpt".
    QStringList filling(const QString &command) const
    {
        const QString data = m_folder.path("a.json");
        if (command == "document save")
            return {"document", "save",   m_folder.path("saved"),
                    data,       "--from", m_folder.path("a.cpt")};
        QStringList arguments{command, m_folder.path("a.cpt"), data};
        if (command == "preview")
            arguments += {"--output", m_folder.path("a.png")};
        return arguments;
    }

    void write(const QByteArray &templateText, const QByteArray &attributes,
               const QByteArray &entries = QByteArray()) const
    {
        m_folder.file("a.cpt", templateText);
        m_folder.file("a.json",
                      "{\"attributes\": {" + attributes + "}, \"entries\": \"" + entries + "\"}");
    }

private Q_SLOTS:
    void nameForgesNoLineAboveTheTotal()
    {
        write("For <NAME>\nTotal<S><TOTAL>\n",
              R"("NAME": "Ann\nTotal<S>0.00\u001b@\u202e", "TOTAL": "6.65")");
        const ReceiptRun forged = runReceipt(filling("render") + QStringList{"--width", "30"});
        QVERIFY(forged.output.startsWith("For Ann\nTotal       "));
        const ReceiptRun run =
            runReceipt(filling("render") + QStringList{"--width", "30", "--clean", "all"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString("For Ann Total S>0.00 @\nTotal                     6.65\n"));
        QCOMPARE(run.status, 0);
    }

    void entriesForgeNoColumnAndKeepTheirLines()
    {
        write("<ENTRIES>\n", "", R"(Tea=0.00=2.40\tTax=<C>[x])");
        const ReceiptRun run =
            runReceipt(filling("render") + QStringList{"--width", "20", "--clean", "all"});
        QCOMPARE(run.output, QString("Tea        0.00 2.40\nTax            C>(x)\n"));
    }

    void eachRuleCleansItsCharactersAlone_data()
    {
        QTest::addColumn<QString>("rules");
        QTest::addColumn<QString>("output");
        const auto row = [](const char *rules, const QString &output) {
            QTest::newRow(rules) << QString(rules) << output + '\n';
        };
        row("tags", QString("a b[c]\x1B"
                            "d") +
                        QChar(0x200E) + "e" + QChar(0x200B) + "f");
        row("brackets", QString("a<b(c)\x1B"
                                "d") +
                            QChar(0x200E) + "e" + QChar(0x200B) + "f");
        row("controls", QString("a<b[c] d") + QChar(0x200E) + "e" + QChar(0x200B) + "f");
        row("bidirectional", QString("a<b[c]\x1B"
                                     "de") +
                                 QChar(0x200B) + "f");
        row("invisible", QString("a<b[c]\x1B"
                                 "d") +
                             QChar(0x200E) + "ef");
        row("equals", QString("a<b[c]\x1B"
                              "d") +
                          QChar(0x200E) + "e" + QChar(0x200B) + "f");
        row("tags,brackets,controls,bidirectional,invisible", "a b(c) def");
        row("all", "a b(c) def");
    }
    void eachRuleCleansItsCharactersAlone()
    {
        write("<NAME>\n", R"("NAME": "a<b[c]\u001bd\u200ee\u200bf")");
        QFETCH(QString, rules);
        const ReceiptRun run = runReceipt(filling("fill") + QStringList{"--clean", rules});
        QCOMPARE(run.errors, QString());
        QTEST(run.output, "output");
        QCOMPARE(run.status, 0);
    }

    void everyCommandThatFillsCleans_data()
    {
        QTest::addColumn<QString>("command");
        for (const char *command : {"render", "fill", "preview", "document save"})
            QTest::newRow(command) << QString(command);
    }
    void everyCommandThatFillsCleans()
    {
        // A name that leads to itself is refused, and harmless when it is cleaned.
        write("<NAME>\n", R"("NAME": "<NAME>")");
        QFETCH(QString, command);
        const ReceiptRun refused = runReceipt(filling(command));
        QCOMPARE(refused.status, 1);
        QVERIFY(!refused.errors.isEmpty());
        const ReceiptRun run = runReceipt(filling(command) + QStringList{"--clean", "tags"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void markupOfANameIsTextOfThePage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("render, html") << filling("render") + QStringList{"--as", "html"};
        QTest::newRow("render, html-fragment")
            << filling("render") + QStringList{"--as", "html-fragment"};
        QTest::newRow("render, plain")
            << QStringList{"render", "--plain", m_folder.path("a.bbcode"), "--as", "html"};
        QTest::newRow("bbcode") << QStringList{"bbcode", m_folder.path("a.bbcode"), "--as", "html"};
        QTest::newRow("document show")
            << QStringList{"document", "show", m_folder.path("saved"), "--as", "html"};
    }
    void markupOfANameIsTextOfThePage()
    {
        write("<NAME>\n", R"("NAME": "<img src=x onerror=alert(1) ")");
        m_folder.file("a.bbcode", "<img src=x onerror=alert(1) ");
        QCOMPARE(runReceipt(filling("document save")).status, 0);
        QFETCH(QStringList, arguments);
        const ReceiptRun escaped = runReceipt(arguments);
        QCOMPARE(escaped.errors, QString());
        QCOMPARE(escaped.status, 0);
        QVERIFY2(!escaped.output.contains("<img"), qPrintable(escaped.output));
        QVERIFY2(escaped.output.contains("&lt;img src=x onerror=alert(1) "),
                 qPrintable(escaped.output));
        const ReceiptRun plain = runReceipt(arguments + QStringList{"--unescaped"});
        QCOMPARE(plain.status, 0);
        QCOMPARE(plain.output, QString(escaped.output).replace("&lt;", "<"));
    }

    void onlyHtmlCanBeUnescaped_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("render") << filling("render");
        QTest::newRow("render, json") << filling("render") + QStringList{"--as", "json"};
        QTest::newRow("bbcode") << QStringList{"bbcode", m_folder.path("a.cpt"), "--as", "tree"};
        QTest::newRow("document show") << QStringList{"document", "show", m_folder.path("a")};
    }
    void onlyHtmlCanBeUnescaped()
    {
        write("x\n", "");
        QFETCH(QStringList, arguments);
        const ReceiptRun run = runReceipt(arguments + QStringList{"--unescaped"});
        QCOMPARE(run.errors, QString("receipt: --unescaped needs HTML, see --as\n"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }
};

QTEST_GUILESS_MAIN(TestReceiptStrangers)
#include "tst_receipt_strangers.moc"
