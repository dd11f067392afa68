#include "persistence/ThermalHistory.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

struct Sanitized {
    std::string given;
    std::optional<std::string> kept;
};

TEST(HistorySanitizers, KeepTheNameOfAnOffender) {
    const std::vector<Sanitized> labels{{" /Applications/Foo.app/Contents/MacOS/Foo ", "Foo"},
                                        {"C:\\Programs\\Foo", "Foo"},
                                        {"helper: Foo", " Foo"},
                                        {"Foo", "Foo"},
                                        {"Foo/", ""},
                                        {"", std::nullopt},
                                        {" \t\n\u00A0", std::nullopt},
                                        {repeated("x", 60), repeated("x", 48)},
                                        {"/" + repeated("Ж", 49), repeated("Ж", 48)},
                                        {repeated("👩‍💻", 49), repeated("👩‍💻", 48)}};
    for (const auto& [label, kept] : labels) {
        EXPECT_EQ(sanitizedLabel(label), kept) << label;
    }
}

TEST(HistorySanitizers, RejectWhatIsNoIdentifier) {
    const std::vector<Sanitized> identifiers{{" com.example.App_2-x\n", "com.example.App_2-x"},
                                             {"com.example app", std::nullopt},
                                             {"com/example", std::nullopt},
                                             {"com.exämple", std::nullopt},
                                             {"  ", std::nullopt},
                                             {repeated("a", 200), repeated("a", 128)},
                                             {repeated("a", 128) + "/", std::nullopt}};
    for (const auto& [identifier, kept] : identifiers) {
        EXPECT_EQ(sanitizedBundleIdentifier(identifier), kept) << identifier;
    }
}

TEST(ThermalHistorySample, RepairsItsNumbers) {
    const auto made = [](std::int64_t score, std::optional<double> percent) {
        return ThermalHistorySample(unixEpoch, ThermalLevel::fair, score, percent, -300, "a/b", "c d", {});
    };
    for (const auto& [score, kept] : std::to_array<std::pair<std::int64_t, std::int64_t>>(
             {{140, 100}, {-3, 0}, {55, 55}, {std::numeric_limits<std::int64_t>::min(), 0}})) {
        EXPECT_EQ(made(score, {}).score, kept);
    }
    for (const auto& [percent, kept] : std::to_array<std::pair<double, double>>(
             {{250, 100}, {-0.5, 0}, {33.5, 33.5}, {notANumber, 0}, {infinite, 100}, {-infinite, 0}})) {
        EXPECT_EQ(made(0, percent).globalCPUPercent, kept);
    }
    EXPECT_EQ(made(0, {}).globalCPUPercent, std::nullopt);
    EXPECT_EQ(made(0, {}).temperatureCelsius, -300) << "kept as given";
    EXPECT_EQ(made(0, {}).topOffenderLabel, "b");
    EXPECT_EQ(made(0, {}).topOffenderBundleIdentifier, std::nullopt);
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
    summary.topOffenderCounts = {{"Ärger", 1}, {"Zorn", 1}};
    EXPECT_EQ(summary.leadingOffenderLabel(LocalizedComparison("de_DE")), "Ärger");
    EXPECT_EQ(summary.leadingOffenderLabel(LocalizedComparison("sv_SE")), "Zorn");
}

} // namespace
} // namespace cindertop
