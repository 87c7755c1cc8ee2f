// synchronisation WAY guarded|unguarded: threads share something in one of Qt's ways, or in the
// same way but for one guard that is left out. ThreadSanitizer has to be silent about the one and
// to report the other: only then do the other tests say anything about our threads.
#include <QCoreApplication>
#include <QHash>
#include <QMutex>
#include <QReadWriteLock>
#include <QSemaphore>
#include <QThread>
#include <QWaitCondition>
#include <QtConcurrent>
#include <atomic>
#include <cstdio>
#include <cstring>

#include "threads.h"

namespace {

constexpr int rounds = 200;

/// Brings two threads into an order that ThreadSanitizer doesn't take for one, so that an unguarded
/// way meets its race on the busiest machine too.
class Sign
{
public:
    void give() { m_isGiven.store(true, std::memory_order_relaxed); }
    void await() const
    {
        while (!m_isGiven.load(std::memory_order_relaxed))
            std::this_thread::yield();
    }

private:
    std::atomic<bool> m_isGiven{false};
};

/// Qt's own code does the accesses, so that it's seen whether that is instrumented.
void append(QStringList &list, int number)
{
    list.append(QString::number(number));
}

void mutex(bool guarded)
{
    QMutex mutex;
    QStringList list;
    runOnThreads(3, [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            const QMutexLocker lock(guarded ? &mutex : nullptr);
            append(list, thread);
        }
    });
}

void readWriteLock(bool guarded)
{
    QReadWriteLock lock;
    QHash<QString, int> hash;
    runOnThreads(3, [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            if (thread == 0) {
                const QWriteLocker locker(guarded ? &lock : nullptr);
                hash.insert(QString::number(round), round);
            } else {
                const QReadLocker locker(&lock);
                hash.value(QString::number(round));
            }
        }
    });
}

// Texts that share their characters are guarded by the count of those who share.
void sharedText(bool guarded)
{
    const QString text = QString::number(rounds);
    QString changed;
    runOnThreads(3, [&](int thread) {
        for (int round = 0; round < rounds; ++round) {
            QString copy;
            if (guarded)
                copy = text;
            (guarded ? copy : changed).append(QString::number(thread));
        }
    });
}

void waitCondition(bool guarded)
{
    QMutex mutex;
    QWaitCondition isFilled;
    QStringList list;
    const auto fill = [&] {
        const QMutexLocker lock(guarded ? &mutex : nullptr);
        append(list, rounds);
        isFilled.wakeAll();
    };
    const auto take = [&] {
        const QMutexLocker lock(&mutex);
        while (list.isEmpty())
            isFilled.wait(&mutex, 1);
        list.clear();
    };
    runTogether({fill, take});
}

void semaphore(bool guarded)
{
    QSemaphore filled;
    QStringList list;
    const auto fill = [&] {
        append(list, rounds);
        filled.release();
    };
    const auto take = [&] {
        if (guarded)
            filled.acquire();
        append(list, rounds);
    };
    runTogether({fill, take});
}

void queuedCalls(bool guarded)
{
    QThread thread;
    QObject worker;
    worker.moveToThread(&thread);
    thread.start();
    for (int round = 0; round < rounds; ++round) {
        QStringList list;
        Sign sign;
        QMetaObject::invokeMethod(
            &worker,
            [&] {
                append(list, round);
                sign.give();
            },
            guarded ? Qt::BlockingQueuedConnection : Qt::QueuedConnection);
        sign.await();
        append(list, round);
    }
    thread.quit();
    thread.wait();
}

void concurrentTask(bool guarded)
{
    for (int round = 0; round < rounds; ++round) {
        QStringList list;
        Sign sign;
        QFuture<void> task = QtConcurrent::run([&] {
            append(list, round);
            sign.give();
        });
        if (guarded)
            task.waitForFinished();
        sign.await();
        append(list, round);
        task.waitForFinished();
    }
}

void deferredDeletion(bool guarded)
{
    QThread thread;
    auto *const worker = new QObject;
    Sign sign;
    worker->moveToThread(&thread);
    QObject::connect(&thread, &QThread::finished, worker, &QObject::deleteLater);
    thread.start();
    QMetaObject::invokeMethod(worker, [worker, &sign] {
        worker->setObjectName("named by its thread");
        sign.give();
    });
    sign.await();
    if (!guarded)
        worker->setObjectName("named by another");
    thread.quit();
    thread.wait();
}

struct Way
{
    const char *name;
    void (*run)(bool guarded);
};

const Way ways[] = {
    {"mutex", mutex},
    {"read_write_lock", readWriteLock},
    {"shared_text", sharedText},
    {"wait_condition", waitCondition},
    {"semaphore", semaphore},
    {"queued_calls", queuedCalls},
    {"concurrent_task", concurrentTask},
    {"deferred_deletion", deferredDeletion},
};

}  // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    for (const Way &way : ways) {
        if (argc == 3 && std::strcmp(argv[1], way.name) == 0) {
            way.run(std::strcmp(argv[2], "guarded") == 0);
            return 0;
        }
    }
    std::fprintf(stderr, "Usage: synchronisation WAY guarded|unguarded\n");
    return 2;
}
