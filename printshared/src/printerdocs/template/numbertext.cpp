#include "printerdocs/template/numbertext_p.h"

namespace templates {

namespace {

// From these lengths on a text of digits stays text: it may not survive as a number.
constexpr int tooLongForWhole = 19;
constexpr int tooLongForReal = 16;

}  // namespace

QVariant numberOrText(const QVariant &value)
{
    const QString text = value.toString();
    if (beginsLikeAWord(text))
        return value;
    bool ok = false;
    const qlonglong whole = text.toLongLong(&ok);
    if (ok && text.size() < tooLongForWhole)
        return QVariant(whole);
    double real = text.toDouble(&ok);
    if (ok && text.size() < tooLongForReal)
        return QVariant(real);
    if (!text.contains(QLatin1Char(',')))
        return value;
    QString pointed = text;
    pointed.replace(QLatin1Char(','), QLatin1Char('.'));
    real = pointed.toDouble(&ok);
    if (ok && pointed.size() < tooLongForReal)
        return QVariant(real);
    return value;
}

}  // namespace templates
