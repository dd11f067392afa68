#pragma once

#include "platform/linux/BusProperty.h"
#include "platform/linux/SystemBus.h"

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

#include <poll.h>

namespace cindertop::linux_platform {

/// A service with one property that does what a test says. An integer stands for a value of an unexpected
/// type.
class ScriptedService {
public:
    using Value = std::variant<std::string, bool, std::int32_t>;

    /// What becomes of questions.
    enum class Manner { answering, refusing, hanging };

    ScriptedService(const std::string& address, BusPropertyName name, Value value)
        : name_(std::move(name)), value_(std::move(value)) {
        require(sd_bus_new(&bus_));
        require(sd_bus_set_address(bus_, address.c_str()));
        require(sd_bus_set_bus_client(bus_, 1));
        require(sd_bus_start(bus_));
        require(sd_bus_add_object(bus_, nullptr, name_.path.c_str(), onCall, this));
        require(sd_bus_request_name(bus_, name_.service.c_str(), 0));
    }

    ~ScriptedService() { sd_bus_flush_close_unref(bus_); }

    ScriptedService(const ScriptedService&) = delete;
    ScriptedService& operator=(const ScriptedService&) = delete;

    int questionCount() const { return questionCount_; }

    void behave(Manner manner) { manner_ = manner; }

    void changeSilently(Value value) { value_ = std::move(value); }

    void announce(Value value) {
        value_ = std::move(value);
        announceMember(name_.member);
    }

    /// Announces a member, this or another one, with the value of this one.
    void announceMember(const std::string& member) {
        sd_bus_message* const signal = newAnnouncement();
        require(sd_bus_message_open_container(signal, 'a', "{sv}"));
        require(sd_bus_message_open_container(signal, 'e', "sv"));
        require(sd_bus_message_append(signal, "s", member.c_str()));
        appendValue(signal);
        require(sd_bus_message_close_container(signal));
        require(sd_bus_message_close_container(signal));
        require(sd_bus_message_append(signal, "as", 0));
        send(signal);
    }

    /// Announces that the value is another one, without saying which.
    void invalidate(Value value) {
        value_ = std::move(value);
        sd_bus_message* const signal = newAnnouncement();
        require(sd_bus_message_append(signal, "a{sv}as", 0, 2, "Other", name_.member.c_str()));
        send(signal);
    }

    /// Lets both sides take in what has arrived until `isReached` holds; false when it still does not after
    /// 10 s.
    template <typename Condition>
    bool until(SystemBus& client, Condition isReached) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (std::chrono::steady_clock::now() < deadline) {
            while (sd_bus_process(bus_, nullptr) > 0) {
            }
            client.update();
            if (isReached()) {
                return true;
            }
            waitForTraffic(client);
        }
        return false;
    }

private:
    static void require(int result) {
        if (result < 0) {
            throw std::runtime_error("sd-bus error " + std::to_string(-result));
        }
    }

    void waitForTraffic(const SystemBus& client) const {
        std::array<pollfd, 2> files{pollfd{.fd = sd_bus_get_fd(bus_), .events = POLLIN, .revents = 0},
                                    pollfd{.fd = -1, .events = POLLIN, .revents = 0}};
        if (client.handle() != nullptr) {
            files[1].fd = sd_bus_get_fd(client.handle());
        }
        constexpr int milliseconds = 100;
        ::poll(files.data(), files.size(), milliseconds);
    }

    sd_bus_message* newAnnouncement() {
        sd_bus_message* signal = nullptr;
        require(sd_bus_message_new_signal(bus_, &signal, name_.path.c_str(),
                                          "org.freedesktop.DBus.Properties", "PropertiesChanged"));
        require(sd_bus_message_append(signal, "s", name_.interface.c_str()));
        return signal;
    }

    void send(sd_bus_message* message) {
        require(sd_bus_send(bus_, message, nullptr));
        sd_bus_message_unref(message);
        require(sd_bus_flush(bus_));
    }

    void appendValue(sd_bus_message* message) const {
        if (const auto* const text = std::get_if<std::string>(&value_)) {
            require(sd_bus_message_append(message, "v", "s", text->c_str()));
        } else if (const auto* const truth = std::get_if<bool>(&value_)) {
            require(sd_bus_message_append(message, "v", "b", *truth ? 1 : 0));
        } else {
            require(sd_bus_message_append(message, "v", "i", std::get<std::int32_t>(value_)));
        }
    }

    static int onCall(sd_bus_message* call, void* service, sd_bus_error* /*error*/) {
        auto& self = *static_cast<ScriptedService*>(service);
        if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", "Get") <= 0) {
            return 0;
        }
        const char* interface = nullptr;
        const char* member = nullptr;
        require(sd_bus_message_read(call, "ss", &interface, &member));
        ++self.questionCount_;
        if (self.manner_ == Manner::hanging) {
            return 1;
        }
        if (self.manner_ == Manner::refusing || self.name_.interface != interface ||
            self.name_.member != member) {
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_PROPERTY, "no such property");
        }
        sd_bus_message* answer = nullptr;
        require(sd_bus_message_new_method_return(call, &answer));
        self.appendValue(answer);
        self.send(answer);
        return 1;
    }

    BusPropertyName name_;
    Value value_;
    Manner manner_ = Manner::answering;
    sd_bus* bus_ = nullptr;
    int questionCount_ = 0;
};

} // namespace cindertop::linux_platform
