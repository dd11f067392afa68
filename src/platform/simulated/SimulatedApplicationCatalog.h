#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/simulated/Scenario.h"

#include <memory>
#include <utility>

namespace cindertop::simulated {

/// The bundles of a scenario; which process belongs to which is for its path to tell.
class SimulatedApplicationCatalog final : public ApplicationCatalog {
public:
    explicit SimulatedApplicationCatalog(std::shared_ptr<const Scenario> scenario)
        : scenario_(std::move(scenario)) {}

    std::unique_ptr<ApplicationBundle> openBundle(const std::string& folder) override;

    std::optional<ProcessApplication> applicationOfProcess(std::int32_t /*processIdentifier*/) override {
        return std::nullopt;
    }

private:
    std::shared_ptr<const Scenario> scenario_;
};

} // namespace cindertop::simulated
