#include "app/HistoryJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>

namespace cindertop {
namespace {

constexpr Instant start{std::chrono::seconds{1'800'000'000}};

TEST(HistoryJson, WritesEveryFieldInRecordOrder) {
    const HistoryJson json(start);
    const ThermalMonitoringSnapshot snapshot{
        .samples = {{start, ThermalLevel::normal, 3, {}, {}, {}, {}, {}},
                    {start + std::chrono::milliseconds(2500),
                     ThermalLevel::serious,
                     78,
                     41.5,
                     -3.25,
                     "Browser",
                     "org.example.browser",
                     {.isProbableClamshell = true, .isIndexingOrSetupLikely = true}}},
        .todaySummary = {"2027-01-15",
                         ThermalLevelDurations(10, 2.5, 3, 4),
                         2,
                         1,
                         {{"System", 1}, {"Browser", 12}},
                         ThermalDailySummary::OffenderIdentifiers{{"Browser", "org.example.browser"}},
                         start + std::chrono::seconds(4)},
        .measuredAt = start};
    EXPECT_EQ(
        compactText(json.snapshot(snapshot)),
        R"({"samples":[{"measuredAt":0.0,"level":"normal","score":3,"globalCPUPercent":null,)"
        R"("temperatureCelsius":null,"topOffenderLabel":null,"topOffenderBundleIdentifier":null,)"
        R"("contextFlags":{"hasExternalDisplay":false,"isProbableClamshell":false,)"
        R"("isExternalPowerConnected":false,"isLowPowerModeEnabled":false,"isSustainedPressure":false,)"
        R"("isIndexingOrSetupLikely":false}},{"measuredAt":2.5,"level":"serious","score":78,)"
        R"("globalCPUPercent":41.5,"temperatureCelsius":-3.25,"topOffenderLabel":"Browser",)"
        R"("topOffenderBundleIdentifier":"org.example.browser","contextFlags":)"
        R"({"hasExternalDisplay":false,"isProbableClamshell":true,"isExternalPowerConnected":false,)"
        R"("isLowPowerModeEnabled":false,"isSustainedPressure":false,"isIndexingOrSetupLikely":true}}],)"
        R"("todaySummary":{"dayIdentifier":"2027-01-15","levelDurations":{"normal":10.0,"fair":2.5,)"
        R"("serious":3.0,"critical":4.0},"throttlingEpisodeCount":2,"criticalEpisodeCount":1,)"
        R"("topOffenderCounts":{"Browser":12,"System":1},"topOffenderBundleIdentifiers":)"
        R"({"Browser":"org.example.browser"},"updatedAt":4.0}})");
}

} // namespace
} // namespace cindertop
