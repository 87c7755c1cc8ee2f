#include <QLocale>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "hearth/fixnumber.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace {

using templates::placeOf;
using valueformat::TextBuffer;

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

/// The digits of all numbers below 1000, with zeros in front. To look digits up goes without a
/// guess how many there are.
class ThreeDigits
{
public:
    constexpr ThreeDigits()
    {
        for (unsigned number = 0; number < end; ++number) {
            QChar *const entry = &m_entries[number * sizeOfEntry];
            entry[0] = QChar('0' + number / 100);
            entry[1] = QChar('0' + number / 10 % 10);
            entry[2] = QChar('0' + number % 10);
            entry[3] = QChar(number >= 100 ? 3 : number >= 10 ? 2 : 1);
        }
    }

    static constexpr unsigned end = 1000;

    /// Writes all three. @return the place behind them
    QChar *write(QChar *to, unsigned number) const { return writeLast<digits>(to, number); }
    /// Writes so many of the last ones.
    template <int count>
    QChar *writeLast(QChar *to, unsigned number) const
    {
        std::memcpy(to, &m_entries[number * sizeOfEntry] + digits - count, sizeof(QChar) * count);
        return to + count;
    }
    /// Writes those from the first one on that isn't a needless zero. What is behind them is
    /// written over, as far as three would reach.
    QChar *writeNumber(QChar *to, unsigned number) const
    {
        const QChar *const entry = &m_entries[number * sizeOfEntry];
        const int count = entry[digits].unicode();
        std::memcpy(to, entry + digits - count, sizeof(QChar) * digits);
        return to + count;
    }

private:
    static constexpr int digits = 3;
    static constexpr std::size_t sizeOfEntry = digits + 1;  // the last one is how many are needed

    // Behind each entry is another one, of which something may be read.
    std::array<QChar, (end + 1) * sizeOfEntry> m_entries{};
};

constexpr ThreeDigits threeDigits;

/// Writes the digits of a number in front of a place, with zeros in front up to so many digits.
/// @return where they begin
template <typename Number>
QChar *writeDigits(QChar *end, Number number, int fewest)
{
    QChar *const stop = end - fewest;
    do {
        *--end = QLatin1Char(static_cast<char>('0' + number % 10));
        number /= 10;
    } while (number != 0);
    while (end > stop)
        *--end = QLatin1Char('0');
    return end;
}

/// How many digits a number has; most have few.
template <typename Number>
int digitsOf(Number number)
{
    constexpr unsigned powers[] = {1000, 100, 10};
    int digits = 1;
    for (; number >= 10 * powers[0]; number /= 10 * powers[0])
        digits += 4;
    for (const unsigned power : powers)
        digits += number >= power ? 1 : 0;
    return digits;
}

/// Appends the digits of a number, with zeros in front up to so many digits.
void appendDigits(TextBuffer &text, quint64 number, int fewest)
{
    const int count = std::max(digitsOf(number), fewest);
    QChar *const end = text.room(count) + count;
    writeDigits(end, number, fewest);
    text.endAt(end);
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
    constexpr double certainlyFits = 1e9;  // so many of the greatest unit are less than 2^63
    if (std::abs(value) < certainlyFits)
        return hearth::FixNumber(unit, value);
    constexpr long double firstBeyond = 9223372036854775808.0L;  // 2 to the 63rd
    const bool fits = std::abs(static_cast<long double>(value)) * qMax(unit, 1U) < firstBeyond;
    return hearth::FixNumber(unit, fits ? value : 0);
}

void appendText(TextBuffer &text, const QString &more)
{
    text.append(more.constData(), more.size());
}

void appendWhole(TextBuffer &text, int fewestDigits, qint64 value)
{
    if (value < 0)
        text.append(QLatin1Char('-'));
    appendDigits(text, magnitudeOf(value), fewestDigits);
}

void appendWithDecimals(TextBuffer &text, int fewestWhole, int decimals, quint32 unit, double value)
{
    const qint64 scaled = fixNumber(unit, value).value();
    const quint64 magnitude = magnitudeOf(scaled);
    const auto wholeMagnitude = static_cast<qint64>(magnitude / unit);
    const int whole = printedWhole(scaled < 0 ? -wholeMagnitude : wholeMagnitude);
    appendWhole(text, fewestWhole, whole);
    text.append(QLatin1Char('.'));
    appendDigits(text, magnitude % unit, decimals);
}

/// The same of an amount as most are: it has two decimals or three, and a whole part below a
/// million. To divide by a number that is known beforehand takes a third of the time.
template <int decimals>
void appendUsual(TextBuffer &text, quint32 parts, bool isNegative)
{
    static_assert(decimals == 2 || decimals == 3);
    constexpr quint32 unit = decimals == 2 ? 100 : 1000;
    constexpr int mostCharacters = 1 + 6 + 1 + 3;
    const quint32 whole = parts / unit;
    QChar *to = text.room(mostCharacters);
    if (isNegative && whole != 0)
        *to++ = QLatin1Char('-');
    if (whole < ThreeDigits::end)
        to = threeDigits.writeNumber(to, whole);
    else
        to = threeDigits.write(threeDigits.writeNumber(to, whole / ThreeDigits::end),
                               whole % ThreeDigits::end);
    *to++ = QLatin1Char('.');
    text.endAt(threeDigits.writeLast<decimals>(to, parts % unit));
}

/// @return false: the amount isn't as most are
bool appendUsual(TextBuffer &text, int decimals, quint32 unit, double value)
{
    constexpr double firstThatMayBecomeAMillion = 999999;
    if (!(std::abs(value) < firstThatMayBecomeAMillion))
        return false;
    const qint64 scaled = hearth::FixNumber(unit, value).value();
    const auto parts = static_cast<quint32>(magnitudeOf(scaled));
    if (decimals == 2)
        appendUsual<2>(text, parts, scaled < 0);
    else
        appendUsual<3>(text, parts, scaled < 0);
    return true;
}

/// More decimals than the power of ten of a fixed-point number can have.
void appendWithTooManyDecimals(TextBuffer &text, int fewestWhole, quint32 unit, double value)
{
    const QString digits = fixNumber(unit, value).toString(QLatin1Char('.'), QChar());
    const int point = digits.indexOf(QLatin1Char('.'));
    appendWhole(text, fewestWhole, digits.leftRef(point).toInt());
    text.append(QLatin1Char('.'));
    if (point >= 0)
        text.append(digits.constData() + point + 1, digits.size() - point - 1);
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

/// A date and time as formats write it: in numbers.
struct Moment
{
    int year = 0;
    int month = 0;
    int day = 0;
    QTime time;

    /// What a letter stands for that is there twice. @return -1: no number of two digits
    int twoDigitsOf(QChar letter) const
    {
        switch (letter.unicode()) {
            case 'y':
                return year % 100;
            case 'M':
                return month;
            case 'd':
                return day;
            case 'h':
            case 'H':
                return time.hour();
            case 'n':
                return time.minute();
            case 's':
                return time.second();
            default:
                return -1;
        }
    }
};

/// Whether it may stand for something in Qt's formats.
bool isOfFormat(QChar c)
{
    return c == QLatin1Char('\'') || (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

/// The text of a date and time by a format of nothing but digits and what stands for itself, as
/// most are: Qt takes as long for one as ten lines of a receipt do together. @return null: the
/// format is another one, or Qt has to tell what becomes of the value
QString inDigits(const QDateTime &value, QStringView format)
{
    constexpr int lastYear = 9999;
    Moment moment;
    value.date().getDate(&moment.year, &moment.month, &moment.day);
    moment.time = value.time();
    if (!value.isValid() || moment.year < 1 || moment.year > lastYear)
        return QString();
    TextBuffer text;
    const auto letterOf = [](QChar c) { return c == QLatin1Char('m') ? QLatin1Char('M') : c; };
    for (const QChar *at = format.begin(); at != format.end();) {
        const QChar c = letterOf(*at);
        const QChar *const end =
            std::find_if(at, format.end(), [&](QChar other) { return letterOf(other) != c; });
        const auto count = static_cast<int>(end - at);
        at = end;
        if (!isOfFormat(c))
            text.append(c, count);
        else if (count == 4 && c == QLatin1Char('y'))
            appendDigits(text, static_cast<quint64>(moment.year), 4);
        else if (const int number = moment.twoDigitsOf(c); count == 2 && number >= 0)
            text.endAt(threeDigits.writeLast<2>(text.room(2), static_cast<unsigned>(number)));
        else
            return QString();
    }
    return QString(text.constData(), text.size());
}

}  // namespace

valueformat::NumberPattern::NumberPattern(QStringView format)
    : m_fewestDigits(digitsOfFormat(format))
{
    const QStringView pattern = format.isEmpty() ? QStringView(u"0.00") : format;
    const int point = placeOf(QLatin1Char('.'), pattern);
    m_fewestWhole = digitsOfFormat(point < 0 ? pattern : pattern.left(point));
    if (point < 0)
        return;
    const QStringView behind = pattern.mid(point + 1);
    const int secondPoint = placeOf(QLatin1Char('.'), behind);
    const QStringView decimals = secondPoint < 0 ? behind : behind.left(secondPoint);
    m_decimals = static_cast<int>(decimals.size());
    m_unit = powerOfTen(m_decimals);
    if (placeOf(QLatin1Char('E'), decimals) >= 0)
        m_kind = Kind::Exponent;
    else if (m_decimals == 0)
        m_kind = Kind::SixDecimals;
    else
        m_kind = m_decimals <= mostDecimals ? Kind::Decimals : Kind::ManyDecimals;
    m_isUsual =
        m_kind == Kind::Decimals && m_fewestWhole <= 1 && (m_decimals == 2 || m_decimals == 3);
}

void valueformat::NumberPattern::appendInteger(TextBuffer &text, qint64 value) const
{
    appendWhole(text, m_fewestDigits, value);
}

void valueformat::NumberPattern::appendReal(TextBuffer &text, double value) const
{
    if (!m_isUsual || !appendUsual(text, m_decimals, m_unit, value))
        appendOther(text, value);
}

void valueformat::NumberPattern::appendOther(TextBuffer &text, double value) const
{
    switch (m_kind) {
        case Kind::Whole:
            return appendWhole(text, m_fewestWhole, fixNumber(0, value).value());
        case Kind::Exponent:
            return appendText(text, QString::number(value, 'g', 6));
        case Kind::SixDecimals:
            return appendText(text, QString::number(value, 'f', 6));
        case Kind::Decimals:
            return appendWithDecimals(text, m_fewestWhole, m_decimals, m_unit, value);
        case Kind::ManyDecimals:
            return appendWithTooManyDecimals(text, m_fewestWhole, m_unit, value);
    }
}

void valueformat::appendInteger(QString &text, QStringView format, qint64 value)
{
    TextBuffer written;
    NumberPattern(format).appendInteger(written, value);
    text.append(written.constData(), written.size());
}

void valueformat::appendReal(QString &text, QStringView format, double value)
{
    TextBuffer written;
    NumberPattern(format).appendReal(written, value);
    text.append(written.constData(), written.size());
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
    TextBuffer written;
    const auto magnitude = static_cast<quint32>(std::abs(count));
    if (value < 0)
        written.append(QLatin1Char('-'));
    appendDigits(written, magnitude / parts, 1);
    quint32 fraction = magnitude % parts;
    if (fraction != 0) {
        int decimals = 4;
        for (; fraction % 10 == 0; fraction /= 10)
            --decimals;
        written.append(QLatin1Char('.'));
        appendDigits(written, fraction, decimals);
    }
    text.append(written.constData(), written.size());
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
    QString digits = inDigits(value, format.isEmpty() ? u"dd.mm.yy hh:nn" : format);
    if (!digits.isNull())
        return digits;
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
