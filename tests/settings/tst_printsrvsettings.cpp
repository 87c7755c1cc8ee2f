#include <fcntl.h>
#include <unistd.h>

#include <QtTest>
#include <type_traits>

#include "logcatcher.h"
#include "settings/printsrvsettings.h"

namespace {

// Takes the rights of the superuser from the process as long as it lives, so that nothing is
// created on the machine that runs the tests.
class WithoutRights
{
public:
    WithoutRights() { m_changed = geteuid() == 0 && seteuid(nobody) == 0; }
    ~WithoutRights()
    {
        if (m_changed && seteuid(0) != 0)
            qFatal("cannot get the rights back");
    }

private:
    static constexpr uid_t nobody = 65534;
    bool m_changed = false;
};

// Looks at the folder or the nearest one above it that exists.
bool mayCreateBelow(QString folder)
{
    while (!QFileInfo::exists(folder))
        folder = QFileInfo(folder).path();
    return faccessat(AT_FDCWD, qPrintable(folder), W_OK, AT_EACCESS) == 0;
}

}  // namespace

class TestPrintSrvSettings : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_configuration;

private Q_SLOTS:
    void initTestCase() { m_configuration = qgetenv("TARN_CONF"); }

    void init() { qputenv("TARN_CONF", QFile::encodeName(m_folder.filePath("etc/tarn.conf"))); }

    void cleanup() { qputenv("TARN_CONF", m_configuration); }

    void operationsHaveTheirSignatures()
    {
        // Intended: only the file of an image asks for an object that may change.
        QVERIFY((std::is_same_v<decltype(&PrintSrvSettings::pngOutputFile),
                                QString (PrintSrvSettings::*)(int)>));
        QVERIFY((std::is_same_v<decltype(&PrintSrvSettings::kpkGenConfig),
                                QString (PrintSrvSettings::*)() const>));
    }

    void pathsLieInTheWorkFolder()
    {
        PrintSrvSettings settings;
        QCOMPARE(settings.workDir(), m_folder.path());
        QCOMPARE(settings.serviceDataPath(), m_folder.filePath("printsrv"));
        QCOMPARE(settings.kpkGenConfig(), m_folder.filePath("printsrv/kpk.gen"));
        QCOMPARE(settings.pngOutputFile(7), m_folder.filePath("png/doc_7.png"));
        QCOMPARE(settings.pngOutputFile(-1), m_folder.filePath("png/doc_-1.png"));
    }

    void placeholdersInTheWorkFolderStay()
    {
        const QString odd = m_folder.filePath("a%1b%2c");
        qputenv("TARN_CONF", QFile::encodeName(odd + "/etc/tarn.conf"));
        PrintSrvSettings settings;
        QCOMPARE(settings.serviceDataPath(), odd + "/printsrv");
        QCOMPARE(settings.kpkGenConfig(), odd + "/printsrv/kpk.gen");
        QCOMPARE(settings.pngOutputFile(7), odd + "/png/doc_7.png");
        QVERIFY(QFileInfo(odd + "/png").isDir());
    }

    void stateIntervalIsConstant() { QCOMPARE(PrintSrvSettings().stateInterval(), 30000); }

    void configurationFileIsTheSystems()
    {
        qunsetenv("TARN_CONF");
        const WithoutRights guard;
        if (mayCreateBelow("/opt/tarnwick"))
            QSKIP("the construction would create folders on this machine");
        const QuietLog quiet;
        const PrintSrvSettings settings;
        QCOMPARE(settings.settingsFileName(), QString("/opt/tarnwick/etc/tarn.conf"));
    }

    void configurationFileIsNotWritten()
    {
        const QByteArray content = "workDir=..\nlocale=en\n";
        QFile file(m_folder.filePath("etc/tarn.conf"));
        QVERIFY(QDir(m_folder.path()).mkpath("etc"));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write(content) == content.size());
        file.close();
        PrintSrvSettings settings;
        QCOMPARE(settings.locale(), QString("en"));
        QCOMPARE(settings.setlocale("x"), false);
        QCOMPARE(settings.locale(), QString("en"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), content);
        file.close();
        QVERIFY(file.remove());
    }

    void constructionCreatesTheFoldersForAllUsers()
    {
        const QString work = m_folder.filePath("fresh");
        qputenv("TARN_CONF", QFile::encodeName(work + "/etc/tarn.conf"));
        const PrintSrvSettings settings;
        for (const char *name : {"/printsrv", "/png"}) {
            const QFileInfo folder(work + name);
            QVERIFY(folder.isDir());
            QCOMPARE(int(folder.permissions()), 0x7777);
        }
        QCOMPARE(QDir(work).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"png", "printsrv"}));
    }

    void folderThatCannotBeCreatedIsLoggedAndIgnored()
    {
        QFile obstacle(m_folder.filePath("obstacle"));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        obstacle.close();
        qputenv("TARN_CONF", QFile::encodeName(obstacle.fileName() + "/etc/tarn.conf"));
        for (const char *name : {"/printsrv", "/png"})
            QTest::ignoreMessage(QtWarningMsg,
                                 qPrintable("Can't create the directory " + obstacle.fileName() +
                                            name + ": Not a directory"));
        const PrintSrvSettings settings;
        QCOMPARE(settings.workDir(), obstacle.fileName());
        QCOMPARE(settings.serviceDataPath(), obstacle.fileName() + "/printsrv");
    }
};

QTEST_APPLESS_MAIN(TestPrintSrvSettings)
#include "tst_printsrvsettings.moc"
