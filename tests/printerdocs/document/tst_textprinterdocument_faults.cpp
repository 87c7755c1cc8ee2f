#include <sys/resource.h>
#include <sys/stat.h>

#include <QtTest>
#include <csignal>
#include <memory>

#include "documentfiles.h"
#include "logcatcher.h"

using namespace documentfiles;

namespace {

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

/// Saving and loading where files, folders or the checksum program fail.
class TestTextPrinterDocumentFaults : public QObject
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

private:
    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestTextPrinterDocumentFaults)
#include "tst_textprinterdocument_faults.moc"
