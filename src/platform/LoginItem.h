#pragma once

#include <expected>
#include <string>
#include <system_error>

namespace cindertop {

enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval, ///< registered, but switched off by the user's system
    notFound,         ///< the system has no place for it
    unknown,
};

/// Why the login item could not be changed.
struct LoginItemError {
    std::error_code code;
    std::string message; ///< one sentence for the user

    bool operator==(const LoginItemError&) const = default;
};

/// Whether the system starts the program when the user logs in. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    virtual LoginItemStatus status() const = 0;
    virtual std::expected<void, LoginItemError> registerItem() = 0;
    /// Succeeds when there was nothing to remove.
    virtual std::expected<void, LoginItemError> unregisterItem() = 0;
};

} // namespace cindertop
