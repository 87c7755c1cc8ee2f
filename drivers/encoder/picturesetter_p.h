#pragma once

#include "encoder/layoutsheet_p.h"

namespace printerslib::drivers {

/// Puts the picture of a block on the paper.
void addPicture(LayoutSheet &sheet, const DocumentBlock &block);

}  // namespace printerslib::drivers
