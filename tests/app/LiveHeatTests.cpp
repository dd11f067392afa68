#include "../platform/linux/MachineTree.h"
#include "FakeProgram.h"
#include "platform/linux/LinuxMachine.h"

#include <gtest/gtest.h>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

/// The program with the defaults of a Linux machine, whose heat is read from a machine's files; its processes
/// are fakes.
class LiveHeat : public testing::Test {
public:
    ~LiveHeat() override { program.state.reset(); }

protected:
    LiveHeat() {
        program.machine.operatingSystem = OperatingSystem::gnuLinux;
        program.services = [this] {
            const auto fake = program.machine.services();
            const auto live = machine.services();
            return Machine{.operatingSystem = live.operatingSystem,
                           .clock = fake.clock,
                           .process = live.process,
                           .pressure = live.pressure,
                           .temperatureEvents = live.temperatureEvents,
                           .displays = fake.displays,
                           .powerSources = fake.powerSources,
                           .hostStatistics = fake.hostStatistics,
                           .processes = fake.processes,
                           .applications = fake.applications,
                           .systemValues = fake.systemValues,
                           .comparison = fake.comparison,
                           .sources = {}};
        };
    }

    FakeProgram program;
    linux_platform::MachineTree tree{"surface-like-tablet"};
    linux_platform::LinuxMachine machine{tree.roots(), std::nullopt,
                                         [this] { return program.clock.now().time_since_epoch(); }};
};

TEST_F(LiveHeat, AProcessorAtItsLimitIsSeriousAtOnceAndAnAlertAfterTwoMinutes) {
    const std::filesystem::path chip = "sys/class/hwmon/hwmon1";
    for (const auto* const sensor : {"temp1", "temp2", "temp3"}) {
        tree.attribute(chip / (std::string(sensor) + "_input"), "104000");
        tree.attribute(chip / (std::string(sensor) + "_crit"), "105000");
    }
    auto& state = program.start();
    program.pass(0s);
    EXPECT_EQ(state.published().thermalSnapshot->level, ThermalLevel::serious);
    EXPECT_EQ(state.published().thermalSnapshot->score, 75);
    program.pass(119s);
    EXPECT_TRUE(program.notificationCenter.posted.empty());
    program.pass(3s);
    ASSERT_EQ(program.notificationCenter.posted.size(), 1U);
    EXPECT_EQ(program.notificationCenter.posted[0].content.title, "Sustained Thermal Pressure");
}

TEST_F(LiveHeat, DrivesRestWhileNobodyLooks) {
    const std::filesystem::path chip = "sys/class/hwmon/hwmon7";
    tree.attribute(chip / "name", "nvme").attribute(chip / "temp1_input", "40000");
    tree.attribute(chip / "temp1_label", "Composite");
    const auto storage = [&] {
        const auto temperatures = program.state->machineSnapshot().value().temperatures;
        const auto found =
            std::ranges::find(temperatures, ThermalSensorKind::storage, &TemperatureReading::kind);
        return found == temperatures.end() ? std::nullopt : std::optional(found->age);
    };
    auto& state = program.start();
    program.pass(5s);
    EXPECT_EQ(storage(), std::nullopt);
    state.noteLook();
    program.pass(1s);
    ASSERT_TRUE(storage());
    EXPECT_LT(*storage(), 1s);
    state.noteLook();
    program.pass(8s);
    ASSERT_TRUE(storage());
    EXPECT_GT(*storage(), 7s);
    program.pass(5s);
    EXPECT_EQ(storage(), std::nullopt);
}

} // namespace
} // namespace cindertop
