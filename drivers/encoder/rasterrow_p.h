#pragma once

#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// Draws cells of a row of text as dots: glyph or drawing, slanted, bold (each dot with its right
/// neighbour), all within its cell, then doubled, underlined by two dots at the foot of the cell,
/// or white on black and not underlined, as printers do it. A drawing that is smaller than the cell
/// stands in its upper left corner. Cells stand on the row's foot; the picture ends with the last
/// one, or with the line.
Paper::Picture rasterOfCells(const PrintLayout &layout, const PrintLayout::Row &row);

}  // namespace printerslib::drivers
