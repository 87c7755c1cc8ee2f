#pragma once

#include <QSerialPort>
#include <atomic>

/// A port that another thread can have closed, and that closes when its device has gone: for
/// QSerialPort such a port stays open, and a probe would take it for a printer that is silent. A
/// port must not be closed but on the thread it lives in, since its notifiers belong to that
/// thread's event loop; so the close is asked for, and the owner carries it out at its next look.
class CancellablePort : public QSerialPort
{
public:
    explicit CancellablePort(const QString &portName);

    /// Thread-safe; may be called again, and after the port is closed.
    void requestClose();
    /// Called on the port's own thread.
    void closeIfRequested();

private:
    void look(SerialPortError error);

    std::atomic<bool> m_closeRequested{false};
};
