#include "printerdocs/plan/fallback_p.h"

namespace templates {

PlanTally &PlanTally::instance()
{
    static PlanTally tally;
    return tally;
}

PlanCount::~PlanCount()
{
    PlanTally &all = PlanTally::instance();
    for (std::size_t reason = 0; reason < m_lines.size(); ++reason) {
        if (m_lines[reason] > 0)
            all.lines[reason].fetch_add(m_lines[reason], std::memory_order_relaxed);
    }
    all.documents.fetch_add(1, std::memory_order_relaxed);
    if (m_restarts > 0)
        all.restarts.fetch_add(m_restarts, std::memory_order_relaxed);
}

}  // namespace templates
