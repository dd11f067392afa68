#include "app/MachineJsonReader.h"
#include "app/Snapshots.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace cindertop {
namespace {

MachineVerdict verdict() {
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
    return compactText(machineJson(hotLaptop(), verdict()));
}

/// A double holds today's instants to 0.2 µs only, so it is the texts that have to be equal.
TEST(MachineJsonReader, ReadsEveryFieldBack) {
    auto desktop = hotLaptop();
    desktop.context.displays.canFold = false;
    for (const auto& text :
         {hotText(), compactText(machineJson(hotLaptop())), compactText(machineJson(desktop)),
          compactText(machineJson(unknownMachine(), MachineVerdict{}))}) {
        const auto report = machineReport(text);
        ASSERT_TRUE(report) << text;
        EXPECT_EQ(compactText(machineJson(report->snapshot, report->verdict)), text);
    }
}

TEST(MachineJsonReader, RefusesWhatNoProgramOfOursWrites) {
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
