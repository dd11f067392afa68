#include "ScenarioTexts.h"
#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "scenario/machine/SimulatedDesktop.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/VirtualClock.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::simulated {
namespace {

using namespace std::chrono_literals;

/// A scenario, its clock and its machine.
struct Stage {
    std::shared_ptr<const Scenario> scenario;
    VirtualClock clock{scenario->start};
    SimulatedMachine simulated{scenario, clock};
    Machine machine = simulated.services();

    void goTo(std::chrono::nanoseconds elapsed) { clock.advanceTo(scenario->start + elapsed); }
};

TEST(SimulatedMachine, RegistersForPressureByTheFirstFrameOnly) {
    struct Case {
        std::string_view frames;
        std::chrono::nanoseconds firstRead;
        std::optional<ThermalPressureLevel> levelThen;
        std::optional<ThermalPressureLevel> levelAtTwo;
        std::size_t lines;
    };

    using enum ThermalPressureLevel;
    for (const auto& [frames, firstRead, levelThen, levelAtTwo, lines] : std::to_array<Case>({
             {R"([{"at": 0, "pressure": null}, {"at": 1, "pressure": 1}])", 0s, std::nullopt, std::nullopt,
              0},
             {R"([{"at": 0, "pressure": null}, {"at": 1, "pressure": 1}])", 1s, std::nullopt, std::nullopt,
              0},
             {R"([{"at": 0}, {"at": 1, "pressure": null}, {"at": 2, "pressure": 0}])", 1s, std::nullopt,
              nominal, 1},
             {R"([{"at": 0}, {"at": 1, "pressure": null}, {"at": 2, "pressure": 0}])", 0s, nominal, nominal,
              1},
             {R"([{"at": 0}, {"at": 2, "pressure": 4294967296}])", 0s, nominal, unavailable, 2},
         })) {
        Stage stage{scenarioOf(frames)};
        std::vector<UnifiedLogLine> written;
        const auto log = std::make_shared<CapturingUnifiedLog>(
            [&](const UnifiedLogLine& line) { written.push_back(line); });
        stage.goTo(firstRead);
        DarwinThermalPressureReader reader(stage.machine.pressure, log);
        EXPECT_EQ(reader.currentLevel(), levelThen) << frames;
        stage.goTo(2s);
        EXPECT_EQ(reader.currentLevel(), levelAtTwo) << frames;
        EXPECT_EQ(written.size(), lines) << frames;
    }
}

} // namespace
} // namespace cindertop::simulated
