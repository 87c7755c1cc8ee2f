#include "schemapatterns.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>
#include <functional>
#include <stdexcept>
#include <string>

namespace tool {

namespace {

// Longer ones are no date and no time.
constexpr int longestFormatted = 100;
// Each is read by itself.
constexpr int mostNamedProperties = 100000;

/// Collects what a schema can have patterns for.
// NOLINTNEXTLINE(misc-no-recursion): JSON has an end of depth, which Qt keeps to.
void collectTexts(const QJsonValue &value, QStringList &names, QStringList &texts)
{
    if (value.isString())
        texts.append(value.toString());
    const QJsonArray list = value.toArray();
    for (const QJsonValue &element : list)
        collectTexts(element, names, texts);
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        names.append(member.key());
        collectTexts(member.value(), names, texts);
    }
}

/// The expression of a schema, as Qt writes it: "$" is no place in front of a line feed.
QString qtPatternOf(const QString &pattern)
{
    QString result;
    bool isInClass = false;
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar character = pattern.at(i);
        if (character == QLatin1Char('\\') && i + 1 < pattern.size()) {
            ++i;
            const bool isUnicode = pattern.at(i) == QLatin1Char('u') && i + 4 < pattern.size();
            result += isUnicode ? QStringLiteral("\\x{%1}").arg(pattern.mid(i + 1, 4))
                                : pattern.mid(i - 1, 2);
            i += isUnicode ? 4 : 0;
            continue;
        }
        if (character == QLatin1Char('['))
            isInClass = true;
        else if (character == QLatin1Char(']'))
            isInClass = false;
        const bool isEnd = character == QLatin1Char('$') && !isInClass;
        result += isEnd ? QStringLiteral("\\z") : QString(character);
    }
    return result;
}

QRegularExpression expressionOf(const QString &pattern)
{
    QRegularExpression expression(qtPatternOf(pattern));
    if (!expression.isValid())
        throw std::runtime_error(QStringLiteral("the pattern \"%1\": %2")
                                     .arg(pattern, expression.errorString())
                                     .toStdString());
    return expression;
}

bool fitsPattern(const QString &text, const QRegularExpression &expression, const QString &pattern)
{
    const QRegularExpressionMatch match = expression.match(text);
    if (match.isValid())
        return match.hasMatch();
    constexpr int shownText = 30;
    throw std::runtime_error(QStringLiteral("the pattern \"%1\" takes too much for the text \"%2\"")
                                 .arg(pattern, text.size() > shownText
                                                   ? text.left(shownText) + QStringLiteral("...")
                                                   : text)
                                 .toStdString());
}

/// Rewrites a schema for the texts of one document.
class PatternMatching
{
public:
    explicit PatternMatching(const QJsonObject &document)
    {
        collectTexts(document, m_names, m_texts);
        m_names.removeDuplicates();
        m_texts += m_names;
        m_texts.removeDuplicates();
    }

    /// @param areNames the object's keys are names, and no keywords
    // NOLINTNEXTLINE(misc-no-recursion): JSON has an end of depth, which Qt keeps to.
    QJsonValue matched(const QJsonValue &value, bool areNames)
    {
        if (value.isArray()) {
            QJsonArray list;
            const QJsonArray given = value.toArray();
            for (const QJsonValue &element : given)
                list.append(matched(element, false));
            return list;
        }
        if (!value.isObject())
            return value;
        QJsonObject object = value.toObject();
        const QStringList keys = object.keys();
        for (const QString &key : keys) {
            if (areNames || !isValueKey(key))
                object.insert(key, matched(object.value(key), !areNames && isMapKey(key)));
        }
        return areNames ? object : withoutPatterns(object);
    }

private:
    static bool isValueKey(const QString &key)
    {
        static const QStringList keys{QStringLiteral("const"), QStringLiteral("default"),
                                      QStringLiteral("enum"), QStringLiteral("examples")};
        return keys.contains(key);
    }

    static bool isMapKey(const QString &key)
    {
        static const QStringList keys{QStringLiteral("$defs"), QStringLiteral("definitions"),
                                      QStringLiteral("dependencies"), QStringLiteral("properties"),
                                      QStringLiteral("patternProperties")};
        return keys.contains(key);
    }

    QJsonArray textsWhere(const std::function<bool(const QString &)> &holds) const
    {
        QJsonArray texts;
        for (const QString &text : m_texts) {
            if (holds(text))
                texts.append(text);
        }
        return texts;
    }

    /// The library lets everything pass by these, most of which are younger than it.
    static void refuseUncheckedKeys(const QJsonObject &schema)
    {
        for (const char *key : {"$dynamicRef", "$recursiveRef", "dependentRequired",
                                "dependentSchemas", "maxContains", "minContains", "prefixItems",
                                "propertyNames", "unevaluatedItems", "unevaluatedProperties"}) {
            if (schema.contains(QLatin1String(key)))
                throw std::runtime_error("nothing is checked by \"" + std::string(key) + "\"");
        }
        // The library divides by it.
        const QJsonValue multiple = schema.value(QStringLiteral("multipleOf"));
        if (multiple.isDouble() && multiple.toDouble() <= 0)
            throw std::runtime_error("\"multipleOf\" is a number above 0");
    }

    QJsonObject withoutPatterns(QJsonObject schema)
    {
        refuseUncheckedKeys(schema);
        // What is relative to an address is looked for in other files, which aren't read.
        if (schema.value(QStringLiteral("id")).isString())
            schema.remove(QStringLiteral("id"));
        const QJsonValue pattern = schema.value(QStringLiteral("pattern"));
        if (pattern.isString()) {
            const QRegularExpression expression = expressionOf(pattern.toString());
            schema.remove(QStringLiteral("pattern"));
            refuse(schema, textsWhere([&](const QString &text) {
                       return !fitsPattern(text, expression, pattern.toString());
                   }));
        }
        static const QStringList formats{QStringLiteral("date"), QStringLiteral("time"),
                                         QStringLiteral("date-time")};
        if (formats.contains(schema.value(QStringLiteral("format")).toString()))
            withoutLongTexts(schema);
        nameProperties(schema);
        return schema;
    }

    /// Puts the names of the document in place of the patterns for names.
    void nameProperties(QJsonObject &schema)
    {
        const QString patternsKey = QStringLiteral("patternProperties");
        const QString propertiesKey = QStringLiteral("properties");
        const QJsonObject patterns = schema.value(patternsKey).toObject();
        if (patterns.isEmpty())
            return;
        QMap<QString, QJsonArray> schemas;
        for (auto pattern = patterns.begin(); pattern != patterns.end(); ++pattern) {
            const QRegularExpression expression = expressionOf(pattern.key());
            for (const QString &name : qAsConst(m_names)) {
                if (!fitsPattern(name, expression, pattern.key()))
                    continue;
                schemas[name].append(pattern.value());
                ++m_namedProperties;
            }
            if (m_namedProperties > mostNamedProperties)
                throw std::runtime_error("its patterns are for more than " +
                                         std::to_string(mostNamedProperties) + " names");
        }
        QJsonObject properties = schema.value(propertiesKey).toObject();
        for (auto name = schemas.begin(); name != schemas.end(); ++name) {
            if (properties.contains(name.key()))
                name->append(properties.value(name.key()));
            properties.insert(name.key(), name->size() == 1
                                              ? name->at(0)
                                              : QJsonObject{{QStringLiteral("allOf"), *name}});
        }
        schema.insert(propertiesKey, properties);
        schema.remove(patternsKey);
    }

    void withoutLongTexts(QJsonObject &schema) const
    {
        const QJsonArray texts =
            textsWhere([](const QString &text) { return text.size() > longestFormatted; });
        if (texts.isEmpty())
            return;
        schema.remove(QStringLiteral("format"));
        refuse(schema, texts);
    }

    static void refuse(QJsonObject &schema, const QJsonArray &texts)
    {
        if (texts.isEmpty())
            return;
        const QJsonObject never{{QStringLiteral("pattern"), QStringLiteral("[^\\s\\S]")}};
        QJsonArray all = schema.value(QStringLiteral("allOf")).toArray();
        all.append(QJsonObject{{QStringLiteral("if"), QJsonObject{{QStringLiteral("enum"), texts}}},
                               {QStringLiteral("then"), never}});
        schema.insert(QStringLiteral("allOf"), all);
    }

    QStringList m_names;
    QStringList m_texts;  ///< with the names, as a schema can be for a name as for a text
    int m_namedProperties = 0;
};

}  // namespace

QJsonObject withPatternsMatched(const QJsonObject &schema, const QJsonObject &document)
{
    return PatternMatching(document).matched(schema, false).toObject();
}

}  // namespace tool
