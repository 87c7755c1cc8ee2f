#include "queuerunner.h"

#include "queueplace.h"
#include "queuereport.h"
#include "support.h"

namespace tool {

using printerslib::drivers::PrinterStatus;
using printerslib::drivers::PrintQueue;
using printerslib::drivers::PrintQueueEntry;
using State = PrintQueueEntry::State;

namespace {

constexpr int againMilliseconds = 5000;

}  // namespace

QueueRunner::QueueRunner(PrintQueue &queue) : m_queue(queue)
{
    connectQueue();
    m_again.setInterval(againMilliseconds);
    QObject::connect(&m_again, &QTimer::timeout, &m_loop, [this] { m_queue.start(); });
    if (m_interrupt.notifier() != nullptr)
        QObject::connect(m_interrupt.notifier(), &QSocketNotifier::activated, &m_loop,
                         [this] { stop(); });
}

void QueueRunner::connectQueue()
{
    QObject::connect(&m_queue, &PrintQueue::started, &m_loop, [this](const PrintQueueEntry &entry) {
        m_again.stop();
        m_progress = std::make_unique<ProgressLine>(jobName(entry));
    });
    QObject::connect(&m_queue, &PrintQueue::waiting, &m_loop, [this](qint64 id, int ahead) {
        tell(id, QStringLiteral("waiting, %1").arg(jobsInFront(ahead)));
    });
    QObject::connect(&m_queue, &PrintQueue::progress, &m_loop,
                     [this](qint64, qint64 sent, qint64 total) {
                         if (m_progress)
                             m_progress->show(sent, total);
                     });
    QObject::connect(&m_queue, &PrintQueue::statusChanged, &m_loop,
                     [this](qint64 id, const PrinterStatus &status) { tellStatus(id, status); });
    QObject::connect(&m_queue, &PrintQueue::note, &m_loop,
                     [this](qint64 id, const QString &text) { tellNote(id, text); });
    QObject::connect(&m_queue, &PrintQueue::ended, &m_loop,
                     [this](const PrintQueueEntry &entry) { tellEnd(entry); });
    QObject::connect(&m_queue, &PrintQueue::idle, &m_loop, [this] {
        if (m_stays)
            m_again.start();
        else
            m_queue.stop();
    });
    QObject::connect(&m_queue, &PrintQueue::stopped, &m_loop, [this] { m_loop.quit(); });
}

bool QueueRunner::run(bool stays)
{
    m_stays = stays;
    if (!m_queue.start()) {
        complain(m_queue.fault());
        return false;
    }
    m_loop.exec();
    return true;
}

/// The second interrupt isn't waited for.
void QueueRunner::stop()
{
    m_interrupt.notifier()->setEnabled(false);
    m_again.stop();
    m_queue.stop();
}

void QueueRunner::tell(qint64 id, const QString &text)
{
    if (m_progress)
        m_progress->clear();
    complain(id > 0 ? QStringLiteral("job %1: %2").arg(id).arg(text) : text);
}

void QueueRunner::tellNote(qint64 id, const QString &text)
{
    if (id == 0) {
        m_hasToldOfFiles = true;
        tell(id, text);
        return;
    }
    QSet<QString> &notes = m_told[id].notes;
    if (notes.contains(text))
        return;
    notes.insert(text);
    tell(id, text);
}

void QueueRunner::tellStatus(qint64 id, const PrinterStatus &status)
{
    const QString text = status.canPrint() ? QString() : status.text();
    QString &told = m_told[id].printer;
    if (text == told)
        return;
    told = text;
    tell(id, text.isEmpty() ? QStringLiteral("goes on") : text);
}

void QueueRunner::tellEnd(const PrintQueueEntry &entry)
{
    m_progress.reset();
    const QString text = jobText(entry);
    if (entry.state == State::Done || entry.state == State::Dropped) {
        print(text);
        flushOutput();
    } else if (m_told.value(entry.id).end != text) {
        complain(text);
    }
    if (entry.state == State::Waiting)
        m_told[entry.id].end = text;
    else
        m_told.remove(entry.id);
}

}  // namespace tool
