#pragma once

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>
#include <QtTest>
#include <memory>

#include "printerslib/drivers/transport.h"

/// Enough for any machine; what is waited for comes long before.
#define TRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)
#define TRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, 30000)

namespace transportwatch {

using printerslib::drivers::PrinterAddress;
using printerslib::drivers::Transport;
using printerslib::drivers::TransportError;
using printerslib::drivers::TransportOptions;
using Kind = TransportError::Kind;
using State = Transport::State;

inline PrinterAddress addressOf(const QString &text)
{
    QString error;
    const auto address = PrinterAddress::parse(text, &error);
    if (!address)
        qFatal("%s: %s", qPrintable(text), qPrintable(error));
    return *address;
}

/// Gives up, and looks for what went, after moments.
inline TransportOptions impatient()
{
    TransportOptions options;
    options.writeMilliseconds = 300;
    options.reopenMilliseconds = 20;
    return options;
}

/// The same for what may go and come back.
inline TransportOptions comingBack()
{
    TransportOptions options = impatient();
    options.reopens = true;
    return options;
}

/// What a transport tells, in its order; numbers of bytes and the bytes themselves apart.
class Watch
{
public:
    explicit Watch(Transport &transport)
    {
        const auto note = [this](const char *what) { return [this, what] { told.append(what); }; };
        QObject::connect(&transport, &Transport::opened, &m_context, note("opened"));
        QObject::connect(&transport, &Transport::closed, &m_context, note("closed"));
        QObject::connect(&transport, &Transport::failed, &m_context,
                         [this](const TransportError &fault) {
                             told.append("failed");
                             error = fault;
                         });
        QObject::connect(&transport, &Transport::lost, &m_context,
                         [this](const TransportError &fault) {
                             told.append("lost");
                             error = fault;
                         });
        QObject::connect(&transport, &Transport::written, &m_context,
                         [this](qint64 total) { totals.append(total); });
        QObject::connect(&transport, &Transport::received, &m_context,
                         [this](const QByteArray &bytes) { received += bytes; });
    }

    QStringList told;
    TransportError error;
    QVector<qint64> totals;
    QByteArray received;

private:
    QObject m_context;
};

/// Counts in how many parts of a wait an event loop has a turn. What blocks it for most of the time
/// leaves it one in front of that and one behind.
class Heart
{
public:
    /// So often a wait is tried: a busy machine takes turns away, too, but not each time.
    static constexpr int tries = 10;

    explicit Heart(int waitMilliseconds) : m_wait(waitMilliseconds)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_clock.start();
        m_timer.start(1);
    }
    bool isBeating() const { return m_parts.size() >= leastParts; }

private:
    static constexpr int parts = 10;
    static constexpr int leastParts = 5;

    void beat()
    {
        const qint64 part = m_clock.elapsed() * parts / m_wait;
        if (part < parts)
            m_parts.insert(int(part));
    }

    const int m_wait;
    QElapsedTimer m_clock;
    QTimer m_timer;
    QSet<int> m_parts;  ///< with a turn
};

/// A pattern in which each byte is told from its neighbours.
inline QByteArray pattern(int size)
{
    QByteArray bytes;
    bytes.reserve(size);
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(i * 7 + i / 251));
    return bytes;
}

}  // namespace transportwatch
