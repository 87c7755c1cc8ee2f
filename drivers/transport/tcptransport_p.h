#pragma once

#include <QTcpSocket>
#include <memory>

#include "transport/queuedtransport_p.h"

namespace printerslib::drivers {

/// A printer in the network. What its system has confirmed counts as taken.
class TcpTransport : public QueuedTransport
{
    Q_OBJECT

public:
    TcpTransport(const PrinterAddress &address, const TransportOptions &options);
    ~TcpTransport() override;

protected:
    void beginOpening() override;
    void shut() override;
    qint64 hand(const char *bytes, qint64 size, TransportError &fault) override;
    qint64 underWay() const override;
    QString whyStuck() const override;

private:
    void lookAtConnection();
    void read();
    QByteArray lastWords();
    TransportError faultOf(const QAbstractSocket &socket) const;

    std::unique_ptr<QTcpSocket> m_socket;
};

}  // namespace printerslib::drivers
