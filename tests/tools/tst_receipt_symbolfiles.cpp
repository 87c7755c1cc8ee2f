// What "<SPECSYMBOLS=...>" may name, and what the tool doesn't open: a FIFO would stop it for ever.
#include <sys/stat.h>

#include <QtTest>

#include "receiptprogram.h"

namespace {

const QByteArray sale = R"({"attributes": {"TOTAL": "12.50"}, "entries": "a>	b"})";

}  // namespace

class TestReceiptSymbolFiles : public QObject
{
    Q_OBJECT

    /// Each command that reads symbol files, on a template.
    static QList<QStringList> commandsOn(const WorkFolder &folder)
    {
        const QString file = folder.path("t.cpt");
        const QString data = folder.path("d.json");
        return {{"render", file, data},
                {"preview", file, data, "--output", folder.path("out.png")},
                {"document", "save", folder.path("saved"), "--from", file, data}};
    }

private Q_SLOTS:
    void whatIsNoRegularFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("place");
        const QByteArray total = "Total <TOTAL>\n";
        QTest::newRow("FIFO") << "<SPECSYMBOLS=fifo>\n" + total << "fifo.ssi"
                              << ":1:1";
        QTest::newRow("endless device") << total + "  <SPECSYMBOLS=zero.ssi>\n"
                                        << "zero.ssi"
                                        << ":2:3";
        QTest::newRow("folder") << "<SPECSYMBOLS=folder>\n" + total << "folder.ssi"
                                << ":1:1";
        QTest::newRow("link to a FIFO") << "<SPECSYMBOLS=link>\n" + total << "link.ssi"
                                        << ":1:1";
        QTest::newRow("lowest of several")
            << "<SPECSYMBOLS=good>\n<SPECSYMBOLS=fifo>\n" + total << "fifo.ssi"
            << ":2:1";
        QTest::newRow("by way of another folder")
            << "<SPECSYMBOLS=folder.ssi/../fifo.ssi>\n" + total << "folder.ssi/../fifo.ssi"
            << ":1:1";
    }

    void whatIsNoRegularFileIsRefused()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, file);
        QFETCH(const QString, place);
        const WorkFolder folder;
        folder.file("t.cpt", text);
        folder.file("d.json", sale);
        folder.file("good.ssi", "<SpecialSymbolImages/>");
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path("fifo.ssi")).constData(), S_IRUSR), 0);
        QVERIFY(QFile::link("/dev/zero", folder.path("zero.ssi")));
        QVERIFY(QFile::link(folder.path("fifo.ssi"), folder.path("link.ssi")));
        QVERIFY(QDir(folder.path(".")).mkdir("folder.ssi"));
        for (const QStringList &arguments : commandsOn(folder)) {
            const ReceiptRun run = runReceipt(arguments);
            QCOMPARE(run.errors, "receipt: " + folder.path("t.cpt") + place + ": \"" +
                                     folder.path(file) + "\" is no regular file\n");
            QCOMPARE(run.status, 1);
        }
        const ReceiptRun lint =
            runReceipt({"lint", folder.path("t.cpt"), "--data", folder.path("d.json")});
        QVERIFY2(lint.output.contains("\" is no regular file [damaged-symbol-file]"),
                 qPrintable(lint.output));
    }

    void fileOfAnEntryIsRefused()
    {
        const WorkFolder folder;
        // Two entries: the first completes the line in front of the tag.
        folder.file("t.cpt", "<SPECSYMBOLS=<ENTRIES>x\nTotal <TOTAL>\n");
        folder.file("d.json", R"({"entries": "fifo.ssi>\tb", "attributes": {"TOTAL": "1"}})");
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path("fifo.ssi")).constData(), S_IRUSR), 0);
        for (const QStringList &arguments : commandsOn(folder)) {
            const ReceiptRun run = runReceipt(arguments);
            QVERIFY2(
                run.errors.endsWith(": \"" + folder.path("fifo.ssi") + "\" is no regular file\n"),
                qPrintable(run.errors));
            QCOMPARE(run.status, 1);
        }
        QVERIFY(
            runReceipt({"lint", folder.path("t.cpt"), "--data", folder.path("d.json")}).status >=
            0);
    }

    void eachFiscalPieceIsLookedAt_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("place");
        QTest::newRow("behind a marker")
            << QByteArray("Total\n<FISCAL_BODY><SPECSYMBOLS=fifo>\nx\n") << ":2:14";
        QTest::newRow("above a marker")
            << QByteArray("<SPECSYMBOLS=fifo>\n<FISCAL_BODY>\n<SPECSYMBOLS=good>\nx\n") << ":1:1";
    }

    void eachFiscalPieceIsLookedAt()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, place);
        const WorkFolder folder;
        const QStringList files{folder.file("t.cpt", text), folder.file("d.json", "{}")};
        folder.file("good.ssi", "<SpecialSymbolImages/>");
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path("fifo.ssi")).constData(), S_IRUSR), 0);
        for (const char *command : {"render", "preview"}) {
            const ReceiptRun run = runReceipt(
                QStringList{command, "--fiscal", "--output", folder.path("receipt.png")} + files);
            QCOMPARE(run.errors, "receipt: " + files.at(0) + place + ": \"" +
                                     folder.path("fifo.ssi") + "\" is no regular file\n");
            QCOMPARE(run.status, 1);
        }
    }

    void regularFilesAndMissingOnesAreTaken_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("file") << QByteArray("<SPECSYMBOLS=good>\nTotal <TOTAL>\n");
        QTest::newRow("link to a file") << QByteArray("<SPECSYMBOLS=link>\nTotal <TOTAL>\n");
        QTest::newRow("none") << QByteArray("<SPECSYMBOLS=missing>\nTotal <TOTAL>\n");
        QTest::newRow("FIFO that doesn't count")
            << QByteArray("<SPECSYMBOLS=fifo>\n<SPECSYMBOLS=good>\nTotal <TOTAL>\n");
        QTest::newRow("FIFO in a line of text") << QByteArray("Total <TOTAL>\n<SPECSYMBOLS=fifo");
    }

    void regularFilesAndMissingOnesAreTaken()
    {
        QFETCH(const QByteArray, text);
        const WorkFolder folder;
        folder.file("t.cpt", text);
        folder.file("d.json", sale);
        folder.file("good.ssi", "<SpecialSymbolImages/>");
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path("fifo.ssi")).constData(), S_IRUSR), 0);
        QVERIFY(QFile::link(folder.path("good.ssi"), folder.path("link.ssi")));
        const ReceiptRun run = runReceipt({"render", folder.path("t.cpt"), folder.path("d.json")});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.startsWith("Total 12.50"));
    }

    void fillAndPlainTextsOpenNone()
    {
        const WorkFolder folder;
        const QString file = folder.file("t.cpt", "<SPECSYMBOLS=fifo>\nTotal\n");
        const QString data = folder.file("d.json", "{}");
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path("fifo.ssi")).constData(), S_IRUSR), 0);
        QCOMPARE(runReceipt({"fill", file, data}).status, 0);
        QCOMPARE(runReceipt({"render", "--plain", file}).status, 0);
        QCOMPARE(runReceipt({"split", file}).status, 0);
    }
};

QTEST_GUILESS_MAIN(TestReceiptSymbolFiles)
#include "tst_receipt_symbolfiles.moc"
