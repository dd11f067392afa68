#include "assistant/AssistantInputs.h"
#include "assistant/ThermalAlertBody.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum CinderInsightKind;
using enum ThermalAlertKind;
using Kinds = std::vector<CinderInsightKind>;

const std::string alone =
    "Cindertop sees sustained serious thermal pressure. Reducing the current workload for a "
    "minute may help your Mac cool.";
const std::string aloneCritical = "Your Mac is under critical thermal pressure. Give it a short cooldown or "
                                  "reduce the current workload.";
const std::string display =
    "External display load is active during serious thermal pressure. Lower refresh rate "
    "or unplug it during long work.";
const std::string displayCritical = "Thermal pressure is critical while an external display is active. Pause "
                                    "heavy work or lower display load.";
const std::string clamshell =
    "Clamshell mode is active during serious thermal pressure. Open the lid during long heavy work.";
const std::string clamshellCritical =
    "Thermal pressure is critical while clamshell mode is active. Open the lid "
    "and pause heavy work if you can.";
const std::string charging =
    "Charging is adding heat during serious thermal pressure. Unplug briefly if you need "
    "steadier performance.";
const std::string chargingCritical =
    "Thermal pressure is critical while charging. Unplug briefly and pause heavy work if you can.";
const std::string indexing =
    "Background indexing or setup work is likely active. Let it finish if you can; it "
    "usually settles on its own.";
const std::string browser =
    "A browser workload is adding heat. Close the busy tab or pause the web app if you can.";
const std::string model = "A local AI workload is adding heat. Pause it briefly if you need faster cooling.";
const std::string game = "A game workload is adding heat. Cap FPS or lower resolution for steadier thermals.";
const std::string build =
    "A developer workload is adding heat. Let the build finish or switch to Low Power Mode.";
const std::string offender =
    "A CPU-heavy app is active right now. Pausing it briefly may help your Mac cool.";

TEST(ThermalAlertBody, TellsTheCircumstanceThatMattersMost) {
    struct Case {
        Kinds advice;
        std::string sustained;
        std::string critical;
    };

    for (const auto& [advice, sustainedBody, criticalBody] : std::vector<Case>{
             {{}, alone, aloneCritical},
             {{sustainedSeriousPressure}, alone, aloneCritical},
             {{normalForWorkload, coolingRecovery}, alone, aloneCritical},
             {{sustainedSeriousPressure, chargingAddsHeat}, charging, chargingCritical},
             {{chargingAddsHeat, backgroundIndexingLikely}, indexing, indexing},
             {{backgroundIndexingLikely, topCpuOffender}, offender, offender},
             {{topCpuOffender, browserTabLikely}, browser, browser},
             {{browserTabLikely, localAIWorkload}, model, model},
             {{localAIWorkload, gamingFpsCapRecommended}, game, game},
             {{gamingFpsCapRecommended, developerBuildWorkload}, build, build},
             {{developerBuildWorkload, chargingAddsHeat, externalDisplayThermalLoad},
              display,
              displayCritical},
             {{externalDisplayThermalLoad, probableClamshellHeat}, clamshell, clamshellCritical},
         }) {
        EXPECT_EQ(thermalAlertBody(sustainedThrottling, adviceOf(advice), std::nullopt), sustainedBody);
        EXPECT_EQ(thermalAlertBody(critical, adviceOf(advice), std::nullopt), criticalBody);
    }
}

TEST(ThermalAlertBody, NamesTheOffenderWhereTheAdviceIsAboutAnApplication) {
    for (const auto& [advice, body] : std::vector<std::pair<CinderInsightKind, std::string>>{
             {topCpuOffender,
              "Painter is the main CPU load right now. Pausing it briefly may help your Mac cool."},
             {browserTabLikely,
              "Painter is the main browser load. Close the busy tab or pause the web app if you can."},
             {developerBuildWorkload,
              "Painter is driving the build workload. Let it finish or switch to Low Power Mode."},
             {gamingFpsCapRecommended,
              "Painter is the main graphics load. Cap FPS or lower resolution for steadier thermals."},
             {localAIWorkload,
              "Painter is running local AI workload. Pause the model if you need faster cooling."},
             {backgroundIndexingLikely, indexing},
         }) {
        EXPECT_EQ(thermalAlertBody(critical, adviceOf({advice}), "Painter"), body);
        EXPECT_EQ(thermalAlertBody(sustainedThrottling, adviceOf({advice}), "Painter"), body);
    }
}

TEST(ThermalAlertBody, TellsOfARecoveryWhetherItStillCools) {
    const std::string back =
        "Your Mac is back below serious thermal pressure. Performance should feel steadier again.";
    const std::string still =
        "Thermal pressure eased and the trend is cooling. Performance should feel steadier again.";
    for (const auto& [advice, body] :
         std::vector<std::pair<Kinds, std::string>>{{{chargingAddsHeat}, back},
                                                    {{coolingRecovery}, still},
                                                    {{normalForWorkload, coolingRecovery}, still}}) {
        EXPECT_EQ(thermalAlertBody(recovery, adviceOf(advice), "Painter"), body);
    }
}

} // namespace

} // namespace cindertop::testing
