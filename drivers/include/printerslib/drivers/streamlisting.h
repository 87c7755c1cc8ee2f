#pragma once

#include <QScopedPointer>
#include <QString>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/streamcommand.h"

namespace printerslib::drivers {

/// Lists a stream for people: a line for each command, with offset, bytes, mnemonic, operands and
/// meaning. Texts stand as they print, in the character set that is in force there.
///
/// One thread at a time.
class PRINTERSLIB_DRIVERS_EXPORT StreamListing
{
public:
    /// @param codePage number of the character set at the start; -1: the model's
    explicit StreamListing(const PrinterProfile &profile, int codePage = -1);
    ~StreamListing();
    StreamListing(const StreamListing &) = delete;
    StreamListing &operator=(const StreamListing &) = delete;

    /// The lines of one command, each with a line feed at its end: one, and one more for each
    /// command inside its data that acts at once. Long data is shown by its first bytes and length.
    QString linesOf(const StreamCommand &command);

private:
    class State;
    QScopedPointer<State> d;
};

}  // namespace printerslib::drivers
