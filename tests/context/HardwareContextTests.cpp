#include "context/HardwareContext.h"
#include "context/HardwareText.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace cindertop {

namespace {

constexpr ClockLimit cut{.allowedHertz = 1'200'000'000, .possibleHertz = 3'400'000'000};
constexpr ClockLimit whole{.allowedHertz = 3'400'000'000, .possibleHertz = 3'400'000'000};
constexpr ClockLimit slowerCut{.allowedHertz = 1'000'000'000, .possibleHertz = 2'000'000'000};
constexpr ClockLimit turbo{.allowedHertz = 2'400'000'000, .possibleHertz = 2'401'000'000};
constexpr ClockLimit slightly{.allowedHertz = 3'360'000'000, .possibleHertz = 3'400'000'000};

TEST(HardwareContext, TellsWhatHoldsTheProcessorBackAndWhy) {
    struct Case {
        ProcessorClockReading reading;
        bool isSavingPower;
        std::optional<std::string> text;
    };

    const auto cases = std::to_array<Case>({
        {{}, true, std::nullopt}, // a saver that holds nothing back
        {{.clock = whole, .mostHeld = whole, .isSlowedByHeat = false}, true, std::nullopt},
        {{.clock = turbo, .mostHeld = turbo}, false, std::nullopt},
        {{.clock = cut, .mostHeld = cut, .isSlowedByHeat = true},
         true,
         "Processor held to 1.2 of 3.4 GHz by heat"},
        {{.clock = cut, .mostHeld = cut, .isSlowedByHeat = false, .isHeldByFirmware = true},
         true,
         "Processor held to 1.2 of 3.4 GHz by the power saver"},
        {{.clock = cut, .mostHeld = cut, .isHeldByFirmware = true},
         false,
         "Processor held to 1.2 of 3.4 GHz by the firmware"},
        {{.clock = cut, .mostHeld = cut}, false, "Processor held to 1.2 of 3.4 GHz"},
        {{.clock = whole, .mostHeld = slowerCut, .isSlowedByHeat = true},
         false,
         "Slower cores held to 1.0 of 2.0 GHz by heat"},
        {{.clock = slightly, .mostHeld = slightly}, false, "Processor held to 3.36 of 3.40 GHz"},
        {{.clock = whole, .isSlowedByHeat = true}, false, "Processor slowed down by heat"},
        {{.isSlowedByHeat = true}, false, "Processor slowed down by heat"},
    });
    for (const auto& [reading, isSavingPower, text] : cases) {
        EXPECT_EQ(heldBackText(speedLimits(reading, isSavingPower)), text) << text.value_or("not held");
    }
}

TEST(HardwareContext, SaysWhereThePowerGoes) {
    struct Case {
        std::optional<double> battery;
        std::optional<double> machine;
        std::optional<std::string> text;
    };

    for (const auto& [battery, machine, text] : std::to_array<Case>({
             {std::nullopt, std::nullopt, std::nullopt},
             {-11.34, std::nullopt, "Drawing 11.3 W"},
             {-11.34, 12.5, "Drawing 11.3 W"},
             {23.4, std::nullopt, "Charging with 23 W"},
             {19.96, 9.4, "Charging with 20 W, drawing 9.4 W"},
             {std::nullopt, 9.0, "Drawing 9.0 W"},
             {0.0, std::nullopt, std::nullopt},
         })) {
        auto context = SystemContextSnapshot::placeholder();
        context.power = PowerContextSnapshot(true, PowerSourceKind::unknown, std::nullopt, std::nullopt,
                                             std::nullopt, false, std::nullopt, std::nullopt, battery);
        context.hardware.meters.machineWatts = machine;
        EXPECT_EQ(powerFlowText(context), text);
    }
}

TEST(HardwareContext, TellsAFanThatStandsStill) {
    EXPECT_EQ(fanSpeedText({.name = "Fan", .revolutionsPerMinute = 2450}), "2450 rpm");
    EXPECT_EQ(fanSpeedText({.name = "Fan", .revolutionsPerMinute = 0}), "stopped");
}

} // namespace

} // namespace cindertop
