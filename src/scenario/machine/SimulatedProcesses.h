#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/GraphicsUsage.h"
#include "platform/HostStatistics.h"
#include "platform/ProcessInformation.h"
#include "platform/ProcessTable.h"
#include "platform/RunningApplications.h"
#include "scenario/format/Scenario.h"
#include "scenario/machine/ProcessHistory.h"
#include "scenario/machine/Timeline.h"

#include <memory>
#include <utility>
#include <vector>

namespace cindertop::simulated {

class SimulatedHostStatistics final : public HostStatistics {
public:
    explicit SimulatedHostStatistics(Timeline timeline)
        : timeline_(std::move(timeline)), history_(timeline_.scenario()) {}

    std::optional<HostCpuLoad> cpuLoad() const override;

private:
    Timeline timeline_;
    LoadHistory history_;
};

class SimulatedProcessInformation final : public ProcessInformation {
public:
    explicit SimulatedProcessInformation(Timeline timeline) : timeline_(std::move(timeline)) {}

    int thermalState() const override { return timeline_.frame().thermalState; }

    bool isLowPowerModeEnabled() const override { return timeline_.frame().power->isLowPowerModeEnabled; }

    int activeProcessorCount() const override { return timeline_.scenario().machine.processorCount; }

    std::int32_t processIdentifier() const override { return timeline_.scenario().ownProcessIdentifier; }

    std::optional<std::string> bundleIdentifier() const override {
        return timeline_.scenario().ownBundleIdentifier;
    }

private:
    Timeline timeline_;
};

/// All CPU time counts as user time, in nanoseconds. A start before 1970-01-01 00:00:01 is not known: the
/// accounting has no place for it.
class SimulatedProcessTable final : public ProcessTable {
public:
    explicit SimulatedProcessTable(Timeline timeline)
        : timeline_(std::move(timeline)), history_(timeline_.scenario()) {}

    int countProcesses() override;
    int listProcesses(std::span<std::int32_t> buffer) override;
    std::optional<ProcessAccounting> accounting(std::int32_t processIdentifier) override;
    std::optional<std::string> executablePath(std::int32_t processIdentifier) override;

    ClockUnit clockUnit() const override { return {.numerator = 1, .denominator = 1}; }

private:
    Timeline timeline_;
    ProcessHistory history_;
};

/// Each process that has engines is a client of its own of the one graphics device.
class SimulatedGraphicsUsage final : public GraphicsUsage {
public:
    explicit SimulatedGraphicsUsage(Timeline timeline)
        : timeline_(std::move(timeline)), history_(timeline_.scenario()) {}

    std::vector<GraphicsClient> clients() override;

private:
    Timeline timeline_;
    ProcessHistory history_;
};

/// The bundles of a scenario; a process belongs to the one that its path lies in.
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
