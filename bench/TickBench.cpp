// The CPU time of one tick without a census: reading zones, coolers, sensors, displays, power and host ticks,
// and judging them. The machines are file trees, so it counts this program's work and the kernel's for
// opening files, but not that of a driver, which a real machine adds.

#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "context/SystemContext.h"
#include "cpu/GlobalCPUUsageMonitor.h"
#include "platform/linux/LinuxMachine.h"
#include "thermal/ThermalEngine.h"
#include "thermal/ThermalProviders.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cindertop {

namespace {

constexpr double budgetMicroseconds = 300;

class SilentLog final : public UnifiedLog {
public:
    void write(UnifiedLogLevel /*level*/, std::string_view /*subsystem*/, std::string_view /*category*/,
               std::string_view /*text*/) override {}
};

/// A machine whose clock goes on by a tick whenever it is told to, so that no answer of the last tick is used
/// again.
class TickedMachine {
public:
    explicit TickedMachine(const std::string& name)
        : machine_(rootsOf(name), std::nullopt, [this] { return elapsed_; }) {}

    void tick() {
        elapsed_ += std::chrono::milliseconds(200);
        const auto now = machine_.clock().now();
        const auto score = thermal_.snapshot(
            {.usesExperimentalSensors = true, .thresholds = ThermalTemperatureThresholds::defaults()});
        benchmark::DoNotOptimize(context_.snapshot(score, now, machine_.clock().uptime().awake));
        benchmark::DoNotOptimize(cpu_.sample(now));
    }

private:
    static linux_platform::Roots rootsOf(const std::string& name) {
        const auto tree = std::filesystem::path(CINDERTOP_FIXTURES) / name;
        return {.proc = tree / "proc", .sys = tree / "sys"};
    }

    std::chrono::nanoseconds elapsed_ = std::chrono::hours(1);
    linux_platform::LinuxMachine machine_;
    ThermalEngine thermal_{
        SystemThermalStateProvider(machine_.processInformation(),
                                   DarwinThermalPressureProvider(DarwinThermalPressureReader::ownOnFirstUse(
                                       machine_.thermalPressure(), std::make_shared<SilentLog>())),
                                   machine_.clock()),
        std::make_unique<ExperimentalSensorTemperatureProvider>(machine_.temperatureEvents()),
        ThermalScorer()};
    SystemContextEngine context_{
        std::make_unique<SystemDisplayContextProvider>(machine_.displays()),
        std::make_unique<SystemPowerContextProvider>(machine_.powerSources(), machine_.processInformation()),
        SustainedThermalPressureConfiguration::defaults()};
    GlobalCPUUsageMonitor cpu_{std::make_unique<DarwinSystemCPUTimeProvider>(machine_.hostStatistics())};
};

void measureTick(benchmark::State& state, const std::string& name) {
    TickedMachine machine(name);
    for (auto _ : state) {
        machine.tick();
    }
}

/// Remembers what did not keep the budget.
class BudgetReporter final : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            isKept_ = isKept_ && run.GetAdjustedCPUTime() <= budgetMicroseconds;
        }
    }

    bool isKept() const { return isKept_; }

private:
    bool isKept_ = true;
};

} // namespace

} // namespace cindertop

int main(int argumentCount, char** arguments) {
    benchmark::Initialize(&argumentCount, arguments);
    for (const std::string name : {"thinkpad", "amd-laptop", "apple-silicon", "bare-vm"}) {
        benchmark::RegisterBenchmark(("tick/" + name).c_str(), cindertop::measureTick, name)
            ->Unit(benchmark::kMicrosecond);
    }
    cindertop::BudgetReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cout << "budget: " << cindertop::budgetMicroseconds
              << " us of CPU a tick: " << (reporter.isKept() ? "kept" : "NOT KEPT") << '\n';
    return reporter.isKept() ? EXIT_SUCCESS : EXIT_FAILURE;
}
