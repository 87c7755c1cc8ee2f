#include "templatelint.h"

#include <algorithm>
#include <tuple>

#include "analysis.h"

namespace templatelint {

QVector<Finding> lint(const QStringList &lines, const Options &options)
{
    const Analysis analysis(lines, options);
    QVector<Finding> findings;
    for (const Rule &rule : rules()) {
        Report report(rule, analysis.source(), findings);
        rule.check(analysis, report);
    }
    // The table's order settles what stands at one place; of two reports by one rule the first
    // counts.
    const auto key = [](const Finding &finding) {
        return std::make_tuple(finding.line, finding.column, finding.rule);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&key](const Finding &a, const Finding &b) { return key(a) < key(b); });
    findings.erase(
        std::unique(findings.begin(), findings.end(),
                    [&key](const Finding &a, const Finding &b) { return key(a) == key(b); }),
        findings.end());
    return findings;
}

}  // namespace templatelint
