#pragma once

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// Some commands take so many rows at a time, whatever is in them.
constexpr int bandRows = 24;

/// Dots as they go to a printer: rows of whole bytes from the left edge of the line on, the
/// leftmost dot the highest bit.
struct PrintDots
{
    int bytesPerRow = 0;  ///< as far as anything is black; 0: nothing is
    int height = 0;
    QByteArray rows;

    const unsigned char *row(int y) const
    {
        return reinterpret_cast<const unsigned char *>(rows.constData()) +
               qptrdiff(y) * bytesPerRow;
    }
};

/// A picture at a place of the line. What is blank at its right is left out.
PrintDots placedDots(const Paper::Picture &picture, int left);
/// A drawn code at its size.
Paper::Picture pictureOfCode(const Paper::Code &code);
/// Three bytes for each column of a band from `top` on, the uppermost dot the highest bit; rows
/// beyond the end are blank.
QByteArray columnsOf24(const PrintDots &dots, int top);

}  // namespace printerslib::drivers
