// Where --output writes, and what others may have put there.
#include <sys/stat.h>
#include <unistd.h>

#include <QtTest>

#include "receiptprogram.h"

namespace {

constexpr uid_t nobody = 65534;

ReceiptRun renderTo(const QString &output)
{
    return runReceipt({"render", example("cafe.cpt"), example("cafe.json"), "--output", output});
}

ReceiptRun previewTo(const QString &output)
{
    return runReceipt({"preview", example("cafe.cpt"), example("cafe.json"), "--output", output});
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode : 0;
}

void giveAway(const QString &link)
{
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), nobody, nobody), 0);
}

}  // namespace

class TestReceiptOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linkOfAnotherUserIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("chained");
        QTest::newRow("text") << "out.txt" << false;
        QTest::newRow("text, behind an own link") << "out.txt" << true;
        QTest::newRow("picture") << "out.png" << false;
        QTest::newRow("drawing") << "out.svg" << false;
        QTest::newRow("picture, behind an own link") << "out.png" << true;
    }

    void linkOfAnotherUserIsRefused()
    {
        if (::geteuid() != 0)
            QSKIP("only root gives links away");
        QFETCH(const QString, name);
        QFETCH(const bool, chained);
        const WorkFolder folder;
        const QString victim = folder.file("victim", "precious");
        const QString trap = folder.path(chained ? "trap" : name);
        QVERIFY(QFile::link(victim, trap));
        giveAway(trap);
        if (chained)
            QVERIFY(QFile::link(trap, folder.path(name)));
        const QString output = folder.path(name);
        const ReceiptRun run = name.endsWith(".txt") ? renderTo(output) : previewTo(output);
        QCOMPARE(run.errors,
                 "receipt: " + output + ": a symbolic link of the user nobody isn't followed\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.content("victim"), QByteArray("precious"));
        QVERIFY(S_ISLNK(modeOf(trap)));
        QCOMPARE(QDir(folder.path("."))
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                     .size(),
                 chained ? 3 : 2);
    }

    void folderBehindALinkOfAnotherUserIsRefused_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("folder") << "today/out.txt";
        QTest::newRow("folder above") << "today/inner/out.txt";
        QTest::newRow("up again") << "today/../own/out.txt";
        QTest::newRow("new file") << "today/new.txt";
        QTest::newRow("behind an own link") << "link/out.txt";
    }

    void folderBehindALinkOfAnotherUserIsRefused()
    {
        if (::geteuid() != 0)
            QSKIP("only root gives links away");
        QFETCH(const QString, way);
        const WorkFolder folder;
        QVERIFY(QDir(folder.path(".")).mkpath("own/inner"));
        const QString victim = folder.file("own/out.txt", "precious");
        const QString inner = folder.file("own/inner/out.txt", "precious");
        const QString trap = folder.path("today");
        QVERIFY(QFile::link(folder.path("own"), trap));
        QVERIFY(QFile::link(trap, folder.path("link")));
        giveAway(trap);
        const ReceiptRun run = renderTo(folder.path(way));
        QCOMPARE(run.errors, "receipt: " + folder.path(way) +
                                 ": a symbolic link of the user nobody isn't followed: " + trap +
                                 "\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.content("own/out.txt"), QByteArray("precious"));
        QCOMPARE(folder.content("own/inner/out.txt"), QByteArray("precious"));
        QVERIFY(!QFile::exists(folder.path("own/new.txt")));
    }

    void folderBehindAnOwnLinkIsWrittenTo_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("written");
        QTest::newRow("folder") << "link/out.txt"
                                << "own/inner/out.txt";
        QTest::newRow("up from where the link leads") << "link/../out.txt"
                                                      << "own/out.txt";
        QTest::newRow("double slash and dot") << "link//./out.txt"
                                              << "own/inner/out.txt";
    }

    void folderBehindAnOwnLinkIsWrittenTo()
    {
        QFETCH(const QString, way);
        QFETCH(const QString, written);
        const WorkFolder folder;
        QVERIFY(QDir(folder.path(".")).mkpath("own/inner"));
        QCOMPARE(::symlink("own/inner", QFile::encodeName(folder.path("link")).constData()), 0);
        const ReceiptRun run = renderTo(folder.path(".") + "/" + way);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(!folder.content(written).isEmpty());
    }

    void linkOfAnotherUserInAFolderOfPicturesIsRefused()
    {
        if (::geteuid() != 0)
            QSKIP("only root gives links away");
        const WorkFolder folder;
        const QString victim = folder.file("victim", "precious");
        const QString trap = folder.path("CUSTOM_VKP_80.png");
        QVERIFY(QFile::link(victim, trap));
        giveAway(trap);
        const ReceiptRun run = runReceipt({"preview", example("cafe.cpt"), example("cafe.json"),
                                           "--all-models", folder.path(".")});
        QCOMPARE(run.status, 1);
        QVERIFY(run.errors.contains("a symbolic link of the user nobody isn't followed"));
        QCOMPARE(folder.content("victim"), QByteArray("precious"));
    }

    void ownLinkIsFollowed_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("beside it") << "target";
        QTest::newRow("through another folder") << "sub/../target";
        QTest::newRow("by way of another link") << "second";
    }

    void ownLinkIsFollowed()
    {
        QFETCH(const QString, target);
        const WorkFolder folder;
        QVERIFY(QDir(folder.path(".")).mkdir("sub"));
        folder.file("target", "old");
        QCOMPARE(::symlink("target", QFile::encodeName(folder.path("second")).constData()), 0);
        QCOMPARE(::symlink(QFile::encodeName(target).constData(),
                           QFile::encodeName(folder.path("out")).constData()),
                 0);
        const ReceiptRun run = renderTo(folder.path("out"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(S_ISLNK(modeOf(folder.path("out"))));
        QVERIFY(S_ISREG(modeOf(folder.path("target"))));
        QVERIFY(folder.content("target").size() > 3);
    }

    void ownLinkToNothingMakesTheFile()
    {
        const WorkFolder folder;
        QVERIFY(QFile::link(folder.path("target"), folder.path("out")));
        QCOMPARE(renderTo(folder.path("out")).status, 0);
        QVERIFY(folder.content("target").size() > 3);
    }

    void linksInACircleEnd()
    {
        const WorkFolder folder;
        QVERIFY(QFile::link(folder.path("b"), folder.path("a")));
        QVERIFY(QFile::link(folder.path("a"), folder.path("b")));
        const ReceiptRun run = renderTo(folder.path("a"));
        QCOMPARE(run.errors,
                 "receipt: " + folder.path("a") + ": Too many levels of symbolic links\n");
        QCOMPARE(run.status, 1);
    }

    void whatIsNoFileIsRefused()
    {
        const WorkFolder folder;
        const QString output = folder.path("out");
        QCOMPARE(::mkfifo(QFile::encodeName(output).constData(), S_IRUSR | S_IWUSR), 0);
        const ReceiptRun run = renderTo(output);
        QCOMPARE(run.errors, "receipt: " + output + ": is there already and is no regular file\n");
        QCOMPARE(run.status, 1);
        QVERIFY(S_ISFIFO(modeOf(output)));
        QVERIFY(QDir(folder.path(".")).mkdir("folder"));
        QCOMPARE(renderTo(folder.path("folder")).status, 1);
        QVERIFY(S_ISDIR(modeOf(folder.path("folder"))));
    }

    void fileThatIsReplacedKeepsItsMode_data()
    {
        QTest::addColumn<uint>("mode");
        for (const uint mode : {0600u, 0640u, 0664u, 0755u})
            QTest::addRow("mode %o", mode) << mode;
    }

    void fileThatIsReplacedKeepsItsMode()
    {
        QFETCH(const uint, mode);
        const WorkFolder folder;
        const QString output = folder.file("out", "old");
        QCOMPARE(::chmod(QFile::encodeName(output).constData(), mode), 0);
        QCOMPARE(renderTo(output).status, 0);
        QCOMPARE(modeOf(output) & 07777, mode);
        QVERIFY(folder.content("out").size() > 3);
    }

    void newFileHasTheModeOfTheUmask()
    {
        const WorkFolder folder;
        const mode_t before = ::umask(0027);
        const ReceiptRun run = renderTo(folder.path("out"));
        ::umask(before);
        QCOMPARE(run.status, 0);
        QCOMPARE(modeOf(folder.path("out")) & 07777, 0640u);
    }

    void nothingIsLeftBesideTheFile()
    {
        const WorkFolder folder;
        QCOMPARE(renderTo(folder.path("out")).status, 0);
        QCOMPARE(previewTo(folder.path("out.svg")).status, 0);
        const ReceiptRun missing = renderTo(folder.path("missing/out"));
        QCOMPARE(missing.errors,
                 "receipt: " + folder.path("missing/out") + ": No such file or directory\n");
        QCOMPARE(QDir(folder.path("."))
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 (QStringList{"out", "out.svg"}));
    }

    void longestNameIsWritten()
    {
        const WorkFolder folder;
        const QString name(255, 'n');
        QCOMPARE(renderTo(folder.path(name)).status, 0);
        QVERIFY(folder.content(name).size() > 3);
    }
};

QTEST_GUILESS_MAIN(TestReceiptOutput)
#include "tst_receipt_output.moc"
