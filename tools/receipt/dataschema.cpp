#include "dataschema.h"

// The library else ends the program on a schema that it can't read.
#define VALIJSON_USE_EXCEPTIONS 1  // NOLINT(cppcoreguidelines-macro-usage)

#include <QJsonObject>
#include <QJsonValue>
#include <QRegularExpression>
#include <QStringList>
#include <QThread>
#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "schemapatterns.h"
#include "schemareferences.h"
#include "support.h"

namespace tool {

namespace {

using valijson::ValidationResults;
using valijson::adapters::QtJsonAdapter;

QString &schemaFile()
{
    static QString _file;
    return _file;
}

QString schemaOptionName()
{
    return QStringLiteral("data-schema");
}

/// As a schema it would take everything.
bool isJsonOfDocument(const QJsonObject &json)
{
    const QStringList keys = json.keys();
    const QStringList known{QStringLiteral("attributes"), QStringLiteral("entries"),
                            QStringLiteral("isCopy")};
    return !keys.isEmpty() && std::all_of(keys.cbegin(), keys.cend(),
                                          [&](const QString &key) { return known.contains(key); });
}

/// What the library finds at a place.
struct SchemaFault
{
    QStringList keys;
    QString text;
    bool namesKey = false;  ///< the last key is one that is missing, or isn't allowed
};

/// A text of the library that is better told of the key that it names.
struct Rewording
{
    const char *pattern;
    const char *text;  ///< empty: it only says that there is another fault further inside
};

constexpr Rewording rewordings[] = {
    {"^Missing required property '(.*)'\\.$", "is missing"},
    {"'properties' or 'additionalProperties' constraints: '(.*)'\\.$", "isn't allowed there"},
    {"^Failed to validate against schema associated with property name", ""},
    {"^Failed to validate against child schema", ""},
    {"^Failed to validate against a conditional schema", ""},
    {"^Failed to validate against additional properties schema", ""},
};

/// The keys of a place such as "<root>", "[attributes]", "[PAID]".
QStringList keysOfContext(const std::vector<std::string> &context)
{
    QStringList keys;
    for (const std::string &step : context) {
        const QString text = QString::fromStdString(step);
        if (text.startsWith(QLatin1Char('[')))
            keys.append(text.mid(1, text.size() - 2));
    }
    return keys;
}

/// Nothing for a fault that says nothing of its own.
std::optional<SchemaFault> schemaFaultOf(const ValidationResults::Error &error)
{
    SchemaFault fault{keysOfContext(error.context), QString::fromStdString(error.description),
                      false};
    for (const Rewording &rewording : rewordings) {
        const QRegularExpression pattern(QLatin1String(rewording.pattern));
        const auto match = pattern.match(fault.text);
        if (!match.hasMatch())
            continue;
        if (*rewording.text == '\0')
            return std::nullopt;
        fault.keys.append(match.captured(1));
        fault.text = QLatin1String(rewording.text);
        fault.namesKey = true;
        break;
    }
    return fault;
}

/// What the schema itself says of a place; empty if nothing.
QString descriptionOf(QJsonObject schema, const QStringList &keys)
{
    if (keys.isEmpty())
        return QString();
    for (const QString &key : keys) {
        const QJsonObject properties = schema.value(QStringLiteral("properties")).toObject();
        schema = properties.value(key).toObject();
    }
    return schema.value(QStringLiteral("description")).toString();
}

/// A fault in the words of the schema, if it has some for the place.
QString faultLine(SchemaFault fault, const QJsonObject &schema)
{
    QString description = descriptionOf(schema, fault.keys);
    // What is missing or too much in a value that is described: the value is another one.
    constexpr int keysOfAttribute = 2;
    if (description.isEmpty() && fault.namesKey && fault.keys.size() > keysOfAttribute) {
        const QStringList value = fault.keys.mid(0, fault.keys.size() - 1);
        description = descriptionOf(schema, value);
        if (!description.isEmpty())
            fault = {value, QString(), false};
    }
    if (!description.isEmpty()) {
        const QString expected = QStringLiteral("%1 is expected").arg(description);
        fault.text = fault.namesKey ? fault.text + QStringLiteral("; ") + expected : expected;
    }
    const QString place = fault.keys.join(QLatin1Char('.'));
    return place.isEmpty() ? fault.text : place + QStringLiteral(": ") + fault.text;
}

/// The lines that tell the faults, one for each place that the schema describes.
QStringList faultLines(ValidationResults &results, const QJsonObject &schema)
{
    QStringList lines;
    ValidationResults::Error error;
    while (results.popError(error)) {
        if (const auto fault = schemaFaultOf(error))
            lines.append(faultLine(*fault, schema));
    }
    lines.removeDuplicates();
    return lines;
}

/// The schema that a document is checked against: one whose check ends.
QJsonObject usableSchema(const QJsonObject &schema, const QJsonObject &document)
{
    const QString fault = endlessSchemaFault(schema);
    if (!fault.isEmpty())
        throw std::runtime_error(fault.toStdString());
    return withPatternsMatched(schema, document);
}

QStringList schemaFaultsOf(const QJsonObject &schema, const QJsonObject &document)
{
    valijson::Schema parsed;
    const QJsonValue schemaValue(usableSchema(schema, document));
    const QJsonValue documentValue(document);
    valijson::SchemaParser().populateSchema(QtJsonAdapter(schemaValue), parsed);
    ValidationResults results;
    valijson::Validator(valijson::Validator::kStrongTypes)
        .validate(parsed, QtJsonAdapter(documentValue), &results);
    return faultLines(results, schema);
}

/// The library takes some of the stack for each schema that lies in another one, and who runs the
/// tool may have given it little.
constexpr unsigned stackOfSchemas = 64U << 20U;

QStringList schemaFaultsOnOwnStack(const QJsonObject &schema, const QJsonObject &document)
{
    QStringList faults;
    std::exception_ptr failure =
        std::make_exception_ptr(std::runtime_error("there is no memory for its check"));
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            faults = schemaFaultsOf(schema, document);
            failure = nullptr;
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    thread->setStackSize(stackOfSchemas);
    thread->start();
    thread->wait();
    if (failure)
        std::rethrow_exception(failure);
    return faults;
}

}  // namespace

QCommandLineOption dataSchemaOption()
{
    return {schemaOptionName(),
            QStringLiteral("Check the document against this JSON Schema first, such as \"receipt "
                           "data --schema\" writes."),
            QStringLiteral("FILE")};
}

bool useDataSchema(const QCommandLineParser &parser, bool fillsDocument)
{
    if (!parser.isSet(schemaOptionName()))
        return true;
    if (!fillsDocument) {
        complain(QStringLiteral("--%1 needs a document").arg(schemaOptionName()));
        return false;
    }
    schemaFile() = parser.value(schemaOptionName());
    if (schemaFile() != QLatin1String("-") && !schemaFile().isEmpty())
        return true;
    complain(QStringLiteral("--%1: \"%2\" is no file").arg(schemaOptionName(), schemaFile()));
    return false;
}

QStringList dataSchemaFiles()
{
    return schemaFile().isEmpty() ? QStringList() : QStringList(schemaFile());
}

bool fitsDataSchema(const QString &fileName, const QJsonDocument &json)
{
    if (schemaFile().isEmpty())
        return true;
    const auto schema = readJson(schemaFile());
    if (!schema)
        return false;
    if (!schema->isObject()) {
        complain(QStringLiteral("%1: the schema is no JSON object").arg(schemaFile()));
        return false;
    }
    if (isJsonOfDocument(schema->object())) {
        complain(QStringLiteral("%1: this is the JSON of a document, where a schema is expected")
                     .arg(schemaFile()));
        return false;
    }
    try {
        const QStringList faults = schemaFaultsOnOwnStack(schema->object(), json.object());
        for (const QString &fault : faults)
            complain(QStringLiteral("%1: %2 (%3)").arg(fileName, fault, schemaFile()));
        return faults.isEmpty();
    } catch (const std::exception &fault) {
        complain(QStringLiteral("%1: the schema can't be used: %2")
                     .arg(schemaFile(), QString::fromUtf8(fault.what())));
        return false;
    }
}

}  // namespace tool
