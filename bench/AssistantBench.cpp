// What advice and alerts cost at one tick with 200 offenders, when all kinds of advice apply and alerts are
// due.

#include "assistant/RecommendationEngine.h"
#include "assistant/ThermalAlertRuleEngine.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cindertop;
using namespace std::chrono_literals;

constexpr int offenderCount = 200;
constexpr double budgetMicroseconds = 20;
constexpr Instant start{1'700'000'000s};
constexpr auto advised = RecommendationEngineConfiguration::defaultConfiguration();
constexpr ThermalAlertConfiguration alerted(true, ThermalLevel::serious, Seconds{900}, Seconds{300},
                                            Seconds{120});

ThermalScore scoreOf(ThermalLevel level) {
    return {80,
            level,
            0.5,
            true,
            5,
            95.0,
            ThermalDataSource::official,
            SystemThermalState::serious,
            ThermalPressureLevel::heavy,
            ThermalTrend::cooling,
            start};
}

/// Closed lid, charging; pressure sustained at the higher level only, so that each tick is a transition.
SystemContextSnapshot contextAt(ThermalLevel level) {
    return {
        .displays = {true, 1, 0, 1},
        .power = {true, PowerSourceKind::acPower, 60, true, false, false, 31.0,
                  BatteryTemperatureLevel::normal},
        .sustainedPressure = {level == ThermalLevel::critical, Seconds{200}, level, ThermalLevel::serious},
        .measuredAt = start};
}

/// Applications in no table of names, so that every table is searched to its end.
ProcessOffenderSnapshot offenders(const std::string& name) {
    std::vector<ProcessOffender> list;
    const std::string path = "/home/user/.local/share/applications/org.example." + name;
    for (int index = 0; index < offenderCount; ++index) {
        const auto number = std::to_string(index);
        list.emplace_back(
            ProcessOffender::Fields{.id = "bundle:org.example." + number,
                                    .displayName = name + number,
                                    .bundleIdentifier = "org.example.department.Application" + number,
                                    .appBundlePath = path + number,
                                    .processCount = 3,
                                    .cpuPercent = 40.0 / (1 + index),
                                    .category = ProcessOffenderCategory::userApplication,
                                    .canTerminateApplication = true});
    }
    return {.state = ProcessOffenderSnapshotState::ready,
            .offenders = std::move(list),
            .isIndexingOrSetupLikely = true,
            .measuredAt = start};
}

/// The level goes up and down from tick to tick; ticks are so far apart that no cooldown holds.
void measureTicks(benchmark::State& state, const ProcessOffenderSnapshot& offenders) {
    const std::array scores{scoreOf(ThermalLevel::critical), scoreOf(ThermalLevel::fair)};
    const std::array contexts{contextAt(ThermalLevel::critical), contextAt(ThermalLevel::fair)};
    RecommendationEngine recommendationEngine{OperatingSystem::gnuLinux};
    ThermalAlertRuleEngine alertEngine{OperatingSystem::gnuLinux};
    Instant now = start;
    std::size_t index = 0;
    int alerts = 0;
    for ([[maybe_unused]] auto step : state) {
        const auto& score = scores.at(index);
        const auto& context = contexts.at(index);
        const auto advice = recommendationEngine.update(score, context, offenders, advised, now);
        const ThermalAlertInput input{.score = score,
                                      .systemContext = context,
                                      .recommendationSnapshot = advice,
                                      .topOffenderLabel = offenders.offenders.front().displayName,
                                      .now = now};
        alerts += alertEngine.evaluate(input, alerted) ? 1 : 0;
        index = 1 - index;
        now += 1000s;
    }
    state.counters["alerts_per_tick"] = static_cast<double>(alerts) / static_cast<double>(state.iterations());
}

void BM_tickWithAsciiNames(benchmark::State& state) {
    measureTicks(state, offenders("Application"));
}

void BM_tickWithOtherNames(benchmark::State& state) {
    measureTicks(state, offenders("Übungsprogramm für Anfänger"));
}

BENCHMARK(BM_tickWithAsciiNames)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_tickWithOtherNames)->Unit(benchmark::kMicrosecond);

/// Shows the results and notes whether each keeps within the budget.
class BudgetReporter final : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override { // NOLINT(readability-identifier-naming)
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            if (run.error_occurred || run.GetAdjustedCPUTime() > budgetMicroseconds) {
                std::cout << run.benchmark_name()
                          << ": over the budget of 20 microseconds of CPU time a tick\n";
                isKept_ = false;
            }
        }
    }

    bool isKept() const { return isKept_; }

private:
    bool isKept_{true};
};

} // namespace

int main(int argumentCount, char** arguments) {
    benchmark::Initialize(&argumentCount, arguments);
    BudgetReporter reporter;
    const auto count = benchmark::RunSpecifiedBenchmarks(&reporter);
    return count > 0 && reporter.isKept() ? EXIT_SUCCESS : EXIT_FAILURE;
}
