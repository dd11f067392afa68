#pragma once

#include "cpu/GraphicsMeter.h"
#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffender.h"
#include "support/Wording.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// What one process used between two censuses. The reading is the later one and outlives it.
struct ProcessDelta {
    const ProcessCPUReading* reading;
    double cpuPercent; ///< of the whole machine; above 0 but for a process that only draws
    ProcessOffenderCategory category;
    std::span<const GraphicsShare> graphics{}; ///< its own; they outlive it

    std::string_view name() const { return reading->name; }
};

/// Processes that people see as one thing: an application, or a kind of the system's work. Named after its
/// first delta.
struct ProcessOffenderGroup {
    std::string id;
    std::string_view displayName;         ///< a constant, or a text of the first reading
    const ProcessCPUReading* application; ///< the first reading, whose application it is; null without one
    ProcessOffenderCategory category;
    std::vector<ProcessDelta> deltas;
    double cpuPercent = 0;                   ///< of all deltas together, once they are known
    std::optional<double> graphicsPercent{}; ///< likewise, of the engine that they keep busiest

    std::string_view name() const { return displayName; }

    ProcessOffenderGroup(std::string id, const ProcessDelta& first, OperatingSystem system);

    /// The identifier of the group that a delta belongs to, for example "bundle:org.mozilla.firefox",
    /// "process:vim", "background:software-update" or "system".
    static std::string idFor(const ProcessDelta& delta, OperatingSystem system);
};

} // namespace cindertop
