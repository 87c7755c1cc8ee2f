#pragma once

#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// Draws cells of a row of text as dots: glyph or drawing, doubled, bold (each dot with its right
/// neighbour), slanted, underlined by two dots at the foot of the cell, white on black.
Paper::Picture rasterOfCells(const PrintLayout &layout, const PrintLayout::Row &row);

}  // namespace printerslib::drivers
