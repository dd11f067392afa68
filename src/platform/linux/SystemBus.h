#pragma once

#include "platform/linux/BusHandles.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace cindertop::linux_platform {

/// The system message bus, for the one thread that uses it. Nothing here waits: messages are sent and taken
/// in when `update` is called, and answers come at a later one. Without a bus it stays quiet and tries again
/// every 30 s.
class SystemBus {
public:
    /// `address` is a D-Bus address ("unix:path=/..."); empty: where the system keeps its bus.
    explicit SystemBus(MonotonicClock clock = steadyClock(), std::string address = {});

    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    /// Connects when that is due, sends what waits and hands arrived messages to their callbacks.
    void update();

    /// By the clock that this was made with.
    std::chrono::nanoseconds now() const { return clock_(); }

    /// Null without a connection. It may change at each `update`.
    sd_bus* handle() const { return bus_.get(); }

    /// A number for each connection, from 1; what was subscribed to on another one is gone.
    std::uint64_t connection() const { return connection_; }

private:
    void connect();

    MonotonicClock clock_;
    std::string address_;
    BusConnection bus_;
    std::uint64_t connection_ = 0;
    std::chrono::nanoseconds nextAttempt_ = std::chrono::nanoseconds::min();
};

} // namespace cindertop::linux_platform
