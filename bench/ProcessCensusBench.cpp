// Holds the census of the domain on this machine, once it knows the processes, against the least that could
// be done: the listing of /proc and one file, or one CPU clock, of each process. Sizes are additional idle
// processes.

#include "cpu/SystemProcessCPUProvider.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxProcessTable.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers): kill is POSIX
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h> // NOLINT(modernize-deprecated-headers): clock_gettime is POSIX
#include <unistd.h>

namespace {

using namespace cindertop;

constexpr double mostOfStatFiles = 0.25;
constexpr double mostOfCpuClocks = 2;

/// Child processes that sleep. They end with this object, and at the latest with this program.
class SleepingProcesses {
public:
    explicit SleepingProcesses(int count) {
        children_.reserve(static_cast<std::size_t>(count));
        while (static_cast<int>(children_.size()) < count) {
            const pid_t child = ::fork();
            if (child == 0) {
                sleepForever();
            }
            if (child < 0) {
                const int error = errno;
                end(); // the destructor does not run
                throw std::system_error(error, std::generic_category(), "fork");
            }
            children_.push_back(child);
        }
    }

    ~SleepingProcesses() { end(); }

    SleepingProcesses(const SleepingProcesses&) = delete;
    SleepingProcesses& operator=(const SleepingProcesses&) = delete;

private:
    [[noreturn]] static void sleepForever() {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) {
            ::pause();
        }
    }

    void end() const {
        for (const auto child : children_) {
            ::kill(child, SIGKILL);
        }
        for (const auto child : children_) {
            ::waitpid(child, nullptr, 0);
        }
    }

    std::vector<pid_t> children_;
};

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
