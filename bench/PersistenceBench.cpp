#include "fakes/FakeClock.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/TemporaryFolder.h"
#include "persistence/DiagnosticEventCodec.h"
#include "persistence/DiagnosticLogService.h"
#include "persistence/ThermalHistoryStore.h"
#include "support/AtomicFile.h"
#include "support/FileSystem.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace cindertop {
namespace {

constexpr Instant start{std::chrono::seconds(1'741'000'000)};

/// What one call may cost, in milliseconds of CPU.
const std::map<std::string, double> budgets{
    {"BM_RecordOnFullHour/720", 2.5},
    {"BM_RecordOnFullHour/900", 2.5},
    {"BM_EventOnFullBuffer", 6},
};

/// The number-th sample of an hour in which something runs hot: every optional field is there.
ThermalHistorySample sample(std::int64_t number, std::chrono::nanoseconds interval) {
    return {start + number * interval,
            static_cast<ThermalLevel>(number / 50 % 4),
            number % 101,
            static_cast<double>(number % 1000) / 9.7,
            36.0 + static_cast<double>(number % 500) / 7.3,
            number % 2 == 0 ? "Image Editor" : "Compiler",
            "org.example.application-" + std::to_string(number % 7),
            {.isExternalPowerConnected = true, .isSustainedPressure = number % 40 > 20}};
}

/// Most samples are only held; every twelfth or so is written with all others.
void BM_RecordOnFullHour(benchmark::State& state) {
    const fakes::TemporaryFolder folder;
    const auto file = folder / "thermal-history.plist";
    const std::int64_t count = state.range(0);
    const auto interval = std::chrono::nanoseconds(std::chrono::hours(1)) / count;
    PosixFileSystem files;
    std::int64_t number = count;
    ThermalHistoryStore store(file, Seconds(3600), Seconds(300), CalendarDays("Europe/Berlin"), files,
                              {.clock = [&] { return number * interval; }});
    ThermalHistoryEnvelope full;
    for (std::int64_t recorded = 0; recorded < count; ++recorded) {
        full.samples.append(sample(recorded, interval));
    }
    const auto text = encodeHistory(full);
    if (!text || !replaceFile(files, file, *text, Durability::relaxed)) {
        state.SkipWithError("no history file");
        return;
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(store.record(sample(number, interval)));
        ++number;
    }
    state.counters["samples"] =
        static_cast<double>(store.snapshot(start + (number - 1) * interval).samples.size());
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(file));
}

/// The number-th sample as a Linux machine gives it: a temperature in thousandths of a degree, a share that
/// is a quotient, and system work, which has no identifier, in every fourth sample.
ThermalHistorySample everydaySample(std::int64_t number, std::chrono::nanoseconds interval) {
    const bool isSystemWork = number % 4 == 0;
    return {start + number * interval,
            number % 90 < 60 ? ThermalLevel::normal : ThermalLevel::fair,
            number % 60,
            static_cast<double>(number * 37 % 1000) / 1000 * 100 / 2.003,
            40.0 + static_cast<double>(number * 53 % 400) / 10,
            isSystemWork ? "System" : "Firefox",
            isSystemWork ? std::nullopt : std::optional<std::string>("org.mozilla.firefox"),
            {.isExternalPowerConnected = true}};
}

/// Counts the bytes that are written.
class CountedFiles final : public PosixFileSystem {
public:
    std::uintmax_t bytes = 0;

    FileResult<std::size_t> write(FileHandle file, std::string_view text) override {
        const auto count = PosixFileSystem::write(file, text);
        bytes += count.value_or(0);
        return count;
    }
};

/// What an hour of samples writes behind, once the file holds its hour.
void BM_BytesOfAnHour(benchmark::State& state, std::chrono::milliseconds interval, std::uintmax_t budget,
                      const auto& sampleOf) {
    const std::int64_t count = std::chrono::hours(1) / interval;
    const fakes::TemporaryFolder folder;
    const auto file = folder / "thermal-history.plist";
    CountedFiles files;
    std::int64_t number = 0;
    ThermalHistoryStore store(file, Seconds(3600), Seconds(300), CalendarDays("Europe/Berlin"), files,
                              {.clock = [&] { return std::chrono::nanoseconds(number * interval); }});
    for (; number < count; ++number) {
        store.record(sampleOf(number, interval));
    }
    files.bytes = 0;
    for (auto step : state) {
        for (const std::int64_t end = number + count; number < end; ++number) {
            benchmark::DoNotOptimize(store.record(sampleOf(number, interval)));
        }
    }
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(file));
    state.counters["bytesAnHour"] =
        benchmark::Counter(static_cast<double>(files.bytes), benchmark::Counter::kAvgIterations);
    if (files.bytes > budget) {
        state.SkipWithError("too many bytes an hour");
    }
}

void BM_EventOnFullBuffer(benchmark::State& state) {
    const fakes::TemporaryFolder folder;
    const auto file = folder / "diagnostic-events.json";
    PosixFileSystem files;
    DiagnosticBuffer buffer;
    constexpr std::size_t full = 5'242'880;
    const DiagnosticLogEvent event{.id = Uuid::random(),
                                   .timestamp = start,
                                   .level = DiagnosticLogLevel::info,
                                   .category = DiagnosticLogCategory::thermal,
                                   .message = "Thermal level changed",
                                   .metadata = {{"from", "fair"}, {"score", "72"}, {"to", "serious"}}};
    const std::size_t count = full / encodeDiagnosticEvent(event).size() + 1;
    for (std::size_t number = 0; number < count; ++number) {
        buffer.append(event);
    }
    buffer.shrinkTo(full);
    if (!replaceFile(files, file, buffer.fileText(), Durability::relaxed)) {
        state.SkipWithError("no buffer file");
        return;
    }
    fakes::FakeUserDefaults defaults;
    SilentUnifiedLog log;
    const fakes::FakeClock clock;
    DiagnosticLogService service(file, {defaults, files, log, clock, CalendarDays("UTC")});
    service.configure(true);
    for (auto step : state) {
        service.log(DiagnosticLogLevel::info, DiagnosticLogCategory::thermal, "Thermal level changed",
                    event.metadata);
    }
    state.counters["events"] = static_cast<double>(service.events().size());
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(file));
}

BENCHMARK(BM_RecordOnFullHour)
    ->Arg(720)
    ->Arg(900)
    ->Repetitions(5)
    ->MinTime(0.2)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BytesOfAnHour, everyField, std::chrono::seconds(5), 22'000'000, sample)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BytesOfAnHour, everyday, std::chrono::seconds(5), 22'000'000, everydaySample)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BytesOfAnHour, storm, std::chrono::milliseconds(200), 60'000'000, everydaySample)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EventOnFullBuffer)->Repetitions(3)->MinTime(0.2)->Unit(benchmark::kMillisecond);

/// Prints as usual and compares each program's best run with its budget: other programs only ever add to a
/// run.
class BudgetReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override { // NOLINT(readability-identifier-naming)
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) {
                continue;
            }
            const std::string name =
                run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
            const double milliseconds = run.GetAdjustedCPUTime();
            const auto [best, isNew] = best_.emplace(name, milliseconds);
            best->second = std::min(best->second, milliseconds);
            hasFailed_ = hasFailed_ || run.error_occurred;
        }
    }

    bool areBudgetsKept() const {
        bool areKept = !hasFailed_;
        for (const auto& [name, budget] : budgets) {
            const auto measured = best_.find(name);
            if (measured == best_.end()) {
                continue;
            }
            const bool isKept = measured->second <= budget;
            std::cout << name << ": " << measured->second << " ms CPU of " << budget
                      << (isKept ? "" : " EXCEEDED") << '\n';
            areKept = areKept && isKept;
        }
        return areKept && !best_.empty();
    }

private:
    std::map<std::string, double> best_;
    bool hasFailed_ = false;
};

} // namespace
} // namespace cindertop

int main(int argumentCount, char** arguments) {
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments)) {
        return EXIT_FAILURE;
    }
    cindertop::BudgetReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.areBudgetsKept() ? EXIT_SUCCESS : EXIT_FAILURE;
}
