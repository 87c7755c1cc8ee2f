#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QVariant>

#include "corvid/clientstate.h"
#include "printerslib_export.h"
#include "printsrvstate/printservicestate.h"

/// The print service's state on the message bus: translates between PrintServiceState and the bus's
/// generic record, whose state text is the JSON of PrintServiceState::toMap(). The print service
/// publishes with toClientState(); any other client reads with setClientState() and asks
/// isWorkable() whether printing is possible at all.
///
/// A plain value; one object is used by one thread at a time.
class PRINTERSLIB_EXPORT PrintServiceStateCorvidWrapper
{
public:
    /// Invalid, without time and texts, and with a default state.
    PrintServiceStateCorvidWrapper() = default;
    /// Holds the state; type, time and description stay unset, as toClientState() doesn't need
    /// them.
    PrintServiceStateCorvidWrapper(const PrintServiceState &state);
    /// Reads the record as setClientState() does.
    PrintServiceStateCorvidWrapper(const corvid::ClientState &clientState);

    /// How grave the state is, as the bus record said.
    corvid::ClientState::EStateType stateType() const;
    /// The bus record's description.
    QString stateDescription() const;
    /// The time of the state, as the bus record said.
    QDateTime stateDt() const;
    /// The state itself.
    PrintServiceState state() const;

    /// Whether the state's type, its time, and both states of service and device are set.
    bool isValid() const;
    /// Whether printing is possible: the wrapper is valid, the service works (1, 2 or 3), and the
    /// device does (0, 1 or 2).
    bool isWorkable() const;

    /// Reads a record of the bus. On a state text that isn't JSON, logs a warning, unsets
    /// everything but the state's tapeAvailable, and gives false. Otherwise gives whether the
    /// record is valid; its data is held in either case.
    /// Intended: tapeAvailable keeps its value unless the state text holds it; the till must not
    /// report paper back only because a record couldn't be read. See
    /// tst_printservicestatecorvidwrapper, badJsonResetsEverythingButTheTape.
    bool setClientState(const corvid::ClientState &clientState);

    /// A record to publish: the present moment, the state as compact JSON, an empty description,
    /// and a type that follows from the two states alone. The wrapper's own type, time and
    /// description play no part.
    corvid::ClientState toClientState() const;

    /// A flat map for displays. "stateType" is the type as a signed 8-bit number, -1 if unset;
    /// "stateDt" is in UTC, ISO form.
    /// Intended: "stateDescription" is the name of the type ("NORMAL", "WARNING", "CRITICAL",
    /// "FATAL", "INVALID", else empty), not the record's description, and the paper is under
    /// "tapeAvailablle"; clients read the map so. See tst_printservicestatecorvidwrapper,
    /// mapDescribesTheTypeInWords and mapHoldsTheTapeUnderItsMisspeltKey.
    QMap<QString, QVariant> toMap() const;

    /// Compares all fields.
    bool operator==(const PrintServiceStateCorvidWrapper &other) const;
    bool operator!=(const PrintServiceStateCorvidWrapper &other) const;

private:
    corvid::ClientState::EStateType m_stateType = corvid::ClientState::StateInvalid;
    QString m_stateDescription;
    QDateTime m_stateDt;
    PrintServiceState m_state;
};
