#pragma once

#include "platform/PowerSources.h"

#include <cstddef>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace cindertop::fakes {

using FakePowerEntry = std::map<std::string, PropertyValue, std::less<>>;

/// Notes every question and every release in `journal`: "1: IsCharging", "1 released", "walk released".
class FakePowerSources final : public PowerSources {
public:
    std::optional<std::string> providing = "AC Power";
    std::optional<std::vector<FakePowerEntry>> entries = std::vector<FakePowerEntry>{};
    mutable std::vector<std::string> journal;

    std::optional<std::string> providingPowerSourceType() const override { return providing; }

    std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const override {
        if (!entries || className != "IOPMPowerSource") {
            return nullptr;
        }
        return std::make_unique<Iterator>(*this);
    }

private:
    class Entry final : public PowerSourceEntry {
    public:
        Entry(const FakePowerSources& sources, std::size_t index) : sources_(sources), index_(index) {}

        ~Entry() override { sources_.journal.push_back(std::to_string(index_) + " released"); }

        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        std::optional<PropertyValue> property(std::string_view key) const override {
            sources_.journal.push_back(std::to_string(index_) + ": " + std::string(key));
            const auto& properties = sources_.entries->at(index_);
            const auto found = properties.find(key);
            return found == properties.end() ? std::nullopt : std::optional(found->second);
        }

    private:
        const FakePowerSources& sources_;
        std::size_t index_;
    };

    class Iterator final : public PowerSourceIterator {
    public:
        explicit Iterator(const FakePowerSources& sources) : sources_(sources) {}

        ~Iterator() override { sources_.journal.emplace_back("walk released"); }

        Iterator(const Iterator&) = delete;
        Iterator& operator=(const Iterator&) = delete;

        std::unique_ptr<PowerSourceEntry> next() override {
            if (next_ == sources_.entries->size()) {
                return nullptr;
            }
            return std::make_unique<Entry>(sources_, next_++);
        }

    private:
        const FakePowerSources& sources_;
        std::size_t next_ = 0;
    };
};

} // namespace cindertop::fakes
