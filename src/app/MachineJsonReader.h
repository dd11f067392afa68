#pragma once

#include "app/MachineJson.h"
#include "app/MachineSnapshot.h"

#include <optional>
#include <string_view>

namespace cindertop {

/// A machine as another program of ours tells it.
struct MachineReport {
    MachineSnapshot snapshot;
    std::optional<MachineVerdict> verdict; ///< none when nothing was measured over time

    bool operator==(const MachineReport&) const = default;
};

/// Reads what `machineJson` wrote. None for anything else, and while that program measures nothing.
std::optional<MachineReport> machineReport(std::string_view text);

} // namespace cindertop
