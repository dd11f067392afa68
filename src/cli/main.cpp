#include "app/Version.h"
#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "cli/HelpText.h"
#include "cli/MachineCommands.h"
#include "cli/MetricsCommand.h"
#include "cli/ReplayCommand.h"
#include "cli/UserCommands.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

#include <clocale>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGPIPE is POSIX
#include <unistd.h>

namespace cindertop::cli {

namespace {

/// Commands that need the agent fail and say so themselves.
bool doesWithoutAgent(const Arguments& arguments) {
    switch (arguments.command) {
    case Command::pause:
    case Command::resume:
    case Command::quit:
    case Command::acceptTerms:
        return false;
    case Command::settings:
        return arguments.operands.size() < 2;
    default:
        return true;
    }
}

/// What is shown then is not what the agent knows.
void noteUnreachableAgent(const Arguments& arguments, const std::optional<AgentClient>& agent) {
    if (!agent && doesWithoutAgent(arguments) && doesAgentRun()) {
        reportError(std::string(unreachableAgent));
    }
}

ExitStatus carryOut(const Arguments& arguments, Output& output) {
    switch (arguments.command) {
    case Command::help:
        return exitStatus(output.write(helpText(programTable())));
    case Command::version:
        return exitStatus(output.write("cindertopctl " + std::string(version) + '\n'));
    case Command::replay:
        return replayScenario(arguments, output);
    case Command::record:
        return recordMachine(arguments);
    default:
        break;
    }
    auto agent = AgentClient::find();
    noteUnreachableAgent(arguments, agent);
    if (arguments.command == Command::metrics) {
        return showMetrics(arguments, output, agent);
    }
    if (arguments.command == Command::history || arguments.command == Command::exportDiagnostics) {
        return showStoredThings(arguments, output, agent);
    }
    const bool isShown = arguments.command == Command::status || arguments.command == Command::watch ||
                         arguments.command == Command::offenders;
    return isShown ? showMachine(arguments, output, agent) : steer(arguments, output, agent);
}

ExitStatus run(const std::vector<std::string_view>& words) {
    const auto arguments = parseArguments(words);
    if (!arguments) {
        reportError(arguments.error() + "; see \"cindertopctl --help\"");
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
        reportError(error.what());
        return failure;
    }
}
