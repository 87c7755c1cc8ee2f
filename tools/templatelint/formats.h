#pragma once

#include <QString>
#include <QVariant>

namespace templatelint {

/// What is wrong with the format of an attribute's value; empty if nothing is.
/// @param printed what the library prints of the two
QString formatFault(const QVariant &value, const QString &format, const QString &printed);

}  // namespace templatelint
