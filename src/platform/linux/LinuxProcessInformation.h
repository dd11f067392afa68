#pragma once

#include "platform/ProcessInformation.h"
#include "platform/linux/PowerProfile.h"

#include <functional>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

class LinuxProcessInformation final : public ProcessInformation {
public:
    /// `thermalState` answers as the operation of that name does; `profile` must outlive this object.
    LinuxProcessInformation(std::function<int()> thermalState, PowerProfile& profile,
                            std::optional<std::string> bundleIdentifier);

    int thermalState() const override;
    bool isLowPowerModeEnabled() const override;
    int activeProcessorCount() const override;
    std::int32_t processIdentifier() const override;
    std::optional<std::string> bundleIdentifier() const override;

private:
    std::function<int()> thermalState_;
    PowerProfile& profile_;
    std::optional<std::string> bundleIdentifier_;
};

} // namespace cindertop::linux_platform
