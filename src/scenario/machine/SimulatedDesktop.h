#pragma once

#include "platform/LoginItem.h"
#include "platform/UnifiedLog.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "scenario/format/Scenario.h"

#include <functional>
#include <mutex>
#include <string>
#include <utility>

namespace cindertop::simulated {

/// Not registered at first; whatever is asked succeeds.
class SimulatedLoginItem final : public LoginItem {
public:
    LoginItemStatus status() const override { return status_; }

    std::expected<void, LoginItemError> registerItem() override {
        status_ = LoginItemStatus::enabled;
        return {};
    }

    std::expected<void, LoginItemError> unregisterItem() override {
        status_ = LoginItemStatus::notRegistered;
        return {};
    }

private:
    LoginItemStatus status_{LoginItemStatus::notRegistered};
};

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

/// Answers as a scenario says, each time within the call. It never presents anything, so it asks no delegate.
class SimulatedNotificationCenter final : public UserNotificationCenter {
public:
    /// `onAccepted` runs for each accepted request, before its completion.
    SimulatedNotificationCenter(const ScenarioNotifications& behaviour,
                                std::function<void(const UserNotificationRequest&)> onAccepted);

    void setDelegate(const UserNotificationCenterDelegate* /*delegate*/) override {}

    void readAuthorizationStatus(StatusCompletion completion) override;
    void requestAuthorization(NotificationAuthorizationOptions options,
                              PermissionCompletion completion) override;
    void add(UserNotificationRequest request, AddCompletion completion) override;

private:
    ScenarioNotifications behaviour_; ///< `authorization` follows the answers
    std::function<void(const UserNotificationRequest&)> onAccepted_;
};

struct UnifiedLogLine {
    UnifiedLogLevel level;
    std::string subsystem;
    std::string category;
    std::string text;

    bool operator==(const UnifiedLogLine&) const = default;
};

/// Hands every line on, one at a time, on the thread that writes it. The receiver must write none itself.
class CapturingUnifiedLog final : public UnifiedLog {
public:
    explicit CapturingUnifiedLog(std::function<void(const UnifiedLogLine&)> onLine)
        : onLine_(std::move(onLine)) {}

    void write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view text) override {
        const std::scoped_lock lock(lock_);
        onLine_({.level = level,
                 .subsystem = std::string(subsystem),
                 .category = std::string(category),
                 .text = std::string(text)});
    }

private:
    std::mutex lock_;
    std::function<void(const UnifiedLogLine&)> onLine_;
};

} // namespace cindertop::simulated
