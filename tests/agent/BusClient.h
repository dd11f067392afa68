#pragma once

#include "platform/qt/EventLoop.h"

#include <systemd/sd-bus.h>

#include <QSocketNotifier>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace cindertop::agent {

/// The values of a dictionary as texts: "true", "42", "normal".
using Texts = std::map<std::string, std::string>;

/// One PropertiesChanged signal.
struct Announcement {
    Texts changed;
    std::vector<std::string> invalidated;
};

/// Another program on the bus: asks the agent and hears what it announces, while the event loop runs.
class BusClient {
public:
    explicit BusClient(const std::string& address) {
        require(sd_bus_new(&bus_));
        require(sd_bus_set_address(bus_, address.c_str()));
        require(sd_bus_set_bus_client(bus_, 1));
        require(sd_bus_start(bus_));
        notifier_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                         [this] { process(); });
        require(sd_bus_match_signal(bus_, nullptr, nullptr, path, properties, "PropertiesChanged",
                                    onAnnouncement, this));
    }

    ~BusClient() { sd_bus_flush_close_unref(bus_); }

    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;

    std::vector<Announcement> announcements;

    /// The name of the error, or nothing, of a call with texts as arguments.
    std::string errorOf(const char* interface, const char* member,
                        const std::vector<std::string>& texts = {}) {
        sd_bus_message* const question = newQuestion(interface, member, texts);
        return ask(question, [](sd_bus_message* answer) {
            const auto* const error = sd_bus_message_get_error(answer);
            return std::string(error == nullptr ? "" : error->name);
        });
    }

    Texts allProperties(const char* ofInterface) {
        return ask(newQuestion(properties, "GetAll", {ofInterface}), readTexts);
    }

    std::string property(const char* name) {
        return ask(newQuestion(properties, "Get", {agentName, name}), readVariant);
    }

    std::string introspection() {
        return ask(newQuestion("org.freedesktop.DBus.Introspectable", "Introspect", {}),
                   [](sd_bus_message* answer) { return readText(answer); });
    }

    /// Calls without wanting an answer.
    void tell(const char* member) {
        sd_bus_message* const message = newQuestion(agentName, member, {});
        require(sd_bus_message_set_expect_reply(message, 0));
        require(sd_bus_send(bus_, message, nullptr));
        sd_bus_message_unref(message);
    }

private:
    static constexpr const char* agentName = "app.cindertop.Agent";
    static constexpr const char* path = "/app/cindertop/Agent";
    static constexpr const char* properties = "org.freedesktop.DBus.Properties";

    static int require(int result) {
        if (result < 0) {
            throw std::runtime_error("sd-bus error " + std::to_string(-result));
        }
        return result;
    }

    sd_bus_message* newQuestion(const char* interface, const char* member,
                                const std::vector<std::string>& texts) {
        sd_bus_message* message = nullptr;
        require(sd_bus_message_new_method_call(bus_, &message, agentName, path, interface, member));
        for (const auto& text : texts) {
            require(sd_bus_message_append(message, "s", text.c_str()));
        }
        return message;
    }

    template <typename Read>
    auto ask(sd_bus_message* question, Read read) -> decltype(read(question)) {
        std::uint64_t serial = 0;
        require(sd_bus_send(bus_, question, &serial));
        sd_bus_message_unref(question);
        sd_bus_message* answer = nullptr;
        desktop::runUntil([&] {
            const auto found = answers_.find(serial);
            answer = found == answers_.end() ? nullptr : found->second;
            return answer != nullptr;
        });
        if (answer == nullptr) {
            throw std::runtime_error("no answer");
        }
        answers_.erase(serial);
        const auto result = read(answer);
        sd_bus_message_unref(answer);
        return result;
    }

    void process() {
        sd_bus_message* message = nullptr;
        while (sd_bus_process(bus_, &message) > 0) {
            std::uint64_t serial = 0;
            if (message != nullptr && sd_bus_message_get_reply_cookie(message, &serial) >= 0) {
                answers_[serial] = sd_bus_message_ref(message);
            }
            sd_bus_message_unref(message);
            message = nullptr;
        }
    }

    static std::string readText(sd_bus_message* message) {
        const char* text = nullptr;
        require(sd_bus_message_read(message, "s", &text));
        return text;
    }

    static std::string readVariant(sd_bus_message* message) {
        const char* type = nullptr;
        require(sd_bus_message_peek_type(message, nullptr, &type));
        std::string text;
        if (*type == 's') {
            const char* value = nullptr;
            require(sd_bus_message_read(message, "v", "s", &value));
            text = value;
        } else if (*type == 'b') {
            int value = 0;
            require(sd_bus_message_read(message, "v", "b", &value));
            text = value != 0 ? "true" : "false";
        } else {
            std::int64_t value = 0;
            require(sd_bus_message_read(message, "v", "x", &value));
            text = std::to_string(value);
        }
        return text;
    }

    static Texts readTexts(sd_bus_message* message) {
        Texts texts;
        require(sd_bus_message_enter_container(message, 'a', "{sv}"));
        while (require(sd_bus_message_enter_container(message, 'e', "sv")) > 0) {
            const auto key = readText(message);
            texts[key] = readVariant(message);
            require(sd_bus_message_exit_container(message));
        }
        require(sd_bus_message_exit_container(message));
        return texts;
    }

    static int onAnnouncement(sd_bus_message* message, void* client, sd_bus_error* /*error*/) {
        Announcement announcement;
        require(sd_bus_message_skip(message, "s"));
        announcement.changed = readTexts(message);
        require(sd_bus_message_enter_container(message, 'a', "s"));
        const char* name = nullptr;
        while (require(sd_bus_message_read(message, "s", &name)) > 0) {
            announcement.invalidated.emplace_back(name);
        }
        static_cast<BusClient*>(client)->announcements.push_back(announcement);
        return 0;
    }

    sd_bus* bus_ = nullptr;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::map<std::uint64_t, sd_bus_message*> answers_;
};

} // namespace cindertop::agent
