#include "cli/WatchEvents.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <system_error>

#include <poll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

constexpr std::string_view endKeys = "qQ\x04"; // Ctrl-D means the end, too
constexpr int notListened = -1;                // poll passes over it

Wake wakeOf(int signal) {
    switch (signal) {
    case SIGWINCH:
        return {.kind = Wake::Kind::resized};
    case SIGTSTP:
        return {.kind = Wake::Kind::suspended};
    case SIGINT:
        return {.kind = Wake::Kind::ended};
    default:
        return {.kind = Wake::Kind::terminated, .signal = signal};
    }
}

} // namespace

LiveWatchEvents::LiveWatchEvents(const SignalDescriptor& signals, int output, Keyboard keyboard)
    : signals_(signals),
      output_(output),
      input_(keyboard == Keyboard::listened ? STDIN_FILENO : notListened),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (timer_ < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot make a timer");
    }
}

LiveWatchEvents::~LiveWatchEvents() {
    ::close(timer_);
}

void LiveWatchEvents::startTimer(Seconds delay) {
    constexpr std::chrono::nanoseconds soonest{1}; // 0 would stop the timer
    const auto wanted = std::max(std::chrono::round<std::chrono::nanoseconds>(delay), soonest);
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(wanted);
    itimerspec setting{};
    setting.it_value.tv_sec = whole.count();
    setting.it_value.tv_nsec = (wanted - whole).count();
    ::timerfd_settime(timer_, 0, &setting, nullptr);
}

Wake LiveWatchEvents::wait() {
    for (;;) {
        std::array<pollfd, 4> waited{pollfd{.fd = signals_.descriptor(), .events = POLLIN, .revents = 0},
                                     pollfd{.fd = output_, .events = 0, .revents = 0},
                                     pollfd{.fd = input_, .events = POLLIN, .revents = 0},
                                     pollfd{.fd = timer_, .events = POLLIN, .revents = 0}};
        if (::poll(waited.data(), waited.size(), -1) < 0) {
            continue; // interrupted
        }
        if (const auto wake = signalled()) {
            return *wake;
        }
        if (waited[1].revents != 0) {
            return {.kind = Wake::Kind::readerGone};
        }
        if (waited[2].revents != 0 && isEndKeyPressed()) {
            return {.kind = Wake::Kind::ended};
        }
        if (isTimeOver()) {
            return {.kind = Wake::Kind::tick};
        }
    }
}

std::optional<Wake> LiveWatchEvents::signalled() const {
    const auto signal = signals_.next();
    return signal ? std::optional(wakeOf(*signal)) : std::nullopt;
}

bool LiveWatchEvents::isTimeOver() const {
    std::uint64_t expirations = 0;
    return ::read(timer_, &expirations, sizeof expirations) == static_cast<ssize_t>(sizeof expirations);
}

bool LiveWatchEvents::isEndKeyPressed() {
    std::array<char, 64> keys{};
    const auto count = ::read(input_, keys.data(), keys.size());
    if (count <= 0) {
        input_ = notListened; // a keyboard that is gone is readable for ever
        return false;
    }
    const std::string_view typed(keys.data(), static_cast<std::size_t>(count));
    return typed.find_first_of(endKeys) != std::string_view::npos;
}

} // namespace cindertop::cli
