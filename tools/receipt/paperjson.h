#pragma once

#include <printerslib/drivers/paper.h>

#include <QJsonObject>

/// Printed paper as JSON: all that the interpreter knows of it; docs/decode.md describes the keys.
namespace paperjson {

QJsonObject write(const printerslib::drivers::Paper &paper);

}  // namespace paperjson
