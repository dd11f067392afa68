#pragma once

#include "platform/linux/PowerSupply.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// All batteries of the machine taken as one. Each part is absent when the batteries together cannot tell it.
struct BatteryPack {
    std::optional<std::int64_t> currentCapacity; ///< in the unit of `maxCapacity`, whichever that is
    std::optional<std::int64_t> maxCapacity;     ///< present exactly when `currentCapacity` is
    std::optional<bool> isCharging;
    std::optional<bool> isFullyCharged;
    std::optional<std::int64_t> deciKelvin; ///< of the warmest battery
    std::optional<std::int64_t> milliwatts; ///< into all of them; negative: drawn; never 0

    bool operator==(const BatteryPack&) const = default;
};

/// None without a battery.
///
/// Charge: one battery is `capacity` of 100, else its charge or energy. Several add up in one unit that all
/// of them have; where there is none (one counts charge, another energy or percent only), their percentages
/// add up. One battery that tells nothing leaves the whole unknown: a sum without it would jump when it
/// answers again.
///
/// Watts: `power_now`, else current times voltage. The status tells the direction, since drivers disagree
/// about the sign. Without a status a negative sign is believed, and a positive one means discharging while
/// no external supply is on. What charges and what discharges is added up with its sign.
std::optional<BatteryPack> combineBatteries(const std::vector<PowerSupply>& supplies);

/// Whether an external supply is plugged in and on. None where none is listed, as on laptops that are fed by
/// USB-C alone, or where one that does not answer may be the one.
std::optional<bool> isExternallyPowered(const std::vector<PowerSupply>& supplies);

/// "AC Power", "UPS Power", "Battery Power", or none when the supplies do not tell.
///
/// The batteries are believed before the supplies: a USB controller, or one charger of several, often goes on
/// saying that it is on. Only a battery that says nothing leaves the decision to them.
std::optional<std::string_view> providingSource(const std::vector<PowerSupply>& supplies);

} // namespace cindertop::linux_platform
