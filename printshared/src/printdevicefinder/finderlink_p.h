#pragma once

#include <QMetaObject>
#include <QSharedPointer>
#include <functional>
#include <mutex>

class PrintDeviceFinder;

/// What a finder and its tasks share. Tasks outlive their finder, and a cancel may come before a
/// task has connected itself to it; both are settled here.
class FinderLink
{
public:
    explicit FinderLink(PrintDeviceFinder *finder) : m_finder(finder) {}

    /// How often the finder has been cancelled; a task is given the count of its start.
    int cancelCount() const;
    void countCancel();
    /// The finder is about to go away.
    void dropFinder();

    /// Has the functor called by each later cancel, on the cancelling thread, and at once if there
    /// was a cancel since the task's start or the finder is gone.
    QMetaObject::Connection onCancel(int cancelCountAtStart, const std::function<void()> &functor);
    /// Ends a connection that onCancel() gave.
    void disconnect(const QMetaObject::Connection &connection);

private:
    mutable std::mutex m_mutex;
    PrintDeviceFinder *m_finder;
    int m_cancelCount = 0;
};
