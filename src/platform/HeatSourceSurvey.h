#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// What reports a machine's heat.
struct HeatSources {
    int thermalState = -1;                       ///< as ProcessInformation::thermalState
    std::optional<std::string> pressureSource{}; ///< what reports thermal pressure: "8 CPU cooling devices"
    std::vector<std::string> sensors{};          ///< product names of those that answer
    bool hasFan = false;                         ///< one that reports its speed

    bool operator==(const HeatSources&) const = default;
};

/// Surveys a machine before anything is monitored. Called from the engine thread.
class HeatSourceSurvey {
public:
    virtual ~HeatSourceSurvey() = default;

    /// Never fails: what cannot be read counts as absent. Wakes no sleeping device.
    virtual HeatSources findHeatSources() = 0;
};

} // namespace cindertop
