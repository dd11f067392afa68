#include "scenario/machine/SimulatedSurroundings.h"

#include <algorithm>
#include <cstddef>

namespace cindertop::simulated {

namespace {

using Entries = std::shared_ptr<const std::vector<ScenarioPowerEntry>>;

class SimulatedEntry final : public PowerSourceEntry {
public:
    SimulatedEntry(Entries entries, std::size_t index) : entries_(std::move(entries)), index_(index) {}

    std::optional<PropertyValue> property(std::string_view key) const override {
        const ScenarioPowerEntry& entry = (*entries_)[index_];
        const auto found = entry.find(key);
        return found != entry.end() ? std::optional(found->second) : std::nullopt;
    }

private:
    Entries entries_;
    std::size_t index_;
};

class SimulatedIterator final : public PowerSourceIterator {
public:
    explicit SimulatedIterator(Entries entries) : entries_(std::move(entries)) {}

    std::unique_ptr<PowerSourceEntry> next() override {
        if (next_ == entries_->size()) {
            return nullptr;
        }
        return std::make_unique<SimulatedEntry>(entries_, next_++);
    }

private:
    Entries entries_;
    std::size_t next_ = 0;
};

} // namespace

std::optional<std::string> SimulatedPowerSources::providingPowerSourceType() const {
    return timeline_.frame().power->providing;
}

std::unique_ptr<PowerSourceIterator>
SimulatedPowerSources::matchingServices(std::string_view className) const {
    const auto& power = timeline_.frame().power;
    if (className != powerSourceClass || !power->entries) {
        return nullptr;
    }
    return std::make_unique<SimulatedIterator>(Entries(power, &*power->entries));
}

namespace {

constexpr std::int32_t unreadable = 1;

} // namespace

DisplayList::Answer SimulatedDisplayList::countActiveDisplays() const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return {.status = unreadable, .count = 0, .identifiers = {}};
    }
    return {.status = 0, .count = static_cast<std::uint32_t>(displays->size()), .identifiers = {}};
}

DisplayList::Answer SimulatedDisplayList::activeDisplays(std::uint32_t capacity) const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return {.status = unreadable, .count = 0, .identifiers = {}};
    }
    Answer answer{.status = 0, .count = 0, .identifiers = std::vector<DisplayIdentifier>(capacity)};
    for (const ScenarioDisplay& display : *displays) {
        if (answer.count == capacity) {
            break;
        }
        answer.identifiers[answer.count++] = display.identifier;
    }
    return answer;
}

DisplayPlace SimulatedDisplayList::placeOf(DisplayIdentifier display) const {
    const auto& displays = timeline_.frame().displays;
    if (!displays) {
        return DisplayPlace::external;
    }
    const auto found = std::ranges::find(*displays, display, &ScenarioDisplay::identifier);
    return found != displays->end() && found->isBuiltIn ? DisplayPlace::builtIn : DisplayPlace::external;
}

} // namespace cindertop::simulated
