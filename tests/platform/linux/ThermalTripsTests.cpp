#include "platform/linux/ThermalTrips.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace cindertop::linux_platform {
namespace {

constexpr Trip passive85{TripKind::passive, 85000};
constexpr Trip active70{TripKind::active, 70000};
constexpr Trip hot105{TripKind::hot, 105000};
constexpr Trip critical110{TripKind::critical, 110000};

TEST(ThermalTrips, TurnATemperatureIntoAState) {
    struct Case {
        std::vector<Trip> trips;
        MilliCelsius temperature;
        int state;
        bool isAtLimit = false;
    };

    for (const auto& [trips, temperature, state, isLimit] : std::to_array<Case>({
             {{passive85, critical110}, 74999, 0},
             {{passive85, critical110}, 75000, 1},
             {{passive85, critical110}, 84999, 1},
             {{passive85, critical110}, 85000, 2},
             {{passive85, critical110}, 104999, 2},
             {{passive85, critical110}, 105000, 3},
             {{passive85, critical110}, 106999, 3},
             {{passive85, critical110}, 107000, 3, true},
             {{passive85, hot105, critical110}, 104999, 2},
             {{passive85, hot105, critical110}, 105000, 3, true},
             {{critical110}, 89999, 0},
             {{critical110}, 90000, 1},
             {{critical110}, 104999, 1},
             {{critical110}, 105000, 3},
             {{passive85, critical110},
              90000,
              2}, // the margin below critical is for zones without a passive trip
             {{active70, critical110}, 69999, 0},
             {{active70, critical110}, 70000, 1},
             {{active70}, 149000, 1},
             {{hot105}, 104999, 0},
             {{hot105}, 105000, 3, true},
             {{passive85, {TripKind::passive, 60000}}, 60000, 2}, // the lowest of a kind
             {{{TripKind::active, 50000}, active70, passive85}, 50000, 1},
             {{passive85}, -5000, 0},
         })) {
        const auto points = TripPoints::of(trips);
        EXPECT_EQ(thermalStateOf(points, temperature), state) << temperature;
        EXPECT_EQ(isAtLimit(points, temperature), isLimit) << temperature;
    }
}

TEST(ThermalTrips, IgnoresPlaceholders) {
    for (const MilliCelsius placeholder : {-274000, -32768, 0, 150000, 255000}) {
        const std::array trips{Trip{TripKind::passive, placeholder}, Trip{TripKind::critical, placeholder}};
        EXPECT_TRUE(TripPoints::of(trips).areEmpty()) << placeholder;
    }
    const std::array edges{Trip{TripKind::passive, 1}, Trip{TripKind::critical, 149999},
                           Trip{TripKind::passive, 0}};
    EXPECT_EQ(TripPoints::of(edges), (TripPoints{.passive = 1, .active = {}, .hot = {}, .critical = 149999}));
}

TEST(ThermalTrips, KnowsTheKindsByTheirNames) {
    EXPECT_EQ(parseTripKind("passive\n"), TripKind::passive);
    EXPECT_EQ(parseTripKind("active"), TripKind::active);
    EXPECT_EQ(parseTripKind("active3\n"), TripKind::active);
    EXPECT_EQ(parseTripKind("hot"), TripKind::hot);
    EXPECT_EQ(parseTripKind("critical"), TripKind::critical);
    for (const auto* const text : {"", "Critical", "hotter", "passive2", "0"}) {
        EXPECT_EQ(parseTripKind(text), std::nullopt) << text;
    }
}

TEST(ThermalTrips, CountInZonesOfTheMachineOnly) {
    for (const auto* const type :
         {"acpitz", "B0D4", "cpu-thermal", "SEN1", "TSKN", "gpu_thermal", "soc-thermal"}) {
        EXPECT_TRUE(hasMachineTrips(type)) << type;
    }
    for (const auto* const type :
         {"x86_pkg_temp", "BAT0", "macsmc-battery", "main-Battery", "iwlwifi_1", "ath10k", "mt7921_phy0",
          "nvme", "bnxt", "mlxsw-module1", "eth0", "modem0-thermal"}) {
        EXPECT_FALSE(hasMachineTrips(type)) << type;
    }
}

} // namespace
} // namespace cindertop::linux_platform
