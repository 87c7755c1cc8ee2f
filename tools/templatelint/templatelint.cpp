#include "templatelint.h"

namespace templatelint {

QVector<Finding> lint(const QStringList &, const Options &)
{
    return {};
}

}  // namespace templatelint
