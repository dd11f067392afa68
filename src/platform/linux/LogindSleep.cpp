#include "platform/linux/LogindSleep.h"

#include <utility>

#include <fcntl.h>

namespace cindertop::linux_platform {

namespace {

constexpr BusAddress manager{"org.freedesktop.login1", "/org/freedesktop/login1",
                             "org.freedesktop.login1.Manager"};

} // namespace

LogindSleep::LogindSleep(MonotonicClock clock, std::string address)
    : bus_(std::move(clock), std::move(address)) {}

LogindSleep::~LogindSleep() = default;

void LogindSleep::update() {
    bus_.update();
    if (bus_.handle() == nullptr) {
        lock_ = {};
        isGoingToSleep_ = false;
        return;
    }
    if (connection_ != bus_.connection()) {
        connection_ = bus_.connection();
        subscribe();
        bus_.update(); // sends what can be sent already
    }
}

std::optional<int> LogindSleep::descriptor() const {
    if (bus_.handle() == nullptr) {
        return std::nullopt;
    }
    const int descriptor = sd_bus_get_fd(bus_.handle());
    return descriptor < 0 ? std::nullopt : std::optional(descriptor);
}

void LogindSleep::subscribe() {
    lock_ = {};
    isGoingToSleep_ = false;
    sleepSignals_ = listen(bus_.handle(), signalMatch(manager, "PrepareForSleep"), onPrepareForSleep, this);
    owners_ = listen(bus_.handle(), ownerMatch(manager.service), onOwner, this);
    takeLock();
}

void LogindSleep::takeLock() {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_.handle(), &slot, manager.service, manager.path, manager.interface,
                             "Inhibit", onLock, this, "ssss", "sleep", "Cindertop",
                             "The thermal history is written", "delay");
    answer_.reset(slot);
}

int LogindSleep::onLock(sd_bus_message* message, void* sleep, sd_bus_error* /*error*/) {
    auto& self = *static_cast<LogindSleep*>(sleep);
    int lent = -1; // the message closes it
    if (!self.isGoingToSleep_ && sd_bus_message_is_method_error(message, nullptr) == 0 &&
        sd_bus_message_read(message, "h", &lent) > 0) {
        self.lock_ = FileDescriptor(::fcntl(lent, F_DUPFD_CLOEXEC, 0));
    }
    return 0;
}

/// A restart of logind ends every lock. It does not end while the machine sleeps.
int LogindSleep::onOwner(sd_bus_message* message, void* sleep, sd_bus_error* /*error*/) {
    auto& self = *static_cast<LogindSleep*>(sleep);
    const char* owner = nullptr;
    if (sd_bus_message_skip(message, "ss") < 0 || sd_bus_message_read(message, "s", &owner) <= 0) {
        return 0;
    }
    self.lock_ = {};
    self.isGoingToSleep_ = false;
    if (*owner != '\0') {
        self.takeLock();
    }
    return 0;
}

int LogindSleep::onPrepareForSleep(sd_bus_message* message, void* sleep, sd_bus_error* /*error*/) {
    auto& self = *static_cast<LogindSleep*>(sleep);
    int isBefore = 0;
    if (sd_bus_message_read_basic(message, 'b', &isBefore) <= 0) {
        return 0;
    }
    if (isBefore != 0) {
        self.announceSleep();
    } else {
        self.announceWake();
    }
    return 0;
}

void LogindSleep::announceSleep() {
    isGoingToSleep_ = true;
    const auto sleep = ++sleeps_;
    if (!observer_.willSleep) {
        release(sleep);
        return;
    }
    observer_.willSleep([this, sleep, life = std::weak_ptr(life_)] {
        if (!life.expired()) {
            release(sleep);
        }
    });
}

void LogindSleep::release(std::uint64_t sleep) {
    if (isGoingToSleep_ && sleep == sleeps_) {
        lock_ = {};
    }
}

void LogindSleep::announceWake() {
    isGoingToSleep_ = false;
    takeLock();
    if (observer_.hasWoken) {
        observer_.hasWoken();
    }
}

} // namespace cindertop::linux_platform
