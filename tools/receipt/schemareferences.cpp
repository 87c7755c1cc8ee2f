#include "schemareferences.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonValue>
#include <QMap>
#include <QQueue>
#include <QSet>
#include <cstdlib>

namespace tool {

namespace {

// Each level takes some of the stack where the schema is read, and each schema some time where a
// value is checked.
constexpr int mostSchemaLevels = 500;
constexpr double mostSchemasOfAValue = 100000;

/// What holds other schemas.
struct SchemaKeyword
{
    const char *name;
    bool isMap;   ///< of names and schemas; the others are a schema or a list of some
    bool goesOn;  ///< they are for what is inside of the value
};

constexpr SchemaKeyword schemaKeywords[] = {
    {"allOf", false, false},
    {"anyOf", false, false},
    {"oneOf", false, false},
    {"not", false, false},
    {"if", false, false},
    {"then", false, false},
    {"else", false, false},
    {"extends", false, false},
    {"type", false, false},
    {"disallow", false, false},
    {"dependencies", true, false},
    {"properties", true, true},
    {"patternProperties", true, true},
    {"additionalProperties", false, true},
    {"items", false, true},
    {"additionalItems", false, true},
    {"contains", false, true},
    {"propertyNames", false, true},
};

QString placeIn(const QString &place, QString token)
{
    token.replace(QLatin1Char('~'), QStringLiteral("~0"));
    return place + QLatin1Char('/') + token.replace(QLatin1Char('/'), QStringLiteral("~1"));
}

struct PlacedSchema
{
    QString place;  ///< such as "#/definitions/amount"
    QJsonValue value;
};

/// The schemas that a keyword has.
QVector<PlacedSchema> schemasOf(const PlacedSchema &held, bool isMap)
{
    QVector<PlacedSchema> schemas;
    if (held.value.isArray()) {
        const QJsonArray list = held.value.toArray();
        for (int i = 0; i < list.size(); ++i)
            schemas.append({placeIn(held.place, QString::number(i)), list.at(i)});
    } else if (isMap) {
        const QJsonObject map = held.value.toObject();
        for (auto member = map.begin(); member != map.end(); ++member)
            schemas.append({placeIn(held.place, member.key()), member.value()});
    } else {
        schemas.append(held);
    }
    return schemas;
}

/// Follows the references of a schema.
class SchemaReferences
{
public:
    explicit SchemaReferences(const QJsonObject &schema) : m_root{QStringLiteral("#"), schema}
    {
        collectAll();
    }

    QString fault()
    {
        if (m_levels > mostSchemaLevels)
            return QStringLiteral("its schemas lie or refer more than %1 deep")
                .arg(mostSchemaLevels);
        for (auto schema = m_parts.cbegin(); schema != m_parts.cend(); ++schema) {
            const double count = countOf(schema.key());
            if (!m_circle.isEmpty())
                return QStringLiteral("\"%1\" refers to itself").arg(m_circle);
            if (count > mostSchemasOfAValue)
                return QStringLiteral("\"%1\" is more than %2 schemas")
                    .arg(schema.key())
                    .arg(static_cast<int>(mostSchemasOfAValue));
        }
        return QString();
    }

private:
    /// Each way of writing a reference is read by itself, so the levels behind each count.
    void collectAll()
    {
        m_levels = 0;
        m_deepest = 0;
        collect(m_root, 1);
        m_levels = m_deepest;
        while (!m_targets.isEmpty() && m_levels <= mostSchemaLevels) {
            m_deepest = 0;
            collect(m_targets.dequeue(), 1);
            m_levels += m_deepest;
        }
    }

    // NOLINTNEXTLINE(misc-no-recursion): no deeper than the levels
    void collect(const PlacedSchema &schema, int level)
    {
        m_deepest = qMax(m_deepest, level);
        if (level > mostSchemaLevels)
            return;
        const QJsonObject object = schema.value.toObject();
        QSet<QString> &parts = m_parts[schema.place];
        if (object.contains(QStringLiteral("$ref"))) {
            const QJsonValue reference = object.value(QStringLiteral("$ref"));
            // What is no reference and what is in another file the library refuses.
            if (reference.isString() && !isElsewhere(reference.toString()))
                refer(reference.toString(), parts);
            return;
        }
        QVector<PlacedSchema> inner;
        for (const SchemaKeyword &keyword : schemaKeywords) {
            const QString name = QLatin1String(keyword.name);
            if (!object.contains(name))
                continue;
            const auto held =
                schemasOf({placeIn(schema.place, name), object.value(name)}, keyword.isMap);
            for (const PlacedSchema &part : held) {
                if (!part.value.isObject())
                    continue;
                inner.append(part);
                if (!keyword.goesOn)
                    parts.insert(part.place);
            }
        }
        for (const PlacedSchema &part : qAsConst(inner))
            collect(part, level + 1);
    }

    static bool isElsewhere(const QString &reference)
    {
        return !reference.isEmpty() && !reference.contains(QLatin1Char('#'));
    }

    void refer(const QString &reference, QSet<QString> &parts)
    {
        const QString pointer = reference.section(QLatin1Char('#'), 1);
        const PlacedSchema target = targetOf(pointer);
        parts.insert(target.place);
        if (m_known.contains(pointer))
            return;
        m_known.insert(pointer);
        m_targets.enqueue(target);
    }

    PlacedSchema targetOf(const QString &pointer) const
    {
        PlacedSchema target = m_root;
        const QStringList tokens = pointer.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        for (QString token : tokens) {
            token.replace(QStringLiteral("~1"), QStringLiteral("/"));
            token.replace(QStringLiteral("~0"), QStringLiteral("~"));
            const QByteArray bytes = QByteArray::fromPercentEncoding(token.toUtf8());
            if (target.value.isArray()) {
                const int index = static_cast<int>(std::strtoul(bytes.constData(), nullptr, 10));
                target = {placeIn(target.place, QString::number(index)),
                          target.value.toArray().at(index)};
            } else {
                const QString name = QString::fromUtf8(bytes);
                target = {placeIn(target.place, name), target.value.toObject().value(name)};
            }
        }
        return target;
    }

    /// How many schemas a value is checked against by this one.
    // NOLINTNEXTLINE(misc-no-recursion): no deeper than the levels, which are counted first
    double countOf(const QString &place)
    {
        if (m_open.contains(place)) {
            m_circle = place;
            return 1;
        }
        const auto known = m_counts.constFind(place);
        if (known != m_counts.constEnd())
            return *known;
        m_open.insert(place);
        double count = 1;
        const QSet<QString> parts = m_parts.value(place);
        for (const QString &part : parts)
            count += countOf(part);
        m_open.remove(place);
        m_counts.insert(place, count);
        return count;
    }

    PlacedSchema m_root;
    QMap<QString, QSet<QString>> m_parts;  ///< what a schema has for the same value
    QQueue<PlacedSchema> m_targets;
    QSet<QString> m_known;
    int m_levels = 0;
    int m_deepest = 0;
    QSet<QString> m_open;
    QHash<QString, double> m_counts;
    QString m_circle;
};

}  // namespace

QString endlessSchemaFault(const QJsonObject &schema)
{
    return SchemaReferences(schema).fault();
}

}  // namespace tool
