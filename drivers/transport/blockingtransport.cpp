#include "printerslib/drivers/blockingtransport.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

namespace printerslib::drivers {

/// The loop comes first: it makes a thread able to have timers.
struct BlockingTransport::Parts
{
    QEventLoop loop;
    QTimer end;
    std::unique_ptr<Transport> transport;
    QByteArray input;
};

BlockingTransport::BlockingTransport(const PrinterAddress &address, const TransportOptions &options)
    : m_parts(std::make_unique<Parts>())
{
    Parts &parts = *m_parts;
    parts.transport = Transport::make(address, options);
    parts.end.setSingleShot(true);
    parts.end.setTimerType(Qt::PreciseTimer);
    const Transport *const transport = parts.transport.get();
    const auto wake = [&parts] { parts.loop.quit(); };
    QObject::connect(&parts.end, &QTimer::timeout, &parts.loop, wake);
    QObject::connect(transport, &Transport::opened, &parts.loop, wake);
    QObject::connect(transport, &Transport::written, &parts.loop, wake);
    QObject::connect(transport, &Transport::lost, &parts.loop, wake);
    QObject::connect(transport, &Transport::failed, &parts.loop, wake);
    QObject::connect(transport, &Transport::received, &parts.loop,
                     [&parts](const QByteArray &bytes) {
                         parts.input += bytes;
                         parts.loop.quit();
                     });
}

BlockingTransport::~BlockingTransport() = default;

Transport::State BlockingTransport::state() const
{
    return m_parts->transport->state();
}

TransportError BlockingTransport::error() const
{
    return m_parts->transport->error();
}

void BlockingTransport::open()
{
    m_parts->transport->open();
}

void BlockingTransport::close()
{
    m_parts->transport->close();
}

bool BlockingTransport::write(const QByteArray &bytes)
{
    return m_parts->transport->write(bytes);
}

void BlockingTransport::discard()
{
    m_parts->transport->discard();
}

qint64 BlockingTransport::bytesToWrite() const
{
    return m_parts->transport->bytesToWrite();
}

qint64 BlockingTransport::bytesWritten() const
{
    return m_parts->transport->bytesWritten();
}

template <typename Condition>
bool BlockingTransport::wait(int milliseconds, Condition isDone)
{
    Parts &parts = *m_parts;
    const QDeadlineTimer end(std::clamp(milliseconds, 0, longestWait), Qt::PreciseTimer);
    parts.loop.processEvents(QEventLoop::ExcludeUserInputEvents);
    while (!isDone() && state() != Transport::State::Closed && !end.hasExpired()) {
        parts.end.start(static_cast<int>(end.remainingTime()));
        parts.loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    parts.end.stop();
    return isDone();
}

bool BlockingTransport::waitForOpened(int milliseconds)
{
    return wait(milliseconds, [this] { return state() == Transport::State::Open; });
}

bool BlockingTransport::waitForWritten(int milliseconds)
{
    return wait(milliseconds,
                [this] { return state() == Transport::State::Open && bytesToWrite() == 0; });
}

QByteArray BlockingTransport::waitForAnswer(int milliseconds, int atLeast)
{
    wait(milliseconds, [this, atLeast] { return m_parts->input.size() >= atLeast; });
    QByteArray answer;
    answer.swap(m_parts->input);
    return answer;
}

}  // namespace printerslib::drivers
