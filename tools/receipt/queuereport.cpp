#include "queuereport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

#include "jobreport.h"
#include "support.h"

namespace tool {

using printerslib::drivers::PrintJobResult;
using printerslib::drivers::PrintQueueEntry;
using State = PrintQueueEntry::State;

namespace {

struct StateRow
{
    State state;
    const char *name;  ///< in JSON
    const char *word;  ///< in tables
    int status;        ///< if such a job is left
};

constexpr StateRow stateRows[] = {
    {State::Waiting, "waiting", "waits", NotPrinted},
    {State::Printing, "printing", "prints", NotPrinted},
    {State::Unknown, "unknown", "held", NotConfirmed},
    {State::Partial, "partial", "held", PartlyPrinted},
    {State::Done, "done", "", Success},
    {State::Dropped, "dropped", "dropped", Success},
};

const StateRow &rowOfState(State state)
{
    for (const StateRow &row : stateRows) {
        if (row.state == state)
            return row;
    }
    return stateRows[0];
}

/// What is done is as the printer has confirmed it.
QString stateWord(const PrintQueueEntry &entry)
{
    return entry.state == State::Done ? outcomeWords(entry.result.outcome)
                                      : QString::fromLatin1(rowOfState(entry.state).word);
}

/// Of the last step that is known.
QString timeText(const PrintQueueEntry &entry)
{
    const QDateTime time = entry.ended.isValid()   ? entry.ended
                           : entry.begun.isValid() ? entry.begun
                                                   : entry.added;
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString kindText(const PrintQueueEntry &entry)
{
    if (entry.copyOf > 0)
        return QStringLiteral("copy of job %1").arg(entry.copyOf);
    if (entry.isCopy)
        return QStringLiteral("copy");
    return entry.repeats > 0 ? QStringLiteral("repeat") : QString();
}

QStringList fieldsOf(const PrintQueueEntry &entry)
{
    QStringList last;
    for (const QString &text : {entry.title, kindText(entry)}) {
        if (!text.isEmpty())
            last.append(text);
    }
    return {QString::number(entry.id), stateWord(entry),         timeText(entry),
            entry.documentNumber,      entry.address.toString(), last.join(QStringLiteral(", "))};
}

QJsonValue timeJson(const QDateTime &time)
{
    return time.isValid() ? QJsonValue(time.toString(Qt::ISODateWithMs)) : QJsonValue();
}

QJsonObject entryJson(const PrintQueueEntry &entry)
{
    QJsonObject json = resultJson({{}, {}, entry.address, {}}, entry.result);
    for (const char *key : {"status", "pieces", "notes", "sourceLine"})
        json.remove(QLatin1String(key));
    json.insert(QStringLiteral("model"), entry.modelId);
    json.insert(QStringLiteral("job"), entry.id);
    json.insert(QStringLiteral("state"), QLatin1String(rowOfState(entry.state).name));
    json.insert(QStringLiteral("title"), entry.title);
    json.insert(QStringLiteral("number"), entry.documentNumber);
    json.insert(QStringLiteral("added"), timeJson(entry.added));
    json.insert(QStringLiteral("begun"), timeJson(entry.begun));
    json.insert(QStringLiteral("ended"), timeJson(entry.ended));
    json.insert(QStringLiteral("isCopy"), entry.isCopy);
    json.insert(QStringLiteral("copyOf"),
                entry.copyOf > 0 ? QJsonValue(entry.copyOf) : QJsonValue());
    json.insert(QStringLiteral("repeats"), entry.repeats);
    return json;
}

/// "not printed: There is no paper."
QString fateOf(const PrintQueueEntry &entry)
{
    const QString text =
        entry.result.text.isEmpty() ? QString() : QStringLiteral(": ") + entry.result.text;
    switch (entry.state) {
        case State::Waiting:
            return QStringLiteral("not printed%1").arg(text);
        case State::Unknown:
            return QStringLiteral("held, as whether it is printed can't be known%1").arg(text);
        case State::Partial:
            return QStringLiteral("held, as it is printed in part%1").arg(text);
        case State::Printing:
        case State::Done:
        case State::Dropped:
            break;
    }
    return stateWord(entry);
}

/// Lines whose columns are as wide as their widest field, but for the last.
QStringList tableOf(const QVector<QStringList> &rows)
{
    QVector<int> widths(rows.constFirst().size(), 0);
    for (const QStringList &row : rows) {
        for (int i = 0; i + 1 < row.size(); ++i)
            widths[i] = std::max(widths.at(i), row.at(i).size());
    }
    QStringList lines;
    for (const QStringList &row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i) + (i + 1 < row.size() ? 2 : 0));
        lines.append(line.trimmed());
    }
    return lines;
}

}  // namespace

QString jobName(const PrintQueueEntry &entry)
{
    const QString number = entry.documentNumber.isEmpty()
                               ? entry.title
                               : QStringLiteral("number ") + entry.documentNumber;
    return number.isEmpty() ? QStringLiteral("job %1").arg(entry.id)
                            : QStringLiteral("job %1 (%2)").arg(entry.id).arg(number);
}

QString jobText(const PrintQueueEntry &entry)
{
    QString text = QStringLiteral("%1: %2").arg(jobName(entry), fateOf(entry));
    if (!entry.isHeld())
        return text;
    return text + QStringLiteral(
                      "; \"receipt queue repeat %1\" prints it again, \"receipt queue "
                      "drop %1\" gives it up")
                      .arg(entry.id);
}

void printJobs(const QVector<PrintQueueEntry> &entries)
{
    if (entries.isEmpty())
        return;
    QVector<QStringList> rows{{QStringLiteral("Job"), QStringLiteral("State"),
                               QStringLiteral("Time"), QStringLiteral("Number"),
                               QStringLiteral("Printer"), QStringLiteral("Title")}};
    for (const PrintQueueEntry &entry : entries)
        rows.append(fieldsOf(entry));
    const QStringList lines = tableOf(rows);
    for (const QString &line : lines)
        print(line);
}

void printJobsJson(const QVector<PrintQueueEntry> &entries)
{
    QJsonArray array;
    for (const PrintQueueEntry &entry : entries)
        array.append(entryJson(entry));
    printContent(linesOf(QJsonDocument(array).toJson()));
}

int statusOfJobs(const QVector<PrintQueueEntry> &left)
{
    // What can't be known is graver than what just waits, and what is half printed the gravest.
    int status = Success;
    for (const int next : {int(NotPrinted), int(NotConfirmed), int(PartlyPrinted)}) {
        const bool isLeft =
            std::any_of(left.begin(), left.end(), [next](const PrintQueueEntry &entry) {
                return rowOfState(entry.state).status == next;
            });
        status = isLeft ? next : status;
    }
    return status;
}

}  // namespace tool
