#include <QLocale>
#include <array>
#include <cmath>
#include <limits>

#include "hearth/fixnumber.h"
#include "printerdocs/charsearch_p.h"
#include "printerdocs/valueformat_p.h"

namespace {

constexpr int mostDecimals = std::numeric_limits<quint32>::digits10;

/// 10 to the power of the number of decimals, in the 32 bits that a fixed-point number takes.
quint32 powerOfTen(int decimals)
{
    quint32 power = 1;
    for (int i = 0; i < decimals && power != 0; ++i)
        power *= 10U;
    return power;
}

/// Negated as an unsigned number: the smallest 64-bit integer has no positive counterpart.
quint64 magnitudeOf(qint64 value)
{
    return value < 0 ? ~static_cast<quint64>(value) + 1 : static_cast<quint64>(value);
}

/// Characters of the format that stand for digits.
int digitsOfFormat(QStringView format)
{
    return static_cast<int>(format.size()) - qMax(placeOf(QLatin1Char('0'), format), 0);
}

/// Appends the digits of a number, with zeros in front up to so many digits.
void appendDigits(QString &text, quint64 number, int fewest)
{
    std::array<QChar, std::numeric_limits<quint64>::digits10 + 1> digits;
    auto first = digits.end();
    do {
        *--first = QLatin1Char(static_cast<char>('0' + number % 10));
        number /= 10;
    } while (number != 0);
    const int count = static_cast<int>(digits.end() - first);
    if (count < fewest)
        text.resize(text.size() + fewest - count, QLatin1Char('0'));
    text.append(&*first, count);
}

/// The whole part of a number with decimals.
/// Intended: it passes through 32 bits. One that doesn't fit prints as 0, and the "-0" of a number
/// between -1 and 0 loses its sign; printed receipts are compared with the fiscal memory's, which
/// has it so. Tests: wholePartPassesThrough32Bits.
int printedWhole(qint64 whole)
{
    using Limits = std::numeric_limits<int>;
    return whole >= Limits::min() && whole <= Limits::max() ? static_cast<int>(whole) : 0;
}

/// The number, or 0 if it has more parts than 64 bits count: what a fixed-point number makes of it
/// then are digits that nobody asked for.
hearth::FixNumber fixNumber(quint32 unit, double value)
{
    constexpr long double firstBeyond = 9223372036854775808.0L;  // 2 to the 63rd
    const bool fits = std::abs(static_cast<long double>(value)) * qMax(unit, 1U) < firstBeyond;
    return hearth::FixNumber(unit, fits ? value : 0);
}

void appendWithDecimals(QString &text, QStringView wholeFormat, int decimals, double value)
{
    const quint32 unit = powerOfTen(decimals);
    const qint64 scaled = fixNumber(unit, value).value();
    valueformat::appendInteger(text, wholeFormat, printedWhole(scaled / unit));
    text += QLatin1Char('.');
    appendDigits(text, magnitudeOf(scaled % unit), decimals);
}

/// More decimals than the power of ten of a fixed-point number can have.
void appendWithTooManyDecimals(QString &text, QStringView wholeFormat, int decimals, double value)
{
    const QString digits =
        fixNumber(powerOfTen(decimals), value).toString(QLatin1Char('.'), QChar());
    const int point = digits.indexOf(QLatin1Char('.'));
    valueformat::appendInteger(text, wholeFormat, digits.leftRef(point).toInt());
    text += QLatin1Char('.');
    if (point >= 0)
        text += digits.midRef(point + 1);
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

void valueformat::appendInteger(QString &text, QStringView format, qint64 value)
{
    if (value < 0)
        text += QLatin1Char('-');
    appendDigits(text, magnitudeOf(value), digitsOfFormat(format));
}

void valueformat::appendReal(QString &text, QStringView format, double value)
{
    const QStringView pattern = format.isEmpty() ? QStringView(u"0.00") : format;
    const int point = placeOf(QLatin1Char('.'), pattern);
    if (point < 0)
        return appendInteger(text, pattern, fixNumber(0, value).value());
    const QStringView whole = pattern.left(point);
    const QStringView behind = pattern.mid(point + 1);
    const int secondPoint = placeOf(QLatin1Char('.'), behind);
    const QStringView decimals = secondPoint < 0 ? behind : behind.left(secondPoint);
    const int count = static_cast<int>(decimals.size());
    if (placeOf(QLatin1Char('E'), decimals) >= 0)
        text += QString::number(value, 'g', 6);
    else if (count == 0)
        text += QString::number(value, 'f', 6);
    else if (count <= mostDecimals)
        appendWithDecimals(text, whole, count, value);
    else
        appendWithTooManyDecimals(text, whole, count, value);
}

/// Prices and amounts have few decimals: if a number is the double nearest to some ten thousandths,
/// these are its shortest text, as no other number of so few digits has the same double.
void valueformat::appendShortest(QString &text, double value)
{
    constexpr int parts = 10000;
    constexpr double firstOfOtherShape = 1e5;  // from here on some have exponents
    const double count = std::nearbyint(value * parts);
    if (!(std::abs(value) < firstOfOtherShape) || count / parts != value ||
        (value == 0 && std::signbit(value))) {
        text += QString::number(value, 'g', QLocale::FloatingPointShortest);
        return;
    }
    const auto magnitude = static_cast<quint32>(std::abs(count));
    if (value < 0)
        text += QLatin1Char('-');
    appendDigits(text, magnitude / parts, 1);
    quint32 fraction = magnitude % parts;
    if (fraction == 0)
        return;
    int decimals = 4;
    for (; fraction % 10 == 0; fraction /= 10)
        --decimals;
    text += QLatin1Char('.');
    appendDigits(text, fraction, decimals);
}

QString valueformat::ofInteger(QStringView format, qint64 value)
{
    QString text;
    appendInteger(text, format, value);
    return text;
}

QString valueformat::ofReal(QStringView format, double value)
{
    QString text;
    appendReal(text, format, value);
    return text;
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
