#pragma once

#include "app/HardwareProfile.h"

#include <optional>
#include <string>

namespace cindertop {

/// What is known about whether the program is made for this machine.
class HardwareCheckStatus {
public:
    enum class Kind { supported, unsupported, checking };

    static HardwareCheckStatus supported(MacHardwareProfile profile);
    static HardwareCheckStatus unsupported(MacHardwareProfile profile);
    static HardwareCheckStatus checking();

    Kind kind() const { return kind_; }

    /// Absent while checking.
    const std::optional<MacHardwareProfile>& profile() const { return profile_; }

    /// A heading for the user.
    std::string title() const;
    /// One sentence for the user.
    std::string detail() const;

    bool operator==(const HardwareCheckStatus&) const = default;

private:
    HardwareCheckStatus(Kind kind, std::optional<MacHardwareProfile> profile);
    bool needsAppleSilicon() const;

    Kind kind_;
    std::optional<MacHardwareProfile> profile_;
};

/// Looks the machine up among the supported ones.
HardwareCheckStatus performHardwareCheck(const SystemValues& system, std::string_view architecture);

} // namespace cindertop
