#pragma once

#include <QSerialPort>
#include <atomic>

/// A port that another thread can have closed. A port must not be closed but on the thread it lives
/// in, since its notifiers belong to that thread's event loop; so the close is asked for, and the
/// owner carries it out at its next look.
class CancellablePort : public QSerialPort
{
public:
    using QSerialPort::QSerialPort;

    /// Thread-safe; may be called again, and after the port is closed.
    void requestClose() { m_closeRequested.store(true, std::memory_order_relaxed); }
    /// Called on the port's own thread.
    void closeIfRequested()
    {
        if (m_closeRequested.load(std::memory_order_relaxed) && isOpen())
            close();
    }

private:
    std::atomic<bool> m_closeRequested{false};
};
