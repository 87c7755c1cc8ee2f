#include "job/queuedjob_p.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QJsonArray>
#include <QJsonDocument>

#include "job/shutdrawer_p.h"
#include "printerslib/drivers/leadingline.h"
#include "printerslib/drivers/printermodels.h"

namespace printerslib::drivers {

namespace {

using Outcome = PrintJobResult::Outcome;
using Reason = PrintJobResult::Reason;
using State = PrintQueueEntry::State;

constexpr quint32 jobMagic = 0x50525131;  // "PRQ1"
constexpr int fileVersion = 1;

// By the numbers of their enumerations; the words stay when these change.
const char *const stateWords[] = {"waiting", "printing", "unknown", "partial", "done", "dropped"};
const char *const outcomeWords[] = {"notBegun", "partlySent", "sent", "processed", "printed"};
const char *const reasonWords[] = {"none",   "cancelled", "badDocument",    "lock",   "line",
                                   "status", "noAnswer",  "noConfirmation", "refused"};

/// Whether there is a word for each.
template <typename Enum, size_t count>
constexpr bool endsWith(const char *const (&)[count], Enum last)
{
    return size_t(last) + 1 == count;
}
static_assert(endsWith(stateWords, State::Dropped));
static_assert(endsWith(outcomeWords, Outcome::Printed));
static_assert(endsWith(reasonWords, Reason::Refused));

template <typename Enum, size_t count>
QString wordOf(Enum value, const char *const (&words)[count])
{
    return QLatin1String(words[size_t(value)]);
}

/// False for a word that this version doesn't know.
template <typename Enum, size_t count>
bool readWord(const QJsonValue &word, const char *const (&words)[count], Enum &value)
{
    for (size_t i = 0; i < count; ++i) {
        if (word.toString() == QLatin1String(words[i])) {
            value = Enum(i);
            return true;
        }
    }
    return false;
}

/// A number of the options, and its key in the file.
struct OptionRow
{
    const char *key;
    int &(*of)(PrintJobOptions &options);
};

template <auto member>
int &optionOf(PrintJobOptions &options)
{
    return options.*member;
}

template <auto member>
int &lineOptionOf(PrintJobOptions &options)
{
    return options.transport.*member;
}

const OptionRow optionRows[] = {
    {"connectMilliseconds", lineOptionOf<&TransportOptions::connectMilliseconds>},
    {"writeMilliseconds", lineOptionOf<&TransportOptions::writeMilliseconds>},
    {"statusMilliseconds", optionOf<&PrintJobOptions::statusMilliseconds>},
    {"confirmMilliseconds", optionOf<&PrintJobOptions::confirmMilliseconds>},
    {"waitMilliseconds", optionOf<&PrintJobOptions::waitMilliseconds>},
    {"pollMilliseconds", optionOf<&PrintJobOptions::pollMilliseconds>},
    {"cancelMilliseconds", optionOf<&PrintJobOptions::cancelMilliseconds>},
    {"stepBytes", optionOf<&PrintJobOptions::stepBytes>},
};

const QString asksKey = QStringLiteral("asks");
const QString confirmsKey = QStringLiteral("confirms");

QJsonObject optionsJson(PrintJobOptions options)
{
    QJsonObject json{{asksKey, options.asks}, {confirmsKey, options.confirms}};
    for (const OptionRow &row : optionRows)
        json.insert(QLatin1String(row.key), row.of(options));
    return json;
}

PrintJobOptions optionsOf(const QJsonObject &json)
{
    PrintJobOptions options;
    options.asks = json.value(asksKey).toBool(options.asks);
    options.confirms = json.value(confirmsKey).toBool(options.confirms);
    for (const OptionRow &row : optionRows)
        row.of(options) = json.value(QLatin1String(row.key)).toInt(row.of(options));
    return options;
}

QJsonObject resultJson(const PrintJobResult &result)
{
    return {{QStringLiteral("outcome"), wordOf(result.outcome, outcomeWords)},
            {QStringLiteral("reason"), wordOf(result.reason, reasonWords)},
            {QStringLiteral("text"), result.text},
            {QStringLiteral("sentBytes"), result.sentBytes},
            {QStringLiteral("mostBytes"), result.mostBytes},
            {QStringLiteral("totalBytes"), result.totalBytes},
            {QStringLiteral("block"), result.block},
            {QStringLiteral("line"), result.line}};
}

bool readResult(const QJsonObject &json, PrintJobResult &result)
{
    const auto bytes = [&json](const QString &key) { return qint64(json.value(key).toDouble()); };
    result.text = json.value(QStringLiteral("text")).toString();
    result.sentBytes = bytes(QStringLiteral("sentBytes"));
    result.mostBytes = bytes(QStringLiteral("mostBytes"));
    result.totalBytes = bytes(QStringLiteral("totalBytes"));
    result.block = json.value(QStringLiteral("block")).toInt();
    result.line = json.value(QStringLiteral("line")).toInt();
    return readWord(json.value(QStringLiteral("outcome")), outcomeWords, result.outcome) &&
           readWord(json.value(QStringLiteral("reason")), reasonWords, result.reason);
}

/// A time of the entry, and its key in the file.
struct TimeRow
{
    const char *key;
    QDateTime PrintQueueEntry::*member;
};

const TimeRow timeRows[] = {
    {"added", &PrintQueueEntry::added},
    {"begun", &PrintQueueEntry::begun},
    {"ended", &PrintQueueEntry::ended},
};

QJsonObject entryJson(const PrintQueueEntry &entry)
{
    QJsonObject json{{QStringLiteral("version"), fileVersion},
                     {QStringLiteral("id"), entry.id},
                     {QStringLiteral("state"), wordOf(entry.state, stateWords)},
                     {QStringLiteral("title"), entry.title},
                     {QStringLiteral("documentNumber"), entry.documentNumber},
                     {QStringLiteral("address"), entry.address.toString()},
                     {QStringLiteral("isCopy"), entry.isCopy},
                     {QStringLiteral("copyOf"), entry.copyOf},
                     {QStringLiteral("repeats"), entry.repeats},
                     {QStringLiteral("result"), resultJson(entry.result)}};
    for (const TimeRow &row : timeRows) {
        const QDateTime &time = entry.*(row.member);
        if (time.isValid())
            json.insert(QLatin1String(row.key), time.toUTC().toString(Qt::ISODateWithMs));
    }
    return json;
}

bool readEntry(const QJsonObject &json, PrintQueueEntry &entry)
{
    const auto address = PrinterAddress::parse(json.value(QStringLiteral("address")).toString());
    entry.id = qint64(json.value(QStringLiteral("id")).toDouble());
    entry.title = json.value(QStringLiteral("title")).toString();
    entry.documentNumber = json.value(QStringLiteral("documentNumber")).toString();
    entry.address = address.value_or(PrinterAddress());
    entry.isCopy = json.value(QStringLiteral("isCopy")).toBool();
    entry.copyOf = qint64(json.value(QStringLiteral("copyOf")).toDouble());
    entry.repeats = json.value(QStringLiteral("repeats")).toInt();
    for (const TimeRow &row : timeRows) {
        QDateTime time =
            QDateTime::fromString(json.value(QLatin1String(row.key)).toString(), Qt::ISODateWithMs);
        entry.*(row.member) = time.toUTC();
    }
    return address && readWord(json.value(QStringLiteral("state")), stateWords, entry.state) &&
           readResult(json.value(QStringLiteral("result")).toObject(), entry.result);
}

// ---- Models

/// The record of a file of models that makes this profile out of the catalogue's.
QJsonObject recordOf(const PrinterProfile &profile)
{
    QJsonObject record = profile.toJson();
    record.remove(QStringLiteral("sources"));
    record.remove(QStringLiteral("note"));
    if (!PrinterProfile::modelIds().contains(profile.modelId()))
        record.insert(QStringLiteral("like"), profile.catalogueId());
    return record;
}

QJsonObject modelOf(const QJsonObject &head)
{
    return head.value(QStringLiteral("model")).toObject();
}

std::optional<PrinterProfile> profileOf(const QJsonObject &record)
{
    PrinterModels models;
    models.add(QJsonDocument(QJsonArray{record}).toJson(), QString());
    return models.profile(record.value(QStringLiteral("id")).toString());
}

// ---- What is printed

QByteArray documentBytes(const EncodedDocument &document)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << document.bytes << document.marks.size();
    for (const EncodedDocument::Mark &mark : document.marks)
        stream << mark.offset << mark.block << mark.line;
    stream << document.notes.size();
    for (const PrintNote &note : document.notes)
        stream << note.block << note.line << note.text << note.isLoss;
    stream << document.pieces << document.retractAfterSeconds << document.retraction;
    return bytes;
}

/// Of bytes whose checksum is right.
EncodedDocument documentOf(const QByteArray &bytes)
{
    EncodedDocument document;
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    int count = 0;
    stream >> document.bytes >> count;
    for (int i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        EncodedDocument::Mark mark;
        stream >> mark.offset >> mark.block >> mark.line;
        document.marks.append(mark);
    }
    stream >> count;
    for (int i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        PrintNote note;
        stream >> note.block >> note.line >> note.text >> note.isLoss;
        document.notes.append(note);
    }
    stream >> document.pieces >> document.retractAfterSeconds >> document.retraction;
    return document;
}

QByteArray checksumOfJob(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QString checksumText(const QByteArray &bytes)
{
    return QString::fromLatin1(checksumOfJob(bytes).toHex());
}

/// A file's parts, as far as the checksums hold.
struct JobFile
{
    QJsonObject head;
    QByteArray document;
};

std::optional<JobFile> partsOf(const QByteArray &bytes, bool isHeadAlone, QueuedFault *fault)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 start = 0;
    QByteArray head;
    QByteArray checksum;
    JobFile file;
    stream >> start >> head >> checksum;
    if (stream.status() != QDataStream::Ok || start != jobMagic ||
        checksum != checksumOfJob(head)) {
        *fault = {QStringLiteral("it is damaged")};
        return std::nullopt;
    }
    file.head = QJsonDocument::fromJson(head).object();
    if (file.head.value(QStringLiteral("version")).toInt() > fileVersion) {
        *fault = {QStringLiteral("a newer version of this program has made it"), false};
        return std::nullopt;
    }
    if (isHeadAlone)
        return file;
    stream >> file.document;
    const QString expected = file.head.value(QStringLiteral("document")).toString();
    if (stream.status() != QDataStream::Ok || expected != checksumText(file.document)) {
        *fault = {QStringLiteral("its document is damaged")};
        return std::nullopt;
    }
    return file;
}

std::optional<QueuedJob> jobOfHead(const QJsonObject &head, qint64 id, QueuedFault *fault)
{
    QueuedJob job;
    if (!readEntry(head, job.entry) || job.entry.id != id) {
        *fault = {QStringLiteral("it isn't what its name says")};
        return std::nullopt;
    }
    job.entry.modelId = modelOf(head).value(QStringLiteral("id")).toString();
    job.isDrawerAlone = head.value(QStringLiteral("isDrawerAlone")).toBool();
    return job;
}

/// What of the request isn't in the entry.
bool readRequest(const JobFile &file, QueuedJob &job, QueuedFault *fault)
{
    const QJsonObject &head = file.head;
    const auto profile = profileOf(modelOf(head));
    if (!profile) {
        *fault = {QStringLiteral("the model %1 isn't known").arg(job.entry.modelId), false};
        return false;
    }
    job.request = {documentOf(file.document),
                   *profile,
                   head.value(QStringLiteral("paper")).toInt(),
                   head.value(QStringLiteral("font")).toInt(),
                   job.entry.address,
                   optionsOf(head.value(QStringLiteral("options")).toObject()),
                   job.entry.title,
                   job.entry.documentNumber,
                   job.entry.isCopy};
    const QJsonArray lines = head.value(QStringLiteral("linesInFront")).toArray();
    for (const QJsonValue &line : lines)
        job.linesInFront.append(line.toString());
    job.isDrawerShut = head.value(QStringLiteral("isDrawerShut")).toBool();
    return true;
}

}  // namespace

QueuedJob QueuedJob::of(const PrintQueueRequest &request)
{
    QueuedJob job;
    job.request = request;
    job.entry.title = request.title;
    job.entry.documentNumber = request.documentNumber;
    job.entry.modelId = request.profile.modelId();
    job.entry.address = request.address;
    job.entry.isCopy = request.isCopy;
    job.entry.result.totalBytes = request.document.bytes.size();
    job.isDrawerAlone = opensDrawerAlone(request.document, request.profile);
    return job;
}

QByteArray QueuedJob::toBytes() const
{
    const QByteArray document = documentBytes(request.document);
    QJsonObject head = entryJson(entry);
    head.insert(QStringLiteral("model"), recordOf(request.profile));
    head.insert(QStringLiteral("paper"), request.paperId);
    head.insert(QStringLiteral("font"), request.baseFont);
    head.insert(QStringLiteral("options"), optionsJson(request.options));
    head.insert(QStringLiteral("linesInFront"), QJsonArray::fromStringList(linesInFront));
    head.insert(QStringLiteral("isDrawerShut"), isDrawerShut);
    head.insert(QStringLiteral("isDrawerAlone"), isDrawerAlone);
    head.insert(QStringLiteral("document"), checksumText(document));
    const QByteArray headBytes = QJsonDocument(head).toJson(QJsonDocument::Compact);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << jobMagic << headBytes << checksumOfJob(headBytes) << document;
    return bytes;
}

std::optional<QueuedJob> QueuedJob::fromBytes(const QByteArray &bytes, qint64 id,
                                              QueuedFault *fault)
{
    const auto file = partsOf(bytes, false, fault);
    auto job = file ? jobOfHead(file->head, id, fault) : std::nullopt;
    if (job && !readRequest(*file, *job, fault))
        return std::nullopt;
    return job;
}

std::optional<QueuedJob> QueuedJob::fromHead(const QByteArray &bytes, qint64 id, QueuedFault *fault)
{
    const auto file = partsOf(bytes, true, fault);
    return file ? jobOfHead(file->head, id, fault) : std::nullopt;
}

EncodedDocument QueuedJob::printed() const
{
    EncodedDocument document = request.document;
    if (isDrawerShut)
        document = withDrawerShut(document, request.profile);
    if (linesInFront.isEmpty())
        return document;
    const auto known = PrintTarget::forModel(request.profile.catalogueId(), 0);
    if (!known) {
        document.error = QStringLiteral("the model %1 isn't known").arg(entry.modelId);
        return document;
    }
    const PrintTarget target(request.profile, known->record(), request.paperId, request.baseFont);
    return withLinesInFront(document, target, linesInFront);
}

}  // namespace printerslib::drivers
