#include "platform/linux/ThermalTrips.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace cindertop::linux_platform {

namespace {

constexpr MilliCelsius degrees(int celsius) {
    return 1000 * static_cast<MilliCelsius>(celsius);
}

constexpr MilliCelsius placeholderUpTo = degrees(0);
constexpr MilliCelsius placeholderFrom = degrees(150);
constexpr MilliCelsius coldest = degrees(-40);
constexpr MilliCelsius hottest = degrees(150);

constexpr MilliCelsius criticalMargin = degrees(5);
constexpr MilliCelsius limitMargin = degrees(3);
constexpr MilliCelsius fairMarginBelowPassive = degrees(10);
constexpr MilliCelsius fairMarginBelowCritical = degrees(20);

/// How the types of zones begin that do not speak for the machine, in lower case.
constexpr std::array foreignZones{
    std::string_view("x86_pkg_temp"),
    // batteries
    std::string_view("bat"),
    std::string_view("macsmc-battery"),
    std::string_view("macsmc_battery"),
    // Wi-Fi
    std::string_view("iwlwifi"),
    std::string_view("ath"),
    std::string_view("mt79"),
    std::string_view("rtw"),
    std::string_view("brcmf"),
    std::string_view("wifi"),
    std::string_view("wlan"),
    std::string_view("wcn"),
    // drives
    std::string_view("nvme"),
    // network: adapters, switches, optical modules, modems
    std::string_view("mlx"),
    std::string_view("bnxt"),
    std::string_view("cxgb"),
    std::string_view("r8169"),
    std::string_view("eth"),
    std::string_view("sfp"),
    std::string_view("modem"),
    std::string_view("mdm"),
    std::string_view("wwan"),
};

bool isPlaceholder(MilliCelsius trip) {
    return trip <= placeholderUpTo || trip >= placeholderFrom;
}

std::optional<MilliCelsius> lowestOf(std::span<const Trip> trips, TripKind kind) {
    std::optional<MilliCelsius> lowest;
    for (const auto& trip : trips) {
        if (trip.kind == kind && !isPlaceholder(trip.temperature) &&
            (!lowest || trip.temperature < *lowest)) {
            lowest = trip.temperature;
        }
    }
    return lowest;
}

bool isReached(const std::optional<MilliCelsius>& trip, MilliCelsius temperature, MilliCelsius margin = 0) {
    return trip && temperature >= *trip - margin;
}

} // namespace

std::optional<TripKind> parseTripKind(std::string_view text) {
    const auto word = trimmingWhitespace(text);
    if (word == "passive") {
        return TripKind::passive;
    }
    if (word == "hot") {
        return TripKind::hot;
    }
    if (word == "critical") {
        return TripKind::critical;
    }
    return word.starts_with("active") ? std::optional(TripKind::active) : std::nullopt;
}

TripPoints TripPoints::of(std::span<const Trip> trips) {
    return {
        .passive = lowestOf(trips, TripKind::passive),
        .active = lowestOf(trips, TripKind::active),
        .hot = lowestOf(trips, TripKind::hot),
        .critical = lowestOf(trips, TripKind::critical),
    };
}

int thermalStateOf(const TripPoints& points, MilliCelsius temperature) {
    if (isReached(points.hot, temperature) || isReached(points.critical, temperature, criticalMargin)) {
        return 3;
    }
    if (isReached(points.passive, temperature)) {
        return 2;
    }
    const bool isNearThrottling = points.passive
                                      ? isReached(points.passive, temperature, fairMarginBelowPassive)
                                      : isReached(points.critical, temperature, fairMarginBelowCritical);
    return isNearThrottling || isReached(points.active, temperature) ? 1 : 0;
}

bool isAtLimit(const TripPoints& points, MilliCelsius temperature) {
    return isReached(points.hot, temperature) || isReached(points.critical, temperature, limitMargin);
}

bool isPlausible(MilliCelsius temperature) {
    return temperature >= coldest && temperature <= hottest;
}

bool hasMachineTrips(std::string_view zoneType) {
    const auto type = lowerCased(zoneType);
    return std::ranges::none_of(foreignZones,
                                [&](std::string_view start) { return type.starts_with(start); }) &&
           !type.contains("battery");
}

} // namespace cindertop::linux_platform
