#pragma once

#include "platform/PowerSources.h"

#include <cstddef>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace cindertop::fakes {

using FakePowerEntry = std::map<std::string, PropertyValue, std::less<>>;

class FakePowerSources final : public PowerSources {
public:
    std::optional<std::string> providing = "AC Power";
    std::optional<std::vector<FakePowerEntry>> entries = std::vector<FakePowerEntry>{};

    std::optional<std::string> providingPowerSourceType() const override { return providing; }

    std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const override {
        return entries && className == "IOPMPowerSource" ? std::make_unique<Iterator>(*entries) : nullptr;
    }

private:
    class Entry final : public PowerSourceEntry {
    public:
        explicit Entry(FakePowerEntry properties) : properties_(std::move(properties)) {}

        std::optional<PropertyValue> property(std::string_view key) const override {
            const auto found = properties_.find(key);
            return found == properties_.end() ? std::nullopt : std::optional(found->second);
        }

    private:
        FakePowerEntry properties_;
    };

    class Iterator final : public PowerSourceIterator {
    public:
        explicit Iterator(std::vector<FakePowerEntry> entries) : entries_(std::move(entries)) {}

        std::unique_ptr<PowerSourceEntry> next() override {
            return next_ < entries_.size() ? std::make_unique<Entry>(entries_[next_++]) : nullptr;
        }

    private:
        std::vector<FakePowerEntry> entries_;
        std::size_t next_ = 0;
    };
};

} // namespace cindertop::fakes
