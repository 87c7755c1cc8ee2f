#pragma once

#include <QString>

namespace hearth {

/// Cuts instead of rounding.
class Q_DECL_EXPORT FixNumber
{
public:
    FixNumber(quint32 multiplier, double value);
    qint64 value() const { return m_parts; }
    QString toString(QChar decimalSeparator, QChar groupSeparator) const;

private:
    qint64 m_parts;
    quint32 m_multiplier;
};

}  // namespace hearth
