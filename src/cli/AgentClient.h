#pragma once

#include "persistence/Preferences.h"
#include "platform/linux/BusHandles.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop::cli {

/// What every command says where an agent runs that is not on this session's bus: it runs in another session,
/// or the bus was lost and is not back yet.
inline constexpr std::string_view unreachableAgent =
    "an agent runs, but it cannot be reached over this session's bus";

/// Whether this user's agent runs, on whatever bus or on none.
bool doesAgentRun();

/// Why no agent answers, for commands that need one.
std::string whyNoAgent();

/// Talks to the running agent over the session bus. Calls wait at most two seconds; an error is one sentence.
class AgentClient {
public:
    template <typename Value>
    using Result = std::expected<Value, std::string>;
    using Settings = std::vector<std::pair<std::string, PreferenceValue>>;

    /// None without a session bus, and when no agent is on it.
    static std::optional<AgentClient> find();

    /// The agent's JSON, see docs/json.md.
    Result<std::string> snapshot();
    /// Calls a method without arguments and answers: "Pause", "Resume", "AcceptTerms", "ResetSettings",
    /// "SaveHistory".
    Result<void> call(const char* method);
    /// Ends the agent, and returns when its process has ended.
    Result<void> quit();
    Result<Settings> settings();
    Result<void> set(const std::string& name, const PreferenceValue& value);
    /// `file` is an absolute path, for the agent to write.
    Result<void> exportDiagnostics(const std::string& file);

private:
    explicit AgentClient(linux_platform::BusConnection bus) : bus_(std::move(bus)) {}

    Result<int> agentProcess();
    /// Calls a method and reads what it answers. Where the agent refuses, the error is its sentence.
    template <typename Append>
    Result<linux_platform::BusMessage> ask(const char* interface, const char* method, Append append);

    linux_platform::BusConnection bus_;
};

} // namespace cindertop::cli
