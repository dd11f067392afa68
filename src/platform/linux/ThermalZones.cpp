#include "platform/linux/ThermalZones.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr int mostTrips = 64; // the kernel allowed 12 for years and has no bound today

std::optional<Trip> readTrip(const std::filesystem::path& zone, const std::string& stem,
                             std::string_view kindText) {
    const auto kind = parseTripKind(kindText);
    const auto temperature = kind ? readInteger(zone / (stem + "_temp")) : std::nullopt;
    return temperature ? std::optional(Trip{.kind = *kind, .temperature = *temperature}) : std::nullopt;
}

/// Trips are numbered without a gap. One that cannot be read is left out.
TripPoints readTripPoints(const std::filesystem::path& zone) {
    std::vector<Trip> trips;
    for (int number = 0; number < mostTrips; ++number) {
        const auto stem = "trip_point_" + std::to_string(number);
        const auto kindText = readTextFile(zone / (stem + "_type"));
        if (!kindText && kindText.error() == FileError::missing) {
            break;
        }
        if (const auto trip = readTrip(zone, stem, kindText.value_or(""))) {
            trips.push_back(*trip);
        }
    }
    return TripPoints::of(trips);
}

std::string countedZones(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " zone" : " zones");
}

} // namespace

ThermalZones::ThermalZones(const Roots& roots, MonotonicClock clock)
    : clock_(std::move(clock)),
      supplies_(roots.sys / "class/power_supply"),
      folder_(roots, "class/thermal", clock_) {}

ThermalZoneReading ThermalZones::read() {
    const std::scoped_lock lock(mutex_);
    if (!readAt_ || !isRecent(*readAt_)) {
        learnIfOutdated();
        readAt_ = clock_();
        reading_ = readAll();
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

SourceStatus ThermalZones::status() const {
    const std::scoped_lock lock(mutex_);
    const auto status = [](bool isAvailable, std::string reason) {
        return SourceStatus{.name = "thermal zones", .isAvailable = isAvailable, .reason = std::move(reason)};
    };
    if (!readAt_) {
        return status(false, "not read yet");
    }
    if (answering_ > 0) {
        return status(true, countedZones(answering_));
    }
    if (zones_.empty()) {
        return status(false, "no thermal zones");
    }
    return std::ranges::any_of(zones_, &Zone::isMachines)
               ? status(false, "no thermal zone has an answer now")
               : status(false, "no thermal zone with a usable trip point");
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
    // A power supply with a temperature makes a zone of its own name.
    std::error_code ignored;
    const bool isCandidate = hasMachineTrips(*type) && !std::filesystem::exists(supplies_ / *type, ignored);
    const auto points = isCandidate ? readTripPoints(folder) : TripPoints{};
    return Zone{.identity = {.name = name, .type = *type},
                .isMachines = !points.areEmpty(),
                .points = points,
                .mode = AttributeFile(folder / "mode"),
                .temperature = AttributeFile(folder / "temp"),
                .latest = std::nullopt};
}

bool ThermalZones::isRecent(std::chrono::nanoseconds at) const {
    return clock_() - at < sameReadingWindow;
}

std::optional<MilliCelsius> ThermalZones::temperatureOf(Zone& zone) const {
    if (!zone.latest || !isRecent(zone.latest->at)) {
        const auto temperature = zone.temperature.integer();
        const bool isUsable = temperature && isPlausible(*temperature);
        zone.latest = {.at = clock_(), .temperature = isUsable ? temperature : std::nullopt};
    }
    return zone.latest->temperature;
}

ThermalZoneReading ThermalZones::readAll() {
    ThermalZoneReading reading;
    answering_ = 0;
    for (auto& zone : zones_) {
        if (!zone.isMachines || zone.mode.word() == "disabled") {
            continue; // the driver of a disabled zone is not asked
        }
        if (const auto temperature = temperatureOf(zone)) {
            ++answering_;
            reading.state = std::max(reading.state, thermalStateOf(zone.points, *temperature));
            reading.isAtLimit = reading.isAtLimit || isAtLimit(zone.points, *temperature);
        }
    }
    return reading;
}

} // namespace cindertop::linux_platform
