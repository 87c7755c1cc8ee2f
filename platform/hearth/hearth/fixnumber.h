#pragma once

#include <QChar>
#include <QString>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's fixed-point number for printing.
///
/// A number is held as a whole number of 1/multiplier parts. Rounding is half away from zero on the
/// decimal number that a person sees (the shortest decimal that reads back as the same double), not
/// on its binary neighbour: with multiplier 100, 1.005 is 1.01 and 2.675 is 2.68.
/// A value that isn't finite counts as 0; one beyond the range of a 64-bit integer saturates.
/// Plain value; any thread may use its own object.
class Q_DECL_EXPORT FixNumber
{
public:
    /// @param multiplier parts per unit, a power of ten (100: two decimals); 0 rounds to units
    /// @param value      the number to hold
    FixNumber(quint32 multiplier, double value);

    /// The scaled value: the number times the multiplier, rounded.
    qint64 value() const;

    /// The number with as many fraction digits as the multiplier has zeros behind its last other
    /// digit, and no separator where there are none.
    /// @param decimalSeparator between the whole part and the fraction
    /// @param groupSeparator   between groups of three digits of the whole part; null: none
    QString toString(QChar decimalSeparator, QChar groupSeparator) const;

private:
    quint32 m_multiplier;
    qint64 m_value;
};

}  // namespace hearth
