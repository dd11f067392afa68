#pragma once

#include <functional>

namespace cindertop {

/// The system tells before the machine sleeps and after it woke. Main thread.
class SleepAnnouncements {
public:
    struct Observer {
        /// The machine is about to sleep. It waits for a call of `isReady`, but not for long; calls after
        /// the first do nothing.
        std::function<void(std::function<void()> isReady)> willSleep;
        std::function<void()> hasWoken;
    };

    virtual ~SleepAnnouncements() = default;

    /// There is one observer at a time; an empty one ends it.
    virtual void observe(Observer observer) = 0;
};

} // namespace cindertop
