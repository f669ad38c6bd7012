#include "Table.h"

#include <QGuiApplication>
#include <chrono>
#include <cstdio>
#include <optional>

namespace Table {

namespace {

using Seconds = std::chrono::duration<double>;

double secondsOf(const std::function<void()>& work) {
    if (!work)
        return 0;
    const auto start = std::chrono::steady_clock::now();
    work();
    return Seconds(std::chrono::steady_clock::now() - start).count();
}

class RowReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const auto counter = [&run](const char* name) {
                const auto found = run.counters.find(name);
                return found == run.counters.end() ? 0 : double(found->second);
            };
            Print({QString::fromStdString(run.run_name.function_name + "/" + run.run_name.args),
                   counter("milliseconds"), counter("perElement"), counter("ratio"),
                   QString::fromStdString(run.report_label)});
        }
    }
};

} // namespace

void Print(const Row& row) {
    static bool headPrinted = false;
    if (!std::exchange(headPrinted, true))
        std::printf("%-44s %10s %12s %8s  %s\n", "", "ms", "per element", "ratio", "budget");
    std::printf("%-44s %10.3f %12.2f ", qPrintable(row.Name), row.Milliseconds, row.PerElement);
    if (row.Ratio > 0)
        std::printf("%8.3f", row.Ratio);
    else
        std::printf("%8s", "");
    std::printf("  %s\n", qPrintable(row.Budget));
    std::fflush(stdout);
}

void Measure(benchmark::State& state, std::int64_t elements, const Task& task) {
    const auto keepLeast = [&task](double& least, const std::function<void()>& work) {
        if (task.Before)
            task.Before();
        const double seconds = secondsOf(work);
        least = std::min(least, seconds);
        return seconds;
    };
    constexpr double never = 1e9;
    double run = never, compared = never, base = never;
    for (auto _ : state) {
        keepLeast(compared, task.Comparison);
        keepLeast(base, task.Base);
        state.SetIterationTime(keepLeast(run, task.Run));
    }
    state.counters["milliseconds"] = (run - base) * 1e3;
    state.counters["perElement"] = (run - base) * 1e9 / double(elements);
    if (task.Comparison)
        state.counters["ratio"] = (run - base) / compared;
}

int Main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    std::optional<QGuiApplication> application;
    if (!QCoreApplication::instance())
        application.emplace(argc, argv);
    RowReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

} // namespace Table
