#pragma once

#include <QRect>

#include "layout.h"

namespace receiptpreview {

/// Colours that mean something: what the print head burns or leaves, and what only the picture
/// shows.
enum class Ink { Print, Note, Guide, Blank, Table };

/// Colour of an ink, as 0xRRGGBB.
constexpr unsigned int colourOf(Ink ink)
{
    switch (ink) {
        case Ink::Note:
            return 0xC00000;
        case Ink::Guide:
            return 0x808080;
        case Ink::Blank:
            return 0xFFFFFF;
        case Ink::Table:
            return 0xD0D0D0;
        default:
            return 0x000000;
    }
}

/// What a character of these effects is drawn with.
constexpr Ink inkOf(quint16 effects)
{
    return (effects & Cell::Inverse) != 0 ? Ink::Blank : Ink::Print;
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
    /// Draws a character, which isn't a blank.
    virtual void glyph(const QRect &dots, char16_t code, quint16 effects) = 0;
    /// What is drawn there as dots is this character.
    virtual void meaning(const QRect &dots, char16_t code)
    {
        Q_UNUSED(dots)
        Q_UNUSED(code)
    }
};

/// Paints what lies between two heights, and perhaps somewhat more of it.
void paint(const Layout &layout, int top, int bottom, Canvas &canvas);

}  // namespace receiptpreview
