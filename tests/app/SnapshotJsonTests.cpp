#include "app/MachineJson.h"
#include "app/SnapshotJson.h"
#include "app/Snapshots.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace cindertop {
namespace {

TEST(SnapshotJson, WritesEveryFieldInRecordOrder) {
    const auto laptop = hotLaptop();
    const SnapshotJson json(snapshotStart);
    EXPECT_EQ(compactText(SnapshotJson::score(laptop.score)),
              R"({"score":78,"level":"serious","effectIntensity":0.45,"shouldTriggerEffects":true,)"
              R"("recommendedSamplingHz":5.0,"temperatureCelsius":96.5,"dataSource":"mixed",)"
              R"("systemState":"serious","pressureLevel":"heavy","trend":"rising"})");
    EXPECT_EQ(compactText(SnapshotJson::context(laptop.context)),
              R"({"displays":{"isAvailable":true,"activeDisplayCount":1,"builtInDisplayCount":0,)"
              R"("externalDisplayCount":1},"power":{"isAvailable":true,"source":"batteryPower",)"
              R"("batteryLevelPercent":57,"isCharging":false,"isFullyCharged":false,)"
              R"("isLowPowerModeEnabled":true,"batteryTemperatureCelsius":36.25,)"
              R"("batteryTemperatureLevel":"warm"},"sustainedPressure":{"isSustained":true,)"
              R"("activeDuration":125.5,"currentLevel":"serious","thresholdLevel":"serious"}})");
    auto desktop = laptop.context;
    desktop.displays.canFold = false;
    EXPECT_EQ(compactText(SnapshotJson::context(desktop)["displays"]),
              R"({"isAvailable":true,"activeDisplayCount":1,"builtInDisplayCount":0,)"
              R"("externalDisplayCount":1,"canFold":false})");
    EXPECT_EQ(
        compactText(json.offenders(laptop.offenders)),
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

TEST(SnapshotJson, WritesWhatIsMissingAsNull) {
    EXPECT_EQ(compactText(machineJson(unknownMachine())),
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
              R"("measuredAt":1800000000.0,"cpuPercent":null,"temperatures":[]})");
}

TEST(SnapshotJson, WritesWhatALiveMachineHasBesides) {
    const auto json = machineJson(hotLaptop());
    EXPECT_EQ(json["measuredAt"], 1'800'000'012.345);
    EXPECT_EQ(json["offenders"]["measuredAt"], 1'800'000'012.345);
    EXPECT_EQ(json["cpuPercent"], 41.0);
    EXPECT_EQ(compactText(json["temperatures"][1]),
              R"({"id":"CPU Package 0","label":"CPU Package 0","celsius":96.5,"kind":"cpu"})");
    EXPECT_EQ(compactText(json["sources"][1]),
              R"({"name":"lid","available":false,"reason":"no lid switch"})");
}

TEST(SnapshotJson, DividesTheExactDifferenceOnce) {
    using std::chrono::nanoseconds;
    const SnapshotJson json(snapshotStart);
    EXPECT_EQ(json.seconds(snapshotStart + nanoseconds{1}), 1e-9);
    EXPECT_EQ(json.seconds(snapshotStart + nanoseconds{3'600'000'000'001}), 3600.000000001);
    EXPECT_EQ(json.seconds(snapshotStart - nanoseconds{200'000'000}), -0.2);
}

TEST(SnapshotJson, RepairsTextAndNumbersThatAreNone) {
    EXPECT_EQ(compactText(Json{{"name", "a\xFF\x1b\n"}}), "{\"name\":\"a\xEF\xBF\xBD\\u001b\\n\"}");
    EXPECT_EQ(compactText(Json{{"value", std::numeric_limits<double>::quiet_NaN()}}), R"({"value":null})");
}

} // namespace
} // namespace cindertop
