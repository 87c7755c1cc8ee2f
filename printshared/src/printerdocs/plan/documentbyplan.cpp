#include "printerdocs/plan/documentbyplan_p.h"

#include <algorithm>
#include <optional>

#include "printerdocs/template/entries_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templates {

AddedLines::AddedLines(const TemplatePlan &plan, const PrinterDocument &document)
{
    if (document.isCopy() && plan.linesBeforeCopyMark() >= 0) {
        m_copyMark = PrinterDocumentFormatter::tr(templates::copyMark);
        m_suitPlan =
            !m_copyMark.isEmpty() && !holdsEntries(m_copyMark) && !isSymbolsLine(m_copyMark);
    }
    if (!plan.hasEntries())
        return;
    m_entriesHoldTags = document.entries().contains(QLatin1Char('<'));
    const auto isUnpacked = [this](TemplatePlan::LineKind kind) {
        return kind == TemplatePlan::LineKind::Entries ||
               (kind == TemplatePlan::LineKind::EntriesAlone && m_entriesHoldTags);
    };
    std::optional<Entries> entries;
    for (std::size_t at = 0; at < plan.lines().size(); ++at) {
        if (!isUnpacked(plan.lines()[at].kind))
            continue;
        if (!entries)
            entries.emplace(document.entries());
        QStringList &lines = m_entries[at];
        entries->appendUnpacked(lines, plan.text(at));
        m_suitPlan = m_suitPlan && std::none_of(lines.cbegin(), lines.cend(), isSymbolsLine);
    }
}

}  // namespace templates
