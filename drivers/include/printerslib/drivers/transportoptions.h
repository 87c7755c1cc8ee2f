#pragma once

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// How long a transport waits, and whether it comes back. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT TransportOptions
{
    int connectMilliseconds = 5000;  ///< until a host answers; 0: as long as the system waits
    int writeMilliseconds = 30000;   ///< without a byte taken, counted anew with each; 0: for ever
    bool reopens = false;            ///< whether what has gone is opened again when it is back
    int reopenMilliseconds = 500;    ///< between two looks for what has gone; at least 10
};

}  // namespace printerslib::drivers
