#include "app/HardwareCheckStatus.h"

#include <utility>

namespace cindertop {

HardwareCheckStatus::HardwareCheckStatus(Kind kind, std::optional<MacHardwareProfile> profile)
    : kind_(kind), profile_(std::move(profile)) {}

HardwareCheckStatus HardwareCheckStatus::supported(MacHardwareProfile profile) {
    return {Kind::supported, std::move(profile)};
}

HardwareCheckStatus HardwareCheckStatus::unsupported(MacHardwareProfile profile) {
    return {Kind::unsupported, std::move(profile)};
}

HardwareCheckStatus HardwareCheckStatus::checking() {
    return {Kind::checking, std::nullopt};
}

std::string HardwareCheckStatus::title() const {
    if (kind_ == Kind::checking) {
        return "Checking this Mac...";
    }
    if (kind_ == Kind::unsupported) {
        return needsAppleSilicon() ? "Apple Silicon required" : "MacBook Air required";
    }
    const auto model = supportedModel(profile_->modelIdentifier);
    const auto generation = model ? std::optional(model->chipGeneration) : chipGeneration(profile_->cpuBrand);
    return std::string(generation ? displayName(*generation) : "Unknown") + " MacBook Air detected";
}

std::string HardwareCheckStatus::detail() const {
    if (kind_ == Kind::checking) {
        return "Checking model, chip and thermal support.";
    }
    if (kind_ == Kind::unsupported) {
        return needsAppleSilicon() ? "Cindertop needs an Apple Silicon MacBook Air."
                                   : "Cindertop is built for Apple Silicon MacBook Air.";
    }
    const auto model = supportedModel(profile_->modelIdentifier);
    return std::string(model ? model->displayName : "This MacBook Air") +
           " matches Cindertop's fanless target.";
}

bool HardwareCheckStatus::needsAppleSilicon() const {
    return profile_->architecture != "arm64" && !supportedModel(profile_->modelIdentifier) &&
           !chipGeneration(profile_->cpuBrand);
}

HardwareCheckStatus performHardwareCheck(const SystemValues& system, std::string_view architecture) {
    auto profile = readHardwareProfile(system, architecture);
    const bool isSupported = supportedModel(profile.modelIdentifier).has_value();
    return isSupported ? HardwareCheckStatus::supported(std::move(profile))
                       : HardwareCheckStatus::unsupported(std::move(profile));
}

} // namespace cindertop
