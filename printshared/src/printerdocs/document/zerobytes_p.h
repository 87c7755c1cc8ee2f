#pragma once

#include <QByteArray>

namespace documents {

/// So many zero bytes: the formats and fonts of most lines. Those of a usual line share their
/// memory with nobody to count them.
QByteArray zeroBytes(int count);

}  // namespace documents
