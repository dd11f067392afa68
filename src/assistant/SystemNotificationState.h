#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// How far notifications can be delivered.
enum class SystemNotificationState {
    disabled,      ///< switched off in the application; the system has not been consulted
    notDetermined, ///< the user has not been asked yet
    authorized,
    denied,      ///< the user refused them in the system
    unavailable, ///< the system's answer is unknown, or asking or delivering failed
};

template <>
struct EnumerationTable<SystemNotificationState> {
    using enum SystemNotificationState;
    static constexpr std::array cases{
        EnumerationCase{disabled, "disabled"},       EnumerationCase{notDetermined, "notDetermined"},
        EnumerationCase{authorized, "authorized"},   EnumerationCase{denied, "denied"},
        EnumerationCase{unavailable, "unavailable"},
    };
};

} // namespace cindertop
