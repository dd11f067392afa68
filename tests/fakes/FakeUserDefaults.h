#pragma once

#include "platform/UserDefaults.h"

#include <vector>

namespace cindertop::fakes {

/// Keeps everything in memory and notes every change in order.
class FakeUserDefaults final : public UserDefaults {
public:
    Registration stored;
    Registration registered;
    std::vector<UserDefaultsChange> changes;

    std::optional<PropertyValue> value(std::string_view key) const override {
        for (const Registration* const values : {&stored, &registered}) {
            if (const auto found = values->find(key); found != values->end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }

    void registerDefaults(const Registration& defaults) override {
        for (const auto& [key, value] : defaults) {
            registered.insert_or_assign(key, value);
        }
    }

    void apply(std::span<const UserDefaultsChange> wanted) override {
        for (const UserDefaultsChange& change : wanted) {
            changes.push_back(change);
            if (change.value) {
                stored.insert_or_assign(change.key, *change.value);
            } else {
                stored.erase(change.key);
            }
        }
    }
};

} // namespace cindertop::fakes
