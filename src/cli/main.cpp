#include "app/Version.h"
#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "cli/HelpText.h"
#include "cli/MachineCommands.h"
#include "cli/ProgramEnd.h"
#include "cli/ReplayCommand.h"
#include "cli/StandardDescriptors.h"
#include "cli/UserCommands.h"

#include <clocale>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGPIPE is POSIX
#include <unistd.h>

namespace cindertop::cli {

namespace {

ExitStatus carryOut(const Arguments& arguments, Output& output) {
    switch (arguments.command) {
    case Command::help:
        return exitStatus(output.write(helpText()));
    case Command::version:
        return exitStatus(output.write("cindertopctl " + std::string(version) + '\n'));
    case Command::replay:
        return replayScenario(arguments, output);
    case Command::record:
        return recordMachine(arguments);
    case Command::history:
    case Command::exportDiagnostics:
        return showStoredThings(arguments, output);
    default:
        break;
    }
    auto agent = AgentClient::find();
    const bool isShown = arguments.command == Command::status || arguments.command == Command::watch ||
                         arguments.command == Command::offenders;
    return isShown ? showMachine(arguments, output, agent) : steer(arguments, output, agent);
}

ExitStatus run(const std::vector<std::string_view>& words) {
    const auto arguments = parseArguments(words);
    if (!arguments) {
        complain(arguments.error() + "; see \"cindertopctl --help\"");
        return usageError;
    }
    Output output(STDOUT_FILENO);
    return carryOut(*arguments, output);
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
