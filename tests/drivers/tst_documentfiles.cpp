// What somebody else may put at the names of a document, and what a service makes of it.
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QtTest>
#include <memory>

#include "documentfiles.h"
#include "printerslib/drivers/documentfiles.h"

using namespace documentfiles;
using printerslib::drivers::DocumentFiles;

namespace {

constexpr uid_t nobody = 65534;

QByteArray nameOf(const QString &path)
{
    return QFile::encodeName(path);
}

/// What an attacker puts at a name; gives whether that worked.
struct Trap
{
    const char *name;
    bool (*lay)(const QString &name, const QString &victim);
    const char *fault;
};

const Trap traps[] = {
    {"link to a file",
     [](const QString &name, const QString &victim) {
         return ::symlink(nameOf(victim).constData(), nameOf(name).constData()) == 0;
     },
     "is a symbolic link and no file"},
    {"link to nothing",
     [](const QString &name, const QString &) {
         return ::symlink("/nonexistent", nameOf(name).constData()) == 0;
     },
     "is a symbolic link and no file"},
    {"second name of a file",
     [](const QString &name, const QString &victim) {
         return ::link(nameOf(victim).constData(), nameOf(name).constData()) == 0;
     },
     "has 2 names (hard links)"},
    {"FIFO",
     [](const QString &name, const QString &) {
         return ::mkfifo(nameOf(name).constData(), S_IRUSR | S_IWUSR) == 0;
     },
     "is a FIFO and no file"},
    {"folder",
     [](const QString &name, const QString &) {
         return ::mkdir(nameOf(name).constData(), S_IRWXU) == 0;
     },
     "is a folder and no file"},
    {"endless device",
     [](const QString &name, const QString &) {
         return ::symlink("/dev/zero", nameOf(name).constData()) == 0;
     },
     "is a symbolic link and no file"},
    {"socket",
     [](const QString &name, const QString &) {
         const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
         sockaddr_un address{};
         address.sun_family = AF_UNIX;
         qstrncpy(address.sun_path, nameOf(name).constData(), sizeof address.sun_path);
         const bool bound =
             ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
         ::close(socket);
         return bound;
     },
     "is a socket and no file"},
};

}  // namespace

Q_DECLARE_METATYPE(const Trap *)

class TestDocumentFiles : public QObject
{
    Q_OBJECT

    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTemporaryDir> m_elsewhere;
    QString m_path;
    QString m_victim;
    const QString m_folderPlaceholder = "<folder>";

private Q_SLOTS:
    void init()
    {
        m_programs = std::make_unique<Programs>();
        m_folder = std::make_unique<QTemporaryDir>();
        m_elsewhere = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("receipt.json");
        m_victim = m_elsewhere->filePath("victim");
        QVERIFY(writeFile(m_victim, "precious"));
    }

    void cleanup()
    {
        m_programs.reset();
        m_folder.reset();
        m_elsewhere.reset();
    }

    void ordinaryDocumentIsKeptAndLoaded()
    {
        QCOMPARE(DocumentFiles::save(newDocument, m_path), QString());
        QCOMPARE(readFolder(m_path).size(), 4);
        TextPrinterDocument loaded;
        QCOMPARE(DocumentFiles::load(loaded, m_path), QString());
        QVERIFY(loaded == newDocument);
        // And over the old one.
        QCOMPARE(DocumentFiles::save(oldDocument, m_path), QString());
        QCOMPARE(DocumentFiles::load(loaded, m_path), QString());
        QVERIFY(loaded == oldDocument);
    }

    void namesAreThoseThatASaveMakes()
    {
        QVERIFY(newDocument.saveToFile(m_path));
        QStringList made;
        for (const QFileInfo &file : QDir(m_folder->path()).entryInfoList(QDir::Files))
            made.append(file.filePath());
        QStringList names = DocumentFiles::namesOf(m_path);
        names.sort();
        made.sort();
        QCOMPARE(names, made);
    }

    void whatOthersPutAtANameIsRefusedAndLeftAlone_data()
    {
        QTest::addColumn<const Trap *>("trap");
        QTest::addColumn<QString>("suffix");
        for (const Trap &trap : traps) {
            for (const QString &suffix : suffixes)
                QTest::addRow("%s at P%s", trap.name, qPrintable(suffix)) << &trap << suffix;
        }
    }

    void whatOthersPutAtANameIsRefusedAndLeftAlone()
    {
        QFETCH(const Trap *, trap);
        QFETCH(const QString, suffix);
        QVERIFY(oldDocument.saveToFile(m_path));
        const QString name = m_path + suffix;
        QVERIFY(QFile::remove(name));
        QVERIFY(trap->lay(name, m_victim));
        const QString fault = name + ": " + trap->fault;
        QCOMPARE(DocumentFiles::save(newDocument, m_path), fault);
        TextPrinterDocument document = newDocument;
        QCOMPARE(DocumentFiles::load(document, m_path), fault);
        QVERIFY(document == newDocument);
        QCOMPARE(DocumentFiles::faultOfFile(name, DocumentFiles::ToLoad), fault);
        QCOMPARE(contentOf(m_victim), QByteArray("precious"));
        // The other files are those of before.
        for (const QString &other : suffixes) {
            if (other != suffix)
                QVERIFY(
                    DocumentFiles::faultOfFile(m_path + other, DocumentFiles::ToLoad).isEmpty());
        }
        if (suffix != "" && suffix != ".sha1")
            QVERIFY(document.loadFromFile(m_path) && document == oldDocument);
    }

    void folderThatOthersMayWriteToIsRefused_data()
    {
        QTest::addColumn<uint>("mode");
        QTest::addColumn<bool>("good");
        QTest::newRow("own alone") << 0700u << true;
        QTest::newRow("others read") << 0755u << true;
        QTest::newRow("group") << 0770u << false;
        QTest::newRow("group writes, without looking") << 0720u << false;
        QTest::newRow("all") << 0777u << false;
        QTest::newRow("all, but sticky") << 01777u << false;
        QTest::newRow("others alone") << 0702u << false;
    }

    void folderThatOthersMayWriteToIsRefused()
    {
        QFETCH(const uint, mode);
        QFETCH(const bool, good);
        QVERIFY(oldDocument.saveToFile(m_path));
        QCOMPARE(::chmod(nameOf(m_folder->path()).constData(), mode), 0);
        const QString fault = good ? QString()
                                   : QString("%1: others may write to this folder (mode %2)")
                                         .arg(m_folder->path())
                                         .arg(mode, 4, 8, QChar('0'));
        QCOMPARE(DocumentFiles::faultOfFolder(m_path), fault);
        QCOMPARE(DocumentFiles::save(newDocument, m_path), fault);
        TextPrinterDocument document;
        QCOMPARE(DocumentFiles::load(document, m_path), fault);
        QVERIFY(document == (good ? newDocument : TextPrinterDocument()));
        QCOMPARE(contentOf(m_path).contains("OLD"), !good);
    }

    void whatBelongsToAnotherUserIsRefused_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const QString &suffix : suffixes)
            QTest::addRow("P%s", qPrintable(suffix)) << suffix;
        QTest::newRow("folder") << QString();
    }

    void whatBelongsToAnotherUserIsRefused()
    {
        if (::geteuid() != 0)
            QSKIP("only root gives files away");
        QFETCH(const QString, suffix);
        QVERIFY(oldDocument.saveToFile(m_path));
        const QString name = suffix.isNull() ? m_folder->path() : m_path + suffix;
        QCOMPARE(::chown(nameOf(name).constData(), nobody, nobody), 0);
        const QString fault = name + ": belongs to nobody, and this process runs as root";
        QCOMPARE(DocumentFiles::save(newDocument, m_path), fault);
        TextPrinterDocument document;
        QCOMPARE(DocumentFiles::load(document, m_path), fault);
        QVERIFY(!contentOf(m_path).contains("2.50"));
    }

    void hugeFileIsNotLoaded_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<bool>("good");
        for (const QString &suffix : suffixes) {
            QTest::addRow("P%s, at the bound", qPrintable(suffix))
                << suffix << DocumentFiles::greatestSize << true;
            QTest::addRow("P%s, above it", qPrintable(suffix))
                << suffix << DocumentFiles::greatestSize + 1 << false;
            QTest::addRow("P%s, a terabyte of nothing", qPrintable(suffix))
                << suffix << (qint64(1) << 40) << false;
        }
    }

    void hugeFileIsNotLoaded()
    {
        QFETCH(const QString, suffix);
        QFETCH(const qint64, size);
        QFETCH(const bool, good);
        QVERIFY(oldDocument.saveToFile(m_path));
        QVERIFY(QFile::resize(m_path + suffix, size));
        const QString fault =
            good ? QString() : m_path + suffix + ": is larger than the 16 MiB of a document";
        QCOMPARE(DocumentFiles::faultOf(m_path, DocumentFiles::ToLoad), fault);
        TextPrinterDocument document;
        QCOMPARE(DocumentFiles::load(document, m_path), fault);
        // A save makes it small again.
        QCOMPARE(DocumentFiles::save(newDocument, m_path), QString());
        QCOMPARE(DocumentFiles::load(document, m_path), QString());
        QVERIFY(document == newDocument);
    }

    void pathsThatNoLoadFindsAreRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("namesAFile");
        QTest::newRow("none") << QString() << false;
        QTest::newRow("folder") << m_folderPlaceholder + "/" << false;
        QTest::newRow("zero byte") << m_folderPlaceholder + "/a" + QChar(0) + "b" << false;
        QTest::newRow("relative") << "receipt" << true;
        QTest::newRow("option") << "-c" << true;
        QTest::newRow("backslash") << m_folderPlaceholder + "/a\\b" << true;
        QTest::newRow("line feed") << m_folderPlaceholder + "/a\nb" << true;
        QTest::newRow("carriage return") << m_folderPlaceholder + "/a\rb" << true;
    }

    void pathsThatNoLoadFindsAreRefused()
    {
        QFETCH(QString, path);
        QFETCH(const bool, namesAFile);
        path.replace(m_folderPlaceholder, m_folder->path());
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        const QString saved = DocumentFiles::save(newDocument, path);
        TextPrinterDocument document = newDocument;
        const QString loaded = DocumentFiles::load(document, path);
        QVERIFY(QDir::setCurrent(current));
        const QString noName = path + ": a document needs a path that names a file";
        QCOMPARE(saved, namesAFile ? path +
                                         ": a document's path is absolute and has no backslash "
                                         "and no line end"
                                   : noName);
        QCOMPARE(loaded, namesAFile ? path + ": no copy can be loaded" : noName);
        QVERIFY(document == newDocument);
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void folderThatIsMissingOrNoneIsNamed()
    {
        const QString missing = m_folder->filePath("missing");
        QCOMPARE(DocumentFiles::save(newDocument, missing + "/receipt"),
                 missing + ": No such file or directory");
        QCOMPARE(DocumentFiles::faultOfFolder(m_victim + "/receipt"), m_victim + ": is no folder");
        QVERIFY(!QFile::exists(missing));
    }

    void saveThatKeepsNothingSaysSo()
    {
        m_programs->add("sha1sum", "exit 1");
        QCOMPARE(DocumentFiles::save(newDocument, m_path), m_path + ": no copy can be loaded");
        m_programs->remove("sha1sum");
        QCOMPARE(DocumentFiles::save(newDocument, m_path), QString());
    }

    void saveThatFindsTheOldDocumentAgainSaysSo()
    {
        QVERIFY(oldDocument.saveToFile(m_path));
        const Folder old = readFolder(m_path);
        // Writes the backup of before in place of both checksums, as if the new bytes were lost.
        QVERIFY(writeFile(m_elsewhere->filePath("old"), old.value("")));
        m_programs->add("sha1sum", "cp '" + nameOf(m_elsewhere->filePath("old")) +
                                       "' \"$1\"; exec /usr/bin/sha1sum \"$1\"");
        QCOMPARE(DocumentFiles::save(newDocument, m_path),
                 m_path + ": what was saved isn't what a load gives");
    }

    void documentThatDoesntComeBackWholeIsKeptAllTheSame()
    {
        TextPrinterDocument document = newDocument;
        document.setSymbolsPerLine(32);
        document.setCharImages({{char(200), MonochromeImage::createEmpty(8, 1)}});
        QCOMPARE(DocumentFiles::save(document, m_path), QString());
    }
};

QTEST_GUILESS_MAIN(TestDocumentFiles)
#include "tst_documentfiles.moc"
