#pragma once

#include <printerslib/drivers/printqueue.h>

#include <QEventLoop>
#include <QHash>
#include <QSet>
#include <QString>
#include <QTimer>
#include <memory>

#include "interrupt.h"
#include "progressline.h"

namespace tool {

/// Prints what waits in a queue. Standard output tells of each job that is printed, standard error
/// of the others, and of what happens meanwhile, once of each job. An interrupt cancels the job
/// that is under way.
class QueueRunner
{
public:
    /// @param queue outlives this
    explicit QueueRunner(printerslib::drivers::PrintQueue &queue);

    /// Until nothing is left that can be tried; or with `stays` until an interrupt, with another
    /// try whenever some seconds have passed. False if it couldn't begin.
    bool run(bool stays);
    /// Whether it has told of files that it left out or put aside.
    bool hasToldOfFiles() const { return m_hasToldOfFiles; }

private:
    /// What was told of a job that isn't over.
    struct ToldOfJob
    {
        QString printer;  ///< why it couldn't print; empty: it could
        QString end;      ///< of the last try
        QSet<QString> notes;
    };

    void connectQueue();
    void tellNote(qint64 id, const QString &text);
    void tell(qint64 id, const QString &text);
    void tellStatus(qint64 id, const printerslib::drivers::PrinterStatus &status);
    void tellEnd(const printerslib::drivers::PrintQueueEntry &entry);
    void stop();

    printerslib::drivers::PrintQueue &m_queue;
    const Interrupt m_interrupt{Interrupt::OfPeople};
    QEventLoop m_loop;  ///< ends with the connections that tell
    QTimer m_again;
    std::unique_ptr<ProgressLine> m_progress;  ///< of the job that is under way
    QHash<qint64, ToldOfJob> m_told;
    bool m_stays = false;
    bool m_hasToldOfFiles = false;
};

}  // namespace tool
