#pragma once

#include <QStringList>
#include <memory>

namespace templates {

class TemplatePlan;

/// When a template's plan is made: see TemplateLines::plan().
enum class PlanUse : unsigned char { WhenItPays, AtOnce, Never };

/// The lines of a formatter's template, and what is known of them beforehand.
class TemplateLines
{
public:
    TemplateLines();
    ~TemplateLines();
    TemplateLines(const TemplateLines &) = delete;
    TemplateLines &operator=(const TemplateLines &) = delete;

    const QStringList &lines() const { return m_lines; }
    void setLines(const QStringList &lines);

    /// The plan for the use at hand; null: this use goes without. It is made at the first use of a
    /// long template and at the second one of a short one: to make it costs as much as a use.
    std::shared_ptr<const TemplatePlan> plan();

    /// For tests and measurements: holds for all templates of the process.
    static void setPlanUse(PlanUse use);

private:
    QStringList m_lines;
    std::shared_ptr<const TemplatePlan> m_plan;
    bool m_wasUsed = false;
};

}  // namespace templates
