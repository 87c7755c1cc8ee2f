#include <QLocale>
#include <array>
#include <cmath>
#include <limits>

#include "hearth/fixnumber.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace {

using templates::placeOf;

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

// Qt looks through the whole format for each hour in it, and to the end of a run of one letter at
// each step through it.
constexpr int longestQtFormat = 256;
// A multiple of the lengths that stand for something: "yyyy", "dddd", "zzz", "hh" and "t".
constexpr int piecePeriod = 12;

/// Whether the texts of two parts of a format, cut outside quotation marks, are that of the whole.
bool mayCut(const QString &format, int at, int runLength)
{
    const QChar before = format.at(at - 1).toLower();
    const QChar behind = format.at(at).toLower();
    if (behind == QLatin1Char('\''))
        return false;
    if (before == QLatin1Char('a') && behind == QLatin1Char('p'))
        return false;
    return format.at(at - 1) != format.at(at) || runLength % piecePeriod == 0;
}

/// Where to cut a format, from a place on.
int endOfPiece(const QString &format, int begin)
{
    bool isQuoted = false;
    int run = begin;
    for (int at = begin; at < format.size(); ++at) {
        if (at - begin >= longestQtFormat && !isQuoted && mayCut(format, at, at - run))
            return at;
        if (format.at(at) == QLatin1Char('\''))
            isQuoted = !isQuoted;
        if (format.at(at) != format.at(run))
            run = at;
    }
    return format.size();
}

/// Whether hours count to 12: an "a" that isn't quoted says so for the whole format.
bool hasHalfDays(const QString &format)
{
    bool isQuoted = false;
    for (const QChar character : format) {
        if (character == QLatin1Char('\''))
            isQuoted = !isQuoted;
        else if (!isQuoted && character.toLower() == QLatin1Char('a'))
            return true;
    }
    return false;
}

/// The text of a value by a format of any length, in time that grows with it.
template <class Value>
QString formatted(const Value &value, const QString &format)
{
    if (format.size() <= longestQtFormat)
        return value.toString(format);
    // Each part is told of half days, and a quotation mark keeps that apart from a "p".
    const QString before = hasHalfDays(format) ? QStringLiteral("a''") : QString();
    const int surplus = before.isEmpty() ? 0 : value.toString(before).size();
    QString text;
    for (int begin = 0; begin < format.size();) {
        const int end = endOfPiece(format, begin);
        text += value.toString(before + format.mid(begin, end - begin)).midRef(surplus);
        begin = end;
    }
    return text;
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
    return formatted(value, toQtFormat(format, "dd.MM.yy hh:mm"));
}

QString valueformat::ofDate(QStringView format, const QDate &value)
{
    return formatted(value, toQtFormat(format, "dd.MM.yy"));
}

QString valueformat::ofTime(QStringView format, const QTime &value)
{
    return formatted(value, toQtFormat(format, "hh:mm"));
}
