#pragma once

#include "platform/PropertyValue.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// One entry of the registry of power sources.
class PowerSourceEntry {
public:
    virtual ~PowerSourceEntry() = default;
    virtual std::optional<PropertyValue> property(std::string_view key) const = 0;
};

/// Walks over the entries of one class. Destroying it, or an entry, releases it; an entry may outlive the
/// walk.
class PowerSourceIterator {
public:
    virtual ~PowerSourceIterator() = default;
    /// None after the last entry.
    virtual std::unique_ptr<PowerSourceEntry> next() = 0;
};

/// The class of batteries and supplies.
inline constexpr std::string_view powerSourceClass = "IOPMPowerSource";

/// The property of a battery that tells how fast it is charged, in milliwatts; negative: discharged.
inline constexpr std::string_view batteryRateProperty = "ChargeRateMilliwatts";

/// What the machine runs on.
class PowerSources {
public:
    virtual ~PowerSources() = default;
    /// "AC Power", "Battery Power", "UPS Power" or "Off Line"; none when it cannot be told.
    virtual std::optional<std::string> providingPowerSourceType() const = 0;
    /// None when the lookup fails.
    virtual std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const = 0;
};

} // namespace cindertop
