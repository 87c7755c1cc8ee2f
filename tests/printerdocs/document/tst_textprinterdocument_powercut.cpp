// What a document file holds after the power goes in the middle of a save.
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>
#include <cstdio>
#include <cstring>
#include <memory>

#include "documentfiles.h"

using namespace documentfiles;

namespace {

/// A program that a save ran, and the document's files at that moment.
struct Step
{
    QString program;
    Folder folder;
};

/// Saves the new document and records the steps. Each program copies the folder before its work.
QList<Step> recordSave(const Programs &programs, const QString &path)
{
    const QTemporaryDir records;
    const QByteArray record = "cp -a '" + QFileInfo(path).path().toUtf8() + "' \"" +
                              records.path().toUtf8() + "/$(ls '" + records.path().toUtf8() +
                              "' | wc -l)-%1\"\n";
    const QByteArray checksum = QStandardPaths::findExecutable("sha1sum").toUtf8();
    programs.add("sync", QByteArray(record).replace("%1", "sync"));
    programs.add("sha1sum",
                 QByteArray(record).replace("%1", "sha1sum") + "exec " + checksum + " \"$1\"");
    newDocument.saveToFile(path);
    programs.remove("sha1sum");
    programs.add("sync", ":");

    QList<Step> steps;
    const QDir folder(records.path());
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString recorded = folder.filePath(name) + "/" + QFileInfo(path).fileName();
        steps.append({name.section('-', 1), readFolder(recorded)});
    }
    return steps;
}

/// The corners of what a write of `to` over `from` may leave on a disk whose power is cut: the old
/// content, nothing, a part, the new content, and its length with nothing or garbage in it. A null
/// array means that there is no file.
QList<QByteArray> cornersOfTornWrites(const QByteArray &from, const QByteArray &to)
{
    const int half = to.size() / 2;
    return {from,
            QByteArray(""),
            to.left(half),
            to,
            QByteArray(to.size(), '\0'),
            QByteArray(to.size(), '5'),
            to.left(half) + QByteArray(to.size() - half, '\0')};
}

/// The corners, and each length of the new content.
QList<QByteArray> tornWrites(const QByteArray &from, const QByteArray &to)
{
    QList<QByteArray> contents = cornersOfTornWrites(from, to);
    for (int length = 1; length < to.size(); ++length)
        contents.append(to.left(length));
    return contents;
}

bool put(const QString &fileName, const QByteArray &content)
{
    if (content.isNull())
        return !QFile::exists(fileName) || QFile::remove(fileName);
    return writeFile(fileName, content);
}

enum Outcome { LoadedOld, LoadedNew, LoadedNothing, Mixture };

Outcome outcomeOfLoad(const QString &path)
{
    TextPrinterDocument document = before;
    const bool loaded = document.loadFromFile(path);
    if (loaded && document == oldDocument)
        return LoadedOld;
    if (loaded && document == newDocument)
        return LoadedNew;
    return !loaded && document == before ? LoadedNothing : Mixture;
}

/// What loads give when the power goes anywhere between two syncs. In that time a copy and its
/// checksum file are written; each may be in any torn state, whatever the order of their writes.
QSet<int> outcomesBetween(const Folder &from, const Folder &to, const QString &copySuffix,
                          const QString &path)
{
    QSet<int> outcomes;
    writeFolder(path, from);
    const auto loadAll = [&](const QString &everyState, const QString &corners) {
        for (const QByteArray &corner :
             cornersOfTornWrites(from.value(corners), to.value(corners))) {
            put(path + corners, corner);
            for (const QByteArray &state :
                 tornWrites(from.value(everyState), to.value(everyState))) {
                put(path + everyState, state);
                outcomes.insert(outcomeOfLoad(path));
            }
        }
    };
    loadAll(copySuffix, copySuffix + ".sha1");
    loadAll(copySuffix + ".sha1", copySuffix);
    return outcomes;
}

/// A process of its own group, so that a kill takes the programs it runs with it, as a power cut
/// does.
class Saver : public QProcess
{
public:
    explicit Saver(const QString &path)
    {
        start(QCoreApplication::applicationFilePath(), {"--save", path});
    }

    /// Waits until the process has written a line; false if it ends before.
    bool waitForLine(const QByteArray &line)
    {
        while (!m_written.contains(line + "\n")) {
            if (!waitForReadyRead(-1))
                return false;
            m_written += readAllStandardOutput();
        }
        return true;
    }

    /// Ends the whole group and waits until all of it is gone.
    void cutPower()
    {
        const auto group = static_cast<pid_t>(processId());
        ::kill(-group, SIGKILL);
        waitForFinished(-1);
        while (::waitpid(-group, nullptr, 0) > 0) {
        }
    }

protected:
    void setupChildProcess() override { ::setpgid(0, 0); }

private:
    QByteArray m_written;
};

/// Runs in the process that is killed.
int saveOnce(const QString &path)
{
    std::puts("ready");
    std::fflush(stdout);
    newDocument.saveToFile(path);
    std::puts("saved");
    std::fflush(stdout);
    for (;;)
        ::pause();
}

}  // namespace

class TestTextPrinterDocumentPowerCut : public QObject
{
    Q_OBJECT

    std::unique_ptr<Programs> m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

private Q_SLOTS:
    void init()
    {
        m_programs = std::make_unique<Programs>();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_path = m_folder->filePath("r");
    }

    void cleanup()
    {
        m_programs.reset();
        m_folder.reset();
    }

    void primaryIsOnTheDiskBeforeTheBackupIsTouched()
    {
        QVERIFY(oldDocument.saveToFile(m_path));
        const Folder old = readFolder(m_path);
        const QList<Step> steps = recordSave(*m_programs, m_path);
        const Folder saved = readFolder(m_path);
        QCOMPARE(steps.size(), 4);

        Folder expected = old;
        expected[""] = saved[""];
        expected[".sha1"] = "";
        QCOMPARE(steps.at(0).program, QString("sha1sum"));
        QCOMPARE(steps.at(0).folder, expected);

        expected[".sha1"] = saved[".sha1"];
        QCOMPARE(steps.at(1).program, QString("sync"));
        QCOMPARE(steps.at(1).folder, expected);

        expected[".bak"] = saved[".bak"];
        expected[".bak.sha1"] = "";
        QCOMPARE(steps.at(2).program, QString("sha1sum"));
        QCOMPARE(steps.at(2).folder, expected);

        QCOMPARE(steps.at(3).program, QString("sync"));
        QCOMPARE(steps.at(3).folder, saved);
    }

    void tornWritesLoadTheOldOrTheNewDocument_data()
    {
        QTest::addColumn<QStringList>("damaged");
        QTest::addColumn<int>("fallback");
        QTest::newRow("over two good copies") << QStringList{} << int(LoadedOld);
        QTest::newRow("over a damaged primary") << QStringList{""} << int(LoadedOld);
        QTest::newRow("over a primary without checksum") << QStringList{".sha1"} << int(LoadedOld);
        QTest::newRow("where nothing was") << suffixes << int(LoadedNothing);
    }

    void tornWritesLoadTheOldOrTheNewDocument()
    {
        QFETCH(const QStringList, damaged);
        QFETCH(const int, fallback);
        if (damaged != suffixes)
            QVERIFY(oldDocument.saveToFile(m_path));
        for (const QString &suffix : damaged) {
            if (damaged != suffixes)
                QVERIFY(writeFile(m_path + suffix, "damaged"));
        }
        const Folder start = readFolder(m_path);
        const QList<Step> steps = recordSave(*m_programs, m_path);
        QCOMPARE(steps.size(), 4);
        const Folder primarySynced = steps.at(1).folder;
        const Folder saved = steps.at(3).folder;
        QCOMPARE(outcomesBetween(start, primarySynced, "", m_path),
                 (QSet<int>{fallback, LoadedNew}));
        QCOMPARE(outcomesBetween(primarySynced, saved, ".bak", m_path), QSet<int>{LoadedNew});
    }

    void secondCutBeforeTheBackupIsRewrittenMayLeaveNoCopy()
    {
        // Nothing but a whole save or "receipt document repair" mends a backup that a power cut
        // broke. Until then the primary is the only copy, and the next save truncates it first.
        QVERIFY(oldDocument.saveToFile(m_path));
        QVERIFY(writeFile(m_path + ".bak", "cut off"));
        const Folder start = readFolder(m_path);
        QCOMPARE(int(outcomeOfLoad(m_path)), int(LoadedOld));
        const QList<Step> steps = recordSave(*m_programs, m_path);
        QCOMPARE(steps.size(), 4);
        QCOMPARE(outcomesBetween(start, steps.at(1).folder, "", m_path),
                 (QSet<int>{LoadedOld, LoadedNew, LoadedNothing}));
        QCOMPARE(outcomesBetween(steps.at(1).folder, steps.at(3).folder, ".bak", m_path),
                 QSet<int>{LoadedNew});
    }

    void cutDuringARemovalLoadsTheDocumentOrNothing()
    {
        QVERIFY(oldDocument.saveToFile(m_path));
        const Folder saved = readFolder(m_path);
        for (int left = 0; left < 16; ++left) {
            Folder folder;
            for (int file = 0; file < suffixes.size(); ++file) {
                if ((left >> file & 1) != 0)
                    folder.insert(suffixes.at(file), saved.value(suffixes.at(file)));
            }
            QVERIFY(writeFolder(m_path, folder));
            const bool hasCopy = (left & 3) == 3 || (left & 12) == 12;
            QCOMPARE(int(outcomeOfLoad(m_path)), int(hasCopy ? LoadedOld : LoadedNothing));
        }
    }

    void killedSaverLeavesTheOldOrTheNewDocument()
    {
        QVERIFY(oldDocument.saveToFile(m_path));
        const Folder old = readFolder(m_path);
        QRandomGenerator random(20260301);
        QMap<int, int> counts;
        // The length of a save changes with the load of the machine, so it is measured between the
        // kills as well.
        constexpr int rounds = 120;
        constexpr int roundsPerMeasurement = 20;
        double length = 0.0;
        for (int round = 0; round < rounds; ++round) {
            if (round % roundsPerMeasurement == 0)
                length = microsecondsOfASave();
            QVERIFY(length > 0.0);
            QVERIFY(writeFolder(m_path, old));
            Saver saver(m_path);
            QVERIFY(saver.waitForLine("ready"));
            QThread::usleep(static_cast<unsigned long>(random.bounded(1.2 * length)));
            saver.cutPower();
            const Outcome outcome = outcomeOfLoad(m_path);
            QVERIFY2(outcome == LoadedOld || outcome == LoadedNew,
                     qPrintable(QString("round %1: outcome %2").arg(round).arg(outcome)));
            ++counts[outcome];
        }
        qInfo("%d kills left the old document, %d the new one", counts[LoadedOld],
              counts[LoadedNew]);
        QVERIFY(counts[LoadedOld] > 0);
        QVERIFY(counts[LoadedNew] > 0);
    }

private:
    /// From the moment when a saver is ready until it has saved.
    double microsecondsOfASave() const
    {
        Saver saver(m_path);
        if (!saver.waitForLine("ready"))
            return 0.0;
        QElapsedTimer timer;
        timer.start();
        const bool saved = saver.waitForLine("saved");
        const double length = double(timer.nsecsElapsed()) / 1000.0;
        saver.cutPower();
        return saved ? length : 0.0;
    }
};

int main(int argc, char *argv[])
{
    if (argc == 3 && std::strcmp(argv[1], "--save") == 0)
        return saveOnce(QFile::decodeName(argv[2]));
    // The programs that a killed saver ran become children of this process, which waits for them.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    const QCoreApplication application(argc, argv);
    TestTextPrinterDocumentPowerCut test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_textprinterdocument_powercut.moc"
