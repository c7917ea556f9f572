#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// One run of one case.
struct Measured {
    double firstMs = 0;  // rows on the screen, or the first hundred in hand
    double wholeMs = 0;  // every row read
    double stallMs = 0;  // longest time in which no event could be handled
    double rows = 0;
};

// Each repetition is one run; the report has the median, and for the stall what matters is the
// worst.
inline void Register(const char* name, int repetitions, std::function<Measured()> run) {
    benchmark::RegisterBenchmark(name,
                                 [run = std::move(run)](benchmark::State& state) {
                                     for ([[maybe_unused]] auto iteration : state) {
                                         const Measured measured = run();
                                         state.SetIterationTime(measured.firstMs / 1000);
                                         state.counters["whole_ms"] = measured.wholeMs;
                                         state.counters["stall_ms"] = measured.stallMs;
                                         state.counters["rows"] = measured.rows;
                                     }
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly()
        ->ComputeStatistics("max", [](const std::vector<double>& values) {
            return *std::max_element(values.begin(), values.end());
        });
}

}  // namespace bench
