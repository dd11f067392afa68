#include "scenario/machine/SimulatedDesktop.h"

#include <utility>

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
