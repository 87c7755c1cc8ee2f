#include "printerdocs/template/numbertext_p.h"

namespace templates {

namespace {

// From these lengths on a text of digits stays text: it may not survive as a number.
constexpr int tooLongForWhole = 19;
constexpr int tooLongForReal = 16;

/// A number of digits with a point or a comma between two of them: so few digits and their power of
/// ten are exact, and so is the double nearest to their quotient, which is the text's. Most amounts
/// that come as texts are of this kind. @return invalid: it is of another kind
QVariant plainNumber(QStringView text)
{
    const bool isNegative = text.startsWith(QLatin1Char('-'));
    qint64 digits = 0;
    double power = 0;  // 0: no point yet
    if (text.size() >= tooLongForReal || text.size() == (isNegative ? 1 : 0))
        return QVariant();
    for (const QChar *c = text.begin() + (isNegative ? 1 : 0); c != text.end(); ++c) {
        const bool isPoint = *c == QLatin1Char('.') || *c == QLatin1Char(',');
        if (isPoint && power == 0 && c != text.begin() && c + 1 != text.end() &&
            (c - 1)->isDigit()) {
            power = 1;
            continue;
        }
        if (*c < QLatin1Char('0') || *c > QLatin1Char('9'))
            return QVariant();
        digits = digits * 10 + (c->unicode() - '0');
        power *= 10;
    }
    if (power == 0)
        return QVariant(isNegative ? -digits : digits);
    const double number = static_cast<double>(digits) / power;
    return QVariant(isNegative ? -number : number);
}

}  // namespace

QVariant numberOrText(const QVariant &value)
{
    const QString text = value.toString();
    if (beginsLikeAWord(text))
        return value;
    QVariant plain = plainNumber(text);
    if (plain.isValid())
        return plain;
    bool ok = false;
    const qlonglong whole = text.toLongLong(&ok);
    if (ok && text.size() < tooLongForWhole)
        return QVariant(whole);
    double real = text.toDouble(&ok);
    if (ok && text.size() < tooLongForReal)
        return QVariant(real);
    if (!text.contains(QLatin1Char(',')))
        return value;
    QString pointed = text;
    pointed.replace(QLatin1Char(','), QLatin1Char('.'));
    real = pointed.toDouble(&ok);
    if (ok && pointed.size() < tooLongForReal)
        return QVariant(real);
    return value;
}

}  // namespace templates
