#pragma once

#include "interpreter/printstate_p.h"
#include "printerslib/drivers/streamcommand.h"

namespace printerslib::drivers {

/// What a command changes in which bytes are two-byte characters, and of which set.
void followKanji(KanjiState &kanji, const PrinterProfile &profile, const StreamCommand &command);

}  // namespace printerslib::drivers
