#include "platform/simulated/SimulatedPowerSources.h"

#include <cstddef>

namespace cindertop::simulated {

namespace {

constexpr std::string_view powerSourceClass = "IOPMPowerSource";

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

} // namespace cindertop::simulated
