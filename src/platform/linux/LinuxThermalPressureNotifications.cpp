#include "platform/linux/LinuxThermalPressureNotifications.h"

#include <algorithm>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::uint32_t succeeded = 0;
constexpr std::uint32_t unknownName = 1;
constexpr std::uint32_t unknownToken = 2;
constexpr std::uint32_t nothingTells = 3;

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

std::uint64_t rawThermalPressure(double loss, const HeatReading& heat) {
    if (heat.isAtLimit) {
        return 4;
    }
    if (loss > 0.5 || heat.state >= 3) {
        return 3;
    }
    if (loss >= 0.25 || heat.state == 2) {
        return 2;
    }
    return loss > 0 || heat.state == 1 ? 1 : 0;
}

LinuxThermalPressureNotifications::LinuxThermalPressureNotifications(const Roots& roots,
                                                                     const MonotonicClock& clock,
                                                                     MachineHeat& heat)
    : heat_(heat), coolers_(roots, clock), counters_(roots, clock) {}

ThermalPressureNotifications::Registration
LinuxThermalPressureNotifications::registerCheck(std::string_view name) {
    const std::scoped_lock lock(mutex_);
    if (name != thermalPressureNotificationName) {
        return {.status = unknownName, .token = 0};
    }
    readThrottling();
    if (!latest_->isKnown()) {
        return {.status = nothingTells, .token = 0};
    }
    tokens_.insert(nextToken_);
    return {.status = succeeded, .token = nextToken_++};
}

ThermalPressureNotifications::State LinuxThermalPressureNotifications::state(std::int32_t token) {
    const std::scoped_lock lock(mutex_);
    if (!tokens_.contains(token)) {
        return {.status = unknownToken, .raw = 0};
    }
    readThrottling();
    if (!latest_->isKnown()) {
        return {.status = nothingTells, .raw = 0};
    }
    return {.status = succeeded, .raw = rawThermalPressure(loss(), heat_.read())};
}

void LinuxThermalPressureNotifications::cancel(std::int32_t token) {
    const std::scoped_lock lock(mutex_);
    tokens_.erase(token);
}

std::optional<bool> LinuxThermalPressureNotifications::isSlowedByHeat() {
    const std::scoped_lock lock(mutex_);
    if (!latest_ || tokens_.empty()) { // nobody else keeps it up to date
        readThrottling();
    }
    return latest_->isKnown() ? std::optional(loss() > 0) : std::nullopt;
}

SourceStatus LinuxThermalPressureNotifications::status() const {
    const std::scoped_lock lock(mutex_);
    const auto status = [](bool isAvailable, std::string reason) {
        return SourceStatus{
            .name = "CPU throttling", .isAvailable = isAvailable, .reason = std::move(reason)};
    };
    if (!latest_) {
        return status(false, "not read yet");
    }
    if (!latest_->isKnown()) {
        return status(false, "no CPU cooling device and no throttle counter");
    }
    std::string reason;
    if (latest_->coolers) {
        reason = counted(latest_->coolers->answering, "CPU cooling device");
    }
    if (latest_->counters) {
        reason += (reason.empty() ? "" : " and ") + counted(latest_->counters->answering, "throttle counter");
    }
    return status(true, reason);
}

void LinuxThermalPressureNotifications::readThrottling() {
    latest_ = {.coolers = coolers_.read(), .counters = counters_.read(heat_.read().isProcessorHot)};
}

double LinuxThermalPressureNotifications::loss() const {
    const double byCounters = latest_->counters ? latest_->counters->loss : 0;
    const double byCoolers = latest_->coolers ? latest_->coolers->loss : 0;
    return std::max(byCounters, byCoolers);
}

} // namespace cindertop::linux_platform
