#include "platform/linux/ThermalTrips.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

namespace {

constexpr MilliCelsius placeholderFrom = milliCelsius(150);
constexpr MilliCelsius lowestPassive = milliCelsius(30);
constexpr MilliCelsius lowestHotOrCritical = milliCelsius(50);
constexpr MilliCelsius coldest = milliCelsius(-40);
constexpr MilliCelsius hottest = milliCelsius(150);

constexpr MilliCelsius criticalMargin = milliCelsius(5);
constexpr MilliCelsius limitMargin = milliCelsius(3);
constexpr MilliCelsius fairMarginBelowPassive = milliCelsius(10);
constexpr MilliCelsius fairMarginBelowCritical = milliCelsius(20);

/// How the types of zones begin that do not speak for the machine, in lower case.
constexpr std::array foreignZones{
    // thresholds that programs set
    std::string_view("x86_pkg_temp"),
    std::string_view("tcpu_pci"),
    // batteries
    std::string_view("bat"),
    // Wi-Fi
    std::string_view("ath"),
    std::string_view("mt76"),
    std::string_view("mt79"),
    std::string_view("rtw"),
    std::string_view("brcmf"),
    std::string_view("mwifiex"),
    std::string_view("wcn"),
    std::string_view("wcss"),
    // network: adapters, switches, optical modules, modems
    std::string_view("mlx"),
    std::string_view("bnxt"),
    std::string_view("cxgb"),
    std::string_view("r8169"),
    std::string_view("eth"),
    std::string_view("sfp"),
    std::string_view("mdm"),
    std::string_view("wwan"),
};

/// What the types of such zones can contain anywhere.
constexpr std::array foreignWords{
    std::string_view("battery"), std::string_view("wifi"), std::string_view("wlan"),
    std::string_view("modem"),   std::string_view("nvme"),
};

bool isUsable(const Trip& trip) {
    const auto lowest = trip.kind == TripKind::passive ? lowestPassive : lowestHotOrCritical;
    return trip.temperature >= lowest && trip.temperature < placeholderFrom;
}

/// The governor of `power_allocator` holds its last passive trip; the first only wakes it. The governor of
/// `user_space` leaves cooling to a program, whatever is bound.
std::vector<bool> whichAct(const ZoneTrips& zone, std::span<const Trip> trips) {
    std::vector<bool> act(trips.size(), false);
    std::optional<std::size_t> lastPassive;
    for (std::size_t index = 0; index < trips.size(); ++index) {
        const bool isPassive = trips[index].kind == TripKind::passive;
        if (isPassive && trips[index].isBound) {
            act[index] = zone.policy != "power_allocator";
            lastPassive = index;
        }
        // The kernel only announces a hot trip. ACPI gives it a meaning: the machine has to hibernate.
        act[index] = act[index] || (trips[index].kind == TripKind::hot && zone.type == "acpitz");
    }
    if (lastPassive) {
        act[*lastPassive] = true;
    }
    return act;
}

void lower(std::optional<MilliCelsius>& threshold, MilliCelsius candidate) {
    threshold = std::min(threshold.value_or(candidate), candidate);
}

void addThrottling(HeatThresholds& thresholds, MilliCelsius temperature) {
    lower(thresholds.serious, temperature);
    lower(thresholds.fair, temperature - fairMarginBelowPassive);
}

void add(HeatThresholds& thresholds, const Trip& trip, bool acts) {
    if (trip.kind == TripKind::critical) {
        lower(thresholds.critical, trip.temperature - criticalMargin);
        lower(thresholds.limit, trip.temperature - limitMargin);
    } else if (!acts) {
        lower(thresholds.fair, trip.temperature);
    } else if (trip.kind == TripKind::hot) {
        lower(thresholds.critical, trip.temperature);
        lower(thresholds.limit, trip.temperature);
    } else {
        addThrottling(thresholds, trip.temperature);
    }
}

constexpr double inDegrees(MilliCelsius temperature) {
    return static_cast<double>(temperature) / 1000;
}

/// A zone that a program looks after gives "fair" at most.
HeatThresholds advisory(const HeatThresholds& thresholds) {
    HeatThresholds fairOnly{.fair = thresholds.fair, .serious = {}, .critical = {}, .limit = {}};
    if (thresholds.critical) {
        lower(fairOnly.fair, *thresholds.critical);
    }
    return fairOnly;
}

bool isReached(const std::optional<MilliCelsius>& threshold, MilliCelsius temperature) {
    return threshold && temperature >= *threshold;
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
    return word == "critical" ? std::optional(TripKind::critical) : std::nullopt;
}

TemperatureLimits limitsOf(const ZoneTrips& zone) {
    std::vector<Trip> trips;
    std::ranges::copy_if(zone.trips, std::back_inserter(trips), isUsable);
    const auto act =
        zone.policy == "user_space" ? std::vector<bool>(trips.size(), false) : whichAct(zone, trips);
    auto slowsFrom = zone.firmwareLimit;
    std::optional<MilliCelsius> switchesOffAt;
    for (std::size_t index = 0; index < trips.size(); ++index) {
        if (trips[index].kind == TripKind::critical) {
            lower(switchesOffAt, trips[index].temperature);
        } else if (trips[index].kind == TripKind::passive && act[index]) {
            lower(slowsFrom, trips[index].temperature);
        }
    }
    return {.slowsFrom = slowsFrom.transform(inDegrees), .switchesOffAt = switchesOffAt.transform(inDegrees)};
}

std::optional<double> usableLimit(MilliCelsius limit) {
    return limit >= lowestHotOrCritical && limit < placeholderFrom ? std::optional(inDegrees(limit))
                                                                   : std::nullopt;
}

HeatThresholds HeatThresholds::of(const ZoneTrips& zone) {
    std::vector<Trip> trips;
    std::ranges::copy_if(zone.trips, std::back_inserter(trips), isUsable);
    const bool isAdvisory = zone.policy == "user_space";
    const auto act = isAdvisory ? std::vector<bool>(trips.size(), false) : whichAct(zone, trips);

    HeatThresholds thresholds;
    bool hasPassive = zone.firmwareLimit.has_value();
    for (std::size_t index = 0; index < trips.size(); ++index) {
        add(thresholds, trips[index], act[index]);
        hasPassive = hasPassive || trips[index].kind == TripKind::passive;
    }
    for (const auto& trip : trips) {
        if (trip.kind == TripKind::critical && !hasPassive) {
            lower(thresholds.fair, trip.temperature - fairMarginBelowCritical);
        }
    }
    if (isAdvisory) {
        thresholds = advisory(thresholds);
    }
    if (zone.firmwareLimit) {
        addThrottling(thresholds, *zone.firmwareLimit);
    }
    return thresholds;
}

int thermalStateOf(const HeatThresholds& thresholds, MilliCelsius temperature) {
    if (isReached(thresholds.critical, temperature)) {
        return 3;
    }
    if (isReached(thresholds.serious, temperature)) {
        return 2;
    }
    return isReached(thresholds.fair, temperature) ? 1 : 0;
}

bool isAtLimit(const HeatThresholds& thresholds, MilliCelsius temperature) {
    return isReached(thresholds.limit, temperature);
}

bool isPlausible(MilliCelsius temperature) {
    return temperature >= coldest && temperature <= hottest;
}

bool hasMachineTrips(std::string_view zoneType) {
    const auto type = lowerCased(zoneType);
    return std::ranges::none_of(foreignZones,
                                [&](std::string_view start) { return type.starts_with(start); }) &&
           std::ranges::none_of(foreignWords, [&](std::string_view word) { return type.contains(word); });
}

namespace {

struct FirmwareRow {
    std::string_view compatible;
    MilliCelsius limit;
};

constexpr std::array firmwareRows{
    FirmwareRow{"brcm,bcm2711", milliCelsius(80)},
    FirmwareRow{"brcm,bcm2712", milliCelsius(80)},
};

} // namespace

std::optional<MilliCelsius> firmwareLimit(const std::vector<std::string>& compatible) {
    for (const auto& row : firmwareRows) {
        if (std::ranges::find(compatible, row.compatible) != compatible.end()) {
            return row.limit;
        }
    }
    return std::nullopt;
}

} // namespace cindertop::linux_platform
