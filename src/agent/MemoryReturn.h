#pragma once

#include "platform/Timers.h"
#include "ui/windows/IdleMemory.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace cindertop::agent {

/// Returns idle memory after the start and from time to time: a burst of processes leaves unused memory
/// behind.
class MemoryReturn {
public:
    static constexpr std::chrono::seconds timeToStart{10}; ///< more than enough
    static constexpr std::chrono::minutes pause{10};

    /// `timers` must outlive this.
    explicit MemoryReturn(Timers& timers, std::function<void()> giveBack = ui::returnIdleMemory)
        : timers_(timers), giveBack_(std::move(giveBack)) {
        wait(timeToStart);
    }

private:
    void wait(std::chrono::nanoseconds delay) {
        timer_ = timers_.start(delay, [this] {
            giveBack_();
            wait(pause);
        });
    }

    Timers& timers_;
    std::function<void()> giveBack_;
    std::unique_ptr<Timer> timer_;
};

} // namespace cindertop::agent
