#include "printdevicefinder/finderlink_p.h"

#include "printdevicefinder/printdevicefinder.h"

int FinderLink::cancelCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_cancelCount;
}

void FinderLink::countCancel()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_cancelCount;
}

void FinderLink::dropFinder()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_finder = nullptr;
}

QMetaObject::Connection FinderLink::onCancel(int cancelCountAtStart,
                                             const std::function<void()> &functor)
{
    bool missed = false;
    QMetaObject::Connection connection;
    {
        // The cancel is counted before it is signalled: who finds the count unchanged here is
        // connected before the signal goes out.
        const std::lock_guard<std::mutex> lock(m_mutex);
        missed = m_finder == nullptr || m_cancelCount != cancelCountAtStart;
        if (m_finder != nullptr)
            connection = QObject::connect(m_finder, &PrintDeviceFinder::needCancel, m_finder,
                                          functor, Qt::DirectConnection);
    }
    if (missed)
        functor();
    return connection;
}

void FinderLink::disconnect(const QMetaObject::Connection &connection)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_finder != nullptr)
        QObject::disconnect(connection);
}
