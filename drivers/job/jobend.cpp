#include "job/jobend_p.h"

namespace printerslib::drivers {

namespace {

using Reason = PrintJobResult::Reason;

QString secondsText(int milliseconds)
{
    constexpr double second = 1000;
    return QString::number(milliseconds / second);
}

}  // namespace

JobEnd JobEnd::cancelled()
{
    return {Reason::Cancelled, QStringLiteral("cancelled")};
}

JobEnd JobEnd::cancelledWhenSent()
{
    return {Reason::Cancelled, QStringLiteral("cancelled when all had been sent")};
}

JobEnd JobEnd::cancelledUnconfirmed()
{
    return {Reason::Cancelled, QStringLiteral("cancelled before it was confirmed")};
}

JobEnd JobEnd::cancelledOnStuckLine(int time)
{
    return {Reason::Cancelled,
            QStringLiteral("cancelled; the line took no byte for %1 s, so that the next job "
                           "resets the printer")
                .arg(secondsText(time))};
}

JobEnd JobEnd::badDocument(const QString &error)
{
    return {Reason::BadDocument, error.isEmpty() ? QStringLiteral("the document is empty") : error};
}

JobEnd JobEnd::noLock(const QString &fault)
{
    return {Reason::Lock, fault};
}

JobEnd JobEnd::lineFailed(const TransportError &error)
{
    return {Reason::Line, error.text};
}

JobEnd JobEnd::cannotPrint(const PrinterStatus &status)
{
    return {Reason::Status, status.text()};
}

JobEnd JobEnd::noAnswer(int time)
{
    return {Reason::NoAnswer,
            QStringLiteral("the printer didn't answer within %1 s: it is off, its cable "
                           "is out, or it can't take data")
                .arg(secondsText(time))};
}

JobEnd JobEnd::refused()
{
    return {Reason::Refused, QStringLiteral("refused in front of the first byte")};
}

JobEnd JobEnd::notCounting()
{
    return {Reason::NoConfirmation, QStringLiteral("the printer hasn't told from where it counts")};
}

JobEnd JobEnd::wasOff()
{
    return {Reason::NoConfirmation,
            QStringLiteral("the printer was switched off and on within the job: what it held is "
                           "lost")};
}

JobEnd JobEnd::mayHaveBeenOff()
{
    return {Reason::NoConfirmation,
            QStringLiteral("the printer is mended, but hasn't told so by itself: it may have "
                           "been switched off, and have lost what it held")};
}

JobEnd JobEnd::unconfirmed(int time)
{
    return {Reason::NoConfirmation,
            QStringLiteral("the printer didn't confirm within %1 s").arg(secondsText(time))};
}

JobEnd JobEnd::unconfirmedAndSilent(int time)
{
    return {Reason::NoConfirmation,
            QStringLiteral("the printer didn't confirm within %1 s, and doesn't answer")
                .arg(secondsText(time))};
}

TransportError JobEnd::stuckLine(const PrinterAddress &address, int time)
{
    return {TransportError::Kind::TimedOut,
            QStringLiteral("%1 took no byte for %2 s: the printer holds the line up, is off, or "
                           "its cable is out")
                .arg(address.toString(), secondsText(time))};
}

}  // namespace printerslib::drivers
