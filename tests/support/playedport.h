#pragma once

#include <QObject>
#include <QThread>
#include <memory>
#include <optional>

#include "deviceline.h"
#include "playing.h"
#include "printerdevice.h"
#include "printerslib/drivers/printeraddress.h"
#include "virtualprinter.h"

/// A virtual printer at a line of this machine, where it takes what its buffer has room for. It
/// lives on a thread with an event loop.
class PlayedPort
{
public:
    enum class Kind { Serial, Tcp };

    PlayedPort(const printerslib::drivers::PrinterProfile &profile, Kind kind) : m_device(profile)
    {
        if (kind == Kind::Serial)
            openTerminal();
        else
            listen();
        m_playing.emplace(*m_line, m_device, &m_device, 0);
        QObject::connect(&*m_playing, &Playing::printed, &*m_playing,
                         [this](const auto &pieces) { m_papers += pieces; });
        m_playing->start();
    }

    const printerslib::drivers::PrinterAddress &address() const { return m_address; }
    PrinterDevice &device() { return m_device; }
    /// The pieces that were cut off, and what hangs in the printer: its end.
    QVector<printerslib::drivers::Paper> finish()
    {
        m_papers += m_device.takePapers();
        return m_papers + m_device.finish();
    }

private:
    void openTerminal()
    {
        VirtualModel model;
        model.id = QStringLiteral("played");
        model.baudRate = 115200;
        model.flowControl = QSerialPort::HardwareControl;
        m_terminal = std::make_unique<VirtualPrinter>(model);
        m_line = std::make_unique<TerminalLine>(*m_terminal, model.flowControl);
        setAddress("serial:" + m_terminal->portPath() + "?baud=115200&flow=hardware");
    }
    void listen()
    {
        auto line = std::make_unique<TcpLine>();
        QString error;
        if (!line->listen(QStringLiteral("127.0.0.1:0"), &error))
            qFatal("%s", qPrintable(error));
        setAddress("tcp:" + line->name());
        m_line = std::move(line);
    }
    void setAddress(const QString &text)
    {
        m_address = printerslib::drivers::PrinterAddress::parse(text).value();
    }

    PrinterDevice m_device;
    std::unique_ptr<VirtualPrinter> m_terminal;
    std::unique_ptr<DeviceLine> m_line;
    std::optional<Playing> m_playing;
    printerslib::drivers::PrinterAddress m_address;
    QVector<printerslib::drivers::Paper> m_papers;
};

/// The same with a thread of its own, which takes nothing of its client's time.
class PlayedPortThread
{
public:
    PlayedPortThread(const printerslib::drivers::PrinterProfile &profile, PlayedPort::Kind kind)
    {
        m_context.moveToThread(&m_thread);
        m_thread.start();
        within([&] { m_port = std::make_unique<PlayedPort>(profile, kind); });
    }
    ~PlayedPortThread()
    {
        within([this] { m_port.reset(); });
        m_thread.quit();
        m_thread.wait();
    }
    PlayedPortThread(const PlayedPortThread &) = delete;
    PlayedPortThread &operator=(const PlayedPortThread &) = delete;

    const printerslib::drivers::PrinterAddress &address() const { return m_port->address(); }

    /// As PlayedPort::finish().
    QVector<printerslib::drivers::Paper> finish()
    {
        QVector<printerslib::drivers::Paper> papers;
        within([&] { papers = m_port->finish(); });
        return papers;
    }
    /// Calls it on the printer's thread, and waits for its end.
    template <typename Function>
    void within(Function function)
    {
        QMetaObject::invokeMethod(&m_context, std::move(function), Qt::BlockingQueuedConnection);
    }

private:
    QThread m_thread;
    QObject m_context;
    std::unique_ptr<PlayedPort> m_port;
};
