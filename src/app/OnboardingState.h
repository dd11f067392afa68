#pragma once

#include "app/HardwareCheckStatus.h"
#include "context/PowerContextSnapshot.h"

#include <cstdint>
#include <optional>

namespace cindertop {

/// The steps of the first run; with `termsAndStart` the user accepts the terms and starts monitoring.
enum class OnboardingStep : std::uint8_t { welcome, hardwareCheck, termsAndStart };

/// How far the first run has come.
struct OnboardingState {
    OnboardingStep step = OnboardingStep::hardwareCheck;
    HardwareCheckStatus hardwareStatus = HardwareCheckStatus::checking();
    bool showsHardwareDetails = false;
    bool hasCompletedHardwareCheck = false;
    /// Read once by a check that surveys the machine: nothing is watched yet.
    std::optional<PowerContextSnapshot> power{};

    bool operator==(const OnboardingState&) const = default;
};

} // namespace cindertop
