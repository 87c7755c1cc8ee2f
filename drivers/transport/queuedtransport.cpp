#include "transport/queuedtransport_p.h"

#include <QPointer>
#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr int shortestReopening = 10;         // milliseconds
constexpr qint64 greatestTurn = 64LL * 1024;  // bytes handed over before others have their turn
constexpr int greatestGap = 64 * 1024;  // bytes in front of the queue that are kept for a while
constexpr int millisecondsPerSecond = 1000;

QString secondsOf(int milliseconds)
{
    return QString::number(milliseconds / double(millisecondsPerSecond));
}

}  // namespace

QueuedTransport::QueuedTransport(const PrinterAddress &address, const TransportOptions &options)
    : m_address(address), m_options(options)
{
    for (QTimer *timer : {&m_openTimer, &m_connectTimer, &m_lookTimer, &m_writeTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_openTimer, &QTimer::timeout, this, &QueuedTransport::begin);
    connect(&m_connectTimer, &QTimer::timeout, this, &QueuedTransport::connectTimeOut);
    connect(&m_lookTimer, &QTimer::timeout, this, &QueuedTransport::look);
    connect(&m_writeTimer, &QTimer::timeout, this, &QueuedTransport::writeTimeOut);
}

void QueuedTransport::open()
{
    if (m_state != State::Closed)
        return;
    m_state = State::Opening;
    m_error = {};
    m_handed = 0;
    m_taken = 0;
    m_openTimer.start(0);
}

void QueuedTransport::begin()
{
    if (m_options.connectMilliseconds > 0)
        m_connectTimer.start(m_options.connectMilliseconds);
    beginOpening();
}

void QueuedTransport::close()
{
    if (m_state == State::Closed)
        return;
    reset(State::Closed);
    Q_EMIT closed();
}

bool QueuedTransport::write(const QByteArray &bytes)
{
    if (m_state != State::Opening && m_state != State::Open)
        return false;
    m_queue.append(bytes);
    if (m_state == State::Open)
        m_lookTimer.start(0);
    return true;
}

void QueuedTransport::discard()
{
    m_queue.clear();
    m_offset = 0;
    if (m_state != State::Open)
        return;
    const qint64 before = underWay();
    dropUnderWay();
    m_handed -= std::max<qint64>(0, before - underWay());
    m_lookTimer.start(0);
}

void QueuedTransport::reset(State state)
{
    for (QTimer *timer : {&m_openTimer, &m_connectTimer, &m_lookTimer, &m_writeTimer})
        timer->stop();
    m_state = state;
    shut();
    m_queue.clear();
    m_offset = 0;
    m_handed = m_taken;
}

void QueuedTransport::hasOpened()
{
    m_connectTimer.stop();
    m_state = State::Open;
    m_error = {};
    m_handed = 0;
    m_taken = 0;
    m_openings++;
    m_lookTimer.start(0);
    Q_EMIT opened();
}

void QueuedTransport::hasNotOpened(const TransportError &error)
{
    const bool isLookedFor = m_state == State::Lost;
    reset(isLookedFor ? State::Lost : State::Closed);
    m_error = error;
    if (isLookedFor)
        m_openTimer.start(std::max(shortestReopening, m_options.reopenMilliseconds));
    else
        Q_EMIT failed(TransportError(error));
}

void QueuedTransport::hasBroken(const TransportError &error)
{
    const bool isLookedFor = m_options.reopens && error.kind == TransportError::Kind::Lost;
    reset(isLookedFor ? State::Lost : State::Closed);
    m_error = error;
    if (isLookedFor) {
        m_openTimer.start(std::max(shortestReopening, m_options.reopenMilliseconds));
        Q_EMIT lost(TransportError(error));
    } else {
        Q_EMIT failed(TransportError(error));
    }
}

bool QueuedTransport::hasReceived(const QByteArray &bytes)
{
    const QPointer<QueuedTransport> self(this);
    const int opening = m_openings;
    const auto isOpen = [&self, opening] {
        return self != nullptr && self->m_state == State::Open && self->m_openings == opening;
    };
    // An answer confirms what it answers to: who ends a job by it is to know how far that came.
    if (countTaken())
        Q_EMIT written(qint64(m_taken));
    if (isOpen() && !bytes.isEmpty())
        Q_EMIT received(bytes);
    return isOpen();
}

/// False if the line is broken.
bool QueuedTransport::handOver(TransportError &fault)
{
    qint64 turn = 0;
    while (unhanded() > 0 && turn < greatestTurn) {
        const qint64 count = hand(m_queue.constData() + m_offset, unhanded(), fault);
        if (count < 0)
            return false;
        if (count == 0)
            break;
        m_offset += static_cast<int>(count);
        m_handed += count;
        turn += count;
    }
    if (unhanded() == 0 || m_offset > greatestGap) {
        m_queue.remove(0, m_offset);
        m_offset = 0;
    }
    return true;
}

void QueuedTransport::look()
{
    if (m_state != State::Open)
        return;
    TransportError fault;
    if (!handOver(fault)) {
        hasBroken(fault);
        return;
    }
    const bool hasMoved = countTaken();
    if (bytesToWrite() == 0)
        m_lookTimer.stop();
    else
        m_lookTimer.start(lookEvery());
    if (hasMoved)
        Q_EMIT written(qint64(m_taken));
}

/// Whether the line has taken more since the last time. Its patience begins anew with that.
bool QueuedTransport::countTaken()
{
    const qint64 taken = std::max(m_taken, m_handed - underWay());
    const bool hasMoved = taken != m_taken;
    m_taken = taken;
    if (bytesToWrite() == 0)
        m_writeTimer.stop();
    else if (m_options.writeMilliseconds > 0 && (hasMoved || !m_writeTimer.isActive()))
        m_writeTimer.start(m_options.writeMilliseconds);
    return hasMoved;
}

void QueuedTransport::connectTimeOut()
{
    hasNotOpened(
        {TransportError::Kind::TimedOut,
         QStringLiteral("%1 didn't answer within %2 s: it is off, its cable is out, or the "
                        "address is another one's")
             .arg(m_address.toString(), secondsOf(m_options.connectMilliseconds))});
}

void QueuedTransport::writeTimeOut()
{
    hasBroken({TransportError::Kind::TimedOut,
               QStringLiteral("%1 took no byte for %2 s, %3 of them being left: %4")
                   .arg(m_address.toString(), secondsOf(m_options.writeMilliseconds),
                        QString::number(bytesToWrite()), whyStuck())});
}

}  // namespace printerslib::drivers
