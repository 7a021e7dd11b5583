// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace sixtrace::bench {

/// One quotient of two benchmarks of this run and the greatest value that is good enough.
struct Ratio {
    std::string name;
    std::string thing;
    std::string baseline;
    double goal;
};

/// Prints the usual table and keeps the median of every benchmark for the ratios.
class MedianReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
            }
        }
    }
    [[nodiscard]] double median(const std::string& name) const {
        const auto entry = m_medians.find(name);
        return entry == m_medians.end() ? 0.0 : entry->second;
    }

private:
    std::map<std::string, double> m_medians;
};

/// Runs all benchmarks with interleaved repetitions, at least nine, and prints each ratio of their medians beside its
/// goal. A ratio that lacks one of its two figures is told as not taken, and makes the run an error.
inline int runAndCompare(int argc, char** argv, const std::vector<Ratio>& ratios) {
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=9";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::string minTime = "--benchmark_min_time=0.2";
    std::string aggregates = "--benchmark_report_aggregates_only=true";
    // Ours first, so that the command line has the last word.
    arguments.insert(arguments.begin() + 1,
                     {repetitions.data(), interleaving.data(), minTime.data(), aggregates.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n%-52s %9s   %s\n", "ratio of medians", "measured", "goal");
    int result = 0;
    for (const Ratio& ratio : ratios) {
        const double baseline = reporter.median(ratio.baseline);
        const double thing = reporter.median(ratio.thing);
        if (baseline <= 0 || thing <= 0) {
            std::printf("%-52s %9s   at most %.4f   NOT TAKEN\n", ratio.name.c_str(), "-", ratio.goal);
            result = 1;
            continue;
        }
        const double measured = thing / baseline;
        std::printf("%-52s %9.4f   at most %.4f%s\n", ratio.name.c_str(), measured, ratio.goal,
                    measured > ratio.goal ? "   MISSED" : "");
    }
    return result;
}

} // namespace sixtrace::bench
