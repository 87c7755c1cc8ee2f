#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/printjobresult.h"

namespace printerslib::drivers {

/// What is known of a job that a PrintQueue keeps. A plain value; times are UTC.
struct PRINTERSLIB_DRIVERS_EXPORT PrintQueueEntry
{
    /// How far it is.
    enum class State {
        Waiting,   ///< nothing of it has gone out; PrintQueue::ended() tells why, if it was tried
        Printing,  ///< it is under way
        Unknown,   ///< held: it was begun, and whether all of it is on paper can't be known
        Partial,   ///< held: some of it went out, and not all
        Done,      ///< in the journal: sent, processed or printed, as `result` says
        Dropped,   ///< in the journal: somebody has given it up
    };

    qint64 id = 0;                 ///< of this folder, from 1 on, in the order of adding
    State state = State::Waiting;  ///< what became of it by now
    QString title;                 ///< as given
    QString documentNumber;        ///< as given
    QString modelId;               ///< what it was encoded for
    PrinterAddress address;        ///< where it goes
    QDateTime added;               ///< when it was durable
    QDateTime begun;               ///< in front of its first byte; null: not yet
    QDateTime ended;               ///< when its end was known; null: not yet
    bool isCopy = false;           ///< as given, or a reprint
    qint64 copyOf = 0;             ///< of a reprint the id of the job that it repeats
    int repeats = 0;  ///< how often it was sent off again; each says on paper that it is one
    /// Of the last attempt. `error` and `status` aren't kept beyond the object that printed it.
    PrintJobResult result;

    /// Whether somebody has to decide: PrintQueue::repeat() or PrintQueue::drop().
    bool isHeld() const { return state == State::Unknown || state == State::Partial; }
};

}  // namespace printerslib::drivers

Q_DECLARE_METATYPE(printerslib::drivers::PrintQueueEntry)
