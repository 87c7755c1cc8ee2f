#include "hearth/fixnumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace hearth {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int mostDigits = 38;  // of any power of ten in 128 bits
constexpr quint64 largest = std::numeric_limits<qint64>::max();
constexpr unsigned ten = 10;
constexpr int usualLength = 24;  // of a number's text

/// The shortest decimal that reads back as the same double: digits times a power of ten.
struct Decimal
{
    quint64 digits = 0;
    int exponent = 0;
};

Decimal shortestDecimal(double magnitude)
{
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.begin(), text.end(), magnitude, std::chars_format::scientific).ptr;
    Decimal decimal;
    const char *c = text.begin();
    bool behindPoint = false;
    for (; *c != 'e'; ++c) {
        if (*c == '.') {
            behindPoint = true;
            continue;
        }
        decimal.digits = decimal.digits * ten + static_cast<quint64>(*c - '0');
        decimal.exponent -= behindPoint ? 1 : 0;
    }
    int exponent = 0;
    ++c;  // the "e"
    std::from_chars(*c == '+' ? c + 1 : c, end, exponent);
    decimal.exponent += exponent;
    return decimal;
}

template <typename Number>
Number powerOfTen(int exponent)
{
    Number power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= ten;
    return power;
}

/// number / divisor, rounded half up.
template <typename Number>
Number divided(Number number, Number divisor)
{
    const Number rest = number % divisor;
    return number / divisor + (rest >= divisor - rest ? 1 : 0);
}

quint64 scaled(const Decimal &decimal, quint32 multiplier)
{
    constexpr int exactPowers = std::numeric_limits<quint64>::digits10;
    Wide number = static_cast<Wide>(decimal.digits) * multiplier;
    if (decimal.exponent < -mostDigits)
        return 0;
    // 64 bits hold nearly all amounts, and divide much faster.
    if (decimal.exponent < 0 && decimal.exponent >= -exactPowers && number <= largest)
        return divided(static_cast<quint64>(number), powerOfTen<quint64>(-decimal.exponent));
    if (decimal.exponent < 0)
        number = divided(number, powerOfTen<Wide>(-decimal.exponent));
    for (int i = 0; i < decimal.exponent && number <= largest; ++i)
        number *= ten;
    return number > largest ? largest : static_cast<quint64>(number);
}

/// The same for a whole number of which a double has all digits: they are printed as they are.
quint64 scaledWhole(double magnitude, quint32 multiplier)
{
    if (magnitude >= static_cast<double>(largest))
        return largest;
    const Wide number = static_cast<Wide>(magnitude) * multiplier;
    return number > largest ? largest : static_cast<quint64>(number);
}

/// Called for few amounts: what it needs shall not be set up for the others.
Q_NEVER_INLINE quint64 scaled(double magnitude, quint32 multiplier)
{
    constexpr double wholeFromHere = 9007199254740992.0;  // 2 to the 53rd
    return magnitude >= wholeFromHere ? scaledWhole(magnitude, multiplier)
                                      : scaled(shortestDecimal(magnitude), multiplier);
}

/// The same for a magnitude whose product is so far from half a part that neither the product's
/// rounding nor the difference between the double and its decimal can matter. Most amounts are.
/// @return false: it takes the decimal to tell
bool scaledClearly(double magnitude, quint32 multiplier, quint64 &parts)
{
    constexpr double largestProduct = 1e12;  // of which a double knows a thousandth and better
    constexpr double doubtful = 1e-3;
    constexpr double half = 0.5;
    const double product = magnitude * multiplier;
    if (!(product < largestProduct))
        return false;
    const auto whole = static_cast<qint64>(product);
    const double rest = product - static_cast<double>(whole);
    if (std::abs(rest - half) < doubtful)
        return false;
    parts = static_cast<quint64>(rest > half ? whole + 1 : whole);
    return true;
}

/// Zeros behind the last other digit of the multiplier: the number of decimals.
int decimalsOf(quint32 multiplier)
{
    int decimals = 0;
    for (; multiplier != 0 && multiplier % ten == 0; multiplier /= ten)
        ++decimals;
    return decimals;
}

/// Appends a number of at least so many digits.
void appendDigits(QString &text, quint64 number, int fewest)
{
    std::array<char, std::numeric_limits<quint64>::digits10 + 1> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    const int count = static_cast<int>(end - digits.begin());
    for (int i = count; i < fewest; ++i)
        text += QLatin1Char('0');
    text += QLatin1String(digits.data(), count);
}

}  // namespace

FixNumber::FixNumber(quint32 multiplier, double value)
    : m_multiplier(multiplier == 0 ? 1 : multiplier), m_value(0)
{
    if (!std::isfinite(value))
        return;
    quint64 parts = 0;
    if (!scaledClearly(std::abs(value), m_multiplier, parts))
        parts = scaled(std::abs(value), m_multiplier);
    const auto magnitude = static_cast<qint64>(parts);
    m_value = value < 0 ? -magnitude : magnitude;
}

qint64 FixNumber::value() const
{
    return m_value;
}

QString FixNumber::toString(QChar decimalSeparator, QChar groupSeparator) const
{
    const int decimals = decimalsOf(m_multiplier);
    const auto unit = powerOfTen<quint64>(decimals);
    const auto magnitude =
        divided(static_cast<quint64>(std::abs(m_value)), static_cast<quint64>(m_multiplier / unit));
    QString text;
    text.reserve(usualLength);
    if (m_value < 0 && magnitude != 0)
        text += QLatin1Char('-');
    const int firstDigit = text.size();
    appendDigits(text, magnitude / unit, 1);
    if (!groupSeparator.isNull()) {
        constexpr int groupSize = 3;
        for (int place = text.size() - groupSize; place > firstDigit; place -= groupSize)
            text.insert(place, groupSeparator);
    }
    if (decimals > 0) {
        text += decimalSeparator;
        appendDigits(text, magnitude % unit, decimals);
    }
    return text;
}

}  // namespace hearth
