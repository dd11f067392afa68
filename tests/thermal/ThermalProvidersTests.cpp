#include "ThermalReadings.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeProcessInformation.h"
#include "fakes/FakeTemperatureEvents.h"
#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <thread>
#include <utility>
#include <vector>

namespace cindertop {
namespace {

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns

struct Machine {
    fakes::FakeClock clock;
    fakes::FakeProcessInformation process;
    std::shared_ptr<fakes::FakeThermalPressureNotifications> notifications =
        std::make_shared<fakes::FakeThermalPressureNotifications>();
    std::shared_ptr<fakes::FakeUnifiedLog> log = std::make_shared<fakes::FakeUnifiedLog>();
    SystemThermalStateProvider provider{
        process,
        DarwinThermalPressureProvider(DarwinThermalPressureReader::ownOnFirstUse(notifications, log)), clock};
};

TEST(SystemThermalStateProvider, MapsTheProcessState) {
    Machine machine;
    for (const auto& [raw, state] : std::to_array<std::pair<int, SystemThermalState>>({
             {0, SystemThermalState::nominal},
             {1, SystemThermalState::fair},
             {2, SystemThermalState::serious},
             {3, SystemThermalState::critical},
             {4, SystemThermalState::unavailable},
             {-1, SystemThermalState::unavailable},
             {std::numeric_limits<int>::max(), SystemThermalState::unavailable},
         })) {
        machine.process.state = raw;
        machine.clock.advance(std::chrono::nanoseconds(1));
        EXPECT_EQ(machine.provider.read(), (ThermalReading{.systemState = state,
                                                           .pressureLevel = ThermalPressureLevel::nominal,
                                                           .temperatures = {},
                                                           .dataSource = ThermalDataSource::official,
                                                           .measuredAt = machine.clock.time}));
    }
}

TEST(SystemThermalStateProvider, WithoutPressureTheStateStillStands) {
    Machine machine;
    machine.notifications->registrationStatus = 9;
    machine.process.state = 2;
    const auto reading = machine.provider.read();
    EXPECT_EQ(reading.systemState, SystemThermalState::serious);
    EXPECT_EQ(reading.pressureLevel, ThermalPressureLevel::unavailable);
    EXPECT_TRUE(machine.log->lines.empty());
}

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

using Level = ThermalPressureLevel;
using fakes::FakeThermalPressureNotifications;

struct Services {
    std::shared_ptr<FakeThermalPressureNotifications> notifications =
        std::make_shared<FakeThermalPressureNotifications>();
    std::shared_ptr<fakes::FakeUnifiedLog> log = std::make_shared<fakes::FakeUnifiedLog>();
};

fakes::FakeUnifiedLog::Line line(UnifiedLogLevel level, const std::string& text) {
    return {level, std::string(unifiedLogSubsystem), "thermal", text};
}

TEST(DarwinThermalPressureReader, LogsEachChangeOfTheRawStateOnce) {
    const Services services;
    services.notifications->play({0, 0, 2, 2, 0, 7, 7, 3, 4, std::numeric_limits<std::uint64_t>::max(), 1});
    DarwinThermalPressureReader reader(services.notifications, services.log);
    for (const auto level :
         {Level::nominal, Level::nominal, Level::heavy, Level::heavy, Level::nominal, Level::unavailable,
          Level::unavailable, Level::critical, Level::critical, Level::unavailable, Level::moderate}) {
        EXPECT_EQ(reader.currentLevel(), level);
    }
    const auto info = [](const std::string& text) {
        return line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: " + text);
    };
    const auto error = [](const std::string& text) {
        return line(UnifiedLogLevel::error, "Unknown Darwin thermal pressure raw state: " + text);
    };
    EXPECT_EQ(services.log->lines,
              (std::vector{info("0 -> nominal"), info("2 -> heavy"), info("0 -> nominal"), error("7"),
                           info("3 -> critical"), info("4 -> critical"), error("18446744073709551615"),
                           info("1 -> moderate")}));
}

TEST(DarwinThermalPressureReader, AFailedRegistrationIsFinalAndSilent) {
    const Services services;
    services.notifications->registrationStatus = 1;
    {
        DarwinThermalPressureReader reader(services.notifications, services.log);
        services.notifications->registrationStatus = 0;
        EXPECT_EQ(reader.currentLevel(), std::nullopt);
        EXPECT_EQ(reader.currentLevel(), std::nullopt);
    }
    EXPECT_EQ(services.notifications->registeredNames.size(), 1);
    EXPECT_TRUE(services.notifications->cancelledTokens.empty());
    EXPECT_TRUE(services.log->lines.empty());
}

TEST(DarwinThermalPressureReader, AFailedQueryForgetsNothing) {
    const Services services;
    services.notifications->states = {{0, 2}, {5, 3}, {0, 2}};
    DarwinThermalPressureReader reader(services.notifications, services.log);
    EXPECT_EQ(reader.currentLevel(), Level::heavy);
    EXPECT_EQ(reader.currentLevel(), std::nullopt);
    EXPECT_EQ(reader.currentLevel(), Level::heavy);
    EXPECT_EQ(services.log->lines.size(), 1);
}

TEST(DarwinThermalPressureReader, ConcurrentCallersMakeOneReaderAndLogEachChangeOnce) {
    constexpr std::size_t callers = 4;
    constexpr std::size_t readsEach = 100;
    const Services services;
    std::vector<std::uint64_t> states(callers * readsEach, 1);
    std::ranges::fill_n(states.begin(), static_cast<std::ptrdiff_t>(states.size()) / 2, 2);
    services.notifications->play(states);
    const auto source = DarwinThermalPressureReader::ownOnFirstUse(services.notifications, services.log);
    {
        std::vector<std::jthread> threads;
        threads.reserve(callers);
        for (std::size_t caller = 0; caller < callers; ++caller) {
            threads.emplace_back([source] {
                for (std::size_t read = 0; read < readsEach; ++read) {
                    source().currentLevel();
                }
            });
        }
    }
    EXPECT_EQ(services.notifications->registeredNames.size(), 1);
    EXPECT_EQ(services.log->lines,
              (std::vector{line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: 2 -> heavy"),
                           line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: 1 -> moderate")}));
}

// NOLINTEND(modernize-use-designated-initializers)
} // namespace

// NOLINTEND(modernize-use-designated-initializers)

// NOLINTEND(modernize-use-designated-initializers)
} // namespace cindertop
