#pragma once

#include <QVector>

#include "layout.h"
#include "previewtools.h"

/// The cells and rows of a layout.
namespace layoutbench {

// CUSTOM_VKP_80 on 80 mm: 643 dots of paper, 512 of line, font 0 of 10 x 24.
inline constexpr int paperWidth = 643;
inline constexpr int margin = 65;

inline const Cell &cellAt(const Layout &layout, int index)
{
    return layout.cells().at(static_cast<std::size_t>(index));
}

inline QString textOf(const Layout &layout, const Row &row)
{
    QString text;
    for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i)
        text += QChar(cellAt(layout, i).code);
    return text;
}

}  // namespace layoutbench
