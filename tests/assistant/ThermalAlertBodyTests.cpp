#include "assistant/AssistantInputs.h"
#include "assistant/ThermalAlertBody.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum CinderInsightKind;
using enum ThermalAlertKind;
using Kinds = std::vector<CinderInsightKind>;

TEST(ThermalAlertBody, TellsTheCircumstanceThatMattersMost) {
    struct Case {
        Kinds advice;
        std::string sustained;
        std::string critical;
    };

    for (const auto& [advice, sustainedStart, criticalStart] : std::vector<Case>{
             {{}, "Cindertop sees sustained serious", "Your Mac is under critical"},
             {{sustainedSeriousPressure}, "Cindertop sees sustained serious", "Your Mac is under critical"},
             {{normalForWorkload, coolingRecovery},
              "Cindertop sees sustained serious",
              "Your Mac is under critical"},
             {{externalDisplayThermalLoad},
              "External display load is",
              "Thermal pressure is critical while an external"},
             {{probableClamshellHeat},
              "Clamshell mode is active",
              "Thermal pressure is critical while clamshell"},
             {{chargingAddsHeat}, "Charging is adding", "Thermal pressure is critical while charging."},
             {{backgroundIndexingLikely}, "Background indexing", "Background indexing"},
             {{sustainedSeriousPressure, chargingAddsHeat},
              "Charging is adding",
              "Thermal pressure is critical while charging."},
             {{coolingRecovery, chargingAddsHeat, externalDisplayThermalLoad},
              "External display load is",
              "Thermal pressure is critical while an external"},
             {{externalDisplayThermalLoad, probableClamshellHeat},
              "Clamshell mode is active",
              "Thermal pressure is critical while clamshell"},
             {{topCpuOffender, browserTabLikely}, "A browser workload", "A browser workload"},
             {{browserTabLikely, localAIWorkload}, "A local AI workload", "A local AI workload"},
             {{localAIWorkload, gamingFpsCapRecommended}, "A game workload", "A game workload"},
             {{gamingFpsCapRecommended, developerBuildWorkload},
              "A developer workload",
              "A developer workload"},
             {{backgroundIndexingLikely, topCpuOffender}, "A CPU-heavy app", "A CPU-heavy app"},
             {{chargingAddsHeat, backgroundIndexingLikely}, "Background indexing", "Background indexing"},
         }) {
        const auto snapshot = adviceOf(advice);
        const auto sustainedBody = thermalAlertBody(sustainedThrottling, snapshot, std::nullopt);
        const auto criticalBody = thermalAlertBody(critical, snapshot, std::nullopt);
        EXPECT_TRUE(sustainedBody.starts_with(sustainedStart)) << sustainedBody;
        EXPECT_TRUE(criticalBody.starts_with(criticalStart)) << criticalBody;
    }
}

TEST(ThermalAlertBody, NamesTheOffenderWhereTheAdviceIsAboutAnApplication) {
    struct Case {
        CinderInsightKind advice;
        std::string start;
    };

    for (const auto& [advice, start] : std::vector<Case>{
             {topCpuOffender, "Painter is the main CPU load right now. "},
             {browserTabLikely, "Painter is the main browser load. "},
             {developerBuildWorkload, "Painter is driving the build workload. "},
             {gamingFpsCapRecommended, "Painter is the main graphics load. "},
             {localAIWorkload, "Painter is running local AI workload. "},
             {backgroundIndexingLikely, "Background indexing or setup"},
         }) {
        const auto body = thermalAlertBody(critical, adviceOf({advice}), "Painter");
        EXPECT_TRUE(body.starts_with(start)) << body;
        EXPECT_EQ(body, thermalAlertBody(sustainedThrottling, adviceOf({advice}), "Painter"));
    }
    EXPECT_EQ(thermalAlertBody(critical, adviceOf({topCpuOffender}), "Painter"),
              "Painter is the main CPU load right now. Pausing it briefly may help your Mac cool.");
}

TEST(ThermalAlertBody, TellsOfARecoveryWhetherItStillCools) {
    for (const auto& [advice, start] : std::vector<std::pair<Kinds, std::string>>{
             {{}, "Your Mac is back below serious"},
             {{chargingAddsHeat}, "Your Mac is back below serious"},
             {{coolingRecovery}, "Thermal pressure eased and"},
             {{chargingAddsHeat, normalForWorkload, coolingRecovery}, "Thermal pressure eased and"},
         }) {
        EXPECT_TRUE(thermalAlertBody(recovery, adviceOf(advice), "Painter").starts_with(start));
    }
}

} // namespace

} // namespace cindertop::testing
