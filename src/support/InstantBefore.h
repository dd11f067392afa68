#pragma once

#include "support/Instant.h"

namespace cindertop {

/// The moment that long before; the distant past when no instant is so early.
inline Instant instantBefore(Instant instant, Seconds duration) {
    const auto available = std::chrono::duration_cast<Seconds>(instant.time_since_epoch()) -
                           std::chrono::duration_cast<Seconds>(distantPast.time_since_epoch());
    // Near the end of the range the double is up to a microsecond off.
    if (duration >= available - Seconds(1)) {
        return distantPast;
    }
    return instant - std::chrono::duration_cast<Instant::duration>(duration);
}

} // namespace cindertop
