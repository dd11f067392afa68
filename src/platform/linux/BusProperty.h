#pragma once

#include "platform/PropertyValue.h"
#include "platform/linux/SystemBus.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// Where a property stands: a service's name on the bus, an object's path, an interface and a member of it.
struct BusPropertyName {
    std::string service;
    std::string path;
    std::string interface;
    std::string member;
};

/// A text or boolean property of a service on the system bus, kept current by the service's announcements, so
/// that a read sends nothing. It never starts a service. While there is no value the service is asked every
/// 30 s, and a question without an answer for 5 s counts as refused. Belongs to the thread of its bus, goes
/// by the bus's clock, and must not outlive it.
class BusProperty {
public:
    BusProperty(SystemBus& bus, BusPropertyName name);

    /// For a service that may keep changes to itself: until it announces one, it is asked again when
    /// `askAgainAfter` has passed since the last question. A value holds until the next answer, but no longer
    /// than that answer may take: after a pause in reading there is none at first.
    BusProperty(SystemBus& bus, BusPropertyName name, std::chrono::nanoseconds askAgainAfter);

    BusProperty(const BusProperty&) = delete;
    BusProperty& operator=(const BusProperty&) = delete;

    /// What has arrived by now; none while the service, its answer or the bus is missing. Never waits: the
    /// first call only sends the question.
    std::optional<PropertyValue> value();

private:
    void subscribe();
    void ask();
    void dropOutdated();
    bool shouldAskAgain() const;

    static int onAnswer(sd_bus_message* message, void* property, sd_bus_error* error);
    static int onChange(sd_bus_message* message, void* property, sd_bus_error* error);
    static int onOwner(sd_bus_message* message, void* property, sd_bus_error* error);

    SystemBus& bus_;
    BusPropertyName name_;
    std::optional<std::chrono::nanoseconds> askAgainAfter_;
    std::chrono::nanoseconds askedAt_{};
    std::chrono::nanoseconds valueAskedAt_{}; ///< the question that the value answers
    bool isAnnounced_ = false;
    bool isAsking_ = false;
    bool isRefused_ = false; ///< the last question had no answer, or none that is a value
    std::uint64_t connection_ = 0;
    std::optional<PropertyValue> value_;
    BusSlot changes_;
    BusSlot owners_;
    BusSlot answer_;
};

} // namespace cindertop::linux_platform
