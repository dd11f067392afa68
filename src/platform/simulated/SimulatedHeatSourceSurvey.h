#pragma once

#include "platform/HeatSourceSurvey.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

/// What the frame in force has to tell; a scenario has no fans.
class SimulatedHeatSourceSurvey final : public HeatSourceSurvey {
public:
    explicit SimulatedHeatSourceSurvey(Timeline timeline) : timeline_(std::move(timeline)) {}

    HeatSources findHeatSources() override;

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
