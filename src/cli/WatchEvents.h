#pragma once

#include "support/Instant.h"

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

} // namespace cindertop::cli
