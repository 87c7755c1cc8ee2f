#pragma once

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <string>
#include <utility>
#include <vector>

/// What all benchmark programs share: their options, the header that says what was measured, a
/// progress line on a terminal, and the check that both sides of a comparison give the same.
namespace frame {

/// Two texts whose making a program compares: they have to be the same.
struct Sameness
{
    std::string what;
    QByteArray expected;
    QByteArray found;
};

/// How often a slow benchmark is to be repeated: so often, or once with `--quick`.
int repetitions(int argc, char **argv, int count);

/// Counts the runs on a terminal, for benchmarks that add() doesn't register.
void showProgress(const benchmark::State &state);

/// Switches the warnings of the category "default" on or off. run() begins with them off.
void setWarnings(bool on);

/// Registers a benchmark whose name is shown while it runs.
template <typename Function>
benchmark::internal::Benchmark *add(const std::string &name, Function function)
{
    return benchmark::RegisterBenchmark(name.c_str(), std::move(function))
        ->Setup(showProgress)
        ->Unit(benchmark::kMicrosecond);
}

/// Compares the texts, then runs what was registered: 41 short repetitions in random order,
/// reported by their median. Google Benchmark's arguments overrule that. `--quick` runs each
/// benchmark once and shortly, to see that it works.
/// @return the exit status: 0; 1 if texts differ, after naming the first differing line; 2 for
///         unknown arguments
int run(int argc, char **argv, const std::vector<Sameness> &texts = {});

}  // namespace frame
