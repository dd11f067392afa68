#pragma once

#include "app/MachineSampler.h"
#include "app/ThermalAssistantPresentation.h"
#include "assistant/CinderInsight.h"
#include "report/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// What a program that monitors continuously derives from a snapshot.
struct MachineAdvice {
    CinderRecommendationSnapshot recommendation;
    ThermalAssistantPresentation presentation;

    bool operator==(const MachineAdvice&) const = default;
};

/// A machine as a program of ours tells it.
struct MachineReport {
    MachineSnapshot snapshot;
    std::optional<MachineAdvice> advice{}; ///< none when nothing was measured over time
    std::string note{};                    ///< what the user should know about the rest; may be empty
    std::string document{};                ///< the JSON that it was read from; empty when measured here

    bool operator==(const MachineReport&) const = default;
};

/// A machine as one object for other programs. Its shape is described in docs/json.md; scripts depend on it.
Json machineJson(const MachineReport& report);

/// The same where nothing is measured: all of it is null.
Json unmeasuredMachineJson();

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
