#pragma once

#include "platform/HeatSourceSurvey.h"
#include "platform/TemperatureEvents.h"
#include "platform/ThermalPressureNotifications.h"
#include "scenario/machine/Timeline.h"

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

/// Registers under any name, unless the scenario begins without a pressure.
class SimulatedThermalPressureNotifications final : public ThermalPressureNotifications {
public:
    explicit SimulatedThermalPressureNotifications(Timeline timeline) : timeline_(std::move(timeline)) {}

    Registration registerCheck(std::string_view /*name*/) override {
        const bool isPossible = timeline_.scenario().frames.front().pressure.has_value();
        return {.status = isPossible ? succeeded : failed, .token = onlyToken};
    }

    State state(std::int32_t token) override {
        const auto& pressure = timeline_.frame().pressure;
        if (token != onlyToken || !pressure) {
            return {.status = failed, .raw = 0};
        }
        return {.status = succeeded, .raw = *pressure};
    }

    void cancel(std::int32_t /*token*/) override {}

private:
    static constexpr std::uint32_t succeeded = 0;
    static constexpr std::uint32_t failed = 1;
    static constexpr std::int32_t onlyToken = 1;

    Timeline timeline_;
};

/// What the frame in force has to tell.
class SimulatedHeatSourceSurvey final : public HeatSourceSurvey {
public:
    explicit SimulatedHeatSourceSurvey(Timeline timeline) : timeline_(std::move(timeline)) {}

    HeatSources findHeatSources() override;

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
