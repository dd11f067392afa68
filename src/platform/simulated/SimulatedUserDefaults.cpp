#include "platform/simulated/SimulatedUserDefaults.h"

namespace cindertop::simulated {

std::optional<PropertyValue> SimulatedUserDefaults::value(std::string_view key) const {
    const std::scoped_lock lock(lock_);
    if (const auto stored = stored_.find(key); stored != stored_.end()) {
        return stored->second;
    }
    const auto registered = registered_.find(key);
    return registered != registered_.end() ? std::optional(registered->second) : std::nullopt;
}

void SimulatedUserDefaults::registerDefaults(const Registration& defaults) {
    const std::scoped_lock lock(lock_);
    for (const auto& [key, value] : defaults) {
        registered_.insert_or_assign(key, value);
    }
}

void SimulatedUserDefaults::apply(std::span<const UserDefaultsChange> changes) {
    const std::scoped_lock lock(lock_);
    for (const auto& [key, value] : changes) {
        if (value) {
            stored_.insert_or_assign(key, *value);
        } else {
            stored_.erase(key);
        }
    }
}

} // namespace cindertop::simulated
