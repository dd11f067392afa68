#pragma once

#include <string>
#include <string_view>

namespace cindertop::cli {

/// What every command says where an agent runs that is not on this session's bus: it runs in another session,
/// or the bus was lost and is not back yet.
inline constexpr std::string_view unreachableAgent =
    "an agent runs, but it cannot be reached over this session's bus";

/// Whether this user's agent runs, on whatever bus or on none.
bool doesAgentRun();

/// Why no agent answers, for commands that need one.
std::string whyNoAgent();

} // namespace cindertop::cli
