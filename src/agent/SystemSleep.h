#pragma once

#include "platform/Timers.h"
#include "platform/linux/LogindSleep.h"

#include <chrono>
#include <memory>

class QSocketNotifier;

namespace cindertop::agent {

/// Delivers logind's announcements of sleep through the event loop. Main thread.
class SystemSleep {
public:
    /// Between two tries to reach a bus that is not there.
    static constexpr std::chrono::seconds pause{30};

    /// `timers` must outlive this. An empty address stands for the system's bus.
    explicit SystemSleep(Timers& timers, std::string address = {});
    ~SystemSleep();
    SystemSleep(const SystemSleep&) = delete;
    SystemSleep& operator=(const SystemSleep&) = delete;

    linux_platform::LogindSleep& announcements() { return logind_; }

private:
    void update();

    Timers& timers_;
    linux_platform::LogindSleep logind_;
    int watched_ = -1; ///< the notifier's descriptor
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<Timer> retry_; ///< while there is no connection
};

} // namespace cindertop::agent
