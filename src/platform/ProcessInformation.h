#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// What the system tells a process about itself and its surroundings. Called from one thread at a time.
class ProcessInformation {
public:
    virtual ~ProcessInformation() = default;

    /// 0 nominal, 1 fair, 2 serious, 3 critical; anything else is unknown.
    virtual int thermalState() const = 0;
    virtual bool isLowPowerModeEnabled() const = 0;
    /// Processors that this process may run on, at least 1.
    virtual int activeProcessorCount() const = 0;
    virtual std::int32_t processIdentifier() const = 0;
    /// Identifier of the application that this program is; none when it runs outside one.
    virtual std::optional<std::string> bundleIdentifier() const = 0;
};

} // namespace cindertop
