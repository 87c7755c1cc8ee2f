#include "statusquery.h"

#include <QDeadlineTimer>
#include <algorithm>

#include "queueplace.h"
#include "support.h"

namespace tool {

using printerslib::drivers::Presenter;
using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrinterStatus;
using printerslib::drivers::StatusQuestion;
using printerslib::drivers::Transport;
using printerslib::drivers::TransportOptions;

namespace {

// Milliseconds between two looks for an interrupt.
constexpr int step = 100;
// Of a connection that isn't made the transport says more; what a line hasn't taken, we do.
constexpr int grace = 1000;
// Details are answered at once, or, by some printers, never.
constexpr int detailsMilliseconds = 500;

TransportOptions optionsOf(int milliseconds)
{
    TransportOptions options;
    options.connectMilliseconds = milliseconds;
    options.writeMilliseconds = milliseconds + grace;
    return options;
}

QString secondsText(int milliseconds)
{
    return QStringLiteral("%1 s").arg(milliseconds / 1000);
}

}  // namespace

StatusQuery::StatusQuery(const PrinterAddress &address, const PrinterProfile &profile,
                         int milliseconds)
    : m_address(address),
      m_profile(profile),
      m_milliseconds(milliseconds),
      m_lock(address),
      m_transport(address, optionsOf(milliseconds)),
      m_dialogue(profile)
{}

StatusResult StatusQuery::run()
{
    if (getTurn() && openLine() && ask())
        askDetails();
    m_transport.close();
    return m_result;
}

bool StatusQuery::fail(const QString &fault)
{
    m_result.fault = fault;
    return false;
}

bool StatusQuery::failOfLine()
{
    return fail(m_transport.error() ? m_transport.error().text
                                    : QStringLiteral("%1 isn't reached in %2")
                                          .arg(m_address.toString(), secondsText(m_milliseconds)));
}

bool StatusQuery::mayGoOn()
{
    return !m_interrupt.hasCome() || fail(QStringLiteral("cancelled"));
}

bool StatusQuery::getTurn()
{
    const QDeadlineTimer end(m_milliseconds);
    m_result.fault = waitForTurn(m_lock, m_address, [this, &end](int ahead) {
        if (mayGoOn() && end.hasExpired())
            fail(QStringLiteral("%1 isn't free: waited %2, and %3")
                     .arg(m_address.toString(), secondsText(m_milliseconds),
                          jobsInFront(std::max(ahead, 1))));
        return m_result.fault;
    });
    return m_result.fault.isEmpty();
}

bool StatusQuery::openLine()
{
    const QDeadlineTimer end(m_milliseconds + grace);
    m_transport.open();
    while (mayGoOn()) {
        m_result.isReached = m_transport.waitForOpened(step);
        if (m_result.isReached)
            return true;
        const bool isOver = m_transport.state() != Transport::State::Opening || end.hasExpired();
        if (!isOver)
            continue;
        m_result.status = PrinterStatus({}, {}, false).with(PrinterStatus::NoAnswer);
        return failOfLine();
    }
    return false;
}

bool StatusQuery::ask()
{
    // What was said before isn't an answer.
    m_dialogue.read(m_transport.waitForAnswer(0));
    const QByteArray asked = m_dialogue.askStatus();
    m_transport.write(asked);
    const bool isAnswered = readAnswers(m_milliseconds);
    if (!isAnswered && m_result.fault.isEmpty())
        m_result.fault = silenceText(asked);
    if (!isAnswered)
        m_dialogue.giveUp();
    m_result.status = m_dialogue.status();
    if (!isAnswered && !m_interrupt.hasCome())
        m_result.status = m_result.status.with(PrinterStatus::NoAnswer);
    return isAnswered;
}

/// What some printers of a make tell besides; the status is whole without.
void StatusQuery::askDetails()
{
    QByteArray asked = m_dialogue.ask(StatusQuestion::FullStatus);
    if (m_profile.presenter() != Presenter::None)
        asked += m_dialogue.ask(StatusQuestion::ErrorDetails) +
                 m_dialogue.ask(StatusQuestion::MoreErrorDetails);
    if (asked.isEmpty())
        return;
    m_transport.write(asked);
    if (!readAnswers(std::min(m_milliseconds, detailsMilliseconds))) {
        m_result.fault.clear();
        m_result.note =
            QStringLiteral("%1 doesn't answer all of the maker's own questions: sent %2")
                .arg(m_address.toString(), QString::fromLatin1(asked.toHex(' ').toUpper()));
        m_dialogue.giveUp();
    }
    m_result.status = m_dialogue.status();
}

bool StatusQuery::readAnswers(int milliseconds)
{
    const QDeadlineTimer end(milliseconds);
    while (mayGoOn()) {
        m_dialogue.read(m_transport.waitForAnswer(step));
        if (m_dialogue.expected().isEmpty())
            return true;
        if (m_transport.state() != Transport::State::Open)
            return failOfLine();
        if (end.hasExpired())
            return false;
    }
    return false;
}

QString StatusQuery::silenceText(const QByteArray &asked) const
{
    QString text =
        QStringLiteral("%1 doesn't answer%2: sent %3, waited %4")
            .arg(m_address.toString(),
                 m_dialogue.status().native().isEmpty() ? QString() : QStringLiteral(" all of it"),
                 QString::fromLatin1(asked.toHex(' ').toUpper()), secondsText(m_milliseconds));
    if (m_transport.bytesToWrite() > 0)
        text += QStringLiteral("; the line has taken %1 of %2 bytes")
                    .arg(m_transport.bytesWritten())
                    .arg(asked.size());
    if (m_dialogue.strayBytes() > 0)
        text += QStringLiteral("; %1 bytes came that are no answer of this model")
                    .arg(m_dialogue.strayBytes());
    return text;
}

}  // namespace tool
