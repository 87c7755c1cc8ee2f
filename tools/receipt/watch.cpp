#include "watch.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHash>
#include <QSocketNotifier>
#include <QTimer>
#include <csignal>
#include <cstdio>

#include "support.h"
#include "terminaltext.h"

namespace {

// An editor's save is several changes; they are over long before this.
constexpr int settleMilliseconds = 100;
// How often to look for a file that is gone, should its folder not tell of its return.
constexpr int missingMilliseconds = 500;

/// Makes Ctrl+C and termination leave the event loop instead of killing the program, for as long as
/// the object lives.
class QuitOnSignals
{
public:
    QuitOnSignals()
    {
        sigemptyset(&m_signals);
        sigaddset(&m_signals, SIGINT);
        sigaddset(&m_signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &m_signals, &m_previous);
        m_descriptor = signalfd(-1, &m_signals, SFD_CLOEXEC | SFD_NONBLOCK);
        if (m_descriptor < 0)
            return;
        m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, &m_owner);
        QObject::connect(m_notifier, &QSocketNotifier::activated, &m_owner, [this] {
            signalfd_siginfo taken{};
            if (::read(m_descriptor, &taken, sizeof taken) > 0)
                QCoreApplication::quit();
        });
    }
    ~QuitOnSignals()
    {
        delete m_notifier;
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        sigprocmask(SIG_SETMASK, &m_previous, nullptr);
    }
    QuitOnSignals(const QuitOnSignals &) = delete;
    QuitOnSignals &operator=(const QuitOnSignals &) = delete;

private:
    QObject m_owner;
    QSocketNotifier *m_notifier = nullptr;
    sigset_t m_signals{};
    sigset_t m_previous{};
    int m_descriptor = -1;
};

/// Lets Ctrl+C and termination kill the program, for as long as the object lives: a run may take
/// long, or never end.
class KillOnSignals
{
public:
    KillOnSignals()
    {
        sigset_t signals{};
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        sigprocmask(SIG_UNBLOCK, &signals, &m_previous);
    }
    ~KillOnSignals() { sigprocmask(SIG_SETMASK, &m_previous, nullptr); }
    KillOnSignals(const KillOnSignals &) = delete;
    KillOnSignals &operator=(const KillOnSignals &) = delete;

private:
    sigset_t m_previous{};
};

/// The file that a name stands for; see WatchedRun.
QFileInfo fileOf(const QString &name)
{
    const QFileInfo file(name);
    if (!name.endsWith(QLatin1Char('*')))
        return file;
    const QFileInfoList files =
        file.dir().entryInfoList({file.fileName()}, QDir::Files, QDir::Name);
    return files.isEmpty() ? file : files.constFirst();
}

class Watch
{
public:
    Watch(const QStringList &fileNames, const std::function<tool::WatchedRun()> &run)
        : m_fileNames(fileNames), m_run(run)
    {
        m_settled.setSingleShot(true);
        QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_settled,
                         [this](const QString &) { await(true); });
        QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settled,
                         [this](const QString &) { await(false); });
        QObject::connect(&m_settled, &QTimer::timeout, &m_settled, [this] { look(); });
    }

    int exec()
    {
        // What changes during the first run is a change, too.
        watchAll();
        m_stamps = stamps();
        runOnce();
        terminaltext::writeLine(
            stderr,
            QStringLiteral("Watching %1; Ctrl+C ends.").arg(allNames().join(QStringLiteral(", "))));
        look();
        QCoreApplication::exec();
        return m_status;
    }

private:
    void runOnce()
    {
        const KillOnSignals killed;
        const tool::WatchedRun run = m_run();
        m_status = run.status;
        m_companions = run.companions;
        // What a run names for the first time is known in its present state only.
        QHash<QString, QString> now = stamps();
        for (auto stamp = now.begin(); stamp != now.end(); ++stamp)
            stamp.value() = m_stamps.value(stamp.key(), stamp.value());
        m_stamps = now;
    }

    QStringList allNames() const { return m_fileNames + m_companions; }

    void await(bool changed)
    {
        m_changed = m_changed || changed;
        m_settled.start(settleMilliseconds);
    }

    /// The watcher drops a file that was removed or renamed, so all are handed to it each time.
    void watchAll()
    {
        QStringList paths;
        const QStringList names = allNames();
        for (const QString &name : names) {
            const QFileInfo file = fileOf(name);
            if (file.exists())
                paths.append(file.absoluteFilePath());
            if (QFileInfo::exists(file.absolutePath()))
                paths.append(file.absolutePath());
        }
        const QStringList watched = m_watcher.files() + m_watcher.directories();
        for (const QString &path : watched)
            paths.removeAll(path);
        paths.removeDuplicates();
        if (!paths.isEmpty())
            m_watcher.addPaths(paths);
    }

    /// What tells one state of the files from another when only their folder has changed.
    QHash<QString, QString> stamps() const
    {
        QHash<QString, QString> result;
        const QStringList names = allNames();
        for (const QString &name : names) {
            const QFileInfo file = fileOf(name);
            result.insert(name, QStringLiteral("%1 %2 %3 %4")
                                    .arg(file.size())
                                    .arg(file.lastModified().toMSecsSinceEpoch())
                                    .arg(file.metadataChangeTime().toMSecsSinceEpoch())
                                    .arg(file.filePath()));
        }
        return result;
    }

    QStringList missingFiles() const
    {
        QStringList result;
        for (const QString &name : m_fileNames) {
            if (!QFileInfo::exists(name))
                result.append(name);
        }
        return result;
    }

    void look()
    {
        const QStringList missing = missingFiles();
        if (!missing.isEmpty()) {
            if (missing != m_missing)
                terminaltext::writeLine(
                    stderr,
                    QStringLiteral("Waiting for %1.").arg(missing.join(QStringLiteral(", "))));
            m_missing = missing;
            m_settled.start(missingMilliseconds);
            return;
        }
        m_missing.clear();
        watchAll();
        const QHash<QString, QString> now = stamps();
        if (!m_changed && now == m_stamps)
            return;
        m_changed = false;
        m_stamps = now;
        runOnce();
        // A change during the run may have come too early for a watch that was set up anew.
        m_settled.start(settleMilliseconds);
    }

    const QStringList m_fileNames;
    const std::function<tool::WatchedRun()> m_run;
    QStringList m_companions;
    QFileSystemWatcher m_watcher;
    QTimer m_settled;
    QHash<QString, QString> m_stamps;  ///< by names
    QStringList m_missing;
    bool m_changed = false;
    int m_status = tool::Success;
};

}  // namespace

namespace tool {

QCommandLineOption watchOption()
{
    return QCommandLineOption(
        QStringLiteral("watch"),
        QStringLiteral("Do it again whenever one of the files, the schema, or one of the symbol "
                       "files and pictures that they name changes; Ctrl+C ends."));
}

bool isCompanion(const QString &fileName, const QString &companion)
{
    const QFileInfo file(fileName);
    const QFileInfo pattern(companion);
    if (file.dir() != pattern.dir() || !QDir::match(pattern.fileName(), file.fileName()))
        return false;
    const QFileInfo first = fileOf(companion);
    return !first.exists() || file.fileName() <= first.fileName();
}

int runAndWatch(const QStringList &fileNames, const std::function<WatchedRun()> &run)
{
    if (fileNames.contains(QStringLiteral("-"))) {
        complain(QStringLiteral("--watch: standard input can't be watched"));
        return WrongUsage;
    }
    const QuitOnSignals quitter;
    return Watch(fileNames, run).exec();
}

}  // namespace tool
