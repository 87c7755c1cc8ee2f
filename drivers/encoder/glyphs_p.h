#pragma once

#include <QByteArray>
#include <QSize>

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// The letters for what a printer has no letters for: DejaVu Sans Mono, drawn at build time in the
/// cells of the models. No font is looked up when the program runs. Any thread may call it.
namespace glyphs {

/// The cells that characters are drawn for: all fonts of the catalogue's models, once or doubled,
/// and the characters that streams define for them.
constexpr QSize cells[] = {{8, 16},  {9, 17},  {9, 24},  {10, 24}, {12, 24},
                           {13, 24}, {14, 24}, {16, 24}, {18, 24}};

/// A drawing in rows of whole bytes, the leftmost dot the highest bit. It lives as long as the
/// process.
struct Drawing
{
    const unsigned char *rows = nullptr;  ///< null: there is none
    QSize size;
};

/// Whether there is a drawing of a character.
bool has(char16_t character);
/// The drawing of a character in a cell: `size` is the cell. A character that has none is a box. A
/// cell that nobody foresaw takes the drawing that is largest in it, by whole times, in its middle;
/// of one that is too small for any the smallest is made smaller.
Paper::Picture of(char16_t character, QSize cell);
/// The same without a copy of it, of a cell that is one of `cells`; of another there is none.
Drawing drawingOf(char16_t character, QSize cell);

}  // namespace glyphs

}  // namespace printerslib::drivers
