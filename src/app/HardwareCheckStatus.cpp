#include "app/HardwareCheckStatus.h"

#include "support/Wording.h"
#include "thermal/ThermalReading.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

using Kind = HardwareCheckStatus::Kind;

constexpr Wording checkingTitle{"Checking this Mac...", "Checking this laptop..."};

std::string readyTitle(const MacHardwareProfile& profile) {
    return profile.isModelKnown() ? withName("{name} is ready", profile.modelIdentifier)
                                  : "This laptop is ready";
}

std::string supportedTitle(const MacHardwareProfile& profile) {
    const auto model = supportedModel(profile.modelIdentifier);
    const auto generation = model ? std::optional(model->chipGeneration) : chipGeneration(profile.cpuBrand);
    return withName("{name} MacBook Air detected", generation ? displayName(*generation) : "Unknown");
}

std::string supportedDetail(const MacHardwareProfile& profile) {
    const auto model = supportedModel(profile.modelIdentifier);
    return withName("{name} matches Cindertop's fanless target.",
                    model ? model->displayName : "This MacBook Air");
}

} // namespace

bool isHeatReadable(const HeatSources& sources) {
    return fromProcessState(sources.thermalState) != SystemThermalState::unavailable ||
           sources.pressureSource.has_value() ||
           std::ranges::any_of(sources.sensors, [](const std::string& product) {
               return inferred(product) == ThermalSensorKind::cpu;
           });
}

HardwareCheckStatus::HardwareCheckStatus(Kind kind, std::optional<MacHardwareProfile> profile,
                                         std::optional<HeatSources> sources)
    : kind_(kind), profile_(std::move(profile)), heatSources_(std::move(sources)) {}

HardwareCheckStatus HardwareCheckStatus::supported(MacHardwareProfile profile,
                                                   std::optional<HeatSources> sources) {
    return {Kind::supported, std::move(profile), std::move(sources)};
}

HardwareCheckStatus HardwareCheckStatus::unsupported(MacHardwareProfile profile) {
    return {Kind::unsupported, std::move(profile), std::nullopt};
}

HardwareCheckStatus HardwareCheckStatus::surveyed(MacHardwareProfile profile, HeatSources sources) {
    const auto kind = isHeatReadable(sources) ? Kind::ready : Kind::unreadable;
    return {kind, std::move(profile), std::move(sources)};
}

HardwareCheckStatus HardwareCheckStatus::checking() {
    return {Kind::checking, std::nullopt, std::nullopt};
}

std::string HardwareCheckStatus::title(OperatingSystem system) const {
    switch (kind_) {
    case Kind::supported:
        return supportedTitle(*profile_);
    case Kind::unsupported:
        return needsAppleSilicon() ? "Apple Silicon required" : "MacBook Air required";
    case Kind::ready:
        return readyTitle(*profile_);
    case Kind::unreadable:
        return "No heat readings here";
    case Kind::checking:
        break;
    }
    return std::string(checkingTitle.in(system));
}

std::string HardwareCheckStatus::detail() const {
    switch (kind_) {
    case Kind::supported:
        return supportedDetail(*profile_);
    case Kind::unsupported:
        return needsAppleSilicon() ? "Cindertop needs an Apple Silicon MacBook Air."
                                   : "Cindertop is built for Apple Silicon MacBook Air.";
    case Kind::ready:
        return heatSources_->hasFan
                   ? "Its heat, and what causes it, can be read. It has a fan: alerts come later than on "
                     "fanless laptops."
                   : "Its heat, and what causes it, can be read. It has no fan that tells its speed.";
    case Kind::unreadable:
        return "This machine tells nothing about its temperature or throttling. Cindertop can still show "
               "what "
               "uses the processor.";
    case Kind::checking:
        break;
    }
    return "Checking model, chip and thermal support.";
}

bool HardwareCheckStatus::needsAppleSilicon() const {
    return profile_->architecture != "arm64" && !supportedModel(profile_->modelIdentifier) &&
           !chipGeneration(profile_->cpuBrand);
}

HardwareCheckStatus performHardwareCheck(MacHardwareProfile profile, std::optional<HeatSources> sources) {
    if (supportedModel(profile.modelIdentifier)) {
        return HardwareCheckStatus::supported(std::move(profile), std::move(sources));
    }
    return sources ? HardwareCheckStatus::surveyed(std::move(profile), *std::move(sources))
                   : HardwareCheckStatus::unsupported(std::move(profile));
}

} // namespace cindertop
