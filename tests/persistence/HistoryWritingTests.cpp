#include "fakes/FaultyFileSystem.h"
#include "fakes/TemporaryFolder.h"
#include "persistence/ThermalHistoryStore.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
// Beside that of texts, which another file of the unit names.
using std::chrono_literals::operator""s; // NOLINT(misc-unused-using-decls)
using Call = fakes::FaultyFileSystem::Call;

constexpr Instant morning{1'741'176'000s}; // 2025-03-05 12:00 UTC

ThermalHistorySample plainSample(Instant instant) {
    return {instant, ThermalLevel::fair, 40, {}, {}, "Recorder", {}, {}};
}

class HistoryWritingTest : public testing::Test {
protected:
    fakes::TemporaryFolder folder;
    std::filesystem::path file = folder / "history.plist";
    PosixFileSystem posix;
    fakes::FaultyFileSystem files{posix};
    std::chrono::nanoseconds time{7h}; ///< monotonic
    ThermalHistoryStore store = storeOn(file, {.clock = [this] { return time; }});

    ThermalHistoryStore storeOn(const std::filesystem::path& place, HistoryWriting writing) {
        return {place, Seconds(3600), Seconds(300), CalendarDays("UTC"), files, std::move(writing)};
    }

    std::size_t countInFile() { return storeOn(file, {}).snapshot(morning + 30min).samples.size(); }

    std::ptrdiff_t written() const { return std::ranges::count(files.calls, Call::rename); }

    /// Records one sample each `interval`, and returns after how long the first write came.
    std::chrono::seconds recordUntilWritten(std::chrono::seconds interval) {
        const auto before = written();
        const auto start = time;
        do {
            time += interval;
            store.record(plainSample(morning + std::chrono::floor<std::chrono::seconds>(time - 7h)));
        } while (written() == before);
        return std::chrono::floor<std::chrono::seconds>(time - start);
    }
};

TEST_F(HistoryWritingTest, WaitsByTheSizeOfTheFile) {
    struct Case {
        std::size_t bytes;
        std::chrono::nanoseconds pause;
    };

    for (const auto& [bytes, pause] : std::to_array<Case>({
             {0, 60s},
             {330'000, 60s},
             {367'000, 66'727'272'727ns},
             {1'100'000, 200s},
             {3'960'000, 720s},
             {std::numeric_limits<std::size_t>::max(), 720s},
         })) {
        EXPECT_EQ(HistoryWriting::pauseAfter(bytes), pause) << bytes;
    }
}

TEST_F(HistoryWritingTest, WritesTheFirstSampleAndThenEveryMinuteWhateverTheWallClockSays) {
    store.record(plainSample(morning));
    EXPECT_EQ(countInFile(), 1U);
    EXPECT_EQ(recordUntilWritten(5s), 60s);
    EXPECT_EQ(recordUntilWritten(7s), 63s);
    EXPECT_EQ(std::ranges::count(files.calls, Call::sync), 3) << "each is on the disk";
    store.record(plainSample(morning - 20min));
    store.record(plainSample(morning + 20min));
    EXPECT_EQ(written(), 3);
}

TEST_F(HistoryWritingTest, SavesWhatIsNotWrittenYetAndOnlyThat) {
    EXPECT_TRUE(store.save());
    EXPECT_EQ(written(), 0) << "nothing recorded";
    store.record(plainSample(morning));
    store.record(plainSample(morning + 5s));
    EXPECT_EQ(countInFile(), 1U);
    EXPECT_TRUE(store.save());
    EXPECT_EQ(countInFile(), 2U);
    EXPECT_TRUE(store.save());
    EXPECT_EQ(written(), 2);
    EXPECT_EQ(recordUntilWritten(5s), 60s) << "counted from the latest write";
}

TEST_F(HistoryWritingTest, KeepsWhatItCannotWrite) {
    store.record(plainSample(morning));
    files.fail(Call::write, std::errc::no_space_on_device);
    time += 60s;
    EXPECT_EQ(store.record(plainSample(morning + 5s)).samples.size(), 2U);
    EXPECT_EQ(store.save().error(), std::errc::no_space_on_device);
    EXPECT_EQ(countInFile(), 1U);
    files.repair();
    EXPECT_EQ(recordUntilWritten(20s), 60s) << "not at each sample";
    EXPECT_EQ(store.snapshot(morning + 2min).samples.size(), countInFile());
    store.record(
        {morning + 3min, ThermalLevel::fair, 1, {}, std::numeric_limits<double>::infinity(), {}, {}, {}});
    EXPECT_TRUE(store.save()) << "a number that no file can hold is not held, either";
}

TEST_F(HistoryWritingTest, WaitsAlsoForAFolderThatItCannotMake) {
    files.fail(Call::makeFolder, std::errc::permission_denied);
    for (int second = 0; second < 60; second += 5) {
        time = 7h + std::chrono::seconds(second);
        store.record(plainSample(morning + std::chrono::seconds(second)));
    }
    EXPECT_EQ(std::ranges::count(files.calls, Call::makeFolder), 1);
    files.repair();
    EXPECT_TRUE(store.save());
    EXPECT_EQ(countInFile(), 12U);
}

TEST_F(HistoryWritingTest, ForgetsWhatItHeldWhenItIsCleared) {
    store.record(plainSample(morning));
    store.record(plainSample(morning + 5s));
    store.clear();
    EXPECT_TRUE(store.save());
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(store.snapshot(morning).samples.empty());
    EXPECT_EQ(store.record(plainSample(morning + 10s)).samples.size(), 1U);
    EXPECT_EQ(countInFile(), 1U) << "a new history begins with a write";
}

TEST_F(HistoryWritingTest, ReadsOnce) {
    storeOn(file, {}).record(plainSample(morning));
    files.calls.clear();
    EXPECT_EQ(store.snapshot(morning).samples.size(), 1U);
    EXPECT_EQ(store.record(plainSample(morning + 5s)).samples.size(), 2U);
    EXPECT_EQ(store.snapshot(morning + 5s).samples.size(), 2U);
    EXPECT_EQ(std::ranges::count(files.calls, Call::openForReading), 1);
}

TEST_F(HistoryWritingTest, HandsOutSnapshotsThatStayAsTheyAreWhileItGoesOn) {
    store.record(plainSample(morning));
    const auto first = store.record(plainSample(morning + 1s));
    const auto shared = store.record(plainSample(morning + 2s));
    EXPECT_EQ(first.samples.begin(), shared.samples.begin()) << "the same samples, not copies";
    const std::jthread recorder([&] {
        for (int second = 3; second < 5000; ++second) {
            store.record(plainSample(morning + std::chrono::seconds(second)));
        }
    });
    for (int look = 0; look < 1000; ++look) {
        ASSERT_EQ(first.samples, (SharedHistorySamples{plainSample(morning), plainSample(morning + 1s)}));
    }
}

/// What happens to a machine in a row of days, by chance: heat, clocks that jump, labels of any kind.
class RandomSamples {
public:
    explicit RandomSamples(unsigned seed) : random_(seed) {}

    ThermalHistorySample next() {
        constexpr std::array<std::chrono::nanoseconds, 9> steps{0ns, 400'000'000ns, 5s + 1ns, 5s,    301s,
                                                                2h,  26h,           -30s,     -90min};
        now_ += steps.at(below(below(4) == 0 ? steps.size() : 4UZ));
        constexpr std::array<std::optional<double>, 6> numbers{
            std::nullopt, 36.6, -0.0, 1e300, 5e-324, std::numeric_limits<double>::quiet_NaN()};
        static const std::array<std::optional<std::string>, 12> labels{
            std::nullopt,   "Browser",    "Browser\x01",
            "a: b",         "x:",         "\x02 /usr/bin/true ",
            "<&>",          "\xff\xfe z", "Grün\r\n",
            "\xef\xbf\xbf", "tab\t",      std::string(47, 'w') + " \x03y"};
        return {now_,
                static_cast<ThermalLevel>(below(4)),
                static_cast<std::int64_t>(below(130)) - 10,
                numbers.at(below(numbers.size())),
                numbers.at(below(numbers.size())),
                labels.at(below(labels.size())),
                below(2) == 0 ? std::optional<std::string>("org.example." + std::to_string(below(3)))
                              : std::nullopt,
                {.isSustainedPressure = below(2) == 0}};
    }

private:
    std::size_t below(std::size_t count) { return random_() % count; }

    std::mt19937 random_;
    Instant now_ = morning;
};

TEST_F(HistoryWritingTest, HoldsWhatItWouldReadBack) {
    for (unsigned seed = 1; seed <= 8; ++seed) {
        RandomSamples samples(seed);
        store.clear();
        auto through = storeOn(folder / "through.plist", {});
        through.clear();
        for (int number = 0; number < 60; ++number) {
            const auto sample = samples.next();
            const auto now = sample.measuredAt;
            store.record(sample);
            through.record(sample);
            const auto held = store.snapshot(now);
            ASSERT_EQ(held, through.snapshot(now)) << "seed " << seed << ", sample " << number;
            if (number % 20 == 19) {
                ASSERT_TRUE(store.save());
                ASSERT_EQ(storeOn(file, {}).snapshot(now), held) << "seed " << seed << ", sample " << number;
            }
        }
    }
}

} // namespace
} // namespace cindertop
