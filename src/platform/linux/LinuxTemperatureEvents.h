#pragma once

#include "platform/TemperatureEvents.h"
#include "platform/linux/HwmonSensors.h"

namespace cindertop::linux_platform {

/// The temperature sensors of a Linux machine, in the form of an event system.
class LinuxTemperatureEvents : public TemperatureEvents {
public:
    /// `sensors` must outlive this object.
    explicit LinuxTemperatureEvents(HwmonSensors& sensors) : sensors_(sensors) {}

    /// hwmon exists on every processor.
    bool isSupported() const override { return true; }

    void setObserved(bool isObserved) override;

    std::unique_ptr<TemperatureEventClient> createClient() override;

private:
    HwmonSensors& sensors_;
};

} // namespace cindertop::linux_platform
