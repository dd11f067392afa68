#pragma once

#include "support/Instant.h"

namespace cindertop {

/// The source of wall-clock time. Any thread may ask it.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Instant now() const = 0;
};

} // namespace cindertop
