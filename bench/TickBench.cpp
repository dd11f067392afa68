// The CPU time of one tick without a census: reading zones, coolers, sensors, displays, power and host ticks,
// and judging them. The machines are file trees, so it counts this program's work and the kernel's for
// opening files, but not that of a driver, which a real machine adds.

#include "app/MonitoringEngines.h"
#include "platform/linux/LinuxMachine.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace cindertop {

namespace {

constexpr double budgetMicroseconds = 300;

/// A machine whose clock goes on by a tick whenever it is told to, so that no answer of the last tick is used
/// again.
class TickedMachine {
public:
    explicit TickedMachine(const std::string& name)
        : machine_(rootsOf(name), std::nullopt, [this] { return elapsed_; }) {}

    void tick() {
        elapsed_ += std::chrono::milliseconds(200);
        const auto now = services_.clock.now();
        const auto score = engines_.readScore(
            {.usesExperimentalSensors = true, .thresholds = ThermalTemperatureThresholds::defaults()});
        benchmark::DoNotOptimize(engines_.context.snapshot(score, now, services_.clock.uptime().awake));
        benchmark::DoNotOptimize(engines_.cpuUsage.sample(now));
    }

private:
    static linux_platform::Roots rootsOf(const std::string& name) {
        const auto tree = std::filesystem::path(CINDERTOP_FIXTURES) / name;
        return {.proc = tree / "proc", .sys = tree / "sys"};
    }

    std::chrono::nanoseconds elapsed_ = std::chrono::hours(1);
    linux_platform::LinuxMachine machine_;
    Machine services_ = machine_.services();
    MonitoringEngines engines_{services_, DarwinThermalPressureReader::ownOnFirstUse(
                                              services_.pressure, std::make_shared<SilentUnifiedLog>())};
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
