#include "expression.h"

#include <QRegularExpression>
#include <algorithm>
#include <cctype>
#include <cmath>

#include "printerdocs/expressionevaluator.h"

namespace templatelint {

namespace {

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

int errorOf(const QByteArray &expression)
{
    int error = 0;
    te_free(te_compile(expression.constData(), nullptr, 0, &error));
    return error;
}

te_state scannerOf(const QByteArray &text)
{
    te_state state{};
    state.start = text.constData();
    state.next = text.constData();
    return state;
}

/// Byte offset of the token through whose end the evaluator has read.
int tokenBegin(const QByteArray &text, int end)
{
    te_state state = scannerOf(text);
    const char *begin = state.next;
    while (state.next - state.start < end) {
        begin = state.next;
        next_token(&state);
        if (state.next == begin || state.type == TE_TOKEN_END)
            break;
    }
    while (begin - state.start < end - 1 && std::isspace(static_cast<unsigned char>(*begin)) != 0)
        ++begin;
    return static_cast<int>(begin - state.start);
}

}  // namespace

ExpressionFault faultOf(const QString &expression)
{
    const QByteArray text = expression.toUtf8();
    const int error = errorOf(text);
    if (error == 0)
        return {};
    // A blank at the end moves the place only if it is the end that is wrong.
    if (text.isEmpty() || errorOf(text + ' ') > text.size())
        return {true, true, expression.size(), QString()};
    const int begin = tokenBegin(text, error);
    return {true, false, QString::fromUtf8(text.left(begin)).size(),
            QString::fromUtf8(text.mid(begin, error - begin))};
}

std::optional<double> resultOf(const QString &expression)
{
    int error = 0;
    const double result = te_interp(expression.toUtf8().constData(), &error);
    return error == 0 ? std::optional<double>(result) : std::nullopt;
}

bool hasFiniteValue(const QString &expression)
{
    return std::isfinite(te_interp(expression.toUtf8().constData(), nullptr));
}

bool dividesByZero(const QString &expression)
{
    // Not the beginning of 0.5, 0e1 or a power, which binds tighter.
    static const QRegularExpression zero(
        QStringLiteral("[/%]\\s*(0+(\\.0*)?|\\.0+)(?![0-9.eE])(?!\\s*\\^)"));
    return expression.contains(zero);
}

bool isFunction(const QString &word)
{
    const QByteArray text = word.toUtf8();
    te_state state = scannerOf(text);
    next_token(&state);
    return state.type != TE_TOKEN_ERROR && state.next == state.start + text.size();
}

bool isWordBegin(const QString &text, int index)
{
    const QChar c = text.at(index);
    return (c.isLetter() || c == QLatin1Char('_')) &&
           (index == 0 || !isWordCharacter(text.at(index - 1)));
}

int wordEnd(const QString &text, int begin)
{
    int end = begin;
    while (end < text.size() && isWordCharacter(text.at(end)))
        ++end;
    return end;
}

NumberedExpression withNumbers(const QString &expression)
{
    NumberedExpression result;
    for (int i = 0; i < expression.size();) {
        const bool isWord = isWordBegin(expression, i);
        const int end = isWord ? wordEnd(expression, i) : i + 1;
        const QString piece = expression.mid(i, end - i);
        const bool isValue = isWord && !isFunction(piece);
        result.hasWords = result.hasWords || isValue;
        result.text += isValue ? QStringLiteral("1") : piece;
        while (result.origins.size() < result.text.size())
            result.origins.append(i);
        i = end;
    }
    return result;
}

bool isCalculation(const QString &text)
{
    const QString operators = QStringLiteral("+-*/%^");
    return std::any_of(text.cbegin(), text.cend(),
                       [&operators](QChar c) { return operators.contains(c); }) &&
           !faultOf(withNumbers(text).text).exists;
}

}  // namespace templatelint
