#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "hearth/fixnumber.h"
#include "printerdocs/valueformat_p.h"

namespace {

/// 10 to the power of the number of decimals, in the 32 bits that a fixed-point number takes.
quint32 powerOfTen(int decimals)
{
    quint32 power = 1;
    for (int i = 0; i < decimals && power != 0; ++i)
        power *= 10U;
    return power;
}

/// Characters of the format that stand for digits.
int digitsOfFormat(QStringView format)
{
    return static_cast<int>(format.size() - qMax<qsizetype>(format.indexOf(QLatin1Char('0')), 0));
}

/// Whether the whole part of a number's text, up to the point, is what ofInteger() would make of
/// it.
bool printsAsItStands(QStringView whole, int digits)
{
    constexpr int mostSafeDigits = 9;  // of any whole number in 32 bits
    const bool isNegative = whole.startsWith(QLatin1Char('-'));
    const QStringView plain = isNegative ? whole.mid(1) : whole;
    return plain.size() >= qMax(1, digits) && plain.size() <= mostSafeDigits &&
           !(isNegative && plain.front() == QLatin1Char('0')) &&
           std::all_of(plain.begin(), plain.end(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

QString withFixedDecimals(QStringView wholeFormat, int decimals, double value)
{
    const hearth::FixNumber number(powerOfTen(decimals), value);
    const QString text = number.toString(QLatin1Char('.'), QChar());
    const int point = text.indexOf(QLatin1Char('.'));
    if (point > 0 && printsAsItStands(QStringView(text).left(point), digitsOfFormat(wholeFormat)))
        return text;
    // Intended: the whole part passes through 32 bits. One that doesn't fit prints as 0, and the
    // "-0" of a number between -1 and 0 loses its sign; printed receipts are compared with the
    // fiscal memory's, which has it so. Tests: wholePartPassesThrough32Bits.
    const int whole = text.leftRef(point).toInt();
    const QString fraction = point < 0 ? QString() : text.mid(point + 1);
    return valueformat::ofInteger(wholeFormat, whole) + QLatin1Char('.') + fraction;
}

/// In templates "m" and "M" both mean month, and "n" means minute.
QString toQtFormat(QStringView format, const char *defaultFormat)
{
    if (format.isEmpty())
        return QLatin1String(defaultFormat);
    QString qtFormat = format.toString();
    qtFormat.replace(QLatin1Char('m'), QLatin1Char('M'));
    qtFormat.replace(QLatin1Char('n'), QLatin1Char('m'));
    return qtFormat;
}

}  // namespace

QString valueformat::ofInteger(QStringView format, qint64 value)
{
    const bool isNegative = value < 0;
    // Negated as an unsigned number: the smallest 64-bit integer has no positive counterpart.
    const quint64 magnitude =
        isNegative ? ~static_cast<quint64>(value) + 1 : static_cast<quint64>(value);
    std::array<char, std::numeric_limits<quint64>::digits10 + 1> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), magnitude).ptr;
    const int count = static_cast<int>(end - digits.begin());
    const int sign = isNegative ? 1 : 0;
    QString text(sign + qMax(count, digitsOfFormat(format)), QLatin1Char('0'));
    std::transform(digits.begin(), end, text.end() - count, [](char c) { return QLatin1Char(c); });
    if (isNegative)
        text[0] = QLatin1Char('-');
    return text;
}

QString valueformat::ofReal(QStringView format, double value)
{
    const QStringView pattern = format.isEmpty() ? QStringView(u"0.00") : format;
    const auto point = pattern.indexOf(QLatin1Char('.'));
    if (point < 0)
        return ofInteger(pattern, hearth::FixNumber(0, value).value());
    const QStringView behind = pattern.mid(point + 1);
    const auto secondPoint = behind.indexOf(QLatin1Char('.'));
    const QStringView decimals = secondPoint < 0 ? behind : behind.left(secondPoint);
    if (decimals.contains(QLatin1Char('E')))
        return QString::number(value, 'g', 6);
    if (decimals.isEmpty())
        return QString::number(value, 'f', 6);
    return withFixedDecimals(pattern.left(point), static_cast<int>(decimals.size()), value);
}

QString valueformat::ofDateTime(QStringView format, const QDateTime &value)
{
    return value.toString(toQtFormat(format, "dd.MM.yy hh:mm"));
}

QString valueformat::ofDate(QStringView format, const QDate &value)
{
    return value.toString(toQtFormat(format, "dd.MM.yy"));
}

QString valueformat::ofTime(QStringView format, const QTime &value)
{
    return value.toString(toQtFormat(format, "hh:mm"));
}
