#pragma once

#include "platform/SleepAnnouncements.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SystemBus.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// Announcements of sleep and waking by systemd-logind. While it waits for neither, it holds a lock that
/// delays the sleep until the observer is ready; logind waits no longer than its InhibitDelayMaxSec (5 s).
/// Without a bus or logind nothing is announced. All announcements come from within `update`.
class LogindSleep final : public SleepAnnouncements {
public:
    /// As in `SystemBus`.
    explicit LogindSleep(MonotonicClock clock = steadyClock(), std::string address = {});
    ~LogindSleep() override;
    LogindSleep(const LogindSleep&) = delete;
    LogindSleep& operator=(const LogindSleep&) = delete;

    void observe(Observer observer) override { observer_ = std::move(observer); }

    /// Connects where that is due and takes in what has arrived. Never waits. To be called whenever
    /// `descriptor` is readable, and now and then while there is none.
    void update();

    /// Of the connection, which may change at each `update`; none without one.
    std::optional<int> descriptor() const;

    bool holdsLock() const { return lock_.isOpen(); }

private:
    void subscribe();
    void takeLock();
    void release(std::uint64_t sleep);
    void announceSleep();
    void announceWake();

    static int onPrepareForSleep(sd_bus_message* message, void* sleep, sd_bus_error* error);
    static int onOwner(sd_bus_message* message, void* sleep, sd_bus_error* error);
    static int onLock(sd_bus_message* message, void* sleep, sd_bus_error* error);

    SystemBus bus_;
    Observer observer_;
    std::uint64_t connection_ = 0;
    std::uint64_t sleeps_ = 0; ///< an observer that is ready for an older one does not end the present lock
    bool isGoingToSleep_ = false;
    FileDescriptor lock_;
    BusSlot sleepSignals_;
    BusSlot owners_;
    BusSlot answer_;
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true); ///< for observers that are slow
};

} // namespace cindertop::linux_platform
