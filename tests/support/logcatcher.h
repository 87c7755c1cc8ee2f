#pragma once

#include <QLoggingCategory>
#include <QString>
#include <QStringList>
#include <mutex>

/// Keeps the log lines of its lifetime, as "category level text".
class LogCatcher
{
public:
    LogCatcher()
    {
        current() = this;
        m_previous = qInstallMessageHandler(take);
    }

    ~LogCatcher()
    {
        qInstallMessageHandler(m_previous);
        const std::lock_guard<std::mutex> lock(mutex());
        current() = nullptr;
    }

    LogCatcher(const LogCatcher &) = delete;
    LogCatcher &operator=(const LogCatcher &) = delete;

    QStringList lines() const
    {
        const std::lock_guard<std::mutex> lock(mutex());
        // A copy that shares nothing with the list that other threads append to.
        return QStringList(QList<QString>(m_lines.cbegin(), m_lines.cend()));
    }

    /// Those that start with a text.
    QStringList lines(const QString &start) const
    {
        QStringList found;
        for (const QString &line : lines()) {
            if (line.startsWith(start))
                found.append(line);
        }
        return found;
    }

private:
    static LogCatcher *&current()
    {
        static LogCatcher *catcher = nullptr;
        return catcher;
    }

    static std::mutex &mutex()
    {
        static std::mutex instance;
        return instance;
    }

    static QLatin1String levelName(QtMsgType type)
    {
        switch (type) {
            case QtDebugMsg:
                return QLatin1String("debug");
            case QtInfoMsg:
                return QLatin1String("info");
            case QtWarningMsg:
                return QLatin1String("warning");
            default:
                return QLatin1String("critical");
        }
    }

    static void take(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const std::lock_guard<std::mutex> lock(mutex());
        if (current() != nullptr)
            current()->m_lines.append(
                QStringLiteral("%1 %2 %3")
                    .arg(QLatin1String(context.category), levelName(type), text));
    }

    QtMessageHandler m_previous = nullptr;
    QStringList m_lines;
};

/// Keeps the log quiet for its lifetime. It has no lock, which would put threads in order that
/// ThreadSanitizer is to watch.
class QuietLog
{
public:
    QuietLog() : m_previous(qInstallMessageHandler(drop)) {}
    ~QuietLog() { qInstallMessageHandler(m_previous); }
    QuietLog(const QuietLog &) = delete;
    QuietLog &operator=(const QuietLog &) = delete;

private:
    static void drop(QtMsgType, const QMessageLogContext &, const QString &) {}

    QtMessageHandler m_previous;
};
