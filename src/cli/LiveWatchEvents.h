#pragma once

#include "cli/SignalDescriptor.h"
#include "cli/WatchEvents.h"

#include <cstdint>
#include <optional>

namespace cindertop::cli {

/// Signals, a timer, the end of the reader and, on a terminal, the keyboard.
class LiveWatchEvents final : public WatchEvents {
public:
    enum class Keyboard { listened, ignored };

    /// Listens to the signals of `signals`, whether somebody still reads `output`, and to standard input for
    /// "q" when asked to. Throws std::system_error when the system gives no timer.
    LiveWatchEvents(const SignalDescriptor& signals, int output, Keyboard keyboard);
    ~LiveWatchEvents() override;

    LiveWatchEvents(const LiveWatchEvents&) = delete;
    LiveWatchEvents& operator=(const LiveWatchEvents&) = delete;

    void startTimer(Seconds delay) override;
    Wake wait() override;

private:
    std::optional<Wake> signalled() const;
    bool isTimeOver() const;
    bool isEndKeyPressed();

    const SignalDescriptor& signals_;
    int output_;
    int input_; ///< -1: not listened to
    int timer_;
};

} // namespace cindertop::cli
