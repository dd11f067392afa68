#pragma once

#include "platform/PropertyValue.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace cindertop {

/// What happens from which temperature on, in degrees Celsius, as the hardware or its firmware tells it.
struct TemperatureLimits {
    std::optional<double> slowsFrom{};     ///< the part that the sensor sits on is slowed down
    std::optional<double> switchesOffAt{}; ///< the machine switches itself off

    bool operator==(const TemperatureLimits&) const = default;
};

/// A value that a sensor has reported. It lives as long as its service.
class TemperatureEvent {
public:
    virtual ~TemperatureEvent() = default;
    virtual double floatValue(std::uint32_t field) const = 0;

    /// How long ago the sensor reported it: above 0 for one that must not be asked too often.
    virtual std::chrono::nanoseconds age() const { return std::chrono::nanoseconds(0); }

    /// Of the sensor; empty where nothing tells them.
    virtual TemperatureLimits limits() const { return {}; }
};

/// One sensor.
class TemperatureService {
public:
    virtual ~TemperatureService() = default;
    /// None when the sensor has nothing to report now. It may wake hardware: ask for nothing that is not
    /// used.
    virtual std::unique_ptr<TemperatureEvent> copyEvent(std::int64_t type) const = 0;
    virtual std::optional<PropertyValue> copyProperty(std::string_view key) const = 0;
};

/// A view of the sensors that the matching selects.
class TemperatureEventClient {
public:
    /// Usage page and usage of the wanted services.
    struct Matching {
        std::int64_t primaryUsagePage;
        std::int64_t primaryUsage;

        bool operator==(const Matching&) const = default;
    };

    using Services = std::vector<std::unique_ptr<TemperatureService>>;

    virtual ~TemperatureEventClient() = default;
    virtual void setMatching(const Matching& matching) = 0;
    /// In the system's order; none when they cannot be listed. They must not outlive the client.
    virtual std::optional<Services> copyServices() = 0;
};

/// The event system that temperature sensors report to.
class TemperatureEvents {
public:
    virtual ~TemperatureEvents() = default;
    /// False on a build for a processor without this event system; nothing else is asked then.
    virtual bool isSupported() const = 0;

    /// Says whether the list of all sensors is being shown. Sensors that matter only there and that a read
    /// disturbs, such as drives, are not read otherwise. Not shown at first.
    virtual void setObserved(bool /*isObserved*/) {}

    /// None when no client can be had. The client must not outlive this object.
    virtual std::unique_ptr<TemperatureEventClient> createClient() = 0;
};

} // namespace cindertop
