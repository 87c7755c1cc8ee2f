#pragma once

#include <sys/types.h>

#include <QString>

namespace printerslib::drivers {

/// The queue in front of one file's lock. Whoever waits, or holds the lock, holds a byte of the
/// file, each behind those who were there before; the system gives bytes and lock back when a
/// process ends. Who has nobody in front takes the lock of the whole file.
class Turns
{
public:
    /// How an attempt ends.
    enum class Outcome {
        Taken,
        Waiting,
        Failed,
    };

    explicit Turns(const QString &path);
    ~Turns();
    Turns(const Turns &) = delete;
    Turns &operator=(const Turns &) = delete;

    /// Joins the queue at its end, unless this is in it, and takes the lock if it can. Never waits.
    Outcome attempt();
    /// How many were in front at the last attempt.
    int ahead() const { return m_ahead; }
    QString fault() const { return m_fault; }

private:
    bool open();
    void close();
    bool takeTicket();
    bool lockByte(off_t byte, short type);
    off_t lockedFrom(off_t start, off_t end, off_t &behind) const;
    off_t greatestTicket() const;
    int countTickets(off_t start, off_t end) const;
    bool isStillThere() const;
    bool fail(const QString &what);

    const QString m_path;
    int m_descriptor = -1;
    off_t m_ticket = 0;
    int m_ahead = 0;
    QString m_fault;
};

}  // namespace printerslib::drivers
