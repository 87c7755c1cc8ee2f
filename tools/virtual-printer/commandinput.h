#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

/// Lines of standard input as they come. A program in the background of a terminal leaves what is
/// typed to the others; the end of the input changes nothing.
class CommandInput : public QObject
{
    Q_OBJECT

public:
    CommandInput();

    /// Listens anew, if the program is in the foreground again. Call it now and then.
    void look();

Q_SIGNALS:
    void lineRead(const QString &line);

private:
    void read();
    void tellLine();

    QSocketNotifier m_notifier;
    QByteArray m_line;
    bool m_hasEnded = false;
};
