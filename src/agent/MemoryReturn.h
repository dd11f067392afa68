#pragma once

#include "platform/Timers.h"
#include "ui/IdleMemory.h"

#include <chrono>
#include <memory>

namespace cindertop::agent {

/// Gives idle memory back once the start is over, and then now and again: a rush of processes leaves room
/// behind that nobody needs any more.
class MemoryReturn {
public:
    /// `timers` must outlive this.
    explicit MemoryReturn(Timers& timers) : timers_(timers) { wait(timeToStart); }

private:
    static constexpr std::chrono::seconds timeToStart{10}; ///< more than enough
    static constexpr std::chrono::minutes pause{10};

    void wait(std::chrono::nanoseconds delay) {
        timer_ = timers_.start(delay, [this] {
            ui::returnIdleMemory();
            wait(pause);
        });
    }

    Timers& timers_;
    std::unique_ptr<Timer> timer_;
};

} // namespace cindertop::agent
