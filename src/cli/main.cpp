#include "app/MachineServices.h"
#include "app/Version.h"
#include "cli/Commands.h"
#include "cli/HelpText.h"
#include "cli/SignalDescriptor.h"
#include "platform/linux/LinuxMachine.h"

#include <clocale>
#include <exception>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

enum ExitStatus { success = 0, failure = 1, usageError = 2 };

/// What a look finds is shown by itself; a journal full of looks would help nobody.
class NoLog final : public UnifiedLog {
public:
    void write(UnifiedLogLevel /*level*/, std::string_view /*subsystem*/, std::string_view /*category*/,
               std::string_view /*text*/) override {}
};

void complain(const std::string& sentence) {
    // Where even this cannot be written, the exit status tells.
    [[maybe_unused]] const auto ignored = Output(STDERR_FILENO).write("cindertopctl: " + sentence + '\n');
}

ExitStatus exitStatus(const WriteResult& written) {
    if (written || written.error().isReaderGone()) {
        return success;
    }
    complain("cannot write the output: " + written.error().message());
    return failure;
}

ExitStatus exitStatus(const std::expected<std::optional<int>, WriteError>& watched) {
    if (!watched) {
        return exitStatus(WriteResult(std::unexpected(watched.error())));
    }
    if (*watched) {
        dieBy(**watched);
    }
    return success;
}

MachineServices servicesOf(linux_platform::LinuxMachine& machine) {
    return {.clock = machine.clock(),
            .process = machine.processInformation(),
            .pressureReader = DarwinThermalPressureReader::sharedOnFirstUse(machine.thermalPressure(),
                                                                            std::make_shared<NoLog>()),
            .temperatureEvents = machine.temperatureEvents(),
            .displays = machine.displays(),
            .powerSources = machine.powerSources(),
            .hostStatistics = machine.hostStatistics(),
            .processes = machine.processes(),
            .applications = machine.applications(),
            .comparison = LocalizedComparison::ofUser(),
            .sources = [&machine] { return machine.sources(); }};
}

/// The list of offenders without the limits of a page.
ProcessOffenderConfiguration everyOffender(const ProcessInformation& process) {
    auto configuration = ProcessOffenderConfiguration::defaultConfiguration(process);
    configuration.minimumVisibleCPUPercent = 0;
    configuration.maximumOffenderCount = ProcessOffenderConfiguration::noMaximum;
    configuration.maximumChildCount = ProcessOffenderConfiguration::noMaximum;
    return configuration;
}

ProcessOffenderConfiguration configurationFor(Command command, const ProcessInformation& process) {
    return command == Command::offenders ? everyOffender(process)
                                         : ProcessOffenderConfiguration::defaultConfiguration(process);
}

ExitStatus runOnMachine(const Arguments& arguments, Output& output) {
    linux_platform::LinuxMachine machine;
    MachineSampler sampler(servicesOf(machine),
                           configurationFor(arguments.command, machine.processInformation()));
    CommandEnvironment environment{
        .sampler = sampler,
        .output = output,
        .terminal = [&output] { return traitsOf(readTerminalFacts(output.descriptor())); },
        .temperatures = TemperatureFormatter::ofUser(),
        .sleep = [](Seconds duration) { std::this_thread::sleep_for(duration); }};
    switch (arguments.command) {
    case Command::status:
        return exitStatus(showStatus(environment, arguments.format));
    case Command::offenders:
        return exitStatus(showOffenders(environment, arguments.format));
    default:
        return exitStatus(watch(environment, arguments.format));
    }
}

ExitStatus run(const std::vector<std::string_view>& words) {
    const auto arguments = parseArguments(words);
    if (!arguments) {
        complain(arguments.error() + "; see \"cindertopctl --help\"");
        return usageError;
    }
    Output output(STDOUT_FILENO);
    if (arguments->command == Command::help) {
        return exitStatus(output.write(helpText()));
    }
    if (arguments->command == Command::version) {
        return exitStatus(output.write("cindertopctl " + std::string(version) + '\n'));
    }
    return runOnMachine(*arguments, output);
}

/// A file that is opened later must not take the number of a standard descriptor that was closed, and our
/// output with it. What is opened here refuses the wrong direction, so that writing still fails.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace

} // namespace cindertop::cli

int main(int argumentCount, char** arguments) {
    using namespace cindertop::cli;
    occupyStandardDescriptors();
    std::setlocale(LC_ALL, "");
    ::signal(SIGPIPE, SIG_IGN); // a write to a reader that is gone fails instead
    try {
        return run({arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount});
    } catch (const std::exception& error) {
        complain(error.what());
        return failure;
    }
}
