#include "cli/AgentClient.h"

#include "platform/linux/AgentLock.h"
#include "platform/linux/ProcessHandle.h"
#include "support/UserFolders.h"

#include <systemd/sd-bus.h>

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

struct ErrorHolder {
    sd_bus_error error{};

    ErrorHolder() = default;
    ErrorHolder(const ErrorHolder&) = delete;
    ErrorHolder& operator=(const ErrorHolder&) = delete;

    ~ErrorHolder() { sd_bus_error_free(&error); }
};

/// An agent that runs owns its name; asking for the owner never starts one.
bool hasOwner(sd_bus* bus) {
    int answer = 0;
    sd_bus_message* reply = nullptr;
    const int code =
        sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "NameHasOwner", nullptr, &reply, "s", agentName);
    const bool isRead = code >= 0 && sd_bus_message_read(reply, "b", &answer) >= 0;
    sd_bus_message_unref(reply);
    return isRead && answer != 0;
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

} // namespace

void AgentClient::Closer::operator()(sd_bus* bus) const {
    sd_bus_flush_close_unref(bus);
}

void AgentClient::MessageCloser::operator()(sd_bus_message* message) const {
    sd_bus_message_unref(message);
}

std::optional<AgentClient> AgentClient::find() {
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0) {
        return std::nullopt;
    }
    AgentClient client(bus);
    sd_bus_set_method_call_timeout(bus, static_cast<std::uint64_t>(timeLimit.count()));
    return hasOwner(bus) ? std::optional(std::move(client)) : std::nullopt;
}

AgentClient::Result<AgentClient::Message> AgentClient::newCall(const char* interface, const char* method) {
    sd_bus_message* message = nullptr;
    const int code =
        sd_bus_message_new_method_call(bus_.get(), &message, agentName, agentPath, interface, method);
    if (code < 0) {
        return failure(code);
    }
    sd_bus_message_set_auto_start(message, 0);
    return Message(message);
}

AgentClient::Result<AgentClient::Message> AgentClient::answerTo(Message call) {
    ErrorHolder holder;
    sd_bus_message* reply = nullptr;
    const int code = sd_bus_call(bus_.get(), call.get(), 0, &holder.error, &reply);
    if (code < 0) {
        const bool isAnswer = sd_bus_error_is_set(&holder.error) != 0 && holder.error.message != nullptr;
        return isAnswer ? Result<Message>(std::unexpected(std::string(holder.error.message))) : failure(code);
    }
    return Message(reply);
}

AgentClient::Result<std::string> AgentClient::snapshot() {
    auto call = newCall(propertiesInterface, "Get");
    if (!call) {
        return std::unexpected(call.error());
    }
    sd_bus_message_append(call->get(), "ss", agentInterface, "Snapshot");
    const auto answer = answerTo(std::move(*call));
    if (!answer) {
        return std::unexpected(answer.error());
    }
    const char* text = nullptr;
    const int code = sd_bus_message_read(answer->get(), "v", "s", &text);
    return code > 0 ? Result<std::string>(text) : failure(code);
}

AgentClient::Result<void> AgentClient::call(const char* method) {
    auto call = newCall(agentInterface, method);
    if (!call) {
        return std::unexpected(call.error());
    }
    const auto answer = answerTo(std::move(*call));
    return answer ? Result<void>() : std::unexpected(answer.error());
}

AgentClient::Result<int> AgentClient::agentProcess() {
    ErrorHolder holder;
    sd_bus_message* reply = nullptr;
    std::uint32_t process = 0;
    int code = sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "GetConnectionUnixProcessID", &holder.error, &reply,
                                  "s", agentName);
    const Message message(reply);
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
    auto call = newCall(agentInterface, "Settings");
    if (!call) {
        return std::unexpected(call.error());
    }
    const auto answer = answerTo(std::move(*call));
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
    auto call = newCall(agentInterface, "Set");
    if (!call) {
        return std::unexpected(call.error());
    }
    int code = sd_bus_message_append(call->get(), "s", name.c_str());
    if (code >= 0) {
        code = appendValue(call->get(), value);
    }
    if (code < 0) {
        return failure(code);
    }
    const auto answer = answerTo(std::move(*call));
    return answer ? Result<void>() : std::unexpected(answer.error());
}

AgentClient::Result<void> AgentClient::exportDiagnostics(const std::string& file) {
    auto call = newCall(agentInterface, "ExportDiagnostics");
    if (!call) {
        return std::unexpected(call.error());
    }
    if (const int code = sd_bus_message_append(call->get(), "s", file.c_str()); code < 0) {
        return failure(code);
    }
    const auto answer = answerTo(std::move(*call));
    return answer ? Result<void>() : std::unexpected(answer.error());
}

} // namespace cindertop::cli
