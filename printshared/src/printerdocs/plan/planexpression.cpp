#include "printerdocs/plan/planexpression_p.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "printerdocs/template/numbertext_p.h"

namespace templates {

namespace {

// More odd names than that would take longer to look at than the expression itself.
constexpr int mostOddNames = 16;

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool isOfOperator(QChar c)
{
    return c.unicode() < 0x80 && c != QChar() && std::strchr("+-*/^%() ,", c.toLatin1()) != nullptr;
}

bool isLowerCase(QChar c)
{
    return c >= QLatin1Char('a') && c <= QLatin1Char('z');
}

/// Letters and digits that stand together in an expression.
enum class WordKind { Number, Function, Operand, Unknown };

WordKind kindOf(QStringView word)
{
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    if (std::all_of(word.begin(), word.end(), isDigit))
        return WordKind::Number;
    if (!word[0].isLetter())
        return WordKind::Unknown;
    const auto isOfFunction = [&](QChar c) { return isLowerCase(c) || isDigit(c); };
    return std::all_of(word.begin(), word.end(), isOfFunction) ? WordKind::Function
                                                               : WordKind::Operand;
}

/// A name that stands in expressions for itself: no part of a word is one then.
bool isRegular(const QString &name)
{
    return name.at(0).isLetter() && std::all_of(name.cbegin(), name.cend(), isOfWord);
}

}  // namespace

ExpressionParts ExpressionParts::of(QStringView inner)
{
    ExpressionParts parts;
    QByteArray text;
    bool hasOperator = false;
    for (int place = 0; place < inner.size();) {
        const QChar c = inner[place];
        const bool isPoint = c == QLatin1Char('.') && place > 0 && inner[place - 1].isDigit() &&
                             place + 1 < inner.size() && inner[place + 1].isDigit();
        if (isOfOperator(c) || isPoint) {
            hasOperator = hasOperator || isOfOperator(c);
            text += c.toLatin1();
            ++place;
            continue;
        }
        const auto *const end = std::find_if_not(inner.begin() + place, inner.end(), isOfWord);
        const QStringView word(inner.begin() + place, end);
        const WordKind kind = word.isEmpty() ? WordKind::Unknown : kindOf(word);
        const bool isBehindPoint = place > 0 && inner[place - 1] == QLatin1Char('.');
        if (kind == WordKind::Unknown || (isBehindPoint && kind != WordKind::Number))
            return parts;
        if (kind == WordKind::Operand) {
            text += 'a' + QByteArray::number(parts.operands.size());
            parts.operands.append(word.toString());
        } else {
            text += word.toLatin1();
        }
        parts.hasWords = parts.hasWords || kind == WordKind::Function;
        place += static_cast<int>(word.size());
    }
    if (hasOperator && !parts.operands.isEmpty() &&
        CompiledExpression(text, parts.operands.size()).isValid())
        parts.text = text;
    return parts;
}

CompiledExpression::CompiledExpression(const QByteArray &text, int operands)
    : m_values(static_cast<std::size_t>(operands)), m_tree(nullptr, te_free)
{
    std::vector<QByteArray> names;
    std::vector<te_variable> variables;
    for (int number = 0; number < operands; ++number)
        names.push_back('a' + QByteArray::number(number));
    for (std::size_t number = 0; number < names.size(); ++number)
        variables.push_back({names[number].constData(), &m_values[number], TE_VARIABLE, nullptr});
    int error = 0;
    m_tree.reset(te_compile(text.constData(), variables.data(), operands, &error));
}

NamesInExpressions::NamesInExpressions(const QMap<QString, QVariant> &attributes)
{
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
        const QString &name = attribute.key();
        if (name.isEmpty())
            m_hasEmpty = true;
        else if (!isRegular(name))
            m_oddNames.append(name);
        else
            m_hasLowerCase = m_hasLowerCase || isLowerCase(name.at(0));
    }
}

bool NamesInExpressions::leave(QStringView expression, bool hasWords) const
{
    return !m_hasEmpty && !(hasWords && m_hasLowerCase) && m_oddNames.size() <= mostOddNames &&
           std::none_of(m_oddNames.cbegin(), m_oddNames.cend(),
                        [&](const QString &name) { return mayStand(name, expression); });
}

bool NamesInExpressions::leave(double value) const
{
    constexpr double firstWithExponent = 1e15;
    constexpr double lastWithExponent = 1e-4;
    const double size = std::abs(value);
    return !m_hasLowerCase || size == 0 || (size >= lastWithExponent && size < firstWithExponent);
}

/// Whether all characters of a name are in the expression or can be in a value.
bool NamesInExpressions::mayStand(const QString &name, QStringView expression) const
{
    return std::all_of(name.cbegin(), name.cend(), [&](QChar c) {
        return expression.contains(c) || QStringView(u"0123456789.+-e").contains(c);
    });
}

bool operandOf(const QVariant &value, double &number)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
        case QVariant::Double:
            number = value.toDouble();
            return std::isfinite(number);
        case QVariant::String: {
            const QVariant read = numberOrText(value);
            return read.type() != QVariant::String && operandOf(read, number);
        }
        default:
            return false;
    }
}

}  // namespace templates
