#pragma once

#include <vector>

#include "encoder/hazards_p.h"
#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// Characters that go as dots among the letters of a row: by the bit image of 24 rows that stands
/// in a line as characters do, on the same base.
namespace linedots {

constexpr int height = bandRows;

/// Whether a model has such a bit image.
bool areKnownTo(const PrinterProfile &profile);

/// Cells side by side that go as dots.
struct Run
{
    int end = 0;             ///< behind its last cell, from the row's first
    QByteArray columns;      ///< three bytes for each
    std::vector<int> parts;  ///< columns of each command; none: they would be obeyed
};
/// @param first from the row's first cell
Run runFrom(const PrintLayout &layout, const PrintLayout::Row &row, int first);

/// Whether a row whose cells are marked can go so, and takes no more bytes than as dots as a whole.
bool areWorth(const PrintLayout &layout, const PrintLayout::Row &row);

}  // namespace linedots

}  // namespace printerslib::drivers
