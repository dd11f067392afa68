#include "cpu/ProcessOffenderConfiguration.h"

#include "cpu/ProcessOffender.h"
#include "platform/ProcessInformation.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

std::int64_t atLeast(std::int64_t bound, std::int64_t value) {
    return std::max(bound, value);
}

} // namespace

ProcessOffenderConfiguration::ProcessOffenderConfiguration(Fields fields)
    : processorCount(atLeast(1, fields.processorCount)),
      excludedProcessIdentifier(fields.excludedProcessIdentifier),
      excludedBundleIdentifier(std::move(fields.excludedBundleIdentifier)),
      minimumVisibleCPUPercent(nonNegative(fields.minimumVisibleCPUPercent)),
      preferredMinimumOffenderCount(atLeast(1, fields.preferredMinimumOffenderCount)),
      maximumOffenderCount(atLeast(1, fields.maximumOffenderCount)),
      maximumChildCount(atLeast(1, fields.maximumChildCount)),
      maximumHistoryCount(atLeast(2, fields.maximumHistoryCount)),
      indexingCPUThresholdPercent(nonNegative(fields.indexingCPUThresholdPercent)),
      minimumVisibleGraphicsPercent(nonNegative(fields.minimumVisibleGraphicsPercent)),
      maximumDrawingOffenderCount(atLeast(0, fields.maximumDrawingOffenderCount)),
      pinnedOffenderID(std::move(fields.pinnedOffenderID)) {}

ProcessOffenderConfiguration
ProcessOffenderConfiguration::defaultConfiguration(const ProcessInformation& processInformation) {
    return ProcessOffenderConfiguration({
        .processorCount = processInformation.activeProcessorCount(),
        .excludedProcessIdentifier = processInformation.processIdentifier(),
        .excludedBundleIdentifier = processInformation.bundleIdentifier(),
    });
}

} // namespace cindertop
