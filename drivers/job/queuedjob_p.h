#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <optional>

#include "printerslib/drivers/printqueueentry.h"
#include "printerslib/drivers/printqueuerequest.h"

namespace printerslib::drivers {

/// Why a file is no job.
struct QueuedFault
{
    QString text;
    bool isDamage = true;  ///< else it is whole, and another version's
};

/// A job as a file keeps it: a head with what is known of it, and behind that what is printed.
struct QueuedJob
{
    PrintQueueEntry entry;
    PrintQueueRequest request;
    QStringList linesInFront;  ///< from top to bottom
    bool isDrawerShut = false;
    bool isDrawerAlone = false;  ///< it opens one, and prints nothing

    static QueuedJob of(const PrintQueueRequest &request);

    QByteArray toBytes() const;
    /// @param id    that its file is named by
    /// @param fault takes what is wrong, if the result is nothing
    static std::optional<QueuedJob> fromBytes(const QByteArray &bytes, qint64 id,
                                              QueuedFault *fault);
    /// The same of a file's beginning, without its document.
    static std::optional<QueuedJob> fromHead(const QByteArray &bytes, qint64 id,
                                             QueuedFault *fault);
    static constexpr int mostHead = 256 * 1024;  ///< bytes of a file that hold any head

    /// What goes out: the document with its lines in front, and without commands that open a drawer
    /// if it is to stay shut. With an error if that can't be made.
    EncodedDocument printed() const;
};

}  // namespace printerslib::drivers
