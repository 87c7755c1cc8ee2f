#include "formats.h"

#include <QRegularExpression>

#include "attributes.h"

namespace templatelint {

namespace {

enum class Kind { Other, Text, Whole, Real, Date, Time, DateTime };

Kind kindOf(const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::String:
            return value.toString().isEmpty() ? Kind::Other : Kind::Text;
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            return Kind::Whole;
        case QVariant::Double:
            return Kind::Real;
        case QVariant::Date:
            return Kind::Date;
        case QVariant::Time:
            return Kind::Time;
        case QVariant::DateTime:
            return Kind::DateTime;
        default:
            return Kind::Other;
    }
}

bool holds(const QString &format, const char *pattern)
{
    return format.contains(QRegularExpression(QLatin1String(pattern)));
}

constexpr char dateParts[] = "dd|[mM]{2}|yy|YY|DD";
constexpr char timeParts[] = "[hH]{2}|nn|ss";
constexpr char dateOrTimeParts[] = "dd|[mM]{2}|yy|YY|DD|[hH]{2}|nn|ss";
constexpr char anyPart[] = "[dmMyhHnsz]";
constexpr char monthAfterHour[] = "[hH][^A-Za-z]?[mM]";

QString faultOfTime(Kind kind, const QString &format)
{
    if (holds(format, monthAfterHour))
        return QStringLiteral(
            "in \"%1\" the \"m\" behind the hours is the month, and minutes are "
            "\"n\"");
    if (!holds(format, anyPart))
        return QStringLiteral("the format \"%1\" has no part of a date or time");
    if (kind == Kind::Date && holds(format, timeParts))
        return QStringLiteral("the format \"%1\" asks for a time, and the value is a date alone");
    if (kind == Kind::Time && holds(format, dateParts))
        return QStringLiteral("the format \"%1\" asks for a date, and the value is a time alone");
    return QString();
}

QString faultOf(Kind kind, const QString &format)
{
    if (kind == Kind::Date || kind == Kind::Time || kind == Kind::DateTime)
        return faultOfTime(kind, format);
    if (kind == Kind::Whole && format.contains(QLatin1Char('.')) && !holds(format, dateOrTimeParts))
        return QStringLiteral(
            "the format \"%1\" is for real numbers, and the value is a whole "
            "one");
    if (kind == Kind::Other || !holds(format, dateOrTimeParts))
        return QString();
    return kind == Kind::Text
               ? QStringLiteral("the format \"%1\" is for dates and times, and the value is a text")
               : QStringLiteral(
                     "the format \"%1\" is for dates and times, and the value is a "
                     "number");
}

}  // namespace

QString formatFault(const QVariant &value, const QString &format, const QString &printed)
{
    const QString fault = format.isEmpty() ? QString() : faultOf(kindOf(value), format);
    return fault.isEmpty() ? fault
                           : fault.arg(clipped(format)) +
                                 QStringLiteral(": it prints \"%1\"").arg(clipped(printed));
}

}  // namespace templatelint
