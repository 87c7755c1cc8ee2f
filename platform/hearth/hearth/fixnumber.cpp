#include "hearth/fixnumber.h"
namespace hearth {
FixNumber::FixNumber(quint32 multiplier, double value)
    : m_multiplier(multiplier), m_value(qint64(value))
{}
qint64 FixNumber::value() const
{
    return m_value;
}
QString FixNumber::toString(QChar, QChar) const
{
    return QString();
}
}  // namespace hearth
