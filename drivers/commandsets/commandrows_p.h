#pragma once

#include <iterator>

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

constexpr int dialectCount = static_cast<int>(Dialect::Swecoin) + 1;
constexpr int vendorCount = static_cast<int>(Vendor::Swecoin) + 1;

/// In place of a manual.
constexpr const char *searchOnly = "none; the search for printers sends it (docs/probes.md)";

/// The rows of a dialect, those of vendors among them.
struct CommandRows
{
    const CommandRow *first;
    const CommandRow *end;
};

CommandRows escPosRows();
CommandRows starLineRows();
CommandRows swecoinRows();

}  // namespace printerslib::drivers
