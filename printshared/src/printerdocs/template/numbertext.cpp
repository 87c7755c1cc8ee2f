#include "printerdocs/template/numbertext_p.h"

#include <algorithm>

#include "latin1text_p.h"

namespace templates {

namespace {

// From these lengths on a text of digits stays text: it may not survive as a number.
constexpr int tooLongForWhole = 19;
constexpr int tooLongForReal = 16;

constexpr double powersOfTen[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

bool isPlainDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

NumberInText wholeNumber(qint64 number)
{
    return {NumberInText::Kind::Whole, number, 0};
}

NumberInText realNumber(double number)
{
    return {NumberInText::Kind::Real, 0, number};
}

/// A number of digits with a point or a comma between two of them: so few digits and their power of
/// ten are exact, and so is the double nearest to their quotient, which is the text's. Most amounts
/// that come as texts are of this kind. @return of no kind: it is something else
NumberInText plainNumber(QStringView text)
{
    if (text.isEmpty() || text.size() >= tooLongForReal)
        return {};
    const bool isNegative = text[0] == QLatin1Char('-');
    const QChar *const begin = text.begin() + (isNegative ? 1 : 0);
    const QChar *point = nullptr;
    qint64 digits = 0;
    for (const QChar *c = begin; c != text.end(); ++c) {
        const bool isPoint = *c == QLatin1Char('.') || *c == QLatin1Char(',');
        if (isPoint && point == nullptr && c != begin && c + 1 != text.end()) {
            point = c;
            continue;
        }
        if (!isPlainDigit(*c))
            return {};
        digits = digits * 10 + (c->unicode() - '0');
    }
    if (begin == text.end())
        return {};
    if (point == nullptr)
        return wholeNumber(isNegative ? -digits : digits);
    const double number = static_cast<double>(digits) / powersOfTen[text.end() - point - 1];
    return realNumber(isNegative ? -number : number);
}

/// Whether a text has a letter that stands in no number, nor in what QString::toDouble() and its
/// like could take for one: exponents, "infinity", "nan", hexadecimal digits' signs.
bool holdsLetterOfWords(QStringView text)
{
    constexpr QLatin1String lettersOfNumbers = printshared::latin1Text("aefinptxy");
    return std::any_of(text.begin(), text.end(), [&](QChar c) {
        const QChar lower(ushort(c.unicode() | 0x20U));
        return lower >= QLatin1Char('a') && lower <= QLatin1Char('z') &&
               !lettersOfNumbers.contains(lower);
    });
}

}  // namespace

NumberInText numberIn(const QString &text)
{
    if (beginsLikeAWord(text))
        return {};
    const NumberInText plain = plainNumber(text);
    if (plain.kind != NumberInText::Kind::None || holdsLetterOfWords(text))
        return plain;
    bool ok = false;
    const qlonglong whole = text.toLongLong(&ok);
    if (ok && text.size() < tooLongForWhole)
        return wholeNumber(whole);
    double real = text.toDouble(&ok);
    if (ok && text.size() < tooLongForReal)
        return realNumber(real);
    if (!text.contains(QLatin1Char(',')))
        return {};
    QString pointed = text;
    pointed.replace(QLatin1Char(','), QLatin1Char('.'));
    real = pointed.toDouble(&ok);
    return ok && pointed.size() < tooLongForReal ? realNumber(real) : NumberInText();
}

QVariant numberOrText(const QVariant &value)
{
    const NumberInText number = numberIn(value.toString());
    switch (number.kind) {
        case NumberInText::Kind::Whole:
            return QVariant(number.whole);
        case NumberInText::Kind::Real:
            return QVariant(number.real);
        case NumberInText::Kind::None:
            break;
    }
    return value;
}

}  // namespace templates
