#include <QStringList>

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

QString withFixedDecimals(const QString &wholeFormat, int decimals, double value)
{
    const hearth::FixNumber number(powerOfTen(decimals), value);
    const QString text = number.toString(QLatin1Char('.'), QChar());
    const int point = text.indexOf(QLatin1Char('.'));
    // Intended: the whole part passes through 32 bits. One that doesn't fit prints as 0, and the
    // "-0" of a number between -1 and 0 loses its sign; printed receipts are compared with the
    // fiscal memory's, which has it so. Tests: wholePartPassesThrough32Bits.
    const int whole = text.leftRef(point).toInt();
    const QString fraction = point < 0 ? QString() : text.mid(point + 1);
    return valueformat::ofInteger(wholeFormat, whole) + QLatin1Char('.') + fraction;
}

/// In templates "m" and "M" both mean month, and "n" means minute.
QString toQtFormat(const QString &format, const char *defaultFormat)
{
    if (format.isEmpty())
        return QLatin1String(defaultFormat);
    QString qtFormat = format;
    qtFormat.replace(QLatin1Char('m'), QLatin1Char('M'));
    qtFormat.replace(QLatin1Char('n'), QLatin1Char('m'));
    return qtFormat;
}

}  // namespace

QString valueformat::ofInteger(const QString &format, qint64 value)
{
    const bool isNegative = value < 0;
    // Negated as an unsigned number: the smallest 64-bit integer has no positive counterpart.
    const quint64 magnitude =
        isNegative ? ~static_cast<quint64>(value) + 1 : static_cast<quint64>(value);
    const QString digits = QString::number(magnitude);
    const int firstZero = format.indexOf(QLatin1Char('0'));
    const int width = format.size() - qMax(firstZero, 0);
    QString text = digits.rightJustified(width, QLatin1Char('0'));
    if (isNegative)
        text.prepend(QLatin1Char('-'));
    return text;
}

QString valueformat::ofReal(const QString &format, double value)
{
    const QString pattern = format.isEmpty() ? QStringLiteral("0.00") : format;
    const int point = pattern.indexOf(QLatin1Char('.'));
    if (point < 0)
        return ofInteger(pattern, hearth::FixNumber(0, value).value());
    const int secondPoint = pattern.indexOf(QLatin1Char('.'), point + 1);
    const QString decimals = pattern.mid(point + 1, secondPoint < 0 ? -1 : secondPoint - point - 1);
    if (decimals.contains(QLatin1Char('E')))
        return QString::number(value, 'g', 6);
    if (decimals.isEmpty())
        return QString::number(value, 'f', 6);
    return withFixedDecimals(pattern.left(point), decimals.size(), value);
}

QString valueformat::ofDateTime(const QString &format, const QDateTime &value)
{
    return value.toString(toQtFormat(format, "dd.MM.yy hh:mm"));
}

QString valueformat::ofDate(const QString &format, const QDate &value)
{
    return value.toString(toQtFormat(format, "dd.MM.yy"));
}

QString valueformat::ofTime(const QString &format, const QTime &value)
{
    return value.toString(toQtFormat(format, "hh:mm"));
}
