#pragma once

#include <QtGlobal>
#include <functional>
#include <utility>

namespace templatelint {

/// Counts steps of about the same length, and tells how many of all are done.
class Progress
{
public:
    using Show = std::function<void(qint64 done, qint64 all)>;

    Progress(Show show, qint64 all) : m_show(std::move(show)), m_all(all) {}

    void step(qint64 count = 1)
    {
        m_done = qMin(m_done + count, m_all);
        if (!m_show || (m_done < m_next && m_done < m_all))
            return;
        m_next = m_done + stepsPerShow;
        m_show(m_done, m_all);
    }

private:
    static constexpr qint64 stepsPerShow = 256;

    const Show m_show;
    const qint64 m_all;
    qint64 m_done = 0;
    qint64 m_next = stepsPerShow;
};

}  // namespace templatelint
