#include "sums.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "amounts.h"
#include "attributes.h"
#include "words.h"

namespace templatelint {

namespace {

/// How a sum is rounded to its last decimal in an expression.
QString roundedParts(int decimals, const QStringList &parts)
{
    const qint64 one = unitsOfOne(decimals);
    QStringList rounded;
    for (const QString &part : parts)
        rounded.append(decimals == 0
                           ? QStringLiteral("floor(%1+0.500001)").arg(part)
                           : QStringLiteral("floor(%1*%2+0.500001)/%2").arg(part).arg(one));
    return rounded.join(QLatin1Char('+'));
}

/// The terms of an expression that adds and subtracts, with their signs; less than two if it
/// doesn't.
struct Term
{
    QString text;
    int sign;
};

QString normalized(QString term)
{
    static const QRegularExpression timesOne(QStringLiteral("^1\\*|\\*1$"));
    term.remove(QLatin1Char(' '));
    return term.remove(timesOne);
}

QVector<Term> termsOf(const QString &expression)
{
    const QString text = QString(expression).remove(QLatin1Char(' '));
    QVector<Term> terms;
    int depth = 0;
    int begin = 0;
    int sign = 1;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        const bool isSign = c == QLatin1Char('+') || c == QLatin1Char('-');
        const bool divides =
            i > begin && depth == 0 && isSign &&
            (text.at(i - 1).isLetterOrNumber() || QLatin1String(")_").contains(text.at(i - 1)));
        if (!divides)
            continue;
        terms.append({normalized(text.mid(begin, i - begin)), sign});
        sign = c == QLatin1Char('-') ? -1 : 1;
        begin = i + 1;
    }
    terms.append({normalized(text.mid(begin)), sign});
    return terms;
}

/// An amount in a column that is added up.
struct Part
{
    qint64 units;
    bool isEntry;
    QString label;
};

/// Finds totals among the amounts of a piece that have the same number of decimals, from top to
/// bottom.
class AmountColumn
{
public:
    AmountColumn(int decimals, const QHash<int, AttributeTag> &tags, const Values &values)
        : m_decimals(decimals), m_tags(tags), m_values(values)
    {}

    void read(const Figure &figure)
    {
        if (figure.number && figure.number->decimals == m_decimals)
            take(figure);
        else
            doubt(figure);
    }
    const QVector<WrongSum> &wrongSums() const { return m_wrong; }

private:
    static constexpr int usualDecimals = 2;
    static constexpr int mostReached = 4096;

    bool isEntry(const Figure &figure) const
    {
        const auto tag = m_tags.constFind(figure.offset);
        return tag != m_tags.constEnd() && isEntriesTag(tag->inner);
    }
    /// What may be an amount and can't be added.
    void doubt(const Figure &figure)
    {
        const bool isUsual = m_decimals == usualDecimals;
        // Figures without decimals are numbers of documents and tables, too.
        const bool mayBeAdded =
            figure.number ? !isUsual || !m_parts.isEmpty() : holdsAmount(figure.text);
        m_isUnclear = m_isUnclear || mayBeAdded || isEntry(figure);
        // What is large doesn't make a difference by rounding.
        m_mayBeSmall = m_mayBeSmall || holdsSmallAmount(figure.text, m_decimals) ||
                       (figure.number && !isUsual);
    }
    void take(const Figure &figure)
    {
        const qint64 units = figure.number->units;
        const Part part{units, isEntry(figure), figure.label};
        const bool isTotal = isTotalOf(figure);
        if (isTotal)
            judge(figure);
        // What is the sum of all above it stands for them, whatever it is called. An entry may be
        // so by chance.
        const bool isSum = m_parts.size() + m_asides.size() > 1 &&
                           (units == m_sum || units == m_sum + m_sumOfAsides) &&
                           (!part.isEntry || readsLikeATotal(part.label));
        if (isTotal || isSum)
            startAnew();
        const bool isAside =
            !isTotal && !isSum && (readsLikeAside(part.label) || readsLikeATotal(part.label));
        (isAside ? m_asides : m_parts).append(part);
        (isAside ? m_sumOfAsides : m_sum) += units;
    }
    void startAnew()
    {
        m_parts.clear();
        m_asides.clear();
        m_sum = 0;
        m_sumOfAsides = 0;
        m_isUnclear = false;
        m_mayBeSmall = false;
    }
    bool isTotalOf(const Figure &figure) const
    {
        static const QRegularExpression name(
            QStringLiteral("^(sub_?)?(grand_?)?(total|sum|itogo?|gesamt|summe|amount)"
                           "(_?(sum|due|amount))?$"),
            QRegularExpression::CaseInsensitiveOption);
        const auto tag = m_tags.constFind(figure.offset);
        if (tag == m_tags.constEnd() || isEntriesTag(tag->inner))
            return false;
        const bool isNamedSo = tag->name.contains(name) || termsOf(tag->name).size() > 1;
        return readsLikeATotal(figure.label) || (isNamedSo && !readsLikeAside(figure.label));
    }

    void judge(const Figure &total)
    {
        const qint64 units = total.number->units;
        const QString name = m_tags.constFind(total.offset)->name;
        const auto reached = reachableSums();
        if (reached.contains(units) || reached.size() > mostReached ||
            isSumOfOthers(units, reached) || isRoundedOnPurpose(name))
            return;
        const bool mayBeCash = m_values.has(name) && mayBeRoundedCash(units, reached);
        if (const auto sum = nearSum(units)) {
            tell(total, mayBeCash ? Severity::Warning : Severity::Error,
                 Words::tr("%1 is printed, and the amounts above add up to %2: where each is "
                           "rounded by itself, so are the parts of the sum, as in ")
                         .arg(toString(*total.number), toString({*sum, m_decimals})) +
                     roundedParts(m_decimals, {QStringLiteral("A"), QStringLiteral("B")}));
            return;
        }
        if (!mayBeCash && areAllEntries() && readsLikeATotal(total.label))
            tell(total, Severity::Warning,
                 Words::tr("%1 is printed, and the entries above add up to %2")
                         .arg(toString(*total.number), toString({m_sum, m_decimals})) +
                     (m_asides.isEmpty()
                          ? QString()
                          : Words::tr(" without \"%1\"")
                                .arg(clipped(m_asides.constFirst().label.trimmed()))));
    }
    void tell(const Figure &total, Severity severity, const QString &message)
    {
        m_wrong.append({total.offset, severity, message});
    }

    /// What the amounts come to, each of those aside added, taken off, or left out.
    QSet<qint64> reachableSums() const
    {
        QSet<qint64> sums{m_sum};
        for (const Part &aside : m_asides) {
            QSet<qint64> more = sums;
            for (const qint64 sum : qAsConst(sums))
                more << sum + aside.units << sum - aside.units;
            sums = more;
            if (sums.size() > mostReached)
                break;
        }
        return sums;
    }
    /// Whether one of the amounts is no part of the sum, or is taken off it.
    bool isSumOfOthers(qint64 total, const QSet<qint64> &reached) const
    {
        return std::any_of(m_parts.cbegin(), m_parts.cend(), [&](const Part &part) {
            return reached.contains(total + part.units) || reached.contains(total + 2 * part.units);
        });
    }
    /// Whether a total's expression rounds to something else than its last decimal.
    bool isRoundedOnPurpose(const QString &expression) const
    {
        static const QRegularExpression rounding(QStringLiteral("\\b(floor|ceil|trunc)\\b"));
        const QString factor = QStringLiteral("*%1").arg(unitsOfOne(m_decimals));
        return expression.contains(rounding) &&
               !QString(expression).remove(QLatin1Char(' ')).contains(factor);
    }
    /// Whether a total may be rounded to coins that there are, or to whole ones.
    bool mayBeRoundedCash(qint64 total, const QSet<qint64> &reached) const
    {
        const qint64 one = unitsOfOne(m_decimals);
        return std::any_of(reached.cbegin(), reached.cend(), [&](qint64 sum) {
            const qint64 difference = std::abs(total - sum);
            for (const qint64 coin : {qint64(5), qint64(10), qint64(50), qint64(100)}) {
                if (total % coin == 0 && 2 * difference <= coin)
                    return true;
            }
            return total % one == 0 && difference < one;
        });
    }
    /// A sum that a total differs from by no more than rounding can.
    std::optional<qint64> nearSum(qint64 total) const
    {
        const bool isNearAll =
            isNear(total - m_sum - m_sumOfAsides, m_parts.size() + m_asides.size());
        if (isNearAll)
            return m_sum + m_sumOfAsides;
        return isNear(total - m_sum, m_parts.size()) ? std::optional<qint64>(m_sum) : std::nullopt;
    }
    bool isNear(qint64 difference, int count) const
    {
        // Each amount may be half a unit off, and so may the total.
        return count > 1 && !m_mayBeSmall && 2 * std::abs(difference) <= count + 1 &&
               std::abs(difference) < unitsOfOne(m_decimals);
    }
    /// Whether there is nothing above but entries, and all that is written there was understood.
    bool areAllEntries() const
    {
        return !m_isUnclear && m_parts.size() > 1 &&
               std::all_of(m_parts.cbegin(), m_parts.cend(),
                           [](const Part &part) { return part.isEntry; });
    }

    const int m_decimals;
    const QHash<int, AttributeTag> &m_tags;
    const Values &m_values;
    QVector<Part> m_parts;
    QVector<Part> m_asides;  ///< which may be parts
    qint64 m_sum = 0;        ///< of the parts
    qint64 m_sumOfAsides = 0;
    bool m_isUnclear = false;
    bool m_mayBeSmall = false;  ///< what is unclear
    QVector<WrongSum> m_wrong;
};

/// What is wrong with an expression that adds terms which are all printed, each for itself and with
/// as many decimals.
class TermCheck
{
public:
    TermCheck(const QHash<int, AttributeTag> &tags, const Piece &piece, Values &values)
        : m_values(values)
    {
        for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
            const auto printed = decimalOf(values.ofTag(tag->inner).value_or(QString()));
            if (printed && piece.isShown(tag.key()))
                m_printed.insert({normalized(tag->name), printed->decimals}, printed->units);
        }
    }

    QString faultOf(const AttributeTag &tag) const
    {
        const QVector<Term> terms = termsOf(tag.name);
        const auto total = decimalOf(m_values.ofTag(tag.inner).value_or(QString()));
        if (terms.size() < 2 || !total || m_values.has(tag.name))
            return QString();
        qint64 sum = 0;
        for (const Term &term : terms) {
            const auto printed = m_printed.constFind({term.text, total->decimals});
            if (printed != m_printed.constEnd())
                sum += term.sign * *printed;
            else if (!isZero(term.text, total->decimals))
                return QString();
        }
        return sum == total->units
                   ? QString()
                   : Words::tr(
                         "%1 is printed, and the parts of the sum are printed as %2 "
                         "together: each is rounded by itself, and so is the sum; "
                         "round the parts in it too, as in %3")
                         .arg(toString(*total), toString({sum, total->decimals}),
                              roundedParts(total->decimals, {QStringLiteral("A")}));
    }

private:
    bool isZero(const QString &term, int decimals) const
    {
        const QString format = decimals == 0
                                   ? QStringLiteral("0")
                                   : QStringLiteral("0.") + QString(decimals, QLatin1Char('0'));
        const QString tag = term + QStringLiteral("*1,") + format;
        const auto printed = decimalOf(m_values.ofTag(tag).value_or(QString()));
        return printed && printed->units == 0;
    }

    Values &m_values;
    QHash<QPair<QString, int>, qint64> m_printed;
};

QVector<WrongSum> wrongTotalsOf(const Piece &piece, const QHash<int, AttributeTag> &tags,
                                const Values &values)
{
    // Of currencies without decimals nobody can tell an amount from another number.
    AmountColumn ofTwo(2, tags, values);
    AmountColumn ofThree(3, tags, values);
    for (const Printed &line : piece.filled->lines) {
        if (const auto figure = figureOf(line)) {
            ofTwo.read(*figure);
            ofThree.read(*figure);
        }
    }
    return ofTwo.wrongSums() + ofThree.wrongSums();
}

}  // namespace

QVector<WrongSum> wrongSumsOf(const Piece &piece, Values &values)
{
    QHash<int, AttributeTag> tags;
    for (const TemplateLine &line : piece.lines) {
        for (const AttributeTag &tag : line.tags)
            tags.insert(line.offsetOf(tag), tag);
    }
    QVector<WrongSum> wrong;
    const TermCheck terms(tags, piece, values);
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        const QString fault = piece.isShown(tag.key()) ? terms.faultOf(*tag) : QString();
        if (!fault.isEmpty())
            wrong.append({tag.key(), Severity::Error, fault});
    }
    return wrong + wrongTotalsOf(piece, tags, values);
}

}  // namespace templatelint
