#pragma once

#include <QElapsedTimer>
#include <QSerialPort>
#include <memory>

#include "transport/queuedtransport_p.h"

namespace printerslib::drivers {

/// A serial line. Many receipt printers hold the line up by their DTR, which is our DSR and which
/// QSerialPort doesn't know: then few bytes at a time go to the system, as what the system has goes
/// out whatever the pin says.
class SerialTransport : public QueuedTransport
{
    Q_OBJECT

public:
    SerialTransport(const PrinterAddress &address, const TransportOptions &options);
    ~SerialTransport() override;

    /// Sets the flow control of the open line.
    bool setFlow(PrinterAddress::Flow flow);

protected:
    void beginOpening() override;
    void shut() override;
    qint64 hand(const char *bytes, qint64 size, TransportError &fault) override;
    qint64 underWay() const override;
    void dropUnderWay() override;
    int lookEvery() const override;
    QString whyStuck() const override;
    /// Whether the printer's DTR is up. Tests have a pin of their own, as pseudo terminals have
    /// none.
    virtual bool isDataSetReady(QSerialPort &port);

private:
    void applyLine(const PrinterAddress::Line &line);
    void watch();
    void read();
    void lookAtError();
    bool hasGone() const;
    TransportError lossOf() const;
    qint64 window();

    PrinterAddress::Flow m_flow;
    std::unique_ptr<QSerialPort> m_port;
    QElapsedTimer m_sincePortion;
};

}  // namespace printerslib::drivers
