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

Wide powerOfTen(int exponent)
{
    Wide power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= ten;
    return power;
}

/// number / divisor, rounded half up.
Wide divided(Wide number, Wide divisor)
{
    const Wide rest = number % divisor;
    return number / divisor + (2 * rest >= divisor ? 1 : 0);
}

quint64 scaled(const Decimal &decimal, quint32 multiplier)
{
    Wide number = static_cast<Wide>(decimal.digits) * multiplier;
    if (decimal.exponent < -mostDigits)
        return 0;
    if (decimal.exponent < 0)
        number = divided(number, powerOfTen(-decimal.exponent));
    for (int i = 0; i < decimal.exponent && number <= largest; ++i)
        number *= ten;
    return number > largest ? largest : static_cast<quint64>(number);
}

/// Zeros behind the last other digit of the multiplier: the number of decimals.
int decimalsOf(quint32 multiplier)
{
    int decimals = 0;
    for (; multiplier != 0 && multiplier % ten == 0; multiplier /= ten)
        ++decimals;
    return decimals;
}

}  // namespace

FixNumber::FixNumber(quint32 multiplier, double value)
    : m_multiplier(multiplier == 0 ? 1 : multiplier), m_value(0)
{
    if (!std::isfinite(value))
        return;
    const auto magnitude =
        static_cast<qint64>(scaled(shortestDecimal(std::abs(value)), m_multiplier));
    m_value = value < 0 ? -magnitude : magnitude;
}

qint64 FixNumber::value() const
{
    return m_value;
}

QString FixNumber::toString(QChar decimalSeparator, QChar groupSeparator) const
{
    const int decimals = decimalsOf(m_multiplier);
    const auto unit = static_cast<quint64>(powerOfTen(decimals));
    const auto magnitude =
        static_cast<quint64>(divided(static_cast<quint64>(std::abs(m_value)), m_multiplier / unit));
    QString text = QString::number(magnitude / unit);
    if (!groupSeparator.isNull()) {
        constexpr int groupSize = 3;
        for (int place = text.size() - groupSize; place > 0; place -= groupSize)
            text.insert(place, groupSeparator);
    }
    if (decimals > 0) {
        const QString fraction = QString::number(magnitude % unit);
        text += decimalSeparator + fraction.rightJustified(decimals, QLatin1Char('0'));
    }
    if (m_value < 0 && magnitude != 0)
        text.prepend(QLatin1Char('-'));
    return text;
}

}  // namespace hearth
