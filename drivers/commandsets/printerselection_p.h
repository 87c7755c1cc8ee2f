#pragma once

#include <optional>

#include "printerslib/drivers/streamcommand.h"

namespace printerslib::drivers {

/// Whether a command chooses the printer; if not, what follows is for its neighbour on the line, or
/// for nobody. Nothing for a command that is about something else.
std::optional<bool> selectionBy(const StreamCommand &command);

}  // namespace printerslib::drivers
