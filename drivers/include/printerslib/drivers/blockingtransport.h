#pragma once

#include <QByteArray>
#include <memory>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/transport.h"

namespace printerslib::drivers {

/// A transport for threads without an event loop. No call takes longer than half a second; who
/// waits for longer calls again, and can stop between two calls.
///
/// Only the thread that made an object may use it, and a QCoreApplication has to exist. Between the
/// waits nothing is read, and nothing is handed on. Threads with an event loop have Transport: here
/// events of theirs would be delivered while a call waits.
class PRINTERSLIB_DRIVERS_EXPORT BlockingTransport
{
public:
    static constexpr int longestWait = 500;  ///< milliseconds; a longer one counts as this

    /// As Transport::make().
    explicit BlockingTransport(const PrinterAddress &address, const TransportOptions &options = {});
    /// Closes.
    ~BlockingTransport();
    BlockingTransport(const BlockingTransport &) = delete;
    BlockingTransport &operator=(const BlockingTransport &) = delete;

    Transport::State state() const;  ///< as Transport::state()
    TransportError error() const;    ///< as Transport::error()

    /// As Transport::open(); returns at once.
    void open();
    /// As Transport::close().
    void close();
    /// As Transport::write(); returns at once.
    bool write(const QByteArray &bytes);
    /// As Transport::discard().
    void discard();
    qint64 bytesToWrite() const;  ///< as Transport::bytesToWrite()
    qint64 bytesWritten() const;  ///< as Transport::bytesWritten()

    /// Waits until the printer is reached.
    /// @return whether it is; if not, error() tells whether it never will be
    bool waitForOpened(int milliseconds);
    /// Waits until the line has taken all that was written.
    /// @return whether it has; if not, error() tells whether it never will
    bool waitForWritten(int milliseconds);
    /// Waits until the printer has sent something that wasn't given yet.
    /// @param atLeast bytes that are waited for
    /// @return all that came, which may be less than `atLeast`
    QByteArray waitForAnswer(int milliseconds, int atLeast = 1);

private:
    struct Parts;

    template <typename Condition>
    bool wait(int milliseconds, Condition isDone);

    std::unique_ptr<Parts> m_parts;
};

}  // namespace printerslib::drivers
