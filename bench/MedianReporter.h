#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace cindertop {

/// Shows the results and keeps the medians of the CPU time under the names of the benchmarks.
class MedianReporter final : public benchmark::ConsoleReporter {
public:
    MedianReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override { // NOLINT(readability-identifier-naming)
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            if (run.aggregate_name == "median") {
                medians_[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
    }

    double ratio(const std::string& one, const std::string& other) const {
        return medians_.at(one) / medians_.at(other);
    }

private:
    std::map<std::string, double> medians_;
};

} // namespace cindertop
