#pragma once

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// What is printed together. Places count from the head's first dot and from the line's top;
/// a cell's drawing is one of `drawings`.
struct LineItems
{
    QVector<Paper::Cell> cells;
    QVector<Paper::Picture> drawings;
    QVector<Paper::Picture> pictures;
    QVector<Paper::Code> codes;

    bool isEmpty() const { return cells.isEmpty() && pictures.isEmpty() && codes.isEmpty(); }
    /// Keeps the memory for the next line.
    void clear()
    {
        cells.resize(0);
        drawings.resize(0);
        pictures.resize(0);
        codes.resize(0);
    }
};

}  // namespace printerslib::drivers
