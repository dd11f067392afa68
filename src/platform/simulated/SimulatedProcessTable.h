#pragma once

#include "platform/ProcessTable.h"
#include "platform/simulated/ProcessHistory.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

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

} // namespace cindertop::simulated
