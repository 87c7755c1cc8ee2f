#include "frame.h"

#include <unistd.h>

#include <QList>
#include <QLoggingCategory>
#include <algorithm>
#include <cstring>
#include <iostream>
#include <iterator>
#include <memory>

#include "printerslib.h"

namespace {

#ifdef NDEBUG
constexpr bool isOptimised = true;
#else
constexpr bool isOptimised = false;
#endif

#ifdef __clang__
constexpr const char *compiler = "Clang " __clang_version__;
#else
constexpr const char *compiler = "GCC " __VERSION__;
#endif

constexpr const char *timedDefaults[] = {
    "--benchmark_repetitions=41",
    "--benchmark_min_time=0.01",
    "--benchmark_enable_random_interleaving=true",
    "--benchmark_report_aggregates_only=true",
};
constexpr const char *quickDefaults[] = {
    "--benchmark_repetitions=1",
    "--benchmark_min_time=0.0001",
};

bool isQuick(const char *argument)
{
    return std::strcmp(argument, "--quick") == 0;
}

bool runsQuickly(int argc, char **argv)
{
    return std::any_of(argv + 1, argv + argc, isQuick);
}

/// The program's arguments behind the defaults, which they overrule.
std::vector<char *> withDefaults(int argc, char **argv, bool quick)
{
    std::vector<char *> arguments{argv[0]};
    const auto add = [&arguments](const char *argument) {
        arguments.push_back(const_cast<char *>(argument));
    };
    if (quick)
        std::for_each(std::begin(quickDefaults), std::end(quickDefaults), add);
    else
        std::for_each(std::begin(timedDefaults), std::end(timedDefaults), add);
    std::remove_copy_if(argv + 1, argv + argc, std::back_inserter(arguments), isQuick);
    return arguments;
}

bool isSame(const frame::Sameness &text)
{
    if (text.found == text.expected)
        return true;
    const QList<QByteArray> expected = text.expected.split('\n');
    const QList<QByteArray> found = text.found.split('\n');
    const auto [at, other] =
        std::mismatch(expected.cbegin(), expected.cend(), found.cbegin(), found.cend());
    std::cerr << "error: " << text.what << " differs in line " << at - expected.cbegin() + 1
              << "\n  expected: " << (at == expected.cend() ? "(no line)" : at->constData())
              << "\n  found:    " << (other == found.cend() ? "(no line)" : other->constData())
              << '\n';
    return false;
}

void describeRun(bool quick)
{
    benchmark::AddCustomContext("quick", quick ? "yes" : "no");
    benchmark::AddCustomContext("printerslib", PrintersLib::version().version().toStdString());
    benchmark::AddCustomContext("compiler", compiler);
    benchmark::AddCustomContext("qt", qVersion());
    benchmark::AddCustomContext("optimised", isOptimised ? "yes" : "no");
    if (!isOptimised)
        std::cerr << "warning: this is a debug build, whose times mean nothing\n";
}

}  // namespace

int frame::repetitions(int argc, char **argv, int count)
{
    return runsQuickly(argc, argv) ? 1 : count;
}

void frame::showProgress(const benchmark::State &)
{
    static const bool isTerminal = isatty(STDERR_FILENO) != 0;
    static int done = 0;
    if (isTerminal)
        std::cerr << "\r" << ++done << " runs\r" << std::flush;
}

void frame::setWarnings(bool on)
{
    QLoggingCategory::setFilterRules(QStringLiteral("printers=false\ndefault.warning=") +
                                     (on ? "true" : "false"));
}

int frame::run(int argc, char **argv, const std::vector<Sameness> &texts)
{
    if (std::count_if(texts.begin(), texts.end(), isSame) != static_cast<long>(texts.size()))
        return 1;
    const bool quick = runsQuickly(argc, argv);
    describeRun(quick);
    std::vector<char *> arguments = withDefaults(argc, argv, quick);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    setWarnings(false);
    const std::unique_ptr<benchmark::BenchmarkReporter> reporter(
        benchmark::CreateDefaultDisplayReporter());
    reporter->SetErrorStream(&reporter->GetOutputStream());  // standard error is for the progress
    benchmark::RunSpecifiedBenchmarks(reporter.get());
    return 0;
}
