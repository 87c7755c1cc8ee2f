#pragma once

#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// Some printers take dots in bands of 24 rows only, and some dots have to go in such bands, since
/// they would be obeyed in rows. What a band has below the dots is fed with it.
namespace rasterroom {

/// Blank dots below a row, before anything stands there.
int below(const PrintLayout &layout, size_t row);
/// Feeds rows of dots as far as their bands go.
void make(PrintLayout &layout);

}  // namespace rasterroom

}  // namespace printerslib::drivers
