#include "cpu/ProcessOffender.h"

#include <algorithm>
#include <utility>

namespace cindertop {

ProcessOffenderChild::ProcessOffenderChild(std::int32_t processIdentifier,
                                           std::int32_t parentProcessIdentifier, std::string name,
                                           double cpuPercent, bool isSystemProcess,
                                           std::optional<Instant> startedAt,
                                           std::optional<double> graphicsPercent)
    : processIdentifier(processIdentifier),
      parentProcessIdentifier(parentProcessIdentifier),
      name(std::move(name)),
      cpuPercent(nonNegative(cpuPercent)),
      isSystemProcess(isSystemProcess),
      startedAt(startedAt),
      graphicsPercent(graphicsPercent.transform(nonNegative)) {}

ProcessOffenderHistoryPoint::ProcessOffenderHistoryPoint(Instant measuredAt, double cpuPercent)
    : measuredAt(measuredAt), cpuPercent(nonNegative(cpuPercent)) {}

ProcessOffender::ProcessOffender(Fields fields)
    : id(std::move(fields.id)),
      displayName(std::move(fields.displayName)),
      bundleIdentifier(std::move(fields.bundleIdentifier)),
      appBundlePath(std::move(fields.appBundlePath)),
      representativeProcessIdentifier(fields.representativeProcessIdentifier),
      processCount(std::max<std::int64_t>(fields.processCount, 0)),
      cpuPercent(nonNegative(fields.cpuPercent)),
      category(fields.category),
      canTerminateApplication(fields.canTerminateApplication),
      children(std::move(fields.children)),
      history(std::move(fields.history)),
      startedAt(fields.startedAt),
      graphicsPercent(fields.graphicsPercent.transform(nonNegative)) {}

const ProcessOffenderSnapshot& ProcessOffenderSnapshot::empty() {
    static const ProcessOffenderSnapshot nothingYet{};
    return nothingYet;
}

} // namespace cindertop
