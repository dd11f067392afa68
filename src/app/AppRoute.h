#pragma once

#include <cstdint>

namespace cindertop {

/// Which of the program's windows the user is meant to be in.
enum class AppRoute : std::uint8_t { onboarding, settings };

} // namespace cindertop
