#include "job/jobrepair_p.h"

#include "job/jobproof_p.h"
#include "job/jobstream_p.h"

namespace printerslib::drivers {

namespace {

/// How far the data of a picture is filled up of which not even the size is known. At 9600 baud
/// that takes 17 seconds, which is less than to lose receipts.
constexpr int unknownRest = 16 * 1024;
constexpr int bitsPerByte = 10;  // on a line, with those around it

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

QString JobRepair::textInFront(const PrinterAddress &address) const
{
    // A line that isn't serial may lead to an adapter of the usual speed.
    const int baudRate = address.line().baudRate;
    const qint64 bits = qint64(m_record.fill) * bitsPerByte;
    if (bits <= baudRate)
        return {};
    QString text =
        QStringLiteral("what a job before this one lacks is filled up first, by %1 zero bytes")
            .arg(m_record.fill);
    if (address.kind() != PrinterAddress::Kind::Serial)
        return text;
    return text + QStringLiteral(": at %1 baud in %2 s")
                      .arg(baudRate)
                      .arg(qRound(double(bits) / baudRate));
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
