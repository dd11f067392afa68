#pragma once

#include "platform/SystemValues.h"
#include "platform/simulated/Scenario.h"

#include <memory>
#include <utility>

namespace cindertop::simulated {

class SimulatedSystemValues final : public SystemValues {
public:
    explicit SimulatedSystemValues(std::shared_ptr<const Scenario> scenario)
        : scenario_(std::move(scenario)) {}

    std::optional<std::string> text(std::string_view name) const override {
        if (name == "hw.model") {
            return scenario_->machine.modelIdentifier;
        }
        return name == "machdep.cpu.brand_string" ? scenario_->machine.cpuBrand : std::nullopt;
    }

private:
    std::shared_ptr<const Scenario> scenario_;
};

} // namespace cindertop::simulated
