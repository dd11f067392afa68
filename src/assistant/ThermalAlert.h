#pragma once

#include "assistant/ThermalAlertKind.h"
#include "support/Instant.h"

#include <string>

namespace cindertop {

/// One alert, ready to post.
struct ThermalAlert {
    ThermalAlertKind kind;
    std::string title;
    std::string body;
    Instant issuedAt; ///< the instant of the evaluation that made it

    bool operator==(const ThermalAlert&) const = default;
};

} // namespace cindertop
