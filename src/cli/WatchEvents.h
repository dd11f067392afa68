#pragma once

#include "support/Instant.h"
#include "terminal/SignalDescriptor.h"

#include <cstdint>
#include <optional>

namespace cindertop::cli {

/// Why a watch woke up.
struct Wake {
    enum class Kind {
        tick,       ///< the delay is over
        resized,    ///< the terminal has another size
        suspended,  ///< the user wants the shell back for a while (Ctrl-Z)
        ended,      ///< the user has seen enough (Ctrl-C, q)
        terminated, ///< somebody else ends the program, by `signal`
        readerGone, ///< nobody reads the output any more
    };

    Kind kind = Kind::tick;
    int signal = 0;

    bool operator==(const Wake&) const = default;
};

/// What a watch waits for between two ticks.
class WatchEvents {
public:
    virtual ~WatchEvents() = default;
    /// Sets the one timer anew; it wakes once.
    virtual void startTimer(Seconds delay) = 0;
    /// Waits for the next event.
    virtual Wake wait() = 0;
};

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
