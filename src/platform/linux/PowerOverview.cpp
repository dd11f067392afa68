#include "platform/linux/PowerOverview.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using Batteries = std::vector<PowerSupply>;
using Kind = PowerSupply::Kind;
using Status = PowerSupply::Status;

struct Amount {
    std::int64_t now;
    std::int64_t full;
};

std::optional<Amount> amount(std::optional<std::int64_t> now, std::optional<std::int64_t> full) {
    if (!now || !full || *full <= 0) {
        return std::nullopt;
    }
    return Amount{.now = *now, .full = *full};
}

std::optional<Amount> chargeOf(const PowerSupply& battery) {
    return amount(battery.chargeNow, battery.chargeFull);
}

std::optional<Amount> energyOf(const PowerSupply& battery) {
    return amount(battery.energyNow, battery.energyFull);
}

std::optional<Amount> capacityOf(const PowerSupply& battery) {
    return amount(battery.capacity, 100);
}

/// Halves go up.
Amount asPercentage(const Amount& amount) {
    return {.now = (amount.now * 100 + amount.full / 2) / amount.full, .full = 100};
}

std::optional<Amount> percentageOf(const PowerSupply& battery) {
    return capacityOf(battery)
        .or_else([&] { return energyOf(battery).transform(asPercentage); })
        .or_else([&] { return chargeOf(battery).transform(asPercentage); });
}

template <typename Measure>
std::optional<Amount> sumOf(const Batteries& batteries, Measure measure) {
    Amount sum{.now = 0, .full = 0};
    for (const auto& battery : batteries) {
        const auto part = measure(battery);
        if (!part) {
            return std::nullopt;
        }
        sum.now += part->now;
        sum.full += part->full;
    }
    return sum;
}

std::optional<Amount> totalChargeOf(const Batteries& batteries) {
    if (batteries.size() == 1) {
        const auto& battery = batteries.front();
        return capacityOf(battery).or_else([&] { return chargeOf(battery); }).or_else([&] {
            return energyOf(battery);
        });
    }
    return sumOf(batteries, energyOf).or_else([&] { return sumOf(batteries, chargeOf); }).or_else([&] {
        return sumOf(batteries, percentageOf);
    });
}

bool hasNoStatus(const PowerSupply& supply) {
    return !supply.status;
}

std::optional<bool> isOneCharging(const Batteries& batteries) {
    if (std::ranges::find(batteries, Status::charging, &PowerSupply::status) != batteries.end()) {
        return true;
    }
    return std::ranges::any_of(batteries, hasNoStatus) ? std::nullopt : std::optional(false);
}

std::optional<bool> areAllFull(const Batteries& batteries) {
    const bool isOneNotFull = std::ranges::any_of(batteries, [](const PowerSupply& battery) {
        return battery.status && battery.status != Status::full;
    });
    if (isOneNotFull) {
        return false;
    }
    return std::ranges::any_of(batteries, hasNoStatus) ? std::nullopt : std::optional(true);
}

std::optional<std::int64_t> warmestDeciKelvin(const Batteries& batteries) {
    constexpr std::int64_t zeroCelsius = 2732;
    // An absent temperature compares below every other.
    return std::ranges::max(batteries, {}, &PowerSupply::temperature)
        .temperature.transform([](std::int64_t tenths) { return tenths + zeroCelsius; });
}

/// As the driver says it, whatever its sign means.
std::optional<std::int64_t> microwattsOf(const PowerSupply& battery) {
    constexpr std::int64_t microvoltsOfVolt = 1'000'000;
    constexpr std::int64_t most = 500'000'000;
    auto rate = battery.powerNow;
    if (!rate && battery.currentNow && battery.voltageNow) {
        rate = *battery.currentNow * *battery.voltageNow / microvoltsOfVolt;
    }
    return rate && std::abs(*rate) <= most ? rate : std::nullopt;
}

/// A battery at rest tells small currents that are its meter's drift; a larger one to it or from it is real,
/// as beside an adapter that is too weak.
std::int64_t restingFlow(std::int64_t rate) {
    constexpr std::int64_t drift = 500'000;
    return rate < -drift ? rate : 0;
}

std::optional<std::int64_t> flowWithoutStatus(std::int64_t rate, std::optional<bool> isExternallyPowered) {
    if (rate <= 0) {
        return rate;
    }
    return isExternallyPowered == false ? std::optional(-rate) : std::nullopt;
}

/// Microwatts into a battery; none where its direction or its rate is not known. One at rest needs no rate.
std::optional<std::int64_t> flowInto(const PowerSupply& battery, std::optional<bool> isExternallyPowered) {
    const auto rate = microwattsOf(battery);
    if (battery.status == Status::charging || battery.status == Status::discharging) {
        const bool isCharging = battery.status == Status::charging;
        return rate.transform(
            [&](std::int64_t known) { return isCharging ? std::abs(known) : -std::abs(known); });
    }
    if (battery.status) {
        return restingFlow(rate.value_or(0));
    }
    return rate.and_then([&](std::int64_t known) { return flowWithoutStatus(known, isExternallyPowered); });
}

std::optional<std::int64_t> totalMilliwatts(const Batteries& batteries,
                                            std::optional<bool> isExternallyPowered) {
    constexpr std::int64_t microwattsOfMilliwatt = 1000;
    std::int64_t sum = 0;
    for (const auto& battery : batteries) {
        const auto flow = flowInto(battery, isExternallyPowered);
        if (!flow) {
            return std::nullopt;
        }
        sum += *flow;
    }
    const auto milliwatts = sum / microwattsOfMilliwatt;
    return milliwatts != 0 ? std::optional(milliwatts) : std::nullopt;
}

Batteries batteriesOf(const std::vector<PowerSupply>& supplies) {
    Batteries batteries;
    std::ranges::copy_if(supplies, std::back_inserter(batteries), &PowerSupply::isSystemBattery);
    return batteries;
}

bool isDischargingUps(const PowerSupply& supply) {
    return supply.kind == Kind::ups && supply.status == Status::discharging;
}

bool hasNoKind(const PowerSupply& supply) {
    return !supply.kind;
}

bool isDischarging(const PowerSupply& battery) {
    return battery.status == Status::discharging;
}

/// An adapter that is on beside a battery that discharges is too weak. With one that is off or silent beside
/// it, it may be unplugged all the same.
bool areAllMainsOn(const std::vector<PowerSupply>& supplies) {
    bool isAnyListed = false;
    for (const auto& supply : supplies) {
        if (supply.kind != Kind::mains) {
            continue;
        }
        if (!supply.isOnline.value_or(false)) {
            return false;
        }
        isAnyListed = true;
    }
    return isAnyListed;
}

} // namespace

std::optional<BatteryPack> combineBatteries(const std::vector<PowerSupply>& supplies) {
    const auto batteries = batteriesOf(supplies);
    if (batteries.empty()) {
        return std::nullopt;
    }
    const auto charge = totalChargeOf(batteries);
    return BatteryPack{
        .currentCapacity = charge.transform([](const Amount& sum) { return sum.now; }),
        .maxCapacity = charge.transform([](const Amount& sum) { return sum.full; }),
        .isCharging = isOneCharging(batteries),
        .isFullyCharged = areAllFull(batteries),
        .deciKelvin = warmestDeciKelvin(batteries),
        .milliwatts = totalMilliwatts(batteries, isExternallyPowered(supplies)),
    };
}

std::optional<bool> isExternallyPowered(const std::vector<PowerSupply>& supplies) {
    bool isAnyListed = false;
    bool isAnySilent = false;
    for (const auto& supply : supplies) {
        if (!supply.isExternal()) {
            continue;
        }
        if (supply.isOnline.value_or(false)) {
            return true;
        }
        isAnyListed = true;
        isAnySilent = isAnySilent || !supply.isOnline;
    }
    return isAnyListed && !isAnySilent ? std::optional(false) : std::nullopt;
}

std::optional<std::string_view> providingSource(const std::vector<PowerSupply>& supplies) {
    using namespace std::string_view_literals;
    if (std::ranges::any_of(supplies, isDischargingUps)) {
        return "UPS Power"sv;
    }
    const auto batteries = batteriesOf(supplies);
    if (batteries.empty()) {
        // One that does not say what it is may be a battery.
        return std::ranges::any_of(supplies, hasNoKind) ? std::nullopt : std::optional("AC Power"sv);
    }
    if (std::ranges::any_of(batteries, isDischarging)) {
        return areAllMainsOn(supplies) ? "AC Power"sv : "Battery Power"sv;
    }
    const bool doesAnySayMore = !std::ranges::all_of(batteries, hasNoStatus);
    return doesAnySayMore || isExternallyPowered(supplies).value_or(false) ? std::optional("AC Power"sv)
                                                                           : std::nullopt;
}

} // namespace cindertop::linux_platform
