#pragma once

#include "assistant/ThermalAlert.h"
#include "platform/UserNotificationRequest.h"

namespace cindertop {

/// The quiet notification that tells of an alert. Two alerts have the same identifier only when they are of
/// one kind and of one second.
UserNotificationRequest notificationRequestFor(const ThermalAlert& alert);

} // namespace cindertop
