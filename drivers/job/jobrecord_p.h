#pragma once

#include <QByteArray>
#include <QString>

namespace printerslib::drivers {

/// What a job leaves beside the lock for the next one, in whatever process.
struct JobRecord
{
    static constexpr int mostFill = 1024 * 1024;
    static constexpr int mostDue = 8;

    /// Whether the printer is known to obey commands.
    enum Reading {
        Reads,
        Unread,  ///< it was well, and yet didn't answer in its turn: it may wait for a command's
                 ///< rest
        Deaf,    ///< nor did it when that was filled up: it never does
    };

    bool isOpen = false;  ///< the job is, or was cut off, between its first byte and its end
    int fill = 0;         ///< zero bytes that complete whatever command it is cut off in
    int due = 0;          ///< confirmations that were asked for and may still come
    int counter = -1;     ///< of Star: what it is when they have come
    Reading reading = Reads;
    QString last;  ///< the job

    QByteArray toBytes() const;
    /// Of a damaged one, or another version's, what is left; open if there was anything.
    static JobRecord fromBytes(const QByteArray &bytes);
};

}  // namespace printerslib::drivers
