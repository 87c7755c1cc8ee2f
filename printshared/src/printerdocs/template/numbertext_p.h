#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

namespace templates {

/// The number that a text value counts as.
struct NumberInText
{
    enum class Kind : unsigned char { None, Whole, Real };

    Kind kind = Kind::None;  ///< None: it is the text that it is
    qint64 whole = 0;
    double real = 0;
};

/// See PrinterDocument::attributeValue().
NumberInText numberIn(const QString &text);

/// A text value as a whole number, a real number, or the text that it is.
QVariant numberOrText(const QVariant &value);

/// Whether a text is certainly no number as QString::toDouble() and its like read them, seen from
/// its first letter: of all words they know but "inf" and "nan", in any case. Most attributes are
/// such texts, and to try them in earnest costs more than to print them.
inline bool beginsLikeAWord(QStringView text)
{
    if (text.isEmpty())
        return false;
    const QChar first = text.at(0);
    if (first >= QChar(0x410) &&
        first <= QChar(0x44F))  // Russian letters, for which no one is asked
        return true;
    const bool isLatin = (first >= QLatin1Char('A') && first <= QLatin1Char('Z')) ||
                         (first >= QLatin1Char('a') && first <= QLatin1Char('z'));
    const ushort lower = isLatin ? first.unicode() | 0x20U : first.toLower().unicode();
    return lower != 'i' && lower != 'n' && (isLatin || first.isLetter());
}

/// Whether a text is a plain decimal number, short enough that it is 0 or not by its digits alone.
inline bool isShortDecimal(QStringView text)
{
    constexpr int longest = 11;  // the smallest is 1e-9, far above countsAsZero
    if (text.isEmpty() || text.size() > longest || text.at(0) == QLatin1Char('.') ||
        text.at(text.size() - 1) == QLatin1Char('.'))
        return false;
    int points = 0;
    for (const QChar c : text) {
        if (c == QLatin1Char('.'))
            ++points;
        else if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return points <= 1;
}

}  // namespace templates
