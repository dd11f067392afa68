#include "cpu/ProcessOffenderAggregator.h"

#include "cpu/ProcessClassification.h"
#include "cpu/ProcessOffenderGroup.h"
#include "cpu/ShareOrder.h"

#include <algorithm>
#include <deque>
#include <memory_resource>
#include <numeric>
#include <string_view>
#include <utility>

namespace cindertop {

namespace {

/// A group with its share, in the list of all groups that gets sorted.
struct RankedGroup {
    double cpuPercent;
    const ProcessOffenderGroup* group;
    const std::vector<ProcessOffenderHistoryPoint>* history; ///< in the result's map: entries stay in place

    std::string_view name() const { return group->displayName; }
};

/// `limit`, at most `size`.
std::size_t atMost(std::size_t size, std::int64_t limit) {
    return std::cmp_less(limit, size) ? static_cast<std::size_t>(limit) : size;
}

bool isExcluded(const ProcessCPUReading& reading, const ProcessOffenderConfiguration& configuration) {
    return reading.processIdentifier == configuration.excludedProcessIdentifier ||
           (configuration.excludedBundleIdentifier &&
            reading.appBundleIdentifier == configuration.excludedBundleIdentifier);
}

/// The share of the whole machine since the previous census; none for one that is idle or not the same
/// process.
std::optional<double> shareSince(const PreviousReading& previous, const ProcessCPUReading& current,
                                 const ProcessOffenderAggregator& inputs) {
    if (current.cumulativeCPUTimeNanoseconds <= previous.cumulativeCPUTimeNanoseconds ||
        current.startedAt != previous.startedAt) {
        return std::nullopt;
    }
    const Seconds elapsed = current.measuredAt - previous.measuredAt - inputs.clockStep;
    if (elapsed <= Seconds::zero()) {
        return std::nullopt;
    }
    const std::uint64_t used = current.cumulativeCPUTimeNanoseconds - previous.cumulativeCPUTimeNanoseconds;
    return static_cast<double>(used) / (elapsed.count() * 1'000'000'000.0) * 100.0 /
           static_cast<double>(inputs.configuration.processorCount);
}

std::optional<ProcessDelta> deltaOf(const ProcessCPUReading& reading,
                                    const ProcessOffenderAggregator& inputs) {
    const auto previous = inputs.previousReadingsByPID.find(reading.processIdentifier);
    if (previous == inputs.previousReadingsByPID.end()) {
        return std::nullopt;
    }
    const auto share = shareSince(previous->second, reading, inputs);
    if (!share || isExcluded(reading, inputs.configuration)) {
        return std::nullopt;
    }
    return ProcessDelta{
        .reading = &reading, .cpuPercent = *share, .category = classify(reading, inputs.system)};
}

/// Every delta, those of one group next to each other and in census order.
struct GroupedDeltas {
    std::vector<ProcessDelta> deltas;
    std::deque<ProcessOffenderGroup> groups; ///< in the order of their first deltas
};

/// Moves each delta to its group's part of the list, given each delta's group and each group's size.
GroupedDeltas arranged(std::span<const ProcessDelta> deltas, std::span<const std::size_t> groupOfDelta,
                       std::span<const std::size_t> sizes, std::deque<ProcessOffenderGroup> groups) {
    GroupedDeltas grouped{.deltas = {deltas.begin(), deltas.end()}, .groups = std::move(groups)};
    std::vector<std::size_t> next(sizes.size());
    std::exclusive_scan(sizes.begin(), sizes.end(), next.begin(), std::size_t{0});
    for (std::size_t group = 0; group < sizes.size(); ++group) {
        grouped.groups[group].deltas = std::span(grouped.deltas).subspan(next[group], sizes[group]);
    }
    for (std::size_t index = 0; index < deltas.size(); ++index) {
        grouped.deltas[next[groupOfDelta[index]]++] = deltas[index];
    }
    return grouped;
}

GroupedDeltas groupedDeltas(const ProcessOffenderAggregator& inputs) {
    std::deque<ProcessOffenderGroup> groups;    // elements stay in place: the map looks at their identifiers
    std::pmr::monotonic_buffer_resource memory; // for many small nodes that go together
    std::pmr::unordered_map<std::string_view, std::size_t> groupByID(&memory);
    std::vector<ProcessDelta> deltas;
    std::vector<std::size_t> groupOfDelta;
    std::vector<std::size_t> sizes;
    for (const ProcessCPUReading& reading : inputs.currentReadings) {
        const auto delta = deltaOf(reading, inputs);
        if (!delta) {
            continue;
        }
        std::string id = ProcessOffenderGroup::idFor(*delta, inputs.system);
        auto known = groupByID.find(id);
        if (known == groupByID.end()) {
            const ProcessOffenderGroup& group = groups.emplace_back(std::move(id), *delta, inputs.system);
            known = groupByID.emplace(group.id, sizes.size()).first;
            sizes.push_back(0);
        }
        deltas.push_back(*delta);
        groupOfDelta.push_back(known->second);
        ++sizes[known->second];
    }
    return arranged(deltas, groupOfDelta, sizes, std::move(groups));
}

/// Sorts each group's deltas by share, because the shares are added up in that order, and then the groups.
std::vector<RankedGroup> rankedByShare(const std::deque<ProcessOffenderGroup>& groups) {
    std::vector<RankedGroup> ranked;
    ranked.reserve(groups.size());
    for (const ProcessOffenderGroup& group : groups) {
        sortByShare(group.deltas);
        double total = 0;
        for (const ProcessDelta& delta : group.deltas) {
            total += delta.cpuPercent;
        }
        ranked.push_back({.cpuPercent = total, .group = &group, .history = nullptr});
    }
    sortByShare(std::span(ranked));
    return ranked;
}

/// Both what is above the threshold and the preferred minimum are leading runs of the sorted list.
std::size_t visibleCount(std::span<const RankedGroup> ranked,
                         const ProcessOffenderConfiguration& configuration) {
    const auto firstBelow = std::ranges::find_if(ranked, [&configuration](const RankedGroup& entry) {
        return entry.cpuPercent < configuration.minimumVisibleCPUPercent;
    });
    const auto above = static_cast<std::size_t>(firstBelow - ranked.begin());
    const std::size_t leading = atMost(ranked.size(), configuration.preferredMinimumOffenderCount);
    return atMost(std::max(above, leading), configuration.maximumOffenderCount);
}

/// The entries to show, in display order. A pinned one that would be left out takes the last place.
std::vector<RankedGroup> visibleEntries(std::span<RankedGroup> ranked,
                                        const ProcessOffenderAggregator& inputs) {
    const std::size_t count = visibleCount(ranked, inputs.configuration);
    orderEqualShares(ranked, count, inputs.comparison);
    std::vector<RankedGroup> visible(ranked.begin(), ranked.begin() + static_cast<std::ptrdiff_t>(count));

    const auto& pinnedID = inputs.configuration.pinnedOffenderID;
    if (!pinnedID) {
        return visible;
    }
    const auto pinned = std::ranges::find_if(
        ranked, [&pinnedID](const RankedGroup& entry) { return entry.group->id == *pinnedID; });
    if (pinned == ranked.end() || std::cmp_less(pinned - ranked.begin(), count)) {
        return visible;
    }
    if (std::cmp_equal(count, inputs.configuration.maximumOffenderCount)) {
        visible.pop_back();
    }
    visible.push_back(*pinned);
    return visible;
}

/// Every group's history gets its new point; groups that used no CPU time this time lose theirs.
HistoryByOffenderID extendedHistories(HistoryByOffenderID histories, std::span<RankedGroup> ranked,
                                      const ProcessOffenderAggregator& inputs) {
    for (RankedGroup& entry : ranked) {
        auto& history = histories[entry.group->id];
        // Points of before the clock was set back lie ahead of it: a line through them would run backwards.
        std::erase_if(history, [&inputs](const auto& point) { return point.measuredAt > inputs.now; });
        history.emplace_back(inputs.now, entry.cpuPercent);
        const std::size_t kept = atMost(history.size(), inputs.configuration.maximumHistoryCount);
        history.erase(history.begin(), history.end() - static_cast<std::ptrdiff_t>(kept));
        entry.history = &history;
    }
    if (histories.size() != ranked.size()) {
        std::erase_if(histories, [&inputs](const auto& stored) {
            return stored.second.empty() || stored.second.back().measuredAt != inputs.now;
        });
    }
    return histories;
}

bool canTerminate(const ProcessOffenderGroup& group, const ProcessCPUReading& representative) {
    return group.application != nullptr && !representative.isSystemProcess;
}

std::vector<ProcessOffenderChild> childrenOf(std::span<const ProcessDelta> busiest) {
    std::vector<ProcessOffenderChild> children;
    children.reserve(busiest.size());
    for (const ProcessDelta& delta : busiest) {
        const ProcessCPUReading& reading = *delta.reading;
        children.emplace_back(reading.processIdentifier, reading.parentProcessIdentifier, reading.name,
                              delta.cpuPercent, reading.isSystemProcess, reading.startedAt);
    }
    return children;
}

std::optional<Instant> earliestStart(std::span<const ProcessDelta> deltas) {
    std::optional<Instant> earliest;
    for (const ProcessDelta& delta : deltas) {
        const auto& startedAt = delta.reading->startedAt;
        if (startedAt && (!earliest || *startedAt < *earliest)) {
            earliest = startedAt;
        }
    }
    return earliest;
}

ProcessOffender offenderFrom(const RankedGroup& entry, const ProcessOffenderAggregator& inputs) {
    const ProcessOffenderGroup& group = *entry.group;
    const std::span<ProcessDelta> deltas = group.deltas;
    const std::size_t childCount = atMost(deltas.size(), inputs.configuration.maximumChildCount);
    orderEqualShares(deltas, childCount, inputs.comparison);
    const ProcessCPUReading& representative = *deltas.front().reading;
    return ProcessOffender({
        .id = group.id,
        .displayName = std::string(group.displayName),
        .bundleIdentifier =
            group.application != nullptr ? group.application->appBundleIdentifier : std::nullopt,
        .appBundlePath = group.application != nullptr ? group.application->appBundlePath : std::nullopt,
        .representativeProcessIdentifier = representative.processIdentifier,
        .processCount = static_cast<std::int64_t>(deltas.size()),
        .cpuPercent = entry.cpuPercent,
        .category = group.category,
        .canTerminateApplication = canTerminate(group, representative),
        .children = childrenOf(deltas.first(childCount)),
        .history = *entry.history,
        .startedAt = earliestStart(deltas),
    });
}

} // namespace

PreviousReadingsByPID readingsByPID(std::span<const ProcessCPUReading> readings) {
    PreviousReadingsByPID byPID;
    byPID.reserve(readings.size());
    for (const ProcessCPUReading& reading : readings) {
        byPID.insert_or_assign(
            reading.processIdentifier,
            PreviousReading{.cumulativeCPUTimeNanoseconds = reading.cumulativeCPUTimeNanoseconds,
                            .startedAt = reading.startedAt,
                            .measuredAt = reading.measuredAt});
    }
    return byPID;
}

ProcessOffenderAggregator::Result ProcessOffenderAggregator::aggregate() && {
    const GroupedDeltas grouped = groupedDeltas(*this);
    std::vector<RankedGroup> ranked = rankedByShare(grouped.groups);

    Result result;
    result.isIndexingOrSetupLikely = std::ranges::any_of(ranked, [this](const RankedGroup& entry) {
        return entry.group->category == ProcessOffenderCategory::indexingOrSetup &&
               entry.cpuPercent >= configuration.indexingCPUThresholdPercent;
    });
    result.historyByOffenderID = extendedHistories(std::move(existingHistoryByOffenderID), ranked, *this);

    const std::vector<RankedGroup> visible = visibleEntries(ranked, *this);
    result.visibleOffenders.reserve(visible.size());
    for (const RankedGroup& entry : visible) {
        result.visibleOffenders.push_back(offenderFrom(entry, *this));
    }
    return result;
}

} // namespace cindertop
