#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int status = -1;
    QString error;
};

Run runWith(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(GLYPH_BITMAPS), arguments);
    if (!process.waitForFinished())
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardError())};
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString font = QStringLiteral(GLYPH_FONT);
const QString ours = QStringLiteral(GLYPHS);  // what the library was built with

}  // namespace

/// The program that draws the letters of pictures when the library is built.
class TestGlyphBitmaps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachRunGivesTheSameFiles()
    {
        const QTemporaryDir folder;
        QCOMPARE(runWith({font, folder.path()}).status, 0);
        const QStringList names = QDir(folder.path()).entryList(QDir::Files);
        QVERIFY(names.contains(QStringLiteral("9x17")));
        QVERIFY(names.contains(QStringLiteral("glyphs.qrc")));
        for (const QString &name : names)
            QCOMPARE(contentOf(folder.filePath(name)), contentOf(ours + u'/' + name));
    }

    void aFontThatIsNotThereIsNamedWithItsPackage()
    {
        const QTemporaryDir folder;
        const QString absent = folder.filePath(QStringLiteral("absent.ttf"));
        const Run run = runWith({absent, folder.path()});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains(absent), qPrintable(run.error));
        QVERIFY2(run.error.contains(QStringLiteral("fonts-dejavu-core")), qPrintable(run.error));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void aFileThatIsNoFontIsNamed()
    {
        const QTemporaryDir folder;
        const QString path = QStringLiteral(__FILE__);
        const Run run = runWith({path, folder.path()});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains(path), qPrintable(run.error));
    }

    void aFolderThatIsNotThereIsNamed()
    {
        const Run run = runWith({font, QStringLiteral("/absent/folder")});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains(QStringLiteral("/absent/folder")), qPrintable(run.error));
    }

    void wrongArgumentsAreToldWithTheRightOnes()
    {
        for (const QStringList &arguments : {QStringList(), QStringList({font})}) {
            const Run run = runWith(arguments);
            QCOMPARE(run.status, 1);
            QVERIFY2(run.error.contains(QStringLiteral("FONT FOLDER")), qPrintable(run.error));
        }
    }
};

QTEST_GUILESS_MAIN(TestGlyphBitmaps)
#include "tst_glyphbitmaps.moc"
