#pragma once

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// Draws the modules of codes. The interpreter knows no symbology itself: without one of these,
/// codes are known by their payload and take no place.
class PRINTERSLIB_DRIVERS_EXPORT CodeDrawer
{
public:
    CodeDrawer() = default;
    virtual ~CodeDrawer() = default;
    CodeDrawer(const CodeDrawer &) = delete;
    CodeDrawer &operator=(const CodeDrawer &) = delete;

    /// Fills `modules` and `rows` of a code of which symbology and payload are known, and what else
    /// the stream says of it, or `fault`.
    virtual void draw(Paper::Code &code) const = 0;
};

}  // namespace printerslib::drivers
