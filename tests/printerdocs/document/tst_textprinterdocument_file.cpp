#include <sys/stat.h>

#include <QProcess>
#include <QtTest>
#include <memory>

#include "documentfiles.h"

using namespace documentfiles;

Q_DECLARE_METATYPE(TextPrinterDocument)

class TestTextPrinterDocumentFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_programs = std::make_unique<Programs>();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_path = m_folder->filePath("receipt.json");
    }

    void cleanup()
    {
        m_programs.reset();
        m_folder.reset();
    }

    void emptyPathIsFalseAndTouchesNothing()
    {
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        QCOMPARE(newDocument.saveToFile(QString()), false);
        TextPrinterDocument document = before;
        QCOMPARE(document.loadFromFile(""), false);
        QVERIFY(QDir::setCurrent(current));
        QVERIFY(document == before);
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void saveMakesFourFiles()
    {
        QVERIFY(newDocument.saveToFile(m_path));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"receipt.json", "receipt.json.bak", "receipt.json.bak.sha1",
                              "receipt.json.sha1"}));
        const QByteArray json = jsonOf(newDocument);
        QCOMPARE(contentOf(m_path), json);
        QCOMPARE(contentOf(m_path + ".bak"), json);
        QCOMPARE(contentOf(m_path + ".sha1"), digestOf(json) + "  " + m_path.toUtf8() + "\n");
        QCOMPARE(contentOf(m_path + ".bak.sha1"),
                 digestOf(json) + "  " + m_path.toUtf8() + ".bak\n");
    }

    void fileHoldsTheMapFormAsCompactJson()
    {
        TextPrinterDocument document = documentOf("A");
        document.setSymbolsPerLine(0);
        document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(document.saveToFile(m_path));
        const QByteArray expected =
            "{'blocks':[{'align':0,'fmt':['AA=='],'fnt':['AQ=='],'ls':[0],'txt':['A'],'type':0}],"
            "'cta':9,'init':true,'loop':0,'pta':0}";
        QCOMPARE(contentOf(m_path), QByteArray(expected).replace('\'', '"'));
    }

    void newFilesHaveTheModeOfTheUmaskAndKeepIt_data()
    {
        QTest::addColumn<uint>("mask");
        for (const uint mask : {0022u, 0027u, 0077u, 0000u})
            QTest::addRow("umask %03o", mask) << mask;
    }

    void newFilesHaveTheModeOfTheUmaskAndKeepIt()
    {
        QFETCH(const uint, mask);
        const auto savedWith = [this](mode_t other) {
            const mode_t former = ::umask(other);
            const bool saved = newDocument.saveToFile(m_path);
            ::umask(former);
            return saved;
        };
        QVERIFY(savedWith(mask));
        for (const mode_t later : {0022u, 0077u}) {
            for (const QString &suffix : suffixes) {
                struct stat status = {};
                QCOMPARE(::stat(QFile::encodeName(m_path + suffix).constData(), &status), 0);
                QCOMPARE(status.st_mode & 07777, 0666 & ~mask);
            }
            QVERIFY(savedWith(later));
        }
    }

    void saveWithoutSyncSaysTrue_data()
    {
        QTest::addColumn<QByteArray>("script");  // empty: there is no such program
        QTest::newRow("none") << QByteArray();
        QTest::newRow("one that fails") << QByteArray("exit 1");
    }

    void saveWithoutSyncSaysTrue()
    {
        QFETCH(const QByteArray, script);
        m_programs->add("sha1sum", "exec /usr/bin/sha1sum \"$1\"");
        if (script.isEmpty())
            m_programs->remove("sync");
        else
            m_programs->add("sync", script);
        m_programs->putAlone();
        QVERIFY(newDocument.saveToFile(m_path));
        m_programs->putFirst();
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void processWithoutStandardStreamsSavesAllFourFiles_data()
    {
        QTest::addColumn<int>("descriptors");
        for (int descriptors = 0; descriptors < 8; ++descriptors)
            QTest::addRow("closed: mask %d", descriptors) << descriptors;
    }

    void processWithoutStandardStreamsSavesAllFourFiles()
    {
        QFETCH(const int, descriptors);
        QVERIFY(oldDocument.saveToFile(m_path));
        const QString text = QString::fromUtf8("НОВЫЙ 2.50");
        QCOMPARE(
            QProcess::execute(SAVE_WITHOUT_STREAMS, {QString::number(descriptors), m_path, text}),
            0);
        QCOMPARE(contentOf(m_path), jsonOf(newDocument));
        QCOMPARE(contentOf(m_path + ".bak"), jsonOf(newDocument));
        const QByteArray digest = digestOf(jsonOf(newDocument)) + "  " + m_path.toUtf8();
        QCOMPARE(contentOf(m_path + ".sha1"), digest + "\n");
        QCOMPARE(contentOf(m_path + ".bak.sha1"), digest + ".bak\n");
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void savedDocumentLoadsAgain_data()
    {
        QTest::addColumn<TextPrinterDocument>("document");
        QTest::newRow("text") << newDocument;
        QTest::newRow("empty") << TextPrinterDocument();
        QTest::newRow("longer than any buffer") << documentOf(QString(3000000, QChar(0x2013)));
    }

    void savedDocumentLoadsAgain()
    {
        QFETCH(const TextPrinterDocument, document);
        QVERIFY(document.saveToFile(m_path));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == document);
        QVERIFY(loaded);
    }

    void savingOverALongerDocumentLeavesNothingOfIt()
    {
        QVERIFY(documentOf(QString(5000, 'x')).saveToFile(m_path));
        QVERIFY(newDocument.saveToFile(m_path));
        QCOMPARE(contentOf(m_path), jsonOf(newDocument));
        QCOMPARE(contentOf(m_path + ".bak"), jsonOf(newDocument));
    }

    void damagedPrimaryLoadsTheBackupAndStaysDamaged_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("removed");
        QTest::newRow("a byte of the primary") << "" << false;
        QTest::newRow("a digit of its checksum") << ".sha1" << false;
        QTest::newRow("no primary") << "" << true;
        QTest::newRow("no checksum of it") << ".sha1" << true;
    }

    void damagedPrimaryLoadsTheBackupAndStaysDamaged()
    {
        QFETCH(const QString, suffix);
        QFETCH(const bool, removed);
        Folder folder = folderOf(jsonOf(newDocument), jsonOf(oldDocument));
        if (removed)
            folder.remove(suffix);
        else
            folder[suffix][3] = char(folder[suffix].at(3) ^ 1);
        QVERIFY(writeFolder(m_path, folder));

        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == oldDocument);
        QVERIFY(loaded);
        QVERIFY(readFolder(m_path) == folder);
    }

    void goodPrimaryNeedsNoBackup()
    {
        Folder folder = folderOf(jsonOf(newDocument), jsonOf(oldDocument));
        folder.remove(".bak");
        folder.remove(".bak.sha1");
        QVERIFY(writeFolder(m_path, folder));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void noGoodCopyLeavesTheDocumentAsItWas_data()
    {
        QTest::addColumn<QString>("firstDamage");
        QTest::addColumn<QString>("secondDamage");
        QTest::newRow("both copies") << ""
                                     << ".bak";
        QTest::newRow("both checksums") << ".sha1"
                                        << ".bak.sha1";
        QTest::newRow("one of each") << ""
                                     << ".bak.sha1";
    }

    void noGoodCopyLeavesTheDocumentAsItWas()
    {
        QFETCH(const QString, firstDamage);
        QFETCH(const QString, secondDamage);
        Folder folder = folderOf(jsonOf(newDocument), jsonOf(oldDocument));
        folder[firstDamage][0] = 'g';
        folder[secondDamage][0] = 'g';
        QVERIFY(writeFolder(m_path, folder));
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == before);
        QVERIFY(!loaded);
    }

    void nothingThereLeavesTheDocumentAsItWas()
    {
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == before);
        QVERIFY(!loaded);
        QVERIFY(loadedFrom(m_folder->path(), &loaded) == before);
        QVERIFY(!loaded);
    }

    void checkedPrimaryThatIsNoJsonEmptiesTheDocument_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("no JSON") << QByteArray("not json");
        QTest::newRow("cut off") << jsonOf(newDocument).chopped(1);
        QTest::newRow("empty file") << QByteArray();
    }

    void checkedPrimaryThatIsNoJsonEmptiesTheDocument()
    {
        QFETCH(const QByteArray, text);
        QVERIFY(writeFolder(m_path, folderOf(text, jsonOf(oldDocument))));
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == emptied());
        QVERIFY(!loaded);
    }

    void jsonThatIsNoDocumentIsLoadedAsAnEmptyOne()
    {
        QVERIFY(writeFolder(m_path, folderOf("[1,2]", jsonOf(oldDocument))));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == emptied());
        QVERIFY(loaded);
    }

    void onlyTheFirstFortyBytesOfAChecksumFileCount_data()
    {
        QTest::addColumn<QByteArray>("checksum");
        QTest::addColumn<bool>("good");
        const QByteArray digest = digestOf(jsonOf(newDocument));
        QTest::newRow("digest alone") << digest << true;
        QTest::newRow("another path behind it") << digest + "  /elsewhere/Q\n" << true;
        QTest::newRow("anything behind it") << digest + QByteArray(100000, 'f') << true;
        QTest::newRow("upper case") << digest.toUpper() << true;
        QTest::newRow("39 digits") << digest.left(39) << false;
        QTest::newRow("blank before it") << " " + digest << false;
        QTest::newRow("backslash before it") << "\\" + digest << false;
        QTest::newRow("empty") << QByteArray() << false;
    }

    void onlyTheFirstFortyBytesOfAChecksumFileCount()
    {
        QFETCH(const QByteArray, checksum);
        QFETCH(const bool, good);
        Folder folder = folderOf(jsonOf(newDocument), jsonOf(oldDocument));
        folder[".sha1"] = checksum;
        QVERIFY(writeFolder(m_path, folder));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == (good ? newDocument : oldDocument));
        QVERIFY(loaded);
    }

    void removeTakesWhateverIsThere_data()
    {
        QTest::addColumn<int>("present");
        for (int present = 0; present < 16; ++present)
            QTest::addRow("files of the mask %d", present) << present;
    }

    void removeTakesWhateverIsThere()
    {
        QFETCH(const int, present);
        for (int file = 0; file < 4; ++file) {
            if ((present >> file & 1) != 0)
                QVERIFY(writeFile(m_path + suffixes.at(file), "x"));
        }
        const QString neighbour = m_path + ".bak.bak";
        QVERIFY(writeFile(neighbour, "x"));
        TextPrinterDocument().removeFile(m_path);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files),
                 QStringList("receipt.json.bak.bak"));
    }

    void eachCopyAndTheRemovalAreForcedToDisk()
    {
        const QString log = m_folder->filePath("log");
        m_programs->add("sync", "echo sync >>'" + log.toUtf8() + "'");
        QVERIFY(newDocument.saveToFile(m_path));
        QCOMPARE(contentOf(log), QByteArray("sync\nsync\n"));
        newDocument.removeFile(m_path);
        QCOMPARE(contentOf(log), QByteArray("sync\nsync\nsync\n"));
        QVERIFY(QFile::remove(log));
        QVERIFY(!newDocument.saveToFile(""));
        QVERIFY(!QFile::exists(log));
    }

    void checksumProgramRunsInTheFilesFolderWithOneArgument()
    {
        const QString log = m_folder->filePath("log");
        m_programs->add("sha1sum", "echo \"$(pwd -P) $# $1\" >>'" + log.toUtf8() + "'");
        QVERIFY(newDocument.saveToFile(m_path));
        const QByteArray start =
            QFileInfo(m_folder->path()).canonicalFilePath().toUtf8() + " 1 " + m_path.toUtf8();
        QCOMPARE(contentOf(log), start + "\n" + start + ".bak\n");
    }

    void namesOfAllKindsLoadAgain_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("blanks") << " a  receipt of today ";
        QTest::newRow("quotes") << "'one' and \"two\"";
        QTest::newRow("leading minus, as the path is absolute") << "-rf";
        QTest::newRow("two minus") << "--help";
        QTest::newRow("not ASCII") << QString::fromUtf8("чек №1 – ñ €");
        QTest::newRow("what a shell would expand") << "$HOME `id` * ? ~ ; & | # !";
        QTest::newRow("tab") << "a\tb";
        QTest::newRow("percent and its digits") << "%1 %s";
        QTest::newRow("longest name") << QString(255 - int(qstrlen(".bak.sha1")), 'n');
    }

    void namesOfAllKindsLoadAgain()
    {
        QFETCH(const QString, name);
        const QString path = m_folder->filePath(name);
        QVERIFY(newDocument.saveToFile(path));
        bool loaded = false;
        QVERIFY(loadedFrom(path, &loaded) == newDocument);
        QVERIFY(loaded);
        QVERIFY(QFile::remove(path));
        QVERIFY(loadedFrom(path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void pathsThatTheChecksumProgramTakesOtherwiseDontLoad_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("backslash") << m_folderPlaceholder + "/a\\b";
        QTest::newRow("backslash in the folder") << m_folderPlaceholder + "/sub\\folder/receipt";
        QTest::newRow("line feed") << m_folderPlaceholder + "/a\nb";
        QTest::newRow("relative with a folder") << "sub/receipt";
        QTest::newRow("leading minus") << "-receipt";
        QTest::newRow("standard input") << "-";
    }

    void pathsThatTheChecksumProgramTakesOtherwiseDontLoad()
    {
        QFETCH(QString, path);
        path.replace(m_folderPlaceholder, m_folder->path());
        QVERIFY(QDir(m_folder->path()).mkdir("sub\\folder"));
        QVERIFY(QDir(m_folder->path()).mkdir("sub"));
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        const bool saved = newDocument.saveToFile(path);
        bool loaded = true;
        const TextPrinterDocument document = loadedFrom(path, &loaded);
        const QByteArray content = contentOf(path);
        QVERIFY(QDir::setCurrent(current));
        QVERIFY(saved);
        QVERIFY(!loaded);
        QVERIFY(document == before);
        QCOMPARE(content, jsonOf(newDocument));
    }

    void relativePathWithoutAFolderLoadsAgain()
    {
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        const bool saved = newDocument.saveToFile("receipt.json");
        bool loaded = false;
        const TextPrinterDocument document = loadedFrom("receipt.json", &loaded);
        QVERIFY(QDir::setCurrent(current));
        QVERIFY(saved);
        QVERIFY(loaded);
        QVERIFY(document == newDocument);
    }

private:
    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

    const QString m_folderPlaceholder = "<folder>";
};

QTEST_GUILESS_MAIN(TestTextPrinterDocumentFile)
#include "tst_textprinterdocument_file.moc"
