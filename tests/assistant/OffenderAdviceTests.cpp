#include "assistant/AssistantInputs.h"
#include "assistant/OffenderAdvice.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum ProcessOffenderCategory;
using Kind = CinderInsightKind;
using Confidence = CinderInsightConfidence;

CinderInsight insight(Kind kind, Confidence confidence, std::string title, std::string message) {
    return {kind, confidence, std::move(title), std::move(message), "id"};
}

const auto game = insight(Kind::gamingFpsCapRecommended, Confidence::medium, "Game workload",
                          "(7% CPU) is the main load. Cap FPS or lower resolution for steadier thermals.");
const auto model =
    insight(Kind::localAIWorkload, Confidence::medium, "Local AI workload",
            "(7% CPU) is the main load. Pause the local model if you need the Mac to cool faster.");
const auto systemWork = insight(Kind::backgroundIndexingLikely, Confidence::low, "System workload",
                                "A system workload is active. It usually settles without manual action.");
const auto indexing = insight(Kind::backgroundIndexingLikely, Confidence::high, "Background indexing",
                              "Spotlight or setup work is active. It usually settles on its own.");
const auto build =
    insight(Kind::developerBuildWorkload, Confidence::high, "Developer workload",
            "(7% CPU) is the main load. Let the build finish or use Low Power Mode for steadier thermals.");
const auto browser = insight(Kind::browserTabLikely, Confidence::medium, "Browser workload",
                             "(7% CPU) is the main load. A busy tab or web app may be adding heat.");
const auto other = insight(Kind::topCpuOffender, Confidence::medium, "Top CPU offender",
                           "(7% CPU) is the main load. Quit or pause it if you need the Mac to cool faster.");

TEST(OffenderAdvice, FollowsTheNamesThenTheCategoryAndTheLevel) {
    struct Case {
        ProcessOffender::Fields fields;
        CinderInsight expected; ///< a message that begins with the share follows the name
        int priorityAtLowLevel;
        int priority;
    };

    for (auto [fields, expected, atLowLevel, atHighLevel] : std::vector<Case>{
             {{.displayName = "Thing", .category = backgroundSystem}, systemWork, 55, 55},
             {{.displayName = "Thing", .category = system}, systemWork, 55, 55},
             {{.displayName = "Thing", .category = indexingOrSetup}, indexing, 45, 35},
             {{.displayName = "Thing", .category = developerWorkload}, build, 40, 30},
             {{.displayName = "Thing", .category = browserWorkload}, browser, 40, 30},
             {{.displayName = "Thing", .category = userApplication}, other, 42, 30},
             {{.displayName = "Thing", .category = unknown}, other, 42, 30},
             {{.displayName = "Minecraft Launcher", .category = userApplication}, game, 35, 35},
             {{.displayName = "Thing", .bundleIdentifier = "com.Valvesoftware.STEAM"}, game, 35, 35},
             {{.displayName = "Epic Games Launcher", .category = browserWorkload}, game, 35, 35},
             {{.displayName = "Thing", .appBundlePath = "/Games/Battle.net.app"}, game, 35, 35},
             {{.displayName = "Llama for Unity"}, game, 35, 35}, // games are looked for first
             {{.displayName = "Epic", .bundleIdentifier = "Games"}, other, 42, 30}, // names are not joined
             {{.displayName = "Thing", .appBundlePath = "/Applications/lm STUDIO.app"}, model, 35, 35},
             {{.displayName = "MLX Server", .category = system}, model, 35, 35},
         }) {
        fields.id = "id";
        fields.cpuPercent = 6.5; // halves are rounded up
        if (expected.message.starts_with('(')) {
            expected.message.insert(0, fields.displayName + " ");
        }
        for (const auto& [level, priority] :
             {std::pair{ThermalLevel::normal, atLowLevel}, std::pair{ThermalLevel::fair, atLowLevel},
              std::pair{ThermalLevel::serious, atHighLevel},
              std::pair{ThermalLevel::critical, atHighLevel}}) {
            EXPECT_EQ(offenderAdvice(ProcessOffender(fields), level, OperatingSystem::mac),
                      (RecommendationCandidate{expected, priority}))
                << fields.displayName << " at " << rawValue(level);
        }
    }
}

TEST(OffenderAdvice, KnowsTheseNames) {
    for (const auto& [kind, names] : std::vector<std::pair<Kind, std::vector<std::string>>>{
             {game.kind,
              {"Steam Helper", "Epic Games", "Battle.net", "Roblox", "Minecraft", "RIOT Client",
               "League of Legends", "Unity", "Unreal Editor"}},
             {model.kind, {"LM Studio", "llama-server", "Ollama", "MLX"}},
             {other.kind, {"Epic", "LM-Studio", "Battle-net", "League"}}}) {
        for (const auto& name : names) {
            EXPECT_EQ(offenderAdvice(offender(name, 7, unknown), ThermalLevel::fair, OperatingSystem::mac)
                          .insight.kind,
                      kind)
                << name;
        }
    }
}

} // namespace

} // namespace cindertop::testing
