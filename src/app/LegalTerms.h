#pragma once

#include "platform/UserDefaults.h"

namespace cindertop {

/// Whether the user has accepted the terms of use. Nothing withdraws that.
inline constexpr std::string_view legalTermsAcceptedKey = "cindertop.legal.accepted";

inline bool areTermsAccepted(const UserDefaults& defaults) {
    return defaults.value(legalTermsAcceptedKey) == PropertyValue(true);
}

inline void storeTermsAccepted(UserDefaults& defaults) {
    defaults.set(legalTermsAcceptedKey, true);
}

} // namespace cindertop
