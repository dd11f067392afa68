#include "platform/linux/ThrottleCounters.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ThermalZones.h"

#include <algorithm>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

/// The package's counter also sees the throttling that other processors of the package caused.
std::optional<std::filesystem::path> counterOf(const std::filesystem::path& processor) {
    for (const auto* const name : {"package_throttle_total_time_ms", "core_throttle_total_time_ms"}) {
        auto file = processor / "thermal_throttle" / name;
        if (readInteger(file)) {
            return file;
        }
    }
    return std::nullopt;
}

double shareOf(std::int64_t milliseconds, std::chrono::nanoseconds elapsed) {
    const std::chrono::duration<double, std::milli> time = elapsed;
    return time.count() > 0 ? std::clamp(static_cast<double>(milliseconds) / time.count(), 0.0, 1.0) : 0;
}

} // namespace

ThrottleCounters::ThrottleCounters(const Roots& roots, MonotonicClock clock)
    : clock_(std::move(clock)), folder_(roots, "devices/system/cpu", clock_) {}

std::optional<ThrottleCounters::Reading> ThrottleCounters::read() {
    const auto now = clock_();
    const auto elapsed = readAt_ ? now - *readAt_ : std::chrono::nanoseconds(0);
    if (readAt_ && elapsed < sameReadingWindow) {
        return reading_;
    }
    learnIfOutdated();
    readAt_ = now;
    reading_ = readAll(elapsed);
    return reading_;
}

void ThrottleCounters::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    std::vector<Counter> counters;
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        const auto file = name.starts_with("cpu") ? counterOf(folder_.path() / name) : std::nullopt;
        if (file) {
            counters.push_back({.milliseconds = AttributeFile(*file), .latest = latestOf(*file)});
        }
    }
    counters_ = std::move(counters);
}

std::optional<std::int64_t> ThrottleCounters::latestOf(const std::filesystem::path& file) const {
    const auto known =
        std::ranges::find(counters_, file, [](const Counter& each) { return each.milliseconds.path(); });
    return known != counters_.end() ? known->latest : std::nullopt;
}

std::optional<ThrottleCounters::Reading> ThrottleCounters::readAll(std::chrono::nanoseconds elapsed) {
    Reading reading{.answering = 0, .share = 0};
    for (auto& counter : counters_) {
        const auto former = std::exchange(counter.latest, counter.milliseconds.integer());
        if (!counter.latest) {
            continue;
        }
        ++reading.answering;
        if (former && *former >= 0 && *counter.latest > *former) {
            reading.share = std::max(reading.share, shareOf(*counter.latest - *former, elapsed));
        }
    }
    return reading.answering > 0 ? std::optional(reading) : std::nullopt;
}

} // namespace cindertop::linux_platform
