#include "jobreport.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "forms.h"
#include "statusreport.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::Confirmation;
using printerslib::drivers::PrintJobOptions;
using printerslib::drivers::PrintJobResult;
using Outcome = PrintJobResult::Outcome;
using Reason = PrintJobResult::Reason;

struct OutcomeRow
{
    Outcome outcome;
    const char *name;            ///< in JSON
    const char *words;           ///< in messages
    const char *wordsOfCommand;  ///< the same of what leaves nothing on paper
};

constexpr OutcomeRow outcomeRows[] = {
    {Outcome::NotBegun, "notBegun", "not printed", "not sent"},
    {Outcome::PartlySent, "partlySent", "printed in part", "sent in part"},
    {Outcome::Sent, "sent", "sent", "sent"},
    {Outcome::Processed, "processed", "processed", "obeyed"},
    {Outcome::Printed, "printed", "printed", "obeyed"},
};

struct ReasonRow
{
    Reason reason;
    const char *name;
};

constexpr ReasonRow reasonRows[] = {
    {Reason::None, "none"},
    {Reason::Cancelled, "cancelled"},
    {Reason::BadDocument, "badDocument"},
    {Reason::Lock, "lock"},
    {Reason::Line, "line"},
    {Reason::Status, "status"},
    {Reason::NoAnswer, "noAnswer"},
    {Reason::NoConfirmation, "noConfirmation"},
    {Reason::Refused, "refused"},
};

const OutcomeRow &rowOf(Outcome outcome)
{
    for (const OutcomeRow &row : outcomeRows) {
        if (row.outcome == outcome)
            return row;
    }
    return outcomeRows[0];
}

QString reasonName(Reason reason)
{
    for (const ReasonRow &row : reasonRows) {
        if (row.reason == reason)
            return QString::fromLatin1(row.name);
    }
    return QString();
}

QCommandLineOption waitOption()
{
    return {QStringLiteral("wait-for-paper"),
            QStringLiteral("Wait for a printer that can't print, as without paper or with its "
                           "cover open, before the job and in its middle; Ctrl+C ends that.")};
}

QCommandLineOption oneWayOption()
{
    return {QStringLiteral("one-way"),
            QStringLiteral("Ask the printer for nothing, as on a line that doesn't bring its "
                           "answers back.")};
}

/// "120 of 371 bytes went out, at most 200; the first that didn't stands in line 14"
QString partText(const JobOrder &order, const PrintJobResult &result)
{
    QString text =
        QStringLiteral("%1 of %2 bytes went out").arg(result.sentBytes).arg(result.totalBytes);
    if (result.mostBytes > result.sentBytes)
        text += QStringLiteral(", at most %1").arg(result.mostBytes);
    if (result.block > 0)
        text += QStringLiteral("; the first that didn't stands %1")
                    .arg(order.places.standingOf(result.block, result.line));
    return text;
}

/// Why the best that there can be isn't to be known; empty if it is.
QString limitOf(const JobOrder &order)
{
    if (!order.options.asks)
        return QStringLiteral("it isn't asked whether it has printed");
    if (order.profile.confirmation() == Confirmation::None)
        return QStringLiteral("%1 can't tell whether it has printed").arg(order.profile.modelId());
    return QString();
}

/// What is wrong with the outcome, and the exit status.
int statusOf(const JobOrder &order, const PrintJobResult &result, QString *fault)
{
    switch (result.outcome) {
        case Outcome::NotBegun:
            *fault = result.text;
            return NotPrinted;
        case Outcome::PartlySent:
            *fault = QStringLiteral("%1; %2").arg(result.text, partText(order, result));
            return PartlyPrinted;
        case Outcome::Sent:
            if (result.reason == Reason::None && !limitOf(order).isEmpty())
                return Success;
            *fault = result.text.isEmpty() ? QStringLiteral("it isn't confirmed") : result.text;
            return NotConfirmed;
        case Outcome::Processed:
        case Outcome::Printed:
            return Success;
    }
    return NotPrinted;
}

/// "tcp:192.168.0.5:9100: not printed: There is no paper."
QString sentenceOf(const JobOrder &order, const PrintJobResult &result, const QString &text)
{
    const OutcomeRow &row = rowOf(result.outcome);
    return QStringLiteral("%1: %2: %3")
        .arg(order.address.toString(),
             QLatin1String(order.isOnPaper ? row.words : row.wordsOfCommand), text);
}

}  // namespace

QList<QCommandLineOption> jobOptions()
{
    return {waitOption(), oneWayOption(), jsonOption()};
}

bool choosesJob(const QCommandLineParser &parser)
{
    return parser.isSet(waitOption()) || parser.isSet(oneWayOption()) || parser.isSet(jsonOption());
}

PrintJobOptions jobOptionsOf(const QCommandLineParser &parser)
{
    PrintJobOptions options;
    options.waitMilliseconds = parser.isSet(waitOption()) ? PrintJobOptions::forEver : 0;
    options.asks = !parser.isSet(oneWayOption());
    return options;
}

QString outcomeWords(Outcome outcome)
{
    return QLatin1String(rowOf(outcome).words);
}

QJsonObject resultJson(const JobOrder &order, const PrintJobResult &result)
{
    return {
        {QStringLiteral("printer"), order.address.toString()},
        {QStringLiteral("model"), order.profile.modelId()},
        {QStringLiteral("outcome"), QLatin1String(rowOf(result.outcome).name)},
        {QStringLiteral("reason"), reasonName(result.reason)},
        {QStringLiteral("text"), result.text},
        {QStringLiteral("sentBytes"), result.sentBytes},
        {QStringLiteral("mostBytes"), result.mostBytes},
        {QStringLiteral("totalBytes"), result.totalBytes},
        {QStringLiteral("block"), result.block},
        {QStringLiteral("line"), result.line},
        {QStringLiteral("sourceLine"), order.places.lineOf(result.block, result.line)},
        {QStringLiteral("pieces"), order.document.pieces},
        {QStringLiteral("notes"), QJsonArray::fromStringList(order.notes)},
        {QStringLiteral("status"), statusJson(result.status)},
    };
}

QString faultOf(const JobOrder &order, const PrintJobResult &result)
{
    QString fault;
    const int status = statusOf(order, result, &fault);
    return status == Success ? QString() : sentenceOf(order, result, fault);
}

int reportJob(const JobOrder &order, const PrintJobResult &result, const QString &what, bool asJson)
{
    QString fault;
    const int status = statusOf(order, result, &fault);
    if (status != Success)
        complain(sentenceOf(order, result, fault));
    else if (result.outcome == Outcome::Sent)
        complain(sentenceOf(order, result, limitOf(order)));
    if (asJson)
        printContent(linesOf(QJsonDocument(resultJson(order, result)).toJson()));
    else if (status == Success)
        print(sentenceOf(order, result, what));
    flushOutput();
    return status;
}

}  // namespace tool
