#include <QtTest>

#include "hearth/dircreator.h"
#include "hearth/initconfig.h"
#include "logcatcher.h"
#include "threads.h"
#include "vtableslot.h"

using hearth::DirCreator;
using hearth::InitConfig;

namespace {}  // namespace

class TestInitConfig : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_configuration;
    int m_files = 0;

    // Each in a file of its own: two of equal size and time would look like one to QSettings.
    QString newConfiguration(const QByteArray &text)
    {
        return writeConfiguration(m_folder.filePath(QString("etc/%1.conf").arg(++m_files)), text);
    }

    QString writeConfiguration(const QString &name, const QByteArray &text)
    {
        QDir().mkpath(m_folder.filePath("etc"));
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return QString();
        return name;
    }

private Q_SLOTS:
    void initTestCase() { m_configuration = qgetenv("TARN_CONF"); }
    void init() { qunsetenv("TARN_CONF"); }
    void cleanup() { qputenv("TARN_CONF", m_configuration); }

    void workFolder_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("folder");

        const QString above = m_folder.path();
        QTest::newRow("empty file") << QByteArray() << above;
        QTest::newRow("empty value") << QByteArray("workDir=\n") << above;
        QTest::newRow("other keys") << QByteArray("other=/x\n[a]\nworkDir=/y\n") << above;
        QTest::newRow("no INI file") << QByteArray("\0\xff=[[", 5) << above;
        QTest::newRow("without a section") << QByteArray("workDir=/srv/pos\n") << "/srv/pos";
        QTest::newRow("in the general section")
            << QByteArray("[General]\nworkDir=/srv/pos\n") << "/srv/pos";
        QTest::newRow("slash at the end") << QByteArray("workDir=/srv/pos/\n") << "/srv/pos";
        QTest::newRow("not ASCII") << QByteArray("workDir=/srv/касса\n") << "/srv/касса";
        QTest::newRow("with a comma") << QByteArray("workDir=/srv/a,b\n") << "/srv/a,b";
        QTest::newRow("with a blank") << QByteArray("workDir=/srv/a b\n") << "/srv/a b";
        QTest::newRow("relative to the file")
            << QByteArray("workDir=data\n") << m_folder.filePath("etc/data");
    }

    void workFolder()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, folder);
        const QString name = newConfiguration(text);
        QVERIFY(!name.isEmpty());
        QCOMPARE(InitConfig(name, false).workDir(), folder);
    }

    void missingFileMeansTwoLevelsAbove()
    {
        QCOMPARE(InitConfig("/opt/tarnwick/etc/tarn.conf", false).workDir(),
                 QString("/opt/tarnwick"));
        QCOMPARE(InitConfig("/tarn.conf", false).workDir(), QString("/"));
    }

    void environmentNamesAnotherFile()
    {
        const QString name = newConfiguration("workDir=/srv/pos\n");
        qputenv("TARN_CONF", QFile::encodeName(name));
        const InitConfig config("/opt/tarnwick/etc/tarn.conf", false);
        QCOMPARE(config.settingsFileName(), name);
        QCOMPARE(config.workDir(), QString("/srv/pos"));
        qputenv("TARN_CONF", "");
        QCOMPARE(InitConfig("/a/b/c", false).workDir(), QString("/a"));
    }

    void changeOfTheFileShowsAtOnce()
    {
        const QString name = newConfiguration("workDir=/one\n");
        const InitConfig config(name, false);
        QCOMPARE(config.workDir(), QString("/one"));
        writeConfiguration(name, "workDir=/another\n");
        QCOMPARE(config.workDir(), QString("/another"));
    }

    void onlyAWritableFileIsWritten()
    {
        const QString name = newConfiguration("locale=ru\n");
        InitConfig readOnly(name, false);
        QVERIFY(!readOnly.setlocale("en"));
        QCOMPARE(readOnly.locale(), QString("ru"));
        InitConfig writable(name, true);
        QVERIFY(writable.setlocale("en"));
        QCOMPARE(readOnly.locale(), QString("en"));
    }

    void otherValues()
    {
        const InitConfig defaults("/a/b/c", false);
        QCOMPARE(defaults.loggerPath(), QString("/a/log"));
        QCOMPARE(defaults.runPath(), QString("/a/run"));
        QCOMPARE(defaults.versionsPath(), QString("/a/versions"));
        QCOMPARE(defaults.translationsPath(), QString("/a/translations"));
        QCOMPARE(defaults.keepLogs(), 30);
        QCOMPARE(defaults.rotateLogs(), true);
        QCOMPARE(defaults.keepLogsHandlers(), QStringList());
        QCOMPARE(defaults.cleanAnyOldLogs(), false);
        QCOMPARE(defaults.locale(), QString());

        const InitConfig config(
            newConfiguration("keepLogs=3\nrotateLogs=false\nkeepLogsHandlers=a, b\n"
                             "cleanAnyOldLogs=true\nlocale=ru\n"),
            false);
        QCOMPARE(config.keepLogs(), 3);
        QCOMPARE(config.rotateLogs(), false);
        QCOMPARE(config.keepLogsHandlers(), QStringList({"a", "b"}));
        QCOMPARE(config.cleanAnyOldLogs(), true);
        QCOMPARE(config.locale(), QString("ru"));
    }

    void operationsKeepTheirSlots()
    {
        const QList<int> slots{
            vtableSlot(&InitConfig::settingsFileName), vtableSlot(&InitConfig::value),
            vtableSlot(&InitConfig::setValue),         vtableSlot(&InitConfig::workDir),
            vtableSlot(&InitConfig::loggerPath),       vtableSlot(&InitConfig::runPath),
            vtableSlot(&InitConfig::keepLogs),         vtableSlot(&InitConfig::rotateLogs),
            vtableSlot(&InitConfig::keepLogsHandlers), vtableSlot(&InitConfig::cleanAnyOldLogs),
            vtableSlot(&InitConfig::versionsPath),     vtableSlot(&InitConfig::translationsPath),
            vtableSlot(&InitConfig::locale),           vtableSlot(&InitConfig::setlocale),
        };
        for (int row = 0; row < slots.size(); ++row)
            QCOMPARE(slots.at(row), row + 2);
    }

    void directoryIsCreatedWithItsParents()
    {
        const QString path = m_folder.filePath("one/two/три");
        const QFileDevice::Permissions mine =
            QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
        QVERIFY(DirCreator::checkAndCreate(path, mine));
        QVERIFY(QFileInfo(path).isDir());
        QCOMPARE(int(QFileInfo(path).permissions()) & 0x7077, 0x7000);
    }

    void existingDirectoryKeepsItsPermissions()
    {
        const QString path = m_folder.filePath("existing");
        QVERIFY(QDir().mkdir(path));
        const QFileDevice::Permissions before = QFileInfo(path).permissions();
        QVERIFY(DirCreator::checkAndCreate(path, QFileDevice::ReadOwner));
        QCOMPARE(QFileInfo(path).permissions(), before);
    }

    void permissionsForAllUsers() { QCOMPARE(int(DirCreator::DEFAULT_ALL), 0x7777); }

    void failureIsLoggedOncePerPath()
    {
        const QString obstacle = newConfiguration(QByteArray());
        const QString path = obstacle + "/folder";
        QTest::ignoreMessage(
            QtWarningMsg, qPrintable("Can't create the directory " + path + ": Not a directory"));
        QVERIFY(!DirCreator::checkAndCreate(path, DirCreator::DEFAULT_ALL));

        const LogCatcher log;
        QVERIFY(!DirCreator::checkAndCreate(path, DirCreator::DEFAULT_ALL));
        QCOMPARE(log.lines(), QStringList());
        DirCreator::checkAndCreate(path + "2", DirCreator::DEFAULT_ALL);
        QCOMPARE(log.lines("default warning ").size(), 1);
    }

    void failuresOfManyThreadsAreLoggedOncePerPath()
    {
        constexpr int paths = 50;
        const QString obstacle = newConfiguration(QByteArray());
        std::atomic<int> wrong{0};
        const LogCatcher log;
        runOnThreads(4, [&](int) {
            for (int number = 0; number < paths; ++number)
                wrong += DirCreator::checkAndCreate(QString("%1/%2").arg(obstacle).arg(number),
                                                    DirCreator::DEFAULT_ALL);
        });
        QCOMPARE(wrong.load(), 0);
        QCOMPARE(log.lines("default warning ").size(), paths);
    }

    void threadsMayCreateOneDirectory()
    {
        const QString path = m_folder.filePath("shared/by/all");
        std::atomic<int> wrong{0};
        runOnThreads(
            4, [&](int) { wrong += !DirCreator::checkAndCreate(path, DirCreator::DEFAULT_ALL); });
        QCOMPARE(wrong.load(), 0);
        QVERIFY(QFileInfo(path).isDir());
    }

    void emptyPathIsAFailure()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Can't create the directory : .+"));
        QVERIFY(!DirCreator::checkAndCreate(QString(), DirCreator::DEFAULT_ALL));
    }
};

QTEST_APPLESS_MAIN(TestInitConfig)
#include "tst_initconfig.moc"
