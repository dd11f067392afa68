#include "platform/linux/HwmonSensors.h"

#include "platform/linux/ReadingStamp.h"
#include "platform/linux/SensorLimits.h"
#include "platform/linux/SensorSearch.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace cindertop::linux_platform {

namespace {

/// The kernel's timer may come late, and falling asleep takes a while.
constexpr std::chrono::seconds sleepMargin{1};

constexpr std::int64_t longestDelay = 3'600'000; ///< milliseconds; nobody waits longer for a sleep

} // namespace

SensorDevice::SensorDevice(const std::filesystem::path& power)
    : power_(power),
      status_(power / "runtime_status"),
      control_(power / "control"),
      delay_(power / "autosuspend_delay_ms") {}

bool SensorDevice::isAwake(std::chrono::nanoseconds now) {
    ask(now);
    return isAwake_;
}

bool SensorDevice::isDue(std::chrono::nanoseconds now) {
    ask(now);
    const auto since = readAt_ ? now - *readAt_ : std::chrono::nanoseconds::max();
    return since >= rest_ || since < sameReadingWindow; // the window: its other sensors, in the same tick
}

/// "unsupported" is a device without power management at run time, as most processor chips are.
void SensorDevice::ask(std::chrono::nanoseconds now) {
    if (askedAt_ && now - *askedAt_ < sameReadingWindow) {
        return;
    }
    askedAt_ = now;
    const auto status = status_.word();
    const bool isActive = status && *status == "active";
    isAwake_ = isActive || (status ? *status == "unsupported" : status.error() == FileError::missing);
    rest_ = isActive ? timeToFallAsleep() : std::chrono::nanoseconds(0);
}

/// A negative delay keeps the device awake. One without a delay sleeps whenever it is unused: if it is awake,
/// another user keeps it so.
std::chrono::nanoseconds SensorDevice::timeToFallAsleep() {
    const auto delay = control_.word() == "auto" ? delay_.integer() : std::nullopt;
    return delay && *delay > 0 ? std::chrono::milliseconds(std::min(*delay, longestDelay)) + sleepMargin
                               : std::chrono::nanoseconds(0);
}

/// One that somebody still reads survives a new scan: it knows when it was read.
std::shared_ptr<SensorDevice> SensorDevices::at(const std::filesystem::path& power) {
    std::erase_if(known_, [](const auto& each) { return each.second.expired(); });
    auto& known = known_[power];
    auto device = known.lock();
    if (!device) {
        device = std::make_shared<SensorDevice>(power);
        known = device;
    }
    return device;
}

namespace {

constexpr std::chrono::seconds storagePeriod{30};

/// An older answer says nothing about the present.
constexpr std::chrono::seconds longestHold{60};

} // namespace

struct HwmonSensors::Sensor {
    std::string product;
    bool isStorage;
    std::shared_ptr<SensorDevice> device; ///< none: it never sleeps
    std::string zone;                     ///< read through the thermal zones; empty: read from the file
    AttributeFile file;
    double unitsADegree;
    TemperatureLimits limits;
    std::optional<std::chrono::nanoseconds> readAt; ///< the end of the latest read
    std::optional<double> celsius;                  ///< what it answered
};

HwmonSensors::HwmonSensors(const Roots& roots, MonotonicClock clock, ThermalZones& zones,
                           std::shared_ptr<SensorDevices> devices)
    : roots_(roots),
      clock_(std::move(clock)),
      zones_(zones),
      devices_(std::move(devices)),
      chipFolder_(roots, "class/hwmon", clock_),
      zoneFolder_(roots, "class/thermal", clock_),
      supplyFolder_(roots, "class/power_supply", clock_) {}

HwmonSensors::~HwmonSensors() = default;

void HwmonSensors::setObserved(bool isObserved) {
    const std::scoped_lock lock(mutex_);
    isObserved_ = isObserved;
}

HwmonSensors::SensorList HwmonSensors::list() {
    const std::scoped_lock lock(mutex_);
    learnIfOutdated();
    SensorList readable;
    readable.reserve(sensors_.size());
    std::ranges::copy_if(sensors_, std::back_inserter(readable),
                         [&](const auto& sensor) { return canBeAsked(*sensor); });
    return readable;
}

const std::string& HwmonSensors::product(const Sensor& sensor) {
    return sensor.product;
}

std::optional<HwmonSensors::Temperature> HwmonSensors::temperature(Sensor& sensor) {
    const std::scoped_lock lock(mutex_);
    if (!canBeAsked(sensor)) {
        return std::nullopt;
    }
    if (isDue(sensor)) {
        read(sensor);
        return sensor.celsius.transform([&sensor](double celsius) {
            return Temperature{.celsius = celsius, .age = {}, .limits = sensor.limits};
        });
    }
    const auto age = clock_() - *sensor.readAt;
    return sensor.celsius && age < longestHold
               ? std::optional(Temperature{.celsius = *sensor.celsius, .age = age, .limits = sensor.limits})
               : std::nullopt;
}

SourceStatus HwmonSensors::status() const {
    const std::scoped_lock lock(mutex_);
    const auto status = [](bool isAvailable, std::string reason) {
        return SourceStatus{.name = std::string(temperatureSensorsSource),
                            .isAvailable = isAvailable,
                            .reason = std::move(reason)};
    };
    if (!isLearnt_) {
        return status(false, "not read yet");
    }
    if (sensors_.empty()) {
        return status(false, "no known temperature sensor");
    }
    const auto asked =
        std::ranges::count_if(sensors_, [](const auto& one) { return !one->isStorage || one->readAt; });
    const auto answering = std::ranges::count_if(sensors_, [](const auto& one) { return !!one->celsius; });
    const auto known = std::to_string(asked) + (asked == 1 ? " sensor" : " sensors");
    if (answering == 0) {
        return status(false, known + ", none answers");
    }
    return status(true, answering == asked ? known : std::to_string(answering) + " of " + known);
}

void HwmonSensors::learnIfOutdated() {
    const bool areChipsOutdated = chipFolder_.isOutdated();
    const bool areZonesOutdated = zoneFolder_.isOutdated();
    const bool areSuppliesOutdated = supplyFolder_.isOutdated();
    if (areChipsOutdated || areZonesOutdated || areSuppliesOutdated) {
        learn();
        isLearnt_ = true;
    }
}

void HwmonSensors::learn() {
    const auto found = findSensors(roots_, zones_.zones());
    std::vector<SensorSource> sources;
    std::ranges::transform(found, std::back_inserter(sources), &FoundSensor::source);

    SensorList sensors;
    for (const auto& [source, name, role] : namedSensors(sources)) {
        const auto& sensor = found[source];
        sensors.push_back(std::make_shared<Sensor>(
            Sensor{.product = name,
                   .isStorage = role == SensorRole::storage,
                   .device = sensor.power.empty() ? nullptr : devices_->at(sensor.power),
                   .zone = sensor.zone,
                   .file = AttributeFile(sensor.file),
                   .unitsADegree = sensor.unitsADegree,
                   .limits = limitsOf(sensor),
                   .readAt = {},
                   .celsius = {}}));
        keepFormerRead(*sensors.back());
    }
    sensors_ = std::move(sensors);
}

TemperatureLimits HwmonSensors::limitsOf(const FoundSensor& sensor) {
    if (!sensor.zone.empty()) {
        return zones_.limits(sensor.zone);
    }
    const auto known =
        std::ranges::find_if(sensors_, [&](const auto& each) { return each->file.path() == sensor.file; });
    return known == sensors_.end() ? chipLimits(sensor.source.chip, sensor.file) : (*known)->limits;
}

bool HwmonSensors::canBeAsked(const Sensor& sensor) const {
    return (!sensor.isStorage || isObserved_) && (!sensor.device || sensor.device->isAwake(clock_()));
}

bool HwmonSensors::isDue(const Sensor& sensor) const {
    const auto now = clock_();
    if (sensor.isStorage && sensor.readAt && now - *sensor.readAt < storagePeriod) {
        return false;
    }
    return !sensor.device || !sensor.readAt || sensor.device->isDue(now);
}

void HwmonSensors::read(Sensor& sensor) const {
    const auto units = sensor.zone.empty() ? sensor.file.integer() : zones_.temperature(sensor.zone);
    sensor.celsius =
        units.transform([&](std::int64_t value) { return static_cast<double>(value) / sensor.unitsADegree; });
    sensor.readAt = clock_();
    if (sensor.device) {
        sensor.device->wasRead(*sensor.readAt);
    }
}

void HwmonSensors::keepFormerRead(Sensor& sensor) const {
    const auto former = std::ranges::find_if(sensors_, [&](const auto& known) {
        return known->file.path() == sensor.file.path() && known->zone == sensor.zone;
    });
    if (former != sensors_.end()) {
        sensor.readAt = (*former)->readAt;
        sensor.celsius = (*former)->celsius;
    }
}

} // namespace cindertop::linux_platform
