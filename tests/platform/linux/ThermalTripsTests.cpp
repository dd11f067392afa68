#include "platform/linux/ThermalTrips.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

constexpr Trip acting85{TripKind::passive, 85000, true};
constexpr Trip idle85{TripKind::passive, 85000};
constexpr Trip hot105{TripKind::hot, 105000};
constexpr Trip critical110{TripKind::critical, 110000};

/// The lowest temperatures at which a zone gives each state, and at which it is at its limit.
HeatThresholds thresholds(std::string_view type, std::string_view policy, const std::vector<Trip>& trips) {
    return HeatThresholds::of({.type = type, .policy = policy, .trips = trips});
}

TEST(ThermalTrips, GiveTheThresholdsOfTheirZone) {
    struct Case {
        const char* type;
        const char* policy;
        std::vector<Trip> trips;
        HeatThresholds thresholds; // fair, serious, critical, limit
    };

    for (const auto& [type, policy, trips, expected] : std::to_array<Case>({
             {"acpitz", "step_wise", {acting85, critical110}, {75000, 85000, 105000, 107000}},
             {"acpitz", "step_wise", {critical110, acting85, hot105}, {75000, 85000, 105000, 105000}},
             {"cpu-thermal", "step_wise", {acting85, hot105, critical110}, {75000, 85000, 105000, 107000}},
             {"cpu-thermal", "step_wise", {idle85, critical110}, {85000, {}, 105000, 107000}},
             {"cpu-thermal",
              "step_wise",
              {{TripKind::passive, 95000}, critical110},
              {95000, {}, 105000, 107000}},
             {"cpu-thermal", "step_wise", {critical110}, {90000, {}, 105000, 107000}},
             {"cpu-thermal", "step_wise", {hot105, critical110}, {90000, {}, 105000, 107000}},
             {"cpu-thermal", "step_wise", {{TripKind::hot, 80000}}, {80000, {}, {}, {}}},
             {"acpitz", "", {{TripKind::hot, 80000}}, {{}, {}, 80000, 80000}},
             // the lowest of a kind, whatever their order; a bound trip and an unbound one below it
             {"acpitz", "bang_bang", {acting85, {TripKind::passive, 60000, true}}, {50000, 60000, {}, {}}},
             {"acpitz", "step_wise", {{TripKind::passive, 60000}, acting85}, {60000, 85000, {}, {}}},
             {"acpitz", "step_wise", {acting85, {TripKind::passive, 80000}}, {75000, 85000, {}, {}}},
             // the governor's last passive trip is the one that it holds
             {"soc", "power_allocator", {{TripKind::passive, 70000, true}, acting85}, {70000, 85000, {}, {}}},
             {"soc", "power_allocator", {acting85, {TripKind::passive, 90000}}, {75000, 85000, {}, {}}},
             {"soc", "power_allocator", {{TripKind::passive, 68000}, acting85}, {68000, 85000, {}, {}}},
             {"soc",
              "power_allocator",
              {acting85, {TripKind::passive, 255000, true}},
              {75000, 85000, {}, {}}},
             // a program looks after these
             {"TSR0", "user_space", {acting85, critical110}, {85000, {}, {}, {}}},
             {"acpitz", "user_space", {hot105}, {105000, {}, {}, {}}},
             {"TSR0", "user_space", {critical110}, {90000, {}, {}, {}}},
         })) {
        const auto found = thresholds(type, policy, trips);
        EXPECT_EQ(found.fair, expected.fair) << type << " " << policy;
        EXPECT_EQ(found.serious, expected.serious) << type << " " << policy;
        EXPECT_EQ(found.critical, expected.critical) << type << " " << policy;
        EXPECT_EQ(found.limit, expected.limit) << type << " " << policy;
    }
}

TEST(ThermalTrips, IgnoreWhatIsNone) {
    using enum TripKind;
    for (const Trip& none : std::to_array<Trip>({
             {passive, -274000, true},
             {passive, 0, true},
             {passive, 29999, true},
             {passive, 150000, true},
             {hot, 49999},
             {hot, 255000},
             {critical, -32768},
             {critical, 18800},
             {critical, 49999},
             {critical, 150000},
         })) {
        EXPECT_TRUE(thresholds("acpitz", "step_wise", {none}).areEmpty()) << none.temperature;
        // It is not even a passive trip that keeps a critical one from being announced.
        EXPECT_EQ(thresholds("cpu-thermal", "", {none, critical110}).fair, 90000) << none.temperature;
    }
    EXPECT_EQ(thresholds("acpitz", "", {{passive, 30000, true}}).serious, 30000);
    EXPECT_EQ(thresholds("acpitz", "", {{passive, 149999, true}}).serious, 149999);
    EXPECT_EQ(thresholds("acpitz", "", {{hot, 50000}}).critical, 50000);
    EXPECT_EQ(thresholds("acpitz", "", {{critical, 50000}}).critical, 45000);
}

TEST(ThermalTrips, TheFirmwaresOwnLimitActsLikeATrip) {
    const std::array trips{critical110};
    const auto of = [&](std::string_view policy, std::span<const Trip> some) {
        return HeatThresholds::of(
            {.type = "cpu-thermal", .policy = policy, .trips = some, .firmwareLimit = 80000});
    };
    EXPECT_EQ(of("step_wise", trips), (HeatThresholds{70000, 80000, 105000, 107000}));
    EXPECT_EQ(of("step_wise", {}), (HeatThresholds{70000, 80000, {}, {}}));
    EXPECT_EQ(of("user_space", {}), (HeatThresholds{70000, 80000, {}, {}}));

    EXPECT_EQ(firmwareLimit({"raspberrypi,4-model-b", "brcm,bcm2711"}), 80000);
    EXPECT_EQ(firmwareLimit({"raspberrypi,5-model-b", "brcm,bcm2712"}), 80000);
    EXPECT_EQ(firmwareLimit({"raspberrypi,3-model-b", "brcm,bcm2837"}), std::nullopt);
}

TEST(ThermalTrips, TurnATemperatureIntoAState) {
    constexpr HeatThresholds all{75000, 85000, 105000, 107000};

    struct Case {
        MilliCelsius temperature;
        int state;
        bool isAtLimit = false;
    };

    for (const auto& [temperature, state, isLimit] : std::to_array<Case>({
             {-5000, 0},
             {74999, 0},
             {75000, 1},
             {84999, 1},
             {85000, 2},
             {104999, 2},
             {105000, 3},
             {106999, 3},
             {107000, 3, true},
         })) {
        EXPECT_EQ(thermalStateOf(all, temperature), state) << temperature;
        EXPECT_EQ(isAtLimit(all, temperature), isLimit) << temperature;
    }
    EXPECT_EQ(thermalStateOf({}, 140000), 0);
}

TEST(ThermalTrips, KnowsTheKindsByTheirNames) {
    EXPECT_EQ(parseTripKind("passive\n"), TripKind::passive);
    EXPECT_EQ(parseTripKind("hot"), TripKind::hot);
    EXPECT_EQ(parseTripKind("critical"), TripKind::critical);
    for (const auto* const text : {"", "Critical", "hotter", "passive2", "0", "active", "active3"}) {
        EXPECT_EQ(parseTripKind(text), std::nullopt) << text;
    }
}

TEST(ThermalTrips, CountInZonesOfTheMachineOnly) {
    for (const auto* const type :
         {"acpitz", "B0D4", "TCPU", "cpu-thermal", "SEN1", "TSKN", "gpu_thermal", "soc-thermal"}) {
        EXPECT_TRUE(hasMachineTrips(type)) << type;
    }
    for (const auto* const type : {"x86_pkg_temp", "TCPU_PCI", "BAT0", "macsmc-battery", "main-Battery",
                                   "iwlwifi_1", "ath10k", "mt7921_phy0", "mt7615_phy0", "nvme", "bnxt",
                                   "mlxsw-module1", "eth0", "modem0-thermal", "q6-modem", "wlan-thermal"}) {
        EXPECT_FALSE(hasMachineTrips(type)) << type;
    }
}

} // namespace
} // namespace cindertop::linux_platform
