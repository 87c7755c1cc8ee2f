#pragma once

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QProcess>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryFile>
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
        : PlayedPrinter(model, QStringList())
    {}
    /// The same with more options of virtual-printer. What killed jobs of other tests have left for
    /// the next one is beside other addresses.
    PlayedPrinter(const QString &model, const QStringList &options)
    {
        QStringList host{"127"};
        for (int i = 0; i < 3; ++i)
            host.append(QString::number(QRandomGenerator::global()->bounded(1, 255)));
        start(QStringList{"--model", model, "--listen", host.join('.') + ":0"} + options);
        m_address = "tcp:" + nextLine();
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

    /// All bytes that have come by now.
    QByteArray received()
    {
        befall("on line");
        QByteArray bytes;
        for (const QString &line : m_lines.filter(" < "))
            bytes += QByteArray::fromHex(line.section(" < ", 1).toLatin1());
        return bytes;
    }

private:
    // What it says goes to a file: a pipe that nobody reads in time would hold the printer up.
    void start(const QStringList &options)
    {
        m_said.open();
        m_process.setStandardOutputFile(m_said.fileName());
        m_process.start(VIRTUAL_PRINTER_PROGRAM, options);
    }
    QString nextLine()
    {
        const QDeadlineTimer end(printerPatience);
        while (!m_rest.contains('\n')) {
            m_rest += m_said.readAll();
            const bool isOver = m_process.state() == QProcess::NotRunning || end.hasExpired();
            if (isOver && !m_rest.contains('\n'))
                return QString();
            if (!m_rest.contains('\n'))
                m_process.waitForFinished(2);
        }
        const int size = m_rest.indexOf('\n') + 1;
        m_lines.append(QString::fromUtf8(m_rest.left(size)).trimmed());
        m_rest.remove(0, size);
        return m_lines.last();
    }

    QTemporaryFile m_said;
    QByteArray m_rest;
    QProcess m_process;
    QString m_address;
    QStringList m_lines;
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
            QObject::connect(socket, &QTcpSocket::disconnected, socket, [=] { ++m_calls; });
        });
    }
    QString address() const { return QString("tcp:127.0.0.1:%1").arg(m_server.serverPort()); }
    /// How many connections have come and gone.
    int calls() const { return m_calls; }

private:
    QTcpServer m_server;
    int m_calls = 0;
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
    void interrupt(int signal = SIGINT) const { ::kill(static_cast<pid_t>(processId()), signal); }
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
