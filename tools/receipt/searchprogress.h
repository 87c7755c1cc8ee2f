#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>

#include "portsearch.h"

/// The lines that show how far a search is, on a terminal of this size: the whole first, then a
/// line for each port, as many as there is room for. A size of 0 is not known and doesn't limit.
QStringList searchProgressLines(const QList<PortProgress> &ports, int height, int width);

/// Shows on standard error how far a search is. On a terminal the lines are drawn in place, and go
/// with the object; elsewhere a line is written whenever a port goes on to another kind of printer.
class SearchProgress
{
public:
    /// @param inPlace false if other lines are written to the terminal meanwhile
    SearchProgress(std::function<QList<PortProgress>()> progress, bool inPlace);
    ~SearchProgress();
    SearchProgress(const SearchProgress &) = delete;
    SearchProgress &operator=(const SearchProgress &) = delete;

    /// Shows what has changed since the last time.
    void show();
    /// Takes the lines off, for others.
    void clear();

private:
    void showInPlace(const QList<PortProgress> &ports);
    void showChanges(const QList<PortProgress> &ports);

    const std::function<QList<PortProgress>()> m_progress;
    const bool m_inPlace;
    QHash<QString, QString> m_shownKinds;  ///< By port.
    QTimer m_timer;
    int m_linesDrawn = 0;
};
