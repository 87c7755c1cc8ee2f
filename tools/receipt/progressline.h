#pragma once

#include <QElapsedTimer>
#include <QString>

namespace tool {

/// How far something is, on one line of standard error: shown if that is a terminal, once the work
/// has taken a second, and gone when the object goes.
class ProgressLine
{
public:
    explicit ProgressLine(const QString &what);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    void show(qint64 done, qint64 all);
    /// Takes the line off, for messages.
    void clear();

private:
    const QString m_what;
    QElapsedTimer m_timer;
    qint64 m_nextShow;
    bool m_isTerminal;
    bool m_isShown = false;
};

}  // namespace tool
