// Holds the census of the domain on this machine, once it knows the processes, against the least that could
// be done: the listing of /proc and one file, or one CPU clock, of each process. Sizes are additional idle
// processes.

#include "MedianReporter.h"
#include "SleepingProcesses.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxProcessTable.h"

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <time.h> // NOLINT(modernize-deprecated-headers): clock_gettime is POSIX
#include <unistd.h>

namespace {

using namespace cindertop;

constexpr double mostOfStatFiles = 0.25;
constexpr double mostOfCpuClocks = 2;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

/// Calls `visit(folder, name)` for each process in /proc and returns their number.
template <typename Visit>
int forEachProcess(const Visit& visit) {
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir("/proc"));
    int count = 0;
    while (const auto* const entry = ::readdir(folder.get())) {
        if (entry->d_name[0] >= '1' && entry->d_name[0] <= '9') {
            visit(::dirfd(folder.get()), std::string_view(entry->d_name));
            ++count;
        }
    }
    return count;
}

void readStatFile(int folder, std::string_view name) {
    std::array<char, 32> path{};
    name.copy(path.data(), path.size());
    std::string_view("/stat").copy(path.data() + name.size(), path.size() - name.size() - 1);
    const int file = ::openat(folder, path.data(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    std::array<char, 4096> text; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    benchmark::DoNotOptimize(::read(file, text.data(), text.size()));
    ::close(file);
}

void readCpuClock(int /*folder*/, std::string_view name) {
    std::uint32_t identifier = 0;
    std::from_chars(name.data(), name.data() + name.size(), identifier);
    timespec time{};
    benchmark::DoNotOptimize(::clock_gettime(static_cast<clockid_t>((~identifier << 3U) | 2U), &time));
}

void BM_listingAndStatFiles(benchmark::State& state) {
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(forEachProcess(readStatFile));
    }
}

void BM_listingAndCpuClocks(benchmark::State& state) {
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(forEachProcess(readCpuClock));
    }
}

void BM_census(benchmark::State& state) {
    linux_platform::LinuxProcessTable processes;
    linux_platform::LinuxApplicationCatalog applications({}, processes);
    SystemProcessCPUProvider provider(processes, applications);
    provider.readings(unixEpoch);
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(provider.readings(unixEpoch));
    }
}

BENCHMARK(BM_listingAndStatFiles);
BENCHMARK(BM_listingAndCpuClocks);
BENCHMARK(BM_census);

bool isWithin(std::string_view what, int size, double ratio, double limit) {
    const bool holds = ratio <= limit;
    std::array<char, 16> number{};
    const auto* const end =
        std::to_chars(number.data(), number.data() + number.size(), ratio, std::chars_format::fixed, 3).ptr;
    std::cout << "census / " << what << " at " << size << ": " << std::string_view(number.data(), end)
              << (holds ? "" : "  TOO MUCH") << '\n';
    return holds;
}

bool holdsAt(int size) {
    const SleepingProcesses others(size);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const bool holdsFiles =
        isWithin("stat files", size, reporter.ratio("BM_census", "BM_listingAndStatFiles"), mostOfStatFiles);
    const bool holdsClocks =
        isWithin("CPU clocks", size, reporter.ratio("BM_census", "BM_listingAndCpuClocks"), mostOfCpuClocks);
    return holdsFiles && holdsClocks;
}

} // namespace

int main() {
    // Rounds of the three in random order, so that what else the machine does hits all alike.
    auto options = std::to_array<std::string>({"bench_census", "--benchmark_enable_random_interleaving=true",
                                               "--benchmark_repetitions=15", "--benchmark_min_time=0.05",
                                               "--benchmark_report_aggregates_only=true"});
    std::vector<char*> arguments;
    arguments.reserve(options.size());
    for (auto& option : options) {
        arguments.push_back(option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    bool holds = true;
    for (const int size : {200, 1000, 5000}) {
        holds = holdsAt(size) && holds;
    }
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
