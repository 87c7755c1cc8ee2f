#pragma once

#include <QString>

#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/printjobresult.h"

namespace printerslib::drivers {

/// Why a job ends as it does, also in words for people.
struct JobEnd
{
    PrintJobResult::Reason reason = PrintJobResult::Reason::None;
    QString text;

    static JobEnd cancelled();
    static JobEnd cancelledWhenSent();
    static JobEnd cancelledUnconfirmed();
    /// Times are in milliseconds.
    static JobEnd cancelledOnStuckLine(int time);
    /// @param error empty: it has no bytes
    static JobEnd badDocument(const QString &error);
    static JobEnd noLock(const QString &fault);
    static JobEnd lineFailed(const TransportError &error);
    static JobEnd cannotPrint(const PrinterStatus &status);
    static JobEnd noAnswer(int time);
    static JobEnd refused();
    static JobEnd notCounting();
    static JobEnd wasOff();
    static JobEnd mayHaveBeenOff();
    static JobEnd unconfirmed(int time);
    static JobEnd unconfirmedAndSilent(int time);

    /// What is wrong with a line that takes nothing.
    static TransportError stuckLine(const PrinterAddress &address, int time);
};

}  // namespace printerslib::drivers
