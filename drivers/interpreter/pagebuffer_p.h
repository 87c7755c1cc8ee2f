#pragma once

#include "interpreter/linebuffer_p.h"

namespace printerslib::drivers {

/// The page of page mode: lines go to places of an area, in one of four directions, and are printed
/// together.
class PageBuffer
{
public:
    PageBuffer(int paperDots, int firstLine);

    /// Begins anew: an empty page, the area as wide as the paper.
    void reset();
    void setArea(const QRect &area);
    /// 0: from the upper left, 1: upwards from the lower left, 2: upside down from the lower right,
    /// 3: downwards from the upper right.
    void setDirection(int direction);
    void clearArea();

    /// Along a line, and across the lines.
    int width() const;
    int height() const;
    /// Where lines stand: their bottom, counted across the lines.
    int y() const { return m_y; }
    void setY(int y) { m_y = y; }
    /// Puts a line down. False if something of it lies outside of the area, and was left out.
    bool take(LineBuffer &line);

    const LineItems &items() const { return m_items; }
    /// Down to the end of the areas that the stream set, else of what is printed.
    int length() const;

private:
    QRect placeOf(const QRect &place) const;
    int quarterTurns() const { return (4 - m_direction) % 4; }
    bool isInArea(const QRect &place) const;
    bool isInside(const QRect &place) const;

    const int m_paperDots;
    const int m_firstLine;
    QRect m_area;
    int m_direction = 0;
    int m_y = 0;
    int m_areasEnd = 0;
    int m_itemsEnd = 0;
    /// How many of each were there when an area was cleared.
    struct Counts
    {
        int cells = 0;
        int pictures = 0;
        int codes = 0;
    };
    QRect m_clearedArea;
    Counts m_cleared;
    LineItems m_items;
};

}  // namespace printerslib::drivers
