#pragma once

#include "platform/UserDefaults.h"

#include <mutex>

namespace cindertop::simulated {

/// Preferences in memory, empty at first.
class SimulatedUserDefaults final : public UserDefaults {
public:
    std::optional<PropertyValue> value(std::string_view key) const override;
    void registerDefaults(const Registration& defaults) override;
    void apply(std::span<const UserDefaultsChange> changes) override;

private:
    mutable std::mutex lock_;
    Registration stored_;
    Registration registered_;
};

} // namespace cindertop::simulated
