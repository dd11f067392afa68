#pragma once

#include "platform/UserDefaults.h"

namespace cindertop {

/// What the user accepts, for a terminal: lines of at most 80 columns. docs/pages/terms.html has all of it.
inline constexpr std::string_view legalTermsText =
    R"(Cindertop reads temperatures, throttling, power, displays and the CPU time of
processes on this machine. It keeps an hour of history, a summary of the day and
a log of its own doings in your home folder, and sends nothing anywhere. What it
says about heat is advice, without any warranty.
)";

/// Whether the user has accepted the terms of use. Nothing withdraws that.
inline constexpr std::string_view legalTermsAcceptedKey = "cindertop.legal.accepted";

inline bool areTermsAccepted(const UserDefaults& defaults) {
    return defaults.value(legalTermsAcceptedKey) == PropertyValue(true);
}

inline void storeTermsAccepted(UserDefaults& defaults) {
    defaults.set(legalTermsAcceptedKey, true);
}

} // namespace cindertop
