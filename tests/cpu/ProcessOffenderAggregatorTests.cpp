#include "cpu/ProcessOffenderAggregator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <random>
#include <set>
#include <string>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Instant before{1'700'000'000s};
constexpr Instant now = before + 1s;

const LocalizedComparison& british() {
    static const LocalizedComparison comparison("en_GB");
    return comparison;
}

/// A process that used `milliseconds` of CPU time between the two censuses, which are one second apart.
struct Worker {
    ProcessCPUReading reading;
    std::uint64_t milliseconds;
};

Worker worker(std::int32_t identifier, std::string name, std::uint64_t milliseconds) {
    Worker made{.reading = {}, .milliseconds = milliseconds};
    made.reading.processIdentifier = identifier;
    made.reading.name = std::move(name);
    made.reading.startedAt = before - 1h;
    made.reading.measuredAt = before;
    made.reading.cumulativeCPUTimeNanoseconds = 5'000'000;
    return made;
}

Worker inBundle(Worker of, const std::string& bundle, std::optional<std::string> display = std::nullopt) {
    of.reading.appBundleIdentifier = bundle;
    of.reading.appBundlePath = "/Applications/" + bundle;
    of.reading.appDisplayName = std::move(display);
    return of;
}

Worker ofSystem(Worker of) {
    of.reading.isSystemProcess = true;
    return of;
}

ProcessOffenderAggregator::Result aggregate(const std::vector<Worker>& workers,
                                            const ProcessOffenderConfiguration::Fields& fields = {},
                                            HistoryByOffenderID histories = {},
                                            OperatingSystem system = OperatingSystem::mac) {
    std::vector<ProcessCPUReading> readings;
    readings.reserve(workers.size());
    for (const Worker& each : workers) {
        readings.push_back(each.reading);
    }
    const PreviousReadingsByPID previous = readingsByPID(readings);
    for (std::size_t index = 0; index < workers.size(); ++index) {
        readings[index].cumulativeCPUTimeNanoseconds += workers[index].milliseconds * 1'000'000;
        readings[index].measuredAt = now;
    }
    const ProcessOffenderConfiguration configuration(fields);
    return ProcessOffenderAggregator{
        .configuration = configuration,
        .previousReadingsByPID = previous,
        .currentReadings = readings,
        .existingHistoryByOffenderID = std::move(histories),
        .now = now,
        .comparison = british(),
        .system = system,
    }
        .aggregate();
}

std::vector<std::string> namesOf(const ProcessOffenderAggregator::Result& result) {
    std::vector<std::string> names;
    names.reserve(result.visibleOffenders.size());
    for (const ProcessOffender& offender : result.visibleOffenders) {
        names.push_back(offender.displayName);
    }
    return names;
}

TEST(ProcessOffenderAggregator, MeasuresShareOfTheWholeMachine) {
    struct Case {
        std::int64_t processors;
        std::uint64_t milliseconds;
        double percent;
    };

    for (const auto& [processors, milliseconds, percent] :
         std::to_array<Case>({{4, 2000, 50}, {1, 250, 25}, {1, 4000, 400}, {8, 8000, 100}})) {
        const auto result = aggregate({worker(1, "a", milliseconds)}, {.processorCount = processors});
        EXPECT_EQ(result.visibleOffenders.at(0).cpuPercent, percent) << processors;
    }
}

/// What makes two readings of one identifier no interval of one process.
TEST(ProcessOffenderAggregator, LeavesOutReadingsThatCannotBeCompared) {
    struct Case {
        std::string_view why;
        std::function<void(ProcessCPUReading&, ProcessCPUReading&)>
            change; ///< of the earlier and the later reading
        std::size_t offenders;
    };

    for (const auto& [why, change, offenders] : std::to_array<Case>({
             {"comparable", [](auto&, auto&) {}, 1},
             {"this program",
              [](auto& earlier, auto& later) { earlier.processIdentifier = later.processIdentifier = 99; },
              0},
             {"this application", [](auto&, auto& later) { later.appBundleIdentifier = "app.own"; }, 0},
             {"another case", [](auto&, auto& later) { later.appBundleIdentifier = "App.Own"; }, 1},
             {"a new process", [](auto& earlier, auto&) { earlier.processIdentifier = 2; }, 0},
             {"another start", [](auto& earlier, auto&) { earlier.startedAt = before; }, 0},
             {"a start only before", [](auto&, auto& later) { later.startedAt.reset(); }, 0},
             {"a start only now", [](auto& earlier, auto&) { earlier.startedAt.reset(); }, 0},
             {"no start at all",
              [](auto& earlier, auto& later) { earlier.startedAt = later.startedAt = std::nullopt; }, 1},
             {"a time that ran back",
              [](auto& earlier, auto&) { earlier.cumulativeCPUTimeNanoseconds = 201; }, 0},
             {"no time used", [](auto& earlier, auto&) { earlier.cumulativeCPUTimeNanoseconds = 200; }, 0},
             {"one instant", [](auto& earlier, auto& later) { earlier.measuredAt = later.measuredAt; }, 0},
             {"a clock set back",
              [](auto& earlier, auto& later) { earlier.measuredAt = later.measuredAt + 1ns; }, 0},
         })) {
        ProcessCPUReading earlier = worker(1, "a", 0).reading;
        earlier.cumulativeCPUTimeNanoseconds = 100;
        ProcessCPUReading later = earlier;
        later.cumulativeCPUTimeNanoseconds = 200;
        later.measuredAt = now;
        change(earlier, later);
        const ProcessOffenderConfiguration configuration(
            {.excludedProcessIdentifier = 99, .excludedBundleIdentifier = "app.own"});
        const PreviousReadingsByPID previous = readingsByPID({&earlier, 1});
        const auto result =
            ProcessOffenderAggregator{
                .configuration = configuration,
                .previousReadingsByPID = previous,
                .currentReadings = {&later, 1},
                .existingHistoryByOffenderID = {},
                .now = now,
                .comparison = british(),
                .system = OperatingSystem::mac,
            }
                .aggregate();
        EXPECT_EQ(result.visibleOffenders.size(), offenders) << why;
    }
}

TEST(ProcessOffenderAggregator, NamesGroups) {
    using enum OperatingSystem;

    struct Case {
        Worker of;
        std::string_view id;
        std::string_view displayName;
        bool isApplication;
        OperatingSystem system = mac;
    };

    for (const auto& [of, id, displayName, isApplication, system] : std::to_array<Case>({
             {inBundle(worker(1, "Foo", 10), "Org.Foo", "Foo App"), "bundle:Org.Foo", "Foo App", true},
             {inBundle(worker(1, "Foo", 10), "Org.Foo"), "bundle:Org.Foo", "Foo", true},
             {inBundle(worker(1, "Foo", 10), "", "Foo App"), "bundle:", "Foo App", true},
             {inBundle(worker(1, "x", 10), "com.google.Chrome"), "bundle:com.google.Chrome", "x", true},
             {inBundle(ofSystem(worker(1, "Foo", 10)), "Org.Foo", "Foo App"), "bundle:Org.Foo", "Foo App",
              true},
             {worker(1, "Vim", 10), "process:vim", "Vim", false},
             {worker(1, "Node", 10), "process:node", "Node", false},
             {worker(1, "\u00c4rger", 10), "process:\u00e4rger", "\u00c4rger", false},
             {ofSystem(worker(1, "kworker/0:1", 10)), "system", "System", false},
             {inBundle(worker(1, "MDS", 10), "org.foo", "Foo"), "background:spotlight-indexing",
              "Spotlight indexing", false},
             {worker(1, "baloo_file", 10), "background:spotlight-indexing", "File indexing", false, gnuLinux},
             {worker(1, "Installd", 10), "background:software-update", "Software Update", false},
             {ofSystem(worker(1, "packagekitd", 10)), "background:software-update", "Software Update", false,
              gnuLinux},
             {ofSystem(worker(1, "XProtectService", 10)), "background:security", "Security checks", false},
             {worker(1, "clamd", 10), "background:security", "Security checks", false, gnuLinux},
         })) {
        const auto result = aggregate({of}, {}, {}, system);
        ASSERT_EQ(result.visibleOffenders.size(), 1U) << id;
        const ProcessOffender& offender = result.visibleOffenders.front();
        EXPECT_EQ(offender.id, id);
        EXPECT_EQ(offender.displayName, displayName);
        EXPECT_EQ(offender.bundleIdentifier, isApplication ? of.reading.appBundleIdentifier : std::nullopt)
            << id;
        EXPECT_EQ(offender.appBundlePath, isApplication ? of.reading.appBundlePath : std::nullopt) << id;
    }
}

TEST(ProcessOffenderAggregator, OffersToQuitApplicationsOnly) {
    struct Case {
        std::vector<Worker> workers;
        bool canTerminate;
    };

    for (const auto& [workers, canTerminate] : std::to_array<Case>({
             {{inBundle(worker(1, "a", 10), "org.foo")}, true},
             {{inBundle(worker(1, "a", 10), "org.foo"), inBundle(ofSystem(worker(2, "b", 9)), "org.foo")},
              true},
             {{inBundle(worker(1, "a", 10), "org.foo"), inBundle(ofSystem(worker(2, "b", 11)), "org.foo")},
              false},
             {{worker(1, "a", 10)}, false},
             {{ofSystem(worker(1, "a", 10))}, false},
             {{inBundle(worker(1, "mds", 10), "org.foo")}, false},
             {{inBundle(worker(1, "trustd", 10), "org.foo")}, false},
         })) {
        const auto result = aggregate(workers);
        EXPECT_EQ(result.visibleOffenders.at(0).canTerminateApplication, canTerminate)
            << result.visibleOffenders.at(0).id << " of " << workers.size();
    }
}

TEST(ProcessOffenderAggregator, SumsUpAGroupBusiestFirst) {
    std::vector<Worker> workers;
    workers.reserve(30);
    for (std::int32_t index = 0; index < 30; ++index) {
        workers.push_back(
            inBundle(worker(100 + index, "helper", static_cast<std::uint64_t>(index % 15) + 1), "org.web"));
    }
    workers[3].reading.startedAt = before - 5h;
    workers[4].reading.startedAt.reset();
    workers[29].reading.name = "Alpha";
    workers[29].reading.parentProcessIdentifier = 55;
    const auto offender = aggregate(workers).visibleOffenders.at(0);
    EXPECT_EQ(offender.processCount, 30);
    EXPECT_EQ(offender.representativeProcessIdentifier, 129); // as busy as 114, its name comes first
    EXPECT_EQ(offender.startedAt, before - 5h);
    ASSERT_EQ(offender.children.size(), 12U);
    EXPECT_EQ(offender.children[0], ProcessOffenderChild(129, 55, "Alpha", 1.5, false, before - 1h));
    EXPECT_EQ(offender.children[1].processIdentifier, 114);
    EXPECT_EQ(offender.children[2].processIdentifier, 113); // as busy and named as 128, but listed first
    EXPECT_EQ(offender.children[3].processIdentifier, 128);
}

/// The first three shares are such that another order of addition gives another last digit.
TEST(ProcessOffenderAggregator, AddsSharesInTheOrderOfTheirSize) {
    const auto result =
        aggregate({worker(1, "a", 100), worker(2, "a", 200), worker(3, "a", 700)}, {.processorCount = 3});
    const auto share = [](double nanoseconds) { return nanoseconds / (1.0 * 1'000'000'000.0) * 100.0 / 3.0; };
    EXPECT_EQ(result.visibleOffenders.at(0).cpuPercent, 0 + share(7e8) + share(2e8) + share(1e8));
    ASSERT_NE(share(7e8) + share(2e8) + share(1e8), share(1e8) + share(2e8) + share(7e8));
}

TEST(ProcessOffenderAggregator, KeepsTheFirstDeltasNameAndCategory) {
    const auto result = aggregate({inBundle(worker(1, "Helper", 1), "org.foo", "First"),
                                   inBundle(worker(2, "node", 50), "org.foo", "Second")});
    ASSERT_EQ(result.visibleOffenders.size(), 1U);
    EXPECT_EQ(result.visibleOffenders[0].displayName, "First");
    EXPECT_EQ(result.visibleOffenders[0].category, ProcessOffenderCategory::userApplication);
    EXPECT_EQ(result.visibleOffenders[0].representativeProcessIdentifier, 2);
}

TEST(ProcessOffenderAggregator, OrdersEqualSharesByNameWhateverTheCase) {
    EXPECT_THAT(namesOf(aggregate({worker(1, "beta", 10), worker(2, "Alpha", 10), worker(3, "GAMMA", 10),
                                   worker(4, "delta", 20), inBundle(worker(5, "x", 10), "b", "BETA")})),
                ElementsAre("delta", "Alpha", "beta", "BETA", "GAMMA"));
}

TEST(ProcessOffenderAggregator, TellsIndexingByItsShareAlsoWhenHidden) {
    std::vector<Worker> workers;
    workers.reserve(10);
    for (std::int32_t index = 0; index < 10; ++index) {
        workers.push_back(worker(index + 1, "mdworker_shared", 1));
    }
    const auto spotlight = aggregate(workers).visibleOffenders.at(0);
    EXPECT_EQ(spotlight.processCount, 10);
    EXPECT_NEAR(spotlight.cpuPercent, 1, 1e-9);

    workers = {worker(1, "mds", 10), worker(2, "busy", 20)};
    EXPECT_TRUE(aggregate(workers, {.maximumOffenderCount = 1}).isIndexingOrSetupLikely);
    EXPECT_TRUE(aggregate(workers, {.indexingCPUThresholdPercent = 1.0}).isIndexingOrSetupLikely);
    EXPECT_FALSE(aggregate(workers, {.indexingCPUThresholdPercent = 1.001}).isIndexingOrSetupLikely);
    EXPECT_FALSE(aggregate({worker(2, "busy", 20)}).isIndexingOrSetupLikely);
}

TEST(ProcessOffenderAggregator, KeepsHistoriesOfGroupsThatWorkedAndOfThisInstant) {
    const auto point = [](std::chrono::seconds ago, double percent) {
        return ProcessOffenderHistoryPoint(now - ago, percent);
    };
    const auto result = aggregate({worker(1, "seen", 30), worker(2, "hidden", 10)},
                                  {.maximumOffenderCount = 1, .maximumHistoryCount = 3},
                                  {{"process:seen", {point(4s, 4), point(3s, 3), point(2s, 2), point(1s, 1)}},
                                   {"process:gone", {point(1s, 1)}},
                                   {"process:empty", {}},
                                   {"process:twice", {point(0s, 7)}}});
    EXPECT_EQ(result.historyByOffenderID,
              (HistoryByOffenderID{{"process:seen", {point(2s, 2), point(1s, 1), point(0s, 3)}},
                                   {"process:hidden", {point(0s, 1)}},
                                   {"process:twice", {point(0s, 7)}}}));
    EXPECT_EQ(result.visibleOffenders.at(0).history, result.historyByOffenderID.at("process:seen"));
}

TEST(ProcessOffenderAggregator, ShowsFiveToEightAndThePinnedOneByDefault) {
    struct Case {
        int aboveThreshold;
        int below;
        std::optional<std::string> pinned;
        std::size_t visible;
        std::string last;
    };

    for (const auto& [aboveThreshold, below, pinned, visible, last] : std::to_array<Case>({
             {3, 7, std::nullopt, 5, "p05"},
             {10, 0, std::nullopt, 8, "p08"},
             {10, 0, "process:p10", 8, "p10"},
             {10, 0, "process:p08", 8, "p08"},
             {10, 0, "process:gone", 8, "p08"},
             {3, 7, "process:p09", 6, "p09"},
             {1, 0, std::nullopt, 1, "p01"},
         })) {
        std::vector<Worker> workers;
        for (int rank = 1; rank <= aboveThreshold + below; ++rank) {
            const auto name = std::string(rank < 10 ? "p0" : "p") + std::to_string(rank);
            workers.push_back(worker(
                rank, name, static_cast<std::uint64_t>(rank <= aboveThreshold ? 100 - rank : 11 - rank)));
            if (rank > aboveThreshold) { // below 0.05 % on 100 processors
                workers.back().milliseconds = static_cast<std::uint64_t>(49 - rank);
            }
        }
        const auto names = namesOf(aggregate(workers, {.processorCount = 100, .pinnedOffenderID = pinned}));
        EXPECT_EQ(names.size(), visible) << aboveThreshold;
        EXPECT_EQ(names.back(), last) << aboveThreshold;
    }
}

/// The selection step by step, on all offenders in display order.
std::vector<std::string> plainSelection(const std::vector<ProcessOffender>& sorted,
                                        const ProcessOffenderConfiguration& configuration) {
    std::vector<const ProcessOffender*> candidates;
    for (const ProcessOffender& offender : sorted) {
        if (offender.cpuPercent >= configuration.minimumVisibleCPUPercent) {
            candidates.push_back(&offender);
        }
    }
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        if (std::cmp_less(index, configuration.preferredMinimumOffenderCount)) {
            candidates.push_back(&sorted[index]);
        }
    }
    std::set<std::string> seen;
    std::erase_if(candidates, [&seen](const auto* offender) { return !seen.insert(offender->id).second; });
    std::ranges::sort(candidates); // addresses ascend in display order
    while (std::cmp_greater(candidates.size(), configuration.maximumOffenderCount)) {
        candidates.pop_back();
    }
    std::vector<std::string> ids;
    ids.reserve(candidates.size() + 1);
    for (const auto* offender : candidates) {
        ids.push_back(offender->id);
    }
    const auto pinned = std::ranges::find(sorted, configuration.pinnedOffenderID, &ProcessOffender::id);
    if (pinned != sorted.end() && std::ranges::find(ids, pinned->id) == ids.end()) {
        if (std::cmp_equal(ids.size(), configuration.maximumOffenderCount)) {
            ids.pop_back();
        }
        ids.push_back(pinned->id);
    }
    return ids;
}

TEST(ProcessOffenderAggregator, SelectsAsThePlainRulesDo) {
    std::mt19937 random(7);
    const auto upTo = [&random](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    for (int round = 0; round < 300; ++round) {
        std::vector<Worker> workers;
        for (int left = upTo(30); left > 0; --left) {
            workers.push_back(
                worker(left, "p" + std::to_string(upTo(20)), static_cast<std::uint64_t>(upTo(5))));
        }
        ProcessOffenderConfiguration::Fields fields{.minimumVisibleCPUPercent = upTo(6) / 10.0,
                                                    .preferredMinimumOffenderCount = upTo(12),
                                                    .maximumOffenderCount = upTo(12),
                                                    .pinnedOffenderID =
                                                        "process:p" + std::to_string(upTo(22))};
        if (round % 5 == 0) {
            fields.maximumOffenderCount = ProcessOffenderConfiguration::noMaximum;
            fields.preferredMinimumOffenderCount = ProcessOffenderConfiguration::noMaximum;
        }
        const auto all =
            aggregate(workers, {.minimumVisibleCPUPercent = 0,
                                .maximumOffenderCount = ProcessOffenderConfiguration::noMaximum});
        std::vector<std::string> ids;
        for (const ProcessOffender& offender : aggregate(workers, fields).visibleOffenders) {
            ids.push_back(offender.id);
        }
        EXPECT_EQ(ids, plainSelection(all.visibleOffenders, ProcessOffenderConfiguration(fields))) << round;
    }
}

TEST(ProcessOffenderAggregator, HasNothingToSayAboutNobody) {
    EXPECT_THAT(aggregate({}).visibleOffenders, IsEmpty());
    const auto idle = aggregate({worker(1, "mds", 0)}, {.indexingCPUThresholdPercent = 0}, {{"system", {}}});
    EXPECT_THAT(idle.visibleOffenders, IsEmpty());
    EXPECT_THAT(idle.historyByOffenderID, IsEmpty());
    EXPECT_FALSE(idle.isIndexingOrSetupLikely);
}

TEST(ProcessOffenderAggregator, StaysFiniteAtTheLimits) {
    ProcessCPUReading earlier = worker(1, "a", 0).reading;
    earlier.cumulativeCPUTimeNanoseconds = 0;
    ProcessCPUReading later = earlier;
    later.cumulativeCPUTimeNanoseconds = std::numeric_limits<std::uint64_t>::max();
    later.measuredAt = before + 1ns;
    const ProcessOffenderConfiguration configuration({});
    const PreviousReadingsByPID previous = readingsByPID({&earlier, 1});
    const auto result =
        ProcessOffenderAggregator{
            .configuration = configuration,
            .previousReadingsByPID = previous,
            .currentReadings = {&later, 1},
            .existingHistoryByOffenderID = {},
            .now = now,
            .comparison = british(),
            .system = OperatingSystem::mac,
        }
            .aggregate();
    EXPECT_NEAR(result.visibleOffenders.at(0).cpuPercent, 1.8446744073709552e21, 1e12);
}

} // namespace
} // namespace cindertop
