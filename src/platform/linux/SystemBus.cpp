#include "platform/linux/SystemBus.h"

#include <utility>

namespace cindertop::linux_platform {

namespace {

using namespace std::chrono_literals;

constexpr auto retryInterval = 30s;
/// More than any desktop sends between two updates; a bus that never pauses must not block the caller.
constexpr int messagesPerUpdate = 256;

sd_bus* openAt(const std::string& address) {
    sd_bus* bus = nullptr;
    if (address.empty()) {
        return sd_bus_open_system(&bus) >= 0 ? bus : nullptr;
    }
    if (sd_bus_new(&bus) < 0) {
        return nullptr;
    }
    if (sd_bus_set_address(bus, address.c_str()) < 0 || sd_bus_set_bus_client(bus, 1) < 0 ||
        sd_bus_start(bus) < 0) {
        return sd_bus_unref(bus);
    }
    return bus;
}

} // namespace

void SystemBus::Closer::operator()(sd_bus* bus) const {
    // Subscriptions keep the connection alive: without the close it would stay open for as long as they live.
    sd_bus_close_unref(bus);
}

SystemBus::SystemBus(MonotonicClock clock, std::string address)
    : clock_(std::move(clock)), address_(std::move(address)) {}

void SystemBus::connect() {
    const auto now = clock_();
    if (now < nextAttempt_) {
        return;
    }
    nextAttempt_ = now + retryInterval;
    bus_.reset(openAt(address_));
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
