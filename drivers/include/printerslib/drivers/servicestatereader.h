#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "corvid/clientstate.h"
#include "printerslib/drivers/drivers_export.h"
#include "printsrvstate/printservicestate.h"

namespace printerslib::drivers {

/// Reads the records by which print services tell the bus how they do, and refuses what can't be
/// read. PrintServiceStateCorvidWrapper takes a text for the number 0: `"deviceState": "fatal"`
/// would be a printer that works.
///
/// All keys of PrintServiceState::toMap() have to be there; others are passed over, since a later
/// service may write them. Any thread may call it.
class PRINTERSLIB_DRIVERS_EXPORT ServiceStateReader
{
public:
    /// The state in a record of the bus. Nothing if it can't be read; then `error` says why, with
    /// the key: "deviceState: \"fatal\" isn't a number". The record's own type and time aren't
    /// looked at; PrintServiceStateCorvidWrapper::isWorkable() goes by them.
    static std::optional<PrintServiceState> read(const corvid::ClientState &record,
                                                 QString *error = nullptr);
    /// The state in a record's state text, which is JSON.
    static std::optional<PrintServiceState> readJson(const QByteArray &json,
                                                     QString *error = nullptr);
};

}  // namespace printerslib::drivers
