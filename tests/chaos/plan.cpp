#include "plan.h"

#include <printerslib/drivers/printerprofile.h>

#include <algorithm>
#include <iterator>
#include <random>

using namespace printerslib::drivers;

namespace chaos {

namespace {

/// The same numbers everywhere, other than by the distributions of the standard library.
class Dice
{
public:
    explicit Dice(quint64 seed) : m_random(seed) {}

    /// From 0 to `count` - 1.
    int below(int count) { return int(m_random() % quint64(std::max(1, count))); }
    int between(int least, int most) { return least + below(most - least + 1); }
    bool inPercent(int percent) { return below(100) < percent; }
    template <typename Item, std::size_t Count>
    Item oneOf(const Item (&items)[Count])
    {
        return items[below(int(Count))];
    }

private:
    std::mt19937_64 m_random;
};

enum class Theme { Hardware, Kills, Power, Resets, Answers, Spoilt, Everything, Queue };

struct ThemeRow
{
    Theme theme;
    int programs;
};

constexpr ThemeRow themes[] = {
    {Theme::Hardware, 1}, {Theme::Hardware, 2},   {Theme::Kills, 1},      {Theme::Kills, 2},
    {Theme::Kills, 8},    {Theme::Power, 1},      {Theme::Resets, 1},     {Theme::Resets, 2},
    {Theme::Answers, 1},  {Theme::Answers, 2},    {Theme::Spoilt, 1},     {Theme::Everything, 1},
    {Theme::Hardware, 8}, {Theme::Everything, 2}, {Theme::Everything, 8}, {Theme::Queue, 1},
    {Theme::Queue, 2},    {Theme::Queue, 2},
};

struct TroubleRow
{
    PrinterFault::Kind fault;
    PrinterFault::Kind repair;
    int most;  ///< of the fault's value; 0: it has none
    bool endsAlone;
};

constexpr TroubleRow hardwareTroubles[] = {
    {PrinterFault::PaperOut, PrinterFault::PaperBack, 0, false},
    {PrinterFault::CoverOpen, PrinterFault::CoverClosed, 0, false},
    {PrinterFault::CutterError, PrinterFault::CutterRepaired, 0, false},
    {PrinterFault::OffLine, PrinterFault::OnLine, 0, false},
    {PrinterFault::NearEnd, PrinterFault::PaperBack, 0, false},
};
constexpr TroubleRow powerTroubles[] = {{PrinterFault::PowerOff, PrinterFault::PowerOn, 0, false}};
constexpr TroubleRow resetTroubles[] = {
    {PrinterFault::ResetConnection, PrinterFault::ResetConnection, 0, true}};
constexpr TroubleRow answerTroubles[] = {
    {PrinterFault::AnswersLate, PrinterFault::AnswersAgain, 3000, false},
    {PrinterFault::AnswersNever, PrinterFault::AnswersAgain, 0, false}};
constexpr TroubleRow spoilingTroubles[] = {{PrinterFault::Swallow, PrinterFault::Swallow, 40, true},
                                           {PrinterFault::Change, PrinterFault::Change, 12, true}};

template <std::size_t Count>
Trouble troubleOf(Dice &dice, const TroubleRow (&rows)[Count], int bytes)
{
    constexpr int longestRepair = 1200;
    const TroubleRow row = dice.oneOf(rows);
    Trouble trouble;
    trouble.fault = {row.fault, row.most == 0 ? 0 : dice.between(1, row.most)};
    trouble.repair = {row.repair, 0};
    trouble.repairedAfter = row.endsAlone ? -1 : dice.between(1, longestRepair);
    if (dice.inPercent(70))
        trouble.atByte = dice.below(bytes);
    else
        trouble.atMillisecond = dice.below(2000);
    return trouble;
}

bool isKilling(Theme theme)
{
    return theme == Theme::Kills || theme == Theme::Everything;
}

Receipt receiptOf(Dice &dice, int job)
{
    Receipt receipt;
    receipt.job = job;
    receipt.lines = dice.inPercent(10) ? dice.between(60, 150) : dice.between(2, 40);
    receipt.pictures = dice.oneOf({0, 0, 1, 2});
    receipt.pictureRows = dice.between(8, 200);
    return receipt;
}

PrintJobOptions optionsOf(Dice &dice, bool isSound)
{
    PrintJobOptions options;
    options.statusMilliseconds = isSound ? 8000 : 700;
    options.confirmMilliseconds = isSound ? 15000 : 1500;
    options.pollMilliseconds = isSound ? 200 : dice.oneOf({20, 100, 400});
    options.cancelMilliseconds = 500;
    options.waitMilliseconds = isSound ? 0 : dice.oneOf({0, 0, 500, 4000});
    options.stepBytes = dice.oneOf({512, 1024, 4096});
    options.transport.connectMilliseconds = isSound ? 8000 : 1500;
    options.transport.writeMilliseconds = isSound ? 15000 : 1000;
    return options;
}

void planEnds(Dice &dice, ClientPlan &job, int bytes)
{
    const int kind = dice.below(10);
    if (kind < 3) {
        job.killedAtByte = dice.below(bytes);
        job.killedAfter = dice.oneOf({0, 50, 1000, 20000}) * dice.between(1, 5);
    } else if (kind < 6) {
        job.killedAfter = dice.below(600'000);
    } else if (kind < 7) {
        job.cancelledAtByte = dice.below(bytes);
        job.cancelledAfter = dice.below(20);
    } else if (kind < 8) {
        job.cancelledAfter = dice.below(600);
    }
}

void planTroubles(Dice &dice, Theme theme, EpisodePlan &plan, int bytes)
{
    const int count = dice.between(1, 2 + plan.jobs.size() / 3);
    for (int i = 0; i < count; ++i) {
        const bool isAny = theme == Theme::Everything || theme == Theme::Queue;
        const int choice = isAny ? dice.below(4) : -1;
        if (theme == Theme::Hardware || choice == 0)
            plan.troubles.append(troubleOf(dice, hardwareTroubles, bytes));
        if (theme == Theme::Answers || choice == 1)
            plan.troubles.append(troubleOf(dice, answerTroubles, bytes));
        if (theme == Theme::Resets || (choice == 2 && plan.isNetwork))
            plan.troubles.append(troubleOf(dice, resetTroubles, bytes));
        if (theme == Theme::Power || (choice == 3 && plan.isNetwork)) {
            plan.troubles.append(troubleOf(dice, powerTroubles, bytes));
            plan.hasPower = true;
        }
        if (theme == Theme::Spoilt) {
            plan.troubles.append(troubleOf(dice, spoilingTroubles, bytes));
            plan.hasSpoilt = true;
        }
    }
}

void planPrinter(Dice &dice, Theme theme, EpisodePlan &plan)
{
    const QStringList models = PrinterProfile::modelIds();
    plan.model = models.at(dice.below(models.size()));
    plan.isNetwork = theme == Theme::Resets || dice.inPercent(50);
    plan.isSoftwareFlow = dice.inPercent(30);
    plan.bufferBytes = dice.oneOf({0, 256, 1024, 4096});
    plan.bytesPerSecond = dice.oneOf({0, 5000, 20000, 100000});
    plan.millimetresPerSecond = dice.oneOf({0, 200, 600, 3000});
    plan.window = dice.oneOf({0, 1024, 4096});
}

}  // namespace

EpisodePlan planOf(quint64 seed, int firstJob)
{
    Dice dice(seed);
    EpisodePlan plan;
    plan.seed = seed;
    const ThemeRow row = dice.oneOf(themes);
    plan.programs = row.programs;
    planPrinter(dice, row.theme, plan);
    plan.soundJobs = row.theme == Theme::Queue ? 0 : 2;
    const int plagued = plan.programs == 8 ? dice.between(8, 14) : dice.between(3, 6);
    int bytes = 0;
    for (int i = 0; i < plagued + plan.soundJobs; ++i) {
        const bool isSound = i >= plagued;
        ClientPlan job;
        job.receipt = receiptOf(dice, firstJob + i);
        job.options = optionsOf(dice, isSound);
        const int size = encodedReceipt(job.receipt, plan.model).bytes.size();
        if (row.theme == Theme::Queue)
            job.options.confirmMilliseconds = 6000;  // what isn't confirmed is held
        if (row.theme == Theme::Queue && dice.inPercent(30))
            job.killedAfter = dice.below(60'000);
        if (!isSound && isKilling(row.theme) && dice.inPercent(60))
            planEnds(dice, job, size);
        bytes += isSound ? 0 : size;
        plan.jobs.append(job);
        plan.delays.append(dice.below(80));
    }
    for (int i = 0; row.theme == Theme::Queue && i < plagued; ++i)
        plan.printerKills.append(dice.inPercent(80) ? dice.below(900'000) : -1);
    if (row.theme != Theme::Kills)
        planTroubles(dice, row.theme, plan, bytes);
    // Drawn last, so that the kept seeds still plan what they did.
    plan.baudRate = dice.oneOf({9600, 19200, 115200});
    return plan;
}

quint64 episodeSeed(quint64 runSeed, int number)
{
    // SplitMix64, so that neighbours have nothing in common.
    quint64 mixed = runSeed + quint64(number + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
}

QStringList EpisodePlan::toLines() const
{
    QStringList lines{
        QStringLiteral("%1 on %2, %3 at once, buffer %4, window %5, %6 bytes/s, %7 mm/s")
            .arg(model, isNetwork ? QStringLiteral("TCP")
                                  : QStringLiteral("a line of %1 baud").arg(baudRate))
            .arg(programs)
            .arg(bufferBytes)
            .arg(window)
            .arg(bytesPerSecond)
            .arg(millimetresPerSecond)};
    for (const Trouble &trouble : troubles)
        lines.append(
            QStringLiteral("%1 %2: %3, ended after %4 ms")
                .arg(trouble.atByte < 0 ? QStringLiteral("millisecond") : QStringLiteral("byte"))
                .arg(trouble.atByte < 0 ? trouble.atMillisecond : trouble.atByte)
                .arg(trouble.fault.toString())
                .arg(trouble.repairedAfter));
    for (const ClientPlan &job : jobs)
        lines.append(QStringLiteral("job ") + job.toString());
    for (const qint64 kill : printerKills)
        lines.append(QStringLiteral("what prints is killed after %1 us").arg(kill));
    return lines;
}

}  // namespace chaos
