#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/simulated/Scenario.h"

#include <functional>

namespace cindertop::simulated {

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

} // namespace cindertop::simulated
