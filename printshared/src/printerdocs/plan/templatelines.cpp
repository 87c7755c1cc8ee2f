#include "printerdocs/plan/templatelines_p.h"

#include <atomic>

#include "printerdocs/plan/templateplan_p.h"

namespace templates {

namespace {

// From here on to make the plan and to use it costs less than the use without.
constexpr int linesOfALongTemplate = 60;

std::atomic<PlanUse> planUse{PlanUse::WhenItPays};

}  // namespace

TemplateLines::TemplateLines() = default;
TemplateLines::~TemplateLines() = default;

void TemplateLines::setLines(const QStringList &lines)
{
    m_lines = lines;
    m_plan.reset();
    m_wasUsed = false;
}

std::shared_ptr<const TemplatePlan> TemplateLines::plan()
{
    const PlanUse use = planUse.load(std::memory_order_relaxed);
    if (use == PlanUse::Never || m_lines.isEmpty())
        return nullptr;
    if (!m_plan) {
        const bool pays =
            m_wasUsed || m_lines.size() >= linesOfALongTemplate || use == PlanUse::AtOnce;
        m_plan = pays ? TemplatePlan::shared(m_lines) : TemplatePlan::found(m_lines);
        m_wasUsed = true;
    }
    return m_plan && m_plan->isUsable() ? m_plan : nullptr;
}

void TemplateLines::setPlanUse(PlanUse use)
{
    planUse.store(use, std::memory_order_relaxed);
}

}  // namespace templates
