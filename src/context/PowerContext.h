#pragma once

#include "platform/PowerSources.h"
#include "platform/ProcessInformation.h"
#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace cindertop {

/// What the machine runs on.
enum class PowerSourceKind { acPower, batteryPower, upsPower, offline, unknown };

template <>
struct EnumerationTable<PowerSourceKind> {
    static constexpr std::array cases{
        EnumerationCase{PowerSourceKind::acPower, "acPower"},
        EnumerationCase{PowerSourceKind::batteryPower, "batteryPower"},
        EnumerationCase{PowerSourceKind::upsPower, "upsPower"},
        EnumerationCase{PowerSourceKind::offline, "offline"},
        EnumerationCase{PowerSourceKind::unknown, "unknown"},
    };
};

/// How warm the battery is. Ordered: `normal` is the least.
enum class BatteryTemperatureLevel : int { normal, warm, high };

template <>
struct EnumerationTable<BatteryTemperatureLevel> {
    static constexpr std::array cases{
        EnumerationCase{BatteryTemperatureLevel::normal, "normal", 0},
        EnumerationCase{BatteryTemperatureLevel::warm, "warm", 1},
        EnumerationCase{BatteryTemperatureLevel::high, "high", 2},
    };
};

/// `warm` from 35 degrees, `high` from 40.
constexpr BatteryTemperatureLevel batteryTemperatureLevelFor(double celsius) {
    if (celsius >= 40) {
        return BatteryTemperatureLevel::high;
    }
    return celsius >= 35 ? BatteryTemperatureLevel::warm : BatteryTemperatureLevel::normal;
}

/// Turns what a battery reports into degrees.
class BatteryTemperatureConverter {
public:
    BatteryTemperatureConverter() = delete;

    /// From tenths of a kelvin: 3031 is 29.95. None outside -20 to 80 degrees, which no working battery has.
    static constexpr std::optional<double> celsiusFromDeciKelvin(std::int64_t raw) {
        const auto celsius = static_cast<double>(raw) / 10 - 273.15;
        if (celsius < -20 || celsius > 80) {
            return std::nullopt;
        }
        return celsius;
    }
};

/// What powers the machine, and the state of its battery.
struct PowerContextSnapshot {
    bool isAvailable; ///< a battery was found
    PowerSourceKind source;
    std::optional<int> batteryLevelPercent; ///< 0 to 100
    std::optional<bool> isCharging;
    std::optional<bool> isFullyCharged;
    bool isLowPowerModeEnabled;
    std::optional<double> batteryTemperatureCelsius;
    std::optional<BatteryTemperatureLevel> batteryTemperatureLevel;
    std::optional<double> batteryWatts; ///< into the battery; negative: drawn from it; never 0

    /// A percentage outside 0 to 100 becomes the nearer bound. A battery that gives and takes nothing, and a
    /// rate that is no number, are absent watts.
    PowerContextSnapshot(bool isAvailable, PowerSourceKind source, std::optional<int> batteryLevelPercent,
                         std::optional<bool> isCharging, std::optional<bool> isFullyCharged,
                         bool isLowPowerModeEnabled, std::optional<double> batteryTemperatureCelsius,
                         std::optional<BatteryTemperatureLevel> batteryTemperatureLevel,
                         std::optional<double> batteryWatts = std::nullopt);

    /// Nothing is known: no battery, source `unknown`, Low Power Mode off.
    static const PowerContextSnapshot& unavailable();

    bool isExternalPowerConnected() const;

    bool operator==(const PowerContextSnapshot&) const = default;
};

/// A number's integer, its fraction cut off; none for what is no number or more than 64 bits hold.
std::optional<std::int64_t> integerProperty(const PowerSourceEntry& entry, std::string_view key);

/// A boolean, or whether a number is not zero.
std::optional<bool> booleanProperty(const PowerSourceEntry& entry, std::string_view key);

/// Answers what powers the machine. Called from the engine thread.
class PowerContextProviding {
public:
    virtual ~PowerContextProviding() = default;
    /// Never fails: what cannot be read is absent or `unknown`.
    virtual PowerContextSnapshot readPowerContext() const = 0;
};

/// Reads the power source, the battery and Low Power Mode from the system.
class SystemPowerContextProvider final : public PowerContextProviding {
public:
    /// Both services must outlive the provider.
    SystemPowerContextProvider(const PowerSources& powerSources, const ProcessInformation& process);

    PowerContextSnapshot readPowerContext() const override;

private:
    const PowerSources& powerSources_;
    const ProcessInformation& process_;
};

} // namespace cindertop
