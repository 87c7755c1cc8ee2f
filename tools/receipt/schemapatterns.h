#pragma once

#include <QJsonObject>

namespace tool {

/// A schema that says of this document what the given one says, and in which nothing is left that
/// would take longer, or more of the stack, the longer a text of the document is.
/// @throw std::runtime_error for a pattern that is none
QJsonObject withPatternsMatched(const QJsonObject &schema, const QJsonObject &document);

}  // namespace tool
