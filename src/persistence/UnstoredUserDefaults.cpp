#include "persistence/UnstoredUserDefaults.h"

namespace cindertop {

std::optional<PropertyValue> UnstoredUserDefaults::value(std::string_view key) const {
    const std::scoped_lock lock(mutex_);
    const auto changed = changed_.find(key);
    auto effective = changed == changed_.end() ? stored_.value(key) : changed->second;
    if (effective) {
        return effective;
    }
    const auto registered = registered_.find(key);
    return registered == registered_.end() ? std::nullopt : std::optional(registered->second);
}

void UnstoredUserDefaults::registerDefaults(const Registration& defaults) {
    const std::scoped_lock lock(mutex_);
    for (const auto& [key, value] : defaults) {
        registered_.insert_or_assign(key, value);
    }
}

void UnstoredUserDefaults::apply(std::span<const UserDefaultsChange> changes) {
    const std::scoped_lock lock(mutex_);
    for (const auto& [key, value] : changes) {
        changed_.insert_or_assign(key, value);
    }
}

} // namespace cindertop
