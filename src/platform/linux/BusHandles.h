#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <string>

namespace cindertop::linux_platform {

/// Calls the function that gives a handle of sd-bus back.
template <auto release>
struct BusRelease {
    template <typename Handle>
    void operator()(Handle* handle) const {
        release(handle);
    }
};

/// Subscriptions keep a connection alive: without the close it would stay open for as long as they live.
using BusConnection = std::unique_ptr<sd_bus, BusRelease<sd_bus_close_unref>>;
using BusMessage = std::unique_ptr<sd_bus_message, BusRelease<sd_bus_message_unref>>;

/// A subscription, or a call whose answer is awaited; without it the callback is not called any more.
using BusSlot = std::unique_ptr<sd_bus_slot, BusRelease<sd_bus_slot_unref>>;

struct BusError {
    sd_bus_error error{};

    BusError() = default;
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;

    ~BusError() { sd_bus_error_free(&error); }
};

/// Connects to the bus at the address, or with an empty one where `openUsual` finds it; null when it cannot.
BusConnection openBus(const std::string& address, int (*openUsual)(sd_bus** bus));

/// An interface of an object of a service.
struct BusAddress {
    const char* service;
    const char* path;
    const char* interface;
};

/// The match of a signal. `argument`: its first one; empty: any.
std::string signalMatch(const BusAddress& object, const std::string& member,
                        const std::string& argument = {});

/// The match of the signal that another process, or none, owns the service's name.
std::string ownerMatch(const std::string& service);

/// Subscribes without waiting. A refused subscription leaves the connection open and hears nothing.
BusSlot listen(sd_bus* bus, const std::string& match, sd_bus_message_handler_t handler, void* context);

/// A call that starts no service; null when it cannot be made.
BusMessage newCall(sd_bus* bus, const BusAddress& object, const char* method);

} // namespace cindertop::linux_platform
