#include "ThermalReadings.h"
#include "fakes/FakeTemperatureEvents.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <limits>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using Kind = ThermalSensorKind;

TEST(ExperimentalSensorTemperatureProvider, ListsPlausibleNamedSensorsInTheSystemsOrder) {
    fakes::FakeTemperatureEvents events;
    events.sensors = {
        {"PMU tdie1", 55.5},
        {"too hot", 150},
        {"cold", -40},
        {"warm", 130},
        {std::nullopt, 50},
        {"", 50},
        {std::int64_t{7}, 50},
        {true, 50},
        {"no event", std::nullopt},
        {"no number", std::numeric_limits<double>::quiet_NaN()},
        {"NAND CH0 temp", 40},
        {"PMU tdie1", 56},
    };
    ExperimentalSensorTemperatureProvider provider(events);
    const std::vector expected{sensor(Kind::cpu, 55.5, "PMU tdie1"), sensor(Kind::other, -40, "cold"),
                               sensor(Kind::other, 130, "warm"), sensor(Kind::storage, 40, "NAND CH0 temp"),
                               sensor(Kind::cpu, 56, "PMU tdie1")};
    EXPECT_EQ(provider.readTemperatures(), expected);
    EXPECT_EQ(events.lastMatching, (TemperatureEventClient::Matching{65280, 5}));

    events.sensors = {{"cold", 20}};
    EXPECT_EQ(provider.readTemperatures(), std::vector{sensor(Kind::other, 20, "cold")}) << "nothing is kept";
    EXPECT_EQ(events.clientsCreated, 2);
}

TEST(ExperimentalSensorTemperatureProvider, EveryFailureIsAnEmptyList) {
    for (const auto part :
         {&fakes::FakeTemperatureEvents::hasClient, &fakes::FakeTemperatureEvents::hasServices,
          &fakes::FakeTemperatureEvents::supported}) {
        fakes::FakeTemperatureEvents events;
        events.sensors = {{"cpu", 50}};
        events.*part = false;
        EXPECT_TRUE(ExperimentalSensorTemperatureProvider(events).readTemperatures().empty());
        EXPECT_EQ(events.clientsCreated, events.supported ? 1 : 0) << "an unsupported system is left alone";
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
