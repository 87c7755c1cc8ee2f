#pragma once

#include <QSize>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// Reads the drawings of characters that a stream defines. The interpreter knows no letters by
/// their looks: without one of these, such characters are U+FFFD in texts.
class PRINTERSLIB_DRIVERS_EXPORT LetterReader
{
public:
    LetterReader() = default;
    virtual ~LetterReader() = default;
    LetterReader(const LetterReader &) = delete;
    LetterReader &operator=(const LetterReader &) = delete;

    /// The letter that a drawing shows, or 0 if it shows none that is known. Of the drawing `size`
    /// and `rows` count; it begins at the upper left corner of a cell of so many dots, which it may
    /// leave partly free.
    virtual char16_t letterOf(const Paper::Picture &drawing, QSize cell) const = 0;
};

}  // namespace printerslib::drivers
