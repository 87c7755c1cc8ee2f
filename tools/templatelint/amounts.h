#pragma once

#include <QString>
#include <optional>

#include "markup.h"
#include "text.h"

namespace templatelint {

/// A number with its decimals, in units of the last of them.
struct Decimal
{
    qint64 units = 0;
    int decimals = 0;
};

QString toString(const Decimal &number);
/// 10 to this power.
qint64 unitsOfOne(int decimals);

/// A number as a tag prints it; nothing if the text is another one, or a number of more digits than
/// amounts have.
std::optional<Decimal> decimalOf(const QString &text);

/// What stands at the end of a printed line: behind the last column, or behind a text.
struct Figure
{
    std::optional<Decimal> number;  ///< nothing: whether and which number it is can't be told
    int offset = Text::nowhere;     ///< of the tag that it comes from; nowhere: none
    QString label;
    QString text;  ///< that it was looked for in
};

/// Nothing if the line has none.
std::optional<Figure> figureOf(const Printed &line);

/// Whether a text that wasn't understood holds what reads as an amount.
bool holdsAmount(const QString &text);
/// Whether one that is less than 1 and has this many decimals is among them.
bool holdsSmallAmount(const QString &text, int decimals);

/// Of the name of an amount: whether it is that of all above.
bool readsLikeATotal(const QString &label);
/// Whether it is that of a tax, a payment, a discount, a weight or the like, which may be no part
/// of a sum, or taken off it.
bool readsLikeAside(const QString &label);

}  // namespace templatelint
