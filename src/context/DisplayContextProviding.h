#pragma once

#include "context/DisplayContextSnapshot.h"

namespace cindertop {

/// Answers which displays are lit. Called from the engine thread.
class DisplayContextProviding {
public:
    virtual ~DisplayContextProviding() = default;
    /// Never fails: a list that cannot be read is `DisplayContextSnapshot::unavailable()`.
    virtual DisplayContextSnapshot readDisplayContext() const = 0;
};

} // namespace cindertop
