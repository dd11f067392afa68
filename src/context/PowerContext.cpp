#include "context/PowerContext.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <variant>

namespace cindertop {

PowerContextSnapshot::PowerContextSnapshot(bool isAvailable, PowerSourceKind source,
                                           std::optional<int> batteryLevelPercent,
                                           std::optional<bool> isCharging, std::optional<bool> isFullyCharged,
                                           bool isLowPowerModeEnabled,
                                           std::optional<double> batteryTemperatureCelsius,
                                           std::optional<BatteryTemperatureLevel> batteryTemperatureLevel,
                                           std::optional<double> batteryWatts)
    : isAvailable(isAvailable),
      source(source),
      batteryLevelPercent(
          batteryLevelPercent.transform([](int percent) { return std::clamp(percent, 0, 100); })),
      isCharging(isCharging),
      isFullyCharged(isFullyCharged),
      isLowPowerModeEnabled(isLowPowerModeEnabled),
      batteryTemperatureCelsius(batteryTemperatureCelsius),
      batteryTemperatureLevel(batteryTemperatureLevel),
      batteryWatts(batteryWatts.and_then([](double watts) {
          return std::isfinite(watts) && watts != 0 ? std::optional(watts) : std::nullopt;
      })) {}

const PowerContextSnapshot& PowerContextSnapshot::unavailable() {
    static const PowerContextSnapshot snapshot(false, PowerSourceKind::unknown, std::nullopt, std::nullopt,
                                               std::nullopt, false, std::nullopt, std::nullopt);
    return snapshot;
}

bool PowerContextSnapshot::isExternalPowerConnected() const {
    return source == PowerSourceKind::acPower || source == PowerSourceKind::upsPower;
}

namespace {

std::optional<std::int64_t> integerValue(const PropertyValue& value) {
    if (const auto* const integer = std::get_if<std::int64_t>(&value)) {
        return *integer;
    }
    const auto* const number = std::get_if<double>(&value);
    constexpr double bound = 0x1p63;
    if (number != nullptr && *number >= -bound && *number < bound) {
        return static_cast<std::int64_t>(*number);
    }
    return std::nullopt;
}

std::optional<bool> booleanValue(const PropertyValue& value) {
    if (const auto* const boolean = std::get_if<bool>(&value)) {
        return *boolean;
    }
    if (const auto* const integer = std::get_if<std::int64_t>(&value)) {
        return *integer != 0;
    }
    if (const auto* const number = std::get_if<double>(&value); number != nullptr && !std::isnan(*number)) {
        return *number != 0;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> integerProperty(const PowerSourceEntry& entry, std::string_view key) {
    return entry.property(key).and_then(integerValue);
}

std::optional<bool> booleanProperty(const PowerSourceEntry& entry, std::string_view key) {
    return entry.property(key).and_then(booleanValue);
}

namespace {

constexpr std::array<std::pair<std::string_view, PowerSourceKind>, 4> sourceNames{{
    {"AC Power", PowerSourceKind::acPower},
    {"Battery Power", PowerSourceKind::batteryPower},
    {"UPS Power", PowerSourceKind::upsPower},
    {"Off Line", PowerSourceKind::offline},
}};

PowerSourceKind providingSource(const PowerSources& powerSources) {
    const auto type = powerSources.providingPowerSourceType();
    if (!type) {
        return PowerSourceKind::unknown;
    }
    const auto* const row = std::ranges::find(sourceNames, std::string_view(*type),
                                              &std::pair<std::string_view, PowerSourceKind>::first);
    return row == sourceNames.end() ? PowerSourceKind::unknown : row->second;
}

/// The first entry that says it is an installed battery; later entries are not asked.
std::unique_ptr<PowerSourceEntry> findBattery(const PowerSources& powerSources) {
    const auto entries = powerSources.matchingServices(powerSourceClass);
    if (!entries) {
        return nullptr;
    }
    while (auto entry = entries->next()) {
        if (booleanProperty(*entry, "BatteryInstalled").value_or(false)) {
            return entry;
        }
    }
    return nullptr;
}

std::optional<int> levelPercent(const PowerSourceEntry& battery) {
    const auto current = integerProperty(battery, "CurrentCapacity");
    const auto maximum = integerProperty(battery, "MaxCapacity");
    if (!current || !maximum || *maximum < 1) {
        return std::nullopt;
    }
    const auto percent = static_cast<double>(*current) / static_cast<double>(*maximum) * 100;
    return static_cast<int>(std::clamp(std::round(percent), 0.0, 100.0));
}

/// What the battery's plug says, where the system named no source.
PowerSourceKind sourceByPlug(std::optional<bool> isExternalConnected) {
    if (!isExternalConnected) {
        return PowerSourceKind::unknown;
    }
    return *isExternalConnected ? PowerSourceKind::acPower : PowerSourceKind::batteryPower;
}

constexpr double milliwattsOfWatt = 1000;

} // namespace

SystemPowerContextProvider::SystemPowerContextProvider(const PowerSources& powerSources,
                                                       const ProcessInformation& process)
    : powerSources_(powerSources), process_(process) {}

PowerContextSnapshot SystemPowerContextProvider::readPowerContext() const {
    const auto source = providingSource(powerSources_);
    const auto battery = findBattery(powerSources_);
    if (!battery) {
        return {false,        source,       std::nullopt,
                std::nullopt, std::nullopt, process_.isLowPowerModeEnabled(),
                std::nullopt, std::nullopt};
    }
    const auto temperature =
        integerProperty(*battery, "Temperature").and_then(BatteryTemperatureConverter::celsiusFromDeciKelvin);
    const auto percent = levelPercent(*battery);
    const auto isCharging = booleanProperty(*battery, "IsCharging");
    const auto isFullyCharged = booleanProperty(*battery, "FullyCharged");
    const auto isExternalConnected = booleanProperty(*battery, "ExternalConnected");
    const auto watts = integerProperty(*battery, batteryRateProperty).transform([](std::int64_t milliwatts) {
        return static_cast<double>(milliwatts) / milliwattsOfWatt;
    });
    return {true,           source == PowerSourceKind::unknown ? sourceByPlug(isExternalConnected) : source,
            percent,        isCharging,
            isFullyCharged, process_.isLowPowerModeEnabled(),
            temperature,    temperature.transform(batteryTemperatureLevelFor),
            watts};
}

} // namespace cindertop
