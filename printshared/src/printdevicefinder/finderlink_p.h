#pragma once

#include <QMetaObject>
#include <QSharedPointer>
#include <functional>
#include <mutex>

class PrintDeviceFinder;

/// What a finder and its tasks share. Tasks outlive their finder, a cancel may come before a task
/// has connected itself to it, and a task must not end within a cancel that is just calling it.
/// All three are settled by one lock, which is held while a cancel is signalled.
class FinderLink
{
public:
    explicit FinderLink(PrintDeviceFinder *finder) : m_finder(finder) {}

    /// How often the finder has been cancelled; a task is given the count of its start.
    int cancelCount() const;
    /// Calls what signals a cancel, and counts it.
    void cancel(const std::function<void()> &signalCancel);
    /// The finder is about to go away.
    void dropFinder();

    /// Has the functor called by each later cancel, on the cancelling thread. If there was a
    /// cancel since the task's start, or the finder is gone, it is called at once instead.
    QMetaObject::Connection onCancel(int cancelCountAtStart, const std::function<void()> &functor);
    /// Ends a connection that onCancel() gave; the functor isn't called from here on.
    void disconnect(const QMetaObject::Connection &connection);

private:
    // A cancel may lead to another one, by a client's slot.
    mutable std::recursive_mutex m_mutex;
    PrintDeviceFinder *m_finder;
    int m_cancelCount = 0;
};
