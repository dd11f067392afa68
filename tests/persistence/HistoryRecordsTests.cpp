#include "persistence/HistorySanitizers.h"
#include "persistence/ThermalMonitoringSnapshot.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace cindertop {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

std::string repeated(std::string_view text, int times) {
    std::string result;
    while (times-- > 0) {
        result += text;
    }
    return result;
}

TEST(HistorySanitizers, KeepTheNameOfAnOffender) {
    struct Case {
        std::string label;
        std::optional<std::string> kept;
    };

    for (const auto& [label, kept] : {
             Case{" /Applications/Foo.app/Contents/MacOS/Foo ", "Foo"},
             {"C:\\Programs\\Foo", "Foo"},
             {"helper: Foo", " Foo"}, // trimmed before it is split
             {"Foo", "Foo"},
             {"Foo/", ""},
             {"/", ""},
             {"", std::nullopt},
             {" \t\n\u00A0", std::nullopt},
             {repeated("x", 60), repeated("x", 48)},
             {repeated("x", 48), repeated("x", 48)},
             {"/" + repeated("Ж", 49), repeated("Ж", 48)},
             {repeated("e\u0301", 50), repeated("e\u0301", 48)},
             {repeated("👩‍💻", 49), repeated("👩‍💻", 48)},
         }) {
        EXPECT_EQ(sanitizedLabel(label), kept) << label;
    }
}

TEST(HistorySanitizers, RejectWhatIsNoIdentifier) {
    struct Case {
        std::string identifier;
        std::optional<std::string> kept;
    };

    for (const auto& [identifier, kept] : {
             Case{"com.example.app", "com.example.app"},
             {" com.example.App_2-x\n", "com.example.App_2-x"},
             {"com.example app", std::nullopt},
             {"com/example", std::nullopt},
             {"com.exämple", std::nullopt},
             {"", std::nullopt},
             {"  ", std::nullopt},
             {repeated("a", 200), repeated("a", 128)},
             {repeated("a", 128) + "/", std::nullopt},
         }) {
        EXPECT_EQ(sanitizedBundleIdentifier(identifier), kept) << identifier;
    }
}

TEST(ThermalHistorySample, RepairsItsNumbers) {
    struct Case {
        std::int64_t score;
        std::int64_t keptScore;
        std::optional<double> percent;
        std::optional<double> keptPercent;
    };

    for (const auto& [score, keptScore, percent, keptPercent] : std::to_array<Case>({
             {140, 100, 250.0, 100.0},
             {-3, 0, -0.5, 0.0},
             {55, 55, 33.5, 33.5},
             {100, 100, notANumber, 0.0},
             {0, 0, infinite, 100.0},
             {std::numeric_limits<std::int64_t>::min(), 0, -infinite, 0.0},
             {1, 1, std::nullopt, std::nullopt},
         })) {
        const ThermalHistorySample sample(unixEpoch, ThermalLevel::fair, score, percent, -300, "a/b", "c d",
                                          {});
        EXPECT_EQ(sample.score, keptScore);
        EXPECT_EQ(sample.globalCPUPercent, keptPercent);
        EXPECT_EQ(sample.temperatureCelsius, -300) << "kept as given";
        EXPECT_EQ(sample.topOffenderLabel, "b");
        EXPECT_EQ(sample.topOffenderBundleIdentifier, std::nullopt);
    }
}

TEST(ThermalDailySummary, RepairsItsNumbers) {
    const ThermalLevelDurations durations(-1, notANumber, 2.5, 4);
    EXPECT_EQ(durations, ThermalLevelDurations(0, 0, 2.5, 4));
    EXPECT_EQ(durations.totalDuration(), 6.5);
    const ThermalDailySummary summary("2025-03-05", durations, -1, -2, {}, {}, unixEpoch);
    EXPECT_EQ(summary.throttlingEpisodeCount, 0);
    EXPECT_EQ(summary.criticalEpisodeCount, 0);
}

TEST(ThermalDailySummary, KnowsTheOffenderThatLeads) {
    const LocalizedComparison comparison("en_GB");
    auto summary = ThermalDailySummary::fresh("2025-03-05", unixEpoch);
    EXPECT_EQ(summary.leadingOffenderLabel(comparison), std::nullopt);
    EXPECT_EQ(summary.leadingOffenderBundleIdentifier(comparison), std::nullopt);
    summary.topOffenderCounts = {{"Zebra", 3}, {"apple", 3}, {"Banana", 3}, {"most", 2}};
    summary.topOffenderBundleIdentifiers = {{{"Zebra", "org.zebra"}, {"Banana", "org.banana"}}};
    EXPECT_EQ(summary.leadingOffenderLabel(comparison), "apple");
    EXPECT_EQ(summary.leadingOffenderBundleIdentifier(comparison), std::nullopt);
    summary.topOffenderCounts["Zebra"] = 4;
    EXPECT_EQ(summary.leadingOffenderBundleIdentifier(comparison), "org.zebra");
    summary.topOffenderBundleIdentifiers.reset();
    EXPECT_EQ(summary.leadingOffenderBundleIdentifier(comparison), std::nullopt);
    summary.topOffenderCounts = {{"Ärger", 1}, {"Zorn", 1}};
    EXPECT_EQ(summary.leadingOffenderLabel(LocalizedComparison("de_DE")), "Ärger");
    EXPECT_EQ(summary.leadingOffenderLabel(LocalizedComparison("sv_SE")), "Zorn");
}

TEST(ThermalMonitoringSnapshot, IsEmptyAtTheEpoch) {
    const auto& empty = ThermalMonitoringSnapshot::empty();
    EXPECT_TRUE(empty.samples.empty());
    EXPECT_EQ(empty.measuredAt, unixEpoch);
    EXPECT_EQ(empty.todaySummary, ThermalDailySummary("unknown", ThermalLevelDurations(), 0, 0, {},
                                                      ThermalDailySummary::OffenderIdentifiers{}, unixEpoch));
}

} // namespace
} // namespace cindertop
