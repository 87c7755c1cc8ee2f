#include "clockunits.h"

std::optional<qint64> clockunits::ofSeconds(const QString &text)
{
    constexpr double most = 1e9;
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0) || seconds > most)
        return std::nullopt;
    return qRound64(seconds * double(perSecond));
}
