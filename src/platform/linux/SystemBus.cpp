#include "platform/linux/SystemBus.h"

#include <utility>

namespace cindertop::linux_platform {

namespace {

using namespace std::chrono_literals;

constexpr auto retryInterval = 30s;
/// More than any desktop sends between two updates; a bus that never pauses must not block the caller.
constexpr int messagesPerUpdate = 256;

} // namespace

SystemBus::SystemBus(MonotonicClock clock, std::string address)
    : clock_(std::move(clock)), address_(std::move(address)) {}

void SystemBus::connect() {
    const auto now = clock_();
    if (now < nextAttempt_) {
        return;
    }
    nextAttempt_ = now + retryInterval;
    bus_ = openBus(address_, sd_bus_open_system);
    if (bus_) {
        ++connection_;
    }
}

void SystemBus::update() {
    if (!bus_) {
        connect();
    }
    for (int count = 0; bus_ && count < messagesPerUpdate; ++count) {
        const int result = sd_bus_process(bus_.get(), nullptr);
        if (result < 0 || sd_bus_is_open(bus_.get()) <= 0) {
            bus_.reset();
        } else if (result == 0) {
            return;
        }
    }
}

} // namespace cindertop::linux_platform
