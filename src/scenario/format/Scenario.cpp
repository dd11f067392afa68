#include "scenario/format/Scenario.h"

#include <algorithm>
#include <utility>

namespace cindertop::simulated {

ScenarioProcessList::ScenarioProcessList(std::vector<ScenarioProcess> processes)
    : processes_(std::move(processes)) {
    byIdentifier_.reserve(processes_.size());
    for (std::uint32_t index = 0; index < processes_.size(); ++index) {
        byIdentifier_.push_back(index);
    }
    std::ranges::sort(byIdentifier_, {}, [this](std::uint32_t index) {
        return std::pair(processes_[index].processIdentifier, index);
    });
}

std::optional<std::size_t> ScenarioProcessList::find(std::int32_t processIdentifier) const {
    const auto identifierOf = [this](std::uint32_t index) { return processes_[index].processIdentifier; };
    const auto found = std::ranges::lower_bound(byIdentifier_, processIdentifier, {}, identifierOf);
    if (found == byIdentifier_.end() || identifierOf(*found) != processIdentifier) {
        return std::nullopt;
    }
    return *found;
}

std::optional<std::size_t> ScenarioProcessList::firstRepetition() const {
    std::optional<std::size_t> first;
    for (std::size_t next = 1; next < byIdentifier_.size(); ++next) {
        const auto index = byIdentifier_[next];
        if (processes_[index].processIdentifier == processes_[byIdentifier_[next - 1]].processIdentifier) {
            first = std::min<std::size_t>(first.value_or(index), index);
        }
    }
    return first;
}

} // namespace cindertop::simulated
