#include "sessionrecorder.h"

#include <printerslib/drivers/transporterror.h>

namespace tool {

using printerslib::drivers::Transport;
using printerslib::drivers::TransportError;

namespace {

// Bytes that are under way to the printer; the others wait with the client.
constexpr int mostUnderWay = 4096;

}  // namespace

SessionRecorder::SessionRecorder(DeviceLine &line, Transport &printer, SessionFile &file,
                                 const QString &heading)
    : m_line(line), m_printer(printer), m_file(file), m_heading(heading)
{
    m_line.setListening(false);
    // Queued, as it is said from within reading, too.
    connect(&m_line, &DeviceLine::readable, this, &SessionRecorder::handOn, Qt::QueuedConnection);
    connect(&m_line, &DeviceLine::said, this, &SessionRecorder::tell);
    connect(&m_printer, &Transport::written, this, &SessionRecorder::handOn);
    connect(&m_printer, &Transport::received, this, &SessionRecorder::takeAnswer);
    connect(&m_printer, &Transport::failed, this,
            [this](const TransportError &error) { end(error.text); });
    connect(&m_printer, &Transport::lost, this, [this](const TransportError &error) {
        tell(QStringLiteral("the printer has gone: ") + error.text);
        m_line.reset();
    });
    connect(&m_printer, &Transport::opened, this, [this] {
        if (m_isReady)
            tell(QStringLiteral("the printer is back"));
        else
            begin();
        handOn();
    });
}

void SessionRecorder::begin()
{
    if (!m_file.begin(m_heading)) {
        end(m_file.fault());
        return;
    }
    m_isReady = true;
    Q_EMIT ready();
    for (const QString &text : qAsConst(m_early))
        tell(text);
    m_early.clear();
}

void SessionRecorder::start()
{
    m_printer.open();
}

void SessionRecorder::stopHearing()
{
    m_isHearing = false;
    m_line.setListening(false);
}

bool SessionRecorder::hasRoom() const
{
    return m_isReady && m_isHearing && m_fault.isEmpty() &&
           m_printer.state() == Transport::State::Open && m_printer.bytesToWrite() < mostUnderWay;
}

void SessionRecorder::handOn()
{
    while (hasRoom()) {
        const QByteArray bytes = m_line.read(mostUnderWay);
        if (bytes.isEmpty())
            break;
        if (!m_file.add(false, bytes))
            end(m_file.fault());
        m_printer.write(bytes);
    }
    m_line.setListening(hasRoom());
}

void SessionRecorder::takeAnswer(const QByteArray &bytes)
{
    if (m_fault.isEmpty() && !m_file.add(true, bytes))
        end(m_file.fault());
    m_line.write(bytes);
}

/// The file's heading is first, and so is the line's name for who waits for that.
void SessionRecorder::tell(const QString &text)
{
    if (!m_isReady) {
        m_early.append(text);
        return;
    }
    if (!m_file.remark(text))
        end(m_file.fault());
    Q_EMIT said(text);
}

void SessionRecorder::end(const QString &fault)
{
    if (!m_fault.isEmpty())
        return;
    m_fault = fault;
    Q_EMIT ended();
}

}  // namespace tool
