#pragma once

#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/statusanswer.h"

namespace printerslib::drivers {

/// What the bytes of an answer say is the matter.
PrinterStatus::Flags flagsOfAnswer(StatusQuestion question, const QByteArray &bytes,
                                   const PrinterProfile &profile);
/// All that an answer to a question can say.
PrinterStatus::Flags flagsToldBy(StatusQuestion question, const PrinterProfile &profile);
/// The counter of ETB in a status of Star, 0 to 31, or -1 if the status is too short for it.
int etbCounterOf(const QByteArray &starStatus);

}  // namespace printerslib::drivers
