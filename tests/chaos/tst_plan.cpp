// What the run that is the same each time is about. Another one may be about anything.
#include <QtTest>
#include <algorithm>

#include "plan.h"

using namespace chaos;

class TestPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFixedRunIsOfAllThatMayBefall_data();
    void theFixedRunIsOfAllThatMayBefall();

private:
    /// As many as the run has.
    static QVector<EpisodePlan> plans()
    {
        QVector<EpisodePlan> all;
        for (int jobs = 0; jobs < CHAOS_FIXED_JOBS; jobs += all.constLast().jobs.size())
            all.append(planOf(episodeSeed(CHAOS_FIXED_SEED, all.size()), 1));
        return all;
    }
};

using Feature = bool (*)(const EpisodePlan &);
Q_DECLARE_METATYPE(Feature)

void TestPlan::theFixedRunIsOfAllThatMayBefall_data()
{
    QTest::addColumn<Feature>("feature");
    const auto row = [](const char *name, Feature feature) { QTest::newRow(name) << feature; };
    row("network", [](const EpisodePlan &one) { return one.isNetwork; });
    row("serial line", [](const EpisodePlan &one) { return !one.isNetwork; });
    row("line of 9600 baud",
        [](const EpisodePlan &one) { return !one.isNetwork && one.baudRate == 9600; });
    row("line of 115200 baud",
        [](const EpisodePlan &one) { return !one.isNetwork && one.baudRate == 115200; });
    row("eight programs", [](const EpisodePlan &one) { return one.programs == 8; });
    row("programs that are killed", [](const EpisodePlan &one) {
        return !one.isQueue() &&
               std::any_of(one.jobs.begin(), one.jobs.end(),
                           [](const ClientPlan &job) { return job.killedAfter >= 0; });
    });
    row("queue whose printing is killed", [](const EpisodePlan &one) {
        return std::any_of(one.printerKills.begin(), one.printerKills.end(),
                           [](qint64 kill) { return kill >= 0; });
    });
    row("power", [](const EpisodePlan &one) { return one.hasPower; });
    row("spoilt bytes", [](const EpisodePlan &one) { return one.hasSpoilt; });
    row("sound jobs behind it", [](const EpisodePlan &one) { return one.soundJobs > 0; });
}

void TestPlan::theFixedRunIsOfAllThatMayBefall()
{
    QFETCH(Feature, feature);
    const QVector<EpisodePlan> all = plans();
    QVERIFY(std::any_of(all.begin(), all.end(), feature));
}

QTEST_GUILESS_MAIN(TestPlan)
#include "tst_plan.moc"
