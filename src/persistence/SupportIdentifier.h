#pragma once

#include "platform/UserDefaults.h"

#include <string>

namespace cindertop {

/// The identifier by which a user may be recognised in requests for support: made and stored when it is first
/// asked for, then the same for ever.
std::string supportIdentifier(UserDefaults& defaults);

} // namespace cindertop
