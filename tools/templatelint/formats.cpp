#include "formats.h"

#include <QRegularExpression>
#include <algorithm>

#include "attributes.h"
#include "words.h"

namespace templatelint {

namespace {

enum class Kind { Other, Text, Truth, Whole, Real, Date, Time, DateTime };

Kind kindOf(const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::String:
            return value.toString().isEmpty() ? Kind::Other : Kind::Text;
        case QVariant::Bool:
            return Kind::Truth;
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

constexpr char dateParts[] = "dd|[mM]{2}|yy";
constexpr char timeParts[] = "[hH]{2}|nn|ss";
constexpr char dateOrTimeParts[] = "dd|[mM]{2}|yy|YY|DD|[hH]{2}|nn|ss";
constexpr char anyPart[] = "[dmMyhHnsz]";
constexpr char monthAfterHour[] = "[hH][^A-Za-z]?[mM]";
constexpr char otherThanDigits[] = "[^0#.E]";
constexpr char manyDecimals[] = "^[^.]*\\.[^.E]{10,}";

/// The words of a format; quoted ones with their quotation marks. Letters of other alphabets are
/// none of a format's.
QStringList wordsOf(const QString &format)
{
    static const QRegularExpression word(QStringLiteral("'[^']*(?:'|$)|\\p{Latin}+"));
    QStringList words;
    for (auto match = word.globalMatch(format); match.hasNext();)
        words.append(match.next().captured());
    return words;
}

/// Whether each letter of a word means what it seems to: it is one part of a date or time, or
/// several with two letters or more, with "am" or "pm" behind them, or none at all.
bool isPlainWord(const QString &word)
{
    static const QRegularExpression quotedFine(QStringLiteral("^'[^mn]*$"));
    static const QRegularExpression parts(
        QStringLiteral("^(d{1,4}|[mM]{1,4}|yyyy|yy|[hH]{1,2}|n{1,2}|s{1,2}|z|zzz|t|a|A|ap|AP)$|"
                       "^((d{2,4}|[mM]{2,4}|yyyy|yy|[hH]{2}|nn|ss|zzz)T?)+(ap|AP)?$"));
    static const QRegularExpression letterOfParts(QStringLiteral("[dDmMyYhHnNsSzaAt]"));
    if (word.startsWith(QLatin1Char('\'')))
        return quotedFine.match(word).hasMatch();
    return !word.contains(letterOfParts) || parts.match(word).hasMatch();
}

/// The words of a format whose letters mean something else than they seem to.
QStringList misleadingWords(const QString &format)
{
    QStringList misleading;
    const QStringList words = wordsOf(format);
    for (QString word : words) {
        if (!isPlainWord(word))
            misleading.append(word.remove(QLatin1Char('\'')));
    }
    return misleading;
}

/// What is wrong with the letters of a date's or time's format; empty if nothing is.
QString faultOfLetters(const QString &format)
{
    static const QRegularExpression halfDay(QStringLiteral("^[aApP][mM]$"));
    const bool hasMonth = holds(format, monthAfterHour);
    const QStringList words = misleadingWords(format);
    if (words.isEmpty())
        return hasMonth
                   ? Words::tr(
                         "in \"%1\" the \"m\" behind the hours is the month, and minutes are \"n\"")
                   : QString();
    const QString cure = halfDay.match(words.constLast()).hasMatch()
                             ? Words::tr(", and \"am\" or \"pm\" is \"ap\"")
                             : Words::tr("; other words stand outside of the tag");
    return Words::tr(
               "in \"%1\" the letters of \"%2\" mean something else: days are \"dd\", months "
               "\"mm\", years \"yy\" or \"yyyy\", hours \"hh\", minutes \"nn\", seconds \"ss\"%3")
        .arg(QStringLiteral("%1"), clipped(words.join(QStringLiteral("\", \""))),
             hasMonth ? Words::tr(", and the \"m\" behind the hours is the month") : cure);
}

QString faultOfTime(Kind kind, const QString &format)
{
    if (!holds(format, anyPart))
        return Words::tr("the format \"%1\" has no part of a date or time");
    if (kind == Kind::Date && holds(format, timeParts))
        return Words::tr("the format \"%1\" asks for a time, and the value is a date alone");
    if (kind == Kind::Time && holds(format, dateParts))
        return Words::tr("the format \"%1\" asks for a date, and the value is a time alone");
    return QString();
}

QString faultOfNumber(Kind kind, const QString &format)
{
    if (holds(format, dateOrTimeParts))
        return Words::tr("the format \"%1\" is for dates and times, and the value is a number");
    if (holds(format, otherThanDigits))
        return Words::tr(
            "of the format \"%1\" only \"0\", \"#\" and the point are for numbers: what else is to "
            "be printed stands outside of the tag");
    if (kind == Kind::Whole && format.contains(QLatin1Char('.')))
        return Words::tr("the format \"%1\" is for real numbers, and the value is a whole one");
    if (holds(format, manyDecimals))
        return Words::tr("the format \"%1\" has more than nine decimals");
    return QString();
}

QString faultOfText(const QString &text, const QString &format)
{
    // What stands for an amount that there isn't, such as "n/a", may well have a format.
    constexpr int shortestName = 4;
    const bool isName =
        text.size() >= shortestName &&
        std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetter(); });
    if (holds(format, dateOrTimeParts))
        return Words::tr("the format \"%1\" is for dates and times, and the value is a text");
    return isName || holds(format, otherThanDigits)
               ? Words::tr("the format \"%1\" has no effect, as the value is a text")
               : QString();
}

QString misfit(Kind kind, const QVariant &value, const QString &format)
{
    switch (kind) {
        case Kind::Text:
            return faultOfText(value.toString(), format);
        case Kind::Truth:
            return Words::tr("the format \"%1\" has no effect, as the value is true or false");
        case Kind::Whole:
        case Kind::Real:
            return faultOfNumber(kind, format);
        case Kind::Date:
        case Kind::Time:
        case Kind::DateTime:
            return faultOfTime(kind, format);
        case Kind::Other:
            break;
    }
    return QString();
}

bool isTime(Kind kind)
{
    return kind == Kind::Date || kind == Kind::Time || kind == Kind::DateTime;
}

/// Whether a value that is printed so reads as another.
bool isAnotherFigure(Kind kind, const QVariant &value, const QString &printed)
{
    bool isNumber = false;
    if (kind == Kind::Whole)
        return printed != value.toString();
    if (kind == Kind::Real)
        return printed.toDouble(&isNumber) != value.toDouble() || !isNumber;
    return isTime(kind);
}

/// How a whole number is given for a format with decimals, for a message; empty for all else.
QString withDecimals(const QVariant &value, const QString &format)
{
    static const QRegularExpression decimals(QStringLiteral("^[0#]*\\.(0{1,9})$"));
    const auto match = decimals.match(format);
    return kindOf(value) == Kind::Whole && match.hasMatch()
               ? Words::tr("; hand it over as the text \"%1.%2\"")
                     .arg(value.toString(), match.captured(1))
               : QString();
}

}  // namespace

FormatFault formatFault(const QVariant &value, const QString &format, const QString &printed)
{
    if (format.isEmpty())
        return {};
    const Kind kind = kindOf(value);
    FormatFault fault;
    fault.message = isTime(kind) ? faultOfLetters(format) : QString();
    fault.kind = fault.message.isEmpty() ? FormatFault::Misfit : FormatFault::Letters;
    if (fault.message.isEmpty())
        fault.message = misfit(kind, value, format);
    if (fault.message.isEmpty())
        return {};
    fault.message = fault.message.arg(clipped(format)) +
                    Words::tr(": it prints \"%1\"").arg(clipped(printed)) +
                    withDecimals(value, format);
    fault.changesFigure = isAnotherFigure(kind, value, printed);
    return fault;
}

FormatFault formatFault(const QString &format)
{
    const bool isDate = looksLikeDateFormat(format);
    const QString letters = isDate ? faultOfLetters(format) : QString();
    if (!letters.isEmpty())
        return {FormatFault::Letters, letters.arg(clipped(format)), false};
    // A digit in a date's format is text. One number is a width, or decimals, to those who guess.
    if (isDate || !holds(format, "[0#]|^[0-9]+$"))
        return {};
    const QString number = faultOfNumber(Kind::Real, format);
    return number.isEmpty() ? FormatFault{}
                            : FormatFault{FormatFault::Misfit, number.arg(clipped(format)), false};
}

bool looksLikeDateFormat(const QString &format)
{
    static const QRegularExpression part(
        QStringLiteral("(?<!\\p{Latin})(d{2,4}|m{2,4}|yyyy|yy|hh?(?=[:.]?[mn])|nn|ss)(?=\\P{Latin}|"
                       "$|[dmyhnsT])"),
        QRegularExpression::CaseInsensitiveOption);
    return format.contains(part);
}

}  // namespace templatelint
