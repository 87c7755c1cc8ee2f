#pragma once

#include "interpreter/lineitems_p.h"

namespace printerslib::drivers {

/// A line that isn't printed yet. Lefts count from its start; what stands in it stands on one
/// bottom line.
struct LineBuffer
{
    LineItems items;
    int x = 0;       ///< where the next character goes
    int end = 0;     ///< right edge of what stands there, or where the stream went to
    int height = 0;  ///< of the tallest
    bool isWrapped = false;

    bool isEmpty() const { return items.isEmpty(); }
    void clear()
    {
        items.clear();
        x = 0;
        end = 0;
        height = 0;
        isWrapped = false;
    }
    void moveTo(int place)
    {
        x = place;
        end = end > x ? end : x;
    }
    void add(const Paper::Cell &cell, int advance)
    {
        items.cells.append(cell);
        height = height > cell.height ? height : cell.height;
        moveTo(x + advance);
    }
    void add(const Paper::Picture &picture)
    {
        items.pictures.append(picture);
        height = height > picture.place.height() ? height : picture.place.height();
        moveTo(x + picture.place.width());
    }
    void add(const Paper::Code &code)
    {
        items.codes.append(code);
        height = height > code.place.height() ? height : code.place.height();
        moveTo(x + code.place.width());
    }
    /// Puts all on the bottom line of the height that there is, from `left` on.
    void settle(int left);
};

}  // namespace printerslib::drivers
