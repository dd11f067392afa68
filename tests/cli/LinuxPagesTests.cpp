#include "app/MachineSampler.h"
#include "cli/Pages.h"
#include "fakes/FakeMachine.h"
#include "platform/linux/LinuxMachine.h"
#include "platform/linux/OperatingSystemVersion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace cindertop::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

/// The status page of a machine from its file tree, through everything between the files and the text.
std::string statusOf(const std::string& fixture) {
    const std::filesystem::path tree = std::filesystem::path(CINDERTOP_FIXTURES) / fixture;
    linux_platform::LinuxMachine machine({.proc = tree / "proc", .sys = tree / "sys"});
    const auto services = machine.services();
    MachineSampler sampler(services, fakes::pressureReaderOf(services),
                           ProcessOffenderConfiguration::defaultConfiguration(services.process));
    sampler.prime();
    const PageStyle style{.format = {.columns = 80, .charset = Charset::unicode},
                          .temperatures = TemperatureFormatter("en_GB", TemperatureFormatter::Unit::celsius),
                          .system = linux_platform::operatingSystem};
    return encoded(statusPage({sampler.sampleNow(), {}}, style), style.format);
}

TEST(LinuxPages, ALaptopTellsItsHeat) {
    EXPECT_THAT(statusOf("thinkpad"),
                AllOf(StartsWith("14 of 100  Normal, stable\n"),
                      HasSubstr("Thermal       state nominal, pressure nominal\n"),
                      HasSubstr("Temperature   51°C · slows from 105°C\n              CPU Package 0       "
                                "  51°C   CPU Core 0            48°C\n"),
                      HasSubstr("Displays      1 active: 1 built in, 0 external\n"),
                      HasSubstr("  thermal zones        available: 3 zones\n")));
}

TEST(LinuxPages, ASensorOfABatterySaysNothingAboutTheProcessor) {
    EXPECT_THAT(statusOf("apple-silicon"),
                AllOf(StartsWith("No heat readings"), HasSubstr("Battery Hotspot"),
                      HasSubstr("Power         AC power, battery 71 %, charging, 31°C\n")));
}

TEST(LinuxPages, ABareMachineSaysWhatIsMissing) {
    EXPECT_THAT(statusOf("bare-vm"),
                AllOf(StartsWith("No heat readings"),
                      HasSubstr("Temperature   not available: no known temperature sensor\n"),
                      HasSubstr("Displays      not available\n"),
                      HasSubstr("  thermal zones        not available: no thermal zones\n")));
}

} // namespace
} // namespace cindertop::cli
