#pragma once

#include <functional>
#include <string>

namespace cindertop::linux_platform {

/// Ends every process of a unit of the user's service manager at once. False when it did not, for whatever
/// reason; answers within 2 s.
using KillUnit = std::function<bool(const std::string& unit)>;

/// By way of the bus at this address; empty: the user's own.
KillUnit killByUserManager(std::string busAddress = {});

} // namespace cindertop::linux_platform
