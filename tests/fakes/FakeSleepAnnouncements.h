#pragma once

#include "platform/SleepAnnouncements.h"

#include <utility>

namespace cindertop::fakes {

/// Announces what a test says, and waits for nothing.
class FakeSleepAnnouncements final : public SleepAnnouncements {
public:
    int readyCount = 0;

    void observe(Observer observer) override { observer_ = std::move(observer); }

    bool isObserved() const { return observer_.willSleep != nullptr; }

    void announceSleep() {
        observer_.willSleep([this] { ++readyCount; });
    }

    void announceWake() const { observer_.hasWoken(); }

private:
    Observer observer_;
};

} // namespace cindertop::fakes
