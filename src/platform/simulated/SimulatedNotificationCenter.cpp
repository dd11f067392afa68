#include "platform/simulated/SimulatedNotificationCenter.h"

#include <utility>

namespace cindertop::simulated {

SimulatedNotificationCenter::SimulatedNotificationCenter(
    const ScenarioNotifications& behaviour, std::function<void(const UserNotificationRequest&)> onAccepted)
    : behaviour_(behaviour), onAccepted_(std::move(onAccepted)) {}

void SimulatedNotificationCenter::readAuthorizationStatus(StatusCompletion completion) {
    completion(behaviour_.authorization);
}

void SimulatedNotificationCenter::requestAuthorization(NotificationAuthorizationOptions /*options*/,
                                                       PermissionCompletion completion) {
    switch (behaviour_.answer) {
    case NotificationAnswer::granted:
        behaviour_.authorization = NotificationAuthorizationStatus::authorized;
        completion(NotificationPermission::granted);
        return;
    case NotificationAnswer::refused:
        behaviour_.authorization = NotificationAuthorizationStatus::denied;
        completion(NotificationPermission::refused);
        return;
    case NotificationAnswer::error:
        completion(std::unexpected(NotificationError{"the permission could not be asked for"}));
        return;
    }
}

void SimulatedNotificationCenter::add(UserNotificationRequest request, AddCompletion completion) {
    if (behaviour_.delivery == NotificationDelivery::error) {
        completion(std::unexpected(NotificationError{"the notification could not be delivered"}));
        return;
    }
    onAccepted_(request);
    completion({});
}

} // namespace cindertop::simulated
