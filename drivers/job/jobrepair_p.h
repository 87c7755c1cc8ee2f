#pragma once

#include <QByteArray>
#include <QString>

#include "job/jobrecord_p.h"
#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// What a job does about those before it, as the record tells of them. One that was cut off,
/// perhaps within a command, has that completed, so that what follows is obeyed and not printed;
/// and what hangs in the printer goes. Of a printer that was well and didn't confirm it is found
/// out whether it obeys at all.
class JobRepair
{
public:
    /// @param record outlives this
    JobRepair(const PrinterProfile &profile, JobRecord &record);

    bool isDue() const { return m_record.isOpen; }
    /// What goes to the printer.
    QByteArray bytes() const;
    /// What a user is told in front of it; empty if it is short.
    QString textInFront(const PrinterAddress &address) const;
    /// The same behind it.
    QString text() const;
    /// The line has taken it. What a line has taken, it or the printer may still lose.
    void hasGone() { m_fill = m_record.fill; }
    /// Zero bytes of a repair that may not have reached the printer; -1: of none.
    int fill() const { return m_fill; }
    /// It is in the printer.
    /// @return whether the record tells of less now
    bool settle();

    /// Whether it is to be found out if the printer obeys, once.
    bool isProbeDue() const { return m_record.reading == JobRecord::Unread && !m_isProbed; }
    void beginProbe() { m_isProbed = true; }
    /// The printer does what it is told.
    void obeys() { m_record.reading = JobRecord::Reads; }
    /// It doesn't: whatever command it waits for the rest of is to be completed.
    void fillUp();
    /// It is well, and didn't confirm this job.
    /// @param wasOff whether it has said why
    void isUnconfirmed(bool wasOff);

private:
    const PrinterProfile m_profile;
    JobRecord &m_record;
    int m_fill = -1;
    bool m_isProbed = false;
    bool m_isFilledUp = false;  ///< as the printer didn't answer the probe
};

}  // namespace printerslib::drivers
