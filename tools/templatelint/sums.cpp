#include "sums.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "attributes.h"

namespace templatelint {

namespace {

constexpr int hundred = 100;
constexpr int longestLine = 256;  // of one that is read by a person as an amount with its name

/// An amount at the end of a printed line, in hundredths.
struct Amount
{
    qint64 hundredths = 0;
    int offset = Text::nowhere;  ///< of the tag that it comes from; nowhere: none
    QString label;
};

QString inUnits(qint64 hundredths)
{
    return QStringLiteral("%1%2.%3")
        .arg(hundredths < 0 ? QStringLiteral("-") : QString())
        .arg(std::abs(hundredths) / hundred)
        .arg(std::abs(hundredths) % hundred, 2, 10, QLatin1Char('0'));
}

/// A text with two decimals in hundredths; nothing if it is another one.
std::optional<qint64> hundredthsOf(const QString &text)
{
    static const QRegularExpression amount(QStringLiteral("^([+-]?)(\\d{1,12})[.,](\\d\\d)$"));
    const auto match = amount.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const qint64 size = (match.captured(2) + match.captured(3)).toLongLong();
    return match.captured(1) == QLatin1String("-") ? -size : size;
}

/// The amount at the end of a line: behind the last column, or behind a text.
std::optional<Amount> amountOf(const Printed &line)
{
    // Signs of currency and "=" in front, a currency or a letter of tax behind.
    static const QRegularExpression inColumn(
        QStringLiteral("^\\s*[=*$\\x{20AC}\\x{A3}]?\\s?(?<amount>[+-]?\\d+[.,]\\d\\d)"
                       "(\\s?[^\\d\\s%]{1,4})?\\s*$"));
    static const QRegularExpression behindText(
        QStringLiteral("^(?<label>[^\\d]*\\p{L}[^\\d]*)[\\s=:](?<amount>[+-]?\\d+[.,]\\d\\d)"
                       "(\\s?[^\\d\\s%]{1,4})?\\s*$"));
    const QString &text = line.text.characters;
    if (text.size() > longestLine)
        return std::nullopt;
    const int column = text.lastIndexOf(QLatin1Char('\t')) + 1;
    const auto match = (column > 0 ? inColumn : behindText).match(text.mid(column));
    const auto hundredths = hundredthsOf(match.captured(QStringLiteral("amount")));
    if (!hundredths)
        return std::nullopt;
    Amount amount;
    amount.hundredths = *hundredths;
    amount.label = column > 0 ? text.left(column - 1) : match.captured(QStringLiteral("label"));
    const int digit = column + match.capturedStart(QStringLiteral("amount")) +
                      match.capturedLength(QStringLiteral("amount")) - 1;
    const int origin = line.text.origins.at(digit);
    if (!Text::isTemplate(origin) && origin != Text::nowhere)
        amount.offset = Text::offsetOf(origin);
    return amount;
}

QRegularExpression wordPattern(const char *words)
{
    return QRegularExpression(
        QString::fromUtf8(words),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

bool readsLikeATotal(const QString &label)
{
    static const QRegularExpression words = wordPattern(
        "total|\\bsum\\b|to pay|amount due|итог|всего|сумма|к оплате|summe|"
        "gesamt|zu zahlen|endbetrag");
    return label.contains(words);
}

/// Of what a receipt lists that isn't a part of its sum.
bool readsLikeAside(const QString &label)
{
    static const QRegularExpression words = wordPattern(
        "\\bvat\\b|\\btax|ндс|mwst|\\bust\\b|incl|в т\\. ?ч|enthalt|darin|paid|"
        "cash|card|change|налич|карт|сдача|\\bbar\\b|gegeben|zurück|rückgeld|"
        "balance|points|баллы");
    return readsLikeATotal(label) || label.contains(words);
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

/// Finds totals among the amounts of a piece, from top to bottom.
class AmountColumn
{
public:
    AmountColumn(const Piece &piece, const QHash<int, AttributeTag> &tags)
        : m_piece(piece), m_tags(tags)
    {}

    QVector<WrongSum> wrongSums()
    {
        for (const Printed &line : m_piece.filled->lines) {
            if (const auto amount = amountOf(line))
                take(*amount);
        }
        return m_wrong;
    }

private:
    void take(const Amount &amount)
    {
        const qint64 sum = m_sum;
        const bool isTotal = isTotalOf(amount);
        if (isTotal && isWrong(amount, sum))
            m_wrong.append(
                {amount.offset,
                 QStringLiteral("%1 is printed, and the amounts above add up to %2: where each is "
                                "rounded by itself, so are the parts of the sum, as in "
                                "floor(A*100+0.500001)/100+floor(B*100+0.500001)/100")
                     .arg(inUnits(amount.hundredths), inUnits(sum))});
        // What is the sum of all above it stands for them, whatever it is called.
        if (isTotal || (m_above.size() > 1 && sum == amount.hundredths))
            startAnew();
        m_above.append(amount);
        m_sum += amount.hundredths;
    }
    void startAnew()
    {
        m_above.clear();
        m_sum = 0;
    }
    bool isTotalOf(const Amount &amount) const
    {
        static const QRegularExpression name(
            QStringLiteral("^(sub_?)?(grand_?)?(total|sum|itogo?|gesamt|summe|amount)"
                           "(_?(sum|due|amount))?$"),
            QRegularExpression::CaseInsensitiveOption);
        if (amount.offset == Text::nowhere || !m_tags.contains(amount.offset))
            return false;
        const AttributeTag &tag = *m_tags.constFind(amount.offset);
        return !isEntriesTag(tag.inner) &&
               (readsLikeATotal(amount.label) || tag.name.contains(name) ||
                termsOf(tag.name).size() > 1);
    }
    bool isWrong(const Amount &total, qint64 sum) const
    {
        const qint64 difference = std::abs(total.hundredths - sum);
        if (difference == 0 || m_above.size() < 2)
            return false;
        // Each amount may be half a hundredth off, and so may the total.
        const bool isByRounding = 2 * difference <= m_above.size() + 1;
        return isByRounding ? !isSumOfOthers(total.hundredths, sum) : areAllItems(total, sum);
    }
    /// Whether one of the amounts is no part of the sum, or is taken off it.
    bool isSumOfOthers(qint64 total, qint64 sum) const
    {
        return std::any_of(m_above.cbegin(), m_above.cend(), [&](const Amount &above) {
            return sum - above.hundredths == total || sum - 2 * above.hundredths == total;
        });
    }
    /// Whether there is nothing above but entries, and none that isn't a part of the sum.
    bool areAllItems(const Amount &total, qint64 sum) const
    {
        return readsLikeATotal(total.label) &&
               std::all_of(m_above.cbegin(), m_above.cend(),
                           [&](const Amount &above) {
                               const auto tag = m_tags.constFind(above.offset);
                               return tag != m_tags.constEnd() && isEntriesTag(tag->inner) &&
                                      !readsLikeAside(above.label);
                           }) &&
               !isSumOfOthers(total.hundredths, sum);
    }

    const Piece &m_piece;
    const QHash<int, AttributeTag> &m_tags;
    QVector<Amount> m_above;
    qint64 m_sum = 0;  ///< of those above
    QVector<WrongSum> m_wrong;
};

/// What is wrong with an expression that adds terms which are all printed, each for itself.
class TermCheck
{
public:
    TermCheck(const QHash<int, AttributeTag> &tags, const Piece &piece, Values &values)
        : m_values(values)
    {
        for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
            const auto printed = hundredthsOf(values.ofTag(tag->inner).value_or(QString()));
            if (printed && piece.isShown(tag.key()))
                m_printed.insert(normalized(tag->name), *printed);
        }
    }

    QString faultOf(const AttributeTag &tag) const
    {
        const QVector<Term> terms = termsOf(tag.name);
        const auto total = hundredthsOf(m_values.ofTag(tag.inner).value_or(QString()));
        if (terms.size() < 2 || !total || m_values.has(tag.name))
            return QString();
        qint64 sum = 0;
        for (const Term &term : terms) {
            const auto printed = m_printed.constFind(term.text);
            if (printed != m_printed.constEnd())
                sum += term.sign * *printed;
            else if (!isZero(term.text))
                return QString();
        }
        return sum == *total ? QString()
                             : QStringLiteral(
                                   "%1 is printed, and the parts of the sum are printed as %2 "
                                   "together: each is rounded by itself, and so is the sum; "
                                   "round the parts in it too, as in floor(A*100+0.500001)/100")
                                   .arg(inUnits(*total), inUnits(sum));
    }

private:
    bool isZero(const QString &term) const
    {
        return hundredthsOf(m_values.ofTag(term + QStringLiteral("*1,0.00")).value_or(QString())) ==
               qint64(0);
    }

    Values &m_values;
    QHash<QString, qint64> m_printed;
};

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
            wrong.append({tag.key(), fault});
    }
    return wrong + AmountColumn(piece, tags).wrongSums();
}

}  // namespace templatelint
