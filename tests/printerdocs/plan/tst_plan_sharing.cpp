#include <QRandomGenerator>
#include <QtTest>
#include <vector>

#include "../template/formatterbench.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/plan/templateplan_p.h"

using namespace formatterbench;
using namespace templates;

namespace {

// As many templates share their plans at the same time.
constexpr int mostSharedPlans = 64;

QString printed(const PrinterDocumentFormatter &formatter)
{
    return formatter.toPlainText(documentOf({{"NAME", "Tea"}}), 30).join('|');
}

/// A till's global formatter, which prints once more when the program ends: the statics that were
/// made after it are gone by then.
class PrintsAtTheEnd
{
public:
    ~PrintsAtTheEnd()
    {
        TemplateLines::setPlanUse(PlanUse::AtOnce);
        for (int number = 0; number < mostSharedPlans; ++number) {
            m_formatter.setTemplate(QString("%1 <NAME>").arg(number));
            if (printed(m_formatter) != QString("%1 Tea").arg(number))
                qFatal("printed %s at the end", qPrintable(printed(m_formatter)));
        }
    }

private:
    PrinterDocumentFormatter m_formatter{0, nullptr};
};

const PrintsAtTheEnd _atTheEnd;

TemplateLines &withLines(TemplateLines &lines, const QStringList &text)
{
    lines.setLines(text);
    return lines;
}

long long linesByPlan()
{
    return PlanTally::instance().lines[0];
}

/// Two lines whose lists have the same hash, by which plans are looked up.
QStringList linesOfOneHash()
{
    QRandomGenerator random(1);
    QHash<uint, QString> known;
    for (int tries = 0; tries < 2000000; ++tries) {
        QString line("<NAME> ");
        for (int place = 0; place < 12; ++place)
            line += QChar('a' + random.bounded(26));
        const QStringList lines(line);
        const uint hash = qHashRange(lines.cbegin(), lines.cend());
        if (known.contains(hash) && known[hash] != line)
            return {known[hash], line};
        known.insert(hash, line);
    }
    return {};
}

}  // namespace

/// Which formatters have a plan together, and for how long.
class TestPlanSharing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { TemplateLines::setPlanUse(PlanUse::AtOnce); }
    void cleanup() { TemplateLines::setPlanUse(PlanUse::WhenItPays); }

    void templatesOfOneHashHaveTheirOwnPlans()
    {
        const QStringList lines = linesOfOneHash();
        QCOMPARE(lines.size(), 2);
        PrinterDocumentFormatter one(0, nullptr);
        one.setTemplate(lines.at(0));
        PrinterDocumentFormatter other(0, nullptr);
        other.setTemplate(lines.at(1));
        for (int use = 0; use < 2; ++use) {
            QCOMPARE(printed(one), QString(lines.at(0)).replace("<NAME>", "Tea"));
            QCOMPARE(printed(other), QString(lines.at(1)).replace("<NAME>", "Tea"));
        }
        TemplateLines again;
        const auto plan = withLines(again, {lines.at(1)}).plan();
        QCOMPARE(plan->templateLines(), QStringList(lines.at(1)));
    }

    void aPlanIsGoneWithTheLastFormatterThatHasIt()
    {
        const QStringList lines("left <NAME>");
        std::weak_ptr<const TemplatePlan> plan;
        {
            TemplateLines one;
            plan = withLines(one, lines).plan();
            {
                TemplateLines other;
                QCOMPARE(withLines(other, lines).plan(), plan.lock());
            }
            QVERIFY(!plan.expired());
            QVERIFY(TemplatePlan::found(lines));
        }
        QVERIFY(plan.expired());
        QVERIFY(!TemplatePlan::found(lines));
        TemplateLines another;
        plan = withLines(another, lines).plan();
        another.setLines({"other <NAME>"});
        QVERIFY(plan.expired());
    }

    void noMorePlansAreSharedThanTheTableHolds()
    {
        std::vector<std::shared_ptr<const TemplatePlan>> plans;
        plans.reserve(mostSharedPlans);
        const auto linesOf = [](int number) {
            return QStringList(QString("%1 <NAME>").arg(number));
        };
        for (int number = 0; number < mostSharedPlans; ++number)
            plans.push_back(TemplatePlan::shared(linesOf(number)));
        for (int number = 0; number < mostSharedPlans; ++number)
            QCOMPARE(TemplatePlan::found(linesOf(number)), plans[std::size_t(number)]);
        const auto oneMore = TemplatePlan::shared(linesOf(mostSharedPlans));
        QVERIFY(!TemplatePlan::found(linesOf(mostSharedPlans)));
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(linesOf(mostSharedPlans).join('\n'));
        const long long before = linesByPlan();
        QCOMPARE(printed(formatter), QString("%1 Tea").arg(mostSharedPlans));
        QCOMPARE(linesByPlan() - before, 1LL);
        plans.pop_back();
        const auto inItsPlace = TemplatePlan::shared(linesOf(mostSharedPlans + 1));
        QCOMPARE(TemplatePlan::found(linesOf(mostSharedPlans + 1)), inItsPlace);
    }

    void aPlanThatIsThereIsUsedAtOnce()
    {
        TemplateLines::setPlanUse(PlanUse::WhenItPays);
        const auto plannedBy = [](const PrinterDocumentFormatter &formatter) {
            const long long before = linesByPlan();
            printed(formatter);
            return linesByPlan() - before;
        };
        PrinterDocumentFormatter one(0, nullptr);
        one.setTemplate("a short <NAME>");
        QCOMPARE(plannedBy(one), 0LL);
        QCOMPARE(plannedBy(one), 1LL);
        PrinterDocumentFormatter other(0, nullptr);
        other.setTemplate("a short <NAME>");
        QCOMPARE(plannedBy(other), 1LL);
    }
};

QTEST_GUILESS_MAIN(TestPlanSharing)
#include "tst_plan_sharing.moc"
