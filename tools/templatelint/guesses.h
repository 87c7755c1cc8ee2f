#pragma once

#include <QString>
#include <optional>

namespace templatelint {

/// What there is instead of a tag that people who know other languages look for here; nothing if
/// it is none of these.
/// @param inner what stands between its brackets
std::optional<QString> insteadOfTag(const QString &inner);

}  // namespace templatelint
