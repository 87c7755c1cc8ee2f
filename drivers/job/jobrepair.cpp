#include "job/jobrepair_p.h"

#include "job/jobproof_p.h"
#include "job/jobstream_p.h"

namespace printerslib::drivers {

namespace {

/// How far the data of a picture is filled up of which not even the size is known. At 9600 baud
/// that takes 17 seconds, which is less than to lose receipts.
constexpr int unknownRest = 16 * 1024;

}  // namespace

JobRepair::JobRepair(const PrinterProfile &profile, JobRecord &record)
    : m_profile(profile), m_record(record)
{}

QByteArray JobRepair::bytes() const
{
    QByteArray bytes(m_record.fill, '\0');
    if (m_isFilledUp)
        bytes += JobStream::selecting(m_profile);
    return bytes + JobProof::endOfDefinition(m_profile) + JobStream::closing(m_profile);
}

QString JobRepair::text() const
{
    return m_isFilledUp ? QStringLiteral(
                              "the printer answered, but obeyed no command since a job before "
                              "this one: what that lacked was filled up, and the printer reset")
                        : QStringLiteral(
                              "a job before this one was cut off or wasn't confirmed: the "
                              "printer was reset, and what hung in it was cut off");
}

bool JobRepair::settle()
{
    if (m_fill < 0)
        return false;
    m_fill = -1;
    m_record.isOpen = false;
    m_record.fill = 0;
    m_record.last.clear();
    return true;
}

void JobRepair::fillUp()
{
    m_isFilledUp = true;
    m_record.isOpen = true;
    m_record.fill = unknownRest;
}

void JobRepair::isUnconfirmed(bool wasOff)
{
    const bool mayNotObey = m_profile.dialect() != Dialect::Swecoin && !wasOff;
    if (mayNotObey && m_record.reading == JobRecord::Reads)
        m_record.reading = JobRecord::Unread;
    else if (m_isFilledUp)
        m_record.reading = JobRecord::Deaf;
}

}  // namespace printerslib::drivers
