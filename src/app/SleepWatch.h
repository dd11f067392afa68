#pragma once

#include "platform/Clock.h"

#include <chrono>
#include <optional>

namespace cindertop {

/// Detects at each look whether the machine has slept since the previous one. A machine that answers too late
/// has slept as well, though its clocks do not say so: it was halted from outside.
class SleepWatch {
public:
    struct Look {
        AwakeTime awake; ///< without the times that this took for sleep
        bool hasSlept{}; ///< since the look before
    };

    Look look(const Uptime& now);

    /// The next look is due then. Without this, or after `expectNothing`, none is ever late.
    void expectAfter(const Uptime& now, std::chrono::nanoseconds delay);

    void expectNothing() { due_.reset(); }

    /// The system tells that it is about to sleep, and that it woke: the next look says so, whatever the
    /// clocks do, unless one has seen it already.
    void noteComingSleep() { isSleepComing_ = true; }

    void noteWake();

    /// Whether it has slept after that moment, as far as the clocks tell.
    static bool hasSleptSince(const Uptime& earlier, const Uptime& now);

    /// The awake time of a moment between two looks.
    AwakeTime awakeAt(const Uptime& now) const { return now.awake - halted_; }

private:
    std::optional<Uptime> latest_;
    std::optional<Uptime> due_; ///< its `awake` is when the next look is due, if the machine does not sleep
    std::chrono::nanoseconds halted_{}; ///< what the clocks count as awake, but this as sleep
    bool isSleepComing_ = false;
    bool isToldOfWake_ = false;
};

} // namespace cindertop
