#include "context/PowerContext.h"
#include "fakes/FakePowerSources.h"
#include "fakes/FakeProcessInformation.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <utility>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using fakes::FakePowerEntry;
using fakes::FakePowerSources;
using Kind = PowerSourceKind;

constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

PropertyValue whole(std::int64_t number) {
    return number;
}

PowerContextSnapshot contextOf(const FakePowerSources& sources) {
    const fakes::FakeProcessInformation process;
    return SystemPowerContextProvider(sources, process).readPowerContext();
}

/// What is read from a battery with these properties; the system names mains as the source.
PowerContextSnapshot batteryContext(FakePowerEntry properties) {
    properties.insert({"BatteryInstalled", true});
    FakePowerSources sources;
    sources.entries = std::vector{std::move(properties)};
    return contextOf(sources);
}

TEST(SystemPowerContextProvider, ReadsABattery) {
    const FakePowerSources sources = [] {
        FakePowerSources made;
        made.providing = "Battery Power";
        made.entries = std::vector<FakePowerEntry>{{{"BatteryInstalled", true},
                                                    {"CurrentCapacity", whole(57)},
                                                    {"MaxCapacity", whole(100)},
                                                    {"IsCharging", false},
                                                    {"FullyCharged", true},
                                                    {"ExternalConnected", true},
                                                    {"Temperature", whole(3131)},
                                                    {"ChargeRateMilliwatts", whole(-11340)}}};
        return made;
    }();
    fakes::FakeProcessInformation process;
    process.lowPowerMode = true;
    EXPECT_EQ(SystemPowerContextProvider(sources, process).readPowerContext(),
              PowerContextSnapshot(true, Kind::batteryPower, 57, false, true, true, 3131 / 10.0 - 273.15,
                                   BatteryTemperatureLevel::warm, -11.34));
}

TEST(SystemPowerContextProvider, WithoutABatterySourceAndLowPowerModeRemain) {
    for (const auto& entries : std::to_array<std::optional<std::vector<FakePowerEntry>>>({
             std::nullopt,
             std::vector<FakePowerEntry>{},
             std::vector<FakePowerEntry>{{{"BatteryInstalled", false}, {"ExternalConnected", true}},
                                         {{"CurrentCapacity", whole(50)}}},
         })) {
        for (const auto& [providing, source] : std::to_array<std::pair<std::optional<std::string>, Kind>>({
                 {"UPS Power", Kind::upsPower},
                 {std::nullopt, Kind::unknown},
             })) {
            FakePowerSources sources;
            sources.entries = entries;
            sources.providing = providing;
            fakes::FakeProcessInformation process;
            process.lowPowerMode = true;
            EXPECT_EQ(SystemPowerContextProvider(sources, process).readPowerContext(),
                      PowerContextSnapshot(false, source, std::nullopt, std::nullopt, std::nullopt, true,
                                           std::nullopt, std::nullopt));
        }
    }
}

TEST(SystemPowerContextProvider, TheFirstInstalledBatteryEndsTheWalk) {
    FakePowerSources sources;
    sources.entries = std::vector<FakePowerEntry>{{},
                                                  {{"BatteryInstalled", whole(0)}},
                                                  {{"BatteryInstalled", whole(1)}, {"IsCharging", true}},
                                                  {{"BatteryInstalled", true}, {"IsCharging", false}}};
    EXPECT_EQ(contextOf(sources).isCharging, true);
    EXPECT_EQ(sources.journal, (std::vector<std::string>{
                                   "0: BatteryInstalled", "0 released", "1: BatteryInstalled", "1 released",
                                   "2: BatteryInstalled", "walk released", "2: Temperature",
                                   "2: CurrentCapacity", "2: MaxCapacity", "2: IsCharging", "2: FullyCharged",
                                   "2: ExternalConnected", "2: ChargeRateMilliwatts", "2 released"}));
}

TEST(SystemPowerContextProvider, ThePlugDecidesOnlyWhereTheSourceIsUnknown) {
    struct Case {
        std::optional<std::string> providing;
        std::optional<PropertyValue> plug;
        Kind source;
    };

    for (const auto& [providing, plug, source] : std::to_array<Case>({
             {"AC Power", false, Kind::acPower},
             {"Battery Power", true, Kind::batteryPower},
             {"UPS Power", false, Kind::upsPower},
             {"Off Line", true, Kind::offline},
             {std::nullopt, true, Kind::acPower},
             {std::nullopt, whole(0), Kind::batteryPower},
             {std::nullopt, std::nullopt, Kind::unknown},
             {std::nullopt, "yes", Kind::unknown},
             {"ac power", true, Kind::acPower}, // compared exactly: unknown, so the plug decides
             {"ac power", false, Kind::batteryPower},
             {"", std::nullopt, Kind::unknown},
         })) {
        FakePowerSources sources;
        sources.providing = providing;
        FakePowerEntry battery{{"BatteryInstalled", true}};
        if (plug) {
            battery["ExternalConnected"] = *plug;
        }
        sources.entries = std::vector{battery};
        EXPECT_EQ(contextOf(sources).source, source) << providing.value_or("none");
    }
}

TEST(SystemPowerContextProvider, ComputesThePercentageWithHalvesUp) {
    struct Case {
        std::optional<PropertyValue> current;
        std::optional<PropertyValue> maximum;
        std::optional<int> percent;
    };

    for (const auto& [current, maximum, percent] : std::to_array<Case>({
             {whole(57), whole(100), 57},
             {whole(1), whole(3), 33},
             {whole(1), whole(8), 13},
             {whole(101), whole(100), 100},
             {whole(-5), whole(100), 0},
             {whole(largest), whole(1), 100},
             {whole(smallest), whole(1), 0},
             {whole(largest), whole(largest), 100},
             {whole(50), whole(0), std::nullopt},
             {whole(50), whole(-100), std::nullopt},
             {whole(50), std::nullopt, std::nullopt},
             {std::nullopt, whole(100), std::nullopt},
             {57.9, 100.9, 57}, // a number object's integer value
             {whole(50), 0.9, std::nullopt},
             {notANumber, whole(100), std::nullopt},
             {whole(50), infinity, std::nullopt},
             {0x1p63, whole(100), std::nullopt},
             {true, whole(1), std::nullopt}, // a boolean is no number
             {whole(50), "100", std::nullopt},
         })) {
        FakePowerEntry battery;
        if (current) {
            battery["CurrentCapacity"] = *current;
        }
        if (maximum) {
            battery["MaxCapacity"] = *maximum;
        }
        EXPECT_EQ(batteryContext(battery).batteryLevelPercent, percent)
            << testing::PrintToString(current) << " of " << testing::PrintToString(maximum);
    }
}

TEST(SystemPowerContextProvider, ReadsBooleansFromNumbersToo) {
    for (const auto& [value, expected] : std::to_array<std::pair<PropertyValue, std::optional<bool>>>({
             {true, true},
             {false, false},
             {whole(1), true},
             {whole(-2), true},
             {whole(0), false},
             {0.5, true},
             {0.0, false},
             {notANumber, std::nullopt},
             {"true", std::nullopt},
             {"", std::nullopt},
         })) {
        const auto power = batteryContext({{"IsCharging", value}, {"FullyCharged", value}});
        EXPECT_EQ(power.isCharging, expected) << testing::PrintToString(value);
        EXPECT_EQ(power.isFullyCharged, expected) << testing::PrintToString(value);
    }
}

TEST(SystemPowerContextProvider, TellsTheTemperatureOfWorkingBatteriesOnly) {
    using Level = BatteryTemperatureLevel;
    for (const auto& [raw, level] : std::to_array<std::pair<PropertyValue, std::optional<Level>>>({
             {whole(3132), Level::high},
             {whole(3131), Level::warm},
             {3131.9, Level::warm}, // the fraction is cut off
             {whole(2981), Level::normal},
             {whole(2531), std::nullopt},
             {whole(3532), std::nullopt},
             {whole(largest), std::nullopt},
             {notANumber, std::nullopt},
             {"3031", std::nullopt},
             {true, std::nullopt},
         })) {
        const auto power = batteryContext({{"Temperature", raw}});
        EXPECT_EQ(power.batteryTemperatureLevel, level) << testing::PrintToString(raw);
        EXPECT_EQ(power.batteryTemperatureCelsius.has_value(), level.has_value())
            << testing::PrintToString(raw);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
