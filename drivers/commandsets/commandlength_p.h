#pragma once

#include <string_view>

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

/// How many bytes a command takes.
struct CommandLength
{
    qint64 bytes = 0;
    bool isKnown = false;  ///< else so many bytes at least, before more can be said
};

/// The length of a command whose bytes stand at the head of `bytes`, or begin to.
/// @param searchedTo so many bytes hold no end; what ends by a mark is looked for behind them
CommandLength lengthOfCommand(const CommandRow &row, std::string_view bytes, qint64 searchedTo);

/// Whether a row's selector lies in what the command's length counts, so that it belongs to the
/// command at all; as long as the length isn't there it may.
bool selectorIsCounted(const CommandRow &row, std::string_view bytes);

}  // namespace printerslib::drivers
