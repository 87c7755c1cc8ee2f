// A client that prints: what it can't do meanwhile, and what its printer's line doesn't do.
//
//   longest_pause/serial  a receipt of 100 items to a printer on a pseudo terminal;
//                         "milliseconds" is the longest time in which the client's event loop did
//                         nothing else, "cpu_milliseconds" the longest time of its processor in one
//                         turn, which other programs don't disturb
//   longest_pause/tcp     the same over a network
//   line_idle             500 receipts of a till at 19200 baud, on a simulated clock;
//                         "idle_percent" is the share of time in which the line is idle while the
//                         printer accepts and nothing is waited for, "waited_percent" that in which
//                         an answer is waited for, "held_percent" that in which the printer accepts
//                         nothing

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <ctime>

#include "frame.h"
#include "playedport.h"
#include "printerslib/drivers/printjob.h"
#include "till/simulatedtill.h"
#include "till/tillreceipt.h"

using namespace printerslib::drivers;

namespace {

constexpr int receipts = 500;
constexpr int itemsOfPause = 100;
constexpr double percent = 100;

/// In milliseconds.
struct Times
{
    double wall = 0;
    double processor = 0;  ///< of this thread

    static Times now() { return {of(CLOCK_MONOTONIC), of(CLOCK_THREAD_CPUTIME_ID)}; }

private:
    static double of(clockid_t clock)
    {
        constexpr double perSecond = 1e3;
        constexpr double perNanosecond = 1e-6;
        timespec time = {};
        ::clock_gettime(clock, &time);
        return double(time.tv_sec) * perSecond + double(time.tv_nsec) * perNanosecond;
    }
};

/// Looks how long the event loop takes from turn to turn.
class PauseWatch
{
public:
    PauseWatch()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const Times now = Times::now();
            m_longest.wall = std::max(m_longest.wall, now.wall - m_turn.wall);
            m_longest.processor = std::max(m_longest.processor, now.processor - m_turn.processor);
            m_turn = now;
        });
        m_timer.start(0);
    }
    Times longest() const { return m_longest; }

private:
    QTimer m_timer;
    Times m_turn = Times::now();
    Times m_longest;
};

/// Prints as a client does, from the making of the job to its deletion.
PrintJobResult printOn(const PrinterAddress &address, const EncodedDocument &document)
{
    QEventLoop loop;
    PrintJob job(document, till::profile(), address);
    QObject::connect(&job, &PrintJob::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    return job.result();
}

void addPause(const std::string &name, PlayedPort::Kind kind)
{
    frame::add(
        name,
        [kind](benchmark::State &state) {
            const EncodedDocument document = till::receiptOf(itemsOfPause);
            const PlayedPortThread printer(till::profile(), kind);
            Times longest;
            for (auto _ : state) {
                const PauseWatch watch;
                const PrintJobResult result = printOn(printer.address(), document);
                longest = watch.longest();
                if (result.outcome != PrintJobResult::Outcome::Processed)
                    state.SkipWithError(qPrintable("the receipt isn't printed: " + result.text));
            }
            state.counters["milliseconds"] = longest.wall;
            state.counters["cpu_milliseconds"] = longest.processor;
        })
        ->Iterations(1)
        ->UseRealTime();
}

void addIdleShare(const std::string &name, int count)
{
    frame::add(
        name,
        [count](benchmark::State &state) {
            till::SimulatedTill till;
            for (auto _ : state) {
                for (int number = 0; number < count; ++number) {
                    const PrintJobResult result =
                        till.print(till::receiptOf(till::itemsOf(number)));
                    if (result.outcome != PrintJobResult::Outcome::Processed)
                        state.SkipWithError(qPrintable("a receipt isn't printed: " + result.text));
                }
            }
            const till::LineTimes times = till.times();
            const double all = double(times.all()) / percent;
            state.counters["idle_percent"] = double(times.idle) / all;
            state.counters["held_percent"] = double(times.held) / all;
            state.counters["waited_percent"] = double(times.waited) / all;
            state.counters["bytes"] = double(times.busy);
        })
        ->Iterations(1)
        ->Repetitions(1);
}

}  // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    frame::setWarnings(false);
    addPause("longest_pause/serial", PlayedPort::Kind::Serial);
    addPause("longest_pause/tcp", PlayedPort::Kind::Tcp);
    addIdleShare("line_idle", frame::repetitions(argc, argv, receipts));
    return frame::run(argc, argv);
}
