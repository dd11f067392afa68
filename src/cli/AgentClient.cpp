#include "cli/AgentClient.h"

#include "platform/linux/AgentLock.h"
#include "platform/linux/ProcessHandle.h"
#include "support/UserFolders.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>

namespace cindertop::cli {

bool doesAgentRun() {
    return linux_platform::AgentLock::isHeld(UserFolders::ofUser().programData());
}

std::string whyNoAgent() {
    return std::string(doesAgentRun() ? unreachableAgent : "no agent runs; start \"cindertop\" first");
}

namespace {

using linux_platform::BusError;
using linux_platform::BusMessage;

constexpr const char* agentName = "app.cindertop.Agent";
constexpr const char* agentPath = "/app/cindertop/Agent";
constexpr const char* agentInterface = "app.cindertop.Agent";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr std::chrono::microseconds timeLimit{std::chrono::seconds{2}};

/// It may have to write everything to a slow disk.
constexpr std::chrono::seconds longestEnd{15};

/// sd-bus returns negative error numbers.
std::unexpected<std::string> failure(int code) {
    return std::unexpected("the agent cannot be reached: " +
                           std::error_code(-code, std::generic_category()).message());
}

/// An agent that runs owns its name; asking for the owner never starts one.
bool hasOwner(sd_bus* bus) {
    int answer = 0;
    sd_bus_message* reply = nullptr;
    const int code =
        sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "NameHasOwner", nullptr, &reply, "s", agentName);
    const BusMessage owned(reply);
    return code >= 0 && sd_bus_message_read(reply, "b", &answer) >= 0 && answer != 0;
}

std::optional<PreferenceValue> readValue(sd_bus_message* message) {
    const char* contents = nullptr;
    char type = 0;
    if (sd_bus_message_peek_type(message, &type, &contents) < 0 || contents == nullptr) {
        return std::nullopt;
    }
    switch (contents[0]) {
    case SD_BUS_TYPE_BOOLEAN: {
        int flag = 0;
        return sd_bus_message_read(message, "v", "b", &flag) > 0 ? std::optional<PreferenceValue>(flag != 0)
                                                                 : std::nullopt;
    }
    case SD_BUS_TYPE_INT64: {
        std::int64_t number = 0;
        return sd_bus_message_read(message, "v", "x", &number) > 0 ? std::optional<PreferenceValue>(number)
                                                                   : std::nullopt;
    }
    case SD_BUS_TYPE_STRING: {
        const char* text = nullptr;
        return sd_bus_message_read(message, "v", "s", &text) > 0
                   ? std::optional<PreferenceValue>(std::string(text))
                   : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

int appendValue(sd_bus_message* message, const PreferenceValue& value) {
    if (const auto* const flag = std::get_if<bool>(&value)) {
        return sd_bus_message_append(message, "v", "b", *flag ? 1 : 0);
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return sd_bus_message_append(message, "v", "x", *number);
    }
    return sd_bus_message_append(message, "v", "s", std::get<std::string>(value).c_str());
}

int noArguments(sd_bus_message* /*call*/) {
    return 0;
}

AgentClient::Result<void> withoutValue(const AgentClient::Result<BusMessage>& answer) {
    return answer ? AgentClient::Result<void>() : std::unexpected(answer.error());
}

} // namespace

std::optional<AgentClient> AgentClient::find() {
    auto bus = linux_platform::openBus({}, sd_bus_open_user);
    if (!bus) {
        return std::nullopt;
    }
    sd_bus_set_method_call_timeout(bus.get(), static_cast<std::uint64_t>(timeLimit.count()));
    return hasOwner(bus.get()) ? std::optional(AgentClient(std::move(bus))) : std::nullopt;
}

template <typename Append>
AgentClient::Result<BusMessage> AgentClient::ask(const char* interface, const char* method, Append append) {
    const auto call = linux_platform::newCall(bus_.get(), {agentName, agentPath, interface}, method);
    if (!call) {
        return failure(-ENOMEM);
    }
    if (const int code = append(call.get()); code < 0) {
        return failure(code);
    }
    BusError holder;
    sd_bus_message* reply = nullptr;
    const int code = sd_bus_call(bus_.get(), call.get(), 0, &holder.error, &reply);
    if (code < 0) {
        const bool isAnswer = sd_bus_error_is_set(&holder.error) != 0 && holder.error.message != nullptr;
        return isAnswer ? Result<BusMessage>(std::unexpected(std::string(holder.error.message)))
                        : failure(code);
    }
    return BusMessage(reply);
}

AgentClient::Result<std::string> AgentClient::snapshot() {
    const auto answer = ask(propertiesInterface, "Get", [](sd_bus_message* call) {
        return sd_bus_message_append(call, "ss", agentInterface, "Snapshot");
    });
    if (!answer) {
        return std::unexpected(answer.error());
    }
    const char* text = nullptr;
    const int code = sd_bus_message_read(answer->get(), "v", "s", &text);
    return code > 0 ? Result<std::string>(text) : failure(code);
}

AgentClient::Result<void> AgentClient::call(const char* method) {
    return withoutValue(ask(agentInterface, method, noArguments));
}

AgentClient::Result<int> AgentClient::agentProcess() {
    BusError holder;
    sd_bus_message* reply = nullptr;
    std::uint32_t process = 0;
    int code = sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "GetConnectionUnixProcessID", &holder.error, &reply,
                                  "s", agentName);
    const BusMessage message(reply);
    if (code >= 0) {
        code = sd_bus_message_read(reply, "u", &process);
    }
    return code < 0 ? Result<int>(failure(code)) : static_cast<int>(process);
}

AgentClient::Result<void> AgentClient::quit() {
    const auto process = agentProcess();
    if (!process) {
        return std::unexpected(process.error());
    }
    const auto handle = linux_platform::ProcessHandle::open(*process);
    auto told = call("Quit");
    if (told && handle && !handle->waitForEnd(longestEnd)) {
        return std::unexpected("the agent was told to end, but still runs");
    }
    return told;
}

AgentClient::Result<AgentClient::Settings> AgentClient::settings() {
    const auto answer = ask(agentInterface, "Settings", noArguments);
    if (!answer) {
        return std::unexpected(answer.error());
    }
    auto* const message = answer->get();
    Settings settings;
    int code = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    while (code > 0 && (code = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv")) > 0) {
        const char* name = nullptr;
        code = sd_bus_message_read(message, "s", &name);
        const auto value = code > 0 ? readValue(message) : std::nullopt;
        if (!value) {
            return std::unexpected("the agent answers in a way that this program does not know");
        }
        settings.emplace_back(name, *value);
        code = sd_bus_message_exit_container(message);
    }
    return code < 0 ? Result<Settings>(failure(code)) : settings;
}

AgentClient::Result<void> AgentClient::set(const std::string& name, const PreferenceValue& value) {
    return withoutValue(ask(agentInterface, "Set", [&](sd_bus_message* call) {
        const int code = sd_bus_message_append(call, "s", name.c_str());
        return code < 0 ? code : appendValue(call, value);
    }));
}

AgentClient::Result<void> AgentClient::exportDiagnostics(const std::string& file) {
    return withoutValue(ask(agentInterface, "ExportDiagnostics", [&file](sd_bus_message* call) {
        return sd_bus_message_append(call, "s", file.c_str());
    }));
}

} // namespace cindertop::cli
