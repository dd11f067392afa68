#include "platform/linux/ThermalZones.h"

#include "platform/linux/CpuCoolers.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LinuxSystemValues.h"
#include "platform/linux/ThermalTrips.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <span>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr int mostTrips = 9999; ///< and bindings; larger numbers are none

/// The M of "trip_point_M_type" or of another name between these words.
std::optional<int> numberBetween(std::string_view prefix, std::string_view suffix, std::string_view name) {
    if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
        !name.ends_with(suffix)) {
        return std::nullopt;
    }
    const auto number = parseInteger(name.substr(prefix.size(), name.size() - prefix.size() - suffix.size()));
    return number && *number >= 0 && *number <= mostTrips ? std::optional(static_cast<int>(*number))
                                                          : std::nullopt;
}

/// Whether a cooling device does so. Without a state above 0 it slows nothing down.
bool slowsProcessors(const std::filesystem::path& cooler) {
    return isCpuCooler(readAttribute(cooler / "type").value_or("")) &&
           readInteger(cooler / "max_state").value_or(1) > 0;
}

/// The trips at which a cooling device slows processors down. A cooling device that is bound to several trips
/// shows as several; one that is bound to none says -1, which is no trip's number.
std::set<std::int64_t> boundTrips(const std::filesystem::path& zone, std::span<const std::string> files) {
    std::set<std::int64_t> bound;
    for (const auto& file : files) {
        const auto cooler = numberBetween("cdev", "_trip_point", file);
        const auto trip = cooler ? readInteger(zone / file) : std::nullopt;
        if (trip && !bound.contains(*trip) &&
            slowsProcessors(linkedFolder(zone / ("cdev" + std::to_string(*cooler))))) {
            bound.insert(*trip);
        }
    }
    return bound;
}

/// A trip that cannot be read is left out.
std::vector<Trip> readTrips(const std::filesystem::path& zone) {
    const auto files = listFolder(zone).value_or(std::vector<std::string>{});
    const auto bound = boundTrips(zone, files);
    std::vector<Trip> trips;
    for (const auto& file : files) {
        const auto number = numberBetween("trip_point_", "_type", file);
        const auto kind = number ? parseTripKind(readAttribute(zone / file).value_or("")) : std::nullopt;
        const auto temperature =
            kind ? readInteger(zone / ("trip_point_" + std::to_string(*number) + "_temp")) : std::nullopt;
        if (temperature) {
            trips.push_back({.kind = *kind, .temperature = *temperature, .isBound = bound.contains(*number)});
        }
    }
    return trips;
}

std::string countedZones(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " zone" : " zones");
}

} // namespace

ThermalZones::ThermalZones(const Roots& roots, MonotonicClock clock)
    : clock_(std::move(clock)),
      supplies_(roots.sys / "class/power_supply"),
      firmwareLimit_(
          firmwareLimit(parseCompatible(readTextFile(roots.proc / "device-tree/compatible").value_or("")))),
      folder_(roots, "class/thermal", clock_) {}

ThermalZoneReading ThermalZones::read() {
    const std::scoped_lock lock(mutex_);
    if (!readAt_.isRecent(clock_())) {
        learnIfOutdated();
        const auto begun = clock_();
        reading_ = readAt_.around(clock_, [this] { return readAll(); });
        for (auto& zone : zones_) {
            if (zone.readAt.isSince(begun)) { // the next question about one of them uses this reading
                zone.readAt = readAt_;
            }
        }
    }
    return reading_;
}

std::vector<ThermalZoneIdentity> ThermalZones::zones() {
    const std::scoped_lock lock(mutex_);
    learnIfOutdated();
    std::vector<ThermalZoneIdentity> identities;
    std::ranges::transform(zones_, std::back_inserter(identities), &Zone::identity);
    return identities;
}

std::optional<MilliCelsius> ThermalZones::temperature(std::string_view zoneName) {
    const std::scoped_lock lock(mutex_);
    const auto zone =
        std::ranges::find(zones_, zoneName, [](const Zone& each) { return each.identity.name; });
    return zone != zones_.end() ? temperatureOf(*zone) : std::nullopt;
}

TemperatureLimits ThermalZones::limits(std::string_view zoneName) {
    const std::scoped_lock lock(mutex_);
    learnIfOutdated();
    const auto zone =
        std::ranges::find_if(zones_, [zoneName](const Zone& each) { return each.identity.name == zoneName; });
    return zone == zones_.end() ? TemperatureLimits{} : zone->limits;
}

SourceStatus ThermalZones::status() const {
    const std::scoped_lock lock(mutex_);
    const auto status = [](bool isAvailable, std::string reason) {
        return SourceStatus{.name = "thermal zones", .isAvailable = isAvailable, .reason = std::move(reason)};
    };
    if (!readAt_.isSet()) {
        return status(false, "not read yet");
    }
    if (answering_ > 0) {
        return status(true, countedZones(answering_));
    }
    if (zones_.empty()) {
        return status(false, "no thermal zones");
    }
    const bool areSilent =
        std::ranges::all_of(zones_, [](const Zone& zone) { return zone.thresholds.areEmpty(); });
    return status(false, areSilent ? "no thermal zone with a usable trip point"
                                   : "no thermal zone has an answer now");
}

void ThermalZones::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    zones_.clear();
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        if (!name.starts_with("thermal_zone")) {
            continue;
        }
        if (auto zone = learn(name)) {
            zones_.push_back(std::move(*zone));
        }
    }
}

std::optional<ThermalZones::Zone> ThermalZones::learn(const std::string& name) const {
    const auto folder = folder_.path() / name;
    const auto type = readAttribute(folder / "type");
    if (!type) {
        return std::nullopt;
    }
    Zone zone{.identity = {.name = name, .type = *type},
              .thresholds = {},
              .limits = {},
              .mode = AttributeFile(folder / "mode"),
              .file = AttributeFile(folder / "temp"),
              .readAt = {},
              .temperature = std::nullopt};
    learnTrips(zone);
    return zone;
}

void ThermalZones::learnTrips(Zone& zone) const {
    // A power supply with a temperature makes a zone of its own name.
    const auto& type = zone.identity.type;
    std::error_code ignored;
    if (!hasMachineTrips(type) || std::filesystem::exists(supplies_ / type, ignored)) {
        return;
    }
    const auto folder = folder_.path() / zone.identity.name;
    const auto policy = readAttribute(folder / "policy").value_or("");
    const auto trips = readTrips(folder);
    const ZoneTrips known{.type = type,
                          .policy = policy,
                          .trips = trips,
                          .firmwareLimit = type.starts_with("cpu") ? firmwareLimit_ : std::nullopt};
    zone.thresholds = HeatThresholds::of(known);
    zone.limits = limitsOf(known);
}

std::optional<MilliCelsius> ThermalZones::temperatureOf(Zone& zone) const {
    if (!zone.readAt.isRecent(clock_())) {
        readTemperature(zone);
    }
    return zone.temperature;
}

void ThermalZones::readTemperature(Zone& zone) const {
    const auto temperature = zone.readAt.around(clock_, [&] { return zone.file.integer(); });
    zone.temperature = temperature && isPlausible(*temperature) ? temperature : std::nullopt;
}

ThermalZoneReading ThermalZones::readAll() {
    ThermalZoneReading reading;
    answering_ = 0;
    for (auto& zone : zones_) {
        if (zone.thresholds.areEmpty() || zone.mode.word() == "disabled") {
            continue; // the driver of a disabled zone is not asked
        }
        if (const auto temperature = temperatureOf(zone)) {
            ++answering_;
            reading.state = std::max(reading.state, thermalStateOf(zone.thresholds, *temperature));
            reading.isAtLimit = reading.isAtLimit || isAtLimit(zone.thresholds, *temperature);
        }
    }
    return reading;
}

} // namespace cindertop::linux_platform
