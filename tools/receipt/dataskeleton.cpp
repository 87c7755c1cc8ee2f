#include "dataskeleton.h"

#include <QJsonArray>
#include <QVariant>

#include "support.h"
#include "wordwrap.h"

namespace tool {

namespace {

using templatelint::NeededValue;
using templatelint::Needs;
using templatelint::ValueKind;
using templatelint::ValueUse;

constexpr char wholeDigits[] = "^-?[0-9]{1,18}$";
constexpr char anyDigits[] = "^-?[0-9]{1,18}([.][0-9]{1,18})?$";
constexpr char decimalDigits[] = "^-?[0-9]{1,18}[.][0-9]{1,18}$";

QJsonObject typedSchema(const char *type)
{
    return {{QStringLiteral("type"), QLatin1String(type)}};
}

QJsonObject textSchema(const char *pattern)
{
    QJsonObject schema = typedSchema("string");
    schema.insert(QStringLiteral("pattern"), QLatin1String(pattern));
    return schema;
}

/// An object with this key alone, which has a text.
QJsonObject objectSchema(const QString &key)
{
    QJsonObject schema = typedSchema("object");
    schema.insert(QStringLiteral("properties"), QJsonObject{{key, typedSchema("string")}});
    schema.insert(QStringLiteral("required"), QJsonArray{key});
    schema.insert(QStringLiteral("additionalProperties"), false);
    return schema;
}

QJsonArray anyValueSchemas()
{
    return {typedSchema("string"), typedSchema("number"), typedSchema("boolean"),
            typedSchema("object")};
}

QJsonArray numberSchemas()
{
    return {typedSchema("number"), textSchema(anyDigits)};
}

QJsonArray wholeNumberSchemas()
{
    return {typedSchema("integer"), textSchema(wholeDigits)};
}

/// JSON doesn't tell 100.00 from 100, which would print as a whole number.
QJsonArray realNumberSchemas()
{
    QJsonObject broken = typedSchema("number");
    broken.insert(QStringLiteral("not"), typedSchema("integer"));
    return {textSchema(decimalDigits), broken};
}

QJsonArray dateSchemas()
{
    return {objectSchema(QStringLiteral("date")), objectSchema(QStringLiteral("datetime"))};
}

QJsonArray timeSchemas()
{
    return {objectSchema(QStringLiteral("time")), objectSchema(QStringLiteral("datetime"))};
}

QJsonArray momentSchemas()
{
    return {objectSchema(QStringLiteral("datetime"))};
}

QJsonValue sampleText(const NeededValue &value)
{
    return readsAsNumber(value.name) ? QStringLiteral("text %1").arg(value.name) : value.name;
}

QJsonValue sampleNumber(const NeededValue &value)
{
    return value.isPrinted ? QJsonValue(10) : QJsonValue(QStringLiteral("10.00"));
}

QJsonValue sampleWhole(const NeededValue &)
{
    return 10;
}

QJsonValue sampleReal(const NeededValue &value)
{
    return QStringLiteral("10.") + QString(value.decimals, QLatin1Char('0'));
}

QJsonValue sampleDate(const NeededValue &)
{
    return QJsonObject{{QStringLiteral("date"), QStringLiteral("2026-03-14")}};
}

QJsonValue sampleTime(const NeededValue &)
{
    return QJsonObject{{QStringLiteral("time"), QStringLiteral("18:05:30")}};
}

QJsonValue sampleDateAndTime(const NeededValue &)
{
    return QJsonObject{{QStringLiteral("datetime"), QStringLiteral("2026-03-14T18:05:30")}};
}

struct KindRow
{
    ValueKind kind;
    const char *about;
    QJsonValue (*sample)(const NeededValue &value);
    QJsonArray (*schema)();  ///< one of them holds
};

constexpr KindRow kinds[] = {
    {ValueKind::Any, "a text, or a value of any kind", sampleText, anyValueSchemas},
    {ValueKind::Number, "a number, such as 10 or \"10.00\"", sampleNumber, numberSchemas},
    {ValueKind::Whole, "a whole number, such as 10, or a text of digits, such as \"007723\"",
     sampleWhole, wholeNumberSchemas},
    {ValueKind::Real, "a text with decimals, such as \"10.00\"", sampleReal, realNumberSchemas},
    {ValueKind::Date, "a date, such as {\"date\": \"2026-03-14\"}", sampleDate, dateSchemas},
    {ValueKind::Time, "a time, such as {\"time\": \"18:05:30\"}", sampleTime, timeSchemas},
    {ValueKind::DateTime, "a date with a time, such as {\"datetime\": \"2026-03-14T18:05:30\"}",
     sampleDateAndTime, momentSchemas},
};

const KindRow &kindRowOf(ValueKind kind)
{
    for (const KindRow &row : kinds) {
        if (row.kind == kind)
            return row;
    }
    return kinds[0];
}

/// What a value is to be, in words.
QString aboutValue(const NeededValue &value)
{
    const QString about = QLatin1String(kindRowOf(value.kind).about);
    return value.isOptional
               ? about + QStringLiteral("; if it is empty or zero, its groups aren't printed")
               : about;
}

QJsonObject schemaOfValue(const NeededValue &value)
{
    QJsonArray choices = kindRowOf(value.kind).schema();
    if (value.isOptional)
        choices.append(QJsonObject{{QStringLiteral("enum"), QJsonArray{QString(), QJsonValue(0)}}});
    return {{QStringLiteral("description"), QLatin1String(kindRowOf(value.kind).about)},
            {QStringLiteral("anyOf"), choices}};
}

QJsonObject schemaOfAttributes(const Needs &needs)
{
    QJsonObject properties;
    QJsonArray required;
    for (const NeededValue &value : needs.values) {
        properties.insert(value.name, schemaOfValue(value));
        if (!value.isOptional)
            required.append(value.name);
    }
    QJsonObject schema = typedSchema("object");
    schema.insert(QStringLiteral("properties"), properties);
    schema.insert(QStringLiteral("required"), required);
    return schema;
}

/// A value, in one line; an object, such as that of a date, with a blank behind its key.
QString valueText(const QJsonValue &value)
{
    // Qt reads all digits of a whole number, and writes those that a double has.
    const QVariant variant = value.toVariant();
    if (variant.type() == QVariant::LongLong)
        return QString::number(variant.toLongLong());
    const QJsonObject object = value.toObject();
    if (object.size() != 1)
        return jsonText(value);
    return QStringLiteral("{%1: %2}")
        .arg(jsonText(object.begin().key()), jsonText(object.begin().value()));
}

QString memberLine(const QString &indent, const QString &name, const QJsonValue &value)
{
    return indent + jsonText(name) + QStringLiteral(": ") + valueText(value);
}

}  // namespace

QJsonValue sampleOf(const NeededValue &value)
{
    return kindRowOf(value.kind).sample(value);
}

QString sampleEntries()
{
    return QStringLiteral("First=10.00\tSecond=20.00");
}

QStringList linesOf(const DataText &data)
{
    QStringList rows;
    for (const DataRow &row : data.attributes)
        rows.append(memberLine(QStringLiteral("    "), row.name, row.value));
    QStringList members{
        rows.isEmpty()
            ? QStringLiteral("  \"attributes\": {}")
            : QStringLiteral("  \"attributes\": {\n%1\n  }").arg(rows.join(QStringLiteral(",\n")))};
    const QString indent = QStringLiteral("  ");
    if (!data.entries.isUndefined())
        members.append(memberLine(indent, QStringLiteral("entries"), data.entries));
    if (!data.isCopy.isUndefined())
        members.append(memberLine(indent, QStringLiteral("isCopy"), data.isCopy));
    const QString text =
        QStringLiteral("{\n") + members.join(QStringLiteral(",\n")) + QStringLiteral("\n}");
    return text.split(QLatin1Char('\n'));
}

QStringList commentsOn(const Needs &needs)
{
    QStringList lines;
    for (const NeededValue &value : needs.values) {
        lines.append(QStringLiteral("%1: %2").arg(value.name, aboutValue(value)));
        for (const ValueUse &use : value.uses)
            lines.append(QStringLiteral("  %1:%2: %3").arg(use.line).arg(use.column).arg(use.tag));
    }
    if (needs.entries)
        lines.append(
            QStringLiteral("entries: a line each, name and value with \"=\" between them; "
                           "the entries with tabulators between them"));
    if (needs.copyMark)
        lines.append(QStringLiteral("isCopy: true for a receipt that is printed again"));
    return lines;
}

QJsonObject schemaOf(const Needs &needs, const QString &title)
{
    const QJsonObject properties{{QStringLiteral("attributes"), schemaOfAttributes(needs)},
                                 {QStringLiteral("entries"), typedSchema("string")},
                                 {QStringLiteral("isCopy"), typedSchema("boolean")}};
    QJsonArray required{QStringLiteral("attributes")};
    if (needs.entries)
        required.append(QStringLiteral("entries"));
    QJsonObject schema = typedSchema("object");
    schema.insert(QStringLiteral("$schema"),
                  QStringLiteral("http://json-schema.org/draft-07/schema#"));
    schema.insert(QStringLiteral("title"), title);
    schema.insert(QStringLiteral("properties"), properties);
    schema.insert(QStringLiteral("required"), required);
    schema.insert(QStringLiteral("additionalProperties"), false);
    return schema;
}

}  // namespace tool
