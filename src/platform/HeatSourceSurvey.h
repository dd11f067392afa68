#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// What on a machine tells its heat.
struct HeatSources {
    int thermalState = -1;                       ///< as ProcessInformation::thermalState
    std::optional<std::string> pressureSource{}; ///< what tells thermal pressure: "8 CPU cooling devices"
    std::vector<std::string> sensors{};          ///< product names of those that answer
    bool hasFan = false;                         ///< one that tells its speed

    bool operator==(const HeatSources&) const = default;
};

/// Looks a machine over before anything is watched. Called from the engine thread.
class HeatSourceSurvey {
public:
    virtual ~HeatSourceSurvey() = default;

    /// Never fails: what cannot be read is not there. Wakes no device that rests.
    virtual HeatSources findHeatSources() = 0;
};

} // namespace cindertop
