#pragma once

#include <QByteArray>
#include <QSize>

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// The letters for what a printer has no letters for: DejaVu Sans Mono, drawn at build time in the
/// cells of the models. No font is looked up when the program runs. Any thread may call it.
namespace glyphs {

/// Whether there is a drawing of a character.
bool has(char16_t character);
/// The drawing of a character in a cell: `size` is the cell. A character that has none is a box. A
/// cell that nobody foresaw takes the drawing of the largest that fits it, in its middle.
Paper::Picture of(char16_t character, QSize cell);

}  // namespace glyphs

}  // namespace printerslib::drivers
