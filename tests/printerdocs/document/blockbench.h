#pragma once

#include <limits>

#include "printerdocs/documentblock.h"

/// Blocks of lines, and the largest number.
namespace blockbench {

using Block = DocumentBlock;
using Bytes = QList<QByteArray>;

inline constexpr int maximum = std::numeric_limits<int>::max();

inline Block blockOf(const QStringList &lines, ETextAlignment alignment = AlignLeft)
{
    return Block::createSimpleBlock(lines, alignment, 0, 0, 0, 0);
}

}  // namespace blockbench
