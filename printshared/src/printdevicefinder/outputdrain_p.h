#pragma once

#include <QElapsedTimer>
#include <QSerialPort>
#include <memory>

/// The way of the last bytes out of a port. Tests put a queue of their own in its place.
class PortOutput
{
public:
    PortOutput() = default;
    virtual ~PortOutput() = default;
    PortOutput(const PortOutput &) = delete;
    PortOutput &operator=(const PortOutput &) = delete;

    /// How long this many characters take on the line, in milliseconds, rounded up.
    virtual qint64 millisecondsFor(qint64 characters) const = 0;
    /// Bytes that the driver hasn't been given yet.
    virtual qint64 unwritten() const = 0;
    /// Gives the driver of them what it takes within this time; false if it took none.
    virtual bool handOver(int milliseconds) = 0;
    /// Bytes in the driver's queue.
    virtual qint64 queued() const = 0;
    /// False if there is no time to wait.
    virtual bool pause(int milliseconds) = 0;
    /// Milliseconds since some moment.
    virtual qint64 now() const = 0;
    /// Drops what is queued: the system's own close waits for a held line, up to half a minute.
    virtual void drop() = 0;
    /// Puts the old line settings back, at once and whatever is still under way.
    virtual void close() = 0;
};

/// The output of a real port, which has to outlive it.
class SerialPortOutput : public PortOutput
{
public:
    explicit SerialPortOutput(QSerialPort &port);

    qint64 millisecondsFor(qint64 characters) const override;
    qint64 unwritten() const override;
    bool handOver(int milliseconds) override;
    qint64 queued() const override;
    bool pause(int milliseconds) override;
    qint64 now() const override;
    void drop() override;
    void close() override;

private:
    QSerialPort &m_port;
    QElapsedTimer m_clock;
};

namespace discovery {

/// Waits until what was written has left the line: the port's buffer, the driver's queue, and as
/// long as the 128 characters take that an adapter may still hold. Bounded by the time that all
/// these characters take and 200 ms, also while flow control holds the line.
/// @return whether all has left, as far as the driver knows
bool drain(PortOutput &output);

/// Closes a port behind a search: with a printer on it after drain(), as its closing bytes cut the
/// paper; without one at once.
void closePort(PortOutput &output, bool isPrinter);

using OutputOf = std::unique_ptr<PortOutput> (*)(QSerialPort &port);

/// Gives what closePort() works on: a SerialPortOutput. Tests put their own here.
extern OutputOf outputOf;

}  // namespace discovery
