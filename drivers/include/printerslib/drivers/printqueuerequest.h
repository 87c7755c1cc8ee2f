#pragma once

#include <QString>

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printjoboptions.h"

namespace printerslib::drivers {

/// A document for a PrintQueue: all that printing it takes, also years later and in another
/// program. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT PrintQueueRequest
{
    EncodedDocument document;  ///< of DocumentEncoder; has bytes and no error
    PrinterProfile profile;    ///< it is encoded for this model, as a user's files have it
    int paperId = 0;           ///< as PrintTarget::forModel() has it
    int baseFont = 0;          ///< likewise
    PrinterAddress address;    ///< where it goes
    PrintJobOptions options;   ///< how; but for `beforeSending`, which the queue needs for itself
    QString title;             ///< for people; may be empty
    QString documentNumber;    ///< by which it is found in the journal; may be empty
    bool isCopy = false;       ///< whether the document says that it is a copy
};

}  // namespace printerslib::drivers
