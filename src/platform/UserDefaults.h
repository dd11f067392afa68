#pragma once

#include "platform/PropertyValue.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cindertop {

/// One step of changing the user's defaults.
struct UserDefaultsChange {
    std::string key;
    std::optional<PropertyValue> value; ///< to store; absent: the key is removed

    bool operator==(const UserDefaultsChange&) const = default;
};

/// The user's preferences, by key. Any thread may call.
class UserDefaults {
public:
    using Registration = std::map<std::string, PropertyValue, std::less<>>;

    virtual ~UserDefaults() = default;

    /// What is stored under the key, else what is registered for it. None without either, and for a stored
    /// value of a kind that `PropertyValue` does not have.
    virtual std::optional<PropertyValue> value(std::string_view key) const = 0;

    /// Adds values that hold for keys under which nothing is stored. They are never stored.
    virtual void registerDefaults(const Registration& defaults) = 0;

    /// Makes the changes in their order and stores the result once: all of it or, when that fails, for this
    /// process's lifetime only. No error is reported.
    virtual void apply(std::span<const UserDefaultsChange> changes) = 0;

    void set(std::string_view key, PropertyValue value) {
        apply(std::vector{UserDefaultsChange{std::string(key), std::move(value)}});
    }

    void remove(std::string_view key) {
        apply(std::vector{UserDefaultsChange{std::string(key), std::nullopt}});
    }
};

} // namespace cindertop
