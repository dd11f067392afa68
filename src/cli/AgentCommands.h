#pragma once

#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "persistence/AppSettings.h"
#include "platform/UserDefaults.h"
#include "terminal/Output.h"
#include "terminal/TerminalTraits.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>

namespace cindertop::cli {

/// What the commands that steer the agent work with. Everything must outlive the call.
struct AgentEnvironment {
    std::optional<AgentClient>& agent; ///< none: no agent runs, and what can be done without one is
    UserDefaults& defaults;            ///< as they are stored
    AppSettings standard;              ///< the preferences of a user who never chose anything
    Output& output;
    std::function<TerminalTraits()> terminal;
    /// Runs the action while no agent can start; the error says who is in the way.
    std::function<std::expected<void, std::string>(const std::function<void()>&)> whileAlone;
    std::function<std::string()> whyNoAgent; ///< one sentence
};

/// An error is one sentence for the user.
using CommandResult = std::expected<void, std::string>;

/// Pauses or resumes the monitoring of the running agent.
CommandResult pauseAgent(AgentEnvironment& environment);
CommandResult resumeAgent(AgentEnvironment& environment);

/// Ends the running agent, and returns when it has ended.
CommandResult quitAgent(AgentEnvironment& environment);

/// The outer error is one sentence about the user's mistake or the agent's refusal, the inner one the
/// output's.
using PageResult = std::expected<WriteResult, std::string>;

/// Shows the terms of use and accepts them, once and for all.
PageResult acceptTerms(AgentEnvironment& environment);

/// Lists all preferences, shows the one that is named, or changes it.
PageResult settings(AgentEnvironment& environment, const Arguments& arguments);

} // namespace cindertop::cli
