#include <sys/resource.h>
#include <sys/stat.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QProcess>
#include <QtTest>
#include <csignal>
#include <memory>

#include "documentfiles.h"
#include "logcatcher.h"

using namespace documentfiles;

Q_DECLARE_METATYPE(TextPrinterDocument)

namespace {

const TextPrinterDocument oldDocument = documentOf("OLD 1.00");
const TextPrinterDocument newDocument = documentOf(QString::fromUtf8("НОВЫЙ 2.50"));
const TextPrinterDocument before = documentOf("what the document held before the load");

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

/// What a document that can't be parsed leaves: the map form's empty map.
TextPrinterDocument emptied()
{
    TextPrinterDocument document;
    document.setMap({});
    return document;
}

/// Both copies hold the text, with right checksums.
Folder folderOf(const QByteArray &primary, const QByteArray &backup)
{
    return {{"", primary},
            {".sha1", digestOf(primary) + "  P\n"},
            {".bak", backup},
            {".bak.sha1", digestOf(backup) + "  P.bak\n"}};
}

QByteArray jsonOf(const TextPrinterDocument &document)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(QJsonDocument::Compact);
}

/// Keeps this process and its children from making files longer than `bytes`, as a full disk does.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit lowered = m_before;
        lowered.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

}  // namespace

class TestTextPrinterDocumentFile : public QObject
{
    Q_OBJECT

    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

    /// Loads into a document that held something else; `loaded` is the result.
    TextPrinterDocument loadedFrom(const QString &path, bool *loaded) const
    {
        TextPrinterDocument document = before;
        *loaded = document.loadFromFile(path);
        return document;
    }

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

    void primaryThatCannotBeOpenedIsLoggedAndTheBackupIsWritten()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("receipt.json"));
        QVERIFY(writeFile(m_path + ".sha1", "stays"));
        QFile unopened(m_path);
        QVERIFY(!unopened.open(QIODevice::WriteOnly));
        {
            const LogCatcher log;
            QCOMPARE(newDocument.saveToFile(m_path), false);
            QCOMPARE(log.lines(),
                     QStringList("default critical " + m_path + " " + unopened.errorString()));
        }
        QCOMPARE(contentOf(m_path + ".sha1"), QByteArray("stays"));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void backupThatCannotBeOpenedGivesFalseAndThePrimaryIsWritten()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("receipt.json.bak"));
        QFile unopened(m_path + ".bak");
        QVERIFY(!unopened.open(QIODevice::WriteOnly));
        {
            const LogCatcher log;
            QCOMPARE(newDocument.saveToFile(m_path), false);
            QCOMPARE(log.lines(),
                     QStringList("default critical " + m_path + ".bak " + unopened.errorString()));
        }
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void checksumThatIsAFolderCountsAsWrittenAndTheBackupLoads()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("receipt.json.sha1"));
        const LogCatcher log;
        QVERIFY(newDocument.saveToFile(m_path));
        QCOMPARE(contentOf(m_path), jsonOf(newDocument));
        QVERIFY(QFileInfo(m_path + ".sha1").isDir());
        // Tells the copies apart.
        QVERIFY(writeFile(m_path, jsonOf(oldDocument)));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
        QCOMPARE(log.lines(), QStringList());
    }

    /// Clients are told that it is so: a service fixes its PATH.
    void saveWithoutSha1sumIsTrueAndLosesTheDocument()
    {
        QVERIFY(oldDocument.saveToFile(m_path));
        m_programs->remove("sha1sum");
        m_programs->putAlone();
        QVERIFY(newDocument.saveToFile(m_path));
        m_programs->putFirst();
        QCOMPARE(contentOf(m_path + ".sha1"), QByteArray());
        QCOMPARE(contentOf(m_path + ".bak.sha1"), QByteArray());
        bool loaded = true;
        loadedFrom(m_path, &loaded);
        QVERIFY(!loaded);
    }

    void loadLogsNothing_data()
    {
        QTest::addColumn<QStringList>("missing");
        QTest::addColumn<QByteArray>("primary");
        QTest::newRow("good primary") << QStringList() << jsonOf(newDocument);
        QTest::newRow("no primary") << QStringList("") << jsonOf(newDocument);
        QTest::newRow("no checksum") << QStringList(".sha1") << jsonOf(newDocument);
        QTest::newRow("nothing") << suffixes << jsonOf(newDocument);
        QTest::newRow("no JSON") << QStringList() << QByteArray("not json");
        QTest::newRow("no document") << QStringList() << QByteArray("[1]");
    }

    void loadLogsNothing()
    {
        QFETCH(const QStringList, missing);
        QFETCH(const QByteArray, primary);
        Folder folder = folderOf(primary, jsonOf(oldDocument));
        for (const QString &suffix : missing)
            folder.remove(suffix);
        QVERIFY(writeFolder(m_path, folder));
        const LogCatcher log;
        bool loaded = false;
        loadedFrom(m_path, &loaded);
        loadedFrom("", &loaded);
        loadedFrom(m_folder->path(), &loaded);
        QCOMPARE(log.lines(), QStringList());
    }

    void unwritableFolderGivesFalseAndTwoLogLines_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("below a file") << "file/receipt.json";
        QTest::newRow("no such folder") << "missing/receipt.json";
    }

    void unwritableFolderGivesFalseAndTwoLogLines()
    {
        QFETCH(const QString, path);
        QVERIFY(writeFile(m_folder->filePath("file"), "x"));
        const QString full = m_folder->filePath(path);
        QFile unopened(full);
        QVERIFY(!unopened.open(QIODevice::WriteOnly));
        {
            const LogCatcher log;
            QCOMPARE(newDocument.saveToFile(full), false);
            QCOMPARE(log.lines(),
                     (QStringList{"default critical " + full + " " + unopened.errorString(),
                                  "default critical " + full + ".bak " + unopened.errorString()}));
        }
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList("file"));
        bool loaded = true;
        QVERIFY(loadedFrom(full, &loaded) == before);
        QVERIFY(!loaded);
        newDocument.removeFile(full);
    }

    void checksumProgramThatFailsIsFoundOutByTheLoad_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("fails") << QByteArray("exit 1");
        QTest::newRow("writes something else") << QByteArray("echo sha1sum: no memory");
        QTest::newRow("stops in the middle") << QByteArray("printf 0123456789; kill -9 $$");
    }

    void checksumProgramThatFailsIsFoundOutByTheLoad()
    {
        QFETCH(const QByteArray, script);
        QVERIFY(oldDocument.saveToFile(m_path));
        if (!script.isEmpty())
            m_programs->add("sha1sum", script);
        m_programs->putAlone();
        QVERIFY(newDocument.saveToFile(m_path));
        m_programs->putFirst();
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == before);
        QVERIFY(!loaded);
        QCOMPARE(contentOf(m_path), jsonOf(newDocument));
    }

    void checksumProgramThatHangsIsGivenUp()
    {
        if (!qEnvironmentVariableIsSet("PRINTERSLIB_SLOW_TESTS"))
            QSKIP("takes a minute; set PRINTERSLIB_SLOW_TESTS to run it");
        m_programs->add("sha1sum", "exec sleep 1000");
        const LogCatcher log;
        QVERIFY(newDocument.saveToFile(m_path));
        QCOMPARE(log.lines(), QStringList());
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == before);
        QVERIFY(!loaded);
    }

    void syncThatIsMissingChangesNothing()
    {
        m_programs->remove("sync");
        m_programs->add("sha1sum",
                        "exec " + QStandardPaths::findExecutable("sha1sum").toUtf8() + " \"$1\"");
        m_programs->putAlone();
        QVERIFY(newDocument.saveToFile(m_path));
        bool loaded = false;
        QVERIFY(loadedFrom(m_path, &loaded) == newDocument);
        QVERIFY(loaded);
    }

    void saveOnAFullDiskIsTrueAndLoadsNothing_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("emptied");
        // The checksum is that of what reached the disk: the cut-off copy passes as checked.
        QTest::newRow("room for a part and its checksum") << 4096 << true;
        QTest::newRow("room for less than a checksum") << 16 << false;
        QTest::newRow("no room") << 0 << false;
    }

    void saveOnAFullDiskIsTrueAndLoadsNothing()
    {
        QFETCH(const int, bytes);
        QFETCH(const bool, emptied);
        QVERIFY(oldDocument.saveToFile(m_path));
        bool saved = false;
        {
            const FileSizeLimit limit(static_cast<rlim_t>(bytes));
            saved = documentOf(QString(6000, 'x')).saveToFile(m_path);
        }
        QVERIFY(saved);
        QCOMPARE(QFileInfo(m_path).size(), qint64(bytes));
        bool loaded = true;
        QVERIFY(loadedFrom(m_path, &loaded) == (emptied ? ::emptied() : before));
        QVERIFY(!loaded);
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
    const QString m_folderPlaceholder = "<folder>";
};

QTEST_GUILESS_MAIN(TestTextPrinterDocumentFile)
#include "tst_textprinterdocument_file.moc"
