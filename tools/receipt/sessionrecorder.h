#pragma once

#include <printerslib/drivers/transport.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include "deviceline.h"
#include "sessionfile.h"

namespace tool {

/// Stands between clients and their printer: hands on what each side sends, as fast as the other
/// takes it, and records it. A printer that goes is waited for.
class SessionRecorder : public QObject
{
    Q_OBJECT

public:
    /// All outlive it. The transport has to reopen by itself.
    /// @param heading the first line of the file, which is made when the printer is reached
    SessionRecorder(DeviceLine &line, printerslib::drivers::Transport &printer, SessionFile &file,
                    const QString &heading);

    /// Opens the printer's line; ends in ready() or ended().
    void start();
    /// Takes no more from clients; what was taken still goes to the printer.
    void stopHearing();
    /// Why it ended by itself; empty if it didn't.
    QString fault() const { return m_fault; }

Q_SIGNALS:
    /// Clients are heard.
    void ready();
    /// Something that a user should see; in English.
    void said(const QString &text);
    /// It can't go on.
    void ended();

private:
    void begin();
    bool hasRoom() const;
    void handOn();
    void takeAnswer(const QByteArray &bytes);
    void tell(const QString &text);
    void end(const QString &fault);

    DeviceLine &m_line;
    printerslib::drivers::Transport &m_printer;
    SessionFile &m_file;
    const QString m_heading;
    QStringList m_early;  ///< what was to be told before the printer was reached
    QString m_fault;
    bool m_isReady = false;
    bool m_isHearing = true;
};

}  // namespace tool
