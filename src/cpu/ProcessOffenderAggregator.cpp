#include "cpu/ProcessOffenderAggregator.h"

#include "cpu/ProcessClassification.h"
#include "cpu/ProcessOffenderGroup.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

namespace cindertop {

namespace {

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

using GraphicsByPID = std::unordered_map<std::int32_t, std::span<const GraphicsShare>>;

GraphicsByPID graphicsByPID(std::span<const GraphicsShare> shares) {
    GraphicsByPID byPID;
    while (!shares.empty()) {
        const auto process = shares.front().processIdentifier;
        const auto end = std::ranges::find_if(
            shares, [process](const GraphicsShare& share) { return share.processIdentifier != process; });
        const auto count = static_cast<std::size_t>(end - shares.begin());
        byPID.emplace(process, shares.first(count));
        shares = shares.subspan(count);
    }
    return byPID;
}

std::optional<ProcessDelta> deltaOf(const ProcessCPUReading& reading, const GraphicsByPID& graphics,
                                    const ProcessOffenderAggregator& inputs) {
    const auto previous = inputs.previousReadingsByPID.find(reading.processIdentifier);
    if (previous == inputs.previousReadingsByPID.end()) {
        return std::nullopt;
    }
    const auto share = shareSince(previous->second, reading, inputs);
    const auto drawn = graphics.find(reading.processIdentifier);
    const auto graphicsShares = drawn == graphics.end() ? std::span<const GraphicsShare>{} : drawn->second;
    const bool draws = busiestEngine(graphicsShares).value_or(0) > 0;
    if ((!share && !draws) || isExcluded(reading, inputs.configuration)) {
        return std::nullopt;
    }
    return ProcessDelta{.reading = &reading,
                        .cpuPercent = share.value_or(0),
                        .category = classify(reading, inputs.system),
                        .graphics = graphicsShares};
}

/// In the order of their first deltas.
std::vector<ProcessOffenderGroup> groupsOf(const ProcessOffenderAggregator& inputs) {
    std::vector<ProcessOffenderGroup> groups;
    std::unordered_map<std::string, std::size_t> indexByID;
    const GraphicsByPID graphics = graphicsByPID(inputs.graphicsShares);
    for (const ProcessCPUReading& reading : inputs.currentReadings) {
        const auto delta = deltaOf(reading, graphics, inputs);
        if (!delta) {
            continue;
        }
        const auto [known, isNew] =
            indexByID.try_emplace(ProcessOffenderGroup::idFor(*delta, inputs.system), groups.size());
        if (isNew) {
            groups.emplace_back(known->first, *delta, inputs.system);
        }
        groups[known->second].deltas.push_back(*delta);
    }
    return groups;
}

/// The order in which people see shares: the highest first, equal ones by name, equal names as they came.
template <typename Sharing>
void sortByShare(std::vector<Sharing>& items, const LocalizedComparison& comparison) {
    std::ranges::stable_sort(items, [&comparison](const Sharing& left, const Sharing& right) {
        return left.cpuPercent != right.cpuPercent ? left.cpuPercent > right.cpuPercent
                                                   : comparison.compare(left.name(), right.name()) < 0;
    });
}

/// Engines are added up over all processes before the busiest is chosen.
std::optional<double> graphicsOf(std::span<const ProcessDelta> deltas) {
    std::vector<GraphicsShare> shares;
    for (const ProcessDelta& delta : deltas) {
        shares.insert(shares.end(), delta.graphics.begin(), delta.graphics.end());
    }
    return busiestEngine(shares);
}

/// The shares of a group are added up in their sorted order.
std::vector<ProcessOffenderGroup> rankedGroups(const ProcessOffenderAggregator& inputs) {
    std::vector<ProcessOffenderGroup> groups = groupsOf(inputs);
    for (ProcessOffenderGroup& group : groups) {
        sortByShare(group.deltas, inputs.comparison);
        for (const ProcessDelta& delta : group.deltas) {
            group.cpuPercent += delta.cpuPercent;
        }
        group.graphicsPercent = graphicsOf(group.deltas);
    }
    sortByShare(groups, inputs.comparison);
    return groups;
}

/// Both what is above the threshold and the preferred minimum are leading runs of the sorted list.
std::size_t visibleCount(std::span<const ProcessOffenderGroup> ranked,
                         const ProcessOffenderConfiguration& configuration) {
    const auto firstBelow = std::ranges::find_if(ranked, [&configuration](const ProcessOffenderGroup& group) {
        return group.cpuPercent < configuration.minimumVisibleCPUPercent;
    });
    const auto above = static_cast<std::size_t>(firstBelow - ranked.begin());
    const std::size_t leading = atMost(ranked.size(), configuration.preferredMinimumOffenderCount);
    return atMost(std::max(above, leading), configuration.maximumOffenderCount);
}

using VisibleGroups = std::vector<const ProcessOffenderGroup*>;

bool drawsMuch(const ProcessOffenderGroup& group, const ProcessOffenderConfiguration& configuration) {
    return group.graphicsPercent.value_or(0) >= configuration.minimumVisibleGraphicsPercent &&
           group.graphicsPercent > 0;
}

/// Those that draw most of the ones that compute too little to be shown, in display order.
VisibleGroups hiddenDrawers(std::span<const ProcessOffenderGroup> hidden,
                            const ProcessOffenderConfiguration& configuration) {
    VisibleGroups drawers;
    for (const ProcessOffenderGroup& group : hidden) {
        if (drawsMuch(group, configuration)) {
            drawers.push_back(&group);
        }
    }
    std::ranges::stable_sort(drawers, std::ranges::greater{}, &ProcessOffenderGroup::graphicsPercent);
    drawers.resize(atMost(drawers.size(), configuration.maximumDrawingOffenderCount));
    std::ranges::sort(drawers);
    return drawers;
}

/// Room for one more: the last that draws little makes way.
void makeRoom(VisibleGroups& visible, const ProcessOffenderConfiguration& configuration) {
    if (std::cmp_less(visible.size(), configuration.maximumOffenderCount)) {
        return;
    }
    const auto last =
        std::ranges::find_if_not(std::views::reverse(visible), [&configuration](const auto* group) {
            return drawsMuch(*group, configuration);
        });
    visible.erase(last == visible.rend() ? std::prev(visible.end()) : std::prev(last.base()));
}

/// The groups to show, in display order. One that would be left out takes a place when it draws much or is
/// pinned.
VisibleGroups visibleGroups(std::span<const ProcessOffenderGroup> ranked,
                            const ProcessOffenderConfiguration& configuration) {
    VisibleGroups visible;
    const auto shown = ranked.first(visibleCount(ranked, configuration));
    std::ranges::transform(shown, std::back_inserter(visible), [](const auto& group) { return &group; });
    const auto hidden = ranked.subspan(shown.size());
    for (const auto* const drawer : hiddenDrawers(hidden, configuration)) {
        makeRoom(visible, configuration);
        visible.push_back(drawer);
    }
    const auto pinned = std::ranges::find(hidden, configuration.pinnedOffenderID, &ProcessOffenderGroup::id);
    if (pinned == hidden.end() || std::ranges::find(visible, &*pinned) != visible.end()) {
        return visible;
    }
    if (std::cmp_equal(visible.size(), configuration.maximumOffenderCount)) {
        visible.pop_back();
    }
    visible.push_back(&*pinned);
    return visible;
}

/// Every group's history gets its new point; groups that used no CPU time this time lose theirs.
HistoryByOffenderID extendedHistories(HistoryByOffenderID histories,
                                      std::span<const ProcessOffenderGroup> groups,
                                      const ProcessOffenderAggregator& inputs) {
    for (const ProcessOffenderGroup& group : groups) {
        auto& history = histories[group.id];
        // Points from before the clock was set back lie in its future: a line through them would run
        // backwards.
        std::erase_if(history, [&inputs](const auto& point) { return point.measuredAt > inputs.now; });
        history.emplace_back(inputs.now, group.cpuPercent);
        const std::size_t kept = atMost(history.size(), inputs.configuration.maximumHistoryCount);
        history.erase(history.begin(), history.end() - static_cast<std::ptrdiff_t>(kept));
    }
    std::erase_if(histories, [&inputs](const auto& stored) {
        return stored.second.empty() || stored.second.back().measuredAt != inputs.now;
    });
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
                              delta.cpuPercent, reading.isSystemProcess, reading.startedAt,
                              busiestEngine(delta.graphics));
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

ProcessOffender offenderFrom(const ProcessOffenderGroup& group,
                             const std::vector<ProcessOffenderHistoryPoint>& history,
                             const ProcessOffenderConfiguration& configuration) {
    const std::span<const ProcessDelta> deltas = group.deltas;
    const ProcessCPUReading& representative = *deltas.front().reading;
    return ProcessOffender({
        .id = group.id,
        .displayName = std::string(group.displayName),
        .bundleIdentifier =
            group.application != nullptr ? group.application->appBundleIdentifier : std::nullopt,
        .appBundlePath = group.application != nullptr ? group.application->appBundlePath : std::nullopt,
        .representativeProcessIdentifier = representative.processIdentifier,
        .processCount = static_cast<std::int64_t>(deltas.size()),
        .cpuPercent = group.cpuPercent,
        .category = group.category,
        .canTerminateApplication = canTerminate(group, representative),
        .children = childrenOf(deltas.first(atMost(deltas.size(), configuration.maximumChildCount))),
        .history = history,
        .startedAt = earliestStart(deltas),
        .graphicsPercent = group.graphicsPercent,
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
    const std::vector<ProcessOffenderGroup> ranked = rankedGroups(*this);

    Result result;
    result.isIndexingOrSetupLikely = std::ranges::any_of(ranked, [this](const ProcessOffenderGroup& group) {
        return group.category == ProcessOffenderCategory::indexingOrSetup &&
               group.cpuPercent >= configuration.indexingCPUThresholdPercent;
    });
    result.historyByOffenderID = extendedHistories(std::move(existingHistoryByOffenderID), ranked, *this);
    for (const ProcessOffenderGroup* const group : visibleGroups(ranked, configuration)) {
        result.visibleOffenders.push_back(
            offenderFrom(*group, result.historyByOffenderID.at(group->id), configuration));
    }
    return result;
}

} // namespace cindertop
