#pragma once

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include "receiptprogram.h"

/// Printers for tests of the tool: virtual ones, and ends of lines that no printer is at.

constexpr int printerPatience = 30000;  ///< milliseconds

/// A virtual printer, and how it is reached.
class PlayedPrinter
{
public:
    /// On TCP.
    explicit PlayedPrinter(const QString &model = "CITIZEN_CTS_2000")
    {
        start({"--model", model, "--listen", "127.0.0.1:0"});
        m_address = "tcp:127.0.0.1:" + nextLine().section(':', 1);
    }
    /// On a pseudo terminal.
    PlayedPrinter(const QString &model, int baud)
    {
        start({"--model", model});
        m_address = QString("serial:%1?baud=%2").arg(nextLine()).arg(baud);
    }
    ~PlayedPrinter()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    QString address() const { return m_address; }
    /// Says what befalls the printer, and waits until it has.
    bool befall(const QString &fault)
    {
        m_process.write(fault.toUtf8() + '\n');
        QString line;
        do
            line = nextLine();
        while (!line.isNull() && line != "command: " + fault);
        return !line.isNull();
    }

private:
    void start(const QStringList &options) { m_process.start(VIRTUAL_PRINTER_PROGRAM, options); }
    QString nextLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(printerPatience))
                return QString();
        }
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    QProcess m_process;
    QString m_address;
};

/// A pseudo terminal of which a test has the other end.
class SilentPort
{
public:
    SilentPort() : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        ::grantpt(m_master);
        ::unlockpt(m_master);
        m_name = QString::fromLocal8Bit(::ptsname(m_master));
        m_slave = ::open(m_name.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~SilentPort()
    {
        ::close(m_slave);
        ::close(m_master);
    }
    QString address() const { return "device:" + m_name; }
    /// From now on the line takes nothing, as behind XOFF.
    void stop() const { ::tcflow(m_slave, TCOOFF); }
    /// Waits until something was sent to the port.
    bool getsSomething() const
    {
        char byte = 0;
        return ::read(m_master, &byte, 1) == 1;
    }

private:
    int m_master;
    int m_slave = -1;
    QString m_name;
};

/// A host that says the same whatever it is asked.
class Host
{
public:
    /// @param hangsUp whether it resets the connection then
    explicit Host(const QByteArray &answer, bool hangsUp = false)
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [=] {
            QTcpSocket *const socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [=] {
                if (!socket->readAll().isEmpty() && !answer.isEmpty())
                    socket->write(answer);
                if (hangsUp)
                    socket->abort();
            });
        });
    }
    QString address() const { return QString("tcp:127.0.0.1:%1").arg(m_server.serverPort()); }

private:
    QTcpServer m_server;
};

/// The program, while it runs beside the test.
class RunningReceipt : public QProcess
{
public:
    explicit RunningReceipt(const QStringList &arguments)
    {
        start(RECEIPT_PROGRAM, arguments);
        waitForStarted(printerPatience);
    }
    ~RunningReceipt() override
    {
        kill();
        waitForFinished();
    }
    void interrupt() const { ::kill(static_cast<pid_t>(processId()), SIGINT); }
    QString errorLine()
    {
        setReadChannel(StandardError);
        while (!canReadLine()) {
            if (!waitForReadyRead(printerPatience))
                return QString();
        }
        return QString::fromUtf8(readLine()).trimmed();
    }
    /// Runs to its end, while the test's own event loop goes on.
    ReceiptRun result()
    {
        ReceiptRun run;
        const bool isOver =
            QTest::qWaitFor([this] { return state() == NotRunning; }, printerPatience);
        if (isOver && exitStatus() == NormalExit)
            run.status = exitCode();
        run.output = QString::fromUtf8(readAllStandardOutput());
        run.errors = QString::fromUtf8(readAllStandardError());
        return run;
    }
};
