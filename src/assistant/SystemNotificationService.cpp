#include "assistant/SystemNotificationService.h"

#include "assistant/ThermalAlert.h"

#include <expected>
#include <utility>

namespace cindertop {

namespace {

using Status = NotificationAuthorizationStatus;
using PermissionAnswer = std::expected<NotificationPermission, NotificationError>;
using AddAnswer = std::expected<void, NotificationError>;

SystemNotificationState stateFor(Status status) {
    switch (status) {
    case Status::notDetermined:
        return SystemNotificationState::notDetermined;
    case Status::denied:
        return SystemNotificationState::denied;
    case Status::authorized:
    case Status::provisional:
    case Status::ephemeral:
        return SystemNotificationState::authorized;
    case Status::unknown:
        break;
    }
    return SystemNotificationState::unavailable;
}

SystemNotificationState stateFor(const PermissionAnswer& answer) {
    if (!answer) {
        return SystemNotificationState::unavailable;
    }
    return *answer == NotificationPermission::granted ? SystemNotificationState::authorized
                                                      : SystemNotificationState::denied;
}

SystemNotificationState stateFor(const AddAnswer& answer) {
    return answer ? SystemNotificationState::authorized : SystemNotificationState::unavailable;
}

} // namespace

template <typename Answer>
std::function<void(Answer)>
SystemNotificationService::whileAlive(std::function<void(const Answer&)> handler) const {
    return [life = std::weak_ptr(life_), handler = std::move(handler)](const Answer& answer) {
        if (!life.expired()) {
            handler(answer);
        }
    };
}

SystemNotificationService::SystemNotificationService(UserNotificationCenter& center)
    : center_(center), life_(std::make_shared<const Life>()) {
    center_.setDelegate(this);
}

SystemNotificationService::~SystemNotificationService() {
    center_.setDelegate(nullptr);
}

void SystemNotificationService::currentState(bool isEnabled, Completion completion) {
    if (!isEnabled) {
        completion(SystemNotificationState::disabled);
        return;
    }
    center_.readAuthorizationStatus(whileAlive<Status>(
        [completion = std::move(completion)](Status status) { completion(stateFor(status)); }));
}

void SystemNotificationService::prepare(bool isEnabled, Completion completion) {
    if (!isEnabled) {
        completion(SystemNotificationState::disabled);
        return;
    }
    center_.readAuthorizationStatus(
        whileAlive<Status>([this, completion = std::move(completion)](Status status) {
            if (status == Status::notDetermined) {
                askForPermission(completion);
            } else {
                completion(stateFor(status));
            }
        }));
}

void SystemNotificationService::deliver(const ThermalAlert& alert, bool isEnabled, Completion completion,
                                        std::function<bool()> isStillTrue) {
    prepare(isEnabled, [this, alert, completion = std::move(completion),
                        isStillTrue = std::move(isStillTrue)](SystemNotificationState state) {
        if (state == SystemNotificationState::authorized && isStillTrue()) {
            post(alert, completion);
        } else {
            completion(state);
        }
    });
}

NotificationPresentationOptions
SystemNotificationService::willPresent(const UserNotificationRequest& /*request*/) const {
    return {.banner = true, .list = true};
}

void SystemNotificationService::askForPermission(Completion completion) {
    center_.requestAuthorization(
        {.alert = true},
        whileAlive<PermissionAnswer>(
            [completion = std::move(completion)](const auto& answer) { completion(stateFor(answer)); }));
}

void SystemNotificationService::post(const ThermalAlert& alert, Completion completion) {
    center_.add(notificationRequestFor(alert),
                whileAlive<AddAnswer>([completion = std::move(completion)](const auto& answer) {
                    completion(stateFor(answer));
                }));
}

} // namespace cindertop
