#include "printerdocs/bbcodetext_p.h"

#include <QLatin1String>

namespace bbcodetext {

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

QString padded(const QString &text, int width, ETextAlignment align)
{
    const int missing = width - text.size();
    if (missing <= 0)
        return text;
    int before = 0;
    if (align == AlignRight)
        before = missing;
    else if (align == AlignCenter)
        before = missing / 2;
    const QLatin1Char blank(' ');
    return QString(before, blank) + text + QString(missing - before, blank);
}

QString withoutLeadingLineEnd(const QString &text)
{
    for (const char *start : {"\n", " \n", "\t\n", "  \n"}) {
        const QLatin1String lineEnd(start);
        if (text.startsWith(lineEnd))
            return text.mid(lineEnd.size());
    }
    return text;
}

bool needsBlankBetween(const QString &before, const QString &after)
{
    return !before.isEmpty() && !before.back().isSpace() && !after.isEmpty() &&
           !after.front().isSpace();
}

}  // namespace bbcodetext
