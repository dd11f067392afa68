#pragma once

#include "context/PowerContextSnapshot.h"

namespace cindertop {

/// Answers what powers the machine. Called from the engine thread.
class PowerContextProviding {
public:
    virtual ~PowerContextProviding() = default;
    /// Never fails: what cannot be read is absent or `unknown`.
    virtual PowerContextSnapshot readPowerContext() const = 0;
};

} // namespace cindertop
