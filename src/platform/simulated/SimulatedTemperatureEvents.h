#pragma once

#include "platform/TemperatureEvents.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

/// The sensors of the frame in force when they are listed. Only clients that ask for temperature sensors get
/// any.
class SimulatedTemperatureEvents final : public TemperatureEvents {
public:
    explicit SimulatedTemperatureEvents(Timeline timeline) : timeline_(std::move(timeline)) {}

    bool isSupported() const override;
    std::unique_ptr<TemperatureEventClient> createClient() override;

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
