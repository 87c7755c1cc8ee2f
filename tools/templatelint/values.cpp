#include "values.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "expression.h"
#include "text.h"

namespace templatelint {

namespace {

constexpr int mostValuesOfExpression = 1 << 18;

/// Finds names in texts, however many there are.
class NameFinder
{
public:
    explicit NameFinder(const QStringList &names)
    {
        for (const QString &name : names) {
            if (!name.isEmpty())
                m_shortest = std::min(m_shortest, name.size());
        }
        for (const QString &name : names) {
            if (!name.isEmpty())
                m_names.insert(QStringView(name).left(m_shortest), name);
        }
    }
    bool findsAnyIn(const QString &text) const
    {
        const QStringView view(text);
        for (int i = 0; i <= text.size() - m_shortest; ++i) {
            for (auto name = m_names.constFind(view.mid(i, m_shortest));
                 name != m_names.constEnd() && view.mid(i).startsWith(name.key()); ++name) {
                if (view.mid(i).startsWith(*name))
                    return true;
            }
        }
        return false;
    }

private:
    int m_shortest = std::numeric_limits<int>::max();
    QMultiHash<QStringView, QStringView> m_names;  ///< by their first characters
};

}  // namespace

Values::Values(const PrinterDocument &document)
    : m_document(document),
      m_attributes(document.attributes()),
      m_formatter(0, nullptr),
      m_longestFirst(m_attributes.keys())
{
    std::stable_sort(m_longestFirst.begin(), m_longestFirst.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
    const QString markup = QStringLiteral("<>[]\n");
    m_holdMarkup = holdsAnyOf(document.entries(), markup);
    m_holdTags = document.entries().contains(QLatin1Char('<'));
    const NameFinder finder(m_longestFirst);
    for (const QString &name : qAsConst(m_longestFirst)) {
        const QString value = document.attributeValue(name).toString();
        m_holdMarkup = m_holdMarkup || holdsAnyOf(value, markup);
        m_holdTags = m_holdTags || value.contains(QLatin1Char('<'));
        m_nameOthers = m_nameOthers || finder.findsAnyIn(value);
    }
}

std::optional<QString> Values::ofTag(const QString &inner)
{
    const auto known = m_texts.constFind(inner);
    if (known != m_texts.constEnd())
        return *known;
    QString name = inner;
    QString format;
    m_formatter.extractFormat(name, format);
    return *m_texts.insert(inner, textOf(name, format));
}

std::optional<QString> Values::textOf(const QString &name, const QString &format)
{
    if (m_nameOthers && !has(name) && insertedInto(name).isEndless)
        return std::nullopt;
    QString copy = format;
    return m_formatter.nameToVal(name, m_document, copy);
}

bool Values::evaluates(const QString &expression)
{
    const auto text = textOf(expression, QStringLiteral("0"));
    return !has(expression) && text && !text->isEmpty();
}

std::optional<double> Values::resultOf(const QString &expression)
{
    const auto known = m_results.constFind(expression);
    return known != m_results.constEnd()
               ? *known
               : *m_results.insert(expression,
                                   templatelint::resultOf(insertedInto(expression).text));
}

bool Values::haveEmptyOneIn(const QString &expression) const
{
    return std::any_of(m_longestFirst.cbegin(), m_longestFirst.cend(), [&](const QString &name) {
        return !name.isEmpty() && expression.contains(name) &&
               m_document.attributeValue(name).toString().isEmpty();
    });
}

Inserted Values::insertedInto(const QString &expression) const
{
    Inserted result{expression, QVector<int>(expression.size()), {}, {}, false};
    std::iota(result.origins.begin(), result.origins.end(), 0);
    result.keyBegin.fill(-1, expression.size());
    result.keyEnd = result.keyBegin;
    const int longest = expression.size() + mostValuesOfExpression;
    for (const QString &name : m_longestFirst) {
        if (!name.isEmpty() && result.text.contains(name))
            insertValue(name, longest, result);
        result.isEndless = result.text.size() > longest;
        if (result.isEndless)
            break;
    }
    return result;
}

void Values::insertValue(const QString &name, int longest, Inserted &result) const
{
    const QString value = m_document.attributeValue(name).toString();
    QString text;
    QVector<int> origins;
    int copied = 0;
    const auto copyUpTo = [&](int end) {
        text.append(result.text.constData() + copied, end - copied);
        origins += result.origins.mid(copied, end - copied);
        copied = end;
    };
    for (int place = result.text.indexOf(name); place >= 0 && text.size() <= longest;
         place = result.text.indexOf(name, copied)) {
        const int first = result.origins.at(place);
        const int last = result.origins.at(place + name.size() - 1);
        const int begin = Text::offsetOf(first);
        if (Text::isTemplate(first) && Text::isTemplate(last)) {
            std::fill(result.keyBegin.begin() + begin, result.keyBegin.begin() + last + 1, begin);
            std::fill(result.keyEnd.begin() + begin, result.keyEnd.begin() + last + 1, last + 1);
        }
        copyUpTo(place);
        text += value;
        origins.insert(origins.size(), value.size(), Text::standIn(begin));
        copied = place + name.size();
    }
    copyUpTo(result.text.size());
    result.text = text;
    result.origins = origins;
}

}  // namespace templatelint
