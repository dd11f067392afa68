#pragma once

#include "platform/UserDefaults.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace cindertop {

/// User defaults for read-only use: changes are kept in memory, on top of what is stored, and never written.
class UnstoredUserDefaults final : public UserDefaults {
public:
    /// `stored` outlives this object and is only read.
    explicit UnstoredUserDefaults(const UserDefaults& stored) : stored_(stored) {}

    std::optional<PropertyValue> value(std::string_view key) const override;
    void registerDefaults(const Registration& defaults) override;
    void apply(std::span<const UserDefaultsChange> changes) override;

private:
    const UserDefaults& stored_;
    mutable std::mutex mutex_;
    std::map<std::string, std::optional<PropertyValue>, std::less<>> changed_; ///< absent: removed
    Registration registered_;
};

} // namespace cindertop
