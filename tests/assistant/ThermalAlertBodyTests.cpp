#include "assistant/AssistantInputs.h"
#include "assistant/ThermalAlert.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum CinderInsightKind;
using enum ThermalAlertKind;

struct Bodies {
    CinderInsightKind context;
    std::string sustained;
    std::string critical;
    std::string ofPainter; ///< where an offender of this name is known
};

const std::string indexing = "Background indexing or setup work is likely active. Let it finish if you can; "
                             "it usually settles on its own.";
const std::string build =
    "A developer workload is adding heat. Let the build finish or switch to Low Power Mode.";
const std::string game = "A game workload is adding heat. Cap FPS or lower resolution for steadier thermals.";
const std::string model = "A local AI workload is adding heat. Pause it briefly if you need faster cooling.";
const std::string browser =
    "A browser workload is adding heat. Close the busy tab or pause the web app if you can.";
const std::string offender =
    "A CPU-heavy app is active right now. Pausing it briefly may help your Mac cool.";

/// What matters more comes first.
const std::vector<Bodies> byImportance{
    {probableClamshellHeat,
     "Clamshell mode is active during serious thermal pressure. Open the lid during long heavy work.",
     "Thermal pressure is critical while clamshell mode is active. Open the lid and pause heavy work if you "
     "can.",
     ""},
    {externalDisplayThermalLoad,
     "External display load is active during serious thermal pressure. Lower refresh rate or unplug it "
     "during long work.",
     "Thermal pressure is critical while an external display is active. Pause heavy work or lower display "
     "load.",
     ""},
    {developerBuildWorkload, build, build,
     "Painter is driving the build workload. Let it finish or switch to Low Power Mode."},
    {gamingFpsCapRecommended, game, game,
     "Painter is the main graphics load. Cap FPS or lower resolution for steadier thermals."},
    {localAIWorkload, model, model,
     "Painter is running local AI workload. Pause the model if you need faster cooling."},
    {browserTabLikely, browser, browser,
     "Painter is the main browser load. Close the busy tab or pause the web app if you can."},
    {topCpuOffender, offender, offender,
     "Painter is the main CPU load right now. Pausing it briefly may help your Mac cool."},
    {backgroundIndexingLikely, indexing, indexing, ""},
    {chargingAddsHeat,
     "Charging is adding heat during serious thermal pressure. Unplug briefly if you need steadier "
     "performance.",
     "Thermal pressure is critical while charging. Unplug briefly and pause heavy work if you can.", ""},
    {sustainedSeriousPressure,
     "Cindertop sees sustained serious thermal pressure. Reducing the current workload for a minute may help "
     "your Mac cool.",
     "Your Mac is under critical thermal pressure. Give it a short cooldown or reduce the current workload.",
     ""},
};

void expectBodies(const std::vector<CinderInsightKind>& kinds, const Bodies& expected) {
    const auto advice = adviceOf(kinds);
    EXPECT_EQ(thermalAlertBody(sustainedThrottling, advice, std::nullopt, OperatingSystem::mac),
              expected.sustained);
    EXPECT_EQ(thermalAlertBody(critical, advice, std::nullopt, OperatingSystem::mac), expected.critical);
    const auto& named = expected.ofPainter;
    EXPECT_EQ(thermalAlertBody(sustainedThrottling, advice, "Painter", OperatingSystem::mac),
              named.empty() ? expected.sustained : named);
    EXPECT_EQ(thermalAlertBody(critical, advice, "Painter", OperatingSystem::mac),
              named.empty() ? expected.critical : named);
}

TEST(ThermalAlertBody, TellsTheCircumstanceThatMattersMost) {
    expectBodies({}, byImportance.back());
    expectBodies({normalForWorkload, coolingRecovery}, byImportance.back());
    for (auto first = byImportance.begin(); first != byImportance.end(); ++first) {
        for (auto second = first; second != byImportance.end(); ++second) {
            expectBodies({first->context, normalForWorkload, second->context}, *first);
            expectBodies({coolingRecovery, second->context, first->context}, *first);
        }
    }
}

TEST(ThermalAlertBody, TellsOfARecoveryWhetherItStillCools) {
    const std::string back =
        "Your Mac is back below serious thermal pressure. Performance should feel steadier again.";
    const std::string cooling =
        "Thermal pressure eased and the trend is cooling. Performance should feel steadier again.";
    EXPECT_EQ(thermalAlertBody(recovery, adviceOf({}), "Painter", OperatingSystem::mac), back);
    EXPECT_EQ(thermalAlertBody(recovery, adviceOf({topCpuOffender, normalForWorkload}), "Painter",
                               OperatingSystem::mac),
              back);
    EXPECT_EQ(thermalAlertBody(recovery, adviceOf({coolingRecovery}), "Painter", OperatingSystem::mac),
              cooling);
    EXPECT_EQ(thermalAlertBody(recovery, adviceOf({topCpuOffender, coolingRecovery}), "Painter",
                               OperatingSystem::mac),
              cooling);
}

} // namespace

} // namespace cindertop::testing
