#pragma once

#include <iterator>

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

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
