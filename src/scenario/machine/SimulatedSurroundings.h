#pragma once

#include "platform/DisplayList.h"
#include "platform/PowerSources.h"
#include "platform/SystemValues.h"
#include "scenario/format/Scenario.h"
#include "scenario/machine/Timeline.h"

#include <memory>
#include <utility>

namespace cindertop::simulated {

/// The entries of a walk are those of the frame in force when it began.
class SimulatedPowerSources final : public PowerSources {
public:
    explicit SimulatedPowerSources(Timeline timeline) : timeline_(std::move(timeline)) {}

    std::optional<std::string> providingPowerSourceType() const override;
    std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const override;

private:
    Timeline timeline_;
};

class SimulatedDisplayList final : public DisplayList {
public:
    explicit SimulatedDisplayList(Timeline timeline) : timeline_(std::move(timeline)) {}

    Answer countActiveDisplays() const override;
    Answer activeDisplays(std::uint32_t capacity) const override;
    DisplayPlace placeOf(DisplayIdentifier display) const override;

    bool canFold() const override { return true; }

private:
    Timeline timeline_;
};

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
