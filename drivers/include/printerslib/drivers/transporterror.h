#pragma once

#include <QMetaType>
#include <QString>

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// Why a printer can't be reached, or no longer can. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT TransportError
{
    /// What a program tells apart.
    enum class Kind {
        None,          ///< nothing is wrong
        BadAddress,    ///< the address is none, or of something that is no printer
        NotFound,      ///< there is no such device or host
        NotPermitted,  ///< the user may not use it
        Busy,          ///< another program holds it
        HeldByCups,    ///< the system's own print service holds it
        Refused,       ///< the host refuses the connection
        TimedOut,      ///< no connection, or no byte taken, for too long
        Lost,          ///< it was there, and has gone
        Failed,        ///< all else
    };

    Kind kind = Kind::None;  ///< None if nothing is wrong
    QString text;            ///< for people, in English, with what can be done; empty for None

    /// Whether something is wrong.
    explicit operator bool() const { return kind != Kind::None; }
};

}  // namespace printerslib::drivers

Q_DECLARE_METATYPE(printerslib::drivers::TransportError)
