#include "needs.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

#include "expression.h"
#include "printerdocs/template/templatetags_p.h"
#include "tags.h"
#include "text.h"

namespace templatelint {

namespace {

/// What the tags of a name ask for, one beside the other.
struct Wishes
{
    bool calculates = false;
    bool isWhole = false;
    bool isReal = false;
    bool hasDate = false;
    bool hasTime = false;
};

constexpr int usualDecimals = 2;

int formatDecimals(const QString &fraction)
{
    const auto isZero = [](QChar c) { return c == QLatin1Char('0') || c == QLatin1Char('#'); };
    const auto end = std::find_if_not(fraction.cbegin(), fraction.cend(), isZero);
    const int count = static_cast<int>(end - fraction.cbegin());
    return count == 0 ? usualDecimals : count;
}

QString withoutQuotations(const QString &format)
{
    static const QRegularExpression quotation(QStringLiteral("'[^']*'?"));
    return QString(format).remove(quotation);
}

/// Takes over what a format says.
void addFormat(const QString &format, Wishes &wishes, NeededValue &value)
{
    const QString letters = withoutQuotations(format);
    const bool hasDate = holdsAnyOf(letters, QStringLiteral("dmMy"));
    const bool hasTime = holdsAnyOf(letters, QStringLiteral("hHnsz"));
    if (hasDate || hasTime) {
        wishes.hasDate = wishes.hasDate || hasDate;
        wishes.hasTime = wishes.hasTime || hasTime;
        return;
    }
    const int point = format.indexOf(QLatin1Char('.'));
    if (point >= 0) {
        wishes.isReal = true;
        value.decimals = qMax(value.decimals, formatDecimals(format.mid(point + 1)));
    } else if (format.count(QLatin1Char('0')) > 1) {
        wishes.isWhole = true;
    } else if (format.contains(QLatin1Char('0'))) {
        wishes.calculates = true;
    }
}

ValueKind kindAskedBy(const Wishes &wishes)
{
    const bool isNumber = wishes.calculates || wishes.isWhole || wishes.isReal;
    const bool isMoment = wishes.hasDate || wishes.hasTime;
    if (isNumber == isMoment)
        return ValueKind::Any;
    if (isMoment && wishes.hasDate)
        return wishes.hasTime ? ValueKind::DateTime : ValueKind::Date;
    if (isMoment)
        return ValueKind::Time;
    if (wishes.isReal)
        return ValueKind::Real;
    return wishes.isWhole ? ValueKind::Whole : ValueKind::Number;
}

/// The names in an expression that aren't its functions.
QStringList namesIn(const QString &expression)
{
    QStringList names;
    for (int begin = 0; begin < expression.size(); ++begin) {
        if (!isWordBegin(expression, begin))
            continue;
        const int end = wordEnd(expression, begin);
        const QString word = expression.mid(begin, end - begin);
        const bool isCall = end < expression.size() && expression.at(end) == QLatin1Char('(');
        if (!isCall && !isFunction(word))
            names.append(word);
        begin = end - 1;
    }
    names.removeDuplicates();
    return names;
}

bool isOneName(const QString &name)
{
    return !holdsAnyOf(name, QStringLiteral("+-*/%^()<"));
}

/// Gathers the attributes of a template, tag by tag.
class NeedsReader
{
public:
    explicit NeedsReader(const QStringList &known) : m_known(known.cbegin(), known.cend()) {}

    void readLine(int number, const QString &line)
    {
        const QString upper = line.toUpper();
        m_needs.entries = m_needs.entries || upper.contains(templates::entriesTag);
        m_needs.copyMark = m_needs.copyMark || upper.contains(templates::copyNumberTag);
        const QVector<bool> inGroups = placesInGroups(line);
        const QVector<AttributeTag> tags = attributeTags(line);
        for (const AttributeTag &tag : tags) {
            if (!isEntriesTag(tag.inner) && !isFiscalMarker(tag.inner) && !isSymbolsTag(tag.inner))
                readTag(number, line, tag, inGroups.at(tag.begin));
        }
    }

    Needs finished()
    {
        for (NeededValue &value : m_needs.values)
            value.kind = kindAskedBy(m_wishes.value(value.name));
        return m_needs;
    }

private:
    void readTag(int number, const QString &line, const AttributeTag &tag, bool isInGroup)
    {
        const ValueUse use{number, tag.begin + 1, line.mid(tag.begin, tag.end - tag.begin)};
        if (m_known.contains(tag.name) ||
            (isOneName(tag.name) && !namesIn(tag.name).isEmpty() && !intendedMarkup(tag.inner))) {
            NeededValue &value = used(tag.name, use, isInGroup);
            value.isPrinted = value.isPrinted || tag.format.isEmpty();
            addFormat(tag.format, m_wishes[tag.name], value);
            return;
        }
        if (isOneName(tag.name))
            return;
        const QStringList names = namesIn(tag.name);
        for (const QString &name : names) {
            used(name, use, isInGroup);
            m_wishes[name].calculates = true;
        }
    }

    NeededValue &used(const QString &name, const ValueUse &use, bool isInGroup)
    {
        auto found = m_places.find(name);
        if (found == m_places.end()) {
            found = m_places.insert(name, m_needs.values.size());
            NeededValue value;
            value.name = name;
            m_needs.values.append(value);
        }
        NeededValue &value = m_needs.values[*found];
        value.uses.append(use);
        value.isOptional = value.isOptional && isInGroup;
        return value;
    }

    const QSet<QString> m_known;
    Needs m_needs;
    QHash<QString, int> m_places;
    QHash<QString, Wishes> m_wishes;
};

}  // namespace

Needs needsOf(const QStringList &lines, const QStringList &known)
{
    NeedsReader reader(known);
    for (int i = 0; i < lines.size(); ++i)
        reader.readLine(i + 1, lines.at(i));
    return reader.finished();
}

}  // namespace templatelint
