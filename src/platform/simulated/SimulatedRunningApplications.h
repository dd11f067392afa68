#pragma once

#include "platform/RunningApplications.h"

namespace cindertop::simulated {

/// Finds none, so that nothing of a scenario ends what really runs.
class SimulatedRunningApplications final : public RunningApplications {
public:
    std::optional<RunningApplication>
    findByBundleIdentifier(const std::string& /*identifier*/) const override {
        return std::nullopt;
    }

    std::optional<RunningApplication> findByBundlePath(const std::string& /*path*/) const override {
        return std::nullopt;
    }

    bool terminate(const RunningApplication& /*application*/) override { return false; }

    bool forceTerminate(const RunningApplication& /*application*/) override { return false; }
};

} // namespace cindertop::simulated
