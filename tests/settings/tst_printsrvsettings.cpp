#include <QtTest>

#include "settings/printsrvsettings.h"

class TestPrintSrvSettings : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_configuration;

private Q_SLOTS:
    void initTestCase() { m_configuration = qgetenv("TARN_CONF"); }

    void init() { qputenv("TARN_CONF", QFile::encodeName(m_folder.filePath("etc/tarn.conf"))); }

    void cleanup() { qputenv("TARN_CONF", m_configuration); }

    void pathsLieInTheWorkFolder()
    {
        const PrintSrvSettings settings;
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
        const PrintSrvSettings settings;
        QCOMPARE(settings.serviceDataPath(), odd + "/printsrv");
        QCOMPARE(settings.kpkGenConfig(), odd + "/printsrv/kpk.gen");
        QCOMPARE(settings.pngOutputFile(7), odd + "/png/doc_7.png");
        QVERIFY(QFileInfo(odd + "/png").isDir());
    }

    void stateIntervalIsConstant() { QCOMPARE(PrintSrvSettings().stateInterval(), 30000); }

    void configurationFileIsTheSystems()
    {
        qunsetenv("TARN_CONF");
        // Only the name is looked at: the machine that runs the tests has no such folder, and may
        // not be allowed to create one.
        const hearth::InitConfig config("/opt/tarnwick/etc/tarn.conf", false);
        QCOMPARE(config.workDir(), QString("/opt/tarnwick"));
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
