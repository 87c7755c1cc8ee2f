// What a search costs beyond its waits, over a silent printer on a pseudo terminal.
//
//   silentPort   a whole search of one port where nobody answers; "over_waits" is its time over the
//                sum of its waits, and should be under 1.03
//
// The waits of one search come to 170 seconds, so it runs one iteration.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include "frame.h"
#include "printdevicefinder/printdevicefinder.h"
#include "virtualprinter.h"

namespace {

// Identification, Swecoin, Star, AV-268 and Citizen PPU-231, in milliseconds.
constexpr int sumOfWaits = 63 * 2 * 300 + 63 * 1400 + 24 * 300 + 1000 + 36 * 1000;

/// The milliseconds of a search of one port.
qint64 searchTime(const QString &port)
{
    PrintDeviceFinder finder;
    QEventLoop loop;
    QObject::connect(&finder, &PrintDeviceFinder::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QElapsedTimer clock;
    clock.start();
    finder.start({port});
    loop.exec();
    return clock.elapsed();
}

void silentPort(benchmark::State &state)
{
    VirtualPrinterOptions options;
    options.model = QStringLiteral("CUSTOM_VKP_80");
    options.fault = VirtualFault::Silent;
    VirtualPrinter printer(options);
    if (!printer.isValid()) {
        state.SkipWithError("there is no pseudo terminal to be had");
        return;
    }
    printer.start();
    for (auto _ : state)
        state.counters["over_waits"] =
            static_cast<double>(searchTime(printer.portPath())) / sumOfWaits;
}

}  // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    frame::add("silentPort", silentPort)
        ->Iterations(1)
        ->Repetitions(1)
        ->Unit(benchmark::kSecond)
        ->UseRealTime();
    return frame::run(argc, argv);
}
