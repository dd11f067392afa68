#pragma once

#include "app/MachineJson.h"
#include "app/MachineSampler.h"

#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// A machine as another program of ours tells it.
struct MachineReport {
    MachineSnapshot snapshot;
    std::optional<MachineVerdict> verdict; ///< none when nothing was measured over time
    std::string note{};                    ///< what the user should know about the rest; may be empty

    bool operator==(const MachineReport&) const = default;
};

/// Reads what `machineJson` wrote. None for anything else, and while that program measures nothing.
std::optional<MachineReport> machineReport(std::string_view text);

/// Why an agent that answers may have measured nothing.
struct AgentCondition {
    bool isPaused;
    bool areTermsAccepted;

    bool operator==(const AgentCondition&) const = default;
};

/// Reads what the agent writes behind the machine; none for anything else.
std::optional<AgentCondition> agentCondition(std::string_view text);

} // namespace cindertop
