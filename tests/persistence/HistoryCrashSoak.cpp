#include "fakes/FaultyFileSystem.h"
#include "fakes/TemporaryFolder.h"
#include "persistence/ThermalHistoryStore.h"
#include "support/AtomicFile.h"
#include "support/FileSystem.h"
#include "support/PropertyListText.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cindertop {
namespace {

constexpr Instant start{std::chrono::seconds(1'741'000'000)};
constexpr std::int64_t longestHistory = 400; // seconds; so that the file reaches its full length

/// How many samples may be lost, one a second: the file stays small enough to be written every minute.
const std::int64_t longestLoss = HistoryWriting::pauseAfter(0) / std::chrono::seconds(1);

ThermalHistoryStore storeOn(const std::filesystem::path& file, FileSystem& files, MonotonicClock clock) {
    return {file,  Seconds(longestHistory),    Seconds(300), CalendarDays("UTC"),
            files, {.clock = std::move(clock)}};
}

/// The number-th sample, which is known by its second.
ThermalHistorySample sample(std::int64_t number) {
    return {start + std::chrono::seconds(number),
            ThermalLevel::fair,
            number % 101,
            12.5,
            50.25,
            "Recorder",
            {},
            {}};
}

/// Memory that parent and child share: how many records have returned.
class Progress {
public:
    Progress()
        : memory_(
              ::mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
          counter_(new(memory_) Counter(0)) {}

    ~Progress() { ::munmap(memory_, sizeof(Counter)); }

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    std::atomic<std::int64_t>& recorded() const { return *counter_; }

private:
    using Counter = std::atomic<std::int64_t>;
    void* memory_;
    Counter* counter_;
};

[[noreturn]] void recordForEver(const std::filesystem::path& file, std::int64_t first,
                                const Progress& progress) {
    PosixFileSystem posix;
    fakes::FaultyFileSystem files(posix);
    files.limitTransfers(64); // writing takes its time, so that many are killed amid it
    std::int64_t number = first;
    ThermalHistoryStore store = storeOn(file, files, [&number] { return std::chrono::seconds(number); });
    for (;; ++number) {
        store.record(sample(number));
        progress.recorded() = number + 1;
    }
}

/// Waits until the child has recorded so many, then some more of its time, and kills it. A child that ends by
/// itself is not waited for.
void killAfter(pid_t child, std::int64_t records, unsigned pause, const Progress& progress) {
    while (progress.recorded() < records) {
        if (::waitpid(child, nullptr, WNOHANG) != 0) {
            return;
        }
        ::sched_yield();
    }
    for (unsigned turn = 0; turn < pause; ++turn) {
        std::atomic_signal_fence(std::memory_order_seq_cst); // keeps the loop
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

/// Empty when the file holds every sample up to one that was recorded in the latest minute, and all of
/// before.
std::string problemWith(const std::filesystem::path& file, std::int64_t recorded, std::int64_t& next) {
    PosixFileSystem files;
    const auto text = wholeFile(files, file, propertyListSizeLimit);
    if (!text) {
        return "the file is gone";
    }
    const auto envelope = decodeHistory(*text);
    if (!envelope) {
        return envelope.error().what();
    }
    const auto& samples = envelope->samples;
    const auto before = next;
    next = samples.empty() ? 0 : (samples.back().measuredAt - start) / std::chrono::seconds(1) + 1;
    if (next < std::max(before, recorded - longestLoss) || next > recorded + 1) {
        return "recorded " + std::to_string(recorded) + ", found " + std::to_string(next);
    }
    for (std::size_t index = 0; index < samples.size(); ++index) {
        if (samples[index] != sample(next - std::ssize(samples) + static_cast<std::int64_t>(index))) {
            return "sample " + std::to_string(index) + " is another one";
        }
    }
    return {};
}

/// What a row of killed recorders left in their file.
struct CrashReport {
    int kills = 0;
    int killedAmidWriting = 0; ///< while a replacement stood beside the file
    std::int64_t lost = 0;     ///< samples, at most in one kill
    std::string problem;       ///< empty when the file always read as its old or its new contents
};

/// Lets a child process record into `file` and kills it at a random moment, that many times.
CrashReport killRecorders(const std::filesystem::path& file, int times, unsigned seed) {
    const Progress progress;
    std::mt19937 random(seed);
    std::uniform_int_distribution<unsigned> pause(0, 12'000'000); // a write takes milliseconds
    CrashReport report;
    const auto replacement = file.parent_path() / ("." + file.filename().string() + ".new");
    std::int64_t next = 0;
    while (report.kills < times && report.problem.empty()) {
        const pid_t child = ::fork();
        if (child == 0) {
            recordForEver(file, next, progress);
        }
        const auto records = next + 1 + static_cast<std::int64_t>(random() % 200);
        killAfter(child, records, pause(random), progress);
        ++report.kills;
        if (std::filesystem::exists(replacement)) {
            ++report.killedAmidWriting;
        }
        report.problem = problemWith(file, progress.recorded(), next);
        report.lost = std::max(report.lost, progress.recorded() - next);
        progress.recorded() = next;
    }
    return report;
}

} // namespace
} // namespace cindertop

/// Kills recorders, 300 of them unless the first argument says how many, and tells what became of their file.
int main(int argumentCount, char** arguments) {
    int times = 300;
    if (argumentCount > 1) {
        const std::string_view wanted = arguments[1];
        std::from_chars(wanted.data(), wanted.data() + wanted.size(), times);
    }
    const unsigned seed = std::random_device()();
    const cindertop::fakes::TemporaryFolder folder;
    const auto report = cindertop::killRecorders(folder / "thermal-history.plist", times, seed);
    std::cout << report.kills << " recorders killed, " << report.killedAmidWriting
              << " of them while they wrote; at most " << report.lost << " of " << cindertop::longestLoss
              << " samples lost; seed " << seed << '\n';
    if (!report.problem.empty()) {
        std::cerr << "the file broke: " << report.problem << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
