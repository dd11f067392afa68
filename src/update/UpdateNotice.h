#pragma once

#include "platform/UserNotificationRequest.h"
#include "update/UpdateResult.h"

namespace cindertop {

/// What the user, who has asked, is told. Each takes the former one's place.
UserNotificationRequest updateNotice(const UpdateResult& result);

} // namespace cindertop
