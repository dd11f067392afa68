#include "assistant/AssistantInputs.h"
#include "assistant/OffenderAdvice.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum CinderInsightKind;
using enum CinderInsightConfidence;

TEST(OffenderAdvice, FollowsTheCategoryAndTheLevel) {
    struct Case {
        ProcessOffenderCategory category;
        CinderInsightKind kind;
        CinderInsightConfidence confidence;
        std::string title;
        int priorityAtFair;
        int priorityAtSerious;
        std::string message;
    };

    using enum ProcessOffenderCategory;
    for (const auto& [category, kind, confidence, title, atFair, atSerious, message] : std::vector<Case>{
             {backgroundSystem, backgroundIndexingLikely, low, "System workload", 55, 55,
              "A system workload is active. It usually settles without manual action."},
             {system, backgroundIndexingLikely, low, "System workload", 55, 55,
              "A system workload is active. It usually settles without manual action."},
             {indexingOrSetup, backgroundIndexingLikely, high, "Background indexing", 45, 35,
              "Spotlight or setup work is active. It usually settles on its own."},
             {developerWorkload, developerBuildWorkload, high, "Developer workload", 40, 30,
              "Thing (42% CPU) is the main load. Let the build finish or use Low Power Mode for steadier "
              "thermals."},
             {browserWorkload, browserTabLikely, medium, "Browser workload", 40, 30,
              "Thing (42% CPU) is the main load. A busy tab or web app may be adding heat."},
             {userApplication, topCpuOffender, medium, "Top CPU offender", 42, 30,
              "Thing (42% CPU) is the main load. Quit or pause it if you need the Mac to cool faster."},
             {unknown, topCpuOffender, medium, "Top CPU offender", 42, 30,
              "Thing (42% CPU) is the main load. Quit or pause it if you need the Mac to cool faster."},
         }) {
        const auto thing = offender("Thing", 42.4, category);
        const CinderInsight insight{kind, confidence, title, message, "id:Thing"};
        using Expected = RecommendationCandidate;
        EXPECT_EQ(offenderAdvice(thing, ThermalLevel::fair), (Expected{insight, atFair})) << title;
        EXPECT_EQ(offenderAdvice(thing, ThermalLevel::serious), (Expected{insight, atSerious})) << title;
        EXPECT_EQ(offenderAdvice(thing, ThermalLevel::critical), (Expected{insight, atSerious})) << title;
    }
}

TEST(OffenderAdvice, KnowsGamesAndLocalModelsByAnyOfTheirNames) {
    const std::string game = " (7% CPU) is the main load. Cap FPS or lower resolution for steadier thermals.";
    const std::string model =
        " (7% CPU) is the main load. Pause the local model if you need the Mac to cool faster.";
    for (auto fields : std::vector<ProcessOffender::Fields>{
             {.displayName = "Minecraft Launcher"},
             {.displayName = "Game", .bundleIdentifier = "com.Valvesoftware.STEAM"},
             {.displayName = "Epic Games Launcher"},
             {.displayName = "Llama for Unity"}, // games are looked for first
             {.displayName = "Chat", .appBundlePath = "/Applications/lm STUDIO.app"},
             {.displayName = "MLX Server", .category = ProcessOffenderCategory::system},
         }) {
        fields.id = "id";
        fields.cpuPercent = 6.5; // halves are rounded up
        const bool isModel = fields.displayName == "Chat" || fields.displayName == "MLX Server";
        const CinderInsight insight{isModel ? localAIWorkload : gamingFpsCapRecommended, medium,
                                    isModel ? "Local AI workload" : "Game workload",
                                    fields.displayName + (isModel ? model : game), "id"};
        for (const auto level : {ThermalLevel::fair, ThermalLevel::serious}) {
            EXPECT_EQ(offenderAdvice(ProcessOffender(fields), level), (RecommendationCandidate{insight, 35}))
                << fields.displayName;
        }
    }
    // names are not joined
    const ProcessOffender apart({.displayName = "Epic", .bundleIdentifier = "Games"});
    EXPECT_EQ(offenderAdvice(apart, ThermalLevel::fair).insight.kind, topCpuOffender);
}

TEST(OffenderAdvice, WritesAnyShareInFull) {
    for (const auto& [share, text] : std::vector<std::pair<double, std::string>>{
             {99.49, "App (99% CPU) is"}, {1234.5, "App (1235% CPU) is"}, {1e300, "App (1000000000000000"}}) {
        const auto busy = offender("App", share, ProcessOffenderCategory::userApplication);
        EXPECT_TRUE(offenderAdvice(busy, ThermalLevel::fair).insight.message.starts_with(text)) << share;
    }
}

} // namespace

} // namespace cindertop::testing
