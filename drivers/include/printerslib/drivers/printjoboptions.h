#pragma once

#include <functional>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/transportoptions.h"

namespace printerslib::drivers {

/// How a job goes about its printer. Times are in milliseconds; of its own, but for
/// `waitMilliseconds`, less than 1 counts as 1. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT PrintJobOptions
{
    static constexpr int forEver = -1;  ///< of `waitMilliseconds`

    /// Of the line. A line that takes no byte for `writeMilliseconds` ends the job, unless the
    /// printer has told why and is waited for. `reopens` doesn't count: what has gone ends the job.
    TransportOptions transport;
    /// Whether the printer is asked how it is, before the job and while it waits. If not, it isn't
    /// asked for anything, and the job ends in Sent at best: of a line without a way back.
    bool asks = true;
    /// Whether the printer is asked to confirm what its model can.
    bool confirms = true;
    int statusMilliseconds = 2000;    ///< until the answer to how it is counts as none
    int confirmMilliseconds = 30000;  ///< until a confirmation counts as none
    /// How long a printer is waited for that can't print, before the job and in its middle: 0: not
    /// at all; forEver: until cancel().
    int waitMilliseconds = 0;
    int pollMilliseconds = 1000;    ///< between two questions while something is waited for
    int cancelMilliseconds = 5000;  ///< without a byte taken, until cancel() lets the line go
    /// How many bytes are in front of the line, and of a crash uncertain: 512 to 65536. Twice as
    /// many may be under way.
    int stepBytes = 4096;
    /// Asked once, when the turn is had and the printer can print, in front of the document's first
    /// byte: if it says no, the job ends in NotBegun. It is called by the thread of the job, out
    /// of its event loop, and may do anything, also delete the job; what it takes long for, the
    /// printer waits for. None is yes.
    std::function<bool()> beforeSending;
};

}  // namespace printerslib::drivers
