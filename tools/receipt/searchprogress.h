#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include "printdevicefinder/printdeviceinfo.h"

/// Shows on standard error how far a search for printers is, a line per port, out of the debug
/// lines that the search writes under the log category "printers". One object at a time; it takes
/// the message handler for its lifetime. On a terminal the lines are drawn in place, elsewhere a
/// line is written whenever a port goes on to another kind of printer.
class SearchProgress
{
public:
    /// @param passOn    whether log lines still go to where they went before
    /// @param confirmed the records, if this is a confirmation: each model has one kind of
    /// dialogue.
    ///                  Empty for a search.
    explicit SearchProgress(bool passOn, const QList<PrintDeviceInfo> &confirmed = {});
    ~SearchProgress();
    SearchProgress(const SearchProgress &) = delete;
    SearchProgress &operator=(const SearchProgress &) = delete;

    /// Shows what has changed since the last time.
    void show();

private:
    struct Port
    {
        int probe = -1;
        QString kind;
        int entry = 0;
        int entries = 0;
        QString baudRate;
        QString shownKind;

        QString toString(const QString &name) const;
    };

    static void take(QtMsgType type, const QMessageLogContext &context, const QString &text);
    void takeLine(const QString &text);
    static int nextProbe(const Port &port, int entry);
    void showInPlace();

    /// What is asked for on each port of a confirmation; there may be several records for one.
    QMap<QString, QStringList> m_confirmedKinds;
    QMap<QString, Port> m_ports;
    QTimer m_timer;
    int m_linesDrawn = 0;
    bool m_isTerminal;
    bool m_passOn;
};
