#pragma once

#include <QJsonObject>
#include <QString>

namespace tool {

/// Why the check of documents against a schema would never end, or go deeper than the program can;
/// empty: it ends.
QString endlessSchemaFault(const QJsonObject &schema);

}  // namespace tool
