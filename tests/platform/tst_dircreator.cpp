// Folders that are made where other users may write, too.
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtTest>
#include <functional>

#include "hearth/dircreator.h"

using hearth::DirCreator;

namespace {

/// What another user does as soon as a folder is made; nothing by default.
std::function<void(const char *path)> intruder;

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return 0;
    return status.st_mode & 07777;
}

}  // namespace

/// In place of the system's, which it calls: the moment behind it is the one that an attacker uses.
extern "C" Q_DECL_EXPORT int mkdir(const char *path, mode_t mode) noexcept
{
    const auto real = reinterpret_cast<int (*)(const char *, mode_t)>(dlsym(RTLD_NEXT, "mkdir"));
    const int result = real(path, mode);
    if (result == 0 && intruder)
        intruder(path);
    return result;
}

class TestDirCreator : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    int m_number = 0;
    QString m_path;

private Q_SLOTS:
    void init() { m_path = m_folder.filePath(QString("new%1").arg(++m_number)); }
    void cleanup() { intruder = nullptr; }

    void newFolderHasTheModeWhateverTheUmask_data()
    {
        QTest::addColumn<int>("permissions");
        QTest::addColumn<uint>("mode");
        QTest::newRow("all, and sticky") << 0x7777 << 01777u;
        QTest::newRow("own") << 0x7000 << 0700u;
        QTest::newRow("own, as user") << 0x0700 << 0700u;
        QTest::newRow("group reads") << 0x7050 << 0750u;
        QTest::newRow("group and others read") << 0x7055 << 0755u;
        QTest::newRow("others write, but not all") << 0x7773 << 0773u;
        QTest::newRow("none") << 0 << 0u;
    }

    void newFolderHasTheModeWhateverTheUmask()
    {
        QFETCH(const int, permissions);
        QFETCH(const uint, mode);
        for (const mode_t mask : {0000, 0022, 0077, 0177}) {
            init();
            const mode_t before = ::umask(mask);
            const bool made =
                DirCreator::checkAndCreate(m_path, QFileDevice::Permissions(permissions));
            ::umask(before);
            QVERIFY(made);
            QCOMPARE(modeOf(m_path), mode);
        }
    }

    void newFolderIsNobodyElsesBeforeItHasItsMode()
    {
        mode_t modeAtFirst = 07777;
        intruder = [&modeAtFirst](const char *path) {
            modeAtFirst = modeOf(QFile::decodeName(path));
        };
        QVERIFY(DirCreator::checkAndCreate(m_path, QFileDevice::ReadOwner));
        QCOMPARE(modeAtFirst & 077, 0u);
        QCOMPARE(modeOf(m_path), 0400u);
    }

    void modeOfAFolderThatALinkLeadsToStays()
    {
        const QString victim = m_path + ".victim";
        QVERIFY(QDir().mkdir(victim));
        QCOMPARE(::chmod(QFile::encodeName(victim).constData(), 0700), 0);
        intruder = [victim](const char *path) {
            ::rmdir(path);
            QVERIFY(::symlink(QFile::encodeName(victim).constData(), path) == 0);
        };
        DirCreator::checkAndCreate(m_path, DirCreator::DEFAULT_ALL);
        QVERIFY(QFileInfo(m_path).isSymLink());
        QCOMPARE(modeOf(victim), 0700u);
    }

    void modeOfAFileThatALinkLeadsToStays()
    {
        const QString victim = m_path + ".victim";
        QFile file(victim);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(::chmod(QFile::encodeName(victim).constData(), 0600), 0);
        intruder = [victim](const char *path) {
            ::rmdir(path);
            QVERIFY(::symlink(QFile::encodeName(victim).constData(), path) == 0);
        };
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Can't create the directory "));
        QVERIFY(!DirCreator::checkAndCreate(m_path, DirCreator::DEFAULT_ALL));
        QCOMPARE(modeOf(victim), 0600u);
    }

    void folderOfAnotherUserKeepsItsMode()
    {
        if (::geteuid() != 0)
            QSKIP("only root gives folders away");
        intruder = [](const char *path) { QCOMPARE(::chown(path, 65534, 65534), 0); };
        QVERIFY(DirCreator::checkAndCreate(m_path, DirCreator::DEFAULT_ALL));
        QCOMPARE(modeOf(m_path), 0700u);
    }

    void linkToNothingIsNotFollowed()
    {
        const QString target = m_path + ".target";
        QVERIFY(QFile::link(target, m_path));
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable("Can't create the directory " + m_path + ": File exists"));
        QVERIFY(!DirCreator::checkAndCreate(m_path, DirCreator::DEFAULT_ALL));
        QVERIFY(!QFileInfo::exists(target));
    }

    void linkToAFolderIsThatFolder()
    {
        const QString target = m_path + ".target";
        QVERIFY(QDir().mkdir(target));
        const mode_t before = modeOf(target);
        QVERIFY(QFile::link(target, m_path));
        QVERIFY(DirCreator::checkAndCreate(m_path, DirCreator::DEFAULT_ALL));
        QVERIFY(DirCreator::checkAndCreate(m_path + "/below", QFileDevice::ReadOwner));
        QCOMPARE(modeOf(target), before);
        QCOMPARE(modeOf(target + "/below"), 0400u);
    }

    void parentsAreMadeAndTheLastAloneHasTheMode_data()
    {
        QTest::addColumn<QString>("below");
        QTest::newRow("plain") << "/a/b";
        QTest::newRow("slash behind it") << "/a/b/";
        QTest::newRow("slashes") << "//a///b//";
        QTest::newRow("itself") << "/a/b/.";
        QTest::newRow("itself, again and again") << "/a/b/././";
        QTest::newRow("blanks and letters") << QString::fromUtf8("/a/b и c");
    }

    void parentsAreMadeAndTheLastAloneHasTheMode()
    {
        QFETCH(const QString, below);
        const mode_t before = ::umask(0027);
        const bool made = DirCreator::checkAndCreate(m_path + below, DirCreator::DEFAULT_ALL);
        ::umask(before);
        QVERIFY(made);
        QCOMPARE(modeOf(QDir::cleanPath(m_path + below)), 01777u);
        QCOMPARE(modeOf(m_path + "/a"), 0750u);
        QCOMPARE(modeOf(m_path), 0750u);
    }

    void pathThatEndsAboveItselfIsMade()
    {
        QVERIFY(DirCreator::checkAndCreate(m_path + "/a/b/..", DirCreator::DEFAULT_ALL));
        QVERIFY(QFileInfo(m_path + "/a/b").isDir());
        QVERIFY(DirCreator::checkAndCreate("/", QFileDevice::ReadOwner));
        QVERIFY(DirCreator::checkAndCreate(".", QFileDevice::ReadOwner));
    }

    void relativePathIsMadeInTheCurrentFolder()
    {
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder.path()));
        const bool made = DirCreator::checkAndCreate("relative", QFileDevice::ReadOwner);
        QVERIFY(QDir::setCurrent(current));
        QVERIFY(made);
        QCOMPARE(modeOf(m_folder.filePath("relative")), 0400u);
    }

    void folderThatAnotherMakesInBetweenIsLeftAsItIs()
    {
        // The parent is made first; whoever makes the folder then wins.
        intruder = [this](const char *path) {
            if (QFile::decodeName(path) == m_path)
                QVERIFY(QDir().mkdir(m_path + "/b"));
        };
        QVERIFY(DirCreator::checkAndCreate(m_path + "/b", QFileDevice::ReadOwner));
        QVERIFY((modeOf(m_path + "/b") & 0700) == 0700);
    }
};

QTEST_APPLESS_MAIN(TestDirCreator)
#include "tst_dircreator.moc"
