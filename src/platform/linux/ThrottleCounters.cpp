#include "platform/linux/ThrottleCounters.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr double lastingLoss = 0.25; ///< at least, while a throttling lasts
constexpr double mostLoss = 0.5;

/// A throttling that began after the former read cannot have lasted longer than the time since, but for the
/// kernel's ticks and the time that the reads take.
constexpr std::chrono::milliseconds tolerance{50};

double shareOf(std::chrono::nanoseconds throttled, std::chrono::nanoseconds elapsed) {
    if (elapsed <= std::chrono::nanoseconds::zero() || throttled > elapsed + tolerance) {
        return 0;
    }
    const double share = std::chrono::duration<double>(throttled) / std::chrono::duration<double>(elapsed);
    return std::min(share, mostLoss);
}

} // namespace

ThrottleCounters::ThrottleCounters(const Roots& roots, MonotonicClock clock)
    : clock_(std::move(clock)), folder_(roots, "devices/system/cpu", clock_) {}

std::optional<ThrottleCounters::Reading> ThrottleCounters::read(bool isProcessorHot) {
    const auto now = clock_();
    if (stamp_.isRecent(now)) {
        return reading_;
    }
    learnIfOutdated();
    const auto former = std::exchange(readAt_, now);
    const auto elapsed = former ? now - *former : std::chrono::nanoseconds(0);
    reading_ = stamp_.around(clock_, [&] { return readAll(elapsed, isProcessorHot); });
    return reading_;
}

void ThrottleCounters::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    std::vector<Counter> counters;
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        if (!name.starts_with("cpu")) {
            continue;
        }
        if (auto counter = learn(folder_.path() / name)) {
            counters.push_back(std::move(*counter));
        }
    }
    counters_ = std::move(counters);
}

/// The package's counter also sees the throttling that other processors of the package caused. Kernels before
/// 5.6 count without the time.
std::optional<ThrottleCounters::Counter>
ThrottleCounters::learn(const std::filesystem::path& processor) const {
    const auto folder = processor / "thermal_throttle";
    for (const std::string level : {"package", "core"}) {
        Counter counter{.folder = folder,
                        .begun = AttributeFile(folder / (level + "_throttle_count")),
                        .milliseconds = AttributeFile(folder / (level + "_throttle_total_time_ms")),
                        .latest = {}};
        const Counts now{.begun = counter.begun.integer(), .milliseconds = counter.milliseconds.integer()};
        if (!now.answer()) {
            continue;
        }
        const auto known = std::ranges::find(counters_, folder, &Counter::folder);
        if (known != counters_.end()) {
            counter.latest = known->latest;
            counter.isOpen = known->isOpen;
        }
        return counter;
    }
    return std::nullopt;
}

double ThrottleCounters::Counter::lossSince(const Counts& former, std::chrono::nanoseconds elapsed,
                                            bool isProcessorHot) {
    const auto growth = [](const auto& before, const auto& after) {
        return before && after && *before >= 0 && *after > *before ? *after - *before : 0;
    };
    const auto newlyBegun = growth(former.begun, latest.begun);
    const std::chrono::milliseconds added(growth(former.milliseconds, latest.milliseconds));
    const bool wasOpen = std::exchange(isOpen, false);
    if (added > std::chrono::milliseconds::zero()) {
        // What was reported while it lasted is not reported again at its end.
        return wasOpen && newlyBegun == 0 ? 0 : shareOf(added, elapsed);
    }
    if (!isProcessorHot || (newlyBegun == 0 && !wasOpen)) {
        return 0;
    }
    isOpen = latest.milliseconds.has_value(); // without the time no end would show
    return lastingLoss;
}

std::optional<ThrottleCounters::Reading> ThrottleCounters::readAll(std::chrono::nanoseconds elapsed,
                                                                   bool isProcessorHot) {
    Reading reading{.answering = 0, .loss = 0};
    for (auto& counter : counters_) {
        const auto former =
            std::exchange(counter.latest, Counts{.begun = counter.begun.integer(),
                                                 .milliseconds = counter.milliseconds.integer()});
        if (counter.latest.answer()) {
            ++reading.answering;
            reading.loss = std::max(reading.loss, counter.lossSince(former, elapsed, isProcessorHot));
        } else {
            counter.isOpen = false;
        }
    }
    return reading.answering > 0 ? std::optional(reading) : std::nullopt;
}

} // namespace cindertop::linux_platform
