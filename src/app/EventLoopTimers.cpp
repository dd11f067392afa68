#include "app/EventLoopTimers.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

/// What a QTimer can count, in whole days.
constexpr std::chrono::milliseconds longestDelay = 24h * 24;

class EventLoopTimer final : public Timer {
public:
    EventLoopTimer(std::chrono::milliseconds delay, std::function<void()> action)
        : remaining_(delay), action_(std::move(action)) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer); // a coarse one would often come early
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { onTimeout(); });
        sleep();
    }

private:
    void sleep() {
        const auto part = std::min(remaining_, longestDelay);
        remaining_ -= part;
        timer_.start(part);
    }

    void onTimeout() {
        if (remaining_ > 0ms) {
            sleep();
            return;
        }
        // It may destroy this timer and with it the function, so it runs from a copy.
        const auto running = action_;
        running();
    }

    QTimer timer_;
    std::chrono::milliseconds remaining_; ///< after the part that runs
    std::function<void()> action_;
};

} // namespace

std::unique_ptr<Timer> EventLoopTimers::start(std::chrono::nanoseconds delay, std::function<void()> action) {
    const auto whole = std::chrono::ceil<std::chrono::milliseconds>(delay);
    return std::make_unique<EventLoopTimer>(std::max(whole, 0ms), std::move(action));
}

} // namespace cindertop
