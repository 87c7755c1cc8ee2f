#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <optional>

namespace templatelint {

/// Where an expression that can't be evaluated goes wrong, as the evaluator sees it.
struct ExpressionFault
{
    bool exists = false;
    bool isAtEnd = false;  ///< something is missing at the end
    int begin = 0;         ///< index of the first character of what doesn't belong there
    QString token;         ///< what stands there
};

ExpressionFault faultOf(const QString &expression);

/// What an expression without names comes to; nothing if it has a mistake.
std::optional<double> resultOf(const QString &expression);

/// Whether an expression without mistakes has a value that is a number.
bool hasFiniteValue(const QString &expression);

/// Whether a divisor is written as 0.
bool dividesByZero(const QString &expression);

/// Whether a word is a function or a constant of expressions.
bool isFunction(const QString &word);

bool isWordBegin(const QString &text, int index);
int wordEnd(const QString &text, int begin);

/// An expression with a number in place of each word that isn't a function.
struct NumberedExpression
{
    QString text;
    QVector<int> origins;  ///< for each character its index in the expression
    bool hasWords = false;
};

NumberedExpression withNumbers(const QString &expression);

/// Whether it reads like a calculation: an operator, and nothing wrong in it, whatever its words
/// stand for.
bool isCalculation(const QString &text);

}  // namespace templatelint
