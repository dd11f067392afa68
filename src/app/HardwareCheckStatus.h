#pragma once

#include "app/HardwareProfile.h"
#include "platform/HeatSourceSurvey.h"
#include "support/Wording.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// Whether one of these tells how hot the machine runs: its thermal state, its pressure or its processor.
bool isHeatReadable(const HeatSources& sources);

/// What is known about whether the program is made for this machine.
class HardwareCheckStatus {
public:
    enum class Kind : std::uint8_t {
        supported,   ///< in the table of machines
        unsupported, ///< not in the table, where that alone decides
        ready,       ///< another machine whose heat can be read
        unreadable,  ///< another machine that tells nothing about its heat
        checking,
    };

    static HardwareCheckStatus supported(MacHardwareProfile profile,
                                         std::optional<HeatSources> sources = std::nullopt);
    static HardwareCheckStatus unsupported(MacHardwareProfile profile);
    /// `ready` or `unreadable`.
    static HardwareCheckStatus surveyed(MacHardwareProfile profile, HeatSources sources);
    static HardwareCheckStatus checking();

    Kind kind() const { return kind_; }

    /// Absent while checking.
    const std::optional<MacHardwareProfile>& profile() const { return profile_; }

    /// Absent while checking, and where the machine is not surveyed.
    const std::optional<HeatSources>& heatSources() const { return heatSources_; }

    /// A heading for the user.
    std::string title(OperatingSystem system) const;
    /// One or two sentences for the user.
    std::string detail() const;

    bool operator==(const HardwareCheckStatus&) const = default;

private:
    HardwareCheckStatus(Kind kind, std::optional<MacHardwareProfile> profile,
                        std::optional<HeatSources> sources);
    bool needsAppleSilicon() const;

    Kind kind_;
    std::optional<MacHardwareProfile> profile_;
    std::optional<HeatSources> heatSources_;
};

/// Looks the machine up among the supported ones. For every other machine what a survey found decides;
/// without a survey it is not supported.
HardwareCheckStatus performHardwareCheck(MacHardwareProfile profile, std::optional<HeatSources> sources);

} // namespace cindertop
