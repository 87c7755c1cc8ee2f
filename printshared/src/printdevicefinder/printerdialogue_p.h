#pragma once

#include <QByteArray>
#include <QString>

#include "printdevicefinder/devicemessages_p.h"

class PrintersHelper;
class QSerialPort;

/// How a probe talks over the port of its helper. On a port that is closed or null, operations do
/// nothing and reads give nothing.
class PrinterDialogue
{
public:
    PrinterDialogue(PrintersHelper &helper, QSerialPort *port);

    /// The port's name, or "port is closed".
    QString portLabel() const;
    bool portIsValid() const;

    /// Drops whatever is on its way in either direction.
    void clear();
    /// Leaves the bytes to the next flush or wait.
    void write(const DeviceMessage &message);
    void flush();
    /// write() and flush().
    void send(const DeviceMessage &message);
    /// send() with a line in the debug log.
    void sendLogged(const DeviceMessage &message);

    /// The number of bytes read, -1 if none came in time or the port is gone.
    int receive(int milliseconds, char *buffer, int most);
    /// Whether exactly one byte came; it has a line in the debug log then.
    bool receiveByte(int milliseconds, char &byte);
    int read(char *buffer, int most);
    void dropInput();

    void logRead(const QByteArray &bytes) const;
    int baudRate() const;

private:
    bool isOpen() const;

    PrintersHelper &m_helper;
    QSerialPort *m_port;
};
