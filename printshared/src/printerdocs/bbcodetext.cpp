#include "printerdocs/bbcodetext_p.h"

#include <QLatin1Char>
#include <QLatin1String>
#include <QStringView>

namespace bbcodetext {

namespace {

constexpr QLatin1Char lineEnd('\n');

int missingIn(QStringView line, int width)
{
    return width - static_cast<int>(line.size());
}

void appendBlanks(QString *target, int count)
{
    target->resize(target->size() + count, QLatin1Char(' '));
}

void appendPadded(QString *target, QStringView line, int width, ETextAlignment align)
{
    const int missing = qMax(0, missingIn(line, width));
    int before = 0;
    if (align == AlignRight)
        before = missing;
    else if (align == AlignCenter)
        before = missing / 2;
    appendBlanks(target, before);
    target->append(line.data(), static_cast<int>(line.size()));
    appendBlanks(target, missing - before);
}

/// Every line in order, an empty one and the one behind the last line end too.
template <class Visit>
void forEachLine(QStringView text, Visit visit)
{
    qsizetype end = text.indexOf(lineEnd);
    while (end >= 0) {
        visit(text.left(end));
        text = text.mid(end + 1);
        end = text.indexOf(lineEnd);
    }
    visit(text);
}

}  // namespace

QString normalized(QString text)
{
    struct Replacement
    {
        const char16_t *from;
        const char *to;
    };
    // Intended: the quotation marks come twice, as the clients' own normalisation has them (test
    // quotesAndDashesBecomeAscii).
    static constexpr Replacement replacements[] = {
        {u"\r\n", "\n"},  {u"\r", "\n"},    {u"\u00AB", "\""}, {u"\u00BB", "\""},
        {u"\u2014", "-"}, {u"\u2013", "-"}, {u"\u00AB", "\""}, {u"\u00BB", "\""},
    };
    for (const Replacement &replacement : replacements)
        text.replace(QString::fromUtf16(replacement.from), QLatin1String(replacement.to));
    return text;
}

QString zeroFilled(const QString &text, int digits)
{
    QString number = QString::number(text.toLongLong());
    const QString sign = number.startsWith(QLatin1Char('-')) ? QStringLiteral("-") : QString();
    number.remove(0, sign.size());
    return sign + number.rightJustified(digits, QLatin1Char('0'));
}

qint64 blanksToPad(const QString &text, int width)
{
    return qMax(0, width - text.size());
}

QString padded(const QString &text, int width, ETextAlignment align)
{
    QString result;
    appendPadded(&result, QStringView(text), width, align);
    return result;
}

qint64 blanksToPadLines(const QString &text, int width)
{
    qint64 blanks = 0;
    forEachLine(text, [&](QStringView line) { blanks += qMax(0, missingIn(line, width)); });
    return blanks;
}

QString paddedLines(const QString &text, int width, ETextAlignment align)
{
    QString result;
    result.reserve(static_cast<int>(text.size() + blanksToPadLines(text, width)));
    bool isFirst = true;
    forEachLine(text, [&](QStringView line) {
        if (!isFirst)
            result += lineEnd;
        isFirst = false;
        appendPadded(&result, line, width, align);
    });
    return result;
}

QString withoutLeadingLineEnd(const QString &text)
{
    for (const char *start : {"\n", " \n", "\t\n", "  \n"}) {
        const QLatin1String dropped(start);
        if (text.startsWith(dropped))
            return text.mid(dropped.size());
    }
    return text;
}

bool needsBlankBetween(const QString &before, const QString &after)
{
    return !before.isEmpty() && !before.back().isSpace() && !after.isEmpty() &&
           !after.front().isSpace();
}

}  // namespace bbcodetext
