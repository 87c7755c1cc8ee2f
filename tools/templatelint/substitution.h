#pragma once

#include <QVector>
#include <functional>
#include <optional>

#include "text.h"

namespace templatelint {

/// What a tag becomes; nothing if the value was too much to work out.
using ValueOf = std::function<std::optional<QString>(const QString &inner)>;

/// A value that never comes to an end.
struct Endless
{
    int offset;       ///< of what it is put in for
    QString message;  ///< what is endless about it
};

struct Filled
{
    Text text;
    QVector<int> hidden;             ///< offsets of attribute tags that a removed group made stay
    std::optional<Endless> endless;  ///< if there is one, `text` is useless
};

/// One line with its values filled in by the engine's rule, as far as that comes to an end.
Filled fill(const Text &line, const ValueOf &valueOf);

}  // namespace templatelint
