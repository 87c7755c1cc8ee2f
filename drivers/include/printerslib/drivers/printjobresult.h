#pragma once

#include <QMetaType>
#include <QString>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerstatus.h"
#include "printerslib/drivers/transporterror.h"

namespace printerslib::drivers {

/// What became of a job: never more than is known. A plain value.
struct PRINTERSLIB_DRIVERS_EXPORT PrintJobResult
{
    /// From the weakest to the strongest.
    enum class Outcome {
        NotBegun,    ///< nothing of the document went out, so nothing of it is printed
        PartlySent,  ///< some of it went out, at least `sentBytes`, at most `mostBytes`
        Sent,        ///< the line took all of it; whether it is on paper isn't known
        Processed,   ///< the printer read all of it, and was free of errors behind that
        Printed,     ///< the printer said that all of it is printed
    };
    /// Why it isn't more.
    enum class Reason {
        None,            ///< it is all that the model can tell, or that was asked for
        Cancelled,       ///< by cancel()
        BadDocument,     ///< there are no bytes
        Lock,            ///< whose turn it is can't be told
        Line,            ///< `error`
        Status,          ///< the printer can't print, as `status` says
        NoAnswer,        ///< the printer was asked and didn't answer
        NoConfirmation,  ///< all was sent, and the printer didn't confirm it
        Refused,         ///< PrintJobOptions::beforeSending said no
    };

    Outcome outcome = Outcome::NotBegun;  ///< as far as it is known
    Reason reason = Reason::None;         ///< why not more
    QString text;           ///< the same for people, in English; empty if nothing is wrong
    qint64 sentBytes = 0;   ///< of the document, that the line took
    qint64 mostBytes = 0;   ///< of the document, that the system may have handed on
    qint64 totalBytes = 0;  ///< of the document
    int block = 0;          ///< PartlySent: where the first byte stands that the line didn't take,
    int line = 0;           ///< as EncodedDocument::Mark counts
    TransportError error;   ///< Reason::Line: what is wrong with it
    PrinterStatus status;   ///< as last known

    /// Whether all bytes went out: Sent or more.
    bool isSent() const { return outcome >= Outcome::Sent; }
};

}  // namespace printerslib::drivers

Q_DECLARE_METATYPE(printerslib::drivers::PrintJobResult)
