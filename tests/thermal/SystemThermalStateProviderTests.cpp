#include "fakes/FakeClock.h"
#include "fakes/FakeProcessInformation.h"
#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <utility>

namespace cindertop {

namespace {

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

TEST(SystemThermalStateProvider, RegistersWithTheFirstReadOnly) {
    const Machine machine;
    EXPECT_TRUE(machine.notifications->registeredNames.empty());
    const auto copy = machine.provider;
    copy.read();
    machine.provider.read();
    EXPECT_EQ(machine.notifications->registeredNames,
              std::vector<std::string>{"com.apple.system.thermalpressurelevel"});
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

} // namespace

} // namespace cindertop
