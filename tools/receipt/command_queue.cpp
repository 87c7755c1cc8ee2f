#include <QCoreApplication>

#include "commands.h"
#include "forms.h"
#include "language.h"
#include "queuedelivery.h"
#include "queuereport.h"
#include "queuerunner.h"
#include "support.h"

namespace {

using printerslib::drivers::PrintQueue;
using printerslib::drivers::PrintQueueEntry;

constexpr int mostDays = 36'500;
constexpr int mostCount = 10'000'000;
const QString jobArgument = QStringLiteral("JOB");
const QString numberArgument = QStringLiteral("NUMBER");

// In lines of up to 79 characters, as a terminal shows them.
const char runDescription[] =
    R"(Prints what waits, in the order of adding, each job on its own printer. Ctrl+C
stops at the end of a command, resets the printer and cuts; the second Ctrl+C
ends the program at once. Jobs that are held stay, and are told.

Exit status: 0 nothing is left; 3 a job is held, as whether it is printed can't
be known; 4 a job still waits, as its printer can't print; 5 a job is held that
is printed in part; 1 the folder or a file in it can't be used, or another
program prints what is in it; 2 wrong usage.)";

QCommandLineOption folderOption()
{
    return {QStringLiteral("folder"),
            QStringLiteral("The folder of the queue. Default: $XDG_STATE_HOME/printerslib/queue, "
                           "which mostly is ~/.local/state/printerslib/queue."),
            QStringLiteral("DIR")};
}

QCommandLineOption stayOption()
{
    return {QStringLiteral("stay"),
            QStringLiteral("Go on with what is added, until Ctrl+C, and try a printer that can't "
                           "print again every 5 s.")};
}

QCommandLineOption daysOption()
{
    return {QStringLiteral("keep-days"),
            QStringLiteral("How many days printed jobs stay in the journal, 0 to %1; 0 is no "
                           "limit; default: %2.")
                .arg(mostDays)
                .arg(PrintQueue::usualDays),
            QStringLiteral("N"), QString::number(PrintQueue::usualDays)};
}

QCommandLineOption countOption()
{
    return {QStringLiteral("keep-jobs"),
            QStringLiteral("How many printed jobs stay in the journal, 0 to %1; 0 is no limit; "
                           "default: %2.")
                .arg(mostCount)
                .arg(PrintQueue::usualCount),
            QStringLiteral("N"), QString::number(PrintQueue::usualCount)};
}

QCommandLineOption lastOption()
{
    return {
        QStringLiteral("last"),
        QStringLiteral("How many at most, the newest ones, 1 to %1. Default: all.").arg(mostCount),
        QStringLiteral("N"), QString::number(mostCount)};
}

/// As tool::parse(), and gives a status also if --folder names none.
std::optional<int> parseOfQueue(QCommandLineParser &parser, const QString &usage,
                                const QStringList &arguments, int least, int most)
{
    if (const auto status = tool::parse(parser, usage, arguments, least, most))
        return status;
    if (!parser.isSet(folderOption()) || !parser.value(folderOption()).isEmpty())
        return std::nullopt;
    tool::complain(QStringLiteral("--folder names no folder"));
    return tool::WrongUsage;
}

QString folderOfQueue(const QCommandLineParser &parser)
{
    return parser.isSet(folderOption()) ? parser.value(folderOption())
                                        : PrintQueue::defaultFolder();
}

/// Complains, and gives nothing, of an argument that is no job's number.
std::optional<qint64> jobOf(const QCommandLineParser &parser)
{
    const QString text = parser.positionalArguments().constFirst();
    bool isNumber = false;
    const qint64 id = text.toLongLong(&isNumber);
    if (isNumber && id > 0)
        return id;
    tool::complain(QStringLiteral("\"%1\" is no number of a job").arg(text));
    return std::nullopt;
}

/// Tells of files that can't be read.
void tellDamage(PrintQueue &queue)
{
    const QStringList files = queue.damagedFiles();
    for (const QString &file : files)
        tool::complain(
            QStringLiteral("%1/%2: this can't be read, and is left out").arg(queue.folder(), file));
}

/// What the queue has just given. Gives the exit status.
int printEntries(const QCommandLineParser &parser, const PrintQueue &queue,
                 const QVector<PrintQueueEntry> &entries)
{
    const QString fault = queue.fault();
    if (parser.isSet(tool::jsonOption()))
        tool::printJobsJson(entries);
    else
        tool::printJobs(entries);
    if (fault.isEmpty())
        return tool::Success;
    tool::complain(fault);
    return tool::BadInput;
}

/// Says what somebody has to decide.
void tellHeld(const QVector<PrintQueueEntry> &entries)
{
    for (const PrintQueueEntry &entry : entries) {
        if (entry.isHeld())
            tool::complain(tool::jobText(entry));
    }
}

int listJobs(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the jobs that wait, are being printed or are held."));
    parser.addOptions({folderOption(), tool::jsonOption()});
    if (const auto status = parseOfQueue(parser, QStringLiteral("queue list"), arguments, 0, 0))
        return *status;
    PrintQueue queue(folderOfQueue(parser));
    const auto entries = queue.entries();
    const int status = printEntries(parser, queue, entries);
    tellHeld(entries);
    tellDamage(queue);
    return status;
}

int printJobsThatWait(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(runDescription));
    parser.addOptions({folderOption(), stayOption(), daysOption(), countOption()});
    if (const auto status = parseOfQueue(parser, QStringLiteral("queue run"), arguments, 0, 0))
        return *status;
    const auto days = tool::numberOf(parser, daysOption(), 0, mostDays);
    const auto count = tool::numberOf(parser, countOption(), 0, mostCount);
    if (!days || !count)
        return tool::WrongUsage;
    PrintQueue queue(folderOfQueue(parser));
    queue.setRetention(*days, *count);
    tellHeld(queue.entries());
    tool::QueueRunner runner(queue);
    if (!runner.run(parser.isSet(stayOption())))
        return tool::BadInput;
    const auto left = queue.entries();
    if (!queue.fault().isEmpty()) {
        tool::complain(queue.fault());
        return tool::BadInput;
    }
    const int status = tool::statusOfJobs(left);
    return status == tool::Success && runner.hasToldOfFiles() ? int(tool::BadInput) : status;
}

/// An action on a job that is named by its number.
int decide(const QStringList &arguments, const QString &usage, const QString &description,
           const QList<QCommandLineOption> &options, bool (*decision)(PrintQueue &queue, qint64 id))
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addOption(folderOption());
    parser.addOptions(options);
    parser.addPositionalArgument(jobArgument,
                                 QStringLiteral("The job, by its number in \"queue list\"."));
    if (const auto status = parseOfQueue(parser, usage, arguments, 1, 1))
        return *status;
    const auto id = jobOf(parser);
    if (!id || (!options.isEmpty() && !tool::useLanguage(parser)))
        return tool::WrongUsage;
    PrintQueue queue(folderOfQueue(parser));
    if (decision(queue, *id))
        return tool::Success;
    tool::complain(queue.fault());
    return tool::BadInput;
}

int repeatJob(const QStringList &arguments)
{
    return decide(arguments, QStringLiteral("queue repeat"),
                  QStringLiteral("Lets a job that is held wait again, in its old place. \"queue "
                                 "run\" prints\nit with a line in front that says that it is a "
                                 "repeat."),
                  {tool::languageOption()},
                  [](PrintQueue &queue, qint64 id) { return queue.repeat(id); });
}

int dropJob(const QStringList &arguments)
{
    return decide(arguments, QStringLiteral("queue drop"),
                  QStringLiteral("Gives up a job that waits or is held. It stays in the journal."),
                  {}, [](PrintQueue &queue, qint64 id) { return queue.drop(id); });
}

int listJournal(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists what was printed, and what was given up, the newest first."));
    parser.addOptions({folderOption(), lastOption(), tool::jsonOption()});
    if (const auto status = parseOfQueue(parser, QStringLiteral("queue journal"), arguments, 0, 0))
        return *status;
    const auto last = tool::numberOf(parser, lastOption(), 1, mostCount);
    if (!last)
        return tool::WrongUsage;
    PrintQueue queue(folderOfQueue(parser));
    const auto entries = queue.journal(*last);
    return printEntries(parser, queue, entries);
}

int reprintReceipt(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Adds a copy of a receipt that is in the journal, which \"queue run\" "
                       "prints. A\nline in front says that it is a copy, and no drawer opens."));
    parser.addOptions({folderOption(), tool::languageOption()});
    parser.addPositionalArgument(numberArgument,
                                 QStringLiteral("The document's number; without it, the last one."),
                                 QStringLiteral("[NUMBER]"));
    if (const auto status = parseOfQueue(parser, QStringLiteral("queue reprint"), arguments, 0, 1))
        return *status;
    const QStringList numbers = parser.positionalArguments();
    // A script whose number is missing isn't to print somebody else's receipt.
    const bool isNumbered = numbers.isEmpty() || !numbers.constFirst().isEmpty();
    if (!isNumbered)
        tool::complain(QStringLiteral("the document's number is empty"));
    if (!isNumbered || !tool::useLanguage(parser))
        return tool::WrongUsage;
    PrintQueue queue(folderOfQueue(parser));
    const qint64 id = numbers.isEmpty() ? queue.reprintLast() : queue.reprint(numbers.constFirst());
    if (id == 0) {
        tool::complain(queue.fault());
        return tool::BadInput;
    }
    tool::tellKept(id);
    return tool::Success;
}

constexpr Command actions[] = {
    {"list", "list the jobs that aren't printed", listJobs},
    {"run", "print what waits", printJobsThatWait},
    {"repeat", "print a job again that is held", repeatJob},
    {"drop", "give a job up", dropJob},
    {"journal", "list what was printed", listJournal},
    {"reprint", "print a copy of a receipt", reprintReceipt},
};

const char about[] =
    "Works on a folder that keeps receipts through crashes and power cuts until they\n"
    "are printed: that of --folder, to which \"receipt print --queue DIR\" adds, or\n"
    "the user's own, to which \"receipt print --later\" adds. A job that was begun\n"
    "when its program ended, or whose printer didn't confirm it, may be printed or\n"
    "not: it is held until somebody repeats or drops it.";

}  // namespace

int runQueue(const QStringList &arguments)
{
    return tool::runAction(QStringLiteral("queue"), QString::fromLatin1(about), actions, arguments);
}
