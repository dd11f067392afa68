#include "cpu/ProcessOffenderEngine.h"

#include <utility>
#include <vector>

namespace cindertop {

namespace {

ProcessOffenderSnapshot withoutOffenders(ProcessOffenderSnapshotState state, Instant at) {
    return {.state = state, .offenders = {}, .isIndexingOrSetupLikely = false, .measuredAt = at};
}

} // namespace

ProcessOffenderEngine::ProcessOffenderEngine(std::unique_ptr<ProcessCPUReadingProviding> provider,
                                             const LocalizedComparison& comparison, OperatingSystem system,
                                             GraphicsUsage* graphics)
    : provider_(std::move(provider)), comparison_(&comparison), system_(system), graphics_(graphics) {}

ProcessOffenderSnapshot ProcessOffenderEngine::snapshot(const ProcessOffenderConfiguration& configuration,
                                                        Instant at, AwakeTime awake) {
    const std::scoped_lock turn(calls_);
    const std::vector<ProcessCPUReading> readings = provider_->readings(at);
    const PreviousReadingsByPID previous = std::exchange(previousReadingsByPID_, readingsByPID(readings));
    const auto wallTime = at - std::exchange(previousAt_, at);
    const auto awakeTime = awake - std::exchange(previousAwake_, awake);
    const auto clients = graphics_ != nullptr ? graphics_->clients() : std::vector<GraphicsClient>{};
    const auto graphicsShares = graphicsMeter_.sharesOf(clients, awakeTime);
    if (readings.empty()) {
        return withoutOffenders(ProcessOffenderSnapshotState::unavailable, at);
    }
    if (previous.empty()) {
        return withoutOffenders(ProcessOffenderSnapshotState::collecting, at);
    }
    ProcessOffenderAggregator::Result result =
        ProcessOffenderAggregator{
            .configuration = configuration,
            .previousReadingsByPID = previous,
            .currentReadings = readings,
            .existingHistoryByOffenderID = std::exchange(historyByOffenderID_, {}),
            .now = at,
            .comparison = *comparison_,
            .system = system_,
            .clockStep = wallTime - awakeTime,
            .graphicsShares = graphicsShares,
        }
            .aggregate();
    historyByOffenderID_ = std::move(result.historyByOffenderID);
    return {
        .state = ProcessOffenderSnapshotState::ready,
        .offenders = std::move(result.visibleOffenders),
        .isIndexingOrSetupLikely = result.isIndexingOrSetupLikely,
        .measuredAt = at,
    };
}

void ProcessOffenderEngine::reset() {
    const std::scoped_lock turn(calls_);
    previousReadingsByPID_.clear();
    historyByOffenderID_.clear();
    graphicsMeter_.reset();
}

} // namespace cindertop
