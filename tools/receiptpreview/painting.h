#pragma once

#include <QRect>

#include "layout.h"

namespace receiptpreview {

/// Colours that mean something: what the print head burns, and what only the picture shows.
enum class Ink { Print, Note, Guide };

/// Colour of an ink, as 0xRRGGBB.
constexpr unsigned int colourOf(Ink ink)
{
    switch (ink) {
        case Ink::Note:
            return 0xC00000;
        case Ink::Guide:
            return 0x808080;
        default:
            return 0x000000;
    }
}

/// What rows are painted on, in dots.
class Canvas
{
public:
    Canvas() = default;
    virtual ~Canvas() = default;
    Canvas(const Canvas &) = delete;
    Canvas &operator=(const Canvas &) = delete;

    virtual void fill(const QRect &dots, Ink ink) = 0;
    /// Draws a character; the cell is neither a blank nor a special symbol.
    virtual void glyph(const QRect &dots, char16_t code, quint8 effects) = 0;
};

/// Paints what lies between two heights, and perhaps somewhat more of it.
void paint(const Layout &layout, int top, int bottom, Canvas &canvas);

}  // namespace receiptpreview
