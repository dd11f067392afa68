#include "app/FakeProgram.h"
#include "ui/presentation/ContextTexts.h"
#include "ui/presentation/InfoPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

using enum PowerSourceKind;
using Level = BatteryTemperatureLevel;

TEST(ContextTexts, PowerJoinsThePartsThatApply) {
    struct Case {
        PowerSourceKind source{};
        std::optional<bool> isCharging;
        std::optional<bool> isFullyCharged;
        bool isLowPowerModeEnabled{};
        const char* text{};
    };

    for (const auto& [source, isCharging, isFullyCharged, isLowPowerModeEnabled, text] : {
             Case{acPower, true, {}, true, "AC Power - charging - Low Power Mode"},
             Case{acPower, true, true, false, "AC Power - charged"},
             Case{acPower, true, false, false, "AC Power - charging"},
             Case{batteryPower, false, {}, true, "Battery Power - Low Power Mode"},
             Case{upsPower, {}, {}, false, "UPS Power"},
             Case{offline, {}, {}, false, "Offline"},
             Case{unknown, {}, {}, false, "Power source unavailable"},
         }) {
        EXPECT_EQ(powerText({true, source, {}, isCharging, isFullyCharged, isLowPowerModeEnabled, {}, {}},
                            OperatingSystem::mac),
                  text);
    }
    EXPECT_EQ(powerText({true, acPower, {}, {}, {}, true, {}, {}}, OperatingSystem::gnuLinux),
              "AC Power - Power Saver");
}

TEST(ContextTexts, DisplaysAreCounted) {
    for (const auto& [displays, text] : {
             std::pair(DisplayContextSnapshot(true, 3, 1, 2), "Built-in display + 2 external displays"),
             std::pair(DisplayContextSnapshot(true, 2, 1, 1), "Built-in display + External display"),
             std::pair(DisplayContextSnapshot(true, 1, 2, 0), "Built-in display"),
             std::pair(DisplayContextSnapshot(true, 1, 0, 1), "External display"),
             std::pair(DisplayContextSnapshot(true, 0, 0, 0), "Display data unavailable"),
             std::pair(DisplayContextSnapshot(false, 2, 1, 1), "Display data unavailable"),
         }) {
        EXPECT_EQ(displaysText(displays), text);
    }
}

TEST(InfoPresentation, FollowsTheMachineAndIsSilentWhileNothingChanges) {
    FakeProgram program;
    program.machine.powerSources.entries = {{{"BatteryInstalled", true},
                                             {"CurrentCapacity", std::int64_t{81}},
                                             {"MaxCapacity", std::int64_t{100}},
                                             {"Temperature", std::int64_t{3092}}}};
    auto& state = program.start();
    const InfoPresentation info(state);
    program.pass(std::chrono::seconds(0));
    EXPECT_EQ(info.powerText(), "AC Power");
    EXPECT_EQ(info.batterySegments(), (QStringList{"81%", "36°C", "Warm"}));
    EXPECT_EQ(info.batteryLevel(), 1);
    EXPECT_EQ(info.processorText(), "arm64");

    int changes = 0;
    QObject::connect(&info, &InfoPresentation::changed, [&changes] { ++changes; });
    program.pass(std::chrono::seconds(30));
    EXPECT_EQ(changes, 0);
    program.machine.displays = fakes::FakeDisplayList({{.identifier = 9, .place = DisplayPlace::external}});
    program.pass(std::chrono::seconds(30));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(info.displaysText(), "External display");
    EXPECT_EQ(info.clamshellText(), "Likely");
}

} // namespace
} // namespace cindertop::ui
