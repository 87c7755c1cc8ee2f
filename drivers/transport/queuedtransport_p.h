#pragma once

#include <QTimer>
#include <limits>

#include "printerslib/drivers/transport.h"

namespace printerslib::drivers {

/// What all kinds of transport have in common: the queue of bytes, the counts, the time-outs and
/// the way back. The kinds know how a line is opened and how it takes bytes.
///
/// Nothing is touched behind a signal, as its slot may have deleted the object; and no signal comes
/// from within a signal of a kind's own device, which a slot may delete with it.
class QueuedTransport : public Transport
{
    Q_OBJECT

public:
    QueuedTransport(const PrinterAddress &address, const TransportOptions &options);

    PrinterAddress address() const override { return m_address; }
    State state() const override { return m_state; }
    TransportError error() const override { return m_error; }
    void open() override;
    void close() override;
    bool write(const QByteArray &bytes) override;
    void discard() override;
    qint64 bytesToWrite() const override { return unhanded() + m_handed - m_taken; }
    qint64 bytesWritten() const override { return m_taken; }

protected:
    /// Begins to open. Ends in hasOpened() or hasNotOpened(), from within or later.
    virtual void beginOpening() = 0;
    /// Closes at once, also what is only being opened, and what is closed. Each kind's destructor
    /// calls it.
    virtual void shut() = 0;
    /// Hands bytes over.
    /// @return how many were taken; 0: none now; -1: the line is broken, for the reason in `fault`
    virtual qint64 hand(const char *bytes, qint64 size, TransportError &fault) = 0;
    /// What a line has that nobody can ask any more: nothing more counts as taken.
    static constexpr qint64 unknown = std::numeric_limits<qint64>::max() / 2;
    /// How many of the bytes handed over the line hasn't taken.
    virtual qint64 underWay() const = 0;
    /// Takes those back that can be.
    virtual void dropUnderWay() {}
    /// Milliseconds between two looks while something is to be done that nobody else tells.
    virtual int lookEvery() const { return 10; }
    /// What may be the matter with a line that takes nothing.
    virtual QString whyStuck() const = 0;

    void hasOpened();
    void hasNotOpened(const TransportError &error);
    void hasBroken(const TransportError &error);
    /// Tells first what was taken in front of it.
    /// @return whether the object is there and still open
    bool hasReceived(const QByteArray &bytes);
    /// Hands over what can be, counts, and tells.
    void look();

private:
    void begin();
    void reset(State state);
    void connectTimeOut();
    void writeTimeOut();
    bool handOver(TransportError &fault);
    bool countTaken();
    qint64 unhanded() const { return m_queue.size() - m_offset; }

    const PrinterAddress m_address;
    const TransportOptions m_options;
    State m_state = State::Closed;
    TransportError m_error;
    QByteArray m_queue;
    int m_offset = 0;     ///< of the first byte of the queue that hasn't been handed over
    qint64 m_handed = 0;  ///< to the system, and not taken back
    qint64 m_taken = 0;
    int m_openings = 0;  ///< how often the line was opened
    QTimer m_openTimer{this};
    QTimer m_connectTimer{this};
    QTimer m_lookTimer{this};
    QTimer m_writeTimer{this};
};

}  // namespace printerslib::drivers
