#pragma once

#include <string>

namespace cindertop {

/// Whether one source of facts answers on this machine.
struct SourceStatus {
    std::string name; ///< for people and scripts, for example "thermal zones"
    bool isAvailable;
    std::string reason; ///< where the answers come from, or in one clause why there are none

    bool operator==(const SourceStatus&) const = default;
};

} // namespace cindertop
