#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "context/SustainedThermalPressure.h"
#include "context/SystemContext.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <utility>

namespace cindertop {
// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(DisplayContextSnapshot, DerivesItsFactsFromTheCounts) {
    struct Case {
        DisplayContextSnapshot displays;
        bool hasExternal;
        bool isClamshell;
        bool isBuiltInActive;
        bool hasMultiple;
    };

    for (const auto& [displays, hasExternal, isClamshell, isBuiltInActive, hasMultiple] :
         std::to_array<Case>({
             {{true, 1, 0, 1}, true, true, false, false},
             {{false, 1, 0, 1}, true, false, false, false},
             {{true, 1, 0, 1, false}, true, false, false, false}, // a desktop
             {{true, 2, 1, 1}, true, false, true, true},
             {{true, 2, 0, 2}, true, true, false, true},
             {{true, 1, 1, 0}, false, false, true, false},
             {DisplayContextSnapshot::unavailable(), false, false, false, false},
         })) {
        EXPECT_EQ(displays.hasExternalDisplay(), hasExternal);
        EXPECT_EQ(displays.isProbableClamshell(), isClamshell);
        EXPECT_EQ(displays.isBuiltInDisplayActive(), isBuiltInActive);
        EXPECT_EQ(displays.hasMultipleDisplays(), hasMultiple);
    }
    EXPECT_EQ(DisplayContextSnapshot(true, -1, -2, 3), DisplayContextSnapshot(true, 0, 0, 3));
    EXPECT_EQ(DisplayContextSnapshot(true, 2, 1, -1), DisplayContextSnapshot(true, 2, 1, 0));
}

TEST(PowerContextSnapshot, MainsAndUpsAreExternalPower) {
    for (const auto& [source, isExternal] : std::to_array<std::pair<PowerSourceKind, bool>>({
             {PowerSourceKind::acPower, true},
             {PowerSourceKind::upsPower, true},
             {PowerSourceKind::batteryPower, false},
             {PowerSourceKind::offline, false},
             {PowerSourceKind::unknown, false},
         })) {
        auto power = PowerContextSnapshot::unavailable();
        power.source = source;
        EXPECT_EQ(power.isExternalPowerConnected(), isExternal);
    }
}

TEST(BatteryTemperature, ConvertsWorkingBatteriesOnly) {
    for (const auto& [raw, celsius] : std::to_array<std::pair<std::int64_t, double>>({
             {2931, 19.95},
             {2932, 20.05},
             {3031, 29.95},
             {2532, -19.95},
             {3531, 79.95},
         })) {
        EXPECT_NEAR(BatteryTemperatureConverter::celsiusFromDeciKelvin(raw).value(), celsius, 1e-9) << raw;
    }
    for (const auto raw :
         {std::int64_t{2531}, std::int64_t{3532}, std::int64_t{0}, std::numeric_limits<std::int64_t>::max(),
          std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(BatteryTemperatureConverter::celsiusFromDeciKelvin(raw), std::nullopt) << raw;
    }
}

TEST(SustainedThermalPressure, RepairsDurations) {
    for (const auto& [given, active, minimum] : std::to_array<std::array<double, 3>>({
             {0, 0, 1},
             {-5, 0, 1},
             {notANumber, 0, 1},
             {-infinity, 0, 1},
             {0.5, 0.5, 1},
             {120, 120, 120},
             {infinity, infinity, infinity},
         })) {
        EXPECT_EQ(SustainedThermalPressureSnapshot(false, Seconds(given), std::nullopt, ThermalLevel::serious)
                      .activeDuration,
                  Seconds(active));
        EXPECT_EQ(SustainedThermalPressureConfiguration(ThermalLevel::fair, Seconds(given)).minimumDuration,
                  Seconds(minimum));
    }
}

} // namespace

// NOLINTEND(modernize-use-designated-initializers)
} // namespace cindertop
