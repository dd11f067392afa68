#pragma once

#include "platform/ThermalPressureNotifications.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

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

} // namespace cindertop::simulated
