#pragma once

#include <QSerialPort>
#include <QStringList>
#include <QThreadPool>
#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "printdevicefinder/outputdrain_p.h"
#include "printdevicefinder/printershelper_p.h"
#include "virtualprinter.h"

/// Virtual printers with the time taken out: while a bench exists, a wait for input first lets the
/// printer on that port take what was sent and answer it, and then looks whether there is an
/// answer. So no test depends on how busy the machine is.
class PrinterBench
{
public:
    PrinterBench()
    {
        // At the first opening Qt makes its list of lock folders. Debian's QtSerialPort isn't built
        // for ThreadSanitizer, which would not see that the other threads wait for that.
        QSerialPort().open(QIODevice::ReadWrite);
        current() = this;
        m_realWait = discovery::waitForInput;
        discovery::waitForInput = wait;
        m_realOutput = discovery::outputOf;
        discovery::outputOf = [](QSerialPort &port) -> std::unique_ptr<PortOutput> {
            return std::make_unique<HurriedOutput>(port);
        };
    }

    /// Waits for the tasks, which look at the bench. They may still run if a check has failed;
    /// their holds end here, and what beforeWait looks at has to be declared in front of the bench.
    ~PrinterBench()
    {
        m_isClosing = true;
        QThreadPool::globalInstance()->waitForDone();
        discovery::waitForInput = m_realWait;
        discovery::outputOf = m_realOutput;
        current() = nullptr;
    }

    PrinterBench(const PrinterBench &) = delete;
    PrinterBench &operator=(const PrinterBench &) = delete;

    std::shared_ptr<VirtualPrinter> add(std::shared_ptr<VirtualPrinter> printer)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_printers[printer->portName()] = printer;
        return printer;
    }

    std::shared_ptr<VirtualPrinter> add(const VirtualPrinterOptions &options)
    {
        return add(std::make_shared<VirtualPrinter>(options));
    }

    std::shared_ptr<VirtualPrinter> add(const VirtualModel &model,
                                        const VirtualPrinterOptions &options = {})
    {
        return add(std::make_shared<VirtualPrinter>(model, options));
    }

    /// Holds the thread that waits, for as long as the condition is true and the bench exists.
    template <typename Condition>
    void holdWhile(Condition condition) const
    {
        while (!m_isClosing && condition())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    /// Called before each wait, on the thread that waits, with the port, the milliseconds asked
    /// for and the count of waits on all ports so far, from 1. Set it while no search runs.
    std::function<void(QSerialPort &port, int milliseconds, int count)> beforeWait;

private:
    /// A pseudo terminal delivers at once: there is nothing to wait for.
    class HurriedOutput : public SerialPortOutput
    {
    public:
        using SerialPortOutput::SerialPortOutput;
        bool pause(int) override { return true; }
    };

    static PrinterBench *&current()
    {
        static PrinterBench *bench = nullptr;
        return bench;
    }

    static bool wait(QSerialPort &port, int milliseconds)
    {
        PrinterBench &bench = *current();
        std::shared_ptr<VirtualPrinter> printer;
        int count = 0;
        {
            const std::lock_guard<std::mutex> lock(bench.m_mutex);
            const auto found = bench.m_printers.find(port.portName());
            if (found != bench.m_printers.end())
                printer = found->second;
            count = ++bench.m_waits;
        }
        if (bench.beforeWait)
            bench.beforeWait(port, milliseconds, count);
        while (port.isOpen() && port.bytesToWrite() > 0 && port.flush()) {
        }
        if (printer)
            printer->service();
        return port.waitForReadyRead(0);
    }

    discovery::WaitForInput m_realWait = nullptr;
    discovery::OutputOf m_realOutput = nullptr;
    std::mutex m_mutex;
    std::map<QString, std::shared_ptr<VirtualPrinter>> m_printers;
    int m_waits = 0;
    std::atomic<bool> m_isClosing{false};
};

/// A printer without faults.
inline VirtualPrinterOptions printerOf(
    const QString &model, int baudRate = QSerialPort::Baud115200,
    QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl)
{
    VirtualPrinterOptions options;
    options.model = model;
    options.baudRate = baudRate;
    options.flowControl = flowControl;
    return options;
}

inline VirtualPrinterOptions faultyPrinter(VirtualFault fault, int value = 0, unsigned seed = 1)
{
    VirtualPrinterOptions options = printerOf(QStringLiteral("CUSTOM_VKP_80"));
    options.fault = fault;
    options.faultValue = value;
    options.seed = seed;
    return options;
}

inline QStringList linesOf(const VirtualPrinter &printer)
{
    QStringList lines;
    const QVector<VirtualExchange> dialogue = printer.dialogue();
    for (const VirtualExchange &exchange : dialogue)
        lines.append(exchange.toString());
    return lines;
}

/// What a search sends to a device that never answers, each message with the line setting. Parity
/// does not show on a pseudo terminal; it is the reason for the threefold repeats.
namespace silentsearch {

inline QStringList messagesOnEach(const QList<int> &baudRates, const QStringList &flowControls,
                                  const QStringList &messages)
{
    QStringList lines;
    for (const int baudRate : baudRates) {
        for (int parity = 0; parity < 3; ++parity) {
            for (const QString &flowControl : flowControls) {
                for (const QString &message : messages)
                    lines.append(
                        QStringLiteral("%1 %2 < %3").arg(baudRate).arg(flowControl, message));
            }
        }
    }
    return lines;
}

inline QStringList flowControls()
{
    return {QStringLiteral("none"), QStringLiteral("hardware"), QStringLiteral("software")};
}

inline QStringList scan1D491()
{
    return messagesOnEach({115200, 57600, 38400, 19200, 9600, 4800, 1200}, flowControls(),
                          {QStringLiteral("1D 49 01"), QStringLiteral("1D 49 31")});
}

inline QStringList scanSwecoin()
{
    return messagesOnEach({115200, 57600, 38400, 19200, 9600, 4800, 1200}, flowControls(),
                          {QStringLiteral("1B 05 07")});
}

inline QStringList scanStar()
{
    return messagesOnEach({38400, 19200, 9600, 4800},
                          {QStringLiteral("none"), QStringLiteral("hardware")},
                          {QStringLiteral("1B 1E 60 02 1B 06 01")});
}

inline QStringList scanAV268()
{
    return {QStringLiteral("115200 software < 1B 76")};
}

inline QStringList scanSimple()
{
    return messagesOnEach({19200, 9600, 4800, 1200}, flowControls(), {QStringLiteral("1B 76")});
}

inline QStringList wholeSearch()
{
    return scan1D491() + scanSwecoin() + scanStar() + scanAV268() + scanSimple();
}

}  // namespace silentsearch
