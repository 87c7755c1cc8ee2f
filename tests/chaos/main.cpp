// Has many processes print on printers that fail at random, and compares what each tells of its
// receipt with what is on the paper.
#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <QTimer>
#include <QVector>
#include <cstdio>
#include <memory>
#include <vector>

#include "client.h"
#include "episode.h"
#include "judge.h"
#include "plan.h"
#include "queueclient.h"

using namespace chaos;

namespace {

void say(const QString &line)
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

/// A memory disk where there is one, as the state beside a lock usually lies on one.
QString temporaryForm()
{
    const QString memory = QStringLiteral("/dev/shm");
    const bool isThere = QFileInfo(memory).isWritable();
    return (isThere ? memory : QDir::tempPath()) + QStringLiteral("/printers-chaos-XXXXXX");
}

/// Runs episodes, several at once, and counts what comes out.
class Run : public QObject
{
    Q_OBJECT

public:
    Run(int processes, bool isVerbose) : m_processes(processes), m_isVerbose(isVerbose) {}

    void setJobs(quint64 seed, int jobs)
    {
        m_seed = seed;
        m_jobsWanted = jobs;
    }
    void setSeeds(const QVector<quint64> &seeds) { m_seeds = seeds; }
    bool hasFailed() const { return m_failures > 0; }

    void goOn()
    {
        while (m_next || planNext()) {
            const int needed = programsOf(*m_next);
            if (m_busy > 0 && m_busy + needed > m_processes)
                return;
            m_busy += needed;
            begin(*m_next);
            m_next.reset();
        }
        if (m_episodes.empty()) {
            report();
            QCoreApplication::exit(hasFailed() ? 1 : 0);
        }
    }

private:
    struct Played
    {
        std::unique_ptr<QTemporaryDir> folder;
        std::unique_ptr<Episode> episode;
    };

    static bool hasHangingJob(const Episode &episode)
    {
        return std::any_of(episode.ends().begin(), episode.ends().end(),
                           [](const JobEnd &end) { return end.hasHung; });
    }

    /// Changed bytes may have a printer wait for more than it is filled up with.
    static bool isBeyondHelp(const Episode &episode)
    {
        constexpr int filled = 16384;
        return episode.plan().hasSpoilt && !episode.hasHung() && !hasHangingJob(episode) &&
               episode.openBytes() >= filled;
    }

    static int programsOf(const EpisodePlan &plan)
    {
        return plan.programs + (plan.isQueue() ? 1 : 0);
    }

    bool planNext()
    {
        constexpr int firstOfEpisode = 100;
        const bool isMore =
            m_seeds.isEmpty() ? m_jobsPlanned < m_jobsWanted : m_planned < m_seeds.size();
        if (!isMore)
            return false;
        const quint64 seed =
            m_seeds.isEmpty() ? episodeSeed(m_seed, m_planned) : m_seeds.at(m_planned);
        m_planned++;
        m_next = std::make_unique<EpisodePlan>(planOf(seed, firstOfEpisode));
        m_jobsPlanned += m_next->jobs.size();
        return true;
    }

    void begin(const EpisodePlan &plan)
    {
        Played played;
        played.folder = std::make_unique<QTemporaryDir>(temporaryForm());
        played.episode = std::make_unique<Episode>(plan, played.folder->path());
        Episode *const episode = played.episode.get();
        m_episodes.push_back(std::move(played));
        connect(
            episode, &Episode::finished, this, [this, episode] { over(*episode); },
            Qt::QueuedConnection);
        episode->start();
    }

    void over(const Episode &episode)
    {
        QStringList untruths =
            untruthsOf(episode.plan(), episode.ends(), episode.queue(), episode.papers());
        if (episode.hasHung())
            untruths.append(QStringLiteral("a program that prints a queue didn't end"));
        if (!episode.comesToRest())
            untruths.append(QStringLiteral("the printer doesn't come to rest"));
        count(episode);
        if (!untruths.isEmpty() && isBeyondHelp(episode)) {
            m_beyondHelp++;
            untruths.clear();
        }
        if (!untruths.isEmpty())
            m_failures++;
        if (!untruths.isEmpty() || m_isVerbose)
            tell(episode, untruths);
        m_busy -= programsOf(episode.plan());
        showProgress();
        const auto found = std::find_if(
            m_episodes.begin(), m_episodes.end(),
            [&episode](const Played &played) { return played.episode.get() == &episode; });
        m_episodes.erase(found);
        goOn();
    }

    void count(const Episode &episode)
    {
        for (const JobEnd &end : episode.ends()) {
            m_jobsRun++;
            m_outcomes[end.report.isThere ? end.report.outcome : -1]++;
        }
    }

    static void tell(const Episode &episode, const QStringList &untruths)
    {
        say(QStringLiteral("== episode %1").arg(episode.plan().seed));
        for (const QString &line : episode.plan().toLines())
            say(QStringLiteral("  ") + line);
        for (const QString &line : episode.events())
            say(line);
        for (const QueueReport &report : episode.queue())
            say(QStringLiteral("  queue: %1, job %2, state %3, outcome %4, repeats %5")
                    .arg(report.id)
                    .arg(report.job)
                    .arg(report.state)
                    .arg(report.outcome)
                    .arg(report.repeats));
        for (int i = 0; i < episode.papers().size(); ++i)
            say(QStringLiteral("  piece %1: %2")
                    .arg(i + 1)
                    .arg(itemsOf(episode.papers().at(i)).join(QStringLiteral(" | "))));
        for (const QString &line : untruths)
            say(QStringLiteral("UNTRUE: ") + line);
    }

    void showProgress() const
    {
        if (::isatty(STDERR_FILENO) == 0)
            return;
        const QString text =
            QStringLiteral("\r%1 jobs, %2 episodes failed ").arg(m_jobsRun).arg(m_failures);
        std::fputs(qPrintable(text), stderr);
    }

    void report() const
    {
        static const char *const names[] = {"killed", "not begun", "partly sent",
                                            "sent",   "processed", "printed"};
        QStringList counts;
        for (int i = 0; i < int(std::size(names)); ++i)
            counts.append(
                QStringLiteral("%1 %2").arg(m_outcomes.value(i - 1)).arg(QLatin1String(names[i])));
        if (::isatty(STDERR_FILENO) != 0)
            std::fputs("\n", stderr);
        say(QStringLiteral("%1 jobs in %2 episodes: %3; %4 printers were beyond "
                           "help; %5 episodes failed")
                .arg(m_jobsRun)
                .arg(m_planned)
                .arg(counts.join(QStringLiteral(", ")))
                .arg(m_beyondHelp)
                .arg(m_failures));
    }

    const int m_processes;
    const bool m_isVerbose;
    quint64 m_seed = 0;
    int m_jobsWanted = 0;
    QVector<quint64> m_seeds;
    std::unique_ptr<EpisodePlan> m_next;
    std::vector<Played> m_episodes;
    QMap<int, int> m_outcomes;
    int m_planned = 0;
    int m_jobsPlanned = 0;
    int m_jobsRun = 0;
    int m_busy = 0;
    int m_failures = 0;
    int m_beyondHelp = 0;
};

/// The first word of each line that is no comment.
QVector<quint64> keptSeeds(const QString &fileName)
{
    QFile file(fileName);
    QVector<quint64> seeds;
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qPrintable(fileName));
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).section(QLatin1Char('#'), 0, 0);
        bool isNumber = false;
        const quint64 seed = line.trimmed().toULongLong(&isNumber);
        if (isNumber)
            seeds.append(seed);
    }
    return seeds;
}

/// Ends the program where an option has another value than a number of at least `least`.
quint64 numberOf(const QCommandLineParser &parser, const char *option, quint64 least)
{
    constexpr int wrongUsage = 2;
    bool isNumber = false;
    const QString text = parser.value(QLatin1String(option));
    const quint64 number = text.toULongLong(&isNumber);
    if (isNumber && number >= least)
        return number;
    std::fprintf(stderr, "chaos: --%s: \"%s\" is no such number\n", option, qPrintable(text));
    std::exit(wrongUsage);
}

int runAll()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Has processes print on virtual printers that fail at random, kills some of them, and "
        "compares what is told of each receipt with the paper."));
    parser.addOptions(
        {{QStringLiteral("jobs"), QStringLiteral("How many jobs."), QStringLiteral("count"),
          QStringLiteral("50")},
         {QStringLiteral("seed"), QStringLiteral("Of the run. Default: a new one, which is told."),
          QStringLiteral("number")},
         {QStringLiteral("episode"),
          QStringLiteral("Only this one, by its own seed; may be given several times."),
          QStringLiteral("number")},
         {QStringLiteral("kept"), QStringLiteral("The episodes whose seeds stand in a file."),
          QStringLiteral("file")},
         {QStringLiteral("processes"), QStringLiteral("How many at once."), QStringLiteral("count"),
          QStringLiteral("12")},
         {QStringLiteral("verbose"), QStringLiteral("Tell of all episodes.")}});
    parser.addHelpOption();
    parser.process(*QCoreApplication::instance());

    Run run(int(numberOf(parser, "processes", 1)), parser.isSet(QStringLiteral("verbose")));
    QVector<quint64> seeds;
    const QStringList episodes = parser.values(QStringLiteral("episode"));
    for (const QString &episode : episodes)
        seeds.append(episode.toULongLong());
    const bool isKept = parser.isSet(QStringLiteral("kept"));
    if (isKept)
        seeds += keptSeeds(parser.value(QStringLiteral("kept")));
    if (isKept && seeds.isEmpty()) {
        say(QStringLiteral("there are no seeds"));
        return 0;
    }
    const quint64 seed = parser.isSet(QStringLiteral("seed"))
                             ? numberOf(parser, "seed", 0)
                             : quint64(QDateTime::currentMSecsSinceEpoch());
    if (seeds.isEmpty())
        say(QStringLiteral("seed %1").arg(seed));
    run.setSeeds(seeds);
    run.setJobs(seed, int(numberOf(parser, "jobs", 1)));
    QTimer::singleShot(0, &run, &Run::goOn);
    return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const std::pair<const char *, int (*)(const QStringList &)> roles[] = {
        {"print", runClient}, {"add", runAdder}, {"queue", runPrinter}, {"decide", runDecider}};
    for (const auto &[name, run] : roles) {
        if (arguments.value(1) == QLatin1String(name))
            return run(arguments.mid(2));
    }
    return runAll();
}

#include "main.moc"
