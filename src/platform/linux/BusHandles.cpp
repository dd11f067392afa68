#include "platform/linux/BusHandles.h"

#include <utility>

namespace cindertop::linux_platform {

namespace {

/// sd-bus by itself would drop the connection.
int ignoreRefusal(sd_bus_message* /*message*/, void* /*context*/, sd_bus_error* /*error*/) {
    return 0;
}

} // namespace

BusConnection openBus(const std::string& address, int (*openUsual)(sd_bus** bus)) {
    sd_bus* bus = nullptr;
    if (address.empty()) {
        return BusConnection(openUsual(&bus) >= 0 ? bus : nullptr);
    }
    if (sd_bus_new(&bus) < 0) {
        return nullptr;
    }
    BusConnection owned(bus);
    const bool isStarted = sd_bus_set_address(bus, address.c_str()) >= 0 &&
                           sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0;
    return isStarted ? std::move(owned) : nullptr;
}

std::string signalMatch(const BusAddress& object, const std::string& member, const std::string& argument) {
    std::string match = "type='signal'";
    const auto add = [&match](const char* key, const std::string& value) {
        match.append(",").append(key).append("='").append(value).append("'");
    };
    add("sender", object.service);
    add("path", object.path);
    add("interface", object.interface);
    add("member", member);
    if (!argument.empty()) {
        add("arg0", argument);
    }
    return match;
}

std::string ownerMatch(const std::string& service) {
    return signalMatch({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                       "NameOwnerChanged", service);
}

BusSlot listen(sd_bus* bus, const std::string& match, sd_bus_message_handler_t handler, void* context) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus, &slot, match.c_str(), handler, ignoreRefusal, context);
    return BusSlot(slot);
}

BusMessage newCall(sd_bus* bus, const BusAddress& object, const char* method) {
    sd_bus_message* call = nullptr;
    if (sd_bus_message_new_method_call(bus, &call, object.service, object.path, object.interface, method) <
        0) {
        return nullptr;
    }
    BusMessage owned(call);
    return sd_bus_message_set_auto_start(call, 0) >= 0 ? std::move(owned) : nullptr;
}

} // namespace cindertop::linux_platform
