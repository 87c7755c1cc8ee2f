#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>

#include "virtualprinter.h"

/// The line to a virtual printer, which takes bytes off it when it has room for them.
class DeviceLine : public QObject
{
    Q_OBJECT

public:
    using Observer = std::function<void(const VirtualExchange &)>;

    /// Called with what is read and written.
    virtual void setObserver(Observer observer) = 0;
    /// What a client is to open.
    virtual QString name() const = 0;
    /// At most so many of the bytes that have come in.
    virtual QByteArray read(int most) = 0;
    /// What the client doesn't fetch is lost in the end.
    virtual void write(const QByteArray &bytes) = 0;
    /// Whether readable() is wanted.
    virtual void setListening(bool isListening) = 0;
    /// Whether the other side waits with its bytes until they are taken.
    virtual bool waits() const = 0;
    /// Tells the other side to wait, or no longer, where that takes bytes.
    virtual void setBusy(bool isBusy) = 0;
    /// Ends the connection. Gives false where there is none that can end.
    virtual bool reset() = 0;
    virtual void setPowered(bool isPowered) = 0;

Q_SIGNALS:
    void readable();
    /// Who came, and who went.
    void said(const QString &text);
};

/// A pseudo terminal.
class TerminalLine : public DeviceLine
{
    Q_OBJECT

public:
    /// @param printer answers nothing by itself from here on, and outlives the line
    /// @param flow of the printer's line
    TerminalLine(VirtualPrinter &printer, QSerialPort::FlowControl flow);

    void setObserver(Observer observer) override { m_printer.setObserver(std::move(observer)); }
    QString name() const override { return m_printer.portPath(); }
    QByteArray read(int most) override;
    void write(const QByteArray &bytes) override { m_printer.say(bytes); }
    void setListening(bool isListening) override { m_notifier.setEnabled(isListening); }
    bool waits() const override { return m_flow != QSerialPort::NoFlowControl; }
    void setBusy(bool isBusy) override;
    bool reset() override { return false; }
    void setPowered(bool /*isPowered*/) override {}

private:
    VirtualPrinter &m_printer;
    const QSerialPort::FlowControl m_flow;
    QByteArray m_taken;
    QSocketNotifier m_notifier;
};

/// A port of TCP. One client is served at a time; others wait until it goes.
class TcpLine : public DeviceLine
{
    Q_OBJECT

public:
    TcpLine();
    ~TcpLine() override;

    /// Takes clients at "HOST:PORT"; the port 0 is any that is free, and 9100 if there is none in
    /// the text. Gives false with a message on failure.
    bool listen(const QString &address, QString *error);
    /// Has the system keep about so many bytes for the printer, and no more, as printers do that
    /// have little memory; 0: as many as it likes. Call it in front of listen().
    void setWindow(int bytes) { m_window = bytes; }

    void setObserver(Observer observer) override { m_observer = std::move(observer); }
    QString name() const override;
    QByteArray read(int most) override;
    void write(const QByteArray &bytes) override;
    void setListening(bool isListening) override;
    bool waits() const override { return true; }
    void setBusy(bool /*isBusy*/) override {}
    bool reset() override;
    void setPowered(bool isPowered) override;

private:
    bool listenAgain();
    void takeClient();
    void tellReadable();
    void dropWhenRead();
    void tell(bool fromPrinter, const QByteArray &bytes);
    QString clientName() const;

    QHostAddress m_host;
    quint16 m_port = 0;
    int m_window = 0;
    std::unique_ptr<QTcpServer> m_server;
    QTcpSocket *m_client = nullptr;  ///< the server's
    Observer m_observer;
    bool m_isListening = true;
};
