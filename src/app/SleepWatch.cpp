#include "app/SleepWatch.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

/// No sleep is shorter; the clocks are read one after the other and may seem to differ by less.
constexpr auto shortestSleep = 1s;
/// A tick of a running machine is never this late.
constexpr auto latest = 30s;

} // namespace

bool SleepWatch::hasSleptSince(const Uptime& earlier, const Uptime& now) {
    return now.asleep - earlier.asleep >= shortestSleep;
}

SleepWatch::Look SleepWatch::look(const Uptime& now) {
    const auto late = due_ ? now.awake - due_->awake : 0ns;
    const auto asleep = due_ ? now.asleep - due_->asleep : 0ns;
    const bool isHalted = late + asleep > latest;
    if (isHalted) {
        halted_ += std::max<std::chrono::nanoseconds>(late, 0ns);
    }
    const bool isAsleep = latest_ && hasSleptSince(*latest_, now);
    latest_ = now;
    due_.reset();
    const bool isTold = std::exchange(isToldOfWake_, false);
    const bool hasSlept = isHalted || isAsleep || isTold;
    isSleepComing_ = isSleepComing_ && !hasSlept;
    return {.awake = awakeAt(now), .hasSlept = hasSlept};
}

void SleepWatch::noteWake() {
    isToldOfWake_ = std::exchange(isSleepComing_, false);
}

void SleepWatch::expectAfter(const Uptime& now, std::chrono::nanoseconds delay) {
    due_ = Uptime{.awake = now.awake + delay, .asleep = now.asleep};
}

} // namespace cindertop
