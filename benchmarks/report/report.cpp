// Makes one table of what the benchmark programs have written: ours, the peer's, the ratio, and
// what the ratio should be (goals.cpp). Whether it is reached is only said: machines differ, and a
// busy one measures nothing.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>
#include <array>
#include <cmath>
#include <optional>

#include "goals.h"

namespace {

enum ExitStatus { Success = 0, BadInput = 1, WrongUsage = 2 };

/// What one benchmark came to.
struct Measurement
{
    QJsonObject median;
    double spread = 0;  ///< standard deviation over mean, of the repetitions

    double nanoseconds() const
    {
        static const QHash<QString, double> units{{"ns", 1}, {"us", 1e3}, {"ms", 1e6}, {"s", 1e9}};
        return median.value("cpu_time").toDouble() *
               units.value(median.value("time_unit").toString());
    }
};

/// The results of all programs, by "program:benchmark".
class Results
{
public:
    /// @return an error text, empty on success
    QString read(const QString &fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            return file.errorString();
        QJsonParseError error;
        const QJsonObject root = QJsonDocument::fromJson(file.readAll(), &error).object();
        if (error.error != QJsonParseError::NoError)
            return error.errorString();
        m_context = root.value("context").toObject();
        const QJsonArray runs = root.value("benchmarks").toArray();
        if (runs.isEmpty())
            return QStringLiteral("it holds no benchmarks");
        const QString program = QFileInfo(fileName).completeBaseName();
        m_programs.insert(program);
        for (const QJsonValue &run : runs)
            take(program, run.toObject());
        return QString();
    }

    const QJsonObject &context() const { return m_context; }
    bool has(const QString &program) const { return m_programs.contains(program); }
    std::optional<Measurement> find(const QString &program, const QString &name) const
    {
        const auto found = m_measurements.constFind(program + ':' + name);
        return found == m_measurements.cend() || found->median.isEmpty()
                   ? std::nullopt
                   : std::optional<Measurement>(*found);
    }

private:
    void take(const QString &program, const QJsonObject &run)
    {
        static const QRegularExpression settings("/(iterations|repeats|min_time):.*$|/real_time$");
        const QString name = run.value("run_name").toString().remove(settings);
        Measurement &measurement = m_measurements[program + ':' + name];
        const QString aggregate = run.value("aggregate_name").toString();
        if (aggregate.isEmpty() || aggregate == QLatin1String("median"))
            measurement.median = run;
        else if (aggregate == QLatin1String("cv"))
            measurement.spread = run.value("cpu_time").toDouble();
    }

    QSet<QString> m_programs;
    QHash<QString, Measurement> m_measurements;
    QJsonObject m_context;
};

QString ratioText(double ratio)
{
    constexpr double hundredth = 0.01;
    return QString::number(ratio, 'f', ratio < hundredth ? 5 : ratio < 1 ? 3 : 2);
}

/// One comparison made.
struct Row
{
    QString work;
    QString ours;
    QString peer;
    double ratio = 0;
    double spread = 0;
    double atMost = 0;
    bool isAim = false;

    QString verdict() const
    {
        if (atMost == 0)
            return QString();
        const QString words = ratio <= atMost ? QStringLiteral("met") : QStringLiteral("not met");
        return isAim ? "aim " + words : words;
    }
    QStringList cells() const
    {
        return {work,
                ours,
                peer,
                ratioText(ratio),
                spread > 0 ? QString::number(spread * 100, 'f', 0) + " %" : QString(),
                atMost > 0 ? QString::number(atMost) : QString(),
                verdict()};
    }
};

QString timeText(double nanoseconds)
{
    constexpr double thousand = 1000;
    const std::array<const char *, 4> units{" ns", " us", " ms", " s"};
    size_t unit = 0;
    while (nanoseconds >= thousand && unit + 1 < units.size()) {
        nanoseconds /= thousand;
        ++unit;
    }
    return QString::number(nanoseconds, 'g', 3) + units.at(unit);
}

std::optional<Row> counted(const Goal &goal, const Results &results, const QString &size)
{
    const auto ours = results.find(goal.program, QString(goal.ours).replace('#', size));
    if (!ours)
        return std::nullopt;
    Row row;
    row.ratio = ours->median.value(goal.counter).toDouble();
    return row;
}

std::optional<Row> compared(const Goal &goal, const Results &results, const QString &size)
{
    const QString peerName = QString(goal.peer).replace('#', size);
    const auto ours = results.find(goal.program, QString(goal.ours).replace('#', size));
    const auto peer = results.find(goal.program, peerName);
    if (!ours || !peer)
        return std::nullopt;
    Row row;
    row.ours = timeText(ours->nanoseconds());
    row.peer = peerName + ' ' + timeText(peer->nanoseconds());
    row.ratio = ours->nanoseconds() / peer->nanoseconds();
    row.spread = std::hypot(ours->spread, peer->spread);
    return row;
}

/// The rows of the programs that ran; what they didn't measure goes to `missing`.
std::vector<Row> rowsOf(const Results &results, QStringList &missing)
{
    std::vector<Row> rows;
    for (const Goal &goal : goals) {
        if (!results.has(goal.program))
            continue;
        const bool isSized = QString(goal.work).contains('#');
        for (const int number : isSized ? goal.sizes : std::vector<int>{0}) {
            const QString size = QString::number(number);
            const QString work = QString(goal.work).replace('#', size);
            auto row = *goal.counter ? counted(goal, results, size) : compared(goal, results, size);
            if (!row) {
                missing.append(work + " (" + goal.program + ')');
                continue;
            }
            row->work = work;
            row->atMost = goal.atMost;
            row->isAim = goal.isAim;
            rows.push_back(*row);
        }
    }
    return rows;
}

void printTable(const std::vector<Row> &rows, QTextStream &out)
{
    std::vector<QStringList> lines{{"Work", "Ours", "Peer", "Ratio", "Spread", "At most", "Met"}};
    for (const Row &row : rows)
        lines.push_back(row.cells());
    std::vector<int> widths(static_cast<size_t>(lines.front().size()), 0);
    for (const QStringList &line : lines) {
        for (size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], line.at(static_cast<int>(i)).size());
    }
    QStringList rule;
    for (const int width : widths)
        rule.append(QString(width, '-'));
    lines.insert(lines.begin() + 1, rule);
    for (const QStringList &line : lines) {
        for (size_t i = 0; i < widths.size(); ++i)
            out << "| " << line.at(static_cast<int>(i)).leftJustified(widths[i]) << ' ';
        out << "|\n";
    }
}

QJsonObject jsonOf(const Row &row)
{
    QJsonObject object{{"work", row.work}, {"ratio", row.ratio}, {"met", row.verdict()}};
    if (!row.peer.isEmpty()) {
        object.insert("ours", row.ours);
        object.insert("peer", row.peer);
        object.insert("spread", row.spread);
    }
    if (row.atMost > 0)
        object.insert("at_most", row.atMost);
    return object;
}

bool writeJson(const QString &fileName, const std::vector<Row> &rows, const QJsonObject &context)
{
    QJsonArray array;
    for (const Row &row : rows)
        array.append(jsonOf(row));
    QFile file(fileName);
    const QByteArray text =
        QJsonDocument(QJsonObject{{"context", context}, {"rows", array}}).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

void printHeader(const QJsonObject &context, QTextStream &out)
{
    const auto text = [&context](const char *key) {
        return context.value(key).toVariant().toString();
    };
    out << "printerslib " << text("printerslib") << ", " << text("compiler") << ", Qt "
        << text("qt") << "; " << text("num_cpus") << " processors at " << text("mhz_per_cpu")
        << " MHz; " << text("date") << '\n';
    if (text("optimised") != "yes")
        out << "This is a debug build: the times mean nothing.\n";
    if (text("quick") == "yes")
        out << "Each benchmark ran once and shortly: the times mean nothing.\n";
    out << '\n';
}

int fail(const QString &message)
{
    QTextStream(stderr) << "benchmark_report: " << message << '\n';
    return BadInput;
}

}  // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Makes one table of the results of benchmark programs.");
    parser.addHelpOption();
    parser.addOption({"json", "write the table to this file too", "file"});
    parser.addOption({"partial", "take it that programs ran a part of their benchmarks only"});
    parser.addPositionalArgument("results", "files <program>.json in Google Benchmark's form",
                                 "results...");
    parser.process(application);
    if (parser.positionalArguments().isEmpty()) {
        QTextStream(stderr) << "benchmark_report: name at least one file of results\n";
        return WrongUsage;
    }

    Results results;
    for (const QString &fileName : parser.positionalArguments()) {
        const QString error = results.read(fileName);
        if (!error.isEmpty())
            return fail(fileName + ": " + error);
    }
    QStringList missing;
    const std::vector<Row> rows = rowsOf(results, missing);
    QTextStream out(stdout);
    printHeader(results.context(), out);
    printTable(rows, out);
    out.flush();
    if (parser.isSet("json") && !writeJson(parser.value("json"), rows, results.context()))
        return fail(parser.value("json") + ": can't be written");
    if (!missing.isEmpty() && !parser.isSet("partial"))
        return fail("not measured: " + missing.join(", "));
    return Success;
}
