#include "persistence/ThermalHistory.h"
#include "report/MachineReport.h"
#include "report/Snapshots.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <limits>
#include <string>
#include <utility>

namespace cindertop {
namespace {

TEST(MachineJson, WritesEveryFieldInRecordOrder) {
    const auto laptop = hotLaptop();
    EXPECT_EQ(compactText(encodeJson(laptop.score)),
              R"({"score":78,"level":"serious","effectIntensity":0.45,"shouldTriggerEffects":true,)"
              R"("recommendedSamplingHz":5.0,"temperatureCelsius":96.5,"dataSource":"mixed",)"
              R"("systemState":"serious","pressureLevel":"heavy","trend":"rising"})");
    EXPECT_EQ(compactText(encodeJson(laptop.context)),
              R"({"displays":{"isAvailable":true,"activeDisplayCount":1,"builtInDisplayCount":0,)"
              R"("externalDisplayCount":1},"power":{"isAvailable":true,"source":"batteryPower",)"
              R"("batteryLevelPercent":57,"isCharging":false,"isFullyCharged":false,)"
              R"("isLowPowerModeEnabled":true,"batteryTemperatureCelsius":36.25,)"
              R"("batteryTemperatureLevel":"warm"},"sustainedPressure":{"isSustained":true,)"
              R"("activeDuration":125.5,"currentLevel":"serious","thresholdLevel":"serious"}})");
    auto desktop = laptop.context;
    desktop.displays.canFold = false;
    EXPECT_EQ(compactText(encodeJson(desktop)["displays"]),
              R"({"isAvailable":true,"activeDisplayCount":1,"builtInDisplayCount":0,)"
              R"("externalDisplayCount":1,"canFold":false})");
    EXPECT_EQ(
        compactText(encodeJson(laptop.offenders, snapshotStart)),
        R"({"state":"ready","isIndexingOrSetupLikely":true,"measuredAt":12.345,"offenders":[)"
        R"({"id":"bundle:org.example.browser","displayName":"Browser",)"
        R"("bundleIdentifier":"org.example.browser",)"
        R"("appBundlePath":"/usr/share/applications/org.example.browser.desktop",)"
        R"("representativeProcessIdentifier":4711,"processCount":6,"cpuPercent":33.25,)"
        R"("category":"browserWorkload","canTerminateApplication":true,"children":[)"
        R"({"processIdentifier":4711,"parentProcessIdentifier":1,"name":"browser","cpuPercent":30.5,)"
        R"("isSystemProcess":false,"startedAt":-1.5},)"
        R"({"processIdentifier":4712,"parentProcessIdentifier":4711,"name":"tab","cpuPercent":2.75,)"
        R"("isSystemProcess":false,"startedAt":null}],"history":[[9.345,10.0],[12.345,33.25]],)"
        R"("startedAt":-1.5},)"
        R"({"id":"system","displayName":"System","bundleIdentifier":null,"appBundlePath":null,)"
        R"("representativeProcessIdentifier":77,"processCount":1,"cpuPercent":0.01,"category":"system",)"
        R"("canTerminateApplication":false,"children":[{"processIdentifier":77,)"
        R"("parentProcessIdentifier":2,"name":"kworker/0:1","cpuPercent":0.01,"isSystemProcess":true,)"
        R"("startedAt":null}],"history":[[12.345,0.01]],"startedAt":null}]})");
}

TEST(MachineJson, WritesWhatIsMissingAsNull) {
    EXPECT_EQ(compactText(machineJson({unknownMachine()})),
              R"({"score":{"score":0,"level":"normal","effectIntensity":0.0,)"
              R"("shouldTriggerEffects":false,"recommendedSamplingHz":0.5,"temperatureCelsius":null,)"
              R"("dataSource":"official","systemState":"unavailable","pressureLevel":"unavailable",)"
              R"("trend":"stable"},"context":{"displays":{"isAvailable":false,"activeDisplayCount":0,)"
              R"("builtInDisplayCount":0,"externalDisplayCount":0},"power":{"isAvailable":false,)"
              R"("source":"unknown","batteryLevelPercent":null,"isCharging":null,"isFullyCharged":null,)"
              R"("isLowPowerModeEnabled":false,"batteryTemperatureCelsius":null,)"
              R"("batteryTemperatureLevel":null},"sustainedPressure":{"isSustained":false,)"
              R"("activeDuration":0.0,"currentLevel":null,"thresholdLevel":"serious"}},)"
              R"("offenders":{"state":"unavailable","isIndexingOrSetupLikely":false,"measuredAt":null,)"
              R"("offenders":[]},"recommendation":null,"presentation":null,"sources":[],)"
              R"("measuredAt":1800000000.0,"cpuPercent":null,"temperatures":[],)"
              R"("scoreSteps":null})");
}

TEST(MachineJson, WritesWhatALiveMachineHasBesides) {
    const auto json = machineJson({hotLaptop()});
    EXPECT_EQ(json["measuredAt"], 1'800'000'012.345);
    EXPECT_EQ(json["offenders"]["measuredAt"], 1'800'000'012.345);
    EXPECT_EQ(json["cpuPercent"], 41.0);
    EXPECT_EQ(compactText(json["temperatures"][1]),
              R"({"id":"CPU Package 0","label":"CPU Package 0","celsius":96.5,"kind":"cpu"})");
    EXPECT_EQ(compactText(json["sources"][1]),
              R"({"name":"lid","available":false,"reason":"no lid switch"})");
}

TEST(MachineJson, RepairsTextAndNumbersThatAreNone) {
    EXPECT_EQ(compactText(Json{{"name", "a\xFF\x1b\n"}}), "{\"name\":\"a\xEF\xBF\xBD\\u001b\\n\"}");
    EXPECT_EQ(compactText(Json{{"value", std::numeric_limits<double>::quiet_NaN()}}), R"({"value":null})");
}

TEST(HistoryJson, WritesEveryFieldInRecordOrder) {
    constexpr auto start = snapshotStart;
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
        compactText(encodeJson(snapshot, start)),
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

MachineAdvice advice() {
    using enum CinderInsightKind;
    using enum CinderInsightConfidence;
    return {.recommendation = {.primaryInsight = CinderInsight{topCpuOffender, high, "Browser", "Close tabs.",
                                                               "bundle:org.example.browser"},
                               .secondaryInsights = {{chargingAddsHeat, low, "Charging", "Unplug it.", {}}}},
            .presentation = {.status = ThermalAssistantPresentation::Status::serious,
                             .trendLabel = "Rising",
                             .menuBarTemperatureText = "97°C",
                             .popoverTemperatureText = {},
                             .actionMessage = "Close tabs."}};
}

std::string hotText() {
    return compactText(machineJson({hotLaptop(), advice()}));
}

/// A double holds today's instants to 0.2 µs only, so it is the texts that have to be equal.
TEST(MachineJson, ReadsEveryFieldBack) {
    auto desktop = hotLaptop();
    desktop.context.displays.canFold = false;
    desktop.context.power.batteryWatts = -11.34;
    desktop.context.hardware = {
        .meters = {.machineWatts = 12.4,
                   .chips = {{.name = "Graphics chip", .watts = 3.5}},
                   .fans = {{.name = "Fan", .revolutionsPerMinute = 2450}}},
        .processor = {.clock = ClockLimit{.allowedHertz = 1'200'000'000, .possibleHertz = 3'400'000'000},
                      .isOfSomeCores = true,
                      .heldBy = HoldReason::heat}};
    desktop.offenders.offenders[0].graphicsPercent = 12.5;
    desktop.offenders.offenders[0].children[1].graphicsPercent = 0;
    for (const auto& text :
         {hotText(), compactText(machineJson({hotLaptop()})), compactText(machineJson({desktop})),
          compactText(machineJson({unknownMachine(), MachineAdvice{}}))}) {
        const auto report = machineReport(text);
        ASSERT_TRUE(report) << text;
        EXPECT_EQ(compactText(machineJson(*report)), text);
    }
}

TEST(MachineJson, RefusesWhatNoProgramOfOursWrites) {
    const auto text = hotText();
    for (const auto& [from, to] : std::to_array<std::pair<std::string, std::string>>({
             {text, ""},
             {text, "null"},
             {text, text.substr(0, text.size() - 1)},
             {R"("score":78)", R"("score":"78")"},
             {R"("score":78,)", ""},
             {R"("score":78,)", R"("score":78.5,)"},
             {R"("score":78,)", R"("score":3000000000,)"},
             {R"("score":78,)", R"("score":-1e300,)"},
             {R"("level":"serious")", R"("level":"hot")"},
             {R"("shouldTriggerEffects":true)", R"("shouldTriggerEffects":"yes")"},
             {R"("children":[)", R"("children":null,"former":[)"},
             {R"("history":[[)", R"("history":[[0],[)"},
             {R"("displayName":"Browser")", R"("displayName":null)"},
             {R"("startedAt":1799999998.5)", R"("startedAt":1e300)"},
             {R"("kind":"topCpuOffender")", R"("kind":"horoscope")"},
             {R"("celsius":61.0)", R"("celsius":null)"},
             {R"("presentation":{)", R"("presentation":null,"former":{)"},
             {R"("score":{)", R"("score":null,"former":{)"}, // nothing is measured
         })) {
        auto changed = text;
        ASSERT_NE(changed.find(from), std::string::npos) << from;
        changed.replace(changed.find(from), from.size(), to);
        EXPECT_FALSE(machineReport(changed)) << to;
    }
}

TEST(AgentCondition, IsReadBehindTheMachine) {
    EXPECT_EQ(agentCondition(R"({"score": null, "isPaused": true, "termsAccepted": false})"),
              (AgentCondition{.isPaused = true, .areTermsAccepted = false}));
    for (const auto* const text : {"", "[]", "{}", R"({"isPaused": 1, "termsAccepted": true})"}) {
        EXPECT_EQ(agentCondition(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace cindertop
