// Of 300 processes 20 draw: finding out who draws may cost at most half of what the census of all costs. No
// machine with graphics is needed: the descriptors stand in a tree of files, and the processes are real. Each
// round is a census 8 s after the last, before which all that draw have run.

#include "MedianReporter.h"
#include "SleepingProcesses.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxGraphicsUsage.h"
#include "platform/linux/LinuxProcessTable.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cindertop;
using namespace cindertop::linux_platform;

constexpr double mostOfCensus = 0.5;
constexpr int processCount = 300;
constexpr std::size_t drawingCount = 20;
constexpr int descriptorsOfProcess = 40;
constexpr int clientsOfProcess = 2; ///< each with two descriptors
constexpr std::chrono::seconds betweenCensuses{8};

/// The kernel's clocks, but for some processes that always have run since they were last asked for.
class RunningProcessClocks final : public ProcessClocks {
public:
    explicit RunningProcessClocks(std::span<const pid_t> running) : running_(running) {}

    std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) override {
        const auto time = clocks_->cpuTime(processIdentifier);
        const bool isRunning = std::ranges::find(running_, processIdentifier) != running_.end();
        return isRunning && time ? *time + std::chrono::milliseconds(++steps_) : time;
    }

    std::chrono::nanoseconds sinceBoot() override { return clocks_->sinceBoot(); }

    Instant now() override { return clocks_->now(); }

private:
    std::unique_ptr<ProcessClocks> clocks_ = kernelClocks();
    std::span<const pid_t> running_;
    int steps_ = 0;
};

std::string driverText(int client) {
    return "pos:\t0\nflags:\t02100002\nmnt_id:\t27\nino:\t812\ndrm-driver:\ti915\ndrm-client-id:\t" +
           std::to_string(client) +
           "\ndrm-pdev:\t0000:00:02.0\ndrm-total-system0:\t98304 KiB\ndrm-shared-system0:\t1 MiB\n"
           "drm-engine-render:\t48210771234 ns\ndrm-engine-copy:\t1190442 ns\n"
           "drm-engine-video:\t7700120034 ns\ndrm-engine-capacity-video:\t2\n";
}

void open(const std::filesystem::path& process, int number, const std::string& target,
          const std::string& text) {
    std::filesystem::create_symlink(target, process / "fd" / std::to_string(number));
    fakes::writeText(process / "fdinfo" / std::to_string(number), text);
}

/// The descriptors of all processes; the first of them draw.
void writeDescriptors(const std::filesystem::path& proc, std::span<const pid_t> processes) {
    for (std::size_t index = 0; index < processes.size(); ++index) {
        const auto process = proc / std::to_string(processes[index]);
        std::filesystem::create_directories(process / "fd");
        std::filesystem::create_directories(process / "fdinfo");
        for (int number = 0; number < descriptorsOfProcess; ++number) {
            const bool draws = index < drawingCount && number < clientsOfProcess * 2;
            const auto client = static_cast<int>(index) * clientsOfProcess + number / 2;
            open(process, number, draws ? "/dev/dri/renderD128" : "socket:[4711]",
                 draws ? driverText(client) : "pos:\t0\n");
        }
    }
}

class Machine {
public:
    explicit Machine(std::span<const pid_t> processes)
        : processes_({}, std::make_unique<RunningProcessClocks>(processes.first(drawingCount))) {
        writeDescriptors(folder_.path(), processes);
        census();
        graphics();
    }

    void census() {
        now_ += betweenCensuses;
        benchmark::DoNotOptimize(provider_.readings(unixEpoch));
    }

    std::size_t graphics() {
        const auto clients = graphics_.clients();
        return clients.size();
    }

private:
    fakes::TemporaryFolder folder_;
    std::chrono::nanoseconds now_ = std::chrono::hours(1);
    LinuxProcessTable processes_;
    LinuxApplicationCatalog applications_{{}, processes_};
    SystemProcessCPUProvider provider_{processes_, applications_};
    LinuxGraphicsUsage graphics_{
        {.proc = folder_.path(), .sys = "/sys"}, processes_, [this] { return now_; }};
};

} // namespace

int main() {
    auto options = std::to_array<std::string>(
        {"bench_graphics", "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=15",
         "--benchmark_min_time=0.05", "--benchmark_report_aggregates_only=true"});
    std::vector<char*> arguments;
    arguments.reserve(options.size());
    for (auto& option : options) {
        arguments.push_back(option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    const SleepingProcesses others(processCount);
    Machine machine(others.identifiers());
    if (machine.graphics() != drawingCount * clientsOfProcess) {
        std::cout << "not all clients were found\n";
        return EXIT_FAILURE;
    }
    benchmark::RegisterBenchmark("BM_census", [&machine](benchmark::State& state) {
        for ([[maybe_unused]] auto step : state) {
            machine.census();
        }
    });
    benchmark::RegisterBenchmark("BM_censusAndGraphics", [&machine](benchmark::State& state) {
        for ([[maybe_unused]] auto step : state) {
            machine.census();
            benchmark::DoNotOptimize(machine.graphics());
        }
    });
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double ratio = reporter.ratio("BM_censusAndGraphics", "BM_census") - 1;
    const bool holds = ratio <= mostOfCensus;
    std::cout << "graphics / census, " << drawingCount << " of " << processCount << " draw: " << ratio
              << (holds ? "" : "  TOO MUCH") << '\n';
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
