#pragma once

#include <printerslib/drivers/documentencoder.h>

#include "selftestplan.h"

namespace tool {

/// The bytes of a printer's self test. A mark's block is the number of a section from 1, of which
/// each begins with a reset, so that what one can't print spoils none of the others.
printerslib::drivers::EncodedDocument selfTestOf(const SelfTestPlan &plan);

}  // namespace tool
