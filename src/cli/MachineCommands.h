#pragma once

#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "cli/MachineSource.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

#include <memory>
#include <optional>

namespace cindertop::cli {

/// How a machine is measured here.
struct Measuring {
    bool listsEverything = false; ///< applications without the limits of a page
    SampledMachine::Census census = SampledMachine::Census::whenDue;
};

/// The live machine, measured here.
std::unique_ptr<MachineSource> measuredMachine(Measuring measuring);

/// The machine as the agent tells it, or measured here without one. The agent must outlive the source.
std::unique_ptr<MachineSource> machineSource(Measuring measuring, std::optional<AgentClient>& agent);

/// "status", "watch" and "offenders": as the agent tells it, or measured here without one.
ExitStatus showMachine(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent);

/// "record": writes what this machine does into a scenario file.
ExitStatus recordMachine(const Arguments& arguments);

} // namespace cindertop::cli
