#pragma once

#include "printerslib/drivers/transport.h"

namespace till {

/// A line whose bytes go when it is told that it is time.
class SimulatedLine : public printerslib::drivers::Transport
{
    Q_OBJECT

public:
    explicit SimulatedLine(const printerslib::drivers::PrinterAddress &printer) : m_address(printer)
    {}

    printerslib::drivers::PrinterAddress address() const override { return m_address; }
    State state() const override { return m_state; }
    printerslib::drivers::TransportError error() const override { return {}; }
    void open() override { m_state = State::Opening; }
    void close() override { m_state = State::Closed; }
    bool write(const QByteArray &bytes) override;
    void discard() override { m_queue.clear(); }
    qint64 bytesToWrite() const override { return m_queue.size(); }
    qint64 bytesWritten() const override { return m_written; }

    /// The connection is made.
    void hasOpened();
    /// The next byte, which goes now.
    QByteArray takeByte();
    /// Tells that it has gone. A slot may delete this.
    void byteHasGone() { Q_EMIT written(m_written); }
    /// Tells what the printer says. A slot may delete this.
    void hasAnswered(const QByteArray &bytes) { Q_EMIT received(bytes); }

private:
    printerslib::drivers::PrinterAddress m_address;
    State m_state = State::Closed;
    QByteArray m_queue;
    qint64 m_written = 0;
};

}  // namespace till
