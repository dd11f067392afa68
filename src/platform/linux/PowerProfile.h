#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/BusProperty.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SystemBus.h"

#include <filesystem>
#include <string>

namespace cindertop::linux_platform {

/// Whether the user, or a nearly empty battery, has asked the machine to save power. Belongs to the thread of
/// its bus.
class PowerProfile {
public:
    explicit PowerProfile(SystemBus& bus, const Roots& roots = {});

    /// The profile service's answer, under its new or its old name; else the firmware's platform profile;
    /// else false. Never waits: until the service has answered, the firmware counts.
    bool isSavingPower();

    /// "power profile", as the latest read found it.
    SourceStatus status() const;

private:
    SystemBus& bus_;
    BusProperty upower_;
    BusProperty hadess_; ///< the service's name before it became part of UPower
    std::filesystem::path firmware_;
    std::string reason_ = "not read yet";
    bool isAvailable_ = false;
};

} // namespace cindertop::linux_platform
