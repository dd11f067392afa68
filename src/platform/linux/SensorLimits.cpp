#include "platform/linux/SensorLimits.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ThermalTrips.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

namespace {

constexpr std::string_view inputEnding = "_input";

/// The attributes of a chip that say where it is slowed down and where it switches off; empty: none does.
struct ChipLimits {
    std::string_view chip;
    std::string_view slowsFrom;
    std::string_view switchesOffAt;
};

// NOLINTBEGIN(modernize-use-designated-initializers): the columns are named above
constexpr std::array knownChips{
    ChipLimits{"coretemp", "_crit", ""}, // the junction's maximum: the processor throttles itself there
    ChipLimits{"k10temp", "_crit", ""},  // hardware thermal control
    ChipLimits{"amdgpu", "_crit", "_emergency"},
};

// NOLINTEND(modernize-use-designated-initializers)

std::optional<double> limitIn(std::string file, std::string_view ending) {
    if (ending.empty() || !file.ends_with(inputEnding)) {
        return std::nullopt;
    }
    file.replace(file.size() - inputEnding.size(), inputEnding.size(), ending);
    return readInteger(file).and_then(usableLimit);
}

} // namespace

TemperatureLimits chipLimits(std::string_view chip, const std::filesystem::path& file) {
    const auto* const known = std::ranges::find(knownChips, chip, &ChipLimits::chip);
    if (known == knownChips.end()) {
        return {};
    }
    return {.slowsFrom = limitIn(file.string(), known->slowsFrom),
            .switchesOffAt = limitIn(file.string(), known->switchesOffAt)};
}

} // namespace cindertop::linux_platform
