#include "printdevicefinder/finderlink_p.h"

#include "printdevicefinder/printdevicefinder.h"

int FinderLink::cancelCount() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return m_cancelCount;
}

void FinderLink::cancel(const std::function<void()> &signalCancel)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    ++m_cancelCount;
    signalCancel();
}

void FinderLink::dropFinder()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_finder = nullptr;
}

QMetaObject::Connection FinderLink::onCancel(int cancelCountAtStart,
                                             const std::function<void()> &functor)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    if (m_finder == nullptr || m_cancelCount != cancelCountAtStart) {
        functor();
        return {};
    }
    return QObject::connect(m_finder, &PrintDeviceFinder::needCancel, m_finder, functor,
                            Qt::DirectConnection);
}

void FinderLink::disconnect(const QMetaObject::Connection &connection)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    if (m_finder != nullptr)
        QObject::disconnect(connection);
}
