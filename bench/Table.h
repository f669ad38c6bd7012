// How the benchmarks measure and print: one row for each figure, in the same columns for all programs.
//
// A figure is a time an element or bytes an element, and a ratio to a comparison that is run in turn with it, so that
// both meet the same machine. Of all runs the quickest counts: what else the machine does can only add. The budget is
// printed beside it and never checked.
#pragma once

#include <benchmark/benchmark.h>

#include <QString>
#include <functional>

namespace Table {

struct Row {
    QString Name;
    double Milliseconds = 0;
    double PerElement = 0; ///< nanoseconds, or bytes
    double Ratio = 0;      ///< 0: compared with nothing
    QString Budget;
};

void Print(const Row& row);

/// What a benchmark times.
struct Task {
    std::function<void()> Run;
    std::function<void()> Comparison;  ///< the ratio's other side, run in turn with it
    std::function<void()> Base;        ///< part of `Run` that does not count, run in turn with it
    std::function<void()> Before = {}; ///< called before each of them, and not timed
};

/// The benchmark must use manual time. `task` may leave out all but `Run`.
void Measure(benchmark::State& state, std::int64_t elements, const Task& task);

/// The `main` of a benchmark program: prints a row for each benchmark, and takes Google Benchmark's options. Makes the
/// application, if there is none yet.
int Main(int argc, char** argv);

} // namespace Table
