#include <sys/stat.h>

#include <QJsonDocument>
#include <QtTest>
#include <memory>

#include "documentfiles.h"
#include "receiptprogram.h"

using namespace documentfiles;

namespace {

ReceiptRun runDocument(const QStringList &arguments, const QString &folder = QString())
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(RECEIPT_PROGRAM, QStringList("document") + arguments);
    return finished(process);
}

const QString newText = QString::fromUtf8("НОВЫЙ 2.50\n");

}  // namespace

class TestReceiptDocument : public QObject
{
    Q_OBJECT

    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

    /// The four lines that "check" prints.
    QString findings(const QStringList &faults) const
    {
        QString text;
        for (int file = 0; file < suffixes.size(); ++file)
            text += m_path + suffixes.at(file) + ": " + faults.at(file) + "\n";
        return text;
    }

private Q_SLOTS:
    void init()
    {
        m_programs = std::make_unique<Programs>();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("receipt.json");
        QVERIFY(newDocument.saveToFile(m_path));
    }

    void cleanup()
    {
        m_programs.reset();
        m_folder.reset();
    }

    void saveKeepsTheReceiptThatATemplateGives()
    {
        QVERIFY(writeFile(m_folder->filePath("t.cpt"), "Total <TOTAL>\n"));
        QVERIFY(writeFile(m_folder->filePath("d.json"),
                          QByteArray("{'attributes':{'TOTAL':'12.50'}}").replace('\'', '"')));
        const ReceiptRun outcome =
            runDocument({"save", "saved", "--from", "t.cpt", "d.json"}, m_folder->path());
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
        const QString saved = m_folder->filePath("saved");
        QCOMPARE(readFolder(saved).size(), 4);
        QCOMPARE(runDocument({"check", saved}).status, 0);
        QCOMPARE(runDocument({"show", saved}).output, QString("Total 12.50\n"));
    }

    void saveOfSymbolsThatTheMapFormDropsIsGood_data()
    {
        QTest::addColumn<int>("code");
        for (const int code : {1, 127, 128, 200, 255})
            QTest::addRow("code %d", code) << code;
    }

    void saveOfSymbolsThatTheMapFormDropsIsGood()
    {
        QFETCH(const int, code);
        const QByteArray symbols =
            R"(<SpecialSymbolImages><Font Width="2" Height="1"><Symbol Code="%1">
            <Line>10</Line></Symbol></Font></SpecialSymbolImages>)";
        QVERIFY(writeFile(m_folder->filePath("s.ssi"),
                          QByteArray(symbols).replace("%1", QByteArray::number(code))));
        QVERIFY(writeFile(m_folder->filePath("t.cpt"), "<SPECSYMBOLS=s>\nTotal 12.50\n"));
        QVERIFY(writeFile(m_folder->filePath("d.json"), "{}"));
        const ReceiptRun outcome =
            runDocument({"save", "saved", "--from", "t.cpt", "d.json"}, m_folder->path());
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
        const QByteArray key = QByteArray("\"ci_") + QByteArray::number(int(qint8(code))) + '"';
        QVERIFY(contentOf(m_folder->filePath("saved")).contains(key));
    }

    void saveTellsWhatGoesWrong()
    {
        const QString cafe = PRINTERSLIB_EXAMPLES "/cafe.cpt";
        const QString data = PRINTERSLIB_EXAMPLES "/cafe.json";
        QCOMPARE(runDocument({"save", m_path, data}).status, 2);
        QCOMPARE(runDocument({"save", m_path, "--from", "-", "-"}).status, 2);
        QCOMPARE(runDocument({"save", m_path, "--from", "/nonexistent.cpt", data}).status, 1);
        QCOMPARE(runDocument({"save", m_path, "--from", cafe, "/nonexistent.json"}).status, 1);
        QCOMPARE(readFolder(m_path).size(), 4);
        QCOMPARE(contentOf(m_path), readFolder(m_path).value(".bak"));
        for (const QString name : {"back\\slash", "line\nfeed", "carriage\rreturn"}) {
            const ReceiptRun outcome =
                runDocument({"save", m_folder->filePath(name), "--from", cafe, data});
            QCOMPARE(outcome.status, 2);
            QVERIFY(!QFile::exists(m_folder->filePath(name)));
        }
    }

    void saveThatCannotBeLoadedFails()
    {
        m_programs->add("sha1sum", "exit 1");
        const ReceiptRun outcome =
            runDocument({"save", m_path, "--from", PRINTERSLIB_EXAMPLES "/cafe.cpt",
                         PRINTERSLIB_EXAMPLES "/cafe.json"});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("could not be saved"));
    }

    void fileWithoutANameIsWrongUsageAndTouchesNothing_data()
    {
        QTest::addColumn<QStringList>("action");
        QTest::newRow("save") << QStringList{"save", PRINTERSLIB_EXAMPLES "/cafe.json", "--from",
                                             PRINTERSLIB_EXAMPLES "/cafe.cpt"};
        for (const char *action : {"show", "check", "repair", "remove"})
            QTest::newRow(action) << QStringList(action);
    }

    void fileWithoutANameIsWrongUsageAndTouchesNothing()
    {
        QFETCH(const QStringList, action);
        // The files beside a document whose name is empty: a good backup, and two checksums.
        const Folder saved = readFolder(m_path);
        const QString hidden = m_folder->path() + "/";
        for (const char *suffix : {".sha1", ".bak", ".bak.sha1"})
            QVERIFY(writeFile(hidden + suffix, saved.value(suffix)));
        for (const QString &name : {QString(""), QString("./"), hidden}) {
            const QStringList arguments = QStringList{action.first(), name} + action.mid(1);
            const ReceiptRun outcome = runDocument(arguments, m_folder->path());
            QCOMPARE(outcome.status, 2);
            QCOMPARE(outcome.output, QString());
            QCOMPARE(outcome.errors,
                     "receipt: document " + action.first() + ": FILE names no file\n");
        }
        for (const char *suffix : {".sha1", ".bak", ".bak.sha1"})
            QCOMPARE(contentOf(hidden + suffix), saved.value(suffix));
        QCOMPARE(readFolder(m_path), saved);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden).size(), 7);
    }

    void showPrintsTheDocumentInThreeForms()
    {
        QCOMPARE(runDocument({"show", m_path}).output, newText);
        QCOMPARE(runDocument({"show", m_path, "--as", "json"}).output.toUtf8(),
                 contentOf(m_path) + "\n");
        const ReceiptRun html = runDocument({"show", "--as", "html", m_path});
        QCOMPARE(html.status, 0);
        QVERIFY(html.output.contains("<html"));
        QVERIFY(html.output.contains("2.50"));
        QCOMPARE(runDocument({"show", "--as", "pdf", m_path}).status, 2);
    }

    void relativePathsAreMadeAbsolute()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("sub"));
        QCOMPARE(runDocument({"show", "../receipt.json"}, m_folder->filePath("sub")).output,
                 newText);
    }

    void showOfNothingGoodFails()
    {
        const ReceiptRun outcome = runDocument({"show", m_folder->filePath("missing")});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("missing: no copy can be loaded"));
    }

    void checkFindsFourGoodFiles()
    {
        const ReceiptRun outcome = runDocument({"check", m_path});
        QCOMPARE(outcome.output, findings({"good", "good", "good", "good"}));
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
    }

    void checkSaysWhatIsWrong_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("faults");
        const QString good = "good";
        const QString mismatch = "bad, is the checksum of something else";
        QTest::newRow("other document in the primary")
            << "" << QByteArray("{}") << QStringList{good, mismatch, good, good};
        QTest::newRow("list in the backup")
            << ".bak" << QByteArray("[]")
            << QStringList{good, good, "bad, holds no document", mismatch};
        QTest::newRow("empty checksum")
            << ".sha1" << QByteArray("") << QStringList{good, "bad, holds no checksum", good, good};
        QTest::newRow("escaped checksum")
            << ".bak.sha1" << QByteArray("\\0123456789012345678901234567890123456789  x")
            << QStringList{good, good, good, "bad, holds no checksum"};
        QTest::newRow("no primary")
            << "" << QByteArray() << QStringList{"bad, is missing", good, good, good};
        QTest::newRow("no checksum")
            << ".sha1" << QByteArray() << QStringList{good, "bad, is missing", good, good};
    }

    void checkSaysWhatIsWrong()
    {
        QFETCH(const QString, suffix);
        QFETCH(const QByteArray, content);
        QFETCH(const QStringList, faults);
        QVERIFY(content.isNull() ? QFile::remove(m_path + suffix)
                                 : writeFile(m_path + suffix, content));
        const ReceiptRun outcome = runDocument({"check", m_path});
        QCOMPARE(outcome.output, findings(faults));
        QCOMPARE(outcome.status, 1);
    }

    void checkTellsCopiesThatDiffer()
    {
        const Folder newFolder = readFolder(m_path);
        QVERIFY(oldDocument.saveToFile(m_path));
        QVERIFY(writeFile(m_path, newFolder[""]));
        QVERIFY(writeFile(m_path + ".sha1", newFolder[".sha1"]));
        const ReceiptRun outcome = runDocument({"check", m_path});
        QVERIFY(
            outcome.output.endsWith("The copies differ: a save was cut short. The first is "
                                    "newer.\n"));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(runDocument({"repair", m_path}).status, 0);
        QCOMPARE(readFolder(m_path), newFolder);
    }

    void repairRewritesBothCopiesFromTheGoodOne_data()
    {
        QTest::addColumn<QStringList>("damaged");
        QTest::newRow("primary") << QStringList{""};
        QTest::newRow("primary's checksum") << QStringList{".sha1"};
        QTest::newRow("all of the primary") << QStringList{"", ".sha1"};
        QTest::newRow("backup") << QStringList{".bak"};
        QTest::newRow("all of the backup") << QStringList{".bak", ".bak.sha1"};
        QTest::newRow("nothing") << QStringList{};
    }

    void repairRewritesBothCopiesFromTheGoodOne()
    {
        QFETCH(const QStringList, damaged);
        const Folder good = readFolder(m_path);
        for (const QString &suffix : damaged)
            QVERIFY(writeFile(m_path + suffix, "damaged"));
        QCOMPARE(runDocument({"repair", m_path}).status, 0);
        QCOMPARE(readFolder(m_path), good);
    }

    void repairOfNothingGoodTouchesNothing()
    {
        QVERIFY(writeFile(m_path + ".sha1", "damaged"));
        QVERIFY(writeFile(m_path + ".bak", "damaged"));
        const Folder damaged = readFolder(m_path);
        const ReceiptRun outcome = runDocument({"repair", m_path});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("neither copy is good"));
        QCOMPARE(readFolder(m_path), damaged);
    }

    void filesThatOthersPutThereAreNamedAndNotOpened_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("target");  // of a link; empty: a FIFO
        for (const QString &suffix : suffixes) {
            QTest::addRow("link at P%s", qPrintable(suffix)) << suffix << "victim";
            QTest::addRow("endless device at P%s", qPrintable(suffix)) << suffix << "/dev/zero";
            QTest::addRow("FIFO at P%s", qPrintable(suffix)) << suffix << QString();
        }
    }

    void filesThatOthersPutThereAreNamedAndNotOpened()
    {
        QFETCH(const QString, suffix);
        QFETCH(const QString, target);
        const QString victim = m_folder->filePath("victim");
        QVERIFY(writeFile(victim, "precious"));
        const QString name = m_path + suffix;
        QVERIFY(QFile::remove(name));
        if (target.isEmpty())
            QCOMPARE(::mkfifo(QFile::encodeName(name).constData(), S_IRUSR | S_IWUSR), 0);
        else
            QVERIFY(QFile::link(QDir(m_folder->path()).filePath(target), name));
        const QString what =
            target.isEmpty() ? "is a FIFO and no file" : "is a symbolic link and no file";
        const QList<QStringList> calls{{"save", m_path, "--from", PRINTERSLIB_EXAMPLES "/cafe.cpt",
                                        PRINTERSLIB_EXAMPLES "/cafe.json"},
                                       {"show", m_path},
                                       {"repair", m_path}};
        for (const QStringList &arguments : calls) {
            const ReceiptRun outcome = runDocument(arguments);
            QCOMPARE(outcome.errors, "receipt: " + name + ": " + what + "\n");
            QCOMPARE(outcome.status, 1);
        }
        QStringList faults{"good", "good", "good", "good"};
        faults[suffixes.indexOf(suffix)] = "bad, " + what;
        QCOMPARE(runDocument({"check", m_path}).output, findings(faults));
        QCOMPARE(contentOf(victim), QByteArray("precious"));
        // What stands there is removed, and not what it leads to.
        QCOMPARE(runDocument({"remove", m_path}).status, 0);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::System),
                 QStringList("victim"));
    }

    void folderThatOthersMayWriteToIsNamed()
    {
        const Folder saved = readFolder(m_path);
        QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0777), 0);
        const QList<QStringList> calls{{"save", m_path, "--from", PRINTERSLIB_EXAMPLES "/cafe.cpt",
                                        PRINTERSLIB_EXAMPLES "/cafe.json"},
                                       {"show", m_path},
                                       {"check", m_path},
                                       {"repair", m_path}};
        for (const QStringList &arguments : calls) {
            const ReceiptRun outcome = runDocument(arguments);
            QCOMPARE(outcome.errors, "receipt: " + m_folder->path() +
                                         ": others may write to this folder (mode 0777)\n");
            QCOMPARE(outcome.output, QString());
            QCOMPARE(outcome.status, 1);
        }
        QCOMPARE(readFolder(m_path), saved);
    }

    void hugeFileIsNotRead()
    {
        QVERIFY(QFile::resize(m_path, qint64(1) << 40));
        QCOMPARE(runDocument({"show", m_path}).errors,
                 "receipt: " + m_path + ": is larger than the 16 MiB of a document\n");
        QCOMPARE(
            runDocument({"check", m_path}).output,
            findings({"bad, is larger than the 16 MiB of a document", "good", "good", "good"}));
        // The backup is good, and whatever the primary has become is written anew.
        QCOMPARE(runDocument({"repair", m_path}).status, 0);
        QCOMPARE(runDocument({"show", m_path}).output, newText);
    }

    void removeTakesAllFour()
    {
        QCOMPARE(runDocument({"remove", m_path}).status, 0);
        QVERIFY(QDir(m_folder->path()).isEmpty());
        QCOMPARE(runDocument({"remove", m_path}).status, 0);
    }

    void removeTellsWhatItCannotRemove()
    {
        QVERIFY(QDir(m_folder->path()).mkpath("kept/inside"));
        const ReceiptRun outcome = runDocument({"remove", m_folder->filePath("kept")});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("kept: can't be removed"));
    }

    void wrongUsageIsTold()
    {
        QCOMPARE(runDocument({}).status, 2);
        QCOMPARE(runDocument({"print", m_path}).status, 2);
        QCOMPARE(runDocument({"show"}).status, 2);
        QCOMPARE(runDocument({"--help"}).status, 0);
        QVERIFY(runDocument({"--help"}).output.contains("repair"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptDocument)
#include "tst_receipt_document.moc"
