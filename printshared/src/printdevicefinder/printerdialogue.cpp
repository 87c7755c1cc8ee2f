#include "printdevicefinder/printerdialogue_p.h"

#include <QSerialPort>

#include "log/loghelper.h"
#include "printdevicefinder/printershelper.h"
#include "printdevicefinder/searchprinters_p.h"

PrinterDialogue::PrinterDialogue(PrintersHelper &helper, QSerialPort *port)
    : m_helper(helper), m_port(port)
{}

QString PrinterDialogue::portLabel() const
{
    return portIsValid() ? m_port->portName() : QStringLiteral("port is closed");
}

bool PrinterDialogue::portIsValid() const
{
    return m_helper.portIsValid();
}

bool PrinterDialogue::isOpen() const
{
    return m_port != nullptr && m_port->isOpen();
}

void PrinterDialogue::clear()
{
    if (isOpen())
        m_port->clear(QSerialPort::AllDirections);
}

void PrinterDialogue::write(const DeviceMessage &message)
{
    if (isOpen())
        m_port->write(message.bytes, message.size);
}

void PrinterDialogue::flush()
{
    if (isOpen())
        m_port->flush();
}

void PrinterDialogue::send(const DeviceMessage &message)
{
    write(message);
    flush();
}

void PrinterDialogue::sendLogged(const DeviceMessage &message)
{
    qCDebug(SEARCH_PRINTERS).nospace().noquote()
        << portLabel() << " write: " << logbinary(message.toByteArray());
    send(message);
}

int PrinterDialogue::receive(int milliseconds, char *buffer, int most)
{
    if (!m_helper.waitForReadyRead(milliseconds) || !portIsValid())
        return -1;
    return read(buffer, most);
}

bool PrinterDialogue::receiveByte(int milliseconds, char &byte)
{
    if (receive(milliseconds, &byte, 1) != 1)
        return false;
    logRead(QByteArray(1, byte));
    return true;
}

int PrinterDialogue::read(char *buffer, int most)
{
    return isOpen() ? static_cast<int>(m_port->read(buffer, most)) : -1;
}

void PrinterDialogue::dropInput()
{
    if (isOpen())
        m_port->readAll();
}

void PrinterDialogue::logRead(const QByteArray &bytes) const
{
    qCDebug(SEARCH_PRINTERS).nospace().noquote() << portLabel() << " read: " << logbinary(bytes);
}

int PrinterDialogue::baudRate() const
{
    return m_port == nullptr ? 0 : m_port->baudRate(QSerialPort::AllDirections);
}
