#pragma once

#include <atomic>
#include <functional>

#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/outputdrain_p.h"

class PrintersHelper;

/// What a search tells its tasks.
struct SearchOrders
{
    std::atomic<bool> stop{false};   ///< Don't look any further.
    std::atomic<bool> hurry{false};  ///< The closing bytes have 200 ms left.
};

/// A port whose waits end at once when the search is stopped: the library's own search goes on to
/// the end of its dialogue, which is 9.6 seconds at worst.
class SearchedPort : public CancellablePort
{
public:
    /// @param waits called at each wait, on the port's thread
    SearchedPort(const QString &path, const SearchOrders &orders,
                 std::function<void(const QSerialPort &port)> waits);

    /// The helper that works on the port from here on.
    void setHelper(PrintersHelper *helper);
    /// False at once, with a port that is closed, if the search is stopped or the device has gone.
    bool waitForReadyRead(int milliseconds) override;

private:
    bool mayGoOn();

    const SearchOrders &m_orders;
    const std::function<void(const QSerialPort &port)> m_waits;
    PrintersHelper *m_helper = nullptr;
};

/// Its closing bytes are waited for; if the program has to end, no longer than it has time, and
/// those that an adapter may still hold not at all.
class HurriableOutput : public SerialPortOutput
{
public:
    HurriableOutput(QSerialPort &port, const SearchOrders &orders);
    bool pause(int milliseconds) override;

private:
    bool mayWait();

    const SearchOrders &m_orders;
    qint64 m_hurryEnd = 0;  ///< On the clock of now(); 0: there is no hurry yet.
};
