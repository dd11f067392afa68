#include "Fixtures.h"
#include "fakes/FaultyFileSystem.h"
#include "fakes/TemporaryFolder.h"
#include "persistence/ThermalHistoryStore.h"
#include "support/DateText.h"
#include "support/FileSystem.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace cindertop {
namespace {

using fakes::FaultyFileSystem;
using Call = FaultyFileSystem::Call;
using std::chrono::milliseconds;
using std::chrono::seconds;

Instant at(std::string_view text) {
    return parseUtcText(text).value();
}

const Instant noon = at("2025-03-05T12:00:00Z");

ThermalHistorySample sampleAt(Instant instant, ThermalLevel level = ThermalLevel::normal,
                              bool isSustained = false) {
    return {instant, level, 50, {}, {}, {}, {}, {.isSustainedPressure = isSustained}};
}

ThermalHistorySample offenderAt(Instant instant, const std::optional<std::string>& label,
                                const std::optional<std::string>& identifier) {
    return {instant, ThermalLevel::normal, 50, {}, {}, label, identifier, {}};
}

class ThermalHistoryStoreTest : public testing::Test {
protected:
    fakes::TemporaryFolder folder;
    std::filesystem::path file = folder / "Cindertop/thermal-history.plist";
    PosixFileSystem posix;
    FaultyFileSystem files{posix};
    ThermalHistoryStore store = storeIn("UTC");

    ThermalHistoryStore storeIn(const char* zone) {
        return {file, Seconds(3600), Seconds(300), CalendarDays(zone), files};
    }

    void place(const std::string& fixture) {
        std::filesystem::create_directories(file.parent_path());
        std::filesystem::copy_file(tests::fixtureFile(fixture), file,
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

TEST_F(ThermalHistoryStoreTest, StartsWithTheFirstSample) {
    const auto sample = ThermalHistorySample(noon, ThermalLevel::critical, 95, 88.5, 104.25, "Foo", "org.foo",
                                             {.isSustainedPressure = true});
    const ThermalMonitoringSnapshot expected{{sample},
                                             ThermalDailySummary("2025-03-05", ThermalLevelDurations(), 1, 1,
                                                                 {{"Foo", 1}}, {{{"Foo", "org.foo"}}}, noon),
                                             noon};
    EXPECT_EQ(store.record(sample), expected);
    EXPECT_EQ(store.snapshot(noon), expected) << "the file says the same";
}

TEST_F(ThermalHistoryStoreTest, RaisesItsDurations) {
    const auto made = [&](double history, double gap) {
        return ThermalHistoryStore(file, Seconds(history), Seconds(gap), CalendarDays("UTC"), files);
    };
    EXPECT_EQ(made(59.9, 9.9).historyDuration(), Seconds(60));
    EXPECT_EQ(made(59.9, 9.9).maximumAttributionGap(), Seconds(10));
    EXPECT_EQ(made(std::numeric_limits<double>::quiet_NaN(), -1).historyDuration(), Seconds(60));
    ThermalHistoryStore endless(file, Seconds(std::numeric_limits<double>::infinity()), Seconds(10),
                                CalendarDays("UTC"), files);
    endless.record(sampleAt(at("1700-01-01T00:00:00Z")));
    EXPECT_EQ(endless.record(sampleAt(noon)).samples.size(), 2U);
}

TEST_F(ThermalHistoryStoreTest, AttributesAGapToTheLevelBeforeIt) {
    struct Case {
        milliseconds first, second;
        double attributed;
    };

    for (const auto& [first, second, attributed] : std::to_array<Case>({
             {milliseconds(0), seconds(300), 300},
             {milliseconds(0), seconds(301), 0},
             {milliseconds(0), milliseconds(300'900), 300}, // the file keeps whole seconds
             {milliseconds(900), milliseconds(1000), 1},
             {milliseconds(100), milliseconds(900), 0},
             {seconds(60), seconds(30), 0}, // the clock went back
         })) {
        store.clear();
        store.record(sampleAt(noon + first, ThermalLevel::serious));
        const auto snapshot = store.record(sampleAt(noon + second, ThermalLevel::fair));
        EXPECT_EQ(snapshot.todaySummary.levelDurations, ThermalLevelDurations(0, 0, attributed, 0));
        EXPECT_EQ(snapshot.samples.back().measuredAt, noon + second) << "with its fraction";
        EXPECT_EQ(snapshot.todaySummary.updatedAt, noon + second);
    }
}

TEST_F(ThermalHistoryStoreTest, CountsEpisodesWhenTheyBegin) {
    using enum ThermalLevel;

    struct Step {
        ThermalLevel level;
        bool isSustained;
        std::int64_t throttling;
        std::int64_t critical;
    };

    Instant instant = noon;
    for (const auto& [level, isSustained, throttling, critical] : std::to_array<Step>({
             {serious, true, 1, 0},
             {serious, true, 1, 0},
             {ThermalLevel::critical, true, 1, 1},
             {serious, false, 1, 1},
             {ThermalLevel::critical, false, 1, 2},
             {ThermalLevel::critical, true, 2, 2},
         })) {
        const auto summary = store.record(sampleAt(instant, level, isSustained)).todaySummary;
        EXPECT_EQ(summary.throttlingEpisodeCount, throttling);
        EXPECT_EQ(summary.criticalEpisodeCount, critical);
        instant += seconds(400); // a gap that counts for no level still joins episodes
    }
}

TEST_F(ThermalHistoryStoreTest, BeginsAgainAtMidnight) {
    store.record(sampleAt(at("2025-03-05T23:59:50Z"), ThermalLevel::critical, true));
    const auto next = at("2025-03-06T00:00:30Z");
    const auto snapshot = store.record(sampleAt(next, ThermalLevel::critical, true));
    EXPECT_EQ(snapshot.samples.size(), 2U);
    EXPECT_EQ(snapshot.todaySummary, ThermalDailySummary("2025-03-06", ThermalLevelDurations(), 1, 1, {},
                                                         ThermalDailySummary::OffenderIdentifiers{}, next));
    const auto back = store.record(sampleAt(at("2025-03-05T23:59:59Z")));
    EXPECT_EQ(back.todaySummary.dayIdentifier, "2025-03-05") << "an earlier day is another day as well";
}

TEST_F(ThermalHistoryStoreTest, HasTheDaysOfItsTimeZone) {
    auto indian = storeIn("Asia/Kolkata");
    indian.record(sampleAt(at("2025-03-05T18:29:50Z"), ThermalLevel::fair));
    EXPECT_EQ(indian.record(sampleAt(at("2025-03-05T18:30:00Z"))).todaySummary,
              ThermalDailySummary::fresh("2025-03-06", at("2025-03-05T18:30:00Z")));
}

TEST_F(ThermalHistoryStoreTest, CountsOffendersByLabel) {
    store.record(offenderAt(noon, "Foo", "org.foo"));
    store.record(offenderAt(noon + seconds(1), std::nullopt, "org.lost"));
    store.record(offenderAt(noon + seconds(2), "Bar", std::nullopt));
    const auto summary = store.record(offenderAt(noon + seconds(3), "/opt/Foo", "org.foo2")).todaySummary;
    EXPECT_EQ(summary.topOffenderCounts, (ThermalDailySummary::OffenderCounts{{"Foo", 2}, {"Bar", 1}}));
    EXPECT_EQ(summary.topOffenderBundleIdentifiers,
              (ThermalDailySummary::OffenderIdentifiers{{"Foo", "org.foo2"}}));
}

TEST_F(ThermalHistoryStoreTest, MakesTheDictionaryOfIdentifiersWhenItIsAbsent) {
    place("history/good/summary-without-identifiers.plist");
    const auto summary = store.record(offenderAt(at("2025-03-05T10:00:10Z"), "Foo", "org.foo")).todaySummary;
    EXPECT_EQ(summary.topOffenderBundleIdentifiers,
              (ThermalDailySummary::OffenderIdentifiers{{"Foo", "org.foo"}}));
}

TEST_F(ThermalHistoryStoreTest, KeepsTheSamplesOfItsWindow) {
    for (const seconds age : {seconds(3601), seconds(3600), seconds(10)}) {
        store.record(sampleAt(noon - age));
    }
    EXPECT_EQ(store.snapshot(noon).samples,
              (std::vector{sampleAt(noon - seconds(3600)), sampleAt(noon - seconds(10))}));
    EXPECT_EQ(store.snapshot(noon + milliseconds(1)).samples, (std::vector{sampleAt(noon - seconds(10))}));
}

TEST_F(ThermalHistoryStoreTest, ShowsNoSampleOfTheFutureAndKeepsIt) {
    store.record(sampleAt(noon));
    const auto early = sampleAt(noon - seconds(30), ThermalLevel::fair);
    EXPECT_EQ(store.record(early).samples, std::vector{early});
    EXPECT_EQ(store.snapshot(noon - seconds(1)).samples, std::vector{early});
    EXPECT_EQ(store.snapshot(noon).samples, (std::vector{early, sampleAt(noon)}));
}

TEST_F(ThermalHistoryStoreTest, LooksWithoutWriting) {
    store.record(sampleAt(noon, ThermalLevel::critical, true));
    const std::string text = fakes::textOf(file);
    files.calls.clear();
    const Instant tomorrow = noon + std::chrono::days(1);
    EXPECT_EQ(store.snapshot(tomorrow),
              (ThermalMonitoringSnapshot{{}, ThermalDailySummary::fresh("2025-03-06", tomorrow), tomorrow}));
    EXPECT_EQ(fakes::textOf(file), text);
    EXPECT_EQ(std::ranges::count(files.calls, Call::openForReplacing), 0);
}

TEST_F(ThermalHistoryStoreTest, WritesCompactFilesWithoutWaitingForTheDisk) {
    store.clear(); // nothing there yet
    store.record(sampleAt(noon));
    EXPECT_EQ(std::ranges::count(files.calls, Call::sync), 0);
    EXPECT_EQ(std::ranges::count(fakes::textOf(file), '\n'), 5);
    store.clear();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ThermalHistoryStoreTest, GoesOnWithAFileOfALaterVersion) {
    place("history/good/other-version.plist");
    const auto snapshot = store.record(sampleAt(at("2025-03-05T10:00:08Z")));
    EXPECT_EQ(snapshot.samples.size(), 3U);
    EXPECT_EQ(snapshot.todaySummary.levelDurations, ThermalLevelDurations(0, 0.5, 5, 3));
    EXPECT_EQ(decodeHistory(fakes::textOf(file))->schemaVersion, 7);
}

TEST_F(ThermalHistoryStoreTest, ReplacesABrokenFile) {
    place("history/broken/missing-samples.plist");
    EXPECT_EQ(store.record(sampleAt(noon)).samples.size(), 1U);
    EXPECT_TRUE(decodeHistory(fakes::textOf(file)));
    fakes::writeText(file, std::string(33UZ * 1024 * 1024, ' '));
    EXPECT_EQ(store.record(sampleAt(noon)).samples.size(), 1U);
}

TEST_F(ThermalHistoryStoreTest, LivesWithAFolderInTheFilesPlace) {
    std::filesystem::create_directories(file / "below");
    EXPECT_EQ(store.record(sampleAt(noon)).samples.size(), 1U) << "what it would have been";
    EXPECT_TRUE(store.snapshot(noon).samples.empty());
    store.clear();
    EXPECT_TRUE(std::filesystem::exists(file / "below"));
}

TEST_F(ThermalHistoryStoreTest, KeepsTheOldFileWhenItCannotWrite) {
    store.record(sampleAt(noon));
    const std::string before = fakes::textOf(file);
    for (const Call call : {Call::makeFolder, Call::write}) {
        files.fail(call, std::errc::no_space_on_device);
        EXPECT_EQ(store.record(sampleAt(noon + seconds(5))).samples.size(), 2U) << "what it would have been";
        files.repair();
        EXPECT_EQ(fakes::textOf(file), before);
    }
    store.record(
        {noon + seconds(5), ThermalLevel::fair, 1, {}, std::numeric_limits<double>::infinity(), {}, {}, {}});
    EXPECT_EQ(fakes::textOf(file), before) << "a number that no file can hold";
}

TEST_F(ThermalHistoryStoreTest, RunsOneCallAtATime) {
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (int number = 0; number < 10; ++number) {
                store.record(sampleAt(noon + seconds(thread * 10 + number)));
                std::ignore = store.snapshot(noon);
            }
        });
    }
    threads.clear();
    EXPECT_EQ(store.snapshot(noon + seconds(40)).samples.size(), 40U);
}

} // namespace
} // namespace cindertop
