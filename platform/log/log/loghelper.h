#pragma once

#include <QByteArray>
#include <QDebug>
#include <QStringList>

/// Stand-in for the system's log stream helpers. The library relies on exactly what is declared
/// here: three things that can be written into a QDebug. Thread rule: those of the QDebug in use.

/// What `logtab` is: a manipulator without a value.
struct LogTab
{};

/// Writes the separator between two columns of a log line.
inline constexpr LogTab logtab{};

/// A list of texts on its way into a log line; made by loglist().
struct LogList
{
    const QStringList &items;  ///< Borrowed until the end of the full expression.
};

/// A dump of bytes on its way into a log line; made by logbinary().
struct LogBinary
{
    QByteArray bytes;
};

/// Writes the list's items into a QDebug, separated by ", ". The list must outlive the expression.
inline LogList loglist(const QStringList &items)
{
    return LogList{items};
}

/// Writes the bytes into a QDebug as upper-case hexadecimal pairs separated by blanks.
inline LogBinary logbinary(const QByteArray &bytes)
{
    return LogBinary{bytes};
}

Q_DECL_EXPORT QDebug operator<<(QDebug debug, LogTab tab);
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const LogList &list);
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const LogBinary &binary);
