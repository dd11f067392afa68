#pragma once

#include "platform/UserNotificationCenter.h"
#include "update/ReleaseFeed.h"

#include <string>
#include <variant>

namespace cindertop {

/// No release in the list is newer than this program.
struct UpToDate {
    bool operator==(const UpToDate&) const = default;
};

struct UpdateFailure {
    std::string sentence; ///< for the user

    bool operator==(const UpdateFailure&) const = default;
};

/// What a look for new releases has found; a Release is newer than this program.
using UpdateResult = std::variant<Release, UpToDate, UpdateFailure>;

/// What the user, who has asked, is told. Each takes the former one's place.
UserNotificationRequest updateNotice(const UpdateResult& result);

} // namespace cindertop
