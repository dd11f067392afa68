#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace cindertop {

/// A one-shot timer. Its destruction cancels it, also from within its own action.
class Timer {
public:
    virtual ~Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

protected:
    Timer() = default;
};

/// Lets time pass on the main thread.
class Timers {
public:
    virtual ~Timers() = default;

    /// Runs `action` once on the main thread when `delay` has passed, never within this call, so that each
    /// action starts on an empty stack. A negative delay counts as 0.
    [[nodiscard]] virtual std::unique_ptr<Timer> start(std::chrono::nanoseconds delay,
                                                       std::function<void()> action) = 0;
};

} // namespace cindertop
