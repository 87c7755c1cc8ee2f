#include "printerdocs/plan/planexpression_p.h"

#include <algorithm>
#include <cmath>

#include "printerdocs/expression/expressionfunctions_p.h"
#include "printerdocs/plan/planmemory_p.h"
#include "printerdocs/template/numbertext_p.h"

namespace templates {

namespace {

// More odd names than that would take longer to look at than the expression itself.
constexpr int mostOddNames = 16;

// The variables of compiled expressions are this and a number.
constexpr QLatin1Char variable('a');

// The one letter in the texts of numbers.
constexpr QLatin1Char exponent('e');

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool isOfOperator(QChar c)
{
    switch (c.unicode()) {
        case '+':
        case '-':
        case '*':
        case '/':
        case '^':
        case '%':
        case '(':
        case ')':
        case ' ':
        case ',':
            return true;
        default:
            return false;
    }
}

bool isLowerCase(QChar c)
{
    return c >= QLatin1Char('a') && c <= QLatin1Char('z');
}

bool isVariable(QStringView word)
{
    return word.size() > 1 && word[0] == variable && word[1].isDigit();
}

/// Letters and digits that stand together in an expression.
enum class WordKind { Number, Function, Operand, Unknown };

WordKind kindOf(QStringView word)
{
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    if (std::all_of(word.begin(), word.end(), isDigit))
        return WordKind::Number;
    if (!word[0].isLetter() || isVariable(word))
        return WordKind::Unknown;
    const auto isOfFunction = [&](QChar c) { return isLowerCase(c) || isDigit(c); };
    return std::all_of(word.begin(), word.end(), isOfFunction) ? WordKind::Function
                                                               : WordKind::Operand;
}

/// The compiler looks for each operand among all of them.
constexpr std::size_t mostOperands = 64;

bool isPointOfNumber(QStringView text, const QChar *c)
{
    return *c == QLatin1Char('.') && c != text.begin() && (c - 1)->isDigit() &&
           c + 1 != text.end() && (c + 1)->isDigit();
}

/// A name that stands in expressions for itself: no part of a word is one then.
bool isRegular(QStringView name)
{
    return name[0].isLetter() && std::all_of(name.begin(), name.end(), isOfWord);
}

}  // namespace

bool readExpression(QStringView inner, QString &text, std::vector<QStringView> &operands)
{
    if (std::none_of(inner.begin(), inner.end(), isOfOperator))
        return false;
    const int textBefore = text.size();
    const std::size_t operandsBefore = operands.size();
    for (auto c = inner.begin(); c != inner.end();) {
        if (isOfOperator(*c) || isPointOfNumber(inner, c)) {
            text += *c++;
            continue;
        }
        const auto *const end = std::find_if_not(c, inner.end(), isOfWord);
        const WordKind kind = end == c ? WordKind::Unknown : kindOf(QStringView(c, end));
        const bool isBehindPoint = c != inner.begin() && *(c - 1) == QLatin1Char('.');
        if (kind == WordKind::Unknown || (isBehindPoint && kind != WordKind::Number) ||
            (kind == WordKind::Operand && operands.size() - operandsBefore == mostOperands)) {
            text.truncate(textBefore);
            operands.resize(operandsBefore);
            return false;
        }
        if (kind == WordKind::Operand) {
            text += variable + QString::number(operands.size() - operandsBefore);
            operands.emplace_back(c, end);
        } else {
            text.append(c, static_cast<int>(end - c));
        }
        c = end;
    }
    return true;
}

bool hasFunctions(const QString &expression)
{
    for (int place = 0; place + 1 < expression.size(); ++place) {
        const QChar c = expression.at(place);
        if (isLowerCase(c) && !isVariable(QStringView(expression).mid(place)))
            return true;
    }
    return !expression.isEmpty() && isLowerCase(expression.back());
}

CompiledExpression::CompiledExpression(const QByteArray &text, int operands)
    : m_values(static_cast<std::size_t>(operands)), m_tree(nullptr, te_free)
{
    std::vector<QByteArray> names;
    std::vector<te_variable> variables;
    names.reserve(m_values.size());
    variables.reserve(m_values.size());
    for (int number = 0; number < operands; ++number)
        names.push_back(variable.toLatin1() + QByteArray::number(number));
    for (std::size_t number = 0; number < names.size(); ++number)
        variables.push_back({names[number].constData(), &m_values[number], TE_VARIABLE, nullptr});
    int error = 0;
    m_tree.reset(te_compile(text.constData(), variables.data(), operands, &error));
}

std::size_t CompiledExpression::memory() const
{
    std::size_t size = heapSize(sizeof(*this)) + heapSize(m_values);
    std::vector<const te_expr *> open{m_tree.get()};
    while (!open.empty()) {
        const te_expr *const node = open.back();
        open.pop_back();
        const int arguments = expression::arityOf(node->type);
        size += heapSize(sizeof(*node) + sizeof(void *) * static_cast<std::size_t>(arguments));
        for (int number = 0; number < arguments; ++number)
            open.push_back(static_cast<const te_expr *>(node->parameters[number]));
    }
    return size;
}

NamesInExpressions::NamesInExpressions(const TemplateNames &names, const std::vector<int> &noted,
                                       const NamedValues &values)
{
    for (const int name : noted) {
        if (values.has(name))
            add(names.at(name));
    }
    for (const QString *const name : values.others())
        add(*name);
}

std::vector<int> NamesInExpressions::notedNames(const TemplateNames &names)
{
    std::vector<int> noted;
    for (int name = 0; name < names.count(); ++name) {
        const QStringView text = names.at(name);
        if (text.isEmpty() || !isRegular(text) || isLowerCase(text[0]))
            noted.push_back(name);
    }
    noted.shrink_to_fit();
    return noted;
}

void NamesInExpressions::add(QStringView name)
{
    if (name.isEmpty())
        m_hasEmpty = true;
    else if (!isRegular(name))
        m_oddNames.append(name.toString());
    else
        m_hasLowerCase = m_hasLowerCase || isLowerCase(name[0]);
    m_hasExponent = m_hasExponent || name == exponent;
}

bool NamesInExpressions::leave(QStringView expression, bool hasWords) const
{
    return !m_hasEmpty && !(hasWords && m_hasLowerCase) && m_oddNames.size() <= mostOddNames &&
           std::none_of(m_oddNames.cbegin(), m_oddNames.cend(),
                        [&](const QString &name) { return mayStand(name, expression); });
}

bool NamesInExpressions::leave(double value) const
{
    constexpr double firstWithExponent = 1e5;  // not all from there on have one
    constexpr double lastWithExponent = 1e-4;
    const double size = std::abs(value);
    return !m_hasExponent || size == 0 || (size >= lastWithExponent && size < firstWithExponent);
}

/// Whether all characters of a name are in the expression or can be in a value.
bool NamesInExpressions::mayStand(const QString &name, QStringView expression) const
{
    return std::all_of(name.cbegin(), name.cend(), [&](QChar c) {
        return expression.contains(c) || QStringView(u"0123456789.+-e").contains(c);
    });
}

bool operandOf(const NamedValues::Value &value, double &number)
{
    // The text of a negative nothing has no sign, and so its sum with nothing hasn't.
    constexpr double nothing = 0;
    if (const auto *const real = std::get_if<double>(&value)) {
        number = *real + nothing;
        return std::isfinite(number);
    }
    if (const auto *const whole = std::get_if<qint64>(&value)) {
        number = static_cast<double>(*whole);
        return true;
    }
    if (const auto *const text = std::get_if<const QString *>(&value)) {
        const NumberInText read = numberIn(**text);
        number = read.kind == NumberInText::Kind::Whole ? static_cast<double>(read.whole)
                                                        : read.real + nothing;
        return read.kind != NumberInText::Kind::None && std::isfinite(number);
    }
    const auto *const other = std::get_if<const QVariant *>(&value);
    if (other == nullptr || (*other)->userType() != QMetaType::ULongLong)
        return false;
    number = (*other)->toDouble();
    return true;
}

}  // namespace templates
