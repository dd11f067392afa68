#pragma once

#include <string>
#include <string_view>

namespace cindertop {

/// The source whose absence explains a missing temperature.
inline constexpr std::string_view temperatureSensorsSource = "temperature sensors";
/// Without it, that no power is saved is not known.
inline constexpr std::string_view powerProfileSource = "power profile";

/// Whether one source of facts answers on this machine.
struct SourceStatus {
    std::string name; ///< for people and scripts, for example "thermal zones"
    bool isAvailable;
    std::string reason; ///< where the answers come from, or in one clause why there are none

    bool operator==(const SourceStatus&) const = default;
};

} // namespace cindertop
